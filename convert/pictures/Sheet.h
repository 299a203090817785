#pragma once

#include "convert/chemistry/Sketch.h"
#include "convert/pictures/PictureStyle.h"

#include <QByteArray>
#include <QRectF>
#include <QSizeF>

#include <vector>

/// Where a sheet of several drawings is broken into pages, if the style gives no height.
enum class PageBreak { Never, AtPaperSize };

/// A page of drawings as SVG elements.
struct Page {
    QSizeF size;     ///< in points
    QRectF shown;    ///< the part of the elements' coordinates that it shows
    QByteArray body; ///< elements of SVG
    QByteArray metadata;
    std::size_t first = 0; ///< the drawings on it
    std::size_t count = 0;
};

/// Sets the drawings in the look of a publication, all at one scale: one by itself, several as a sheet with their names
/// below. Throws ConversionError if they are too large for a picture.
std::vector<Page> pagesOf(const std::vector<Sketch>& sketches, const PictureStyle& style, bool asPaths,
                          PageBreak pageBreak);

/// The page as an SVG document in UTF-8, with sizes in points. `metadata` is added to its own.
QByteArray svgDocument(const Page& page, const PictureStyle& style, const QString& title,
                       const QByteArray& metadata = {});
