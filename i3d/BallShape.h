#pragma once

#include "i3d/SphereMesh.h"

#include <GL/glu.h>

#include <optional>
#include <vector>

/// Draws the sphere that all atoms are shown as, about the origin.
class BallShape {
public:
    static constexpr float radius = 8;

    /// Compiles the display list of the whole sphere; to be called in every new OpenGL context.
    void compile(GLUquadricObj* quadric);

    /// Draws the sphere in full detail, inside and outside.
    void drawWhole() const;
    /// Draws what can be seen of the sphere from a point outside. `pixels` is at least its radius on the screen; a
    /// small sphere has fewer faces, with an outline that differs from the one in full detail by less than a quarter of
    /// a pixel.
    void drawSeenFrom(const SceneVector& eye, float pixels);
    /// To be called before a frame: prepares for a highlight in this direction, which small spheres show as the one in
    /// full detail does.
    void prepare(const SceneVector& highlight);

private:
    void select(const SphereMesh& mesh);

    std::vector<SphereMesh> smallMeshes; // by their radius in pixels
    std::optional<SceneVector> preparedHighlight;
    const SphereMesh* selected = nullptr;
};
