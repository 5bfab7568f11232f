#pragma once

#include "values/themeobject.h"

#include <QtGui/QColor>

#include <array>

/// The color group of a theme: text and surface colors with a lighter and a darker shade each,
/// and the color of selected text.
///
/// All seven properties behave alike: writing a color that compares equal to the stored one does
/// nothing, any other color is stored and then announced by the property's notify signal. A new
/// group holds seven invalid colors until initDefaults() or an assignment fills it.
class TAVOLINS_EXPORT ThemeObjectColors : public ThemeObject
{
    Q_OBJECT

    /// Text and icons. Default: the application palette's WindowText role.
    Q_PROPERTY(QColor foreground READ foreground WRITE setForeground NOTIFY foregroundChanged)
    /// A lighter shade of the foreground. Default: the foreground lightened by factor 150.
    Q_PROPERTY(QColor lighterForeground READ lighterForeground WRITE setLighterForeground NOTIFY
                       lighterForegroundChanged)
    /// A darker shade of the foreground. Default: the foreground darkened by factor 200.
    Q_PROPERTY(QColor darkerForeground READ darkerForeground WRITE setDarkerForeground NOTIFY
                       darkerForegroundChanged)
    /// Surfaces that text stands on. Default: the application palette's Window role.
    Q_PROPERTY(QColor background READ background WRITE setBackground NOTIFY backgroundChanged)
    /// A lighter shade of the background. Default: the background lightened by factor 150.
    Q_PROPERTY(QColor lighterBackground READ lighterBackground WRITE setLighterBackground NOTIFY
                       lighterBackgroundChanged)
    /// A darker shade of the background. Default: the background darkened by factor 200.
    Q_PROPERTY(QColor darkerBackground READ darkerBackground WRITE setDarkerBackground NOTIFY
                       darkerBackgroundChanged)
    /// Selected text. Default: the application palette's HighlightedText role.
    Q_PROPERTY(QColor selection READ selection WRITE setSelection NOTIFY selectionChanged)

public:
    explicit ThemeObjectColors(QObject *parent = nullptr);
    ~ThemeObjectColors() override;

    /// Writes each of \a other's colors through the setters, in the order of the properties, so
    /// that exactly the colors that differ are announced. Parent and object name stay.
    ///
    /// If a handler of one of those signals assigns to this group again, that later assignment
    /// stands and the rest of this one is dropped.
    ThemeObjectColors &operator=(const ThemeObjectColors &other);

    QColor foreground() const;
    void setForeground(const QColor &color);
    QColor lighterForeground() const;
    void setLighterForeground(const QColor &color);
    QColor darkerForeground() const;
    void setDarkerForeground(const QColor &color);
    QColor background() const;
    void setBackground(const QColor &color);
    QColor lighterBackground() const;
    void setLighterBackground(const QColor &color);
    QColor darkerBackground() const;
    void setDarkerBackground(const QColor &color);
    QColor selection() const;
    void setSelection(const QColor &color);

    /// Reads a "colors" object, whose members are named like the properties.
    ///
    /// A value is text in one of the forms that QColor::setNamedColor() takes; anything else
    /// leaves the color as it was. With \a deriveMissing, a lighter or darker shade that the
    /// object leaves out is computed from its base color (factor 200 both ways, always opaque);
    /// without it the shade is kept.
    void load(QJsonObject &object, bool deriveMissing) override;

    /// Takes the defaults from the application's default palette.
    void initDefaults() override;

Q_SIGNALS:
    void foregroundChanged();
    void lighterForegroundChanged();
    void darkerForegroundChanged();
    void backgroundChanged();
    void lighterBackgroundChanged();
    void darkerBackgroundChanged();
    void selectionChanged();

private:
    friend class ThemePrivate;

    enum Role {
        Foreground,
        LighterForeground,
        DarkerForeground,
        Background,
        LighterBackground,
        DarkerBackground,
        Selection,
        RoleCount
    };
    typedef std::array<QColor, RoleCount> Values;

    explicit ThemeObjectColors(const Values &values);

    void setColor(Role role, const QColor &color);
    void setColors(const Values &colors);

    Values m_colors;
};
