#pragma once

#include <QColor>

// What the items of a drawing look like on the canvas.

// The levels on which they stand: their z on the canvas, higher ones on top.
inline constexpr double rubberBandLevel = 0.0;
inline constexpr double bondLevel = 1.0;
inline constexpr double symbolLevel = 1.0;
inline constexpr double atomLevel = 2.0;

inline constexpr QColor hoverColor(0, 255, 0); ///< of the atom or line under the pointer
inline constexpr QColor atomDotColor(0, 0, 0);
inline constexpr QColor bondColor(0, 0, 255); ///< of a new line or wedge
