#pragma once

#include "model/GraphWalk.h"

#include <vector>

class KytAtom;
class KytBond;

/// A strongly connected set of atoms: depth can propagate from each of them to all others and back. It is a directed
/// ring or several rings that share atoms. An atom in no directed ring is a set of its own.
struct RingSet {
    std::vector<KytAtom*> atoms;
    /// A bond within the set is a wedge with a non-zero angle, so propagation around the ring would not terminate.
    bool climbs = false;
};

/// The directed rings of a drawing, formed by the bonds that carry depth.
///
/// Atoms are explored on demand. The total cost is linear in the number of bonds along which depth can propagate from
/// these atoms. Bonds must not change between calls, unless forget() is called.
class DirectedRings {
public:
    /// Whether both ends of `bond` are in one set and that set climbs. Such a bond carries no depth.
    bool climbsAround(const KytBond* bond);

    /// The number of the set that contains `atom`. Depth propagates only from higher to lower numbers.
    int setOf(KytAtom* atom);

    /// All sets explored so far, indexed by their numbers.
    const std::vector<RingSet>& sets() const { return closed; }

    /// Discards all sets, because bonds or their atoms have changed.
    void forget();

    /// The number of bonds whose examination was wasted, because forget() was called later.
    qint64 forgottenBonds() const { return forgotten; }

private:
    struct Node {
        KytAtom* atom;
        int parent; // index of the node from which this one was reached; -1 for none
        int lowest; // lowest index known to be in the same set
        int set;    // -1 while it is open
        int next;   // index of the atom's next outgoing bond
    };

    int addNode(KytAtom* atom, int parent);
    void explore(KytAtom* start);
    void closeSet(int first);

    GraphWalk walk{GraphWalk::Marks::Atoms}; // the value is the atom's index in nodes
    std::vector<Node> nodes;
    std::vector<int> open; // indices of the nodes whose set is not known yet
    std::vector<RingSet> closed;
    qint64 examined = 0; // bonds since the last forget()
    qint64 forgotten = 0;
};
