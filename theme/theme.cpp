#include "theme/theme.h"

#include "manager/thememanager.h"
#include "theme/deferreddeletion.h"
#include "values/truncated.h"

#include <QtCore/QMetaMethod>
#include <QtCore/QVector>

Theme *Theme::g_theme = nullptr;
unsigned Theme::s_cataloguedTitleChanges = 0;

namespace {

/// What a theme shows while its data is gone. Lives until the process ends.
ThemePrivate *absentData()
{
    static ThemePrivate *const data = new ThemePrivate;
    return data;
}

/// The themes of all living items. Lives until the process ends, as engines may outlast the
/// library's other statics.
QVector<Theme *> &attachedThemes()
{
    static auto *const themes = new QVector<Theme *>;
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
    : QObject(item)
{
    shareData(data);
}

Theme::~Theme()
{
    leaveAttached();
    if (g_theme == this)
        g_theme = nullptr;
    DeferredDeletion::forget(this);
    if (overloaded)
        overloaded->deleteLater();
    // Also when other themes share the data: whoever deletes a theme takes its data along.
    if (d)
        DeferredDeletion::schedule(d);
}

Theme &Theme::operator=(const Theme &other)
{
    const QPointer<Theme> self(this);
    const unsigned change = ++m_changes;
    const QString title = other.m_title;
    if (other.d) {
        ensureData();
        *d = *other.d;
        // A handler may have assigned anew, or destroyed this theme: what it did stands.
        if (!self || m_changes != change)
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
    theme->enterAttached();
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
    return qobject_cast<Theme *>(qmlAttachedPropertiesObject<Theme>(object, false));
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
    const QPointer<Theme> self(this);
    buildOverloaded();
    if (!self)
        return;
    Q_EMIT radiusChanged();
    if (!self)
        return;
    Q_EMIT needUpdate();
}

void Theme::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    storeTitle(title);
    Q_EMIT titleChanged(title);
}

void Theme::setFilename(const QString &filename)
{
    if (m_filename == filename)
        return;
    m_filename = filename;
    Q_EMIT filenameChanged();
}

void Theme::setRadius(int radius)
{
    // The data keeps fractions, so 2.9 and 2 are different although both read as 2.
    if (!d || d->radius == double(radius))
        return;
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
    return d ? d.data() : absentData();
}

void Theme::ensureData()
{
    if (d)
        return;
    shareData(new ThemePrivate);
    if (this != g_theme)
        return;
    for (Theme *theme : qAsConst(attachedThemes())) {
        if (!theme->d)
            theme->shareData(d);
    }
}

void Theme::shareData(ThemePrivate *data)
{
    d = data;
    if (!data)
        return;
    // The same connection as with SIGNAL and SLOT, without searching both names for each item.
    static const QMetaMethod updateTheme = QMetaMethod::fromSignal(&ThemePrivate::updateTheme);
    static const QMetaMethod update = staticMetaObject.method(
            staticMetaObject.indexOfSlot("sendUpdate()"));
    m_dataConnection = connect(data, updateTheme, this, update);
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

void Theme::enterAttached()
{
    m_attachedIndex = attachedThemes().size();
    attachedThemes().append(this);
}

void Theme::leaveAttached()
{
    if (m_attachedIndex < 0)
        return;
    // The last one takes the place, so that leaving costs the same however many there are.
    Theme *last = attachedThemes().takeLast();
    if (last != this) {
        attachedThemes()[m_attachedIndex] = last;
        last->m_attachedIndex = m_attachedIndex;
    }
    m_attachedIndex = -1;
}

/// The item of this attached theme is gone. Letting go of the data first keeps the destructor from
/// taking it away from the other items.
void Theme::release()
{
    leaveAttached();
    disconnect(m_dataConnection);
    d = nullptr;
    DeferredDeletion::schedule(this);
}
