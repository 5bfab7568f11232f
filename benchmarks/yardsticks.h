#pragma once

#include "look.h"

#include <QtCore/QObject>
#include <QtQml/qqml.h>

/// The values of the current look with one signal for all of them: what an application writes
/// when it needs a theme and nothing else. Registered as a singleton; also the source that the
/// bare attached objects follow.
class LookSource : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor background READ background NOTIFY changed)
    Q_PROPERTY(QColor foreground READ foreground NOTIFY changed)
    Q_PROPERTY(int radius READ radius NOTIFY changed)
    Q_PROPERTY(QFont font READ font NOTIFY changed)

public:
    static LookSource *instance();

    QColor background() const { return m_look.background; }
    QColor foreground() const { return m_look.foreground; }
    int radius() const { return m_look.radius; }
    QFont font() const { return m_look.font; }

    void show(const Look &look);

Q_SIGNALS:
    void changed();

private:
    Look m_look = Look::at(0);
};

/// The least that an attached object can be: one connection to the source, one notification, and
/// the item as its parent.
class BareAttached : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor background READ background NOTIFY changed)
    Q_PROPERTY(QColor foreground READ foreground NOTIFY changed)
    Q_PROPERTY(int radius READ radius NOTIFY changed)
    Q_PROPERTY(QFont font READ font NOTIFY changed)

public:
    explicit BareAttached(QObject *item);

    static BareAttached *qmlAttachedProperties(QObject *item);

    QColor background() const { return LookSource::instance()->background(); }
    QColor foreground() const { return LookSource::instance()->foreground(); }
    int radius() const { return LookSource::instance()->radius(); }
    QFont font() const { return LookSource::instance()->font(); }

Q_SIGNALS:
    void changed();
};

/// Shared colors of the floor: each color has a signal of its own.
class FloorColors : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor foreground MEMBER m_foreground NOTIFY foregroundChanged)
    Q_PROPERTY(QColor lighterForeground MEMBER m_lighterForeground NOTIFY lighterForegroundChanged)
    Q_PROPERTY(QColor darkerForeground MEMBER m_darkerForeground NOTIFY darkerForegroundChanged)
    Q_PROPERTY(QColor background MEMBER m_background NOTIFY backgroundChanged)
    Q_PROPERTY(QColor lighterBackground MEMBER m_lighterBackground NOTIFY lighterBackgroundChanged)
    Q_PROPERTY(QColor darkerBackground MEMBER m_darkerBackground NOTIFY darkerBackgroundChanged)
    Q_PROPERTY(QColor selection MEMBER m_selection NOTIFY selectionChanged)

public:
    void show(const Look &look);

Q_SIGNALS:
    void foregroundChanged();
    void lighterForegroundChanged();
    void darkerForegroundChanged();
    void backgroundChanged();
    void lighterBackgroundChanged();
    void darkerBackgroundChanged();
    void selectionChanged();

private:
    QColor m_foreground;
    QColor m_lighterForeground;
    QColor m_darkerForeground;
    QColor m_background;
    QColor m_lighterBackground;
    QColor m_darkerBackground;
    QColor m_selection;
};

/// Shared fonts of the floor: each font has a signal of its own.
class FloorFonts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QFont mainFont MEMBER m_mainFont NOTIFY mainFontChanged)
    Q_PROPERTY(QFont alternateFont MEMBER m_alternateFont NOTIFY alternateFontChanged)
    Q_PROPERTY(QFont h1Font MEMBER m_h1Font NOTIFY h1FontChanged)
    Q_PROPERTY(QFont h2Font MEMBER m_h2Font NOTIFY h2FontChanged)
    Q_PROPERTY(QFont h3Font MEMBER m_h3Font NOTIFY h3FontChanged)
    Q_PROPERTY(QFont h4Font MEMBER m_h4Font NOTIFY h4FontChanged)

public:
    void show(const Look &look);

Q_SIGNALS:
    void mainFontChanged();
    void alternateFontChanged();
    void h1FontChanged();
    void h2FontChanged();
    void h3FontChanged();
    void h4FontChanged();

private:
    QFont m_mainFont;
    QFont m_alternateFont;
    QFont m_h1Font;
    QFont m_h2Font;
    QFont m_h3Font;
    QFont m_h4Font;
};

/// What the attached objects of the floor share.
class FloorData : public QObject
{
    Q_OBJECT

public:
    FloorData();

    static FloorData *instance();

    void show(const Look &look);

    FloorColors colors;
    FloorFonts fonts;
    int radius = 0;

Q_SIGNALS:
    void updated();
};

/// The floor of the plugin's own design: an attached object over shared groups which sends exactly
/// the notifications that the plugin promises and does nothing else. Like the plugin's it has no
/// parent, and goes when its item goes.
class FloorAttached : public QObject
{
    Q_OBJECT
    Q_PROPERTY(FloorColors *colors READ colors NOTIFY themeObjectChanged)
    Q_PROPERTY(FloorFonts *fonts READ fonts NOTIFY themeObjectChanged)
    Q_PROPERTY(int radius READ radius NOTIFY radiusChanged)

public:
    explicit FloorAttached(QObject *item);

    static FloorAttached *qmlAttachedProperties(QObject *item);

    FloorColors *colors() const { return &FloorData::instance()->colors; }
    FloorFonts *fonts() const { return &FloorData::instance()->fonts; }
    int radius() const { return FloorData::instance()->radius; }

Q_SIGNALS:
    void themeObjectChanged();
    void radiusChanged();
    void needUpdate();

private:
    void sendUpdate();
};

QML_DECLARE_TYPEINFO(BareAttached, QML_HAS_ATTACHED_PROPERTIES)
QML_DECLARE_TYPEINFO(FloorAttached, QML_HAS_ATTACHED_PROPERTIES)
