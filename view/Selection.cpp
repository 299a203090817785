#include "view/Selection.h"

#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace {

constexpr double haloRadius = 8; // canvas pixels; screen pixels when zoomed out
constexpr double outline = 1;    // likewise

// Light, so that bonds and labels stay legible on it; the outline has the contrast that tells it from the paper.
constexpr QColor haloColor(214, 228, 255);
constexpr QColor outlineColor(70, 120, 220);

/// `atoms`, and the molecules of those that are locked.
QSet<const QCanvasItem*> withLockedMolecules(const QList<KytAtom*>& atoms, const QCanvas& canvas)
{
    QSet<const QCanvasItem*> all;
    QSet<const KytMolecule*> molecules;
    for (const KytAtom* atom : atoms) {
        if (!atom || atom->canvas() != &canvas)
            continue;
        all.insert(atom);
        if (atom->locked)
            molecules.insert(atom->getMolecule());
    }
    if (molecules.isEmpty())
        return all;
    for (const KytAtom* atom : drawnAtoms(canvas))
        if (molecules.contains(atom->getMolecule()))
            all.insert(atom);
    return all;
}

} // namespace

QList<KytAtom*> Selection::atoms(const QCanvas& canvas) const
{
    if (isEmpty())
        return {};
    QList<KytAtom*> atoms = drawnAtoms(canvas);
    atoms.removeIf([this](const KytAtom* atom) { return !contains(atom); });
    return atoms;
}

void Selection::add(const QList<KytAtom*>& atoms, const QCanvas& canvas)
{
    members.unite(withLockedMolecules(atoms, canvas));
}

void Selection::toggle(KytAtom* atom, const QCanvas& canvas)
{
    if (contains(atom))
        members.subtract(withLockedMolecules({atom}, canvas));
    else
        add({atom}, canvas);
}

bool Selection::forget(const QCanvasItem* item)
{
    return members.remove(item);
}

void Selection::paint(QPainter& painter, const QRect& area, double zoom) const
{
    const double radius = reach(zoom);
    const QRectF near = QRectF(area).adjusted(-radius, -radius, radius, radius);
    QList<QPointF> centres;
    for (const QCanvasItem* atom : members)
        if (near.contains(atom->x(), atom->y()))
            centres.append({atom->x(), atom->y()});
    painter.setPen(Qt::NoPen);
    // All outlines first, so that halos that touch have one outline together.
    const double inner = haloRadius / std::min(zoom, 1.0);
    for (const auto& [color, size] : {std::pair(outlineColor, radius), std::pair(haloColor, inner)}) {
        painter.setBrush(color);
        for (const QPointF& centre : centres)
            painter.drawEllipse(centre, size, size);
    }
}

double Selection::reach(double zoom)
{
    return (haloRadius + outline) / std::min(zoom, 1.0);
}
