#include "model/MoleculeMotion.h"

#include "bonds/BondUpdate.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

void moveMolecule(const QCanvas& canvas, const KytMolecule* molecule, double dx, double dy)
{
    moveAtoms(drawnAtoms(canvas, molecule), dx, dy);
}

void rotateMolecule(const QCanvas& canvas, const KytAtom& pivot, float angle)
{
    rotateAtoms(drawnAtoms(canvas, pivot.getMolecule()), pivot, angle);
}

void moveAtoms(const QList<KytAtom*>& atoms, double dx, double dy)
{
    BondUpdate update;
    for (KytAtom* atom : atoms)
        atom->moveBy(dx, dy, update);
}

void rotateAtoms(const QList<KytAtom*>& atoms, const KytAtom& pivot, float angle)
{
    BondUpdate update;
    for (KytAtom* atom : atoms)
        if (atom != &pivot)
            atom->rotateAbout(pivot.x(), pivot.y(), angle, update);
}
