#include "convert/Chemistry.h"
#include "convert/Deadline.h"
#include "convert/Formats.h"
#include "convert/Placement.h"
#include "convert/RDKitMolecule.h"
#include "convert/Symbols.h"

#include <GraphMol/Depictor/RDDepictor.h>
#include <GraphMol/FileParsers/MolFileStereochem.h>
#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>
#include <RDGeneral/RDLog.h>

#include <QRegularExpression>

#include <clocale>
#include <map>

using namespace RDKit;

namespace {

// The layout needs memory with the square of the atoms.
constexpr unsigned mostAtoms = 1000;
constexpr qsizetype longestLine = qsizetype{16} * 1024; // characters
constexpr std::size_t mostAtomsToWrite = 2'000;         // RDKit walks along a molecule on the machine stack

constexpr unsigned firstLabelIsotope = 1000; // none has so many nucleons

/// Makes different labels different isotopes for a while: RDKit sees stereo between isotopes, but not between labels.
void tellLabelsApart(RWMol& molecule)
{
    std::map<std::string, unsigned> isotopes;
    for (Atom* atom : molecule.atoms()) {
        std::string label;
        if (atom->getAtomicNum() == 0 && atom->getIsotope() == 0
            && atom->getPropIfPresent(common_properties::atomLabel, label))
            atom->setIsotope(isotopes.try_emplace(label, firstLabelIsotope + isotopes.size()).first->second);
    }
}

void takeLabelIsotopesAway(RWMol& molecule)
{
    for (Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->getIsotope() >= firstLabelIsotope)
            atom->setIsotope(0);
}

/// A line of a SMILES file.
struct Line {
    QString smiles; ///< with its extension in vertical bars, if it has one
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

/// Notes double bonds that could be either way and are, once they are drawn, one of them.
void noteOpenGeometry(const RWMol& molecule, Notes& notes)
{
    RWMol marked(molecule);
    MolOps::findPotentialStereoBonds(marked);
    for (const Bond* bond : marked.bonds())
        if (bond->getBondType() == Bond::DOUBLE && bond->getStereo() == Bond::STEREOANY)
            notes.add("double bonds of unknown stereo, which a drawing cannot show");
}

/// Notes the kinds of stereo that RDKit does not lay out, of the molecule as it is written.
void noteUnusualStereo(const RWMol& molecule, Notes& notes)
{
    for (const Atom* atom : molecule.atoms()) {
        const Atom::ChiralType type = atom->getChiralTag();
        const bool isTetrahedral = type == Atom::CHI_TETRAHEDRAL_CW || type == Atom::CHI_TETRAHEDRAL_CCW;
        if (type != Atom::CHI_UNSPECIFIED && (!isTetrahedral || atom->getTotalDegree() == 2))
            notes.add("stereo of allenes and of centres that are not tetrahedral, which a drawing does not have");
    }
}

SketchMolecule layOut(RWMol& molecule, Notes& notes)
{
    noteOpenGeometry(molecule, notes);
    MolOps::Kekulize(molecule, true);
    noteUnusualHydrogens(molecule, notes);
    RDDepict::compute2DCoords(molecule, nullptr, true);
    SketchMolecule drawn = sketchOf(molecule, chooseWedges(molecule), notes);
    spreadPieces(drawn);
    liftWedges(drawn);
    return drawn;
}

std::unique_ptr<RWMol> parse(const std::string& smiles, bool understand)
{
    SmilesParserParams params;
    params.parseName = false;
    params.sanitize = understand;
    params.removeHs = understand;
    std::unique_ptr<RWMol> molecule(SmilesToMol(smiles, params));
    if (!molecule)
        throw ConversionError(QStringLiteral("not a SMILES that can be read: ")
                              + QString::fromStdString(smiles).left(60));
    return molecule;
}

bool hasLabels(const RWMol& molecule)
{
    for (const Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->hasProp(common_properties::atomLabel))
            return true;
    return false;
}

/// Understands a molecule as it is written, with the stereo of atoms that only their labels tell from one another.
std::unique_ptr<RWMol> understandLabelled(const RWMol& written)
{
    auto molecule = std::make_unique<RWMol>(written);
    tellLabelsApart(*molecule);
    MolOps::removeHs(*molecule, false, false, true);
    MolOps::assignStereochemistry(*molecule, true, true);
    takeLabelIsotopesAway(*molecule);
    return molecule;
}

SketchMolecule readLine(const QString& text, Notes& notes)
{
    if (text.size() > longestLine)
        throw ConversionError(QStringLiteral("the line is longer than %1 characters").arg(longestLine));
    const Line line = parseLine(text);
    const QString word = line.smiles.section(QRegularExpression(QStringLiteral("\\s")), 0, 0);
    if (std::any_of(word.begin(), word.end(), [](QChar c) { return c <= u' ' || c > u'~'; }))
        throw ConversionError(QStringLiteral("not a SMILES that can be read: ") + word.left(60));
    const std::string smiles = line.smiles.toStdString();
    // Understanding a molecule takes long where it is large, so its atoms are counted first.
    const std::unique_ptr<RWMol> written = parse(smiles, false);
    const unsigned atoms = written->getNumAtoms();
    if (atoms > mostAtoms)
        throw ConversionError(
            QStringLiteral("%1 atoms are too many to be laid out (%2 at most)").arg(atoms).arg(mostAtoms));
    const std::unique_ptr<RWMol> molecule = hasLabels(*written) ? understandLabelled(*written) : parse(smiles, true);
    if (molecule->getNumAtoms() == 0)
        throw ConversionError(QStringLiteral("no atoms"));
    noteUnusualStereo(*written, notes);
    SketchMolecule drawn = layOut(*molecule, notes);
    drawn.name = line.name;
    return drawn;
}

/// `label` without the characters that mean something in the extension.
QString escaped(const QString& label)
{
    QString text;
    for (const QChar c : label)
        text += QStringLiteral("&;$|").contains(c) ? QStringLiteral("&#%1;").arg(c.unicode()) : QString(c);
    return text;
}

/// Tells the labels of atoms that are no element's, as the extended SMILES does. Returns how many there are.
int labelAtoms(RWMol& molecule, const SketchMolecule& drawn)
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

/// As it is drawn, where the chemistry is not possible.
std::string plainSmiles(const SketchMolecule& drawn, Notes& notes)
{
    notes.add("molecules that are not possible as they are drawn; they are written without stereo");
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

void startChemistry()
{
    boost::logging::disable_logs("rdApp.*");
    std::setlocale(LC_NUMERIC, "C");
}

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
        throw ConversionError(name + QStringLiteral(": there is no SMILES in it"));
    return sketches;
}

QString smilesOf(const SketchMolecule& drawn, Notes& notes)
{
    if (drawn.atoms.size() > mostAtomsToWrite)
        throw ConversionError(QStringLiteral("a molecule of %1 atoms is too large for SMILES (%2 at most)")
                                  .arg(drawn.atoms.size())
                                  .arg(mostAtomsToWrite));
    const Deadline deadline(QStringLiteral("the SMILES of a molecule"));
    notes.add("hydrogen bonds, which SMILES does not have", hydrogenBonds(drawn));
    const std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, notes);
    const int labels = labelAtoms(*molecule, drawn);
    std::string smiles;
    try {
        tellLabelsApart(*molecule);
        perceive(*molecule);
        takeLabelIsotopesAway(*molecule);
        molecule->clearConformers();
        if (labels > 0)
            smiles = MolToCXSmiles(*molecule, SmilesWriteParams(), SmilesWrite::CX_ATOM_LABELS);
        else
            smiles = MolToSmiles(*molecule);
    } catch (const MolSanitizeException&) {
        notes.add("labels that are no elements, which become *", labels);
        smiles = plainSmiles(drawn, notes);
    }
    return QString::fromStdString(smiles);
}

QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes)
{
    QByteArray text;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules) {
            if (!sketch.laidOut)
                notes.add("molecules whose places, depths and colours SMILES cannot carry");
            notes.add("further properties of records, which SMILES does not have", std::ssize(molecule.data));
            text += smilesOf(molecule, notes).toUtf8();
            if (!molecule.name.isEmpty())
                text += '\t' + molecule.name.toUtf8();
            text += '\n';
        }
    }
    return text;
}
