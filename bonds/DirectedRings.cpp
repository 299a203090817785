#include "bonds/DirectedRings.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <algorithm>
#include <utility>

bool DirectedRings::climbsAround(const KytBond* bond)
{
    // The ends of stars are many, and in no ring.
    if (bond->getToAtom()->outList.isEmpty() || bond->getFromAtom()->inList.isEmpty())
        return false;
    const int set = setOf(bond->getFromAtom());
    return closed[set].climbs && setOf(bond->getToAtom()) == set;
}

int DirectedRings::setOf(KytAtom* atom)
{
    if (!walk.hasVisited(atom->mark))
        explore(atom);
    return nodes[atom->mark.value].set;
}

void DirectedRings::forget()
{
    walk.restart();
    forgotten += std::exchange(examined, 0);
    nodes.clear();
    closed.clear();
}

int DirectedRings::addNode(KytAtom* atom, int parent)
{
    const int index = static_cast<int>(nodes.size());
    walk.visit(atom->mark, index);
    nodes.push_back({atom, parent, index, -1, 0});
    open.push_back(index);
    return index;
}

/// Tarjan's algorithm for strongly connected components (SIAM J. Comput. 1, 1972), without recursion. A set is closed
/// after all other sets to which depth can propagate from it.
void DirectedRings::explore(KytAtom* start)
{
    for (int current = addNode(start, -1); current >= 0;) {
        const QList<KytBond*>& bonds = nodes[current].atom->outList;
        if (nodes[current].next == bonds.size()) {
            if (nodes[current].lowest == current)
                closeSet(current);
            const int parent = nodes[current].parent;
            if (parent >= 0)
                nodes[parent].lowest = std::min(nodes[parent].lowest, nodes[current].lowest);
            current = parent;
            continue;
        }
        const KytBond* bond = bonds[nodes[current].next++];
        ++examined;
        if (!bond->carriesDepth())
            continue;
        KytAtom* end = bond->getToAtom();
        if (!walk.hasVisited(end->mark))
            current = addNode(end, current);
        else if (const Node& visited = nodes[end->mark.value]; visited.set < 0)
            nodes[current].lowest = std::min(nodes[current].lowest, end->mark.value);
    }
}

void DirectedRings::closeSet(int first)
{
    const int number = static_cast<int>(closed.size());
    RingSet set;
    int index;
    do {
        index = open.back();
        open.pop_back();
        nodes[index].set = number;
        set.atoms.push_back(nodes[index].atom);
    } while (index != first);
    for (const KytAtom* atom : set.atoms)
        for (const KytBond* bond : atom->outList)
            if (bond->carriesDepth() && bond->climbs() && walk.hasVisited(bond->getToAtom()->mark)
                && nodes[bond->getToAtom()->mark.value].set == number)
                set.climbs = true;
    closed.push_back(std::move(set));
}
