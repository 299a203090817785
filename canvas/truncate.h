#pragma once

#include <limits>

/// Converts a coordinate to int, truncating toward zero.
///
/// Total: NaN gives 0, and a value beyond the range of int gives the end of the range that it lies past. Every
/// conversion of a canvas coordinate or a depth to int goes through here.
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

/// Converts a depth or a length to float. Total: a value beyond the range of float gives the end of the range that it
/// lies past, NaN gives 0.
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
