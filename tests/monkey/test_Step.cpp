#include "tests/monkey/Step.h"

#include "tests/monkey/StepGenerator.h"

#include <QSet>
#include <QtTest>

class test_Step : public QObject {
    Q_OBJECT

private slots:
    void stepsComeBackFromTheirText()
    {
        const Steps steps = stepsFromSeed(7, 5000);
        QCOMPARE(stepsFromText(toText(steps)).value_or(Steps()), steps);
        Step extreme;
        extreme.kind = StepKind::Viewer;
        extreme.numbers = {-1, INT_MAX, INT_MIN, 0, 5, -7};
        QCOMPARE(toText({extreme}), QString("viewer -1 2147483647 -2147483648 0 5 -7\n"));
        QCOMPARE(stepsFromText(toText({extreme})).value_or(Steps()), Steps{extreme});
    }

    void emptyLinesAndRemarksArePassedOver()
    {
        const std::optional<Steps> steps = stepsFromText("# why\n\nsettle 0 0 0 0 0 0\n   \n");
        QVERIFY(steps);
        QCOMPARE(*steps, Steps{Step()});
    }

    void aLineThatIsNoStepIsRefused_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("unknown kind") << "jump 0 0 0 0 0 0";
        QTest::newRow("too few numbers") << "press 0 0 0 0 0";
        QTest::newRow("too many numbers") << "press 0 0 0 0 0 0 0";
        QTest::newRow("not a number") << "press 0 0 x 0 0 0";
    }

    void aLineThatIsNoStepIsRefused()
    {
        QFETCH(QString, line);
        QVERIFY(!stepsFromText("settle 0 0 0 0 0 0\n" + line + '\n'));
    }

    void aSeedGivesTheSameStepsEachTime()
    {
        QCOMPARE(stepsFromSeed(3, 2000), stepsFromSeed(3, 2000));
        QCOMPARE(stepsFromSeed(3, 2000).size(), 2000);
    }

    void fewerStepsOfASeedAreTheFirstOnes() { QCOMPARE(stepsFromSeed(3, 400), stepsFromSeed(3, 2000).first(400)); }

    void otherSeedsGiveOtherSteps() { QVERIFY(stepsFromSeed(1, 100) != stepsFromSeed(2, 100)); }

    void everyKindOfStepAndOfPlaceComesUp()
    {
        QSet<StepKind> kinds;
        QSet<int> places;
        for (const Step& step : stepsFromSeed(1, 200000)) {
            kinds.insert(step.kind);
            if (step.kind == StepKind::Press)
                places.insert(step.numbers[PlaceNumber]);
        }
        QCOMPARE(kinds.size(), stepKinds);
        QCOMPARE(places.size(), placeKinds);
    }
};

QTEST_GUILESS_MAIN(test_Step)
#include "test_Step.moc"
