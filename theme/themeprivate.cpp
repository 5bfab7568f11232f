#include "theme/themeprivate.h"

#include "theme/registry.h"
#include "values/runningcall.h"
#include "values/styleweight.h"

#include <algorithm>
#include <vector>

namespace {

/// Exactly equal: a radius is told from another one however near it is.
bool isEqual(double a, double b)
{
    return !(a < b) && !(b < a);
}

} // namespace

struct ThemePrivate::Values
{
    ThemeObjectColors::Values colors;
    ThemeObjectFonts::Values fonts;
    double radius;

    bool operator==(const Values &other) const
    {
        return colors == other.colors && fonts == other.fonts && isEqual(radius, other.radius);
    }
};

/// What a class scope makes of the values of a theme, with all that it was computed from.
struct ThemePrivate::ResolvedScope
{
    QJsonObject scope;
    unsigned colorChanges;
    unsigned fontChanges;
    double radius;
    QFont applicationFont;
    std::vector<StyleWeight> styleWeights;

    Values result;

    /// Whether \a newScope makes the same of \a data now. QML and native code may write to each of
    /// its values at any time.
    bool holdsFor(const ThemePrivate &data, const QJsonObject &newScope)
    {
        const bool isUnchanged = colorChanges == data.colors.m_changes
                && fontChanges == data.fonts.m_changes && isEqual(radius, data.radius)
                && scope == newScope && applicationFont == QFont()
                && std::all_of(styleWeights.cbegin(), styleWeights.cend(),
                               [](const StyleWeight &known) { return known.stillHolds(); });
        // An equal scope that was read anew is compared member by member for one item only: the
        // others find that it is the same one.
        if (isUnchanged)
            scope = newScope;
        return isUnchanged;
    }
};

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
    // cppcheck-suppress useInitializationList; groups can't be copied while they are constructed
    colors = other.colors;
}

/// Data with \a original's tables and \a values of its own, without a signal.
ThemePrivate::ThemePrivate(const ThemePrivate *original, const Values &values)
    : radius(values.radius)
    , colors(values.colors)
    , fonts(values.fonts)
    , styles(original->styles)
    , classScopes(original->classScopes)
{
    // Nobody can be watching new data for children, and the events would cost more than the data.
    d_ptr->receiveChildEvents = false;
    colors.setParent(this);
    fonts.setParent(this);
}

ThemePrivate::~ThemePrivate()
{
    RunningCall::forget(m_calls);
    if (m_registry)
        m_registry->leave(this);
}

ThemePrivate &
ThemePrivate::operator=(const ThemePrivate &other) // NOLINT(bugprone-unhandled-self-assignment)
{
    // Assigning data to itself announces an update like any other assignment.
    // Handlers of the groups' signals may change or destroy both objects, so everything is taken
    // from the other one before the first signal.
    const Values newValues = other.values();
    const QHash<QString, QString> newStyles = other.styles;
    const QHash<QString, QJsonObject> newClassScopes = other.classScopes;

    RunningCall::supersede(m_calls);
    const RunningCall self(m_calls);
    colors.setColors(newValues.colors);
    if (!self.isCurrent())
        return *this;
    fonts.setFonts(newValues.fonts);
    if (!self.isCurrent())
        return *this;
    radius = newValues.radius;
    merge(styles, newStyles);
    merge(classScopes, newClassScopes);
    Q_EMIT updateTheme();
    return *this;
}

void ThemePrivate::initDefaults()
{
    const RunningCall self(m_calls);
    colors.initDefaults();
    if (!self.isAlive())
        return;
    colors.setParent(this);
    fonts.initDefaults();
    if (!self.isAlive())
        return;
    fonts.setParent(this);
    radius = 0;
    styles.clear();
    classScopes.clear();
}

/// The radius in \a scope; negative if it has none that is a whole number from 0 on.
int ThemePrivate::radiusOf(const QJsonObject &scope)
{
    return scope.value(QLatin1String("radius")).toInt(-1);
}

/// Whether a function of this object or of its groups is running.
bool ThemePrivate::isInUse() const
{
    return m_calls || colors.m_calls || fonts.m_calls;
}

bool ThemePrivate::isDeletionScheduled() const
{
    return m_registry;
}

ThemePrivate::Values ThemePrivate::values() const
{
    return { colors.m_colors, fonts.m_fonts, radius };
}

/// Whether assigning \a other would change nothing.
bool ThemePrivate::contains(const ThemePrivate &other) const
{
    return values() == other.values() && containsAll(styles, other.styles)
            && containsAll(classScopes, other.classScopes);
}

/// New data with these tables, and with the values that \a scope, that of the class \a classname,
/// makes of these. All items with one class get the same, so the scope is read for the first only.
ThemePrivate *ThemePrivate::withScope(const QString &classname, const QJsonObject &scope)
{
    std::shared_ptr<ResolvedScope> &resolved = m_resolvedScopes[classname];
    if (resolved && resolved->holdsFor(*this, scope))
        return new ThemePrivate(this, resolved->result);

    auto *data = new ThemePrivate(this, values());
    // A shade that the scope leaves out keeps the item's value, so nothing is derived.
    data->colors.loadMember(scope, false);
    data->fonts.loadMember(scope, false);
    const int scopeRadius = radiusOf(scope);
    if (scopeRadius >= 0)
        data->radius = scopeRadius;
    const QJsonObject fontsObject = scope.value(QLatin1String("fonts")).toObject();
    resolved = std::make_shared<ResolvedScope>(ResolvedScope{
            scope, colors.m_changes, fonts.m_changes, radius, QFont(),
            ThemeObjectFonts::styleWeights(fontsObject, data->fonts.m_fonts), data->values() });
    return data;
}
