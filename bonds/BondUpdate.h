#pragma once

#include "bonds/DirectedRings.h"
#include "model/GraphWalk.h"

#include <utility>
#include <vector>

class KytAtom;
class KytBond;

/// What follows for the bonds of a drawing when atoms move, change their depths or change their bonds: depth travels
/// along the bonds, and every bond concerned is laid out again, once, when the update ends.
///
/// Depth travels at once, by this rule: a bond that is updated gives its end atom a depth (KytBond::rise above that of
/// its start atom), and an atom whose depth really changes updates its outgoing bonds, in the order of its list, each
/// with all that follows from it before the next. Bonds in a directed ring that climbs carry no depth (DirectedRings):
/// there, the rule alone would never come to rest.
///
/// The rule takes as many steps as there are ways from atom to atom. One update follows it for `affordableSteps`. What
/// would take more is put off to the end and settled in one pass from start atoms to end atoms, in which the last one
/// in an atom's incoming list decides, of those bonds that have a depth to give. Where no atom has several incoming
/// bonds that disagree, that makes no difference.
///
/// One at a time: it marks bonds and atoms (GraphWalk).
class BondUpdate {
public:
    static constexpr qint64 usualSteps = 100'000;

    explicit BondUpdate(qint64 affordableSteps = usualSteps);
    /// Settles what was put off, and lays the bonds out.
    ~BondUpdate();
    BondUpdate(const BondUpdate&) = delete;
    BondUpdate& operator=(const BondUpdate&) = delete;

    /// An atom of `bond` has moved, or its lines have changed.
    void update(KytBond* bond);
    /// Gives `atom` a depth, which must be a number.
    void setDepth(KytAtom* atom, float depth);

    /// How often an atom has changed its depth so far.
    qint64 depthChanges() const { return changed; }

    /// A bond has another atom than before.
    void atomReplaced() { rings.forget(); }
    /// `bond` is about to be deleted.
    void forget(const KytBond* bond);

private:
    struct Concerned {
        KytBond* bond;   // null where it has gone
        double rise = 0; // as KytBond::rise; it changes only when an atom of the bond moves
        bool riseIsKnown = false;
        bool wasPutOff = false; // it has yet to give its end atom a depth
    };
    struct OnTheWay {
        KytAtom* atom;
        qsizetype next; // of its outgoing bonds
    };

    Concerned& concerned(KytBond* bond);
    void carry(Concerned& along);
    static float depthAtEnd(Concerned& along);
    void change(KytAtom* atom, float depth);
    bool follow();
    void takeBack();

    void putOff(KytBond* bond) { concerned(bond).wasPutOff = true; }
    bool isPutOff(const KytBond* bond) const;
    void settle();
    void settleAtom(KytAtom* atom, int set);
    void settleRing(const RingSet& ring, int set);
    void settleAt(KytAtom* atom, float depth);

    const qint64 affordableSteps;
    qint64 steps = 0;
    qint64 changed = 0;
    bool putsOff = false; // depth is too long on its way to be followed any further

    GraphWalk walk{GraphWalk::Marks::Bonds}; // notes the bonds' places in `all`
    std::vector<Concerned> all;
    std::vector<OnTheWay> way;                       // the atoms through which depth has come to where it is
    std::vector<std::pair<KytAtom*, float>> changes; // of the depth on its way: the atoms and their depths before
    DirectedRings rings;
};
