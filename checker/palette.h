#pragma once

#include <QtGui/QColor>

/// The colors of a scope, each readable where it is used.
struct Palette
{
    QColor foreground;
    QColor lighterForeground;
    QColor darkerForeground;
    QColor background;
    QColor lighterBackground;
    QColor darkerBackground;
    /// Selected text, which stands on the foreground.
    QColor selection;

    /// The palette on the opaque \a background with a touch of \a accent: the three foregrounds
    /// have a contrast of 4.5 or more on the three backgrounds, and the selection on the
    /// foreground. Where a background leaves little room, its shades are close to it, or the same.
    static Palette on(const QColor &background, const QColor &accent);

    /// The same with a foreground that stands back, and a selection that stands on that.
    Palette muted() const;
};
