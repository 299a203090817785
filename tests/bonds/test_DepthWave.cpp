#include "bonds/DepthWave.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <cmath>
#include <map>
#include <numbers>
#include <random>
#include <set>
#include <vector>

namespace {

/// The travelling of depth as plain recursion, on a record of its own: an atom whose depth really changes lays out its
/// outgoing bonds one by one, and each gives its end atom a depth.
class DepthByRecursion {
public:
    explicit DepthByRecursion(const QList<KytAtom*>& atoms)
    {
        for (KytAtom* atom : atoms)
            depth[atom] = atom->atomZ;
    }

    void set(KytAtom* atom, float z)
    {
        if (depth.at(atom) == z)
            return;
        depth[atom] = z;
        for (KytBond* bond : std::as_const(atom->outList))
            layOut(bond);
    }

    void layOut(KytBond* bond)
    {
        if (bond->bondCount < 1 || bond->bondCount > 3)
            return;
        laidOut.insert(bond);
        if (bond->toAtom->locked)
            return;
        const float start = depth.at(bond->fromAtom);
        if (!bond->stereoBond) {
            set(bond->toAtom, start);
            return;
        }
        const double dx = bond->toAtom->x() - bond->fromAtom->x();
        const double dy = bond->toAtom->y() - bond->fromAtom->y();
        const double rise = std::tan(bond->stereoBond->pangle * std::numbers::pi / 180) * std::sqrt(dx * dx + dy * dy);
        set(bond->toAtom, float(start + rise));
    }

    void move(KytAtom* atom)
    {
        for (KytBond* bond : std::as_const(atom->inList))
            layOut(bond);
        for (KytBond* bond : std::as_const(atom->outList))
            layOut(bond);
    }

    std::map<KytAtom*, float> depth;
    std::set<KytBond*> laidOut;
};

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
    return d.atomAt(random() % 1000, random() % 1000, depth, random() % 8 == 0);
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
        return d.bond(from, to, {}); // carries nothing
    return d.bond(from, to, {kind}, float(1 + random() % 88) + 0.25F);
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
        if (isDrawnWithAStart(bond) && isLaidOut(bond) != (expected.laidOut.count(bond) > 0))
            return QStringLiteral("bond %1 is %2laid out").arg(i).arg(isLaidOut(bond) ? "" : "not ");
    }
    return QString();
}

/// Raises random atoms one after the other and compares with recursion.
QString raiseRandomAtoms(const Drawn& drawn, std::mt19937& random, int times)
{
    for (; times > 0; --times) {
        disturb(drawn.bonds);
        DepthByRecursion expected(drawn.atoms);
        KytAtom* start = drawn.atoms[random() % drawn.atoms.size()];
        const float depth = random() % 2 ? smallDepth(random) : anyDepth(random);
        expected.set(start, depth);
        start->setAtomZ(depth);
        if (const QString found = difference(drawn, expected); !found.isEmpty())
            return found;
    }
    return QString();
}

/// Moves random atoms one after the other and compares with recursion.
QString moveRandomAtoms(const Drawn& drawn, std::mt19937& random, int times)
{
    for (; times > 0; --times) {
        disturb(drawn.bonds);
        DepthByRecursion expected(drawn.atoms);
        KytAtom* moved = drawn.atoms[random() % drawn.atoms.size()];
        moved->moveBy(double(random() % 9) + 0.5, double(random() % 9) - 4);
        expected.move(moved);
        if (const QString found = difference(drawn, expected); !found.isEmpty())
            return found;
    }
    return QString();
}

double riseOf(double degrees, double length)
{
    return std::tan(degrees * std::numbers::pi / 180) * length;
}

} // namespace

class test_DepthWave : public QObject {
    Q_OBJECT

private slots:
    void depthTravelsDownAChain()
    {
        Drawing d;
        QList<KytAtom*> a;
        for (int i = 0; i < 5; ++i)
            a.append(d.atomAt(i * 30, 0, float(i + 1)));
        for (int i = 1; i < 5; ++i)
            d.bond(a[i - 1], a[i], {i % 2});
        a[1]->setAtomZ(50);
        QCOMPARE(a[0]->getAtomZ(), 1.0F);
        for (int i = 1; i < 5; ++i)
            QCOMPARE(a[i]->getAtomZ(), 50.0F);
    }

    void depthStopsWhereItIsEqual()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 7);
        KytAtom* c = d.atomAt(60, 0, 3);
        d.bond(a, b);
        KytBond* bc = d.bond(b, c);
        disturb({bc});
        a->setAtomZ(7);
        QCOMPARE(b->getAtomZ(), 7.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
        QVERIFY(!isLaidOut(bc));
    }

    void depthStopsAtALockedAtom()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2, true);
        KytAtom* c = d.atomAt(60, 0, 3);
        KytBond* ab = d.bond(a, b);
        KytBond* bc = d.bond(b, c);
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
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(100, 0);
        KytAtom* c = d.atomAt(100, 50);
        KytAtom* e = d.atomAt(200, 50);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, c);
        d.bond(c, e, {KYTBT_StereoDown}, 60);
        a->setAtomZ(1);
        QCOMPARE(b->getAtomZ(), 101.0F);
        QCOMPARE(c->getAtomZ(), 101.0F);
        QCOMPARE(e->getAtomZ(), float(101 + riseOf(60, 100)));
    }

    void depthDoesNotTravelAgainstBonds()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2);
        d.bond(a, b);
        b->setAtomZ(9);
        QCOMPARE(a->getAtomZ(), 1.0F);
    }

    void aBondWithoutLinesCarriesNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2);
        d.bond(a, b, {});
        a->setAtomZ(9);
        QCOMPARE(b->getAtomZ(), 2.0F);
    }

    void aBondWithoutAnEndCarriesNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2);
        KytAtom* c = d.atomAt(60, 0, 3);
        KytBond* open = d.bond(a, b);
        d.bond(a, c);
        open->setToAtom(nullptr);
        a->setAtomZ(9);
        QCOMPARE(b->getAtomZ(), 2.0F);
        QCOMPARE(c->getAtomZ(), 9.0F);
        open->setToAtom(b);
        QCOMPARE(b->getAtomZ(), 9.0F);
    }

    void sentByHandDepthLeavesTheSourceAlone()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2);
        KytAtom* c = d.atomAt(60, 0, 3);
        KytBond* ab = d.bond(a, b);
        KytBond* ac = d.bond(a, c);
        disturb({ab, ac});
        sendDepth(a);
        QCOMPARE(a->getAtomZ(), 1.0F);
        QCOMPARE(b->getAtomZ(), 1.0F);
        QCOMPARE(c->getAtomZ(), 1.0F);
        QVERIFY(isLaidOut(ab));
        QVERIFY(isLaidOut(ac));
    }

    void sentAlongOneBondDepthReachesOnlyItsEnd()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0, 1);
        KytAtom* b = d.atomAt(30, 0, 2);
        KytAtom* c = d.atomAt(60, 0, 3);
        KytAtom* e = d.atomAt(90, 0, 4);
        KytBond* ab = d.bond(a, b);
        d.bond(a, c);
        d.bond(b, e);
        sendDepthAlong(ab);
        QCOMPARE(b->getAtomZ(), 1.0F);
        QCOMPARE(e->getAtomZ(), 1.0F);
        QCOMPARE(c->getAtomZ(), 3.0F);
    }

    void whereTwoBondsMeetTheLaterOneDecides()
    {
        for (const bool wedgeLater : {false, true}) {
            Drawing d;
            KytAtom* a = d.atomAt(0, 0, 0);
            KytAtom* b = d.atomAt(100, 0, 0);
            d.bond(a, b, {wedgeLater ? 1 : 2}, 45);
            d.bond(a, b, {wedgeLater ? 2 : 1}, 45);
            a->setAtomZ(5);
            QCOMPARE(b->getAtomZ(), wedgeLater ? 105.0F : 5.0F);
        }
    }

    void whereTwoPathsMeetTheLaterOneDecidesForAllBehind()
    {
        for (const bool wedgeLater : {false, true}) {
            Drawing d;
            KytAtom* a = d.atomAt(0, 0, 0);
            KytAtom* b = d.atomAt(100, 50, 0);
            KytAtom* c = d.atomAt(100, 0, 0);
            KytAtom* e = d.atomAt(200, 0, 0);
            KytAtom* f = d.atomAt(300, 0, 0);
            if (!wedgeLater)
                d.bond(a, c, {2}, 45);
            d.bond(a, b);
            if (wedgeLater)
                d.bond(a, c, {2}, 45);
            d.bond(b, e);
            d.bond(c, e);
            d.bond(e, f);
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
            KytAtom* a = d.atomAt(0, 0, 0);
            KytAtom* b = d.atomAt(50, 0, 0);
            KytAtom* c = d.atomAt(100, 0, 0);
            KytAtom* e = d.atomAt(150, 0, 0);
            if (longLater)
                d.bond(a, c, {2}, 45);
            d.bond(a, b, {2}, 30);
            if (!longLater)
                d.bond(a, c, {2}, 45);
            d.bond(b, c);
            d.bond(c, e);
            a->setAtomZ(5);
            const float expected = longLater ? float(5 + riseOf(30, 50)) : 105.0F;
            QCOMPARE(c->getAtomZ(), expected);
            QCOMPARE(e->getAtomZ(), expected);
        }
    }

    void plainGraphsAgreeWithRecursionWhenRaised()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = plainGraph(d, random, 2 + int(random() % 10));
            const QString found = raiseRandomAtoms(drawn, random, 5);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void plainGraphsAgreeWithRecursionWhenMoved()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = plainGraph(d, random, 2 + int(random() % 10));
            const QString found = moveRandomAtoms(drawn, random, 5);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void treesAgreeWithRecursionWhenRaised()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = tree(d, random, 2 + int(random() % 20));
            const QString found = raiseRandomAtoms(drawn, random, 5);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void treesAgreeWithRecursionWhenMoved()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = tree(d, random, 2 + int(random() % 20));
            const QString found = moveRandomAtoms(drawn, random, 5);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void ringsWithoutAWedgeJoinedByWedgesAgreeWithRecursion()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = treeOfRings(d, random, 1 + int(random() % 6));
            const QString found = raiseRandomAtoms(drawn, random, 4) + moveRandomAtoms(drawn, random, 4);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void pathsThatMeetAgreeWithRecursion()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const Drawn drawn = wedgesWithoutRings(d, random, 2 + int(random() % 9));
            const QString found = raiseRandomAtoms(drawn, random, 1);
            QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(found)));
        }
    }

    void aFewDiamondsAgreeWithRecursion()
    {
        for (const bool wedgeLater : {false, true})
            for (int diamonds = 1; diamonds <= 8; ++diamonds) {
                Drawing d;
                Drawn drawn;
                drawn.atoms.append(d.atomAt(0, 0));
                for (int i = 0; i < diamonds; ++i) {
                    KytAtom* corner = drawn.atoms.last();
                    KytAtom* one = d.atomAt(i * 40 + 20, 20);
                    KytAtom* other = d.atomAt(i * 40 + 20, -20);
                    KytAtom* next = d.atomAt(i * 40 + 40, 0);
                    drawn.bonds +=
                        {d.bond(corner, one, {wedgeLater ? 1 : 2}), d.bond(corner, other, {wedgeLater ? 2 : 1}),
                         d.bond(one, next), d.bond(other, next)};
                    drawn.atoms += {one, other, next};
                }
                disturb(drawn.bonds);
                DepthByRecursion expected(drawn.atoms);
                expected.set(drawn.atoms.first(), 3);
                drawn.atoms.first()->setAtomZ(3);
                QCOMPARE(difference(drawn, expected), QString());
            }
    }

    void aRingWithAWedgeEndsWhereItBegan()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(100, 0);
        KytAtom* c = d.atomAt(100, 100);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, c);
        KytBond* back = d.bond(c, a);
        disturb({back});
        a->setAtomZ(5);
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 105.0F);
        QCOMPARE(c->getAtomZ(), 105.0F);
        QVERIFY(isLaidOut(back));
    }

    void aRingOfWedgesEndsWhereItBegan()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(100, 0);
        KytAtom* c = d.atomAt(100, 100);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, c, {KYTBT_StereoDown}, 45);
        d.bond(c, a, {KYTBT_StereoUp}, 45);
        b->setAtomZ(-7);
        QCOMPARE(b->getAtomZ(), -7.0F);
        QCOMPARE(c->getAtomZ(), 93.0F);
        QCOMPARE(a->getAtomZ(), float(93 + std::sqrt(20000.0)));
    }

    void aRingWithAWedgeBehindAChainIsPassedOnce()
    {
        Drawing d;
        KytAtom* start = d.atomAt(0, 50);
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(100, 0);
        KytAtom* c = d.atomAt(100, 100);
        d.bond(start, a);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, c);
        d.bond(c, a);
        start->setAtomZ(5);
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 105.0F);
        QCOMPARE(c->getAtomZ(), 105.0F);
    }

    void aWedgeFromAnAtomToItselfEnds()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        d.bond(a, a, {KYTBT_StereoUp}, 45);
        a->setAtomZ(5);
        a->moveBy(3, 3);
        QCOMPARE(a->getAtomZ(), 5.0F);
    }

    void twoWedgesThereAndBackEnd()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(100, 0);
        d.bond(a, b, {KYTBT_StereoUp}, 45);
        d.bond(b, a, {KYTBT_StereoUp}, 45);
        a->setAtomZ(5);
        QCOMPARE(a->getAtomZ(), 5.0F);
        QCOMPARE(b->getAtomZ(), 105.0F);
        for (int i = 0; i < 100; ++i) {
            a->moveBy(1, 0);
            b->moveBy(1, 0);
            a->rotateAbout(50, 50, 0.1F);
        }
        QVERIFY(std::isfinite(a->getAtomZ()));
        QVERIFY(std::isfinite(b->getAtomZ()));
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
        QList<KytAtom*> atoms{d.atomAt(0, 0)};
        for (int i = 1; i < 100000; ++i) {
            atoms.append(d.atomAt(i % 2 ? 1 : 0, 0));
            d.bond(atoms[i - 1], atoms[i], {KYTBT_StereoUp}, 45);
        }
        atoms.first()->setAtomZ(1);
        QCOMPARE(atoms[1000]->getAtomZ(), 1001.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 100000.0F);
        atoms.first()->moveBy(0, 1);
        atoms[50000]->setAtomZ(0);
        QCOMPARE(atoms[50001]->getAtomZ(), 1.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 49999.0F);
    }

    void aLongRingWithAWedgeIsPassedOnce()
    {
        Drawing d;
        QList<KytAtom*> atoms{d.atomAt(0, 0)};
        for (int i = 1; i < 50000; ++i) {
            atoms.append(d.atomAt(i % 1000, i / 1000));
            d.bond(atoms[i - 1], atoms[i], {1});
        }
        d.bond(atoms.last(), atoms.first(), {KYTBT_StereoUp}, 45);
        atoms.first()->setAtomZ(5);
        QCOMPARE(atoms.first()->getAtomZ(), 5.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 5.0F);
        atoms[25000]->setAtomZ(8);
        QCOMPARE(atoms[25000]->getAtomZ(), 8.0F);
        QCOMPARE(atoms.last()->getAtomZ(), 8.0F);
        QCOMPARE(atoms.first()->getAtomZ(), float(8 + std::hypot(atoms.last()->x(), atoms.last()->y())));
        QCOMPARE(atoms[24999]->getAtomZ(), atoms.first()->getAtomZ());
    }

    void aWideStarIsRaisedAtOnce()
    {
        Drawing d;
        KytAtom* centre = d.atomAt(0, 0);
        QList<KytAtom*> leaves;
        for (int i = 0; i < 50000; ++i) {
            leaves.append(d.atomAt(i % 1000, 1 + i / 1000));
            d.bond(centre, leaves.last(), {i % 2});
        }
        centre->setAtomZ(4);
        for (const KytAtom* leaf : leaves)
            QVERIFY(leaf->atomZ == 4);
        centre->moveBy(1, 1);
        leaves.first()->setAtomZ(1);
        QCOMPARE(centre->getAtomZ(), 4.0F);
    }

    void manyDiamondsAreClimbedOnce_data()
    {
        QTest::addColumn<bool>("wedgeLater");
        QTest::newRow("the wedge comes first") << false;
        QTest::newRow("the wedge comes later") << true;
    }

    void manyDiamondsAreClimbedOnce()
    {
        QFETCH(bool, wedgeLater);
        Drawing d;
        QList<KytAtom*> corners{d.atomAt(0, 0)};
        for (int i = 0; i < 60; ++i) {
            KytAtom* one = d.atomAt(i * 20 + 10, 10);
            KytAtom* other = d.atomAt(i * 20 + 10, -10);
            KytAtom* next = d.atomAt(i * 20 + 20, 0);
            d.bond(corners.last(), one, {wedgeLater ? 1 : 2}, 45);
            d.bond(corners.last(), other, {wedgeLater ? 2 : 1}, 45);
            d.bond(one, next);
            d.bond(other, next);
            corners.append(next);
        }
        const auto expected = [&](int i, double start) { return wedgeLater ? start + i * std::hypot(10, 10) : start; };
        corners.first()->setAtomZ(10);
        for (int i = 0; i <= 60; ++i)
            QVERIFY(std::abs(corners[i]->atomZ - expected(i, 10)) < 1e-2);
        corners.first()->setAtomZ(-10);
        for (int i = 0; i <= 60; ++i)
            QVERIFY(std::abs(corners[i]->atomZ - expected(i, -10)) < 1e-2);
        corners.first()->moveBy(0, 0.5);
        corners[20]->moveBy(1, 0);
        for (const KytAtom* corner : corners)
            QVERIFY(std::isfinite(corner->atomZ));
    }
};

QTEST_MAIN(test_DepthWave)
#include "test_DepthWave.moc"
