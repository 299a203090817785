#pragma once

#include <QList>
#include <QMultiHash>

#include <list>

class KytAtom;

/// A list of atoms, the most recently added first, that adds and removes in constant time. It does not own them and
/// never looks at what its pointers point to.
class KytAtomList {
public:
    using const_iterator = std::list<KytAtom*>::const_iterator;

    qsizetype size() const { return static_cast<qsizetype>(order.size()); }
    qsizetype count() const { return size(); }
    qsizetype length() const { return size(); }
    qsizetype count(KytAtom* atom) const { return places.count(atom); }
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
    /// Removes the first occurrence of `atom`; false when it is not in the list.
    bool removeOne(KytAtom* atom);
    /// Removes and returns the atom at `index`; null when the index is out of range. Linear in the index.
    KytAtom* takeAt(qsizetype index);

private:
    std::list<KytAtom*> order;
    QMultiHash<KytAtom*, std::list<KytAtom*>::iterator> places; // of one atom, the latest added comes first
};
