// Rules for the contrast of texts on their backgrounds.

#include "checker/contrast.h"
#include "checker/rules.h"
#include "checker/words.h"

#include <QtCore/QJsonObject>
#include <QtCore/QMap>

#include <algorithm>

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

/// A text on a background.
struct Pair
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
            const QString key = QLatin1String(text.key);
            QVector<Pair> failing;
            for (const ColorRole &surface : colorRoles(BackgroundColors)) {
                Pair pair;
                pair.key = QLatin1String(surface.key);
                if (!concerns(key, pair.key))
                    continue;
                pair.surface = Contrast::blended((colors.*surface.color)(), page);
                pair.ratio = Contrast::ratio((colors.*text.color)(), pair.surface);
                if (pair.ratio < m_context.contrast)
                    failing.append(pair);
            }
            if (failing.isEmpty())
                continue;
            takeDown(colors, page);
            report(key, failing);
        }
    }

private:
    /// Fills the tables, which only a problem needs.
    void takeDown(const ThemeObjectColors &colors, const QColor &page)
    {
        for (const ColorRole &surface : colorRoles(BackgroundColors))
            m_surfaces.insert(QLatin1String(surface.key),
                              Contrast::blended((colors.*surface.color)(), page));
        for (const ColorRole &text : colorRoles(ForegroundColors))
            m_texts.insert(QLatin1String(text.key), (colors.*text.color)());
    }

    /// Whether the pair is this scope's doing, and no palette's.
    bool concerns(const QString &text, const QString &surface) const
    {
        const unsigned textBit = roleBit(text);
        const unsigned surfaceBit = roleBit(surface);
        if (!(m_known & textBit) || !(m_known & surfaceBit))
            return false;
        const bool setsText = m_scope.roles & textBit;
        const bool setsSurface = m_scope.roles & surfaceBit;
        // What an inherited scope sets by itself has been told where it stands.
        return m_scope.colors ? setsText || setsSurface : setsText != setsSurface;
    }

    static QString baseOf(const QString &key)
    {
        for (const ColorFamily family : { ForegroundColors, BackgroundColors }) {
            for (const ColorRole &role : colorRoles(family)) {
                if (key == QLatin1String(role.key))
                    return QLatin1String(role.base);
            }
        }
        return QString();
    }

    /// What in the file decides the color \a key; null if nothing in this scope does.
    const Node::Member *originOf(const QString &key) const
    {
        if (const Node::Member *own = m_scope.colors->member(key))
            return own;
        return m_scope.roles & roleBit(key) ? m_scope.colors->member(baseOf(key)) : nullptr;
    }

    /// Whether the color \a key of this scope is one that this file's "global" has derived.
    bool isDerived(const QString &key) const
    {
        if (m_scope.colors && m_scope.colors->member(key))
            return false;
        const Node::Member *global = m_context.document.root().member(QLatin1String("global"));
        const Node::Member *colors = global ? global->node.member(QLatin1String("colors"))
                                            : nullptr;
        return colors && m_context.summary().globalRoles & roleBit(key)
                && !colors->node.member(key);
    }

    void report(const QString &key, const QVector<Pair> &failing)
    {
        const QColor color = m_texts.value(key);
        QStringList parts;
        for (const Pair &pair : failing) {
            parts.append(QStringLiteral("%1 on `%2` %3")
                                 .arg(ratioText(pair.ratio), pair.key, name(pair.surface)));
        }
        // The text can hardly help it when it is unreadable on nothing but what nobody wrote.
        const bool areDerived = std::all_of(
                failing.begin(), failing.end(),
                [this](const Pair &pair) { return isDerived(pair.key); });
        QStringList help = areDerived ? otherSurfaces(failing) : QStringList();
        const bool isOfSurfaces = !help.isEmpty();
        if (help.isEmpty())
            help = otherText(key, failing);
        if (help.isEmpty() && failing.size() == 1)
            help = otherSurfaces(failing);
        if (help.isEmpty())
            help = otherTextOnOne(key, failing);

        Range place = m_context.valueRange(QStringLiteral("extends"));
        QString origin;
        if (m_scope.colors) {
            const Node::Member *own = originOf(key);
            if (!own)
                origin = QStringLiteral(", which this class does not set,");
            else if (own->key != key)
                origin = QStringLiteral(", which is derived,");
            const Node::Member *surface = originOf(failing.first().key);
            place = (own && !(isOfSurfaces && surface) ? own : surface)->node.range;
        }
        m_findings.add(Code::LowContrast, place,
                       m_scope.introduction
                               + QStringLiteral("the contrast of `%1` %2%3 is %4; texts need %5")
                                         .arg(key, name(color), origin,
                                              parts.join(QLatin1String(", ")),
                                              Words::number(m_context.contrast)),
                       help);
    }

    /// Whether the text \a key could have the color \a text: readable on all its backgrounds.
    bool isReadable(const QString &key, const QColor &text) const
    {
        for (auto surface = m_surfaces.begin(); surface != m_surfaces.end(); ++surface) {
            if (concerns(key, surface.key())
                && Contrast::ratio(text, surface.value()) < m_context.contrast)
                return false;
        }
        return true;
    }

    /// Whether the background \a key could have the color \a surface: all its texts are readable.
    bool isReadableOn(const QString &key, const QColor &surface) const
    {
        for (auto text = m_texts.begin(); text != m_texts.end(); ++text) {
            if (concerns(text.key(), key)
                && Contrast::ratio(text.value(), surface) < m_context.contrast)
                return false;
        }
        return true;
    }

    /// The nearest color for the text \a key that passes on all backgrounds.
    QStringList otherText(const QString &key, const QVector<Pair> &failing) const
    {
        for (const Pair &pair : failing) {
            const QColor candidate = Contrast::nearestPassing(m_texts.value(key), pair.surface,
                                                              m_context.contrast);
            if (candidate.isValid() && isReadable(key, candidate))
                return {
                    QStringLiteral("the nearest color that passes is `%1`").arg(candidate.name())
                };
        }
        return QStringList();
    }

    /// The same with a color that passes on one of the backgrounds.
    QStringList otherTextOnOne(const QString &key, const QVector<Pair> &failing) const
    {
        for (const Pair &pair : failing) {
            const QColor candidate = Contrast::nearestPassing(m_texts.value(key), pair.surface,
                                                              m_context.contrast);
            if (candidate.isValid())
                return { QStringLiteral("the nearest color that passes on `%1` is `%2`, but none "
                                        "passes on all")
                                 .arg(pair.key, candidate.name()) };
        }
        return QStringList();
    }

    /// The nearest colors for the backgrounds of \a failing on which all texts pass; none if one of
    /// them has no such color.
    QStringList otherSurfaces(const QVector<Pair> &failing) const
    {
        QStringList help;
        for (const Pair &pair : failing) {
            const QColor surface = otherSurface(pair);
            if (!surface.isValid())
                return QStringList();
            help.append(
                    isDerived(pair.key)
                            ? QStringLiteral(
                                      "write `%1` in \"global\", where it is derived from `%2`: "
                                      "the nearest color that passes is `%3`")
                                      .arg(pair.key, baseOf(pair.key), surface.name())
                            : QStringLiteral("the nearest `%1` that passes is `%2`")
                                      .arg(pair.key, surface.name()));
        }
        return help;
    }

    QColor otherSurface(const Pair &pair) const
    {
        for (const QColor &text : m_texts) {
            const QColor opaque = Contrast::blended(text, pair.surface);
            QColor candidate = Contrast::nearestPassing(pair.surface, opaque, m_context.contrast);
            if (candidate.isValid() && isReadableOn(pair.key, candidate))
                return candidate;
        }
        return QColor();
    }

    const ThemeContext &m_context;
    const ColoredScope &m_scope;
    const unsigned m_known;
    Findings &m_findings;
    /// The colors of the scope under their keys, backgrounds as they are seen.
    QMap<QString, QColor> m_texts;
    QMap<QString, QColor> m_surfaces;
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
