#include "tests/support/Near.h"
#include "view/DrawingGeometry.h"

#include "view/kytstudioview.h"

#include <QTest>

#include <climits>
#include <cmath>
#include <limits>

namespace {

constexpr float step = 0.17453292F; // ten degrees
constexpr float bondLength = 30.0F;
constexpr double chainStep = 25.9797437; // along the axis, from atom to atom
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

double degrees(double radians)
{
    return radians * 180 / M_PI;
}

bool isNear(double actual, double expected, double tolerance)
{
    return std::abs(actual - expected) < tolerance;
}

bool isNear(const QPointF& actual, const QPointF& expected)
{
    return isNear(actual.x(), expected.x(), 1e-4) && isNear(actual.y(), expected.y(), 1e-4);
}

/// The atoms of the chain in the order in which they are bonded, without the start atom.
QList<QPointF> atomsOf(const ZigZag& chain)
{
    QList<QPointF> atoms;
    for (const ZigZag::Step& turn : chain.steps) {
        atoms.append(turn.apex);
        if (turn.hasLine)
            atoms.append(turn.line);
    }
    return atoms;
}

} // namespace

class test_DrawingGeometry : public QObject {
    Q_OBJECT

private slots:
    void directionOfEveryOctant_data()
    {
        QTest::addColumn<float>("dx");
        QTest::addColumn<float>("dy");
        QTest::addColumn<double>("expected");

        QTest::newRow("right") << 10.0F << 0.0F << 0.0;
        QTest::newRow("right, a little up") << 20.0F << -10.0F << 26.565051;
        QTest::newRow("right and up") << 10.0F << -10.0F << 45.0;
        QTest::newRow("up, a little right") << 10.0F << -20.0F << 63.434949;
        QTest::newRow("up") << 0.0F << -10.0F << 90.0;
        QTest::newRow("up, a little left") << -10.0F << -20.0F << 116.565051;
        QTest::newRow("left and up") << -10.0F << -10.0F << 135.0;
        QTest::newRow("left, a little up") << -20.0F << -10.0F << 153.434949;
        QTest::newRow("left") << -10.0F << 0.0F << 180.0;
        QTest::newRow("left, a little down") << -20.0F << 10.0F << 206.565051;
        QTest::newRow("left and down") << -10.0F << 10.0F << 225.0;
        QTest::newRow("down, a little left") << -10.0F << 20.0F << 243.434949;
        QTest::newRow("down counts as up") << 0.0F << 10.0F << 90.0;
        QTest::newRow("down, a little right") << 10.0F << 20.0F << 296.565051;
        QTest::newRow("right and down") << 10.0F << 10.0F << 315.0;
        QTest::newRow("right, a little down") << 20.0F << 10.0F << 333.434949;
        QTest::newRow("nowhere counts as up") << 0.0F << 0.0F << 90.0;
    }

    void directionOfEveryOctant()
    {
        QFETCH(float, dx);
        QFETCH(float, dy);
        QFETCH(double, expected);

        const double measured = degrees(direction(100, 200, 100 + dx, 200 + dy));
        QVERIFY2(isNear(measured, expected, 1e-4), qPrintable(QString::number(measured, 'g', 10)));
    }

    void directionIsTheFloatNearestToAQuarterTurnOnTheVertical()
    {
        EXACTLY(direction(100, 100, 100, 40), 1.5707964F);
        EXACTLY(direction(100, 100, 100, 160), 1.5707964F);
        EXACTLY(direction(100, 100, 160, 100), 0.0F);
    }

    void theViewMeasuresDirectionsTheSameWay()
    {
        for (int dx = -40; dx <= 40; dx += 20)
            for (int dy = -40; dy <= 40; dy += 20)
                QVERIFY(KytStudioView::findtheta(100, 100, 100 + dx, 100 + dy)
                        == direction(100, 100, 100 + dx, 100 + dy));
    }

    void snapsToTheNearestStep_data()
    {
        QTest::addColumn<double>("theta");
        QTest::addColumn<double>("reference");
        QTest::addColumn<double>("expected");

        QTest::newRow("on the reference") << 0.0 << 0.0 << 0.0;
        QTest::newRow("4 degrees, no step") << 4.0 << 0.0 << 0.0;
        QTest::newRow("6 degrees, one step") << 6.0 << 0.0 << 10.0;
        QTest::newRow("14 degrees, one step") << 14.0 << 0.0 << 10.0;
        QTest::newRow("16 degrees, two steps") << 16.0 << 0.0 << 20.0;
        QTest::newRow("14 degrees below the horizontal, 35 steps") << 346.0 << 0.0 << 350.0;
        QTest::newRow("16 degrees below the horizontal, 34 steps") << 344.0 << 0.0 << 340.0;
        QTest::newRow("two steps beyond a slanted reference") << 68.0 << 45.0 << 65.0;
        QTest::newRow("two steps short of a slanted reference") << 22.0 << 45.0 << 25.0;
        QTest::newRow("far short of the reference") << 3.0 << 355.0 << 5.0;
        QTest::newRow("near the reference from below") << 41.0 << 45.0 << 45.0;
    }

    void snapsToTheNearestStep()
    {
        QFETCH(double, theta);
        QFETCH(double, reference);
        QFETCH(double, expected);

        const auto radians = [](double angle) { return static_cast<float>(angle * M_PI / 180); };
        const double snapped = degrees(snappedAngle(radians(theta), radians(reference), step));
        QVERIFY2(isNear(snapped, expected, 1e-3), qPrintable(QString::number(snapped, 'g', 10)));
    }

    void halfAStepSnapsAwayFromTheReference()
    {
        EXACTLY(snappedAngle(0.25F, 0.0F, 0.5F), 0.5F);
        EXACTLY(snappedAngle(0.75F, 0.0F, 0.5F), 1.0F);
        EXACTLY(snappedAngle(1.25F, 0.0F, 0.5F), 1.5F);
        EXACTLY(snappedAngle(1.75F, 2.0F, 0.5F), 1.5F);
        EXACTLY(snappedAngle(1.25F, 2.0F, 0.5F), 1.0F);
    }

    void thirtySixStepsFallShortOfAFullTurn()
    {
        const double turned = snappedAngle(6.27F, 0.0F, step);
        QVERIFY(turned < 2 * M_PI);
        QVERIFY(isNear(turned, 2 * M_PI, 1e-6));
    }

    void angleShownInEveryOctant_data()
    {
        QTest::addColumn<double>("dx");
        QTest::addColumn<double>("dy");
        QTest::addColumn<double>("expected");

        QTest::newRow("right") << 30.0 << 0.0 << 0.0;
        QTest::newRow("right, a little up") << 20.0 << -10.0 << 26.565051;
        QTest::newRow("right and up") << 10.0 << -10.0 << 45.0;
        QTest::newRow("up, a little right") << 10.0 << -20.0 << 63.434949;
        QTest::newRow("up") << 0.0 << -10.0 << 90.0;
        QTest::newRow("up, a little left") << -10.0 << -20.0 << 116.565051;
        QTest::newRow("left and up") << -10.0 << -10.0 << 135.0;
        QTest::newRow("left, a little up") << -20.0 << -10.0 << 153.434949;
        QTest::newRow("left") << -10.0 << 0.0 << 180.0;
        QTest::newRow("left, a little down") << -20.0 << 10.0 << 206.565051;
        QTest::newRow("left and down") << -10.0 << 10.0 << 225.0;
        QTest::newRow("down, a little left") << -10.0 << 20.0 << 243.434949;
        QTest::newRow("down") << 0.0 << 10.0 << 270.0;
        QTest::newRow("down, a little right") << 10.0 << 20.0 << 296.565051;
        QTest::newRow("right and down") << 10.0 << 10.0 << 315.0;
        QTest::newRow("right, a little down") << 20.0 << 10.0 << 333.434949;
        QTest::newRow("nowhere") << 0.0 << 0.0 << 270.0;
    }

    void angleShownInEveryOctant()
    {
        QFETCH(double, dx);
        QFETCH(double, dy);
        QFETCH(double, expected);

        const double shown = shownAngle(dx, dy);
        QVERIFY2(isNear(shown, expected, 1e-5), qPrintable(QString::number(shown, 'g', 10)));
    }

    void angleShownAHairBelowTheHorizontalStaysBelowAFullTurn()
    {
        const double shown = shownAngle(100, 1.5e-5);
        QVERIFY(shown < 360);
        QCOMPARE(QString::asprintf("%.2f", shown), QStringLiteral("360.00"));
        QCOMPARE(QString::asprintf("%.2f", shownAngle(100, 0)), QStringLiteral("0.00"));
    }

    void chainInEveryDirection_data()
    {
        QTest::addColumn<QPointF>("end");
        QTest::addColumn<QList<QPointF>>("atoms");

        QTest::newRow("right") << QPointF(160, 100) << QList<QPointF>{{125.979744, 84.998236}, {151.959487, 100}};
        QTest::newRow("right and up") << QPointF(
            160, 40) << QList<QPointF>{{107.762603, 71.021698}, {136.740905, 63.259093}, {144.503508, 34.280791}};
        QTest::newRow("up") << QPointF(100, 40) << QList<QPointF>{{84.998235, 74.020257}, {99.999997, 48.040513}};
        QTest::newRow("left and up") << QPointF(
            40, 40) << QList<QPointF>{{71.021698, 92.237396}, {63.259094, 63.259094}, {34.280792, 55.496490}};
        QTest::newRow("left") << QPointF(40, 100) << QList<QPointF>{{74.020258, 115.001766}, {48.040513, 100.000005}};
        QTest::newRow("left and down") << QPointF(
            40, 160) << QList<QPointF>{{92.237394, 128.978301}, {63.259091, 136.740903}, {55.496485, 165.719204}};
        QTest::newRow("down") << QPointF(100, 160) << QList<QPointF>{{84.998235, 74.020257}, {99.999997, 48.040513}};
        QTest::newRow("right and down") << QPointF(
            160, 160) << QList<QPointF>{{128.978303, 107.762601}, {136.740910, 136.740902}, {165.719212, 144.503503}};
    }

    void chainInEveryDirection()
    {
        QFETCH(QPointF, end);
        QFETCH(QList<QPointF>, atoms);

        const QList<QPointF> drawn = atomsOf(zigZag(QPointF(100, 100), end, bondLength));
        QCOMPARE(drawn.size(), atoms.size());
        for (qsizetype i = 0; i < drawn.size(); ++i)
            QVERIFY2(isNear(drawn[i], atoms[i]),
                     qPrintable(QStringLiteral("atom %1 at (%2, %3)").arg(i).arg(drawn[i].x()).arg(drawn[i].y())));
        QCOMPARE(zigZagAtomCount(QPointF(100, 100), end, bondLength), static_cast<int>(atoms.size()) + 1);
    }

    void chainStraightDownRunsStraightUp()
    {
        const QList<QPointF> up = atomsOf(zigZag(QPointF(100, 300), QPointF(100, 150), bondLength));
        const QList<QPointF> down = atomsOf(zigZag(QPointF(100, 300), QPointF(100, 450), bondLength));
        QCOMPARE(down.size(), 5);
        QCOMPARE(down, up);
        for (const QPointF& atom : down)
            QVERIFY(atom.y() < 300);
    }

    void chainTurnsWithItsOwnPi()
    {
        const ZigZag chain = zigZag(QPointF(100, 100), QPointF(160, 100), bondLength);
        const QPointF apex = chain.steps.at(0).apex;
        QVERIFY(isNear(apex.y(), 100 - 30 * std::sin(30 * 3.142 / 180), 1e-4));
        QVERIFY(!isNear(apex.y(), 100 - 30 * std::sin(M_PI / 6), 1e-3));
    }

    void chainOfTheWorkedExample()
    {
        const ZigZag chain = zigZag(QPointF(100, 100), QPointF(160, 100), bondLength);
        QCOMPARE(chain.steps.size(), std::size_t(1));
        QVERIFY(chain.steps[0].hasLine);
        QVERIFY(isNear(chain.steps[0].apex, QPointF(125.979744, 84.998236)));
        QVERIFY(isNear(chain.steps[0].line, QPointF(151.959487, 100)));
        QCOMPARE(zigZagAtomCount(QPointF(100, 100), QPointF(160, 100), bondLength), 3);
    }

    void onlyTheLastTurnMayEndBesideTheAxis()
    {
        const ZigZag chain = zigZag(QPointF(100, 100), QPointF(100 + 6.5 * chainStep, 100), bondLength);
        QCOMPARE(chain.steps.size(), std::size_t(3));
        for (const ZigZag::Step& turn : chain.steps)
            QVERIFY(turn.hasLine);

        const ZigZag longer = zigZag(QPointF(100, 100), QPointF(100 + 7.5 * chainStep, 100), bondLength);
        QCOMPARE(longer.steps.size(), std::size_t(4));
        for (std::size_t i = 0; i < 3; ++i)
            QVERIFY(longer.steps[i].hasLine);
        QVERIFY(!longer.steps[3].hasLine);
    }

    void bondsOfAChainAreEquallyLong()
    {
        const QPointF start(1000, 1000);
        for (int turn = 0; turn < 24; ++turn) {
            const double angle = turn * M_PI / 12;
            const QPointF end = start + 400 * QPointF(std::cos(angle), std::sin(angle));
            const QList<QPointF> atoms = atomsOf(zigZag(start, end, bondLength));
            QCOMPARE(atoms.size(), 15);
            QPointF last = start;
            for (const QPointF& atom : atoms) {
                QVERIFY(isNear(std::hypot(atom.x() - last.x(), atom.y() - last.y()), 30, 1e-3));
                last = atom;
            }
        }
    }

    void chainWithAnotherBondLength()
    {
        const QList<QPointF> atoms = atomsOf(zigZag(QPointF(0, 0), QPointF(120, 0), 60.0F));
        QCOMPARE(atoms.size(), 2);
        QVERIFY(isNear(atoms[0], QPointF(51.959487, -30.003528)));
        QVERIFY(isNear(atoms[1], QPointF(103.918975, 0)));
    }

    void chainLengthAtTheThresholds_data()
    {
        QTest::addColumn<double>("distance");
        QTest::addColumn<int>("atoms");

        QTest::newRow("at the start") << 0.0 << 1;
        QTest::newRow("10 pixels") << 10.0 << 1;
        QTest::newRow("just below one step") << chainStep - 0.001 << 1;
        QTest::newRow("just above one step") << chainStep + 0.001 << 2;
        QTest::newRow("30 pixels") << 30.0 << 2;
        QTest::newRow("just below two steps") << 2 * chainStep - 0.001 << 2;
        QTest::newRow("just above two steps") << 2 * chainStep + 0.001 << 3;
        QTest::newRow("just below three steps") << 3 * chainStep - 0.001 << 3;
        QTest::newRow("just above three steps") << 3 * chainStep + 0.001 << 4;
        QTest::newRow("just below twenty steps") << 20 * chainStep - 0.01 << 20;
        QTest::newRow("just above twenty steps") << 20 * chainStep + 0.01 << 21;
    }

    void chainLengthAtTheThresholds()
    {
        QFETCH(double, distance);
        QFETCH(int, atoms);

        const QPointF start(100, 100);
        const QPointF end(100 + distance, 100);
        QCOMPARE(zigZagAtomCount(start, end, bondLength), atoms);
        QCOMPARE(atomsOf(zigZag(start, end, bondLength)).size(), atoms - 1);
    }

    void nothingForAnEndAtTheStart()
    {
        QVERIFY(zigZag(QPointF(100, 100), QPointF(100, 100), bondLength).steps.empty());
        QCOMPARE(zigZagAtomCount(QPointF(100, 100), QPointF(100, 100), bondLength), 1);
    }

    void nothingForWhatIsNotFinite_data()
    {
        QTest::addColumn<QPointF>("start");
        QTest::addColumn<QPointF>("end");

        QTest::newRow("start x no number") << QPointF(notANumber, 0) << QPointF(100, 100);
        QTest::newRow("start y no number") << QPointF(0, notANumber) << QPointF(100, 100);
        QTest::newRow("end x no number") << QPointF(0, 0) << QPointF(notANumber, 100);
        QTest::newRow("end y no number") << QPointF(0, 0) << QPointF(100, notANumber);
        QTest::newRow("start infinite") << QPointF(infinite, 0) << QPointF(100, 100);
        QTest::newRow("end infinite") << QPointF(0, 0) << QPointF(100, -infinite);
        QTest::newRow("both infinite") << QPointF(infinite, 0) << QPointF(infinite, 0);
    }

    void nothingForWhatIsNotFinite()
    {
        QFETCH(QPointF, start);
        QFETCH(QPointF, end);

        QVERIFY(zigZag(start, end, bondLength).steps.empty());
    }

    void nothingForALengthThatIsNone_data()
    {
        QTest::addColumn<float>("length");

        QTest::newRow("zero") << 0.0F;
        QTest::newRow("negative") << -30.0F;
        QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN();
        QTest::newRow("infinite") << std::numeric_limits<float>::infinity();
    }

    void nothingForALengthThatIsNone()
    {
        QFETCH(float, length);

        QVERIFY(zigZag(QPointF(100, 100), QPointF(400, 100), length).steps.empty());
    }

    void countOfAFarEndSaturates() { QCOMPARE(zigZagAtomCount(QPointF(0, 0), QPointF(1e30, 0), bondLength), INT_MAX); }
};

QTEST_GUILESS_MAIN(test_DrawingGeometry)
#include "test_DrawingGeometry.moc"
