# plugins.qmltypes as the tools of Qt 5 read it: read from the built plugin by qmlplugindump.
#
# Needs module_build_dir. Sets TAVOLINS_QMLTYPES to the file, or leaves it empty where there is none:
# qmlplugindump can't load a plugin that needs a sanitizer's runtime.

find_program(TAVOLINS_QMLPLUGINDUMP NAMES qmlplugindump qmlplugindump-qt5
    HINTS /usr/lib/qt5/bin DOC "Qt's qmlplugindump, for plugins.qmltypes")
mark_as_advanced(TAVOLINS_QMLPLUGINDUMP)
if(TAVOLINS_QMLPLUGINDUMP AND NOT TAVOLINS_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
    set(dump_module_dir "${CMAKE_CURRENT_BINARY_DIR}/dump/${TAVOLINS_QML_MODULE_DIR}")
    set(TAVOLINS_QMLTYPES "${module_build_dir}/plugins.qmltypes")

    # The engine takes only one plugin's types for a module, so this one registers them all.
    add_library(tavolins_types_dump MODULE typesdump.cpp)
    tavolins_target(tavolins_types_dump)
    target_link_libraries(tavolins_types_dump PRIVATE tavolins)
    set_target_properties(tavolins_types_dump PROPERTIES LIBRARY_OUTPUT_DIRECTORY "${dump_module_dir}")
    file(GENERATE OUTPUT "${dump_module_dir}/qmldir"
        CONTENT "module ${TAVOLINS_QML_URI}\nplugin tavolins_types_dump\n")

    add_custom_command(
        OUTPUT "${TAVOLINS_QMLTYPES}"
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
            "${TAVOLINS_QMLPLUGINDUMP}" -nonrelocatable -output plugins.qmltypes
            ${TAVOLINS_QML_URI} 1.0 dump
        COMMAND ${CMAKE_COMMAND} -E copy dump/plugins.qmltypes "${TAVOLINS_QMLTYPES}"
        # The call stands in the file's head: without paths of the machine it was built on.
        WORKING_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}"
        DEPENDS tavolins tavolins_types_dump
        COMMENT "Describing the QML module in plugins.qmltypes"
        VERBATIM)
    add_custom_target(tavolins_qmltypes ALL DEPENDS "${TAVOLINS_QMLTYPES}")
endif()
