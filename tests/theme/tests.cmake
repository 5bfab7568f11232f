qt5_add_resources(theme_resources theme/resources.qrc)

tavolins_test(theme/tst_earlytheme)
tavolins_test(theme/tst_theme)
tavolins_test(theme/tst_themeclassnames)
tavolins_test(theme/tst_themedocument)
tavolins_test(theme/tst_themeprivate)
tavolins_test(theme/tst_themeresources SOURCES ${theme_resources})
