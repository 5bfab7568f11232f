#include "checker/report.h"

#include "checker/words.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QUrl>

#include <string>

namespace {

const int tabWidth = 4;

// What terminals understand.
const QLatin1String bold("\033[1m");
const QLatin1String red("\033[1;31m");
const QLatin1String magenta("\033[1;35m");
const QLatin1String cyan("\033[1;36m");
const QLatin1String green("\033[32m");
const QLatin1String plain("\033[0m");

QString painted(const QString &text, QLatin1String color, Report::TextStyle style)
{
    return style.hasColors ? color + text + plain : text;
}

QLatin1String colorOf(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return red;
    case Severity::Warning:
        return magenta;
    case Severity::Note:
        break;
    }
    return cyan;
}

/// The line of \a problem with a mark under its place.
QString source(const Problem &problem, Report::TextStyle style)
{
    QString line;
    QString marks;
    const std::u32string characters = problem.excerpt.toStdU32String();
    const int count = int(characters.size());
    const int first = problem.begin.column - 1 - problem.excerptColumn;
    const int last = problem.end.line == problem.begin.line
            ? problem.end.column - 1 - problem.excerptColumn
            : count;
    for (int i = 0; i < count; ++i) {
        const char32_t character = characters[size_t(i)];
        const bool isTab = character == U'\t';
        const int width = isTab ? tabWidth : 1;
        line += isTab ? QString(tabWidth, QLatin1Char(' '))
                      : Words::harmless(QString::fromUcs4(&character, 1));
        if (i < first)
            marks += QString(width, QLatin1Char(' '));
        else if (i > first && i < last)
            marks += QString(width, QLatin1Char('~'));
        else if (i == first)
            marks += QLatin1Char('^') + QString(width - 1, QLatin1Char('~'));
    }
    if (first >= count)
        marks += QLatin1Char('^');
    const QString indent = QStringLiteral("    ");
    return indent + line + QLatin1Char('\n') + indent + painted(marks, green, style)
            + QLatin1Char('\n');
}

QString text(const Problem &problem, Report::TextStyle style)
{
    const QString place = QStringLiteral("%1:%2:%3:")
                                  .arg(Words::harmless(problem.file))
                                  .arg(problem.begin.line)
                                  .arg(problem.begin.column);
    const QString severity = Codes::severityName(problem.severity) + QLatin1Char(':');
    QString result = QStringLiteral("%1 %2 %3 [%4]\n")
                             .arg(painted(place, bold, style),
                                  painted(severity, colorOf(problem.severity), style),
                                  Words::harmless(problem.message), Codes::info(problem.code).name);
    if (style.hasSource && !problem.excerpt.isEmpty())
        result += source(problem, style);
    for (const QString &help : problem.help)
        result += QStringLiteral("    help: %1\n").arg(Words::harmless(help));
    return result;
}

QJsonObject region(const Problem &problem)
{
    QJsonObject region{
        { QStringLiteral("startLine"), problem.begin.line },
        { QStringLiteral("startColumn"), problem.begin.column },
        { QStringLiteral("endLine"), problem.end.line },
        { QStringLiteral("endColumn"), problem.end.column },
    };
    return region;
}

QString sarifLevel(Severity severity)
{
    // The format has the same three words.
    return Codes::severityName(severity);
}

QJsonObject textObject(const QString &text)
{
    return { { QStringLiteral("text"), text } };
}

QString uri(const QString &path)
{
    if (QDir::isAbsolutePath(path))
        return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    return QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
}

QJsonArray sarifRules()
{
    QJsonArray rules;
    for (const CodeInfo &info : Codes::all()) {
        rules.append(QJsonObject{
                { QStringLiteral("id"), info.name },
                { QStringLiteral("shortDescription"), textObject(info.summary) },
                { QStringLiteral("help"),
                  QJsonObject{ { QStringLiteral("text"), Codes::text(info.code) },
                               { QStringLiteral("markdown"), Codes::page(info.code) } } },
                { QStringLiteral("defaultConfiguration"),
                  QJsonObject{ { QStringLiteral("level"), sarifLevel(info.severity) } } },
        });
    }
    return rules;
}

QJsonObject sarifResult(const Problem &problem)
{
    QString message = problem.message;
    for (const QString &help : problem.help)
        message += QLatin1Char('\n') + help;
    const QJsonObject location{
        { QStringLiteral("physicalLocation"),
          QJsonObject{ { QStringLiteral("artifactLocation"),
                         QJsonObject{ { QStringLiteral("uri"), uri(problem.file) } } },
                       { QStringLiteral("region"), region(problem) } } },
    };
    return {
        { QStringLiteral("ruleId"), Codes::info(problem.code).name },
        { QStringLiteral("ruleIndex"), int(problem.code) },
        { QStringLiteral("level"), sarifLevel(problem.severity) },
        { QStringLiteral("message"), textObject(message) },
        { QStringLiteral("locations"), QJsonArray{ location } },
    };
}

} // namespace

QString Report::text(const CheckReport &report, TextStyle style)
{
    QString result;
    for (const Problem &problem : report.problems)
        result += ::text(problem, style);
    return result + summary(report) + QLatin1Char('\n');
}

QString Report::summary(const CheckReport &report)
{
    QStringList counts;
    for (const Severity severity : { Severity::Error, Severity::Warning, Severity::Note }) {
        const int count = report.count(severity);
        if (count > 0)
            counts.append(Words::counted(count, Codes::severityName(severity)));
    }
    const int failures = int(report.failures.size());
    if (failures > 0 && report.themes == 0 && counts.isEmpty())
        return QStringLiteral("nothing was checked");
    const QString result = QStringLiteral("%1: %2").arg(
            Words::counted(report.themes, QStringLiteral("theme")),
            counts.isEmpty() ? QStringLiteral("no problem") : counts.join(QLatin1String(", ")));
    return failures == 0 ? result
                         : result
                    + QStringLiteral("; %1 could not be checked")
                              .arg(Words::counted(failures, QStringLiteral("path")));
}

QByteArray Report::json(const CheckReport &report)
{
    QJsonArray problems;
    for (const Problem &problem : report.problems) {
        problems.append(QJsonObject{
                { QStringLiteral("file"), problem.file },
                { QStringLiteral("line"), problem.begin.line },
                { QStringLiteral("column"), problem.begin.column },
                { QStringLiteral("endLine"), problem.end.line },
                { QStringLiteral("endColumn"), problem.end.column },
                { QStringLiteral("severity"), Codes::severityName(problem.severity) },
                { QStringLiteral("code"), Codes::info(problem.code).name },
                { QStringLiteral("message"), problem.message },
                { QStringLiteral("help"), QJsonArray::fromStringList(problem.help) },
        });
    }
    const QJsonObject object{
        { QStringLiteral("problems"), problems },
        { QStringLiteral("themes"), report.themes },
        { QStringLiteral("errors"), report.count(Severity::Error) },
        { QStringLiteral("warnings"), report.count(Severity::Warning) },
        { QStringLiteral("notes"), report.count(Severity::Note) },
        { QStringLiteral("failures"), QJsonArray::fromStringList(report.failures) },
    };
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray Report::sarif(const CheckReport &report)
{
    QJsonArray results;
    for (const Problem &problem : report.problems)
        results.append(sarifResult(problem));
    QJsonArray notifications;
    for (const QString &failure : report.failures) {
        notifications.append(QJsonObject{ { QStringLiteral("level"), QStringLiteral("error") },
                                          { QStringLiteral("message"), textObject(failure) } });
    }
    const QJsonObject driver{
        { QStringLiteral("name"), QStringLiteral("tavolins") },
        { QStringLiteral("version"), QStringLiteral(CHECKER_VERSION) },
        { QStringLiteral("rules"), sarifRules() },
    };
    const QJsonObject run{
        { QStringLiteral("tool"), QJsonObject{ { QStringLiteral("driver"), driver } } },
        { QStringLiteral("columnKind"), QStringLiteral("unicodeCodePoints") },
        { QStringLiteral("invocations"),
          QJsonArray{ QJsonObject{
                  { QStringLiteral("executionSuccessful"), report.failures.isEmpty() },
                  { QStringLiteral("toolExecutionNotifications"), notifications } } } },
        { QStringLiteral("results"), results },
    };
    const QJsonObject log{
        { QStringLiteral("$schema"),
          QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json") },
        { QStringLiteral("version"), QStringLiteral("2.1.0") },
        { QStringLiteral("runs"), QJsonArray{ run } },
    };
    return QJsonDocument(log).toJson(QJsonDocument::Indented);
}
