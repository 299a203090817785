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
    if (rectangle)
        stretchRectangle(p);
    if (canvasState == KYTVS_view && moving)
        dragTo(p, event->modifiers());
    if (canvasState == KYTVS_rotate && moving && moving->rtti() == QCanvasItem::Rtti_Ellipse)
        rotateTo(p, event->modifiers());
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

/// Without Control, a selected atom takes the selection with it.
bool KytStudioView::movesSelection(const QCanvasItem* grabbed, Qt::KeyboardModifiers modifiers) const
{
    return selection.contains(grabbed) && !modifiers.testFlag(Qt::ControlModifier);
}

void KytStudioView::dragTo(const QPoint& p, Qt::KeyboardModifiers modifiers)
{
    const double dx = p.x() - moving_start.x();
    const double dy = p.y() - moving_start.y();
    const KytAtom* anchor = anchorOf(moving);
    if (movesSelection(moving, modifiers))
        moveAtoms(selectedAtoms(), dx, dy);
    else if (anchor && (modifiers.testFlag(Qt::ControlModifier) || anchor->locked))
        moveMolecule(*canvas(), anchor->getMolecule(), dx, dy);
    else
        moving->moveBy(dx, dy);
    moving_start = p;
}

void KytStudioView::rotateTo(const QPoint& p, Qt::KeyboardModifiers modifiers)
{
    const auto* pivot = static_cast<const KytAtom*>(moving);
    const auto angle = static_cast<float>((p.x() - _x) / pixelsPerRadian);
    if (movesSelection(pivot, modifiers))
        rotateAtoms(selectedAtoms(), *pivot, angle);
    else
        rotateMolecule(*canvas(), *pivot, angle);
    _x = p.x();
}

void KytStudioView::contentsMouseReleaseEvent(QMouseEvent* event)
{
    if (rectangle && event->button() == Qt::LeftButton && canvas()) {
        stretchRectangle(canvasPoint(event));
        selectRectangle();
    }
    const bool moved = moving != nullptr;
    const QString name = gestureName();
    if (canvas() && canvasState == KYTVS_view && moving && moving->rtti() == QCanvasItem::Rtti_Ellipse)
        dropAt(canvasPoint(event), event->modifiers());
    moving = nullptr;
    if (moved)
        recordStep(name);
}

/// Merges the dragged atom into an atom below it, if any. What has moved along is not below it.
void KytStudioView::dropAt(const QPoint& p, Qt::KeyboardModifiers modifiers)
{
    stopHover();
    auto* dropped = static_cast<KytAtom*>(moving);
    QList<KytAtom*> targets = atomsAt(p, dropped);
    if (movesSelection(dropped, modifiers))
        targets.removeIf([this](const KytAtom* target) { return selection.contains(target); });
    if (!targets.isEmpty() && targets.first()->combine(dropped))
        delete dropped;
}
