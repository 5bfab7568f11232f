#include "checker/contrast.h"

#include "checker/channel.h"

#include <algorithm>
#include <cmath>

namespace {

// Finer than the 255 steps of a channel, so that the nearest color of eight bits is not missed.
const int lightnessSteps = 1024;

/// \a color as it is written in six digits, at another \a lightness.
QColor withLightness(const QColor &color, double lightness)
{
    const Channel hue = color.hslHueF();
    QColor result;
    // Grey has no hue, which Qt tells by -1 and does not take back for every value.
    result.setHslF(hue < 0 ? 0 : hue, hue < 0 ? 0 : color.hslSaturationF(),
                   Channel(std::clamp(lightness, 0.0, 1.0)));
    return QColor(result.rgb());
}

/// In how many steps to the side of \a direction \a color, which does not pass, reaches \a target
/// on \a surface; more than there are when it never does.
int stepsToPass(const QColor &color, const QColor &surface, double target, int direction)
{
    const double start = color.lightnessF();
    const auto passes = [&](int steps) {
        const QColor candidate = withLightness(color,
                                               start + direction * double(steps) / lightnessSteps);
        return Contrast::ratio(candidate, surface) >= target;
    };
    int failing = 0;
    int passing = int(std::ceil((direction > 0 ? 1 - start : start) * lightnessSteps));
    if (!passes(passing))
        return lightnessSteps + 1;
    // Luminance follows lightness, so beyond the first that passes all do.
    while (passing - failing > 1) {
        const int middle = (failing + passing) / 2;
        (passes(middle) ? passing : failing) = middle;
    }
    return passing;
}

} // namespace

QColor Contrast::blended(const QColor &top, const QColor &bottom)
{
    const auto mix = [&top](Channel above, Channel below) {
        return above * top.alphaF() + below * (1 - top.alphaF());
    };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

double Contrast::luminance(const QColor &color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
            + 0.0722 * linear(color.blueF());
}

double Contrast::ratio(const QColor &text, const QColor &surface)
{
    const QColor below = blended(surface, Qt::white);
    const double a = luminance(blended(text, below));
    const double b = luminance(below);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Contrast::nearestPassing(const QColor &text, const QColor &surface, double target)
{
    const QColor below = blended(surface, Qt::white);
    QColor seen = QColor(blended(text, below).rgb());
    if (ratio(seen, below) >= target)
        return seen;
    const int lighter = stepsToPass(seen, below, target, 1);
    const int darker = stepsToPass(seen, below, target, -1);
    const int steps = std::min(lighter, darker);
    if (steps > lightnessSteps)
        return QColor();
    const int direction = lighter < darker ? 1 : -1;
    return withLightness(seen, seen.lightnessF() + direction * double(steps) / lightnessSteps);
}
