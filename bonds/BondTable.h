#pragma once

#include <QList>

#include <vector>

class KytAtom;
class KytBond;

/// A bond in the square table of a molecule's atoms: its row is the from-atom's index, its column the to-atom's.
struct BondCell {
    int row;
    int column;
    KytBond* bond;
};

/// The filled cells of that table, row by row and within a row by column.
///
/// `atoms` are the molecule's atoms in index order. Where several bonds share a cell, the one met last stays: atom by
/// atom, incoming before outgoing. An end that is not among `atoms` counts as index 0. Sets KytAtom::index.
std::vector<BondCell> bondTable(const QList<KytAtom*>& atoms);

/// The index of `atom` in `atoms`, or 0 when it is not there. Constant time for atoms that bondTable has ranked.
int indexOfAtom(const QList<KytAtom*>& atoms, const KytAtom* atom);
