#include "theme/themeprivate.h"

#include "theme/registry.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>

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
    unsigned fontDatabaseState;

    Values result;
};

namespace {

/// A number that changes whenever fonts are added to the font database, which decides what weight
/// a style name stands for.
unsigned fontDatabaseState()
{
    static unsigned state = 0;
    static QPointer<QCoreApplication> observed;
    QCoreApplication *application = QCoreApplication::instance();
    if (observed != application) {
        observed = application;
        ++state;
        if (auto *gui = qobject_cast<QGuiApplication *>(application))
            QObject::connect(gui, &QGuiApplication::fontDatabaseChanged, gui, [] { ++state; });
    }
    return state;
}

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
    , styles(original->styles)
    , classScopes(original->classScopes)
{
    // Nobody can be watching new data for children, and the events would cost more than the data.
    d_ptr->receiveChildEvents = false;
    colors.setParent(this);
    fonts.setParent(this);
    colors.m_colors = values.colors;
    fonts.m_fonts = values.fonts;
}

ThemePrivate::~ThemePrivate()
{
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

    const QPointer<ThemePrivate> self(this);
    const unsigned assignment = ++m_assignments;
    colors.setColors(newValues.colors);
    if (!self || m_assignments != assignment)
        return *this;
    fonts.setFonts(newValues.fonts);
    if (!self || m_assignments != assignment)
        return *this;
    radius = newValues.radius;
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

/// New data with the same values and tables.
ThemePrivate *ThemePrivate::clone() const
{
    return new ThemePrivate(this, values());
}

/// New data in which \a scope, that of the class \a classname, is applied already; null if nobody
/// has told yet what that gives, or if it may give something else by now.
ThemePrivate *ThemePrivate::cloneWithScope(const QString &classname, const QJsonObject &scope) const
{
    const auto entry = m_resolvedScopes.constFind(classname);
    if (entry == m_resolvedScopes.constEnd())
        return nullptr;
    // QML and native code may write to each of the values at any time.
    const ResolvedScope &resolved = **entry;
    const bool isCurrent = resolved.colorChanges == colors.m_changes
            && resolved.fontChanges == fonts.m_changes && isEqual(resolved.radius, radius)
            && resolved.scope == scope && resolved.fontDatabaseState == fontDatabaseState()
            && resolved.applicationFont == QFont();
    return isCurrent ? new ThemePrivate(this, resolved.result) : nullptr;
}

/// Takes note that \a scope, that of the class \a classname, makes \a result of these values.
void ThemePrivate::keepResolvedScope(const QString &classname, const QJsonObject &scope,
                                     const ThemePrivate &result)
{
    const ResolvedScope resolved = { scope,   colors.m_changes,    fonts.m_changes, radius,
                                     QFont(), fontDatabaseState(), result.values() };
    m_resolvedScopes.insert(classname, std::make_shared<const ResolvedScope>(resolved));
}
