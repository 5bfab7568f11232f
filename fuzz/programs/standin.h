#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/qqml.h>

/// What the plugin offers to QML, made the way any attached type is made: the attached object is
/// a child of its item, and so are its groups. A program that fails with these types in the place
/// of the plugin's has met a limit of Qt.
class StandInColors : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QColor foreground MEMBER foreground NOTIFY foregroundChanged)
    Q_PROPERTY(QColor lighterForeground MEMBER foreground NOTIFY foregroundChanged)
    Q_PROPERTY(QColor darkerForeground MEMBER foreground NOTIFY foregroundChanged)
    Q_PROPERTY(QColor background MEMBER background NOTIFY backgroundChanged)
    Q_PROPERTY(QColor lighterBackground MEMBER background NOTIFY backgroundChanged)
    Q_PROPERTY(QColor darkerBackground MEMBER background NOTIFY backgroundChanged)
    Q_PROPERTY(QColor selection MEMBER selection NOTIFY selectionChanged)

public:
    using QObject::QObject;
    void update(int seed);

    QColor foreground;
    QColor background;
    QColor selection;

Q_SIGNALS:
    void foregroundChanged();
    void backgroundChanged();
    void selectionChanged();
};

class StandInFonts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QFont mainFont MEMBER mainFont NOTIFY mainFontChanged)
    Q_PROPERTY(QFont alternateFont MEMBER mainFont NOTIFY mainFontChanged)
    Q_PROPERTY(QFont h1Font MEMBER h1Font NOTIFY h1FontChanged)
    Q_PROPERTY(QFont h2Font MEMBER h1Font NOTIFY h1FontChanged)
    Q_PROPERTY(QFont h3Font MEMBER h1Font NOTIFY h1FontChanged)
    Q_PROPERTY(QFont h4Font MEMBER h1Font NOTIFY h1FontChanged)

public:
    using QObject::QObject;
    void update(int seed);

    QFont mainFont;
    QFont h1Font;

Q_SIGNALS:
    void mainFontChanged();
    void h1FontChanged();
};

class StandInTheme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER title NOTIFY titleChanged)
    Q_PROPERTY(StandInColors *colors READ colors NOTIFY themeObjectChanged)
    Q_PROPERTY(StandInFonts *fonts READ fonts NOTIFY themeObjectChanged)
    Q_PROPERTY(int radius MEMBER radius NOTIFY radiusChanged)
    Q_PROPERTY(QString classnames READ classnames WRITE setClassnames NOTIFY classnamesChanged)

public:
    explicit StandInTheme(QObject *parent);
    ~StandInTheme() override;

    static StandInTheme *qmlAttachedProperties(QObject *object);

    StandInColors *colors() { return &m_colors; }
    StandInFonts *fonts() { return &m_fonts; }
    QString classnames() const { return m_classnames; }
    void setClassnames(const QString &classnames);
    void update(int seed);

    QString title;
    int radius = 0;

    Q_INVOKABLE QString getStyle(const QString &style, const QString &classnames) const;
    Q_INVOKABLE bool hasClassname(const QString &classname) const;
    Q_INVOKABLE QColor complementaryColor(const QColor &color) const;

Q_SIGNALS:
    void titleChanged();
    void themeObjectChanged();
    void radiusChanged();
    void needUpdate();
    void classnamesChanged();

private:
    StandInColors m_colors;
    StandInFonts m_fonts;
    QString m_classnames;
};

class StandInManager : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentChanged)

public:
    StandInManager();
    ~StandInManager() override;

    static StandInManager *instance();

    /// Offers both types as the module StandIn.
    static void registerTypes();

    int currentIndex() const { return m_currentIndex; }
    void setCurrentIndex(int index);
    QObject *theme(int n) const;
    void update();

public Q_SLOTS:
    void setCurrent(QObject *theme);
    void loadThemes(const QString &path, const QString &current);

Q_SIGNALS:
    void currentChanged();

private:
    QVector<QObject *> m_themes;
    int m_currentIndex = 0;
    int m_updates = 0;
};

QML_DECLARE_TYPEINFO(StandInTheme, QML_HAS_ATTACHED_PROPERTIES)
