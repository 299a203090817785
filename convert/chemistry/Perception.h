#pragma once

#include <GraphMol/RWMol.h>

/// Perceives aromatic rings, stereocentres from wedges, and E/Z stereo from coordinates, in a molecule made for
/// MoleculeUse::Chemistry. Lets RDKit's exceptions for impossible valences pass.
void perceive(RDKit::RWMol& molecule);
