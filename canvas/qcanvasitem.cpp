#include "canvas/qcanvas.h"

#include "canvas/qcanvasitempeer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Wide enough for any drawing; narrow enough for the scene's arithmetic in ints and floats.
constexpr double farthest = 1 << 24;
constexpr double antialiasingFringe = 1;

quint64 nextSerial()
{
    static quint64 last = 0;
    return ++last;
}

QRectF withinReach(const QRectF& area)
{
    const auto bounded = [](double value) { return std::clamp(value, -farthest, farthest); };
    return QRectF(QPointF(bounded(area.left()), bounded(area.top())),
                  QPointF(bounded(area.right()), bounded(area.bottom())));
}

} // namespace

QCanvasItemPeer::QCanvasItemPeer(QCanvasItem* owner)
    : owner(owner)
{
    setFlag(ItemHasNoContents);
    setAcceptedMouseButtons(Qt::NoButton);
}

QCanvasItemPeer::~QCanvasItemPeer()
{
    if (owner)
        owner->peer = nullptr;
}

void QCanvasItemPeer::aboutToChangeShape()
{
    prepareGeometryChange();
    stale = true;
}

QRectF QCanvasItemPeer::boundingRect() const
{
    if (stale && owner) {
        constexpr double fringe = antialiasingFringe;
        measured = withinReach(owner->boundingRect().adjusted(-fringe, -fringe, fringe, fringe));
        stale = false;
    }
    return measured;
}

QCanvasItem::QCanvasItem(QCanvas* canvas)
    : serial(nextSerial())
{
    setCanvas(canvas);
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
        QCanvas* const left = std::exchange(home, nullptr);
        left->remove(this);
    }
    home = canvas;
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
    if (!peer)
        return;
    changed();
    peer->aboutToChangeShape();
}

void QCanvasItem::changed()
{
    if (peer && visible)
        home->markChanged(peer->boundingRect());
}
