#include "canvas/qcanvas.h"

#include "canvas/qcanvasitemindex.h"

#include <QGraphicsScene>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Beyond so many rectangles, changes are repainted as the one rectangle around them.
constexpr std::size_t mostChangedAreas = 64;

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
    while (places.size() > goneItems) {
        std::vector<Place> ellipses;
        std::vector<Place> others;
        for (const Place& place : places)
            if (place.item)
                (place.item->rtti() == QCanvasItem::Rtti_Ellipse ? ellipses : others).push_back(place);
        ellipses.insert(ellipses.end(), others.begin(), others.end());
        deletePlaces(ellipses);
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
    // An empty rectangle would make the scene find one of its own.
    scene->setSceneRect(QRectF(0, 0, std::max(extent.width(), 1), std::max(extent.height(), 1)));
    index = std::make_unique<QCanvasItemIndex>(extent);
    for (const Place& place : places) {
        if (!place.item || place.item->cell < 0)
            continue;
        place.item->cell = -1;
        index->place(place.item);
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
    list.reserve(static_cast<qsizetype>(places.size() - goneItems));
    for (const Place& place : places)
        if (place.item)
            list.append(place.item);
    return list;
}

QCanvasItemList QCanvas::itemsOfKind(int rtti) const
{
    if (!askedFor || askedFor->rtti != rtti) {
        askedFor = Kind{rtti, {}};
        for (const Place& place : places)
            if (place.isOf(rtti))
                askedFor->items.append(place.item);
    }
    return askedFor->items;
}

QCanvasItem* QCanvas::itemOfRank(quint64 rank) const
{
    const auto found = const_cast<QCanvas*>(this)->placeOf(rank);
    return found != places.end() && found->serial == rank ? found->item : nullptr;
}

void QCanvas::restoreRanks(const std::vector<std::pair<QCanvasItem*, quint64>>& ranks)
{
    if (ranks.empty())
        return;
    std::vector<Place> restored;
    for (const auto& [item, rank] : ranks) {
        placeOf(item->serial)->item = nullptr;
        restored.push_back({rank, item});
    }
    for (const Place& place : restored) {
        place.item->serial = place.serial;
        place.item->changed();
    }
    const auto bySerial = [](const Place& a, const Place& b) { return a.serial < b.serial; };
    std::sort(restored.begin(), restored.end(), bySerial);
    std::erase_if(places, [](const Place& place) { return !place.item; });
    goneItems = 0;
    const auto middle = places.insert(places.end(), restored.begin(), restored.end());
    std::inplace_merge(places.begin(), middle, places.end(), bySerial);
    askedFor.reset();
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
    std::vector<Place> chosen;
    for (const Place& place : places)
        if (place.isOf(rtti))
            chosen.push_back(place);
    deletePlaces(chosen);
}

bool QCanvas::Place::isOf(int rtti) const
{
    if (item && kind < 0)
        kind = item->rtti();
    return item && kind == rtti;
}

std::vector<QCanvas::Place>::iterator QCanvas::placeOf(quint64 serial)
{
    return std::lower_bound(places.begin(), places.end(), serial,
                            [](const Place& place, quint64 wanted) { return place.serial < wanted; });
}

bool QCanvas::holds(const Place& place) const
{
    const auto found = const_cast<QCanvas*>(this)->placeOf(place.serial);
    return found != places.end() && found->serial == place.serial && found->item;
}

// One item may take others with it, so each is looked up again before it is touched.
void QCanvas::deletePlaces(const std::vector<Place>& chosen)
{
    for (const Place& place : chosen)
        if (holds(place) && !place.item->isKept())
            place.item->aboutToBeCleared();
    for (const Place& place : chosen) {
        if (!holds(place))
            continue;
        if (place.item->isKept())
            place.item->setCanvas(nullptr);
        else
            delete place.item;
    }
}

void QCanvas::add(QCanvasItem* item)
{
    askedFor.reset();
    const auto place = placeOf(item->serial);
    if (place != places.end() && place->serial == item->serial) {
        place->item = item;
        --goneItems;
    } else {
        places.insert(place, {item->serial, item});
    }
}

void QCanvas::remove(QCanvasItem* item)
{
    if (item->isVisible())
        markChanged(item->reach);
    askedFor.reset();
    index->remove(item);
    placeOf(item->serial)->item = nullptr;
    if (++goneItems > places.size() / 2) {
        std::erase_if(places, [](const Place& place) { return !place.item; });
        goneItems = 0;
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
    if (changedAreas.size() == mostChangedAreas) {
        QRect around;
        for (const QRect& gathered : changedAreas)
            around |= gathered;
        changedAreas.assign(1, around);
    }
    changedAreas.push_back(rectangle);
}

void QCanvas::scheduleUpdate()
{
    if (!repaintTimer.isActive())
        repaintTimer.start();
}
