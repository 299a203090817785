#include "convert/pictures/AtomLabel.h"

#include "convert/chemistry/Symbols.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace {

/// The groups that are written like an element. Longer ones first where one starts with another.
constexpr const char* groups = "TBDMS|TBDPS|TIPS|TBS|TMS|TES|Boc|Cbz|Fmoc|Troc|Alloc|MOM|PMB|THP|Cy|Cp|Me|Et|"
                               "[ni]-?Pr|Pr|[nist]-?Bu|Bu|Ph|Bn|Bz|Ac|Ar|Ts|Tf|Ms|Piv|Py|Hal";

/// A part of a formula that keeps together when the label is turned round.
struct Part {
    QString core;
    QString turnedCore; // differs for a formula in parentheses
    QString count;
    bool isResidue = false;
};

QString marked(const QString& text, const char* tag)
{
    return text.isEmpty() ? QString() : QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), text);
}

QString markup(const QString& core, const Part& part)
{
    return core + marked(part.count, part.isResidue ? "sup" : "sub");
}

QString markup(const std::vector<Part>& parts)
{
    QString text;
    for (const Part& part : parts)
        text += markup(part.core, part);
    return text;
}

QString turnedMarkup(const std::vector<Part>& parts)
{
    QString text;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        text += markup(part->turnedCore, *part);
    return text;
}

bool isElement(const QString& name)
{
    const std::optional<ElementSymbol> element = parseSymbol(name);
    return element && element->number > 0;
}

std::vector<Part> parseFormula(const QString& text, qsizetype& at, int depth);

/// Reads a group in parentheses with its count.
std::optional<Part> parseParentheses(const QString& text, qsizetype& at, int depth)
{
    static const QRegularExpression closing(QStringLiteral("\\G\\)([0-9]*)"));
    constexpr int deepest = 4;
    ++at;
    const std::vector<Part> inner = depth < deepest ? parseFormula(text, at, depth + 1) : std::vector<Part>();
    const QRegularExpressionMatch end = closing.match(text, at);
    if (inner.empty() || !end.hasMatch())
        return std::nullopt;
    at = end.capturedEnd();
    return Part{u'(' + markup(inner) + u')', u'(' + turnedMarkup(inner) + u')', end.captured(1), false};
}

/// Reads a group, residue or element with its count.
std::optional<Part> parseUnit(const QString& text, qsizetype& at)
{
    static const QRegularExpression residue(QStringLiteral("\\G((?:R|X|Y|Z|Q)'*)([0-9]*)(?![a-z])"));
    static const QRegularExpression group(QStringLiteral("\\G(%1)([0-9]*)").arg(QLatin1String(groups)));
    static const QRegularExpression element(QStringLiteral("\\G([A-Z][a-z]?)([0-9]*)"));
    QRegularExpressionMatch match = group.match(text, at);
    bool isResidue = false;
    if (!match.hasMatch()) {
        match = residue.match(text, at);
        isResidue = match.hasMatch();
    }
    if (!match.hasMatch()) {
        match = element.match(text, at);
        if (!match.hasMatch() || !isElement(match.captured(1)))
            return std::nullopt;
    }
    at = match.capturedEnd();
    return Part{match.captured(1), match.captured(1), match.captured(2), isResidue};
}

/// Reads a formula from `at`, up to its end or a closing parenthesis. Empty if it is none.
std::vector<Part> parseFormula(const QString& text, qsizetype& at, int depth)
{
    std::vector<Part> parts;
    while (at < text.size() && text[at] != u')') {
        const std::optional<Part> part = text[at] == u'(' ? parseParentheses(text, at, depth) : parseUnit(text, at);
        if (!part)
            return {};
        parts.push_back(*part);
    }
    return parts;
}

} // namespace

AtomLabel atomLabel(const QString& symbol)
{
    static const QRegularExpression form(QStringLiteral(R"(\A([0-9]{0,3})(.*?)((?:[0-9]?[+\-\x{2212}])?)\z)"));
    const QRegularExpressionMatch match = form.match(symbol);
    const QString formula = match.captured(2);
    qsizetype at = 0;
    const std::vector<Part> parts = parseFormula(formula, at, 0);
    if (parts.empty() || at < formula.size())
        return {symbol, symbol, {}};
    std::vector<Part> label = parts;
    const QString head = label.front().core;
    // A digit before the sign counts the last group if nothing else does: NH3+, but SO42-.
    QString charge = match.captured(3);
    if (charge.size() > 1 && label.back().count.isEmpty()) {
        label.back().count = charge.left(1);
        charge.remove(0, 1);
    }
    charge = marked(charge.replace(QChar(0x2212), u'-'), "sup");
    const QString isotope = marked(match.captured(1), "sup");
    label.front().core.prepend(isotope);
    label.front().turnedCore.prepend(isotope);
    return {markup(label) + charge, charge + turnedMarkup(label), isElement(head) ? head : QString()};
}
