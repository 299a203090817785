#pragma once

#include <QByteArray>
#include <QString>

/// All of the file, or of standard input for "-". Throws ConversionError where it cannot be read.
QByteArray readAll(const QString& fileName);

/// Writes all of `contents`, or nothing: an existing file stays unless the new one is whole. "-" is standard output.
/// Throws ConversionError where it cannot be written.
void writeAll(const QString& fileName, const QByteArray& contents);

/// The name of an input in messages.
QString shownName(const QString& fileName);
