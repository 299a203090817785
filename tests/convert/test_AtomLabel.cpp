#include "convert/pictures/AtomLabel.h"

#include <QTest>

class test_AtomLabel : public QObject {
    Q_OBJECT

private slots:
    void labelsAreWrittenAsPeopleDo_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("turned");
        QTest::addColumn<QString>("head");
        const auto row = [](const char* symbol, const char* text, const char* turned, const char* head) {
            QTest::newRow(symbol) << symbol << text << turned << head;
        };
        row("OH", "OH", "HO", "O");
        row("CH3", "CH<sub>3</sub>", "H<sub>3</sub>C", "C");
        row("CO2H", "CO<sub>2</sub>H", "HO<sub>2</sub>C", "C");
        row("COOH", "COOH", "HOOC", "C");
        row("NO2", "NO<sub>2</sub>", "O<sub>2</sub>N", "N");
        row("OCH3", "OCH<sub>3</sub>", "H<sub>3</sub>CO", "O");
        row("OMe", "OMe", "MeO", "O");
        row("CO2Et", "CO<sub>2</sub>Et", "EtO<sub>2</sub>C", "C");
        row("NHBoc", "NHBoc", "BocHN", "N");
        row("OTBDMS", "OTBDMS", "TBDMSO", "O");
        row("N(CH3)2", "N(CH<sub>3</sub>)<sub>2</sub>", "(H<sub>3</sub>C)<sub>2</sub>N", "N");
        row("B(OH)2", "B(OH)<sub>2</sub>", "(HO)<sub>2</sub>B", "B");
        row("N3", "N<sub>3</sub>", "N<sub>3</sub>", "N");
        row("NH3+", "NH<sub>3</sub><sup>+</sup>", "<sup>+</sup>H<sub>3</sub>N", "N");
        row("CO2-", "CO<sub>2</sub><sup>-</sup>", "<sup>-</sup>O<sub>2</sub>C", "C");
        row("SO42-", "SO<sub>4</sub><sup>2-</sup>", "<sup>2-</sup>O<sub>4</sub>S", "S");
        row("13CH3", "<sup>13</sup>CH<sub>3</sub>", "H<sub>3</sub><sup>13</sup>C", "C");
        row("Ph", "Ph", "Ph", "");
        row("tBu", "tBu", "tBu", "");
        row("i-Pr", "i-Pr", "i-Pr", "");
        row("R1", "R<sup>1</sup>", "R<sup>1</sup>", "");
        row("R12", "R<sup>12</sup>", "R<sup>12</sup>", "");
        row("R'", "R'", "R'", "");
        row("OR2", "OR<sup>2</sup>", "R<sup>2</sup>O", "O");
        row("X", "X", "X", "");
    }

    void labelsAreWrittenAsPeopleDo()
    {
        QFETCH(QString, symbol);
        const AtomLabel label = atomLabel(symbol);
        QTEST(label.text, "text");
        QTEST(label.turned, "turned");
        QTEST(label.head, "head");
    }

    void whatIsNoFormulaStaysAsItIs_data()
    {
        QTest::addColumn<QString>("symbol");
        for (const char* symbol :
             {"CL", "linker", "N(CH3", "CH3)2", "()", "(((((C)))))", "12", "3-", "<b>", "Alanin", "?"})
            QTest::newRow(symbol) << symbol;
        QTest::newRow("beyond ASCII") << QStringLiteral("α");
    }

    void whatIsNoFormulaStaysAsItIs()
    {
        QFETCH(QString, symbol);
        const AtomLabel label = atomLabel(symbol);
        QCOMPARE(label.text, symbol);
        QCOMPARE(label.turned, symbol);
        QCOMPARE(label.head, QString());
    }
};

QTEST_GUILESS_MAIN(test_AtomLabel)
#include "test_AtomLabel.moc"
