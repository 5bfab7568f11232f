// What the gallery tells of the current theme, and how it follows its file.

#include "gallery/currenttheme.h"
#include "gallery/galleryview.h"
#include "manager/thememanager.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QFile>
#include <QtTest/QtTest>

class tst_GalleryCurrentTheme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void describesTheTheme();
    void tellsWhereClassesComeFrom();
    void editShowsInTheWindow_data();
    void editShowsInTheWindow();
    void brokenFileKeepsTheLook_data();
    void brokenFileKeepsTheLook();
    void fileThatIsGoneKeepsTheLook();
    void unknownParentIsTold();

private:
    Theme *loadAlone(const QByteArray &document);
};

namespace {

const QPoint pagePixel(240, 10);

QByteArray page(const char *title, const char *color)
{
    return QByteArray("{\n\"title\": \"") + title
            + "\", \"global\": { \"colors\": { \"background\": \"" + color + "\" } } }\n";
}

} // namespace

/// A theme in a folder of its own that is current. Titles are free to repeat: catalogues only grow.
Theme *tst_GalleryCurrentTheme::loadAlone(const QByteArray &document)
{
    const QString path = write(QStringLiteral("live.thm"), document);
    ThemeManager *manager = ThemeManager::getInstance();
    Theme *theme = new Theme(manager);
    if (theme->load(path) != 0)
        return nullptr;
    manager->addTheme(theme);
    manager->setCurrent(theme);
    return theme;
}

void tst_GalleryCurrentTheme::describesTheTheme()
{
    write(QStringLiteral("styles/Button.qml"), "");
    write(QStringLiteral("styles/Button_big_round.qml"), "");
    QVERIFY(loadAlone(R"({ "title": "Told", "zebra": { "radius": 1 }, "code": { "radius": 1 },
                           "header": { "radius": 1 }, "apple": { "radius": 1 }, "empty": {} })"));
    const CurrentTheme current;
    QCOMPARE(current.fileName(), QStringLiteral("live.thm"));
    QCOMPARE(current.extends(), QString());
    QCOMPARE(current.classNames(),
             QStringList({ QStringLiteral("header"), QStringLiteral("code"),
                           QStringLiteral("apple"), QStringLiteral("zebra") }));
    QCOMPARE(current.problem(), QString());
    const QVariantList styles = {
        QVariantMap{ { QStringLiteral("style"), QStringLiteral("Button") },
                     { QStringLiteral("classname"), QString() } },
        QVariantMap{ { QStringLiteral("style"), QStringLiteral("Button") },
                     { QStringLiteral("classname"), QStringLiteral("big_round") } },
    };
    QCOMPARE(current.styles(), styles);
}

void tst_GalleryCurrentTheme::tellsWhereClassesComeFrom()
{
    write(QStringLiteral("1.thm"), R"({ "title": "Eldest", "a": { "radius": 1 },
                                        "b": { "radius": 1 }, "c": { "radius": 1 } })");
    write(QStringLiteral("2.thm"),
          R"({ "title": "Middle", "extends": "Eldest", "b": { "radius": 2 } })");
    write(QStringLiteral("3.thm"),
          R"({ "title": "Youngest", "extends": "Middle", "c": { "radius": 3 } })");
    ThemeManager::getInstance()->loadThemes(folder(), QStringLiteral("Youngest"));
    const CurrentTheme current;
    QCOMPARE(current.extends(), QStringLiteral("Middle"));
    QCOMPARE(current.classNames(),
             QStringList({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") }));
    QCOMPARE(current.classOrigins(),
             QStringList({ QStringLiteral("Eldest"), QStringLiteral("Middle"), QString() }));
}

void tst_GalleryCurrentTheme::editShowsInTheWindow_data()
{
    QTest::addColumn<bool>("byRename");
    QTest::newRow("saved in place") << false;
    QTest::newRow("saved by renaming") << true;
}

void tst_GalleryCurrentTheme::editShowsInTheWindow()
{
    QFETCH(bool, byRename);
    const Theme *theme = loadAlone(page("Live", "#102030"));
    QVERIFY(theme);
    GalleryView view(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QCOMPARE(view.picture().pixelColor(pagePixel), QColor(0x10, 0x20, 0x30));

    for (const char *color : { "#405060", "#708090", "#a0b0c0" }) {
        if (byRename) {
            const QString other = write(QStringLiteral("live.tmp"), page("Live", color));
            QCOMPARE(::rename(QFile::encodeName(other).constData(),
                              QFile::encodeName(theme->filename()).constData()),
                     0);
        } else {
            write(QStringLiteral("live.thm"), page("Live", color));
        }
        QTRY_COMPARE(view.picture().pixelColor(pagePixel), QColor(QLatin1String(color)));
    }
}

void tst_GalleryCurrentTheme::brokenFileKeepsTheLook_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    QTest::newRow("half written") << QByteArray("{\n  \"title\": \"Li")
                                  << QStringLiteral(
                                             "line 2, column 12: a text that is never closed");
    QTest::newRow("comma too many") << QByteArray("{ \"title\": \"Live\", }")
                                    << QStringLiteral("line 1, column 18: a comma before `}`");
    QTest::newRow("array at the root")
            << QByteArray("[]")
            << QStringLiteral("line 1, column 1: the document is a list, not an object");
    QTest::newRow("emptied") << QByteArray() << QStringLiteral("the file is empty");
}

void tst_GalleryCurrentTheme::brokenFileKeepsTheLook()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    const Theme *theme = loadAlone(page("Live", "#102030"));
    QVERIFY(theme);
    const CurrentTheme current;

    write(QStringLiteral("live.thm"), text);
    QTRY_COMPARE(current.problem(), problem);
    QCOMPARE(Theme::global()->colors()->background(), QColor(0x10, 0x20, 0x30));
    QCOMPARE(current.fileName(), QStringLiteral("live.thm"));

    write(QStringLiteral("live.thm"), page("Live", "#405060"));
    QTRY_COMPARE(current.problem(), QString());
    QCOMPARE(Theme::global()->colors()->background(), QColor(0x40, 0x50, 0x60));
    QCOMPARE(theme->title(), QStringLiteral("Live"));
}

void tst_GalleryCurrentTheme::fileThatIsGoneKeepsTheLook()
{
    const Theme *theme = loadAlone(page("Live", "#102030"));
    QVERIFY(theme);
    const CurrentTheme current;

    // The plugin's own watch tries to read the file once.
    expectOpenFailure();
    QVERIFY(QFile::remove(theme->filename()));
    QTRY_COMPARE(current.problem(), QStringLiteral("there is no such file"));
    QCOMPARE(Theme::global()->colors()->background(), QColor(0x10, 0x20, 0x30));

    write(QStringLiteral("live.thm"), page("Live", "#405060"));
    QTRY_COMPARE(current.problem(), QString());
    QCOMPARE(Theme::global()->colors()->background(), QColor(0x40, 0x50, 0x60));
}

void tst_GalleryCurrentTheme::unknownParentIsTold()
{
    QVERIFY(loadAlone(page("Live", "#102030")));
    const CurrentTheme current;
    QSignalSpy changed(&current, &CurrentTheme::changed);
    write(QStringLiteral("live.thm"), R"({ "title": "Live", "extends": "Nobody" })");
    QTRY_COMPARE(current.problem(),
                 QStringLiteral("line 1, column 31: this theme extends `Nobody`, a title that no "
                                "theme here has, so it is left out"));
    QCOMPARE(changed.count(), 1);
    QCOMPARE(Theme::global()->colors()->background(), QColor(0x10, 0x20, 0x30));
}

TAVOLINS_TEST_MAIN(tst_GalleryCurrentTheme)
#include "tst_gallerycurrenttheme.moc"
