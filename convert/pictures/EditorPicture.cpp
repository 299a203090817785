#include "convert/pictures/EditorPicture.h"

#include "canvas/qcanvas.h"
#include "convert/Notes.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace {

constexpr int screenResolution = 96;             // pixels per inch; the labels' font is sized for it
constexpr double pointsPerPixel = 0.75;          // a point is 1/72 inch
constexpr double largestCoordinate = 1'000'000;  // canvas pixels, of a drawing in a picture
constexpr double maxPixels = 64.0 * 1024 * 1024; // of a raster picture
constexpr double maxScale = 1000;
constexpr double roundingError = 1e-6; // pixels, of a size that is given in whole pixels

[[noreturn]] void fail(const QString& reason)
{
    throw ConversionError(reason);
}

/// A picture of a part of the canvas. Pixels are 1/96 inch.
struct Frame {
    QRect area;     // canvas pixels
    double scale;   // pixels per canvas pixel
    QSizeF size;    // pixels
    QPointF corner; // of the area in the picture
};

/// Fits the drawing into the size that the style gives, if any.
Frame frameOf(const QCanvas& canvas, const PictureStyle& style)
{
    const QRect area = pictureArea(canvas, style);
    const QSizeF wanted = QSizeF(style.width, style.height) * screenResolution / style.dpi;
    double scale = style.scale;
    if (wanted.width() > 0)
        scale = wanted.width() / area.width();
    if (wanted.height() > 0)
        scale = std::min(wanted.width() > 0 ? scale : maxScale, wanted.height() / area.height());
    const QSizeF drawn = QSizeF(area.size()) * scale;
    const QSizeF size(wanted.width() > 0 ? wanted.width() : drawn.width(),
                      wanted.height() > 0 ? wanted.height() : drawn.height());
    return {area, scale, size, QPointF(size.width() - drawn.width(), size.height() - drawn.height()) / 2};
}

void paint(QPainter& painter, const QCanvas& canvas, const Frame& frame, const PictureStyle& style)
{
    painter.setRenderHint(QPainter::Antialiasing);
    if (style.background.alpha() > 0)
        painter.fillRect(QRectF(QPointF(0, 0), frame.size), style.background);
    painter.translate(frame.corner);
    painter.scale(frame.scale, frame.scale);
    painter.translate(-frame.area.topLeft());
    canvas.paint(painter, frame.area);
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

QByteArray svgOf(const QCanvas& canvas, const PictureStyle& style, const QString& title, const QByteArray& metadata)
{
    const Frame frame = frameOf(canvas, style);
    const QSizeF size = frame.size;
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
    paint(painter, canvas, frame, style);
    painter.end();
    if (!metadata.isEmpty())
        svg.insert(svg.indexOf('>', svg.indexOf("<svg")) + 1, "\n<metadata>\n" + metadata + "</metadata>\n");
    return svg;
}

void checkPixels(double width, double height)
{
    if (width * height > maxPixels)
        fail(QStringLiteral("picture of %1 x %2 pixels too large for PNG: use a smaller --scale, SVG or PDF")
                 .arg(width, 0, 'f', 0)
                 .arg(height, 0, 'f', 0));
}

QByteArray encodedPng(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!image.save(&buffer, "PNG"))
        fail(QStringLiteral("cannot encode the picture as PNG"));
    return png;
}

QByteArray pngOf(const QCanvas& canvas, const PictureStyle& style)
{
    const Frame frame = frameOf(canvas, style);
    const double density = style.dpi / screenResolution;
    const double width = std::ceil(frame.size.width() * density - roundingError);
    const double height = std::ceil(frame.size.height() * density - roundingError);
    checkPixels(width, height);
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        fail(QStringLiteral("not enough memory for the picture"));
    image.fill(style.background);
    QPainter painter;
    begin(painter, &image);
    painter.scale(density, density);
    paint(painter, canvas, frame, style);
    painter.end();
    if (style.background.alpha() == 255)
        image.convertTo(QImage::Format_RGB32);
    return encodedPng(image);
}

QByteArray pdfOf(const QCanvas& canvas, const PictureStyle& style, const QString& title)
{
    const Frame frame = frameOf(canvas, style);
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(screenResolution);
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("kytconvert"));
    writer.setPageSize(QPageSize(frame.size * pointsPerPixel, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    begin(painter, &writer);
    paint(painter, canvas, frame, style);
    painter.end();
    return pdf;
}
