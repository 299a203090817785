#include "doc/Numbers.h"

#include <QTest>

#include <cmath>
#include <limits>

class test_Numbers : public QObject {
    Q_OBJECT

private slots:
    void aWholeIntegerIsTheWholeWord_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("isOne");
        QTest::addColumn<int>("value");
        const auto number = [](const char* name, const char* word, int value) {
            QTest::newRow(name) << QString(word) << true << value;
        };
        const auto none = [](const char* name, const char* word) {
            QTest::newRow(name) << QString(word) << false << 0;
        };
        number("zero", "0", 0);
        number("one", "1", 1);
        number("leading zero", "01", 1);
        number("leading zero is not octal", "017", 17);
        number("eight after a zero", "08", 8);
        number("negative", "-4", -4);
        number("largest", "2147483647", std::numeric_limits<int>::max());
        number("lowest", "-2147483648", std::numeric_limits<int>::min());
        none("beyond int", "2147483648");
        none("below int", "-2147483649");
        none("wraps to one in 32 bits", "4294967297");
        none("beyond 64 bits", "18446744073709551617");
        none("fraction", "1.0");
        none("exponent", "1e0");
        none("hexadecimal", "0x1");
        none("binary", "0b1");
        none("letters", "one");
        none("letters behind", "1st");
        none("comma", "1,0");
        none("sign alone", "-");
        none("nan", "nan");
        none("nothing", "");
    }

    void aWholeIntegerIsTheWholeWord()
    {
        QFETCH(QString, word);
        QFETCH(bool, isOne);
        QFETCH(int, value);
        const std::optional<int> found = wholeInteger(word);
        QCOMPARE(found.has_value(), isOne);
        QCOMPARE(found.value_or(0), value);
    }

    void aWholeRealIsTheWholeWord_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("isOne");
        QTest::addColumn<float>("value");
        QTest::newRow("integer") << "12" << true << 12.0F;
        QTest::newRow("fraction") << "-0.5" << true << -0.5F;
        QTest::newRow("exponent") << "1.5e+06" << true << 1.5e6F;
        QTest::newRow("largest") << "3.4e38" << true << 3.4e38F;
        QTest::newRow("beyond float") << "3.5e38" << false << 0.0F;
        QTest::newRow("comma") << "1,5" << false << 0.0F;
        QTest::newRow("nan") << "nan" << false << 0.0F;
        QTest::newRow("infinite") << "inf" << false << 0.0F;
        QTest::newRow("letters behind") << "1x" << false << 0.0F;
        QTest::newRow("nothing") << "" << false << 0.0F;
    }

    void aWholeRealIsTheWholeWord()
    {
        QFETCH(QString, word);
        QFETCH(bool, isOne);
        QFETCH(float, value);
        const std::optional<float> found = wholeReal(word);
        QCOMPARE(found.has_value(), isOne);
        QCOMPARE(found.value_or(0), value);
    }

    void anIntegerIsReadFromTheStart_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("digits") << "37" << 37;
        QTest::newRow("fraction is left") << "37.50" << 37;
        QTest::newRow("white space before") << " \t-30" << -30;
        QTest::newRow("plus") << "+5" << 5;
        QTest::newRow("no digits") << "abc" << 0;
        QTest::newRow("nothing") << "" << 0;
        QTest::newRow("beyond int") << "99999999999999999999" << std::numeric_limits<int>::max();
        QTest::newRow("below int") << "-99999999999999999999" << std::numeric_limits<int>::min();
    }

    void anIntegerIsReadFromTheStart()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QCOMPARE(integerPrefix(text), value);
    }

    void aRealIsReadFromTheStart()
    {
        QCOMPARE(realPrefix(u"150"), 150.0);
        QCOMPARE(realPrefix(u" -1.5e2 pixels"), -150.0);
        QCOMPARE(realPrefix(u"pixels"), 0.0);
        QCOMPARE(realPrefix(u""), 0.0);
        QVERIFY(!std::isfinite(realPrefix(u"1e999")));
        QVERIFY(!std::isfinite(realPrefix(u"nan")));
    }

    void aRealIsWrittenShort_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 100.0 << "100";
        QTest::newRow("fraction") << 130.5 << "130.5";
        QTest::newRow("six digits") << 1234.5678 << "1234.57";
        QTest::newRow("exponent") << 1.5e6 << "1.5e+06";
        QTest::newRow("small") << 0.00001 << "1e-05";
        QTest::newRow("zero below") << -0.0 << "-0";
    }

    void aRealIsWrittenShort()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(shortReal(value), text);
    }
};

QTEST_MAIN(test_Numbers)
#include "test_Numbers.moc"
