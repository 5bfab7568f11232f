#pragma once

#include <QtGui/QColor>

/// How readable one color is on another, as WCAG 2 measures it.
namespace Contrast {

/// The ratios that WCAG 2 asks of text of usual size.
const double levelAA = 4.5;
const double levelAAA = 7.0;

/// What is seen of \a top where it lies on the opaque \a bottom.
QColor blended(const QColor &top, const QColor &bottom);

/// The relative luminance of an opaque color, from 0 (black) to 1 (white).
double luminance(const QColor &color);

/// The contrast of \a text on \a surface, from 1 (the same) to 21 (black and white). What is not
/// opaque is blended first: the surface with the white of an empty window, the text with that.
/// Opaque colors may change places.
double ratio(const QColor &text, const QColor &surface);

/// The opaque color nearest to \a text that has a ratio of \a target or more on \a surface.
///
/// Hue and saturation (HSL) stay and the lightness moves as little as possible, to the lighter or
/// the darker side. Text that passes already is returned as it is seen. When no lightness passes,
/// which happens for targets above 4.58 only, the result is invalid.
QColor nearestPassing(const QColor &text, const QColor &surface, double target);

} // namespace Contrast
