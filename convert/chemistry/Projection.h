#pragma once

#include "convert/chemistry/RDKitMolecule.h"

#include <GraphMol/RWMol.h>

#include <vector>

/// The wedges that show the stereocentres of a sanitized molecule with a conformer in space, whose stereo has been
/// assigned, as it is seen from the front. A wedge rises or falls as the depths of its ends do. A centre whose
/// projection does not allow that gets none.
std::vector<ChosenWedge> projectedWedges(const RDKit::RWMol& molecule);
