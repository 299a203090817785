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

/// How two pictures of one size differ.
struct Difference {
    Difference(const QImage& a, const QImage& b)
    {
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x) {
                const QRgb p = a.pixel(x, y);
                const QRgb q = b.pixel(x, y);
                lit += !isBlack(q);
                if (isBlack(p) != isBlack(q)) {
                    ++outline;
                    continue;
                }
                const int d = std::max(
                    {std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)), std::abs(qBlue(p) - qBlue(q))});
                largest = std::max(largest, d);
                beyond16 += d > 16;
            }
    }

    int lit = 0;      ///< pixels of `b` that are not black
    int outline = 0;  ///< pixels that are black in one picture only
    int largest = 0;  ///< the largest difference of a component elsewhere, of 255
    int beyond16 = 0; ///< pixels elsewhere that differ by more than 16 of 255
};
