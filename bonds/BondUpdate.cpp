#include "bonds/BondUpdate.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

BondUpdate::BondUpdate(qint64 stepLimit)
    : stepLimit(stepLimit)
{
}

BondUpdate::~BondUpdate()
{
    if (isDeferring)
        propagateDeferred();
    for (const AffectedBond& affected : affectedBonds)
        if (affected.bond)
            affected.bond->layOut();
}

void BondUpdate::update(KytBond* bond)
{
    AffectedBond& moved = affectedBond(bond);
    moved.riseIsKnown = false;
    isDeferring = isDeferring || rings.forgottenBonds() > stepLimit;
    if (!isDeferring) {
        propagateAlong(moved);
        isDeferring = !propagateOnwards();
    }
    if (isDeferring)
        defer(bond);
}

void BondUpdate::forgetRise(const KytBond* bond)
{
    if (walk.hasVisited(bond->mark))
        affectedBonds[bond->mark.value].riseIsKnown = false;
}

void BondUpdate::setDepth(KytAtom* atom, float depth)
{
    if (depth == atom->atomZ)
        return;
    if (!isDeferring) {
        changeDepth(atom, depth);
        isDeferring = !propagateOnwards();
    }
    if (isDeferring)
        changeDeferredDepth(atom, depth);
}

void BondUpdate::forget(const KytBond* bond)
{
    rings.forget();
    if (walk.hasVisited(bond->mark))
        affectedBonds[bond->mark.value] = {nullptr};
}

BondUpdate::AffectedBond& BondUpdate::affectedBond(KytBond* bond)
{
    if (!walk.hasVisited(bond->mark)) {
        walk.visit(bond->mark, static_cast<int>(affectedBonds.size()));
        affectedBonds.push_back({bond});
    }
    return affectedBonds[bond->mark.value];
}

float BondUpdate::depthAtEnd(AffectedBond& affected)
{
    if (!affected.riseIsKnown) {
        affected.rise = affected.bond->rise();
        affected.riseIsKnown = true;
    }
    return affected.bond->depthAtEnd(affected.rise);
}

/// Sets the depth of the end atom of a bond; a changed depth is propagated by propagateOnwards().
void BondUpdate::propagateAlong(AffectedBond& affected)
{
    if (!affected.bond->carriesDepth())
        return;
    const float depth = depthAtEnd(affected);
    KytAtom* end = affected.bond->getToAtom();
    if (depth != end->atomZ && !rings.climbsAround(affected.bond))
        changeDepth(end, depth);
}

void BondUpdate::changeDepth(KytAtom* atom, float depth)
{
    changes.emplace_back(atom, atom->atomZ);
    atom->atomZ = depth;
    ++changed;
    path.push_back({atom, 0});
}

/// Propagates changed depths until no depth changes any more. If that exceeds the step limit, undoes the changes and
/// returns false.
bool BondUpdate::propagateOnwards()
{
    while (!path.empty()) {
        PathStep& last = path.back();
        if (last.next == last.atom->outList.size()) {
            path.pop_back();
            continue;
        }
        if (++steps > stepLimit || rings.forgottenBonds() > stepLimit) {
            undoChanges();
            return false;
        }
        propagateAlong(affectedBond(last.atom->outList[last.next++]));
    }
    changes.clear();
    return true;
}

void BondUpdate::undoChanges()
{
    for (; !changes.empty(); changes.pop_back())
        changes.back().first->atomZ = changes.back().second;
    path.clear();
}

bool BondUpdate::isDeferred(const KytBond* bond) const
{
    return walk.hasVisited(bond->mark) && affectedBonds[bond->mark.value].isDeferred;
}

/// Propagates depth along all deferred bonds in topological order, from start atoms to end atoms. Each bond is
/// processed at most once.
void BondUpdate::propagateDeferred()
{
    for (std::size_t i = 0; i < affectedBonds.size(); ++i)
        if (affectedBonds[i].isDeferred && affectedBonds[i].bond->carriesDepth())
            rings.setOf(affectedBonds[i].bond->getFromAtom());
    for (int set = static_cast<int>(rings.sets().size()) - 1; set >= 0; --set) {
        const RingSet& ring = rings.sets()[set];
        if (ring.atoms.size() == 1 || ring.climbs) {
            for (KytAtom* atom : ring.atoms)
                updateDeferredAtom(atom, set);
        } else {
            updateDeferredRing(ring, set);
        }
    }
}

/// Sets the depth of an atom from the last of its deferred incoming bonds from outside the set.
void BondUpdate::updateDeferredAtom(KytAtom* atom, int set)
{
    KytBond* deciding = nullptr;
    for (KytBond* bond : atom->inList)
        if (isDeferred(bond) && bond->carriesDepth() && rings.setOf(bond->getFromAtom()) != set)
            deciding = bond;
    if (deciding)
        changeDeferredDepth(atom, depthAtEnd(affectedBond(deciding)));
}

/// Sets all atoms of a ring that does not climb to one depth: from the last deferred bond that enters the ring or,
/// without one, from the last deferred bond within the ring.
void BondUpdate::updateDeferredRing(const RingSet& ring, int set)
{
    KytBond* deciding = nullptr;
    bool isFromOutside = false;
    for (const KytAtom* atom : ring.atoms)
        for (KytBond* bond : atom->inList) {
            if (!isDeferred(bond) || !bond->carriesDepth())
                continue;
            const bool outside = rings.setOf(bond->getFromAtom()) != set;
            if (!deciding || outside || !isFromOutside)
                deciding = bond;
            isFromOutside |= outside;
        }
    if (!deciding)
        return;
    const float depth = depthAtEnd(affectedBond(deciding));
    for (KytAtom* atom : ring.atoms)
        changeDeferredDepth(atom, depth);
}

void BondUpdate::changeDeferredDepth(KytAtom* atom, float depth)
{
    if (depth == atom->atomZ)
        return;
    atom->atomZ = depth;
    for (KytBond* bond : atom->outList)
        defer(bond);
}
