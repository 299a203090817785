#pragma once

#include "convert/Notes.h"
#include "convert/Sketch.h"

#include <GraphMol/RWMol.h>

#include <memory>

/// What an RDKit molecule is made for.
enum class MoleculeUse {
    V2000,    ///< to be written as it is drawn; a hydrogen bond is one of any kind
    V3000,    ///< to be written as it is drawn
    Chemistry ///< to be understood: flat, and without hydrogen bonds
};

/// The molecule of `drawn`, not sanitized, its atoms in the same order, with the drawing's places, in angstroms, as its
/// conformer. A bond that it cannot have is left out, and noted. A label that is no element's symbol becomes an atom of
/// the number 0.
std::unique_ptr<RDKit::RWMol> moleculeOf(const SketchMolecule& drawn, MoleculeUse use, Notes& notes);

/// The drawing of a molecule with a conformer, with the colours of its elements. Wedges are what its bonds' stereo
/// marks in the file say; `wedges` may name others: from the bond to the atom at its narrow end and the kind.
struct ChosenWedge {
    unsigned bond;
    unsigned narrowEnd;
    KytBondType kind;
};
SketchMolecule sketchOf(const RDKit::ROMol& molecule, const std::vector<ChosenWedge>& wedges, Notes& notes);

/// Notes atoms whose hydrogens, as given for each, are not those that the symbol alone brings along. Atoms with
/// aromatic bonds are passed over.
void noteUnusualHydrogens(const RDKit::RWMol& molecule, Notes& notes);

/// Understands a molecule that was made for chemistry: aromatic rings, stereo centres from wedges, double bonds from
/// places. Throws what RDKit throws where a valence is not possible.
void perceive(RDKit::RWMol& molecule);
