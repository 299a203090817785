#include "convert/formats/Table.h"

#include "convert/Notes.h"

#include <QTest>

namespace {

using Data = std::vector<std::pair<QString, QString>>;

std::vector<Record> recordsOf(const QByteArray& text, bool tabs = false, const InputStyle& style = {})
{
    MemorySource source(text);
    LineReader lines(source, "test");
    const std::unique_ptr<RecordReader> reader = tabs ? tsvRecords(lines, style) : csvRecords(lines, style);
    std::vector<Record> records;
    while (std::optional<Record> record = reader->next())
        records.push_back(std::move(*record));
    return records;
}

QString refusal(const QByteArray& text, const InputStyle& style = {})
{
    try {
        recordsOf(text, false, style);
    } catch (const ConversionError& fault) {
        return fault.text();
    }
    return {};
}

} // namespace

class test_Table : public QObject {
    Q_OBJECT

private slots:
    void fieldsAreSplitAsTheyAreQuoted_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* title, const QByteArray& text, const QString& name) {
            QTest::newRow(title) << text << name;
        };
        row("plain", "C,methane,1", "methane");
        row("quoted", "C,\"methane\",1", "methane");
        row("a separator in quotes", "C,\"a, b\",1", "a, b");
        row("a quote in quotes", "C,\"5\"\" disk\",1", "5\" disk");
        row("quotes alone", "C,\"\"\"\"\"\",1", "\"\"");
        row("a quote inside of a plain field", "C,5\" disk,1", "5\" disk");
        row("two lines in quotes", "C,\"a\nb\",1", "a b");
        row("blanks around it", "C, methane ,1", "methane");
        row("empty", "C,,1", "");
        row("empty in quotes", "C,\"\",1", "");
        row("tabs are text", "C,a\tb,1", "a b");
    }

    void fieldsAreSplitAsTheyAreQuoted()
    {
        QFETCH(QByteArray, row);
        for (const char* end : {"", "\n", "\r\n"}) {
            const std::vector<Record> records = recordsOf("SMILES,Name,n\n" + row + end);
            QCOMPARE(records.size(), 1U);
            QCOMPARE(records[0].fault, QString());
            QCOMPARE(records[0].text, QByteArray("C"));
            QTEST(records[0].name, "name");
            QCOMPARE(records[0].data, (Data{{"n", "1"}}));
            QCOMPARE(records[0].line, 2);
        }
    }

    void separatorsAreCommasOrSemicolonsOrTabs()
    {
        QCOMPARE(recordsOf("Name;SMILES\na,b;C\n")[0].name, QString("a,b"));
        QCOMPARE(recordsOf("Name,SMILES\na;b,C\n")[0].name, QString("a;b"));
        QCOMPARE(recordsOf("Name\tSMILES\na,b;c\tC\n", true)[0].name, QString("a,b;c"));
    }

    void rowsThatDoNotFitHaveAFault_data()
    {
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<QString>("fault");
        QTest::newRow("too few fields") << QByteArray("C,a") << "row has 2 fields, but the header has 3";
        QTest::newRow("too many fields") << QByteArray("C,a,1,2") << "row has 4 fields, but the header has 3";
        QTest::newRow("text after a quote") << QByteArray("C,\"a\"b,1") << "text after the closing quote of a field";
    }

    void rowsThatDoNotFitHaveAFault()
    {
        QFETCH(QByteArray, row);
        const std::vector<Record> records = recordsOf("SMILES,Name,n\nCC,x,1\n" + row + "\nCCC,y,2\n");
        QCOMPARE(records.size(), 3U);
        QTEST(records[1].fault, "fault");
        QCOMPARE(records[1].line, 3);
        QCOMPARE(records[2].text, QByteArray("CCC"));
        QCOMPARE(records[2].fault, QString());
    }

    void aQuoteThatIsNotClosedIsAFault()
    {
        const std::vector<Record> records = recordsOf("SMILES,Name\nC,\"a\nCC,b\n");
        QCOMPARE(records.size(), 1U);
        QCOMPARE(records[0].fault, QString("quoted field without its closing quote"));
        QCOMPARE(records[0].line, 2);
    }

    void blankRowsAreSkipped() { QCOMPARE(recordsOf("SMILES,Name\n\n,\nC,a\n  \nCC,b\n\n").size(), 2U); }

    void columnsAreGuessedOrNamed_data()
    {
        QTest::addColumn<QStringList>("header");
        QTest::addColumn<QString>("smiles");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("smilesIndex");
        QTest::addColumn<int>("nameIndex");
        const auto row = [](const char* title, const QStringList& header, const char* smiles, const char* name,
                            int smilesIndex, int nameIndex) {
            QTest::newRow(title) << header << QString(smiles) << QString(name) << smilesIndex << nameIndex;
        };
        row("usual", {"SMILES", "Name"}, "", "", 0, 1);
        row("in any case", {"id", "Smiles"}, "", "", 1, 0);
        row("with a prefix", {"chembl_id", "canonical_smiles"}, "", "", 1, 0);
        row("no names", {"smiles", "weight"}, "", "", 0, -1);
        row("several names", {"smiles", "name", "id"}, "", "", 0, -1);
        row("several names, one chosen", {"smiles", "name", "id"}, "", "id", 0, 2);
        row("chosen by heading", {"smiles", "isomeric_smiles"}, "isomeric_smiles", "", 1, -1);
        row("chosen in another case", {"A", "B"}, "b", "a", 1, 0);
        row("the same case goes first", {"a", "A", "smiles"}, "", "A", 2, 1);
        row("chosen by number", {"x", "y"}, "2", "1", 1, 0);
        row("a heading that is a number", {"2", "1"}, "2", "1", 0, 1);
    }

    void columnsAreGuessedOrNamed()
    {
        QFETCH(QStringList, header);
        QFETCH(QString, smiles);
        QFETCH(QString, name);
        QTEST(int(smilesColumn(header, smiles)), "smilesIndex");
        QTEST(int(nameColumn(header, name)), "nameIndex");
    }

    void unclearColumnsAreRefused()
    {
        QCOMPARE(refusal("a,b\nC,1\n"),
                 QString("test:1: no column of SMILES in the header (a, b): use --smiles-column"));
        QCOMPARE(refusal("smiles,SMILES2\nC,C\n"),
                 QString("test:1: several columns of SMILES (smiles, SMILES2): use --smiles-column"));
        QCOMPARE(refusal("smiles,b\nC,1\n", {"c", ""}), QString("test:1: no column \"c\": the header has smiles, b"));
        QCOMPARE(refusal("smiles,b\nC,1\n", {"3", ""}), QString("test:1: no column \"3\": the header has smiles, b"));
        QCOMPARE(refusal("b,b,smiles\n1,1,C\n", {"", "b"}),
                 QString("test:1: several columns \"b\": use the number of the column"));
        QCOMPARE(refusal(""), QString("test: contains no header"));
        QCOMPARE(refusal("smiles\n"), QString("test: contains no rows below its header"));
    }

    void otherColumnsAreProperties()
    {
        const std::vector<Record> records = recordsOf("smiles,<pKa>,,note\nC,4.8,x,\n");
        QCOMPARE(records[0].data, (Data{{"pKa", "4.8"}, {"column 3", "x"}}));
    }
};

QTEST_APPLESS_MAIN(test_Table)
#include "test_Table.moc"
