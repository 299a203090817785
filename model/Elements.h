#pragma once

#include <QString>
#include <QStringView>

#include <array>

/// The number of chemical elements; their atomic numbers start at 1.
inline constexpr int elementCount = 118;

/// The symbol of the element with this atomic number; null if there is none.
QString elementSymbol(int number);

/// The atomic number of the element with exactly this symbol; 0 for any other text, also for D and T.
int elementNumber(QStringView symbol);

/// Whether the symbol of an element starts with `letter`, a capital.
bool startsElement(QChar letter);

/// The default colour of an atom with this label, as decimal texts of red, green and blue: that of its element in the
/// library, or else the conventional one. A label such as "OH" has the colour of the element that it starts with.
std::array<QString, 3> elementColor(QStringView label);
