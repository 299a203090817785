#include "model/MoleculeMotion.h"
#include "tests/support/Drawing.h"

#include <QTest>

namespace {

/// Two molecules whose atoms alternate in the order of creation: a chain with wedges, and lone atoms.
struct Molecules {
    Molecules()
    {
        chain.append(d.atom(0, 0));
        while (chain.size() < 100) {
            chain.append(d.atom(10.0 * double(chain.size()), 0));
            others.append(d.atom(10.0 * double(chain.size()), 50));
            const int kind = chain.size() % 3 == 0 ? KYTBT_StereoUp : KYTBT_SingleBond;
            d.bond(chain[chain.size() - 2], chain.last(), {kind});
        }
    }

    Drawing d;
    QList<KytAtom*> chain;
    QList<KytAtom*> others;
};

} // namespace

class test_MoleculeMotion : public QObject {
    Q_OBJECT

private slots:
    void eachAtomOfTheMoleculeMovesOnce()
    {
        const Molecules m;
        moveMolecule(*m.d.canvas(), m.chain.first()->getMolecule(), 1, 2);
        for (qsizetype i = 0; i < m.chain.size(); ++i)
            QCOMPARE(QPointF(m.chain[i]->x(), m.chain[i]->y()), QPointF(10.0 * double(i) + 1, 2));
        for (const KytAtom* other : m.others)
            QCOMPARE(other->y(), 50.0);
        moveMolecule(*m.d.canvas(), m.others.last()->getMolecule(), 0, 1);
        QCOMPARE(m.others.last()->y(), 51.0);
        QCOMPARE(m.others.first()->y(), 50.0);
    }

    void noMoleculeMovesNothing()
    {
        const Molecules m;
        moveMolecule(*m.d.canvas(), nullptr, 1, 2);
        QCOMPARE(m.chain.last()->y(), 0.0);
        QCOMPARE(m.others.last()->y(), 50.0);
    }

    void depthsAndLinesAreThoseOfAtomsMovedOneByOne()
    {
        const Molecules together;
        const Molecules oneByOne;
        moveMolecule(*together.d.canvas(), together.chain.first()->getMolecule(), 7, -3);
        rotateMolecule(*together.d.canvas(), *together.chain[40], 0.25F);
        for (KytAtom* atom : oneByOne.chain)
            atom->moveBy(7, -3);
        for (KytAtom* atom : oneByOne.chain)
            if (atom != oneByOne.chain[40])
                atom->rotateAbout(oneByOne.chain[40]->x(), oneByOne.chain[40]->y(), 0.25F);
        for (qsizetype i = 0; i < together.chain.size(); ++i) {
            const KytAtom* atom = together.chain[i];
            const KytAtom* same = oneByOne.chain[i];
            QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(same->x(), same->y()));
            QCOMPARE(atom->atomZ, same->atomZ);
            for (qsizetype j = 0; j < atom->outList.size(); ++j) {
                const KytBond* bond = atom->outList[j];
                const KytBond* sameBond = same->outList[j];
                QCOMPARE(bond->bondlength, sameBond->bondlength);
                if (bond->stereoBond)
                    QCOMPARE(*bond->stereoBond->pa, *sameBond->stereoBond->pa);
                else
                    QCOMPARE(bond->bond1->getEndPoint(), sameBond->bond1->getEndPoint());
            }
        }
    }

    void thePivotStays()
    {
        const Molecules m;
        const KytAtom* pivot = m.chain[10];
        rotateMolecule(*m.d.canvas(), *pivot, 1);
        QCOMPARE(QPointF(pivot->x(), pivot->y()), QPointF(100, 0));
        QCOMPARE(m.others.first()->y(), 50.0);
        QVERIFY(m.chain[11]->y() > 0);
    }
};

QTEST_MAIN(test_MoleculeMotion)
#include "test_MoleculeMotion.moc"
