#include "model/DrawnMolecules.h"

#include "bonds/KytBond.h"
#include "model/KytAtom.h"

#include <QHash>

namespace {

constexpr qsizetype cacheLine = 64; // bytes

// How many atoms ahead something is fetched, found by trial: what it is reached through has arrived by then.
constexpr qsizetype aheadForAtoms = 24;
constexpr qsizetype aheadForLabels = 16;
constexpr qsizetype aheadForBonds = 10;
constexpr qsizetype aheadForLines = 5;

/// Has the processor fetch the start of `object`, `lines` cache lines of it, while it goes on.
// Inlined by force: a function that only prefetches counts as one without effect, and the call may be dropped.
[[gnu::always_inline]] inline void fetch(const void* object, int lines)
{
    for (int line = 0; line < lines; ++line)
        __builtin_prefetch(static_cast<const char*>(object) + line * cacheLine);
}

/// Fetches what changing the atoms of `molecule` behind the place `at` will need: first the atoms themselves, nearer by
/// what they point to, and so on. Else, waiting for memory takes most of the time of moving a large molecule.
[[gnu::always_inline]] inline void fetchAhead(const QCanvasItemList& atoms, qsizetype at, const KytMolecule* molecule)
{
    const auto ahead = [&](qsizetype steps) {
        const qsizetype place = at + steps;
        return place < atoms.size() ? static_cast<const KytAtom*>(atoms[place]) : nullptr;
    };
    if (const KytAtom* atom = ahead(aheadForAtoms))
        fetch(atom, 3);
    if (const KytAtom* atom = ahead(aheadForLabels); atom && atom->getMolecule() == molecule) {
        fetch(atom->canvasSymbol, 2);
        fetch(atom->inList.constData(), 1);
        fetch(atom->outList.constData(), 1);
    }
    if (const KytAtom* atom = ahead(aheadForBonds); atom && atom->getMolecule() == molecule)
        for (const KytBond* bond : atom->outList)
            fetch(bond, 2);
    if (const KytAtom* atom = ahead(aheadForLines); atom && atom->getMolecule() == molecule)
        for (const KytBond* bond : atom->outList) {
            fetch(bond->bond1, 2);
            fetch(bond->bond2, 2);
            fetch(bond->toAtom, 3);
        }
}

} // namespace

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

void forEachAtom(const QCanvas& canvas, const KytMolecule* molecule, const std::function<void(KytAtom*)>& act)
{
    const QCanvasItemList atoms = canvas.itemsOfKind(QCanvasItem::Rtti_Ellipse);
    for (qsizetype i = 0; i < atoms.size(); ++i) {
        fetchAhead(atoms, i, molecule);
        auto* atom = static_cast<KytAtom*>(atoms[i]);
        if (atom->getMolecule() == molecule)
            act(atom);
    }
}

std::vector<DrawnMolecule> drawnMolecules(const QCanvas& canvas)
{
    std::vector<DrawnMolecule> molecules;
    QHash<KytMolecule*, std::size_t> places;
    const QList<KytAtom*> atoms = drawnAtoms(canvas);
    for (KytAtom* atom : atoms) {
        const auto place = places.constFind(atom->getMolecule());
        if (place != places.constEnd()) {
            molecules[*place].atoms.append(atom);
        } else {
            places.insert(atom->getMolecule(), molecules.size());
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
