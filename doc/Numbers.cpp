#include "doc/Numbers.h"

#include "canvas/truncate.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

/// `text` without leading white space and, where a digit, point or letter follows it, without a plus sign; what is not
/// ASCII becomes a character that is part of no number.
QByteArray numberText(QStringView text)
{
    const auto start = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
    QByteArray number = text.sliced(start - text.begin()).toLatin1();
    if (number.size() > 1 && number[0] == '+' && number[1] != '-' && number[1] != '+')
        number.remove(0, 1);
    return number;
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
    const QByteArray number = numberText(text);
    double value = 0;
    const auto [end, error] = std::from_chars(number.begin(), number.end(), value);
    if (error != std::errc::result_out_of_range)
        return value;
    // Out of range is both what is too large and what is too small to be told from zero.
    return QByteArray(number.begin(), end - number.begin()).toDouble();
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
        value = QByteArray(number.begin(), end - number.begin()).toDouble();
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
