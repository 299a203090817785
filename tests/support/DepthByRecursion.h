#pragma once

#include "bonds/KytBond.h"
#include "bonds/KytStereoBond.h"
#include "model/KytAtom.h"

#include <QList>
#include <QSet>

#include <cmath>
#include <map>
#include <numbers>
#include <set>

/// How depth travels, as plain recursion on a record of its own: an atom whose depth really changes lays out its
/// outgoing bonds one by one, and each gives its end atom a depth. Takes as long as there are ways through the drawing.
class DepthByRecursion {
public:
    explicit DepthByRecursion(const QList<KytAtom*>& atoms)
    {
        for (KytAtom* atom : atoms)
            depth[atom] = atom->atomZ;
    }

    void set(KytAtom* atom, float z)
    {
        if (depth.at(atom) == z)
            return;
        depth[atom] = z;
        for (KytBond* bond : std::as_const(atom->outList))
            layOut(bond);
    }

    void layOut(KytBond* bond)
    {
        laidOut.insert(bond);
        if (!carries(bond) || climbsAround(bond))
            return;
        const float start = depth.at(bond->fromAtom);
        if (!bond->stereoBond) {
            set(bond->toAtom, start);
            return;
        }
        const double dx = bond->toAtom->x() - bond->fromAtom->x();
        const double dy = bond->toAtom->y() - bond->fromAtom->y();
        const double rise = std::tan(bond->stereoBond->pangle * std::numbers::pi / 180) * std::sqrt(dx * dx + dy * dy);
        set(bond->toAtom, float(start + rise));
    }

    /// What follows from a move of `atom`, which has been moved already.
    void moved(KytAtom* atom)
    {
        for (KytBond* bond : std::as_const(atom->inList))
            layOut(bond);
        for (KytBond* bond : std::as_const(atom->outList))
            layOut(bond);
    }

    std::map<KytAtom*, float> depth;
    std::set<KytBond*> laidOut;

private:
    static bool carries(const KytBond* bond)
    {
        return bond->bondCount >= 1 && bond->bondCount <= 3 && !bond->toAtom->locked;
    }

    /// Whether the bond lies in a directed ring, and a wedge with an angle does that can be reached from the ring and
    /// from which the ring can be reached.
    bool climbsAround(const KytBond* bond) const
    {
        const QSet<KytAtom*> behind = reachedFrom(bond->toAtom);
        if (!behind.contains(bond->fromAtom))
            return false;
        for (KytAtom* atom : behind)
            for (const KytBond* other : std::as_const(atom->outList))
                if (carries(other) && other->stereoBond && other->stereoBond->pangle != 0
                    && reachedFrom(other->toAtom).contains(bond->fromAtom))
                    return true;
        return false;
    }

    static QSet<KytAtom*> reachedFrom(KytAtom* start)
    {
        QSet<KytAtom*> reached{start};
        QList<KytAtom*> open{start};
        while (!open.isEmpty())
            for (const KytBond* bond : std::as_const(open.takeLast()->outList))
                if (carries(bond) && !reached.contains(bond->toAtom)) {
                    reached.insert(bond->toAtom);
                    open.append(bond->toAtom);
                }
        return reached;
    }
};
