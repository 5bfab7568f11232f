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
