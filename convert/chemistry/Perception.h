#pragma once

#include "convert/chemistry/Sketch.h"

#include <GraphMol/RWMol.h>

#include <memory>

/// Whether atoms with different labels (common_properties::atomLabel) are different neighbours of a stereocentre.
enum class Labels { Distinct, Alike };

/// Whether hydrogens stay atoms of their own, also those that the symbol of their neighbour implies.
enum class Hydrogens { Keep, Remove };

/// Sanitizes a parsed molecule with labels without its hydrogens, and assigns its stereo from its chiral tags and bond
/// directions, keeping stereocentres whose neighbours differ only in their labels.
void sanitizeWithLabels(RDKit::RWMol& molecule);

/// Perceives aromatic rings, stereocentres and E/Z stereo in a molecule made for MoleculeUse::Chemistry: in a flat one
/// from wedges and coordinates, otherwise from the coordinates in space. Lets RDKit's exceptions for impossible
/// valences pass.
void perceive(RDKit::RWMol& molecule, Hydrogens hydrogens = Hydrogens::Keep);

/// Sanitizes a molecule that was parsed from a molfile as it is, and assigns its stereo as RDKit does: in space from
/// its coordinates, otherwise from its wedges and coordinates. All atoms are kept. Lets RDKit's exceptions for
/// impossible valences pass.
void assignParsedStereo(RDKit::RWMol& molecule);

/// The perceived molecule of a drawing, with its atoms in the same order; null if its valences are impossible.
std::unique_ptr<RDKit::RWMol> perceivedMolecule(const SketchMolecule& drawn, Labels labels = Labels::Distinct);
