#include "convert/chemistry/ParserReason.h"

#include <RDGeneral/RDLog.h>

#include <QRegularExpression>
#include <QStringList>

#include <sstream>

namespace {

std::ostringstream& parserLog()
{
    static std::ostringstream log;
    return log;
}

/// A message and what it says in plain words. %1 and %2 stand for what the form captures; a captured atom index is
/// counted from 1 then.
struct Wording {
    const char* form;
    const char* text;
    int atomIndex = 0; ///< which capture is an index; 0 if none is
};

const Wording wordings[] = {
    {"unclosed ring", "ring not closed"},
    {"extra open parentheses", "parenthesis not closed"},
    {"extra close parentheses", "closing parenthesis without an opening one"},
    {R"(ring closure (\d+) duplicates bond)", "ring closure %1 repeats a bond"},
    {R"(duplicated ring closure (\d+) bonds atom)", "ring closure %1 joins an atom to itself"},
    {R"(Explicit valence for atom # (\d+) (\w+), \d+, is greater than permitted)",
     "atom %1 (%2) has more bonds than its valence allows", 1},
    {R"(non-ring atom (\d+) marked aromatic)", "atom %1 is aromatic, but not in a ring", 1},
    {"syntax error", "invalid SMILES"},
};

/// The indices in the text as numbers from 1, separated by commas.
QString atomNumbers(const QString& indices)
{
    QStringList numbers;
    for (const QString& index : indices.simplified().split(u' ', Qt::SkipEmptyParts))
        numbers.append(QString::number(index.toInt() + 1));
    return numbers.join(QStringLiteral(", "));
}

} // namespace

void captureParserLog()
{
    rdErrorLog = std::make_shared<boost::logging::rdLogger>(&parserLog());
}

QString takeLoggedReason()
{
    if (parserLog().tellp() == std::streampos(0))
        return QString();
    const QString text = QString::fromStdString(parserLog().str());
    parserLog().str(std::string());
    // A line starts with the time of day.
    static const QRegularExpression stamp(QStringLiteral(R"(\A\s*\[[0-9:]*\]\s*)"));
    return plainReason(text.section(u'\n', 0, 0).remove(stamp));
}

QString plainReason(const QString& message)
{
    static const QRegularExpression kekulize(QStringLiteral(R"(Can't kekulize mol\.\s*Unkekulized atoms: ([0-9 ]+))"));
    if (const QRegularExpressionMatch match = kekulize.match(message); match.hasMatch())
        return QStringLiteral("aromatic ring without alternating double bonds (atoms %1)")
            .arg(atomNumbers(match.captured(1)));
    for (const Wording& wording : wordings) {
        const QRegularExpressionMatch match = QRegularExpression(QLatin1String(wording.form)).match(message);
        if (!match.hasMatch())
            continue;
        QString text = QString::fromLatin1(wording.text);
        for (int i = 1; i <= match.lastCapturedIndex(); ++i)
            text = text.arg(i == wording.atomIndex ? atomNumbers(match.captured(i)) : match.captured(i));
        return text;
    }
    return message.simplified();
}
