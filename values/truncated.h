#pragma once

#include <cmath>
#include <limits>

/// \a value cut toward zero to a whole number. What an int can't hold becomes the nearest int, and
/// NaN becomes 0, where a plain conversion would be undefined.
inline int truncated(double value)
{
    typedef std::numeric_limits<int> Limits;
    if (std::isnan(value))
        return 0;
    if (value >= double(Limits::max()))
        return Limits::max();
    if (value <= double(Limits::min()))
        return Limits::min();
    return int(value);
}
