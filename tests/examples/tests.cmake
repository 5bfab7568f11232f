tavolins_test(examples/tst_settings QUICK SOURCES gallery/readable.h)
target_link_libraries(tst_settings PRIVATE tavolins_settings)
# What the engine imports.
add_dependencies(tst_settings tavolins)
