#include "manager/managertestcase.h"
#include "manager/thememanager.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

/// The file of the current theme is read again when it changes.
class tst_LiveReload : public ManagerTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void fileChangeRereadsWhateverThePath();
    void editInPlace_data();
    void editInPlace();
    void editTwice();
    void replaceByRename();
    void deleteFile();
    void truncateFile();
    void onlyTheCurrentFileIsWatched();
    void switchAwayAndBack();
    void extendsItself();
    void ringAmongLoadedThemes();
    void lateParent();
    void resourcePathsAreNotWatched_data();
    void resourcePathsAreNotWatched();
    void filenameChangedWhileCurrent();
    void fileOfTheGlobalThemeChanges();

private:
    void replace(const char *title, const QByteArray &text);
};

namespace {

/// The manager of the process, for a test that needs its catalogue. Leaves it with a theme that has
/// no file: the one of the test goes with the test's folder.
class ProcessManager
{
public:
    ProcessManager() = default;
    ~ProcessManager() { manager().setCurrent(new Theme(&manager())); }

    ProcessManager(const ProcessManager &) = delete;
    ProcessManager &operator=(const ProcessManager &) = delete;

    static ThemeManager &manager() { return *ThemeManager::getInstance(); }
};

} // namespace

/// Puts another file in the place of the theme's one, as most editors do.
void tst_LiveReload::replace(const char *title, const QByteArray &text)
{
    QSaveFile file(folder() + QLatin1Char('/') + fileOf(title));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
    QVERIFY(file.commit());
}

void tst_LiveReload::fileChangeRereadsWhateverThePath()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 1);
    manager.setCurrent(a);
    rewrite("A", radiusText("A", 2));
    rewrite("B", radiusText("B", 2));
    for (const QString &path : { QString(), b->filename(), QStringLiteral("nonsense") }) {
        QSignalSpy update(a, &Theme::needUpdate);
        QVERIFY(QMetaObject::invokeMethod(&manager, "themeFileChanged", Q_ARG(QString, path)));
        QCOMPARE(update.count(), 2);
        QCOMPARE(a->radius(), 2);
        QCOMPARE(Theme::global()->radius(), 2);
        QCOMPARE(b->radius(), 1);
    }
}

void tst_LiveReload::editInPlace_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<int>("updates");
    QTest::addColumn<int>("radius");

    // Each of "extends" and "global" assigns the theme's data, which updates; reading ends with
    // one more update.
    QTest::newRow("title alone") << QByteArray() << 1 << 30;
    QTest::newRow("values") << QByteArray(", \"global\": {\"radius\": 41}") << 2 << 41;
    QTest::newRow("empty values") << QByteArray(", \"global\": {}") << 1 << 30;
    QTest::newRow("parent") << QByteArray(", \"extends\": \"%parent\"") << 2 << 40;
    QTest::newRow("parent and values")
            << QByteArray(", \"extends\": \"%parent\", \"global\": {\"radius\": 41}") << 3 << 41;
    QTest::newRow("unknown parent") << QByteArray(", \"extends\": \"%unknown\"") << 0 << 30;
}

void tst_LiveReload::editInPlace()
{
    QFETCH(QByteArray, members);
    QFETCH(const int, updates);
    QFETCH(const int, radius);

    const ProcessManager process;
    ThemeManager &manager = process.manager();
    auto *parent = new Theme(&manager);
    parent->setTitle(uniqueTitle("Parent"));
    parent->setRadius(40);
    manager.addTheme(parent);
    members.replace("%parent", parent->title().toUtf8());
    members.replace("%unknown", uniqueTitle("Unknown").toUtf8());

    auto *theme = addFile(&manager, "edited", 30);
    manager.setCurrent(theme);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    QSignalSpy themeUpdate(theme, &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    rewrite("edited", "{\"title\": \"edited\"" + members + "}");
    if (updates > 0)
        QVERIFY(update.wait());
    else
        QVERIFY(!update.wait(200));
    QCOMPARE(update.count(), updates);
    QCOMPARE(themeUpdate.count(), updates);
    QCOMPARE(current.count(), 0);
    QCOMPARE(attached->radius(), radius);
}

void tst_LiveReload::editTwice()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    // A changed title tells of each reading.
    QSignalSpy reading(a, &Theme::titleChanged);
    rewrite("A", radiusText("A2", 2));
    rewrite("A", radiusText("A2", 2));
    rewrite("A", radiusText("A2", 2));
    rewrite("A", radiusText("A2", 2));
    QTRY_COMPARE(attached->radius(), 2);
    QCOMPARE(reading.count(), 1);
    rewrite("A", radiusText("A3", 3));
    QTRY_COMPARE(attached->radius(), 3);
    QCOMPARE(reading.count(), 2);
    QVERIFY(!reading.wait(100));
    QCOMPARE(reading.count(), 2);
}

void tst_LiveReload::replaceByRename()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 50);
    manager.setCurrent(a);
    QSignalSpy reading(a, &Theme::titleChanged);
    replace("A", radiusText("A2", 2));
    reading.wait(500);
    QVERIFY(reading.count() <= 1);
    const int afterRename = reading.count();
    QCOMPARE(Theme::global()->radius(), 1 + afterRename);

    // The watch went with the old file.
    rewrite("A", radiusText("A3", 3));
    replace("A", radiusText("A4", 4));
    QVERIFY(!reading.wait(300));
    QCOMPARE(reading.count(), afterRename);

    // Switching away and back arms it again, without reading what was missed.
    manager.setCurrent(b);
    manager.setCurrent(a);
    QCOMPARE(reading.count(), afterRename);
    rewrite("A", radiusText("A5", 5));
    QTRY_COMPARE(Theme::global()->radius(), 5);
    QCOMPARE(reading.count(), afterRename + 1);
}

void tst_LiveReload::deleteFile()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 9, "#0a0b0c");
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    expectOpenFailure();
    QVERIFY(QFile::remove(a->filename()));
    QVERIFY(!update.wait(300));
    QCOMPARE(manager.current(), a);
    QCOMPARE(attached->radius(), 9);
    QCOMPARE(attached->colors()->foreground(), QColor(0x0a, 0x0b, 0x0c));
    QCOMPARE(attached->title(), QStringLiteral("A"));
}

void tst_LiveReload::truncateFile()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 9);
    manager.setCurrent(a);
    QSignalSpy update(a, &Theme::needUpdate);
    rewrite("A", QByteArray());
    QVERIFY(!update.wait(200));
    QCOMPARE(Theme::global()->radius(), 9);
    // The watch stays: the rest of a slow save arrives.
    rewrite("A", radiusText("A", 10));
    QTRY_COMPARE(Theme::global()->radius(), 10);
}

void tst_LiveReload::onlyTheCurrentFileIsWatched()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 2);
    manager.setCurrent(a);
    manager.setCurrent(b);
    QSignalSpy readingA(a, &Theme::titleChanged);
    QSignalSpy readingB(b, &Theme::titleChanged);
    rewrite("A", radiusText("A2", 11));
    QVERIFY(!readingA.wait(200));
    QCOMPARE(readingB.count(), 0);
    rewrite("B", radiusText("B2", 12));
    QTRY_COMPARE(Theme::global()->radius(), 12);
    QCOMPARE(readingB.count(), 1);
    QCOMPARE(readingA.count(), 0);
    QCOMPARE(a->radius(), 1);
}

void tst_LiveReload::switchAwayAndBack()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 2);
    for (int i = 0; i < 5; ++i) {
        manager.setCurrent(a);
        manager.setCurrent(b);
    }
    manager.setCurrent(a);
    QSignalSpy update(a, &Theme::needUpdate);
    QSignalSpy reading(a, &Theme::titleChanged);
    rewrite("A", radiusText("A2", 3));
    QTRY_COMPARE(Theme::global()->radius(), 3);
    QCOMPARE(reading.count(), 1);
    QCOMPARE(update.count(), 2);
}

void tst_LiveReload::extendsItself()
{
    // Once it is loaded, a theme that names itself finds itself; that ends and changes nothing.
    const ProcessManager process;
    ThemeManager &manager = process.manager();
    const QString title = uniqueTitle("Self");
    const QString path = write(QStringLiteral("self.thm"), themeText(title, 4));
    manager.loadThemes(folder(), title);
    Theme *theme = manager.current();
    QCOMPARE(theme->title(), title);
    QSignalSpy update(theme, &Theme::needUpdate);
    QFile file(path);
    write(QStringLiteral("self.thm"),
          "{\"title\": \"" + title.toUtf8() + "\", \"extends\": \"" + title.toUtf8() + "\"}");
    QVERIFY(update.wait());
    QCOMPARE(update.count(), 2);
    QCOMPARE(theme->radius(), 4);
    QCOMPARE(Theme::global()->radius(), 4);
}

void tst_LiveReload::ringAmongLoadedThemes()
{
    const ProcessManager process;
    ThemeManager &manager = process.manager();
    const QByteArray a = uniqueTitle("RingA").toUtf8();
    const QByteArray b = uniqueTitle("RingB").toUtf8();
    write(QStringLiteral("a.thm"), themeText(QString::fromUtf8(a), 4));
    write(QStringLiteral("b.thm"), themeText(QString::fromUtf8(b), 5));
    manager.loadThemes(folder(), QString::fromUtf8(a));
    Theme *theme = manager.current();
    QSignalSpy update(theme, &Theme::needUpdate);
    write(QStringLiteral("b.thm"), "{\"title\": \"" + b + "\", \"extends\": \"" + a + "\"}");
    write(QStringLiteral("a.thm"), "{\"title\": \"" + a + "\", \"extends\": \"" + b + "\"}");
    QVERIFY(update.wait());
    QCOMPARE(update.count(), 2);
    QCOMPARE(theme->radius(), 5); // what the parent held, which was not read again
    QCOMPARE(Theme::global()->radius(), 5);
}

void tst_LiveReload::lateParent()
{
    const ProcessManager process;
    ThemeManager &manager = process.manager();
    const QByteArray title = uniqueTitle("Child").toUtf8();
    const QByteArray parent = uniqueTitle("Late").toUtf8();
    write(QStringLiteral("child.thm"), themeText(QString::fromUtf8(title), 4));
    manager.loadThemes(folder(), QString::fromUtf8(title));
    Theme *theme = manager.current();
    QSignalSpy reading(theme, &Theme::titleChanged);
    const QByteArray text = "{\"title\": \"renamed\", \"extends\": \"" + parent + "\"}";
    write(QStringLiteral("child.thm"), text);
    QVERIFY(!reading.wait(200));
    QCOMPARE(Theme::global()->radius(), 4);
    QCOMPARE(theme->title(), QString::fromUtf8(title));

    write(QStringLiteral("more/late.thm"), themeText(QString::fromUtf8(parent), 44));
    manager.loadThemes(folder() + QLatin1String("/more"));
    write(QStringLiteral("child.thm"), text);
    QTRY_COMPARE(Theme::global()->radius(), 44);
    QCOMPARE(reading.count(), 1);
    QCOMPARE(Theme::global()->title(), QStringLiteral("renamed"));
}

void tst_LiveReload::resourcePathsAreNotWatched_data()
{
    QTest::addColumn<QString>("filename");
    QTest::addColumn<bool>("watched");

    // Relative paths that exist on disk, so that a watcher would find something to watch.
    QTest::newRow("prefix") << QStringLiteral("qrc:/x.thm") << false;
    QTest::newRow("prefix and folder") << QStringLiteral("qrc:/deep/x.thm") << false;
    QTest::newRow("upper case") << QStringLiteral("QRC:/x.thm") << true;
    QTest::newRow("no slash") << QStringLiteral("qrc:x.thm") << true;
    QTest::newRow("not at the start") << QStringLiteral("sub/qrc:/x.thm") << true;
}

void tst_LiveReload::resourcePathsAreNotWatched()
{
    QFETCH(const QString, filename);
    QFETCH(const bool, watched);

    QVERIFY(QDir::setCurrent(folder()));
    write(filename, radiusText("R", 1));
    ThemeManager manager;
    auto *theme = new Theme(&manager);
    QCOMPARE(theme->load(filename), 0);
    manager.addTheme(theme);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(theme);
    QCOMPARE(manager.current(), theme);
    QCOMPARE(current.count(), 1);
    QSignalSpy reading(theme, &Theme::titleChanged);
    write(filename, radiusText("R2", 2));
    QCOMPARE(reading.wait(watched ? 5000 : 300), watched);
    QCOMPARE(Theme::global()->radius(), watched ? 2 : 1);

    // Its link is dropped like that of any theme with a file.
    manager.setCurrent(addTheme(&manager, "Other", 3));
    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    theme->sendUpdate();
    QCOMPARE(update.count(), 0);
}

void tst_LiveReload::filenameChangedWhileCurrent()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 2);
    manager.setCurrent(a);
    a->setFilename(write(QStringLiteral("moved.thm"), radiusText("moved", 3)));
    // The watched file is the one of the switch; what is read is the one named now.
    rewrite("A", radiusText("A2", 4));
    QTRY_COMPARE(Theme::global()->radius(), 3);
    // Whatever was watched for A is not watched for B.
    manager.setCurrent(b);
    QSignalSpy reading(b, &Theme::titleChanged);
    rewrite("A", radiusText("A3", 5));
    write(QStringLiteral("moved.thm"), radiusText("moved2", 6));
    rewrite("B", radiusText("B2", 7));
    QTRY_COMPARE(Theme::global()->radius(), 7);
    QVERIFY(!reading.wait(100));
    QCOMPARE(reading.count(), 1);
}

void tst_LiveReload::fileOfTheGlobalThemeChanges()
{
    // The global theme may be given a file itself; it is then watched like any other.
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 5);
    manager.setCurrent(a);
    Theme::global()->setFilename(write(QStringLiteral("g.thm"), radiusText("G", 31)));
    manager.setCurrent(Theme::global());
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    write(QStringLiteral("g.thm"), radiusText("G", 32));
    QTRY_COMPARE(attached->radius(), 32);
    QVERIFY(update.count() >= 2);
    QVERIFY(update.count() < 10);
    manager.setCurrent(a);
    Theme::global()->setFilename(QString());
    QCOMPARE(attached->radius(), 5);
}

TAVOLINS_TEST_MAIN(tst_LiveReload)
#include "tst_livereload.moc"
