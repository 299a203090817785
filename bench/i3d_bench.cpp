#include "bench/Measuring.h"
#include "bonds/KytBond.h"
#include "doc/kytstudiodoc.h"
#include "i3d/KytI3dView.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

#include <QApplication>
#include <QElapsedTimer>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

// Measures the 3D viewer with drawings of several sizes: the time from the command to the first frame, the median of
// five windows; then frame rate and processor time of a camera that moves by a key press per frame, in the first view
// and so far away that every atom is in view. Before it measures, the camera takes the same way once and the atoms in
// view are counted. Needs a display with OpenGL.
//
//     i3d_bench [ATOMS...]

namespace {

constexpr double spacing = 40; // canvas pixels between neighbours
constexpr double atomRadius = 8;
constexpr int rounds = 5;
constexpr qint64 measuredTime = 3'000'000'000; // nanoseconds, at least, for each view

/// A way of the camera that ends where it starts.
constexpr std::array cameraKeys = {SDLK_x, SDLK_RIGHT, SDLK_x, SDLK_UP, SDLK_z, SDLK_LEFT, SDLK_z, SDLK_DOWN};

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

void press(KytI3dView& viewer, SDLKey sym)
{
    SDL_keysym key = {};
    key.sym = sym;
    viewer.HandleKeyboard(&key);
}

void showFrame(KytI3dView& viewer)
{
    viewer.renderScene();
    glFinish();
    SDL_PumpEvents(); // so that the window is not taken for hanging
}

/// Opens the window and renders the first frame. Returns the time in milliseconds.
double openWithFrame(KytI3dView& viewer)
{
    QElapsedTimer clock;
    clock.start();
    if (!viewer.open())
        std::exit(1);
    showFrame(viewer);
    return static_cast<double>(clock.nsecsElapsed()) * 1e-6;
}

/// Whether the last frame shows the whole of a sphere there, in front of the far plane.
bool isInView(const std::array<float, 3>& centre)
{
    std::array<float, 16> modelview{};
    std::array<float, 16> projection{};
    glGetFloatv(GL_MODELVIEW_MATRIX, modelview.data());
    glGetFloatv(GL_PROJECTION_MATRIX, projection.data());
    const auto eyeCoordinate = [&](std::size_t row) {
        return modelview[row] * centre[0] + modelview[4 + row] * centre[1] + modelview[8 + row] * centre[2]
            + modelview[12 + row];
    };
    const double depth = -eyeCoordinate(2);
    const auto isInside = [&](std::size_t axis) {
        const double scale = projection[axis * 5];
        const double margin = atomRadius * std::hypot(scale, 1);
        return std::fabs(eyeCoordinate(axis)) * scale + margin <= depth;
    };
    GLdouble farthest = projection[14] / (projection[10] + 1);
    return isInside(0) && isInside(1) && depth + atomRadius < farthest;
}

int atomsInView(const KytStudioDoc& doc)
{
    int count = 0;
    for (const KytAtom* atom : drawnAtoms(*doc.canvas))
        count +=
            isInView({atom->getAtomZ(), static_cast<float>(atom->x() - 1000), static_cast<float>(1000 - atom->y())});
    return count;
}

/// Moves the camera once along its way. Returns the fewest atoms that a frame had in view.
int fewestAtomsInView(KytI3dView& viewer, const KytStudioDoc& doc)
{
    int fewest = viewer.totalAtomCount;
    for (const SDLKey key : cameraKeys) {
        press(viewer, key);
        showFrame(viewer);
        fewest = std::min(fewest, atomsInView(doc));
    }
    return fewest;
}

void moveAwayUntilAllIsInView(KytI3dView& viewer, const KytStudioDoc& doc)
{
    const int step = std::max(1, viewer.totalAtomCount / 500);
    for (;;) {
        while (atomsInView(doc) < viewer.totalAtomCount) {
            for (int i = 0; i < step; ++i)
                press(viewer, SDLK_s);
            glMatrixMode(GL_MODELVIEW);
            glLoadIdentity();
            gluLookAt(viewer.eye[0], viewer.eye[1], viewer.eye[2], viewer.pos[0], viewer.pos[1], viewer.pos[2], 0, 0,
                      1);
        }
        if (fewestAtomsInView(viewer, doc) == viewer.totalAtomCount)
            return;
        for (int i = 0; i < step; ++i)
            press(viewer, SDLK_s);
    }
}

void measureView(const char* name, KytI3dView& viewer, const KytStudioDoc& doc)
{
    const int inView = fewestAtomsInView(viewer, doc);
    std::vector<double> wallTimes;
    std::vector<double> processorTimes;
    QElapsedTimer total;
    total.start();
    while (total.nsecsElapsed() < measuredTime)
        for (const SDLKey key : cameraKeys) {
            QElapsedTimer clock;
            clock.start();
            processorTimes.push_back(processorTime([&] {
                press(viewer, key);
                showFrame(viewer);
            }));
            wallTimes.push_back(static_cast<double>(clock.nsecsElapsed()) * 1e-6);
        }
    std::printf("%6d atoms, %-10s %6d in view: %7.2f frames per second, %8.2f ms of processor time per frame\n",
                viewer.totalAtomCount, name, inView, 1000 / median(wallTimes), median(processorTimes));
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
    std::printf("%6d atoms: first frame after %7.1f ms, %.0f MiB of memory\n", viewer.totalAtomCount, median(first),
                memory("VmRSS:") / 1024);
    measureView("first view", viewer, doc);
    moveAwayUntilAllIsInView(viewer, doc);
    measureView("all", viewer, doc);
    std::fflush(stdout);
    viewer.close();
    delete doc.canvas;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList sizes = QApplication::arguments().mid(1);
    for (const QString& size : sizes.isEmpty() ? QStringList{"24", "200", "1000", "20000"} : sizes)
        measure(size.toInt());
}
