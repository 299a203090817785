#pragma once

#include "canvas/qcanvas.h"

#include <QGraphicsItem>

/// Stands in for a canvas item in the graphics scene, which finds it by its rectangle and does nothing else with it.
///
/// It stays at the scene's origin and its rectangle is in canvas pixels, so that a move is nothing but another
/// rectangle. The view paints the item itself: the scene would keep a table of rectangles for each item painted, which
/// takes more memory than all the rest. When the item goes, the peer is abandoned and the canvas takes it out of the
/// scene later, together with others.
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
    void paint(QPainter*, const QStyleOptionGraphicsItem*, QWidget*) override { }

private:
    QCanvasItem* owner;
    mutable QRectF measured;
    mutable bool stale = true;
};
