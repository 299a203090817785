#include "canvas/qcanvas.h"

#include "canvas/qcanvasitemindex.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double antialiasingFringe = 1;

quint64 nextSerial()
{
    static quint64 last = 0;
    return ++last;
}

} // namespace

QCanvasItem::QCanvasItem(QCanvas* canvas)
    : home(canvas)
    , serial(nextSerial())
{
    if (home)
        home->add(this);
}

QCanvasItem::~QCanvasItem()
{
    if (home)
        home->remove(this);
}

void QCanvasItem::move(double x, double y)
{
    moveBy(x - xPosition, y - yPosition);
}

void QCanvasItem::moveBy(double dx, double dy)
{
    const double newX = xPosition + dx;
    const double newY = yPosition + dy;
    if ((dx == 0 && dy == 0) || !std::isfinite(newX) || !std::isfinite(newY))
        return;
    aboutToChangeShape();
    xPosition = newX;
    yPosition = newY;
    changed();
}

void QCanvasItem::putAt(double x, double y)
{
    aboutToChangeShape();
    xPosition = x;
    yPosition = y;
    changed();
}

void QCanvasItem::setZ(double z)
{
    if (z == zPosition || std::isnan(z))
        return;
    zPosition = z;
    changed();
}

void QCanvasItem::setVisible(bool visible)
{
    if (visible == this->visible)
        return;
    changed();
    this->visible = visible;
    changed();
}

void QCanvasItem::setCanvas(QCanvas* canvas)
{
    if (canvas == home)
        return;
    if (home) {
        QCanvas* const former = std::exchange(home, nullptr);
        former->remove(this);
    }
    home = canvas;
    isReachStale = true;
    if (home)
        home->add(this);
    changed();
}

int QCanvasItem::rtti() const
{
    return Rtti_Item;
}

void QCanvasItem::aboutToBeCleared() { }

void QCanvasItem::aboutToChangeShape()
{
    changed();
    isReachStale = true;
}

void QCanvasItem::changed()
{
    if (!home || !visible)
        return;
    if (isReachStale)
        updateReach();
    home->markChanged(reach);
}

void QCanvasItem::updateReach()
{
    constexpr double fringe = antialiasingFringe;
    reach = QCanvasItemIndex::withinReach(boundingRect().adjusted(-fringe, -fringe, fringe, fringe));
    isReachStale = false;
    home->index->update(this);
}
