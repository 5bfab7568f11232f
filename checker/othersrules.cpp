// Rules that compare a theme with the others of its folder.

#include "checker/rules.h"
#include "checker/words.h"

namespace {

const int listedThemes = 3;

void checkTitles(const ThemeContext &context, Findings &findings)
{
    const ThemeSet &set = context.set;
    const QString &title = context.entry().title;
    if (title.isEmpty())
        return;
    const Range range = context.valueRange(QStringLiteral("title"));
    const int first = set.firstTitled.value(title);
    const int firstAlike = set.firstTitledAlike.value(title.toLower());
    if (first != context.index) {
        findings.add(Code::DuplicateTitle, range,
                     QStringLiteral("%1 has the title %2 already, so this theme can't be found by "
                                    "it")
                             .arg(set.place(first), Words::quoted(title)));
    } else if (firstAlike != context.index) {
        findings.add(Code::SimilarTitles, range,
                     QStringLiteral("%1 is titled %2, which differs in letter case only")
                             .arg(set.place(firstAlike),
                                  Words::quoted(set.entries.at(firstAlike).title)));
    }
}

void checkClasses(const ThemeContext &context, Findings &findings)
{
    const ThemeSet &set = context.set;
    const QVector<int> &described = context.summary().describedClasses;
    QStringList missing;
    QStringList others;
    for (int name = 0; name < set.classUses.size(); ++name) {
        const ThemeSet::ClassUse &use = set.classUses.at(name);
        if (use.count == 0 || described.contains(name) || set.mistakenClasses.contains(name))
            continue;
        missing.append(set.classNames.at(name));
        for (const int theme : use.themes) {
            const LoadOrder::Entry &entry = set.entries.at(theme);
            others.append(entry.title.isEmpty() ? entry.name : entry.title);
        }
    }
    if (missing.isEmpty())
        return;
    missing.sort();
    others.removeDuplicates();
    findings.add(Code::UnevenClass, context.valueRange(QStringLiteral("title")),
                 QStringLiteral("%1 %2 described by other themes (%3), but not by this one")
                         .arg(Words::quotedList(missing),
                              missing.size() == 1 ? QStringLiteral("is") : QStringLiteral("are"),
                              Words::quotedList(others.mid(0, listedThemes))),
                 { QStringLiteral("after a switch from there, items of %1 keep what that theme "
                                  "describes")
                           .arg(missing.size() == 1 ? QStringLiteral("this class")
                                                    : QStringLiteral("these classes")),
                   QStringLiteral("add `\"%1\": {}` where they should look like other items")
                           .arg(missing.first()) });
}

} // namespace

void checkAmongOthers(const ThemeContext &context, Findings &findings)
{
    if (!context.isLoaded() || context.document.fault() != Document::NoFault)
        return;
    checkTitles(context, findings);
    checkClasses(context, findings);
}
