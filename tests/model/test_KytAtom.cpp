#include "model/KytAtom.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QTest>

#include <cfloat>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

/// The directed walk as plain recursion: marks only the atoms of the current path.
bool walkFinds(KytAtom* from, KytAtom* target, bool forwards, std::set<KytAtom*>& inside)
{
    if (!target || inside.contains(from))
        return false;
    inside.insert(from);
    bool found = false;
    const QList<KytBond*>& bonds = forwards ? from->outList : from->inList;
    for (KytBond* bond : bonds) {
        KytAtom* next = forwards ? bond->toAtom : bond->fromAtom;
        if (next == target || (next && walkFinds(next, target, forwards, inside))) {
            found = true;
            break;
        }
    }
    inside.erase(from);
    return found;
}

bool walkFinds(KytAtom* from, KytAtom* target, bool forwards)
{
    std::set<KytAtom*> inside;
    return walkFinds(from, target, forwards, inside);
}

/// The spreading of a molecule as plain recursion, on a record of its own.
class MembershipByRecursion {
public:
    void remember(KytAtom* atom)
    {
        home[atom] = atom->molecule;
        record(atom->molecule);
    }

    void record(KytMolecule* molecule)
    {
        counter[molecule] = molecule->atomsCount;
        members[molecule].assign(molecule->atoms.begin(), molecule->atoms.end());
    }

    void give(KytAtom* atom, KytMolecule* molecule)
    {
        KytMolecule* old = home.at(atom);
        if (old == molecule)
            return;
        --counter[old];
        std::vector<KytAtom*>& left = members[old];
        if (const auto place = std::find(left.begin(), left.end(), atom); place != left.end())
            left.erase(place);
        home[atom] = molecule;
        ++counter[molecule];
        members[molecule].insert(members[molecule].begin(), atom);
        for (KytBond* bond : std::as_const(atom->inList))
            give(bond->fromAtom, molecule);
        for (KytBond* bond : std::as_const(atom->outList))
            give(bond->toAtom, molecule);
    }

    std::map<KytAtom*, KytMolecule*> home;
    std::map<KytMolecule*, int> counter;
    std::map<KytMolecule*, std::vector<KytAtom*>> members;
};

std::vector<KytAtom*> membersOf(const KytMolecule* molecule)
{
    return std::vector<KytAtom*>(molecule->atoms.begin(), molecule->atoms.end());
}

/// Puts the centre line's start where no layout would, so that a new layout shows.
void disturb(KytBond* bond)
{
    bond->bond1->setFromPoint(-777, -777);
}

bool isLaidOut(const KytBond* bond)
{
    return bond->bond1->getStartPoint() != QPoint(-777, -777);
}

QList<KytAtom*> randomAtoms(Drawing& d, std::mt19937& random, int count)
{
    QList<KytAtom*> atoms;
    for (int i = 0; i < count; ++i)
        atoms.append(d.atom(random() % 500, random() % 500));
    return atoms;
}

QList<KytBond*> randomBonds(Drawing& d, std::mt19937& random, const QList<KytAtom*>& atoms, int count)
{
    QList<KytBond*> bonds;
    for (int i = 0; i < count; ++i)
        bonds.append(d.looseBond(atoms[random() % atoms.size()], atoms[random() % atoms.size()]));
    return bonds;
}

} // namespace

class test_KytAtom : public QObject {
    Q_OBJECT

private slots:
    void aNewAtomIsACarbon()
    {
        Drawing d;
        KytAtom atom(d.canvas(), 12.5F, true);
        QCOMPARE(atom.getSymbol(), QStringLiteral("C"));
        QCOMPARE(atom.getName(), QStringLiteral("C"));
        QCOMPARE(atom.symbol, QStringLiteral("C"));
        QCOMPARE(atom.name, QStringLiteral("C"));
        QCOMPARE(atom.getAtomZ(), 12.5F);
        QCOMPARE(atom.atomZ, 12.5F);
        QVERIFY(atom.locked);
        QCOMPARE(atom.deleted, 0);
        QCOMPARE(atom.flag, 0);
    }

    void aNewAtomTakesTheGivenSymbolForItsNameToo()
    {
        Drawing d;
        KytAtom atom(d.canvas(), QStringLiteral("Na"), -3, false);
        QCOMPARE(atom.getSymbol(), QStringLiteral("Na"));
        QCOMPARE(atom.getName(), QStringLiteral("Na"));
        QCOMPARE(atom.canvasSymbol->text(), QStringLiteral("Na"));
        QCOMPARE(atom.getAtomZ(), -3.0F);
        QVERIFY(!atom.locked);
    }

    void aNewAtomIsAHiddenBlackDotOfThreePixelsAboveTheBonds()
    {
        Drawing d;
        KytAtom atom(d.canvas(), 0, false);
        QCOMPARE(atom.width(), 3);
        QCOMPARE(atom.height(), 3);
        QCOMPARE(atom.brush().color(), QColor(0, 0, 0));
        QCOMPARE(atom.brush().style(), Qt::SolidPattern);
        QCOMPARE(atom.z(), 2.0);
        QCOMPARE(atom.x(), 0.0);
        QCOMPARE(atom.y(), 0.0);
        QVERIFY(!atom.isVisible());
        QCOMPARE(atom.rtti(), int(QCanvasItem::Rtti_Ellipse));
        QCOMPARE(atom.rtti(), 6);
        QCOMPARE(atom.canvas(), d.canvas());
    }

    void aNewAtomsLabelIsShownBelowTheAtom()
    {
        Drawing d;
        KytAtom atom(d.canvas(), 0, false);
        QVERIFY(atom.canvasSymbol);
        QCOMPARE(atom.canvasSymbol->text(), QStringLiteral("C"));
        QVERIFY(atom.canvasSymbol->isVisible());
        QCOMPARE(atom.canvasSymbol->z(), 1.0);
        QCOMPARE(atom.canvasSymbol->x(), 0.0);
        QCOMPARE(atom.canvasSymbol->y(), 0.0);
        QCOMPARE(atom.canvasSymbol->canvas(), d.canvas());
        QCOMPARE(atom.canvasSymbol->color(), QColor(Qt::black));
    }

    void anAtomComesBeforeItsLabelOnTheCanvas()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        QCOMPARE(d.canvas()->allItems(), (QCanvasItemList{atom, atom->canvasSymbol}));
    }

    void aNewAtomIsRed()
    {
        Drawing d;
        KytAtom atom(d.canvas(), 0, false);
        QCOMPARE(atom._atomColor[0], QStringLiteral("255"));
        QCOMPARE(atom._atomColor[1], QStringLiteral("0"));
        QCOMPARE(atom._atomColor[2], QStringLiteral("0"));
    }

    void aNewAtomHasAMoleculeThatDoesNotCountIt()
    {
        Drawing d;
        KytAtom a(d.canvas(), 0, false);
        KytAtom b(d.canvas(), 0, false);
        QVERIFY(a.getMolecule());
        QCOMPARE(a.getMolecule(), a.molecule);
        QCOMPARE(a.getMolecule()->getAtomsCount(), 0);
        QCOMPARE(a.getMolecule()->atomsCount, 0);
        QVERIFY(a.getMolecule() != b.getMolecule());
    }

    void aNewAtomHasNoBonds()
    {
        Drawing d;
        KytAtom atom(d.canvas(), 0, false);
        QVERIFY(atom.getInList()->isEmpty());
        QVERIFY(atom.getOutList()->isEmpty());
        QCOMPARE(atom.getBondCount(), 0);
        QVERIFY(!atom.getFirstConnectedAtom());
    }

    void bondListsKeepTheOrderAndTakeABondTwice()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(30, 0);
        KytBond* first = d.looseBond(a, b);
        KytBond* second = d.looseBond(a, b);
        a->addOutBond(first);
        QCOMPARE(*a->getOutList(), (QList<KytBond*>{first, second, first}));
        QCOMPARE(a->getBondCount(), 3);
        b->addInBond(second);
        QCOMPARE(*b->getInList(), (QList<KytBond*>{first, second, second}));
        QCOMPARE(b->getBondCount(), 3);
        QCOMPARE(a->getInList(), &a->inList);
        QCOMPARE(a->getOutList(), &a->outList);
    }

    void theBondCountTakesInBothLists()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.looseBond(a, b);
        d.looseBond(b, c);
        QCOMPARE(a->getBondCount(), 1);
        QCOMPARE(b->getBondCount(), 2);
        QCOMPARE(c->getBondCount(), 1);
    }

    void settingTheSymbolChangesTheLabel()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        atom->setSymbol(QStringLiteral("Cl"));
        QCOMPARE(atom->getSymbol(), QStringLiteral("Cl"));
        QCOMPARE(atom->canvasSymbol->text(), QStringLiteral("Cl"));
        QCOMPARE(atom->getName(), QStringLiteral("C"));
        atom->setSymbol(QString());
        QCOMPARE(atom->getSymbol(), QString());
        QCOMPARE(atom->canvasSymbol->text(), QString());
    }

    void settingTheNameLeavesTheLabelAlone()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        atom->setName(QStringLiteral("chlorine"));
        QCOMPARE(atom->getName(), QStringLiteral("chlorine"));
        QCOMPARE(atom->getSymbol(), QStringLiteral("C"));
        QCOMPARE(atom->canvasSymbol->text(), QStringLiteral("C"));
    }

    void hoveringMakesTheAtomGreenAndLarger()
    {
        Drawing d;
        KytAtom* atom = d.atom(40, 50);
        atom->_atomColor[0] = QStringLiteral("1");
        for (int round = 0; round < 2; ++round) {
            atom->startHover();
            atom->startHover();
            QCOMPARE(atom->brush().color(), QColor(0, 255, 0));
            QCOMPARE(atom->brush().style(), Qt::SolidPattern);
            QCOMPARE(atom->width(), 6);
            QCOMPARE(atom->height(), 6);
            atom->stopHover();
            QCOMPARE(atom->brush().color(), QColor(0, 0, 0));
            QCOMPARE(atom->brush().style(), Qt::SolidPattern);
            QCOMPARE(atom->width(), 3);
            QCOMPARE(atom->height(), 3);
        }
        QCOMPARE(atom->x(), 40.0);
        QCOMPARE(atom->y(), 50.0);
    }

    void leavingAnAtomThatWasNotHoveredKeepsItAsItIs()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        atom->stopHover();
        QCOMPARE(atom->brush().color(), QColor(0, 0, 0));
        QCOMPARE(atom->width(), 3);
        QCOMPARE(atom->height(), 3);
    }

    void theFirstConnectedAtomIsTheOneOfTheFirstIncomingBond()
    {
        Drawing d;
        const auto [a, b, c, e] = d.row<4>();
        d.looseBond(a, b);
        QCOMPARE(a->getFirstConnectedAtom(), b);
        d.looseBond(a, e);
        QCOMPARE(a->getFirstConnectedAtom(), b);
        d.looseBond(c, a);
        QCOMPARE(a->getFirstConnectedAtom(), c);
        d.looseBond(e, a);
        QCOMPARE(a->getFirstConnectedAtom(), c);
        QCOMPARE(b->getFirstConnectedAtom(), a);
    }

    void directConnectionsAreFoundInBothDirections()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        KytBond* ab = d.looseBond(a, b);
        KytBond* bc = d.looseBond(b, c);
        QCOMPARE(a->isConnected(b), ab);
        QCOMPARE(b->isConnected(a), ab);
        QCOMPARE(b->isConnected(c), bc);
        QVERIFY(!a->isConnected(c));
        QVERIFY(!c->isConnected(a));
        QVERIFY(!a->isConnected(a));
        QVERIFY(!a->isConnected(nullptr));
    }

    void amongSeveralDirectBondsAnIncomingOneIsFoundFirst()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytBond* out1 = d.looseBond(a, b);
        KytBond* out2 = d.looseBond(a, b);
        QCOMPARE(a->isConnected(b), out1);
        QCOMPARE(b->isConnected(a), out1);
        KytBond* back = d.looseBond(b, a);
        QCOMPARE(a->isConnected(b), back);
        QCOMPARE(b->isConnected(a), out1);
        QVERIFY(out1 != out2);
    }

    void anAtomBondedToItselfIsConnectedToItself()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytBond* loop = d.looseBond(a, a);
        QCOMPARE(a->isConnected(a), loop);
        QVERIFY(a->isInListConnected(a));
        QVERIFY(a->isOutListConnected(a));
        QCOMPARE(a->getBondCount(), 2);
    }

    void nothingIsConnectedToNull()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        QVERIFY(!a->isAnyhowConnected(nullptr));
        QVERIFY(!a->isInListConnected(nullptr));
        QVERIFY(!a->isOutListConnected(nullptr));
        d.looseBond(a, b);
        d.looseBond(b, a);
        QVERIFY(!a->isAnyhowConnected(nullptr));
        QVERIFY(!a->isInListConnected(nullptr));
        QVERIFY(!a->isOutListConnected(nullptr));
    }

    void aChainIsConnectedAlongItsDirection()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.looseBond(a, b);
        d.looseBond(b, c);
        QVERIFY(a->isOutListConnected(c));
        QVERIFY(!a->isInListConnected(c));
        QVERIFY(c->isInListConnected(a));
        QVERIFY(!c->isOutListConnected(a));
        QVERIFY(a->isAnyhowConnected(c));
        QVERIFY(c->isAnyhowConnected(a));
        QVERIFY(!a->isAnyhowConnected(a));
    }

    void aPathThatChangesDirectionDoesNotConnect()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.looseBond(a, b);
        d.looseBond(c, b);
        QVERIFY(!a->isAnyhowConnected(c));
        QVERIFY(!c->isAnyhowConnected(a));
        KytAtom* e = d.atom(90, 0);
        KytAtom* f = d.atom(120, 0);
        d.looseBond(c, e);
        d.looseBond(c, f);
        QVERIFY(!e->isAnyhowConnected(f));
        QVERIFY(!e->isAnyhowConnected(b));
    }

    void aRingEndsTheWalkForAnAtomOutsideIt()
    {
        Drawing d;
        const auto [a, b, c, outside] = d.row<4>();
        d.looseBond(a, b);
        d.looseBond(b, c);
        d.looseBond(c, a);
        QVERIFY(!a->isOutListConnected(outside));
        QVERIFY(!a->isInListConnected(outside));
        QVERIFY(!a->isAnyhowConnected(outside));
        for (KytAtom* atom : {a, b, c}) {
            QVERIFY(a->isOutListConnected(atom));
            QVERIFY(a->isInListConnected(atom));
            QCOMPARE(atom->flag, 0);
        }
    }

    void walksPassOverBondsWithoutAnEnd()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        KytBond* open = d.looseBond(a, b);
        d.looseBond(a, c);
        open->setToAtom(nullptr);
        QVERIFY(!a->isOutListConnected(b));
        QVERIFY(a->isOutListConnected(c));
        QVERIFY(!a->isOutListConnected(nullptr));
        open->setToAtom(b);
        open->setFromAtom(nullptr);
        QVERIFY(!b->isInListConnected(a));
        QVERIFY(!b->isConnected(a));
        open->setFromAtom(a);
        QVERIFY(b->isInListConnected(a));
    }

    void aWalkDoesNotEnterAnAtomThatIsMarked()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        d.looseBond(a, b);
        d.looseBond(b, c);
        b->flag = 1;
        QVERIFY(!a->isOutListConnected(c));
        QVERIFY(!c->isInListConnected(a));
        QVERIFY(!b->isOutListConnected(c));
        QVERIFY(a->isOutListConnected(b)); // reached, not entered
        QCOMPARE(b->flag, 1);
        QCOMPARE(a->flag, 0);
        b->flag = 0;
        QVERIFY(a->isOutListConnected(c));
    }

    void walksAgreeWithPlainRecursionOnRandomGraphs()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const QList<KytAtom*> atoms = randomAtoms(d, random, 2 + int(random() % 7));
            randomBonds(d, random, atoms, int(random() % 14));
            for (KytAtom* from : atoms)
                for (KytAtom* to : atoms) {
                    const bool out = walkFinds(from, to, true);
                    const bool in = walkFinds(from, to, false);
                    QVERIFY2(from->isOutListConnected(to) == out, qPrintable(QString::number(seed)));
                    QVERIFY2(from->isInListConnected(to) == in, qPrintable(QString::number(seed)));
                    QVERIFY2(from->isAnyhowConnected(to) == (in || out), qPrintable(QString::number(seed)));
                }
            for (KytAtom* atom : atoms)
                QCOMPARE(atom->flag, 0);
        }
    }

    void walksThroughManyDiamondsEnd()
    {
        Drawing d;
        QList<KytAtom*> corners{d.atom(0, 0)};
        for (int i = 0; i < 200; ++i) {
            KytAtom* up = d.atom(i * 8 + 4, 4);
            KytAtom* down = d.atom(i * 8 + 4, -4);
            KytAtom* corner = d.atom(i * 8 + 8, 0);
            d.looseBond(corners.last(), up);
            d.looseBond(corners.last(), down);
            d.looseBond(up, corner);
            d.looseBond(down, corner);
            corners.append(corner);
        }
        KytAtom* outside = d.atom(0, 100);
        QVERIFY(!corners.first()->isOutListConnected(outside));
        QVERIFY(!corners.last()->isInListConnected(outside));
        QVERIFY(!corners[100]->isAnyhowConnected(outside));
        QVERIFY(corners.first()->isOutListConnected(corners.last()));
        QVERIFY(corners.last()->isAnyhowConnected(corners.first()));
        QVERIFY(!corners.last()->isOutListConnected(corners.first()));
    }

    void theFirstMoleculeGivenDrivesTheOldCounterBelowZero()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        KytMolecule* first = atom->getMolecule();
        auto* molecule = new KytMolecule;
        atom->setMolecule(molecule);
        QCOMPARE(first->atomsCount, -1);
        QCOMPARE(atom->getMolecule(), molecule);
        QCOMPARE(molecule->atomsCount, 1);
        QCOMPARE(membersOf(molecule), (std::vector{atom}));
        delete first;
    }

    void givingTheSameMoleculeAgainDoesNothing()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        KytMolecule* own = atom->getMolecule();
        atom->setMolecule(own);
        QCOMPARE(own->atomsCount, 0);
        QCOMPARE(own->getAtomsCount(), 0);
        auto* molecule = new KytMolecule;
        atom->setMolecule(molecule);
        atom->setMolecule(molecule);
        QCOMPARE(molecule->atomsCount, 1);
        QCOMPARE(molecule->getAtomsCount(), 1);
        delete own;
    }

    void noMoleculeIsNotTaken()
    {
        Drawing d;
        KytAtom* atom = d.atom(0, 0);
        KytMolecule* own = atom->getMolecule();
        atom->setMolecule(nullptr);
        QCOMPARE(atom->getMolecule(), own);
        QCOMPARE(own->atomsCount, 0);
    }

    void aMoleculeSpreadsAlongBondsInBothDirections()
    {
        Drawing d;
        const auto [a, b, c, e, apart] = d.row<5>();
        d.looseBond(a, b);
        d.looseBond(c, b);
        d.looseBond(c, e);
        auto* molecule = new KytMolecule;
        b->setMolecule(molecule);
        for (KytAtom* atom : {a, b, c, e})
            QCOMPARE(atom->getMolecule(), molecule);
        QVERIFY(apart->getMolecule() != molecule);
        QCOMPARE(molecule->atomsCount, 4);
        QCOMPARE(membersOf(molecule), (std::vector{e, c, a, b}));
    }

    void spreadingStopsAtAtomsThatHaveTheMoleculeAlready()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        auto* molecule = new KytMolecule;
        b->setMolecule(molecule);
        d.looseBond(a, b);
        d.looseBond(b, c);
        KytMolecule* ofC = c->getMolecule();
        b->setMolecule(molecule);
        QVERIFY(a->getMolecule() != molecule);
        a->setMolecule(molecule);
        QCOMPARE(c->getMolecule(), ofC);
        QCOMPARE(molecule->atomsCount, 2);
    }

    void spreadingTheOwnMoleculeGoesBeyondAtomsThatHaveIt()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        auto* molecule = new KytMolecule;
        a->setMolecule(molecule);
        b->setMolecule(molecule);
        d.looseBond(a, b);
        d.looseBond(c, b);
        a->spreadMolecule();
        QCOMPARE(c->getMolecule(), molecule);
        QCOMPARE(molecule->atomsCount, 3);
        a->spreadMolecule();
        QCOMPARE(molecule->atomsCount, 3);
        QCOMPARE(molecule->getAtomsCount(), 3);
    }

    void spreadingOnALoneAtomKeepsItsMolecule()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytMolecule* own = a->getMolecule();
        a->spreadMolecule();
        QCOMPARE(a->getMolecule(), own);
        QCOMPARE(own->atomsCount, 0);
    }

    void membershipAgreesWithPlainRecursionOnRandomGraphs()
    {
        for (unsigned seed = 0; seed < 300; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            const QList<KytAtom*> atoms = randomAtoms(d, random, 2 + int(random() % 8));
            for (int i = 1; i < atoms.size(); ++i)
                if (random() % 2)
                    atoms[i]->setMolecule(atoms[random() % i]->getMolecule());
            randomBonds(d, random, atoms, int(random() % 12));
            for (int step = 0; step < 4; ++step) {
                MembershipByRecursion expected;
                for (KytAtom* atom : atoms)
                    expected.remember(atom);
                KytMolecule* given = atoms[random() % atoms.size()]->getMolecule();
                if (random() % 2) {
                    given = new KytMolecule;
                    expected.record(given);
                }
                KytAtom* start = atoms[random() % atoms.size()];
                expected.give(start, given);
                start->setMolecule(given);
                for (KytAtom* atom : atoms) {
                    QVERIFY2(atom->molecule == expected.home.at(atom), qPrintable(QString::number(seed)));
                    QCOMPARE(atom->molecule->atomsCount, expected.counter.at(atom->molecule));
                    QVERIFY2(membersOf(atom->molecule) == expected.members.at(atom->molecule),
                             qPrintable(QString::number(seed)));
                    QCOMPARE(atom->flag, 0);
                }
            }
        }
    }

    void theSameDepthAgainDoesNothing()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 5);
        KytAtom* b = d.atom(30, 0, 1);
        KytBond* bond = d.looseBond(a, b);
        disturb(bond);
        a->setAtomZ(5);
        QVERIFY(!isLaidOut(bond));
        QCOMPARE(b->getAtomZ(), 1.0F);
    }

    void aNewDepthRefreshesOnlyTheOutgoingBonds()
    {
        Drawing d;
        KytAtom* before = d.atom(0, 0, 1);
        KytAtom* a = d.atom(30, 0, 1);
        KytAtom* after = d.atom(60, 0, 1);
        KytBond* in = d.looseBond(before, a);
        KytBond* out = d.looseBond(a, after);
        disturb(in);
        disturb(out);
        a->setAtomZ(9);
        QVERIFY(!isLaidOut(in));
        QVERIFY(isLaidOut(out));
        QCOMPARE(before->getAtomZ(), 1.0F);
        QCOMPARE(a->getAtomZ(), 9.0F);
        QCOMPARE(after->getAtomZ(), 9.0F);
    }

    void minusZeroIsTheSameDepthAsZero()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 0);
        KytAtom* b = d.atom(30, 0, 3);
        d.looseBond(a, b);
        a->setAtomZ(-0.0F);
        QVERIFY(!std::signbit(a->getAtomZ()));
        QCOMPARE(b->getAtomZ(), 3.0F);
    }

    void aLockedAtomTakesADepthThatIsSetByHand()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 0, true);
        a->setAtomZ(4);
        QCOMPARE(a->getAtomZ(), 4.0F);
    }

    void noNumberIsNotADepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 2);
        KytAtom* b = d.atom(30, 0, 3);
        d.looseBond(a, b);
        a->setAtomZ(std::numeric_limits<float>::quiet_NaN());
        QCOMPARE(a->getAtomZ(), 2.0F);
        QCOMPARE(b->getAtomZ(), 3.0F);
    }

    void anInfiniteDepthBecomesTheEndOfTheRange()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 2);
        KytAtom* b = d.atom(30, 0, 3);
        d.looseBond(a, b);
        a->setAtomZ(std::numeric_limits<float>::infinity());
        EXACTLY(a->getAtomZ(), FLT_MAX);
        EXACTLY(b->getAtomZ(), FLT_MAX);
        a->setAtomZ(-std::numeric_limits<float>::infinity());
        EXACTLY(a->getAtomZ(), -FLT_MAX);
        EXACTLY(b->getAtomZ(), -FLT_MAX);
    }
};

QTEST_MAIN(test_KytAtom)
#include "test_KytAtom.moc"
