#pragma once

#include <QtGui/QColor>
#include <QtGui/QFont>

#include <array>

/// What every contender shows: two looks that differ in all values, so that no switch can be
/// cheaper because a value happened to stay.
struct Look
{
    QColor background;
    QColor foreground;
    QColor accent;
    int radius;
    QFont font;

    static const Look &at(int index);
};

constexpr int lookCount = 2;
