#include "bonds/DirectedRings.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <algorithm>

namespace {

/// A drawing of `count` atoms, joined by the bonds that are told as (from, to).
struct Graph {
    Graph(int count, std::initializer_list<std::pair<int, int>> ends, int wedge = -1)
    {
        for (int i = 0; i < count; ++i)
            atoms.append(d.atom(10 * i, i * i));
        for (const auto& [from, to] : ends)
            bonds.append(
                d.looseBond(atoms[from], atoms[to], {bonds.size() == wedge ? KYTBT_StereoUp : KYTBT_SingleBond}));
    }

    Drawing d;
    QList<KytAtom*> atoms;
    QList<KytBond*> bonds;
};

} // namespace

class test_DirectedRings : public QObject {
    Q_OBJECT

private slots:
    void anAtomInNoRingIsASetOfItsOwn()
    {
        const Graph g(3, {{0, 1}, {1, 2}});
        DirectedRings rings;
        QVERIFY(rings.setOf(g.atoms[0]) > rings.setOf(g.atoms[1]));
        QVERIFY(rings.setOf(g.atoms[1]) > rings.setOf(g.atoms[2]));
        for (const RingSet& set : rings.sets())
            QCOMPARE(set.atoms.size(), std::size_t(1));
    }

    void bondsThatRunAgainstEachOtherAreNoRing()
    {
        const Graph g(4, {{0, 1}, {0, 2}, {1, 3}, {2, 3}}, 0);
        DirectedRings rings;
        rings.setOf(g.atoms[0]);
        QCOMPARE(rings.sets().size(), std::size_t(4));
        for (const KytBond* bond : g.bonds)
            QVERIFY(!rings.climbsAround(bond));
    }

    void ringsThatShareAnAtomAreOneSet()
    {
        const Graph g(6, {{0, 1}, {1, 2}, {2, 1}, {2, 3}, {3, 4}, {4, 2}, {4, 5}});
        DirectedRings rings;
        const int ring = rings.setOf(g.atoms[3]);
        for (const int atom : {1, 2, 4})
            QCOMPARE(rings.setOf(g.atoms[atom]), ring);
        QVERIFY(rings.setOf(g.atoms[0]) > ring);
        QVERIFY(rings.setOf(g.atoms[5]) < ring);
        QCOMPARE(rings.sets()[ring].atoms.size(), std::size_t(4));
        QVERIFY(!rings.sets()[ring].climbs);
    }

    void aWedgeHasAllBondsOfItsRingClimb()
    {
        const Graph g(4, {{0, 1}, {1, 2}, {2, 0}, {2, 3}}, 1);
        DirectedRings rings;
        for (const int bond : {0, 1, 2})
            QVERIFY(rings.climbsAround(g.bonds[bond]));
        QVERIFY(!rings.climbsAround(g.bonds[3]));
    }

    void aWedgeBesideTheRingDoesNot()
    {
        const Graph g(5, {{3, 0}, {0, 1}, {1, 2}, {2, 0}, {2, 4}}, 0);
        DirectedRings rings;
        for (const KytBond* bond : g.bonds)
            QVERIFY(!rings.climbsAround(bond));
    }

    void aWedgeBehindTheRingDoesNot()
    {
        const Graph g(4, {{0, 1}, {1, 2}, {2, 0}, {2, 3}}, 3);
        DirectedRings rings;
        for (const KytBond* bond : g.bonds)
            QVERIFY(!rings.climbsAround(bond));
    }

    void whatCarriesNoDepthOpensTheRing_data()
    {
        QTest::addColumn<int>("what");
        QTest::newRow("a locked atom") << 0;
        QTest::newRow("a bond without lines") << 1;
        QTest::newRow("a wedge without an angle") << 2;
    }

    void whatCarriesNoDepthOpensTheRing()
    {
        QFETCH(int, what);
        const Graph g(3, {{0, 1}, {1, 2}, {2, 0}}, 1);
        if (what == 0)
            g.atoms[0]->locked = true;
        if (what == 1)
            g.bonds[2]->bondCount = 0;
        if (what == 2)
            g.bonds[1]->stereoBond->pangle = 0;
        DirectedRings rings;
        for (const KytBond* bond : g.bonds)
            QVERIFY(!rings.climbsAround(bond));
        if (what == 1)
            g.bonds[2]->bondCount = 1;
    }

    void atomsUpstreamAreExploredLater()
    {
        const Graph g(4, {{0, 1}, {1, 2}, {2, 1}, {3, 0}});
        DirectedRings rings;
        const int ring = rings.setOf(g.atoms[2]);
        QCOMPARE(rings.sets().size(), std::size_t(1));
        QVERIFY(rings.setOf(g.atoms[3]) > rings.setOf(g.atoms[0]));
        QVERIFY(rings.setOf(g.atoms[0]) > ring);
        QCOMPARE(rings.setOf(g.atoms[1]), ring);
    }

    void afterAForgetTheBondsThatAreThereCount()
    {
        const Graph g(3, {{0, 1}, {1, 2}, {2, 0}}, 0);
        DirectedRings rings;
        QVERIFY(rings.climbsAround(g.bonds[1]));
        QCOMPARE(rings.forgottenBonds(), 0);
        delete g.bonds[2];
        rings.forget();
        QCOMPARE(rings.forgottenBonds(), 3);
        QVERIFY(!rings.climbsAround(g.bonds[1]));
    }
};

QTEST_MAIN(test_DirectedRings)
#include "test_DirectedRings.moc"
