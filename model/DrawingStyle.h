#pragma once

#include <QColor>

// Appearance of the canvas items of a drawing.

// Stacking order: the z of the items on the canvas; higher values are on top.
inline constexpr double rubberBandLevel = 0.0;
inline constexpr double bondLevel = 1.0;
inline constexpr double symbolLevel = 1.0;
inline constexpr double atomLevel = 2.0;

inline constexpr QColor hoverColor(0, 255, 0); ///< of the atom or line under the pointer
inline constexpr QColor atomDotColor(0, 0, 0);
inline constexpr QColor bondColor(0, 0, 255); ///< of a new line or wedge
