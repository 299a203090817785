#pragma once

#include <QByteArray>
#include <QColor>
#include <QRect>
#include <QString>

class QCanvas;

/// Options for rendering a drawing as a picture.
struct PictureStyle {
    double scale = 1;              ///< picture pixels per canvas pixel; a PDF pixel is 1/96 inch
    double margin = 10;            ///< around the drawing, in canvas pixels
    QColor background = Qt::white; ///< may be transparent
};

// Pictures of all visible items of a canvas, cropped to the items plus the margin. Pictures that would be too large
// throw ConversionError.

QByteArray svgOf(const QCanvas& canvas, const PictureStyle& style, const QString& title);
QByteArray pngOf(const QCanvas& canvas, const PictureStyle& style);
QByteArray pdfOf(const QCanvas& canvas, const PictureStyle& style, const QString& title);

/// The area that a picture shows, including its margin, in whole canvas pixels.
QRect pictureArea(const QCanvas& canvas, const PictureStyle& style);
