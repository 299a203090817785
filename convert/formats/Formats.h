#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"
#include "convert/pictures/PictureStyle.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// Options of the output formats.
struct OutputStyle {
    PictureStyle picture;
    bool v3000 = false;
    int firstDrawing = 1; ///< number of the first sketch, by which an SD file tells drawings apart
};

/// A supported file format. Formats are the rows of one table and are told apart by their addresses.
struct Format {
    const char* extensions; ///< in lower case, separated by spaces

    /// Takes the records of an input one after the other; null for a format that can only be written.
    std::unique_ptr<RecordReader> (*records)(LineReader& lines, const InputStyle& style);

    /// Reads a record. Throws ConversionError, which starts with the file name `name` and the line number, for bad
    /// input.
    std::vector<Sketch> (*read)(const Record& record, const QString& name, Notes& notes);

    /// The text of the sketches; null for a format that can only be read. Throws ConversionError for drawings that the
    /// format cannot hold.
    QByteArray (*write)(std::vector<Sketch> sketches, const OutputStyle& style, Notes& notes);

    /// Whether a file is a sequence of molecules, so that the texts of several sketches one after the other are that of
    /// all of them. Files in other formats hold one drawing.
    bool isSequence = false;

    /// Whether this build supports the format.
    bool isSupported = true;

    /// The faults of a record, one line each, which starts with `name`; null if the first error that `read` throws is
    /// the only one known.
    QStringList (*check)(const Record& record, const QString& name) = nullptr;

    /// The files of a sheet of pictures that has several pages; null for a format that has no such pages.
    std::vector<QByteArray> (*writePages)(const std::vector<Sketch>& sketches, const PictureStyle& style) = nullptr;
};

/// The format with the extension `name`, case-insensitive; null if there is none.
const Format* formatNamed(const QString& name);

/// The format for the extension of a file name, or the one before ".gz"; null if it is unknown.
const Format* formatOfFile(const QString& fileName);

/// Whether a file of this name is compressed.
bool isGzipName(const QString& fileName);

/// The extensions of all formats that can be read, or of those that can be written.
QStringList readableExtensions();
QStringList writableExtensions();
