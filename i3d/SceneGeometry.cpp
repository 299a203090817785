#include "i3d/SceneGeometry.h"

#include "bonds/BondGeometry.h"

#include "canvas/truncate.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double canvasOffset = 1000;

/// The rotation about the scene's x axis, in degrees, from +z to the direction of a canvas vector of `right` pixels to
/// the right and `up` pixels upwards, not both 0.
double planeAngle(double right, double up)
{
    const double slope = std::atan(up / right) * degreesPerRadian;
    return right >= 0 ? slope - 90 : slope + 90;
}

/// The stick whose projection onto the drawing plane is the vector (`right`, `up`).
std::optional<SceneStick> stickWithProjection(const ScenePoint& origin, double right, double up, double tilt,
                                              double length)
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
    const double projection = std::hypot(right, up);
    const double rise = endDepth - startDepth;
    const double tilt = std::atan(rise / projection) * degreesPerRadian;
    return stickWithProjection(scenePoint(start, startDepth), right, up, tilt, std::hypot(projection, rise));
}

std::optional<SceneStick> wedgeStick(const QPointF& from, const QPointF& to, double fromDepth, double tilt)
{
    const double right = to.x() - from.x();
    const double up = from.y() - to.y();
    const double length = std::fabs(std::hypot(right, up) / std::cos(tilt / degreesPerRadian));
    return stickWithProjection(scenePoint(from, fromDepth), right, up, tilt, length);
}

StickAxes axesOf(const SceneStick& stick)
{
    const double tiltSine = std::sin(stick.tilt / degreesPerRadian);
    const double tiltCosine = std::cos(stick.tilt / degreesPerRadian);
    const double sine = std::sin(stick.planeAngle / degreesPerRadian);
    const double cosine = std::cos(stick.planeAngle / degreesPerRadian);
    return {{tiltCosine, tiltSine * sine, -tiltSine * cosine},
            {0, cosine, sine},
            {tiltSine, -tiltCosine * sine, tiltCosine * cosine}};
}

ScenePoint pointAlong(const SceneStick& stick, double distance)
{
    const ScenePoint direction = axesOf(stick).forward;
    return {stick.origin.x + distance * direction.x, stick.origin.y + distance * direction.y,
            stick.origin.z + distance * direction.z};
}

int saturatedSum(int a, int b)
{
    return truncated(static_cast<double>(a) + b);
}
