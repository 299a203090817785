#include "convert/chemistry/Sketch.h"

SketchMolecule combined(const Sketch& sketch)
{
    SketchMolecule all;
    for (const SketchMolecule& molecule : sketch.molecules) {
        const int first = static_cast<int>(all.atoms.size());
        all.atoms.insert(all.atoms.end(), molecule.atoms.begin(), molecule.atoms.end());
        for (SketchBond bond : molecule.bonds) {
            bond.from += first;
            bond.to += first;
            all.bonds.push_back(std::move(bond));
        }
        if (all.name.isEmpty())
            all.name = molecule.name;
        all.data.insert(all.data.end(), molecule.data.begin(), molecule.data.end());
    }
    return all;
}
