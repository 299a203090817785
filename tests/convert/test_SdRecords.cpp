#include "convert/Notes.h"
#include "convert/formats/SdRecords.h"
#include "tests/convert/Molfiles.h"

#include <QTest>

namespace {

using Data = std::vector<std::pair<QString, QString>>;

const QByteArray block = "name\n\n\nM  END\n";

/// The properties of a file with one record, which has these lines behind its molfile.
Data dataOf(const QByteArray& lines)
{
    const std::vector<SdRecord> records = splitRecords(block + lines);
    return records.size() == 1 ? records[0].data : Data{{"records", QString::number(records.size())}};
}

/// The faults of a molfile, separated by commas.
QString announced(const QByteArray& molfile)
{
    SdRecord record;
    record.block = molfile;
    return recordFaults(record).join(", ");
}

/// A V3000 molfile with these lines in its connection table.
QByteArray table(const QByteArray& lines)
{
    return "\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\n" + lines + "M  V30 END CTAB\nM  END\n";
}

} // namespace

class test_SdRecords : public QObject {
    Q_OBJECT

private slots:
    // Taking a file apart

    void blankFilesHoldNoRecord_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char* text : {"", "\n", " \n\t\n\r\n", "$$$$\n", "\n$$$$\n\n$$$$\n"})
            QTest::newRow(text) << QByteArray(text);
    }

    void blankFilesHoldNoRecord()
    {
        QFETCH(QByteArray, text);
        QVERIFY(splitRecords(text).empty());
    }

    void aMolfileIsARecord()
    {
        const std::vector<SdRecord> records = splitRecords(block);
        QCOMPARE(records.size(), std::size_t{1});
        QCOMPARE(records[0].firstLine, 1);
        QCOMPARE(records[0].block, block);
        QVERIFY(records[0].data.empty());
    }

    void aMolfileThatIsCutOffIsARecordOfWhatThereIs()
    {
        const std::vector<SdRecord> records = splitRecords("name\n  12");
        QCOMPARE(records.size(), std::size_t{1});
        QCOMPARE(records[0].block, QByteArray("name\n  12\n"));
    }

    void recordsKnowTheirFirstLines_data()
    {
        QTest::addColumn<QByteArray>("end");
        QTest::newRow("LF") << QByteArray("\n");
        QTest::newRow("CR LF") << QByteArray("\r\n");
        QTest::newRow("CR") << QByteArray("\r");
    }

    void recordsKnowTheirFirstLines()
    {
        QFETCH(QByteArray, end);
        const QByteArray text = block + "> <A>\n1\n\n$$$$\n" + block + "$$$$\n" + block;
        const std::vector<SdRecord> records = splitRecords(QByteArray(text).replace("\n", end));
        QCOMPARE(records.size(), std::size_t{3});
        QCOMPARE(records[0].firstLine, 1);
        QCOMPARE(records[1].firstLine, 9);
        QCOMPARE(records[2].firstLine, 14);
        for (const SdRecord& record : records)
            QCOMPARE(record.block, block);
        QCOMPARE(records[0].data, (Data{{"A", "1"}}));
        QVERIFY(records[1].data.empty());
    }

    void blankRecordsAreNoneButCount()
    {
        const std::vector<SdRecord> records = splitRecords("$$$$\n \n$$$$\n" + block + "$$$$\n\n\n");
        QCOMPARE(records.size(), std::size_t{1});
        QCOMPARE(records[0].firstLine, 4);
    }

    void aRecordEndsAlsoWithinItsMolfile()
    {
        const std::vector<SdRecord> records = splitRecords("first\n$$$$ and more\nsecond\n$$$\n");
        QCOMPARE(records.size(), std::size_t{2});
        QCOMPARE(records[0].block, QByteArray("first\n"));
        QVERIFY(records[1].block.startsWith("second\n$$$\n"));
    }

    void anAliasMayReadLikeTheEndOfARecord_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<int>("records");
        QTest::newRow("behind its head") << QByteArray("A    1\n") << 1;
        QTest::newRow("behind a head without a number") << QByteArray("A     \n") << 2;
        QTest::newRow("behind another line") << QByteArray("A    1\nMe\n") << 2;
        QTest::newRow("behind an alias that reads like a head") << QByteArray("A    1\nA    2\n") << 2;
        QTest::newRow("behind no head") << QByteArray("a    1\n") << 2;
    }

    void anAliasMayReadLikeTheEndOfARecord()
    {
        QFETCH(QByteArray, head);
        QFETCH(int, records);
        QCOMPARE(int(splitRecords("\n\n\n" + head + "$$$$\nM  END\n").size()), records);
    }

    void propertiesAreReadWithTheirNames_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<Data>("data");
        const auto row = [](const char* name, const QByteArray& lines, const Data& data) {
            QTest::newRow(name) << lines << data;
        };
        row("none", "", {});
        row("one", "> <A>\n1\n\n", {{"A", "1"}});
        row("in the last line of the file", "> <A>\n1", {{"A", "1"}});
        row("a number before its name", "> 25 <BOILING.POINT>\n78.4\n\n", {{"BOILING.POINT", "78.4"}});
        row("a number behind its name", ">  <A>  (12)\n1\n\n", {{"A", "1"}});
        row("without a blank", "><A>\n1\n\n", {{"A", "1"}});
        row("brackets in a name", "> <a<b>c>\n1\n\n", {{"a<b>c", "1"}});
        row("an empty name", "> <>\n1\n\n", {{"", "1"}});
        row("no name", "> DT12\n1\n\n", {{"", "1"}});
        row("a name without its end", "> <A\n1\n\n", {{"", "1"}});
        row("several lines", "> <A>\n1\n 2 \n3\n\n", {{"A", "1\n 2 \n3"}});
        row("no text", "> <A>\n\n> <B>\n2\n\n", {{"A", ""}, {"B", "2"}});
        row("one behind the other", "> <A>\n> <B>\n2\n\n", {{"A", ""}, {"B", "2"}});
        row("the same name twice", "> <A>\n1\n\n> <A>\n2\n\n", {{"A", "1"}, {"A", "2"}});
        row("text behind a blank line is of none", "> <A>\n1\n \nlost\n> <B>\n2\n\n", {{"A", "1"}, {"B", "2"}});
        row("text before the first is of none", "lost\n> <A>\n1\n\n", {{"A", "1"}});
        row("letters beyond ASCII", "> <\xc3\xa9>\n\xce\xb1\n\n",
            {{QStringLiteral("\u00e9"), QStringLiteral("\u03b1")}});
        row("three dollars", "> <PRICE>\n$$$\n\n", {{"PRICE", "$$$"}});
    }

    void propertiesAreReadWithTheirNames()
    {
        QFETCH(QByteArray, lines);
        QFETCH(Data, data);
        QCOMPARE(dataOf(lines), data);
    }

    void aLineLikeAPropertyInAMolfileIsNone()
    {
        const std::vector<SdRecord> records = splitRecords("> <A>\n1\n\nM  END\n");
        QVERIFY(records[0].data.empty());
        QCOMPARE(records[0].block, QByteArray("> <A>\n1\n\nM  END\n"));
    }

    // Symbols

    void symbolsAreReplacedByAnyAtom_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<int>>("atoms");
        const QByteArray one = molfileWith("  1  2  1  0\n");
        const QByteArray v3000 = v3000With("M  V30 1 1 1 2\n");
        QTest::newRow("none") << one << QList<int>();
        QTest::newRow("both") << QByteArray(one).replace(" C   0", " Ph  0") << QList<int>{0, 1};
        QTest::newRow("second") << QByteArray(one).replace("1.5000    0.0000    0.0000 C  ",
                                                           "1.5000    0.0000    0.0000 Ph ")
                                << QList<int>{1};
        QTest::newRow("a longer one") << QByteArray(one).replace(" C   0", " PhX 0") << QList<int>();
        QTest::newRow("a shorter one") << QByteArray(one).replace(" C   0", " P   0") << QList<int>();
        QTest::newRow("in another case") << QByteArray(one).replace(" C   0", " ph  0") << QList<int>();
        QTest::newRow("elsewhere in the line") << QByteArray(one).replace(" C   0  0", " C   Ph 0") << QList<int>();
        QTest::newRow("in the head") << QByteArray(one).replace("  test", QByteArray(31, ' ') + "Ph") << QList<int>();
        QTest::newRow("V3000, both") << QByteArray(v3000).replace(" C ", " Ph ") << QList<int>{0, 1};
        QTest::newRow("V3000, second of two lines each")
            << QByteArray(v3000).replace("1 C 0 0", "1 C 0 -\nM  V30 0").replace("2 C 1.5", "2 Ph -\nM  V30 1.5")
            << QList<int>{1};
        QTest::newRow("V3000, among the bonds") << v3000With("M  V30 1 Ph 1 2\n") << QList<int>();
        QTest::newRow("V3000 without atoms") << table("M  V30 1 Ph 0 0 0 0\n") << QList<int>();
    }

    void symbolsAreReplacedByAnyAtom()
    {
        QFETCH(QByteArray, text);
        QFETCH(QList<int>, atoms);
        QByteArray replaced = text;
        const std::vector<unsigned> found = replaceSymbol(replaced, "Ph");
        QCOMPARE(QList<int>(found.begin(), found.end()), atoms);
        QCOMPARE(replaced == text, atoms.isEmpty());
        QCOMPARE(replaced.count("\n"), text.count("\n"));
        if (!atoms.isEmpty())
            QVERIFY(!replaced.contains("Ph") && replaced.contains('*'));
        // There is nothing more to replace.
        QVERIFY(replaceSymbol(replaced, "Ph").empty());
    }

    void onlyAsManyAtomsAreReplacedAsThereAre_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("atoms");
        const QByteArray both = molfileWith("  1  2  1  0\n").replace(" C   0", " Ph  0");
        QTest::newRow("one announced") << QByteArray(both).replace("  2  1  0", "  1  1  0") << 1;
        QTest::newRow("none announced") << QByteArray(both).replace("  2  1  0", "  0  1  0") << 0;
        QTest::newRow("fewer than none") << QByteArray(both).replace("  2  1  0", " -2  1  0") << 0;
        QTest::newRow("no number") << QByteArray(both).replace("  2  1  0", "  x  1  0") << 0;
        QTest::newRow("many announced") << QByteArray(both).replace("  2  1  0", "999  1  0") << 2;
        QTest::newRow("cut off in the counts") << both.left(both.indexOf("  2  1")) << 0;
        QTest::newRow("nothing") << QByteArray() << 0;
    }

    void onlyAsManyAtomsAreReplacedAsThereAre()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, atoms);
        QCOMPARE(int(replaceSymbol(text, "Ph").size()), atoms);
    }

    // Announcements

    void soundMolfilesAnnounceWhatTheyHold_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("V2000") << molfileWith("  1  2  1  0\n");
        QTest::newRow("V2000 without bonds") << molfileWith("", 0);
        QTest::newRow("V3000") << v3000With("M  V30 1 1 1 2\n");
        QTest::newRow("V3000 with atoms numbered anyhow")
            << table("M  V30 BEGIN ATOM\nM  V30 7 C 0 0 0 0\nM  V30 3 C 1 0 0 0\nM  V30 END ATOM\n"
                     "M  V30 BEGIN BOND\nM  V30 1 1 3 7\nM  V30 END BOND\n");
        QTest::newRow("V3000, bonds that are no numbers are left to the reader") << v3000With("M  V30 1 1 x y\n");
        QTest::newRow("V3000, a bond without ends is left to the reader") << v3000With("M  V30 1 1\n");
        QTest::newRow("V2000 with more announced than there is, which is left to the reader")
            << molfileWith("  1  9  1  0\n", 900);
        QTest::newRow("V2000 with a negative number of bonds, which is left to the reader") << molfileWith("", -1);
        QTest::newRow("V2000 with a negative number of atoms, which is left to the reader")
            << QByteArray("\n\n\n-10  9  0  0  0  0  0  0  0  0999 V2000\n  1  2  1  0\n");
        QTest::newRow("a list as long as it says") << table("M  V30 1 DAT 0 ATOMS=(2 1 2)\n");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a head without counts") << QByteArray("\n\n\n");
    }

    void soundMolfilesAnnounceWhatTheyHold()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(announced(text), QString());
    }

    void whatCannotBeIsToldWithItsLine_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("fault");
        const auto row = [](const char* name, const QByteArray& text, const char* fault) {
            QTest::newRow(name) << text << QString(fault);
        };
        row("to an atom after the last", molfileWith("  1  3  1  0\n"), "line 7 bond refers to non-existent atom 3");
        row("to an atom before the first", molfileWith("  0  2  1  0\n"), "line 7 bond refers to non-existent atom 0");
        row("to an atom below zero", molfileWith(" -1  2  1  0\n"), "line 7 bond refers to non-existent atom -1");
        row("to itself", molfileWith("  2  2  1  0\n"), "line 7 bond from atom 2 to itself");
        row("a second one", molfileWith("  1  2  1  0\n  1  2  2  0\n", 2),
            "line 8 duplicate bond between atoms 1 and 2");
        row("a second one back", molfileWith("  1  2  1  0\n  2  1  1  0\n", 2),
            "line 8 duplicate bond between atoms 2 and 1");
        row("several", molfileWith("  1  3  1  0\n  2  2  1  0\n  1  2  1  0\n", 3),
            "line 7 bond refers to non-existent atom 3, line 8 bond from atom 2 to itself");
        row("V3000, to a non-existent atom", v3000With("M  V30 1 1 1 3\n"),
            "line 12 bond refers to non-existent atom 3");
        row("V3000, to itself", v3000With("M  V30 1 1 2 2\n"), "line 12 bond from atom 2 to itself");
        row("V3000, a second one behind one of two lines", v3000With("M  V30 1 1 1 -\nM  V30 2\nM  V30 2 1 2 1\n", 2),
            "line 14 duplicate bond between atoms 2 and 1");
        row("V3000, in two lines", v3000With("M  V30 1 1 1 -\nM  V30 9\n"),
            "line 12 bond refers to non-existent atom 9");
        row("V3000, a bond before the atoms",
            table("M  V30 BEGIN BOND\nM  V30 1 1 1 2\nM  V30 END BOND\nM  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\n"
                  "M  V30 END ATOM\n"),
            "line 7 bond refers to non-existent atom 1, line 7 bond refers to non-existent atom 2");
        row("V3000, atoms of another table",
            table("M  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\nM  V30 END ATOM\nM  V30 BEGIN ATOM\nM  V30 2 C 0 0 0 0\n"
                  "M  V30 END ATOM\nM  V30 BEGIN BOND\nM  V30 1 1 1 2\nM  V30 END BOND\n"),
            "line 13 bond refers to non-existent atom 1");
        row("a huge count", table("M  V30 COUNTS 2000000000 0 0 0 0\n"),
            "line 6 declared count exceeds the number of lines");
        row("a huge last count", table("M  V30 COUNTS 0 0 0 0 99\n"),
            "line 6 declared count exceeds the number of lines");
        row("a count of twenty digits", table("M  V30 COUNTS 99999999999999999999 0 0 0 0\n"),
            "line 6 declared count exceeds the number of lines");
        row("a huge list", table("M  V30 1 DAT 0 ATOMS=(2000000000 1)\n"),
            "line 6 declared list length exceeds the record size");
        row("a second list that is huge", table("M  V30 1 DAT 0 ATOMS=(1 1) XBONDS=( 5000 1)\n"),
            "line 6 declared list length exceeds the record size");
    }

    void whatCannotBeIsToldWithItsLine()
    {
        QFETCH(QByteArray, text);
        QTEST(announced(text), "fault");
    }

    void asManyAsTheFileHasLinesMayBeAnnounced()
    {
        const auto counting = [](int count) {
            return table("M  V30 COUNTS " + QByteArray::number(count) + " 0 0 0 0\n");
        };
        const int lines = int(counting(1).split('\n').size());
        QCOMPARE(announced(counting(lines)), QString());
        QCOMPARE(announced(counting(lines + 1)), QString("line 6 declared count exceeds the number of lines"));
    }
};

QTEST_APPLESS_MAIN(test_SdRecords)
#include "test_SdRecords.moc"
