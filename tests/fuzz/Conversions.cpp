#include "tests/fuzz/Conversions.h"

#include "convert/chemistry/MoleculeInfo.h"
#include "convert/chemistry/StartChemistry.h"

#include <cmath>

namespace {

constexpr std::size_t mostAtoms = 200; // larger ones take long, and tell nothing more

bool isWord(const QString& text)
{
    return !text.isEmpty() && std::none_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
}

void checkMolecule(const SketchMolecule& molecule)
{
    const int atoms = static_cast<int>(molecule.atoms.size());
    for (const SketchAtom& atom : molecule.atoms) {
        demand(isWord(atom.symbol), "a symbol is a word");
        demand(std::isfinite(atom.x) && std::isfinite(atom.y) && std::isfinite(atom.depth), "a place is finite");
        for (const QString& part : atom.color)
            demand(isWord(part), "a colour is three words");
    }
    for (const SketchBond& bond : molecule.bonds) {
        demand(bond.from >= 0 && bond.from < atoms && bond.to >= 0 && bond.to < atoms, "a bond is between atoms");
        demand(!bond.kinds.empty() && bond.kinds.size() <= 3, "a bond has one to three lines");
    }
}

std::size_t atomsOf(const std::vector<Sketch>& sketches)
{
    std::size_t atoms = 0;
    for (const Sketch& sketch : sketches)
        for (const SketchMolecule& molecule : sketch.molecules)
            atoms += molecule.atoms.size();
    return atoms;
}

/// What is written must be read again, whole. Only what lies too far away may be refused.
void checkWritten(const std::vector<Sketch>& sketches, const char* format)
{
    Notes notes;
    QByteArray text;
    try {
        text = writeSketches(sketches, *formatNamed(format), OutputStyle(), notes);
    } catch (const ConversionError& refusal) {
        demand(refusal.text().contains(QLatin1String("out of range")), "what was read can be written");
        return;
    }
    const std::vector<Sketch> again = readSketches(text, *formatNamed(format), "again", notes);
    demand(atomsOf(again) == atomsOf(sketches), "what is written is read again with all its atoms");
}

void checkRefusal(const ConversionError& refusal, const QString& name)
{
    demand(refusal.text().startsWith(name) && !refusal.text().contains(u'\n'), "a refusal is one line with the place");
}

} // namespace

void convertAndCheck(const QByteArray& input, const char* format)
{
    static const bool started = (startChemistry(), true);
    demand(started, "the chemistry is ready");
    std::vector<Sketch> sketches;
    Notes notes;
    try {
        sketches = readSketches(input, *formatNamed(format), "input", notes);
    } catch (const ConversionError& refusal) {
        checkRefusal(refusal, "input");
        return;
    }
    if (atomsOf(sketches) > mostAtoms || atomsOf(sketches) == 0)
        return;
    for (const Sketch& sketch : sketches)
        for (const SketchMolecule& molecule : sketch.molecules)
            checkMolecule(molecule);
    checkWritten(sketches, "kyt");
    checkWritten(sketches, "mol");
    checkWritten(sketches, "sdf");
    writeSketches(sketches, *formatNamed("smi"), OutputStyle(), notes);
    for (const Sketch& sketch : sketches)
        for (const SketchMolecule& molecule : sketch.molecules)
            infoOf(molecule);
}
