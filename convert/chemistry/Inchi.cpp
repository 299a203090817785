#include "convert/chemistry/Inchi.h"

#include "convert/chemistry/Kekulized.h"

#if KYTCONVERT_HAS_INCHI

#include "convert/chemistry/Symbols.h"

#include <inchi_api.h>

#include <algorithm>
#include <limits>

using namespace RDKit;

namespace {

constexpr std::size_t maxAtoms = 1023; // of the library
constexpr unsigned maxNeighbours = MAXVAL;

[[noreturn]] void fail(const QString& reason)
{
    throw ConversionError(QStringLiteral("no InChI: ") + reason);
}

S_CHAR typeOf(const Bond& bond)
{
    switch (bond.getBondType()) {
    case Bond::SINGLE:
        return INCHI_BOND_TYPE_SINGLE;
    case Bond::DOUBLE:
        return INCHI_BOND_TYPE_DOUBLE;
    case Bond::TRIPLE:
        return INCHI_BOND_TYPE_TRIPLE;
    default:
        fail(QStringLiteral("aromatic ring without alternating double bonds"));
    }
}

/// The stereo mark of a bond, as seen from its begin atom.
S_CHAR stereoOf(const Bond& bond)
{
    switch (bond.getBondDir()) {
    case Bond::BEGINWEDGE:
        return INCHI_BOND_STEREO_SINGLE_1UP;
    case Bond::BEGINDASH:
        return INCHI_BOND_STEREO_SINGLE_1DOWN;
    case Bond::UNKNOWN:
        return INCHI_BOND_STEREO_SINGLE_1EITHER;
    case Bond::EITHERDOUBLE:
        return INCHI_BOND_STEREO_DOUBLE_EITHER;
    default:
        return bond.getStereo() == Bond::STEREOANY ? S_CHAR(INCHI_BOND_STEREO_DOUBLE_EITHER)
                                                   : S_CHAR(INCHI_BOND_STEREO_NONE);
    }
}

inchi_Atom atomOf(const Atom& atom, const RDGeom::Point3D& position)
{
    inchi_Atom copy = {};
    copy.x = position.x;
    copy.y = position.y;
    copy.z = position.z;
    const QByteArray symbol = elementName(atom.getAtomicNum()).toLatin1();
    std::copy_n(symbol.constData(), std::min<qsizetype>(symbol.size(), ATOM_EL_LEN - 1), copy.elname);
    copy.num_iso_H[0] = static_cast<S_CHAR>(atom.getTotalNumHs());
    copy.isotopic_mass = static_cast<AT_NUM>(atom.getIsotope());
    // The library crashes where it disconnects many more hydrogens from a metal.
    if (atom.getDegree() + atom.getTotalNumHs() > maxNeighbours)
        fail(QStringLiteral("atom with more than %1 bonds and hydrogens").arg(maxNeighbours));
    const int charge = atom.getFormalCharge();
    if (std::abs(charge) > std::numeric_limits<S_CHAR>::max())
        fail(QStringLiteral("charge %1 out of range").arg(charge));
    copy.charge = static_cast<S_CHAR>(charge);
    return copy;
}

void addBond(std::vector<inchi_Atom>& atoms, const Bond& bond)
{
    // Each bond is told once; the library completes the lists.
    inchi_Atom& begin = atoms[bond.getBeginAtomIdx()];
    begin.neighbor[begin.num_bonds] = static_cast<AT_NUM>(bond.getEndAtomIdx());
    begin.bond_type[begin.num_bonds] = typeOf(bond);
    begin.bond_stereo[begin.num_bonds] = stereoOf(bond);
    ++begin.num_bonds;
}

/// The output of the library, which is freed with it.
struct Output {
    Output() = default;
    ~Output() { FreeStdINCHI(&output); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    inchi_Output output = {};
};

void checkLabels(const SketchMolecule& drawn)
{
    for (const SketchAtom& atom : drawn.atoms) {
        const std::optional<ElementSymbol> element = parseSymbol(atom.symbol);
        if (!element || element->number == 0)
            fail(QStringLiteral("label %1 is not an element").arg(atom.symbol.left(40)));
    }
}

qsizetype hydrogenBonds(const SketchMolecule& drawn)
{
    return std::count_if(drawn.bonds.begin(), drawn.bonds.end(), [](const SketchBond& bond) {
        return bond.kinds.size() == 1 && bond.kinds.front() == KYTBT_DashedLine;
    });
}

} // namespace

QString inchiOf(const SketchMolecule& drawn, Notes& notes)
{
    if (drawn.atoms.size() > maxAtoms)
        fail(QStringLiteral("%1 atoms (limit %2)").arg(drawn.atoms.size()).arg(maxAtoms));
    checkLabels(drawn);
    notes.add("hydrogen bonds: omitted, not supported in InChI", hydrogenBonds(drawn));
    const std::unique_ptr<RWMol> molecule = kekulizedMolecule(drawn);
    std::vector<inchi_Atom> atoms;
    atoms.reserve(drawn.atoms.size());
    for (const Atom* atom : molecule->atoms())
        atoms.push_back(atomOf(*atom, molecule->getConformer().getAtomPos(atom->getIdx())));
    for (const Bond* bond : molecule->bonds())
        addBond(atoms, *bond);

    inchi_Input input = {};
    input.atom = atoms.data();
    input.num_atoms = static_cast<AT_NUM>(atoms.size());
    Output result;
    const int status = GetStdINCHI(&input, &result.output);
    if ((status != inchi_Ret_OKAY && status != inchi_Ret_WARNING) || !result.output.szInChI)
        fail(QString::fromLatin1(result.output.szMessage ? result.output.szMessage : "the library reports an error")
                 .simplified());
    return QString::fromLatin1(result.output.szInChI);
}

QString inchiKeyOf(const QString& inchi)
{
    char key[28] = {}; // 27 letters and the end
    if (GetStdINCHIKeyFromStdINCHI(inchi.toLatin1().constData(), key) != INCHIKEY_OK)
        fail(QStringLiteral("its InChIKey cannot be computed"));
    return QString::fromLatin1(key);
}

#else

namespace {

[[noreturn]] void failUnsupported()
{
    throw ConversionError(QStringLiteral("InChI is not supported by this build: libinchi was not found"));
}

} // namespace

QString inchiOf(const SketchMolecule&, Notes&)
{
    failUnsupported();
}

QString inchiKeyOf(const QString&)
{
    failUnsupported();
}

#endif
