#include "bonds/BondUpdate.h"
#include "bonds/KytBond.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <QSet>
#include <QVarLengthArray>

#include <cmath>
#include <numbers>
#include <utility>

namespace {

constexpr float mergeableDepth = 1.0F; // maximum depth difference for merging atoms of one molecule

/// Whether all bonds of `atom` are with `partner`.
bool isBondedOnlyTo(const KytAtom* atom, const KytAtom* partner)
{
    for (const KytBond* bond : atom->inList)
        if (bond->getFromAtom() != partner)
            return false;
    for (const KytBond* bond : atom->outList)
        if (bond->getToAtom() != partner)
            return false;
    return true;
}

QSet<KytAtom*> neighboursOf(const KytAtom* atom)
{
    QSet<KytAtom*> neighbours;
    for (const KytBond* bond : atom->inList)
        neighbours.insert(bond->getFromAtom());
    for (const KytBond* bond : atom->outList)
        neighbours.insert(bond->getToAtom());
    return neighbours;
}

/// Gives each piece that one of `atoms` belongs to a molecule of its own, in the order of the atoms.
template <typename Atoms> void separate(const Atoms& atoms)
{
    QSet<KytMolecule*> pieces;
    for (KytAtom* atom : atoms) {
        if (pieces.contains(atom->molecule))
            continue;
        auto* piece = new KytMolecule;
        atom->setMolecule(piece);
        pieces.insert(piece);
    }
}

/// Takes all bonds of `atoms` off the drawing. Returns the atoms at their other ends.
QList<KytAtom*> deleteBondsOf(const QList<KytAtom*>& atoms)
{
    const QSet<KytAtom*> going(atoms.begin(), atoms.end());
    QSet<KytAtom*> known = going;
    QList<KytAtom*> neighbours;
    QList<KytBond*> bonds;
    const GraphWalk walk(GraphWalk::Marks::Bonds);
    for (KytAtom* atom : atoms) {
        for (const QList<KytBond*>& list : {std::exchange(atom->inList, {}), std::exchange(atom->outList, {})}) {
            for (KytBond* bond : list) {
                if (walk.hasVisited(bond->mark))
                    continue;
                walk.visit(bond->mark);
                bonds.append(bond);
                for (KytAtom* end : {bond->getFromAtom(), bond->getToAtom()}) {
                    if (!end || known.contains(end))
                        continue;
                    known.insert(end);
                    neighbours.append(end);
                }
            }
        }
    }
    const auto isGoing = [&walk](const KytBond* bond) { return walk.hasVisited(bond->mark); };
    for (KytAtom* neighbour : neighbours) {
        neighbour->inList.removeIf(isGoing);
        neighbour->outList.removeIf(isGoing);
    }
    for (KytBond* bond : bonds) {
        bond->setFromAtom(nullptr);
        bond->setToAtom(nullptr);
        delete bond;
    }
    return neighbours;
}

} // namespace

void deleteAtoms(const QList<KytAtom*>& atoms)
{
    const QList<KytAtom*> neighbours = deleteBondsOf(atoms);
    qDeleteAll(atoms);
    separate(neighbours);
}

double findinclination(double x1, double y1, double x2, double y2)
{
    const double t = x1 == x2 ? std::numbers::pi / 2 : std::atan((y2 - y1) / (x2 - x1));
    if (x2 < x1 && y2 > y1)
        return t + std::numbers::pi;
    if (x2 < x1 && y2 < y1)
        return t - std::numbers::pi;
    return t;
}

void KytAtom::moveBy(double dx, double dy)
{
    BondUpdate update;
    moveBy(dx, dy, update);
}

void KytAtom::moveBy(double dx, double dy, BondUpdate& update)
{
    if (!std::isfinite(dx) || !std::isfinite(dy))
        return;
    QCanvasEllipse::moveBy(dx, dy);
    for (const QList<KytBond*>* bonds : {&inList, &outList})
        for (const KytBond* bond : *bonds)
            update.forgetRise(bond);
    updateBonds(update);
    canvasSymbol->moveBy(dx, dy);
}

void KytAtom::move(double x, double y)
{
    BondUpdate update;
    move(x, y, update);
}

// Intentional: the bonds are updated twice. Where propagation paths disagree about a depth, the second update decides.
// It is skipped if the first one changed no depth, because it would have no effect.
void KytAtom::move(double x, double y, BondUpdate& update)
{
    const qint64 changesBefore = update.depthChanges();
    moveBy(x - this->x(), y - this->y(), update);
    if (update.depthChanges() != changesBefore)
        updateBonds(update);
    canvasSymbol->move(x, y);
}

void KytAtom::updateBonds(BondUpdate& update)
{
    for (KytBond* bond : inList)
        bond->setToAtom(this, update);
    for (KytBond* bond : outList)
        bond->setFromAtom(this, update);
}

void KytAtom::rotateAbout(double cx, double cy, float angle)
{
    BondUpdate update;
    rotateAbout(cx, cy, angle, update);
}

void KytAtom::rotateAbout(double cx, double cy, float angle, BondUpdate& update)
{
    const double radius = std::sqrt((x() - cx) * (x() - cx) + (y() - cy) * (y() - cy));
    const double direction = angle + findinclination(cx, cy, x(), y());
    move(std::cos(direction) * radius + cx, std::sin(direction) * radius + cy, update);
}

bool KytAtom::deleteBond(KytBond* bond)
{
    inList.removeAll(bond);
    outList.removeAll(bond);
    return inList.isEmpty() && outList.isEmpty();
}

void KytAtom::transferBonds(KytAtom* target)
{
    BondUpdate update;
    QSet<KytAtom*> bonded = neighboursOf(target);
    for (KytBond* bond : std::exchange(inList, {})) {
        KytAtom* from = bond->getFromAtom();
        if (bonded.contains(from)) {
            bond->setToAtom(nullptr);
            update.forget(bond);
            delete bond;
        } else {
            bonded.insert(from);
            target->addInBond(bond);
            bond->setToAtom(target, update);
        }
    }
    for (KytBond* bond : std::exchange(outList, {})) {
        KytAtom* to = bond->getToAtom();
        if (bonded.contains(to)) {
            bond->setFromAtom(nullptr);
            update.forget(bond);
            delete bond;
        } else {
            bonded.insert(to);
            target->addOutBond(bond);
            bond->setFromAtom(target, update);
        }
    }
}

bool KytAtom::combine(KytAtom* other)
{
    if (other == this)
        return false;
    if (std::fabs(atomZ - other->atomZ) > mergeableDepth && molecule == other->molecule)
        return false;
    if (isBondedOnlyTo(this, other) && isBondedOnlyTo(other, this))
        return true;

    other->setMolecule(molecule);
    other->setAtomZ(atomZ);
    other->transferBonds(this);
    if (other->deleted == 0)
        delete other;
    const QList<KytBond*> bonds = inList;
    for (KytBond* bond : bonds)
        if (bond->getFromAtom() == this)
            delete bond;
    spreadMolecule();
    return false;
}

/// Deletes all bonds of the atom and gives each piece that remains its own molecule.
void KytAtom::deleteAllBonds()
{
    QVarLengthArray<KytBond*, 8> bonds;
    {
        const GraphWalk walk(GraphWalk::Marks::Bonds);
        for (const QList<KytBond*>& list : {std::exchange(inList, {}), std::exchange(outList, {})})
            for (KytBond* bond : list) {
                if (!walk.hasVisited(bond->mark))
                    bonds.append(bond);
                walk.visit(bond->mark);
            }
    }
    QVarLengthArray<KytAtom*, 8> neighbours;
    for (KytBond* bond : bonds) {
        KytAtom* neighbour = bond->getFromAtom() == this ? bond->getToAtom() : bond->getFromAtom();
        if (neighbour && neighbour != this)
            neighbours.append(neighbour);
        if (bond->getToAtom() == this)
            bond->setToAtom(nullptr);
        if (bond->getFromAtom() == this)
            bond->setFromAtom(nullptr);
        delete bond;
    }

    separate(neighbours);
}

/// Removes bonds from the incoming lists. Each bond is then deleted through its start atom, without searching the list
/// of its end atom, so that clearing takes linear time.
void KytAtom::aboutToBeCleared()
{
    inList.removeIf([this](KytBond* bond) {
        const KytAtom* from = bond->getFromAtom();
        if (!from || from == this || from->canvas() != canvas())
            return false;
        bond->setToAtom(nullptr);
        return true;
    });
}
