#pragma once

#include "model/GraphWalk.h"

#include <vector>

class KytAtom;
class KytBond;

/// A set of atoms from each of which depth can travel to all others of the set and back again: a directed ring, or
/// several that share atoms. An atom in no directed ring is a set of its own.
struct RingSet {
    std::vector<KytAtom*> atoms;
    /// One of the bonds within the set is a wedge with an angle, so depth that went round would never come to rest.
    bool climbs = false;
};

/// The directed rings of a drawing, along the bonds that carry depth.
///
/// Atoms are explored when they are first asked about. All in all that is linear in the bonds along which depth can
/// travel from these atoms. Bonds must not change in between, unless forget is called.
class DirectedRings {
public:
    /// Whether both ends of `bond` lie in one set and that set climbs. Such a bond carries no depth.
    bool climbsAround(const KytBond* bond);

    /// The number of the set that `atom` lies in. Depth travels from higher numbers to lower ones only.
    int setOf(KytAtom* atom);

    /// All sets explored so far, by their numbers.
    const std::vector<RingSet>& sets() const { return closed; }

    /// Bonds or their ends have changed: whatever is asked from here on is explored anew.
    void forget();

    /// How many bonds have been looked at in vain: before a forget.
    qint64 forgottenBonds() const { return forgotten; }

private:
    struct Met {
        KytAtom* atom;
        int before; // the place of the atom from which this one was met; -1 for none
        int lowest; // the first place that is known to be in the same set
        int set;    // -1 while it is open
        int next;   // of the atom's outgoing bonds
    };

    int meet(KytAtom* atom, int before);
    void explore(KytAtom* start);
    void closeSet(int first);

    GraphWalk walk{GraphWalk::Marks::Atoms}; // notes the atoms' places in `met`
    std::vector<Met> met;
    std::vector<int> open; // the places of those whose set is not known yet
    std::vector<RingSet> closed;
    qint64 lookedAt = 0; // bonds, since the last forget
    qint64 forgotten = 0;
};
