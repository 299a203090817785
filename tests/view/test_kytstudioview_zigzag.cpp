#include "ViewFixture.h"

#include "model/KytMolecule.h"
#include "view/DrawingGeometry.h"

#include <QWindow>

namespace {

constexpr double chainStep = 25.9797437; // along the axis, from atom to atom

/// The atoms from `start` on along the outgoing bonds, `start` included.
QList<KytAtom*> chainFrom(KytAtom* start)
{
    QList<KytAtom*> chain{start};
    while (!chain.last()->getOutList()->isEmpty() && chain.size() < 1000)
        chain.append(chain.last()->getOutList()->last()->getToAtom());
    return chain;
}

/// Every bond between neighbours in `chain` is one solid line of 30 pixels, and all are one molecule.
void verifyChain(const QList<KytAtom*>& chain)
{
    for (qsizetype i = 1; i < chain.size(); ++i) {
        KytBond* bond = chain[i - 1]->isConnected(chain[i]);
        QVERIFY(bond);
        QCOMPARE(bond->getFromAtom(), chain[i - 1]);
        QCOMPARE(bond->getToAtom(), chain[i]);
        QCOMPARE(bond->bondCount, 1);
        QCOMPARE(static_cast<int>(bond->bond1Type), static_cast<int>(KYTBT_SingleBond));
        QVERIFY(!bond->bond1->isDashed);
        NEAR(bond->bondlength, 30, 1e-3);
        QCOMPARE(chain[i]->getMolecule(), chain[0]->getMolecule());
    }
}

} // namespace

class test_kytstudioview_zigzag : public QObject {
    Q_OBJECT

private slots:
    // The count

    void countFollowsThePointer_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<int>("count");

        QTest::newRow("at the start") << QPoint(300, 300) << 1;
        QTest::newRow("10 pixels") << QPoint(310, 300) << 1;
        QTest::newRow("25 pixels") << QPoint(325, 300) << 1;
        QTest::newRow("26 pixels") << QPoint(326, 300) << 2;
        QTest::newRow("30 pixels") << QPoint(330, 300) << 2;
        QTest::newRow("51 pixels") << QPoint(351, 300) << 2;
        QTest::newRow("52 pixels") << QPoint(352, 300) << 3;
        QTest::newRow("60 pixels") << QPoint(360, 300) << 3;
        QTest::newRow("60 pixels up") << QPoint(300, 240) << 3;
        QTest::newRow("60 pixels down") << QPoint(300, 360) << 3;
        QTest::newRow("50 pixels slanted") << QPoint(260, 330) << 2;
        QTest::newRow("150 pixels slanted") << QPoint(180, 210) << 6;
        QTest::newRow("300 pixels") << QPoint(600, 300) << 12;
    }

    void countFollowsThePointer()
    {
        QFETCH(QPoint, pointer);
        QFETCH(int, count);
        ViewFixture f(KYTVS_zigzag);
        f.click({300, 300});
        f.counts.clear();
        f.move(pointer);
        QCOMPARE(f.counts, QList<int>{count});
        QVERIFY(f.texts.isEmpty());
    }

    void countComesWithEveryMove()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        QVERIFY(f.counts.isEmpty());
        f.move({110, 100});
        f.move({130, 100});
        f.move({130, 100});
        f.move({160, 100});
        QCOMPARE(f.counts, (QList<int>{1, 2, 2, 3}));
        QVERIFY(f.texts.isEmpty());
    }

    void rubberBandFollowsThePointer()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({200, 200});
        for (const QPoint p : {QPoint(260, 230), QPoint(100, 90), QPoint(201, 200)}) {
            f.move(p);
            QVERIFY(tempBond->isVisible());
            QCOMPARE(lineOf(tempBond), QLine(QPoint(200, 200), p));
        }
    }

    void noCountWithoutAGesture()
    {
        ViewFixture f(KYTVS_zigzag);
        f.move({200, 200});
        f.move({300, 300});
        QVERIFY(f.counts.isEmpty());
        QVERIFY(!tempBond->isVisible());
    }

    void countAfterScrolling()
    {
        ViewFixture f(KYTVS_zigzag);
        f.scrollTo({500, 400});
        f.click({700, 600});
        f.move({760, 600});
        QCOMPARE(f.counts, QList<int>{3});
    }

    // The chain

    void chainOfSixtyPixels()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        KytAtom* start = f.view->lastAtom;
        f.click({160, 100});
        QCOMPARE(f.counts, (QList<int>{3, 0}));
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 3);
        QCOMPARE(chain, f.atoms());
        NEAR(chain[1]->x(), 125.979744, 1e-4);
        NEAR(chain[1]->y(), 84.998236, 1e-4);
        NEAR(chain[2]->x(), 151.959487, 1e-4);
        NEAR(chain[2]->y(), 100, 1e-4);
        verifyChain(chain);
        QCOMPARE(f.lines().size(), 2);
        QCOMPARE(lineOf(f.lines()[0]), QLine(100, 100, 125, 84));
        QCOMPARE(lineOf(f.lines()[1]), QLine(QPoint(125, 84), QPoint(151, static_cast<int>(chain[2]->y()))));
        QCOMPARE(f.view->lastAtom, chain[2]);
    }

    void chainOfThirtyPixelsIsOneAtom()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        KytAtom* start = f.view->lastAtom;
        f.click({130, 100});
        QCOMPARE(f.counts, (QList<int>{2, 0}));
        QCOMPARE(f.atoms().size(), 2);
        KytAtom* apex = f.atoms().last();
        NEAR(apex->x(), 125.979744, 1e-4);
        NEAR(apex->y(), 84.998236, 1e-4);
        verifyChain({start, apex});
        QCOMPARE(f.view->lastAtom, apex);
    }

    void chainOfTenPixelsIsNothing()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        KytAtom* start = f.view->lastAtom;
        f.click({110, 100});
        QCOMPARE(f.counts, (QList<int>{1, 0}));
        QCOMPARE(f.atoms(), QList<KytAtom*>{start});
        QVERIFY(f.lines().isEmpty());
        QCOMPARE(f.view->isLastAtom, 0);
        QCOMPARE(f.view->lastAtom, start);
        QVERIFY(!tempBond->isVisible());
    }

    void chainStraightBelowRunsStraightUp()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({100, 260});
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 3);
        STANDS_AT(chain[1], 84.998235, 174.020257);
        STANDS_AT(chain[2], 100, 148.040513);
        verifyChain(chain);
    }

    void chainInEveryDirection_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QList<QPointF>>("atoms");

        QTest::newRow("right") << QPoint(360, 300) << QList<QPointF>{{325.979744, 284.998236}, {351.959487, 300}};
        QTest::newRow("right and up") << QPoint(
            360, 240) << QList<QPointF>{{307.762603, 271.021698}, {336.740905, 263.259093}, {344.503508, 234.280791}};
        QTest::newRow("up") << QPoint(300, 240) << QList<QPointF>{{284.998235, 274.020257}, {300, 248.040513}};
        QTest::newRow("left and up") << QPoint(
            240, 240) << QList<QPointF>{{271.021698, 292.237396}, {263.259094, 263.259094}, {234.280792, 255.496490}};
        QTest::newRow("left") << QPoint(240, 300) << QList<QPointF>{{274.020258, 315.001766}, {248.040513, 300}};
        QTest::newRow("left and down") << QPoint(
            240, 360) << QList<QPointF>{{292.237394, 328.978301}, {263.259091, 336.740903}, {255.496485, 365.719204}};
        QTest::newRow("down") << QPoint(300, 360) << QList<QPointF>{{284.998235, 274.020257}, {300, 248.040513}};
        QTest::newRow("right and down") << QPoint(
            360, 360) << QList<QPointF>{{328.978303, 307.762601}, {336.740910, 336.740902}, {365.719212, 344.503503}};
    }

    void chainInEveryDirection()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QList<QPointF>, atoms);
        ViewFixture f(KYTVS_zigzag);
        f.click({300, 300});
        KytAtom* start = f.view->lastAtom;
        f.click(pointer);
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), atoms.size() + 1);
        for (qsizetype i = 0; i < atoms.size(); ++i)
            STANDS_AT(chain[i + 1], atoms[i].x(), atoms[i].y());
        verifyChain(chain);
    }

    void longChainHasAsManyAtomsAsCounted_data()
    {
        QTest::addColumn<int>("steps");
        for (const int steps : {1, 2, 3, 4, 5, 10, 11, 20})
            QTest::addRow("%d", steps) << steps;
    }

    void longChainHasAsManyAtomsAsCounted()
    {
        QFETCH(int, steps);
        ViewFixture f(KYTVS_zigzag);
        f.click({50, 300});
        KytAtom* start = f.view->lastAtom;
        const int reach = static_cast<int>(std::ceil(steps * chainStep));
        f.click({50 + reach, 300});
        QCOMPARE(f.counts, (QList<int>{steps + 1, 0}));
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), steps + 1);
        QCOMPARE(chain, f.atoms());
        for (int i = 0; i <= steps; ++i)
            STANDS_AT(chain[i], 50 + i * chainStep, i % 2 == 0 ? 300 : 284.998236);
        verifyChain(chain);
    }

    // Were all atoms moved to another molecule at every apex, this would take longer than anybody waits.
    void chainOfAHundredThousandAtomsIsDrawn()
    {
        ViewFixture f(KYTVS_zigzag);
        KytAtom* start = f.atom(-2600000, 300);
        f.view->lastAtom = start;
        f.view->isLastAtom = 1;
        f.move({50, 300});
        const int counted = f.counts.value(0);
        QVERIFY2(counted > 100000, qPrintable(QString::number(counted)));
        f.press({50, 300});
        const QList<KytAtom*> atoms = f.atoms();
        QCOMPARE(atoms.size(), counted);
        for (qsizetype i = 1; i < atoms.size(); ++i) {
            QVERIFY(atoms[i - 1]->isConnected(atoms[i]));
            QCOMPARE(atoms[i]->getMolecule(), start->getMolecule());
        }
    }

    void everyAtomButTheLastApexIsListedOnce()
    {
        ViewFixture f(KYTVS_zigzag);
        KytAtom* neighbour = f.atom(50, 250);
        KytAtom* start = f.atom(50, 300);
        f.bond(neighbour, start);
        f.click({50, 300});
        f.click({50 + 160, 300});
        QList<KytAtom*> members = f.atoms();
        QCOMPARE(members.size(), 8);
        // All others have joined the first molecule of the last apex, in which that one itself does not stand.
        members.removeAt(6);
        KytMolecule* molecule = start->getMolecule();
        QCOMPARE(molecule->getAtomsCount(), 7);
        QCOMPARE(molecule->atomsCount, 7);
        for (int i = 0; i < 7; ++i)
            QVERIFY(members.removeOne(molecule->atoms.at(i)));
    }

    void chainAtomsAreOrdinaryAtoms()
    {
        ViewFixture f(KYTVS_zigzag);
        f.atom(100, 100, 0, true);
        f.click({100, 100});
        f.click({220, 100});
        QCOMPARE(f.atoms().size(), 5);
        for (KytAtom* atom : f.atoms().mid(1)) {
            QVERIFY(atom->isVisible());
            QVERIFY(!atom->locked);
            QCOMPARE(atom->getSymbol(), QStringLiteral("C"));
            QCOMPARE(placeOf(atom->canvasSymbol), placeOf(atom));
        }
    }

    void chainKeepsTheStartAtomsDepth()
    {
        ViewFixture f(KYTVS_zigzag);
        f.atom(100, 100, -4.25F);
        f.click({100, 100});
        f.click({220, 100});
        QCOMPARE(f.atoms().size(), 5);
        for (const KytAtom* atom : f.atoms())
            EXACTLY(atom->getAtomZ(), -4.25F);
    }

    void chainStartsAtAnExistingAtom()
    {
        ViewFixture f(KYTVS_zigzag);
        KytAtom* start = f.atom(100.5, 100.25);
        f.click({101, 101});
        QCOMPARE(f.atoms().size(), 1);
        f.click({160, 100});
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 3);
        verifyChain(chain);
        QCOMPARE(placeOf(start), QPointF(100.5, 100.25));
    }

    void chainJoinsTheStartAtomsMolecule()
    {
        for (const int reach : {30, 60, 80, 150, 300}) {
            ViewFixture f(KYTVS_zigzag);
            KytAtom* neighbour = f.atom(100, 200);
            KytAtom* start = f.atom(100, 100);
            KytAtom* stranger = f.atom(100, 300);
            f.bond(neighbour, start);
            f.click({100, 100});
            f.click({100 + reach, 100});
            QVERIFY(f.atoms().size() > 3);
            for (KytAtom* atom : f.atoms())
                QCOMPARE(atom->getMolecule() == start->getMolecule(), atom != stranger);
        }
    }

    void chainDoesNotSnapToExistingAtoms()
    {
        ViewFixture f(KYTVS_zigzag);
        KytAtom* atApex = f.atom(126, 85);
        KytAtom* atLine = f.atom(152, 100);
        KytAtom* atPointer = f.atom(160, 100);
        f.click({100, 100});
        KytAtom* start = f.view->lastAtom;
        f.click({160, 100});
        QCOMPARE(f.atoms().size(), 6);
        for (KytAtom* bystander : {atApex, atLine, atPointer}) {
            QCOMPARE(bystander->getBondCount(), 0);
            QVERIFY(bystander->getMolecule() != start->getMolecule());
        }
        QCOMPARE(chainFrom(start).size(), 3);
    }

    void chainAppearsBeforeTheCountIsCleared()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.press({160, 100});
        QCOMPARE(f.counts, (QList<int>{3, 0}));
        QCOMPARE(f.atomsAtCount, (QList<int>{1, 3}));
        f.release({160, 100});
        QCOMPARE(f.counts.size(), 2);
    }

    void secondClickEndsTheGesture()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.click({160, 100});
        QCOMPARE(f.gesture(), "none");
        f.counts.clear();
        f.move({200, 200});
        QVERIFY(f.counts.isEmpty());
        QVERIFY(!tempBond->isVisible());
    }

    void secondClickUsesTheLastEndPoint()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.press({300, 100});
        f.release({300, 100});
        QCOMPARE(f.atoms().size(), 3);
    }

    void secondClickAtTheStartDrawsNothing()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.click({100, 100});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.gesture(), "none");
    }

    void doubleClickLeavesOneAtom()
    {
        ViewFixture f(KYTVS_zigzag);
        f.doubleClick({100, 100});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->isLastAtom, 0);
        QCOMPARE(f.counts, QList<int>{0});
    }

    void fixedAngleTurnsTheChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({300, 175}); // 14 degrees become 10
        QCOMPARE(f.counts, (QList<int>{4, 0}));
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 4);
        STANDS_AT(chain[1], 222.980024, 180.714811);
        STANDS_AT(chain[2], 251.170106, 190.977328);
        STANDS_AT(chain[3], 274.150129, 171.692139);
        verifyChain(chain);
    }

    void fixedAngleCountsFromTheFirstNeighbour()
    {
        ViewFixture f(KYTVS_zigzag);
        KytAtom* start = f.atom(200, 200);
        f.bond(f.atom(300, 100), start);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 164}); // 20 degrees become 15
        NEAR(f.view->newx, 302.661133, 1e-4);
        NEAR(f.view->newy, 172.492020, 1e-4);
        QCOMPARE(f.counts, QList<int>{5});
    }

    void fixedLengthChangesNothing()
    {
        ViewFixture f(KYTVS_zigzag);
        f.view->fixedLengthFlag = 1;
        f.click({100, 100});
        f.move({160, 100});
        QCOMPARE(f.counts, QList<int>{3});
        EXACTLY(f.view->newx, 160.0F);
        QCOMPARE(lineOf(tempBond), QLine(100, 100, 160, 100));
        f.click({160, 100});
        QCOMPARE(f.atoms().size(), 3);
        STANDS_AT(f.atoms().last(), 151.959487, 100);
    }

    void anotherLengthScalesTheChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.view->fixedLengthValue = 60;
        f.click({100, 100});
        f.click({220, 100});
        QCOMPARE(f.counts, (QList<int>{3, 0}));
        QCOMPARE(f.atoms().size(), 3);
        STANDS_AT(f.atoms()[1], 151.959487, 69.996472);
        STANDS_AT(f.atoms()[2], 203.918975, 100);
    }

    void dashedModeDrawsADashedChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.view->canvasState = KYTVS_drawDashedBond;
        const QPointF place(160, 100);
        QMouseEvent event(QEvent::MouseButtonPress, place, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        f.view->drawZigZag(&event);
        QCOMPARE(f.lines().size(), 2);
        for (const KytBondLine* line : f.lines())
            QVERIFY(line->isDashed);
    }

    // Control

    void controlContinuesTheChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({160, 200}, Qt::ControlModifier);
        QCOMPARE(f.counts, (QList<int>{3, 0}));
        QCOMPARE(f.gesture(), "begun");
        KytAtom* end = f.view->lastAtom;
        QCOMPARE(chainFrom(start).last(), end);
        STANDS_AT(end, 151.959487, 200);

        f.counts.clear();
        f.move({212, 200}); // 60 pixels on
        QCOMPARE(f.counts, QList<int>{3});
        QCOMPARE(tempBond->startPoint(), QPoint(static_cast<int>(end->x()), static_cast<int>(end->y())));
        f.click({212, 200});
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 5);
        verifyChain(chain);
        QCOMPARE(f.view->isLastAtom, 0);
    }

    void controlWithTooShortAChainStaysArmed()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({110, 200}, Qt::ControlModifier);
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.counts, (QList<int>{1, 0}));
        QCOMPARE(f.gesture(), "begun");
        QCOMPARE(f.view->lastAtom, start);
    }

    void releasingControlEndsTheChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 200});
        f.click({160, 200}, Qt::ControlModifier);
        f.click({212, 200});
        QCOMPARE(f.atoms().size(), 5);
        f.click({400, 400}); // a first click
        QCOMPARE(f.atoms().size(), 6);
        QCOMPARE(f.view->isLastAtom, 1);
        QCOMPARE(f.view->lastAtom->getBondCount(), 0);
    }

    void controlAfterASingleApex()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({130, 200}, Qt::ControlModifier);
        KytAtom* apex = f.view->lastAtom;
        QCOMPARE(apex, f.atoms().last());
        f.click({200, 300});
        const QList<KytAtom*> chain = chainFrom(start);
        QVERIFY(chain.size() > 3);
        QCOMPARE(chain[1], apex);
        verifyChain(chain);
    }

    // Gestures in full

    void chainAfterScrolling()
    {
        ViewFixture f(KYTVS_zigzag);
        f.scrollTo({1100, 1300});
        f.click({1300, 1500});
        f.click({1360, 1500});
        QCOMPARE(f.atoms().size(), 3);
        STANDS_AT(f.atoms()[1], 1325.979744, 1484.998236);
    }

    void chainThroughTheWindow()
    {
        ViewFixture f(KYTVS_zigzag);
        QWindow* window = f.view->windowHandle();
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({100, 100}));
        QTest::mouseMove(window, f.inWindow({160, 100}));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({160, 100}));
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.counts.last(), 0);
        QVERIFY(f.counts.contains(3));
    }

    void chainsInARow()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        KytAtom* first = f.view->lastAtom;
        f.click({160, 100});
        f.click({100, 300});
        KytAtom* second = f.view->lastAtom;
        f.click({190, 300});
        QCOMPARE(chainFrom(first).size(), 3);
        QCOMPARE(chainFrom(second).size(), 4);
        QVERIFY(first->getMolecule() != second->getMolecule());
    }

    void chainOffTheCanvas()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({50, 50});
        KytAtom* start = f.view->lastAtom;
        f.click({-50, 50});
        const QList<KytAtom*> chain = chainFrom(start);
        QCOMPARE(chain.size(), 4);
        QVERIFY(chain.last()->x() < 0);
        verifyChain(chain);
    }

    void chainAfterAChangeOfMode()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.view->canvasState = KYTVS_view;
        f.click({300, 300});
        f.move({400, 300});
        QCOMPARE(f.counts, QList<int>{3});
        f.view->canvasState = KYTVS_zigzag;
        f.press({160, 100}); // the end point is still that of the last move in this mode
        f.release({160, 100});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.view->isLastAtom, 0);
    }

    // Items that go

    void startAtomGoesMidGesture()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        delete f.view->lastAtom;
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.gesture(), "none");
        f.press({160, 100});
        f.release({160, 100});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(placeOf(f.view->lastAtom), QPointF(160, 100));
    }

    void lastAtomOfTheChainGoes()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.click({160, 100}, Qt::ControlModifier);
        f.move({250, 100});
        delete f.view->lastAtom;
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.gesture(), "none");
        QCOMPARE(f.atoms().size(), 2);
        f.move({260, 100});
        f.click({260, 100});
        QCOMPARE(f.atoms().size(), 3);
    }

    void canvasGoesMidChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.click({160, 100}, Qt::ControlModifier);
        f.move({250, 100});
        delete f.canvas();
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.view->isLastAtom, 0);
        f.move({260, 100});
        f.click({260, 100});
        f.click({320, 100});
        QVERIFY(!f.view->lastAtom);
    }

    void documentGoesMidChain()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        delete f.doc;
        f.move({170, 100});
        f.click({170, 100});
        f.move({200, 100});
        QVERIFY(f.isOnCanvas(tempBond));
    }
};

QTEST_MAIN(test_kytstudioview_zigzag)
#include "test_kytstudioview_zigzag.moc"
