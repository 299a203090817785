#pragma once

#include <QByteArray>
#include <QColor>
#include <QRect>
#include <QString>

class QCanvas;

/// How a picture is made of a drawing.
struct PictureStyle {
    double scale = 1;              ///< picture pixels for a canvas pixel; those of PDF are 1/96 inch
    double margin = 10;            ///< around the drawing, in canvas pixels
    QColor background = Qt::white; ///< may be transparent
};

// Pictures of everything visible on a canvas, painted by its items, cropped to them with the margin around. They throw
// ConversionError where the picture would be larger than any device can show.

QByteArray svgOf(const QCanvas& canvas, const PictureStyle& style, const QString& title);
QByteArray pngOf(const QCanvas& canvas, const PictureStyle& style);
QByteArray pdfOf(const QCanvas& canvas, const PictureStyle& style, const QString& title);

/// What a picture shows, in whole canvas pixels, its margin included.
QRect pictureArea(const QCanvas& canvas, const PictureStyle& style);
