# Theme files under hostile conditions: fuzzing inputs, sizes, saves, faults, long runs.
tavolins_test(fuzz/tst_regressions SOURCES ${TAVOLINS_FUZZ_SOURCES})
