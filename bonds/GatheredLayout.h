#pragma once

#include <QtGlobal>

#include <unordered_map>
#include <vector>

class KytAtom;
class KytBond;

/// Spares the bonds of atoms that move together from being laid out again and again.
///
/// While one lives, a bond that is to be laid out is only remembered; each is laid out once when the outermost one
/// ends. Depth travels at once, bond by bond, exactly as without, for as long as that stays cheap. When its waves have
/// passed more than `waveBonds` bonds, the depths are settled at the end instead, in one linear pass: an atom takes its
/// depth from the bond that was the last to give it one. Both ways end in the same depths unless an atom has several
/// incoming bonds that disagree.
class GatheredLayout {
public:
    explicit GatheredLayout(qint64 waveBonds = 100'000);
    ~GatheredLayout();
    GatheredLayout(const GatheredLayout&) = delete;
    GatheredLayout& operator=(const GatheredLayout&) = delete;

    /// The outermost one alive, or null.
    static GatheredLayout* current() { return outermost; }

    /// An atom has moved; the bonds remembered from here on are remembered for its sake.
    void atomMoved() { ++movedAtoms; }

    /// Remembers that `bond` is to be laid out. Once that is for the sake of a second atom, the bond is laid out at
    /// once: as a rule, both of its atoms have moved then, and are still at hand in the processor's caches. What is
    /// remembered over and over is laid out once more in the end.
    void remember(KytBond* bond);
    /// `bond` is being destroyed.
    void forget(const KytBond* bond);

    /// Sends the depth of the start of `bond`, a remembered one, along it: now, or when all is settled.
    void sendDepth(KytBond* bond);
    /// A wave of depth has passed `bonds` bonds.
    void count(qint64 bonds) { passed += bonds; }

private:
    struct Remembered {
        KytBond* bond;      // null where the bond has gone
        int movedAtoms;     // how many had moved when it was first remembered
        qint16 layouts = 0; // that it had before the end
        bool waits = true;
    };

    void settleDepths();
    std::vector<KytAtom*> chooseDecidingBonds();
    std::vector<KytBond*> unsettledBondsAbove(KytAtom* atom, quint64 settled) const;

    static GatheredLayout* outermost;
    static std::size_t usualCount; // of remembered bonds: as many as the last one had

    const quint64 number; // tells this gathering's bonds from those of earlier ones
    const qint64 affordable;
    qint64 passed = 0;
    int movedAtoms = 0;
    int turns = 0;
    std::vector<Remembered> remembered;
    std::unordered_map<const KytAtom*, KytBond*> deciding;
};
