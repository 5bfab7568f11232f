#include "support/testcase.h"
#include "values/themeobjectcolors.h"

#include <QtTest/QtTest>

class tst_ThemeObjectColors : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newGroupHoldsInvalidColors();
};

void tst_ThemeObjectColors::newGroupHoldsInvalidColors()
{
    const ThemeObjectColors colors;
    QVERIFY(!colors.foreground().isValid());
    QVERIFY(!colors.selection().isValid());
}

TAVOLINS_TEST_MAIN(tst_ThemeObjectColors)
#include "tst_themeobjectcolors.moc"
