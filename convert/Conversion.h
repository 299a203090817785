#pragma once

#include "convert/Formats.h"
#include "convert/Notes.h"
#include "convert/Picture.h"
#include "convert/Sketch.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// Reads `text` in any format except pictures. `name` is the file name for messages. Throws ConversionError for bad
/// input.
std::vector<Sketch> readSketches(const QByteArray& text, Format format, const QString& name, Notes& notes);

/// Options of the output formats.
struct OutputStyle {
    PictureStyle picture;
    bool v3000 = false;
};

/// Converts the sketches to a format. Workspaces, molfiles and pictures hold one drawing, in which several sketches are
/// laid out side by side. Throws ConversionError if they cannot be converted.
QByteArray writeSketches(std::vector<Sketch> sketches, Format format, const OutputStyle& style, Notes& notes);
