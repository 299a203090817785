#include "i3d/StickShape.h"

#include <cmath>
#include <numbers>

StickShape::StickShape(int slices, GLuint lists)
    : lists(lists)
{
    const auto direction = [&](double slice) {
        // Rounded as GLU does.
        const double angle = static_cast<float>(2 * std::numbers::pi * slice / slices);
        return Edge{static_cast<float>(std::sin(angle)), static_cast<float>(std::cos(angle))};
    };
    for (int i = 0; i <= slices; ++i)
        edges.push_back(direction(i % slices));
    for (int i = 0; i < slices; ++i)
        faces.push_back(direction(i + 0.5));
}

void StickShape::compile() const
{
    glNewList(wholeList(), GL_COMPILE);
    drawWhole(1);
    glEndList();
    glNewList(frontList(), GL_COMPILE);
    // The eye may be up to half a face aside.
    drawFaces(0, 1, -std::sin(halfFace()), 1);
    glEndList();
}

void StickShape::drawWhole(float length) const
{
    glBegin(GL_QUAD_STRIP);
    for (const Edge& edge : edges)
        emitEdge(edge, length);
    glEnd();
}

void StickShape::drawSeenFrom(float x, float y, float length) const
{
    // The faces just behind the outline belong to it: where they are as near as those before it, the first counts.
    constexpr float rim = 0.2F;
    drawFaces(x, y, -rim * std::hypot(x, y), length);
}

/// Draws the faces whose direction has more than this scalar product with (`x`, `y`).
void StickShape::drawFaces(float x, float y, float least, float length) const
{
    bool isDrawing = false;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const bool isSeen = faces[i].x * x + faces[i].y * y > least;
        if (isSeen && !isDrawing) {
            glBegin(GL_QUAD_STRIP);
            emitEdge(edges[i], length);
        }
        if (isSeen)
            emitEdge(edges[i + 1], length);
        else if (isDrawing)
            glEnd();
        isDrawing = isSeen;
    }
    if (isDrawing)
        glEnd();
}

void StickShape::drawSmallWhole(float length) const
{
    glScalef(1, 1, length); // keeps the normals, which are perpendicular to z
    glCallList(wholeList());
}

void StickShape::drawSmallSeenFrom(float x, float y, float length) const
{
    // What can be seen from the side of +y, rotated to the eye by a whole number of faces.
    constexpr float degrees = 180 / std::numbers::pi_v<float>;
    const float face = 2 * halfFace();
    glRotatef(-std::round(std::atan2(x, y) / face) * face * degrees, 0, 0, 1);
    glScalef(1, 1, length);
    glCallList(frontList());
}

void StickShape::emitEdge(const Edge& edge, float length) const
{
    glNormal3f(edge.x, edge.y, 0);
    glVertex3f(radius * edge.x, radius * edge.y, 0);
    glVertex3f(radius * edge.x, radius * edge.y, length);
}
