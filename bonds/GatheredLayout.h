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

    /// Remembers that `bond` is to be laid out.
    void remember(KytBond* bond);
    /// `bond`, which was remembered, is being destroyed.
    void forget(const KytBond* bond);

    /// Sends the depth of the start of `bond`, a remembered one, along it: now, or when all is settled.
    void sendDepth(KytBond* bond);
    /// A wave of depth has passed `bonds` bonds.
    void count(qint64 bonds) { passed += bonds; }

private:
    void settleDepths();
    std::vector<KytAtom*> chooseDecidingBonds();
    std::vector<KytBond*> unsettledBondsAbove(KytAtom* atom, quint64 settled) const;

    static GatheredLayout* outermost;

    const qint64 affordable;
    qint64 passed = 0;
    int turns = 0;
    std::vector<KytBond*> remembered; // null where the bond has gone
    std::unordered_map<const KytAtom*, KytBond*> deciding;
};
