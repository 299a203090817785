#pragma once

#include "canvas/itemmemory.h"

#include <QList>

#include <list>
#include <memory_resource>
#include <unordered_map>

class KytAtom;

/// A list of atoms, most recently added first, with insertion and removal in constant time. It does not own the atoms
/// and never dereferences the pointers.
class KytAtomList {
public:
    using const_iterator = std::pmr::list<KytAtom*>::const_iterator;

    qsizetype size() const { return static_cast<qsizetype>(order.size()); }
    qsizetype count() const { return size(); }
    qsizetype length() const { return size(); }
    qsizetype count(KytAtom* atom) const { return static_cast<qsizetype>(entries.count(atom)); }
    bool isEmpty() const { return order.empty(); }
    bool empty() const { return isEmpty(); }
    bool contains(KytAtom* atom) const { return entries.contains(atom); }
    KytAtom* first() const { return isEmpty() ? nullptr : order.front(); }
    KytAtom* last() const { return isEmpty() ? nullptr : order.back(); }

    /// The atom at `index`, from 0; null if the index is out of range. Linear in the index.
    KytAtom* at(qsizetype index) const;
    KytAtom* operator[](qsizetype index) const { return at(index); }

    /// The index of the first occurrence of `atom`, or -1. Linear.
    qsizetype indexOf(KytAtom* atom) const;

    const_iterator begin() const { return order.begin(); }
    const_iterator end() const { return order.end(); }
    QList<KytAtom*> toList() const { return QList<KytAtom*>(order.begin(), order.end()); }

    void prepend(KytAtom* atom);
    /// Removes the first occurrence of `atom`; false if it is not in the list. Linear in the number of its occurrences.
    bool removeOne(KytAtom* atom);
    /// Removes and returns the atom at `index`; null if the index is out of range. Linear in the index.
    KytAtom* takeAt(qsizetype index);

private:
    using Order = std::pmr::list<KytAtom*>;
    struct Entry {
        Order::iterator position;
        quint64 added; // value of `additions` when the atom was added
    };
    // Not QMultiHash: the standard map does not scramble pointers, so that atoms adjacent in memory have nearby entries
    // and removing a molecule atom by atom is cache-friendly.
    using Entries = std::pmr::unordered_multimap<KytAtom*, Entry>;

    Order order{itemMemory()};
    Entries entries{itemMemory()};
    quint64 additions = 0;
};
