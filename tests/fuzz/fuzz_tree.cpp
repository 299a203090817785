// Any bytes as the tree of one molecule.

#include "tests/fuzz/FuzzTarget.h"
#include "tests/support/RoundTrip.h"

#include <algorithm>

namespace {

KytAtom* readTree(const QByteArray& bytes, Drawing& drawing)
{
    KytAtom* start = drawing.atom(0, 0);
    QTextStream stream(bytes, QIODevice::ReadOnly);
    start->readMoleculeFromFile(&stream, new KytMolecule, drawing.doc);
    return start;
}

QByteArray writtenTree(KytAtom* start)
{
    QByteArray bytes;
    QTextStream stream(&bytes, QIODevice::WriteOnly);
    KytVisitedPairs visited;
    start->writeMoleculeToFile(&stream, &visited);
    stream.flush();
    return bytes;
}

/// Whether all coordinates are written as the whole numbers that the reader takes.
bool hasPlainCoordinates(const Drawing& drawing)
{
    constexpr double sixDigits = 999999;
    const QList<KytAtom*> atoms = drawing.atoms();
    return std::all_of(atoms.begin(), atoms.end(), [](const KytAtom* atom) {
        return std::fabs(atom->x()) <= sixDigits && std::fabs(atom->y()) <= sixDigits;
    });
}

} // namespace

void runInput(const QByteArray& input)
{
    Drawing drawing;
    KytAtom* start = readTree(input, drawing);
    demand(moleculeFault(*drawing.canvas()).isEmpty(), "all atoms of a tree are bonded together in one molecule");

    const QByteArray written = writtenTree(start);
    Drawing again;
    const QByteArray rewritten = writtenTree(readTree(written, again));
    if (hasPlainCoordinates(drawing)) {
        demand(again.atoms().size() == drawing.atoms().size(), "a tree comes back with all of its atoms");
        demand(rewritten == written, "a tree that was written and read is written the same");
    }
    editAndCheck(drawing, input);
}
