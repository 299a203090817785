#include "convert/formats/Smiles.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Perception.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Symbols.h"
#include "convert/formats/TextLines.h"

#include <GraphMol/Depictor/RDDepictor.h>
#include <GraphMol/FileParsers/MolFileStereochem.h>
#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QRegularExpression>

#include <map>

using namespace RDKit;

namespace {

// The layout needs memory quadratic in the number of atoms.
constexpr unsigned maxAtoms = 1000;
constexpr qsizetype maxLineLength = qsizetype{16} * 1024; // characters
constexpr std::size_t maxAtomsToWrite = 2'000;            // RDKit writes SMILES recursively

constexpr unsigned firstLabelIsotope = 1000; // above all real mass numbers

/// Marks different labels as different isotopes: RDKit distinguishes isotopes, but not labels, as neighbours of a
/// stereocentre. removeLabelIsotopes() removes the marks.
void markLabelsAsIsotopes(RWMol& molecule)
{
    std::map<std::string, unsigned> isotopes;
    for (Atom* atom : molecule.atoms()) {
        std::string label;
        if (atom->getAtomicNum() == 0 && atom->getIsotope() == 0
            && atom->getPropIfPresent(common_properties::atomLabel, label))
            atom->setIsotope(isotopes.try_emplace(label, firstLabelIsotope + isotopes.size()).first->second);
    }
}

void removeLabelIsotopes(RWMol& molecule)
{
    for (Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->getIsotope() >= firstLabelIsotope)
            atom->setIsotope(0);
}

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

std::vector<ChosenWedge> chooseWedges(const RWMol& molecule)
{
    std::vector<ChosenWedge> chosen;
    const INT_MAP_INT wedges = pickBondsToWedge(molecule);
    for (const auto& [index, narrowEnd] : wedges) {
        const Bond* bond = molecule.getBondWithIdx(index);
        const Bond::BondDir direction = DetermineBondWedgeState(bond, wedges, &molecule.getConformer());
        if (bond->getBondType() != Bond::SINGLE || (direction != Bond::BEGINWEDGE && direction != Bond::BEGINDASH))
            continue;
        chosen.push_back({static_cast<unsigned>(index), static_cast<unsigned>(narrowEnd),
                          direction == Bond::BEGINWEDGE ? KYTBT_StereoUp : KYTBT_StereoDown});
    }
    return chosen;
}

/// Warns of double bonds without E/Z stereo that could have it: the drawing shows one of the two isomers.
void noteUnspecifiedDoubleBonds(const RWMol& molecule, Notes& notes)
{
    RWMol marked(molecule);
    MolOps::findPotentialStereoBonds(marked);
    for (const Bond* bond : marked.bonds())
        if (bond->getBondType() == Bond::DOUBLE && bond->getStereo() == Bond::STEREOANY)
            notes.add("double bonds with unspecified E/Z stereo: drawn as one of the isomers");
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

SketchMolecule layOut(RWMol& molecule, Notes& notes)
{
    noteUnspecifiedDoubleBonds(molecule, notes);
    MolOps::Kekulize(molecule, true);
    noteUnusualHydrogens(molecule, notes);
    RDDepict::compute2DCoords(molecule, nullptr, true);
    SketchMolecule drawn = sketchOf(molecule, chooseWedges(molecule), notes);
    spreadPieces(drawn);
    liftWedges(drawn);
    return drawn;
}

std::unique_ptr<RWMol> parse(const std::string& smiles, bool sanitize)
{
    SmilesParserParams params;
    params.parseName = false;
    params.sanitize = sanitize;
    params.removeHs = sanitize;
    std::unique_ptr<RWMol> molecule(SmilesToMol(smiles, params));
    if (!molecule)
        throw ConversionError(QStringLiteral("invalid SMILES: ") + QString::fromStdString(smiles).left(60));
    return molecule;
}

bool hasLabels(const RWMol& molecule)
{
    for (const Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->hasProp(common_properties::atomLabel))
            return true;
    return false;
}

/// Sanitizes a parsed molecule with labels; keeps stereocentres whose neighbours differ only in their labels.
std::unique_ptr<RWMol> sanitizedWithLabels(const RWMol& parsed)
{
    auto molecule = std::make_unique<RWMol>(parsed);
    markLabelsAsIsotopes(*molecule);
    MolOps::removeHs(*molecule, false, false, true);
    MolOps::assignStereochemistry(*molecule, true, true);
    removeLabelIsotopes(*molecule);
    return molecule;
}

SketchMolecule readLine(const QString& text, Notes& notes)
{
    if (text.size() > maxLineLength)
        throw ConversionError(QStringLiteral("line longer than %1 characters").arg(maxLineLength));
    const Line line = parseLine(text);
    const QString word = line.smiles.section(QRegularExpression(QStringLiteral("\\s")), 0, 0);
    if (std::any_of(word.begin(), word.end(), [](QChar c) { return c <= u' ' || c > u'~'; }))
        throw ConversionError(QStringLiteral("invalid SMILES: ") + word.left(60));
    const std::string smiles = line.smiles.toStdString();
    // The atoms are counted first because sanitizing a large molecule takes long.
    const std::unique_ptr<RWMol> parsed = parse(smiles, false);
    const unsigned atoms = parsed->getNumAtoms();
    if (atoms > maxAtoms)
        throw ConversionError(QStringLiteral("too many atoms for the layout: %1 (limit %2)").arg(atoms).arg(maxAtoms));
    const std::unique_ptr<RWMol> molecule = hasLabels(*parsed) ? sanitizedWithLabels(*parsed) : parse(smiles, true);
    if (molecule->getNumAtoms() == 0)
        throw ConversionError(QStringLiteral("molecule without atoms"));
    noteUnusualStereo(*parsed, notes);
    SketchMolecule drawn = layOut(*molecule, notes);
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

} // namespace

std::vector<Sketch> readSmiles(const QByteArray& text, const QString& name, Notes& notes)
{
    std::vector<Sketch> sketches;
    int number = 0;
    for (const QByteArray& bytes : linesOf(text)) {
        ++number;
        const QString line = QString::fromUtf8(bytes).trimmed();
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const Deadline deadline(QStringLiteral("%1:%2").arg(name).arg(number));
        try {
            Sketch sketch;
            sketch.laidOut = true;
            sketch.molecules.push_back(readLine(line, notes));
            centre(sketch);
            sketches.push_back(std::move(sketch));
        } catch (const std::exception& fault) {
            throw ConversionError(QStringLiteral("%1:%2: %3").arg(name).arg(number).arg(fault.what()));
        }
    }
    if (sketches.empty())
        throw ConversionError(name + QStringLiteral(": contains no SMILES"));
    return sketches;
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
        markLabelsAsIsotopes(*molecule);
        perceive(*molecule);
        removeLabelIsotopes(*molecule);
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
                notes.add("coordinates, depths and colours of molecules: discarded, not supported in SMILES");
            notes.add("record properties: discarded, not supported in SMILES", std::ssize(molecule.data));
            text += smilesOf(molecule, notes).toUtf8();
            if (!molecule.name.isEmpty())
                text += '\t' + molecule.name.toUtf8();
            text += '\n';
        }
    }
    return text;
}
