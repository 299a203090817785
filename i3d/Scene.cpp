#include "i3d/Scene.h"

#include "canvas/truncate.h"
#include "i3d/ViewVolume.h"

#include <cmath>

namespace {

constexpr int upWedgeSlices = 22;
constexpr int otherSlices = 20;
constexpr GLuint upWedgeLists = 3; // after those of BallShape
constexpr GLuint otherStickLists = 5;

const StickShape& upWedgeShape()
{
    static const StickShape shape(upWedgeSlices, upWedgeLists);
    return shape;
}

const StickShape& otherStickShape()
{
    static const StickShape shape(otherSlices, otherStickLists);
    return shape;
}

/// Where balls are up to this radius, sticks look small.
constexpr float pixelsOfSmallSticks = 9;

/// The near plane cuts what is nearer to the eye than this, and opens the view into it.
constexpr float cutAway = 0.25F;

SceneVector narrowedVector(const ScenePoint& p)
{
    return {narrowed(p.x), narrowed(p.y), narrowed(p.z)};
}

/// Draws the parts that are in view.
class PartDrawer {
public:
    PartDrawer(BallShape& ballShape, int viewportHeight)
        : ballShape(ballShape)
        , eye(volume.eye())
        , viewportHeight(viewportHeight)
    {
        ballShape.prepare(volume.towardsEye());
    }

    void operator()(const Ball& ball)
    {
        const ViewVolume::Position position = volume.position(ball.centre);
        if (volume.excludes(position, BallShape::radius))
            return;
        const float distance = position.distance();
        glPushMatrix();
        glTranslatef(ball.centre[0], ball.centre[1], ball.centre[2]);
        glColor3fv(ball.colour.data());
        if (distance <= BallShape::radius + cutAway)
            ballShape.drawWhole();
        else
            ballShape.drawSeenFrom(difference(eye, ball.centre), ballPixels(position.depth, distance));
        glPopMatrix();
    }

    void operator()(const Stick& stick)
    {
        const ViewVolume::Position position = volume.position(stick.middle);
        const float reach = stick.length / 2 + StickShape::radius;
        if (volume.excludes(position, reach))
            return;
        glPushMatrix();
        glTranslatef(stick.origin[0], stick.origin[1], stick.origin[2]);
        glRotatef(stick.planeAngle, 1, 0, 0);
        glRotatef(stick.tilt, 0, 1, 0);
        glColor3f(0, 0, 1);
        const StickShape& shape = stick.isUpWedge ? upWedgeShape() : otherStickShape();
        const SceneVector view = difference(eye, stick.origin);
        const float x = scalarProduct(view, stick.rightAxis);
        const float y = scalarProduct(view, stick.upAxis);
        const bool isSmall = ballPixels(position.depth - reach, position.distance()) <= pixelsOfSmallSticks;
        if (stick.isClosed && std::hypot(x, y) > StickShape::radius + cutAway)
            isSmall ? shape.drawSmallSeenFrom(x, y, stick.length) : shape.drawSeenFrom(x, y, stick.length);
        else
            isSmall ? shape.drawSmallWhole(stick.length) : shape.drawWhole(stick.length);
        glPopMatrix();
    }

private:
    float ballPixels(float depth, float distance) const
    {
        return volume.pixels(BallShape::radius, depth, distance, viewportHeight);
    }

    BallShape& ballShape;
    const ViewVolume volume;
    const SceneVector eye;
    const int viewportHeight;
};

} // namespace

void Scene::addBall(const ScenePoint& centre, const SceneVector& colour)
{
    parts.emplace_back(Ball{narrowedVector(centre), colour});
}

void Scene::addStick(const SceneStick& stick, bool isUpWedge, bool isClosed)
{
    const StickAxes axes = axesOf(stick);
    parts.emplace_back(Stick{narrowedVector(stick.origin), narrowed(stick.planeAngle), narrowed(stick.tilt),
                             narrowed(stick.length), isUpWedge, isClosed, narrowedVector(axes.right),
                             narrowedVector(axes.up), narrowedVector(pointAlong(stick, stick.length / 2))});
}

void Scene::compile(GLUquadricObj* quadric)
{
    ballShape.compile(quadric);
    upWedgeShape().compile();
    otherStickShape().compile();
}

void Scene::draw(int viewportHeight)
{
    PartDrawer drawer(ballShape, viewportHeight);
    for (const auto& part : parts)
        std::visit(drawer, part);
}
