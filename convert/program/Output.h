#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

/// Where converted texts go. All functions throw ConversionError if something cannot be written.
class Output {
public:
    Output() = default;
    virtual ~Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Adds the text of a record.
    virtual void write(const QByteArray& text) = 0;

    /// Makes what was written final. Without it, nothing remains of what was written to files.
    virtual void commit() = 0;

    /// Whether what was written can still be discarded.
    virtual bool canDiscard() const { return true; }
};

/// One output: a file, which is replaced by the complete new one at commit(), standard output for "-", or a device. A
/// file whose name ends with ".gz" is compressed.
std::unique_ptr<Output> openOutput(const QString& fileName);

/// Whether the name has a placeholder for numbers: "%d", or "%03d" for three digits.
bool isNumbered(const QString& fileName);

/// A file for each text, with its number, from 1, in place of the placeholder. All appear at commit().
std::unique_ptr<Output> openNumberedOutput(const QString& pattern);

/// Writes a whole output.
void writeAll(const QString& fileName, const QByteArray& contents);
