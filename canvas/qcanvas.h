#pragma once

#include "canvas/itemmemory.h"

#include <QBrush>
#include <QColor>
#include <QEvent>
#include <QFont>
#include <QGraphicsView>
#include <QLineF>
#include <QList>
#include <QObject>
#include <QPen>
#include <QPoint>
#include <QPointer>
#include <QPolygon>
#include <QRegion>
#include <QSize>
#include <QString>
#include <QTimer>
#include <QTransform>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QCanvas;
class QCanvasItem;
class QCanvasItemIndex;
class QGraphicsScene;
class QMouseEvent;
class QPainter;

using QCanvasItemList = QList<QCanvasItem*>;

/// A drawing surface with a fixed size in pixels that contains items and is shown by views.
///
/// The Graphics View framework only scrolls it. This class provides a stable order of the items, exact hit areas, and
/// repaints that are collected over one advance period.
class QCanvas : public QObject {
    Q_OBJECT

public:
    /// Creates a white, empty canvas of `width` by `height` pixels with the advance period 0.
    QCanvas(int width, int height);

    /// Deletes all items on the canvas, ellipses first; kept items (QCanvasItem::setKept) are only removed from it.
    ~QCanvas() override;

    int width() const;
    int height() const;
    QSize size() const;

    /// Sets the size in pixels; items keep their positions, even outside the new size.
    void resize(int width, int height);

    QColor backgroundColor() const;
    void setBackgroundColor(const QColor& color);

    bool doubleBuffering() const;
    /// Stores the flag only: views are always double buffered.
    void setDoubleBuffering(bool on);

    int advancePeriod() const;
    /// Sets the time in milliseconds over which changes are collected before they are repainted together. No timer runs
    /// while nothing changes. A negative period counts as 0.
    void setAdvancePeriod(int milliseconds);

    /// Immediately reports all changes collected so far to the views.
    void update();

    /// All items on the canvas, visible or hidden, in the order of creation.
    QCanvasItemList allItems() const;

    /// All items whose rtti() is `rtti`, in the order of creation.
    QCanvasItemList itemsOfKind(int rtti) const;

    /// The item with this rank (QCanvasItem::rank), or null.
    QCanvasItem* itemOfRank(quint64 rank) const;

    /// Gives items of this canvas the ranks of deleted items, and with them their positions in allItems(), in hit tests
    /// and on the screen. No two items may end up with the same rank. Linear in the items of the canvas.
    void restoreRanks(const std::vector<std::pair<QCanvasItem*, quint64>>& ranks);

    /// The visible items whose hit area contains the pixel `p`, topmost first: by descending z and, for equal z, the
    /// most recently created first.
    QCanvasItemList collisions(const QPoint& p) const;

    /// The visible items whose hit area comes within `radius` pixels of the pixel `p`, by increasing distance and, for
    /// equal distances, topmost first.
    QCanvasItemList itemsWithin(const QPoint& p, int radius) const;

    /// Paints the visible items that touch `area` as in a view, without the background. `area` and the painter use
    /// canvas pixels.
    void paint(QPainter& painter, const QRect& area) const;

    /// Deletes all items whose rtti() is `rtti`, in the order of creation. First calls QCanvasItem::aboutToBeCleared
    /// for all of them, so that items can drop references to each other in linear time. Kept items are only removed
    /// from the canvas.
    void deleteItems(int rtti);

signals:
    /// Emitted when `item` is being destroyed or removed from the canvas. It must not be dereferenced.
    void itemGone(QCanvasItem* item);

    /// Emitted when views must repaint `region` (canvas pixels).
    void changed(const QRegion& region);

private:
    friend class QCanvasItem;
    friend class QCanvasView;

    struct Kind {
        int rtti;
        QCanvasItemList items;
    };

    struct Entry {
        quint64 serial;
        QCanvasItem* item;     // null after it was removed
        mutable int kind = -1; // its cached rtti(), so that searches need not access the item; -1 if not known yet

        bool isOfKind(int rtti) const;
    };

    QRect area() const { return QRect(QPoint(0, 0), extent); }
    std::vector<Entry>::iterator findEntry(quint64 serial);
    bool contains(const Entry& entry) const;
    void add(QCanvasItem* item);
    void remove(QCanvasItem* item);
    void deleteEntries(const std::vector<Entry>& chosen);
    /// The visible items whose rectangles touch `area`, in painting order: the lowest first.
    QCanvasItemList visibleItems(const QRect& area) const;
    void markChanged(const QRect& changedArea);
    void scheduleUpdate();

    std::unique_ptr<QGraphicsScene> scene; // without items; defines the scroll range of the views
    std::unique_ptr<QCanvasItemIndex> index;
    QSize extent{0, 0};
    std::vector<Entry> entries; // in the order of creation
    std::size_t removedItems = 0;
    mutable std::optional<Kind> cachedKind; // last result of itemsOfKind, until an item is added or removed
    QColor background = Qt::white;
    bool buffered = true;
    std::vector<QRect> changedAreas;
    QTimer repaintTimer;
};

/// An item on a canvas. A new item is hidden, at (0, 0), with z 0.
///
/// Items are created with new and deleted explicitly; deleting an item removes it from its canvas.
class QCanvasItem : public InItemMemory {
public:
    enum RttiValues { Rtti_Item = 0, Rtti_Text = 3, Rtti_Polygon = 4, Rtti_Ellipse = 6, Rtti_Line = 7 };

    /// `canvas` may be null; it can be set later with setCanvas.
    explicit QCanvasItem(QCanvas* canvas);
    virtual ~QCanvasItem();
    QCanvasItem(const QCanvasItem&) = delete;
    QCanvasItem& operator=(const QCanvasItem&) = delete;

    double x() const { return xPosition; }
    double y() const { return yPosition; }
    double z() const { return zPosition; }

    /// Moves the item to (x, y), in canvas pixels, by calling the virtual moveBy with the difference.
    void move(double x, double y);
    /// Moves the item by (dx, dy) canvas pixels. Does nothing if both are 0 or the result is not finite.
    virtual void moveBy(double dx, double dy);
    void setZ(double z);

    void show() { setVisible(true); }
    void hide() { setVisible(false); }
    void setVisible(bool visible);
    bool isVisible() const { return visible; }

    /// Restores a position to the bit, in canvas pixels: no difference is added, and moveBy is not called.
    void putAt(double x, double y);

    /// Where the item stands among all items: it rises with creation.
    quint64 rank() const { return serial; }

    QCanvas* canvas() const { return home; }
    /// Moves the item to another canvas, or to none if null; its position, z and visibility are kept.
    void setCanvas(QCanvas* canvas);

    /// Sets whether the item outlives its canvas: a kept item is removed from a canvas that is destroyed, not deleted.
    void setKept(bool kept) { keptByOwner = kept; }
    bool isKept() const { return keptByOwner; }

    /// The kind of the item, one of RttiValues.
    virtual int rtti() const;

    /// The painted area, without the antialiasing fringe, and the hit area together, in canvas pixels.
    virtual QRectF boundingRect() const = 0;
    /// Whether the hit area contains the canvas point `p`, which is the centre of a pixel.
    virtual bool hits(const QPointF& p) const = 0;

    /// Called before the item is deleted together with all other items of its kind on the canvas.
    virtual void aboutToBeCleared();

protected:
    /// Paints the item; the painter uses canvas pixels.
    virtual void draw(QPainter& painter) = 0;

    /// Must be called before a change that affects boundingRect.
    void aboutToChangeShape();
    /// Must be called after a change of the item's appearance.
    void changed();

private:
    friend class QCanvas;
    friend class QCanvasItemIndex;
    friend class QCanvasView;

    void updateReach();

    // The members that a move accesses are adjacent: moving thousands of items is limited by memory access.
    QCanvas* home = nullptr;
    double xPosition = 0;
    double yPosition = 0;
    QRect reach;   // bounding rectangle plus antialiasing fringe, computed when last visible
    int cell = -1; // cell in the index of the canvas; -1 if not in the index
    int indexInCell = 0;
    bool isReachStale = true; // boundingRect has changed since reach was computed
    bool visible = false;
    bool keptByOwner = false;
    double zPosition = 0;
    quint64 serial; // increases with every item created
};

/// An item with an area, which is filled with the brush and not outlined. Only lines use the pen.
class QCanvasPolygonalItem : public QCanvasItem {
public:
    explicit QCanvasPolygonalItem(QCanvas* canvas);

    const QPen& pen() const { return itsPen; }
    virtual void setPen(const QPen& pen);
    const QBrush& brush() const { return itsBrush; }
    virtual void setBrush(const QBrush& brush);

private:
    QPen itsPen;
    QBrush itsBrush;
};

/// A filled ellipse, centred at its position.
class QCanvasEllipse : public QCanvasPolygonalItem {
public:
    /// `width` and `height` in pixels; negative ones count as 0.
    QCanvasEllipse(int width, int height, QCanvas* canvas);

    int width() const { return itsWidth; }
    int height() const { return itsHeight; }
    void setSize(int width, int height);

    int rtti() const override;
    QRectF boundingRect() const override;
    /// The hit area is an ellipse of width + 3 by height + 3 whose bounding box starts at
    /// (floor(x - width / 2 + 0.5) - 1, floor(y - height / 2 + 0.5) - 1).
    bool hits(const QPointF& p) const override;

protected:
    void draw(QPainter& painter) override;

private:
    QRectF paintBox() const;
    QRectF hitBox() const;

    int itsWidth;
    int itsHeight;
};

/// A straight line between two points, which are whole pixels relative to its position.
class QCanvasLine : public QCanvasPolygonalItem {
public:
    /// A line from (0, 0) to (0, 0) with a black pen of width 1.
    explicit QCanvasLine(QCanvas* canvas);

    void setPoints(int x1, int y1, int x2, int y2);
    QPoint startPoint() const { return start; }
    QPoint endPoint() const { return end; }
    void setPen(const QPen& pen) override;

    int rtti() const override;
    QRectF boundingRect() const override;
    /// The hit area reaches penWidth * 4 / 3 + 2 pixels (integer arithmetic) from the line on every side.
    bool hits(const QPointF& p) const override;

protected:
    void draw(QPainter& painter) override;

private:
    QLineF translatedLine() const;
    int hitReach() const;

    QPoint start;
    QPoint end;
};

/// A filled polygon with corners relative to its position.
class QCanvasPolygon : public QCanvasPolygonalItem {
public:
    explicit QCanvasPolygon(QCanvas* canvas);

    void setPoints(const QPolygon& points);
    QPolygon points() const { return corners; }

    int rtti() const override;
    QRectF boundingRect() const override;
    /// The hit area is the polygon's area.
    bool hits(const QPointF& p) const override;

protected:
    void draw(QPainter& painter) override;

private:
    QPolygonF translatedPolygon() const;

    QPolygon corners;
};

/// One line of text with its top-left corner at its position. By default black, in the application's font.
class QCanvasText : public QCanvasItem {
public:
    explicit QCanvasText(QCanvas* canvas);
    QCanvasText(const QString& text, QCanvas* canvas);

    QString text() const { return itsText; }
    void setText(const QString& text);
    QFont font() const { return itsFont.value_or(QFont()); }
    void setFont(const QFont& font);
    QColor color() const { return itsColor; }
    void setColor(const QColor& color);

    int rtti() const override;
    /// The hit area, extended where glyphs are painted outside it.
    QRectF boundingRect() const override;
    /// The hit area is one pixel wider than the text and as high as the font.
    bool hits(const QPointF& p) const override;

protected:
    void draw(QPainter& painter) override;

private:
    struct Layout;
    const Layout& layout() const;
    static std::shared_ptr<const Layout> sharedLayout(const QString& text, const QFont& font);

    mutable std::shared_ptr<const Layout> itsLayout; // created on demand, shared by equal texts with equal fonts
    QString itsText;
    std::optional<QFont> itsFont;
    QColor itsColor = Qt::black;
};

/// A scrollable view of a canvas, aligned to its top-left corner.
///
/// The contents event handlers get mouse events with positions in contents coordinates: viewport coordinates plus the
/// scroll offset. inverseWorldMatrix() maps them to the canvas; it is the identity unless the view is transformed.
class QCanvasView : public QGraphicsView {
    Q_OBJECT

public:
    explicit QCanvasView(QWidget* parent = nullptr);
    ~QCanvasView() override;

    /// The canvas shown; null before setCanvas and after the canvas was destroyed. Not owned.
    QCanvas* canvas() const { return shownCanvas.data(); }
    /// Shows `canvas`, scrolled to its top-left corner; null shows nothing.
    void setCanvas(QCanvas* canvas);

    /// The colour of the area outside the canvas.
    void setBackgroundColor(const QColor& color);
    QColor backgroundColor() const;

    QTransform inverseWorldMatrix() const;

    /// How many screen pixels a canvas pixel is wide; 1 at first.
    double zoom() const { return transform().m11(); }
    /// Shows the canvas at `factor`, above 0. What is at `anchor`, in the viewport's pixels, stays there as far as the
    /// scroll bars reach.
    void setZoom(double factor, const QPointF& anchor);

    virtual void contentsMousePressEvent(QMouseEvent* event);
    virtual void contentsMouseMoveEvent(QMouseEvent* event);
    virtual void contentsMouseReleaseEvent(QMouseEvent* event);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    /// The second press of a double click is handled like any other press.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

    /// Paints what is below all items, on the background; the default paints nothing. The painter uses canvas pixels,
    /// and only `area` is seen.
    virtual void drawBelow(QPainter& painter, const QRect& area);

    /// Where the pointer was last seen, in contents coordinates, if it is over the view.
    std::optional<QPoint> contentsPointer() const;

private:
    using ContentsHandler = void (QCanvasView::*)(QMouseEvent*);
    void deliver(QMouseEvent* event, QEvent::Type type, ContentsHandler handler);
    void paintItems(QPainter& painter, const QRect& area, const QRegion& exposed) const;
    void coverOutside(QPainter& painter, const QRect& area) const;
    void scrollToCorner();
    void repaintChanged(const QRegion& region);

    QPointer<QCanvas> shownCanvas;
    std::optional<QPoint> pointer; // in viewport pixels
};
