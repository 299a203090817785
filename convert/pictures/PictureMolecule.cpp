#include "convert/pictures/PictureMolecule.h"

#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Symbols.h"
#include "convert/pictures/AtomLabel.h"

#include <GraphMol/MolOps.h>

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>

using namespace RDKit;

namespace {

constexpr double usualBondLength = 1.5; // angstroms

// The properties that replace MolDraw2D's label of an atom, also where the bond comes from the right.
constexpr const char* labelProperty = "_displayLabel";
constexpr const char* turnedLabelProperty = "_displayLabelW";

void setLabel(Atom& atom, const QString& text, const QString& turned)
{
    atom.setProp(labelProperty, text.toStdString());
    atom.setProp(turnedLabelProperty, turned.toStdString());
}

bool needsOwnText(const QString& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c <= u' ' || c > u'~' || c == u'<' || c == u'>' || c == u'&'; });
}

/// A text that RDKit can draw, about as wide as `text`.
QString standIn(const QString& text)
{
    const QFontMetricsF metrics(QGuiApplication::font());
    const double letters = metrics.horizontalAdvance(text) / metrics.horizontalAdvance(u'O');
    return QString(std::max<qsizetype>(1, std::lround(letters)), u'O');
}

bool isHydrogenBond(const SketchBond& bond)
{
    return bond.kinds.size() == 1 && bond.kinds.front() == KYTBT_DashedLine;
}

int doubleBonds(const ROMol& molecule, const Atom* atom)
{
    int count = 0;
    for (const Bond* bond : molecule.atomBonds(atom))
        count += bond->getBondType() == Bond::DOUBLE;
    return count;
}

QString marked(const char* tag, const QString& text)
{
    return text.isEmpty() ? QString() : QStringLiteral("<%1>%2</%1>").arg(QLatin1String(tag), text);
}

void labelCarbon(Atom& atom)
{
    const auto numberAbove = [](int limit, int number) { return number > limit ? QString::number(number) : QString(); };
    const int charge = atom.getFormalCharge();
    const auto hydrogens = static_cast<int>(atom.getTotalNumHs());
    const QString carbon = marked("sup", numberAbove(0, static_cast<int>(atom.getIsotope()))) + u'C';
    const QString rest = hydrogens > 0 ? u'H' + marked("sub", numberAbove(1, hydrogens)) : QString();
    const QString sign = charge == 0 ? QString() : numberAbove(1, std::abs(charge)) + (charge > 0 ? u'+' : u'-');
    setLabel(atom, carbon + rest + marked("sup", sign), rest + carbon + marked("sup", sign));
}

/// Labels the carbons that have bonds: isotopes, ions and those between double bonds, or all. RDKit would write them
/// without their hydrogens.
void labelCarbons(RWMol& molecule, bool all)
{
    for (Atom* atom : molecule.atoms()) {
        if (atom->getAtomicNum() != 6 || atom->getDegree() == 0 || atom->hasProp(labelProperty))
            continue;
        if (all || atom->getIsotope() > 0 || atom->getFormalCharge() != 0 || doubleBonds(molecule, atom) > 1)
            labelCarbon(*atom);
    }
}

/// Sets the label of an atom whose symbol RDKit would not write as it is drawn.
void labelSymbol(PictureMolecule& picture, const QString& symbol, unsigned index)
{
    Atom& atom = *picture.molecule->getAtomWithIdx(index);
    const std::optional<ElementSymbol> element = parseSymbol(symbol);
    const bool isAttachmentPoint = element && element->number == 0 && element->isotope > 0;
    if (element && !isAttachmentPoint) {
        if (symbol == QLatin1String("D") || symbol == QLatin1String("T"))
            setLabel(atom, symbol, symbol);
        else if (element->number == 0)
            setLabel(atom, QStringLiteral("*"), QStringLiteral("*"));
        return;
    }
    const AtomLabel label = atomLabel(symbol);
    if (needsOwnText(symbol) && label.text == symbol) {
        picture.foreign[index] = symbol;
        setLabel(atom, standIn(symbol), standIn(symbol));
        return;
    }
    setLabel(atom, label.text, label.turned);
    if (const std::optional<ElementSymbol> head = parseSymbol(label.head)) { // for its colour
        atom.setAtomicNum(head->number);
        atom.setNoImplicit(true);
    }
}

QColor colorOf(const SketchAtom& atom)
{
    int rgb[3];
    for (int i = 0; i < 3; ++i)
        rgb[i] = std::clamp(atom.color[i].toInt(), 0, 255);
    return QColor(rgb[0], rgb[1], rgb[2]);
}

} // namespace

PictureMolecule pictureMolecule(const Sketch& sketch, bool carbons)
{
    const SketchMolecule drawn = combined(sketch);
    PictureMolecule picture;
    Notes ignored; // what other formats cannot store is drawn
    picture.molecule = moleculeOf(drawn, MoleculeUse::V3000, ignored);
    RWMol& molecule = *picture.molecule;
    molecule.getConformer().set3D(false);
    for (const SketchAtom& atom : drawn.atoms)
        picture.colors.push_back(colorOf(atom));
    for (const SketchBond& bond : drawn.bonds) {
        const bool dashed = std::count(bond.kinds.begin(), bond.kinds.end(), KYTBT_DashedLine) > 0;
        Bond* converted = molecule.getBondBetweenAtoms(bond.from, bond.to);
        if (dashed && converted && bond.kinds.size() > 2)
            converted->setBondType(Bond::TRIPLE);
        if (dashed && converted)
            picture.dashed.try_emplace(converted->getIdx(), bond.kinds);
    }
    for (unsigned i = 0; i < drawn.atoms.size(); ++i)
        labelSymbol(picture, drawn.atoms[i].symbol, i);
    molecule.updatePropertyCache(false);
    MolOps::symmetrizeSSSR(molecule);
    labelCarbons(molecule, carbons);
    return picture;
}

double meanBondLength(const std::vector<Sketch>& sketches)
{
    double sum = 0;
    qsizetype count = 0;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules) {
            for (const SketchBond& bond : molecule.bonds) {
                const SketchAtom& from = molecule.atoms[bond.from];
                const SketchAtom& to = molecule.atoms[bond.to];
                const double length = std::hypot(to.x - from.x, to.y - from.y) / pixelsPerAngstrom;
                if (bond.kinds.empty() || isHydrogenBond(bond) || length == 0)
                    continue;
                sum += length;
                ++count;
            }
        }
    }
    return count > 0 ? sum / static_cast<double>(count) : usualBondLength;
}
