#pragma once

#include "convert/chemistry/Sketch.h"

#include <GraphMol/ROMol.h>

#include <QString>

#include <map>
#include <utility>

/// The stereo of a molecule in terms of the indices of its atoms, so that molecules with the same atoms in the same
/// order can be compared.
struct Stereo {
    std::map<unsigned, bool> centres; ///< by atom: whether its neighbours lie clockwise, by rising index

    /// By the two ends, the lower index first: whether the neighbours with the lowest indices are on the same side.
    std::map<std::pair<unsigned, unsigned>, bool> doubleBonds;

    bool operator==(const Stereo&) const = default;
};

/// The stereo of a molecule whose stereocentres and E/Z stereo have been assigned. Open double bonds are not included.
Stereo stereoOf(const RDKit::ROMol& molecule);

/// Where the elements, charges, isotopes, hydrogens or the stereo of two molecules with the same atoms in the same
/// order differ, in the same form.
QString differencesOf(const RDKit::ROMol& one, const RDKit::ROMol& other);

/// The number of stereocentres and double bonds that differ.
int countDifferences(const Stereo& one, const Stereo& other);

/// Opens the double bonds of a drawing for which the molecule that is meant has no E/Z stereo, but the drawing shows
/// some, and removes them from `shown`.
void openDoubleBonds(SketchMolecule& drawn, const Stereo& meant, Stereo& shown);

/// Where they differ, such as "atom 3, bond 5=6", counted from 1; empty if they are equal.
QString differencesOf(const Stereo& one, const Stereo& other);
