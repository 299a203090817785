#include "convert/chemistry/RDKitMolecule.h"

#include "canvas/truncate.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/Symbols.h"
#include "model/Elements.h"

#include <GraphMol/QueryBond.h>
#include <GraphMol/QueryOps.h>
#include <GraphMol/StereoGroup.h>
#include <GraphMol/SubstanceGroup.h>

#include <algorithm>

using namespace RDKit;

namespace {

constexpr const char* unsupportedBonds = "dative and other unsupported bonds: read as single bonds";
constexpr int lastBondType = 10; // largest bond type in a molfile

// Stereo marks of bonds in a V2000 file.
constexpr unsigned upWedge = 1;
constexpr unsigned eitherDouble = 3;
constexpr unsigned eitherSingle = 4;
constexpr unsigned downWedge = 6;

enum class BondKind { None, Single, Double, Triple, Aromatic, Hydrogen };

BondKind bondKind(const SketchBond& bond, Notes& notes)
{
    if (isWedge(bond))
        return BondKind::Single;
    const qsizetype lines = std::min<qsizetype>(std::ssize(bond.kinds), 3);
    const qsizetype dashed = std::count(bond.kinds.begin(), bond.kinds.end(), KYTBT_DashedLine);
    if (lines == 0)
        return BondKind::None;
    if (lines == 1)
        return dashed == 1 ? BondKind::Hydrogen : BondKind::Single;
    if (dashed > 0 && dashed < lines) {
        if (lines == 3)
            notes.add("triple bonds with a dashed line: written as aromatic bonds");
        else if (bond.kinds.front() == KYTBT_DashedLine)
            notes.add("aromatic bonds with the dashed line first: written with the dashed line second");
        return BondKind::Aromatic;
    }
    if (dashed > 0)
        notes.add("bonds of two or three dashed lines: written as double or triple bonds");
    return lines == 2 ? BondKind::Double : BondKind::Triple;
}

Bond::BondType typeOf(BondKind kind)
{
    switch (kind) {
    case BondKind::Double:
        return Bond::DOUBLE;
    case BondKind::Triple:
        return Bond::TRIPLE;
    case BondKind::Aromatic:
        return Bond::AROMATIC;
    case BondKind::Hydrogen:
        return Bond::HYDROGEN;
    default:
        return Bond::SINGLE;
    }
}

std::unique_ptr<Bond> newBond(BondKind kind, MoleculeUse use)
{
    if (kind != BondKind::Hydrogen || use != MoleculeUse::V2000)
        return std::make_unique<Bond>(typeOf(kind));
    auto any = std::make_unique<QueryBond>(Bond::UNSPECIFIED);
    any->setQuery(makeBondNullQuery());
    return any;
}

/// Marks an open double bond. RDKit writes any other as "either", too, unless it has some E/Z stereo; which one does
/// not matter, since readers take it from the coordinates.
void setStereo(Bond& bond, bool isOpen, MoleculeUse use)
{
    if (isOpen)
        bond.setBondDir(Bond::EITHERDOUBLE);
    if (isOpen)
        bond.setStereo(Bond::STEREOANY);
    else if (use != MoleculeUse::Chemistry)
        bond.setStereo(Bond::STEREOE);
}

void addBond(RWMol& molecule, const SketchBond& drawn, MoleculeUse use, Notes& notes)
{
    const BondKind kind = bondKind(drawn, notes);
    if (kind == BondKind::None) {
        notes.add("bonds without lines: omitted");
        return;
    }
    if (drawn.from == drawn.to || molecule.getBondBetweenAtoms(drawn.from, drawn.to)) {
        notes.add("duplicate bonds between two atoms: omitted");
        return;
    }
    if (kind == BondKind::Hydrogen && use == MoleculeUse::Chemistry)
        return;
    if (kind == BondKind::Hydrogen && use == MoleculeUse::V2000)
        notes.add("hydrogen bonds: written as bond type 8 (any) in V2000");

    std::unique_ptr<Bond> bond = newBond(kind, use);
    bond->setBeginAtomIdx(drawn.from);
    bond->setEndAtomIdx(drawn.to);
    if (isWedge(drawn))
        bond->setBondDir(drawn.kinds.front() == KYTBT_StereoUp ? Bond::BEGINWEDGE : Bond::BEGINDASH);
    if (kind == BondKind::Double)
        setStereo(*bond, drawn.open, use);
    if (kind == BondKind::Aromatic && use == MoleculeUse::Chemistry) {
        bond->setIsAromatic(true);
        molecule.getAtomWithIdx(drawn.from)->setIsAromatic(true);
        molecule.getAtomWithIdx(drawn.to)->setIsAromatic(true);
    }
    molecule.addBond(bond.release(), true);
}

void addAtom(RWMol& molecule, const SketchAtom& drawn, MoleculeUse use)
{
    const std::optional<ElementSymbol> element = parseSymbol(drawn.symbol);
    auto atom = std::make_unique<Atom>(element ? element->number : 0);
    if (element) {
        atom->setIsotope(element->isotope);
        atom->setFormalCharge(element->charge);
        atom->setNoImplicit(use == MoleculeUse::Chemistry && element->number == 1 && element->charge != 0);
    }
    if (atom->getAtomicNum() == 0)
        atom->setProp(common_properties::dummyLabel, std::string("R"));
    if (!element && use == MoleculeUse::Chemistry)
        atom->setProp(common_properties::atomLabel, drawn.symbol.toStdString());
    const bool needsAlias = !element || element->number == 0 || symbolOf(*element) != drawn.symbol;
    if (needsAlias && use == MoleculeUse::V2000 && !drawn.symbol.startsWith(QLatin1String(endOfRecord)))
        atom->setProp(common_properties::molFileAlias, drawn.symbol.toStdString());
    molecule.addAtom(atom.release(), true, true);
}

/// A label from a file as one word: white space becomes "_".
QString labelOf(const std::string& text)
{
    QString label = QString::fromUtf8(text.c_str()).simplified();
    label.replace(u' ', u'_');
    return label;
}

ElementSymbol elementOf(const Atom& atom)
{
    return {atom.getAtomicNum(), static_cast<int>(atom.getIsotope()), atom.getFormalCharge()};
}

QString symbolOf(const Atom& atom, Notes& notes)
{
    std::string text;
    if (atom.getPropIfPresent(common_properties::molFileAlias, text) && !labelOf(text).isEmpty()) {
        const ElementSymbol element = elementOf(atom);
        if (element.number > 0 && parseSymbol(labelOf(text)) != element)
            notes.add("aliases that replace elements: read as labels");
        return labelOf(text);
    }
    if (atom.getPropIfPresent(common_properties::atomLabel, text) && !labelOf(text).isEmpty())
        return labelOf(text);
    if (atom.getNumRadicalElectrons() > 0)
        notes.add("unpaired electrons: discarded, not supported in drawings");
    if (atom.getAtomMapNum() > 0)
        notes.add("atom map numbers: discarded, not supported in drawings");
    if (atom.getAtomicNum() == 0 && atom.getIsotope() == 0 && atom.getPropIfPresent(common_properties::dummyLabel, text)
        && !labelOf(text).isEmpty())
        return labelOf(text);
    if (atom.hasQuery() && atom.getQuery()->getDescription() != "AtomNull") // AtomNull is "*"
        notes.add("query atoms: read as ordinary atoms");
    return ::symbolOf(elementOf(atom));
}

/// The bond type given in the molfile; 0 for a molecule from another source.
int fileType(const Bond& bond)
{
    unsigned type = 0;
    bond.getPropIfPresent(common_properties::_MolFileBondType, type);
    return static_cast<int>(type);
}

std::vector<KytBondType> linesOf(const Bond& bond, Notes& notes)
{
    const std::vector<KytBondType> lines(3, KYTBT_SingleBond);
    const auto solid = [&](int count) { return std::vector(lines.begin(), lines.begin() + count); };
    switch (fileType(bond)) {
    case 5:
    case 6:
        notes.add("query bonds: read as single or double bonds");
        return solid(1);
    case 7:
        notes.add("query bonds: read as single or double bonds");
        return solid(2);
    case 8:
        return {KYTBT_DashedLine};
    case 9:
        notes.add(unsupportedBonds);
        return solid(1);
    default:
        break;
    }
    if (fileType(bond) > lastBondType)
        notes.add("bonds of unknown type: read as dashed lines");
    switch (bond.getBondType()) {
    case Bond::SINGLE:
        return solid(1);
    case Bond::DOUBLE:
        return solid(2);
    case Bond::TRIPLE:
        return solid(3);
    case Bond::AROMATIC:
        return {KYTBT_SingleBond, KYTBT_DashedLine};
    case Bond::HYDROGEN:
    case Bond::UNSPECIFIED:
    case Bond::ZERO:
        return {KYTBT_DashedLine};
    case Bond::QUADRUPLE:
    case Bond::QUINTUPLE:
    case Bond::HEXTUPLE:
        notes.add("bonds of order above three: read as triple bonds");
        return solid(3);
    default:
        notes.add(unsupportedBonds);
        return solid(1);
    }
}

/// The stereo mark of a bond in a molfile, in the numbers of a V2000 file; 0 if there is none.
unsigned stereoMark(const Bond& bond)
{
    unsigned mark = 0;
    if (bond.getPropIfPresent(common_properties::_MolFileBondStereo, mark) && mark != 0)
        return mark;
    if (!bond.getPropIfPresent(common_properties::_MolFileBondCfg, mark))
        return 0;
    if (mark == 2)
        return bond.getBondType() == Bond::DOUBLE ? eitherDouble : eitherSingle;
    return mark == 3 ? downWedge : mark;
}

/// Whether a double bond has unspecified E/Z stereo.
bool isOpen(const Bond& bond)
{
    return bond.getBondType() == Bond::DOUBLE
        && (bond.getStereo() == Bond::STEREOANY || stereoMark(bond) == eitherDouble);
}

/// The wedge given by a bond's stereo mark in a molfile, if any.
std::optional<KytBondType> markedWedge(const Bond& bond, Notes& notes)
{
    const unsigned mark = stereoMark(bond);
    if (mark == 0 || isOpen(bond))
        return std::nullopt;
    if (mark != upWedge && mark != downWedge)
        notes.add("bonds with unknown stereo: stereo mark discarded");
    else if (bond.getBondType() != Bond::SINGLE)
        notes.add("wedges on bonds other than single bonds: discarded");
    else
        return mark == upWedge ? KYTBT_StereoUp : KYTBT_StereoDown;
    return std::nullopt;
}

/// Warns of groups of atoms, which drawings do not support.
void noteGroups(const ROMol& molecule, Notes& notes)
{
    notes.add("S-groups: discarded, not supported in drawings", std::ssize(getSubstanceGroups(molecule)));
    for (const StereoGroup& group : molecule.getStereoGroups())
        if (group.getGroupType() != StereoGroupType::STEREO_ABSOLUTE)
            notes.add("relative or racemic stereo groups: read as absolute stereocentres");
}

bool hasAromaticBond(const ROMol& molecule, const Atom* atom)
{
    for (const Bond* bond : molecule.atomBonds(atom))
        if (bond->getBondType() == Bond::AROMATIC)
            return true;
    return false;
}

float depthOf(double z)
{
    return z == 0 ? 0.0F : narrowed(z * pixelsPerAngstrom);
}

} // namespace

std::unique_ptr<RWMol> moleculeOf(const SketchMolecule& drawn, MoleculeUse use, Notes& notes)
{
    auto molecule = std::make_unique<RWMol>();
    auto conformer = std::make_unique<Conformer>(static_cast<unsigned>(drawn.atoms.size()));
    const bool flat = isFlat(drawn);
    for (std::size_t i = 0; i < drawn.atoms.size(); ++i) {
        const SketchAtom& atom = drawn.atoms[i];
        addAtom(*molecule, atom, use);
        const double z = flat ? 0 : atom.depth / pixelsPerAngstrom;
        // Adding 0.0 turns -0, which would be written with a sign, into 0.
        conformer->setAtomPos(
            static_cast<unsigned>(i),
            RDGeom::Point3D(atom.x / pixelsPerAngstrom + 0.0, -atom.y / pixelsPerAngstrom + 0.0, z + 0.0));
    }
    for (const SketchBond& bond : drawn.bonds)
        addBond(*molecule, bond, use, notes);
    conformer->set3D(!flat);
    molecule->addConformer(conformer.release(), true);
    molecule->setProp(common_properties::_Name, drawn.name.toStdString());
    return molecule;
}

SketchMolecule sketchOf(const ROMol& molecule, const std::vector<ChosenWedge>& wedges, Notes& notes)
{
    SketchMolecule drawn;
    std::string name;
    if (molecule.getPropIfPresent(common_properties::_Name, name))
        drawn.name = QString::fromUtf8(name.c_str()).simplified();

    if (molecule.getNumAtoms() == 0)
        return drawn;
    noteGroups(molecule, notes);
    const Conformer& conformer = molecule.getConformer();
    for (const Atom* atom : molecule.atoms()) {
        const RDGeom::Point3D& position = conformer.getAtomPos(atom->getIdx());
        SketchAtom copy;
        copy.symbol = symbolOf(*atom, notes);
        copy.x = position.x * pixelsPerAngstrom;
        copy.y = -position.y * pixelsPerAngstrom;
        copy.depth = depthOf(position.z);
        copy.color = elementColor(copy.symbol);
        drawn.atoms.push_back(copy);
    }
    for (const Bond* bond : molecule.bonds()) {
        SketchBond copy;
        copy.from = static_cast<int>(bond->getBeginAtomIdx());
        copy.to = static_cast<int>(bond->getEndAtomIdx());
        if (const std::optional<KytBondType> wedge = markedWedge(*bond, notes))
            copy.kinds = {*wedge};
        else
            copy.kinds = linesOf(*bond, notes);
        copy.open = isOpen(*bond);
        drawn.bonds.push_back(copy);
    }
    for (const ChosenWedge& wedge : wedges) {
        SketchBond& bond = drawn.bonds[wedge.bond];
        if (bond.from != static_cast<int>(wedge.narrowEnd))
            std::swap(bond.from, bond.to);
        bond.kinds = {wedge.kind};
    }
    return drawn;
}

bool hasMarks(const ROMol& molecule)
{
    for (const Bond* bond : molecule.bonds())
        if (const unsigned mark = stereoMark(*bond); mark == upWedge || mark == downWedge)
            return true;
    return false;
}

void noteUnusualHydrogens(const RWMol& molecule, Notes& notes)
{
    RWMol drawn(molecule);
    for (Atom* atom : drawn.atoms()) {
        const Atom* given = molecule.getAtomWithIdx(atom->getIdx());
        if (!given->getNoImplicit() || given->getNumRadicalElectrons() > 0 || given->getAtomicNum() == 0
            || hasAromaticBond(molecule, given))
            continue;
        atom->setNoImplicit(false);
        atom->setNumExplicitHs(0);
        atom->updatePropertyCache(false);
        if (atom->getTotalNumHs() != given->getNumExplicitHs())
            notes.add("atoms with an unusual number of hydrogens: read with the usual number");
    }
}
