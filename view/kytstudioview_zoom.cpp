#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double levels[] = {0.25, 1 / 3.0, 0.5, 2 / 3.0, 0.75, 1, 1.25, 1.5, 2, 3, 4, 6, 8};
constexpr double smallest = levels[0];
constexpr double largest = 8;
constexpr double sameLevel = 1e-6;
constexpr double stepOfWheel = 120; // QWheelEvent::angleDelta of one notch
constexpr double marginAround = 20; // screen pixels around the whole drawing

} // namespace

void KytStudioView::zoomBy(int steps, const QPointF& anchor)
{
    double factor = zoom();
    for (; steps > 0; --steps) {
        const auto* next = std::upper_bound(std::begin(levels), std::end(levels), factor + sameLevel);
        factor = next == std::end(levels) ? largest : *next;
    }
    for (; steps < 0; ++steps) {
        const auto* next = std::lower_bound(std::begin(levels), std::end(levels), factor - sameLevel);
        factor = next == std::begin(levels) ? smallest : *(next - 1);
    }
    zoomTo(factor, anchor);
}

void KytStudioView::zoomTo(double factor, const QPointF& anchor)
{
    setZoom(std::clamp(factor, smallest, largest), anchor);
    followPointer();
    emit zoomChanged();
}

void KytStudioView::zoomToDrawing()
{
    if (!canvas())
        return;
    QRectF extent;
    for (const KytAtom* atom : drawnAtoms(*canvas()))
        extent |= atom->boundingRect() | atom->canvasSymbol->boundingRect();
    extent &= QRectF(0, 0, canvas()->width(), canvas()->height());
    if (extent.isEmpty())
        return;
    const QSizeF room = QSizeF(viewport()->size()) - 2 * QSizeF(marginAround, marginAround);
    const double factor = std::min(room.width() / extent.width(), room.height() / extent.height());
    // At most full size.
    zoomTo(std::min(factor, 1.0), QPointF(0, 0));
    showInView(extent);
}

void KytStudioView::showInView(const QRectF& area)
{
    centerOn(area.center());
    followPointer();
}

void KytStudioView::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QCanvasView::wheelEvent(event);
        return;
    }
    wheelTurn += event->angleDelta().y();
    const int steps = static_cast<int>(wheelTurn / stepOfWheel);
    wheelTurn -= steps * stepOfWheel;
    if (steps != 0)
        zoomBy(steps, event->position());
    event->accept();
}

void KytStudioView::scrollContentsBy(int dx, int dy)
{
    QCanvasView::scrollContentsBy(dx, dy);
    followPointer();
}

/// Updates the highlight and the rubber band after the canvas has moved under a resting pointer.
void KytStudioView::followPointer()
{
    const std::optional<QPoint> pointer = contentsPointer();
    if (!pointer || moving)
        return;
    const QPoint p = inverseWorldMatrix().map(*pointer);
    refreshHover(p);
    if (draws(canvasState) && isDrawing() && lastAtom)
        drawRubberBand(p);
}
