#include "convert/chemistry/Kekulized.h"

#include "convert/chemistry/RDKitMolecule.h"

#include <GraphMol/MolOps.h>

using namespace RDKit;

std::unique_ptr<RWMol> kekulizedMolecule(const SketchMolecule& drawn)
{
    Notes ignored;
    std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    molecule->updatePropertyCache(false);
    // The hydrogens of aromatic nitrogens and similar atoms can be counted only after kekulization.
    try {
        MolOps::KekulizeIfPossible(*molecule, true);
        molecule->updatePropertyCache(false);
    } catch (const std::exception&) {
        // The bonds stay aromatic.
    }
    return molecule;
}
