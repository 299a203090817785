#pragma once

#include "model/KytAtomList.h"

#include <QString>

class KytAtom;

/// A molecule: a set of atoms.
///
/// Created with new; deleted when its membership counter has dropped to 0 and no atom points to it any more.
class KytMolecule {
public:
    KytMolecule() = default;
    KytMolecule(const KytMolecule&) = delete;
    KytMolecule& operator=(const KytMolecule&) = delete;

    /// Increments the counter and inserts `atom` at the front. Constant time.
    void addAtom(KytAtom* atom);

    /// Decrements the counter, whether or not `atom` is a member, and removes `atom` from the list if it is in it.
    /// Constant time. Returns true if the counter is now exactly 0.
    bool removeAtom(KytAtom* atom);

    /// The number of atoms in the list (not atomsCount).
    int getAtomsCount() const;

    /// Removes the atom at index `i` from the list and returns it; null if `i` is out of range. Does not change the
    /// counter.
    KytAtom* getAtom(int i);

    QString getMoleculeName() const { return moleculeName; }
    void setMoleculeName(const QString& name) { moleculeName = name; }
    QString getAuthorName() const { return authorName; }
    void setAuthorName(const QString& name) { authorName = name; }
    int getMoleculeNum() const { return moleculeNum; }
    void setMoleculeNum(int number) { moleculeNum = number; }

    QString moleculeName;
    QString authorName;
    int moleculeNum = 0;
    KytAtomList atoms;  ///< members, most recently added first; not owned
    int atomsCount = 0; ///< membership counter, independent of the length of the list

private:
    friend class KytAtom;

    // An atom points to its first molecule without being a member, so the counter of that molecule is one too low. A
    // molecule may be deleted only when no atom points to it.
    int pointingAtoms = 0;
    bool emptied = false; // the counter has dropped to 0 and no atom has been added since
};
