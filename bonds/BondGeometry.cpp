#include "bonds/BondGeometry.h"

#include "canvas/truncate.h"

#include <cmath>

namespace {

constexpr double straightOffset = 6;        // pixels between the lines of a horizontal or vertical bond
constexpr double slantedOffsetSquared = 30; // square of the offset for a slanted bond

/// The offset from the centre line to the third line.
QPointF sideStep(const QPointF& from, const QPointF& to)
{
    if (from.x() == to.x())
        return {straightOffset, 0};
    if (from.y() == to.y())
        return {0, straightOffset};
    const double slope = (to.y() - from.y()) / (to.x() - from.x());
    const double squared = slope * slope;
    const double across = std::sqrt(slantedOffsetSquared * squared / (squared + 1));
    const double along = across / slope;
    if (std::isfinite(across) && std::isfinite(along) && across > 0)
        return {across, -along};
    // The square of the slope overflows or underflows: the bond is almost vertical or horizontal.
    const double offset = std::copysign(std::sqrt(slantedOffsetSquared), slope);
    return std::fabs(slope) > 1 ? QPointF(std::fabs(offset), 0) : QPointF(0, -offset);
}

} // namespace

BondLines bondLines(const QPointF& from, const QPointF& to)
{
    const QPointF step = sideStep(from, to);
    return {{from, to}, {from - step, to - step}, {from + step, to + step}};
}

double distance(const QPointF& a, const QPointF& b)
{
    return std::sqrt((b.x() - a.x()) * (b.x() - a.x()) + (b.y() - a.y()) * (b.y() - a.y()));
}

double pixelDistance(const QPointF& a, const QPointF& b)
{
    return distance(QPointF(truncated(a.x()), truncated(a.y())), QPointF(truncated(b.x()), truncated(b.y())));
}

double projectionAngle(double depthDifference, double length)
{
    if (depthDifference == 0)
        return 0;
    if (length == 0)
        return steepestAngle;
    return std::atan(std::fabs(depthDifference / length)) * degreesPerRadian;
}
