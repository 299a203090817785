#include "tests/monkey/DrawingModel.h"
#include "tests/support/Near.h"

#include <QtTest>

#include <utility>

/// What the model computes, against values computed by hand.
class test_DrawingModel : public QObject {
    Q_OBJECT

private slots:
    void init() { drawing = DrawingModel(); }

    void aMovedWedgeRaisesItsEndAndWhatFollows()
    {
        chain({KYTBT_StereoDown, KYTBT_SingleBond});
        drawing.moveBy(1, 0, 0);
        NEAR(drawing.atoms.at(1).z, 173.20508, 1e-4); // 100 tan 60 degrees, up for a hatched wedge, too
        QCOMPARE(drawing.atoms.at(2).z, drawing.atoms.at(1).z);
    }

    void aLockedAtomKeepsItsDepth()
    {
        chain({KYTBT_StereoUp, KYTBT_SingleBond});
        drawing.atoms.at(1).locked = true;
        drawing.moveBy(1, 0, 0);
        QCOMPARE(drawing.atoms.at(1).z, 0.0F);
    }

    void anAngleCountsAsRadiansUntilTheNextMove()
    {
        chain({KYTBT_StereoDown});
        drawing.setAngle(100, 45);
        NEAR(drawing.atoms.at(1).z, -161.97752, 1e-4); // -100 tan 45
        drawing.moveBy(1, 0, 0);
        NEAR(drawing.atoms.at(1).z, 100, 1e-4);
    }

    void noDepthGoesAroundAClimbingRing()
    {
        chain({KYTBT_StereoUp, KYTBT_SingleBond});
        bond(2, 0, KYTBT_SingleBond);
        drawing.moveBy(0, 3, 4);
        for (const int atom : {0, 1, 2})
            QCOMPARE(drawing.atoms.at(atom).z, 0.0F);
    }

    void aBondTheOtherWayOpensTheRing()
    {
        chain({KYTBT_StereoUp, KYTBT_SingleBond});
        bond(0, 2, KYTBT_SingleBond);
        drawing.moveBy(1, 0, 0);
        NEAR(drawing.atoms.at(1).z, 173.20508, 1e-4);
        NEAR(drawing.atoms.at(2).z, 173.20508, 1e-4);
        drawing.moveBy(0, 0, 0); // the bond from 0 to 2 is laid out last
        QCOMPARE(drawing.atoms.at(2).z, 0.0F);
    }

    void aMergedAtomHandsOnItsBonds()
    {
        chain({KYTBT_SingleBond, KYTBT_SingleBond});
        drawing.addAtom(7, 0, 100, 5);
        drawing.drop(7, 0);
        QCOMPARE(drawing.atoms.count(0), 0U);
        QCOMPARE(drawing.atoms.at(7).out, std::vector<int>{100});
        QCOMPARE(drawing.atoms.at(2).z, 5.0F);
    }

    void anIncomingBondBringsItsDepthToTheMergedAtom()
    {
        chain({KYTBT_SingleBond, KYTBT_SingleBond});
        drawing.addAtom(7, 0, 100, 5);
        drawing.drop(7, 1);
        QCOMPARE(drawing.atoms.at(7).in, std::vector<int>{100});
        QCOMPARE(drawing.atoms.at(7).out, std::vector<int>{101});
        QCOMPARE(drawing.atoms.at(7).z, 0.0F);
        QCOMPARE(drawing.atoms.at(2).z, 0.0F);
    }

    void aSecondBondToTheSameAtomGoes()
    {
        chain({KYTBT_SingleBond, KYTBT_SingleBond});
        drawing.drop(0, 2);
        QCOMPARE(drawing.bonds.size(), 1U);
        QCOMPARE(drawing.moleculeOf(0), (std::vector<int>{0, 1}));
    }

    void anAtomDroppedOnItsOnlyNeighbourGoes()
    {
        chain({KYTBT_SingleBond});
        drawing.drop(0, 1);
        QCOMPARE(drawing.atoms.size(), 1U);
        QCOMPARE(drawing.bonds.size(), 0U);
    }

    void atomsOfAMoleculeMergeUpToADepthOfOne_data()
    {
        QTest::addColumn<float>("depth");
        QTest::addColumn<int>("atoms");
        QTest::newRow("one") << 1.0F << 2;
        QTest::newRow("more") << 1.001F << 3;
        QTest::newRow("less than minus one") << -1.001F << 3;
    }
    void atomsOfAMoleculeMergeUpToADepthOfOne()
    {
        QFETCH(float, depth);
        chain({KYTBT_SingleBond, KYTBT_SingleBond});
        drawing.setDepth(2, depth);
        drawing.drop(0, 2);
        QTEST(int(drawing.atoms.size()), "atoms");
    }

    void deletingAnAtomSplitsItsMolecule()
    {
        chain({KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond});
        drawing.deleteAtom(1);
        QCOMPARE(drawing.moleculeOf(0), std::vector<int>{0});
        QCOMPARE(drawing.moleculeOf(3), (std::vector<int>{2, 3}));
        QVERIFY(drawing.atoms.at(0).out.empty());
    }

    void theLastLineMovesToTheGap()
    {
        chain({KYTBT_SingleBond});
        drawing.draw(100, KYTBT_SingleBond);
        drawing.draw(100, KYTBT_DashedLine);
        drawing.draw(100, KYTBT_DashedLine); // a fourth line is none
        drawing.draw(100, KYTBT_StereoUp);
        drawing.deleteLine(100, 0);
        QCOMPARE(drawing.bonds.at(100).drawn, (std::vector<KytBondType>{KYTBT_DashedLine, KYTBT_SingleBond}));
        QCOMPARE(drawing.bonds.at(100).kinds[2], KYTBT_DashedLine);
    }

    void whatIsStraightAboveOrToTheLeftJumps()
    {
        drawing.addAtom(0, 0, -5, 0);
        drawing.addAtom(1, -5, 0, 0);
        for (const int atom : {0, 1})
            drawing.rotateAbout(atom, 0, 0, 0);
        NEAR(drawing.atoms.at(0).y, 5, 1e-12);
        NEAR(drawing.atoms.at(1).x, 5, 1e-12);
    }

private:
    /// Atoms 0, 1, 2 ... in a row, 100 pixels apart, and bonds 100, 101 ... from each to the next.
    void chain(const std::vector<KytBondType>& kinds)
    {
        drawing.addAtom(0, 0, 0, 0);
        for (int i = 0; i < int(kinds.size()); ++i) {
            drawing.addAtom(i + 1, 100 * (i + 1), 0, 0);
            bond(i, i + 1, kinds[std::size_t(i)]);
        }
    }

    void bond(int from, int to, KytBondType kind)
    {
        const int number = 100 + int(drawing.bonds.size());
        drawing.addBond(number, from, to);
        drawing.draw(number, kind);
    }

    DrawingModel drawing;
};

QTEST_APPLESS_MAIN(test_DrawingModel)
#include "test_DrawingModel.moc"
