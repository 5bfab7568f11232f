#include "manager/thememanager.h"
#include "readme/markdown.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

/// What a reader may copy from docs/using.md, each piece in an application of its own.
class tst_Pages : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void paths_data();
    void paths();
    void pieces_data();
    void pieces();
    void chooserRemembers();
    void linksLeadSomewhere_data();
    void linksLeadSomewhere();

private:
    QString run(const QString &heading, const QString &probe);
    QString piece(const QString &heading, const QString &language) const;
    void writeThemes(const QString &themes);

    const Markdown m_page{ QStringLiteral("docs/using.md") };
};

namespace {

const QString imports = QStringLiteral("Using themes");
const QString chooser = QStringLiteral("A chooser that remembers");

struct Expectation
{
    /// Written into the application after the piece; its function probe() is called last and tells
    /// on the log what it sees.
    QString probe;
    /// The log.
    QString log;
};

/// What the pieces do, by the headings that they stand under.
const QHash<QString, Expectation> &expectations()
{
    static const QHash<QString, Expectation> table = {
        { QStringLiteral("Which folder is loaded"),
          { QStringLiteral(R"(
                function probe() {
                    console.log(ThemeManager.rowCount(), ThemeManager.current.title)
                    console.log(pathOf("qrc:/themes"))
                })"),
            QStringLiteral("2 Harbour\n:/themes") } },
        { QStringLiteral("Whether it found something"),
          { QStringLiteral("function probe() { console.log(ThemeManager.currentIndex) }"),
            // The working directory has no themes.
            QStringLiteral("There are no themes.\n-1") } },
        { QStringLiteral("Titles and themes in a delegate"),
          { QStringLiteral(R"(
                Component.onCompleted: ThemeManager.loadThemes(folder + "/themes", "Harbour")
                function probe() {
                    list.forceLayout()
                    const first = list.itemAtIndex(0), second = list.itemAtIndex(1)
                    const tell = () => console.log(first.font.bold, first.palette.text,
                                                   first.background.color, second.font.bold,
                                                   second.palette.text, second.background.color)
                    console.log(first.text, second.text, typeof first.display)
                    tell()
                    second.clicked()
                    console.log(ThemeManager.current.title)
                    tell()
                })"),
            QStringLiteral("Harbour Night number\n"
                           "true #1d2b36 #f4f7f9 false #dde6ee #101820\nNight\n"
                           "false #1d2b36 #f4f7f9 true #dde6ee #101820") } },
        { QStringLiteral("Class names belong to one item"),
          { QStringLiteral(R"(
                Component.onCompleted: ThemeManager.loadThemes(folder + "/themes", "Harbour")
                function tell() {
                    for (let i = 0; i < header.children.length; ++i)
                        console.log(header.children[i].text, header.children[i].color)
                }
                function probe() {
                    tell()
                    ThemeManager.currentIndex = 1
                    tell()
                })"),
            QStringLiteral("as the header #0b5c8a\nas the page #1d2b36\n"
                           "as the header #dde6ee\nas the page #dde6ee") } },
        { QStringLiteral("Classes that only some themes have"),
          // Night comes from the page; Silent is Night without the empty class.
          { QStringLiteral(R"(
                Text { id: header; Theme.classnames: "header"; color: Theme.colors.foreground }
                function show(row) {
                    ThemeManager.currentIndex = row
                    console.log(ThemeManager.current.title, header.color)
                }
                Component.onCompleted: ThemeManager.loadThemes(folder + "/themes", "Harbour")
                function probe() {
                    ThemeManager.loadThemes(folder + "/silent")
                    show(0); show(1); show(2); show(0); show(2)
                })"),
            QStringLiteral("Harbour #0b5c8a\nNight #dde6ee\nSilent #dde6ee\nHarbour #0b5c8a\n"
                           "Silent #0b5c8a") } },
    };
    return table;
}

QString anchor(const QString &heading)
{
    return heading.toLower()
            .remove(QRegularExpression(QStringLiteral("[^a-z0-9 -]")))
            .replace(QLatin1Char(' '), QLatin1Char('-'));
}

} // namespace

/// The only piece in \a language under \a heading; empty if there is none.
QString tst_Pages::piece(const QString &heading, const QString &language) const
{
    QStringList found;
    const QList<Markdown::Block> blocks = m_page.blocks();
    for (const Markdown::Block &block : blocks) {
        if (block.heading == heading && block.language == language)
            found.append(block.code);
    }
    return found.size() == 1 ? found.first() : QString();
}

/// The README's theme, the page's, and the page's without its class.
void tst_Pages::writeThemes(const QString &themes)
{
    const Markdown readme(QStringLiteral("README.md"));
    const QByteArray night = m_page.only(QStringLiteral("json")).toUtf8();
    write(themes + QStringLiteral("/harbour.thm"), readme.only(QStringLiteral("json")).toUtf8());
    write(themes + QStringLiteral("/night.thm"), night);
    QByteArray silent = night;
    silent.replace("\"header\"", "\"other\"").replace("Night", "Silent");
    QVERIFY(silent != night);
    write(themes + QStringLiteral("/../silent/silent.thm"), silent);
}

/// Runs the piece under \a heading with \a probe behind it, in a folder with a blank in its name.
/// Returns what there was on the log.
QString tst_Pages::run(const QString &heading, const QString &probe)
{
    writeThemes(QStringLiteral("an application/themes"));
    QString code = piece(imports, QStringLiteral("qml"))
            + QStringLiteral("Item {\n"
                             "property string folder: \"%1\"\n"
                             "width: 300; height: 300\n"
                             "%2\n%3\n"
                             "Timer { running: true; interval: 1; onTriggered: { try { probe() } "
                             "finally { Qt.exit(42) } } }\n"
                             "}\n")
                      .arg(folder() + QStringLiteral("/an application"),
                           piece(heading, QStringLiteral("qml")), probe);
    code.replace(QStringLiteral("import Tavolins "),
                 QStringLiteral("import " TAVOLINS_QML_URI " "));
    const QString file = write(QStringLiteral("an application/main.qml"), code.toUtf8());

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder() + QStringLiteral("/config"));
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{message}"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(QDir::currentPath());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(TAVOLINS_QMLRUN),
                  { QStringLiteral(TAVOLINS_QML_IMPORT_PATH), file });
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
    }
    if (process.exitCode() != 42)
        qWarning("the application ended with %d", process.exitCode());
    return QString::fromUtf8(process.readAll()).remove(QStringLiteral("qml: ")).trimmed();
}

void tst_Pages::paths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("count");
    const QList<QStringList> rows = m_page.table(QStringLiteral("Path"));
    QCOMPARE(rows.size(), 5);
    for (const QStringList &row : rows) {
        const QString written = Markdown::codeIn(row.at(0)).value(0);
        QTest::newRow(qPrintable(written)) << written.mid(1, written.size() - 2)
                                           << (row.at(1) == QLatin1String("nothing") ? 0 : 2);
    }
}

void tst_Pages::paths()
{
    QFETCH(QString, path);
    QFETCH(int, count);
    writeThemes(QStringLiteral("themes"));
    QDir::setCurrent(folder());
    const ThemeManager *manager = ThemeManager::getInstance();
    const int before = manager->rowCount();
    // The test's folder stands for the one that only the page's reader has.
    ThemeManager::getInstance()->loadThemes(path.replace(QStringLiteral("/srv/acme"), folder()));
    QCOMPARE(manager->rowCount() - before, count);
}

void tst_Pages::pieces_data()
{
    QTest::addColumn<QString>("heading");
    const QList<Markdown::Block> blocks = m_page.blocks();
    for (const Markdown::Block &block : blocks) {
        // These have a test of their own, the latter in tst_commands.
        if (block.heading == imports || block.heading == chooser
            || block.language == QLatin1String("cpp"))
            continue;
        QTest::newRow(qPrintable(block.heading)) << block.heading;
    }
}

void tst_Pages::pieces()
{
    QFETCH(QString, heading);
    QVERIFY2(expectations().contains(heading), "nothing looks at what this piece does");
    const Expectation expected = expectations().value(heading);
    QCOMPARE(run(heading, expected.probe), expected.log);
}

void tst_Pages::chooserRemembers()
{
    const QString probe = QStringLiteral(R"(
        function probe() {
            console.log(ThemeManager.current.title, chooser.currentText, settings.theme)
            %1
        })");
    QDir(folder()).mkpath(QStringLiteral("an application"));
    QDir::setCurrent(folder() + QStringLiteral("/an application"));
    const QString choose = QStringLiteral("chooser.currentIndex = 1; chooser.activated(1); "
                                          "console.log(ThemeManager.current.title)");
    QCOMPARE(run(chooser, probe.arg(choose)), QStringLiteral("Harbour Harbour Harbour\nNight"));
    QCOMPARE(run(chooser, probe.arg(QString())), QStringLiteral("Night Night Night"));

    // Without the stand-in, writing row 0 would choose nothing, as the page says.
    const QString writeRow = QStringLiteral(
            "function probe() { ThemeManager.loadThemes(folder + \"/themes\"); "
            "console.log(ThemeManager.currentIndex); ThemeManager.currentIndex = 0; "
            "console.log(ThemeManager.currentIndex) }");
    QCOMPARE(run(QString(), writeRow), QStringLiteral("-1\n-1"));
}

void tst_Pages::linksLeadSomewhere_data()
{
    QTest::addColumn<QString>("page");
    for (const char *page :
         { "README.md", "CONTRIBUTING.md", "docs/README.md", "docs/using.md", "docs/deploying.md",
           "docs/controls.md", "examples/settings/README.md" })
        QTest::newRow(page) << QString::fromLatin1(page);
}

void tst_Pages::linksLeadSomewhere()
{
    QFETCH(QString, page);
    const QDir root(QStringLiteral(TAVOLINS_SOURCE_DIR));
    const QDir place(QFileInfo(root.filePath(page)).path());
    const QRegularExpression link(QStringLiteral("\\]\\(([^)#]*)(?:#([^)]*))?\\)"));
    int count = 0;
    const QString prose = Markdown(page).prose();
    for (auto i = link.globalMatch(prose); i.hasNext(); ++count) {
        const QRegularExpressionMatch match = i.next();
        const QString target = match.captured(1);
        const QString file = target.isEmpty() ? root.filePath(page) : place.filePath(target);
        QVERIFY2(QFileInfo::exists(file), qPrintable(target));
        if (match.captured(2).isEmpty())
            continue;
        QStringList anchors;
        const QStringList headings =
                Markdown(root.relativeFilePath(QDir::cleanPath(file))).headings();
        for (const QString &heading : headings)
            anchors.append(anchor(heading));
        QVERIFY2(anchors.contains(match.captured(2)), qPrintable(match.captured(0)));
    }
    QVERIFY(count > 0);
}

TAVOLINS_TEST_MAIN(tst_Pages)
#include "tst_pages.moc"
