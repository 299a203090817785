#include "convert/chemistry/Placement.h"
#include "tests/support/Near.h"

#include <QTest>

#include <cmath>

namespace {

Sketch chain(std::initializer_list<QPointF> places)
{
    Sketch sketch;
    sketch.molecules.emplace_back();
    for (const QPointF& place : places)
        sketch.molecules[0].atoms.push_back({"C", place.x(), place.y(), 0, {"1", "2", "3"}});
    return sketch;
}

SketchMolecule wedge(float fromDepth, float toDepth, KytBondType kind)
{
    SketchMolecule molecule = chain({{0, 0}, {30, 0}}).molecules[0];
    molecule.atoms[0].depth = fromDepth;
    molecule.atoms[1].depth = toDepth;
    molecule.bonds.push_back({0, 1, {kind}, 0});
    return molecule;
}

const float rise = static_cast<float>(30 * std::sqrt(3.0));

} // namespace

class test_Placement : public QObject {
    Q_OBJECT

private slots:
    void whatFitsLiesInTheMiddleOfAFreshWindow()
    {
        Sketch sketch = chain({{-1000, 5000}, {-940, 5030}});
        centre(sketch);
        const QRectF extent = extentOf(sketch);
        QCOMPARE(extent.size(), QSizeF(60, 30));
        QVERIFY(shownPart.contains(extent));
        NEAR(extent.center().x(), shownPart.center().x(), 10);
        NEAR(extent.center().y(), shownPart.center().y(), 10);
    }

    void whatDoesNotFitBeginsAtTheEdge()
    {
        Sketch sketch = chain({{-1000, 0}, {1000, 10}});
        centre(sketch);
        QCOMPARE(extentOf(sketch).left(), 7.0);
        QVERIFY(extentOf(sketch).top() > 50 && extentOf(sketch).bottom() < 200);
    }

    void oneSketchKeepsItsPlaceOnADrawing()
    {
        Sketch sketch = chain({{1500, 1600}});
        sketch.placed = true;
        QCOMPARE(extentOf(sideBySide({sketch})).topLeft(), QPointF(1500, 1600));
    }

    void severalSketchesDoNotOverlapAndKeepWithinTheCanvas()
    {
        std::vector<Sketch> sketches;
        for (int i = 0; i < 60; ++i)
            sketches.push_back(chain({{0, 0}, {100.0 + i, 50.0 + i % 7}}));
        const Sketch all = sideBySide(sketches);
        QCOMPARE(all.molecules.size(), sketches.size());
        QVERIFY(QRectF(0, 0, 2000, 2000).contains(extentOf(all)));
        std::vector<QRectF> taken;
        for (const SketchMolecule& molecule : all.molecules) {
            Sketch one;
            one.molecules = {molecule};
            const QRectF extent = extentOf(one);
            for (const QRectF& other : taken)
                QVERIFY(!other.adjusted(-40, -40, 40, 40).intersects(extent));
            taken.push_back(extent);
        }
    }

    void aLongLabelDoesNotReachTheNextSketch()
    {
        std::vector<Sketch> sketches = {chain({{0, 0}}), chain({{0, 0}})};
        sketches[0].molecules[0].atoms[0].symbol = "CO2CH2CH3";
        const Sketch all = sideBySide(sketches);
        QVERIFY(all.molecules[1].atoms[0].x - all.molecules[0].atoms[0].x > 100);
    }

    void ionsStandSideBySideWithRoomForTheirLabels()
    {
        SketchMolecule salt = chain({{0, 0}, {10, 0}, {20, 0}, {10, 0}}).molecules[0];
        salt.bonds.push_back({0, 2, {KYTBT_SingleBond}, 0});
        spreadPieces(salt);
        QCOMPARE(salt.atoms[2].x - salt.atoms[0].x, 20.0);
        QVERIFY(salt.atoms[1].x > salt.atoms[2].x + 40);
        QVERIFY(salt.atoms[3].x > salt.atoms[1].x + 40);
    }

    void aMoleculeOfOnePieceIsNotSpread()
    {
        SketchMolecule molecule = chain({{5, 6}, {35, 6}}).molecules[0];
        molecule.bonds.push_back({0, 1, {KYTBT_SingleBond}, 0});
        spreadPieces(molecule);
        QCOMPARE(QPointF(molecule.atoms[1].x, molecule.atoms[1].y), QPointF(35, 6));
    }

    void twoSmallSketchesStandSideBySideInAFreshWindow()
    {
        const Sketch all = sideBySide({chain({{900, 900}, {960, 940}}), chain({{900, 900}, {960, 940}})});
        QVERIFY(shownPart.contains(extentOf(all)));
        QVERIFY(all.molecules[0].atoms[1].x < all.molecules[1].atoms[0].x);
        QCOMPARE(all.molecules[0].atoms[0].y, all.molecules[1].atoms[0].y);
    }

    void aFlatWedgeLiftsItsEndBySixtyDegrees()
    {
        SketchMolecule up = wedge(10, 10, KYTBT_StereoUp);
        liftWedges(up);
        QCOMPARE(up.bonds[0].angle, 60.0F);
        QCOMPARE(up.atoms[0].depth, 10.0F);
        QCOMPARE(up.atoms[1].depth, 10 + rise);
        SketchMolecule down = wedge(10, 10, KYTBT_StereoDown);
        liftWedges(down);
        QCOMPARE(down.atoms[1].depth, 10 - rise);
    }

    void aSteepWedgeKeepsItsDepthsAndTakesTheirAngle()
    {
        SketchMolecule molecule = wedge(0, 30, KYTBT_StereoUp);
        liftWedges(molecule);
        QCOMPARE(molecule.atoms[1].depth, 30.0F);
        QCOMPARE(molecule.bonds[0].angle, 45.0F);
    }

    void wedgesOneBehindTheOtherAllRiseBySixtyDegrees()
    {
        SketchMolecule molecule = chain({{0, 0}, {30, 0}, {60, 0}}).molecules[0];
        molecule.bonds = {{1, 2, {KYTBT_StereoUp}, 0}, {0, 1, {KYTBT_StereoUp}, 0}};
        liftWedges(molecule);
        QCOMPARE(molecule.atoms[1].depth, rise);
        QCOMPARE(molecule.atoms[2].depth, 2 * rise);
        QCOMPARE(molecule.bonds[0].angle, 60.0F);
    }

    void depthsThatFollowFromWedgesAreFlat_data()
    {
        // A chain of four atoms: the depths, the wedge's bond (-1: none) and its kind.
        QTest::addColumn<QList<float>>("depths");
        QTest::addColumn<int>("wedge");
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("flat");
        const int up = KYTBT_StereoUp;
        const int down = KYTBT_StereoDown;
        QTest::newRow("no depths") << QList<float>{0, 0, 0, 0} << -1 << 0 << true;
        QTest::newRow("one depth") << QList<float>{7, 7, 7, 7} << -1 << 0 << true;
        QTest::newRow("a line that rises") << QList<float>{0, 0, 0, 1} << -1 << 0 << false;
        QTest::newRow("a wedge, all beyond it raised") << QList<float>{0, rise, rise, rise} << 0 << up << true;
        QTest::newRow("a wedge, only its wide end raised") << QList<float>{0, rise, 0, 0} << 0 << up << true;
        QTest::newRow("a hash, only its wide end lowered") << QList<float>{0, 0, -rise, 0} << 1 << down << true;
        QTest::newRow("a hash that rises") << QList<float>{0, 0, rise, 0} << 1 << down << false;
        QTest::newRow("a wedge of another angle, all beyond it raised") << QList<float>{0, 9, 9, 9} << 0 << up << true;
        QTest::newRow("a wedge of another angle, only its wide end raised")
            << QList<float>{0, 9, 0, 0} << 0 << up << false;
        QTest::newRow("a wedge and a line that rises") << QList<float>{0, rise, 0, 5} << 0 << up << false;
        QTest::newRow("rounded by a file") << QList<float>{0, rise + 0.01F, 0, 0} << 0 << up << true;
    }

    void depthsThatFollowFromWedgesAreFlat()
    {
        QFETCH(QList<float>, depths);
        QFETCH(int, wedge);
        QFETCH(int, kind);
        SketchMolecule molecule = chain({{0, 0}, {30, 0}, {60, 0}, {90, 0}}).molecules[0];
        for (int i = 0; i < 4; ++i)
            molecule.atoms[i].depth = depths[i];
        for (int i = 0; i < 3; ++i)
            molecule.bonds.push_back({i, i + 1, {i == wedge ? KytBondType(kind) : KYTBT_SingleBond}, 0});
        QTEST(isFlat(molecule), "flat");
    }

    void eachPieceHasItsOwnDepth()
    {
        SketchMolecule molecule = chain({{0, 0}, {30, 0}, {90, 0}, {120, 0}, {150, 0}}).molecules[0];
        molecule.bonds = {{0, 1, {KYTBT_SingleBond}, 0}, {2, 3, {KYTBT_StereoUp}, 0}, {3, 4, {KYTBT_SingleBond}, 0}};
        molecule.atoms[0].depth = molecule.atoms[1].depth = 100;
        molecule.atoms[3].depth = rise;
        QVERIFY(isFlat(molecule));
        molecule.atoms[1].depth = 101;
        QVERIFY(!isFlat(molecule));
    }

    void anglesFollowFromDepthsThatStay()
    {
        SketchMolecule molecule = wedge(0, rise, KYTBT_StereoUp);
        setWedgeAngles(molecule);
        NEAR(double{molecule.bonds[0].angle}, 60, 0.01);
        molecule = wedge(5, 5, KYTBT_StereoUp);
        setWedgeAngles(molecule);
        QCOMPARE(molecule.bonds[0].angle, 0.0F);
        QCOMPARE(molecule.atoms[1].depth, 5.0F);
    }

    void aRingOfWedgesEnds()
    {
        SketchMolecule molecule = chain({{0, 0}, {30, 0}, {15, 26}}).molecules[0];
        molecule.bonds = {{0, 1, {KYTBT_StereoUp}, 0}, {1, 2, {KYTBT_StereoDown}, 0}, {2, 0, {KYTBT_StereoUp}, 0}};
        liftWedges(molecule);
        for (const SketchBond& bond : molecule.bonds)
            QVERIFY(bond.angle > 0 && bond.angle < 90);
    }
};

QTEST_APPLESS_MAIN(test_Placement)
#include "test_Placement.moc"
