# plugins.qmltypes as the tools of Qt 6 read it: written by qmltyperegistrar from what moc says of the
# classes. It knows the registered types by the macros in moduletypes.h, which nothing compiles.
#
# Needs module_build_dir. Sets TAVOLINS_QMLTYPES to the file, or leaves it empty where Qt's tools for
# it are missing, and TAVOLINS_QMLDIR_DEPENDS to what qmldir says of other modules.

# What makes the properties' color and font known to the tools. Nothing is loaded for it.
set(TAVOLINS_QMLDIR_DEPENDS "\ndepends QtQuick 2.15")

if(NOT TARGET Qt6::qmltyperegistrar)
    return()
endif()

set(TAVOLINS_QMLTYPES "${module_build_dir}/plugins.qmltypes")
set(moc_includes "-I${PROJECT_SOURCE_DIR}")
foreach(folder IN LISTS Qt6Core_INCLUDE_DIRS Qt6Gui_INCLUDE_DIRS Qt6Qml_INCLUDE_DIRS)
    list(APPEND moc_includes "-I${folder}")
endforeach()

set(described_files "")
foreach(header
        manager/thememanager.h plugin/moduletypes.h theme/theme.h values/themeobject.h
        values/themeobjectcolors.h values/themeobjectfonts.h)
    get_filename_component(name "${header}" NAME)
    set(output "${CMAKE_CURRENT_BINARY_DIR}/types/${name}.cpp")
    add_custom_command(
        OUTPUT "${output}.json"
        BYPRODUCTS "${output}"
        COMMAND Qt6::moc --output-json ${moc_includes} -o "${output}" "${PROJECT_SOURCE_DIR}/${header}"
        DEPENDS "${PROJECT_SOURCE_DIR}/${header}"
        VERBATIM)
    list(APPEND described_files "${output}.json")
endforeach()
file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/types")

# What Qt's own base classes have, as far as this installation of Qt brings its description.
set(base_types "")
get_target_property(core_location Qt6::Core LOCATION)
get_filename_component(qt_library_dir "${core_location}" DIRECTORY)
file(GLOB core_types "${qt_library_dir}/metatypes/qt6core_*metatypes.json")
if(core_types)
    list(GET core_types 0 core_types)
    set(base_types "--foreign-types=${core_types}")
endif()

set(all_types "${CMAKE_CURRENT_BINARY_DIR}/types/all.json")
add_custom_command(
    OUTPUT "${TAVOLINS_QMLTYPES}"
    COMMAND Qt6::moc --collect-json -o "${all_types}" ${described_files}
    COMMAND Qt6::qmltyperegistrar "--generate-qmltypes=${TAVOLINS_QMLTYPES}"
        --import-name=${TAVOLINS_QML_URI} --major-version=1 --minor-version=0
        ${base_types} -o types/registration.cpp "${all_types}"
    BYPRODUCTS "${all_types}" types/registration.cpp
    DEPENDS ${described_files}
    WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
    COMMENT "Describing the QML module in plugins.qmltypes"
    VERBATIM)
add_custom_target(tavolins_qmltypes ALL DEPENDS "${TAVOLINS_QMLTYPES}")
