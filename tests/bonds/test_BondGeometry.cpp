#include "bonds/BondGeometry.h"
#include "tests/support/Near.h"

#include <QTest>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

namespace {

bool areSame(const QLineF& a, const QLineF& b, double tolerance = 1e-12)
{
    return std::abs(a.x1() - b.x1()) <= tolerance && std::abs(a.y1() - b.y1()) <= tolerance
        && std::abs(a.x2() - b.x2()) <= tolerance && std::abs(a.y2() - b.y2()) <= tolerance;
}

} // namespace

class test_BondGeometry : public QObject {
    Q_OBJECT

private slots:
    void linesBesideTheCentre_data()
    {
        QTest::addColumn<QLineF>("centre");
        QTest::addColumn<QLineF>("second");
        QTest::addColumn<QLineF>("third");
        QTest::newRow("to the right") << QLineF(100, 100, 200, 100) << QLineF(100, 94, 200, 94)
                                      << QLineF(100, 106, 200, 106);
        QTest::newRow("to the left") << QLineF(200, 100, 100, 100) << QLineF(200, 94, 100, 94)
                                     << QLineF(200, 106, 100, 106);
        QTest::newRow("down") << QLineF(100, 100, 100, 200) << QLineF(94, 100, 94, 200) << QLineF(106, 100, 106, 200);
        QTest::newRow("up") << QLineF(100, 200, 100, 100) << QLineF(94, 200, 94, 100) << QLineF(106, 200, 106, 100);
        QTest::newRow("of length zero") << QLineF(100, 100, 100, 100) << QLineF(94, 100, 94, 100)
                                        << QLineF(106, 100, 106, 100);
        const double d = std::sqrt(15.0);
        QTest::newRow("down to the right")
            << QLineF(0, 0, 100, 100) << QLineF(-d, d, 100 - d, 100 + d) << QLineF(d, -d, 100 + d, 100 - d);
        QTest::newRow("up to the left") << QLineF(100, 100, 0, 0) << QLineF(100 - d, 100 + d, -d, d)
                                        << QLineF(100 + d, 100 - d, d, -d);
        QTest::newRow("up to the right") << QLineF(0, 0, 100, -100) << QLineF(-d, -d, 100 - d, -100 - d)
                                         << QLineF(d, d, 100 + d, -100 + d);
        const double e = std::sqrt(24.0);
        QTest::newRow("steep") << QLineF(0, 0, 10, 20) << QLineF(-e, e / 2, 10 - e, 20 + e / 2)
                               << QLineF(e, -e / 2, 10 + e, 20 - e / 2);
        const double f = std::sqrt(6.0);
        QTest::newRow("flat") << QLineF(0, 0, 20, 10) << QLineF(-f, 2 * f, 20 - f, 10 + 2 * f)
                              << QLineF(f, -2 * f, 20 + f, 10 - 2 * f);
    }

    void linesBesideTheCentre()
    {
        QFETCH(QLineF, centre);
        QFETCH(QLineF, second);
        QFETCH(QLineF, third);
        const BondLines lines = bondLines(centre.p1(), centre.p2());
        QVERIFY(lines.centre == centre);
        QVERIFY(areSame(lines.second, second));
        QVERIFY(areSame(lines.third, third));
    }

    void sideLinesOfSlantedBondsStandTheRootOfThirtyOff()
    {
        std::mt19937 random(1);
        for (int i = 0; i < 500; ++i) {
            const auto coordinate = [&] { return double(random() % 4000) / 2 - 500; };
            const QPointF from(coordinate(), coordinate());
            const QPointF to(coordinate(), coordinate());
            if (from.x() == to.x() || from.y() == to.y())
                continue;
            const BondLines lines = bondLines(from, to);
            for (const QLineF& line : {lines.second, lines.third}) {
                const QPointF along = (to - from) / std::hypot(to.x() - from.x(), to.y() - from.y());
                const QPointF beside = line.p1() - from;
                NEAR(std::hypot(beside.x(), beside.y()), std::sqrt(30.0), 1e-9);
                NEAR(QPointF::dotProduct(along, beside), 0, 1e-9);
                QVERIFY(areSame(line, QLineF(from + beside, to + beside), 1e-9));
            }
            QVERIFY(lines.second.x1() < from.x()); // the second line lies to the left
            QVERIFY(lines.third.x1() > from.x());
        }
    }

    void aHairOffTheAxesIsSlanted()
    {
        const BondLines flat = bondLines({0, 0}, {100, 1e-9});
        QVERIFY(areSame(flat.second, QLineF(0, std::sqrt(30.0), 100, std::sqrt(30.0)), 1e-6));
        const BondLines steep = bondLines({0, 0}, {1e-9, 100});
        QVERIFY(areSame(steep.second, QLineF(-std::sqrt(30.0), 0, -std::sqrt(30.0), 100), 1e-6));
    }

    void slopesOfAnySizeGiveLinesThatAreSomewhere()
    {
        const double values[] = {0, DBL_MIN, -DBL_MIN, 5e-324, 1e-200, -1e-160, 1e-30, 1, -1, 1e9, -1e30, 1e160, 1e200};
        for (const double x : values)
            for (const double y : values) {
                const BondLines lines = bondLines({0, 0}, {x, y});
                for (const QLineF& line : {lines.second, lines.third})
                    QVERIFY(std::isfinite(line.x1()) && std::isfinite(line.y1()) && std::isfinite(line.x2())
                            && std::isfinite(line.y2()));
                const double off = std::hypot(lines.second.x1(), lines.second.y1());
                QVERIFY(off > 5.4 && off < 6.1);
            }
    }

    void distances()
    {
        QCOMPARE(distance({0, 0}, {3, 4}), 5.0);
        QCOMPARE(distance({3, 4}, {0, 0}), 5.0);
        QCOMPARE(distance({-1.5, 2}, {-1.5, 2}), 0.0);
        QCOMPARE(distance({0.5, 0}, {2, 0}), 1.5);
    }

    void pixelDistancesCutFractionsTowardsZeroFirst()
    {
        QCOMPARE(pixelDistance({0.9, 0}, {3.1, 4.9}), 5.0);
        QCOMPARE(pixelDistance({-0.9, 0.9}, {0.9, -0.9}), 0.0);
        QCOMPARE(pixelDistance({-1.9, 0}, {1.9, 0}), 2.0);
        QCOMPARE(pixelDistance({10, 10}, {10, 10}), 0.0);
    }

    void pixelDistancesDoNotOverflow()
    {
        QCOMPARE(pixelDistance({-50000, 0}, {50000, 0}), 100000.0);
        QCOMPARE(pixelDistance({double(INT_MIN), 0}, {double(INT_MAX), 0}), 4294967295.0);
        QCOMPARE(pixelDistance({-1e300, 0}, {1e300, 0}), 4294967295.0);
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QCOMPARE(pixelDistance({nan, nan}, {3, 4}), 5.0);
    }

    void projectionAnglesOfWedges()
    {
        QCOMPARE(projectionAngle(0, 30), 0.0);
        QCOMPARE(projectionAngle(30, 30), 45.0);
        QCOMPARE(projectionAngle(-30, 30), 45.0);
        QCOMPARE(projectionAngle(std::sqrt(3.0), 1), 60.0);
        QVERIFY(projectionAngle(1e30, 1) <= 90);
        QVERIFY(projectionAngle(1e-30, 1) >= 0);
    }

    void aWedgeWithinOnePixelStandsAlmostUpright()
    {
        QCOMPARE(projectionAngle(0, 0), 0.0);
        QCOMPARE(projectionAngle(5, 0), 89.5);
        QCOMPARE(projectionAngle(-5, 0), 89.5);
        QCOMPARE(projectionAngle(1e-30, 0), 89.5);
    }
};

QTEST_GUILESS_MAIN(test_BondGeometry)
#include "test_BondGeometry.moc"
