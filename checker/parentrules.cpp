// Rules for what a theme extends.

#include "checker/rules.h"
#include "checker/words.h"

#include <QtCore/QJsonObject>

namespace {

const int listedTitles = 12;

/// Why the theme that \a context looks at, which waits for a parent in vain, is left out.
class LeftOut
{
public:
    LeftOut(const ThemeContext &context, Findings &findings)
        : m_context(context)
        , m_findings(findings)
        , m_set(context.set)
        , m_parentTitle(context.entry().extends)
        , m_range(context.valueRange(QStringLiteral("extends")))
    {
    }

    void explain()
    {
        const int late = m_set.firstTitled.value(m_parentTitle, -1);
        const int parent = m_set.firstLeftOut.value(m_parentTitle, -1);
        if (late >= 0)
            explainTooLate(late);
        else if (m_parentTitle == m_context.entry().title)
            add(Code::ExtendsItself, QStringLiteral("this theme extends itself"),
                { QStringLiteral("name another theme, or remove `extends`") });
        else if (parent >= 0)
            explainParentLeftOut(parent);
        else
            explainUnknown();
    }

private:
    /// \a what is said of this theme.
    void add(Code code, const QString &what, const QStringList &help)
    {
        m_findings.add(code, m_range, what + QStringLiteral(", so it is left out"), help);
    }

    void explainUnknown()
    {
        const QStringList titles = m_set.titles;
        QStringList help;
        const QString nearest = Words::nearest(m_parentTitle, titles);
        if (!nearest.isEmpty())
            help.append(QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)));
        if (!titles.isEmpty())
            help.append(QStringLiteral("the titles here are %1")
                                .arg(Words::quotedList(titles, listedTitles)));
        add(Code::UnknownParent,
            QStringLiteral("this theme extends %1, a title that no theme here has")
                    .arg(Words::quoted(m_parentTitle)),
            help);
    }

    void explainTooLate(int parent)
    {
        const LoadOrder::Entry &own = m_context.entry();
        const LoadOrder::Entry &other = m_set.entries.at(parent);
        const QString parentText = QStringLiteral("%1 (%2)").arg(Words::quoted(m_parentTitle),
                                                                 other.name);
        if (other.folder != own.folder) {
            add(Code::ParentTooLate,
                QStringLiteral("this theme extends %1, which is in a folder that is loaded later")
                        .arg(parentText),
                { QStringLiteral(
                        "load the folders in the other order, or move one of the files") });
            return;
        }
        QStringList help;
        const QString name = LoadOrder::nameThatLoads(m_set.entries, m_context.index, parent);
        if (!name.isEmpty())
            help.append(QStringLiteral("rename this file so that it comes behind %1, to %2 for "
                                       "instance")
                                .arg(other.name, name));
        add(Code::ParentTooLate,
            QStringLiteral("this theme extends %1, which waits for %2 and comes after the one more "
                           "try that this theme gets")
                    .arg(parentText, Words::quoted(other.extends)),
            help);
    }

    void explainParentLeftOut(int parent)
    {
        QVector<int> chain{ m_context.index };
        for (int next = parent; next >= 0;) {
            const auto again = chain.indexOf(next);
            if (again == 0) {
                explainRing(chain);
                return;
            }
            if (again > 0)
                break;
            chain.append(next);
            next = m_set.firstLeftOut.value(m_set.entries.at(next).extends, -1);
        }
        add(Code::ParentLeftOut,
            QStringLiteral("this theme extends %1, which is left out itself")
                    .arg(Words::quoted(m_parentTitle)),
            { QStringLiteral("mend %1 first").arg(m_set.place(parent)) });
    }

    void explainRing(const QVector<int> &ring)
    {
        QStringList titles;
        for (const int theme : ring)
            titles.append(Words::quoted(m_set.entries.at(theme).title));
        titles.append(titles.first());
        add(Code::ExtendsRing,
            QStringLiteral("this theme is in a ring of themes that extend each other, %1")
                    .arg(titles.join(QStringLiteral(" → "))),
            { QStringLiteral("one of them must not extend the next") });
    }

    const ThemeContext &m_context;
    Findings &m_findings;
    const ThemeSet &m_set;
    const QString m_parentTitle;
    const Range m_range;
};

/// A "global" replaces all that the parent has but its classes and styles.
void checkDiscarded(const ThemeContext &context, Findings &findings)
{
    const Node::Member *global = context.document.root().member(QLatin1String("global"));
    if (!global || global->node.value.toObject().isEmpty())
        return;
    const QJsonObject scope = global->node.value.toObject();
    const QJsonObject colors = scope.value(QLatin1String("colors")).toObject();
    QStringList missing;
    for (const char *color : { "foreground", "background", "selection" }) {
        if (!colors.contains(QLatin1String(color)))
            missing.append(QLatin1String(color));
    }
    if (scope.value(QLatin1String("fonts")).toObject().isEmpty())
        missing.append(QStringLiteral("fonts"));
    if (!scope.contains(QLatin1String("radius")))
        missing.append(QStringLiteral("radius"));
    if (missing.isEmpty())
        return;
    findings.add(Code::GlobalDiscardsParent, global->keyRange,
                 QStringLiteral("`global` is laid over the application's defaults, so %1 of %2 %3 "
                                "not inherited")
                         .arg(Words::quotedList(missing), Words::quoted(context.entry().extends),
                              missing.size() == 1 && missing.first() != QLatin1String("fonts")
                                      ? QStringLiteral("is")
                                      : QStringLiteral("are")),
                 QStringLiteral("set all of them here, or leave `global` out to inherit them all"));
}

} // namespace

void checkParent(const ThemeContext &context, Findings &findings)
{
    if (context.entry().extends.isEmpty())
        return;
    if (context.isLoaded())
        checkDiscarded(context, findings);
    else
        LeftOut(context, findings).explain();
}
