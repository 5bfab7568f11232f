# Runs QML against one import path and nothing else of this build.
add_executable(qmlrun install/qmlrun.cpp)
tavolins_target(qmlrun)
target_link_libraries(qmlrun PRIVATE Qt5::Gui Qt5::Qml)

# A native consumer would need the sanitizers' runtime, so this runs in the other builds.
if(NOT TAVOLINS_SANITIZE)
    add_executable(tst_install install/tst_install.cpp)
    tavolins_target(tst_install)
    target_link_libraries(tst_install PRIVATE tavolins_test_support)
    target_compile_definitions(tst_install PRIVATE
        TAVOLINS_QML_URI="${TAVOLINS_QML_URI}"
        TAVOLINS_QML_INSTALL_DIR="${TAVOLINS_QML_INSTALL_DIR}"
        TAVOLINS_PACKAGE_DIR="${CMAKE_INSTALL_LIBDIR}/cmake/Tavolins"
        TAVOLINS_SOURCE_DIR="${PROJECT_SOURCE_DIR}"
        TAVOLINS_BUILD_DIR="${PROJECT_BINARY_DIR}"
        TAVOLINS_CMAKE="${CMAKE_COMMAND}"
        TAVOLINS_CXX_COMPILER="${CMAKE_CXX_COMPILER}"
        TAVOLINS_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER}"
        TAVOLINS_QMLRUN="$<TARGET_FILE:qmlrun>")
    add_test(NAME tst_install COMMAND tst_install)
    tavolins_test_properties(tst_install 900)
endif()
