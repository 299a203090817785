#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"

#include <QString>

/// Whether this build can compute InChI.
inline constexpr bool inchiIsSupported = KYTCONVERT_HAS_INCHI;

/// The standard InChI of a molecule, with the stereo of its drawing. Hydrogen bonds are omitted, with a warning. Throws
/// ConversionError for labels that are not elements, for aromatic rings without alternating bonds, for more than 1 023
/// atoms, and where the library reports an error or is not supported.
QString inchiOf(const SketchMolecule& drawn, Notes& notes);

/// The standard InChIKey of a standard InChI.
QString inchiKeyOf(const QString& inchi);
