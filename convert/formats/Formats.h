#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/pictures/PictureStyle.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// Options of the output formats.
struct OutputStyle {
    PictureStyle picture;
    bool v3000 = false;
};

/// A supported file format. Formats are the rows of one table and are told apart by their addresses.
struct Format {
    const char* extensions; ///< in lower case, separated by spaces

    /// Reads a whole file; null for a format that can only be written. Throws ConversionError, which starts with
    /// `name`, for bad input.
    std::vector<Sketch> (*read)(const QByteArray& text, const QString& name, Notes& notes);

    /// The whole file. Throws ConversionError for drawings that the format cannot hold.
    QByteArray (*write)(std::vector<Sketch> sketches, const OutputStyle& style, Notes& notes);

    /// The faults of a file, one line each, which starts with `name`; null if the first error that `read` throws is the
    /// only one known.
    QStringList (*check)(const QByteArray& text, const QString& name) = nullptr;

    /// The files of a sheet of pictures that has several pages; null for a format that has no such pages.
    std::vector<QByteArray> (*writePages)(const std::vector<Sketch>& sketches, const PictureStyle& style) = nullptr;

    bool isBinary = false; ///< a file may contain null bytes
};

/// The format with the extension `name`, case-insensitive; null if there is none.
const Format* formatNamed(const QString& name);

/// The format for the extension of a file name; null if it is unknown.
const Format* formatOfFile(const QString& fileName);
