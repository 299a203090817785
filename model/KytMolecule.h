#pragma once

#include "model/KytAtomList.h"

#include <QString>

class KytAtom;

/// The set of atoms that belong together.
///
/// Made with new by whoever needs a fresh one, and freed when its counter has fallen to 0 and no atom points to it any
/// more.
class KytMolecule {
public:
    KytMolecule() = default;
    KytMolecule(const KytMolecule&) = delete;
    KytMolecule& operator=(const KytMolecule&) = delete;

    /// Counts `atom` in and puts it at the front. Constant time.
    void addAtom(KytAtom* atom);

    /// Counts one out, whether or not `atom` is a member, and takes it off the list if it is there. Constant time.
    /// Returns true when the counter is now exactly 0.
    bool removeAtom(KytAtom* atom);

    /// The number of atoms in the list (not atomsCount).
    int getAtomsCount() const;

    /// Takes the atom at index `i` off the list and returns it; null when `i` is out of range. The counter stays.
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
    int atomsCount = 0; ///< membership counter, kept apart from the list's length

private:
    friend class KytAtom;

    // An atom points to its first molecule without being a member of it, so the counter of that molecule runs one
    // behind. It may be freed only when no atom points to it any more.
    int pointingAtoms = 0;
    bool emptied = false; // the counter has fallen to 0 and nobody has joined since
};
