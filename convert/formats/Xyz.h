#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"

#include <QByteArray>

/// The molecules as XYZ, one frame after the other: the number of atoms, the name, and a line with the element and the
/// coordinates in angstroms of each atom, as drawn; y points up, and z is the depth. A label that is not an element is
/// X. Missing hydrogens, charges and isotopes are warned of.
QByteArray xyzOf(const std::vector<Sketch>& sketches, Notes& notes);
