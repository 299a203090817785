#pragma once

#include "i3d/BallShape.h"
#include "i3d/SceneGeometry.h"
#include "i3d/StickShape.h"

#include <variant>
#include <vector>

/// An atom of the scene.
struct Ball {
    SceneVector centre;
    SceneVector colour; ///< red, green and blue; 1 is the brightest that OpenGL shows
};

/// A line or wedge of a bond, with the values of SceneStick that OpenGL takes.
struct Stick {
    SceneVector origin;
    float planeAngle;
    float tilt;
    float length;
    bool isUpWedge;
    bool isClosed;         ///< whether balls cover both ends, so that nobody can look into it
    SceneVector rightAxis; ///< the scene's directions of the x and y axes of its StickShape
    SceneVector upAxis;
    SceneVector middle;
};

/// What the 3D window shows: balls and sticks in the order of drawing, which decides where two are equally near.
class Scene {
public:
    void clear() { parts.clear(); }
    void addBall(const ScenePoint& centre, const SceneVector& colour);
    /// `isClosed`: whether balls cover both ends.
    void addStick(const SceneStick& stick, bool isUpWedge, bool isClosed);
    /// Gives back memory that was allocated for more parts.
    void complete() { parts.shrink_to_fit(); }

    /// Compiles the shape that the balls share; to be called in every new OpenGL context.
    void compile(GLUquadricObj* quadric);
    /// Draws what is in the view, as set by OpenGL's matrices. `viewportHeight` is in pixels.
    void draw(int viewportHeight);

private:
    std::vector<std::variant<Ball, Stick>> parts;
    BallShape ballShape;
};
