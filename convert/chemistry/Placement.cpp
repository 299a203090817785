#include "convert/chemistry/Placement.h"

#include "bonds/BondGeometry.h"
#include "bonds/DrawnShape.h"
#include "canvas/truncate.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double gap = 45;         // pixels between drawings side by side; leaves room for an atom label
constexpr double letterWidth = 12; // pixels; width of a wide letter in a label

// Space for labels around the atom centres, in pixels: a label hangs to the lower right of its atom.
constexpr QMarginsF labelSpace(7, 7, 14, 22);

/// The start of an interval of `length` that is centred between `first` and `last`, or `first` if it does not fit.
double centredStart(double length, double first, double last)
{
    const double slack = last - first - length;
    return slack > 0 ? first + slack / 2 : first;
}

/// The top-left corner at which a drawing of this size is centred in the shown part of the canvas.
QPointF centredCorner(const QSizeF& size)
{
    const QRectF area = shownPart.marginsRemoved(labelSpace);
    return {centredStart(size.width(), area.left(), area.right()),
            centredStart(size.height(), area.top(), area.bottom())};
}

/// Moves the top-left corner of the sketch to `corner`.
void moveTo(Sketch& sketch, const QPointF& corner)
{
    const QRectF extent = extentOf(sketch);
    shift(sketch, corner.x() - extent.x(), corner.y() - extent.y());
}

/// The size of the sketch, including the part of its labels that does not fit into the gap beside it.
QSizeF sizeWithLabels(const Sketch& sketch)
{
    QRectF area = extentOf(sketch);
    for (const SketchMolecule& molecule : sketch.molecules)
        for (const SketchAtom& atom : molecule.atoms)
            area.setRight(std::max(area.right(), atom.x + letterWidth * double(atom.symbol.size()) - gap));
    return area.size();
}

/// The projection angle of a wedge between two atoms, in degrees.
float angleFromDepths(const SketchAtom& from, const SketchAtom& to)
{
    const double length = pixelDistance({from.x, from.y}, {to.x, to.y});
    return narrowed(projectionAngle(double{from.depth} - to.depth, length));
}

DrawnShape shapeOf(const SketchMolecule& molecule)
{
    DrawnShape shape;
    for (const SketchAtom& atom : molecule.atoms)
        shape.atoms.push_back({atom.x, atom.y, atom.depth});
    for (const SketchBond& bond : molecule.bonds)
        shape.bonds.push_back({bond.from, bond.to, bond.kinds.empty() ? KYTBT_SingleBond : bond.kinds.front()});
    return shape;
}

/// The indices of the wedges, each after the wedge that ends at its start atom; wedges in a ring have no such order.
std::vector<std::size_t> wedgesInOrder(const SketchMolecule& molecule)
{
    std::vector<std::size_t> endingAt(molecule.atoms.size(), molecule.bonds.size());
    for (std::size_t i = 0; i < molecule.bonds.size(); ++i)
        if (isWedge(molecule.bonds[i]))
            endingAt[molecule.bonds[i].to] = i;

    std::vector<std::size_t> order;
    std::vector<bool> visited(molecule.bonds.size());
    for (std::size_t i = 0; i < molecule.bonds.size(); ++i) {
        std::vector<std::size_t> path;
        for (std::size_t next = i; next < molecule.bonds.size() && isWedge(molecule.bonds[next]) && !visited[next];
             next = endingAt[molecule.bonds[next].from]) {
            visited[next] = true;
            path.push_back(next);
        }
        order.insert(order.end(), path.rbegin(), path.rend());
    }
    return order;
}

} // namespace

QRectF extentOf(const Sketch& sketch)
{
    bool any = false;
    double left = 0, right = 0, top = 0, bottom = 0;
    for (const SketchMolecule& molecule : sketch.molecules) {
        for (const SketchAtom& atom : molecule.atoms) {
            left = any ? std::min(left, atom.x) : atom.x;
            right = any ? std::max(right, atom.x) : atom.x;
            top = any ? std::min(top, atom.y) : atom.y;
            bottom = any ? std::max(bottom, atom.y) : atom.y;
            any = true;
        }
    }
    return QRectF(left, top, right - left, bottom - top);
}

void shift(Sketch& sketch, double dx, double dy)
{
    for (SketchMolecule& molecule : sketch.molecules) {
        for (SketchAtom& atom : molecule.atoms) {
            atom.x += dx;
            atom.y += dy;
        }
    }
}

void centre(Sketch& sketch)
{
    moveTo(sketch, centredCorner(extentOf(sketch).size()));
}

Sketch sideBySide(std::vector<Sketch> sketches)
{
    Sketch all;
    all.placed = true;
    all.laidOut = !sketches.empty()
        && std::all_of(sketches.begin(), sketches.end(), [](const Sketch& sketch) { return sketch.laidOut; });
    QPointF pen(0, 0);
    double rowHeight = 0;
    for (Sketch& sketch : sketches) {
        const QSizeF size = sizeWithLabels(sketch);
        if (pen.x() > 0 && pen.x() + size.width() > canvasArea.width() - 2 * gap) {
            pen = {0, pen.y() + rowHeight + gap};
            rowHeight = 0;
        }
        if (sketches.size() > 1)
            moveTo(sketch, pen);
        else if (!sketch.placed)
            centre(sketch);
        pen.rx() += size.width() + gap;
        rowHeight = std::max(rowHeight, size.height());
        std::move(sketch.molecules.begin(), sketch.molecules.end(), std::back_inserter(all.molecules));
    }
    if (sketches.size() > 1)
        centre(all);
    return all;
}

void spreadPieces(SketchMolecule& molecule)
{
    const std::vector<std::size_t> pieceOf = connectedPieces(shapeOf(molecule));
    std::vector<Sketch> pieces;
    std::vector<std::size_t> indexInPiece;
    for (std::size_t i = 0; i < pieceOf.size(); ++i) {
        if (pieceOf[i] == pieces.size())
            pieces.emplace_back().molecules.emplace_back();
        std::vector<SketchAtom>& atoms = pieces[pieceOf[i]].molecules.front().atoms;
        indexInPiece.push_back(atoms.size());
        atoms.push_back(molecule.atoms[i]);
    }
    if (pieces.size() < 2)
        return;
    double pen = 0;
    for (Sketch& piece : pieces) {
        moveTo(piece, {pen, -extentOf(piece).height() / 2});
        pen += sizeWithLabels(piece).width() + gap;
    }
    for (std::size_t i = 0; i < pieceOf.size(); ++i)
        molecule.atoms[i] = std::move(pieces[pieceOf[i]].molecules.front().atoms[indexInPiece[i]]);
}

bool isFlat(const SketchMolecule& molecule)
{
    return isFlat(shapeOf(molecule));
}

void liftWedges(SketchMolecule& molecule)
{
    std::vector<bool> isFlat;
    for (const SketchBond& bond : molecule.bonds)
        isFlat.push_back(molecule.atoms[bond.from].depth == molecule.atoms[bond.to].depth);
    std::vector<bool> isLifted(molecule.atoms.size());
    for (const std::size_t index : wedgesInOrder(molecule)) {
        SketchBond& wedge = molecule.bonds[index];
        const SketchAtom& from = molecule.atoms[wedge.from];
        SketchAtom& to = molecule.atoms[wedge.to];
        if (isFlat[index] && !isLifted[wedge.to]) {
            isLifted[wedge.to] = true;
            const double rise = drawnSlope * distance({from.x, from.y}, {to.x, to.y});
            to.depth = narrowed(wedge.kinds.front() == KYTBT_StereoUp ? from.depth + rise : from.depth - rise);
            wedge.angle = drawnAngle;
        } else {
            wedge.angle = angleFromDepths(from, to);
        }
    }
}

void setWedgeAngles(SketchMolecule& molecule)
{
    for (SketchBond& bond : molecule.bonds)
        if (isWedge(bond))
            bond.angle = angleFromDepths(molecule.atoms[bond.from], molecule.atoms[bond.to]);
}
