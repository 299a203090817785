#include "bonds/KytBondLine.h"
#include "tests/support/Drawing.h"

#include <QTest>

namespace {
const QColor blue(0, 0, 255);
const QColor green(0, 255, 0);
} // namespace

class test_KytBondLine : public QObject {
    Q_OBJECT

private slots:
    void aNewLineIsShownInBlueBelowTheAtoms()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(70, 80);
        KytBond* bond = d.looseBond(a, b);
        KytBondLine* line = bond->bond1;
        QCOMPARE(line->pen().color(), blue);
        QCOMPARE(line->pen().width(), 2);
        QCOMPARE(line->pen().style(), Qt::SolidLine);
        QCOMPARE(line->color[0], 0);
        QCOMPARE(line->color[1], 0);
        QCOMPARE(line->color[2], 255);
        QVERIFY(!line->isDashed);
        QCOMPARE(line->z(), 1.0);
        QVERIFY(line->isVisible());
        QCOMPARE(line->getBond(), bond);
        QCOMPARE(line->bond, bond);
        QCOMPARE(line->canvas(), d.canvas());
        QCOMPARE(line->rtti(), 7);
        QCOMPARE(line->x(), 0.0);
        QCOMPARE(line->y(), 0.0);
        QCOMPARE(line->getStartPoint(), QPoint(10, 20));
        QCOMPARE(line->getEndPoint(), QPoint(70, 80));
        QCOMPARE(line->startPoint(), QPoint(10, 20));
        QCOMPARE(line->endPoint(), QPoint(70, 80));
    }

    void aDashedLineHasDashes()
    {
        Drawing d;
        KytBondLine* line = d.looseBond(d.atom(0, 0), d.atom(30, 0), {KYTBT_DashedLine})->bond1;
        QVERIFY(line->isDashed);
        QCOMPARE(line->pen().style(), Qt::DashLine);
        QCOMPARE(line->pen().color(), blue);
        QCOMPARE(line->pen().width(), 2);
    }

    void hoveringTurnsTheLineGreenAndKeepsItsStyle_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Qt::PenStyle>("style");
        QTest::newRow("dashed") << int(KYTBT_DashedLine) << Qt::DashLine;
        QTest::newRow("solid") << int(KYTBT_SingleBond) << Qt::SolidLine;
    }

    void hoveringTurnsTheLineGreenAndKeepsItsStyle()
    {
        QFETCH(int, kind);
        QFETCH(Qt::PenStyle, style);
        Drawing d;
        KytBondLine* line = d.looseBond(d.atom(0, 0), d.atom(30, 0), {kind})->bond1;
        for (int round = 0; round < 2; ++round) {
            line->startHover();
            QCOMPARE(line->pen().color(), green);
            QCOMPARE(line->pen().width(), 2);
            QCOMPARE(line->pen().style(), style);
            line->stopHover();
            QCOMPARE(line->pen().color(), blue);
            QCOMPARE(line->pen().width(), 2);
            QCOMPARE(line->pen().style(), style);
        }
    }

    void aNewColourShowsWhenHoveringStops()
    {
        Drawing d;
        KytBondLine* line = d.looseBond(d.atom(0, 0), d.atom(30, 0))->bond1;
        line->setColor(10, 20, 30);
        QCOMPARE(line->color[0], 10);
        QCOMPARE(line->color[1], 20);
        QCOMPARE(line->color[2], 30);
        QCOMPARE(line->pen().color(), blue);
        line->startHover();
        QCOMPARE(line->pen().color(), green);
        line->setColor(1, 2, 3);
        QCOMPARE(line->pen().color(), green);
        line->stopHover();
        QCOMPARE(line->pen().color(), QColor(1, 2, 3));
    }

    void aNewColourSurvivesANewLayout()
    {
        Drawing d;
        KytAtom* b = d.atom(30, 0);
        KytBondLine* line = d.looseBond(d.atom(0, 0), b)->bond1;
        line->setColor(1, 2, 3);
        b->moveBy(5, 5);
        QCOMPARE(line->pen().color(), blue);
        line->stopHover();
        QCOMPARE(line->pen().color(), QColor(1, 2, 3));
    }

    void eachEndIsSetByItself()
    {
        Drawing d;
        KytBondLine* line = d.looseBond(d.atom(10, 20), d.atom(70, 80))->bond1;
        line->setFromPoint(-5, 6);
        QCOMPARE(line->getStartPoint(), QPoint(-5, 6));
        QCOMPARE(line->getEndPoint(), QPoint(70, 80));
        line->setToPoint(7, -8);
        QCOMPARE(line->getStartPoint(), QPoint(-5, 6));
        QCOMPARE(line->getEndPoint(), QPoint(7, -8));
    }

    void draggingALineMovesTheWholeBond()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(70, 20);
        KytBond* bond = d.looseBond(a, b, {1, 1});
        QCanvasItem* line = bond->bond2;
        line->moveBy(5, -3);
        QCOMPARE(a->x(), 15.0);
        QCOMPARE(a->y(), 17.0);
        QCOMPARE(b->x(), 75.0);
        QCOMPARE(b->y(), 17.0);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(15, 17));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(75, 17));
        QCOMPARE(bond->bond2->getStartPoint(), QPoint(15, 11));
        QCOMPARE(line->x(), 0.0); // the item itself stays; its points move
        QCOMPARE(line->y(), 0.0);
    }

    void aLineCanBeShiftedAlone()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(70, 20);
        KytBondLine* line = d.looseBond(a, b)->bond1;
        line->myMoveBy(5, -3);
        QCOMPARE(line->x(), 5.0);
        QCOMPARE(line->y(), -3.0);
        QCOMPARE(line->getStartPoint(), QPoint(10, 20));
        QCOMPARE(line->getEndPoint(), QPoint(70, 20));
        QCOMPARE(a->x(), 10.0);
        QCOMPARE(b->x(), 70.0);
    }

    void deletingOneLineOfTwoLeavesACentreLine_data()
    {
        QTest::addColumn<bool>("first");
        QTest::newRow("the centre line") << true;
        QTest::newRow("the side line") << false;
    }

    void deletingOneLineOfTwoLeavesACentreLine()
    {
        QFETCH(bool, first);
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(70, 20);
        KytBond* bond = d.looseBond(a, b, {1, 0});
        KytBondLine* staying = first ? bond->bond2 : bond->bond1;
        delete (first ? bond->bond1 : bond->bond2);
        QCOMPARE(bond->bondCount, 1);
        QCOMPARE(bond->bond1, staying);
        QVERIFY(!bond->bond2);
        QCOMPARE(staying->getStartPoint(), QPoint(10, 20));
        QCOMPARE(staying->getEndPoint(), QPoint(70, 20));
        QCOMPARE(staying->isDashed, first);
        QCOMPARE(staying->pen().style(), first ? Qt::DashLine : Qt::SolidLine);
        QCOMPARE(d.lines().size(), 1);
    }

    void deletingTheOnlyLineDeletesTheBond()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(70, 20);
        KytBond* bond = d.bond(a, b);
        delete bond->bond1;
        QCOMPARE(a->getBondCount(), 0);
        QCOMPARE(b->getBondCount(), 0);
        QCOMPARE(d.lines().size(), 0);
        QCOMPARE(d.atoms().size(), 2);
        QVERIFY(a->getMolecule() != b->getMolecule());
    }

    void deletingAHoveredLine()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytBond* bond = d.bond(a, d.atom(70, 20));
        bond->bond1->startHover();
        delete bond->bond1;
        QCOMPARE(a->getBondCount(), 0);
    }

    void allLinesOfACanvasCanGoAtOnce()
    {
        Drawing d;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 5; ++i)
            atoms.append(d.atom(i * 30, 0));
        d.bond(atoms[0], atoms[1], {1});
        d.bond(atoms[1], atoms[2], {1, 0});
        d.bond(atoms[2], atoms[3], {1, 0, 1});
        d.bond(atoms[3], atoms[4], {KYTBT_StereoUp});
        d.canvas()->deleteItems(QCanvasItem::Rtti_Line);
        QCOMPARE(d.lines().size(), 0);
        QCOMPARE(d.wedges().size(), 1);
        QCOMPARE(atoms[0]->getBondCount() + atoms[1]->getBondCount() + atoms[2]->getBondCount(), 0);
        QCOMPARE(atoms[3]->getBondCount(), 1);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }
};

QTEST_MAIN(test_KytBondLine)
#include "test_KytBondLine.moc"
