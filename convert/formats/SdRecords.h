#pragma once

#include "convert/formats/Records.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/// The property with the number that the records of one drawing share.
inline constexpr char drawingProperty[] = "KYTSTUDIO_DRAWING";

/// A record of an SD file, or a single molfile.
struct SdRecord {
    int firstLine = 1;                             ///< line number in the file, from 1
    QByteArray block;                              ///< the molfile, up to "M  END"
    std::vector<std::pair<QString, QString>> data; ///< the properties after it: name and text
};

/// Splits the text of a file, or of a part that starts at the line `firstLine`, into records. Blank ones are skipped.
std::vector<SdRecord> splitRecords(const QByteArray& text, int firstLine = 1);

/// Reads the records of a molfile or an SD file; consecutive ones of the same drawing are one. A record larger than
/// maxRecordSize has a fault. A file without a record throws ConversionError.
std::unique_ptr<RecordReader> sdRecords(LineReader& lines, const InputStyle& style);

/// Replaces the symbol `symbol` in the atom lines of a molfile with "any atom". Returns the indices of these atoms,
/// from 0.
std::vector<unsigned> replaceSymbol(QByteArray& block, const QByteArray& symbol);

/// The invalid bonds of a record, and declared sizes that exceed it, for which a parser would allocate memory; each
/// fault as "line 5 what is wrong", with the line in the record, from 1.
QStringList recordFaults(const SdRecord& record);
