#include "manager/thememanager.h"
#include "reliability/systemfaults.h"
#include "support/fontdatabase.h"
#include "support/testcase.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

namespace {

const char goodDocument[] =
        R"({"title": "Good", "global": {"radius": 4, "colors": {"foreground": "#112233"}},
            "button": {"colors": {"background": "#445566"}}})";
const char otherDocument[] = R"({"title": "Other", "global": {"radius": 9}})";

/// A document so long that it is not read at once.
QByteArray longDocument()
{
    return QByteArray(R"({"title": "Long", "global": {"radius": 8}, "filler": {"x": ")")
            + QByteArray(200000, 'x') + R"("}})";
}

/// Gives up root's rights, to which no file is closed, while it lives.
class WithoutRoot
{
public:
    WithoutRoot()
    {
        if (m_isRoot && seteuid(nobody) != 0)
            qFatal("can't give up root's rights");
    }

    ~WithoutRoot()
    {
        if (m_isRoot && seteuid(0) != 0)
            qFatal("can't get root's rights back");
        // Changing the user makes the process closed to leak checkers.
        prctl(PR_SET_DUMPABLE, 1);
    }

private:
    enum { nobody = 65534 };
    const bool m_isRoot = geteuid() == 0;
};

/// While it lives, no file can be opened: all descriptors are in use.
class WithoutDescriptors
{
    Q_DISABLE_COPY(WithoutDescriptors)

public:
    WithoutDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_limit);
        const rlimit none = { 0, m_limit.rlim_max };
        setrlimit(RLIMIT_NOFILE, &none);
    }

    ~WithoutDescriptors() { setrlimit(RLIMIT_NOFILE, &m_limit); }

private:
    rlimit m_limit;
};

QByteArray pathToChange;

} // namespace

/// What the system refuses leaves the last good state, and is told by the stated result.
class tst_Faults : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void filesThatCannotBeRead_data();
    void filesThatCannotBeRead();
    void openingFails_data();
    void openingFails();
    void readingFails_data();
    void readingFails();
    void fileShrinksWhileRead();
    void fileGrowsWhileRead();
    void noPermission();
    void noDescriptorsLeft();
    void folderVanishesWhileLoading();
    void parentVanishesWhileWaiting();
    void currentFileVanishes();
    void fontDatabaseRefuses();
    void resourceFoldersAreNone();
    void noWatchesLeft_data();
    void noWatchesLeft();
    void noDescriptorForTheWatcher();

private:
    bool isGood() const;

    std::unique_ptr<Theme> m_theme;
};

void tst_Faults::init()
{
    TestCase::init();
    ThemeManager::getInstance();
    m_theme.reset(new Theme);
    QCOMPARE(m_theme->load(write(QStringLiteral("good.thm"), goodDocument)), 0);
    QVERIFY(isGood());
}

void tst_Faults::cleanup()
{
    SystemFaults::reset();
    m_theme.reset();
    TestCase::cleanup();
}

/// Whether the theme has all that its file gave it.
bool tst_Faults::isGood() const
{
    const auto *data = qobject_cast<ThemePrivate *>(m_theme->colors()->parent());
    return m_theme->title() == QLatin1String("Good") && m_theme->radius() == 4
            && m_theme->colors()->foreground() == QColor(0x11, 0x22, 0x33)
            && data->classScopes.value(QStringLiteral("button")).size() == 1;
}

void tst_Faults::filesThatCannotBeRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isOpened");

    QTest::newRow("missing") << QStringLiteral("none.thm") << 1 << false;
    QTest::newRow("folder") << QStringLiteral("folder.thm") << 1 << false;
    QTest::newRow("dangling link") << QStringLiteral("dangling.thm") << 1 << false;
    QTest::newRow("link to itself") << QStringLiteral("ring.thm") << 1 << false;
    QTest::newRow("path through a file") << QStringLiteral("good.thm/x.thm") << 1 << false;
    QTest::newRow("name that is too long") << QString(5000, QLatin1Char('n')) << 1 << false;
    QTest::newRow("no name") << QString() << 1 << false;
    QTest::newRow("name with a NUL") << QString(QLatin1String("a.thm") + QChar()) << 1 << false;
    QTest::newRow("empty file") << QStringLiteral("empty.thm") << 1 << true;
    QTest::newRow("file that fails at its first byte")
            << QStringLiteral("/proc/self/mem") << 1 << true;
    QTest::newRow("the null device") << QStringLiteral("/dev/null") << 1 << true;
    QTest::newRow("unknown parent") << QStringLiteral("orphan.thm") << 2 << true;
}

void tst_Faults::filesThatCannotBeRead()
{
    QFETCH(const QString, path);
    QFETCH(const int, status);
    QFETCH(const bool, isOpened);

    QVERIFY(QDir(folder()).mkdir(QStringLiteral("folder.thm")));
    QVERIFY(QFile::link(folder() + QLatin1String("/none"),
                        folder() + QLatin1String("/dangling.thm")));
    QVERIFY(QFile::link(folder() + QLatin1String("/ring.thm"),
                        folder() + QLatin1String("/ring.thm")));
    write(QStringLiteral("empty.thm"), QByteArray());
    write(QStringLiteral("orphan.thm"), R"({"title": "Orphan", "extends": "Nobody"})");

    if (!isOpened)
        expectOpenFailure(2);
    // Qt refuses such a name with a message of its own.
    if (path.contains(QChar()))
        expectLog(QStringLiteral("Broken filename passed to function"), 2);
    const QString absolute = path.isEmpty() ? path : QDir(folder()).absoluteFilePath(path);
    QCOMPARE(m_theme->load(absolute), status);
    QVERIFY(isGood());
    QCOMPARE(m_theme->reload(), status);
    QVERIFY(isGood());
    QCOMPARE(m_theme->filename(), absolute);
    QCOMPARE(m_theme->load(folder() + QLatin1String("/good.thm")), 0);
    QVERIFY(isGood());
}

void tst_Faults::openingFails_data()
{
    QTest::addColumn<int>("error");
    for (const int error : { EACCES, EMFILE, ENFILE, ENOMEM, EIO, ELOOP, ENAMETOOLONG, ETXTBSY,
                             EOVERFLOW, ENXIO, EPERM })
        QTest::newRow(strerror(error)) << error;
}

void tst_Faults::openingFails()
{
    QFETCH(const int, error);
    SystemFaults::failOpening("good.thm", error);
    expectOpenFailure();
    QCOMPARE(m_theme->reload(), 1);
    QCOMPARE(SystemFaults::failures(), 1);
    QVERIFY(isGood());
    SystemFaults::reset();
    QCOMPARE(m_theme->reload(), 0);
    QVERIFY(isGood());
}

void tst_Faults::readingFails_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("after");
    for (const int error : { EIO, EISDIR, EINVAL, ENOMEM, ESTALE, ENOTCONN }) {
        for (const int after : { 0, 1, 30, 16384, 100000 })
            QTest::addRow("%s after %d bytes", strerror(error), after) << error << after;
    }
}

void tst_Faults::readingFails()
{
    QFETCH(const int, error);
    QFETCH(const int, after);
    write(QStringLiteral("good.thm"), longDocument());
    SystemFaults::failReading("good.thm", after, error);
    QCOMPARE(m_theme->reload(), 1);
    QVERIFY(SystemFaults::failures() > 0);
    QVERIFY(isGood());
    SystemFaults::reset();
    QCOMPARE(m_theme->reload(), 0);
    QCOMPARE(m_theme->title(), QStringLiteral("Long"));
    QCOMPARE(m_theme->radius(), 8);
}

void tst_Faults::fileShrinksWhileRead()
{
    pathToChange = QFile::encodeName(write(QStringLiteral("good.thm"), longDocument()));
    SystemFaults::interruptReading("good.thm", 30000,
                                   [] { QVERIFY(truncate(pathToChange.constData(), 100) == 0); });
    QCOMPARE(m_theme->reload(), 1);
    QVERIFY(isGood());
    SystemFaults::reset();
    write(QStringLiteral("good.thm"), otherDocument);
    QCOMPARE(m_theme->reload(), 0);
    QCOMPARE(m_theme->title(), QStringLiteral("Other"));
}

void tst_Faults::fileGrowsWhileRead()
{
    pathToChange = QFile::encodeName(write(QStringLiteral("good.thm"), longDocument()));
    SystemFaults::interruptReading("good.thm", 30000, [] {
        QFile file(QFile::decodeName(pathToChange));
        QVERIFY(file.open(QIODevice::Append) && file.write("\n\n\n") == 3);
    });
    QCOMPARE(m_theme->reload(), 0);
    QCOMPARE(m_theme->title(), QStringLiteral("Long"));
    QCOMPARE(m_theme->radius(), 8);
}

void tst_Faults::noPermission()
{
    QVERIFY(QFile::setPermissions(folder() + QLatin1String("/good.thm"), QFile::Permissions()));
    const int rows = ThemeManager::getInstance()->rowCount();
    expectOpenFailure();
    {
        const WithoutRoot withoutRoot;
        QCOMPARE(m_theme->reload(), 1);
        // The folder is its owner's alone. It can't even be listed.
        ThemeManager::getInstance()->loadThemes(folder(), QStringLiteral("Good"));
    }
    QVERIFY(isGood());
    QCOMPARE(ThemeManager::getInstance()->rowCount(), rows);
}

void tst_Faults::noDescriptorsLeft()
{
    const int rows = ThemeManager::getInstance()->rowCount();
    expectOpenFailure();
    {
        const WithoutDescriptors withoutDescriptors;
        QCOMPARE(m_theme->reload(), 1);
        ThemeManager::getInstance()->loadThemes(folder(), QStringLiteral("Good"));
    }
    QVERIFY(isGood());
    QCOMPARE(ThemeManager::getInstance()->rowCount(), rows);
    QCOMPARE(m_theme->reload(), 0);
    QVERIFY(isGood());
}

void tst_Faults::folderVanishesWhileLoading()
{
    for (const char *name : { "a", "b", "c" })
        write(QStringLiteral("set/%1.thm").arg(QLatin1String(name)), goodDocument);
    ThemeManager *manager = ThemeManager::getInstance();
    const int rows = manager->rowCount();
    const QString path = folder() + QLatin1String("/set");
    const auto connection = connect(manager, &ThemeManager::rowsInserted,
                                    [path] { QDir(path).removeRecursively(); });
    expectOpenFailure(2);
    manager->loadThemes(path);
    disconnect(connection);
    QCOMPARE(manager->rowCount(), rows + 1);
    QCOMPARE(manager->data(manager->index(rows)).toString(), QStringLiteral("Good"));

    // Its file is gone, its values are not.
    manager->setCurrent(manager->themeFromName(QStringLiteral("Good")));
    QCOMPARE(manager->currentIndex(), rows);
    QCOMPARE(Theme::global()->radius(), 4);
    manager->setCurrent(m_theme.get());
}

void tst_Faults::parentVanishesWhileWaiting()
{
    write(QStringLiteral("set/child.thm"), R"({"title": "Child", "extends": "Late"})");
    write(QStringLiteral("set/late.thm"), R"({"title": "Late"})");
    ThemeManager *manager = ThemeManager::getInstance();
    const int rows = manager->rowCount();
    const QString child = folder() + QLatin1String("/set/child.thm");
    const auto connection = connect(manager, &ThemeManager::rowsInserted,
                                    [child] { QFile::remove(child); });
    expectOpenFailure();
    manager->loadThemes(folder() + QLatin1String("/set"), QStringLiteral("Child"));
    disconnect(connection);
    QCOMPARE(manager->rowCount(), rows + 1);
    QCOMPARE(manager->data(manager->index(rows)).toString(), QStringLiteral("Late"));
    QVERIFY(manager->current()->title() != QLatin1String("Child"));
}

void tst_Faults::currentFileVanishes()
{
    ThemeManager::getInstance()->setCurrent(m_theme.get());
    QVERIFY(QFile::remove(m_theme->filename()));
    expectOpenFailure();
    QTest::qWait(50);
    QVERIFY(isGood());
    QCOMPARE(Theme::global()->radius(), 4);
    QCOMPARE(Theme::global()->colors()->foreground(), QColor(0x11, 0x22, 0x33));
}

void tst_Faults::fontDatabaseRefuses()
{
    write(QStringLiteral("fonts/garbage.ttf"), QByteArray(5000, '\xff'));
    write(QStringLiteral("fonts/empty.otf"), QByteArray());
    write(QStringLiteral("fonts/cut.ttf"), QByteArray("\0\1\0\0\0\xff", 6));
    write(QStringLiteral("fonts/zeros.pfb"), QByteArray(50000, '\0'));
    write(QStringLiteral("fonts/folder.ttf/inner.ttf"), "x");
    QVERIFY(QFile::link(folder() + QLatin1String("/none"),
                        folder() + QLatin1String("/fonts/dangling.ttf")));
    const QStringList families = FontDatabase::families();
    QCOMPARE(m_theme->reload(), 0);
    QVERIFY(isGood());
    QCOMPARE(FontDatabase::families(), families);
}

void tst_Faults::resourceFoldersAreNone()
{
    write(QStringLiteral("styles"), "a file");
    QVERIFY(QFile::link(folder() + QLatin1String("/none"), folder() + QLatin1String("/fonts")));
    QCOMPARE(m_theme->reload(), 0);
    QVERIFY(isGood());
    QCOMPARE(m_theme->getStyle(QStringLiteral("Button")), QString());
}

void tst_Faults::noWatchesLeft_data()
{
    QTest::addColumn<int>("error");
    for (const int error : { ENOSPC, ENOMEM, EACCES })
        QTest::newRow(strerror(error)) << error;
}

void tst_Faults::noWatchesLeft()
{
    QFETCH(const int, error);
    ThemeManager *manager = ThemeManager::getInstance();
    SystemFaults::failWatching(error);
    expectLog(QStringLiteral("inotify_add_watch(%1) failed: (%2)")
                      .arg(m_theme->filename(), QString::fromLocal8Bit(strerror(error))));
    manager->setCurrent(m_theme.get());
    QVERIFY(SystemFaults::failures() > 0);
    QVERIFY(manager->current() == m_theme.get());
    QCOMPARE(Theme::global()->radius(), 4);

    // At the next switch it is tried again.
    SystemFaults::reset();
    Theme other;
    manager->setCurrent(&other);
    manager->setCurrent(m_theme.get());
    write(QStringLiteral("good.thm"), otherDocument);
    QTRY_COMPARE(Theme::global()->radius(), 9);
}

void tst_Faults::noDescriptorForTheWatcher()
{
    SystemFaults::failWatching(EMFILE);
    ThemeManager manager;
    QVERIFY(SystemFaults::failures() > 0);
    manager.setCurrent(m_theme.get());
    QCOMPARE(Theme::global()->radius(), 4);
    // Qt looks at the file each second then. Its times are compared in whole milliseconds.
    QTest::qWait(5);
    write(QStringLiteral("good.thm"), otherDocument);
    QTRY_COMPARE(Theme::global()->radius(), 9);
}

TAVOLINS_TEST_MAIN(tst_Faults)

#include "tst_faults.moc"
