# Theme files under hostile conditions: fuzzing inputs, sizes, saves, faults, long runs.
tavolins_test(fuzz/tst_regressions SOURCES ${TAVOLINS_FUZZ_SOURCES})

add_executable(saver reliability/saver.cpp)
tavolins_target(saver)
tavolins_test(reliability/tst_saves TIMEOUT 900
    SOURCES reliability/descriptors.cpp reliability/descriptors.h)
add_dependencies(tst_saves saver)
target_compile_definitions(tst_saves PRIVATE TAVOLINS_SAVER="$<TARGET_FILE:saver>")
tavolins_test(reliability/tst_soak QUICK TIMEOUT 1800
    SOURCES reliability/descriptors.cpp reliability/descriptors.h)
tavolins_test(reliability/tst_faults
    SOURCES reliability/systemfaults.cpp reliability/systemfaults.h)
target_link_libraries(tst_faults PRIVATE ${CMAKE_DL_LIBS})

add_executable(loadonce reliability/loadonce.cpp)
tavolins_target(loadonce)
target_link_libraries(loadonce PRIVATE Tavolins::Tavolins)
tavolins_test(reliability/tst_linear TIMEOUT 600)
add_dependencies(tst_linear loadonce)
target_compile_definitions(tst_linear PRIVATE TAVOLINS_LOADONCE="$<TARGET_FILE:loadonce>")
