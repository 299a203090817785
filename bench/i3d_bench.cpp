#include "bench/Measuring.h"
#include "bonds/KytBond.h"
#include "doc/kytstudiodoc.h"
#include "i3d/KytI3dView.h"
#include "model/KytAtom.h"

#include <QApplication>
#include <QElapsedTimer>

#include <cmath>
#include <cstdio>
#include <cstdlib>

// Measures the time to the first frame and the frame rate of the 3D viewer. Needs a display with OpenGL. Prints one
// line per drawing size; the time to the first frame is the median of five windows.

namespace {

constexpr double spacing = 40; // canvas pixels between neighbours
constexpr int rounds = 5;
constexpr qint64 measuredTime = 3'000'000'000; // nanoseconds, for the frame rate

/// Draws a molecule of `count` atoms as a square lattice; each atom is bonded to its left and upper neighbours.
void drawLattice(KytStudioDoc& doc, int count)
{
    const int columns = static_cast<int>(std::ceil(std::sqrt(count)));
    QList<KytAtom*> atoms;
    const auto join = [&](KytAtom* from, KytAtom* to) { (new KytBond(from, to, &doc))->addBond(KYTBT_SingleBond, 60); };
    for (int i = 0; i < count; ++i) {
        auto* atom = new KytAtom(doc.canvas, 0, false);
        atom->move(1000 + spacing * (i % columns - columns / 2), 1000 + spacing * (i / columns - columns / 2));
        atom->show();
        if (i % columns > 0)
            join(atoms[i - 1], atom);
        if (i >= columns)
            join(atoms[i - columns], atom);
        atoms.append(atom);
    }
    atoms.first()->spreadMolecule();
}

/// Opens the window and renders the first frame. Returns the time in milliseconds.
double openWithFrame(KytI3dView& viewer)
{
    QElapsedTimer clock;
    clock.start();
    if (!viewer.open())
        std::exit(1);
    viewer.step();
    glFinish();
    return static_cast<double>(clock.nsecsElapsed()) * 1e-6;
}

void measure(int count)
{
    KytStudioDoc doc;
    doc.newDoc();
    drawLattice(doc, count);
    KytI3dView viewer(doc.canvas);

    std::vector<double> first{openWithFrame(viewer)};
    for (int round = 1; round < rounds; ++round) {
        viewer.close();
        first.push_back(openWithFrame(viewer));
    }

    int frames = 0;
    QElapsedTimer clock;
    clock.start();
    while (clock.nsecsElapsed() < measuredTime) {
        viewer.step();
        glFinish();
        ++frames;
    }
    const double seconds = static_cast<double>(clock.nsecsElapsed()) * 1e-9;
    viewer.close();
    std::printf("%6d atoms: first frame after %7.1f ms, %7.2f frames per second\n", viewer.totalAtomCount,
                median(first), frames / seconds);
    std::fflush(stdout);
    delete doc.canvas;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    for (const int count : {24, 1000, 20000})
        measure(count);
}
