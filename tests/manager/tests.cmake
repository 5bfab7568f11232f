tavolins_test(manager/tst_thememanager SOURCES support/flatmodel.h)
tavolins_test(manager/tst_currenttheme)
tavolins_test(manager/tst_badinput)
