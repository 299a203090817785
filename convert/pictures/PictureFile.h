#pragma once

#include "convert/chemistry/Sketch.h"
#include "convert/pictures/PictureStyle.h"

#include <QByteArray>

#include <vector>

// Picture files of drawings. Pictures that would be too large throw ConversionError.

/// SVG documents; several if the sheet of the drawings has several pages.
std::vector<QByteArray> svgPictures(const std::vector<Sketch>& sketches, const PictureStyle& style);
/// PNG files; several if the sheet of the drawings has several pages.
std::vector<QByteArray> pngPictures(const std::vector<Sketch>& sketches, const PictureStyle& style);
/// One PDF file with all pages.
QByteArray pdfPicture(const std::vector<Sketch>& sketches, const PictureStyle& style);
