#include "checker/fontweight.h"
#include "support/testcase.h"

#include <QtGui/QFont>
#include <QtTest/QtTest>

class tst_FontWeight : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namedWeights_data();
    void namedWeights();
    void weightsBetweenAreTold();
    void numbersRiseWithTheWeight();
};

void tst_FontWeight::namedWeights_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("number");
    QTest::newRow("Thin") << int(QFont::Thin) << 100;
    QTest::newRow("ExtraLight") << int(QFont::ExtraLight) << 200;
    QTest::newRow("Light") << int(QFont::Light) << 300;
    QTest::newRow("Normal") << int(QFont::Normal) << 400;
    QTest::newRow("Medium") << int(QFont::Medium) << 500;
    QTest::newRow("DemiBold") << int(QFont::DemiBold) << 600;
    QTest::newRow("Bold") << int(QFont::Bold) << 700;
    QTest::newRow("ExtraBold") << int(QFont::ExtraBold) << 800;
    QTest::newRow("Black") << int(QFont::Black) << 900;
}

void tst_FontWeight::namedWeights()
{
    QFETCH(int, weight);
    QFETCH(int, number);
    QCOMPARE(FontWeight::number(weight), number);
    QCOMPARE(FontWeight::name(weight), QString::fromLatin1(QTest::currentDataTag()));
    QCOMPARE(FontWeight::text(weight), QString::fromLatin1(QTest::currentDataTag()));
}

void tst_FontWeight::weightsBetweenAreTold()
{
    // A third of the way from DemiBold to Bold in Qt 5, some of it in Qt 6.
    const int weight = QFont::DemiBold + (QFont::Bold - QFont::DemiBold) / 3;
    const int number = QT_VERSION_MAJOR == 5 ? 633 : weight;
    QCOMPARE(FontWeight::number(weight), number);
    QCOMPARE(FontWeight::name(weight), QString());
    QCOMPARE(FontWeight::text(weight), QStringLiteral("DemiBold (%1)").arg(number));
}

/// So that no two weights which an item tells apart are told as one.
void tst_FontWeight::numbersRiseWithTheWeight()
{
    const int last = QT_VERSION_MAJOR == 5 ? 99 : 1000;
    for (int weight = 2; weight <= last; ++weight) {
        const int number = FontWeight::number(weight);
        QVERIFY2(number > FontWeight::number(weight - 1), qPrintable(QString::number(weight)));
        QVERIFY2(number >= 1 && number <= 1000, qPrintable(QString::number(number)));
    }
}

TAVOLINS_TEST_MAIN(tst_FontWeight)
#include "tst_fontweight.moc"
