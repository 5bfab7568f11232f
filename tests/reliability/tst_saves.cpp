#include "manager/thememanager.h"
#include "reliability/descriptors.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <functional>
#include <random>

namespace {

const int themeCount = 4;

bool isLongRun()
{
    return qEnvironmentVariableIntValue("TAVOLINS_LONG_TESTS") > 0;
}

int repetitions()
{
    return isLongRun() ? 300 : 20;
}

/// Runs the event loop until \a holds. What is waited for must arrive as an event.
bool waitUntil(const std::function<bool()> &holds)
{
    const QDeadlineTimer deadline(20000);
    // Without it the loop would sleep on when nothing arrives.
    QTimer wakeUp;
    wakeUp.start(500);
    while (!holds()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

QtMessageHandler outerHandler = nullptr;

/// While it lives, a theme file that is missing for a moment is nothing to report: how often the
/// application looks at it in that moment is up to the system.
struct MissingFilesAreExpected
{
    Q_DISABLE_COPY(MissingFilesAreExpected)

    MissingFilesAreExpected() { outerHandler = qInstallMessageHandler(handleMessage); }
    ~MissingFilesAreExpected() { qInstallMessageHandler(outerHandler); }

    static void handleMessage(QtMsgType type, const QMessageLogContext &context,
                              const QString &message)
    {
        if (message != QLatin1String("Couldn't open file."))
            outerHandler(type, context, message);
    }
};

} // namespace

/// Another process saves theme files in all ways while they are in use.
class tst_Saves : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void savesInPlaceArrive_data();
    void savesInPlaceArrive();
    void changesWithoutNewContentKeepTheValues_data();
    void changesWithoutNewContentKeepTheValues();
    void replacedFilesAreWatchedAfterASwitch_data();
    void replacedFilesAreWatchedAfterASwitch();
    void goodSavesAfterBrokenOnesArrive_data();
    void goodSavesAfterBrokenOnesArrive();
    void savesAndSwitchesInAnyOrder();

private:
    Theme *theme(int number) const;
    static QString title(int number);
    void switchTo(int number);
    void switchAround(int number);
    void startSave(const char *way, int radius);
    bool save(const char *way, int radius);
    bool shows(int radius) const;
    bool savesArrive();

    QProcess m_saver;
    int m_firstRow = 0;
    int m_current = 0;
    int m_answers = 0;
    int m_saves = 0;
    int m_radius = 0;
    int m_openBefore = 0;
    std::mt19937 m_random;
};

Theme *tst_Saves::theme(int number) const
{
    ThemeManager *manager = ThemeManager::getInstance();
    return qvariant_cast<Theme *>(
            manager->data(manager->index(m_firstRow + number), Qt::UserRole + 1));
}

QString tst_Saves::title(int number)
{
    return QStringLiteral("T%1").arg(number);
}

void tst_Saves::switchTo(int number)
{
    m_current = number;
    ThemeManager::getInstance()->setCurrent(theme(number));
}

/// Switches away and, by way of any number of other themes, to \a number.
void tst_Saves::switchAround(int number)
{
    for (unsigned switches = m_random() % 4; switches > 0; --switches)
        switchTo(int(m_random() % themeCount));
    switchTo((number + 1) % themeCount);
    switchTo(number);
}

void tst_Saves::init()
{
    TestCase::init();
    // The same order of events in each run, as far as it is up to this process.
    m_random.seed(1);
    for (int number = 0; number < themeCount; ++number) {
        const QString name = title(number);
        const QString path = write(name + QLatin1String(".target"),
                                   "{\"title\": \"" + name.toLatin1() + "\"}");
        // Links, so that the same files can be retargeted; saves in place go through them.
        QVERIFY(QFile::link(path, folder() + QLatin1Char('/') + name + QLatin1String(".thm")));
    }
    ThemeManager *manager = ThemeManager::getInstance();
    m_firstRow = manager->rowCount();
    manager->loadThemes(folder());
    QCOMPARE(manager->rowCount(), m_firstRow + themeCount);
    switchTo(0);

    m_answers = 0;
    m_saves = 0;
    m_saver.start(QStringLiteral(TAVOLINS_SAVER), QStringList());
    QVERIFY(m_saver.waitForStarted());
    connect(&m_saver, &QProcess::readyReadStandardOutput, this,
            [this] { m_answers += m_saver.readAllStandardOutput().count("done\n"); });
    QVERIFY(save("in-place", ++m_radius));
    QVERIFY(waitUntil([this] { return shows(m_radius); }));
    m_openBefore = Descriptors::openCount();
    QCOMPARE(Descriptors::watchCount(), 1);
}

void tst_Saves::cleanup()
{
    // After a replaced file, the watch is back at the next switch.
    switchAround(0);
    const int watches = Descriptors::watchCount();
    const int open = Descriptors::openCount();
    disconnect(&m_saver, nullptr, this, nullptr);
    m_saver.closeWriteChannel();
    QVERIFY(m_saver.waitForFinished());
    QCOMPARE(m_saver.exitCode(), 0);
    // The folder is removed, so nothing in it may be current.
    Theme withoutFile;
    ThemeManager::getInstance()->setCurrent(&withoutFile);
    QCOMPARE(Descriptors::watchCount(), 0);
    TestCase::cleanup();
    QCOMPARE(watches, 1);
    QCOMPARE(open, m_openBefore);
}

void tst_Saves::startSave(const char *way, int radius)
{
    ++m_saves;
    m_saver.write(way + QByteArray(" ") + QFile::encodeName(theme(m_current)->filename()) + ' '
                  + title(m_current).toLatin1() + ' ' + QByteArray::number(radius) + '\n');
}

bool tst_Saves::save(const char *way, int radius)
{
    startSave(way, radius);
    return waitUntil([this] { return m_answers == m_saves; });
}

bool tst_Saves::shows(int radius) const
{
    return Theme::global()->radius() == radius && theme(m_current)->title() == title(m_current);
}

/// Whether a save in place of the current theme, which is watched, ends in its values.
bool tst_Saves::savesArrive()
{
    return save("in-place", ++m_radius) && waitUntil([this] { return shows(m_radius); });
}

void tst_Saves::savesInPlaceArrive_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("at once") << QByteArray("in-place");
    QTest::newRow("in two chunks with a pause") << QByteArray("two-chunks");
    QTest::newRow("ten times in 100 ms") << QByteArray("ten-times");
}

void tst_Saves::savesInPlaceArrive()
{
    QFETCH(const QByteArray, way);
    for (int i = 0; i < repetitions(); ++i) {
        switchAround(int(m_random() % themeCount));
        QVERIFY(save(way.constData(), ++m_radius));
        QVERIFY(waitUntil([this] { return shows(m_radius); }));
        QCOMPARE(Theme::global()->colors()->foreground(), QColor(Qt::red));
    }
}

void tst_Saves::changesWithoutNewContentKeepTheValues_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("touched") << QByteArray("touch");
    QTest::newRow("mode changed") << QByteArray("change-mode");
}

void tst_Saves::changesWithoutNewContentKeepTheValues()
{
    QFETCH(const QByteArray, way);
    for (int i = 0; i < repetitions(); ++i) {
        switchAround(int(m_random() % themeCount));
        QVERIFY(savesArrive());
        int updates = 0;
        const auto count = connect(theme(m_current), &Theme::needUpdate, [&updates] { ++updates; });
        QVERIFY(save(way.constData(), -1));
        // The file is read again: its times and its mode may be all that tells of a change.
        QVERIFY(waitUntil([&updates] { return updates > 0; }));
        disconnect(count);
        QVERIFY(shows(m_radius));
    }
}

void tst_Saves::replacedFilesAreWatchedAfterASwitch_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("renamed over") << QByteArray("rename-over");
    QTest::newRow("moved to a backup and created") << QByteArray("back-up-and-create");
    QTest::newRow("deleted and created") << QByteArray("delete-and-create");
    QTest::newRow("link to another file") << QByteArray("retarget-link");
}

void tst_Saves::replacedFilesAreWatchedAfterASwitch()
{
    QFETCH(const QByteArray, way);
    const MissingFilesAreExpected missing;
    for (int i = 0; i < repetitions(); ++i) {
        const int saved = int(m_random() % themeCount);
        switchAround(saved);
        QVERIFY(savesArrive());
        startSave(way.constData(), ++m_radius);
        // Half of the times the application switches while the file is replaced.
        if (m_random() % 2) {
            while (m_answers < m_saves) {
                switchAround(int(m_random() % themeCount));
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
            }
        }
        QVERIFY(waitUntil([this] { return m_answers == m_saves; }));
        switchAround(saved);
        QVERIFY(savesArrive());
        QCOMPARE(Descriptors::watchCount(), 1);
    }
}

void tst_Saves::goodSavesAfterBrokenOnesArrive_data()
{
    QTest::addColumn<QByteArray>("way");
    QTest::newRow("half a document") << QByteArray("half");
    QTest::newRow("an empty file") << QByteArray("nothing");
    QTest::newRow("no text at all") << QByteArray("garbage");
}

void tst_Saves::goodSavesAfterBrokenOnesArrive()
{
    QFETCH(const QByteArray, way);
    for (int i = 0; i < repetitions(); ++i) {
        switchAround(int(m_random() % themeCount));
        QVERIFY(savesArrive());
        QVERIFY(save(way.constData(), -1));
        // Whether it is read at all before the next save depends on the moment.
        if (m_random() % 2)
            QTest::qWait(2);
        QCOMPARE(Theme::global()->radius(), m_radius);
        QCOMPARE(Theme::global()->colors()->foreground(), QColor(Qt::red));
        QVERIFY(savesArrive());
    }
}

void tst_Saves::savesAndSwitchesInAnyOrder()
{
    const char *const ways[] = { "in-place",    "two-chunks",    "touch",
                                 "change-mode", "rename-over",   "back-up-and-create",
                                 "half",        "nothing",       "garbage",
                                 "ten-times",   "retarget-link", "delete-and-create" };
    const MissingFilesAreExpected missing;
    for (int i = 0; i < repetitions(); ++i) {
        for (const char *way : ways) {
            startSave(way, ++m_radius);
            while (m_answers < m_saves) {
                switchTo(int(m_random() % themeCount));
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
            }
        }
    }
    for (int number = 0; number < themeCount; ++number) {
        switchAround(number);
        QVERIFY(savesArrive());
    }
}

TAVOLINS_TEST_MAIN(tst_Saves)

#include "tst_saves.moc"
