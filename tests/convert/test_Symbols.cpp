#include "convert/chemistry/Symbols.h"

#include <QTest>

Q_DECLARE_METATYPE(ElementSymbol)

class test_Symbols : public QObject {
    Q_OBJECT

private slots:
    void elementsWithIsotopeAndChargeAreRead_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<ElementSymbol>("element");
        QTest::addColumn<QString>("written");
        QTest::newRow("carbon") << "C" << ElementSymbol{6, 0, 0} << "C";
        QTest::newRow("last element") << "Og" << ElementSymbol{118, 0, 0} << "Og";
        QTest::newRow("cation") << "N+" << ElementSymbol{7, 0, 1} << "N+";
        QTest::newRow("anion") << "O-" << ElementSymbol{8, 0, -1} << "O-";
        QTest::newRow("true minus") << QStringLiteral("O\u2212") << ElementSymbol{8, 0, -1} << "O-";
        QTest::newRow("digit first") << "Fe3+" << ElementSymbol{26, 0, 3} << "Fe3+";
        QTest::newRow("sign first") << "Ca+2" << ElementSymbol{20, 0, 2} << "Ca2+";
        QTest::newRow("two signs") << "Mg++" << ElementSymbol{12, 0, 2} << "Mg2+";
        QTest::newRow("isotope") << "13C" << ElementSymbol{6, 13, 0} << "13C";
        QTest::newRow("isotope and charge") << "18F-" << ElementSymbol{9, 18, -1} << "18F-";
        QTest::newRow("deuterium") << "D" << ElementSymbol{1, 2, 0} << "2H";
        QTest::newRow("tritium cation") << "T+" << ElementSymbol{1, 3, 1} << "3H+";
        QTest::newRow("any atom") << "*" << ElementSymbol{0, 0, 0} << "*";
        QTest::newRow("attachment point") << "R1" << ElementSymbol{0, 1, 0} << "R1";
        QTest::newRow("last attachment point") << "R99" << ElementSymbol{0, 99, 0} << "R99";
        QTest::newRow("attachment point as an isotope") << "16*" << ElementSymbol{0, 16, 0} << "R16";
        QTest::newRow("highest charge") << "U99+" << ElementSymbol{92, 0, 99} << "U99+";
    }

    void elementsWithIsotopeAndChargeAreRead()
    {
        QFETCH(QString, symbol);
        QFETCH(ElementSymbol, element);
        const std::optional<ElementSymbol> read = parseSymbol(symbol);
        QVERIFY(read.has_value());
        QCOMPARE(read->number, element.number);
        QCOMPARE(read->isotope, element.isotope);
        QCOMPARE(read->charge, element.charge);
        QTEST(symbolOf(*read), "written");
    }

    void everythingElseIsALabel_data()
    {
        QTest::addColumn<QString>("symbol");
        for (const char* symbol :
             {"OH",  "CH3", "R0",  "R100",  "R1+", "R",    "CL", "c", "Xx",   "",      "+",      "13",
              "C13", "0C",  "N+-", "C100+", "N0+", "NH4+", "2D", "_", "C\nN", "1234C", "C+++++", "-C"})
            QTest::newRow(symbol) << symbol;
    }

    void everythingElseIsALabel()
    {
        QFETCH(QString, symbol);
        QVERIFY(!parseSymbol(symbol));
    }

    void whatIsWrittenForAnElementReadsBack()
    {
        for (int number = 0; number <= 118; ++number) {
            for (const int isotope : {0, 1, 300}) {
                for (int charge = -99; charge <= 99; ++charge) {
                    const ElementSymbol element{number, isotope, charge};
                    QCOMPARE(parseSymbol(symbolOf(element)), std::optional(element));
                }
            }
        }
    }
};

QTEST_APPLESS_MAIN(test_Symbols)
#include "test_Symbols.moc"
