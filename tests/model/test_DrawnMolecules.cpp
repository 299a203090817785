#include "model/DrawnMolecules.h"
#include "tests/support/Drawing.h"

#include <QTest>

class test_DrawnMolecules : public QObject {
    Q_OBJECT

private slots:
    void anEmptyCanvasHasNoAtomsAndNoMolecules()
    {
        Drawing d;
        QVERIFY(drawnAtoms(*d.canvas()).isEmpty());
        QVERIFY(drawnMolecules(*d.canvas()).empty());
        KytMolecule molecule;
        QVERIFY(drawnAtoms(*d.canvas(), &molecule).isEmpty());
        QCOMPARE(bondsAmong({}), 0);
    }

    void atomsComeInTheOrderOfTheirMaking()
    {
        Drawing d;
        KytAtom* a = d.atom(100, 0);
        KytAtom* b = d.atom(0, 0);
        d.bond(b, a, {1, 1});
        KytAtom* c = d.atom(50, 0);
        QCOMPARE(drawnAtoms(*d.canvas()), (QList<KytAtom*>{a, b, c}));
    }

    void hiddenAtomsCountToo()
    {
        Drawing d;
        auto* hidden = new KytAtom(d.canvas(), 0, false);
        QVERIFY(!hidden->isVisible());
        QCOMPARE(drawnAtoms(*d.canvas()), (QList<KytAtom*>{hidden}));
        QCOMPARE(int(drawnMolecules(*d.canvas()).size()), 1);
    }

    void linesWedgesAndLabelsAreNoAtoms()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.bond(a, b, {1, 0, 1});
        d.bond(b, c, {KYTBT_StereoUp});
        QCOMPARE(drawnAtoms(*d.canvas()).size(), 3);
    }

    void aMoleculesAtomsAreTheOnesThatPointToIt()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.bond(c, a);
        QCOMPARE(drawnAtoms(*d.canvas(), c->getMolecule()), (QList<KytAtom*>{a, c}));
        QCOMPARE(drawnAtoms(*d.canvas(), b->getMolecule()), (QList<KytAtom*>{b}));
        QVERIFY(drawnAtoms(*d.canvas(), nullptr).isEmpty());
    }

    void moleculesComeInTheOrderOfTheirFirstAtoms()
    {
        Drawing d;
        const auto [a, b, c, e] = d.row<4>();
        d.bond(e, a); // a and e share the molecule of e
        d.bond(c, b);
        const std::vector<DrawnMolecule> molecules = drawnMolecules(*d.canvas());
        QCOMPARE(int(molecules.size()), 2);
        QCOMPARE(molecules[0].molecule, a->getMolecule());
        QCOMPARE(molecules[0].atoms, (QList<KytAtom*>{a, e}));
        QCOMPARE(molecules[1].molecule, b->getMolecule());
        QCOMPARE(molecules[1].atoms, (QList<KytAtom*>{b, c}));
    }

    void bondsAreCountedOnceAlthoughBothEndsKnowThem()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.bond(a, b);
        d.bond(a, b);
        d.bond(c, b);
        QCOMPARE(bondsAmong({a, b, c}), 3);
    }

    void aBondThatLeavesTheListCountsHalfRoundedDown()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.looseBond(a, b);
        QCOMPARE(bondsAmong({a}), 0);
        d.looseBond(a, c);
        QCOMPARE(bondsAmong({a}), 1);
        QCOMPARE(bondsAmong({a, b}), 1);
    }

    void aBondFromAnAtomToItselfCountsOnce()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        d.looseBond(a, a);
        QCOMPARE(bondsAmong({a}), 1);
    }

    void manyMoleculesAreCollectedTogether()
    {
        Drawing d;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 20000; ++i)
            atoms.append(d.atom(i % 1000, i / 1000));
        for (int i = 0; i < 10000; ++i)
            d.bond(atoms[i], atoms[i + 10000]);
        const std::vector<DrawnMolecule> molecules = drawnMolecules(*d.canvas());
        QCOMPARE(int(molecules.size()), 10000);
        for (int i = 0; i < 10000; ++i)
            QCOMPARE(molecules[std::size_t(i)].atoms, (QList<KytAtom*>{atoms[i], atoms[i + 10000]}));
    }
};

QTEST_MAIN(test_DrawnMolecules)
#include "test_DrawnMolecules.moc"
