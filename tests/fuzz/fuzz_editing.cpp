// Any bytes as a workspace file, of which the drawing is then edited, written and read again. Does what an editor does:
// moves every atom, changes depths and angles, merges atoms, deletes half of them. The input decides which atoms are
// merged.

#include "tests/fuzz/FuzzTarget.h"

#include "bonds/BondUpdate.h"
#include "tests/support/RoundTrip.h"

namespace {

constexpr unsigned merges = 3;
constexpr unsigned unedited = 4; // one input in so many makes the round trip before it is edited, too

/// Where everything that a bond draws lies.
QList<QPoint> placesOf(const KytBond& bond)
{
    QList<QPoint> places;
    for (const KytBondLine* line : {bond.bond1, bond.bond2, bond.bond3})
        if (line)
            places << line->getStartPoint() << line->getEndPoint();
    if (bond.stereoBond)
        places << *bond.stereoBond->getPointsArray();
    return places;
}

/// Whether what the bonds draw lies where their atoms are.
QString layoutFault(const DrawnCanvas& drawing)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    for (const KytAtom* atom : atoms) {
        for (KytBond* bond : atom->outList) {
            const QList<QPoint> places = placesOf(*bond);
            bond->layOut();
            if (placesOf(*bond) != places)
                return QStringLiteral("a bond is not drawn where its atoms are");
        }
    }
    return QString();
}

/// Moves all atoms together, as dragging a molecule does, and then turns some one by one. With an even `choice`, depths
/// are settled at the end, as they are in large molecules.
void moveEveryAtom(const DrawnCanvas& drawing, unsigned choice)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    {
        BondUpdate update(choice % 2 == 0 ? 0 : 1000);
        for (KytAtom* atom : atoms)
            atom->moveBy(7.25, -3, update);
    }
    for (qsizetype i = 0; i < atoms.size(); i += 3)
        atoms[i]->rotateAbout(atoms.first()->x(), atoms.first()->y(), 0.5F);
}

void changeDepths(const DrawnCanvas& drawing)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    for (qsizetype i = 0; i < atoms.size(); i += 4)
        atoms[i]->setAtomZ(atoms[i]->getAtomZ() + 0.5F);
    const QCanvasItemList items = drawing.canvas()->allItems();
    for (QCanvasItem* item : items)
        if (item->rtti() == QCanvasItem::Rtti_Polygon)
            static_cast<KytStereoBond*>(item)->setAngle(44.5F);
}

/// Drops one atom onto another, as the view does.
void mergeTwo(const DrawnCanvas& drawing, unsigned choice)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    if (atoms.size() < 2)
        return;
    const qsizetype stays = choice % atoms.size();
    const qsizetype step = 1 + choice / 7 % (atoms.size() - 1);
    KytAtom* dropped = atoms[(stays + step) % atoms.size()];
    if (atoms[stays]->combine(dropped))
        delete dropped;
}

void deleteHalf(const DrawnCanvas& drawing)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    for (qsizetype i = 0; i < atoms.size(); i += 2)
        delete atoms[i];
}

} // namespace

void runInput(const QByteArray& input)
{
    const unsigned choice = qChecksum(input);
    const KeptDrawing drawing;
    addWorkspace(input, drawing, input.size() % 2 == 1);
    if (choice % unedited == 0)
        demandNoFault(roundTripFault<KeptDrawing>(drawing.canvas()), "after reading");
    moveEveryAtom(drawing, choice);
    changeDepths(drawing);
    for (unsigned i = 0; i < merges; ++i)
        mergeTwo(drawing, choice + 31 * i);
    deleteHalf(drawing);
    demandNoFault(drawingFault(*drawing.canvas()), "after editing");
    demandNoFault(layoutFault(drawing), "after editing");
    demandNoFault(roundTripFault<KeptDrawing>(drawing.canvas()), "after editing");
}
