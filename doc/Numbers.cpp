#include "doc/Numbers.h"

#include "canvas/truncate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <locale.h> // NOLINT(modernize-deprecated-headers): clocale does not promise newlocale

namespace {

/// `text` without leading white space and without a leading plus sign, unless that is followed by another sign or
/// nothing. Characters outside ASCII become characters that are not part of any number.
QByteArray numberText(QStringView text)
{
    const QStringView space = u" \t\n\v\f\r"; // as for isspace in the C locale
    const auto* start = std::find_if_not(text.begin(), text.end(), [&](QChar c) { return space.contains(c); });
    QByteArray number = text.sliced(start - text.begin()).toLatin1();
    if (number.size() > 1 && number[0] == '+' && number[1] != '-' && number[1] != '+')
        number.remove(0, 1);
    return number;
}

/// The value of atof(number) in the C locale: infinite on overflow, 0 on underflow.
double asciiReal(const QByteArray& number)
{
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(number.constData(), nullptr, cLocale);
}

} // namespace

int integerPrefix(QStringView text)
{
    const QByteArray number = numberText(text);
    int value = 0;
    const auto [end, error] = std::from_chars(number.begin(), number.end(), value);
    if (error == std::errc::result_out_of_range)
        return number.startsWith('-') ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    return value;
}

double realPrefix(QStringView text)
{
    return asciiReal(numberText(text));
}

std::optional<int> wholeInteger(QStringView word)
{
    const QByteArray number = numberText(word);
    int value = 0;
    const auto [end, error] = std::from_chars(number.begin(), number.end(), value);
    if (error != std::errc() || end != number.end())
        return std::nullopt;
    return value;
}

std::optional<float> wholeReal(QStringView word)
{
    const QByteArray number = numberText(word);
    double value = 0;
    const auto [end, error] = std::from_chars(number.begin(), number.end(), value);
    if (end != number.end() || end == number.begin())
        return std::nullopt;
    if (error == std::errc::result_out_of_range)
        value = asciiReal(number);
    if (!std::isfinite(value) || std::fabs(value) > double{std::numeric_limits<float>::max()})
        return std::nullopt;
    return static_cast<float>(value);
}

QString shortReal(double value)
{
    std::array<char, 32> buffer;
    const auto [end, error] = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::general, 6);
    return QString::fromLatin1(buffer.begin(), end - buffer.begin());
}
