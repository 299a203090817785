#pragma once

#include <GL/gl.h>
#include <GL/glu.h>

#include <array>
#include <optional>

/// A direction or a point of the scene as OpenGL takes it.
using SceneVector = std::array<float, 3>;

/// Draws the sphere that all atoms are shown as, about the origin.
class BallShape {
public:
    static constexpr float radius = 8;
    /// Up to this radius in pixels, drawSmall may draw the ball: the outline of its sphere of 14 by 10 faces differs
    /// from that of 25 by 25 by less than a quarter of a pixel.
    static constexpr float smallRadius = 9;

    /// Compiles the display list of the whole sphere; to be called in every new OpenGL context.
    void compile(GLUquadricObj* quadric);

    /// Draws the sphere in full detail, inside and outside.
    void drawWhole() const;
    /// Draws what can be seen of the sphere in full detail from a point outside.
    void drawSeenFrom(const SceneVector& eye) const;
    /// Draws a sphere that looks the same where it is small, with fewer faces. Its back faces can be culled.
    void drawSmall() const;
    /// To be called before a frame: prepares for a highlight in this direction, which the small sphere shows as the
    /// full one does, and sets OpenGL's arrays.
    void prepare(const SceneVector& highlight);

private:
    std::optional<SceneVector> compiledHighlight;
};
