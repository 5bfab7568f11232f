#include "yardsticks.h"

LookSource *LookSource::instance()
{
    static LookSource *const source = new LookSource;
    return source;
}

void LookSource::show(const Look &look)
{
    m_look = look;
    Q_EMIT changed();
}

BareAttached::BareAttached(QObject *item)
    : QObject(item)
{
    connect(LookSource::instance(), &LookSource::changed, this, &BareAttached::changed);
}

BareAttached *BareAttached::qmlAttachedProperties(QObject *item)
{
    return new BareAttached(item);
}

void FloorColors::show(const Look &look)
{
    m_foreground = look.foreground;
    Q_EMIT foregroundChanged();
    m_lighterForeground = look.foreground.lighter();
    Q_EMIT lighterForegroundChanged();
    m_darkerForeground = look.foreground.darker();
    Q_EMIT darkerForegroundChanged();
    m_background = look.background;
    Q_EMIT backgroundChanged();
    m_lighterBackground = look.background.lighter();
    Q_EMIT lighterBackgroundChanged();
    m_darkerBackground = look.background.darker();
    Q_EMIT darkerBackgroundChanged();
    m_selection = look.accent;
    Q_EMIT selectionChanged();
}

void FloorFonts::show(const Look &look)
{
    m_mainFont = look.font;
    Q_EMIT mainFontChanged();
    m_alternateFont = look.font;
    Q_EMIT alternateFontChanged();
    m_h1Font = look.font;
    Q_EMIT h1FontChanged();
    m_h2Font = look.font;
    Q_EMIT h2FontChanged();
    m_h3Font = look.font;
    Q_EMIT h3FontChanged();
    m_h4Font = look.font;
    Q_EMIT h4FontChanged();
}

FloorData::FloorData()
{
    colors.setParent(this);
    fonts.setParent(this);
}

FloorData *FloorData::instance()
{
    static FloorData *const data = new FloorData;
    return data;
}

void FloorData::show(const Look &look)
{
    colors.show(look);
    fonts.show(look);
    radius = look.radius;
    // The catalogue copies a theme into the global one twice for each switch.
    Q_EMIT updated();
    Q_EMIT updated();
}

FloorAttached::FloorAttached(QObject *item)
{
    connect(FloorData::instance(), &FloorData::updated, this, &FloorAttached::sendUpdate);
    connect(item, &QObject::destroyed, this, &QObject::deleteLater);
}

FloorAttached *FloorAttached::qmlAttachedProperties(QObject *item)
{
    return new FloorAttached(item);
}

void FloorAttached::sendUpdate()
{
    Q_EMIT themeObjectChanged();
    Q_EMIT radiusChanged();
    Q_EMIT needUpdate();
}
