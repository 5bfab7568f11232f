tavolins_test(readme/tst_readme QUICK)
