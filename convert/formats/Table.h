#pragma once

#include "convert/formats/Records.h"

#include <QStringList>

/// Reads the rows of a table with a header line, each with a SMILES, a name if there is a column of names, and the
/// other columns as properties. Fields are separated by commas or, if the header has none, semicolons (CSV, RFC 4180),
/// or by tabs (TSV); they can be quoted in both. Rows without any text are skipped. A row whose number of fields is not
/// that of the header, or whose quotes are misplaced, has a fault.
std::unique_ptr<RecordReader> csvRecords(LineReader& lines, const InputStyle& style);
std::unique_ptr<RecordReader> tsvRecords(LineReader& lines, const InputStyle& style);

/// The index of the column that the user names by its heading or its number, or of the only one that looks right.
/// Throws ConversionError, without a file name, if there is none, or more than one candidate.
qsizetype smilesColumn(const QStringList& header, const QString& named);

/// The same for the column of names; -1 if none is named and there is not exactly one candidate.
qsizetype nameColumn(const QStringList& header, const QString& named);
