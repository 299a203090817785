#include "i3d/SphereMesh.h"

#include <algorithm>
#include <cmath>

namespace {

// Rounded as GLU does, so that no picture depends on which of the two has drawn a sphere.

float sine(float angle)
{
    return static_cast<float>(std::sin(static_cast<double>(angle)));
}

float cosine(float angle)
{
    return static_cast<float>(std::cos(static_cast<double>(angle)));
}

} // namespace

SceneVector SphereDivision::normal(int i, int j) const
{
    const float m = meridian(i % slices);
    const float p = parallel(j);
    return {sine(m) * sine(p), cosine(m) * sine(p), cosine(p)};
}

SphereMesh::Corner SphereMesh::corner(const SphereDivision& division, int i, int j, float radius)
{
    const float meridian = division.meridian(i % division.slices);
    const double parallel = division.parallel(j);
    const bool isPole = j == 0 || j == division.stacks;
    const float distanceFromAxis = isPole ? 0 : static_cast<float>(radius * std::sin(parallel));
    const auto height = static_cast<float>(radius * std::cos(parallel));
    return {division.normal(i, j), {distanceFromAxis * sine(meridian), distanceFromAxis * cosine(meridian), height}};
}

void SphereMesh::addFace(const SphereDivision& division, int i, int j, GLushort first)
{
    const auto corner = [&](int meridian, int parallel) {
        return static_cast<GLushort>(first + parallel * (division.slices + 1) + meridian);
    };
    if (j < division.stacks - 1) // at the poles, two corners of the face are one point
        addTriangle({corner(i + 1, j + 1), corner(i, j + 1), corner(i + 1, j)});
    if (j > 0)
        addTriangle({corner(i, j + 1), corner(i, j), corner(i + 1, j)});
}

void SphereMesh::addTriangle(const std::array<GLushort, 3>& indices)
{
    const SceneVector& p = corners[indices[0]].position;
    const SceneVector normal =
        crossProduct(difference(corners[indices[1]].position, p), difference(corners[indices[2]].position, p));
    const float outwards = std::copysign(1.0F, scalarProduct(normal, p));
    triangles.push_back({{outwards * normal[0], outwards * normal[1], outwards * normal[2]},
                         outwards * scalarProduct(normal, p),
                         indices});
}

void SphereMesh::drawSeenFrom(const SceneVector& eye) const
{
    static std::vector<GLushort> indices; // allocated once, not for every ball
    indices.resize(3 * triangles.size());
    GLushort* end = indices.data();
    for (const Triangle& triangle : triangles) {
        std::copy(triangle.corners.begin(), triangle.corners.end(), end);
        end += scalarProduct(triangle.normal, eye) > triangle.offset ? 3 : 0;
    }
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(end - indices.data()), GL_UNSIGNED_SHORT, indices.data());
}
