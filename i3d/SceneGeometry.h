#pragma once

#include <QPoint>
#include <QPointF>

#include <optional>

// Where the scene of the 3D viewer puts what is drawn on the canvas. One scene unit is one canvas pixel; canvas up is
// scene +z and the viewer looks along -x, so depth rises toward it.

/// A point of the scene.
struct ScenePoint {
    double x; ///< depth
    double y; ///< canvas x - 1000
    double z; ///< 1000 - canvas y
};

/// A cylinder of the scene that starts at `origin`. Its axis is +z, turned first by `tilt` degrees about y and then by
/// `planeAngle` degrees about x.
struct SceneStick {
    ScenePoint origin;
    double planeAngle; ///< turns the axis into the bond's direction on the canvas
    double tilt;       ///< turns the axis out of the drawing plane, toward the viewer when positive
    double length;     ///< above 0 and finite
};

/// The point of the scene for the canvas point `p` at the depth `depth`.
ScenePoint scenePoint(const QPointF& p, double depth);

/// The stick of a bond's line between the canvas points `start` and `end`. It climbs from the depth of the bond's start
/// atom to that of its end atom. Nothing for a line of length zero.
std::optional<SceneStick> lineStick(const QPoint& start, const QPoint& end, double startDepth, double endDepth);

/// The stick of a wedge from the canvas point `from` at depth `fromDepth` to `to`. It leaves the drawing plane by
/// `tilt` degrees and is so long that its shadow on the plane reaches from `from` to `to`, wherever the end atom's
/// depth is. Nothing for a wedge of length zero, nor for one whose tilt or length is not finite.
std::optional<SceneStick> wedgeStick(const QPointF& from, const QPointF& to, double fromDepth, double tilt);

/// a + b, or the end of the range of int that the sum lies past.
int saturatedSum(int a, int b);
