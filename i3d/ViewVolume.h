#pragma once

#include <GL/gl.h>

#include <array>
#include <cmath>

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

    Position position(const std::array<float, 3>& p) const { return {row(0, p), row(1, p), -row(2, p)}; }

    /// Whether no point of the sphere about `centre` is in view. False if a value is not a number.
    bool excludes(const Position& centre, float radius) const
    {
        return isBeyondSide(centre.right, centre.depth, radius, projection[0])
            || isBeyondSide(centre.up, centre.depth, radius, projection[5]) || centre.depth - radius > farthestDepth()
            || centre.depth + radius < 0;
    }

    /// The depth at which a sphere of this radius has `pixels` as its radius in the middle of the picture.
    float depthOfRadius(float radius, float pixels, int viewportHeight) const
    {
        return radius * projection[5] * static_cast<float>(viewportHeight) / 2 / pixels;
    }

    /// The point of the scene that the camera is at.
    std::array<float, 3> eye() const
    {
        std::array<float, 3> eye{};
        for (std::size_t i = 0; i < 3; ++i)
            eye[i] = -(modelview[4 * i] * modelview[12] + modelview[4 * i + 1] * modelview[13]
                       + modelview[4 * i + 2] * modelview[14]);
        return eye;
    }

    /// The direction in the scene from the picture towards the eye.
    std::array<float, 3> towardsEye() const { return {modelview[2], modelview[6], modelview[10]}; }

private:
    float row(int i, const std::array<float, 3>& p) const
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
