#pragma once

#include "bonds/BondTable.h"
#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "i3d/SceneGeometry.h"
#include "model/DrawnMolecules.h"
#include "tests/i3d/OpenViewer.h"

// The scene drawn without any saving: every ball as a sphere of 25 by 25 faces, every stick as a cylinder of its own,
// front and back, in view or not.

inline void drawPlainBall(const KytAtom* atom, GLUquadric* quadric)
{
    glPushMatrix();
    glTranslatef(atom->getAtomZ(), static_cast<float>(atom->x() - 1000), static_cast<float>(1000 - atom->y()));
    glColor3f(atom->_atomColor[0].toFloat() / 255, atom->_atomColor[1].toFloat() / 255,
              atom->_atomColor[2].toFloat() / 255);
    gluSphere(quadric, 8, 25, 25);
    glPopMatrix();
}

inline void drawPlainStick(const SceneStick& stick, int slices, GLUquadric* quadric)
{
    glPushMatrix();
    glTranslatef(static_cast<float>(stick.origin.x), static_cast<float>(stick.origin.y),
                 static_cast<float>(stick.origin.z));
    glRotatef(static_cast<float>(stick.planeAngle), 1, 0, 0);
    glRotatef(static_cast<float>(stick.tilt), 0, 1, 0);
    glColor3f(0, 0, 1);
    gluCylinder(quadric, 2, 2, static_cast<float>(stick.length), slices, 1);
    glPopMatrix();
}

inline void drawPlainBond(const KytBond* bond, GLUquadric* quadric)
{
    const KytAtom* from = bond->getFromAtom();
    const KytAtom* to = bond->getToAtom();
    if (isWedgeKind(bond->bond1Type)) {
        const bool isUp = bond->bond1Type == KYTBT_StereoUp;
        const double angle = bond->stereoBond->getAngle();
        const auto stick =
            wedgeStick({from->x(), from->y()}, {to->x(), to->y()}, from->getAtomZ(), isUp ? angle : -angle);
        drawPlainStick(*stick, isUp ? 22 : 20, quadric);
        return;
    }
    for (const KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3})
        if (line)
            drawPlainStick(*lineStick(line->getStartPoint(), line->getEndPoint(), from->getAtomZ(), to->getAtomZ()), 20,
                           quadric);
}

inline void drawPlainScene(const Drawing& drawing)
{
    GLUquadric* quadric = gluNewQuadric();
    gluQuadricTexture(quadric, GL_TRUE);
    for (const DrawnMolecule& molecule : drawnMolecules(*drawing.canvas())) {
        for (const KytAtom* atom : molecule.atoms)
            drawPlainBall(atom, quadric);
        for (const BondCell& cell : bondTable(molecule.atoms))
            drawPlainBond(cell.bond, quadric);
    }
    gluDeleteQuadric(quadric);
}

/// What the viewer's window shows when the scene is drawn plainly from the viewer's camera.
inline QImage plainPicture(OpenViewer& viewer, const Drawing& drawing)
{
    viewer.catchUp();
    viewer.view.renderScene(); // which leaves the camera in OpenGL's matrices
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_TEXTURE_2D);
    drawPlainScene(drawing);
    glDisable(GL_TEXTURE_2D);
    SDL_GL_SwapBuffers();
    glFlush();
    return OpenViewer::shown();
}

/// The components of a pixel.
inline std::array<int, 3> components(QRgb pixel)
{
    return {qRed(pixel), qGreen(pixel), qBlue(pixel)};
}

/// How a picture differs from another one of the same size.
struct Difference {
    Difference(const QImage& picture, const QImage& other)
    {
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                compare(picture.pixel(x, y), other, {x, y});
    }

    int lit = 0;     ///< pixels of the other one that are not black
    int outline = 0; ///< pixels that are black in one picture only
    int largest = 0; ///< the largest difference of a component, of 255
    int strange = 0; ///< pixels with a component more than 16 of 255 out of the range that the other one has
                     ///< there and in the eight pixels around

private:
    void compare(QRgb pixel, const QImage& other, const QPoint& position)
    {
        const QRgb otherPixel = other.pixel(position);
        lit += !isBlack(otherPixel);
        outline += isBlack(pixel) != isBlack(otherPixel);
        bool isStrange = false;
        for (std::size_t i = 0; i < 3; ++i) {
            const int value = components(pixel)[i];
            largest = std::max(largest, std::abs(value - components(otherPixel)[i]));
            const auto [least, most] = rangeAround(other, position, i);
            isStrange = isStrange || value < least - 16 || value > most + 16;
        }
        strange += isStrange;
    }

    static std::pair<int, int> rangeAround(const QImage& picture, const QPoint& position, std::size_t component)
    {
        std::pair range{255, 0};
        for (int y = position.y() - 1; y <= position.y() + 1; ++y)
            for (int x = position.x() - 1; x <= position.x() + 1; ++x)
                if (picture.valid(x, y)) {
                    const int value = components(picture.pixel(x, y))[component];
                    range = {std::min(range.first, value), std::max(range.second, value)};
                }
        return range;
    }
};
