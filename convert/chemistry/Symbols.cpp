#include "convert/chemistry/Symbols.h"

#include "model/Elements.h"

#include <QRegularExpression>

namespace {

constexpr int maxAttachment = 99;
constexpr int maxCharge = 99;

/// Parses a charge such as "+", "2+", "+2" or "--"; nothing if it is out of range.
std::optional<int> parseCharge(const QString& text)
{
    if (text.isEmpty())
        return 0;
    const bool negative = !text.contains(u'+');
    QString digits = text;
    digits.removeIf([](QChar c) { return !c.isDigit(); });
    const int size = digits.isEmpty() ? static_cast<int>(text.size()) : digits.toInt();
    if (size < 1 || size > maxCharge)
        return std::nullopt;
    return negative ? -size : size;
}

} // namespace

std::optional<ElementSymbol> parseSymbol(QStringView symbol)
{
    static const QRegularExpression form(QStringLiteral(
        R"(\A([1-9][0-9]{0,2})?(\*|[A-Z][a-z]?)([0-9]{0,2}[+\-\x{2212}]|[+\-\x{2212}][0-9]{1,2}|\+{2,4}|-{2,4})?\z)"));
    if (const int number = elementNumber(symbol); number > 0)
        return ElementSymbol{number, 0, 0};
    static const QRegularExpression numbered(QStringLiteral(R"(\AR([1-9][0-9]?)\z)"));
    if (const QRegularExpressionMatch match = numbered.match(symbol); match.hasMatch())
        return ElementSymbol{0, match.captured(1).toInt(), 0};
    const QRegularExpressionMatch match = form.match(symbol);
    if (!match.hasMatch())
        return std::nullopt;

    ElementSymbol element;
    element.isotope = match.captured(1).toInt();
    const QString name = match.captured(2);
    if ((name == QLatin1String("D") || name == QLatin1String("T")) && element.isotope == 0) {
        element.number = 1;
        element.isotope = name == QLatin1String("D") ? 2 : 3;
    } else {
        element.number = elementNumber(name);
    }
    const std::optional<int> charge = parseCharge(match.captured(3));
    if ((element.number == 0 && name != QLatin1String("*")) || !charge)
        return std::nullopt;
    element.charge = *charge;
    return element;
}

QString symbolOf(const ElementSymbol& element)
{
    if (element.number == 0 && element.isotope > 0 && element.isotope <= maxAttachment && element.charge == 0)
        return u'R' + QString::number(element.isotope);
    QString text;
    if (element.isotope > 0)
        text += QString::number(element.isotope);
    text += elementName(element.number);
    if (element.charge == 0)
        return text;
    if (std::abs(element.charge) > 1)
        text += QString::number(std::abs(element.charge));
    return text + (element.charge > 0 ? u'+' : u'-');
}

QString elementName(int number)
{
    return number >= 1 && number <= elementCount ? elementSymbol(number) : QStringLiteral("*");
}
