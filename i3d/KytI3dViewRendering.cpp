#include "bonds/BondTable.h"
#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "canvas/truncate.h"
#include "doc/Numbers.h"
#include "i3d/KytI3dView.h"
#include "i3d/SceneGeometry.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

#include <cmath>

namespace {

/// The value of a colour component in the range of OpenGL, 0 to 1.
float colourValue(const QString& component)
{
    return static_cast<float>(integerPrefix(component)) / 255.0F;
}

/// Whether the ball of the atom covers a stick's end here, however few faces it is drawn with.
bool isInBall(const ScenePoint& end, const KytAtom* atom)
{
    constexpr double smallestRadius = BallShape::radius * 0.9; // the faces cut off part of the sphere
    const ScenePoint centre = scenePoint({atom->x(), atom->y()}, atom->getAtomZ());
    return std::hypot(end.x - centre.x, end.y - centre.y, end.z - centre.z) + StickShape::radius < smallestRadius;
}

} // namespace

void KytI3dView::CreateLists()
{
    scene.clear();
    scene.compile(quadratic);
    if (canvas)
        for (const DrawnMolecule& molecule : drawnMolecules(*canvas))
            addMolecule(molecule.atoms);
    scene.complete();
    shownViewpoint.reset();
}

void KytI3dView::RenderMolecule(KytMolecule* molecule)
{
    addMolecule(canvas ? drawnAtoms(*canvas, molecule) : QList<KytAtom*>());
    shownViewpoint.reset();
}

/// Adds the molecule consisting of these atoms to the scene.
void KytI3dView::addMolecule(const QList<KytAtom*>& atoms)
{
    atomsCount = static_cast<int>(atoms.size());
    bondsCount = bondsAmong(atoms);
    atomsArr = atoms;
    for (const KytAtom* atom : atoms) {
        addToSums(atom);
        addAtom(atom);
    }
    for (const BondCell& cell : bondTable(atoms))
        addBond(cell.bond);
    atomsArr.clear();
}

/// Adds an atom to the sums for the centroid and the initial camera distance.
void KytI3dView::addToSums(const KytAtom* atom)
{
    const double depth = atom->getAtomZ();
    if (depth > defaulteye)
        defaulteye = truncated(depth);
    const ScenePoint position = scenePoint({atom->x(), atom->y()}, depth);
    pos[0] = truncated(position.x + pos[0]);
    pos[1] = truncated(position.y + pos[1]);
    pos[2] = truncated(position.z + pos[2]);
    totalAtomCount = saturatedSum(totalAtomCount, 1);
}

void KytI3dView::addAtom(const KytAtom* atom)
{
    scene.addBall(
        scenePoint({atom->x(), atom->y()}, atom->getAtomZ()),
        {colourValue(atom->_atomColor[0]), colourValue(atom->_atomColor[1]), colourValue(atom->_atomColor[2])});
}

/// Adds the sticks of a bond. Lines and wedges that are counted but null are skipped.
void KytI3dView::addBond(const KytBond* bond)
{
    if (!bond->getFromAtom() || !bond->getToAtom())
        return;
    if (bond->bondCount > 0) {
        if (isWedgeKind(bond->bond1Type))
            addWedge(bond);
        else
            addLine(bond, bond->bond1);
    }
    if (bond->bondCount > 1)
        addLine(bond, bond->bond2);
    if (bond->bondCount > 2)
        addLine(bond, bond->bond3);
}

/// The far end of the stick follows from the wedge's angle only and may miss the sphere of the end atom.
void KytI3dView::addWedge(const KytBond* bond)
{
    if (!bond->stereoBond)
        return;
    const KytAtom* from = bond->getFromAtom();
    const KytAtom* to = bond->getToAtom();
    const bool isUp = bond->bond1Type == KYTBT_StereoUp;
    const double angle = bond->stereoBond->getAngle();
    const auto stick = wedgeStick({from->x(), from->y()}, {to->x(), to->y()}, from->getAtomZ(), isUp ? angle : -angle);
    if (stick)
        addStick(*stick, isUp, bond);
}

void KytI3dView::addLine(const KytBond* bond, const KytBondLine* line)
{
    if (!line)
        return;
    const auto stick = lineStick(line->getStartPoint(), line->getEndPoint(), bond->getFromAtom()->getAtomZ(),
                                 bond->getToAtom()->getAtomZ());
    if (stick)
        addStick(*stick, false, bond);
}

void KytI3dView::addStick(const SceneStick& stick, bool isUpWedge, const KytBond* bond)
{
    scene.addStick(stick, isUpWedge,
                   isInBall(stick.origin, bond->getFromAtom())
                       && isInBall(pointAlong(stick, stick.length), bond->getToAtom()));
}
