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

namespace {

constexpr GLuint sceneList = 1;
constexpr GLuint sphereList = 2;

constexpr double sphereRadius = 8;
constexpr int sphereSlices = 25;
constexpr int sphereStacks = 25;

constexpr double stickRadius = 2;
constexpr int stickStacks = 1;
constexpr int upWedgeSlices = 22;
constexpr int downWedgeSlices = 20;
constexpr int lineSlices = 20;

void translateTo(const ScenePoint& p)
{
    glTranslatef(narrowed(p.x), narrowed(p.y), narrowed(p.z));
}

/// The value of a colour component in the range of OpenGL, 0 to 1.
float colourValue(const QString& component)
{
    return static_cast<float>(integerPrefix(component)) / 255.0F;
}

} // namespace

void KytI3dView::CreateLists()
{
    compileSphere();
    glNewList(sceneList, GL_COMPILE);
    if (canvas)
        for (const DrawnMolecule& molecule : drawnMolecules(*canvas))
            renderAtoms(molecule.atoms);
    glEndList();
}

/// Compiles the sphere shared by all atoms into a separate list, because display lists cannot be nested.
void KytI3dView::compileSphere()
{
    glNewList(sphereList, GL_COMPILE);
    gluSphere(quadratic, sphereRadius, sphereSlices, sphereStacks);
    glEndList();
}

void KytI3dView::RenderMolecule(KytMolecule* molecule)
{
    renderAtoms(canvas ? drawnAtoms(*canvas, molecule) : QList<KytAtom*>());
}

/// Draws the molecule consisting of these atoms.
void KytI3dView::renderAtoms(const QList<KytAtom*>& atoms)
{
    atomsCount = static_cast<int>(atoms.size());
    bondsCount = bondsAmong(atoms);
    atomsArr = atoms;
    for (KytAtom* atom : atoms) {
        addToSums(atom);
        renderAtom(atom);
    }
    for (const BondCell& cell : bondTable(atoms))
        renderBond(cell.bond);
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

void KytI3dView::renderAtom(KytAtom* atom)
{
    glPushMatrix();
    translateTo(scenePoint({atom->x(), atom->y()}, atom->getAtomZ()));
    glColor3f(colourValue(atom->_atomColor[0]), colourValue(atom->_atomColor[1]), colourValue(atom->_atomColor[2]));
    glCallList(sphereList);
    glPopMatrix();
}

/// Draws the sticks of a bond. Lines and wedges that are counted but null are skipped.
void KytI3dView::renderBond(const KytBond* bond)
{
    if (!bond->getFromAtom() || !bond->getToAtom())
        return;
    if (bond->bondCount > 0) {
        if (isWedgeKind(bond->bond1Type))
            renderWedge(bond);
        else
            renderLine(bond, bond->bond1);
    }
    if (bond->bondCount > 1)
        renderLine(bond, bond->bond2);
    if (bond->bondCount > 2)
        renderLine(bond, bond->bond3);
}

/// The far end of the stick follows from the wedge's angle only and may miss the sphere of the end atom.
void KytI3dView::renderWedge(const KytBond* bond)
{
    if (!bond->stereoBond)
        return;
    const KytAtom* from = bond->getFromAtom();
    const KytAtom* to = bond->getToAtom();
    const bool isUp = bond->bond1Type == KYTBT_StereoUp;
    const double angle = bond->stereoBond->getAngle();
    const auto stick = wedgeStick({from->x(), from->y()}, {to->x(), to->y()}, from->getAtomZ(), isUp ? angle : -angle);
    if (stick)
        renderStick(*stick, isUp ? upWedgeSlices : downWedgeSlices);
}

void KytI3dView::renderLine(const KytBond* bond, const KytBondLine* line)
{
    if (!line)
        return;
    const auto stick = lineStick(line->getStartPoint(), line->getEndPoint(), bond->getFromAtom()->getAtomZ(),
                                 bond->getToAtom()->getAtomZ());
    if (stick)
        renderStick(*stick, lineSlices);
}

void KytI3dView::renderStick(const SceneStick& stick, int slices)
{
    glPushMatrix();
    translateTo(stick.origin);
    glRotatef(narrowed(stick.planeAngle), 1, 0, 0);
    glRotatef(narrowed(stick.tilt), 0, 1, 0);
    glColor3f(0, 0, 1);
    gluCylinder(quadratic, stickRadius, stickRadius, narrowed(stick.length), slices, stickStacks);
    glPopMatrix();
}
