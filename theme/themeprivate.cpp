#include "theme/themeprivate.h"

#include "theme/deferreddeletion.h"

#include <QtCore/QPointer>

namespace {

template <typename Value>
void merge(QHash<QString, Value> &table, const QHash<QString, Value> &other)
{
    if (table.isEmpty()) {
        table = other;
        return;
    }
    for (auto entry = other.constBegin(); entry != other.constEnd(); ++entry)
        table.insert(entry.key(), entry.value());
}

template <typename Value>
bool containsAll(const QHash<QString, Value> &table, const QHash<QString, Value> &other)
{
    for (auto entry = other.constBegin(); entry != other.constEnd(); ++entry) {
        const auto own = table.constFind(entry.key());
        if (own == table.constEnd() || own.value() != entry.value())
            return false;
    }
    return true;
}

} // namespace

ThemePrivate::ThemePrivate()
{
    initDefaults();
}

ThemePrivate::ThemePrivate(const ThemePrivate &other)
    : QObject()
    , radius(other.radius)
    , styles(other.styles)
    , classScopes(other.classScopes)
{
    colors = other.colors;
}

ThemePrivate::~ThemePrivate()
{
    DeferredDeletion::forget(this);
}

ThemePrivate &ThemePrivate::operator=(const ThemePrivate &other)
{
    // Handlers of the groups' signals may change or destroy both objects, so everything is taken
    // from the other one before the first signal.
    const ThemeObjectColors::Values newColors = other.colors.m_colors;
    const ThemeObjectFonts::Values newFonts = other.fonts.m_fonts;
    const double newRadius = other.radius;
    const QHash<QString, QString> newStyles = other.styles;
    const QHash<QString, QJsonObject> newClassScopes = other.classScopes;

    const QPointer<ThemePrivate> self(this);
    const unsigned assignment = ++m_assignments;
    colors.setColors(newColors);
    if (!self || m_assignments != assignment)
        return *this;
    fonts.setFonts(newFonts);
    if (!self || m_assignments != assignment)
        return *this;
    radius = newRadius;
    merge(styles, newStyles);
    merge(classScopes, newClassScopes);
    Q_EMIT updateTheme();
    return *this;
}

void ThemePrivate::initDefaults()
{
    colors.initDefaults();
    colors.setParent(this);
    fonts.initDefaults();
    fonts.setParent(this);
    radius = 0;
    styles.clear();
    classScopes.clear();
}

/// Whether assigning \a other would change nothing.
bool ThemePrivate::contains(const ThemePrivate &other) const
{
    return colors.m_colors == other.colors.m_colors && fonts.m_fonts == other.fonts.m_fonts
            && !(radius < other.radius) && !(other.radius < radius)
            && containsAll(styles, other.styles) && containsAll(classScopes, other.classScopes);
}
