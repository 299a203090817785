#include "tests/monkey/Step.h"

#include "tests/monkey/StepGenerator.h"

#include <QSet>
#include <QtTest>

class TestStep : public QObject {
    Q_OBJECT

private slots:
    void stepsComeBackFromTheirText();
    void emptyLinesAndRemarksArePassedOver();
    void aLineThatIsNoStepIsRefused_data();
    void aLineThatIsNoStepIsRefused();
    void aSeedGivesTheSameStepsEachTime();
    void fewerStepsOfASeedAreTheFirstOnes();
    void otherSeedsGiveOtherSteps();
    void everyKindOfStepAndOfPlaceComesUp();
};

void TestStep::stepsComeBackFromTheirText()
{
    const Steps steps = stepsFromSeed(7, 5000);
    QCOMPARE(stepsFromText(toText(steps)).value_or(Steps()), steps);
    Step extreme;
    extreme.kind = StepKind::Viewer;
    extreme.numbers = {-1, INT_MAX, INT_MIN, 0, 5, -7};
    QCOMPARE(toText({extreme}), QString("viewer -1 2147483647 -2147483648 0 5 -7\n"));
    QCOMPARE(stepsFromText(toText({extreme})).value_or(Steps()), Steps{extreme});
}

void TestStep::emptyLinesAndRemarksArePassedOver()
{
    const std::optional<Steps> steps = stepsFromText("# why\n\nsettle 0 0 0 0 0 0\n   \n");
    QVERIFY(steps);
    QCOMPARE(*steps, Steps{Step()});
}

void TestStep::aLineThatIsNoStepIsRefused_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("unknown kind") << "jump 0 0 0 0 0 0";
    QTest::newRow("too few numbers") << "press 0 0 0 0 0";
    QTest::newRow("too many numbers") << "press 0 0 0 0 0 0 0";
    QTest::newRow("not a number") << "press 0 0 x 0 0 0";
}

void TestStep::aLineThatIsNoStepIsRefused()
{
    QFETCH(QString, line);
    QVERIFY(!stepsFromText("settle 0 0 0 0 0 0\n" + line + '\n'));
}

void TestStep::aSeedGivesTheSameStepsEachTime()
{
    QCOMPARE(stepsFromSeed(3, 2000), stepsFromSeed(3, 2000));
    QCOMPARE(stepsFromSeed(3, 2000).size(), 2000);
}

void TestStep::fewerStepsOfASeedAreTheFirstOnes()
{
    QCOMPARE(stepsFromSeed(3, 400), stepsFromSeed(3, 2000).first(400));
}

void TestStep::otherSeedsGiveOtherSteps()
{
    QVERIFY(stepsFromSeed(1, 100) != stepsFromSeed(2, 100));
}

void TestStep::everyKindOfStepAndOfPlaceComesUp()
{
    QSet<StepKind> kinds;
    QSet<int> places;
    for (const Step& step : stepsFromSeed(1, 40000)) {
        kinds.insert(step.kind);
        if (step.kind == StepKind::Press)
            places.insert(step.numbers[PlaceNumber]);
    }
    QCOMPARE(kinds.size(), stepKinds);
    QCOMPARE(places.size(), placeKinds);
}

QTEST_GUILESS_MAIN(TestStep)
#include "test_Step.moc"
