#include "bonds/BondUpdate.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

BondUpdate::BondUpdate(qint64 affordableSteps)
    : affordableSteps(affordableSteps)
{
}

BondUpdate::~BondUpdate()
{
    if (putsOff)
        settle();
    for (const Concerned& one : all)
        if (one.bond)
            one.bond->layOut();
}

void BondUpdate::update(KytBond* bond)
{
    Concerned& moved = concerned(bond);
    moved.riseIsKnown = false;
    if (!putsOff) {
        carry(moved);
        putsOff = !follow();
    }
    if (putsOff)
        putOff(bond);
}

void BondUpdate::setDepth(KytAtom* atom, float depth)
{
    if (depth == atom->atomZ)
        return;
    if (!putsOff) {
        change(atom, depth);
        putsOff = !follow();
    }
    if (putsOff)
        settleAt(atom, depth);
}

void BondUpdate::forget(const KytBond* bond)
{
    rings.forget();
    if (walk.hasMet(bond->mark))
        all[bond->mark.note] = {nullptr};
}

BondUpdate::Concerned& BondUpdate::concerned(KytBond* bond)
{
    if (!walk.hasMet(bond->mark)) {
        walk.meet(bond->mark, static_cast<int>(all.size()));
        all.push_back({bond});
    }
    return all[bond->mark.note];
}

float BondUpdate::depthAtEnd(Concerned& along)
{
    if (!along.riseIsKnown) {
        along.rise = along.bond->rise();
        along.riseIsKnown = true;
    }
    return along.bond->depthAtEnd(along.rise);
}

/// Gives the end atom of a bond its depth, and has it on its way from there if it changes.
void BondUpdate::carry(Concerned& along)
{
    if (!along.bond->carriesDepth())
        return;
    const float depth = depthAtEnd(along);
    KytAtom* end = along.bond->getToAtom();
    if (depth != end->atomZ && !rings.climbsAround(along.bond))
        change(end, depth);
}

void BondUpdate::change(KytAtom* atom, float depth)
{
    changes.emplace_back(atom, atom->atomZ);
    atom->atomZ = depth;
    ++changed;
    way.push_back({atom, 0});
}

/// Follows the depth that is on its way until it has come to rest; false, and nothing is changed, when that takes more
/// than is left of what the update can afford.
bool BondUpdate::follow()
{
    while (!way.empty()) {
        OnTheWay& last = way.back();
        if (last.next == last.atom->outList.size()) {
            way.pop_back();
            continue;
        }
        if (++steps > affordableSteps || rings.forgottenBonds() > affordableSteps) {
            takeBack();
            return false;
        }
        carry(concerned(last.atom->outList[last.next++]));
    }
    changes.clear();
    return true;
}

void BondUpdate::takeBack()
{
    for (; !changes.empty(); changes.pop_back())
        changes.back().first->atomZ = changes.back().second;
    way.clear();
}

bool BondUpdate::isPutOff(const KytBond* bond) const
{
    return walk.hasMet(bond->mark) && all[bond->mark.note].wasPutOff;
}

/// Gives all bonds that were put off their turn, from start atoms to end atoms. Each passes on at most once.
void BondUpdate::settle()
{
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].wasPutOff && all[i].bond->carriesDepth())
            rings.setOf(all[i].bond->getFromAtom());
    for (int set = static_cast<int>(rings.sets().size()) - 1; set >= 0; --set) {
        const RingSet& ring = rings.sets()[set];
        if (ring.atoms.size() == 1 || ring.climbs) {
            for (KytAtom* atom : ring.atoms)
                settleAtom(atom, set);
        } else {
            settleRing(ring, set);
        }
    }
}

/// Gives an atom the depth that the last of its incoming bonds from outside the set has for it.
void BondUpdate::settleAtom(KytAtom* atom, int set)
{
    KytBond* deciding = nullptr;
    for (KytBond* bond : atom->inList)
        if (isPutOff(bond) && bond->carriesDepth() && rings.setOf(bond->getFromAtom()) != set)
            deciding = bond;
    if (deciding)
        settleAt(atom, depthAtEnd(concerned(deciding)));
}

/// Gives all atoms of a ring that does not climb one depth: the last that comes from outside or, if none does, that of
/// an atom in it from which a bond was put off.
void BondUpdate::settleRing(const RingSet& ring, int set)
{
    KytBond* deciding = nullptr;
    bool isFromOutside = false;
    for (const KytAtom* atom : ring.atoms)
        for (KytBond* bond : atom->inList) {
            if (!isPutOff(bond) || !bond->carriesDepth())
                continue;
            const bool outside = rings.setOf(bond->getFromAtom()) != set;
            if (!deciding || outside || !isFromOutside)
                deciding = bond;
            isFromOutside |= outside;
        }
    if (!deciding)
        return;
    const float depth = depthAtEnd(concerned(deciding));
    for (KytAtom* atom : ring.atoms)
        settleAt(atom, depth);
}

void BondUpdate::settleAt(KytAtom* atom, float depth)
{
    if (depth == atom->atomZ)
        return;
    atom->atomZ = depth;
    for (KytBond* bond : atom->outList)
        putOff(bond);
}
