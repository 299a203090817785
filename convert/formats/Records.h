#pragma once

#include "convert/formats/LineReader.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// A piece of an input file that is converted by itself: a line of SMILES, a row of a table, a record of an SD file
/// with those of the same drawing, or a whole file. Its text is UTF-8 with LF at the ends of lines.
struct Record {
    int line = 1; ///< number of its first line in the file
    QByteArray text = {};
    QString name = {};                                  ///< where it is not part of the text
    std::vector<std::pair<QString, QString>> data = {}; ///< properties that are not part of the text: name and text
    QString fault = {};                                 ///< why the record cannot be read; empty if it can be
};

/// What the user says about the inputs.
struct InputStyle {
    QString smilesColumn; ///< of a table: its heading or its number, from 1; empty to guess
    QString nameColumn;   ///< the same for the molecules' names
};

/// Takes one record after the other from an input.
class RecordReader {
public:
    /// `lines` must outlive the reader.
    explicit RecordReader(LineReader& lines)
        : lines(lines)
    {
    }
    virtual ~RecordReader() = default;
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;

    /// The next record; nothing at the end. Throws ConversionError, which starts with the file name and the line
    /// number, if the rest of the input cannot be read.
    virtual std::optional<Record> next() = 0;

protected:
    LineReader& lines;
};

// The largest record, and the largest file that is one record, in bytes. What is larger is refused before it fills the
// memory.
inline constexpr qsizetype maxRecordSize = qsizetype{32} * 1024 * 1024;
inline constexpr qsizetype maxFileSize = qsizetype{256} * 1024 * 1024;

/// Takes a whole file as one record, with its bytes as they are.
std::unique_ptr<RecordReader> wholeFile(LineReader& lines, const InputStyle& style);

/// The same for a file that may contain null bytes.
std::unique_ptr<RecordReader> binaryFile(LineReader& lines, const InputStyle& style);
