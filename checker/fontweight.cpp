#include "checker/fontweight.h"

#include <QtCore/QtGlobal>
#include <QtGui/QFont>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

struct Step
{
    int weight;
    int number;
    const char *name;
};

const Step steps[] = {
    { QFont::Thin, 100, "Thin" },     { QFont::ExtraLight, 200, "ExtraLight" },
    { QFont::Light, 300, "Light" },   { QFont::Normal, 400, "Normal" },
    { QFont::Medium, 500, "Medium" }, { QFont::DemiBold, 600, "DemiBold" },
    { QFont::Bold, 700, "Bold" },     { QFont::ExtraBold, 800, "ExtraBold" },
    { QFont::Black, 900, "Black" },
};

const Step &nearest(int weight)
{
    return *std::min_element(std::begin(steps), std::end(steps), [weight](Step a, Step b) {
        return std::abs(a.weight - weight) < std::abs(b.weight - weight);
    });
}

} // namespace

int FontWeight::number(int weight)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return weight;
#else
    // Between two steps in their measure, and beyond the last as far as the heaviest that there is.
    const int heaviest = 99;
    const Step *above = std::find_if(std::next(std::begin(steps)), std::end(steps),
                                     [weight](Step step) { return step.weight >= weight; });
    const Step &below = *std::prev(above);
    const int end = above == std::end(steps) ? heaviest : above->weight;
    return below.number + qRound(100.0 * (weight - below.weight) / (end - below.weight));
#endif
}

QString FontWeight::name(int weight)
{
    const Step &step = nearest(weight);
    return step.weight == weight ? QString::fromLatin1(step.name) : QString();
}

QString FontWeight::text(int weight)
{
    const QString exact = name(weight);
    return exact.isEmpty()
            ? QStringLiteral("%1 (%2)").arg(QLatin1String(nearest(weight).name)).arg(number(weight))
            : exact;
}
