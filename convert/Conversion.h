#pragma once

#include "convert/Formats.h"
#include "convert/Notes.h"
#include "convert/Picture.h"
#include "convert/Sketch.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// Reads `text` in a format that is no picture. `name` is the file's in messages. Throws ConversionError for bad input.
std::vector<Sketch> readSketches(const QByteArray& text, Format format, const QString& name, Notes& notes);

/// How an output is written.
struct OutputStyle {
    PictureStyle picture;
    bool v3000 = false;
};

/// The sketches in a format. Workspaces, molfiles and pictures hold one drawing, on which several sketches are laid out
/// side by side. Throws ConversionError where they cannot be written.
QByteArray writeSketches(std::vector<Sketch> sketches, Format format, const OutputStyle& style, Notes& notes);
