#pragma once

#include "i3d/BallShape.h"

#include <numbers>
#include <vector>

/// Draws cylinders of one width about the z axis, from the origin upwards.
class StickShape {
public:
    static constexpr float radius = 2;

    /// `lists`: the first of the two display lists that the shape uses.
    StickShape(int slices, GLuint lists);

    /// Compiles the display lists; to be called in every new OpenGL context.
    void compile() const;

    /// Draws a cylinder inside and outside.
    void drawWhole(float length) const;
    /// Draws what can be seen of the outside of a cylinder from the point (`x`, `y`) in any height.
    void drawSeenFrom(float x, float y, float length) const;

    /// The same from the display lists, for sticks that are small on the screen. As the lists are scaled to the length,
    /// colours may be rounded differently.
    void drawSmallWhole(float length) const;
    void drawSmallSeenFrom(float x, float y, float length) const;

private:
    struct Edge {
        float x; ///< in the circle of radius 1
        float y;
    };

    GLuint wholeList() const { return lists; }
    GLuint frontList() const { return lists + 1; }
    /// Half the angle of a face, in radians.
    float halfFace() const { return std::numbers::pi_v<float> / static_cast<float>(faces.size()); }
    void drawFaces(float x, float y, float least, float length) const;
    void emitEdge(const Edge& edge, float length) const;

    GLuint lists;

    std::vector<Edge> edges; // the first one again at the end
    std::vector<Edge> faces; // the directions of the faces, from each edge to the next
};
