#include "tests/monkey/ModelComparison.h"

#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "tests/support/Drawing.h"
#include "view/kytstudioview.h"

#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace {

/// A drawing in which atoms are numbered in the order of the canvas, and bonds in that of their start atoms' lists; and
/// its molecules.
struct Numbered {
    DrawingModel drawing;
    std::map<int, std::vector<int>> points; // of each bond
    std::vector<std::vector<int>> molecules;
};

Numbered numbered(const DrawingModel& drawing)
{
    std::map<int, int> atoms;
    std::map<int, int> bonds;
    for (const auto& [atom, values] : drawing.atoms) {
        atoms.emplace(atom, int(atoms.size()));
        for (const int bond : values.out)
            bonds.emplace(bond, int(bonds.size()));
    }
    Numbered result;
    for (const auto& [atom, values] : drawing.atoms) {
        AtomModel& copy = result.drawing.atoms[atoms.at(atom)] = values;
        for (std::vector<int>* list : {&copy.in, &copy.out})
            for (int& bond : *list)
                bond = bonds.at(bond);
        std::vector<int> molecule = drawing.moleculeOf(atom);
        for (int& member : molecule)
            member = atoms.at(member);
        if (molecule.front() == atoms.at(atom))
            result.molecules.push_back(molecule);
    }
    for (const auto& [bond, values] : drawing.bonds) {
        BondModel& copy = result.drawing.bonds[bonds.at(bond)] = values;
        copy.from = atoms.at(values.from);
        copy.to = atoms.at(values.to);
        result.points[bonds.at(bond)] = drawing.points(values);
    }
    return result;
}

BondModel valuesOf(const KytBond* bond, const QList<KytAtom*>& atoms)
{
    BondModel values;
    values.from = int(atoms.indexOf(bond->fromAtom));
    values.to = int(atoms.indexOf(bond->toAtom));
    values.length = bond->bondlength;
    values.kinds[0] = bond->bond1Type;
    values.kinds[1] = bond->bond2Type;
    values.kinds[2] = bond->bond3Type;
    for (const KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3})
        if (line)
            values.drawn.push_back(line->isDashed ? KYTBT_DashedLine : KYTBT_SingleBond);
    if (bond->stereoBond) {
        values.drawn.push_back(bond->stereoBond->bondType);
        values.angle = bond->stereoBond->pangle;
    }
    if (bond->bondCount != int(values.drawn.size()))
        values.drawn.clear(); // which no bond of a model is
    return values;
}

std::vector<int> pointsOf(const KytBond* bond)
{
    QPolygon points;
    for (const KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3})
        if (line)
            points << line->startPoint() << line->endPoint();
    if (bond->stereoBond)
        points << bond->stereoBond->points();
    std::vector<int> result;
    for (const QPoint p : points)
        result.insert(result.end(), {p.x(), p.y()});
    return result;
}

Numbered numbered(const QCanvas& canvas)
{
    const QList<KytAtom*> atoms = drawnAtoms(canvas);
    QHash<const KytBond*, int> bonds;
    for (const KytAtom* atom : atoms)
        for (const KytBond* bond : atom->outList)
            bonds.emplace(bond, int(bonds.size()));
    Numbered result;
    for (int i = 0; i < int(atoms.size()); ++i) {
        const KytAtom* atom = atoms[i];
        AtomModel& values = result.drawing.atoms[i];
        values = {atom->x(), atom->y(), atom->atomZ, atom->locked, atom->canvasSymbol->x(), atom->canvasSymbol->y(),
                  {},        {}};
        for (const KytBond* bond : atom->inList)
            values.in.push_back(bonds.value(bond, -1));
        for (const KytBond* bond : atom->outList) {
            values.out.push_back(bonds.value(bond));
            result.drawing.bonds[bonds.value(bond)] = valuesOf(bond, atoms);
            result.points[bonds.value(bond)] = pointsOf(bond);
        }
    }
    for (const DrawnMolecule& molecule : drawnMolecules(canvas)) {
        std::vector<int>& members = result.molecules.emplace_back();
        for (KytAtom* atom : molecule.atoms)
            members.push_back(int(atoms.indexOf(atom)));
    }
    return result;
}

template <typename Numbers> QString listed(const Numbers& numbers)
{
    QString text;
    for (const auto number : numbers)
        text += QStringLiteral(" %1").arg(number);
    return text;
}

/// Numbers with as many digits as tell every bit of them.
QString exactly(double value)
{
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.17g", value);
    return QString::fromLatin1(text.data());
}

/// One line for each atom, bond and molecule.
QStringList linesOf(const Numbered& numbered)
{
    QStringList lines;
    for (const auto& [number, atom] : numbered.drawing.atoms)
        lines << QStringLiteral("atom %1 at %2 %3, depth %4, label at %5 %6, locked %7, incoming%8, outgoing%9")
                     .arg(number)
                     .arg(exactly(atom.x), exactly(atom.y), exactly(atom.z))
                     .arg(exactly(atom.labelX), exactly(atom.labelY))
                     .arg(atom.locked)
                     .arg(listed(atom.in), listed(atom.out));
    for (const auto& [number, bond] : numbered.drawing.bonds)
        lines << QStringLiteral("bond %1 from %2 to %3, length %4, angle %5, drawn%6 at%7, kinds%8")
                     .arg(number)
                     .arg(bond.from)
                     .arg(bond.to)
                     .arg(exactly(bond.length), exactly(bond.angle))
                     .arg(listed(bond.drawn), listed(numbered.points.at(number)), listed(bond.kinds));
    for (const std::vector<int>& molecule : numbered.molecules)
        lines << QStringLiteral("molecule") + listed(molecule);
    return lines;
}

int indexOf(const DrawingModel& drawing, int atom)
{
    const auto found = drawing.atoms.find(atom);
    return found == drawing.atoms.end() ? -1 : int(std::distance(drawing.atoms.begin(), found));
}

QStringList linesOf(const EditorModel& model)
{
    std::size_t items = 0;
    for (const auto& [number, bond] : model.drawing.bonds)
        items += bond.drawn.size();
    QList<int> selected;
    for (const int atom : model.selected)
        selected.append(indexOf(model.drawing, atom));
    const auto index = [&](int atom) { return indexOf(model.drawing, atom); };
    return linesOf(numbered(model.drawing)) << QStringLiteral("%1 lines and wedges").arg(items)
                                            << QStringLiteral("start atom %1, pointer on %2, grabbed %3, selected")
                                                   .arg(model.isDrawing ? index(model.startAtom) : -1)
                                                   .arg(index(model.hovered))
                                                   .arg(index(model.grabbed))
        + listed(selected);
}

QStringList linesOf(const KytStudioView& view)
{
    const QCanvas& canvas = *view.canvas();
    const QList<KytAtom*> atoms = drawnAtoms(canvas);
    QList<qsizetype> selected;
    for (KytAtom* atom : view.selectedAtoms())
        selected.append(atoms.indexOf(atom));
    const auto index = [&](const QCanvasItem* item) {
        const auto found = std::find(atoms.begin(), atoms.end(), item); // which may be no atom
        return found == atoms.end() ? -1 : found - atoms.begin();
    };
    return linesOf(numbered(canvas)) << QStringLiteral("%1 lines and wedges")
                                            .arg(itemsOf<KytBondLine>(&canvas).size()
                                                 + itemsOf<KytStereoBond>(&canvas).size())
                                     << QStringLiteral("start atom %1, pointer on %2, grabbed %3, selected")
                                            .arg(view.isLastAtom ? index(view.lastAtom) : -1)
                                            .arg(index(view.hover))
                                            .arg(index(view.moving))
        + listed(selected);
}

} // namespace

QString difference(const EditorModel& model, const KytStudioView& view)
{
    const QStringList inModel = linesOf(model);
    const QStringList inEditor = linesOf(view);
    for (qsizetype i = 0; i < std::max(inModel.size(), inEditor.size()); ++i)
        if (inModel.value(i) != inEditor.value(i))
            return QStringLiteral("\n  in the editor: %1\n  in the model:  %2")
                .arg(inEditor.value(i), inModel.value(i));
    return QString();
}

int numberOf(const KytBond* bond, const EditorModel& model)
{
    const qsizetype start = drawnAtoms(*bond->fromAtom->canvas()).indexOf(bond->fromAtom);
    const AtomModel& atom = std::next(model.drawing.atoms.begin(), start)->second;
    return atom.out.at(std::size_t(bond->fromAtom->outList.indexOf(bond)));
}
