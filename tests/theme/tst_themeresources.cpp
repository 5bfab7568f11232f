#include "manager/thememanager.h"
#include "support/fontdatabase.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/testfont.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

#include <memory>

namespace {

const QByteArray anyStyle("import QtQml 2.2\nQtObject {}\n");

QString style(const char *name)
{
    return QString::fromUtf8(name);
}

QStringList styleNames(const Theme &theme)
{
    QStringList names = dataOf(theme)->styles.keys();
    names.sort();
    return names;
}

} // namespace

class tst_ThemeResources : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void complementaryColor_data();
    void complementaryColor();
    void complementOfATransparentColor_data();
    void complementOfATransparentColor();
    void complementFollowsTheClassNames();

    void noStylesFolder();
    void stylesThatAreAFile();
    void styleFiles_data();
    void styleFiles();
    void styleUrlOfAFile_data();
    void styleUrlOfAFile();
    void styleUrlsCanBeLoaded();
    void styleUrlOfAResource();
    void relativeThemeFile();
    void stylesOfOneBaseName();
    void stylesAreReplacedAndKept();
    void stylesOfTheParent();
    void stylesEmitNothing();

    void fontsAreRegistered();
    void fontsAreRegisteredWhateverComesNext_data();
    void fontsAreRegisteredWhateverComesNext();
    void fontsOfALoadedThemeServeItsWeights();
    void newFontsServeTheClassesOfLaterItems();
    void filesThatAreNoFonts();
    void hiddenFontsAreLeftOut();
    void noFontsFolder();
    void nothingLiesBesideNoFile();
};

void tst_ThemeResources::initTestCase()
{
    ThemeManager::getInstance();
    QVERIFY2(!TestFont::content().isEmpty(),
             "DejaVu Sans (package fonts-dejavu-core) is not installed");
}

void tst_ThemeResources::complementaryColor_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QColor>("expected");

    const QColor white(Qt::white);
    const QColor black(Qt::black);
    QTest::newRow("black") << black << white;
    QTest::newRow("white") << white << black;
    QTest::newRow("#808080, just above half light") << QColor(0x80, 0x80, 0x80) << black;
    QTest::newRow("#7f7f7f, just below half light") << QColor(0x7f, 0x7f, 0x7f) << white;
    QTest::newRow("16 bits, just above") << QColor::fromRgba64(0x8000, 0x8000, 0x8000) << black;
    QTest::newRow("16 bits, just below") << QColor::fromRgba64(0x7fff, 0x7fff, 0x7fff) << white;
    // Lightness as in HSL: the mean of the strongest and the weakest part.
    QTest::newRow("red, half light in whole numbers") << QColor(255, 0, 0) << black;
    QTest::newRow("dark red") << QColor(254, 0, 0) << white;
    QTest::newRow("blue") << QColor(0, 0, 255) << black;
    QTest::newRow("dark blue") << QColor(0, 0, 254) << white;
    QTest::newRow("yellow") << QColor(255, 255, 0) << black;
    QTest::newRow("invalid") << QColor() << white;
    // More than half opaque is as good as opaque.
    QTest::newRow("half opaque, light") << QColor(255, 255, 255, 128) << black;
    QTest::newRow("half opaque, dark") << QColor(0, 0, 0, 128) << white;
    QTest::newRow("exactly half opaque, light") << QColor::fromRgbF(1.5, 1.5, 1.5, 0.5) << black;
    QTest::newRow("HSV") << QColor::fromHsv(200, 255, 80) << white;
    QTest::newRow("CMYK") << QColor::fromCmyk(0, 0, 0, 20) << black;
}

void tst_ThemeResources::complementaryColor()
{
    QFETCH(QColor, color);
    QFETCH(QColor, expected);

    Theme theme;
    SignalRecorder recorder(&theme);
    for (const QColor &background : { QColor(Qt::black), QColor(Qt::white) }) {
        theme.colors()->setBackground(background);
        QCOMPARE(theme.complementaryColor(color), expected);
        QCOMPARE(theme.complementaryColor(color).alpha(), 255);
    }
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeResources::complementOfATransparentColor_data()
{
    QTest::addColumn<QColor>("color");

    QTest::newRow("transparent") << QColor(Qt::transparent);
    QTest::newRow("transparent white") << QColor(255, 255, 255, 0);
    QTest::newRow("transparent black") << QColor(0, 0, 0, 0);
    QTest::newRow("just below half opaque, light") << QColor(255, 255, 255, 127);
    QTest::newRow("just below half opaque, dark") << QColor(0, 0, 0, 127);
}

void tst_ThemeResources::complementOfATransparentColor()
{
    QFETCH(QColor, color);

    Theme theme;
    theme.colors()->setBackground(Qt::black);
    QCOMPARE(theme.complementaryColor(color), QColor(Qt::white));
    theme.colors()->setBackground(Qt::white);
    QCOMPARE(theme.complementaryColor(color), QColor(Qt::black));
    // The background's own transparency plays no part.
    theme.colors()->setBackground(QColor(255, 255, 255, 0));
    QCOMPARE(theme.complementaryColor(color), QColor(Qt::black));
    theme.colors()->setBackground(QColor(0, 0, 0, 0));
    QCOMPARE(theme.complementaryColor(color), QColor(Qt::white));
}

void tst_ThemeResources::complementFollowsTheClassNames()
{
    Theme theme;
    theme.colors()->setBackground(Qt::white);
    dataOf(theme)->classScopes.insert(style("dark"),
                                      parsed(R"({"colors": {"background": "black"}})"));
    QCOMPARE(theme.complementaryColor(Qt::transparent), QColor(Qt::black));
    theme.setClassnames(style("dark"));
    QCOMPARE(theme.complementaryColor(Qt::transparent), QColor(Qt::white));
}

void tst_ThemeResources::noStylesFolder()
{
    Theme theme;
    dataOf(theme)->styles.insert(style("Own"), style("file:///own.qml"));
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(styleNames(theme), QStringList(style("Own")));
    QCOMPARE(theme.getStyle(style("Button")), QString());
    QCOMPARE(theme.getStyle(style("Own")), style("file:///own.qml"));
}

void tst_ThemeResources::stylesThatAreAFile()
{
    write(style("styles"), anyStyle);
    Theme theme;
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QVERIFY(dataOf(theme)->styles.isEmpty());
}

void tst_ThemeResources::styleFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");

    const auto row = [](const char *name, const char *file, const char *entry) {
        QTest::newRow(name) << QString::fromUtf8(file) << QString::fromUtf8(entry);
    };
    row("ordinary", "Card.qml", "Card");
    row("suffix in upper case", "Panel.QML", "Panel");
    row("suffix in mixed case", "Panel.Qml", "Panel");
    row("two dots", "Button.dark.qml", "Button");
    row("variant", "Button_primary.qml", "Button_primary");
    row("lower case", "card.qml", "card");
    row("blank", "My Card.qml", "My Card");
    row("unicode", "Knöpfe_名.qml", "Knöpfe_名");
    row("hidden", ".Hidden.qml", nullptr);
    row("only the suffix", ".qml", nullptr);
    row("other suffix", "Card.qmlc", nullptr);
    row("other suffix before", "Card.js", nullptr);
    row("no dot", "Cardqml", nullptr);
    row("backup", "Card.qml~", nullptr);
    row("in a folder below", "below/Card.qml", nullptr);
    row("folder of that name", "Sub.qml/Card.txt", nullptr);
}

void tst_ThemeResources::styleFiles()
{
    QFETCH(QString, file);
    QFETCH(QString, name);

    const QString path = write(style("styles/") + file, anyStyle);
    Theme theme;
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    if (name.isNull()) {
        QCOMPARE(styleNames(theme), QStringList());
        return;
    }
    QCOMPARE(styleNames(theme), QStringList(name));
    QCOMPARE(QUrl(theme.getStyle(name)).toLocalFile(), path);
}

void tst_ThemeResources::styleUrlOfAFile_data()
{
    QTest::addColumn<QString>("themeFolder");
    QTest::addColumn<QString>("urlEnd");

    const auto row = [](const char *name, const char *themeFolder, const char *urlEnd) {
        QTest::newRow(name) << QString::fromUtf8(themeFolder) << QString::fromUtf8(urlEnd);
    };
    row("ordinary", "t", "/t/styles/Card.qml");
    // The form for people: readable where that is not ambiguous.
    row("blank", "my themes", "/my themes/styles/Card.qml");
    row("unicode", "thème", "/thème/styles/Card.qml");
    row("percent sign", "50%", "/50%25/styles/Card.qml");
    row("hash sign", "a#b", "/a%23b/styles/Card.qml");
    row("question mark", "a?b", "/a%3Fb/styles/Card.qml");
}

void tst_ThemeResources::styleUrlOfAFile()
{
    QFETCH(QString, themeFolder);
    QFETCH(QString, urlEnd);

    const QString path = write(themeFolder + style("/styles/Card.qml"), anyStyle);
    Theme theme;
    QCOMPARE(theme.load(write(themeFolder + style("/a.thm"), "{}")), 0);
    const QString url = theme.getStyle(style("Card"));
    QCOMPARE(url, style("file://") + folder() + urlEnd);
    QVERIFY(url.startsWith(style("file:///")));
    QCOMPARE(QUrl(url).toLocalFile(), path);
}

void tst_ThemeResources::styleUrlsCanBeLoaded()
{
    write(style("styles/Card.qml"), anyStyle);
    Theme onDisk;
    QCOMPARE(onDisk.load(write(style("a.thm"), "{}")), 0);
    Theme inResources;
    QCOMPARE(inResources.load(style(":/t/a.thm")), 0);
    QQmlEngine engine;
    for (Theme *theme : { &onDisk, &inResources }) {
        QQmlComponent component(&engine, QUrl(theme->getStyle(style("Card"))));
        const std::unique_ptr<QObject> card(component.create());
        QVERIFY2(card, qPrintable(component.errorString()));
        QCOMPARE(card->objectName(), theme == &onDisk ? QString() : style("card"));
    }
}

void tst_ThemeResources::styleUrlOfAResource()
{
    Theme theme;
    QCOMPARE(theme.load(style(":/t/a.thm")), 0);
    QCOMPARE(theme.title(), style("From the resources"));
    QCOMPARE(theme.radius(), 3);
    QCOMPARE(dataOf(theme)->styles,
             (QHash<QString, QString>{ { style("Card"), style("qrc://:/t/styles/Card.qml") } }));
    QCOMPARE(theme.getStyle(style("Card")), style("qrc://:/t/styles/Card.qml"));
}

void tst_ThemeResources::relativeThemeFile()
{
    const QString path = write(style("styles/Card.qml"), anyStyle);
    write(style("a.thm"), R"({"title": "Relative"})");
    QVERIFY(QDir::setCurrent(folder()));
    Theme theme;
    QCOMPARE(theme.load(style("a.thm")), 0);
    QCOMPARE(theme.title(), style("Relative"));
    QCOMPARE(theme.filename(), style("a.thm"));
    QCOMPARE(theme.getStyle(style("Card")),
             QUrl::fromLocalFile(QFileInfo(path).canonicalFilePath()).toString());
}

void tst_ThemeResources::stylesOfOneBaseName()
{
    write(style("styles/Button.qml"), anyStyle);
    write(style("styles/Button.dark.qml"), anyStyle);
    Theme theme;
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(styleNames(theme), QStringList(style("Button")));
    // The one that the file system lists last.
    const QString last =
            QDir(folder() + style("/styles")).entryList(QDir::Files, QDir::NoSort).last();
    QCOMPARE(theme.getStyle(style("Button")),
             style("file://") + folder() + style("/styles/") + last);
}

void tst_ThemeResources::stylesAreReplacedAndKept()
{
    const QString path = write(style("styles/Card.qml"), anyStyle);
    const QString card = QUrl::fromLocalFile(path).toString();
    Theme theme;
    dataOf(theme)->styles = { { style("Card"), style("file:///other.qml") },
                              { style("Own"), style("file:///own.qml") } };
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(theme.getStyle(style("Card")), card);
    QCOMPARE(theme.getStyle(style("Own")), style("file:///own.qml"));

    // A style stays when its file goes.
    QVERIFY(QFile::remove(path));
    write(style("styles/Field.qml"), anyStyle);
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(styleNames(theme), QStringList({ style("Card"), style("Field"), style("Own") }));
    QCOMPARE(theme.getStyle(style("Card")), card);
}

void tst_ThemeResources::stylesOfTheParent()
{
    write(style("parent/styles/Card.qml"), anyStyle);
    write(style("parent/styles/Field.qml"), anyStyle);
    write(style("child/styles/Card.qml"), anyStyle);
    Theme parent;
    QCOMPARE(parent.load(write(style("parent/a.thm"), R"({"title": "Parent of styles"})")), 0);
    ThemeManager::getInstance()->addTheme(&parent);
    for (const char *document : { R"({"extends": "Parent of styles"})",
                                  R"({"extends": "Parent of styles", "global": {"radius": 3}})" }) {
        Theme child;
        QCOMPARE(child.load(write(style("child/a.thm"), document)), 0);
        QCOMPARE(child.getStyle(style("Card")),
                 style("file://") + folder() + style("/child/styles/Card.qml"));
        QCOMPARE(child.getStyle(style("Field")),
                 style("file://") + folder() + style("/parent/styles/Field.qml"));
    }
}

void tst_ThemeResources::stylesEmitNothing()
{
    write(style("styles/Card.qml"), anyStyle);
    Theme theme;
    theme.setFilename(folder() + style("/a.thm"));
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    theme.loadThemeQmlStyles();
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(styleNames(theme), QStringList(style("Card")));
}

void tst_ThemeResources::fontsAreRegistered()
{
    const QString file = write(style("fonts/probe.ttf"), TestFont::content());
    QVERIFY(!FontDatabase::families().contains(TestFont::family()));
    Theme theme;
    QSignalSpy registered(qApp, &QGuiApplication::fontDatabaseChanged);
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(registered.count(), 1);
    QVERIFY(FontDatabase::families().contains(TestFont::family()));
    // Nothing of it in the theme.
    QVERIFY(dataOf(theme)->styles.isEmpty());
    QVERIFY(dataOf(theme)->classScopes.isEmpty());
    // Fonts stay when the theme goes.
    QVERIFY(QFile::remove(file));
    QCOMPARE(theme.reload(), 0);
    QVERIFY(FontDatabase::families().contains(TestFont::family()));
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void tst_ThemeResources::fontsAreRegisteredWhateverComesNext_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("status");

    QTest::newRow("file that can't be opened") << QByteArray() << -1;
    QTest::newRow("empty file") << QByteArray("") << 1;
    QTest::newRow("unknown parent") << QByteArray(R"({"extends": "Nobody"})") << 2;
    QTest::newRow("no JSON") << QByteArray("no JSON") << 0;
}

void tst_ThemeResources::fontsAreRegisteredWhateverComesNext()
{
    QFETCH(QByteArray, content);
    QFETCH(int, status);

    write(style("fonts/probe.ttf"), TestFont::content());
    write(style("styles/Card.qml"), anyStyle);
    if (status >= 0)
        write(style("a.thm"), content);
    else
        expectOpenFailure();
    Theme theme;
    QCOMPARE(theme.load(folder() + style("/a.thm")), status >= 0 ? status : 1);
    QVERIFY(FontDatabase::families().contains(TestFont::family()));
    // The styles are catalogued only when the file was read.
    QCOMPARE(dataOf(theme)->styles.size(), status == 0 ? 1 : 0);
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void tst_ThemeResources::fontsOfALoadedThemeServeItsWeights()
{
    // Fonts come first, so that the same file may ask for their styles.
    write(style("fonts/probe.ttf"), TestFont::content());
    const QString path = write(style("a.thm"), R"({"global": {"fonts": {
            "main": {"family": "DejaVu Sans", "weight": "Bold"},
            "alternate": {"family": "Probe Fonts", "weight": "Book"}}}})");
    Theme theme;
    QFont bold = theme.fonts()->alternateFont();
    bold.setWeight(QFont::Bold);
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(theme.fonts()->mainFont().weight(), int(QFont::Bold));
    QCOMPARE(theme.fonts()->alternateFont().family(), TestFont::family());
    const QFont read = theme.fonts()->readFont(
            parsed(R"({"family": "Probe Fonts", "weight": "Book"})"), bold);
    QCOMPARE(read.weight(), int(QFont::Normal));
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void tst_ThemeResources::newFontsServeTheClassesOfLaterItems()
{
    Theme theme;
    QFont bold;
    bold.setWeight(QFont::Bold);
    theme.fonts()->setAlternateFont(bold);
    dataOf(theme)->classScopes.insert(
            style("a"),
            parsed(R"({"fonts": {"alternate": {"family": "Probe Fonts", "weight": "Book"}}})"));
    Theme before(theme);
    before.setClassnames(style("a"));
    QCOMPARE(before.fonts()->alternateFont().weight(), int(QFont::Bold));
    write(style("fonts/probe.ttf"), TestFont::content());
    theme.setFilename(folder() + style("/a.thm"));
    theme.loadThemeFonts();
    Theme after(theme);
    after.setClassnames(style("a"));
    QCOMPARE(after.fonts()->alternateFont().weight(), int(QFont::Normal));
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void tst_ThemeResources::filesThatAreNoFonts()
{
    // On both sides of the font, whatever order the file system lists them in.
    write(style("fonts/a.txt"), "These fonts are free.");
    write(style("fonts/b.ttf"), "not a font");
    write(style("fonts/empty.otf"), "");
    write(style("fonts/probe.data"), TestFont::content());
    write(style("fonts/z.txt"), "These fonts are free.");
    write(style("fonts/below/folder.txt"), "");
    Theme theme;
    QSignalSpy registered(qApp, &QGuiApplication::fontDatabaseChanged);
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(registered.count(), 1);
    QVERIFY(FontDatabase::families().contains(TestFont::family()));
    QVERIFY(QFontDatabase::removeAllApplicationFonts());
}

void tst_ThemeResources::hiddenFontsAreLeftOut()
{
    write(style("fonts/.probe.ttf"), TestFont::content());
    write(style("fonts/below/probe.ttf"), TestFont::content());
    Theme theme;
    QSignalSpy registered(qApp, &QGuiApplication::fontDatabaseChanged);
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    QCOMPARE(registered.count(), 0);
    QVERIFY(!FontDatabase::families().contains(TestFont::family()));
}

void tst_ThemeResources::nothingLiesBesideNoFile()
{
    // Folders of the right names, where relative paths lead.
    write(style("fonts/probe.ttf"), TestFont::content());
    write(style("styles/Card.qml"), "");
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder()));
    QSignalSpy registered(qApp, &QGuiApplication::fontDatabaseChanged);
    Theme theme;
    theme.loadThemeFonts();
    theme.loadThemeQmlStyles();
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(registered.count(), 0);
    QCOMPARE(styleNames(theme), QStringList());
}

void tst_ThemeResources::noFontsFolder()
{
    QSignalSpy registered(qApp, &QGuiApplication::fontDatabaseChanged);
    Theme theme;
    QCOMPARE(theme.load(write(style("a.thm"), "{}")), 0);
    write(style("fonts"), "a file");
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(registered.count(), 0);
}

TAVOLINS_TEST_MAIN(tst_ThemeResources)
#include "tst_themeresources.moc"
