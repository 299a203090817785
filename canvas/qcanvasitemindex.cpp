#include "canvas/qcanvasitemindex.h"

#include "canvas/qcanvas.h"

#include <algorithm>

namespace {

constexpr int smallestCell = 32; // pixels; large enough for a bond of usual length and a label

// Large enough for any drawing; small enough to avoid integer overflow.
constexpr int largestCoordinate = 1 << 24;

int cellsFor(int length, int cellSize)
{
    return std::max(1, (length + cellSize - 1) / cellSize);
}

} // namespace

QCanvasItemIndex::QCanvasItemIndex(QSize extent)
{
    int first = 0;
    for (int size = smallestCell;; size *= 2) {
        grids.push_back({size, cellsFor(extent.width(), size), cellsFor(extent.height(), size), first});
        const int count = grids.back().columns * grids.back().rows;
        first += count;
        if (count == 1)
            break;
    }
    cells.resize(static_cast<std::size_t>(first));
}

QRect QCanvasItemIndex::withinReach(const QRectF& area)
{
    const auto floored = [](double value) {
        const double bounded = std::clamp<double>(value, -largestCoordinate, largestCoordinate);
        const int whole = static_cast<int>(bounded);
        return whole - (bounded < whole);
    };
    const auto ceiled = [&](double value) { return -floored(-value); };
    const QPoint from(floored(area.left()), floored(area.top()));
    return {from, QSize(ceiled(area.right()) - from.x(), ceiled(area.bottom()) - from.y())};
}

int QCanvasItemIndex::Grid::columnOf(int x) const
{
    return std::clamp(x / cellSize, 0, columns - 1);
}

int QCanvasItemIndex::Grid::rowOf(int y) const
{
    return std::clamp(y / cellSize, 0, rows - 1);
}

QCanvasItemIndex::Grid& QCanvasItemIndex::gridFor(const QRect& reach)
{
    const int longest = std::max(reach.width(), reach.height());
    return *std::find_if(grids.begin(), grids.end() - 1, [&](const Grid& grid) { return grid.cellSize >= longest; });
}

QCanvasItemIndex::Grid& QCanvasItemIndex::gridOf(int cell)
{
    return *std::prev(std::upper_bound(grids.begin(), grids.end(), cell,
                                       [](int value, const Grid& grid) { return value < grid.first; }));
}

void QCanvasItemIndex::update(QCanvasItem* item)
{
    const QPoint centre = item->reach.center();
    Grid& grid = gridFor(item->reach);
    const int cell = grid.first + grid.rowOf(centre.y()) * grid.columns + grid.columnOf(centre.x());
    if (cell == item->cell)
        return;
    remove(item);
    item->cell = cell;
    item->indexInCell = static_cast<int>(cells[cell].size());
    cells[cell].push_back(item);
    ++grid.items;
}

void QCanvasItemIndex::remove(QCanvasItem* item)
{
    if (item->cell < 0)
        return;
    std::vector<QCanvasItem*>& items = cells[item->cell];
    items[item->indexInCell] = items.back();
    items[item->indexInCell]->indexInCell = item->indexInCell;
    items.pop_back();
    --gridOf(item->cell).items;
    item->cell = -1;
}

QList<QCanvasItem*> QCanvasItemIndex::touching(const QRect& area) const
{
    QList<QCanvasItem*> found;
    const QRect target = withinReach(area);
    for (const Grid& grid : grids) {
        if (grid.items == 0)
            continue;
        const int margin = grid.cellSize / 2;
        const QRect searched = target.adjusted(-margin, -margin, margin, margin);
        for (int row = grid.rowOf(searched.top()); row <= grid.rowOf(searched.bottom()); ++row)
            for (int column = grid.columnOf(searched.left()); column <= grid.columnOf(searched.right()); ++column)
                for (QCanvasItem* item : cells[grid.first + row * grid.columns + column])
                    if (item->reach.intersects(target))
                        found.append(item);
    }
    return found;
}
