#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// Conversion between numbers and text: decimal, always in the C locale.

/// The integer at the start of `text`, as read by atoi: white space, sign, digits; 0 if there is none. Values outside
/// the range of int are clamped.
int integerPrefix(QStringView text);

/// The real number at the start of `text`, as read by atof; 0 if there is none. "nan" and numbers that overflow give a
/// non-finite value.
double realPrefix(QStringView text);

/// `word` as an int; nothing if any part of it does not belong to the number or the number is out of range.
std::optional<int> wholeInteger(QStringView word);

/// `word` as a float; nothing if any part of it does not belong to the number or the number is out of range or not
/// finite.
std::optional<float> wholeReal(QStringView word);

/// `value` as formatted by %g: at most six significant digits, in the shorter of fixed and exponent notation.
QString shortReal(double value);
