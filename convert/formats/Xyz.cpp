#include "convert/formats/Xyz.h"

#include "convert/chemistry/MoleculeInfo.h"
#include "convert/chemistry/Symbols.h"

#include <algorithm>

namespace {

constexpr int decimals = 5;

QByteArray coordinate(double pixels)
{
    // Adding 0.0 turns -0, which would be written with a sign, into 0.
    return QByteArray::number(pixels / pixelsPerAngstrom + 0.0, 'f', decimals).rightJustified(12);
}

bool hasImplicitHydrogens(const SketchMolecule& molecule)
{
    const std::vector<int> hydrogens = implicitHydrogens(molecule);
    return std::any_of(hydrogens.begin(), hydrogens.end(), [](int count) { return count > 0; });
}

QByteArray lineOf(const SketchAtom& atom, Notes& notes)
{
    const std::optional<ElementSymbol> element = parseSymbol(atom.symbol);
    const bool isElement = element && element->number > 0;
    notes.add("labels that are not elements: written as X", isElement ? 0 : 1);
    notes.add("charges and isotopes: discarded, not supported in XYZ",
              isElement && (element->charge != 0 || element->isotope != 0) ? 1 : 0);
    const QByteArray symbol = isElement ? elementName(element->number).toUtf8() : QByteArray("X");
    return symbol.leftJustified(2) + ' ' + coordinate(atom.x) + ' ' + coordinate(-atom.y) + ' '
        + coordinate(double{atom.depth}) + '\n';
}

} // namespace

QByteArray xyzOf(const std::vector<Sketch>& sketches, Notes& notes)
{
    QByteArray text;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules) {
            notes.add("molecules with implicit hydrogens: written without them",
                      hasImplicitHydrogens(molecule) ? 1 : 0);
            notes.add("record properties: discarded, not supported in XYZ", std::ssize(molecule.data));
            text += QByteArray::number(molecule.atoms.size()) + '\n' + molecule.name.toUtf8() + '\n';
            for (const SketchAtom& atom : molecule.atoms)
                text += lineOf(atom, notes);
        }
    }
    return text;
}
