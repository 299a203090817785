#include "convert/chemistry/SketchCanvas.h"

#include "bonds/BondTable.h"
#include "bonds/KytBond.h"
#include "bonds/KytStereoBond.h"
#include "convert/Notes.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <algorithm>

namespace {

SketchAtom copyOf(const KytAtom* atom)
{
    return {atom->getSymbol(),
            atom->x(),
            atom->y(),
            atom->getAtomZ(),
            {atom->_atomColor[0], atom->_atomColor[1], atom->_atomColor[2]}};
}

SketchBond copyOf(const BondCell& cell)
{
    SketchBond copy;
    copy.from = cell.row;
    copy.to = cell.column;
    const KytBondType kinds[] = {cell.bond->bond1Type, cell.bond->bond2Type, cell.bond->bond3Type};
    for (int i = 0; i < std::min(cell.bond->bondCount, 3); ++i)
        copy.kinds.push_back(kinds[i]);
    if (cell.bond->stereoBond)
        copy.angle = cell.bond->stereoBond->getAngle();
    return copy;
}

SketchMolecule copyOf(const DrawnMolecule& drawn)
{
    SketchMolecule copy;
    for (const KytAtom* atom : drawn.atoms)
        copy.atoms.push_back(copyOf(atom));
    for (const BondCell& cell : bondTable(drawn.atoms))
        copy.bonds.push_back(copyOf(cell));
    return copy;
}

} // namespace

Sketch sketchOf(const QCanvas& canvas)
{
    Sketch sketch;
    sketch.placed = true;
    for (const DrawnMolecule& drawn : drawnMolecules(canvas))
        sketch.molecules.push_back(copyOf(drawn));
    return sketch;
}

void noteOpenDoubleBonds(const Sketch& sketch, Notes& notes)
{
    for (const SketchMolecule& molecule : sketch.molecules)
        notes.add("double bonds with unspecified E/Z stereo: drawn as one of the isomers",
                  std::count_if(molecule.bonds.begin(), molecule.bonds.end(),
                                [](const SketchBond& bond) { return bond.open; }));
}

void drawOn(KytStudioDoc& doc, const Sketch& sketch)
{
    for (const SketchMolecule& source : sketch.molecules) {
        if (source.atoms.empty())
            continue;
        auto* molecule = new KytMolecule;
        std::vector<KytAtom*> atoms;
        for (const SketchAtom& copy : source.atoms) {
            auto* atom = new KytAtom(doc.canvas, copy.symbol, copy.depth, false);
            for (int i = 0; i < 3; ++i)
                atom->_atomColor[i] = copy.color[i];
            atom->move(copy.x, copy.y);
            atom->setMolecule(molecule);
            atom->show();
            atoms.push_back(atom);
        }
        for (const SketchBond& copy : source.bonds) {
            auto* bond = new KytBond(atoms[copy.from], atoms[copy.to], &doc);
            for (const KytBondType kind : copy.kinds)
                bond->addBond(kind, copy.angle);
        }
    }
}
