// Rules for the contrast of texts on their backgrounds.

#include "checker/contrast.h"
#include "checker/rules.h"
#include "checker/words.h"

#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QSet>

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

/// A color to write under a key of the scope.
struct Change
{
    QString key;
    QColor color;
};
using Changes = QVector<Change>;

/// The colors of a scope under their keys, backgrounds as they are seen.
struct Look
{
    QMap<QString, QColor> texts;
    QMap<QString, QColor> surfaces;
    /// Those that the scope sets itself, and those that it or a theme sets and no palette.
    unsigned roles = 0;
    unsigned known = 0;
};

/// A scope whose colors are looked at.
struct ColoredScope
{
    bool isGlobal = false;
    /// What it describes.
    QJsonObject values;
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
        , m_findings(findings)
    {
    }

    void run(const ThemeObjectColors &colors)
    {
        m_look = lookOf(colors, m_context.scratch->data().colors, m_scope.roles);
        for (const ColorRole &text : colorRoles(ForegroundColors)) {
            const QString key = QLatin1String(text.key);
            const QVector<Pair> failing = failingPairs(m_look, key);
            if (!failing.isEmpty())
                report(key, failing);
        }
    }

private:
    /// What an item sees of \a colors in a theme whose own ones are \a page.
    Look lookOf(const ThemeObjectColors &colors, const ThemeObjectColors &page,
                unsigned roles) const
    {
        Look look;
        look.roles = roles;
        look.known = m_context.summary().knownRoles | roles;
        // What is transparent lets the theme's own background through.
        const QColor below = Contrast::blended(page.background(), Qt::white);
        for (const ColorRole &surface : colorRoles(BackgroundColors))
            look.surfaces.insert(QLatin1String(surface.key),
                                 Contrast::blended((colors.*surface.color)(), below));
        for (const ColorRole &text : colorRoles(ForegroundColors))
            look.texts.insert(QLatin1String(text.key), (colors.*text.color)());
        return look;
    }

    /// The backgrounds on which the text \a key is hard to read.
    QVector<Pair> failingPairs(const Look &look, const QString &key) const
    {
        QVector<Pair> failing;
        for (const ColorRole &surface : colorRoles(BackgroundColors)) {
            Pair pair;
            pair.key = QLatin1String(surface.key);
            if (!concerns(look, key, pair.key))
                continue;
            pair.surface = look.surfaces.value(pair.key);
            pair.ratio = Contrast::ratio(look.texts.value(key), pair.surface);
            if (pair.ratio < m_context.contrast)
                failing.append(pair);
        }
        return failing;
    }

    /// Whether the pair is this scope's doing, and no palette's.
    bool concerns(const Look &look, const QString &text, const QString &surface) const
    {
        const unsigned textBit = roleBit(text);
        const unsigned surfaceBit = roleBit(surface);
        if (!(look.known & textBit) || !(look.known & surfaceBit))
            return false;
        const bool setsText = look.roles & textBit;
        const bool setsSurface = look.roles & surfaceBit;
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

    bool isWritten(const QString &key) const
    {
        return m_scope.colors && m_scope.colors->member(key);
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
        if (isWritten(key))
            return false;
        const Node::Member *global = m_context.document.root().member(QLatin1String("global"));
        const Node::Member *colors = global ? global->node.member(QLatin1String("colors"))
                                            : nullptr;
        return colors && m_context.summary().globalRoles & roleBit(key)
                && !colors->node.member(key);
    }

    void report(const QString &key, const QVector<Pair> &failing)
    {
        const QColor color = m_look.texts.value(key);
        QStringList parts;
        for (const Pair &pair : failing) {
            parts.append(QStringLiteral("%1 on `%2` %3")
                                 .arg(ratioText(pair.ratio), pair.key, name(pair.surface)));
        }
        const Changes mend = mendOf(key, failing);
        const bool isOfSurfaces = !mend.isEmpty() && mend.first().key != key;

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
                       mend.isEmpty() ? otherTextOnOne(key, failing) : help(key, mend));
    }

    /// What to write so that the text \a key is readable and no other text less than before;
    /// nothing if that is not found.
    Changes mendOf(const QString &key, const QVector<Pair> &failing) const
    {
        // The text can hardly help it when it is unreadable on nothing but what nobody wrote. A
        // class with a background of its own still has the shades of another one.
        const bool hasOwnGround = m_scope.colors && !m_scope.isGlobal
                && m_scope.roles & roleBit(QStringLiteral("background"));
        const bool isOfOthers = std::all_of(
                failing.begin(), failing.end(), [this, hasOwnGround](const Pair &pair) {
                    return hasOwnGround ? !isWritten(pair.key) : isDerived(pair.key);
                });
        const Changes surfaces = otherSurfaces(key, m_look, failing);
        if (isOfOthers && mends(key, surfaces))
            return surfaces;
        const QVector<Change> texts = otherTexts(key, failing);
        for (const Change &text : texts) {
            if (mends(key, { text }))
                return { text };
        }
        for (const Change &text : texts) {
            const Look look = lookWith({ text });
            const Changes changes = Changes{ text }
                    + otherSurfaces(key, look, failingPairs(look, key));
            // What the scope itself says of backgrounds stays, unless that is less to write.
            const bool isLonger = m_scope.roles & roleBit(key) && changes.size() > surfaces.size()
                    && mends(key, surfaces);
            if (!isLonger && mends(key, changes))
                return changes;
        }
        return mends(key, surfaces) ? surfaces : Changes();
    }

    /// The nearest colors for the text \a key that pass on one of the backgrounds.
    QVector<Change> otherTexts(const QString &key, const QVector<Pair> &failing) const
    {
        QVector<Change> changes;
        for (const Pair &pair : failing) {
            const QColor candidate = Contrast::nearestPassing(m_look.texts.value(key), pair.surface,
                                                              m_context.contrast);
            if (candidate.isValid())
                changes.append({ key, candidate });
        }
        return changes;
    }

    /// The nearest colors for the backgrounds of \a failing on which the text \a key of \a look
    /// passes; none if one of them has no such color.
    Changes otherSurfaces(const QString &key, const Look &look, const QVector<Pair> &failing) const
    {
        Changes changes;
        for (const Pair &pair : failing) {
            const QColor surface = otherSurface(key, look, pair.surface);
            if (!surface.isValid())
                return Changes();
            changes.append({ pair.key, surface });
        }
        return changes;
    }

    QColor otherSurface(const QString &key, const Look &look, const QColor &surface) const
    {
        QVector<QColor> all;
        QVector<QColor> needed;
        for (auto text = look.texts.begin(); text != look.texts.end(); ++text) {
            if (!(look.known & roleBit(text.key())))
                continue;
            all.append(*text);
            // What is hard to read already is mended by its own advice.
            if (text.key() == key || failingPairs(m_look, text.key()).isEmpty())
                needed.append(*text);
        }
        for (const QVector<QColor> &texts : { all, needed }) {
            for (const QColor &text : texts) {
                QColor candidate = Contrast::nearestPassing(
                        surface, Contrast::blended(text, surface), m_context.contrast);
                if (candidate.isValid() && passOn(candidate, texts))
                    return candidate;
            }
        }
        return QColor();
    }

    bool passOn(const QColor &surface, const QVector<QColor> &texts) const
    {
        return std::all_of(texts.begin(), texts.end(), [&](const QColor &text) {
            return Contrast::ratio(text, surface) >= m_context.contrast;
        });
    }

    /// The colors of this scope with \a changes, read as the plugin reads them.
    void load(ThemeObjectColors *colors, const Changes &changes) const
    {
        QJsonObject values = valuesWith(changes);
        *colors = m_context.scratch->data().colors;
        colors->load(values, m_scope.isGlobal);
    }

    QJsonObject valuesWith(const Changes &changes) const
    {
        QJsonObject values = m_scope.values;
        for (const Change &change : changes)
            values.insert(change.key, change.color.name());
        return values;
    }

    Look lookWith(const Changes &changes) const
    {
        ThemeObjectColors colors(nullptr);
        load(&colors, changes);
        return lookOf(colors, m_scope.isGlobal ? colors : m_context.scratch->data().colors,
                      colorRolesIn(valuesWith(changes), m_scope.isGlobal));
    }

    /// The texts of the theme's classes that are hard to read where \a page is its "global".
    QSet<QString> failingInClasses(const ThemeObjectColors &page) const
    {
        QSet<QString> failing;
        const QHash<QString, QJsonObject> &scopes = m_context.scratch->data().classScopes;
        for (auto scope = scopes.begin(); scope != scopes.end(); ++scope) {
            QJsonObject values = scope->value(QLatin1String("colors")).toObject();
            if (values.isEmpty())
                continue;
            ThemeObjectColors colors(nullptr);
            colors = page;
            colors.load(values, false);
            const Look look = lookOf(colors, page, colorRolesIn(values, false));
            for (auto text = look.texts.begin(); text != look.texts.end(); ++text) {
                if (!failingPairs(look, text.key()).isEmpty())
                    failing.insert(text.key() + QLatin1Char(' ') + scope.key());
            }
        }
        return failing;
    }

    /// Whether the text \a key is readable after \a changes, and no text hard to read that is not
    /// so now.
    bool mends(const QString &key, const Changes &changes) const
    {
        if (changes.isEmpty())
            return false;
        const Look look = lookWith(changes);
        for (auto text = look.texts.begin(); text != look.texts.end(); ++text) {
            if (!failingPairs(look, text.key()).isEmpty()
                && (text.key() == key || failingPairs(m_look, text.key()).isEmpty()))
                return false;
        }
        if (!m_scope.isGlobal)
            return true;
        ThemeObjectColors colors(nullptr);
        load(&colors, changes);
        return failingInClasses(m_context.scratch->data().colors)
                .contains(failingInClasses(colors));
    }

    /// Says what to write for the text \a key.
    QStringList help(const QString &key, const Changes &mend) const
    {
        QStringList help;
        for (const Change &change : mend) {
            QString where = QStringLiteral("the nearest `%1` that passes is").arg(change.key);
            if (!m_scope.colors)
                where = QStringLiteral("describe this class here as well, with `%1`")
                                .arg(change.key);
            else if (isWritten(change.key) && change.key == key && mend.size() == 1)
                where = QStringLiteral("the nearest color that passes is");
            else if (!isWritten(change.key))
                where = QStringLiteral("write `%1` in %2: the nearest color that passes is")
                                .arg(change.key,
                                     m_scope.isGlobal ? QStringLiteral("\"global\"%1")
                                                                .arg(derivation(change.key))
                                                      : QStringLiteral("this class"));
            help.append(QStringLiteral("%1 `%2`").arg(where, change.color.name()));
        }
        return help;
    }

    QString derivation(const QString &key) const
    {
        return isDerived(key) ? QStringLiteral(", where it is derived from `%1`").arg(baseOf(key))
                              : QString();
    }

    /// A color for the text \a key that passes on one of the backgrounds.
    QStringList otherTextOnOne(const QString &key, const QVector<Pair> &failing) const
    {
        for (const Pair &pair : failing) {
            const QColor candidate = Contrast::nearestPassing(m_look.texts.value(key), pair.surface,
                                                              m_context.contrast);
            if (candidate.isValid())
                return { QStringLiteral("the nearest color that passes on `%1` is `%2`, but "
                                        "other colors have to change as well")
                                 .arg(pair.key, candidate.name()) };
        }
        return QStringList();
    }

    const ThemeContext &m_context;
    const ColoredScope &m_scope;
    Findings &m_findings;
    Look m_look;
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
        scope.isGlobal = isGlobal;
        scope.values = colors->node.value.toObject();
        scope.roles = colorRolesIn(scope.values, isGlobal);
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
        scope.values = scopes.value(name).value(QLatin1String("colors")).toObject();
        scope.roles = colorRolesIn(scope.values, false);
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
