#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"

#include <GraphMol/RWMol.h>

#include <memory>

/// The purpose of an RDKit molecule.
enum class MoleculeUse {
    V2000,    ///< written as drawn, to a V2000 file; hydrogen bonds become bonds of type "any"
    V3000,    ///< written as drawn, to a V3000 file
    Chemistry ///< input of perceive(): without hydrogen bonds
};

/// Converts `drawn` to an RDKit molecule that is not sanitized, with its atoms in the same order and the drawing's
/// coordinates, in angstroms, as its conformer. Unsupported bonds are omitted with a warning. A label that is not an
/// element symbol becomes an atom with the atomic number 0. Depths become z only if the drawing is not flat (isFlat()).
std::unique_ptr<RDKit::RWMol> moleculeOf(const SketchMolecule& drawn, MoleculeUse use, Notes& notes);

/// A wedge that is assigned to a bond.
struct ChosenWedge {
    unsigned bond;      ///< index of the bond
    unsigned narrowEnd; ///< index of the atom at the narrow end
    KytBondType kind;
};

/// Converts a molecule with a conformer to a drawing in the colours of its elements. Wedges follow from the stereo
/// marks of the molfile; `wedges` adds others.
SketchMolecule sketchOf(const RDKit::ROMol& molecule, const std::vector<ChosenWedge>& wedges, Notes& notes);

/// Whether any bond of a parsed molfile is marked as a wedge.
bool hasMarks(const RDKit::ROMol& molecule);

/// Warns of atoms whose given number of hydrogens differs from the number that the symbol alone implies. Atoms with
/// aromatic bonds are skipped.
void noteUnusualHydrogens(const RDKit::RWMol& molecule, Notes& notes);
