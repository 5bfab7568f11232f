// What is suggested against low contrast, written into the theme as it is told.

#include "checker/checker.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtGui/QColor>
#include <QtTest/QtTest>

#include <algorithm>
#include <random>

class tst_ContrastHelp : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void shadesAreWrittenIntoTheClass();
    void helpMends_data();
    void helpMends();
    void helpMendsRandomThemes();

private:
    using Files = QMap<QString, QByteArray>;

    QVector<Problem> problemsOf(const Files &files);
    void follow(const Problem &problem, Files *files);
    void followEach(const Files &files, int *mended);
};

namespace {

const char *const lightClassInDarkTheme =
        R"({ "title": "T",
    "global": { "colors": { "foreground": "#e8e6f0", "background": "#16141f",
                            "selection": "#4a3f7a" } },
    "primary": { "colors": { "foreground": "#16141f", "background": "#b9a6ff" } } })";

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The member of the theme in \a text that the problem stands in.
QString scopeOf(const Problem &problem, const QByteArray &text)
{
    static const QRegularExpression inherited(QStringLiteral("^in the inherited class `(.*?)`, "));
    const QRegularExpressionMatch match = inherited.match(problem.message);
    if (match.hasMatch())
        return match.captured(1);
    const auto isBehind = [](Position a, Position b) {
        return a.line > b.line || (a.line == b.line && a.column >= b.column);
    };
    const Document document(text);
    for (const Node::Member &member : document.root().members) {
        if (isBehind(problem.begin, document.position(member.node.range.begin))
            && isBehind(document.position(member.node.range.end), problem.end))
            return member.key;
    }
    return QString();
}

QString textOf(const Problem &problem)
{
    static const QRegularExpression text(QStringLiteral("the contrast of `(\\w+)`"));
    return text.match(problem.message).captured(1);
}

/// The problems as the texts that are hard to read, each with its file and scope.
QSet<QString> namesOf(const QVector<Problem> &problems, const QMap<QString, QByteArray> &files)
{
    QSet<QString> names;
    for (const Problem &problem : problems) {
        const QString file = QFileInfo(problem.file).fileName();
        names.insert(QStringList{ file, scopeOf(problem, files.value(file)), textOf(problem) }.join(
                QLatin1Char(' ')));
    }
    return names;
}

bool hasAdvice(const Problem &problem)
{
    const QLatin1String none(", but other colors have to change as well");
    return !problem.help.isEmpty() && !problem.help.first().endsWith(none);
}

QString randomColor(std::mt19937 *engine)
{
    return QColor(QRgb((*engine)() | 0xff000000u)).name();
}

/// Some of the colors of a scope.
QJsonObject randomColors(std::mt19937 *engine)
{
    QJsonObject colors;
    for (const char *key : { "foreground", "background", "lighterForeground", "darkerForeground",
                             "lighterBackground", "darkerBackground" }) {
        // Themes mostly describe the first two.
        if ((*engine)() % 5 < (colors.size() < 2 ? 4u : 1u))
            colors.insert(QLatin1String(key), randomColor(engine));
    }
    return { { QStringLiteral("colors"), colors } };
}

} // namespace

QVector<Problem> tst_ContrastHelp::problemsOf(const Files &files)
{
    for (auto file = files.begin(); file != files.end(); ++file)
        write(QStringLiteral("themes/") + file.key(), *file);
    const CheckReport report = checkThemes({ folder() + QStringLiteral("/themes") });
    QVector<Problem> problems;
    std::copy_if(report.problems.begin(), report.problems.end(), std::back_inserter(problems),
                 [](const Problem &problem) { return problem.code == Code::LowContrast; });
    return problems;
}

/// Writes all that \a problem suggests.
void tst_ContrastHelp::follow(const Problem &problem, Files *files)
{
    static const QRegularExpression forText(
            QStringLiteral("^the nearest color that passes is `(?<color>#\\w+)`$"));
    static const QRegularExpression forWritten(
            QStringLiteral("^the nearest `(?<key>\\w+)` that passes is `(?<color>#\\w+)`$"));
    static const QRegularExpression forOthers(
            QStringLiteral("^write `(?<key>\\w+)` in (?<scope>this class|\"global\")(?:, where it "
                           "is derived from `\\w+`)?: the nearest color that passes is "
                           "`(?<color>#\\w+)`$"));
    static const QRegularExpression forInherited(
            QStringLiteral("^describe this class here as well, with `(?<key>\\w+)` "
                           "`(?<color>#\\w+)`$"));
    const QString fileName = QFileInfo(problem.file).fileName();
    const QString scopeName = scopeOf(problem, files->value(fileName));
    QVERIFY(!scopeName.isEmpty());
    QJsonObject theme = QJsonDocument::fromJson(files->value(fileName)).object();
    QJsonObject scope = theme.value(scopeName).toObject();
    for (const QString &help : problem.help) {
        QRegularExpressionMatch match;
        for (const auto &form : { forText, forWritten, forOthers, forInherited }) {
            if (!match.hasMatch())
                match = form.match(help);
        }
        QVERIFY2(match.hasMatch(), qPrintable(help));
        const bool isForInherited = match.regularExpression() == forInherited;
        if (match.regularExpression() == forOthers)
            QCOMPARE(match.captured(QStringLiteral("scope")) == QLatin1String("\"global\""),
                     scopeName == QLatin1String("global"));
        for (auto file = files->begin(); isForInherited && file != files->end(); ++file) {
            if (scope.isEmpty())
                scope = QJsonDocument::fromJson(*file).object().value(scopeName).toObject();
        }
        QString key = textOf(problem);
        if (match.regularExpression() != forText)
            key = match.captured(QStringLiteral("key"));
        QJsonObject colors = scope.value(QLatin1String("colors")).toObject();
        if (!isForInherited)
            QCOMPARE(colors.contains(key), match.regularExpression() != forOthers);
        colors.insert(key, match.captured(QStringLiteral("color")));
        scope.insert(QStringLiteral("colors"), colors);
    }
    theme.insert(scopeName, scope);
    files->insert(fileName, QJsonDocument(theme).toJson());
}

/// Follows the help of each problem, first in themes that have all the others still, then one after
/// the other until no help is left. Adds to \a mended how many were.
void tst_ContrastHelp::followEach(const Files &files, int *mended)
{
    Files current = files;
    QVector<Problem> problems = problemsOf(current);
    for (bool isFirstRound = true;;) {
        const QSet<QString> before = namesOf(problems, current);
        Files next;
        QVector<Problem> remaining;
        for (const Problem &problem : qAsConst(problems)) {
            if (!hasAdvice(problem) || (!isFirstRound && !next.isEmpty()))
                continue;
            next = current;
            follow(problem, &next);
            if (QTest::currentTestFailed())
                return;
            remaining = problemsOf(next);
            const QSet<QString> expected = before - namesOf({ problem }, current);
            const QSet<QString> created = namesOf(remaining, next) - expected;
            const QStringList texts{
                QStringList(created.cbegin(), created.cend()).join(QLatin1String(", ")),
                problem.message, problem.help.join(QLatin1Char('\n')),
                QString::fromUtf8(next.first())
            };
            QVERIFY2(created.isEmpty(), qPrintable(texts.join(QLatin1Char('\n'))));
            ++*mended;
        }
        isFirstRound = false;
        if (next.isEmpty())
            return;
        current = next;
        problems = remaining;
    }
}

void tst_ContrastHelp::shadesAreWrittenIntoTheClass()
{
    const QVector<Problem> problems = problemsOf(
            { { QStringLiteral("t.thm"), lightClassInDarkTheme } });
    QStringList help;
    for (const Problem &problem : problems) {
        if (problem.begin.line == 4 && textOf(problem) == QLatin1String("foreground"))
            help = problem.help;
    }
    QCOMPARE(help.size(), 2);
    QVERIFY(help.at(0).startsWith(QLatin1String("write `lighterBackground` in this class: ")));
    QVERIFY(help.at(1).startsWith(QLatin1String("write `darkerBackground` in this class: ")));
}

void tst_ContrastHelp::helpMends_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QByteArray>("text");
    const QDir golden(QStringLiteral(TAVOLINS_SOURCE_DIR "/tests/checker/golden/low-contrast"));
    const QStringList names = golden.entryList({ QStringLiteral("triggers-*") },
                                               QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        QStringList paths;
        const QDir folder(golden.filePath(name));
        if (name.endsWith(QLatin1String(".thm")))
            paths.append(golden.filePath(name));
        const QStringList files = folder.entryList(QDir::Files);
        for (const QString &file : files)
            paths.append(folder.filePath(file));
        if (!paths.isEmpty())
            QTest::newRow(qPrintable(name)) << paths << QByteArray();
    }
    QTest::newRow("a light class in a dark theme")
            << QStringList() << QByteArray(lightClassInDarkTheme);
    QTest::newRow("global whose derived shade a class stands on")
            << QStringList() << QByteArray(R"({ "title": "T",
                "global": { "colors": { "foreground": "#1d2b36", "background": "#f4f7f9" } },
                "note": { "colors": { "foreground": "#ffffff", "background": "#404040" } } })");
}

void tst_ContrastHelp::helpMends()
{
    QFETCH(QStringList, paths);
    QFETCH(QByteArray, text);
    Files files;
    for (const QString &path : qAsConst(paths))
        files.insert(QFileInfo(path).fileName(), contentOf(path));
    if (files.isEmpty())
        files.insert(QStringLiteral("t.thm"), text);
    int mended = 0;
    followEach(files, &mended);
    QVERIFY(mended > 0);
    // Here there is help against all of them.
    const QVector<Problem> problems = problemsOf(files);
    for (const Problem &problem : problems)
        QVERIFY2(hasAdvice(problem), qPrintable(problem.message));
}

void tst_ContrastHelp::helpMendsRandomThemes()
{
    std::mt19937 engine(5);
    int mended = 0;
    for (int i = 0; i < 40; ++i) {
        const QJsonObject theme{ { QStringLiteral("title"), QStringLiteral("T") },
                                 { QStringLiteral("global"), randomColors(&engine) },
                                 { QStringLiteral("a"), randomColors(&engine) },
                                 { QStringLiteral("b"), randomColors(&engine) } };
        followEach({ { QStringLiteral("t.thm"), QJsonDocument(theme).toJson() } }, &mended);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY2(mended > 200, qPrintable(QString::number(mended)));
}

TAVOLINS_TEST_MAIN(tst_ContrastHelp)
#include "tst_contrasthelp.moc"
