#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// Reads the whole file, or standard input for "-". Throws ConversionError if it cannot be read.
QByteArray readAll(const QString& fileName);

/// Writes `contents` atomically: an existing file is replaced only by the complete new one; an
/// empty one is filled where it is. "-" is standard output.
/// Throws ConversionError if it cannot be written.
void writeAll(const QString& fileName, const QByteArray& contents);

/// Writes several files like writeAll, several at a time: each waits for the disk. After the first that cannot be
/// written, no more are begun.
void writeFiles(const std::vector<std::pair<QString, QByteArray>>& files);

/// The name of an input file for messages.
QString shownName(const QString& fileName);
