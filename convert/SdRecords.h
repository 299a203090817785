#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

/// What the line between the records of an SD file begins with.
inline constexpr char endOfRecord[] = "$$$$";

/// A record of an SD file, or a molfile.
struct SdRecord {
    int firstLine = 1;                             ///< of the record in its file, from 1
    QByteArray block;                              ///< the molfile, up to "M  END"
    std::vector<std::pair<QString, QString>> data; ///< the properties behind it: name and text
};

/// The records of a file. Lines may end in any way; blank lines behind the last record are none.
std::vector<SdRecord> splitRecords(const QByteArray& text);

/// Puts "any atom" in the place of the atoms of a molfile whose symbol is `symbol`; returns their indices, from 0.
std::vector<unsigned> replaceSymbol(QByteArray& block, const QByteArray& symbol);

/// Throws ConversionError where the record announces more than it has lines for, so that whoever reads it need not make
/// room for it in vain, and where a bond cannot be, with its line.
void checkAnnouncements(const SdRecord& record);
