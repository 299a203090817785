#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"
#include "tests/support/Snapshot.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr double pi = std::numbers::pi;
constexpr double nowhere = std::numeric_limits<double>::quiet_NaN();

bool isAt(const QCanvasItem* item, double x, double y)
{
    return std::abs(item->x() - x) < 1e-9 && std::abs(item->y() - y) < 1e-9;
}

/// A zigzag chain that runs to the right.
QList<KytAtom*> chain(Drawing& d, int count)
{
    QList<KytAtom*> atoms{d.atom(0, 0)};
    while (atoms.size() < count) {
        const int i = int(atoms.size());
        atoms.append(d.atom(i % 1900, (i / 1900) * 20 + (i % 2) * 10));
        d.bond(atoms[i - 1], atoms[i]);
    }
    return atoms;
}

/// `leaves` bonds that run from the first atom, or towards it.
QList<KytAtom*> star(Drawing& d, int leaves, bool outwards = true)
{
    KytAtom* centre = d.atom(1000, 1000);
    QList<KytAtom*> atoms{centre};
    for (int i = 0; i < leaves; ++i) {
        KytAtom* leaf = d.atom(i % 2000, i / 2000);
        if (outwards)
            d.looseBond(centre, leaf);
        else
            d.looseBond(leaf, centre);
        leaf->setMolecule(centre->getMolecule());
        atoms.append(leaf);
    }
    return atoms;
}

using DrawAtoms = QList<KytAtom*> (*)(Drawing&);

/// Rings of four that share corners; in each, one way around climbs a wedge.
QList<KytAtom*> ladder(Drawing& d, int diamonds)
{
    QList<KytAtom*> corners{d.atom(0, 100)};
    for (int i = 0; i < diamonds; ++i) {
        KytAtom* up = d.atom(i * 30 + 15, 115);
        KytAtom* down = d.atom(i * 30 + 15, 85);
        KytAtom* corner = d.atom(i * 30 + 30, 100);
        d.bond(corners.last(), down);
        d.bond(corners.last(), up, {KYTBT_StereoUp}, 30);
        d.bond(down, corner);
        d.bond(up, corner);
        corners.append(corner);
    }
    return corners;
}

/// The refusals and the question whether two atoms are bonded only to each other, as told from the bond lists.
bool bondedOnlyToEachOther(const KytAtom* a, const KytAtom* b)
{
    const auto leadsElsewhere = [](const KytAtom* one, const KytAtom* other) {
        for (const KytBond* bond : one->inList)
            if (bond->fromAtom != other)
                return true;
        for (const KytBond* bond : one->outList)
            if (bond->toAtom != other)
                return true;
        return false;
    };
    return !leadsElsewhere(a, b) && !leadsElsewhere(b, a);
}

} // namespace

class test_KytAtomEditing : public QObject {
    Q_OBJECT

private slots:
    // Moving

    void movingByAnOffsetTakesTheLabelAlong()
    {
        Drawing d;
        KytAtom* atom = d.atom(100, 50);
        atom->moveBy(10, 0);
        QVERIFY(isAt(atom, 110, 50));
        QVERIFY(isAt(atom->canvasSymbol, 110, 50));
        atom->moveBy(-0.25, 2.5);
        QVERIFY(isAt(atom, 109.75, 52.5));
        QVERIFY(isAt(atom->canvasSymbol, 109.75, 52.5));
    }

    void movingByAnOffsetKeepsALabelThatStandsElsewhere()
    {
        Drawing d;
        KytAtom* atom = d.atom(100, 50);
        atom->canvasSymbol->moveBy(7, 8);
        atom->moveBy(10, 0);
        QVERIFY(isAt(atom->canvasSymbol, 117, 58));
    }

    void movingToAPlacePutsTheLabelsCornerThere()
    {
        Drawing d;
        KytAtom* atom = d.atom(100, 50);
        atom->canvasSymbol->moveBy(7, 8);
        atom->move(20, 30);
        QVERIFY(isAt(atom, 20, 30));
        QVERIFY(isAt(atom->canvasSymbol, 20, 30));
        atom->canvasSymbol->moveBy(7, 8);
        atom->move(20, 30);
        QVERIFY(isAt(atom->canvasSymbol, 20, 30));
    }

    void movingTheItemMovesTheAtomWithLabelAndBonds()
    {
        Drawing d;
        KytAtom* a = d.atom(100, 50);
        KytAtom* b = d.atom(200, 50);
        KytBond* bond = d.looseBond(a, b);
        QCanvasItem* item = b;
        item->move(200, 150);
        QVERIFY(isAt(b, 200, 150));
        QVERIFY(isAt(b->canvasSymbol, 200, 150));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(200, 150));
        item->moveBy(1, 1);
        QVERIFY(isAt(b->canvasSymbol, 201, 151));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(201, 151));
    }

    void movingLaysOutEveryBondOfBothLists()
    {
        Drawing d;
        KytAtom* a = d.atom(100, 100);
        KytAtom* in1 = d.atom(0, 0);
        KytAtom* in2 = d.atom(0, 200);
        KytAtom* out1 = d.atom(200, 0);
        KytAtom* out2 = d.atom(200, 200);
        const QList<KytBond*> incoming{d.looseBond(in1, a), d.looseBond(in2, a, {1, 1})};
        const QList<KytBond*> outgoing{d.looseBond(a, out1, {0}), d.looseBond(a, out2, {KYTBT_StereoUp})};
        a->moveBy(10, 0);
        for (const KytBond* bond : incoming)
            QCOMPARE(bond->bond1->getEndPoint(), QPoint(110, 100));
        QCOMPARE(outgoing[0]->bond1->getStartPoint(), QPoint(110, 100));
        QCOMPARE(outgoing[1]->stereoBond->getPointsArray()->at(0), QPoint(110, 100));
        QCOMPARE(incoming[0]->bondlength, float(std::sqrt(110.0 * 110 + 100 * 100)));
        a->move(120, 130);
        for (const KytBond* bond : incoming)
            QCOMPARE(bond->bond1->getEndPoint(), QPoint(120, 130));
        QCOMPARE(outgoing[0]->bond1->getStartPoint(), QPoint(120, 130));
        QCOMPARE(outgoing[1]->stereoBond->getPointsArray()->at(0), QPoint(120, 130));
    }

    void movingTakesTheDepthOfTheStartAtoms()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        KytAtom* c = d.atom(60, 0, 3);
        KytAtom* e = d.atom(90, 0, 4);
        d.looseBond(a, b);
        d.looseBond(c, b);
        d.looseBond(b, e);
        b->moveBy(0, 1);
        QCOMPARE(b->getAtomZ(), 3.0F); // the later incoming bond
        QCOMPARE(e->getAtomZ(), 3.0F);
        QCOMPARE(a->getAtomZ(), 1.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
    }

    void movingToTheSamePlaceStillPassesTheDepthOn()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        KytAtom* c = d.atom(60, 0, 3);
        d.looseBond(a, b);
        d.looseBond(b, c);
        b->move(30, 0);
        QCOMPARE(b->getAtomZ(), 1.0F);
        QCOMPARE(c->getAtomZ(), 1.0F);
    }

    void movingByNothingStillLaysOutTheBonds()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        KytBond* bond = d.looseBond(a, b);
        bond->bond1->setFromPoint(5, 5);
        b->moveBy(0, 0);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(0, 0));
        QCOMPARE(b->getAtomZ(), 1.0F);
        QVERIFY(isAt(b, 30, 0));
        QVERIFY(isAt(b->canvasSymbol, 30, 0));
    }

    void aStepThatIsNoNumberGoesNowhere()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(30, 40);
        KytBond* bond = d.looseBond(a, b);
        const double infinite = std::numeric_limits<double>::infinity();
        b->moveBy(nowhere, 1);
        b->moveBy(1, nowhere);
        b->moveBy(infinite, 0);
        b->move(nowhere, nowhere);
        b->move(0, -infinite);
        QVERIFY(std::isfinite(b->x()) && std::isfinite(b->y()));
        QVERIFY(std::isfinite(b->canvasSymbol->x()) && std::isfinite(b->canvasSymbol->y()));
        QVERIFY(std::isfinite(bond->bondlength));
        QVERIFY(isAt(b, 30, 40));
        QVERIFY(isAt(b->canvasSymbol, 30, 40));
    }

    void lockedAtomsMoveToo()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2, true);
        KytBond* bond = d.looseBond(a, b);
        b->moveBy(10, 0);
        QVERIFY(isAt(b, 40, 0));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(40, 0));
        QCOMPARE(b->getAtomZ(), 2.0F);
    }

    void anAtomBondedToItselfMoves()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 10, 1);
        KytBond* loop = d.looseBond(a, a, {1, 1, 1});
        a->moveBy(5, 5);
        QCOMPARE(loop->bond1->getStartPoint(), QPoint(15, 15));
        QCOMPARE(loop->bond1->getEndPoint(), QPoint(15, 15));
        QCOMPARE(loop->bond2->getStartPoint(), QPoint(9, 15));
        QCOMPARE(loop->bond3->getEndPoint(), QPoint(21, 15));
        QCOMPARE(loop->bondlength, 0.0F);
        QCOMPARE(a->getAtomZ(), 1.0F);
    }

    // Turning

    void theInclinationOfAllDirections_data()
    {
        QTest::addColumn<double>("x1");
        QTest::addColumn<double>("y1");
        QTest::addColumn<double>("x2");
        QTest::addColumn<double>("y2");
        QTest::addColumn<double>("angle");
        QTest::newRow("right and down") << 0.0 << 0.0 << 1.0 << 1.0 << pi / 4;
        QTest::newRow("left and down") << 0.0 << 0.0 << -1.0 << 1.0 << 3 * pi / 4;
        QTest::newRow("left and up") << 0.0 << 0.0 << -1.0 << -1.0 << -3 * pi / 4;
        QTest::newRow("right and up") << 0.0 << 0.0 << 1.0 << -1.0 << -pi / 4;
        QTest::newRow("straight up") << 0.0 << 0.0 << 0.0 << -5.0 << pi / 2;
        QTest::newRow("straight down") << 0.0 << 0.0 << 0.0 << 5.0 << pi / 2;
        QTest::newRow("the same point") << 3.0 << 4.0 << 3.0 << 4.0 << pi / 2;
        QTest::newRow("straight right") << 0.0 << 0.0 << 5.0 << 0.0 << 0.0;
        QTest::newRow("straight left is like straight right") << 0.0 << 0.0 << -5.0 << 0.0 << 0.0;
        QTest::newRow("seen from elsewhere") << 10.0 << 20.0 << 13.0 << 24.0 << std::atan(4.0 / 3);
        QTest::newRow("almost straight left") << 0.0 << 0.0 << -1.0 << 1e-12 << pi - 1e-12;
        QTest::newRow("almost straight left from below") << 0.0 << 0.0 << -1.0 << -1e-12 << 1e-12 - pi;
    }

    void theInclinationOfAllDirections()
    {
        QFETCH(double, x1);
        QFETCH(double, y1);
        QFETCH(double, x2);
        QFETCH(double, y2);
        QFETCH(double, angle);
        NEAR(findinclination(x1, y1, x2, y2), angle, 1e-14);
    }

    void aQuarterTurnAboutTheOrigin()
    {
        Drawing d;
        KytAtom* atom = d.atom(10, 0);
        atom->rotateAbout(0, 0, float(pi / 2));
        NEAR(atom->x(), 0, 1e-5);
        NEAR(atom->y(), 10, 1e-5);
        QVERIFY(isAt(atom->canvasSymbol, atom->x(), atom->y()));
    }

    void turningKeepsTheDistanceAndTakesBondsAlong()
    {
        Drawing d;
        KytAtom* centre = d.atom(100, 100);
        KytAtom* atom = d.atom(130, 140);
        KytBond* bond = d.looseBond(centre, atom);
        const double start = std::atan2(40, 30);
        for (int step = 1; step <= 3; ++step) {
            atom->rotateAbout(100, 100, 0.25F);
            const double angle = start + 0.25 * step;
            NEAR(atom->x(), 100 + 50 * std::cos(angle), 1e-9);
            NEAR(atom->y(), 100 + 50 * std::sin(angle), 1e-9);
        }
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(int(atom->x()), int(atom->y())));
        QCOMPARE(bond->bondlength, 50.0F);
    }

    void anAtomStraightAboveTheCentreJumpsBelowIt()
    {
        Drawing d;
        KytAtom* atom = d.atom(100, 60);
        atom->rotateAbout(100, 100, 0);
        NEAR(atom->x(), 100, 1e-9);
        NEAR(atom->y(), 140, 1e-9);
    }

    void anAtomStraightLeftOfTheCentreJumpsToTheRight()
    {
        Drawing d;
        KytAtom* atom = d.atom(60, 100);
        atom->rotateAbout(100, 100, 0);
        QVERIFY(isAt(atom, 140, 100));
    }

    void anAtomInTheCentreStays()
    {
        Drawing d;
        KytAtom* atom = d.atom(100, 100);
        atom->rotateAbout(100, 100, 1.5F);
        QVERIFY(isAt(atom, 100, 100));
    }

    void anAngleThatIsNoNumberTurnsNothing()
    {
        Drawing d;
        KytAtom* atom = d.atom(60, 80);
        atom->rotateAbout(100, 100, std::numeric_limits<float>::quiet_NaN());
        atom->rotateAbout(nowhere, 100, 1);
        atom->rotateAbout(100, 100, std::numeric_limits<float>::infinity());
        QVERIFY(isAt(atom, 60, 80));
        QVERIFY(isAt(atom->canvasSymbol, 60, 80));
    }

    // Taking bonds out of the lists

    void takingOneOfTwoBondsOutLeavesTheAtomBonded()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        KytBond* first = d.looseBond(a, b);
        KytBond* second = d.looseBond(c, a);
        QVERIFY(!a->deleteBond(first));
        QVERIFY(a->outList.isEmpty());
        QCOMPARE(a->inList, (QList<KytBond*>{second}));
        QVERIFY(a->deleteBond(second));
        QCOMPARE(a->getBondCount(), 0);
        QCOMPARE(b->inList, (QList<KytBond*>{first}));
        a->addOutBond(first);
        a->addInBond(second);
    }

    void takingAStrangeBondOutTellsWhetherTheAtomHasAny()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        KytBond* bond = d.looseBond(a, b);
        QVERIFY(c->deleteBond(bond));
        d.looseBond(c, a);
        QVERIFY(!c->deleteBond(bond));
        QCOMPARE(c->getBondCount(), 1);
        QCOMPARE(c->deleteBond(nullptr), false);
    }

    void aBondListedSeveralTimesIsTakenOutEverywhere()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytBond* bond = d.looseBond(a, b);
        a->addOutBond(bond);
        a->addInBond(bond);
        QVERIFY(a->deleteBond(bond));
        QCOMPARE(a->getBondCount(), 0);
        a->addOutBond(bond);
    }

    void aBondFromAnAtomToItselfIsTakenOutOfBothLists()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytBond* loop = d.looseBond(a, a);
        QVERIFY(a->deleteBond(loop));
        QCOMPARE(a->getBondCount(), 0);
        delete loop;
        QCOMPARE(d.lines().size(), 0);
    }

    // Handing bonds over

    void bondsAreHandedOverInOrderAndLaidOut()
    {
        Drawing d;
        KytAtom* x = d.atom(0, 0);
        KytAtom* target = d.atom(100, 0);
        KytAtom* f = d.atom(0, 50);
        KytAtom* g = d.atom(0, 80);
        KytAtom* t = d.atom(50, 50);
        KytAtom* u = d.atom(50, 80);
        KytBond* old = d.looseBond(u, target);
        KytBond* in1 = d.looseBond(f, x);
        KytBond* in2 = d.looseBond(g, x, {1, 1});
        KytBond* out = d.looseBond(x, t, {KYTBT_StereoDown});
        x->transferBonds(target);
        QCOMPARE(x->getBondCount(), 0);
        QCOMPARE(target->inList, (QList<KytBond*>{old, in1, in2}));
        QCOMPARE(target->outList, (QList<KytBond*>{out}));
        QCOMPARE(in1->toAtom, target);
        QCOMPARE(out->fromAtom, target);
        QCOMPARE(in1->bond1->getEndPoint(), QPoint(100, 0));
        QCOMPARE(out->stereoBond->getPointsArray()->at(0), QPoint(100, 0));
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void aBondToAnAtomThatTheTargetIsJoinedToIsDeleted_data()
    {
        QTest::addColumn<bool>("fromNeighbour");
        QTest::addColumn<bool>("targetFromNeighbour");
        QTest::newRow("in, in") << true << true;
        QTest::newRow("in, out") << true << false;
        QTest::newRow("out, in") << false << true;
        QTest::newRow("out, out") << false << false;
    }

    void aBondToAnAtomThatTheTargetIsJoinedToIsDeleted()
    {
        QFETCH(bool, fromNeighbour);
        QFETCH(bool, targetFromNeighbour);
        Drawing d;
        KytAtom* x = d.atom(0, 0);
        KytAtom* target = d.atom(100, 0);
        KytAtom* n = d.atom(0, 50);
        fromNeighbour ? d.looseBond(n, x, {1, 1}) : d.looseBond(x, n, {1, 1});
        KytBond* kept = targetFromNeighbour ? d.looseBond(n, target) : d.looseBond(target, n);
        x->transferBonds(target);
        QCOMPARE(x->getBondCount(), 0);
        QCOMPARE(target->getBondCount(), 1);
        QCOMPARE(n->getBondCount(), 1);
        QCOMPARE(target->isConnected(n), kept);
        QCOMPARE(d.lines().size(), 1);
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void ofTwoBondsToTheSameNeighbourOnlyTheFirstIsHandedOver()
    {
        Drawing d;
        KytAtom* x = d.atom(0, 0);
        KytAtom* target = d.atom(100, 0);
        KytAtom* n = d.atom(0, 50);
        KytBond* first = d.looseBond(n, x);
        d.looseBond(x, n);
        x->transferBonds(target);
        QCOMPARE(target->inList, (QList<KytBond*>{first}));
        QVERIFY(target->outList.isEmpty());
        QCOMPARE(n->getBondCount(), 1);
        QCOMPARE(d.lines().size(), 1);
    }

    void aBondToTheTargetItselfBecomesALoop()
    {
        Drawing d;
        KytAtom* x = d.atom(0, 0);
        KytAtom* target = d.atom(100, 0);
        KytBond* bond = d.looseBond(x, target);
        x->transferBonds(target);
        QCOMPARE(bond->fromAtom, target);
        QCOMPARE(bond->toAtom, target);
        QCOMPARE(target->inList, (QList<KytBond*>{bond}));
        QCOMPARE(target->outList, (QList<KytBond*>{bond}));
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(100, 0));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(100, 0));
    }

    void anAtomWithoutBondsHandsNothingOver()
    {
        Drawing d;
        KytAtom* x = d.atom(0, 0);
        KytAtom* target = d.atom(100, 0);
        x->transferBonds(target);
        QCOMPARE(target->getBondCount(), 0);
        QCOMPARE(d.atoms().size(), 2);
    }

    void aHandedOverBondPassesItsStartAtomsDepthToTheTarget()
    {
        Drawing d;
        KytAtom* x = d.atom(0, 0, 1);
        KytAtom* free = d.atom(100, 0, 2);
        KytAtom* locked = d.atom(200, 0, 3, true);
        KytAtom* f = d.atom(0, 50, 8);
        d.looseBond(f, x);
        x->transferBonds(free);
        QCOMPARE(free->getAtomZ(), 8.0F);
        free->transferBonds(locked);
        QCOMPARE(locked->getAtomZ(), 3.0F);
    }

    // Merging

    void twoAtomsThatShareTheirOnlyBondAreLeftToTheCaller_data()
    {
        QTest::addColumn<int>("toDropped");
        QTest::addColumn<int>("fromDropped");
        QTest::newRow("no bond") << 0 << 0;
        QTest::newRow("one bond to the dropped atom") << 1 << 0;
        QTest::newRow("one bond from the dropped atom") << 0 << 1;
        QTest::newRow("a bond each way") << 1 << 1;
        QTest::newRow("two bonds the same way") << 2 << 0;
    }

    void twoAtomsThatShareTheirOnlyBondAreLeftToTheCaller()
    {
        QFETCH(int, toDropped);
        QFETCH(int, fromDropped);
        Drawing d;
        const auto [q, p] = d.row<2>();
        for (int i = 0; i < toDropped; ++i)
            d.bond(q, p);
        for (int i = 0; i < fromDropped; ++i)
            d.bond(p, q);
        KytMolecule* ofQ = q->getMolecule();
        KytMolecule* ofP = p->getMolecule();
        QVERIFY(q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(q->getBondCount(), toDropped + fromDropped);
        QCOMPARE(p->getBondCount(), toDropped + fromDropped);
        QCOMPARE(q->getMolecule(), ofQ);
        QCOMPARE(p->getMolecule(), ofP);
        QCOMPARE(p->deleted, 0);
        delete p;
        QCOMPARE(d.atoms().size(), 1);
        QCOMPARE(d.lines().size(), 0);
        QCOMPARE(d.labels().size(), 1);
        QCOMPARE(q->getBondCount(), 0);
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void aBondedAtomDroppedOnALoneOneHandsItsBondOver_data()
    {
        QTest::addColumn<bool>("intoDropped");
        QTest::newRow("the bond ends at the dropped atom") << true;
        QTest::newRow("the bond starts at the dropped atom") << false;
    }

    void aBondedAtomDroppedOnALoneOneHandsItsBondOver()
    {
        QFETCH(bool, intoDropped);
        Drawing d;
        KytAtom* q = d.atom(0, 0, 0.5F);
        KytAtom* p = d.atom(2, 0, 4);
        KytAtom* r = d.atom(60, 0, 7);
        KytBond* bond = intoDropped ? d.bond(r, p) : d.bond(p, r);
        KytMolecule* ofQ = q->getMolecule();
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(d.labels().size(), 2);
        QCOMPARE(q->isConnected(r), bond);
        QCOMPARE(q->getBondCount(), 1);
        QCOMPARE(q->getMolecule(), ofQ);
        QCOMPARE(r->getMolecule(), ofQ);
        QCOMPARE(bond->bondlength, 60.0F);
        // Handed over, a bond that ends at the merged atom gives it its start atom's depth.
        QCOMPARE(q->getAtomZ(), intoDropped ? 7.0F : 0.5F);
        QCOMPARE(r->getAtomZ(), intoDropped ? 7.0F : 0.5F);
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void aLoneAtomDroppedOnABondedOneJustGoes()
    {
        Drawing d;
        KytAtom* q = d.atom(0, 0);
        KytAtom* p = d.atom(2, 0, 9);
        KytAtom* r = d.atom(60, 0);
        KytBond* bond = d.bond(q, r);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(d.labels().size(), 2);
        QCOMPARE(q->isConnected(r), bond);
        QCOMPARE(q->getAtomZ(), 0.0F);
    }

    void theSecondBondToACommonNeighbourIsDeleted_data()
    {
        QTest::addColumn<bool>("droppedToNeighbour");
        QTest::addColumn<bool>("stayingToNeighbour");
        QTest::newRow("P to R, Q to R") << true << true;
        QTest::newRow("P to R, R to Q") << true << false;
        QTest::newRow("R to P, Q to R") << false << true;
        QTest::newRow("R to P, R to Q") << false << false;
    }

    void theSecondBondToACommonNeighbourIsDeleted()
    {
        QFETCH(bool, droppedToNeighbour);
        QFETCH(bool, stayingToNeighbour);
        Drawing d;
        KytAtom* q = d.atom(0, 0);
        KytAtom* p = d.atom(2, 0);
        KytAtom* r = d.atom(60, 0);
        KytBond* kept = stayingToNeighbour ? d.bond(q, r) : d.bond(r, q);
        droppedToNeighbour ? d.bond(p, r, {1, 1}) : d.bond(r, p, {1, 1});
        QVERIFY(!q->combine(p));
        QCOMPARE(q->getBondCount(), 1);
        QCOMPARE(r->getBondCount(), 1);
        QCOMPARE(q->isConnected(r), kept);
        QCOMPARE(d.lines().size(), 1);
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void atomsOfOneMoleculeFarApartInDepthAreNotMerged()
    {
        Drawing d;
        KytAtom* q = d.atom(0, 0, 0);
        KytAtom* r = d.atom(30, 0, 0);
        KytAtom* p = d.atom(60, 0, 2);
        KytBond* qr = d.bond(q, r);
        KytBond* rp = d.bond(r, p);
        KytMolecule* molecule = q->getMolecule();
        for (const float depth : {2.0F, -2.0F, 1.001F}) {
            p->atomZ = depth;
            QVERIFY(!q->combine(p));
            QCOMPARE(d.atoms().size(), 3);
            QCOMPARE(q->isConnected(r), qr);
            QCOMPARE(p->isConnected(r), rp);
            QVERIFY(!q->isConnected(p));
            QCOMPARE(p->getAtomZ(), depth);
            QCOMPARE(q->getMolecule(), molecule);
            QCOMPARE(p->getMolecule(), molecule);
        }
    }

    void atomsOfOneMoleculeAtMostOneApartInDepthAreMerged_data()
    {
        QTest::addColumn<float>("depth");
        QTest::newRow("above") << 1.0F;
        QTest::newRow("below") << -1.0F;
        QTest::newRow("level") << 0.0F;
    }

    void atomsOfOneMoleculeAtMostOneApartInDepthAreMerged()
    {
        QFETCH(float, depth);
        Drawing d;
        KytAtom* q = d.atom(0, 0, 0);
        KytAtom* r = d.atom(30, 0, 0);
        KytAtom* s = d.atom(60, 0, 0);
        KytAtom* p = d.atom(2, 0, depth);
        d.bond(q, r);
        d.bond(r, s);
        d.bond(s, p);
        p->atomZ = depth;
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 3);
        QCOMPARE(q->getBondCount(), 2);
        QVERIFY(q->isConnected(s));
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void atomsBondedOnlyToEachOtherFarApartInDepthAreNotMergedEither()
    {
        Drawing d;
        KytAtom* q = d.atom(0, 0, 0);
        KytAtom* p = d.atom(30, 0, 0);
        d.bond(q, p);
        p->atomZ = 1.5F;
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(q->getBondCount(), 1);
    }

    void atomsOfTwoMoleculesMergeAtAnyDepth()
    {
        Drawing d;
        KytAtom* q = d.atom(0, 0, 0);
        KytAtom* p = d.atom(2, 0, 500);
        KytAtom* r = d.atom(60, 0, 500);
        d.bond(p, r);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(q->getAtomZ(), 0.0F);
        QCOMPARE(r->getAtomZ(), 0.0F);
    }

    void theBondBetweenMergedAtomsGoes_data()
    {
        QTest::addColumn<bool>("toDropped");
        QTest::addColumn<bool>("neighbourOfDropped");
        QTest::newRow("Q to P, P has a neighbour") << true << true;
        QTest::newRow("P to Q, P has a neighbour") << false << true;
        QTest::newRow("Q to P, Q has a neighbour") << true << false;
        QTest::newRow("P to Q, Q has a neighbour") << false << false;
    }

    void theBondBetweenMergedAtomsGoes()
    {
        QFETCH(bool, toDropped);
        QFETCH(bool, neighbourOfDropped);
        Drawing d;
        const auto [q, p, r] = d.row<3>();
        toDropped ? d.bond(q, p, {1, 1}) : d.bond(p, q, {1, 1});
        d.bond(neighbourOfDropped ? p : q, r);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(d.lines().size(), 1);
        QCOMPARE(q->getBondCount(), 1);
        QVERIFY(q->isConnected(r));
        QVERIFY(!q->isConnected(q));
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void bondsBothWaysBetweenMergedAtomsGo()
    {
        Drawing d;
        const auto [q, p, r] = d.row<3>();
        d.bond(q, p);
        d.bond(p, q);
        d.bond(p, r);
        QVERIFY(!q->combine(p));
        QCOMPARE(q->getBondCount(), 1);
        QCOMPARE(d.lines().size(), 1);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void aBondOfOneAtomToItselfCountsAsANeighbourElsewhere()
    {
        Drawing d;
        const auto [q, p] = d.row<2>();
        d.looseBond(q, q);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 1);
        QCOMPARE(q->getBondCount(), 0);
        QCOMPARE(d.lines().size(), 0);
    }

    void anAtomDroppedWithABondToItselfLosesIt()
    {
        Drawing d;
        const auto [q, p, r] = d.row<3>();
        d.bond(q, r);
        d.looseBond(p, p);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void theEndOfALineDroppedOnItsStartStaysInOneMolecule_data()
    {
        QTest::addColumn<int>("directions");
        QTest::addColumn<int>("staying");
        QTest::addColumn<int>("dropped");
        for (int directions = 0; directions < 8; ++directions)
            for (int staying = 0; staying < 4; ++staying)
                for (int dropped = 0; dropped < 4; ++dropped)
                    if (staying != dropped)
                        QTest::addRow("directions %d, %c on %c", directions, 'a' + dropped, 'a' + staying)
                            << directions << staying << dropped;
    }

    void theEndOfALineDroppedOnItsStartStaysInOneMolecule()
    {
        QFETCH(int, directions);
        QFETCH(int, staying);
        QFETCH(int, dropped);
        Drawing d;
        std::vector<KytAtom*> atoms;
        for (int i = 0; i < 4; ++i)
            atoms.push_back(d.atom(i * 30, 0));
        for (int i = 0; i < 3; ++i) {
            KytAtom* left = atoms[std::size_t(i)];
            KytAtom* right = atoms[std::size_t(i) + 1];
            directions&(1 << i) ? d.looseBond(left, right) : d.looseBond(right, left);
            right->setMolecule(left->getMolecule());
        }
        KytAtom* q = atoms[std::size_t(staying)];
        KytAtom* p = atoms[std::size_t(dropped)];
        KytMolecule* molecule = q->getMolecule();
        QCOMPARE(p->getMolecule(), molecule);
        QVERIFY(!q->combine(p));
        QCOMPARE(d.atoms().size(), 3);
        QCOMPARE(pieceOf(q).size(), 3);
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
        QCOMPARE(drawnAtoms(*d.canvas(), q->getMolecule()).size(), 3);
    }

    void aMergedWedgeStartsOrEndsAtTheAtomThatStays()
    {
        Drawing d;
        KytAtom* q = d.atom(0, 0, 5, true);
        KytAtom* p = d.atom(2, 2, 5);
        KytAtom* r = d.atom(100, 0, 5);
        KytAtom* s = d.atom(-100, 0, 5);
        KytBond* out = d.bond(p, r, {KYTBT_StereoUp}, 45);
        KytBond* in = d.bond(s, p, {KYTBT_StereoUp}, 45);
        QVERIFY(!q->combine(p));
        QCOMPARE(*out->stereoBond->getPointsArray(), QPolygon({QPoint(0, 0), QPoint(100, 6), QPoint(100, -6)}));
        QCOMPARE(*in->stereoBond->getPointsArray(), QPolygon({QPoint(-100, 0), QPoint(0, 6), QPoint(0, -6)}));
        QCOMPARE(q->getAtomZ(), 5.0F);
        QCOMPARE(r->getAtomZ(), 105.0F);
    }

    void mergesAreRefusedOrMadeAsTheBondListsSay()
    {
        for (unsigned seed = 0; seed < 400; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            QList<KytAtom*> atoms;
            const int count = 2 + int(random() % 5);
            for (int i = 0; i < count; ++i)
                atoms.append(d.atom(random() % 300, random() % 300, float(random() % 3)));
            for (int i = int(random() % 7); i > 0; --i) {
                KytAtom* a = atoms[random() % atoms.size()];
                KytAtom* b = atoms[random() % atoms.size()];
                if (a != b)
                    d.bond(a, b);
            }
            KytAtom* q = atoms[0];
            KytAtom* p = atoms[1];
            const bool refused = std::abs(q->atomZ - p->atomZ) > 1 && q->molecule == p->molecule;
            const bool alone = bondedOnlyToEachOther(q, p);
            const bool leftToCaller = q->combine(p);
            QCOMPARE(leftToCaller, !refused && alone);
            QCOMPARE(d.atoms().size(), refused || alone ? count : count - 1);
            if (leftToCaller)
                delete p;
            QCOMPARE(drawingFault(*d.canvas()), QString());
            QCOMPARE(moleculeFault(*d.canvas()), QString());
        }
    }

    // Deleting

    void deletingTheMiddleOfAChainLeavesTwoMolecules_data()
    {
        QTest::addColumn<bool>("firstIntoMiddle");
        QTest::addColumn<bool>("lastIntoMiddle");
        QTest::newRow("A to B to C") << true << false;
        QTest::newRow("A to B, C to B") << true << true;
        QTest::newRow("B to A, B to C") << false << false;
        QTest::newRow("B to A, C to B") << false << true;
    }

    void deletingTheMiddleOfAChainLeavesTwoMolecules()
    {
        QFETCH(bool, firstIntoMiddle);
        QFETCH(bool, lastIntoMiddle);
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        firstIntoMiddle ? d.bond(a, b) : d.bond(b, a);
        lastIntoMiddle ? d.bond(c, b) : d.bond(b, c);
        a->spreadMolecule();
        a->getMolecule()->setMoleculeName(QStringLiteral("before"));
        delete b;
        QCOMPARE(d.atoms().size(), 2);
        QCOMPARE(d.labels().size(), 2);
        QCOMPARE(d.lines().size(), 0);
        QVERIFY(a->getMolecule() != c->getMolecule());
        for (KytAtom* atom : {a, c}) {
            QCOMPARE(atom->getBondCount(), 0);
            QVERIFY(atom->getMolecule()->getMoleculeName().isNull());
            QCOMPARE(atom->getMolecule()->atomsCount, 1);
            QCOMPARE(atom->getMolecule()->getAtomsCount(), 1);
            QCOMPARE(atom->getMolecule()->atoms.first(), atom);
        }
    }

    void deletingALoneAtomTakesItsLabel()
    {
        Drawing d;
        delete d.atom(0, 0);
        QVERIFY(d.canvas()->allItems().isEmpty());
    }

    void deletingAnAtomTakesItsBondsOfAllKinds()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        QList<KytAtom*> others;
        for (int i = 0; i < 6; ++i)
            others.append(d.atom(i * 30, 50));
        d.bond(a, others[0], {1});
        d.bond(others[1], a, {1, 0});
        d.bond(a, others[2], {0, 0, 0});
        d.bond(others[3], a, {KYTBT_StereoUp});
        d.bond(a, others[4], {KYTBT_StereoDown});
        d.bond(a, others[5], {5, 1, 99});
        delete a;
        QCOMPARE(d.atoms().size(), 6);
        QCOMPARE(d.lines().size(), 0);
        QCOMPARE(d.wedges().size(), 0);
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void deletingOneAtomOfARingKeepsTheRestTogether()
    {
        Drawing d;
        QList<KytAtom*> ring;
        for (int i = 0; i < 6; ++i) {
            ring.append(d.atom(i * 30, i % 2 * 30));
            if (i > 0)
                d.bond(ring[i - 1], ring[i]);
        }
        d.bond(ring[5], ring[0]);
        delete ring[2];
        QCOMPARE(pieceOf(ring[3]).size(), 5);
        QCOMPARE(drawnAtoms(*d.canvas(), ring[0]->getMolecule()).size(), 5);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
    }

    void deletingAnAtomOutsideLeavesOtherMoleculesAlone()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.bond(a, b);
        KytMolecule* molecule = a->getMolecule();
        const int counter = molecule->atomsCount;
        delete c;
        QCOMPARE(a->getMolecule(), molecule);
        QCOMPARE(b->getMolecule(), molecule);
        QCOMPARE(molecule->atomsCount, counter);
    }

    void deletingAnAtomWithABondToItself()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        d.looseBond(a, a, {1, 1});
        d.bond(a, b);
        d.looseBond(a, a, {KYTBT_StereoUp});
        delete a;
        QCOMPARE(d.atoms().size(), 1);
        QCOMPARE(d.lines().size(), 0);
        QCOMPARE(d.wedges().size(), 0);
        QCOMPARE(b->getBondCount(), 0);
        QCOMPARE(b->getMolecule()->getAtomsCount(), 1);
    }

    void deletingAnAtomWithParallelBonds()
    {
        Drawing d;
        const auto [a, b] = d.chain<2>();
        d.bond(a, b, {1, 1});
        d.bond(b, a, {KYTBT_StereoUp});
        delete b;
        QCOMPARE(a->getBondCount(), 0);
        QCOMPARE(d.lines().size() + d.wedges().size(), 0);
        QCOMPARE(a->getMolecule()->getAtomsCount(), 1);
    }

    void deletingAHoveredAtom()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        a->startHover();
        delete a;
        QCOMPARE(d.atoms().size(), 0);
    }

    void theCanvasTellsThatADeletedAtomIsGone()
    {
        QSet<QCanvasItem*> gone;
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(30, 0);
        KytBond* bond = d.bond(a, b, {1, 1});
        const QSet<QCanvasItem*> going{b, b->canvasSymbol, bond->bond1, bond->bond2};
        connect(d.canvas(), &QCanvas::itemGone, this, [&](QCanvasItem* item) { gone.insert(item); });
        delete b;
        QCOMPARE(gone, going);
    }

    void randomDeletionsLeaveEachPieceItsOwnMolecule()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            QList<KytAtom*> atoms;
            for (int i = 0; i < 9; ++i)
                atoms.append(d.atom(random() % 300, random() % 300));
            for (int i = int(random() % 14); i > 0; --i)
                d.bond(atoms[random() % atoms.size()], atoms[random() % atoms.size()], {int(random() % 4)});
            QCOMPARE(moleculeFault(*d.canvas()), QString());
            while (!atoms.isEmpty()) {
                KytAtom* going = atoms.takeAt(random() % atoms.size());
                const QSet<KytAtom*> touched = pieceOf(going);
                for (KytAtom* atom : atoms)
                    atom->molecule->setMoleculeName(touched.contains(atom) ? "touched" : "apart");
                delete going;
                for (KytAtom* atom : atoms)
                    QVERIFY2(atom->molecule->getMoleculeName()
                                 == (touched.contains(atom) ? QString() : QStringLiteral("apart")),
                             qPrintable(QString::number(seed)));
                QCOMPARE(drawingFault(*d.canvas()), QString());
                QCOMPARE(moleculeFault(*d.canvas()), QString());
            }
            QVERIFY(d.canvas()->allItems().isEmpty());
        }
    }

    void longSessionsOfEditingKeepTheDrawingWhole()
    {
        for (unsigned seed = 0; seed < 60; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            for (int step = 0; step < 150; ++step) {
                const QList<KytAtom*> atoms = d.atoms();
                const auto any = [&] { return atoms[random() % atoms.size()]; };
                const unsigned what = random() % 12;
                if (atoms.size() < 3 || what < 2) {
                    d.atom(random() % 200, random() % 200, float(random() % 3), random() % 5 == 0);
                } else if (what < 6) {
                    KytAtom* a = any();
                    KytAtom* b = any();
                    KytBond* known = a->isConnected(b);
                    if (a != b && known)
                        known->addBond(static_cast<KytBondType>(random() % 9), 60);
                    else if (a != b)
                        d.bond(a, b, {int(random() % 9)}, float(random() % 89));
                } else if (what == 6) {
                    delete any();
                } else if (what == 7) {
                    KytAtom* a = any();
                    KytAtom* b = any();
                    if (a != b && a->combine(b))
                        delete b;
                } else if (what == 8) {
                    any()->moveBy(double(random() % 41) - 20, double(random() % 41) - 20);
                } else if (what == 9) {
                    any()->rotateAbout(100, 100, float(random() % 100) / 50);
                } else {
                    KytAtom* a = any();
                    KytBond* bond = a->outList.isEmpty() ? nullptr : a->outList[random() % a->outList.size()];
                    if (bond && bond->stereoBond && what == 10)
                        bond->stereoBond->setAngle(float(random() % 100));
                    else if (bond && bond->stereoBond)
                        bond->stereoBond->deleteBond();
                    else if (bond && bond->bond2 && random() % 2)
                        delete bond->bond2;
                    else if (bond && bond->bond1)
                        delete bond->bond1;
                }
                const QString fault = drawingFault(*d.canvas()) + moleculeFault(*d.canvas());
                QVERIFY2(fault.isEmpty(),
                         qPrintable(QStringLiteral("seed %1, step %2: %3").arg(seed).arg(step).arg(fault)));
            }
        }
    }

    // Taking the canvas down

    void theCanvasCanGoInAnyState_data()
    {
        QTest::addColumn<int>("state");
        QTest::newRow("empty") << 0;
        QTest::newRow("one atom, never shown") << 1;
        QTest::newRow("every kind of bond") << 2;
        QTest::newRow("a ring") << 3;
        QTest::newRow("loops and parallel bonds") << 4;
        QTest::newRow("after merges") << 5;
        QTest::newRow("hovered") << 6;
        QTest::newRow("bonds that draw nothing") << 7;
        QTest::newRow("after deletions of lines and wedges") << 8;
    }

    void theCanvasCanGoInAnyState()
    {
        QFETCH(int, state);
        Drawing d;
        if (state == 1)
            new KytAtom(d.canvas(), QStringLiteral("H"), 0, false);
        if (state >= 2) {
            QList<KytAtom*> a;
            for (int i = 0; i < 6; ++i)
                a.append(d.atom(i * 30, i % 2 * 30));
            const QList<KytBond*> bonds{d.bond(a[0], a[1], {1, 1}), d.bond(a[1], a[2], {1, 0, 1}),
                                        d.bond(a[2], a[3], {KYTBT_StereoUp}), d.bond(a[4], a[3], {KYTBT_StereoDown}),
                                        d.bond(a[4], a[5], {0})};
            if (state == 3)
                d.bond(a[5], a[0]);
            if (state == 4) {
                d.looseBond(a[0], a[0], {1, 1, 1});
                d.looseBond(a[2], a[2], {KYTBT_StereoUp});
                d.looseBond(a[0], a[1]);
                d.looseBond(a[1], a[0]);
            }
            if (state == 5) {
                QVERIFY(!a[0]->combine(a[5]));
                a[3]->atomZ = a[1]->atomZ;
                QVERIFY(!a[1]->combine(a[3]));
            }
            if (state == 6) {
                a[0]->startHover();
                bonds[1]->bond2->startHover();
                bonds[2]->stereoBond->startHover();
            }
            if (state == 7) {
                d.looseBond(a[0], a[5], {});
                d.looseBond(a[0], a[4], {4, 5, 6});
                d.looseBond(a[0], a[3], {7, 1, 1});
            }
            if (state == 8) {
                delete bonds[0]->bond1;
                delete bonds[1]->bond2;
                bonds[2]->stereoBond->deleteBond();
                delete bonds[4]->bond1;
            }
            QCOMPARE(drawingFault(*d.canvas()), QString());
        }
        d.freeCanvas();
        QVERIFY(!d.canvas());
        d.doc->newDoc();
        KytAtom* again = d.atom(0, 0);
        d.bond(again, d.atom(30, 0));
        QCOMPARE(d.atoms().size(), 2);
    }

    void clearingTakesAtomsBondsAndLabels()
    {
        Drawing d;
        const QList<KytAtom*> a = chain(d, 10);
        d.bond(a[9], a[0], {1, 1, 1});
        d.bond(a[2], a[7], {KYTBT_StereoUp});
        d.looseBond(a[4], a[4]);
        d.looseBond(a[0], a[5], {5});
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
        d.bond(d.atom(0, 0), d.atom(30, 0));
        QCOMPARE(drawingFault(*d.canvas()), QString());
        QCOMPARE(moleculeFault(*d.canvas()), QString());
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
    }

    void clearingLeavesItemsOfOthers()
    {
        Drawing d;
        chain(d, 4);
        QCanvasLine foreign(d.canvas());
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QCOMPARE(d.canvas()->allItems(), (QCanvasItemList{&foreign}));
    }

    void clearingTellsThatEveryItemIsGone()
    {
        QSet<QCanvasItem*> gone;
        Drawing d;
        const QList<KytAtom*> a = chain(d, 5);
        d.bond(a[4], a[0], {KYTBT_StereoUp});
        const QCanvasItemList all = d.canvas()->allItems();
        connect(d.canvas(), &QCanvas::itemGone, this, [&](QCanvasItem* item) { gone.insert(item); });
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QCOMPARE(gone, QSet<QCanvasItem*>(all.begin(), all.end()));
    }

    // Large drawings

    void aLongChainTakesADepthAtItsStart()
    {
        Drawing d;
        const QList<KytAtom*> atoms = chain(d, 100000);
        atoms.first()->setAtomZ(12);
        for (const KytAtom* atom : atoms)
            EXACTLY(atom->atomZ, 12.0F);
        atoms.first()->moveBy(1, 1);
        QVERIFY(atoms.first()->isOutListConnected(atoms.last()));
        QVERIFY(atoms.last()->isAnyhowConnected(atoms.first()));
        QVERIFY(!atoms.last()->isOutListConnected(atoms.first()));
        auto* molecule = new KytMolecule;
        atoms[50000]->setMolecule(molecule);
        QCOMPARE(molecule->atomsCount, 100000);
        QCOMPARE(molecule->atoms.first(), atoms.last());
        QCOMPARE(atoms.first()->getMolecule(), molecule);
        atoms.last()->spreadMolecule();
        QCOMPARE(molecule->getAtomsCount(), 100000);
        d.freeCanvas();
    }

    void aLongChainFallsInTwoWhenItsMiddleGoes()
    {
        Drawing d;
        QList<KytAtom*> atoms = chain(d, 100000);
        delete atoms.takeAt(50000);
        QCOMPARE(int(drawnMolecules(*d.canvas()).size()), 2);
        QCOMPARE(atoms.first()->getMolecule()->getAtomsCount(), 50000);
        QCOMPARE(atoms.last()->getMolecule()->getAtomsCount(), 49999);
        delete atoms[20000]->outList.first()->bond1;
        const std::vector<DrawnMolecule> molecules = drawnMolecules(*d.canvas());
        QCOMPARE(int(molecules.size()), 3);
        QCOMPARE(molecules[0].atoms.size(), 20001);
        QCOMPARE(molecules[1].atoms.size(), 29999);
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
    }

    void aLongRingKeepsTogetherWhenOneBondGoes()
    {
        Drawing d;
        const QList<KytAtom*> atoms = chain(d, 30000);
        KytBond* closing = d.looseBond(atoms.last(), atoms.first());
        QVERIFY(atoms.first()->isInListConnected(atoms.first()));
        KytMolecule* molecule = atoms.first()->getMolecule();
        delete closing->bond1;
        QCOMPARE(atoms.last()->getMolecule(), molecule);
        d.looseBond(atoms.last(), atoms.first());
        delete atoms[100];
        QCOMPARE(int(drawnMolecules(*d.canvas()).size()), 1);
        QCOMPARE(drawnMolecules(*d.canvas())[0].atoms.size(), 29999);
    }

    void aStarFallsApartWhenItsCentreGoes_data()
    {
        QTest::addColumn<bool>("outwards");
        QTest::newRow("bonds from the centre") << true;
        QTest::newRow("bonds to the centre") << false;
    }

    void aStarFallsApartWhenItsCentreGoes()
    {
        QFETCH(bool, outwards);
        Drawing d;
        QList<KytAtom*> atoms = star(d, 50000, outwards);
        atoms[1]->setAtomZ(4);
        atoms.first()->setAtomZ(3);
        QCOMPARE(atoms.last()->getAtomZ(), outwards ? 3.0F : 0.0F);
        delete atoms.takeFirst();
        QCOMPARE(d.lines().size(), 0);
        QSet<KytMolecule*> molecules;
        for (const KytAtom* leaf : atoms) {
            QVERIFY(leaf->inList.isEmpty() && leaf->outList.isEmpty());
            QCOMPARE(leaf->molecule->getAtomsCount(), 1);
            molecules.insert(leaf->molecule);
        }
        QCOMPARE(molecules.size(), 50000);
    }

    void aStarGoesWhenItIsCleared()
    {
        Drawing d;
        star(d, 50000);
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
    }

    void aStarGoesWithItsCanvas()
    {
        Drawing d;
        star(d, 50000, false);
        d.freeCanvas();
        QVERIFY(!d.canvas());
    }

    void aLongChainGoesWithItsCanvas()
    {
        Drawing d;
        chain(d, 100000);
        d.freeCanvas();
        QVERIFY(!d.canvas());
    }

    void aLadderOfDiamondsIsRaisedCutAndCleared()
    {
        Drawing d;
        const QList<KytAtom*> corners = ladder(d, 60);
        corners.first()->setAtomZ(10);
        const double rise = std::tan(30.0F * pi / 180) * std::hypot(15, 15);
        for (int i = 0; i <= 60; ++i) // the wedge is the later bond of each corner
            NEAR(corners[i]->atomZ, 10 + i * rise, 1e-2);
        corners.first()->moveBy(0, 1);
        corners[30]->moveBy(1, 0);
        delete corners[30];
        QCOMPARE(int(drawnMolecules(*d.canvas()).size()), 2);
        QCOMPARE(moleculeFault(*d.canvas()), QString());
        d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(d.canvas()->allItems().isEmpty());
    }

    void aLadderOfDiamondsGoesWithItsCanvas()
    {
        Drawing d;
        ladder(d, 60);
        d.freeCanvas();
        QVERIFY(!d.canvas());
    }

    void deletingManyIsDeletingEach_data()
    {
        QTest::addColumn<DrawAtoms>("draw");
        QTest::addColumn<QList<int>>("chosen");
        const DrawAtoms aChain = [](Drawing& d) { return chain(d, 6); };
        const DrawAtoms aStar = [](Drawing& d) { return star(d, 5); };
        const DrawAtoms aRing = [](Drawing& d) {
            QList<KytAtom*> atoms = chain(d, 6);
            d.looseBond(atoms[5], atoms[0], {KYTBT_StereoUp});
            d.bond(atoms[2], d.atom(50, 50), {KYTBT_SingleBond, KYTBT_SingleBond});
            return atoms;
        };
        const DrawAtoms aLoop = [](Drawing& d) {
            QList<KytAtom*> atoms = chain(d, 3);
            d.looseBond(atoms[1], atoms[1]);
            return atoms;
        };
        QTest::newRow("none") << aChain << QList<int>{};
        QTest::newRow("the middle of a chain") << aChain << QList<int>{2, 3};
        QTest::newRow("every second of a chain") << aChain << QList<int>{4, 2, 0};
        QTest::newRow("a whole chain") << aChain << QList<int>{0, 1, 2, 3, 4, 5};
        QTest::newRow("the centre of a star") << aStar << QList<int>{0};
        QTest::newRow("the leaves of a star") << aStar << QList<int>{1, 2, 3, 4, 5};
        QTest::newRow("one of a ring") << aRing << QList<int>{3};
        QTest::newRow("two of a ring") << aRing << QList<int>{0, 3};
        QTest::newRow("an atom with a bond to itself") << aLoop << QList<int>{1};
    }

    void deletingManyIsDeletingEach()
    {
        QFETCH(DrawAtoms, draw);
        QFETCH(QList<int>, chosen);
        Drawing together;
        Drawing oneByOne;
        const QList<KytAtom*> atoms = draw(together);
        const QList<KytAtom*> same = draw(oneByOne);
        QList<KytAtom*> going;
        for (const int i : chosen) {
            going.append(atoms[i]);
            delete same[i];
        }
        deleteAtoms(going);
        QCOMPARE(snapshotDifference(snapshotOf(*together.canvas()), snapshotOf(*oneByOne.canvas())), QString());
        QCOMPARE(moleculeFault(*together.canvas()), QString());
        QCOMPARE(drawingFault(*together.canvas()), QString());
    }

    void deletingMostOfALargeChainIsLinear()
    {
        Drawing d;
        QList<KytAtom*> atoms = chain(d, 200000);
        const KytAtom* last = atoms.takeLast();
        deleteAtoms(atoms);
        QCOMPARE(d.atoms(), QList<KytAtom*>{const_cast<KytAtom*>(last)});
        QVERIFY(last->inList.isEmpty());
    }
};

QTEST_MAIN(test_KytAtomEditing)
#include "test_KytAtomEditing.moc"
