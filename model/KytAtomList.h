#pragma once

#include "canvas/itemmemory.h"

#include <QList>

#include <list>
#include <memory_resource>
#include <unordered_map>

class KytAtom;

/// A list of atoms, the most recently added first, that adds and removes in constant time. It does not own them and
/// never looks at what its pointers point to.
class KytAtomList {
public:
    using const_iterator = std::pmr::list<KytAtom*>::const_iterator;

    qsizetype size() const { return static_cast<qsizetype>(order.size()); }
    qsizetype count() const { return size(); }
    qsizetype length() const { return size(); }
    qsizetype count(KytAtom* atom) const { return static_cast<qsizetype>(places.count(atom)); }
    bool isEmpty() const { return order.empty(); }
    bool empty() const { return isEmpty(); }
    bool contains(KytAtom* atom) const { return places.contains(atom); }
    KytAtom* first() const { return isEmpty() ? nullptr : order.front(); }
    KytAtom* last() const { return isEmpty() ? nullptr : order.back(); }

    /// The atom at `index` counted from 0, or null when the index is out of range. Linear in the index.
    KytAtom* at(qsizetype index) const;
    KytAtom* operator[](qsizetype index) const { return at(index); }

    /// The place of the first occurrence of `atom`, or -1. Linear.
    qsizetype indexOf(KytAtom* atom) const;

    const_iterator begin() const { return order.begin(); }
    const_iterator end() const { return order.end(); }
    QList<KytAtom*> toList() const { return QList<KytAtom*>(order.begin(), order.end()); }

    void prepend(KytAtom* atom);
    /// Removes the first occurrence of `atom`; false when it is not in the list. Linear in its occurrences.
    bool removeOne(KytAtom* atom);
    /// Removes and returns the atom at `index`; null when the index is out of range. Linear in the index.
    KytAtom* takeAt(qsizetype index);

private:
    using Order = std::pmr::list<KytAtom*>;
    struct Place {
        Order::iterator at;
        quint64 added; // rises with every atom that is added
    };
    // The standard library's map: neighbours in memory stay neighbours in it, so that a molecule that goes atom by atom
    // does not jump to and fro.
    using Places = std::pmr::unordered_multimap<KytAtom*, Place>;

    Order order{itemMemory()};
    Places places{itemMemory()};
    quint64 additions = 0;
};
