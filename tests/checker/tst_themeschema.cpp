#include "checker/themeschema.h"

#include "checker/checker.h"
#include "checker/document.h"
#include "checker/startertheme.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtGui/QColor>
#include <QtTest/QtTest>

/// The schema, as a validator that others wrote understands it.
class tst_ThemeSchema : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void bundledThemesAreValid();
    void starterThemeIsValid();
    void documents();
    void agreesWithTheChecker();
    void colorsAreThoseOfQt();
    void tellsWhereThemesAreWrong();

private:
    QStringList validate(const QStringList &files);
};

namespace {

bool has(const CheckReport &report, const QSet<Code> &codes)
{
    return std::any_of(report.problems.begin(), report.problems.end(),
                       [&codes](const Problem &problem) { return codes.contains(problem.code); });
}

/// Whether \a problem is one of the "global" of \a document.
bool isInGlobal(const Problem &problem, const Document &document)
{
    const Node::Member *global = document.root().member(QLatin1String("global"));
    if (!global)
        return false;
    const Position begin = document.position(global->node.range.begin);
    const Position end = document.position(global->node.range.end);
    const auto place = [](Position position) {
        return std::make_pair(position.line, position.column);
    };
    return place(problem.begin) >= place(begin) && place(problem.begin) < place(end);
}

/// Whether the checker suspects a key that may be meant: a class, or what an application reads from
/// one. Only its likeness to a known key speaks against it, of which a schema knows nothing.
bool hasSuspect(const CheckReport &report, const Document &document)
{
    return std::any_of(
            report.problems.begin(), report.problems.end(), [&document](const Problem &problem) {
                return (problem.code == Code::UnknownKey || problem.code == Code::MisplacedKey)
                        && !isInGlobal(problem, document);
            });
}

} // namespace

/// What the validator says of each file.
QStringList tst_ThemeSchema::validate(const QStringList &files)
{
    const QString schema = write(QStringLiteral("schema.json"),
                                 QJsonDocument(themeSchema()).toJson());
    QProcess process;
    process.start(QStringLiteral(PYTHON), QStringList{ QStringLiteral(VALIDATOR), schema } + files);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s", process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput())
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void tst_ThemeSchema::bundledThemesAreValid()
{
    QStringList files;
    const QFileInfoList themes = QDir(QStringLiteral(TAVOLINS_SOURCE_DIR "/themes"))
                                         .entryInfoList({ QStringLiteral("*.thm") });
    for (const QFileInfo &theme : themes)
        files.append(theme.absoluteFilePath());
    QCOMPARE(files.size(), 5);
    const QStringList results = validate(files);
    for (const QString &result : results)
        QCOMPARE(result, QStringLiteral("valid"));
}

void tst_ThemeSchema::starterThemeIsValid()
{
    const QString file = write(QStringLiteral("new.thm"),
                               starterTheme(QStringLiteral("New"), Qt::white, Qt::darkBlue));
    QCOMPARE(validate({ file }), QStringList{ QStringLiteral("valid") });
}

void tst_ThemeSchema::documents()
{
    const auto scope = [](const QByteArray &content) {
        return QByteArray("{\"title\": \"A\", \"global\": " + content + '}');
    };
    const auto colors = [&scope](const QByteArray &content) {
        return scope("{\"colors\": " + content + '}');
    };
    const auto font = [&scope](const QByteArray &content) {
        return scope("{\"fonts\": {\"h2\": " + content + "}}");
    };
    const auto classScope = [](const QByteArray &content) {
        return QByteArray("{\"title\": \"A\", \"header\": " + content + '}');
    };
    const struct
    {
        const char *name;
        QByteArray document;
        bool isValid;
    } rows[] = {
        { "only a title", QByteArray("{\"title\": \"A\"}"), true },
        { "no title", QByteArray("{}"), false },
        { "empty title", QByteArray("{\"title\": \"\"}"), false },
        { "title that is no text", QByteArray("{\"title\": 1}"), false },
        { "an array", QByteArray("[]"), false },
        { "where the schema is", QByteArray("{\"title\": \"A\", \"$schema\": \"schema.json\"}"),
          true },
        { "extends", QByteArray("{\"title\": \"A\", \"extends\": \"B\"}"), true },
        { "extends a number", QByteArray("{\"title\": \"A\", \"extends\": 1}"), false },
        { "empty global", scope("{}"), true },
        { "global that is no object", scope("[]"), false },
        { "misspelt key in global", scope("{\"colours\": {}}"), false },
        { "radius", scope("{\"radius\": 4}"), true },
        { "whole radius with a point", scope("{\"radius\": 4.0}"), true },
        { "radius below zero", scope("{\"radius\": -1}"), false },
        { "radius with a fraction", scope("{\"radius\": 2.5}"), false },
        { "radius beyond what fits", scope("{\"radius\": 2147483648}"), false },
        { "radius as text", scope("{\"radius\": \"4\"}"), false },
        { "misspelt color", colors("{\"foregound\": \"#fff\"}"), false },
        { "shade of the selection", colors("{\"lighterSelection\": \"#fff\"}"), false },
        { "color that is a number", colors("{\"foreground\": 0}"), false },
        { "text that is no color", colors("{\"foreground\": \"#12345\"}"), false },
        { "name in capitals", colors("{\"foreground\": \"SteelBlue\"}"), true },
        { "all keys of a font",
          font("{\"family\": \"F\", \"pointSize\": 1.5, \"weight\": \"Bold\", \"bold\": true, "
               "\"italic\": false, \"capitalization\": \"smallCaps\", \"letterSpacing\": -1}"),
          true },
        { "misspelt key of a font", font("{\"pointsize\": 12}"), false },
        { "size as text", font("{\"pointSize\": \"12\"}"), false },
        { "size zero", font("{\"pointSize\": 0}"), false },
        { "weight as a number", font("{\"weight\": 75}"), false },
        { "unknown capitalization", font("{\"capitalization\": \"Small\"}"), false },
        { "unknown font", scope("{\"fonts\": {\"h5\": {}}}"), false },
        { "class with members of its own",
          classScope("{\"colors\": {}, \"spacing\": {\"small\": [4]}}"), true },
        { "class that is no object", classScope("4"), false },
        { "wrong color in a class", classScope("{\"colors\": {\"foreground\": \"#ff\"}}"), false },
        { "color of the application's own in a class", classScope("{\"colors\": {\"border\": 1}}"),
          true },
        { "comment", "{\"title\": \"A\", \"$comment\": [\"about it\"]}", true },
        { "class name with a blank", QByteArray("{\"title\": \"A\", \"big header\": {}}"), false },
        { "empty class name", QByteArray("{\"title\": \"A\", \"\": {}}"), false },
    };
    // All with one start of the validator, which takes longer than all the rest.
    QStringList files;
    for (const auto &row : rows)
        files.append(write(QStringLiteral("%1.thm").arg(files.size()), row.document));
    const QStringList results = validate(files);
    QCOMPARE(results.size(), files.size());
    int index = 0;
    for (const auto &row : rows) {
        const QString &result = results.at(index++);
        QVERIFY2((result == QLatin1String("valid")) == row.isValid,
                 qPrintable(QLatin1String(row.name) + QStringLiteral(": ") + result));
    }
}

/// Over the checker's own corpus: a theme fits exactly when the checker finds none of what the
/// schema can tell.
void tst_ThemeSchema::agreesWithTheChecker()
{
    const QSet<Code> told{ Code::NotAnObject,
                           Code::MissingTitle,
                           Code::EmptyTitle,
                           Code::UnknownKey,
                           Code::MisplacedKey,
                           Code::WrongType,
                           Code::NotAColor,
                           Code::BadRadius,
                           Code::BadFontSize,
                           Code::UnmatchableClass,
                           Code::UnknownCapitalization };
    QStringList files;
    QDirIterator corpus(QStringLiteral(TAVOLINS_SOURCE_DIR "/tests/checker/golden"),
                        { QStringLiteral("*.thm") }, QDir::Files, QDirIterator::Subdirectories);
    while (corpus.hasNext())
        files.append(corpus.next());
    const QStringList results = validate(files);
    QCOMPARE(results.size(), files.size());
    int fitting = 0;
    int others = 0;
    for (int i = 0; i < files.size(); ++i) {
        // Qt reads a little more than the standard allows.
        const Document document = Document::read(files.at(i));
        if (results.at(i) == QLatin1String("no JSON") || document.fault() == Document::SyntaxError)
            continue;
        const CheckReport report = checkThemes({ files.at(i) });
        // An empty class fits, one that is no object does not; the checker has one code for both.
        if (has(report, { Code::EmptyScope }) || hasSuspect(report, document))
            continue;
        const bool fits = results.at(i) == QLatin1String("valid");
        ++(fits ? fitting : others);
        QVERIFY2(fits != has(report, told),
                 qPrintable(files.at(i) + QStringLiteral(": ") + results.at(i)));
    }
    QVERIFY(fitting > 100);
    QVERIFY(others > 50);
}

void tst_ThemeSchema::colorsAreThoseOfQt()
{
    QStringList texts{ QStringLiteral("#"),           QStringLiteral("#1"),
                       QStringLiteral("#12"),         QStringLiteral("#123"),
                       QStringLiteral("#1234"),       QStringLiteral("#12345"),
                       QStringLiteral("#123456"),     QStringLiteral("#1234567"),
                       QStringLiteral("#12345678"),   QStringLiteral("#123456789"),
                       QStringLiteral("#123456789a"), QStringLiteral("#123456789abc"),
                       QStringLiteral("#12345678z"),  QStringLiteral("#12x"),
                       QStringLiteral("123456"),      QStringLiteral("#ABCDEF"),
                       QStringLiteral("rgb(1,2,3)"),  QStringLiteral("blu"),
                       QStringLiteral("bluee"),       QString() };
    const QStringList names = QColor::colorNames();
    for (const QString &name : names)
        texts += { name, name.toUpper(), name + QLatin1Char('x') };
    QStringList files;
    for (int i = 0; i < texts.size(); ++i)
        files.append(write(QStringLiteral("%1.thm").arg(i),
                           "{\"title\": \"A\", \"global\": {\"colors\": {\"foreground\": \""
                                   + texts.at(i).toLatin1() + "\"}}}"));
    const QStringList results = validate(files);
    QCOMPARE(results.size(), texts.size());
    for (int i = 0; i < texts.size(); ++i)
        QVERIFY2((results.at(i) == QLatin1String("valid")) == QColor::isValidColor(texts.at(i)),
                 qPrintable(texts.at(i) + results.at(i)));
}

void tst_ThemeSchema::tellsWhereThemesAreWrong()
{
    const QString file = write(
            QStringLiteral("a.thm"),
            R"({"title": "A", "global": {"radius": -4}, "header": {"fonts": {"main": {"bold": 1}}}})");
    const QString result = validate({ file }).value(0);
    QVERIFY2(result.startsWith(QLatin1String("$.global.radius: ")), qPrintable(result));
    QVERIFY2(result.contains(QLatin1String("$.header.fonts.main.bold: ")), qPrintable(result));
}

TAVOLINS_TEST_MAIN(tst_ThemeSchema)
#include "tst_themeschema.moc"
