# Qt's writer of binary JSON is deprecated; the metadata is compared with what it writes.
tavolins_test(plugin/tst_pluginmetadata DEPRECATED_QT_ALLOWED)
target_compile_definitions(tst_pluginmetadata PRIVATE
    QT_NO_DEPRECATED_WARNINGS
    TAVOLINS_DEBUG_BUILD=$<CONFIG:Debug>)
if(TAVOLINS_SANITIZE)
    target_compile_definitions(tst_pluginmetadata PRIVATE TAVOLINS_SANITIZED)
endif()
