#include "canvas/qcanvasitemindex.h"

#include "canvas/qcanvas.h"

#include <algorithm>

namespace {

constexpr int finestCell = 32; // pixels; a bond of usual length and its label fit in

// Wide enough for any drawing; narrow enough for arithmetic in ints.
constexpr int farthest = 1 << 24;

int cellsFor(int length, int cellSize)
{
    return std::max(1, (length + cellSize - 1) / cellSize);
}

} // namespace

QCanvasItemIndex::QCanvasItemIndex(QSize extent)
{
    int first = 0;
    for (int size = finestCell;; size *= 2) {
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
        const double bounded = std::clamp<double>(value, -farthest, farthest);
        const int whole = static_cast<int>(bounded);
        return whole - (bounded < whole);
    };
    const auto raised = [&](double value) { return -floored(-value); };
    const QPoint from(floored(area.left()), floored(area.top()));
    return {from, QSize(raised(area.right()) - from.x(), raised(area.bottom()) - from.y())};
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
                                       [](int wanted, const Grid& grid) { return wanted < grid.first; }));
}

void QCanvasItemIndex::place(QCanvasItem* item)
{
    const QPoint centre = item->reach.center();
    Grid& grid = gridFor(item->reach);
    const int cell = grid.first + grid.rowOf(centre.y()) * grid.columns + grid.columnOf(centre.x());
    if (cell == item->cell)
        return;
    remove(item);
    item->cell = cell;
    item->placeInCell = static_cast<int>(cells[cell].size());
    cells[cell].push_back(item);
    ++grid.items;
}

void QCanvasItemIndex::remove(QCanvasItem* item)
{
    if (item->cell < 0)
        return;
    std::vector<QCanvasItem*>& mates = cells[item->cell];
    mates[item->placeInCell] = mates.back();
    mates[item->placeInCell]->placeInCell = item->placeInCell;
    mates.pop_back();
    --gridOf(item->cell).items;
    item->cell = -1;
}

QList<QCanvasItem*> QCanvasItemIndex::touching(const QRect& area) const
{
    QList<QCanvasItem*> found;
    const QRect wanted = withinReach(area);
    for (const Grid& grid : grids) {
        if (grid.items == 0)
            continue;
        const int beyond = grid.cellSize / 2;
        const QRect around = wanted.adjusted(-beyond, -beyond, beyond, beyond);
        for (int row = grid.rowOf(around.top()); row <= grid.rowOf(around.bottom()); ++row)
            for (int column = grid.columnOf(around.left()); column <= grid.columnOf(around.right()); ++column)
                for (QCanvasItem* item : cells[grid.first + row * grid.columns + column])
                    if (item->reach.intersects(wanted))
                        found.append(item);
    }
    return found;
}
