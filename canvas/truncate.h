#pragma once

#include <limits>

/// Converts a coordinate to int, truncating towards zero. NaN gives 0; values outside the range of int are clamped.
///
/// All conversions of canvas coordinates and depths to int must use this function.
inline int truncated(double value)
{
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    if (value != value)
        return 0;
    if (value <= lowest)
        return std::numeric_limits<int>::min();
    if (value >= highest)
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

/// Converts a depth or a length to float. NaN gives 0; values outside the range of float are clamped.
inline float narrowed(double value)
{
    constexpr double largest = std::numeric_limits<float>::max();
    if (value != value)
        return 0;
    if (value <= -largest)
        return -std::numeric_limits<float>::max();
    if (value >= largest)
        return std::numeric_limits<float>::max();
    return static_cast<float>(value);
}
