#include "doc/Clipping.h"

#include "bonds/DrawnShape.h"
#include "bonds/KytBond.h"
#include "doc/KytFileIO.h"
#include "doc/WorkspaceFile.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

#include <QHash>
#include <QRectF>
#include <QSet>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double farAway = 1e6; // pixels; further out, coordinates lose their fractions

/// A drawing apart from the one that is shown.
class ScratchDrawing {
public:
    ScratchDrawing() { doc.newDoc(); }
    ~ScratchDrawing() { delete doc.canvas; }
    ScratchDrawing(const ScratchDrawing&) = delete;
    ScratchDrawing& operator=(const ScratchDrawing&) = delete;

    /// Returns false if the text is not a workspace, or has an error.
    bool read(const QByteArray& workspace)
    {
        QTextStream stream(workspace);
        KytFileIO io;
        std::vector<WorkspaceFault> faults;
        io.faults = &faults;
        return io.readWorkspace(stream, &doc, false)
            && std::none_of(faults.begin(), faults.end(), [](const WorkspaceFault& fault) { return fault.isError; });
    }

    QCanvas& canvas() const { return *doc.canvas; }

private:
    KytStudioDoc doc;
};

/// All atoms in the order in which a workspace lists them.
QList<KytAtom*> atomsInFileOrder(const QCanvas& canvas)
{
    QList<KytAtom*> atoms;
    for (const DrawnMolecule& drawn : drawnMolecules(canvas))
        atoms += drawn.atoms;
    return atoms;
}

QByteArray locksOf(const QList<KytAtom*>& atoms)
{
    QByteArray locks;
    for (const KytAtom* atom : atoms)
        locks += atom->locked ? '1' : '0';
    return locks;
}

/// The area that atoms and their labels take.
QRectF extentOf(const QList<KytAtom*>& atoms)
{
    QRectF extent;
    for (const KytAtom* atom : atoms)
        extent |= QRectF(atom->boundingRect()) | QRectF(atom->canvasSymbol->boundingRect());
    return extent;
}

/// By how much an interval has to be shifted for its middle to be at `middle` or, so that it fits, near it.
int shiftOf(double first, double length, double middle)
{
    const double wanted = middle - length / 2;
    const double fitting = length > canvasSize ? wanted : std::clamp(wanted, 0.0, canvasSize - length);
    return static_cast<int>(std::lround(fitting - first));
}

DrawnShape shapeOf(const QList<KytAtom*>& atoms)
{
    DrawnShape shape;
    QHash<const KytAtom*, int> index;
    for (const KytAtom* atom : atoms) {
        index[atom] = static_cast<int>(shape.atoms.size());
        shape.atoms.push_back({atom->x(), atom->y(), atom->getAtomZ()});
    }
    for (const KytAtom* atom : atoms)
        for (const KytBond* bond : atom->outList)
            shape.bonds.push_back({index.value(atom), index.value(bond->getToAtom()), bond->bond1Type});
    return shape;
}

QByteArray locksByShape(const QCanvas& canvas)
{
    QByteArray locks;
    for (const DrawnMolecule& drawn : drawnMolecules(canvas))
        locks += QByteArray(drawn.atoms.size(), isFlat(shapeOf(drawn.atoms)) ? '0' : '1');
    return locks;
}

} // namespace

Clipping clippingOf(QCanvas& canvas, const QList<KytAtom*>& atoms)
{
    const QList<KytAtom*> all = atomsInFileOrder(canvas);
    const QByteArray workspace = workspaceText(canvas);
    if (atoms.size() == all.size())
        return {workspace, locksOf(all)};

    // The bonds that lead out of the part go with the atoms that are taken away from a copy.
    const QSet<KytAtom*> wanted(atoms.begin(), atoms.end());
    ScratchDrawing copy;
    copy.read(workspace);
    const QList<KytAtom*> copies = atomsInFileOrder(copy.canvas());
    QList<KytAtom*> others;
    for (qsizetype i = 0; i < copies.size(); ++i) {
        copies[i]->locked = all[i]->locked;
        if (!wanted.contains(all[i]))
            others.append(copies[i]);
    }
    deleteAtoms(others);
    return {workspaceText(copy.canvas()), locksOf(atomsInFileOrder(copy.canvas()))};
}

QRectF extentOf(const Clipping& clipping)
{
    ScratchDrawing trial;
    return trial.read(clipping.workspace) ? extentOf(atomsInFileOrder(trial.canvas())) : QRectF();
}

QList<KytAtom*> addClipping(const Clipping& clipping, std::optional<QPointF> middle, KytStudioDoc& doc)
{
    ScratchDrawing trial;
    if (!trial.read(clipping.workspace))
        return {};
    const QList<KytAtom*> expected = atomsInFileOrder(trial.canvas());
    const QRectF extent = extentOf(expected);
    if (expected.isEmpty() || !QRectF(-farAway, -farAway, 2 * farAway, 2 * farAway).contains(extent))
        return {};
    const bool ownLocks = clipping.locks.size() == expected.size();
    const QByteArray locks = ownLocks ? clipping.locks : locksByShape(trial.canvas());

    const qsizetype before = drawnAtoms(*doc.canvas).size();
    const QPointF wanted = middle.value_or(extent.center());
    QTextStream stream(clipping.workspace);
    KytFileIO io;
    io.offset = {shiftOf(extent.left(), extent.width(), wanted.x()),
                 shiftOf(extent.top(), extent.height(), wanted.y())};
    io.readWorkspace(stream, &doc, false);
    QList<KytAtom*> added = drawnAtoms(*doc.canvas).mid(before);
    for (qsizetype i = 0; i < added.size(); ++i)
        added[i]->locked = locks[i] == '1';
    doc.canvas->update();
    return added;
}
