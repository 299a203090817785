#include "model/KytAtomList.h"

#include <algorithm>
#include <iterator>

KytAtom* KytAtomList::at(qsizetype index) const
{
    if (index < 0 || index >= size())
        return nullptr;
    return *std::next(order.begin(), index);
}

qsizetype KytAtomList::indexOf(KytAtom* atom) const
{
    const auto found = std::find(order.begin(), order.end(), atom);
    return found == order.end() ? -1 : std::distance(order.begin(), found);
}

void KytAtomList::prepend(KytAtom* atom)
{
    order.push_front(atom);
    entries.emplace(atom, Entry{order.begin(), ++additions});
}

bool KytAtomList::removeOne(KytAtom* atom)
{
    const auto [first, last] = entries.equal_range(atom);
    if (first == last)
        return false;
    const auto latest =
        std::max_element(first, last, [](const auto& a, const auto& b) { return a.second.added < b.second.added; });
    order.erase(latest->second.position);
    entries.erase(latest);
    return true;
}

KytAtom* KytAtomList::takeAt(qsizetype index)
{
    if (index < 0 || index >= size())
        return nullptr;
    const auto taken = std::next(order.begin(), index);
    KytAtom* atom = *taken;
    const auto [first, last] = entries.equal_range(atom);
    entries.erase(std::find_if(first, last, [&](const auto& entry) { return entry.second.position == taken; }));
    order.erase(taken);
    return atom;
}
