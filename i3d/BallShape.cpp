#include "i3d/BallShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr GLuint wholeList = 1;

constexpr float fullTurn = 2 * std::numbers::pi_v<float>;
constexpr float halfTurn = std::numbers::pi_v<float>;

constexpr SphereDivision fine{25, 25};

/// A sphere with fewer faces.
struct Detail {
    float pixels; ///< up to this radius, the outline differs by less than a quarter of a pixel
    SphereDivision division;
    float radius; ///< that makes its outline go as far beyond that of the sphere in full detail as it stays behind
};

constexpr std::array smallDetails = {
    Detail{2.8F, {7, 4}, BallShape::radius * 1.08F},
    Detail{5, {9, 6}, BallShape::radius * 1.04F},
    Detail{7.4F, {12, 7}, BallShape::radius * 1.025F},
    Detail{10, {14, 10}, BallShape::radius * 1.015F},
};

/// Beyond this angle from its middle, the highlight adds at most 5 of 255 to the colour.
constexpr float highlightAngle = 14 * fullTurn / 360;

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
bool touches(const SphereDivision& division, int i, int j, const Patch& patch)
{
    if (division.parallel(j + 1) < patch.fromParallel || division.parallel(j) > patch.toParallel)
        return false;
    for (const float turn : {-fullTurn, 0.0F, fullTurn})
        if (division.meridian(i + 1) + turn >= patch.fromMeridian && division.meridian(i) + turn <= patch.toMeridian)
            return true;
    return false;
}

/// The patch, enlarged to whole faces of the division.
Patch enlargedToFaces(const Patch& patch, const SphereDivision& division)
{
    const float slice = division.meridian(1);
    const float stack = division.parallel(1);
    return {std::floor(patch.fromMeridian / slice) * slice, std::ceil(patch.toMeridian / slice) * slice,
            std::floor(patch.fromParallel / stack) * stack, std::ceil(patch.toParallel / stack) * stack};
}

/// Whether one of the faces about a corner touches the patch.
bool isCornerOfTouchingFace(const SphereDivision& division, int i, int j, const Patch& patch)
{
    return touches(division, i - 1, j - 1, patch) || touches(division, i, j - 1, patch)
        || touches(division, i - 1, j, patch) || touches(division, i, j, patch);
}

/// The normal, tilted away from the highlight so that OpenGL adds none.
SceneVector withoutHighlight(const SceneVector& normal, const SceneVector& highlight)
{
    const float towards = scalarProduct(normal, highlight);
    const SceneVector aside =
        difference(normal, {towards * highlight[0], towards * highlight[1], towards * highlight[2]});
    const float sideways = std::hypot(aside[0], aside[1], aside[2]);
    if (towards < std::cos(highlightAngle) || sideways == 0)
        return normal;
    SceneVector tilted{};
    for (std::size_t k = 0; k < tilted.size(); ++k)
        tilted[k] = std::cos(highlightAngle) * highlight[k] + std::sin(highlightAngle) / sideways * aside[k];
    return tilted;
}

SphereMesh::Corner fineCorner(int i, int j)
{
    return SphereMesh::corner(fine, i, j, BallShape::radius);
}

/// Makes the mesh of a small sphere. Where the highlight is, the faces of the full detail lie above its own.
SphereMesh smallMesh(const Detail& detail, const SceneVector& highlight)
{
    constexpr float belowFineFaces = BallShape::radius * 0.98F;
    const Patch patch = highlightPatch(highlight);
    const Patch finePatch = enlargedToFaces(patch, fine);
    SphereMesh mesh;
    mesh.add(
        fine, [&](int i, int j) { return touches(fine, i, j, patch); }, fineCorner);
    mesh.add(
        detail.division, [](int, int) { return true; },
        [&](int i, int j) {
            const bool isBelow = isCornerOfTouchingFace(detail.division, i, j, finePatch);
            auto corner = SphereMesh::corner(detail.division, i, j, isBelow ? belowFineFaces : detail.radius);
            corner.normal = withoutHighlight(corner.normal, highlight);
            return corner;
        });
    return mesh;
}

const SphereMesh& fineMesh()
{
    static const SphereMesh mesh = [] {
        SphereMesh sphere;
        sphere.add(
            fine, [](int, int) { return true; }, fineCorner);
        return sphere;
    }();
    return mesh;
}

} // namespace

void BallShape::compile(GLUquadricObj* quadric)
{
    glNewList(wholeList, GL_COMPILE);
    gluSphere(quadric, radius, fine.slices, fine.stacks);
    glEndList();
}

void BallShape::drawWhole() const
{
    glCallList(wholeList);
}

void BallShape::drawSeenFrom(const SceneVector& eye, float pixels)
{
    const auto* const detail = std::ranges::find_if(smallDetails, [&](const Detail& d) { return pixels <= d.pixels; });
    select(detail == smallDetails.end() ? fineMesh() : smallMeshes[detail - smallDetails.begin()]);
    selected->drawSeenFrom(eye);
}

void BallShape::prepare(const SceneVector& highlight)
{
    selected = nullptr;
    if (preparedHighlight == highlight)
        return;
    smallMeshes.clear();
    for (const Detail& detail : smallDetails)
        smallMeshes.push_back(smallMesh(detail, highlight));
    preparedHighlight = highlight;
}

void BallShape::select(const SphereMesh& mesh)
{
    if (selected != &mesh)
        mesh.select();
    selected = &mesh;
}
