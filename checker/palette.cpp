#include "checker/palette.h"

#include "checker/channel.h"
#include "checker/contrast.h"

#include <QtCore/QVector>

#include <algorithm>

namespace {

// How far shades are from their base color at most, as lightness.
const double backgroundDistance = 0.055;
const double foregroundDistance = 0.11;
// What text is like where the background leaves the choice.
const double darkText = 0.13;
const double lightText = 0.93;
const double textSaturation = 0.18;

QColor colorOf(double hue, double saturation, double lightness)
{
    QColor color;
    color.setHslF(Channel(std::max(hue, 0.0)), Channel(hue < 0 ? 0 : saturation),
                  Channel(std::clamp(lightness, 0.0, 1.0)));
    return QColor(color.rgb());
}

QColor moved(const QColor &color, double distance)
{
    return colorOf(color.hslHueF(), color.hslSaturationF(), color.lightnessF() + distance);
}

/// Black or white, whichever is more readable on \a surface. Passes on every surface there is.
QColor extreme(const QColor &surface)
{
    const bool isDark = Contrast::ratio(Qt::white, surface) > Contrast::ratio(Qt::black, surface);
    return isDark ? QColor(Qt::white) : QColor(Qt::black);
}

bool passes(const QColor &text, const QVector<QColor> &surfaces)
{
    return std::all_of(surfaces.begin(), surfaces.end(), [&text](const QColor &surface) {
        return Contrast::ratio(text, surface) >= Contrast::levelAA;
    });
}

/// The shade of \a background at \a distance, or nearer where \a text would not be readable on it.
QColor shadeFor(const QColor &text, const QColor &background, double distance)
{
    const int steps = 12;
    for (int step = steps; step > 0; --step) {
        QColor shade = moved(background, distance * step / steps);
        if (passes(text, { shade }))
            return shade;
    }
    return background;
}

/// The color nearest to \a ideal that is readable on all \a surfaces, on which \a last is.
QColor readable(const QColor &ideal, const QVector<QColor> &surfaces, const QColor &last)
{
    QColor result = ideal;
    for (const QColor &surface : surfaces) {
        const QColor mended = Contrast::nearestPassing(result, surface, Contrast::levelAA);
        if (mended.isValid())
            result = mended;
    }
    // Mending for one surface may have gone to the side where another one is.
    return passes(result, surfaces) ? result : last;
}

/// The shade of the readable \a foreground at \a distance, or nearer.
QColor shadeOn(const QVector<QColor> &surfaces, const QColor &foreground, double distance)
{
    const QColor shade = readable(moved(foreground, distance), surfaces, foreground);
    const bool isLighter = Contrast::luminance(shade) >= Contrast::luminance(foreground);
    // What is readable next to the shade may be on the other side of the foreground.
    return isLighter == (distance > 0) ? shade : foreground;
}

} // namespace

Palette Palette::on(const QColor &background, const QColor &accent)
{
    Palette palette;
    const QColor last = extreme(background);
    palette.background = background;
    palette.lighterBackground = shadeFor(last, background, backgroundDistance);
    palette.darkerBackground = shadeFor(last, background, -backgroundDistance);
    const QVector<QColor> surfaces{ palette.background, palette.lighterBackground,
                                    palette.darkerBackground };

    const bool isLight = last == QColor(Qt::white);
    const double saturation = std::min(textSaturation, double(accent.hslSaturationF()));
    const QColor text = colorOf(accent.hslHueF(), saturation, isLight ? lightText : darkText);
    palette.foreground = readable(text, surfaces, last);
    palette.lighterForeground = shadeOn(surfaces, palette.foreground, foregroundDistance);
    palette.darkerForeground = shadeOn(surfaces, palette.foreground, -foregroundDistance);
    palette.selection = readable(accent, { palette.foreground }, extreme(palette.foreground));
    return palette;
}

Palette Palette::muted() const
{
    // Halfway to the background is farther than most backgrounds let it go.
    const QColor half = QColor::fromRgbF((foreground.redF() + background.redF()) / 2,
                                         (foreground.greenF() + background.greenF()) / 2,
                                         (foreground.blueF() + background.blueF()) / 2);
    Palette palette = *this;
    palette.foreground = readable(QColor(half.rgb()),
                                  { background, lighterBackground, darkerBackground }, foreground);
    palette.selection = readable(selection, { palette.foreground }, extreme(palette.foreground));
    return palette;
}
