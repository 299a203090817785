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
        KytAtom* a = d.atomAt(100, 0);
        KytAtom* b = d.atomAt(0, 0);
        d.join(b, a, {1, 1});
        KytAtom* c = d.atomAt(50, 0);
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
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(30, 0);
        KytAtom* c = d.atomAt(60, 0);
        d.join(a, b, {1, 0, 1});
        d.join(b, c, {KYTBT_StereoUp});
        QCOMPARE(drawnAtoms(*d.canvas()).size(), 3);
    }

    void aMoleculesAtomsAreTheOnesThatPointToIt()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(30, 0);
        KytAtom* c = d.atomAt(60, 0);
        d.join(c, a);
        QCOMPARE(drawnAtoms(*d.canvas(), c->getMolecule()), (QList<KytAtom*>{a, c}));
        QCOMPARE(drawnAtoms(*d.canvas(), b->getMolecule()), (QList<KytAtom*>{b}));
        QVERIFY(drawnAtoms(*d.canvas(), nullptr).isEmpty());
    }

    void moleculesComeInTheOrderOfTheirFirstAtoms()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(30, 0);
        KytAtom* c = d.atomAt(60, 0);
        KytAtom* e = d.atomAt(90, 0);
        d.join(e, a); // a and e share the molecule of e
        d.join(c, b);
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
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(30, 0);
        KytAtom* c = d.atomAt(60, 0);
        d.join(a, b);
        d.join(a, b);
        d.join(c, b);
        QCOMPARE(bondsAmong({a, b, c}), 3);
    }

    void aBondThatLeavesTheListCountsHalfRoundedDown()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        KytAtom* b = d.atomAt(30, 0);
        KytAtom* c = d.atomAt(60, 0);
        d.bond(a, b);
        QCOMPARE(bondsAmong({a}), 0);
        d.bond(a, c);
        QCOMPARE(bondsAmong({a}), 1);
        QCOMPARE(bondsAmong({a, b}), 1);
    }

    void aBondFromAnAtomToItselfCountsOnce()
    {
        Drawing d;
        KytAtom* a = d.atomAt(0, 0);
        d.bond(a, a);
        QCOMPARE(bondsAmong({a}), 1);
    }

    void manyMoleculesAreCollectedTogether()
    {
        Drawing d;
        QList<KytAtom*> atoms;
        for (int i = 0; i < 20000; ++i)
            atoms.append(d.atomAt(i % 1000, i / 1000));
        for (int i = 0; i < 10000; ++i)
            d.join(atoms[i], atoms[i + 10000]);
        const std::vector<DrawnMolecule> molecules = drawnMolecules(*d.canvas());
        QCOMPARE(int(molecules.size()), 10000);
        for (int i = 0; i < 10000; ++i)
            QCOMPARE(molecules[std::size_t(i)].atoms, (QList<KytAtom*>{atoms[i], atoms[i + 10000]}));
    }
};

QTEST_MAIN(test_DrawnMolecules)
#include "test_DrawnMolecules.moc"
