#pragma once

#include <QLineF>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <cmath>
#include <numbers>
#include <vector>

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

/// The width of the lines of a down wedge, in canvas pixels.
inline constexpr double hatchWidth = 1;

/// The vertical lines that hatch a down wedge, from left to right: one every fifth of the horizontal extent of `wedge`,
/// but at most 3 pixels apart, counted from its left edge, where the left side of the first line is. Each ends at the
/// sides of the triangle `wedge` (canvas pixels). Lines outside `visible` are omitted, so that a wedge of any size is
/// cheap to paint.
std::vector<QLineF> hatchLines(const QPolygonF& wedge, const QRectF& visible);
