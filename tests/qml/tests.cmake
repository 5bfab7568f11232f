# What the tests of the QML surface share.
add_library(tavolins_qml_test_support STATIC
    qml/qmltestcase.cpp
    qml/qmltestcase.h
)
tavolins_target(tavolins_qml_test_support)
target_link_libraries(tavolins_qml_test_support
    PUBLIC tavolins_test_support Tavolins::Tavolins
    PRIVATE Qt5::Test)
target_compile_definitions(tavolins_qml_test_support PRIVATE
    TAVOLINS_PLUGIN_FILE="$<TARGET_FILE:tavolins>")

foreach(test tst_module tst_surface tst_lifetime)
    tavolins_test(qml/${test} QUICK)
    target_link_libraries(${test} PRIVATE tavolins_qml_test_support)
endforeach()
target_sources(tst_surface PRIVATE qml/resources.qrc support/flatmodel.h)
set_target_properties(tst_surface PROPERTIES AUTORCC ON)
