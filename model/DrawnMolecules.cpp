#include "model/DrawnMolecules.h"

#include "model/KytAtom.h"

#include <QHash>

QList<KytAtom*> drawnAtoms(const QCanvas& canvas)
{
    QList<KytAtom*> atoms;
    const QCanvasItemList ellipses = canvas.itemsOfKind(QCanvasItem::Rtti_Ellipse);
    atoms.reserve(ellipses.size());
    for (QCanvasItem* ellipse : ellipses)
        atoms.append(static_cast<KytAtom*>(ellipse));
    return atoms;
}

QList<KytAtom*> drawnAtoms(const QCanvas& canvas, const KytMolecule* molecule)
{
    QList<KytAtom*> atoms = drawnAtoms(canvas);
    atoms.removeIf([molecule](const KytAtom* atom) { return atom->getMolecule() != molecule; });
    return atoms;
}

std::vector<DrawnMolecule> drawnMolecules(const QCanvas& canvas)
{
    std::vector<DrawnMolecule> molecules;
    QHash<KytMolecule*, std::size_t> indices;
    const QList<KytAtom*> atoms = drawnAtoms(canvas);
    for (KytAtom* atom : atoms) {
        const auto index = indices.constFind(atom->getMolecule());
        if (index != indices.constEnd()) {
            molecules[*index].atoms.append(atom);
        } else {
            indices.insert(atom->getMolecule(), molecules.size());
            molecules.push_back({atom->getMolecule(), {atom}});
        }
    }
    return molecules;
}

int bondsAmong(const QList<KytAtom*>& atoms)
{
    int ends = 0;
    for (const KytAtom* atom : atoms)
        ends += atom->getBondCount();
    return ends / 2;
}
