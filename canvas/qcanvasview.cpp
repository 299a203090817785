#include "canvas/qcanvas.h"

#include <QGraphicsScene>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

QCanvasView::QCanvasView(QWidget* parent)
    : QGraphicsView(parent)
{
    setFrameShape(QFrame::NoFrame);
    setAlignment(Qt::AlignTop | Qt::AlignLeft);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setInteractive(false);
    setRenderHint(QPainter::Antialiasing);
    setViewportUpdateMode(NoViewportUpdate); // repaintChanged() updates the viewport
}

QCanvasView::~QCanvasView() = default;

void QCanvasView::setCanvas(QCanvas* canvas)
{
    if (canvas == shownCanvas)
        return;
    if (shownCanvas)
        shownCanvas->disconnect(this);
    shownCanvas = canvas;
    setScene(canvas ? canvas->scene.get() : nullptr);
    if (canvas) {
        connect(canvas, &QCanvas::changed, this, &QCanvasView::repaintChanged);
        connect(canvas, &QObject::destroyed, viewport(), qOverload<>(&QWidget::update));
    }
    scrollToCorner();
    viewport()->update();
}

void QCanvasView::setBackgroundColor(const QColor& color)
{
    QPalette colors = viewport()->palette();
    colors.setColor(viewport()->backgroundRole(), color);
    viewport()->setPalette(colors);
}

QColor QCanvasView::backgroundColor() const
{
    return viewport()->palette().color(viewport()->backgroundRole());
}

QTransform QCanvasView::inverseWorldMatrix() const
{
    return transform().inverted();
}

void QCanvasView::setZoom(double factor, const QPointF& anchor)
{
    const QPointF fixed = viewportTransform().inverted().map(anchor);
    setTransform(QTransform::fromScale(factor, factor));
    horizontalScrollBar()->setValue(qRound(fixed.x() * factor - anchor.x()));
    verticalScrollBar()->setValue(qRound(fixed.y() * factor - anchor.y()));
    viewport()->update();
}

std::optional<QPoint> QCanvasView::contentsPointer() const
{
    if (!pointer || !shownCanvas)
        return std::nullopt;
    return transform().map(mapToScene(*pointer)).toPoint();
}

bool QCanvasView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        pointer.reset();
    return QGraphicsView::viewportEvent(event);
}

void QCanvasView::contentsMousePressEvent(QMouseEvent* event)
{
    event->ignore();
}

void QCanvasView::contentsMouseMoveEvent(QMouseEvent* event)
{
    event->ignore();
}

void QCanvasView::contentsMouseReleaseEvent(QMouseEvent* event)
{
    event->ignore();
}

void QCanvasView::mousePressEvent(QMouseEvent* event)
{
    deliver(event, QEvent::MouseButtonPress, &QCanvasView::contentsMousePressEvent);
}

void QCanvasView::mouseDoubleClickEvent(QMouseEvent* event)
{
    deliver(event, QEvent::MouseButtonPress, &QCanvasView::contentsMousePressEvent);
}

void QCanvasView::mouseMoveEvent(QMouseEvent* event)
{
    deliver(event, QEvent::MouseMove, &QCanvasView::contentsMouseMoveEvent);
}

void QCanvasView::mouseReleaseEvent(QMouseEvent* event)
{
    deliver(event, QEvent::MouseButtonRelease, &QCanvasView::contentsMouseReleaseEvent);
}

void QCanvasView::deliver(QMouseEvent* event, QEvent::Type type, ContentsHandler handler)
{
    if (!shownCanvas) {
        event->ignore();
        return;
    }
    pointer = event->position().toPoint();
    const QPointF contents = transform().map(mapToScene(*pointer));
    QMouseEvent translated(type, contents, event->scenePosition(), event->globalPosition(), event->button(),
                           event->buttons(), event->modifiers(), event->pointingDevice());
    (this->*handler)(&translated);
    event->setAccepted(translated.isAccepted());
}

void QCanvasView::scrollToCorner()
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
    verticalScrollBar()->setValue(verticalScrollBar()->minimum());
}

void QCanvasView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    viewport()->scroll(isRightToLeft() ? -dx : dx, dy);
}

void QCanvasView::paintEvent(QPaintEvent* event)
{
    if (!shownCanvas)
        return; // Qt has already filled the viewport with the background colour
    QPainter painter(viewport());
    painter.setRenderHints(renderHints());
    painter.setWorldTransform(viewportTransform());
    const QRect area = mapToScene(event->rect()).boundingRect().toAlignedRect();
    painter.fillRect(area & shownCanvas->area(), shownCanvas->backgroundColor());
    painter.save();
    drawBelow(painter, area);
    painter.restore();
    paintItems(painter, area, event->region());
    coverOutside(painter, area);
}

void QCanvasView::drawBelow(QPainter&, const QRect&) { }

void QCanvasView::paintItems(QPainter& painter, const QRect& area, const QRegion& exposed) const
{
    const bool hasSeveralRects = exposed.rectCount() > 1;
    for (QCanvasItem* item : shownCanvas->visibleItems(area)) {
        if (!hasSeveralRects || exposed.intersects(mapFromScene(QRectF(item->reach)).boundingRect()))
            item->draw(painter);
    }
}

// Paints over items too: the parts of items outside the canvas are not shown.
void QCanvasView::coverOutside(QPainter& painter, const QRect& area) const
{
    const QRegion outside = QRegion(area) - shownCanvas->area();
    for (const QRect& rectangle : outside)
        painter.fillRect(rectangle, backgroundColor());
}

void QCanvasView::repaintChanged(const QRegion& region)
{
    QRegion mapped;
    for (const QRect& rectangle : region)
        mapped += mapFromScene(QRectF(rectangle)).boundingRect();
    viewport()->update(mapped);
}
