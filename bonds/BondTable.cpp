#include "bonds/BondTable.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <algorithm>

namespace {

/// Sorts `cells` by the index in the member `key`, all below `size`; equal ones keep their order. Linear.
std::vector<BondCell> sortedBy(int BondCell::*key, const std::vector<BondCell>& cells, qsizetype size)
{
    std::vector<std::size_t> ends(static_cast<std::size_t>(size) + 1, 0);
    for (const BondCell& cell : cells)
        ++ends[static_cast<std::size_t>(cell.*key) + 1];
    for (std::size_t i = 1; i < ends.size(); ++i)
        ends[i] += ends[i - 1];
    std::vector<BondCell> sorted(cells.size());
    for (const BondCell& cell : cells)
        sorted[ends[static_cast<std::size_t>(cell.*key)]++] = cell;
    return sorted;
}

/// Whether the rank of `atom` is its index in `atoms`.
bool isRanked(const QList<KytAtom*>& atoms, const KytAtom* atom)
{
    return atom && atom->rank >= 0 && atom->rank < atoms.size() && atoms[atom->rank] == atom;
}

} // namespace

std::vector<BondCell> bondTable(const QList<KytAtom*>& atoms)
{
    for (qsizetype i = 0; i < atoms.size(); ++i)
        atoms[i]->rank = static_cast<int>(i);

    std::vector<BondCell> met;
    const auto indexOf = [&](const KytAtom* atom) { return isRanked(atoms, atom) ? atom->rank : 0; };
    const auto meet = [&](KytBond* bond) {
        met.push_back({indexOf(bond->getFromAtom()), indexOf(bond->getToAtom()), bond});
    };
    for (KytAtom* atom : atoms) {
        for (KytBond* bond : atom->inList)
            meet(bond);
        for (KytBond* bond : atom->outList)
            meet(bond);
    }

    std::vector<BondCell> table;
    for (const BondCell& cell :
         sortedBy(&BondCell::row, sortedBy(&BondCell::column, met, atoms.size()), atoms.size())) {
        if (!table.empty() && table.back().row == cell.row && table.back().column == cell.column)
            table.back() = cell;
        else
            table.push_back(cell);
    }
    return table;
}

int indexOfAtom(const QList<KytAtom*>& atoms, const KytAtom* atom)
{
    if (isRanked(atoms, atom))
        return atom->rank;
    return static_cast<int>(std::max<qsizetype>(0, atoms.indexOf(atom)));
}
