#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// Numbers in texts. All of them are decimal and in the C locale, whatever the environment says.

/// The integer at the start of `text`, as atoi reads it: white space, a sign, digits; 0 where there is none. What does
/// not fit an int gives the end of its range.
int integerPrefix(QStringView text);

/// The real number at the start of `text`, as atof reads it; 0 where there is none. "nan" and what is too large give a
/// value that is not finite.
double realPrefix(QStringView text);

/// The int that `word` is as a whole, or nothing.
std::optional<int> wholeInteger(QStringView word);

/// The finite number within the range of float that `word` is as a whole, or nothing.
std::optional<float> wholeReal(QStringView word);

/// `value` in the style of the format %g: at most six significant digits, in the shorter of plain and exponent form.
QString shortReal(double value);
