#include "model/Elements.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

constexpr qsizetype letters = 26;

/// By atomic number, starting at 1.
constexpr char symbols[] = "H He Li Be B C N O F Ne Na Mg Al Si P S Cl Ar K Ca Sc Ti V Cr Mn Fe Co Ni Cu Zn Ga Ge As "
                           "Se Br Kr Rb Sr Y Zr Nb Mo Tc Ru Rh Pd Ag Cd In Sn Sb Te I Xe Cs Ba La Ce Pr Nd Pm Sm Eu Gd "
                           "Tb Dy Ho Er Tm Yb Lu Hf Ta W Re Os Ir Pt Au Hg Tl Pb Bi Po At Rn Fr Ra Ac Th Pa U Np Pu Am "
                           "Cm Bk Cf Es Fm Md No Lr Rf Db Sg Bh Hs Mt Ds Rg Cn Nh Fl Mc Lv Ts Og";

const QStringList& symbolList()
{
    static const QStringList list = QString::fromLatin1(symbols).split(u' ');
    return list;
}

/// The index of a symbol in a table of all pairs of letters; `second` is null for a symbol of one letter.
std::size_t pairIndex(QChar first, QChar second)
{
    const int column = second.isNull() ? 0 : second.unicode() - u'a' + 1;
    return static_cast<std::size_t>((first.unicode() - u'A') * (letters + 1) + column);
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

QString elementSymbol(int number)
{
    return symbolList().value(number - 1);
}

int elementNumber(QStringView symbol)
{
    static const std::vector<int> table = [] {
        std::vector<int> byLetters(letters * (letters + 1));
        for (int number = 1; number <= elementCount; ++number) {
            const QString name = elementSymbol(number);
            byLetters[pairIndex(name[0], name.size() > 1 ? name[1] : QChar())] = number;
        }
        return byLetters;
    }();
    const bool isPlain = (symbol.size() == 1 || (symbol.size() == 2 && symbol[1] >= u'a' && symbol[1] <= u'z'))
        && symbol[0] >= u'A' && symbol[0] <= u'Z';
    return isPlain ? table[pairIndex(symbol[0], symbol.size() > 1 ? symbol[1] : QChar())] : 0;
}

bool startsElement(QChar letter)
{
    return std::any_of(symbolList().begin(), symbolList().end(),
                       [letter](const QString& symbol) { return symbol[0] == letter; });
}

std::array<QString, 3> elementColor(QStringView label)
{
    static const QHash<QString, std::array<QString, 3>> table = [] {
        QHash<QString, std::array<QString, 3>> byElement;
        for (const Color& color : colors)
            for (const QString& name : QString::fromLatin1(color.elements).split(u' '))
                byElement.insert(name, {color.rgb[0], color.rgb[1], color.rgb[2]});
        return byElement;
    }();
    // An optional mass number, the start of the symbol, and what follows it; a charge alone does not make it a label of
    // several atoms.
    static const QRegularExpression form(
        QStringLiteral(R"(\A[0-9]*([A-Z][a-z]?)((?:[0-9]*[+\-\x{2212}]+[0-9]*)?\z)?)"));
    const QRegularExpressionMatch match = form.match(label);
    QString name = match.captured(1);
    const bool isAlone = match.hasCaptured(2);
    if (isAlone && elementNumber(name) > 0)
        return table.value(name, {"255", "20", "150"});
    while (!name.isEmpty() && !table.contains(name))
        name.chop(1);
    return table.value(name, {"128", "128", "128"});
}
