#pragma once

#include "convert/formats/ByteSource.h"

#include <QString>

/// At the start of a file, it says that the text is UTF-8; LineReader removes it.
inline constexpr char byteOrderMark[] = "\xef\xbb\xbf";

/// Reads a source line by line; only a part of it is in memory. LF, CR LF and CR all end a line; the last line may do
/// without. A line that is not valid UTF-8 is read as Latin-1. A byte order mark is skipped.
class LineReader {
public:
    static constexpr qsizetype maxLength = qsizetype{1024} * 1024; ///< bytes

    /// `name` is the file name for messages. `source` must outlive the reader.
    LineReader(ByteSource& source, QString name);

    /// Puts the next line, in UTF-8 and without its end, into `line`. Returns false at the end. Throws ConversionError,
    /// with the file name and the line number, for a null byte, a line longer than maxLength, and an input that cannot
    /// be read.
    bool next(QByteArray& line);

    /// Whether a null byte is an error.
    enum class Contents { Text, Binary };

    /// All that follows, as it is. Throws ConversionError, as next() does, for a null byte in a text and for more than
    /// `limit` bytes.
    QByteArray takeAll(qsizetype limit, Contents contents = Contents::Text);

    /// The number of the line that was read last, from 1.
    int number() const { return lines; }

    const QString& fileName() const { return name; }

    /// Whether next() would return without waiting.
    bool isReady() const;

private:
    bool findEnd();
    bool refill();
    [[noreturn]] void fail(const QString& reason) const;

    ByteSource& source;
    QString name;
    QByteArray buffer;
    qsizetype start = 0; ///< of the next line in `buffer`
    qsizetype end = 0;   ///< of the next line, where findEnd() has found it; otherwise what it has searched
    bool atEnd = false;  ///< of the source
    bool skipLf = false; ///< the last line ended with a CR, so that a LF belongs to it
    int lines = 0;
};

/// The line in UTF-8. A line that is not valid UTF-8 is Latin-1.
QByteArray toUtf8Line(const QByteArray& line);
