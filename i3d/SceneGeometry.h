#pragma once

#include <QPoint>
#include <QPointF>

#include <optional>

// Conversion of a drawing to the scene of the 3D viewer. One scene unit is one canvas pixel. Up on the canvas is +z,
// and the viewer looks along -x, so depth increases towards the viewer.

/// A point of the scene.
struct ScenePoint {
    double x; ///< depth
    double y; ///< canvas x - 1000
    double z; ///< 1000 - canvas y
};

/// A cylinder of the scene that starts at `origin`. Its axis is +z, rotated first by `tilt` degrees about y and then by
/// `planeAngle` degrees about x.
struct SceneStick {
    ScenePoint origin;
    double planeAngle; ///< rotates the axis to the direction of the bond on the canvas
    double tilt;       ///< angle to the drawing plane, positive towards the viewer
    double length;     ///< positive and finite
};

/// The scene point for the canvas point `p` at the depth `depth`.
ScenePoint scenePoint(const QPointF& p, double depth);

/// The stick for a bond's line between the canvas points `start` and `end`, from the depth of the start atom to that of
/// the end atom. Nothing for a line of length zero.
std::optional<SceneStick> lineStick(const QPoint& start, const QPoint& end, double startDepth, double endDepth);

/// The stick for a wedge from the canvas point `from` at the depth `fromDepth`, at an angle of `tilt` degrees to the
/// drawing plane. Its projection onto the plane ends at `to`; the depth of the end atom is not used. Nothing for a
/// wedge of length zero, or if the tilt or the length is not finite.
std::optional<SceneStick> wedgeStick(const QPointF& from, const QPointF& to, double fromDepth, double tilt);

/// The directions, of length 1, that the axes of an unrotated stick have in the scene.
struct StickAxes {
    ScenePoint right;   ///< of x
    ScenePoint up;      ///< of y
    ScenePoint forward; ///< of z, the axis of the cylinder
};
StickAxes axesOf(const SceneStick& stick);
/// The point on the axis of the stick at this distance from its origin.
ScenePoint pointAlong(const SceneStick& stick, double distance);

/// a + b, clamped to the range of int.
int saturatedSum(int a, int b);
