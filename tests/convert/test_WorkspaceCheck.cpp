#include "convert/chemistry/Canvas.h"
#include "convert/formats/WorkspaceCheck.h"
#include "doc/KytFileIO.h"
#include "tests/support/Drawing.h"
#include "tests/support/Files.h"
#include "tests/support/LoggedMessages.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>
#include <QTextStream>

namespace {

/// The faults that the editor's reader has logged, without the name of the file.
QSet<QString> logged()
{
    QSet<QString> faults;
    for (const QString& line : LoggedMessages::lines())
        faults.insert(line.section(QStringLiteral(": "), 1));
    return faults;
}

QStringList shown(const std::vector<LocatedFault>& faults)
{
    QStringList list;
    for (const LocatedFault& fault : faults)
        list.append(QStringLiteral("%1:%2 %3").arg(fault.line).arg(fault.column).arg(fault.text.section(u';', 0, 0)));
    return list;
}

/// The atom records of a sound text, in which an atom's symbol may be "ATOM", too.
qsizetype atomRecords(const QList<QByteArray>& words)
{
    qsizetype count = 0;
    for (qsizetype i = 1; i < words.size(); ++i)
        count += words[i] == "ATOM" && words[i - 1] != "ATOM";
    return count;
}

} // namespace

class test_WorkspaceCheck : public QObject {
    Q_OBJECT

private slots:
    void soundFilesHaveNoFaults_data()
    {
        QTest::addColumn<QString>("fileName");
        for (const char* name : {"lib/benzene.kyf", "lib/cubane.kyf", "lib/hexane.kyf", "lib/megaphon.kyf",
                                 "lib/prop.kyf", "lib/water.kyf", "data/alanine.kyt", "data/caffeine.kyt"})
            QTest::newRow(name) << name;
    }

    void soundFilesHaveNoFaults()
    {
        QFETCH(QString, fileName);
        const QByteArray text = readFile(fileName);
        QCOMPARE(shown(checkWorkspace(text)), QStringList());
    }

    void faultsAreToldWithTheirPlace_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("faults");
        const QByteArray head = "KYTFILE\n MOLECULE 2 1\n  ATOM C 1 2 0 255 0 0\n  ATOM O 31 2 0 255 0 0\n";
        const QByteArray end = " END_MOLECULE\nEND_KYTFILE\n";
        const auto row = [](const char* name, const QByteArray& text, const QStringList& faults) {
            QTest::newRow(name) << text << faults;
        };
        row("no workspace", "hello\n", {"1:1 not a workspace: file does not start with KYTFILE"});
        row("empty", "", {"1:1 not a workspace: file does not start with KYTFILE"});
        row("cut off", "KYTFILE\n", {"2:1 unexpected end of file, END_KYTFILE missing"});
        row("cut off in a molecule", head,
            {"5:1 molecule has fewer records than declared", "5:1 unexpected end of file, END_KYTFILE missing"});
        row("text behind it", head + "  BOND 0 1 1 1\n" + end + "\n\n  more\n", {"10:3 text after END_KYTFILE"});
        row("a number that is none", "KYTFILE MOLECULE 1 0\nATOM C 1 x 0 255 0 0\nEND_MOLECULE END_KYTFILE",
            {"2:10 invalid number"});
        row("a negative count", "KYTFILE MOLECULE -1 0 END_MOLECULE END_KYTFILE", {"1:18 negative count"});
        row("a bond to nowhere", head + "  BOND 0 2 1 1\n" + end, {"5:12 bond refers to a non-existent atom"});
        row("a bond to itself", head + "  BOND 1 1 1 1\n" + end, {"5:12 bond from an atom to itself"});
        row("a wedge on a line", head + "  BOND 0 1 2 1 2\n" + end, {"5:16 bond cannot take another line or wedge"});
        row("four lines", head + "  BOND 0 1 4 1 1 1 1\n" + end, {"5:20 bond cannot take another line or wedge"});
        row("a kind that is not drawn", head + "  BOND 0 1 1 5\n" + end, {"5:14 unsupported line kind"});
        row("a bond without lines", head + "  BOND 0 1 0\n" + end, {"5:12 bond without lines"});
        row("more bonds than announced", head + "  BOND 0 1 1 1\n  BOND 1 0 1 1\n" + end,
            {"6:3 more bonds than declared"});
        row("another keyword", head + "  BAND 0 1 1 1\n" + end, {"5:3 expected ATOM or BOND"});
        row("another closing word", head + "  BOND 0 1 1 1\nEND END_KYTFILE\n", {"6:1 expected END_MOLECULE"});
        row("something else than a molecule", "KYTFILE\n\tMOLECUL 0 0\nEND_KYTFILE\n",
            {"2:2 expected MOLECULE or END_KYTFILE"});
        row("a colour that is none", "KYTFILE MOLECULE 1 0\nATOM C 1 2 0 256 0 red\nEND_MOLECULE END_KYTFILE",
            {"2:14 colour component is not an integer from 0 to 255",
             "2:20 colour component is not an integer from 0 to 255"});
        row("columns are characters",
            QStringLiteral("KYTFILE MOLECULE 1 0\nATOM \u00c4\U0001F600 1 x 0 1 1 1\n"
                           "END_MOLECULE END_KYTFILE")
                .toUtf8(),
            {"2:11 invalid number"});
        row("Windows line ends", "KYTFILE\r\nMOLECULE 1 0\r\nATOM C 1 x 0 1 1 1\r\nEND_MOLECULE END_KYTFILE",
            {"3:10 invalid number"});
    }

    void faultsAreToldWithTheirPlace()
    {
        QFETCH(QByteArray, text);
        QTEST(shown(checkWorkspace(text)), "faults");
    }

    // What the editor's reader logs is told, too; where nothing is told, every atom and bond of the text has been read.
    void theCheckAgreesWithTheReaderOnDamagedFiles()
    {
        const QList<QByteArray> words = readFile("data/alanine.kyt").simplified().split(' ');
        const QList<QByteArray> others = {"0",    "1",        "-1",           "99",          "x",   "ATOM",
                                          "BOND", "MOLECULE", "END_MOLECULE", "END_KYTFILE", "2.5", "300"};
        QRandomGenerator random(7);
        int sound = 0;
        int damaged = 0;
        for (int round = 0; round < 1500; ++round) {
            QList<QByteArray> changed = words;
            for (int i = random.bounded(3); i >= 0; --i) {
                const qsizetype at = random.bounded(changed.size());
                const int way = random.bounded(3);
                if (way == 0)
                    changed[at] = others[random.bounded(others.size())];
                else if (way == 1)
                    changed.removeAt(at);
                else
                    changed.insert(at, others[random.bounded(others.size())]);
            }
            const LoggedMessages messages;
            Canvas canvas;
            const QByteArray text = changed.join(random.bounded(2) ? '\n' : ' ');
            const std::vector<LocatedFault> faults = readChecked(text, canvas.doc);
            QSet<QString> told;
            for (const LocatedFault& fault : faults)
                told.insert(fault.text);
            QVERIFY2(told.contains(logged()), text);
            if (faults.empty()) {
                ++sound;
                QVERIFY2(atomsOf(*canvas.doc.canvas).size() == atomRecords(changed), text);
            } else {
                ++damaged;
            }
        }
        QVERIFY(sound > 50);
        QVERIFY(damaged > 500);
    }
};

QTEST_MAIN(test_WorkspaceCheck)
#include "test_WorkspaceCheck.moc"
