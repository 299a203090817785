#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// A record of an SD file, or a single molfile.
struct SdRecord {
    int firstLine = 1;                             ///< line number in the file, from 1
    QByteArray block;                              ///< the molfile, up to "M  END"
    std::vector<std::pair<QString, QString>> data; ///< the properties after it: name and text
};

/// Splits a file into records, ignoring blank lines after the last one. LF, CR LF and CR all end a line.
std::vector<SdRecord> splitRecords(const QByteArray& text);

/// Replaces the symbol `symbol` in the atom lines of a molfile with "any atom". Returns the indices of these atoms,
/// from 0.
std::vector<unsigned> replaceSymbol(QByteArray& block, const QByteArray& symbol);

/// Throws ConversionError, with the line number, for invalid bonds and for declared sizes that exceed the record, for
/// which a parser would allocate memory.
void checkRecord(const SdRecord& record);
