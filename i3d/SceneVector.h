#pragma once

#include <array>

/// A direction or a point of the scene as OpenGL takes it.
using SceneVector = std::array<float, 3>;

inline SceneVector difference(const SceneVector& a, const SceneVector& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline float scalarProduct(const SceneVector& a, const SceneVector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline SceneVector crossProduct(const SceneVector& a, const SceneVector& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
