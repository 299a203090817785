#pragma once

#include <QList>

#include <vector>

class KytAtom;
class KytBond;

/// A cell of a molecule's bond matrix: the row is the index of the start atom, the column that of the end atom.
struct BondCell {
    int row;
    int column;
    KytBond* bond;
};

/// The non-empty cells of the bond matrix of `atoms`, sorted by row, then by column.
///
/// Where several bonds share a cell, the last one is kept, in the order of the atoms, incoming before outgoing bonds.
/// An end that is not in `atoms` counts as index 0. Sets KytAtom::index.
std::vector<BondCell> bondTable(const QList<KytAtom*>& atoms);

/// The index of `atom` in `atoms`; 0 if it is not in the list. Constant time if bondTable was last called with `atoms`.
int indexOfAtom(const QList<KytAtom*>& atoms, const KytAtom* atom);
