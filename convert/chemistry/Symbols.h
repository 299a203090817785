#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// The start of the line that ends a record of an SD file. A symbol that starts like this cannot be an alias there.
inline constexpr char endOfRecord[] = "$$$$";

/// The parsed symbol of an atom. The number 0 stands for "*", any atom; with a mass number it is the attachment point
/// of that number, as programs write it in SMILES and molfiles.
struct ElementSymbol {
    int number = 0;  ///< atomic number
    int isotope = 0; ///< mass number; 0 if unspecified
    int charge = 0;

    bool operator==(const ElementSymbol&) const = default;
};

/// Parses an element symbol with an optional mass number and charge, such as "N", "N+", "Fe3+", "Ca+2", "13C", "2H" or
/// "D", or an attachment point such as "R1". Returns nothing for any other label, such as "OH", "R" or "CL": that is a
/// pseudo-atom.
std::optional<ElementSymbol> parseSymbol(QStringView symbol);

/// The symbol with its mass number before and its charge after it, in the form that parseSymbol reads.
QString symbolOf(const ElementSymbol& element);

/// The element symbol for the atomic number `number`, from 1 to 118; "*" for 0.
QString elementName(int number);
