#include "model/KytAtomList.h"

#include <iterator>

KytAtom* KytAtomList::at(qsizetype index) const
{
    if (index < 0 || index >= size())
        return nullptr;
    return *std::next(order.begin(), index);
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
