#pragma once

#include "canvas/qcanvas.h"

#include <QGraphicsItem>

/// Stands in for a canvas item in the graphics scene.
///
/// It stays at the scene's origin and its rectangles are in canvas pixels, so that a move is nothing but another
/// rectangle. It counts as visible for the scene also while the item is hidden: then it paints nothing. When the item
/// goes, the peer is abandoned and the canvas takes it out of the scene later, together with others.
class QCanvasItemPeer final : public QGraphicsItem {
public:
    explicit QCanvasItemPeer(QCanvasItem* owner);
    ~QCanvasItemPeer() override;

    /// The item; null once it has gone.
    QCanvasItem* item() const { return owner; }
    void abandon() { owner = nullptr; }

    /// To be called before the item's rectangle changes.
    void aboutToChangeShape();

    /// The item's rectangle and the fringe of antialiasing, kept within a range in which the scene computes safely.
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override;

private:
    QCanvasItem* owner;
    mutable QRectF measured;
    mutable bool stale = true;
};
