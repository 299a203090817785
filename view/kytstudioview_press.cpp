#include "app/KytAtomProperties.h"
#include "app/KytBondProperties.h"
#include "bonds/KytStereoBond.h"
#include "model/KytAtom.h"
#include "view/StepNames.h"
#include "view/kytstudioview.h"

#include <QMouseEvent>
#include <QPointer>

void KytStudioView::contentsMousePressEvent(QMouseEvent* event)
{
    if (!canvas() || !doc)
        return;
    const QPoint p = canvasPoint(event);
    if (event->button() == Qt::RightButton) {
        settleGesture();
        moving = nullptr;
        openProperties(p);
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;

    if (!draws(canvasState)) {
        settleGesture();
        const bool adds = event->modifiers().testFlag(Qt::ShiftModifier)
            && !event->modifiers().testFlag(Qt::ControlModifier) && canvasState == KYTVS_view;
        if (adds && selectAt(p))
            return;
        if (!selection.isEmpty() && itemsAt(p).isEmpty())
            clearSelection();
    }
    if (canvasState == KYTVS_deleteItem) {
        deleteTopmost(p);
        recordStep(stepName(canvasState));
    } else if (draws(canvasState) && !isDrawing()) {
        startDrawing(p);
    } else if (drawsBond(canvasState)) {
        drawBond(event);
        recordStep(stepName(canvasState));
    } else if (canvasState == KYTVS_zigzag) {
        drawZigZag(event);
        emit zigzagAtomValue(0);
        recordStep(stepName(canvasState));
    } else if (canvasState == KYTVS_view)
        grabItem(p);
    else if (canvasState == KYTVS_rotate)
        grabPivot(p);
}

/// Opens the dialogs of all atoms and wedges at `p`, one after the other. Items, and the view itself, may be deleted
/// while a dialog is open; deleted items are skipped.
void KytStudioView::openProperties(const QPoint& p)
{
    QCanvasItemList items = itemsAt(p);
    const QPointer<KytStudioView> self(this);
    const auto record = [&self](const QString& name) {
        if (self)
            self->recordStep(name);
    };
    const QObject watch;
    connect(canvas(), &QCanvas::itemGone, &watch, [&items](QCanvasItem* item) { items.removeAll(item); });
    while (!items.isEmpty()) {
        QCanvasItem* item = items.takeFirst();
        if (item->rtti() == QCanvasItem::Rtti_Ellipse) {
            KytAtomProperties dialog;
            dialog.setAtom(static_cast<KytAtom*>(item));
            dialog.exec();
            record(dialog.windowTitle());
        } else if (item->rtti() == QCanvasItem::Rtti_Polygon) {
            KytBondProperties dialog;
            dialog.setBond(static_cast<KytStereoBond*>(item));
            dialog.exec();
            record(dialog.windowTitle());
        }
    }
}

/// The topmost item at `p`, unless it is a label; else null.
QCanvasItem* KytStudioView::deletableAt(const QPoint& p) const
{
    const QCanvasItemList items = itemsAt(p);
    return items.isEmpty() || items.first()->rtti() == QCanvasItem::Rtti_Text ? nullptr : items.first();
}

/// Deletes the topmost item at `p`, unless it is a label. The hit test comes before stopHover(), which shrinks an atom.
void KytStudioView::deleteTopmost(const QPoint& p)
{
    QCanvasItem* item = deletableAt(p);
    stopHover();
    if (item && item->rtti() == QCanvasItem::Rtti_Polygon)
        static_cast<KytStereoBond*>(item)->deleteBond();
    else
        delete item;
}

/// The first click: the atom at `p`, or a new atom, becomes the start atom.
void KytStudioView::startDrawing(const QPoint& p)
{
    isLastAtom = 1;
    drawingState = canvasState;
    drawingHasSteps = false;
    newx = static_cast<float>(p.x());
    newy = static_cast<float>(p.y());
    tempBond->setPoints(0, 0, 0, 0);
    tempBond->show();
    lastAtom = atomAt(p);
    if (!lastAtom)
        lastAtom = newAtom(p.x(), p.y(), 0.0F);
}

void KytStudioView::grabItem(const QPoint& p)
{
    const QCanvasItemList items = itemsAt(p);
    moving = items.isEmpty() ? nullptr : items.first();
    if (moving)
        moving_start = p;
}

/// Grabs the atom at `p` as the centre of rotation. The first rotation step is measured from the centre of the atom.
void KytStudioView::grabPivot(const QPoint& p)
{
    moving = atomAt(p);
    if (moving)
        _x = moving->x();
}
