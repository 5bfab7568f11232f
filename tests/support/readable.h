#pragma once

#include <QtGui/QColor>

#include <algorithm>
#include <cmath>

/// How readable one color is on another, as WCAG 2 measures it.
namespace Readable {

/// What is seen of \a top where it lies on the opaque \a bottom.
inline QColor blended(const QColor &top, const QColor &bottom)
{
    const auto mix = [&top](double above, double below) {
        return above * top.alphaF() + below * (1 - top.alphaF());
    };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

inline double luminance(const QColor &color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
            + 0.0722 * linear(color.blueF());
}

/// From 1 (the same) to 21 (black and white), whichever of the two is the text. \a surface lies on
/// white where it is not opaque.
inline double contrast(const QColor &text, const QColor &surface)
{
    const QColor below = blended(surface, Qt::white);
    const double a = luminance(blended(text, below));
    const double b = luminance(below);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

} // namespace Readable
