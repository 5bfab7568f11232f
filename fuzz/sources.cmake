# What the fuzzing programs and the test that replays their inputs have in common.
set(TAVOLINS_FUZZ_SOURCES
    "${CMAKE_CURRENT_LIST_DIR}/checker.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/document.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/folder.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/inputreader.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/inputreader.h"
    "${CMAKE_CURRENT_LIST_DIR}/lookups.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/session.cpp"
    "${CMAKE_CURRENT_LIST_DIR}/session.h"
    "${CMAKE_CURRENT_LIST_DIR}/targets.h")
