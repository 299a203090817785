#include "convert/formats/InchiLines.h"

#include "convert/chemistry/Inchi.h"

namespace {

template <typename Identifier>
QByteArray linesOf(const std::vector<Sketch>& sketches, Notes& notes, Identifier identifier)
{
    QByteArray text;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules) {
            notes.add("record properties: discarded, not supported in InChI", std::ssize(molecule.data));
            text += identifier(inchiOf(molecule, notes)).toUtf8();
            if (!molecule.name.isEmpty())
                text += '\t' + molecule.name.toUtf8();
            text += '\n';
        }
    }
    return text;
}

} // namespace

QByteArray inchiLinesOf(const std::vector<Sketch>& sketches, Notes& notes)
{
    return linesOf(sketches, notes, [](const QString& inchi) { return inchi; });
}

QByteArray inchiKeyLinesOf(const std::vector<Sketch>& sketches, Notes& notes)
{
    return linesOf(sketches, notes, inchiKeyOf);
}
