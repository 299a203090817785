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

/// The near plane cuts what is nearer to the eye than this, and opens the view into it.
constexpr float cutAway = 0.25F;

float product(const SceneVector& a, const SceneVector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

SceneVector difference(const SceneVector& a, const SceneVector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

SceneVector narrowedVector(const ScenePoint& p)
{
    return {narrowed(p.x), narrowed(p.y), narrowed(p.z)};
}

/// The culling of back faces, which is switched only where it changes.
class BackFaces {
public:
    BackFaces() { glDisable(GL_CULL_FACE); }
    ~BackFaces() { glDisable(GL_CULL_FACE); }
    BackFaces(const BackFaces&) = delete;
    BackFaces& operator=(const BackFaces&) = delete;

    void cull(bool on)
    {
        if (on != culled)
            on ? glEnable(GL_CULL_FACE) : glDisable(GL_CULL_FACE);
        culled = on;
    }

private:
    bool culled = false;
};

/// Draws the parts that are in view.
class PartDrawer {
public:
    PartDrawer(BallShape& ballShape, int viewportHeight)
        : ballShape(ballShape)
        , eye(volume.eye())
        , depthOfSmallBalls(volume.depthOfRadius(BallShape::radius, BallShape::smallRadius, viewportHeight))
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
            drawWhole();
        else if (looksSmall(position.depth, distance))
            drawSmall();
        else
            drawLarge(difference(eye, ball.centre));
        glPopMatrix();
    }

    void operator()(const Stick& stick)
    {
        const ViewVolume::Position position = volume.position(stick.middle);
        const float reach = stick.length / 2 + StickShape::radius;
        if (volume.excludes(position, reach))
            return;
        backFaces.cull(false);
        glPushMatrix();
        glTranslatef(stick.origin[0], stick.origin[1], stick.origin[2]);
        glRotatef(stick.planeAngle, 1, 0, 0);
        glRotatef(stick.tilt, 0, 1, 0);
        glColor3f(0, 0, 1);
        const StickShape& shape = stick.isUpWedge ? upWedgeShape() : otherStickShape();
        const SceneVector view = difference(eye, stick.origin);
        const float x = product(view, stick.rightAxis);
        const float y = product(view, stick.upAxis);
        const bool isSmall = looksSmall(position.depth - reach, position.distance());
        if (stick.isClosed && std::hypot(x, y) > StickShape::radius + cutAway)
            isSmall ? shape.drawSmallSeenFrom(x, y, stick.length) : shape.drawSeenFrom(x, y, stick.length);
        else
            isSmall ? shape.drawSmallWhole(stick.length) : shape.drawWhole(stick.length);
        glPopMatrix();
    }

private:
    /// Whether a ball there has at most BallShape::smallRadius. Towards the edges of the picture, perspective enlarges
    /// it by up to distance / depth.
    bool looksSmall(float depth, float distance) const
    {
        return depth > 0 && depth * depth > depthOfSmallBalls * distance;
    }

    void drawWhole()
    {
        backFaces.cull(false);
        ballShape.drawWhole();
    }

    void drawLarge(const SceneVector& view)
    {
        backFaces.cull(false);
        ballShape.drawSeenFrom(view);
    }

    void drawSmall()
    {
        backFaces.cull(true);
        ballShape.drawSmall();
    }

    BallShape& ballShape;
    const ViewVolume volume;
    const SceneVector eye;
    const float depthOfSmallBalls; // in the middle of the picture
    BackFaces backFaces;
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
