#include "tests/fuzz/FuzzTarget.h"

#include "bonds/BondUpdate.h"
#include "tests/support/RoundTrip.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr unsigned merges = 3;
constexpr unsigned unedited = 4; // one input in so many makes the round trip before it is edited, too

void demandNoFault(const QString& fault, const char* when)
{
    if (fault.isEmpty())
        return;
    std::fprintf(stderr, "%s: %s\n", when, qPrintable(fault));
    std::abort();
}

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
QString layoutFault(const Drawing& drawing)
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
void moveEveryAtom(const Drawing& drawing, unsigned choice)
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

void changeDepths(const Drawing& drawing)
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
void mergeTwo(const Drawing& drawing, unsigned choice)
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

void deleteHalf(const Drawing& drawing)
{
    const QList<KytAtom*> atoms = drawing.atoms();
    for (qsizetype i = 0; i < atoms.size(); i += 2)
        delete atoms[i];
}

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) { }

} // namespace

void demand(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

void editAndCheck(const Drawing& drawing, const QByteArray& input)
{
    const unsigned choice = qChecksum(input);
    demandNoFault(drawingFault(*drawing.canvas()), "after reading");
    if (choice % unedited == 0)
        demandNoFault(roundTripFault(drawing.canvas()), "after reading");
    moveEveryAtom(drawing, choice);
    changeDepths(drawing);
    for (unsigned i = 0; i < merges; ++i)
        mergeTwo(drawing, choice + 31 * i);
    deleteHalf(drawing);
    demandNoFault(drawingFault(*drawing.canvas()), "after editing");
    demandNoFault(layoutFault(drawing), "after editing");
    demandNoFault(roundTripFault(drawing.canvas()), "after editing");
    drawing.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
    demand(drawing.canvas()->allItems().isEmpty(), "deleting all atoms clears the canvas");
}

void startApplication()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(dropMessage);
    new QApplication(argc, argv);
}
