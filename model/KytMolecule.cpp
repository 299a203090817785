#include "model/KytMolecule.h"

void KytMolecule::addAtom(KytAtom* atom)
{
    ++atomsCount;
    emptied = false;
    atoms.prepend(atom);
}

bool KytMolecule::removeAtom(KytAtom* atom)
{
    --atomsCount;
    atoms.removeOne(atom);
    if (atomsCount == 0)
        emptied = true;
    return atomsCount == 0;
}

int KytMolecule::getAtomsCount() const
{
    return static_cast<int>(atoms.size());
}

KytAtom* KytMolecule::getAtom(int i)
{
    return atoms.takeAt(i);
}
