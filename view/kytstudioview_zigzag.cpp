#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "model/KytAtom.h"
#include "view/DrawingGeometry.h"
#include "view/kytstudioview.h"

#include <QMouseEvent>

void KytStudioView::reportChain()
{
    emit zigzagAtomValue(zigZagAtomCount({lastAtom->x(), lastAtom->y()}, {newx, newy}, fixedLengthValue));
}

void KytStudioView::drawZigZag(QMouseEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier))
        endGesture();
    if (!lastAtom)
        return;
    const ZigZag chain = zigZag({lastAtom->x(), lastAtom->y()}, {newx, newy}, fixedLengthValue);
    for (std::size_t i = 0; i < chain.steps.size(); ++i) {
        const ZigZag::Step& step = chain.steps[i];
        KytAtom* before = lastAtom;
        KytAtom* apex = chainAtom(step.apex.x(), step.apex.y(), before);
        // All connected atoms are moved to the molecule of the last apex, only once: doing so for every apex would take
        // quadratic time.
        if (i > 0 && i + 1 == chain.steps.size())
            before->setMolecule(apex->getMolecule());
        else
            apex->setMolecule(before->getMolecule());
        if (step.hasLine) {
            KytAtom* line = chainAtom(step.line.x(), step.line.y(), apex);
            line->setMolecule(apex->getMolecule());
        }
    }
}

/// Adds an atom to the chain at (x, y), at the depth of `previous` and bonded to it. The atom becomes lastAtom.
KytAtom* KytStudioView::chainAtom(double x, double y, KytAtom* previous)
{
    KytAtom* atom = newAtom(x, y, previous->getAtomZ());
    const KytBondType kind = canvasState == KYTVS_drawDashedBond ? KYTBT_DashedLine : KYTBT_SingleBond;
    (new KytBond(previous, atom, doc))->addBond(kind, drawnAngle);
    lastAtom = atom;
    return atom;
}
