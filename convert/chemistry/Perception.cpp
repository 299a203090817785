#include "convert/chemistry/Perception.h"

#include <GraphMol/Chirality.h>
#include <GraphMol/MolOps.h>

using namespace RDKit;

void perceive(RWMol& molecule)
{
    molecule.updatePropertyCache(false);
    // removeHs would remove such a hydrogen together with its charge.
    for (const Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 1 && atom->getFormalCharge() != 0 && atom->getDegree() > 0)
            throw AtomValenceException("a charged hydrogen with a bond", atom->getIdx());
    MolOps::assignChiralTypesFromBondDirs(molecule, molecule.getConformer().getId());
    MolOps::removeHs(molecule, false, false, true);
    MolOps::clearSingleBondDirFlags(molecule);
    MolOps::detectBondStereochemistry(molecule, static_cast<int>(molecule.getConformer().getId()));
    MolOps::assignStereochemistry(molecule, true, true, true);
}
