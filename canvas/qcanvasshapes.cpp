#include "canvas/qcanvas.h"

#include <QFontMetrics>
#include <QHash>
#include <QPainter>
#include <QStaticText>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

double distanceToSegment(const QPointF& p, const QPointF& from, const QPointF& to)
{
    const QPointF along = to - from;
    const double lengthSquared = QPointF::dotProduct(along, along);
    double fraction = 0;
    if (lengthSquared > 0)
        fraction = std::clamp(QPointF::dotProduct(p - from, along) / lengthSquared, 0.0, 1.0);
    const QPointF nearest = from + fraction * along;
    return std::hypot(p.x() - nearest.x(), p.y() - nearest.y());
}

QRectF expanded(const QRectF& area, double margin)
{
    return area.adjusted(-margin, -margin, margin, margin);
}

void fillWith(QPainter& painter, const QBrush& brush)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(brush);
}

} // namespace

QCanvasPolygonalItem::QCanvasPolygonalItem(QCanvas* canvas)
    : QCanvasItem(canvas)
{
}

void QCanvasPolygonalItem::setPen(const QPen& pen)
{
    if (pen == itsPen)
        return;
    itsPen = pen;
    changed();
}

void QCanvasPolygonalItem::setBrush(const QBrush& brush)
{
    if (brush == itsBrush)
        return;
    itsBrush = brush;
    changed();
}

QCanvasEllipse::QCanvasEllipse(int width, int height, QCanvas* canvas)
    : QCanvasPolygonalItem(canvas)
    , itsWidth(std::max(width, 0))
    , itsHeight(std::max(height, 0))
{
}

void QCanvasEllipse::setSize(int width, int height)
{
    aboutToChangeShape();
    itsWidth = std::max(width, 0);
    itsHeight = std::max(height, 0);
    changed();
}

int QCanvasEllipse::rtti() const
{
    return Rtti_Ellipse;
}

QRectF QCanvasEllipse::boundingRect() const
{
    return paintBox() | hitBox();
}

bool QCanvasEllipse::hits(const QPointF& p) const
{
    const QRectF box = hitBox();
    const QPointF fromCentre = p - box.center();
    return std::hypot(fromCentre.x() / (box.width() / 2), fromCentre.y() / (box.height() / 2)) <= 1;
}

void QCanvasEllipse::draw(QPainter& painter)
{
    fillWith(painter, brush());
    painter.drawEllipse(paintBox());
}

QRectF QCanvasEllipse::paintBox() const
{
    return QRectF(x() - itsWidth / 2.0, y() - itsHeight / 2.0, itsWidth, itsHeight);
}

QRectF QCanvasEllipse::hitBox() const
{
    return QRectF(std::floor(x() - itsWidth / 2.0 + 0.5) - 1, std::floor(y() - itsHeight / 2.0 + 0.5) - 1,
                  itsWidth + 3.0, itsHeight + 3.0);
}

QCanvasLine::QCanvasLine(QCanvas* canvas)
    : QCanvasPolygonalItem(canvas)
{
}

void QCanvasLine::setPoints(int x1, int y1, int x2, int y2)
{
    if (start == QPoint(x1, y1) && end == QPoint(x2, y2))
        return;
    aboutToChangeShape();
    start = QPoint(x1, y1);
    end = QPoint(x2, y2);
    changed();
}

void QCanvasLine::setPen(const QPen& pen)
{
    if (pen == this->pen())
        return;
    aboutToChangeShape();
    QCanvasPolygonalItem::setPen(pen);
    changed();
}

int QCanvasLine::rtti() const
{
    return Rtti_Line;
}

QRectF QCanvasLine::boundingRect() const
{
    const QLineF line = translatedLine();
    return expanded(QRectF(line.p1(), line.p2()).normalized(), std::max<double>(hitReach(), pen().widthF()));
}

bool QCanvasLine::hits(const QPointF& p) const
{
    const QLineF line = translatedLine();
    return distanceToSegment(p, line.p1(), line.p2()) <= hitReach();
}

void QCanvasLine::draw(QPainter& painter)
{
    if (start == end)
        return;
    painter.setPen(pen());
    painter.drawLine(translatedLine());
}

QLineF QCanvasLine::translatedLine() const
{
    const QPointF origin(x(), y());
    return QLineF(origin + start, origin + end);
}

int QCanvasLine::hitReach() const
{
    return pen().width() * 4 / 3 + 2;
}

QCanvasPolygon::QCanvasPolygon(QCanvas* canvas)
    : QCanvasPolygonalItem(canvas)
{
}

void QCanvasPolygon::setPoints(const QPolygon& points)
{
    aboutToChangeShape();
    corners = points;
    changed();
}

int QCanvasPolygon::rtti() const
{
    return Rtti_Polygon;
}

QRectF QCanvasPolygon::boundingRect() const
{
    return translatedPolygon().boundingRect();
}

bool QCanvasPolygon::hits(const QPointF& p) const
{
    return translatedPolygon().containsPoint(p, Qt::OddEvenFill);
}

void QCanvasPolygon::draw(QPainter& painter)
{
    fillWith(painter, brush());
    painter.drawPolygon(translatedPolygon());
}

QPolygonF QCanvasPolygon::translatedPolygon() const
{
    return QPolygonF(corners).translated(x(), y());
}

/// The layout of a text whose top-left corner is at (0, 0).
struct QCanvasText::Layout {
    Layout(const QString& text, const QFont& font);

    QStaticText glyphs;
    QFont font;
    QSize extent; // hit area
    QRect ink;    // painted area
};

QCanvasText::Layout::Layout(const QString& text, const QFont& font)
    : glyphs(text)
    , font(font)
{
    const QFontMetrics metrics(font);
    extent = QSize(metrics.horizontalAdvance(text) + 1, metrics.height());
    ink = metrics.boundingRect(text).translated(0, metrics.ascent());
    glyphs.setTextFormat(Qt::PlainText);
    glyphs.prepare(QTransform(), font);
}

QCanvasText::QCanvasText(QCanvas* canvas)
    : QCanvasItem(canvas)
{
}

QCanvasText::QCanvasText(const QString& text, QCanvas* canvas)
    : QCanvasItem(canvas)
    , itsText(text)
{
}

void QCanvasText::setText(const QString& text)
{
    if (text == itsText)
        return;
    aboutToChangeShape();
    itsText = text;
    itsLayout.reset();
    changed();
}

void QCanvasText::setFont(const QFont& font)
{
    aboutToChangeShape();
    itsFont = font;
    itsLayout.reset();
    changed();
}

void QCanvasText::setColor(const QColor& color)
{
    if (color == itsColor)
        return;
    itsColor = color;
    changed();
}

int QCanvasText::rtti() const
{
    return Rtti_Text;
}

QRectF QCanvasText::boundingRect() const
{
    const Layout& current = layout();
    return QRectF(QRect(QPoint(0, 0), current.extent) | current.ink).translated(x(), y());
}

bool QCanvasText::hits(const QPointF& p) const
{
    const QSize extent = layout().extent;
    return p.x() >= x() && p.x() < x() + extent.width() && p.y() >= y() && p.y() < y() + extent.height();
}

void QCanvasText::draw(QPainter& painter)
{
    const Layout& current = layout();
    painter.setPen(itsColor);
    painter.setFont(current.font);
    painter.drawStaticText(QPointF(x(), y()), current.glyphs);
}

const QCanvasText::Layout& QCanvasText::layout() const
{
    if (!itsLayout)
        itsLayout = sharedLayout(itsText, font());
    return *itsLayout;
}

// Thousands of labels have only a few different texts. A layout is deleted with the last text item that uses it.
std::shared_ptr<const QCanvasText::Layout> QCanvasText::sharedLayout(const QString& text, const QFont& font)
{
    static QHash<std::pair<QString, QFont>, std::weak_ptr<const Layout>> cache;
    constexpr qsizetype minSweepSize = 256;
    static qsizetype nextSweep = minSweepSize;

    std::weak_ptr<const Layout>& entry = cache[{text, font}];
    std::shared_ptr<const Layout> layout = entry.lock();
    if (layout)
        return layout;
    layout = std::make_shared<const Layout>(text, font);
    entry = layout;
    if (cache.size() > nextSweep) {
        cache.removeIf([](const auto& position) { return position.value().expired(); });
        nextSweep = std::max(minSweepSize, 2 * cache.size());
    }
    return layout;
}
