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
    places.insert(atom, order.begin());
}

bool KytAtomList::removeOne(KytAtom* atom)
{
    const auto place = places.find(atom);
    if (place == places.end())
        return false;
    order.erase(*place);
    places.erase(place);
    return true;
}

KytAtom* KytAtomList::takeAt(qsizetype index)
{
    if (index < 0 || index >= size())
        return nullptr;
    const auto place = std::next(order.begin(), index);
    KytAtom* atom = *place;
    places.remove(atom, place);
    order.erase(place);
    return atom;
}
