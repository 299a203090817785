#include "canvas/truncate.h"

#include <QTest>

#include <limits>

class test_truncate : public QObject {
    Q_OBJECT

private slots:
    void cutsTowardZero_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("zero") << 0.0 << 0;
        QTest::newRow("negative zero") << -0.0 << 0;
        QTest::newRow("just below one") << 0.9999999 << 0;
        QTest::newRow("just above minus one") << -0.9999999 << 0;
        QTest::newRow("whole") << 7.0 << 7;
        QTest::newRow("positive") << 2.5 << 2;
        QTest::newRow("negative") << -2.5 << -2;
        QTest::newRow("tiny") << std::numeric_limits<double>::denorm_min() << 0;
    }

    void cutsTowardZero()
    {
        QFETCH(double, value);
        QFETCH(int, expected);
        QCOMPARE(truncated(value), expected);
    }

    void notANumberIsZero()
    {
        QCOMPARE(truncated(std::numeric_limits<double>::quiet_NaN()), 0);
        QCOMPARE(truncated(-std::numeric_limits<double>::quiet_NaN()), 0);
    }

    void staysWithinTheRangeOfInt_data()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("expected");
        QTest::newRow("highest") << 2147483647.0 << highest;
        QTest::newRow("fraction above highest") << 2147483647.5 << highest;
        QTest::newRow("fraction below highest") << 2147483646.5 << highest - 1;
        QTest::newRow("one above highest") << 2147483648.0 << highest;
        QTest::newRow("lowest") << -2147483648.0 << lowest;
        QTest::newRow("fraction below lowest") << -2147483648.5 << lowest;
        QTest::newRow("fraction above lowest") << -2147483647.5 << lowest + 1;
        QTest::newRow("far above") << 1e300 << highest;
        QTest::newRow("far below") << -1e300 << lowest;
        QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << highest;
        QTest::newRow("minus infinity") << -std::numeric_limits<double>::infinity() << lowest;
    }

    void staysWithinTheRangeOfInt()
    {
        QFETCH(double, value);
        QFETCH(int, expected);
        QCOMPARE(truncated(value), expected);
    }
};

QTEST_APPLESS_MAIN(test_truncate)
#include "test_truncate.moc"
