// Any bytes as the tree of one molecule, which comes back when it is written.

#include "tests/fuzz/FuzzTarget.h"
#include "tests/support/RoundTrip.h"

#include <algorithm>

namespace {

constexpr unsigned writtenPart = 4; // one input in so many is written and read again

KytAtom* readTree(const QByteArray& bytes, const DrawnCanvas& drawing)
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
bool hasPlainCoordinates(const DrawnCanvas& drawing)
{
    constexpr double sixDigits = 999999;
    const QList<KytAtom*> atoms = drawing.atoms();
    return std::all_of(atoms.begin(), atoms.end(), [](const KytAtom* atom) {
        return std::fabs(atom->x()) <= sixDigits && std::fabs(atom->y()) <= sixDigits;
    });
}

/// Demands that the tree of `start`, whose atoms are those of `drawing`, comes back when it is written and read.
void writeAndRead(KytAtom* start, const DrawnCanvas& drawing)
{
    const QByteArray written = writtenTree(start);
    const KeptDrawing again;
    const QByteArray rewritten = writtenTree(readTree(written, again));
    if (!hasPlainCoordinates(drawing))
        return;
    demand(again.atoms().size() == drawing.atoms().size(), "a tree comes back with all of its atoms");
    demand(rewritten == written, "a tree that was written and read is written the same");
}

} // namespace

void runInput(const QByteArray& input)
{
    const KeptDrawing drawing;
    KytAtom* start = readTree(input, drawing);
    demandNoFault(drawingFault(*drawing.canvas()), "after reading");
    demandNoFault(moleculeFault(*drawing.canvas()), "after reading");
    if (qChecksum(input) % writtenPart == 0)
        writeAndRead(start, drawing);
}
