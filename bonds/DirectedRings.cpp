#include "bonds/DirectedRings.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <algorithm>
#include <utility>

bool DirectedRings::climbsAround(const KytBond* bond)
{
    const int set = setOf(bond->getFromAtom());
    return closed[set].climbs && setOf(bond->getToAtom()) == set;
}

int DirectedRings::setOf(KytAtom* atom)
{
    if (!walk.hasMet(atom->mark))
        explore(atom);
    return met[atom->mark.note].set;
}

void DirectedRings::forget()
{
    walk.startAnew();
    forgotten += std::exchange(lookedAt, 0);
    met.clear();
    closed.clear();
}

int DirectedRings::meet(KytAtom* atom, int before)
{
    const int place = static_cast<int>(met.size());
    walk.meet(atom->mark, place);
    met.push_back({atom, before, place, -1, 0});
    open.push_back(place);
    return place;
}

/// Tarjan's algorithm for strongly connected components (SIAM J. Comput. 1, 1972), without recursion. A set is closed
/// after all sets that depth can travel to from it.
void DirectedRings::explore(KytAtom* start)
{
    for (int at = meet(start, -1); at >= 0;) {
        const QList<KytBond*>& bonds = met[at].atom->outList;
        if (met[at].next == bonds.size()) {
            if (met[at].lowest == at)
                closeSet(at);
            const int before = met[at].before;
            if (before >= 0)
                met[before].lowest = std::min(met[before].lowest, met[at].lowest);
            at = before;
            continue;
        }
        const KytBond* bond = bonds[met[at].next++];
        ++lookedAt;
        if (!bond->carriesDepth())
            continue;
        KytAtom* end = bond->getToAtom();
        if (!walk.hasMet(end->mark))
            at = meet(end, at);
        else if (const Met& known = met[end->mark.note]; known.set < 0)
            met[at].lowest = std::min(met[at].lowest, end->mark.note);
    }
}

void DirectedRings::closeSet(int first)
{
    const int number = static_cast<int>(closed.size());
    RingSet set;
    int place;
    do {
        place = open.back();
        open.pop_back();
        met[place].set = number;
        set.atoms.push_back(met[place].atom);
    } while (place != first);
    for (const KytAtom* atom : set.atoms)
        for (const KytBond* bond : atom->outList)
            if (bond->carriesDepth() && bond->climbs() && walk.hasMet(bond->getToAtom()->mark)
                && met[bond->getToAtom()->mark.note].set == number)
                set.climbs = true;
    closed.push_back(std::move(set));
}
