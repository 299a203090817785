#include "model/MoleculeMotion.h"

#include "bonds/BondUpdate.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

void moveMolecule(const QCanvas& canvas, const KytMolecule* molecule, double dx, double dy)
{
    BondUpdate update;
    for (KytAtom* atom : drawnAtoms(canvas, molecule))
        atom->moveBy(dx, dy, update);
}

void rotateMolecule(const QCanvas& canvas, const KytAtom& pivot, float angle)
{
    BondUpdate update;
    for (KytAtom* atom : drawnAtoms(canvas, pivot.getMolecule()))
        if (atom != &pivot)
            atom->rotateAbout(pivot.x(), pivot.y(), angle, update);
}
