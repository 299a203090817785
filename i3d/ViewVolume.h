#pragma once

#include "i3d/SceneVector.h"

#include <GL/gl.h>

#include <cmath>
#include <limits>

/// The part of the scene that the camera sees, from OpenGL's matrices at the time of construction: a symmetric
/// perspective projection, and a modelview matrix without scaling.
class ViewVolume {
public:
    ViewVolume()
    {
        glGetFloatv(GL_MODELVIEW_MATRIX, modelview.data());
        glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
    }

    /// A point as the camera sees it.
    struct Position {
        float right;
        float up;
        float depth; ///< in front of the camera

        float distance() const { return std::hypot(right, up, depth); }
    };

    Position position(const SceneVector& p) const { return {row(0, p), row(1, p), -row(2, p)}; }

    /// Whether no point of the sphere about `centre` is in view. False if a value is not a number.
    bool excludes(const Position& centre, float radius) const
    {
        return isBeyondSide(centre.right, centre.depth, radius, projection[0])
            || isBeyondSide(centre.up, centre.depth, radius, projection[5]) || centre.depth - radius > farthestDepth()
            || centre.depth + radius < 0;
    }

    /// The most pixels that a sphere of this radius has as its radius, if its centre is that far away. Towards the
    /// edges of the picture, perspective enlarges it by up to distance / depth. Infinite behind the camera.
    float pixels(float radius, float depth, float distance, int viewportHeight) const
    {
        return depth > 0 ? radius * projection[5] * static_cast<float>(viewportHeight) / 2 * distance / (depth * depth)
                         : std::numeric_limits<float>::infinity();
    }

    /// The point of the scene that the camera is at.
    SceneVector eye() const
    {
        SceneVector eye{};
        for (std::size_t i = 0; i < 3; ++i)
            eye[i] = -(modelview[4 * i] * modelview[12] + modelview[4 * i + 1] * modelview[13]
                       + modelview[4 * i + 2] * modelview[14]);
        return eye;
    }

    /// The direction in the scene from the picture towards the eye.
    SceneVector towardsEye() const { return {modelview[2], modelview[6], modelview[10]}; }

private:
    float row(int i, const SceneVector& p) const
    {
        return modelview[i] * p[0] + modelview[i + 4] * p[1] + modelview[i + 8] * p[2] + modelview[i + 12];
    }

    static bool isBeyondSide(float sideways, float depth, float radius, float scale)
    {
        return std::fabs(sideways) * scale - depth > radius * std::hypot(scale, 1.0F);
    }

    float farthestDepth() const { return projection[14] / (projection[10] + 1); }

    std::array<float, 16> modelview{};
    std::array<float, 16> projection{};
};
