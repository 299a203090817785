#include "bonds/BondUpdate.h"
#include "model/MoleculeMotion.h"
#include "tests/support/DepthByRecursion.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QTest>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace {

constexpr qint64 noSteps = 0; // all depths are settled at the end

/// What a random drawing consists of.
struct Drawn {
    QList<KytAtom*> atoms;
    QList<KytBond*> bonds;
};

float smallDepth(std::mt19937& random)
{
    return float(random() % 4);
}

float anyDepth(std::mt19937& random)
{
    return float(random()) / 1e6F - 2000;
}

KytAtom* anyAtom(Drawing& d, std::mt19937& random, float depth)
{
    return d.atom(random() % 1000, random() % 1000, depth, random() % 8 == 0);
}

int plainKind(std::mt19937& random)
{
    const int kinds[] = {0, 1, 1, 5, 99};
    return kinds[random() % 5];
}

int anyKind(std::mt19937& random)
{
    return random() % 2 ? plainKind(random) : 2 + int(random() % 2);
}

KytBond* bondOfKind(Drawing& d, std::mt19937& random, KytAtom* from, KytAtom* to, int kind)
{
    if (random() % 16 == 0)
        return d.looseBond(from, to, {}); // carries nothing
    return d.looseBond(from, to, {kind}, float(1 + random() % 88) + 0.25F);
}

/// Any graph of plain bonds: rings, parallel bonds, loops.
Drawn plainGraph(Drawing& d, std::mt19937& random, int size)
{
    Drawn drawn;
    for (int i = 0; i < size; ++i)
        drawn.atoms.append(anyAtom(d, random, smallDepth(random)));
    for (int i = int(random() % (2 * size)); i > 0; --i) {
        KytAtom* from = drawn.atoms[random() % size];
        KytAtom* to = drawn.atoms[random() % size];
        drawn.bonds.append(bondOfKind(d, random, from, to, plainKind(random)));
    }
    return drawn;
}

/// A tree whose bonds run either way, with wedges.
Drawn tree(Drawing& d, std::mt19937& random, int size)
{
    Drawn drawn;
    for (int i = 0; i < size; ++i) {
        drawn.atoms.append(anyAtom(d, random, smallDepth(random)));
        if (i == 0)
            continue;
        KytAtom* known = drawn.atoms[random() % i];
        KytAtom* added = drawn.atoms[i];
        const bool outwards = random() % 3 != 0;
        drawn.bonds.append(bondOfKind(d, random, outwards ? known : added, outwards ? added : known, anyKind(random)));
    }
    return drawn;
}

/// Rings and other structures of plain bonds, joined by wedges like the atoms of a tree.
Drawn treeOfRings(Drawing& d, std::mt19937& random, int blocks)
{
    Drawn drawn;
    for (int i = 0; i < blocks; ++i) {
        const Drawn block = plainGraph(d, random, 1 + int(random() % 5));
        if (i > 0) {
            KytAtom* known = drawn.atoms[random() % drawn.atoms.size()];
            KytAtom* added = block.atoms[random() % block.atoms.size()];
            const bool outwards = random() % 3 != 0;
            drawn.bonds.append(
                bondOfKind(d, random, outwards ? known : added, outwards ? added : known, 2 + int(random() % 2)));
        }
        drawn.atoms += block.atoms;
        drawn.bonds += block.bonds;
    }
    return drawn;
}

/// Wedges that never lead back, so that paths meet but no two of them climb the same.
Drawn wedgesWithoutRings(Drawing& d, std::mt19937& random, int size)
{
    Drawn drawn;
    for (int i = 0; i < size; ++i)
        drawn.atoms.append(anyAtom(d, random, anyDepth(random)));
    for (int i = int(random() % (3 * size)); i > 0; --i) {
        const int one = int(random() % size);
        const int other = int(random() % size);
        if (one != other)
            drawn.bonds.append(bondOfKind(d, random, drawn.atoms[std::min(one, other)],
                                          drawn.atoms[std::max(one, other)], 2 + int(random() % 2)));
    }
    return drawn;
}

/// Anything: rings with wedges, parallel bonds, loops.
Drawn anyGraph(Drawing& d, std::mt19937& random, int size)
{
    Drawn drawn;
    for (int i = 0; i < size; ++i)
        drawn.atoms.append(anyAtom(d, random, smallDepth(random)));
    for (int i = int(random() % (2 * size)); i > 0; --i)
        drawn.bonds.append(
            bondOfKind(d, random, drawn.atoms[random() % size], drawn.atoms[random() % size], anyKind(random)));
    return drawn;
}

/// A tree in which at most one bond leads to an atom.
Drawn treeOfWays(Drawing& d, std::mt19937& random, int size)
{
    Drawn drawn;
    drawn.atoms.append(anyAtom(d, random, smallDepth(random)));
    for (int i = 1; i < size; ++i) {
        KytAtom* known = drawn.atoms[random() % i];
        KytAtom* added = anyAtom(d, random, smallDepth(random));
        drawn.atoms.append(added);
        const bool towards = known->inList.isEmpty() && random() % 2;
        drawn.bonds.append(bondOfKind(d, random, towards ? added : known, towards ? known : added, anyKind(random)));
    }
    return drawn;
}

using Maker = Drawn (*)(Drawing&, std::mt19937&, int);
using Change = QString (*)(const Drawn&, std::mt19937&);

/// Puts the start of each drawn line where no layout would.
void disturb(const QList<KytBond*>& bonds)
{
    for (KytBond* bond : bonds) {
        if (bond->bond1)
            bond->bond1->setFromPoint(-777, -777);
        if (bond->stereoBond)
            bond->stereoBond->setFromPoint(-777, -777);
    }
}

QPolygon shapeOf(const KytBond* bond)
{
    QPolygon shape;
    for (const KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3})
        if (line)
            shape << line->getStartPoint() << line->getEndPoint();
    if (bond->stereoBond)
        shape += *bond->stereoBond->pa;
    return shape;
}

bool isDrawnWithAStart(const KytBond* bond)
{
    return bond->bond1 || bond->stereoBond;
}

bool isLaidOut(const KytBond* bond)
{
    const QPoint start = bond->bond1 ? bond->bond1->getStartPoint() : bond->stereoBond->pa->at(0);
    return start != QPoint(-777, -777);
}

/// Says where the drawing differs from what recursion gives, or nothing.
QString difference(const Drawn& drawn, const DepthByRecursion& expected)
{
    for (int i = 0; i < drawn.atoms.size(); ++i)
        if (drawn.atoms[i]->atomZ != expected.depth.at(drawn.atoms[i]))
            return QStringLiteral("atom %1 lies at %2 instead of %3")
                .arg(i)
                .arg(double(drawn.atoms[i]->atomZ), 0, 'g', 9)
                .arg(double(expected.depth.at(drawn.atoms[i])), 0, 'g', 9);
    for (int i = 0; i < drawn.bonds.size(); ++i) {
        KytBond* bond = drawn.bonds[i];
        if (isDrawnWithAStart(bond) && isLaidOut(bond) != expected.laidOut.contains(bond))
            return QStringLiteral("bond %1 is %2laid out").arg(i).arg(isLaidOut(bond) ? "" : "not ");
    }
    return QString();
}

/// Raises a random atom and compares with recursion; says what differs, or nothing.
QString raiseAnyAtom(const Drawn& drawn, std::mt19937& random)
{
    DepthByRecursion expected(drawn.atoms);
    KytAtom* start = drawn.atoms[random() % drawn.atoms.size()];
    const float depth = random() % 2 ? smallDepth(random) : anyDepth(random);
    expected.set(start, depth);
    start->setAtomZ(depth);
    return difference(drawn, expected);
}

/// Moves a random atom and compares with recursion.
QString moveAnyAtom(const Drawn& drawn, std::mt19937& random)
{
    DepthByRecursion expected(drawn.atoms);
    KytAtom* moved = drawn.atoms[random() % drawn.atoms.size()];
    moved->moveBy(double(random() % 9) + 0.5, double(random() % 9) - 4);
    expected.moved(moved);
    return difference(drawn, expected);
}

/// Turns a random atom, which updates its bonds twice, and compares with recursion.
QString turnAnyAtom(const Drawn& drawn, std::mt19937& random)
{
    DepthByRecursion expected(drawn.atoms);
    KytAtom* turned = drawn.atoms[random() % drawn.atoms.size()];
    turned->rotateAbout(500, 500, float(random() % 7) / 10);
    expected.moved(turned);
    expected.moved(turned);
    return difference(drawn, expected);
}

QString differenceOf(const Drawn& one, const Drawn& other)
{
    for (qsizetype i = 0; i < one.atoms.size(); ++i)
        if (one.atoms[i]->atomZ != other.atoms[i]->atomZ)
            return QStringLiteral("atom %1 lies at %2 and at %3")
                .arg(i)
                .arg(double(one.atoms[i]->atomZ), 0, 'g', 9)
                .arg(double(other.atoms[i]->atomZ), 0, 'g', 9);
    for (qsizetype i = 0; i < one.bonds.size(); ++i)
        if (shapeOf(one.bonds[i]) != shapeOf(other.bonds[i]) || one.bonds[i]->bondlength != other.bonds[i]->bondlength)
            return QStringLiteral("bond %1 is laid out in two ways").arg(i);
    return QString();
}

void moveAll(const Drawn& drawn, double dx, double dy, BondUpdate& update)
{
    for (KytAtom* atom : drawn.atoms)
        atom->moveBy(dx, dy, update);
}

void turnAll(const Drawn& drawn, float angle, BondUpdate& update)
{
    for (KytAtom* atom : drawn.atoms)
        if (atom != drawn.atoms.first())
            atom->rotateAbout(drawn.atoms.first()->x(), drawn.atoms.first()->y(), angle, update);
}

/// The same, each atom by itself.
void moveAndTurnOneByOne(const Drawn& drawn, double dx, double dy, float angle)
{
    for (KytAtom* atom : drawn.atoms)
        atom->moveBy(dx, dy);
    for (KytAtom* atom : drawn.atoms)
        if (atom != drawn.atoms.first())
            atom->rotateAbout(drawn.atoms.first()->x(), drawn.atoms.first()->y(), angle);
}

double riseOf(double degrees, double length)
{
    return std::tan(degrees * std::numbers::pi / 180) * length;
}

} // namespace

class test_BondUpdate : public QObject {
    Q_OBJECT

private slots:
    /// The wedge from `middle` to `side` is reached through the incoming bond of `middle`, which has moved by then.
    void aMovedMoleculeHasTheDepthsOfAtomsMovedOneByOne()
    {
        const auto depthsAfter = [](bool together) {
            Drawing d;
            KytAtom* side = d.atom(280, 420);
            KytAtom* end = d.atom(278, 426);
            KytAtom* other = d.atom(280, 421);
            KytAtom* first = d.atom(370, 370);
            KytAtom* middle = d.atom(371, 367);
            d.bond(first, middle, {KYTBT_StereoUp});
            d.bond(middle, side, {KYTBT_StereoUp}, 89.5F);
            d.bond(middle, other);
            d.bond(side, end, {KYTBT_StereoUp});
            d.bond(other, end, {KYTBT_StereoUp});
            if (together)
                moveMolecule(*d.canvas(), first->getMolecule(), -91, 53);
            else
                for (KytAtom* atom : d.atoms())
                    atom->moveBy(-91, 53);
            QList<float> depths;
            for (const KytAtom* atom : d.atoms())
                depths.append(atom->atomZ);
            return depths;
        };
        QCOMPARE(depthsAfter(true), depthsAfter(false));
    }

    void depthTravelsDownAChain()
    {
        Drawing d;
        QList<KytAtom*> a;
        for (int i = 0; i < 5; ++i)
            a.append(d.atom(i * 30, 0, float(i + 1)));
        for (int i = 1; i < 5; ++i)
            d.looseBond(a[i - 1], a[i], {i % 2});
        a[1]->setAtomZ(50);
        QCOMPARE(a[0]->getAtomZ(), 1.0F);
        for (int i = 1; i < 5; ++i)
            QCOMPARE(a[i]->getAtomZ(), 50.0F);
    }

    void depthStopsWhereItIsEqual()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 7);
        KytAtom* c = d.atom(60, 0, 3);
        d.looseBond(a, b);
        KytBond* bc = d.looseBond(b, c);
        disturb({bc});
        a->setAtomZ(7);
        QCOMPARE(b->getAtomZ(), 7.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
        QVERIFY(!isLaidOut(bc));
    }

    void depthStopsAtALockedAtom()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2, true);
        KytAtom* c = d.atom(60, 0, 3);
        KytBond* ab = d.looseBond(a, b);
        KytBond* bc = d.looseBond(b, c);
        disturb({ab, bc});
        a->setAtomZ(7);
        QCOMPARE(b->getAtomZ(), 2.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
        QVERIFY(isLaidOut(ab));
        QVERIFY(!isLaidOut(bc));
    }

    void depthClimbsAtEachWedge()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(100, 0);
        KytAtom* c = d.atom(100, 50);
        KytAtom* e = d.atom(200, 50);
        d.looseBond(a, b, {KYTBT_StereoUp}, 45);
        d.looseBond(b, c);
        d.looseBond(c, e, {KYTBT_StereoDown}, 60);
        a->setAtomZ(1);
        QCOMPARE(b->getAtomZ(), 101.0F);
        QCOMPARE(c->getAtomZ(), 101.0F);
        QCOMPARE(e->getAtomZ(), float(101 + riseOf(60, 100)));
    }

    void depthDoesNotTravelAgainstBonds()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        d.looseBond(a, b);
        b->setAtomZ(9);
        QCOMPARE(a->getAtomZ(), 1.0F);
    }

    void aBondWithoutLinesCarriesNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        d.looseBond(a, b, {});
        a->setAtomZ(9);
        QCOMPARE(b->getAtomZ(), 2.0F);
    }

    void aBondWithoutAnEndCarriesNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        KytAtom* c = d.atom(60, 0, 3);
        KytBond* open = d.looseBond(a, b);
        d.looseBond(a, c);
        open->setToAtom(nullptr);
        a->setAtomZ(9);
        QCOMPARE(b->getAtomZ(), 2.0F);
        QCOMPARE(c->getAtomZ(), 9.0F);
        open->setToAtom(b);
        QCOMPARE(b->getAtomZ(), 9.0F);
    }

    void anUpdatedBondGivesDepthToItsEndAndBeyond()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(30, 0, 2);
        KytAtom* c = d.atom(60, 0, 3);
        KytAtom* e = d.atom(90, 0, 4);
        KytBond* ab = d.looseBond(a, b);
        d.looseBond(a, c);
        d.looseBond(b, e);
        ab->setBond();
        QCOMPARE(a->getAtomZ(), 1.0F);
        QCOMPARE(b->getAtomZ(), 1.0F);
        QCOMPARE(e->getAtomZ(), 1.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
    }

    void aWayThatBringsAnEqualDepthDoesNotPassItOnAgain()
    {
        // Both ways from `a` give `e` the same depth, so `e` passes it on when it comes by the first one. What `c`
        // gives to `f` comes later and decides.
        Drawing d;
        KytAtom* a = d.atom(0, 0, 0);
        KytAtom* b = d.atom(50, 50, 0);
        KytAtom* c = d.atom(50, -50, 0);
        KytAtom* e = d.atom(100, 0, 0);
        KytAtom* f = d.atom(150, -50, 0);
        d.looseBond(a, b);
        d.looseBond(a, c);
        d.looseBond(b, e);
        d.looseBond(e, f);
        d.looseBond(c, f, {KYTBT_StereoUp}, 45);
        d.looseBond(c, e);
        a->setAtomZ(5);
        QCOMPARE(e->getAtomZ(), 5.0F);
        QCOMPARE(f->getAtomZ(), 105.0F);
    }

    void whereTwoBondsMeetTheLaterOneDecides()
    {
        for (const bool wedgeLater : {false, true}) {
            Drawing d;
            KytAtom* a = d.atom(0, 0, 0);
            KytAtom* b = d.atom(100, 0, 0);
            d.looseBond(a, b, {wedgeLater ? 1 : 2}, 45);
            d.looseBond(a, b, {wedgeLater ? 2 : 1}, 45);
            a->setAtomZ(5);
            QCOMPARE(b->getAtomZ(), wedgeLater ? 105.0F : 5.0F);
        }
    }

    void whereTwoPathsMeetTheLaterOneDecidesForAllBehind()
    {
        for (const bool wedgeLater : {false, true}) {
            Drawing d;
            KytAtom* a = d.atom(0, 0, 0);
            KytAtom* b = d.atom(100, 50, 0);
            KytAtom* c = d.atom(100, 0, 0);
            KytAtom* e = d.atom(200, 0, 0);
            KytAtom* f = d.atom(300, 0, 0);
            if (!wedgeLater)
                d.looseBond(a, c, {2}, 45);
            d.looseBond(a, b);
            if (wedgeLater)
                d.looseBond(a, c, {2}, 45);
            d.looseBond(b, e);
            d.looseBond(c, e);
            d.looseBond(e, f);
            a->setAtomZ(5);
            QCOMPARE(b->getAtomZ(), 5.0F);
            QCOMPARE(c->getAtomZ(), 105.0F);
            QCOMPARE(e->getAtomZ(), wedgeLater ? 105.0F : 5.0F);
            QCOMPARE(f->getAtomZ(), wedgeLater ? 105.0F : 5.0F);
        }
    }

    void aShortWayAndALongWayMeet()
    {
        for (const bool longLater : {false, true}) {
            Drawing d;
            KytAtom* a = d.atom(0, 0, 0);
            KytAtom* b = d.atom(50, 0, 0);
            KytAtom* c = d.atom(100, 0, 0);
            KytAtom* e = d.atom(150, 0, 0);
            if (longLater)
                d.looseBond(a, c, {2}, 45);
            d.looseBond(a, b, {2}, 30);
            if (!longLater)
                d.looseBond(a, c, {2}, 45);
            d.looseBond(b, c);
            d.looseBond(c, e);
            a->setAtomZ(5);
            const float expected = longLater ? float(5 + riseOf(30, 50)) : 105.0F;
            QCOMPARE(c->getAtomZ(), expected);
            QCOMPARE(e->getAtomZ(), expected);
        }
    }

    void randomDrawingsAgreeWithRecursion_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<int>("atoms");
        QTest::addColumn<Change>("change");
        const std::pair<const char*, std::pair<Maker, int>> shapes[] = {
            {"plain graphs", {plainGraph, 12}},
            {"trees with wedges", {tree, 22}},
            {"plain rings joined by wedges", {treeOfRings, 6}},
            {"wedges on ways that meet", {wedgesWithoutRings, 11}},
            {"any graphs, rings with wedges among them", {anyGraph, 12}},
        };
        const std::pair<const char*, Change> changes[] = {
            {"raised", raiseAnyAtom}, {"moved", moveAnyAtom}, {"turned", turnAnyAtom}};
        for (const auto& [shape, maker] : shapes)
            for (const auto& [how, change] : changes)
                QTest::addRow("%s, %s", shape, how) << maker.first << maker.second << change;
    }

    void randomDrawingsAgreeWithRecursion()
    {
        QFETCH(Maker, make);
        QFETCH(int, atoms);
        QFETCH(Change, change);
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = make(d, random, 2 + int(random() % (atoms - 1)));
            for (int times = 0; times < 5; ++times) {
                disturb(drawn.bonds);
                const QString found = change(drawn, random);
                QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
            }
        }
    }

    void aFewDiamondsAgreeWithRecursion()
    {
        for (const bool wedgeLater : {false, true})
            for (int diamonds = 1; diamonds <= 8; ++diamonds) {
                Drawing d;
                Drawn drawn;
                drawn.atoms.append(d.atom(0, 0));
                for (int i = 0; i < diamonds; ++i) {
                    KytAtom* corner = drawn.atoms.last();
                    KytAtom* one = d.atom(i * 40 + 20, 20);
                    KytAtom* other = d.atom(i * 40 + 20, -20);
                    KytAtom* next = d.atom(i * 40 + 40, 0);
                    drawn.bonds += {d.looseBond(corner, one, {wedgeLater ? 1 : 2}),
                                    d.looseBond(corner, other, {wedgeLater ? 2 : 1}), d.looseBond(one, next),
                                    d.looseBond(other, next)};
                    drawn.atoms += {one, other, next};
                }
                disturb(drawn.bonds);
                DepthByRecursion expected(drawn.atoms);
                expected.set(drawn.atoms.first(), 3);
                drawn.atoms.first()->setAtomZ(3);
                QCOMPARE(difference(drawn, expected), QString());
            }
    }

    void aRingWithAWedgeCarriesNoDepth_data()
    {
        QTest::addColumn<QList<int>>("kinds");
        QTest::newRow("one wedge") << QList{2, 1, 1};
        QTest::newRow("wedges alone, up and down") << QList{2, 3, 2};
        QTest::newRow("a wedge back") << QList{1, 0, 3};
    }

    void aRingWithAWedgeCarriesNoDepth()
    {
        QFETCH(QList<int>, kinds);
        Drawing d;
        const QList<KytAtom*> ring{d.atom(0, 0, 1), d.atom(100, 0, 2), d.atom(100, 100, 3)};
        QList<KytBond*> bonds;
        for (int i = 0; i < 3; ++i)
            bonds.append(d.looseBond(ring[i], ring[(i + 1) % 3], {kinds[i]}, 45));
        KytAtom* behind = d.atom(200, 100, 9);
        d.looseBond(ring[2], behind);
        disturb(bonds);
        ring[2]->setAtomZ(5);
        QCOMPARE(ring[0]->getAtomZ(), 1.0F);
        QCOMPARE(ring[1]->getAtomZ(), 2.0F);
        QCOMPARE(behind->getAtomZ(), 5.0F);
        QVERIFY(isLaidOut(bonds[2]));
        for (int step = 0; step < 100; ++step) {
            BondUpdate update;
            for (KytAtom* atom : ring)
                atom->moveBy(1, 1, update);
        }
        QCOMPARE(ring[0]->getAtomZ(), 1.0F);
        QCOMPARE(ring[1]->getAtomZ(), 2.0F);
        QCOMPARE(ring[2]->getAtomZ(), 5.0F);
        QVERIFY(isLaidOut(bonds[0]) && isLaidOut(bonds[1]));
    }

    void aRingWithAWedgeTakesDepthFromOutside()
    {
        Drawing d;
        KytAtom* start = d.atom(0, 50);
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(100, 0, 7);
        KytAtom* c = d.atom(100, 100, 8);
        d.looseBond(start, a);
        d.looseBond(a, b, {KYTBT_StereoUp}, 45);
        d.looseBond(b, c);
        d.looseBond(c, a);
        start->setAtomZ(5);
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 7.0F);
        QCOMPARE(c->getAtomZ(), 8.0F);
    }

    void aRingWithAWedgeWithoutAnAngleCarriesDepth()
    {
        Drawing d;
        const QList<KytAtom*> ring{d.atom(0, 0), d.atom(100, 0), d.atom(100, 100)};
        d.looseBond(ring[0], ring[1], {KYTBT_StereoUp}, 0);
        d.looseBond(ring[1], ring[2]);
        d.looseBond(ring[2], ring[0]);
        ring[1]->setAtomZ(5);
        for (const KytAtom* atom : ring)
            QCOMPARE(atom->getAtomZ(), 5.0F);
    }

    void aRingWithAWedgeThatALockedAtomOpensCarriesDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 0, true);
        KytAtom* b = d.atom(100, 0);
        KytAtom* c = d.atom(100, 100);
        d.looseBond(a, b, {KYTBT_StereoUp}, 45);
        d.looseBond(b, c);
        d.looseBond(c, a);
        a->setAtomZ(5);
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 105.0F);
        QCOMPARE(c->getAtomZ(), 105.0F);
    }

    void aRingWithAWedgeCarriesDepthOnceItIsOpen()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(100, 0);
        KytAtom* c = d.atom(100, 100);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, c);
        KytBond* back = d.bond(c, a);
        a->moveBy(0, 1);
        QCOMPARE(c->getAtomZ(), 0.0F);
        delete back;
        a->moveBy(0, -1);
        QCOMPARE(b->getAtomZ(), 100.0F);
        QCOMPARE(c->getAtomZ(), 100.0F);
    }

    void aWedgeFromAnAtomToItselfCarriesNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        d.looseBond(a, a, {KYTBT_StereoUp}, 45);
        a->setAtomZ(5);
        a->moveBy(3, 3);
        QCOMPARE(a->getAtomZ(), 5.0F);
    }

    void twoWedgesThereAndBackCarryNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(100, 0);
        d.looseBond(a, b, {KYTBT_StereoUp}, 45);
        d.looseBond(b, a, {KYTBT_StereoUp}, 45);
        a->setAtomZ(5);
        for (int i = 0; i < 100; ++i) {
            a->moveBy(1, 0);
            b->moveBy(1, 0);
            a->rotateAbout(50, 50, 0.1F);
        }
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 0.0F);
    }

    void anyGraphWithWedgesEndsAndStaysFinite()
    {
        for (unsigned seed = 0; seed < 200; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            QList<KytAtom*> atoms;
            for (int i = 0; i < 12; ++i)
                atoms.append(anyAtom(d, random, smallDepth(random)));
            for (int i = 0; i < 40; ++i)
                bondOfKind(d, random, atoms[random() % 12], atoms[random() % 12], anyKind(random));
            for (int i = 0; i < 20; ++i) {
                atoms[random() % 12]->setAtomZ(anyDepth(random));
                atoms[random() % 12]->moveBy(3, -4);
            }
            for (const KytAtom* atom : atoms)
                QVERIFY(std::isfinite(atom->getAtomZ()));
        }
    }

    void theSameSettingTwiceGivesTheSameDepths()
    {
        for (unsigned seed = 0; seed < 100; ++seed) {
            std::vector<float> depths[2];
            for (std::vector<float>& seen : depths) {
                std::mt19937 random(seed);
                Drawing d;
                const Drawn drawn = treeOfRings(d, random, 4);
                for (int i = 0; i < 10; ++i)
                    bondOfKind(d, random, drawn.atoms[random() % drawn.atoms.size()],
                               drawn.atoms[random() % drawn.atoms.size()], anyKind(random));
                drawn.atoms.first()->setAtomZ(77);
                for (const KytAtom* atom : drawn.atoms)
                    seen.push_back(atom->atomZ);
            }
            QVERIFY(depths[0] == depths[1]);
        }
    }

    void aLongChainOfWedgesIsClimbed()
    {
        Drawing d;
        QList<KytAtom*> atoms{d.atom(0, 0)};
        for (int i = 1; i < 100000; ++i) {
            atoms.append(d.atom(i % 2 ? 1 : 0, 0));
            d.looseBond(atoms[i - 1], atoms[i], {KYTBT_StereoUp}, 45);
        }
        atoms.first()->setAtomZ(1);
        QCOMPARE(atoms[1000]->getAtomZ(), 1001.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 100000.0F);
        atoms.first()->moveBy(0, 1);
        atoms[50000]->setAtomZ(0);
        QCOMPARE(atoms[50001]->getAtomZ(), 1.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 49999.0F);
    }

    void aLongRingWithAWedgeIsFound()
    {
        Drawing d;
        QList<KytAtom*> atoms{d.atom(0, 0)};
        for (int i = 1; i < 50000; ++i) {
            atoms.append(d.atom(i % 1000, i / 1000));
            d.looseBond(atoms[i - 1], atoms[i], {1});
        }
        KytBond* back = d.looseBond(atoms.last(), atoms.first(), {KYTBT_StereoUp}, 45);
        atoms.first()->setAtomZ(5);
        QCOMPARE(atoms.first()->getAtomZ(), 5.0F);
        QCOMPARE(atoms[1]->getAtomZ(), 0.0F);
        delete back;
        atoms.first()->setAtomZ(6);
        QCOMPARE(atoms.last()->getAtomZ(), 6.0F);
    }

    void aWideStarIsRaisedAtOnce()
    {
        Drawing d;
        KytAtom* centre = d.atom(0, 0);
        QList<KytAtom*> leaves;
        for (int i = 0; i < 50000; ++i) {
            leaves.append(d.atom(i % 1000, 1 + i / 1000));
            d.looseBond(centre, leaves.last(), {i % 2});
        }
        centre->setAtomZ(4);
        for (const KytAtom* leaf : leaves)
            EXACTLY(leaf->atomZ, 4);
        centre->moveBy(1, 1);
        leaves.first()->setAtomZ(1);
        QCOMPARE(centre->getAtomZ(), 4.0F);
    }

    void manyDiamondsAreClimbed_data()
    {
        QTest::addColumn<bool>("wedgeLater");
        QTest::newRow("the wedge comes first") << false;
        QTest::newRow("the wedge comes later") << true;
    }

    void manyDiamondsAreClimbed()
    {
        QFETCH(bool, wedgeLater);
        Drawing d;
        QList<KytAtom*> corners{d.atom(0, 0)};
        for (int i = 0; i < 60; ++i) {
            KytAtom* one = d.atom(i * 20 + 10, 10);
            KytAtom* other = d.atom(i * 20 + 10, -10);
            KytAtom* next = d.atom(i * 20 + 20, 0);
            d.looseBond(corners.last(), one, {wedgeLater ? 1 : 2}, 45);
            d.looseBond(corners.last(), other, {wedgeLater ? 2 : 1}, 45);
            d.looseBond(one, next);
            d.looseBond(other, next);
            corners.append(next);
        }
        const auto expected = [&](int i, double start) { return wedgeLater ? start + i * std::hypot(10, 10) : start; };
        corners.first()->setAtomZ(10);
        for (int i = 0; i <= 60; ++i)
            NEAR(corners[i]->atomZ, expected(i, 10), 1e-2);
        corners.first()->setAtomZ(-10);
        for (int i = 0; i <= 60; ++i)
            NEAR(corners[i]->atomZ, expected(i, -10), 1e-2);
        corners.first()->moveBy(0, 0.5);
        corners[20]->moveBy(1, 0);
        for (const KytAtom* corner : corners)
            QVERIFY(std::isfinite(corner->atomZ));
    }

    void aBondIsLaidOutWhenTheUpdateEnds()
    {
        Drawing d;
        KytAtom* a = d.atom(100, 100);
        KytBond* bond = d.bond(a, d.atom(200, 100));
        {
            BondUpdate update;
            a->moveBy(10, 0, update);
            QCOMPARE(bond->bond1->getStartPoint(), QPoint(100, 100));
        }
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(110, 100));
        QCOMPARE(bond->bondlength, 90.0F);
    }

    void aBondWhoseAtomsMoveAgainAndAgainFollowsThem_data()
    {
        QTest::addColumn<int>("moves");
        for (int moves = 1; moves <= 5; ++moves)
            QTest::addRow("%d", moves) << moves;
    }

    void aBondWhoseAtomsMoveAgainAndAgainFollowsThem()
    {
        QFETCH(int, moves);
        Drawing d;
        KytAtom* a = d.atom(100, 100);
        KytAtom* b = d.atom(200, 100);
        KytBond* bond = d.bond(a, b);
        {
            BondUpdate update;
            for (int i = 0; i < moves; ++i) {
                b->moveBy(0, 10, update);
                a->move(110 + 10 * i, 100, update);
            }
        }
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(100 + 10 * moves, 100));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(200, 100 + 10 * moves));
    }

    void depthTravelsBeforeTheUpdateEnds()
    {
        Drawing d;
        KytAtom* a = d.atom(100, 100);
        KytAtom* b = d.atom(200, 100);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        BondUpdate update;
        a->moveBy(50, 0, update);
        QCOMPARE(b->atomZ, 50.0F);
    }

    void aBondDeletedBeforeItIsLaidOutIsForgotten_data()
    {
        QTest::addColumn<qint64>("steps");
        QTest::newRow("with depths that travel at once") << BondUpdate::usualSteps;
        QTest::newRow("with depths that are put off") << noSteps;
    }

    void aBondDeletedBeforeItIsLaidOutIsForgotten()
    {
        QFETCH(qint64, steps);
        Drawing d;
        const auto [a, b, c] = d.row<3>(100, 100, 100);
        KytBond* bond = d.bond(a, b, {KYTBT_StereoUp}, 45);
        KytBond* other = d.bond(b, c);
        KytBond* untouched = d.looseBond(a, d.atom(0, 0));
        {
            BondUpdate update(steps);
            b->moveBy(0, 10, update);
            update.forget(bond);
            delete bond;
            update.forget(untouched);
        }
        QCOMPARE(other->bond1->getStartPoint(), QPoint(200, 110));
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void movingADrawingTogetherIsLikeMovingItAtomByAtom()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            Drawing d[2];
            Drawn drawn[2];
            for (int i = 0; i < 2; ++i) {
                std::mt19937 random(seed);
                drawn[i] = anyGraph(d[i], random, 2 + int(random() % 12));
            }
            for (int step = 0; step < 3; ++step) {
                BondUpdate update;
                moveAll(drawn[0], 7, -3, update);
                turnAll(drawn[0], 0.3F, update);
            }
            for (int step = 0; step < 3; ++step)
                moveAndTurnOneByOne(drawn[1], 7, -3, 0.3F);
            const QString found = differenceOf(drawn[0], drawn[1]);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void putOffDepthsOfTreesAreThoseThatTravelAtOnce()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            Drawing d[2];
            Drawn drawn[2];
            for (int i = 0; i < 2; ++i) {
                std::mt19937 random(seed);
                drawn[i] = treeOfWays(d[i], random, 2 + int(seed % 30));
            }
            {
                BondUpdate update(seed % 2 ? noSteps : qint64(seed % 7));
                moveAll(drawn[0], 7, -3, update);
                turnAll(drawn[0], 0.3F, update);
            }
            moveAndTurnOneByOne(drawn[1], 7, -3, 0.3F);
            const QString found = differenceOf(drawn[0], drawn[1]);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void putOffDepthTravelsOnToAtomsThatStay()
    {
        Drawing d;
        const auto [moved, lifted, behind] = d.row<3>(100, 100, 100);
        KytAtom* locked = d.atom(400, 100, 0, true);
        d.bond(moved, lifted, {KYTBT_StereoUp}, 45);
        d.bond(lifted, behind);
        d.bond(behind, locked);
        {
            BondUpdate update(noSteps);
            moved->moveBy(-20, 0, update);
            QCOMPARE(lifted->atomZ, 0.0F);
        }
        QCOMPARE(lifted->atomZ, 120.0F);
        QCOMPARE(behind->atomZ, 120.0F);
        QCOMPARE(locked->atomZ, 0.0F);
    }

    void whereDepthsArePutOffTheLastBondOfTheListDecides()
    {
        for (const bool lowFirst : {false, true}) {
            Drawing d;
            KytAtom* low = d.atom(100, 100, 5);
            KytAtom* high = d.atom(100, 200, 50);
            KytAtom* end = d.atom(200, 100);
            KytAtom* behind = d.atom(300, 100);
            KytBond* first = d.bond(lowFirst ? low : high, end);
            KytBond* last = d.bond(lowFirst ? high : low, end);
            d.bond(end, behind);
            {
                BondUpdate update(noSteps);
                update.update(last);
                update.update(first);
            }
            QCOMPARE(end->atomZ, lowFirst ? 50.0F : 5.0F);
            QCOMPARE(behind->atomZ, lowFirst ? 50.0F : 5.0F);
            last->setBond();
            {
                BondUpdate update(noSteps);
                update.update(first); // the other one has nothing new to give
            }
            QCOMPARE(end->atomZ, lowFirst ? 5.0F : 50.0F);
        }
    }

    void putOffDepthFillsAPlainRing()
    {
        Drawing d;
        KytAtom* outside = d.atom(0, 0, 9);
        QList<KytAtom*> ring;
        for (int i = 0; i < 4; ++i)
            ring.append(d.atom(100 + 10 * i, 100, float(i)));
        KytAtom* behind = d.atom(300, 100);
        KytBond* in = d.looseBond(outside, ring[2]);
        for (int i = 0; i < 4; ++i)
            d.looseBond(ring[i], ring[(i + 1) % 4]);
        d.looseBond(ring[3], behind, {KYTBT_StereoUp}, 45);
        KytBond* inner = ring[0]->outList.first();
        for (KytBond* bond : {inner, in}) {
            BondUpdate update(noSteps);
            update.update(bond);
            if (bond == in)
                update.update(inner);
        }
        for (const KytAtom* atom : ring)
            QCOMPARE(atom->atomZ, 9.0F);
        QCOMPARE(behind->atomZ, float(9 + std::hypot(170, 0)));
    }

    void aSettledDrawingStaysFinite()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = anyGraph(d, random, 2 + int(random() % 12));
            for (int step = 0; step < 5; ++step) {
                BondUpdate update(noSteps);
                moveAll(drawn, 7, -3, update);
                turnAll(drawn, 0.3F, update);
            }
            for (const KytAtom* atom : drawn.atoms)
                QVERIFY(std::isfinite(atom->atomZ));
        }
    }

    void aLongChainOfWedgesMovesAndTurnsWithItsDepths()
    {
        Drawing d;
        Drawn chain;
        chain.atoms.append(d.atom(0, 0));
        for (int i = 1; i < 50000; ++i) {
            chain.atoms.append(d.atom(i % 500, i / 500, float(i)));
            chain.bonds.append(d.looseBond(chain.atoms[i - 1], chain.atoms[i], {KYTBT_StereoUp}, i % 500 ? 45 : 0));
        }
        {
            BondUpdate update;
            moveAll(chain, 3, 4, update);
        }
        for (int i = 0; i < 50000; ++i)
            QCOMPARE(chain.atoms[i]->atomZ, float(i - i / 500));
        QCOMPARE(chain.bonds[40000]->stereoBond->pa->at(0), QPoint(40000 % 500 + 3, 40000 / 500 + 4));
        {
            BondUpdate update;
            turnAll(chain, 0.5F, update);
        }
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void aStarOfWedgesInAndOutMovesItsCentre()
    {
        Drawing d;
        KytAtom* centre = d.atom(0, 0);
        QList<KytAtom*> leaves;
        for (int i = 0; i < 50000; ++i) {
            leaves.append(d.atom(1 + i % 1000, 1 + i / 1000));
            if (i % 2)
                d.looseBond(centre, leaves.last(), {KYTBT_StereoUp}, 45);
            else
                d.looseBond(leaves.last(), centre, {KYTBT_StereoDown}, float(1 + i % 80));
        }
        centre->moveBy(-1, 0);
        const float depth = centre->atomZ;
        for (int i = 1; i < 50000; i += 2)
            QCOMPARE(leaves[i]->atomZ, float(depth + std::hypot(leaves[i]->x() + 1, leaves[i]->y())));
    }
};

QTEST_MAIN(test_BondUpdate)
#include "test_BondUpdate.moc"
