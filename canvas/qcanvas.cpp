#include "canvas/qcanvas.h"

#include "canvas/qcanvasitemindex.h"

#include <QGraphicsScene>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// With more rectangles than this, their bounding rectangle is repainted instead.
constexpr std::size_t maxChangedAreas = 64;

} // namespace

QCanvas::QCanvas(int width, int height)
    : scene(std::make_unique<QGraphicsScene>())
{
    repaintTimer.setSingleShot(true);
    repaintTimer.setInterval(0);
    connect(&repaintTimer, &QTimer::timeout, this, &QCanvas::update);
    resize(width, height);
}

QCanvas::~QCanvas()
{
    while (entries.size() > removedItems) {
        std::vector<Entry> ellipses;
        std::vector<Entry> others;
        for (const Entry& entry : entries)
            if (entry.item)
                (entry.item->rtti() == QCanvasItem::Rtti_Ellipse ? ellipses : others).push_back(entry);
        ellipses.insert(ellipses.end(), others.begin(), others.end());
        deleteEntries(ellipses);
    }
}

int QCanvas::width() const
{
    return extent.width();
}

int QCanvas::height() const
{
    return extent.height();
}

QSize QCanvas::size() const
{
    return extent;
}

void QCanvas::resize(int width, int height)
{
    markChanged(area());
    extent = QSize(width, height).expandedTo(QSize(0, 0));
    // With an empty rectangle, the scene would use its items' bounding rectangle.
    scene->setSceneRect(QRectF(0, 0, std::max(extent.width(), 1), std::max(extent.height(), 1)));
    index = std::make_unique<QCanvasItemIndex>(extent);
    for (const Entry& entry : entries) {
        if (!entry.item || entry.item->cell < 0)
            continue;
        entry.item->cell = -1;
        index->update(entry.item);
    }
    markChanged(area());
}

QColor QCanvas::backgroundColor() const
{
    return background;
}

void QCanvas::setBackgroundColor(const QColor& color)
{
    background = color;
    markChanged(area());
}

bool QCanvas::doubleBuffering() const
{
    return buffered;
}

void QCanvas::setDoubleBuffering(bool on)
{
    buffered = on;
}

int QCanvas::advancePeriod() const
{
    return repaintTimer.interval();
}

void QCanvas::setAdvancePeriod(int milliseconds)
{
    repaintTimer.setInterval(std::max(milliseconds, 0));
}

void QCanvas::update()
{
    repaintTimer.stop();
    if (changedAreas.empty())
        return;
    QRegion region;
    for (const QRect& rectangle : std::exchange(changedAreas, {}))
        region += rectangle;
    emit changed(region);
}

QCanvasItemList QCanvas::allItems() const
{
    QCanvasItemList list;
    list.reserve(static_cast<qsizetype>(entries.size() - removedItems));
    for (const Entry& entry : entries)
        if (entry.item)
            list.append(entry.item);
    return list;
}

QCanvasItemList QCanvas::itemsOfKind(int rtti) const
{
    if (!cachedKind || cachedKind->rtti != rtti) {
        cachedKind = Kind{rtti, {}};
        for (const Entry& entry : entries)
            if (entry.isOfKind(rtti))
                cachedKind->items.append(entry.item);
    }
    return cachedKind->items;
}

QCanvasItem* QCanvas::itemOfRank(quint64 rank) const
{
    const auto found = const_cast<QCanvas*>(this)->findEntry(rank);
    return found != entries.end() && found->serial == rank ? found->item : nullptr;
}

void QCanvas::restoreRanks(const std::vector<std::pair<QCanvasItem*, quint64>>& ranks)
{
    if (ranks.empty())
        return;
    std::vector<Entry> restored;
    for (const auto& [item, rank] : ranks) {
        findEntry(item->serial)->item = nullptr;
        restored.push_back({rank, item});
    }
    for (const Entry& entry : restored) {
        entry.item->serial = entry.serial;
        entry.item->changed();
    }
    const auto bySerial = [](const Entry& a, const Entry& b) { return a.serial < b.serial; };
    std::sort(restored.begin(), restored.end(), bySerial);
    std::erase_if(entries, [](const Entry& entry) { return !entry.item; });
    removedItems = 0;
    const auto middle = entries.insert(entries.end(), restored.begin(), restored.end());
    std::inplace_merge(entries.begin(), middle, entries.end(), bySerial);
    cachedKind.reset();
}

QCanvasItemList QCanvas::collisions(const QPoint& p) const
{
    const QPointF centre(p.x() + 0.5, p.y() + 0.5);
    QCanvasItemList hit = visibleItems(QRect(p, p));
    hit.removeIf([&](const QCanvasItem* item) { return !item->hits(centre); });
    std::reverse(hit.begin(), hit.end());
    return hit;
}

QCanvasItemList QCanvas::itemsWithin(const QPoint& p, int radius) const
{
    QCanvasItemList open = visibleItems(QRect(p, p).adjusted(-radius, -radius, radius, radius));
    std::reverse(open.begin(), open.end());
    std::vector<QPoint> steps;
    for (int x = -radius; x <= radius; ++x)
        for (int y = -radius; y <= radius; ++y)
            if (x * x + y * y <= radius * radius)
                steps.emplace_back(x, y);
    const auto squared = [](const QPoint& step) { return QPoint::dotProduct(step, step); };
    std::stable_sort(steps.begin(), steps.end(),
                     [&](const QPoint& a, const QPoint& b) { return squared(a) < squared(b); });
    QCanvasItemList found;
    for (auto step = steps.begin(); step != steps.end() && !open.isEmpty(); ++step) {
        const QPointF centre(p.x() + step->x() + 0.5, p.y() + step->y() + 0.5);
        const auto hit = [&](const QCanvasItem* item) { return item->hits(centre); };
        std::copy_if(open.begin(), open.end(), std::back_inserter(found), hit);
        open.removeIf(hit);
    }
    return found;
}

QCanvasItemList QCanvas::visibleItems(const QRect& area) const
{
    QCanvasItemList found = index->touching(area);
    found.removeIf([](const QCanvasItem* item) { return !item->isVisible(); });
    std::sort(found.begin(), found.end(), [](const QCanvasItem* a, const QCanvasItem* b) {
        return a->z() != b->z() ? a->z() < b->z() : a->serial < b->serial;
    });
    return found;
}

void QCanvas::paint(QPainter& painter, const QRect& area) const
{
    for (QCanvasItem* item : visibleItems(area))
        item->draw(painter);
}

void QCanvas::deleteItems(int rtti)
{
    std::vector<Entry> chosen;
    for (const Entry& entry : entries)
        if (entry.isOfKind(rtti))
            chosen.push_back(entry);
    deleteEntries(chosen);
}

bool QCanvas::Entry::isOfKind(int rtti) const
{
    if (item && kind < 0)
        kind = item->rtti();
    return item && kind == rtti;
}

std::vector<QCanvas::Entry>::iterator QCanvas::findEntry(quint64 serial)
{
    return std::lower_bound(entries.begin(), entries.end(), serial,
                            [](const Entry& entry, quint64 value) { return entry.serial < value; });
}

bool QCanvas::contains(const Entry& entry) const
{
    const auto found = const_cast<QCanvas*>(this)->findEntry(entry.serial);
    return found != entries.end() && found->serial == entry.serial && found->item;
}

// Deleting an item may delete others, so each is looked up again before it is accessed.
void QCanvas::deleteEntries(const std::vector<Entry>& chosen)
{
    for (const Entry& entry : chosen)
        if (contains(entry) && !entry.item->isKept())
            entry.item->aboutToBeCleared();
    for (const Entry& entry : chosen) {
        if (!contains(entry))
            continue;
        if (entry.item->isKept())
            entry.item->setCanvas(nullptr);
        else
            delete entry.item;
    }
}

void QCanvas::add(QCanvasItem* item)
{
    cachedKind.reset();
    const auto entry = findEntry(item->serial);
    if (entry != entries.end() && entry->serial == item->serial) {
        entry->item = item;
        --removedItems;
    } else {
        entries.insert(entry, {item->serial, item});
    }
}

void QCanvas::remove(QCanvasItem* item)
{
    if (item->isVisible())
        markChanged(item->reach);
    cachedKind.reset();
    index->remove(item);
    findEntry(item->serial)->item = nullptr;
    if (++removedItems > entries.size() / 2) {
        std::erase_if(entries, [](const Entry& entry) { return !entry.item; });
        removedItems = 0;
    }
    emit itemGone(item);
}

void QCanvas::markChanged(const QRect& changedArea)
{
    const QRect rectangle = changedArea & area();
    if (rectangle.isEmpty())
        return;
    scheduleUpdate();
    if (!changedAreas.empty() && (changedAreas.back().contains(rectangle) || changedAreas.front().contains(rectangle)))
        return;
    if (changedAreas.size() == maxChangedAreas) {
        QRect bounds;
        for (const QRect& previous : changedAreas)
            bounds |= previous;
        changedAreas.assign(1, bounds);
    }
    changedAreas.push_back(rectangle);
}

void QCanvas::scheduleUpdate()
{
    if (!repaintTimer.isActive())
        repaintTimer.start();
}
