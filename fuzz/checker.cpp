#include "checker/report.h"
#include "fuzz/session.h"
#include "fuzz/targets.h"

#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

namespace {

const char parentDocument[] =
        R"({"title": "Parent", "global": {"radius": 7, "colors": {"foreground": "#102030",
            "background": "#ffffff"}}, "button": {"colors": {"background": "#405060"}}})";

/// Whether the checker says that the theme file \a name is left out.
bool isToldAsLeftOut(const CheckReport &report, const QString &name)
{
    for (const Problem &problem : report.problems) {
        if (QFileInfo(problem.file).fileName() != name)
            continue;
        switch (problem.code) {
        case Code::EmptyFile:
        case Code::UnreadableFile:
        case Code::UnknownParent:
        case Code::ExtendsItself:
        case Code::ExtendsRing:
        case Code::ParentTooLate:
        case Code::ParentLeftOut:
            return true;
        default:
            break;
        }
    }
    return false;
}

bool isCatalogued(const ThemeManager *manager, const QString &path)
{
    for (int row = 0; row < manager->rowCount(); ++row) {
        const QVariant pointer = manager->data(manager->index(row), Qt::UserRole + 1);
        const auto *theme = qobject_cast<Theme *>(pointer.value<QObject *>());
        if (theme && theme->filename() == path)
            return true;
    }
    return false;
}

void checkPlaces(const CheckReport &report, const QByteArray &text)
{
    const int lines = int(text.count('\n')) + 1;
    for (const Problem &problem : report.problems) {
        FuzzSession::check(problem.begin.line >= 1 && problem.begin.column >= 1,
                           "a problem has a place");
        FuzzSession::check(problem.end.line > problem.begin.line
                                   || (problem.end.line == problem.begin.line
                                       && problem.end.column >= problem.begin.column),
                           "a place does not end before it begins");
        if (problem.file.endsWith(QLatin1String("/input.thm")))
            FuzzSession::check(problem.end.line <= lines, "a place is in the text");
        FuzzSession::check(!problem.message.isEmpty(), "a problem has a message");
    }
}

} // namespace

void fuzzChecker(const std::uint8_t *bytes, std::size_t size)
{
    FuzzSession session;
    session.write(QStringLiteral("z.thm"), parentDocument);
    const QByteArray text(reinterpret_cast<const char *>(bytes), int(size));
    const QString path = session.write(QStringLiteral("input.thm"), text);

    const CheckReport report = checkThemes({ session.folder() });
    FuzzSession::check(report.themes == 2 && report.failures.isEmpty(), "both themes are checked");
    checkPlaces(report, text);
    Report::TextStyle style;
    style.hasColors = true;
    style.hasSource = true;
    FuzzSession::check(Report::text(report, style).endsWith(QLatin1Char('\n')),
                       "the report ends with a line");
    FuzzSession::check(QJsonDocument::fromJson(Report::json(report)).isObject(),
                       "the report is JSON");

    session.manager()->loadThemes(session.folder());
    FuzzSession::check(isToldAsLeftOut(report, QStringLiteral("input.thm"))
                               != isCatalogued(session.manager(), path),
                       "what is told as left out is what the catalogue leaves out");
    FuzzSession::settle();
}
