#include "model/KytMolecule.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <array>
#include <cstdlib>
#include <new>

// Tells whether the object at one address has been freed.
namespace {
const void* watched = nullptr;
int timesFreed = 0;

void watch(const void* object)
{
    watched = object;
    timesFreed = 0;
}

// The address may be used again after it was freed: only the first release counts.
void note(const void* freed)
{
    if (freed && freed == watched && timesFreed == 0)
        timesFreed = 1;
}
} // namespace

void* operator new(std::size_t size)
{
    if (void* memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    note(memory);
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    note(memory);
    std::free(memory);
}

class test_KytMolecule : public QObject {
    Q_OBJECT

private slots:
    void init() { watch(nullptr); }

    void aNewMoleculeIsEmptyAndNameless()
    {
        KytMolecule molecule;
        QCOMPARE(molecule.atomsCount, 0);
        QCOMPARE(molecule.getAtomsCount(), 0);
        QVERIFY(molecule.atoms.isEmpty());
        QVERIFY(molecule.moleculeName.isNull());
        QVERIFY(molecule.authorName.isNull());
        QVERIFY(molecule.getMoleculeName().isNull());
        QVERIFY(molecule.getAuthorName().isNull());
    }

    void namesAndNumberAreKept()
    {
        KytMolecule molecule;
        molecule.setMoleculeName(QStringLiteral("water"));
        molecule.setAuthorName(QStringLiteral("somebody"));
        molecule.setMoleculeNum(7);
        QCOMPARE(molecule.getMoleculeName(), QStringLiteral("water"));
        QCOMPARE(molecule.moleculeName, QStringLiteral("water"));
        QCOMPARE(molecule.getAuthorName(), QStringLiteral("somebody"));
        QCOMPARE(molecule.authorName, QStringLiteral("somebody"));
        QCOMPARE(molecule.getMoleculeNum(), 7);
        QCOMPARE(molecule.moleculeNum, 7);
    }

    void addingPutsAtTheFrontAndCounts()
    {
        Drawing d;
        KytMolecule molecule;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(1, 0);
        molecule.addAtom(a);
        molecule.addAtom(b);
        QCOMPARE(molecule.atomsCount, 2);
        QCOMPARE(molecule.getAtomsCount(), 2);
        QCOMPARE(molecule.atoms.at(0), b);
        QCOMPARE(molecule.atoms.at(1), a);
        QVERIFY(a->getMolecule() != &molecule);
    }

    void takingAtomZeroOfThreeGivesTheLatestAndKeepsTheCounter()
    {
        Drawing d;
        KytMolecule molecule;
        std::array<KytAtom*, 3> atoms{d.atom(0, 0), d.atom(1, 0), d.atom(2, 0)};
        for (KytAtom* atom : atoms)
            molecule.addAtom(atom);
        QCOMPARE(molecule.getAtom(0), atoms[2]);
        QCOMPARE(molecule.getAtomsCount(), 2);
        QCOMPARE(molecule.atomsCount, 3);
    }

    void takingTheSameIndexAgainTakesTheNextAtom()
    {
        Drawing d;
        KytMolecule molecule;
        std::array<KytAtom*, 3> atoms{d.atom(0, 0), d.atom(1, 0), d.atom(2, 0)};
        for (KytAtom* atom : atoms)
            molecule.addAtom(atom);
        QCOMPARE(molecule.getAtom(1), atoms[1]);
        QCOMPARE(molecule.getAtom(1), atoms[0]);
        QVERIFY(!molecule.getAtom(1));
        QCOMPARE(molecule.getAtom(0), atoms[2]);
        QVERIFY(!molecule.getAtom(0));
        QCOMPARE(molecule.getAtomsCount(), 0);
        QCOMPARE(molecule.atomsCount, 3);
    }

    void anIndexOutOfRangeTakesNothing()
    {
        Drawing d;
        KytMolecule molecule;
        molecule.addAtom(d.atom(0, 0));
        QVERIFY(!molecule.getAtom(-1));
        QVERIFY(!molecule.getAtom(1));
        QVERIFY(!molecule.getAtom(1 << 30));
        QCOMPARE(molecule.getAtomsCount(), 1);
        QCOMPARE(molecule.atomsCount, 1);
    }

    void removingTheLastOfOneIsTrueAlsoForAStranger()
    {
        Drawing d;
        KytMolecule molecule;
        KytAtom* member = d.atom(0, 0);
        KytAtom* stranger = d.atom(1, 0);
        molecule.addAtom(member);
        QVERIFY(molecule.removeAtom(stranger));
        QCOMPARE(molecule.atomsCount, 0);
        QCOMPARE(molecule.getAtomsCount(), 1);
        QCOMPARE(molecule.atoms.first(), member);
    }

    void removingIsTrueOnlyWhenTheCounterBecomesZero()
    {
        Drawing d;
        KytMolecule molecule;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(1, 0);
        molecule.addAtom(a);
        molecule.addAtom(b);
        QVERIFY(!molecule.removeAtom(a));
        QCOMPARE(molecule.atomsCount, 1);
        QVERIFY(molecule.removeAtom(b));
        QCOMPARE(molecule.atomsCount, 0);
        QVERIFY(molecule.atoms.isEmpty());
    }

    void theCounterRunsBelowZero()
    {
        Drawing d;
        KytMolecule molecule;
        KytAtom* a = d.atom(0, 0);
        QVERIFY(!molecule.removeAtom(a));
        QCOMPARE(molecule.atomsCount, -1);
        QVERIFY(!molecule.removeAtom(a));
        QCOMPARE(molecule.atomsCount, -2);
        molecule.addAtom(a);
        QCOMPARE(molecule.atomsCount, -1);
        molecule.addAtom(a);
        molecule.addAtom(a);
        QCOMPARE(molecule.atomsCount, 1);
        QVERIFY(molecule.removeAtom(a));
    }

    void aTakenAtomCanStillBeCountedOut()
    {
        Drawing d;
        KytMolecule molecule;
        KytAtom* a = d.atom(0, 0);
        molecule.addAtom(a);
        QCOMPARE(molecule.getAtom(0), a);
        QVERIFY(molecule.removeAtom(a));
        QCOMPARE(molecule.getAtomsCount(), 0);
    }

    void aMoleculeThatGoesDeletesNoAtoms()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        {
            KytMolecule molecule;
            molecule.addAtom(a);
        }
        QCOMPARE(d.atoms().size(), 1);
        QCOMPARE(a->getSymbol(), QStringLiteral("C"));
    }

    void theFirstMoleculeOfAnAtomStaysWhenTheAtomMovesOn()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytMolecule* first = a->getMolecule();
        watch(first);
        a->setMolecule(new KytMolecule);
        QCOMPARE(timesFreed, 0);
        QCOMPARE(first->atomsCount, -1);
        delete first;
    }

    void aMoleculeGoesWithItsLastAtom()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(1, 0);
        auto* shared = new KytMolecule;
        a->setMolecule(shared);
        b->setMolecule(shared);
        QCOMPARE(shared->atomsCount, 2);
        watch(shared);
        delete a;
        QCOMPARE(timesFreed, 0);
        QCOMPARE(shared->atomsCount, 1);
        QCOMPARE(b->getMolecule(), shared);
        delete b;
        QCOMPARE(timesFreed, 1);
    }

    void aMoleculeGoesWhenItsLastAtomJoinsAnother()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        auto* left = new KytMolecule;
        auto* joined = new KytMolecule;
        a->setMolecule(left);
        watch(left);
        a->setMolecule(joined);
        QCOMPARE(timesFreed, 1);
        QCOMPARE(joined->atomsCount, 1);
        QCOMPARE(joined->atoms.first(), a);
    }

    void aMoleculeWhoseCounterIsZeroStaysWhileAnAtomPointsToIt()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(1, 0);
        KytMolecule* first = a->getMolecule();
        first->setMoleculeName(QStringLiteral("of a"));
        b->setMolecule(first);
        QCOMPARE(first->atomsCount, 1);
        watch(first);
        b->setMolecule(new KytMolecule);
        QCOMPARE(timesFreed, 0);
        QCOMPARE(a->getMolecule(), first);
        QCOMPARE(first->atomsCount, 0);
        QCOMPARE(first->getMoleculeName(), QStringLiteral("of a"));
        a->setMolecule(b->getMolecule());
        QCOMPARE(timesFreed, 1);
    }

    void deletingTheSecondAtomOfADrawnBondLeavesTheFirstAMoleculeOfItsOwn()
    {
        Drawing d;
        const auto [a, b] = d.chain<2>();
        KytMolecule* shared = a->getMolecule();
        QCOMPARE(shared->atomsCount, 1);
        shared->setMoleculeName(QStringLiteral("shared"));
        watch(shared);
        delete b;
        QVERIFY(a->getMolecule());
        QVERIFY(a->getMolecule()->getMoleculeName().isNull());
        QCOMPARE(a->getMolecule()->getAtomsCount(), 1);
        QCOMPARE(a->getMolecule()->atoms.first(), a);
        QCOMPARE(timesFreed, 1);
    }

    void deletingTheFirstAtomOfADrawnBondLeavesTheSecondAMoleculeOfItsOwn()
    {
        Drawing d;
        const auto [a, b] = d.chain<2>();
        watch(a->getMolecule());
        a->getMolecule()->setMoleculeName(QStringLiteral("shared"));
        delete a;
        QVERIFY(b->getMolecule()->getMoleculeName().isNull());
        QCOMPARE(b->getMolecule()->getAtomsCount(), 1);
        QCOMPARE(timesFreed, 1);
    }

    void drawnAndDeletedOverAndOverAnAtomKeepsALivingMolecule()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        for (int round = 0; round < 5; ++round) {
            KytAtom* b = d.atom(30, 0);
            if (round % 2)
                d.bond(b, a);
            else
                d.bond(a, b);
            a->getMolecule()->setMoleculeName(QString::number(round));
            QCOMPARE(b->getMolecule()->getMoleculeName(), QString::number(round));
            delete b;
            QVERIFY(a->getMolecule()->getMoleculeName().isNull());
        }
        QCOMPARE(a->getBondCount(), 0);
    }

    void anAtomDeletedAloneCountsItsFirstMoleculeDown()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytMolecule* first = a->getMolecule();
        watch(first);
        delete a;
        QCOMPARE(timesFreed, 0);
        QCOMPARE(first->atomsCount, -1);
        delete first;
    }
};

QTEST_MAIN(test_KytMolecule)
#include "test_KytMolecule.moc"
