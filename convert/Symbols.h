#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <optional>

/// What the symbol of an atom says. The number 0 stands for "*", any atom.
struct ElementSymbol {
    int number = 0;  ///< atomic number
    int isotope = 0; ///< mass number; 0 where none is given
    int charge = 0;

    bool operator==(const ElementSymbol&) const = default;
};

/// Reads a symbol such as "N", "N+", "Fe3+", "Ca+2", "13C", "2H" or "D". Nothing where it is not that of an element,
/// with or without a mass number and a charge: such a label ("OH", "R1", "CL") is a pseudo-atom.
std::optional<ElementSymbol> parseSymbol(QStringView symbol);

/// The symbol of an element with its isotope before and its charge behind it, as parseSymbol reads it.
QString symbolOf(const ElementSymbol& element);

/// The symbol of the element with the atomic number `number`, from 1 to 118; "*" for 0.
QString elementName(int number);

/// The colour of an atom that comes without one: that of its element in the library, or else the customary one.
std::array<QString, 3> elementColor(QStringView symbol);
