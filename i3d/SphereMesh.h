#pragma once

#include "i3d/SceneVector.h"

#include <GL/gl.h>

#include <numbers>
#include <vector>

/// The division of a sphere by meridians into slices and by parallels into stacks, with the poles on the z axis, as GLU
/// does.
struct SphereDivision {
    int slices;
    int stacks;

    float meridian(int i) const { return static_cast<float>(2 * std::numbers::pi * i / slices); }
    float parallel(int j) const { return static_cast<float>(std::numbers::pi * j / stacks); }
    /// The normal of the sphere where a meridian and a parallel meet.
    SceneVector normal(int i, int j) const;
};

/// Triangles of spheres about the origin, of which only those are drawn that face the eye.
class SphereMesh {
public:
    struct Corner {
        SceneVector normal;
        SceneVector position;
    };

    static Corner corner(const SphereDivision& division, int i, int j, float radius);

    /// Adds the faces of a sphere for which `isWanted(i, j)`, between the meridians i and i + 1 and the parallels j and
    /// j + 1, in GLU's order. Their corners are those of `corner(i, j)`, where the meridian i and the parallel j meet.
    template <typename Predicate, typename MakeCorner>
    void add(const SphereDivision& division, Predicate isWanted, MakeCorner makeCorner)
    {
        const auto first = static_cast<GLushort>(corners.size());
        for (int j = 0; j <= division.stacks; ++j)
            for (int i = 0; i <= division.slices; ++i)
                corners.push_back(makeCorner(i, j));
        for (int j = 0; j < division.stacks; ++j)
            for (int i = 0; i < division.slices; ++i)
                if (isWanted(i, j))
                    addFace(division, i, j, first);
    }

    /// Makes OpenGL take corners from here.
    void select() const { glInterleavedArrays(GL_N3F_V3F, 0, corners.data()); }
    /// Draws the triangles that can be seen from a point; the mesh is the one selected.
    void drawSeenFrom(const SceneVector& eye) const;

private:
    struct Triangle {
        SceneVector normal;
        float offset; ///< of the triangle's plane from the centre
        std::array<GLushort, 3> corners;
    };

    void addFace(const SphereDivision& division, int i, int j, GLushort first);
    void addTriangle(const std::array<GLushort, 3>& indices);

    std::vector<Corner> corners;
    std::vector<Triangle> triangles;
};
