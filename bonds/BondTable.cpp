#include "bonds/BondTable.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <algorithm>

namespace {

/// Whether KytAtom::index of `atom` is its index in `atoms`.
bool isRanked(const QList<KytAtom*>& atoms, const KytAtom* atom)
{
    return atom && atom->index >= 0 && atom->index < atoms.size() && atoms[atom->index] == atom;
}

} // namespace

std::vector<BondCell> bondTable(const QList<KytAtom*>& atoms)
{
    for (qsizetype i = 0; i < atoms.size(); ++i)
        atoms[i]->index = static_cast<int>(i);

    std::vector<BondCell> cells;
    const auto indexOf = [&](const KytAtom* atom) { return isRanked(atoms, atom) ? atom->index : 0; };
    const auto addCell = [&](KytBond* bond) {
        cells.push_back({indexOf(bond->getFromAtom()), indexOf(bond->getToAtom()), bond});
    };
    for (KytAtom* atom : atoms) {
        for (KytBond* bond : atom->inList)
            addCell(bond);
        for (KytBond* bond : atom->outList)
            addCell(bond);
    }

    std::stable_sort(cells.begin(), cells.end(), [](const BondCell& a, const BondCell& b) {
        return a.row != b.row ? a.row < b.row : a.column < b.column;
    });
    std::vector<BondCell> table;
    for (const BondCell& cell : cells) {
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
        return atom->index;
    return static_cast<int>(std::max<qsizetype>(0, atoms.indexOf(atom)));
}
