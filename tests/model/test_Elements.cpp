#include "model/Elements.h"

#include <QSet>
#include <QTest>

class test_Elements : public QObject {
    Q_OBJECT

private slots:
    void symbolsAndNumbersBelongTogether()
    {
        QSet<QString> symbols;
        for (int number = 1; number <= elementCount; ++number) {
            const QString symbol = elementSymbol(number);
            QCOMPARE(elementNumber(symbol), number);
            QVERIFY(startsElement(symbol[0]));
            symbols.insert(symbol);
        }
        QCOMPARE(symbols.size(), 118);
        QVERIFY(elementSymbol(0).isNull());
        QVERIFY(elementSymbol(119).isNull());
        QVERIFY(elementSymbol(-1).isNull());
    }

    void eachElementHasItsNumber_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<int>("number");
        const std::pair<const char*, int> known[] = {
            {"H", 1},    {"C", 6},  {"Cl", 17}, {"Fe", 26}, {"Br", 35},     {"I", 53},   {"Cs", 55},
            {"Lu", 71},  {"W", 74}, {"Rn", 86}, {"U", 92},  {"No", 102},    {"Lr", 103}, {"Cn", 112},
            {"Og", 118}, {"D", 0},  {"T", 0},   {"J", 0},   {"CL", 0},      {"c", 0},    {"Xx", 0},
            {"", 0},     {"C ", 0}, {"Cl2", 0}, {"1", 0},   {"\xc3\x84", 0}};
        for (const auto& [symbol, number] : known)
            QTest::newRow(*symbol ? symbol : "empty") << QString::fromUtf8(symbol) << number;
    }

    void eachElementHasItsNumber()
    {
        QFETCH(QString, symbol);
        QTEST(elementNumber(symbol), "number");
    }

    void noElementStartsWithJOrQ()
    {
        QString none;
        for (char letter = 'A'; letter <= 'Z'; ++letter)
            if (!startsElement(QLatin1Char(letter)))
                none += QLatin1Char(letter);
        QCOMPARE(none, QString("JQ"));
        QVERIFY(!startsElement(u'c'));
        QVERIFY(!startsElement(QChar()));
    }

    void coloursAreThoseOfTheLibrary_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("color");
        QTest::newRow("carbon") << "C"
                                << "64 64 64";
        QTest::newRow("isotope of hydrogen") << "2H"
                                             << "255 255 255";
        QTest::newRow("oxide") << "O-"
                               << "255 0 0";
        QTest::newRow("nitrogen") << "N"
                                  << "48 80 255";
        QTest::newRow("label of oxygen") << "OH"
                                         << "255 0 0";
        QTest::newRow("label of carbon") << "CH3"
                                         << "64 64 64";
        QTest::newRow("label of chlorine") << "ClO3"
                                           << "0 200 0";
        QTest::newRow("other element") << "Pt"
                                       << "255 20 150";
        QTest::newRow("ion of another element") << "195Pt2+"
                                                << "255 20 150";
        QTest::newRow("true minus") << QStringLiteral("Au\u2212") << "255 20 150";
        QTest::newRow("deuterium") << "D"
                                   << "255 255 255";
        QTest::newRow("label that starts like an element") << "Ph"
                                                           << "255 140 0";
        QTest::newRow("group of an element without a colour") << "PtCl2"
                                                              << "255 140 0";
        QTest::newRow("attachment point") << "R1"
                                          << "128 128 128";
        QTest::newRow("label of nothing") << "?"
                                          << "128 128 128";
    }

    void coloursAreThoseOfTheLibrary()
    {
        QFETCH(QString, symbol);
        const std::array<QString, 3> color = elementColor(symbol);
        QTEST(color[0] + ' ' + color[1] + ' ' + color[2], "color");
    }
};

QTEST_APPLESS_MAIN(test_Elements)
#include "test_Elements.moc"
