# What reads the pages.
add_library(tavolins_readme_test_support STATIC
    readme/markdown.cpp
    readme/markdown.h
)
tavolins_target(tavolins_readme_test_support)
target_include_directories(tavolins_readme_test_support PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(tavolins_readme_test_support PUBLIC Qt5::Core)
target_compile_definitions(tavolins_readme_test_support PRIVATE
    TAVOLINS_SOURCE_DIR="${PROJECT_SOURCE_DIR}")

tavolins_test(readme/tst_readme QUICK)
target_link_libraries(tst_readme PRIVATE tavolins_readme_test_support)

tavolins_test(readme/tst_pages)
target_sources(tst_pages PRIVATE readme/resources.qrc)
set_target_properties(tst_pages PROPERTIES AUTORCC ON)
target_link_libraries(tst_pages PRIVATE tavolins_readme_test_support)
target_compile_definitions(tst_pages PRIVATE TAVOLINS_QMLRUN="$<TARGET_FILE:qmlrun>")
add_dependencies(tst_pages qmlrun)

# Programs of others can't load a plugin that needs a sanitizer's runtime.
if(NOT TAVOLINS_SANITIZE)
    tavolins_test(readme/tst_commands TIMEOUT 240)
    target_link_libraries(tst_commands PRIVATE tavolins_readme_test_support)
    target_compile_definitions(tst_commands PRIVATE
        TAVOLINS_BUILD_DIR="${PROJECT_BINARY_DIR}"
        TAVOLINS_QML_INSTALL_DIR="${TAVOLINS_QML_INSTALL_DIR}"
        TAVOLINS_CMAKE="${CMAKE_COMMAND}"
        TAVOLINS_CTEST="${CMAKE_CTEST_COMMAND}"
        TAVOLINS_CXX_COMPILER="${CMAKE_CXX_COMPILER}")
    # What the test installs.
    foreach(target tavolins_qmltypes tavolins-gallery)
        if(TARGET ${target})
            add_dependencies(tst_commands ${target})
        endif()
    endforeach()
endif()
