#include "bonds/GatheredLayout.h"

#include "bonds/DepthWave.h"
#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <algorithm>
#include <cmath>

namespace {

// A turned atom asks for its bonds twice.
constexpr int mostEarlyLayouts = 2;

/// The path ends in a ring, in which each bond waits for another: the one whose turn came first goes first.
void startRingAtItsFirstBond(std::vector<KytBond*>& path)
{
    const KytAtom* entry = path.back()->getFromAtom();
    const auto ring =
        std::find_if(path.begin(), path.end(), [&](const KytBond* bond) { return bond->getToAtom() == entry; });
    const auto first = std::min_element(ring, path.end(),
                                        [](const KytBond* a, const KytBond* b) { return a->depthTurn < b->depthTurn; });
    std::rotate(ring, first + 1, path.end());
}

quint64 nextNumber()
{
    static quint64 last = 0;
    return ++last;
}

} // namespace

GatheredLayout* GatheredLayout::outermost = nullptr;
std::size_t GatheredLayout::usualCount = 0;

GatheredLayout::GatheredLayout(qint64 waveBonds)
    : number(nextNumber())
    , affordable(waveBonds)
{
    if (outermost)
        return;
    outermost = this;
    remembered.reserve(usualCount);
}

GatheredLayout::~GatheredLayout()
{
    if (outermost != this)
        return;
    if (passed > affordable)
        settleDepths();
    outermost = nullptr;
    usualCount = remembered.size();
    for (const Remembered& one : remembered)
        if (one.bond && one.waits)
            one.bond->drawLines();
}

void GatheredLayout::remember(KytBond* bond)
{
    if (bond->gathering != number) {
        bond->gathering = number;
        bond->layoutPlace = static_cast<int>(remembered.size());
        bond->depthTurn = 0;
        remembered.push_back({bond, movedAtoms});
        return;
    }
    Remembered& one = remembered[bond->layoutPlace];
    if (one.layouts == 0 && one.movedAtoms == movedAtoms)
        return;
    one.waits = one.layouts == mostEarlyLayouts;
    if (one.waits)
        return;
    ++one.layouts;
    bond->drawLines();
}

void GatheredLayout::forget(const KytBond* bond)
{
    if (bond->gathering == number)
        remembered[bond->layoutPlace].bond = nullptr;
}

void GatheredLayout::sendDepth(KytBond* bond)
{
    bond->depthTurn = ++turns;
    if (passed <= affordable)
        sendDepthAlong(bond);
}

/// Gives every atom the depth of its deciding bond, from the start atoms to the end atoms, and sends what has changed
/// on to the atoms that none of these bonds leads to.
void GatheredLayout::settleDepths()
{
    const std::vector<KytAtom*> decided = chooseDecidingBonds();
    const quint64 settled = KytAtom::newVisit();
    std::vector<KytAtom*> changed;
    for (KytAtom* atom : decided) {
        std::vector<KytBond*> path = unsettledBondsAbove(atom, settled);
        std::reverse(path.begin(), path.end());
        for (const KytBond* bond : path) {
            KytAtom* end = bond->getToAtom();
            end->visit = settled;
            const float depth = bond->endDepth();
            if (std::isnan(depth) || depth == end->atomZ)
                continue;
            end->atomZ = depth;
            changed.push_back(end);
        }
    }
    sendDepthBeyond(decided, changed);
}

/// Finds for each atom the bond that was the last to give it a depth; returns these atoms.
std::vector<KytAtom*> GatheredLayout::chooseDecidingBonds()
{
    std::vector<KytAtom*> decided;
    for (const Remembered& one : remembered) {
        KytBond* bond = one.bond;
        if (!bond || bond->depthTurn == 0 || !bond->carriesDepth())
            continue;
        KytBond*& latest = deciding[bond->getToAtom()];
        if (!latest)
            decided.push_back(bond->getToAtom());
        if (!latest || latest->depthTurn < bond->depthTurn)
            latest = bond;
    }
    return decided;
}

/// The deciding bonds from `atom` up to the first atom that is settled or has none, in this order.
std::vector<KytBond*> GatheredLayout::unsettledBondsAbove(KytAtom* atom, quint64 settled) const
{
    const quint64 onPath = KytAtom::newVisit();
    std::vector<KytBond*> path;
    while (atom->visit != settled && atom->visit != onPath) {
        const auto found = deciding.find(atom);
        if (found == deciding.end())
            return path;
        atom->visit = onPath;
        path.push_back(found->second);
        atom = found->second->getFromAtom();
    }
    if (atom->visit == onPath)
        startRingAtItsFirstBond(path);
    return path;
}
