#pragma once

#include <QLineF>
#include <QPointF>

#include <cmath>
#include <numbers>

inline constexpr double degreesPerRadian = 180 / std::numbers::pi;

/// The projection angle of a wedge drawn by hand, and the one that lines of a file bring along, in degrees.
inline constexpr float drawnAngle = 60.0F;
inline constexpr double drawnAngleInRadians = std::numbers::pi / 3;
/// How far such a wedge rises for each pixel of its length.
inline const double drawnSlope = std::tan(drawnAngleInRadians);

/// The largest projection angle of a wedge, in degrees.
inline constexpr float steepestAngle = 89.5F;

/// Where the lines of a bond run, in canvas pixels, not yet truncated.
struct BondLines {
    QLineF centre; ///< atom centre to atom centre
    QLineF second; ///< beside the centre line
    QLineF third;  ///< on the other side
};

/// The lines of a bond between the atom centres `from` and `to`.
///
/// The side lines of a horizontal or vertical bond stand 6 pixels off; those of a slanted one sqrt(30). A bond of
/// length zero counts as vertical.
BondLines bondLines(const QPointF& from, const QPointF& to);

/// The distance of two points in canvas pixels.
double distance(const QPointF& a, const QPointF& b);

/// The distance of two points after both are truncated to whole pixels; cannot overflow.
double pixelDistance(const QPointF& a, const QPointF& b);

/// The projection angle, in degrees, of a wedge whose ends lie `depthDifference` apart in depth and `length` pixels
/// apart on the canvas: 0 where the depths are equal, steepestAngle where only the length is zero.
double projectionAngle(double depthDifference, double length);
