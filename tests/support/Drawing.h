#pragma once

#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "canvas/qcanvas.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <QList>
#include <QPointer>
#include <QSet>
#include <QString>

#include <array>
#include <cmath>
#include <initializer_list>

/// The items of the class `Item` on a canvas, in the order of its items; none where there is no canvas.
template <typename Item> QList<Item*> itemsOf(const QCanvas* canvas)
{
    QList<Item*> found;
    const QCanvasItemList items = canvas ? canvas->allItems() : QCanvasItemList();
    for (QCanvasItem* item : items)
        if (auto* one = dynamic_cast<Item*>(item))
            found.append(one);
    return found;
}

inline QList<KytAtom*> atomsOf(const QCanvas& canvas)
{
    return itemsOf<KytAtom>(&canvas);
}

/// What a test draws on the canvas of a document and finds there. Places are canvas pixels.
class DrawnCanvas {
public:
    /// Whoever makes it owns `document`, which has a canvas. Both may go before this.
    explicit DrawnCanvas(KytStudioDoc* document)
        : doc(document)
        , lastCanvas(document->canvas)
    {
    }

    QCanvas* canvas() const { return doc ? doc->canvas : lastCanvas.data(); }

    /// A shown atom in a molecule of its own.
    KytAtom* atom(double x, double y, float z = 0, bool locked = false) const
    {
        auto* made = new KytAtom(canvas(), z, locked);
        made->move(x, y);
        made->show();
        return made;
    }

    /// So many atoms side by side, the first at (x, y), each `step` pixels to the right of the one before it.
    template <std::size_t count> std::array<KytAtom*, count> row(double x = 0, double y = 0, double step = 30) const
    {
        std::array<KytAtom*, count> made;
        for (std::size_t i = 0; i < count; ++i)
            made[i] = atom(x + double(i) * step, y);
        return made;
    }

    /// The same, each bonded to the next.
    template <std::size_t count> std::array<KytAtom*, count> chain(double x = 0, double y = 0, double step = 30) const
    {
        const std::array<KytAtom*, count> made = row<count>(x, y, step);
        for (std::size_t i = 1; i < count; ++i)
            bond(made[i - 1], made[i]);
        return made;
    }

    /// A bond as it is drawn by hand: the end atom's molecule becomes the start atom's. Without a kind, nothing is
    /// drawn for it.
    KytBond* bond(KytAtom* from, KytAtom* to, std::initializer_list<int> kinds = {KYTBT_SingleBond},
                  float angle = drawnAngle) const
    {
        KytBond* made = looseBond(from, to, kinds, angle);
        to->setMolecule(from->getMolecule());
        return made;
    }

    /// The same bond, but the molecules of the two atoms stay as they are.
    KytBond* looseBond(KytAtom* from, KytAtom* to, std::initializer_list<int> kinds = {KYTBT_SingleBond},
                       float angle = drawnAngle) const
    {
        auto* made = new KytBond(from, to, doc);
        for (const int kind : kinds)
            made->addBond(static_cast<KytBondType>(kind), angle);
        return made;
    }

    // Each in the order of the canvas's items; the rubber band is no line of a bond.
    QList<KytAtom*> atoms() const { return itemsOf<KytAtom>(canvas()); }
    QList<QCanvasText*> labels() const { return itemsOf<QCanvasText>(canvas()); }
    QList<KytBondLine*> lines() const { return itemsOf<KytBondLine>(canvas()); }
    QList<KytStereoBond*> wedges() const { return itemsOf<KytStereoBond>(canvas()); }

    bool isOnCanvas(const QCanvasItem* item) const
    {
        return canvas() && canvas()->allItems().contains(const_cast<QCanvasItem*>(item));
    }

    QPointer<KytStudioDoc> doc;

private:
    QPointer<QCanvas> lastCanvas;
};

/// A document with a canvas for one test. Both go when it goes, with everything that is drawn on the canvas.
class Drawing : public DrawnCanvas {
public:
    Drawing()
        : DrawnCanvas(newDocument())
    {
    }
    ~Drawing()
    {
        freeCanvas();
        delete doc;
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void freeCanvas() const { delete canvas(); }

private:
    static KytStudioDoc* newDocument()
    {
        auto* made = new KytStudioDoc;
        made->newDoc();
        return made;
    }
};

/// Everything that can be reached from `start` along bonds, whichever way they run, `start` included.
inline QSet<KytAtom*> pieceOf(KytAtom* start)
{
    QSet<KytAtom*> piece{start};
    QList<KytAtom*> open{start};
    const auto reach = [&](KytAtom* atom) {
        if (atom && !piece.contains(atom)) {
            piece.insert(atom);
            open.append(atom);
        }
    };
    while (!open.isEmpty()) {
        KytAtom* atom = open.takeLast();
        for (KytBond* bond : std::as_const(atom->inList))
            reach(bond->fromAtom);
        for (KytBond* bond : std::as_const(atom->outList))
            reach(bond->toAtom);
    }
    return piece;
}

/// Whether the atoms bonded together share one molecule, and no molecule holds two pieces. Says what is wrong, or
/// nothing.
inline QString moleculeFault(const QCanvas& canvas)
{
    QSet<KytAtom*> seen;
    QSet<KytMolecule*> molecules;
    const QList<KytAtom*> atoms = atomsOf(canvas);
    for (KytAtom* atom : atoms) {
        if (seen.contains(atom))
            continue;
        const QSet<KytAtom*> piece = pieceOf(atom);
        for (KytAtom* member : piece)
            if (member->molecule != atom->molecule)
                return QStringLiteral("one structure lies in two molecules");
        if (molecules.contains(atom->molecule))
            return QStringLiteral("one molecule holds two structures");
        molecules.insert(atom->molecule);
        seen.unite(piece);
    }
    return QString();
}

/// Whether bonds, lists, items and labels of a canvas agree with each other. Says what is wrong, or nothing.
inline QString drawingFault(const QCanvas& canvas)
{
    const QCanvasItemList itemList = canvas.allItems();
    const QSet<QCanvasItem*> items(itemList.begin(), itemList.end());
    if (items.size() != itemList.size())
        return QStringLiteral("an item is listed twice");
    const QList<KytAtom*> atoms = atomsOf(canvas);
    QSet<const QCanvasItem*> owned;
    QSet<KytBond*> bonds;
    for (KytAtom* atom : atoms) {
        owned.insert(atom);
        owned.insert(atom->canvasSymbol);
        if (atom->flag != 0 || atom->deleted != 0)
            return QStringLiteral("an atom's marks are not 0");
        if (!std::isfinite(atom->x()) || !std::isfinite(atom->y()) || !std::isfinite(atom->atomZ))
            return QStringLiteral("an atom is nowhere");
        if (!items.contains(atom->canvasSymbol) || atom->canvasSymbol->text() != atom->symbol)
            return QStringLiteral("an atom's label is wrong");
        for (KytBond* bond : std::as_const(atom->inList)) {
            bonds.insert(bond);
            if (bond->toAtom != atom || !bond->fromAtom || bond->fromAtom->outList.count(bond) != 1)
                return QStringLiteral("an incoming bond is not known at both ends");
        }
        for (KytBond* bond : std::as_const(atom->outList)) {
            bonds.insert(bond);
            if (bond->fromAtom != atom || !bond->toAtom || bond->toAtom->inList.count(bond) != 1)
                return QStringLiteral("an outgoing bond is not known at both ends");
        }
    }
    for (KytBond* bond : std::as_const(bonds)) {
        for (KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3}) {
            if (line && line->bond != bond)
                return QStringLiteral("a line belongs to another bond");
            if (line)
                owned.insert(line);
        }
        if (bond->stereoBond)
            owned.insert(bond->stereoBond);
        if (bond->bondCount < 0 || bond->bondCount > 3)
            return QStringLiteral("a bond's count is out of range");
    }
    if (owned.size() != items.size())
        return QStringLiteral("there are %1 items for %2 that are owned").arg(items.size()).arg(owned.size());
    for (const QCanvasItem* item : std::as_const(owned))
        if (!items.contains(const_cast<QCanvasItem*>(item)))
            return QStringLiteral("an owned item is not on the canvas");
    return QString();
}
