#include "support/testcase.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>
#include <QtTest/QtTest>

#if defined(__SANITIZE_ADDRESS__)
#define TAVOLINS_IS_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TAVOLINS_IS_SANITIZED
#endif
#endif

namespace {

struct Result
{
    bool isValid = false;
    int count = 0;
    long memory = 0;
};

/// What loadonce has printed.
Result parsed(QProcess &process)
{
    const QStringList words =
            QString::fromLatin1(process.readAllStandardOutput()).trimmed().split(QLatin1Char(' '));
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0
        || words.size() != 2)
        return Result();
    return { true, words.first().toInt(), words.last().toLong() };
}

/// Counts the instructions of a run of loadonce: those of Qt, and of writing the input, included.
class Counting
{
public:
    Counting(const QString &kind, int size)
    {
        m_process.start(QStringLiteral("valgrind"),
                        { QStringLiteral("--tool=callgrind"),
                          QStringLiteral("--callgrind-out-file=/dev/null"),
                          QStringLiteral(TAVOLINS_LOADONCE), kind, QString::number(size) });
    }

    /// Waits for the end. -1 when it failed.
    qint64 result()
    {
        if (!m_process.waitForFinished(110000) || !parsed(m_process).isValid)
            return -1;
        const QRegularExpression collected(QStringLiteral("Collected : (\\d+)"));
        const auto match = collected.match(QString::fromLatin1(m_process.readAllStandardError()));
        return match.hasMatch() ? match.captured(1).toLongLong() : -1;
    }

private:
    QProcess m_process;
};

} // namespace

/// Time and memory grow no faster than what is loaded. Instructions are counted instead of time,
/// so that the results don't depend on what else runs.
class tst_Linear : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void instructions_data();
    void instructions();
    void largeInputs_data();
    void largeInputs();
};

void tst_Linear::instructions_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("size");

    QTest::newRow("one long text") << QStringLiteral("text") << 1000000;
    QTest::newRow("long title") << QStringLiteral("title") << 1000000;
    QTest::newRow("class scopes") << QStringLiteral("classes") << 2000;
    QTest::newRow("nesting") << QStringLiteral("nested") << 450;
    QTest::newRow("style files") << QStringLiteral("styles") << 500;
    QTest::newRow("theme files") << QStringLiteral("themes") << 100;
    QTest::newRow("reading again, items times members of their scope")
            << QStringLiteral("reload") << 400;
    QTest::newRow("deleting themes with a class") << QStringLiteral("delete") << 4000;
    QTest::newRow("ending without an event loop") << QStringLiteral("end") << 150;
    QTest::newRow("class names of an item") << QStringLiteral("names") << 4000;
}

void tst_Linear::instructions()
{
#if defined(TAVOLINS_IS_SANITIZED)
    QSKIP("valgrind can't run what is built with sanitizers; the other builds count");
#endif
    if (QStandardPaths::findExecutable(QStringLiteral("valgrind")).isEmpty())
        QSKIP("needs valgrind");
    QFETCH(const QString, kind);
    QFETCH(const int, size);

    Counting runs[] = { { kind, 0 }, { kind, size }, { kind, 2 * size } };
    // Starting takes most of it, so it is taken off.
    const qint64 none = runs[0].result();
    const qint64 once = runs[1].result() - none;
    const qint64 twice = runs[2].result() - none;
    QVERIFY(none > 0 && once > 0 && twice > 0);
    const double ratio = double(twice) / double(once);
    printf("%s: %lld and %lld instructions for %d and %d, ratio %.3f\n", qPrintable(kind), once,
           twice, size, 2 * size, ratio);
    QVERIFY2(ratio <= 2.2, qPrintable(QString::number(ratio)));
}

void tst_Linear::largeInputs_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("count");
    QTest::addColumn<long>("memoryBound");

    const long megabyte = 1024;
    QTest::newRow("file of 100 MB")
            << QStringLiteral("text") << 100 * 1024 * 1024 << 1 << 1000 * megabyte;
    QTest::newRow("text of 1 MB") << QStringLiteral("title") << 1024 * 1024 << 0 << 100 * megabyte;
    QTest::newRow("100,000 classes")
            << QStringLiteral("classes") << 100000 << 100000 << 400 * megabyte;
    QTest::newRow("10,000 styles") << QStringLiteral("styles") << 10000 << 10000 << 100 * megabyte;
    QTest::newRow("deepest nesting") << QStringLiteral("nested") << 1000 << 16 << 100 * megabyte;
    // Beyond what the parser takes: no valid document, so there is no title.
    QTest::newRow("nesting beyond it") << QStringLiteral("nested") << 10000 << -1 << 100 * megabyte;
    QTest::newRow("nesting far beyond it")
            << QStringLiteral("nested") << 100000 << -1 << 200 * megabyte;
    QTest::newRow("2,000 themes") << QStringLiteral("themes") << 2000 << 2000 << 200 * megabyte;
}

void tst_Linear::largeInputs()
{
    QFETCH(const QString, kind);
    QFETCH(const int, size);
    QFETCH(const int, count);
    QFETCH(const long, memoryBound);

    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.start(QStringLiteral(TAVOLINS_LOADONCE), { kind, QString::number(size) });
    QVERIFY(process.waitForFinished(100000));
    const Result result = parsed(process);
    printf("%s %d: %lld ms, %ld KiB\n", qPrintable(kind), size, timer.elapsed(), result.memory);
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QVERIFY(result.isValid);
    QCOMPARE(result.count, count);
#if defined(TAVOLINS_IS_SANITIZED)
    // The sanitizer's own memory is several times that.
    Q_UNUSED(memoryBound)
#else
    QVERIFY2(result.memory <= memoryBound, qPrintable(QString::number(result.memory)));
#endif
}

TAVOLINS_TEST_MAIN(tst_Linear)

#include "tst_linear.moc"
