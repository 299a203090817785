#include "i3d/SceneGeometry.h"
#include "tests/support/Near.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double tolerance = 1e-9;

bool isNear(double a, double b)
{
    return std::fabs(a - b) <= tolerance * std::max(1.0, std::fabs(b));
}

/// Where the stick ends: its length along +z, turned about y and then about x.
ScenePoint farEnd(const SceneStick& stick)
{
    const double tilt = stick.tilt * std::numbers::pi / 180;
    const double turn = stick.planeAngle * std::numbers::pi / 180;
    const double inPlane = stick.length * std::cos(tilt);
    return {stick.origin.x + stick.length * std::sin(tilt), stick.origin.y - inPlane * std::sin(turn),
            stick.origin.z + inPlane * std::cos(turn)};
}

} // namespace

class test_SceneGeometry : public QObject {
    Q_OBJECT

private slots:
    void theCanvasPointAt1000IsTheOriginOfTheScene()
    {
        const ScenePoint p = scenePoint({1000, 1000}, 0);
        QCOMPARE(p.x, 0.0);
        QCOMPARE(p.y, 0.0);
        QCOMPARE(p.z, 0.0);
    }

    void aStickRunsAlongItsThirdAxis()
    {
        const SceneStick stick = *lineStick({500, 500}, {560, 420}, -10, 65);
        const StickAxes axes = axesOf(stick);
        const auto product = [](const ScenePoint& a, const ScenePoint& b) { return a.x * b.x + a.y * b.y + a.z * b.z; };
        for (const ScenePoint& axis : {axes.right, axes.up, axes.forward})
            QVERIFY(isNear(product(axis, axis), 1));
        QVERIFY(std::fabs(product(axes.right, axes.up)) < tolerance);
        QVERIFY(std::fabs(product(axes.right, axes.forward)) < tolerance);
        QVERIFY(std::fabs(product(axes.up, axes.forward)) < tolerance);

        const ScenePoint end = pointAlong(stick, stick.length);
        const ScenePoint expected = scenePoint({560, 420}, 65);
        QVERIFY(isNear(end.x, expected.x));
        QVERIFY(isNear(end.y, expected.y));
        QVERIFY(isNear(end.z, expected.z));
        const ScenePoint start = pointAlong(stick, 0);
        QVERIFY(isNear(start.x, stick.origin.x) && isNear(start.y, stick.origin.y) && isNear(start.z, stick.origin.z));
    }

    void depthIsXAndCanvasUpIsZ()
    {
        const ScenePoint p = scenePoint({1100.5, 750.25}, -30.75);
        QCOMPARE(p.x, -30.75);
        QCOMPARE(p.y, 100.5);
        QCOMPARE(p.z, 249.75);
    }

    void aLinePointsAsOnTheCanvas_data()
    {
        QTest::addColumn<QPoint>("end");
        QTest::addColumn<double>("planeAngle");
        QTest::addColumn<double>("length");

        QTest::newRow("right") << QPoint(600, 500) << -90.0 << 100.0;
        QTest::newRow("left") << QPoint(400, 500) << 90.0 << 100.0;
        QTest::newRow("up") << QPoint(500, 400) << 0.0 << 100.0;
        QTest::newRow("down") << QPoint(500, 600) << -180.0 << 100.0;
        QTest::newRow("up and right") << QPoint(600, 400) << -45.0 << 100 * std::numbers::sqrt2;
        QTest::newRow("up and left") << QPoint(400, 400) << 45.0 << 100 * std::numbers::sqrt2;
        QTest::newRow("down and right") << QPoint(600, 600) << -135.0 << 100 * std::numbers::sqrt2;
        QTest::newRow("down and left") << QPoint(400, 600) << 135.0 << 100 * std::numbers::sqrt2;
        QTest::newRow("three right, four up") << QPoint(503, 496) << 53.13010235415598 - 90 << 5.0;
    }

    void aLinePointsAsOnTheCanvas()
    {
        QFETCH(QPoint, end);
        QFETCH(double, planeAngle);
        QFETCH(double, length);

        const auto stick = lineStick({500, 500}, end, 7, 7);
        QVERIFY(stick);
        QCOMPARE(stick->origin.x, 7.0);
        QCOMPARE(stick->origin.y, -500.0);
        QCOMPARE(stick->origin.z, 500.0);
        QVERIFY(isNear(stick->planeAngle, planeAngle));
        QCOMPARE(stick->tilt, 0.0);
        QVERIFY(isNear(stick->length, length));
    }

    void aLineEndsWhereItsEndAtomIs_data()
    {
        QTest::addColumn<QPoint>("end");
        QTest::addColumn<double>("endDepth");

        for (int angle = 0; angle < 360; angle += 15)
            for (const double depth : {-173.0, 12.5, 60.0, 400.0}) {
                const double radians = angle * std::numbers::pi / 180;
                QTest::addRow("%d degrees to depth %g", angle, depth)
                    << QPoint(qRound(300 + 80 * std::cos(radians)), qRound(900 - 80 * std::sin(radians))) << depth;
            }
    }

    void aLineEndsWhereItsEndAtomIs()
    {
        QFETCH(QPoint, end);
        QFETCH(double, endDepth);

        const auto stick = lineStick({300, 900}, end, 12.5, endDepth);
        QVERIFY(stick);
        const ScenePoint reached = farEnd(*stick);
        QVERIFY(isNear(reached.x, endDepth));
        QVERIFY(isNear(reached.y, end.x() - 1000));
        QVERIFY(isNear(reached.z, 1000 - end.y()));
    }

    void aHorizontalLineOf100()
    {
        const auto stick = lineStick({1000, 1000}, {1100, 1000}, 0, 0);
        QVERIFY(stick);
        QCOMPARE(stick->origin.x, 0.0);
        QCOMPARE(stick->origin.y, 0.0);
        QCOMPARE(stick->origin.z, 0.0);
        QCOMPARE(stick->planeAngle, -90.0);
        QCOMPARE(stick->tilt, 0.0);
        QCOMPARE(stick->length, 100.0);
    }

    void aLineClimbs50OnItsWay()
    {
        const auto stick = lineStick({1000, 1000}, {1100, 1000}, 10, 60);
        QVERIFY(stick);
        QVERIFY(isNear(stick->tilt, 26.56505117707799));
        QVERIFY(isNear(stick->length, 111.80339887498948));
    }

    void aLineSinks50OnItsWay()
    {
        const auto stick = lineStick({1000, 1000}, {1100, 1000}, 60, 10);
        QVERIFY(stick);
        QVERIFY(isNear(stick->tilt, -26.56505117707799));
        QVERIFY(isNear(stick->length, 111.80339887498948));
    }

    void aSideLineStartsAtTheDepthOfTheStartAtom()
    {
        const auto stick = lineStick({1000, 994}, {1100, 994}, 25, 25);
        QVERIFY(stick);
        QCOMPARE(stick->origin.x, 25.0);
        QCOMPARE(stick->origin.y, 0.0);
        QCOMPARE(stick->origin.z, 6.0);
    }

    void aLineOfLengthZeroIsNoStick()
    {
        QVERIFY(!lineStick({1000, 1000}, {1000, 1000}, 0, 0));
        QVERIFY(!lineStick({1000, 1000}, {1000, 1000}, 0, 50));
        QVERIFY(!lineStick({1000, 1000}, {1000, 1000}, 50, 0));
    }

    void aLineAcrossTheWholeRangeOfInt()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        const auto stick = lineStick({lowest, 0}, {highest, 0}, 0, 0);
        QVERIFY(stick);
        QCOMPARE(stick->planeAngle, -90.0);
        QCOMPARE(stick->length, 4294967295.0);

        const auto downward = lineStick({0, lowest}, {0, highest}, 0, 0);
        QVERIFY(downward);
        QCOMPARE(downward->planeAngle, -180.0);
        QCOMPARE(downward->length, 4294967295.0);
    }

    void aSteepLineStillReachesItsEnd()
    {
        const double largest = std::numeric_limits<float>::max();
        const auto stick = lineStick({0, 0}, {1, 0}, -largest, largest);
        QVERIFY(stick);
        QCOMPARE(stick->tilt, 90.0);
        QCOMPARE(stick->length, 2 * largest);
    }

    void aWedgePointsAsOnTheCanvas_data() { aLinePointsAsOnTheCanvas_data(); }

    void aWedgePointsAsOnTheCanvas()
    {
        QFETCH(QPoint, end);
        QFETCH(double, planeAngle);
        QFETCH(double, length);

        for (const double tilt : {30.0, -30.0}) {
            const auto stick = wedgeStick({500, 500}, end, 0, tilt);
            QVERIFY(stick);
            QVERIFY(isNear(stick->planeAngle, planeAngle));
            QCOMPARE(stick->tilt, tilt);
            const ScenePoint reached = farEnd(*stick);
            QVERIFY(isNear(reached.x, std::copysign(length / std::numbers::sqrt3, tilt)));
            QVERIFY(isNear(reached.y, end.x() - 1000));
            QVERIFY(isNear(reached.z, 1000 - end.y()));
        }
    }

    void aWedgeOf60DegreesIsTwiceAsLongAsItsShadow()
    {
        const auto stick = wedgeStick({1000, 1000}, {1100, 1000}, 0, 60);
        QVERIFY(stick);
        QVERIFY(isNear(stick->length, 200));
        QCOMPARE(stick->tilt, 60.0);
        QVERIFY(isNear(farEnd(*stick).x, 173.20508075688772));
    }

    void aWedgeThatPointsDownIsAsLong()
    {
        const auto stick = wedgeStick({1000, 1000}, {1100, 1000}, 0, -60);
        QVERIFY(stick);
        QVERIFY(isNear(stick->length, 200));
        QCOMPARE(stick->tilt, -60.0);
        QVERIFY(isNear(farEnd(*stick).x, -173.20508075688772));
    }

    void aFlatWedgeIsAsLongAsItsShadow()
    {
        const auto stick = wedgeStick({1000, 1000}, {1030, 1040}, 0, 0);
        QVERIFY(stick);
        QCOMPARE(stick->length, 50.0);
        QCOMPARE(stick->tilt, 0.0);
    }

    void theSteepestWedge()
    {
        const auto stick = wedgeStick({1000, 1000}, {1100, 1000}, 0, 89.5);
        QVERIFY(stick);
        NEAR(stick->length, 11459.3013, 0.001);
    }

    void aWedgeStartsAtTheDepthOfItsStartAtom()
    {
        const auto stick = wedgeStick({900, 1100}, {1000, 1100}, -42.5, 60);
        QVERIFY(stick);
        QCOMPARE(stick->origin.x, -42.5);
        QCOMPARE(stick->origin.y, -100.0);
        QCOMPARE(stick->origin.z, -100.0);
    }

    void aWedgeKeepsFractionsOfPixels()
    {
        const auto stick = wedgeStick({1000.25, 1000.5}, {1000.75, 1000.5}, 0, 0);
        QVERIFY(stick);
        QCOMPARE(stick->origin.y, 0.25);
        QCOMPARE(stick->origin.z, -0.5);
        QCOMPARE(stick->length, 0.5);
    }

    void aWedgeTurnedBeyond90DegreesPointsBack()
    {
        const auto stick = wedgeStick({1000, 1000}, {1100, 1000}, 0, 120);
        QVERIFY(stick);
        QVERIFY(isNear(stick->length, 200));
        QVERIFY(isNear(farEnd(*stick).y, -100));
    }

    void aWedgeOfLengthZeroIsNoStick()
    {
        QVERIFY(!wedgeStick({1000.5, 1000}, {1000.5, 1000}, 0, 60));
        QVERIFY(!wedgeStick({1000.5, 1000}, {1000.5, 1000}, 5, -60));
    }

    void aWedgeThatIsNotFiniteIsNoStick()
    {
        const double infinity = std::numeric_limits<double>::infinity();
        QVERIFY(!wedgeStick({1000, 1000}, {1100, 1000}, 0, infinity));
        QVERIFY(!wedgeStick({1000, 1000}, {1100, 1000}, 0, std::nan("")));
        QVERIFY(!wedgeStick({1000, 1000}, {infinity, 1000}, 0, 60));
    }

    void sumsStayWithinTheRangeOfInt()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        QCOMPARE(saturatedSum(2, 3), 5);
        QCOMPARE(saturatedSum(2, -3), -1);
        QCOMPARE(saturatedSum(highest - 1, 1), highest);
        QCOMPARE(saturatedSum(highest, 1), highest);
        QCOMPARE(saturatedSum(highest, highest), highest);
        QCOMPARE(saturatedSum(lowest, -1), lowest);
        QCOMPARE(saturatedSum(lowest, lowest), lowest);
        QCOMPARE(saturatedSum(lowest, highest), -1);
    }
};

QTEST_APPLESS_MAIN(test_SceneGeometry)
#include "test_SceneGeometry.moc"
