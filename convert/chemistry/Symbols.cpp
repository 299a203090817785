#include "convert/chemistry/Symbols.h"

#include <GraphMol/PeriodicTable.h>

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <vector>

namespace {

constexpr int elements = 118;
constexpr int maxAttachment = 99;
constexpr int maxCharge = 99;

/// The element symbols by atomic number; index 0 is "*".
const QStringList& elementNames()
{
    static const QStringList names = [] {
        QStringList list;
        for (int number = 0; number <= elements; ++number)
            list.append(QString::fromStdString(RDKit::PeriodicTable::getTable()->getElementSymbol(number)));
        return list;
    }();
    return names;
}

const QHash<QString, int>& numbers()
{
    static const QHash<QString, int> known = [] {
        QHash<QString, int> table;
        for (int number = 0; number <= elements; ++number)
            table.insert(elementNames()[number], number);
        return table;
    }();
    return known;
}

/// The atomic number of a plain element symbol, without the detour over a pattern; 0 for anything else, also D and T.
int plainElement(QStringView symbol)
{
    constexpr qsizetype letters = 26;
    static const std::vector<int> table = [] {
        std::vector<int> byLetters(letters * (letters + 1));
        for (int number = 1; number <= elements; ++number) {
            const QString& name = elementNames()[number];
            byLetters[(name[0].unicode() - u'A') * (letters + 1)
                      + (name.size() > 1 ? name[1].unicode() - u'a' + 1 : 0)] = number;
        }
        return byLetters;
    }();
    const bool isPlain = (symbol.size() == 1 || (symbol.size() == 2 && symbol[1] >= u'a' && symbol[1] <= u'z'))
        && symbol[0] >= u'A' && symbol[0] <= u'Z';
    if (!isPlain)
        return 0;
    const qsizetype second = symbol.size() > 1 ? symbol[1].unicode() - u'a' + 1 : 0;
    return table[static_cast<std::size_t>((symbol[0].unicode() - u'A') * (letters + 1) + second)];
}

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

/// The colour of one or more elements.
struct Color {
    const char* elements;
    const char* rgb[3];
};

const Color colors[] = {
    {"H D T", {"255", "255", "255"}},
    {"C", {"64", "64", "64"}},
    {"N", {"48", "80", "255"}},
    {"O", {"255", "0", "0"}},
    {"F Cl", {"0", "200", "0"}},
    {"Br", {"160", "40", "0"}},
    {"I At", {"130", "0", "160"}},
    {"S Se Te", {"230", "200", "0"}},
    {"P As", {"255", "140", "0"}},
    {"B", {"255", "180", "180"}},
    {"Si", {"200", "160", "100"}},
    {"He Ne Ar Kr Xe Rn", {"0", "200", "200"}},
    {"Li Na K Rb Cs Fr", {"120", "0", "220"}},
    {"Be Mg Ca Sr Ba Ra", {"0", "110", "0"}},
    {"Fe", {"200", "100", "0"}},
};

} // namespace

std::optional<ElementSymbol> parseSymbol(QStringView symbol)
{
    static const QRegularExpression form(QStringLiteral(
        R"(\A([1-9][0-9]{0,2})?(\*|[A-Z][a-z]?)([0-9]{0,2}[+\-\x{2212}]|[+\-\x{2212}][0-9]{1,2}|\+{2,4}|-{2,4})?\z)"));
    if (const int number = plainElement(symbol); number > 0)
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
        element.number = numbers().value(name, -1);
    }
    const std::optional<int> charge = parseCharge(match.captured(3));
    if (element.number < 0 || !charge)
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
    return elementNames()[number >= 0 && number <= elements ? number : 0];
}

std::array<QString, 3> elementColor(QStringView symbol)
{
    static const QHash<QString, std::array<QString, 3>> table = [] {
        QHash<QString, std::array<QString, 3>> byElement;
        for (const Color& color : colors)
            for (const QString& name : QString::fromLatin1(color.elements).split(u' '))
                byElement.insert(name, {color.rgb[0], color.rgb[1], color.rgb[2]});
        return byElement;
    }();
    const std::optional<ElementSymbol> element = parseSymbol(symbol);
    if (element && element->number > 0)
        return table.value(elementName(element->number), {"255", "20", "150"});
    // A label such as "OH" or "CH3" has the colour of the element that it starts with.
    static const QRegularExpression start(QStringLiteral(R"(\A[0-9]*([A-Z][a-z]?))"));
    QString name = start.match(symbol).captured(1);
    while (!name.isEmpty() && !table.contains(name))
        name.chop(1);
    return table.value(name, {"128", "128", "128"});
}
