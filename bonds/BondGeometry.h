#pragma once

#include <QLineF>
#include <QPointF>

#include <cmath>
#include <numbers>

inline constexpr double degreesPerRadian = 180 / std::numbers::pi;

/// The projection angle of a newly drawn wedge, in degrees; also passed to KytBond::addBond for lines.
inline constexpr float drawnAngle = 60.0F;
inline constexpr double drawnAngleInRadians = std::numbers::pi / 3;
/// The rise of such a wedge per pixel of its length.
inline const double drawnSlope = std::tan(drawnAngleInRadians);

/// The largest projection angle of a wedge, in degrees.
inline constexpr float steepestAngle = 89.5F;

/// The lines of a bond, in canvas pixels, not truncated.
struct BondLines {
    QLineF centre; ///< atom centre to atom centre
    QLineF second; ///< beside the centre line
    QLineF third;  ///< on the opposite side
};

/// The lines of a bond between the atom centres `from` and `to`.
///
/// The outer lines of a horizontal or vertical bond have an offset of 6 pixels; those of a slanted bond, sqrt(30). A
/// bond of length zero counts as vertical.
BondLines bondLines(const QPointF& from, const QPointF& to);

/// The distance between two points, in canvas pixels.
double distance(const QPointF& a, const QPointF& b);

/// The distance between two points after truncating both to whole pixels; cannot overflow.
double pixelDistance(const QPointF& a, const QPointF& b);

/// The projection angle, in degrees, of a wedge whose ends are `depthDifference` apart in depth and `length` pixels
/// apart on the canvas: 0 for equal depths, steepestAngle for different depths and length zero.
double projectionAngle(double depthDifference, double length);
