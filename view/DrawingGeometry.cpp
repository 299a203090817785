#include "view/DrawingGeometry.h"

#include "bonds/BondGeometry.h"
#include "canvas/truncate.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;

// Intentional: the angles of a chain are converted with a less precise pi.
constexpr double chainPi = 3.142;
constexpr float chainHalfAngle = 30.0F; // degrees, between a bond and the axis of the chain
constexpr float maxTurns = 100000;      // a chain across the whole canvas has about fifty

double chainRadians(double degrees)
{
    return degrees * chainPi / 180;
}

/// The length of two bonds of a chain along its axis.
double chainPeriod(float length)
{
    return std::cos(chainRadians(chainHalfAngle)) * 2 * length;
}

} // namespace

float direction(float x1, float y1, float x2, float y2)
{
    double theta = x1 == x2 ? pi / 2 : std::atan((double{y2} - y1) / (double{x2} - x1));
    if (x2 > x1 && y2 > y1)
        theta = 2 * pi - theta;
    if (x2 > x1 && y1 > y2)
        theta = -theta;
    if (x1 > x2)
        theta = pi - theta;
    return static_cast<float>(theta);
}

float snappedAngle(float theta, float reference, float step)
{
    const double steps = std::round(std::fabs(double{reference} - theta) / step);
    return static_cast<float>((reference > theta ? -steps : steps) * step + reference);
}

double shownAngle(double dx, double dy)
{
    double angle;
    if (dx > 0)
        angle = std::atan(-dy / dx) + (dy >= 0 ? 2 * pi : 0);
    else if (dx < 0)
        angle = std::atan(-dy / dx) + pi;
    else
        angle = dy < 0 ? pi / 2 : 3 * pi / 2;
    return std::fmod(angle * 180 / pi, 360);
}

ZigZag zigZag(const QPointF& start, const QPointF& end, float length)
{
    ZigZag chain;
    const double period = chainPeriod(length);
    const auto turns = static_cast<float>(distance(start, end) / period - 0.5);
    if (!(turns <= maxTurns))
        return chain;
    const auto theta = static_cast<float>(
        direction(narrowed(start.x()), narrowed(start.y()), narrowed(end.x()), narrowed(end.y())) * 180 / chainPi);

    const double apexAngle = chainRadians(double{chainHalfAngle} + theta);
    const QPointF toApex(length * std::cos(apexAngle), -length * std::sin(apexAngle));
    const QPointF toLine(period * std::cos(chainRadians(theta)), -period * std::sin(chainRadians(theta)));
    QPointF base = start;
    for (int i = 0; turns > i; ++i) {
        const bool hasLine = turns - i > 0.5F;
        const QPointF apex = base + toApex;
        if (hasLine)
            base += toLine;
        chain.steps.push_back({apex, base, hasLine});
    }
    return chain;
}

int zigZagAtomCount(const QPointF& start, const QPointF& end, float length)
{
    return truncated(2 * (distance(start, end) / chainPeriod(length) + 0.5));
}
