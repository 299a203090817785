#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "model/KytAtom.h"
#include "model/MoleculeMotion.h"
#include "view/kytstudioview.h"

#include <QMouseEvent>

#include <algorithm>

namespace {

constexpr double pixelsPerRadian = 10.0; // of horizontal pointer movement while rotating

/// The atom that determines lock and molecule of a grabbed item: the atom itself or the start atom of the bond; null
/// for a label.
const KytAtom* anchorOf(const QCanvasItem* item)
{
    if (item->rtti() == QCanvasItem::Rtti_Ellipse)
        return static_cast<const KytAtom*>(item);
    if (item->rtti() == QCanvasItem::Rtti_Polygon)
        return static_cast<const KytStereoBond*>(item)->getBond()->getFromAtom();
    if (item->rtti() == QCanvasItem::Rtti_Line)
        return static_cast<const KytBondLine*>(item)->getBond()->getFromAtom();
    return nullptr;
}

} // namespace

void KytStudioView::contentsMouseMoveEvent(QMouseEvent* event)
{
    if (!canvas() || !doc)
        return;
    const QPoint p = canvasPoint(event);
    refreshHover(p);
    if (draws(canvasState) && isLastAtom && lastAtom)
        drawRubberBand(p);
    if (canvasState == KYTVS_view && moving)
        dragTo(p, event->modifiers().testFlag(Qt::ControlModifier));
    if (canvasState == KYTVS_rotate && moving && moving->rtti() == QCanvasItem::Rtti_Ellipse)
        rotateTo(p);
}

void KytStudioView::refreshHover(const QPoint& p)
{
    const QCanvasItemList items = itemsAt(p);
    noteAtomsUnderPointer(items);
    if (!items.isEmpty() && items.first() == hover)
        return;
    stopHover();
    startHover(p);
}

void KytStudioView::noteAtomsUnderPointer(const QCanvasItemList& items)
{
    const auto isAtom = [](const QCanvasItem* item) { return item->rtti() == QCanvasItem::Rtti_Ellipse; };
    const auto first = std::find_if(items.begin(), items.end(), isAtom);
    const auto* atom = first == items.end() ? nullptr : static_cast<const KytAtom*>(*first);
    const auto atoms = static_cast<int>(std::count_if(items.begin(), items.end(), isAtom));
    if (atom == atomUnderPointer && atoms == atomsUnderPointer)
        return;
    atomUnderPointer = atom;
    atomsUnderPointer = atoms;
    emit pointerOver(atom, atoms);
}

void KytStudioView::dragTo(const QPoint& p, bool wholeMolecule)
{
    const double dx = p.x() - moving_start.x();
    const double dy = p.y() - moving_start.y();
    const KytAtom* anchor = anchorOf(moving);
    if (anchor && (wholeMolecule || anchor->locked))
        moveMolecule(*canvas(), anchor->getMolecule(), dx, dy);
    else
        moving->moveBy(dx, dy);
    moving_start = p;
}

void KytStudioView::rotateTo(const QPoint& p)
{
    const auto* pivot = static_cast<const KytAtom*>(moving);
    rotateMolecule(*canvas(), *pivot, static_cast<float>((p.x() - _x) / pixelsPerRadian));
    _x = p.x();
}

void KytStudioView::contentsMouseReleaseEvent(QMouseEvent* event)
{
    const bool moved = moving != nullptr;
    const QString name = gestureName();
    if (canvas() && canvasState == KYTVS_view && moving && moving->rtti() == QCanvasItem::Rtti_Ellipse)
        dropAt(canvasPoint(event));
    moving = nullptr;
    if (moved)
        recordStep(name);
}

/// Merges the dragged atom into an atom below it, if any.
void KytStudioView::dropAt(const QPoint& p)
{
    stopHover();
    auto* dropped = static_cast<KytAtom*>(moving);
    KytAtom* target = atomsAt(p, dropped).value(0);
    if (target && target->combine(dropped))
        delete dropped;
}
