#include "i3d/SceneGeometry.h"

#include "bonds/BondGeometry.h"

#include "canvas/truncate.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double canvasOffset = 1000;

/// The turn about the scene's x axis, in degrees, that lays an axis along +z into the direction of a canvas vector of
/// `right` pixels to the right and `up` pixels upward, not both 0.
double planeAngle(double right, double up)
{
    const double slope = std::atan(up / right) * degreesPerRadian;
    return right >= 0 ? slope - 90 : slope + 90;
}

/// The stick with the given shadow on the drawing plane.
std::optional<SceneStick> stickAbove(const ScenePoint& origin, double right, double up, double tilt, double length)
{
    if ((right == 0 && up == 0) || !std::isfinite(tilt) || !std::isfinite(length))
        return std::nullopt;
    return SceneStick{origin, planeAngle(right, up), tilt, length};
}

} // namespace

ScenePoint scenePoint(const QPointF& p, double depth)
{
    return {depth, p.x() - canvasOffset, canvasOffset - p.y()};
}

std::optional<SceneStick> lineStick(const QPoint& start, const QPoint& end, double startDepth, double endDepth)
{
    const double right = static_cast<double>(end.x()) - start.x();
    const double up = static_cast<double>(start.y()) - end.y();
    const double shadow = std::hypot(right, up);
    const double climb = endDepth - startDepth;
    const double tilt = std::atan(climb / shadow) * degreesPerRadian;
    return stickAbove(scenePoint(start, startDepth), right, up, tilt, std::hypot(shadow, climb));
}

std::optional<SceneStick> wedgeStick(const QPointF& from, const QPointF& to, double fromDepth, double tilt)
{
    const double right = to.x() - from.x();
    const double up = from.y() - to.y();
    const double length = std::fabs(std::hypot(right, up) / std::cos(tilt / degreesPerRadian));
    return stickAbove(scenePoint(from, fromDepth), right, up, tilt, length);
}

int saturatedSum(int a, int b)
{
    return truncated(static_cast<double>(a) + b);
}
