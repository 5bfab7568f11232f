#include "theme/theme.h"

#include "manager/thememanager.h"
#include "theme/deferreddeletion.h"
#include "theme/itemwatch.h"
#include "theme/registry.h"
#include "values/runningcall.h"
#include "values/truncated.h"

#include <QtCore/QMetaObject>
#include <QtCore/QMetaProperty>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlProperty>

Theme *Theme::g_theme = nullptr;
unsigned Theme::s_cataloguedTitleChanges = 0;

namespace {

/// The themes of all living items. Lives until the process ends, as engines may outlast the
/// library's other statics.
Registry<Theme> &attachedThemes()
{
    static auto *const themes = new Registry<Theme>;
    return *themes;
}

/// Takes away what QML has bound to the properties of \a object. The engine evaluates a binding as
/// long as its target lives, also when the item in whose name it does so is gone.
void dropBindings(QObject *object)
{
    const QMetaObject *type = object->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        // Writing the value that is there already changes nothing else.
        if (property.isWritable()) {
            QQmlProperty(object, QString::fromLatin1(property.name())).write(property.read(object));
        }
    }
}

} // namespace

Theme::Theme(QObject *parent)
    : QObject(parent)
{
    if (!g_theme)
        g_theme = this;
    shareData(new ThemePrivate);
    d->initDefaults();
}

Theme::Theme(const Theme &other)
    : QObject()
    , m_title(other.m_title)
{
    shareData(other.d);
}

/// A theme that \a owner needs for itself, with \a data that nobody else shares. It never becomes
/// the global theme.
Theme::Theme(Theme *owner, ThemePrivate *data)
    : d(data)
    , m_ownsData(true)
{
    // Nobody watches a theme for children, and the events would cost more than the child.
    owner->d_ptr->receiveChildEvents = false;
    setParent(owner);
}

Theme::~Theme()
{
    RunningCall::forget(m_calls);
    ItemWatch::end(this);
    if (m_registry)
        m_registry->leave(this);
    if (g_theme == this)
        g_theme = nullptr;
    if (m_overloads)
        m_overloads->overloaded = nullptr;
    if (overloaded) {
        overloaded->m_overloads = nullptr;
        // Usually it ends with this one, as its child.
        if (overloaded->parent() != this)
            DeferredDeletion::schedule(overloaded);
    }
    if (d && m_ownsData && !d->isInUse()) {
        delete d;
    } else if (d) {
        // Also when other themes share the data: whoever deletes a theme takes its data along.
        DeferredDeletion::schedule(d);
    }
    if (m_absentData)
        DeferredDeletion::schedule(m_absentData);
}

Theme &Theme::operator=(const Theme &other) // NOLINT(bugprone-unhandled-self-assignment)
{
    // Assigning a theme to itself is an update like any other.
    RunningCall::supersede(m_calls);
    const RunningCall self(m_calls);
    const QString title = other.m_title;
    if (other.d) {
        ensureData();
        *d = *other.d;
        // A handler may have assigned anew, or destroyed this theme: what it did stands.
        if (!self.isCurrent())
            return *this;
    }
    storeTitle(title);
    sendUpdate();
    return *this;
}

Theme *Theme::global()
{
    if (!g_theme)
        ThemeManager::getInstance();
    // The catalogue's own theme is not the global one if native code created one before it. When
    // that one is destroyed, the next one to be created takes its place.
    if (!g_theme)
        new Theme(ThemeManager::getInstance());
    return g_theme;
}

Theme *Theme::catalogued(const QString &title)
{
    return ThemeManager::getInstance()->themeFromName(title);
}

Theme *Theme::qmlAttachedProperties(QObject *object)
{
    Theme *theme = getObjectTheme(object);
    attachedThemes().enter(theme);
    // It has no parent, so an application that hands it to QML would leave it to the garbage
    // collector, while the engine goes on using it for the item.
    QQmlEngine::setObjectOwnership(theme, QQmlEngine::CppOwnership);
    // The engine does not delete attached objects that have no parent.
    if (object)
        theme->m_itemWatch = new ItemWatch(object, theme);
    return theme;
}

Theme *Theme::getObjectTheme(QObject *)
{
    return new Theme(*global());
}

Theme *Theme::attachedTheme(QObject *object)
{
    if (!object)
        return nullptr;
#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
    // Looked up each time: the template remembers for good that the type is not registered yet.
    const QQmlAttachedPropertiesFunc attached = qmlAttachedPropertiesFunction(object,
                                                                              &staticMetaObject);
    return qobject_cast<Theme *>(qmlAttachedPropertiesObject(object, attached, false));
#else
    return qobject_cast<Theme *>(qmlAttachedPropertiesObject<Theme>(object, false));
#endif
}

QString Theme::title() const
{
    return m_title;
}

QString Theme::filename() const
{
    return m_filename;
}

ThemeObjectColors *Theme::colors() const
{
    return &shownData()->colors;
}

ThemeObjectFonts *Theme::fonts() const
{
    return &shownData()->fonts;
}

int Theme::radius() const
{
    // Never the overloaded theme's: a class scope does not change an item's radius.
    return d ? truncated(d->radius) : 0;
}

QString Theme::classnames() const
{
    return m_classnames;
}

void Theme::hardCopy(Theme *source)
{
    if (!source || !source->d)
        return;
    ensureData();
    *d = *source->d;
}

void Theme::write(QJsonObject &) const
{
}

void Theme::sendUpdate()
{
    const RunningCall self(m_calls);
    buildOverloaded();
    if (!self.isAlive())
        return;
    Q_EMIT radiusChanged();
    if (!self.isAlive())
        return;
    Q_EMIT needUpdate();
}

void Theme::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    const RunningCall self(m_calls);
    storeTitle(title);
    Q_EMIT titleChanged(title);
}

void Theme::setFilename(const QString &filename)
{
    if (m_filename == filename)
        return;
    const RunningCall self(m_calls);
    m_filename = filename;
    Q_EMIT filenameChanged();
}

void Theme::setRadius(int radius)
{
    // The data keeps fractions, so 2.9 and 2 are different although both read as 2.
    if (!d || d->radius == double(radius))
        return;
    const RunningCall self(m_calls);
    d->radius = radius;
    Q_EMIT radiusChanged();
}

void Theme::themeChanged(Theme *theme)
{
    if (theme == this)
        sendUpdate();
}

QColor Theme::complementaryColor(const QColor &baseColor)
{
    // Both comparisons are strict: exactly half transparent keeps the color, exactly half light
    // asks for black.
    const QColor reference = baseColor.alphaF() < 0.5 ? colors()->background() : baseColor;
    return reference.lightnessF() < 0.5 ? QColor(Qt::white) : QColor(Qt::black);
}

ThemePrivate *Theme::shownData() const
{
    if (overloaded && overloaded->d)
        return overloaded->d;
    if (d)
        return d;
    if (!m_absentData)
        m_absentData = new ThemePrivate;
    return m_absentData;
}

void Theme::ensureData()
{
    // What is written to data that is about to be deleted would be lost for every item.
    if (!d || (this == g_theme && d->isDeletionScheduled()))
        shareData(new ThemePrivate);
    if (this != g_theme)
        return;
    // Native code may have destroyed the data that they shared, or the global theme that had it.
    for (Theme *theme : attachedThemes().objects()) {
        if (theme->d != d)
            theme->shareData(d);
    }
}

void Theme::shareData(ThemePrivate *data)
{
    if (m_followsData)
        disconnect(m_dataConnection);
    d = data;
    m_followsData = false;
    followData();
}

void Theme::followData()
{
    if (m_followsData || !d)
        return;
    m_followsData = true;
    // The same connection as with SIGNAL and SLOT, without searching both names for each item.
    static const int updateTheme = d->metaObject()->indexOfSignal("updateTheme()");
    static const int sendUpdate = staticMetaObject.indexOfSlot("sendUpdate()");
    m_dataConnection = QMetaObject::connect(d, updateTheme, this, sendUpdate);
}

/// Somebody listens to this theme. Overloaded themes, which are replaced at each update and have no
/// listeners as a rule, follow their data only from here on.
void Theme::connectNotify(const QMetaMethod &)
{
    followData();
}

/// Whether \a source, which was copied here, has other values or another title by now.
bool Theme::isOutdatedCopyOf(const Theme *source) const
{
    if (!source->d || source->d == d)
        return false;
    return m_title != source->m_title || !d || !d->contains(*source->d);
}

void Theme::storeTitle(const QString &title)
{
    m_title = title;
    if (m_isCatalogued)
        ++s_cataloguedTitleChanges;
}

/// The item of this attached theme is being destroyed, and the theme goes at once: QML would go on
/// evaluating what it has bound to the theme, in the name of an item that is gone.
void Theme::release()
{
    attachedThemes().leave(this);
    disconnect(m_dataConnection);
    // Letting go of the data keeps the destructor from taking it away from the other items.
    d = nullptr;
    if (!isInUse()) {
        delete this;
        return;
    }
    // The engine is emitting one of its signals, so it has to stay until that has returned, deaf
    // and dumb.
    const QObjectList owned = children();
    for (QObject *child : owned)
        delete qobject_cast<Theme *>(child);
    dropBindings(this);
    blockSignals(true);
    RunningCall::end(m_calls);
    DeferredDeletion::schedule(this);
}

/// Whether a function of this theme is running, or one of the groups that it alone has.
bool Theme::isInUse() const
{
    return m_calls || (m_ownsData && d && d->isInUse());
}

bool Theme::isDeletionScheduled() const
{
    return m_registry && !attachedThemes().contains(this);
}
