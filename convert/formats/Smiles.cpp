#include "convert/formats/Smiles.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Layout.h"
#include "convert/chemistry/ParserReason.h"
#include "convert/chemistry/Perception.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Symbols.h"

#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QRegularExpression>

using namespace RDKit;

namespace {

// The layout needs memory quadratic in the number of atoms.
constexpr qsizetype maxLineLength = qsizetype{16} * 1024; // characters
constexpr std::size_t maxAtomsToWrite = 2'000;            // RDKit writes SMILES recursively

/// A line of a SMILES file.
struct Line {
    QString smiles; ///< including its extension in vertical bars, if any
    QString name;
};

Line parseLine(const QString& text)
{
    static const QRegularExpression form(QStringLiteral(R"(\A(\S+(?:\s+\|[^|]*\|)?)(?:\s+(.*))?\z)"));
    const QRegularExpressionMatch match = form.match(text);
    return {match.captured(1), match.captured(2).simplified()};
}

/// Warns of stereo that cannot be drawn. `molecule` must not be sanitized.
void noteUnusualStereo(const RWMol& molecule, Notes& notes)
{
    for (const Atom* atom : molecule.atoms()) {
        const Atom::ChiralType type = atom->getChiralTag();
        const bool isTetrahedral = type == Atom::CHI_TETRAHEDRAL_CW || type == Atom::CHI_TETRAHEDRAL_CCW;
        if (type != Atom::CHI_UNSPECIFIED && (!isTetrahedral || atom->getTotalDegree() == 2))
            notes.add("stereo of allenes and of non-tetrahedral centres: discarded, not supported in drawings");
    }
}

/// The start of a SMILES, for a message.
QString shortened(const std::string& smiles)
{
    return QString::fromStdString(smiles).left(60);
}

std::unique_ptr<RWMol> parse(const std::string& smiles, bool sanitize)
{
    SmilesParserParams params;
    params.parseName = false;
    params.sanitize = sanitize;
    params.removeHs = sanitize;
    takeLoggedReason(); // an older one
    std::unique_ptr<RWMol> molecule(SmilesToMol(smiles, params));
    if (!molecule)
        throw ConversionError(QStringLiteral("%1: %2").arg(takeLoggedReason(), shortened(smiles)));
    return molecule;
}

bool hasLabels(const RWMol& molecule)
{
    for (const Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->hasProp(common_properties::atomLabel))
            return true;
    return false;
}

/// The sanitized molecule of a SMILES that has been parsed as it is.
std::unique_ptr<RWMol> sanitized(const RWMol& parsed, const std::string& smiles)
{
    if (!hasLabels(parsed))
        return parse(smiles, true);
    auto molecule = std::make_unique<RWMol>(parsed);
    sanitizeWithLabels(*molecule);
    return molecule;
}

/// Whether a SMILES may have too many atoms, labels or unusual stereo. A SMILES has no more atoms than characters.
bool needsPreview(const QString& smiles)
{
    return smiles.size() > static_cast<qsizetype>(maxAtomsToLayOut) || smiles.contains(u'@') || smiles.contains(u'|');
}

/// Parses a SMILES as it is before sanitizing it, which takes long for a large molecule and removes unusual stereo.
std::unique_ptr<RWMol> previewed(const std::string& smiles, Notes& notes)
{
    const std::unique_ptr<RWMol> parsed = parse(smiles, false);
    const unsigned atoms = parsed->getNumAtoms();
    if (atoms > maxAtomsToLayOut)
        throw ConversionError(
            QStringLiteral("too many atoms for the layout: %1 (limit %2)").arg(atoms).arg(maxAtomsToLayOut));
    noteUnusualStereo(*parsed, notes);
    return sanitized(*parsed, smiles);
}

SketchMolecule readLine(const QString& text, const QString& place, Notes& notes)
{
    if (text.size() > maxLineLength)
        throw ConversionError(QStringLiteral("line longer than %1 characters").arg(maxLineLength));
    const Line line = parseLine(text);
    const auto* const wordEnd =
        std::find_if(line.smiles.begin(), line.smiles.end(), [](QChar c) { return c.isSpace(); });
    if (std::any_of(line.smiles.begin(), wordEnd, [](QChar c) { return c <= u' ' || c > u'~'; }))
        throw ConversionError(QStringLiteral("invalid SMILES: ") + line.smiles.section(u' ', 0, 0).left(60));
    const std::string smiles = line.smiles.toStdString();
    const std::unique_ptr<RWMol> molecule = needsPreview(line.smiles) ? previewed(smiles, notes) : parse(smiles, true);
    if (molecule->getNumAtoms() == 0)
        throw ConversionError(QStringLiteral("molecule without atoms"));
    SketchMolecule drawn =
        layOut(*molecule, line.name.isEmpty() ? place : QStringLiteral("%1 (%2)").arg(place, line.name), notes);
    drawn.name = line.name;
    return drawn;
}

/// `label` with the special characters of the extension escaped.
QString escaped(const QString& label)
{
    QString text;
    for (const QChar c : label)
        text += QStringLiteral("&;$|").contains(c) ? QStringLiteral("&#%1;").arg(c.unicode()) : QString(c);
    return text;
}

/// Sets the labels of atoms that are not elements, for the extended SMILES. Returns their number.
int setLabels(RWMol& molecule, const SketchMolecule& drawn)
{
    int labels = 0;
    for (Atom* atom : molecule.atoms()) {
        const QString& symbol = drawn.atoms[atom->getIdx()].symbol;
        if (atom->getAtomicNum() != 0 || parseSymbol(symbol))
            continue;
        atom->setProp(common_properties::atomLabel, escaped(symbol).toStdString());
        ++labels;
    }
    return labels;
}

/// The SMILES of a chemically invalid molecule, as drawn.
std::string unsanitizedSmiles(const SketchMolecule& drawn, Notes& notes)
{
    notes.add("chemically invalid molecules: written without stereo");
    Notes ignored;
    const std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    molecule->clearConformers();
    for (Bond* bond : molecule->bonds())
        bond->setBondDir(Bond::NONE);
    molecule->updatePropertyCache(false);
    MolOps::fastFindRings(*molecule);
    return MolToSmiles(*molecule);
}

qsizetype hydrogenBonds(const SketchMolecule& drawn)
{
    return std::count_if(drawn.bonds.begin(), drawn.bonds.end(), [](const SketchBond& bond) {
        return bond.kinds.size() == 1 && bond.kinds.front() == KYTBT_DashedLine;
    });
}

/// Whether the first line of a file names its columns, as "SMILES name" does. No SMILES contains that word.
bool isHeading(const QByteArray& line)
{
    return line.left(line.indexOf('\t') >= 0 ? line.indexOf('\t') : line.size())
        .split(' ')
        .front()
        .toLower()
        .contains("smiles");
}

class SmilesReader : public RecordReader {
public:
    using RecordReader::RecordReader;

    std::optional<Record> next() override
    {
        Record record;
        while (lines.next(record.text)) {
            const QByteArray line = record.text.trimmed();
            if (line.isEmpty() || line.startsWith('#') || (isFirst && isHeading(line))) {
                isFirst = isFirst && (line.isEmpty() || line.startsWith('#'));
                continue;
            }
            isFirst = false;
            isEmpty = false;
            record.line = lines.number();
            return record;
        }
        if (isEmpty)
            throw ConversionError(lines.fileName() + QStringLiteral(": contains no SMILES"));
        return std::nullopt;
    }

private:
    bool isFirst = true;
    bool isEmpty = true;
};

} // namespace

std::unique_ptr<RecordReader> smilesRecords(LineReader& lines, const InputStyle&)
{
    return std::make_unique<SmilesReader>(lines);
}

std::vector<Sketch> readSmiles(const Record& record, const QString& file, Notes& notes)
{
    const QString place = QStringLiteral("%1:%2").arg(file).arg(record.line);
    const Deadline deadline(place);
    const QString text = QString::fromUtf8(record.text).trimmed();
    try {
        Sketch sketch;
        sketch.laidOut = true;
        SketchMolecule molecule = readLine(text, place, notes);
        if (!record.name.isEmpty())
            molecule.name = record.name;
        molecule.data = record.data;
        sketch.molecules.push_back(std::move(molecule));
        centre(sketch);
        return {std::move(sketch)};
    } catch (const std::exception& fault) {
        const QString name = record.name.isEmpty() ? parseLine(text).name : record.name;
        throw ConversionError(QStringLiteral("%1: %2%3")
                                  .arg(place, name.isEmpty() ? QString() : name + QStringLiteral(": "),
                                       plainReason(QString::fromUtf8(fault.what()))));
    }
}

QString smilesOf(const SketchMolecule& drawn, Notes& notes)
{
    if (drawn.atoms.size() > maxAtomsToWrite)
        throw ConversionError(QStringLiteral("molecule too large for SMILES: %1 atoms (limit %2)")
                                  .arg(drawn.atoms.size())
                                  .arg(maxAtomsToWrite));
    const Deadline deadline(QStringLiteral("writing SMILES"));
    notes.add("hydrogen bonds: omitted, not supported in SMILES", hydrogenBonds(drawn));
    const std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, notes);
    const int labels = setLabels(*molecule, drawn);
    std::string smiles;
    try {
        perceive(*molecule, Hydrogens::Remove);
        molecule->clearConformers();
        if (labels > 0)
            smiles = MolToCXSmiles(*molecule, SmilesWriteParams(), SmilesWrite::CX_ATOM_LABELS);
        else
            smiles = MolToSmiles(*molecule);
    } catch (const MolSanitizeException&) {
        notes.add("labels that are not elements: written as *", labels);
        smiles = unsanitizedSmiles(drawn, notes);
    }
    return QString::fromStdString(smiles);
}

QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes)
{
    QByteArray text;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules) {
            if (!sketch.laidOut)
                notes.addDetail("coordinates, depths and colours of molecules: discarded, not supported in SMILES");
            notes.add("record properties: discarded, not supported in SMILES", std::ssize(molecule.data));
            text += smilesOf(molecule, notes).toUtf8();
            if (!molecule.name.isEmpty())
                text += '\t' + molecule.name.toUtf8();
            text += '\n';
        }
    }
    return text;
}
