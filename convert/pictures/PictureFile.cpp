#include "convert/pictures/PictureFile.h"

#include "convert/Notes.h"
#include "convert/chemistry/Canvas.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/SketchCanvas.h"
#include "convert/pictures/EditorPicture.h"
#include "convert/pictures/PictureData.h"
#include "convert/pictures/Sheet.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pointsPerInch = 72;
constexpr double inchesPerMetre = 1 / 0.0254;
constexpr int pdfResolution = 1200; // dots per inch, in which the painter measures

/// The drawing of a picture in the editor's look, on a canvas.
class PictureCanvas {
public:
    explicit PictureCanvas(const std::vector<Sketch>& sketches) { drawOn(drawn.doc, sideBySide(sketches)); }

    const QCanvas& canvas() const { return *drawn.doc.canvas; }

private:
    Canvas drawn;
};

/// The name of a single molecule.
QString titleOf(const std::vector<Sketch>& sketches)
{
    const bool isSingle = sketches.size() == 1 && sketches.front().molecules.size() == 1;
    return isSingle ? sketches.front().molecules.front().name : QString();
}

std::vector<Sketch> sketchesOn(const Page& page, const std::vector<Sketch>& sketches)
{
    const auto first = sketches.begin() + static_cast<std::ptrdiff_t>(page.first);
    return {first, first + static_cast<std::ptrdiff_t>(page.count)};
}

void render(const Page& page, const PictureStyle& style, QPainter& painter, const QRectF& target)
{
    QSvgRenderer renderer(svgDocument(page, style, QString()));
    renderer.setAspectRatioMode(Qt::IgnoreAspectRatio);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, target);
}

QByteArray pngOf(const Page& page, const PictureStyle& style)
{
    const auto pixels = [&](double points) { return std::max(1.0, std::round(points * style.dpi / pointsPerInch)); };
    const double width = pixels(page.size.width());
    const double height = pixels(page.size.height());
    checkPixels(width, height);
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        throw ConversionError(QStringLiteral("not enough memory for the picture"));
    image.fill(Qt::transparent);
    QPainter painter(&image);
    render(page, style, painter, QRectF(QPointF(0, 0), QSizeF(width, height)));
    painter.end();
    if (style.background.alpha() == 255)
        image.convertTo(QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(std::lround(style.dpi * inchesPerMetre)));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return encodedPng(image);
}

} // namespace

std::vector<QByteArray> svgPictures(const std::vector<Sketch>& sketches, const PictureStyle& style)
{
    if (style.look == PictureLook::Editor)
        return {svgOf(PictureCanvas(sketches).canvas(), style, titleOf(sketches), svgWorkspace(sketches))};
    std::vector<QByteArray> files;
    for (const Page& page : pagesOf(sketches, style, style.textAsPaths, PageBreak::Never))
        files.push_back(svgDocument(page, style, titleOf(sketches), svgWorkspace(sketchesOn(page, sketches))));
    return files;
}

std::vector<QByteArray> pngPictures(const std::vector<Sketch>& sketches, const PictureStyle& style)
{
    if (style.look == PictureLook::Editor)
        return {withDrawing(pngOf(PictureCanvas(sketches).canvas(), style), sketches)};
    std::vector<QByteArray> files;
    for (const Page& page : pagesOf(sketches, style, true, PageBreak::Never))
        files.push_back(withDrawing(pngOf(page, style), sketchesOn(page, sketches)));
    return files;
}

QByteArray pdfPicture(const std::vector<Sketch>& sketches, const PictureStyle& style)
{
    if (style.look == PictureLook::Editor)
        return pdfOf(PictureCanvas(sketches).canvas(), style, titleOf(sketches));
    const std::vector<Page> pages = pagesOf(sketches, style, true, PageBreak::AtPaperSize);
    QByteArray pdf;
    QBuffer buffer(&pdf);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(pdfResolution);
    writer.setTitle(titleOf(sketches));
    writer.setCreator(QStringLiteral("kytconvert"));
    const QSizeF size = pages.front().size;
    writer.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter painter;
    if (!painter.begin(&writer))
        throw ConversionError(QStringLiteral("cannot paint the picture"));
    for (const Page& page : pages) {
        if (&page != &pages.front())
            writer.newPage();
        render(page, style, painter, QRectF(QPointF(0, 0), size * pdfResolution / pointsPerInch));
    }
    painter.end();
    return pdf;
}
