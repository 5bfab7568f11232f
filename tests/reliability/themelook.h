#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtGui/QColor>

class Theme;

/// What a theme looks like: each value that items show, in one object that can be compared.
struct ThemeLook
{
    QVector<QColor> colors;
    QVector<qreal> fontSizes;
    int radius = 0;

    /// The look of the theme that themeLookText() writes for \a seed. Two seeds below 20 have no
    /// value in common.
    static ThemeLook ofSeed(int seed);

    /// The same, on an item with the class "warning" or "quiet".
    static ThemeLook ofSeed(int seed, const QString &classname);

    /// What \a theme answers to native code.
    static ThemeLook ofTheme(const Theme *theme);

    /// What the QML of probeText() shows.
    static ThemeLook ofProbe(const QObject *probe);

    bool operator==(const ThemeLook &other) const;

    /// For messages of tests.
    QString text() const;
};

/// Names of the seven color and six font properties, in their order.
const QVector<QByteArray> &colorNames();
const QVector<QByteArray> &fontNames();

/// A theme document with the look ThemeLook::ofSeed(\a seed) and the classes "warning", which has
/// a foreground of its own, and "quiet", which has a background and a radius.
QByteArray themeLookText(const QString &title, int seed);

/// QML declarations, for the body of any object, that bind a property to each value of the theme.
QByteArray probeText();
