#include "theme/theme.h"

#include "manager/thememanager.h"
#include "theme/deferreddeletion.h"
#include "theme/lifewatch.h"
#include "theme/registry.h"
#include "values/truncated.h"

#include <QtCore/QMetaObject>

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

/// The theme that overloads \a item with \a data of its own.
Theme::Theme(Theme *item, ThemePrivate *data)
{
    // Nobody watches an item's theme for children, and the events would cost more than the child.
    item->d_ptr->receiveChildEvents = false;
    setParent(item);
    d = data;
}

Theme::~Theme()
{
    LifeWatch::end(this);
    if (m_registry)
        m_registry->leave(this);
    if (g_theme == this)
        g_theme = nullptr;
    // The overloaded theme ends with this one, as its child. Scheduling its deletion as well would
    // make Qt search all scheduled deletions for it a moment later.
    if (overloaded && overloaded->parent() != this)
        overloaded->deleteLater();
    // Also when other themes share the data: whoever deletes a theme takes its data along.
    if (d)
        DeferredDeletion::schedule(d);
    if (m_absentData)
        DeferredDeletion::schedule(m_absentData);
}

Theme &Theme::operator=(const Theme &other) // NOLINT(bugprone-unhandled-self-assignment)
{
    // Assigning a theme to itself is an update like any other.
    const LifeWatch self(this);
    const unsigned change = ++m_changes;
    const QString title = other.m_title;
    if (other.d) {
        ensureData();
        *d = *other.d;
        // A handler may have assigned anew, or destroyed this theme: what it did stands.
        if (!self.isAlive() || m_changes != change)
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
    // The engine does not delete attached objects that have no parent.
    if (object)
        connect(object, &QObject::destroyed, theme, &Theme::release);
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
    const LifeWatch self(this);
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
    const LifeWatch self(this);
    storeTitle(title);
    Q_EMIT titleChanged(title);
}

void Theme::setFilename(const QString &filename)
{
    if (m_filename == filename)
        return;
    const LifeWatch self(this);
    m_filename = filename;
    Q_EMIT filenameChanged();
}

void Theme::setRadius(int radius)
{
    // The data keeps fractions, so 2.9 and 2 are different although both read as 2.
    if (!d || d->radius == double(radius))
        return;
    const LifeWatch self(this);
    d->radius = radius;
    Q_EMIT radiusChanged();
}

void Theme::themeChanged(Theme *theme)
{
    if (theme == this)
        sendUpdate();
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
    const bool isAboutToBeDeleted = this == g_theme && d && d->m_registry;
    if (d && !isAboutToBeDeleted)
        return;
    const ThemePrivate *lost = d;
    shareData(new ThemePrivate);
    if (this != g_theme)
        return;
    for (Theme *theme : attachedThemes().objects()) {
        if (!theme->d || theme->d == lost)
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

/// The item of this attached theme is gone. Letting go of the data first keeps the destructor from
/// taking it away from the other items.
void Theme::release()
{
    attachedThemes().leave(this);
    disconnect(m_dataConnection);
    d = nullptr;
    m_isReleased = true;
    if (!m_lifeWatch)
        DeferredDeletion::schedule(this);
}
