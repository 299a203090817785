#pragma once

#include <QByteArray>
#include <QString>

/// Reads the whole file, or standard input for "-". Throws ConversionError if it cannot be read.
QByteArray readAll(const QString& fileName);

/// Writes `contents` atomically: an existing file is replaced only by the complete new one; an
/// empty one is filled where it is. "-" is standard output.
/// Throws ConversionError if it cannot be written.
void writeAll(const QString& fileName, const QByteArray& contents);

/// The name of an input file for messages.
QString shownName(const QString& fileName);
