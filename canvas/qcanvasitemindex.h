#pragma once

#include <QList>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <vector>

class QCanvasItem;

/// Finds the items of a canvas by where they are.
///
/// Grids of square cells lie over the canvas, each twice as coarse as the one before. An item stands in one cell: that
/// of its rectangle's centre, in the finest grid whose cells are no smaller than the rectangle. So it reaches at most
/// half a cell beyond its own, and placing, moving and removing it take constant time however many items crowd around
/// it. What lies outside the canvas stands in the cells at its rim.
class QCanvasItemIndex {
public:
    /// An index without items for a canvas of `extent` pixels.
    explicit QCanvasItemIndex(QSize extent);

    /// The whole pixels that `area` touches, kept within a range in which the index computes safely.
    static QRect withinReach(const QRectF& area);

    /// Puts `item`, whose rectangle is known (QCanvasItem::reach), where it belongs.
    void place(QCanvasItem* item);
    /// Takes `item` out; nothing when it is not in.
    void remove(QCanvasItem* item);

    /// The items whose rectangles touch `area`, in no order.
    QList<QCanvasItem*> touching(const QRect& area) const;

private:
    /// One grid: its cells stand row by row from `first` on.
    struct Grid {
        int cellSize; // pixels
        int columns;
        int rows;
        int first;
        int items = 0;

        int columnOf(int x) const;
        int rowOf(int y) const;
    };

    Grid& gridFor(const QRect& reach);
    Grid& gridOf(int cell);

    std::vector<Grid> grids; // from the finest to the one that is a single cell, where anything fits
    std::vector<std::vector<QCanvasItem*>> cells;
};
