#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QPainter>
#include <QTimer>

#include <utility>

// Selecting atoms, and how it looks.

namespace {

constexpr QColor rectangleColor(235, 242, 255);
constexpr QColor edgeColor(70, 120, 220);

} // namespace

QList<KytAtom*> KytStudioView::selectedAtoms() const
{
    return canvas() ? selection.atoms(*canvas()) : QList<KytAtom*>();
}

void KytStudioView::select(const QList<KytAtom*>& atoms)
{
    if (!canvas())
        return;
    Selection chosen;
    chosen.add(atoms, *canvas());
    setSelection(chosen);
}

void KytStudioView::selectAll()
{
    if (canvas())
        select(drawnAtoms(*canvas()));
}

void KytStudioView::clearSelection()
{
    setSelection({});
}

void KytStudioView::setSelection(const Selection& chosen)
{
    if (chosen == selection)
        return;
    selection = chosen;
    viewport()->update();
    emit selectionChanged();
}

/// Shift with the left button in View Mode: selects or deselects the atom at `p`, or begins a rectangle on empty paper.
/// Returns false if there is something else.
bool KytStudioView::selectAt(const QPoint& p)
{
    if (KytAtom* atom = atomAt(p)) {
        Selection chosen = selection;
        chosen.toggle(atom, *canvas());
        setSelection(chosen);
        return true;
    }
    if (!itemsAt(p).isEmpty())
        return false;
    rectangle = QLine(p, p);
    return true;
}

void KytStudioView::stretchRectangle(const QPoint& p)
{
    updateRectangle();
    rectangle->setP2(p);
    updateRectangle();
}

/// Adds the atoms within the rectangle to the selection.
void KytStudioView::selectRectangle()
{
    const QRectF area = rectangleArea();
    endRectangle();
    QList<KytAtom*> inside = drawnAtoms(*canvas());
    inside.removeIf([&area](const KytAtom* atom) { return !area.contains(atom->x(), atom->y()); });
    Selection chosen = selection;
    chosen.add(inside, *canvas());
    setSelection(chosen);
}

void KytStudioView::endRectangle()
{
    if (!rectangle)
        return;
    updateRectangle();
    rectangle.reset();
}

QRectF KytStudioView::rectangleArea() const
{
    return QRectF(rectangle->p1(), rectangle->p2()).normalized();
}

/// Repaints the rectangle with its edge.
void KytStudioView::updateRectangle()
{
    viewport()->update(mapFromScene(rectangleArea()).boundingRect().adjusted(-2, -2, 2, 2));
}

/// An atom that goes leaves the selection. Many may go at once; this is told once for all of them.
void KytStudioView::deselectGone(const QCanvasItem* item)
{
    if (!selection.forget(item))
        return;
    viewport()->update();
    if (!std::exchange(selectionIsStale, true))
        QTimer::singleShot(0, this, [this] {
            selectionIsStale = false;
            emit selectionChanged();
        });
}

/// A halo reaches beyond the area that its atom repaints.
void KytStudioView::repaintHalos(const QRegion& region)
{
    if (selection.isEmpty())
        return;
    const double margin = Selection::reach(zoom()) + 1;
    for (const QRect& area : region)
        viewport()->update(mapFromScene(QRectF(area).adjusted(-margin, -margin, margin, margin)).boundingRect());
}

void KytStudioView::drawBelow(QPainter& painter, const QRect& area)
{
    if (rectangle) {
        painter.setBrush(rectangleColor);
        painter.setPen(QPen(edgeColor, 0)); // one screen pixel
        painter.drawRect(rectangleArea());
    }
    if (!selection.isEmpty())
        selection.paint(painter, area, zoom());
}
