#pragma once

#include "convert/pictures/PictureStyle.h"

#include <QByteArray>
#include <QRect>
#include <QString>

class QCanvas;
class QImage;

// Pictures of all visible items of a canvas as in the editor's window, cropped to the items plus the margin. Pictures
// that would be too large throw ConversionError.

/// `metadata` is the content of a metadata element.
QByteArray svgOf(const QCanvas& canvas, const PictureStyle& style, const QString& title,
                 const QByteArray& metadata = {});
QByteArray pngOf(const QCanvas& canvas, const PictureStyle& style);
QByteArray pdfOf(const QCanvas& canvas, const PictureStyle& style, const QString& title);

/// The area that a picture shows, including its margin, in whole canvas pixels.
QRect pictureArea(const QCanvas& canvas, const PictureStyle& style);

/// Throws ConversionError if a raster picture would have too many pixels.
void checkPixels(double width, double height);

/// The image as a PNG file.
QByteArray encodedPng(const QImage& image);
