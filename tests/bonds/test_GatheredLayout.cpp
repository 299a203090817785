#include "bonds/DepthWave.h"
#include "bonds/GatheredLayout.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <memory>
#include <random>

namespace {

constexpr qint64 noWaves = -1; // so few that all depths are settled at the end

/// One of two equal drawings, with what tells whether they are equal still.
struct Graph {
    Drawing drawing;
    QList<KytAtom*> atoms;
    QList<KytBond*> bonds;

    void add(KytAtom* from, KytAtom* to, std::mt19937& random)
    {
        const int kinds[] = {1, 0, 2, 3, 99};
        bonds.append(drawing.join(from, to, {kinds[random() % 5]}, float(1 + random() % 88)));
        if (random() % 4 == 0)
            bonds.last()->addBond(KYTBT_SingleBond, 60);
    }
};

KytAtom* anyAtom(Graph& graph, std::mt19937& random)
{
    graph.atoms.append(
        graph.drawing.atomAt(random() % 1000, random() % 1000, float(random() % 100), random() % 9 == 0));
    return graph.atoms.last();
}

/// Rings, parallel bonds and wedges that disagree, as the seed has it.
std::unique_ptr<Graph> anyGraph(unsigned seed)
{
    std::mt19937 random(seed);
    auto graph = std::make_unique<Graph>();
    const int size = 2 + int(random() % 12);
    for (int i = 0; i < size; ++i)
        anyAtom(*graph, random);
    for (int i = int(random() % (2 * size)); i > 0; --i) {
        const auto from = qsizetype(random() % size);
        const auto to = qsizetype(random() % size);
        if (from != to)
            graph->add(graph->atoms[from], graph->atoms[to], random);
    }
    return graph;
}

/// A tree whose bonds run away from its first atom or towards it, one incoming bond to an atom at most.
std::unique_ptr<Graph> anyTree(unsigned seed, int size)
{
    std::mt19937 random(seed);
    auto graph = std::make_unique<Graph>();
    anyAtom(*graph, random);
    for (int i = 1; i < size; ++i) {
        KytAtom* known = graph->atoms[qsizetype(random() % i)];
        KytAtom* added = anyAtom(*graph, random);
        if (known->inList.isEmpty() && random() % 2)
            graph->add(added, known, random);
        else
            graph->add(known, added, random);
    }
    return graph;
}

void moveAll(const Graph& graph, double dx, double dy)
{
    for (KytAtom* atom : graph.atoms)
        atom->moveBy(dx, dy);
}

void turnAll(const Graph& graph, float angle)
{
    for (KytAtom* atom : graph.atoms)
        if (atom != graph.atoms.first())
            atom->rotateAbout(graph.atoms.first()->x(), graph.atoms.first()->y(), angle);
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

/// Says where two drawings of the same graph differ, or nothing.
QString difference(const Graph& one, const Graph& other)
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

} // namespace

class test_GatheredLayout : public QObject {
    Q_OBJECT

private slots:
    void aBondIsLaidOutWhenTheOutermostEnds()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytBond* bond = d.join(a, d.atomAt(200, 100));
        {
            const GatheredLayout outer;
            {
                const GatheredLayout inner;
                a->moveBy(10, 0);
            }
            QCOMPARE(GatheredLayout::current(), &outer);
            QCOMPARE(bond->bond1->getStartPoint(), QPoint(100, 100));
        }
        QCOMPARE(GatheredLayout::current(), nullptr);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(110, 100));
        QCOMPARE(bond->bondlength, 90.0F);
    }

    void aBondIsLaidOutOnceBothOfItsAtomsHaveMoved()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        KytBond* bond = d.join(a, b);
        const GatheredLayout gathered;
        a->move(110, 100);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(100, 100));
        b->moveBy(0, 10);
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(110, 100));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(200, 110));
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
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        KytBond* bond = d.join(a, b);
        {
            const GatheredLayout gathered;
            for (int i = 0; i < moves; ++i) {
                b->moveBy(0, 10);
                a->moveBy(10, 0);
            }
        }
        QCOMPARE(bond->bond1->getStartPoint(), QPoint(100 + 10 * moves, 100));
        QCOMPARE(bond->bond1->getEndPoint(), QPoint(200, 100 + 10 * moves));
    }

    void depthTravelsAtOnce()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        d.join(a, b, {KYTBT_StereoUp}, 45);
        const GatheredLayout gathered;
        a->moveBy(50, 0);
        QCOMPARE(b->atomZ, 50.0F);
    }

    void aBondDeletedBeforeItIsLaidOutIsForgotten()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        KytAtom* c = d.atomAt(300, 100);
        delete d.join(a, b);
        KytBond* bond = d.join(a, b);
        KytBond* other = d.join(b, c);
        {
            const GatheredLayout gathered;
            b->moveBy(0, 10);
            delete bond;
        }
        QCOMPARE(other->bond1->getStartPoint(), QPoint(200, 110));
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void anAtomDeletedBeforeItsBondsAreLaidOutIsForgotten_data()
    {
        QTest::addColumn<qint64>("waveBonds");
        QTest::newRow("with waves") << qint64{1000};
        QTest::newRow("without") << noWaves;
    }

    void anAtomDeletedBeforeItsBondsAreLaidOutIsForgotten()
    {
        QFETCH(qint64, waveBonds);
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        KytAtom* c = d.atomAt(300, 100);
        d.join(a, b, {KYTBT_StereoUp}, 45);
        KytBond* left = d.join(a, c);
        {
            const GatheredLayout gathered(waveBonds);
            a->moveBy(0, 10);
            delete b;
        }
        QCOMPARE(left->bond1->getStartPoint(), QPoint(100, 110));
        QCOMPARE(drawingFault(*d.canvas()), QString());
    }

    void movingAnyGraphTogetherIsLikeMovingItAtomByAtom()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            const auto together = anyGraph(seed);
            const auto oneByOne = anyGraph(seed);
            for (int step = 0; step < 3; ++step) {
                const GatheredLayout gathered;
                moveAll(*together, 7, -3);
                turnAll(*together, 0.3F);
            }
            for (int step = 0; step < 3; ++step) {
                moveAll(*oneByOne, 7, -3);
                turnAll(*oneByOne, 0.3F);
            }
            QVERIFY2(difference(*together, *oneByOne).isEmpty(),
                     qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(difference(*together, *oneByOne))));
        }
    }

    void settledAtTheEndTreesAreAsWithWaves()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            const auto settled = anyTree(seed, 2 + int(seed % 30));
            const auto waves = anyTree(seed, 2 + int(seed % 30));
            {
                const GatheredLayout gathered(seed % 2 ? noWaves : qint64(seed % 7));
                moveAll(*settled, 7, -3);
                turnAll(*settled, 0.3F);
            }
            moveAll(*waves, 7, -3);
            turnAll(*waves, 0.3F);
            QVERIFY2(difference(*settled, *waves).isEmpty(),
                     qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(difference(*settled, *waves))));
        }
    }

    void settledAtTheEndDepthTravelsOnToAtomsThatStay()
    {
        Drawing d;
        KytAtom* moved = d.atomAt(100, 100);
        KytAtom* lifted = d.atomAt(200, 100);
        KytAtom* behind = d.atomAt(300, 100);
        KytAtom* locked = d.atomAt(400, 100, 0, true);
        d.join(moved, lifted, {KYTBT_StereoUp}, 45);
        d.join(lifted, behind);
        d.join(behind, locked);
        {
            const GatheredLayout gathered(noWaves);
            moved->moveBy(-20, 0);
            QCOMPARE(lifted->atomZ, 0.0F);
        }
        QCOMPARE(lifted->atomZ, 120.0F);
        QCOMPARE(behind->atomZ, 120.0F);
        QCOMPARE(locked->atomZ, 0.0F);
    }

    void settledAtTheEndTheBondThatWasLastDecides()
    {
        Drawing d;
        KytAtom* low = d.atomAt(100, 100, 5);
        KytAtom* high = d.atomAt(100, 200, 50);
        KytAtom* end = d.atomAt(200, 100);
        KytAtom* behind = d.atomAt(300, 100);
        d.join(low, end);
        d.join(high, end);
        d.join(end, behind);
        {
            const GatheredLayout gathered(noWaves);
            high->moveBy(1, 0);
            low->moveBy(1, 0);
        }
        QCOMPARE(end->atomZ, 5.0F);
        QCOMPARE(behind->atomZ, 5.0F);
        {
            const GatheredLayout gathered(noWaves);
            low->moveBy(1, 0);
            high->moveBy(1, 0);
        }
        QCOMPARE(end->atomZ, 50.0F);
        QCOMPARE(behind->atomZ, 50.0F);
    }

    void settledAtTheEndARingIsPassedOnceFromItsFirstBond()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100, 1);
        KytAtom* b = d.atomAt(200, 100, 2);
        KytAtom* c = d.atomAt(200, 200, 3);
        KytAtom* tail = d.atomAt(300, 200, 4);
        KytBond* ab = d.join(a, b, {KYTBT_StereoUp}, 45);
        KytBond* bc = d.join(b, c);
        KytBond* ca = d.join(c, a);
        d.join(c, tail);
        {
            const GatheredLayout gathered(noWaves);
            bc->setBond();
            ca->setBond();
            ab->setBond();
        }
        QCOMPARE(c->atomZ, 2.0F);
        QCOMPARE(tail->atomZ, 2.0F);
        QCOMPARE(a->atomZ, 2.0F);
        QCOMPARE(b->atomZ, 102.0F);
    }

    void settledAtTheEndAnyGraphStaysFinite()
    {
        for (unsigned seed = 0; seed < 500; ++seed) {
            const auto graph = anyGraph(seed);
            for (int step = 0; step < 5; ++step) {
                const GatheredLayout gathered(noWaves);
                moveAll(*graph, 7, -3);
                turnAll(*graph, 0.3F);
            }
            QCOMPARE(drawingFault(*graph->drawing.canvas()), QString());
        }
    }

    void aSecondGatheringStartsAnew()
    {
        Drawing d;
        KytAtom* a = d.atomAt(100, 100);
        KytAtom* b = d.atomAt(200, 100);
        KytBond* bond = d.join(a, b, {KYTBT_StereoUp}, 45);
        for (int times = 1; times <= 3; ++times) {
            {
                const GatheredLayout gathered(noWaves);
                a->moveBy(-10, 0);
            }
            QCOMPARE(b->atomZ, 100.0F + 10 * times);
            QCOMPARE(bond->stereoBond->pa->at(0), QPoint(100 - 10 * times, 100));
        }
    }

    void aLongChainOfWedgesMovesAndTurnsWithItsDepths()
    {
        Graph graph;
        graph.atoms.append(graph.drawing.atomAt(0, 0));
        for (int i = 1; i < 50000; ++i) {
            graph.atoms.append(graph.drawing.atomAt(i % 500, i / 500, float(i)));
            graph.bonds.append(
                graph.drawing.bond(graph.atoms[i - 1], graph.atoms[i], {KYTBT_StereoUp}, i % 500 ? 45 : 0));
        }
        {
            const GatheredLayout gathered;
            moveAll(graph, 3, 4);
        }
        for (int i = 0; i < 50000; ++i)
            QCOMPARE(graph.atoms[i]->atomZ, float(i - i / 500));
        QCOMPARE(graph.bonds[40000]->stereoBond->pa->at(0), QPoint(40000 % 500 + 3, 40000 / 500 + 4));
        {
            const GatheredLayout gathered;
            turnAll(graph, 0.5F);
        }
        QCOMPARE(drawingFault(*graph.drawing.canvas()), QString());
    }

    void aStarOfWedgesInAndOutMovesItsCentre()
    {
        Drawing d;
        KytAtom* centre = d.atomAt(0, 0);
        QList<KytAtom*> leaves;
        for (int i = 0; i < 50000; ++i) {
            leaves.append(d.atomAt(1 + i % 1000, 1 + i / 1000));
            if (i % 2)
                d.bond(centre, leaves.last(), {KYTBT_StereoUp}, 45);
            else
                d.bond(leaves.last(), centre, {KYTBT_StereoDown}, float(1 + i % 80));
        }
        centre->moveBy(-1, 0);
        const float depth = centre->atomZ;
        for (int i = 1; i < 50000; i += 2)
            QCOMPARE(leaves[i]->atomZ, float(depth + std::hypot(leaves[i]->x() + 1, leaves[i]->y())));
    }
};

QTEST_MAIN(test_GatheredLayout)
#include "test_GatheredLayout.moc"
