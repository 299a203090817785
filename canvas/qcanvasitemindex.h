#pragma once

#include <QList>
#include <QRect>
#include <QRectF>
#include <QSize>

#include <vector>

class QCanvasItem;

/// A spatial index of the items of a canvas.
///
/// It consists of grids of square cells over the canvas, each grid with cells twice as large as the one before. An item
/// is in one cell only: that of the centre of its rectangle, in the finest grid whose cells are at least as large as
/// the rectangle. So an item extends at most half a cell beyond its own cell, and inserting, moving and removing it
/// take constant time, however many items are close to it. Items outside the canvas are in the cells at its edges.
class QCanvasItemIndex {
public:
    /// Creates an empty index for a canvas of `extent` pixels.
    explicit QCanvasItemIndex(QSize extent);

    /// The whole pixels that `area` touches, clamped to a range in which the index cannot overflow.
    static QRect withinReach(const QRectF& area);

    /// Inserts `item`, or moves it to the cell for its current rectangle (QCanvasItem::reach).
    void update(QCanvasItem* item);
    /// Removes `item`; does nothing if it is not in the index.
    void remove(QCanvasItem* item);

    /// The items whose rectangles touch `area`, in no particular order.
    QList<QCanvasItem*> touching(const QRect& area) const;

private:
    /// One grid; its cells are stored row by row, starting at index `first`.
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

    std::vector<Grid> grids; // from the finest to a single cell, which holds items of any size
    std::vector<std::vector<QCanvasItem*>> cells;
};
