#include "checker/channel.h"
#include "checker/contrast.h"
#include "support/testcase.h"

#include <QtTest/QtTest>

#include <cmath>
#include <random>

class tst_Contrast : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ratio_data();
    void ratio();
    void ratioIsSymmetric();
    void passingColorStays();
    void nearestPassing_data();
    void nearestPassing();
    void nearestPassingIsTheNearest();
    void nothingPassesWhatBlackAndWhiteDoNot();
};

namespace {

QColor randomColor(std::mt19937 *engine)
{
    return QColor(QRgb((*engine)() | 0xff000000u));
}

double hueDistance(const QColor &a, const QColor &b)
{
    const double distance = std::abs(a.hslHueF() - b.hslHueF());
    return std::min(distance, 1 - distance);
}

} // namespace

void tst_Contrast::ratio_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("surface");
    QTest::addColumn<double>("expected");
    // Figures that WebAIM's contrast checker shows.
    QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("the same") << QColor(0x33, 0x66, 0x99) << QColor(0x33, 0x66, 0x99) << 1.0;
    QTest::newRow("the grey that just passes")
            << QColor(0x76, 0x76, 0x76) << QColor(Qt::white) << 4.54;
    QTest::newRow("the grey that just fails")
            << QColor(0x77, 0x77, 0x77) << QColor(Qt::white) << 4.48;
    QTest::newRow("red on white") << QColor(0xff, 0, 0) << QColor(Qt::white) << 4.0;
    QTest::newRow("blue on white") << QColor(0, 0, 0xff) << QColor(Qt::white) << 8.59;
    QTest::newRow("text is blended with what it lies on")
            << QColor(0, 0, 0, 0) << QColor(0x77, 0x77, 0x77) << 1.0;
    QTest::newRow("half black on white is grey")
            << QColor(0, 0, 0, 137) << QColor(Qt::white) << 4.54;
    QTest::newRow("surface is blended with white")
            << QColor(Qt::black) << QColor(0, 0, 0, 0) << 21.0;
    QTest::newRow("text is blended with the surface that is seen")
            << QColor(0, 0, 0, 0) << QColor(0, 0, 0, 137) << 1.0;
}

void tst_Contrast::ratio()
{
    QFETCH(QColor, text);
    QFETCH(QColor, surface);
    QFETCH(double, expected);
    QVERIFY2(std::abs(Contrast::ratio(text, surface) - expected) < 0.006,
             QByteArray::number(Contrast::ratio(text, surface)).constData());
}

void tst_Contrast::ratioIsSymmetric()
{
    std::mt19937 engine(1);
    for (int i = 0; i < 1000; ++i) {
        const QColor a = randomColor(&engine);
        const QColor b = randomColor(&engine);
        QCOMPARE(Contrast::ratio(a, b), Contrast::ratio(b, a));
    }
}

void tst_Contrast::passingColorStays()
{
    QCOMPARE(Contrast::nearestPassing(QColor(0x76, 0x76, 0x76), Qt::white, Contrast::levelAA),
             QColor(0x76, 0x76, 0x76));
    // What is seen of it, as the result is opaque.
    QCOMPARE(Contrast::nearestPassing(QColor(0, 0, 0, 204), Qt::white, Contrast::levelAA),
             QColor(0x33, 0x33, 0x33));
}

void tst_Contrast::nearestPassing_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("surface");
    QTest::addColumn<bool>("becomesLighter");
    QTest::newRow("grey on white") << QColor(0x88, 0x88, 0x88) << QColor(Qt::white) << false;
    QTest::newRow("orange on white") << QColor(0xf7, 0xa6, 0x4b) << QColor(Qt::white) << false;
    QTest::newRow("dark red on black") << QColor(0x60, 0, 0) << QColor(Qt::black) << true;
    QTest::newRow("light text on a dark surface")
            << QColor(0x99, 0x99, 0xcc) << QColor(0x44, 0x44, 0x66) << true;
    QTest::newRow("dark text on a bright surface")
            << QColor(0x55, 0x55, 0x22) << QColor(0x88, 0x88, 0x66) << false;
}

void tst_Contrast::nearestPassing()
{
    QFETCH(QColor, text);
    QFETCH(QColor, surface);
    QFETCH(bool, becomesLighter);
    QVERIFY(Contrast::ratio(text, surface) < Contrast::levelAA);
    const QColor result = Contrast::nearestPassing(text, surface, Contrast::levelAA);
    QVERIFY(Contrast::ratio(result, surface) >= Contrast::levelAA);
    QCOMPARE(result.lightnessF() > text.lightnessF(), becomesLighter);
    // Eight bits a channel leave the hue a little play.
    QVERIFY(text.hslHue() == result.hslHue() || hueDistance(text, result) < 0.02);
}

void tst_Contrast::nearestPassingIsTheNearest()
{
    std::mt19937 engine(2);
    int mended = 0;
    for (int i = 0; i < 300; ++i) {
        const QColor text = randomColor(&engine);
        const QColor surface = randomColor(&engine);
        const QColor result = Contrast::nearestPassing(text, surface, Contrast::levelAA);
        // Black or white passes on any surface, so there is always a result.
        QVERIFY(Contrast::ratio(result, surface) >= Contrast::levelAA);
        if (result == text)
            continue;
        ++mended;
        // Nothing of that hue and saturation that is nearer passes.
        const double distance = std::abs(result.lightnessF() - text.lightnessF());
        for (double step = 0; step < distance - 2.0 / 255; step += 1.0 / 512) {
            for (const double lightness : { text.lightnessF() - step, text.lightnessF() + step }) {
                if (lightness < 0 || lightness > 1)
                    continue;
                QColor nearer;
                nearer.setHslF(std::max(text.hslHueF(), Channel(0)), text.hslSaturationF(),
                               Channel(lightness));
                QVERIFY2(Contrast::ratio(QColor(nearer.rgb()), surface) < Contrast::levelAA,
                         qPrintable(text.name() + surface.name() + result.name()));
            }
        }
    }
    QVERIFY(mended > 100);
}

void tst_Contrast::nothingPassesWhatBlackAndWhiteDoNot()
{
    const QColor middle(0x77, 0x77, 0x77);
    QVERIFY(Contrast::ratio(Qt::black, middle) < Contrast::levelAAA);
    QVERIFY(Contrast::ratio(Qt::white, middle) < Contrast::levelAAA);
    QVERIFY(!Contrast::nearestPassing(Qt::red, middle, Contrast::levelAAA).isValid());
}

TAVOLINS_TEST_MAIN(tst_Contrast)
#include "tst_contrast.moc"
