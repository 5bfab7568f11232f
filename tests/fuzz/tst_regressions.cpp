#include "fuzz/targets.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

namespace {

typedef void (*Target)(const std::uint8_t *data, std::size_t size);

const struct
{
    const char *name;
    /// The name of the folder of its inputs.
    const char *inputs;
    Target run;
} targets[] = {
    { "checker", "document", fuzzChecker },
    { "document", "document", fuzzDocument },
    { "folder", "folder", fuzzFolder },
    { "lookups", "lookups", fuzzLookups },
};

} // namespace

Q_DECLARE_METATYPE(Target)

/// Replays the fuzzer's seeds, and all inputs that once showed a fault. A target ends the process
/// when something does not hold.
class tst_Regressions : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void replay_data();
    void replay();
    void everyTargetHasSeeds();
};

void tst_Regressions::replay_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<Target>("target");

    const QDir inputs(QStringLiteral(TAVOLINS_SOURCE_DIR "/fuzz"));
    for (const auto &target : targets) {
        for (const char *kind : { "corpus", "regressions" }) {
            const QDir folder(inputs.filePath(QLatin1String(kind) + QLatin1Char('/')
                                              + QLatin1String(target.inputs)));
            const QStringList files = folder.entryList(QDir::Files);
            for (const QString &name : files) {
                QTest::addRow("%s, %s, %s", target.name, kind, qPrintable(name))
                        << folder.filePath(name) << target.run;
            }
        }
    }
}

void tst_Regressions::replay()
{
    QFETCH(const QString, path);
    QFETCH(const Target, target);

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray input = file.readAll();
    target(reinterpret_cast<const std::uint8_t *>(input.constData()), std::size_t(input.size()));
}

void tst_Regressions::everyTargetHasSeeds()
{
    for (const auto &target : targets) {
        const QDir folder(QStringLiteral(TAVOLINS_SOURCE_DIR "/fuzz/corpus/")
                          + QLatin1String(target.inputs));
        QVERIFY2(folder.entryList(QDir::Files).size() >= 5, target.name);
    }
}

TAVOLINS_TEST_MAIN(tst_Regressions)

#include "tst_regressions.moc"
