#include "convert/pictures/Picture.h"

#include "canvas/qcanvas.h"
#include "convert/Notes.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

namespace {

constexpr int screenResolution = 96;             // pixels per inch; the labels' font is sized for it
constexpr double pointsPerPixel = 0.75;          // a point is 1/72 inch
constexpr double largestCoordinate = 1'000'000;  // canvas pixels, of a drawing in a picture
constexpr double maxPixels = 64.0 * 1024 * 1024; // of a raster picture

[[noreturn]] void fail(const QString& reason)
{
    throw ConversionError(reason);
}

QSizeF pictureSize(const QRect& area, const PictureStyle& style)
{
    return QSizeF(area.size()) * style.scale;
}

void paint(QPainter& painter, const QCanvas& canvas, const QRect& area, const PictureStyle& style)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(style.scale, style.scale);
    painter.translate(-area.topLeft());
    if (style.background.alpha() > 0)
        painter.fillRect(area, style.background);
    canvas.paint(painter, area);
}

void begin(QPainter& painter, QPaintDevice* device)
{
    if (!painter.begin(device))
        fail(QStringLiteral("cannot paint the picture"));
}

} // namespace

QRect pictureArea(const QCanvas& canvas, const PictureStyle& style)
{
    QRectF extent;
    const QCanvasItemList items = canvas.allItems();
    for (const QCanvasItem* item : items)
        if (item->isVisible())
            extent |= item->boundingRect();
    const double margin = style.margin;
    extent.adjust(-margin, -margin, margin, margin);
    const double farthest = std::max(
        {std::fabs(extent.left()), std::fabs(extent.right()), std::fabs(extent.top()), std::fabs(extent.bottom())});
    if (!(farthest < largestCoordinate))
        fail(QStringLiteral("drawing too large for a picture: extends beyond %1 pixels")
                 .arg(largestCoordinate, 0, 'f', 0));
    return extent.toAlignedRect().united(QRect(extent.topLeft().toPoint(), QSize(1, 1)));
}

QByteArray svgOf(const QCanvas& canvas, const PictureStyle& style, const QString& title)
{
    const QRect area = pictureArea(canvas, style);
    const QSizeF size = pictureSize(area, style);
    QByteArray svg;
    QBuffer buffer(&svg);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(screenResolution);
    generator.setSize(QSize(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height()))));
    generator.setViewBox(QRectF(QPointF(0, 0), size));
    generator.setTitle(title);
    generator.setDescription(QString());
    QPainter painter;
    begin(painter, &generator);
    paint(painter, canvas, area, style);
    painter.end();
    return svg;
}

QByteArray pngOf(const QCanvas& canvas, const PictureStyle& style)
{
    const QRect area = pictureArea(canvas, style);
    const QSizeF size = pictureSize(area, style);
    const double width = std::ceil(size.width());
    const double height = std::ceil(size.height());
    if (width * height > maxPixels)
        fail(QStringLiteral("picture of %1 x %2 pixels too large for PNG: use a smaller --scale, SVG or PDF")
                 .arg(width, 0, 'f', 0)
                 .arg(height, 0, 'f', 0));
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        fail(QStringLiteral("not enough memory for the picture"));
    image.fill(style.background);
    QPainter painter;
    begin(painter, &image);
    paint(painter, canvas, area, style);
    painter.end();
    if (style.background.alpha() == 255)
        image.convertTo(QImage::Format_RGB32);

    QByteArray png;
    QBuffer buffer(&png);
    if (!image.save(&buffer, "PNG"))
        fail(QStringLiteral("cannot encode the picture as PNG"));
    return png;
}

QByteArray pdfOf(const QCanvas& canvas, const PictureStyle& style, const QString& title)
{
    const QRect area = pictureArea(canvas, style);
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(screenResolution);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("kytconvert"));
    writer.setPageSize(
        QPageSize(pictureSize(area, style) * pointsPerPixel, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    begin(painter, &writer);
    paint(painter, canvas, area, style);
    painter.end();
    return pdf;
}
