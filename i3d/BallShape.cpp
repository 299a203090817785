#include "i3d/BallShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace {

constexpr GLuint wholeList = 1;
constexpr GLuint smallList = 2;

constexpr float fullTurn = 2 * std::numbers::pi_v<float>;
constexpr float halfTurn = std::numbers::pi_v<float>;

/// A sphere divided by meridians into slices and by parallels into stacks, with the poles on the z axis, as GLU does.
struct Division {
    int slices;
    int stacks;
    float radius;

    float meridian(int i) const { return static_cast<float>(2 * std::numbers::pi * i / slices); }
    float parallel(int j) const { return static_cast<float>(std::numbers::pi * j / stacks); }
};

constexpr Division fine{25, 25, BallShape::radius};
constexpr Division coarse{14, 10, BallShape::radius * 1.01F};

/// Beyond this angle from its middle, the highlight is darker than 1 of 255.
constexpr float highlightAngle = 17 * fullTurn / 360;

/// The part of a sphere between two meridians and two parallels, in radians. Meridians may exceed a full turn.
struct Patch {
    float fromMeridian;
    float toMeridian;
    float fromParallel;
    float toParallel;
};

/// A patch that contains the highlight.
Patch highlightPatch(const SceneVector& highlight)
{
    const float meridian = std::atan2(highlight[0], highlight[1]);
    const float parallel = std::acos(std::clamp(highlight[2], -1.0F, 1.0F));
    const float distanceFromPole = std::min(parallel, halfTurn - parallel);
    const float width =
        distanceFromPole > highlightAngle ? std::asin(std::sin(highlightAngle) / std::sin(distanceFromPole)) : halfTurn;
    return {meridian - width, meridian + width, parallel - highlightAngle, parallel + highlightAngle};
}

/// Whether the face between the meridians i and i + 1 and the parallels j and j + 1 touches the patch.
bool touches(const Division& division, int i, int j, const Patch& patch)
{
    if (division.parallel(j + 1) < patch.fromParallel || division.parallel(j) > patch.toParallel)
        return false;
    for (const float turn : {-fullTurn, 0.0F, fullTurn})
        if (division.meridian(i + 1) + turn >= patch.fromMeridian && division.meridian(i) + turn <= patch.toMeridian)
            return true;
    return false;
}

/// The patch, enlarged to whole faces of the division and a little more.
Patch enlargedToFaces(const Patch& patch, const Division& division)
{
    constexpr float overlap = 0.03F;
    const float slice = division.meridian(1);
    const float stack = division.parallel(1);
    return {std::floor(patch.fromMeridian / slice) * slice - overlap,
            std::ceil(patch.toMeridian / slice) * slice + overlap,
            std::floor(patch.fromParallel / stack) * stack - overlap,
            std::ceil(patch.toParallel / stack) * stack + overlap};
}

// Rounded as GLU does, so that no picture depends on which of the two has drawn a sphere.

float sine(float angle)
{
    return static_cast<float>(std::sin(static_cast<double>(angle)));
}

float cosine(float angle)
{
    return static_cast<float>(std::cos(static_cast<double>(angle)));
}

/// The normal of the sphere where a meridian and a parallel meet.
SceneVector normalOf(const Division& division, int i, int j)
{
    const float meridian = division.meridian(i % division.slices);
    const float parallel = division.parallel(j);
    return {sine(meridian) * sine(parallel), cosine(meridian) * sine(parallel), cosine(parallel)};
}

SceneVector cornerOf(const Division& division, int i, int j)
{
    const float meridian = division.meridian(i % division.slices);
    const double parallel = division.parallel(j);
    const bool isPole = j == 0 || j == division.stacks;
    const float distanceFromAxis = isPole ? 0 : static_cast<float>(division.radius * std::sin(parallel));
    const auto height = static_cast<float>(division.radius * std::cos(parallel));
    return {distanceFromAxis * sine(meridian), distanceFromAxis * cosine(meridian), height};
}

void emitCorner(const Division& division, int i, int j)
{
    glNormal3fv(normalOf(division, i, j).data());
    glVertex3fv(cornerOf(division, i, j).data());
}

/// Draws the faces that touch the patch, or those that do not.
void emitFaces(const Division& division, const Patch& patch, bool touching)
{
    glBegin(GL_QUADS);
    for (int j = 0; j < division.stacks; ++j)
        for (int i = 0; i < division.slices; ++i)
            if (touches(division, i, j, patch) == touching) {
                emitCorner(division, i, j);
                emitCorner(division, i + 1, j);
                emitCorner(division, i + 1, j + 1);
                emitCorner(division, i, j + 1);
            }
    glEnd();
}

/// The corners and faces of the sphere in full detail.
class FineSphere {
public:
    FineSphere()
    {
        for (int j = 0; j <= fine.stacks; ++j)
            for (int i = 0; i <= fine.slices; ++i)
                corners.push_back({normalOf(fine, i, j), cornerOf(fine, i, j)});
        for (int j = 0; j < fine.stacks; ++j)
            for (int i = 0; i < fine.slices; ++i)
                faces.push_back({directionOfFace(i, j),
                                 {index(i + 1, j + 1), index(i, j + 1), index(i + 1, j), index(i, j + 1), index(i, j),
                                  index(i + 1, j)}});
    }

    /// Makes OpenGL take the corners from here.
    void select() const { glInterleavedArrays(GL_N3F_V3F, 0, corners.data()); }

    void drawSeenFrom(const SceneVector& eye) const
    {
        const float least = -rim * std::hypot(eye[0], eye[1], eye[2]);
        std::array<GLushort, std::size_t{6} * fine.slices * fine.stacks> indices;
        GLushort* end = indices.data();
        for (const Face& face : faces)
            if (face.direction[0] * eye[0] + face.direction[1] * eye[1] + face.direction[2] * eye[2] > least)
                end = std::copy(face.indices.begin(), face.indices.end(), end);
        glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(end - indices.data()), GL_UNSIGNED_SHORT, indices.data());
    }

private:
    struct Corner {
        SceneVector normal;
        SceneVector position;
    };
    struct Face {
        SceneVector direction;
        std::array<GLushort, 6> indices; // of two triangles
    };

    /// The faces just behind the outline belong to it: where they are as near as those before it, the first counts.
    static constexpr float rim = 0.2F;

    static GLushort index(int i, int j) { return static_cast<GLushort>(j * (fine.slices + 1) + i); }

    static SceneVector directionOfFace(int i, int j)
    {
        const float meridian = (fine.meridian(i) + fine.meridian(i + 1)) / 2;
        const float parallel = (fine.parallel(j) + fine.parallel(j + 1)) / 2;
        return {sine(meridian) * sine(parallel), cosine(meridian) * sine(parallel), cosine(parallel)};
    }

    std::vector<Corner> corners;
    std::vector<Face> faces; // in GLU's order
};

const FineSphere& fineSphere()
{
    static const FineSphere sphere;
    return sphere;
}

} // namespace

void BallShape::compile(GLUquadricObj* quadric)
{
    compiledHighlight.reset();
    glNewList(wholeList, GL_COMPILE);
    gluSphere(quadric, fine.radius, fine.slices, fine.stacks);
    glEndList();
}

void BallShape::drawWhole() const
{
    glCallList(wholeList);
}

void BallShape::drawSeenFrom(const SceneVector& eye) const
{
    fineSphere().drawSeenFrom(eye);
}

void BallShape::drawSmall() const
{
    glCallList(smallList);
}

void BallShape::prepare(const SceneVector& highlight)
{
    fineSphere().select();
    if (compiledHighlight == highlight)
        return;
    const Patch patch = highlightPatch(highlight);
    glNewList(smallList, GL_COMPILE);
    emitFaces(fine, enlargedToFaces(patch, coarse), true);
    emitFaces(coarse, patch, false);
    glEndList();
    compiledHighlight = highlight;
}
