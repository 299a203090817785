#pragma once

#include "bonds/DirectedRings.h"
#include "model/GraphWalk.h"

#include <utility>
#include <vector>

class KytAtom;
class KytBond;

/// Updates bonds after atoms have moved or have changed their depths or bonds: propagates depth along the bonds and, at
/// the end of the update, lays out every affected bond once.
///
/// Depth is propagated immediately, by this rule: an updated bond sets the depth of its end atom (KytBond::rise above
/// its start atom), and an atom whose depth has changed updates its outgoing bonds in list order, depth first. Bonds in
/// a directed ring that climbs carry no depth (DirectedRings), because the rule would not terminate there.
///
/// The rule takes one step for every path between two atoms, which can be exponential in the number of bonds. After
/// `stepLimit` steps, propagation is deferred to the end of the update and done in one pass from start atoms to end
/// atoms. In this pass, the last deferred bond in an atom's incoming list that carries depth sets the depth of the
/// atom. The result is the same unless an atom has several incoming bonds that disagree.
///
/// Only one update may exist at a time, because it marks bonds and atoms (GraphWalk).
class BondUpdate {
public:
    static constexpr qint64 usualSteps = 100'000;

    explicit BondUpdate(qint64 stepLimit = usualSteps);
    /// Completes deferred propagation and lays out the affected bonds.
    ~BondUpdate();
    BondUpdate(const BondUpdate&) = delete;
    BondUpdate& operator=(const BondUpdate&) = delete;

    /// To be called for all bonds of an atom that has moved, before any of them is updated: propagation through one of
    /// them can reach another.
    void forgetRise(const KytBond* bond);
    /// To be called after an atom of `bond` has moved or the lines of `bond` have changed.
    void update(KytBond* bond);
    /// Sets the depth of `atom`; `depth` must not be NaN.
    void setDepth(KytAtom* atom, float depth);

    /// The number of depth changes of atoms so far.
    qint64 depthChanges() const { return changed; }

    /// To be called after a bond has got another start or end atom.
    void atomReplaced() { rings.forget(); }
    /// To be called before `bond` is deleted.
    void forget(const KytBond* bond);

private:
    struct AffectedBond {
        KytBond* bond;   // null after it was deleted
        double rise = 0; // cached KytBond::rise; changes only when an atom of the bond moves
        bool riseIsKnown = false;
        bool isDeferred = false; // has not yet set the depth of its end atom
    };
    struct PathStep {
        KytAtom* atom;
        qsizetype next; // index of its next outgoing bond
    };

    AffectedBond& affectedBond(KytBond* bond);
    void propagateAlong(AffectedBond& affected);
    static float depthAtEnd(AffectedBond& affected);
    void changeDepth(KytAtom* atom, float depth);
    bool propagateOnwards();
    void undoChanges();

    void defer(KytBond* bond) { affectedBond(bond).isDeferred = true; }
    bool isDeferred(const KytBond* bond) const;
    void propagateDeferred();
    void updateDeferredAtom(KytAtom* atom, int set);
    void updateDeferredRing(const RingSet& ring, int set);
    void changeDeferredDepth(KytAtom* atom, float depth);

    const qint64 stepLimit;
    qint64 steps = 0;
    qint64 changed = 0;
    bool isDeferring = false; // the step limit has been exceeded

    GraphWalk walk{GraphWalk::Marks::Bonds}; // the value is the bond's index in affectedBonds
    std::vector<AffectedBond> affectedBonds;
    std::vector<PathStep> path;                      // of the current propagation
    std::vector<std::pair<KytAtom*, float>> changes; // of the current propagation: atoms and their former depths
    DirectedRings rings;
};
