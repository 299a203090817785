#pragma once

#include "convert/formats/Formats.h"

/// Reads `text` in any format except PDF. `name` is the file name for messages. Throws ConversionError for bad
/// input.
std::vector<Sketch> readSketches(const QByteArray& text, const Format& format, const QString& name, Notes& notes);

/// Converts the sketches to a format. Workspaces, molfiles and pictures hold one drawing, in which several sketches are
/// laid out side by side. Throws ConversionError if they cannot be converted.
QByteArray writeSketches(std::vector<Sketch> sketches, const Format& format, const OutputStyle& style, Notes& notes);

/// The faults of a file in any format except PDF, one line each.
QStringList faultsOf(const QByteArray& text, const Format& format, const QString& name);
