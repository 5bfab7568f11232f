// Rules for the contrast of texts on their backgrounds.

#include "checker/contrast.h"
#include "checker/rules.h"
#include "checker/words.h"

#include <QtCore/QJsonObject>

namespace {

QString ratioText(double ratio)
{
    // Cut, not rounded: 4.496 must not read as if it passed.
    return QString::number(int(ratio * 100) / 100.0, 'f', 2);
}

QString name(const QColor &color)
{
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

struct Failing
{
    QString key;
    QColor surface;
    double ratio = 0;
};

/// A scope whose colors are looked at.
struct ColoredScope
{
    /// The roles that it sets itself, derived shades included.
    unsigned roles = 0;
    /// Its "colors" in the file; null if the scope is inherited.
    const Node *colors = nullptr;
    /// What to say of the scope before anything else.
    QString introduction;
};

/// Looks at the colors of one scope.
class ContrastCheck
{
public:
    ContrastCheck(const ThemeContext &context, const ColoredScope &scope, Findings &findings)
        : m_context(context)
        , m_scope(scope)
        , m_known(context.summary().knownRoles | scope.roles)
        , m_findings(findings)
    {
    }

    void run(const ThemeObjectColors &colors)
    {
        // What is transparent lets the theme's own background through.
        const QColor page = Contrast::blended(m_context.scratch->data().colors.background(),
                                              Qt::white);
        for (const ColorRole &text : colorRoles(ForegroundColors)) {
            QVector<Failing> failing;
            for (const ColorRole &surface : colorRoles(BackgroundColors)) {
                if (!concerns(text, surface))
                    continue;
                Failing pair;
                pair.key = QLatin1String(surface.key);
                pair.surface = Contrast::blended((colors.*surface.color)(), page);
                pair.ratio = Contrast::ratio((colors.*text.color)(), pair.surface);
                if (pair.ratio < m_context.contrast)
                    failing.append(pair);
            }
            if (!failing.isEmpty())
                report(text, (colors.*text.color)(), failing);
        }
    }

private:
    /// Whether the pair is this scope's doing, and no palette's.
    bool concerns(const ColorRole &text, const ColorRole &surface) const
    {
        const unsigned textBit = roleBit(QLatin1String(text.key));
        const unsigned surfaceBit = roleBit(QLatin1String(surface.key));
        if (!(m_known & textBit) || !(m_known & surfaceBit))
            return false;
        const bool setsText = m_scope.roles & textBit;
        const bool setsSurface = m_scope.roles & surfaceBit;
        // What an inherited scope sets by itself has been told where it stands.
        return m_scope.colors ? setsText || setsSurface : setsText != setsSurface;
    }

    /// What in the file decides the color \a key; null if nothing in this scope does.
    const Node::Member *originOf(const QString &key) const
    {
        if (const Node::Member *own = m_scope.colors->member(key))
            return own;
        if (!(m_scope.roles & roleBit(key)))
            return nullptr;
        for (const ColorFamily family : { ForegroundColors, BackgroundColors }) {
            for (const ColorRole &role : colorRoles(family)) {
                if (key == QLatin1String(role.key))
                    return m_scope.colors->member(QLatin1String(role.base));
            }
        }
        return nullptr;
    }

    void report(const ColorRole &text, const QColor &color, const QVector<Failing> &failing)
    {
        QStringList parts;
        for (const Failing &pair : failing) {
            parts.append(QStringLiteral("%1 on `%2` %3")
                                 .arg(ratioText(pair.ratio), pair.key, name(pair.surface)));
        }
        const QString key = QLatin1String(text.key);
        Range place = m_context.valueRange(QStringLiteral("extends"));
        QString origin;
        if (m_scope.colors) {
            const Node::Member *own = originOf(key);
            if (!own)
                origin = QStringLiteral(", which this class does not set,");
            else if (own->key != key)
                origin = QStringLiteral(", which is derived,");
            place = (own ? own : originOf(failing.first().key))->node.range;
        }
        QStringList help;
        const QString nearest = nearestText(color, failing);
        if (!nearest.isEmpty())
            help.append(nearest);
        m_findings.add(Code::LowContrast, place,
                       m_scope.introduction
                               + QStringLiteral("the contrast of `%1` %2%3 is %4; texts need %5")
                                         .arg(key, name(color), origin,
                                              parts.join(QLatin1String(", ")),
                                              Words::number(m_context.contrast)),
                       help);
    }

    /// The nearest color that passes wherever this one fails.
    QString nearestText(const QColor &color, const QVector<Failing> &failing) const
    {
        QString nearest;
        for (const Failing &pair : failing) {
            const QColor candidate = Contrast::nearestPassing(color, pair.surface,
                                                              m_context.contrast);
            if (!candidate.isValid())
                continue;
            bool passes = true;
            for (const Failing &other : failing)
                passes = passes && Contrast::ratio(candidate, other.surface) >= m_context.contrast;
            if (passes)
                return QStringLiteral("the nearest color that passes is `%1`")
                        .arg(candidate.name());
            if (nearest.isEmpty())
                nearest = QStringLiteral("the nearest color that passes on `%1` is `%2`, but none "
                                         "passes on all")
                                  .arg(pair.key, candidate.name());
        }
        return nearest;
    }

    const ThemeContext &m_context;
    const ColoredScope &m_scope;
    const unsigned m_known;
    Findings &m_findings;
};

/// Whether an item can have the class \a name, and have it alone.
bool isClassName(const QString &name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char(' ')) && name.trimmed() == name;
}

void checkClass(const ThemeContext &context, const QString &name, const ColoredScope &scope,
                Findings &findings)
{
    if (!scope.roles || !isClassName(name))
        return;
    Theme &theme = context.scratch->theme();
    theme.setClassnames(name);
    ContrastCheck(context, scope, findings).run(*theme.colors());
    theme.setClassnames(QString());
}

void checkOwnScopes(const ThemeContext &context, Findings &findings)
{
    for (const Node::Member &member : context.document.root().members) {
        const Node::Member *colors = member.node.member(QLatin1String("colors"));
        if (member.isReplaced || !colors)
            continue;
        const bool isGlobal = member.key == QLatin1String("global");
        ColoredScope scope;
        scope.roles = colorRolesIn(colors->node.value.toObject(), isGlobal);
        scope.colors = &colors->node;
        if (isGlobal)
            ContrastCheck(context, scope, findings).run(*context.scratch->theme().colors());
        else
            checkClass(context, member.key, scope, findings);
    }
}

/// Classes of the parent on the colors of this theme, which the parent can't know.
void checkInheritedScopes(const ThemeContext &context, Findings &findings)
{
    const int parent = context.outcome().parent;
    if (parent < 0 || !context.summary().hasGlobal)
        return;
    const QHash<QString, QJsonObject> &scopes = context.scratch->data().classScopes;
    const QVector<int> &classes = context.set.themes.at(parent).shownClasses;
    for (const int number : classes) {
        const QString name = context.set.classNames.at(number);
        if (context.document.root().member(name))
            continue;
        ColoredScope scope;
        scope.roles = colorRolesIn(scopes.value(name).value(QLatin1String("colors")).toObject(),
                                   false);
        scope.introduction = QStringLiteral("in the inherited class %1, ").arg(Words::quoted(name));
        checkClass(context, name, scope, findings);
    }
}

} // namespace

void checkContrast(const ThemeContext &context, Findings &findings)
{
    if (context.contrast <= 0 || !context.scratch)
        return;
    checkOwnScopes(context, findings);
    checkInheritedScopes(context, findings);
}
