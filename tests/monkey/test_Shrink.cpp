#include "tests/monkey/Shrink.h"

#include <QtTest>

namespace {

/// Steps that differ in their first number: 0, 1, 2 and so on.
Steps numbered(int count)
{
    Steps steps;
    for (int i = 0; i < count; ++i) {
        Step step;
        step.numbers[0] = i;
        steps.append(step);
    }
    return steps;
}

QList<int> numbersOf(const Steps& steps)
{
    QList<int> numbers;
    for (const Step& step : steps)
        numbers.append(step.numbers[0]);
    return numbers;
}

bool always()
{
    return true;
}

} // namespace

class test_Shrink : public QObject {
    Q_OBJECT

private slots:
    void onlyTheStepsThatMatterAreLeft_data()
    {
        QTest::addColumn<QList<int>>("needed");
        QTest::newRow("first") << QList<int>{0};
        QTest::newRow("last") << QList<int>{99};
        QTest::newRow("far apart") << QList<int>{0, 50, 99};
        QTest::newRow("neighbours") << QList<int>{31, 32, 33, 34};
        QTest::newRow("scattered") << QList<int>{1, 2, 17, 40, 41, 77, 98};
    }

    void onlyTheStepsThatMatterAreLeft()
    {
        QFETCH(QList<int>, needed);
        const auto fails = [&](const Steps& steps) {
            const QList<int> numbers = numbersOf(steps);
            return std::all_of(needed.begin(), needed.end(), [&](int number) { return numbers.contains(number); });
        };
        QCOMPARE(numbersOf(shrunk(numbered(100), fails, always)), needed);
    }

    void stepsThatAreOnlyNeededWithOthersGoToo()
    {
        // 10 does harm only while 20 is there, which must then be followed by 30.
        const auto fails = [](const Steps& steps) {
            const QList<int> numbers = numbersOf(steps);
            return numbers.contains(10) && (!numbers.contains(20) || numbers.contains(30));
        };
        QCOMPARE(numbersOf(shrunk(numbered(100), fails, always)), QList<int>{10});
    }

    void anySoManyStepsAreEnough()
    {
        const auto fails = [](const Steps& steps) { return steps.size() >= 7; };
        QCOMPARE(shrunk(numbered(100), fails, always).size(), 7);
    }

    void whatFailsWithoutAnyStepShrinksToNone()
    {
        QVERIFY(shrunk(
                    numbered(10), [](const Steps&) { return true; }, always)
                    .isEmpty());
    }

    void whatCannotBeShortenedStays()
    {
        const auto fails = [](const Steps& steps) { return steps == numbered(9); };
        QCOMPARE(shrunk(numbered(9), fails, always), numbered(9));
    }

    void itStopsWhenItMayNotGoOn()
    {
        int trials = 0;
        const auto fails = [&](const Steps& steps) {
            ++trials;
            return steps.size() >= 2;
        };
        const Steps few = shrunk(numbered(64), fails, [&] { return trials < 3; });
        QCOMPARE(trials, 3);
        QVERIFY(few.size() < 64);
        QVERIFY(few.size() >= 2);
    }
};

QTEST_GUILESS_MAIN(test_Shrink)
#include "test_Shrink.moc"
