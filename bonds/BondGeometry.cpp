#include "bonds/BondGeometry.h"

#include "canvas/truncate.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

constexpr double straightOffset = 6;        // pixels between the lines of a horizontal or vertical bond
constexpr double slantedOffsetSquared = 30; // square of the offset for a slanted bond
constexpr double hatchesInWedge = 5;
constexpr double widestHatchStep = 3; // pixels

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

/// The part of the vertical line at `x` that is inside `triangle`.
std::optional<QLineF> verticalSection(const QPolygonF& triangle, double x)
{
    std::optional<double> top;
    std::optional<double> bottom;
    for (qsizetype i = 0; i < triangle.size(); ++i) {
        const QPointF a = triangle[i];
        const QPointF b = triangle[(i + 1) % triangle.size()];
        if (a.x() == b.x() || x < std::min(a.x(), b.x()) || x > std::max(a.x(), b.x()))
            continue;
        const double y = a.y() + (x - a.x()) / (b.x() - a.x()) * (b.y() - a.y());
        top = std::min(top.value_or(y), y);
        bottom = std::max(bottom.value_or(y), y);
    }
    if (!top || *top == *bottom)
        return std::nullopt;
    return QLineF(x, *top, x, *bottom);
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

std::vector<QLineF> hatchLines(const QPolygonF& wedge, const QRectF& visible)
{
    const QRectF extent = wedge.boundingRect();
    const double step = std::min(extent.width() / hatchesInWedge, widestHatchStep);
    std::vector<QLineF> lines;
    if (!(step > 0))
        return lines;
    const double start = extent.left() + hatchWidth / 2;
    const double first = std::max(0.0, std::floor((visible.left() - start) / step));
    const double last = std::min(std::floor(extent.width() / step), std::ceil((visible.right() - start) / step));
    const int steps = truncated(last - first);
    for (int i = 0; i <= steps; ++i)
        if (const std::optional<QLineF> line = verticalSection(wedge, start + (first + i) * step))
            lines.push_back(*line);
    return lines;
}
