# How the plugin holds under what applications do: changes from inside handlers, all kinds of QML
# objects, every order of shutting down.
add_library(tavolins_reliability_support STATIC
    reliability/look.cpp
    reliability/look.h
    reliability/objectcount.cpp
    reliability/objectcount.h
)
tavolins_target(tavolins_reliability_support)
target_link_libraries(tavolins_reliability_support PUBLIC tavolins_test_support Tavolins::Tavolins)

tavolins_test(reliability/tst_reentrancy QUICK)
target_link_libraries(tst_reentrancy PRIVATE tavolins_reliability_support)

tavolins_test(reliability/tst_surfaces QUICK)
target_link_libraries(tst_surfaces PRIVATE tavolins_reliability_support)

add_executable(exitapp reliability/exitapp.cpp)
tavolins_target(exitapp)
target_link_libraries(exitapp PRIVATE Qt5::Gui Qt5::Qml Qt5::Quick)
target_compile_definitions(exitapp PRIVATE
    TAVOLINS_QML_IMPORT_PATH="${PROJECT_BINARY_DIR}/qml"
    TAVOLINS_QML_URI="${TAVOLINS_QML_URI}")
add_dependencies(exitapp tavolins)
tavolins_test(reliability/tst_exit)
target_compile_definitions(tst_exit PRIVATE TAVOLINS_EXITAPP="$<TARGET_FILE:exitapp>")
add_dependencies(tst_exit exitapp)

# Freed memory is overwritten, so that Qt itself, which is built without sanitizers, stumbles over
# objects that were destroyed under its hands.
foreach(name tst_reentrancy tst_surfaces tst_exit)
    set_property(TEST ${name} APPEND PROPERTY ENVIRONMENT
        MALLOC_PERTURB_=165 ASAN_OPTIONS=max_free_fill_size=4096:free_fill_byte=165)
endforeach()
