#pragma once

#include <QTest>

#include <cmath>

// Checks of numbers that say both when they fail. A NaN never passes.

/// The difference of two numbers is below `tolerance`.
#define NEAR(actual, expected, tolerance)                                                                              \
    do {                                                                                                               \
        const double actualValue = (actual);                                                                           \
        const double expectedValue = (expected);                                                                       \
        QVERIFY2(std::abs(actualValue - expectedValue) < (tolerance),                                                  \
                 qPrintable(QStringLiteral(#actual " is %1, expected %2")                                              \
                                .arg(actualValue, 0, 'g', 12)                                                          \
                                .arg(expectedValue, 0, 'g', 12)));                                                     \
    } while (false)

/// Two numbers are the same to the last bit; QCOMPARE takes neighbours of a float for the same.
#define EXACTLY(actual, expected)                                                                                      \
    do {                                                                                                               \
        const double actualValue = (actual);                                                                           \
        const double expectedValue = (expected);                                                                       \
        QVERIFY2(actualValue == expectedValue,                                                                         \
                 qPrintable(QStringLiteral(#actual " is %1, expected %2")                                              \
                                .arg(actualValue, 0, 'g', 17)                                                          \
                                .arg(expectedValue, 0, 'g', 17)));                                                     \
    } while (false)
