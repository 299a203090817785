#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "canvas/truncate.h"
#include "model/KytAtom.h"
#include "view/DrawingGeometry.h"
#include "view/kytstudioview.h"

#include <QMouseEvent>

#include <cmath>

/// Computes the end point of the bond or chain being drawn from the pointer position `p`, applying fixed angle and
/// length, and shows it.
void KytStudioView::drawRubberBand(const QPoint& p)
{
    const double lx = lastAtom->x();
    const double ly = lastAtom->y();
    newx = static_cast<float>(p.x());
    newy = static_cast<float>(p.y());
    float theta = findtheta(narrowed(lx), narrowed(ly), newx, newy);
    if (fixedAngleFlag) {
        float reference = 0;
        if (const KytAtom* neighbour = lastAtom->getFirstConnectedAtom())
            reference = findtheta(narrowed(lx), narrowed(ly), narrowed(neighbour->x()), narrowed(neighbour->y()));
        theta = snappedAngle(theta, reference, fixedAngleValue);
        const double radius = distance({lx, ly}, p);
        newx = narrowed(lx + radius * std::cos(double{theta}));
        newy = narrowed(ly - radius * std::sin(double{theta}));
    }
    if (fixedLengthFlag && canvasState != KYTVS_zigzag) {
        newx = narrowed(lx + fixedLengthValue * std::cos(double{theta}));
        newy = narrowed(ly - fixedLengthValue * std::sin(double{theta}));
    }
    tempBond->setPoints(truncated(lx), truncated(ly), truncated(newx), truncated(newy));
    if (canvasState == KYTVS_zigzag)
        reportChain();
    else
        reportBond();
}

/// Reports length and angle. The length of a wedge is its length in space, at the angle of a newly drawn wedge.
void KytStudioView::reportBond()
{
    double length = distance({lastAtom->x(), lastAtom->y()}, {newx, newy});
    if (drawsWedge(canvasState))
        length /= std::cos(drawnAngleInRadians);
    const double angle = shownAngle(newx - lastAtom->x(), newy - lastAtom->y());
    const QByteArray format = tr("Bond Length: %.3f  Bond Angle: %.2f").toUtf8();
    QByteArray text = QString::asprintf(format.constData(), length, angle).toUtf8();
    emit displayBondDetail(text.data());
}

void KytStudioView::drawBond(QMouseEvent* event)
{
    const bool continues = event->modifiers().testFlag(Qt::ControlModifier);
    if (!continues)
        endGesture();
    if (!lastAtom)
        return;

    KytAtom* end = targetAt(canvasPoint(event));
    if (!end)
        end = targetAt(QPoint(truncated(newx), truncated(newy)));
    if (!end && !flag) {
        end = newAtom(newx, newy, getZplane());
        end->setMolecule(lastAtom->getMolecule());
    }
    flag = false;
    if (!end)
        return;
    bondTo(end);
    if (continues)
        lastAtom = end;
}

/// The atom at `p` with the depth of a new end atom (getZplane). Sets `flag` if the start atom is found.
KytAtom* KytStudioView::targetAt(const QPoint& p)
{
    const float plane = getZplane();
    for (KytAtom* atom : atomsAt(p)) {
        if (atom == lastAtom)
            flag = true;
        else if (atom->getAtomZ() == plane)
            return atom;
    }
    return nullptr;
}

/// Adds a line to the bond between the start atom and `target`, or creates the bond.
void KytStudioView::bondTo(KytAtom* target)
{
    if (KytBond* bond = lastAtom->isConnected(target)) {
        addBond(bond, canvasState);
        return;
    }
    addBond(new KytBond(lastAtom, target, doc), canvasState);
    target->setMolecule(lastAtom->getMolecule());
}
