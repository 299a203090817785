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

/// A drawing surface of a fixed size in pixels that holds items of a few kinds and shows them in views.
///
/// The Graphics View framework scrolls it; this class gives the items a stable order, exact hit areas and repaints that
/// are gathered over one advance period.
class QCanvas : public QObject {
    Q_OBJECT

public:
    /// A white canvas of `width` by `height` pixels without items; the advance period is 0.
    QCanvas(int width, int height);

    /// Deletes every item that is still on the canvas, ellipses before the others; an item that its owner keeps
    /// (QCanvasItem::setKept) is only taken off.
    ~QCanvas() override;

    int width() const;
    int height() const;
    QSize size() const;

    /// Changes the size in pixels; items stay where they are, also those that then lie outside.
    void resize(int width, int height);

    QColor backgroundColor() const;
    void setBackgroundColor(const QColor& color);

    bool doubleBuffering() const;
    /// Kept for callers that ask for it: what is shown is always painted off the screen first.
    void setDoubleBuffering(bool on);

    int advancePeriod() const;
    /// Sets for how many milliseconds changes are gathered before they are painted together. Nothing ticks while
    /// nothing changes. A negative period counts as 0.
    void setAdvancePeriod(int milliseconds);

    /// Hands all changes gathered so far to the views now.
    void update();

    /// Every item on the canvas, shown or hidden, in the order of creation.
    QCanvasItemList allItems() const;

    /// Those of them whose rtti() is `rtti`, in the same order.
    QCanvasItemList itemsOfKind(int rtti) const;

    /// The item with this rank (QCanvasItem::rank), or null.
    QCanvasItem* itemOfRank(quint64 rank) const;

    /// Gives items of this canvas the ranks of items that have gone, so that they take their places in allItems(), in
    /// hit tests and on the screen. No two items may end up with the same rank. Linear in the canvas's items.
    void restoreRanks(const std::vector<std::pair<QCanvasItem*, quint64>>& ranks);

    /// The visible items whose hit area takes in the pixel `p`, topmost first: higher z first, and among equal z the
    /// later created first, which is the one painted on top.
    QCanvasItemList collisions(const QPoint& p) const;

    /// The visible items whose hit area comes within `radius` pixels of the pixel `p`, the nearest first, and among
    /// those that are equally near the topmost first.
    QCanvasItemList itemsWithin(const QPoint& p, int radius) const;

    /// Paints the visible items that touch `area` (canvas pixels) as the views show them, without a background. The
    /// painter works in canvas pixels.
    void paint(QPainter& painter, const QRect& area) const;

    /// Deletes every item whose rtti() is `rtti`, in the order of creation. All of them are told first
    /// (QCanvasItem::aboutToBeCleared), so that items that hold on to each other can let go in linear time. A kept item
    /// is only taken off.
    void deleteItems(int rtti);

signals:
    /// `item` is being destroyed or leaves the canvas: forget it. Only its address may be used.
    void itemGone(QCanvasItem* item);

    /// The views are to repaint `region`, in canvas pixels.
    void changed(const QRegion& region);

private:
    friend class QCanvasItem;
    friend class QCanvasView;

    struct Kind {
        int rtti;
        QCanvasItemList items;
    };

    struct Place {
        quint64 serial;
        QCanvasItem* item;     // null where the item has gone
        mutable int kind = -1; // its rtti() once that was asked for; most searches need not touch the item

        bool isOf(int rtti) const;
    };

    QRect area() const { return QRect(QPoint(0, 0), extent); }
    std::vector<Place>::iterator placeOf(quint64 serial);
    bool holds(const Place& place) const;
    void add(QCanvasItem* item);
    void remove(QCanvasItem* item);
    void deletePlaces(const std::vector<Place>& chosen);
    /// The visible items whose rectangles touch `area`, as they are painted: the lowest first.
    QCanvasItemList visibleItems(const QRect& area) const;
    void markChanged(const QRect& changedArea);
    void scheduleUpdate();

    std::unique_ptr<QGraphicsScene> scene; // without items: it tells the views how far they scroll
    std::unique_ptr<QCanvasItemIndex> index;
    QSize extent{0, 0};
    std::vector<Place> places; // by creation
    std::size_t goneItems = 0;
    mutable std::optional<Kind> askedFor; // the answer of itemsOfKind, until an item comes or goes
    QColor background = Qt::white;
    bool buffered = true;
    std::vector<QRect> changedAreas;
    QTimer repaintTimer;
};

/// Something drawn on a canvas. A new item is hidden, at (0, 0), with z 0.
///
/// Items are made with new and deleted explicitly; deleting one takes it off its canvas.
class QCanvasItem : public InItemMemory {
public:
    enum RttiValues { Rtti_Item = 0, Rtti_Text = 3, Rtti_Polygon = 4, Rtti_Ellipse = 6, Rtti_Line = 7 };

    /// `canvas` may be null: such an item is nowhere until setCanvas.
    explicit QCanvasItem(QCanvas* canvas);
    virtual ~QCanvasItem();
    QCanvasItem(const QCanvasItem&) = delete;
    QCanvasItem& operator=(const QCanvasItem&) = delete;

    double x() const { return xPosition; }
    double y() const { return yPosition; }
    double z() const { return zPosition; }

    /// Moves to (x, y), in canvas pixels, through the virtual moveBy with the difference.
    void move(double x, double y);
    /// Moves by (dx, dy), in canvas pixels. (0, 0) and a step that is not finite do nothing.
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
    /// Moves the item to another canvas, or to none; it keeps its place, z and visibility.
    void setCanvas(QCanvas* canvas);

    /// Says whether the item outlives its canvas: a kept item is taken off, not deleted, when the canvas goes.
    void setKept(bool kept) { keptByOwner = kept; }
    bool isKept() const { return keptByOwner; }

    /// The kind of the item, one of RttiValues.
    virtual int rtti() const;

    /// Everything that the item paints, but for the fringe of antialiasing, and where it can be hit, in canvas pixels.
    virtual QRectF boundingRect() const = 0;
    /// Whether the hit area takes in the canvas point `p` (the centre of a pixel).
    virtual bool hits(const QPointF& p) const = 0;

    /// The item is about to be deleted together with all others of its kind on the canvas.
    virtual void aboutToBeCleared();

protected:
    /// Paints the item; the painter works in canvas pixels.
    virtual void draw(QPainter& painter) = 0;

    /// To be called before anything changes that boundingRect depends on.
    void aboutToChangeShape();
    /// To be called after a change of what the item looks like.
    void changed();

private:
    friend class QCanvas;
    friend class QCanvasItemIndex;
    friend class QCanvasView;

    void measure();

    // What a move reads and writes stands together: when thousands of items move, memory is what takes the time.
    QCanvas* home = nullptr;
    double xPosition = 0;
    double yPosition = 0;
    QRect reach;   // the item's rectangle with the fringe of antialiasing, as it last was while visible
    int cell = -1; // where the canvas's index has the item; -1 while it has not
    int placeInCell = 0;
    bool stale = true; // the rectangle has changed since
    bool visible = false;
    bool keptByOwner = false;
    double zPosition = 0;
    quint64 serial; // rises with creation
};

/// An item with an area: filled with a brush, never outlined with the pen (a line uses only the pen).
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

/// A filled ellipse centred on its position.
class QCanvasEllipse : public QCanvasPolygonalItem {
public:
    /// `width` and `height` in pixels; negative ones count as 0.
    QCanvasEllipse(int width, int height, QCanvas* canvas);

    int width() const { return itsWidth; }
    int height() const { return itsHeight; }
    void setSize(int width, int height);

    int rtti() const override;
    QRectF boundingRect() const override;
    /// The hit area is the ellipse of width + 3 by height + 3 whose box starts at
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

/// A straight line between two points given in whole pixels relative to its position.
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
    QLineF placed() const;
    int hitReach() const;

    QPoint start;
    QPoint end;
};

/// A filled polygon whose corners are given relative to its position.
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
    QPolygonF placed() const;

    QPolygon corners;
};

/// One line of text whose top-left corner is its position. Black, in the application's font, until told otherwise.
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
    /// As wide as the text and one pixel more, as high as the font; more where a letter leans out of that.
    QRectF boundingRect() const override;
    /// The hit area is as wide as the text and one pixel more, and as high as the font.
    bool hits(const QPointF& p) const override;

protected:
    void draw(QPainter& painter) override;

private:
    struct Layout;
    const Layout& layout() const;
    static std::shared_ptr<const Layout> sharedLayout(const QString& text, const QFont& font);

    mutable std::shared_ptr<const Layout> itsLayout; // made when first needed, shared by all equal texts
    QString itsText;
    std::optional<QFont> itsFont;
    QColor itsColor = Qt::black;
};

/// A scrolling window onto a canvas, with the canvas's top-left corner at its own.
///
/// Mouse events reach the contents handlers with positions in contents coordinates: the viewport's, moved by what is
/// scrolled. inverseWorldMatrix() maps them to the canvas; it is the identity unless someone transforms the view.
class QCanvasView : public QGraphicsView {
    Q_OBJECT

public:
    explicit QCanvasView(QWidget* parent = nullptr);
    ~QCanvasView() override;

    /// The canvas shown; null before setCanvas and after the canvas is gone. Not owned.
    QCanvas* canvas() const { return shown.data(); }
    /// Shows `canvas`, scrolled to its top-left corner. Null shows nothing.
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
    /// A double click's second press is a press like any other.
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;

    /// Where the pointer was last seen, in contents coordinates, if it is over the view.
    std::optional<QPoint> contentsPointer() const;

private:
    using ContentsHandler = void (QCanvasView::*)(QMouseEvent*);
    void deliver(QMouseEvent* event, QEvent::Type type, ContentsHandler handler);
    void paintItems(QPainter& painter, const QRect& area, const QRegion& exposed) const;
    void coverOutside(QPainter& painter, const QRect& area) const;
    void scrollToCorner();
    void repaintChanged(const QRegion& region);

    QPointer<QCanvas> shown;
    std::optional<QPoint> pointer; // in the viewport's pixels
};
