#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Sketch.h"

#include <GraphMol/RWMol.h>

/// The wedges that show the stereocentres of a molecule in its conformer, seen from the front. A centre for which the
/// conformer leaves no room gets none.
std::vector<ChosenWedge> chooseWedges(const RDKit::RWMol& molecule);

/// Lays out a sanitized molecule and draws it with single and double bonds. Centres that need a hydrogen for their
/// wedge get one. If the drawing shows other stereo than the molecule or atoms on each other, it is laid out in a
/// second way; what still differs is a warning, which starts with `name`.
SketchMolecule layOut(RDKit::RWMol& molecule, const QString& name, Notes& notes);

/// The drawing of a molecule laid out anew around its centre: atoms, connections, orders, dashes, labels and colours
/// stay, wedges are chosen anew for the same stereo. Warns as layOut() does. Throws ConversionError for a molecule with
/// impossible valences or with too many atoms.
SketchMolecule layOutAnew(const SketchMolecule& drawn, const QString& name, Notes& notes);

/// The largest number of atoms that are laid out.
inline constexpr unsigned maxAtomsToLayOut = 1000;
