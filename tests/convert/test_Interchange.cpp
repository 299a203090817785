#include "convert/chemistry/MoleculeInfo.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/StartChemistry.h"
#include "tests/convert/Converting.h"
#include "tests/support/Files.h"
#include "tests/support/Near.h"

#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

struct Known {
    QString smiles;
    QString name;
    bool survives;
};

QList<Known> knownMolecules()
{
    QList<Known> known;
    for (const QByteArray& bytes : readFile("tests/convert/molecules.smi").split('\n')) {
        const QString line = QString::fromUtf8(bytes);
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QString behind = line.section(u' ', 1);
        known.append({line.section(u' ', 0, 0), behind.section(QStringLiteral(" ! "), 0, 0),
                      !behind.contains(QStringLiteral(" ! "))});
    }
    return known;
}

/// What RDKit makes of a SMILES without any drawing.
QString canonical(const QString& smiles)
{
    const std::unique_ptr<RDKit::RWMol> molecule(RDKit::SmilesToMol(smiles.toStdString()));
    return molecule ? QString::fromStdString(RDKit::MolToSmiles(*molecule)) : QString();
}

QString throughADrawing(const QString& smiles)
{
    const QByteArray workspace = write(read(smiles.toUtf8(), "smi"), "kyt");
    return QString::fromUtf8(write(read(workspace, "kyt"), "smi")).section(u'\t', 0, 0).trimmed();
}

} // namespace

class test_Interchange : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void aHydrogenBondIsLostInSmiles()
    {
        const QStringList notes = notesOf(workspaceWith("BOND 0 1 1 0"), "kyt", "smi");
        QVERIFY2(notes.contains("hydrogen bonds: omitted, not supported in SMILES (1)"), qPrintable(notes.join(u'\n')));
    }

    void whatIsLostInReadingIsNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("note");
        QTest::newRow("hydrogens") << QByteArray("[PH5]")
                                   << "atoms with an unusual number of hydrogens: read with the usual number (1)";
        QTest::newRow("open double bond")
            << QByteArray("CC=CC\nC/C=C/C\nCC(C)=C\nC1CC=CCC1")
            << "double bonds with unspecified E/Z stereo: drawn as one of the isomers (1)";
        const QString unusual =
            "stereo of allenes and of non-tetrahedral centres: discarded, not supported in drawings "
            "(1)";
        QTest::newRow("square planar") << QByteArray("N[Pt@SP1](Cl)(N)Cl") << unusual;
        QTest::newRow("allene") << QByteArray("FC=[C@]=CF") << unusual;
        QTest::newRow("racemate") << QByteArray("F[C@H](Cl)Br |&1:1|")
                                  << "relative or racemic stereo groups: read as absolute stereocentres (1)";
    }

    void whatIsLostInReadingIsNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, note);
        QCOMPARE(notesOf(text, "smi", "kyt"), QStringList(note));
    }

    void whatIsNotLostIsNotNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        for (const char* smiles : {"[nH]1cccc1", "[NH4+].[Cl-]", "[BH4-]", "C[S@](=O)CC", "[13CH4]", "C/C=C\\C",
                                   "[OH2]", "C[C@H](N)C(=O)O", "[Fe+2]", "*C", "F[C@H](Cl)Br |a:1|"})
            QTest::newRow(smiles) << QByteArray(smiles);
    }

    void whatIsNotLostIsNotNamed()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(notesOf(text, "smi", "kyt"), QStringList());
    }

    void labelsThatSmilesCannotKeepAreCounted()
    {
        QByteArray text = workspaceWith("BOND 0 1 3 1 1 1\nBOND 1 2 3 1 1 1\nBOND 0 3 1 1\nBOND 2 4 1 1", 5);
        text.replace("ATOM C 190", "ATOM Me 190").replace("ATOM C 220", "ATOM Et 220");
        const QStringList notes = notesOf(text, "kyt", "smi");
        QVERIFY2(notes.contains("labels that are not elements: written as * (2)"), qPrintable(notes.join(u'\n')));
    }

    void aChargedHydrogenIsNotDroppedFromSmiles()
    {
        QByteArray text = workspaceWith("BOND 0 1 1 1", 2);
        text.replace("ATOM C 130", "ATOM H+ 130");
        const QByteArray smiles = write(read(text, "kyt"), "smi");
        QVERIFY2(smiles.contains("[H+]"), smiles.constData());
    }

    void linesOfSmilesMayEndInAnyWay_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("LF") << QByteArray("C a\nCC b\n");
        QTest::newRow("CR LF") << QByteArray("C a\r\nCC b\r\n");
        QTest::newRow("CR") << QByteArray("C a\rCC b\r");
        QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf"
                                                       "C a\nCC b");
    }

    void linesOfSmilesMayEndInAnyWay()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(write(read(text, "smi"), "smi"), QByteArray("C\ta\nCC\tb\n"));
    }

    void smilesInLatin1BecomeUtf8()
    {
        QCOMPARE(write(read("CC \xe9thane", "smi"), "smi"), QByteArray("CC\t\xc3\xa9thane\n"));
    }

    void aDrawingReadLandsInAFreshWindow()
    {
        const std::vector<Sketch> sketches = read("CC(=O)Oc1ccccc1C(=O)O aspirin", "smi");
        QVERIFY(shownPart.contains(extentOf(sketches[0])));
        for (const SketchBond& bond : sketches[0].molecules[0].bonds) {
            const SketchAtom& from = sketches[0].molecules[0].atoms[bond.from];
            const SketchAtom& to = sketches[0].molecules[0].atoms[bond.to];
            NEAR(std::hypot(from.x - to.x, from.y - to.y), 30, 1);
        }
    }

    void aNameThatLooksLikeSyntaxSurvives_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("the end of a record") << QStringLiteral("$$$$ money");
        QTest::newRow("a byte order mark") << QStringLiteral("\uFEFFmoney");
        QTest::newRow("the end of a record after a byte order mark") << QStringLiteral("\uFEFF$$$$ money");
    }

    void aNameThatLooksLikeSyntaxSurvives()
    {
        QFETCH(QString, name);
        const std::vector<Sketch> sketches = read("CO " + name.toUtf8() + "\nC " + name.toUtf8(), "smi");
        for (const char* format : {"sdf", "smi"}) {
            const std::vector<Sketch> again = read(write(sketches, format), format);
            QCOMPARE(again.size(), std::size_t{2});
            for (const Sketch& sketch : again)
                QCOMPARE(sketch.molecules[0].name, name);
        }
    }

    void labelsSurviveSmiles()
    {
        const QByteArray smiles = write(read(readFile("data/alanine.kyt"), "kyt"), "smi");
        const std::vector<Sketch> sketches = read(smiles, "smi");
        QStringList symbols;
        for (const SketchAtom& atom : sketches[0].molecules[0].atoms)
            symbols.append(atom.symbol);
        for (const char* label : {"CH3", "OH", "NH2"})
            QVERIFY2(symbols.contains(label), smiles.constData());
    }

    void aLabelMayHaveTheMarksOfTheExtensionOfSmiles_data()
    {
        QTest::addColumn<QString>("label");
        for (const char* label : {"C;x", "$", ";", "a|b", "$$$$", "&#59;", "&", "R,1"})
            QTest::newRow(label) << label;
    }

    void aLabelMayHaveTheMarksOfTheExtensionOfSmiles()
    {
        QFETCH(QString, label);
        QByteArray text = workspaceWith("BOND 0 1 1 1", 2);
        text.replace("ATOM C 130", "ATOM " + label.toUtf8() + " 130");
        const QByteArray smiles = write(read(text, "kyt"), "smi");
        const std::vector<Sketch> sketches = read(smiles, "smi");
        QStringList symbols;
        for (const SketchAtom& atom : sketches[0].molecules[0].atoms)
            symbols.append(atom.symbol);
        symbols.sort();
        QStringList expected = {"C", label};
        expected.sort();
        QCOMPARE(symbols, expected);
    }

    void stereoBetweenLabelsSurvivesSmiles_data()
    {
        QTest::addColumn<QByteArray>("wedges");
        QTest::newRow("one hand") << QByteArray("BOND 0 1 1 2\nBOND 0 2 1 1\nBOND 0 3 1 1\nBOND 0 4 1 1");
        QTest::newRow("other hand") << QByteArray("BOND 0 1 1 3\nBOND 0 2 1 1\nBOND 0 3 1 1\nBOND 0 4 1 1");
    }

    void stereoBetweenLabelsSurvivesSmiles()
    {
        QFETCH(QByteArray, wedges);
        const QByteArray start =
            "KYTFILE MOLECULE 5 4 ATOM C 100 100 0 1 1 1 ATOM NH2 130 100 0 1 1 1 ATOM OH 85 126 0 1 1 1 "
            "ATOM CH3 70 90 0 1 1 1 ATOM F 100 70 0 1 1 1 ";
        const QByteArray smiles = write(read(start + wedges + " END_MOLECULE END_KYTFILE", "kyt"), "smi");
        QVERIFY2(smiles.contains('@'), smiles.constData());
        // With elements in place of the labels, the hand can be compared.
        const auto hand = [](QByteArray text) {
            const std::vector<Sketch> sketches = read(text, "smi");
            QByteArray workspace = write(sketches, "kyt");
            workspace.replace(" NH2 ", " Cl ").replace(" OH ", " Br ").replace(" CH3 ", " I ");
            return write(read(workspace, "kyt"), "smi");
        };
        QByteArray elements = start + wedges + " END_MOLECULE END_KYTFILE";
        elements.replace(" NH2 ", " Cl ").replace(" OH ", " Br ").replace(" CH3 ", " I ");
        const QByteArray expected = write(read(elements, "kyt"), "smi");
        QVERIFY2(expected.contains('@'), expected.constData());
        QCOMPARE(hand(smiles), expected);
    }

    void knownMoleculesKeepTheirCanonicalSmiles()
    {
        const QList<Known> known = knownMolecules();
        QVERIFY(known.size() >= 300);
        QStringList failures;
        int surviving = 0;
        for (const Known& molecule : known) {
            const QString before = canonical(molecule.smiles);
            if (before.isEmpty()) {
                failures.append(molecule.name + ": not a SMILES");
                continue;
            }
            const QString after = throughADrawing(molecule.smiles);
            surviving += before == after;
            if ((before == after) != molecule.survives)
                failures.append(molecule.name + ": " + before + " became " + after);
        }
        QVERIFY2(failures.isEmpty(), qPrintable('\n' + failures.join(u'\n')));
        QVERIFY(surviving >= 300);
    }

    void knownFormulas_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("formula");
        QTest::addColumn<double>("weight");
        QTest::addColumn<int>("rings");
        QTest::newRow("water") << "water"
                               << "H2O" << 18.015 << 0;
        QTest::newRow("caffeine") << "caffeine"
                                  << "C8H10N4O2" << 194.19 << 2;
        QTest::newRow("aspirin") << "aspirin"
                                 << "C9H8O4" << 180.16 << 1;
        QTest::newRow("ibuprofen") << "ibuprofen"
                                   << "C13H18O2" << 206.28 << 1;
        QTest::newRow("cholesterol") << "cholesterol"
                                     << "C27H46O" << 386.65 << 4;
        QTest::newRow("penicillin") << "benzylpenicillin"
                                    << "C16H18N2O4S" << 334.39 << 3;
        QTest::newRow("paclitaxel") << "paclitaxel"
                                    << "C47H51NO14" << 853.9 << 7;
        QTest::newRow("erythromycin") << "erythromycin"
                                      << "C37H67NO13" << 733.93 << 3;
        QTest::newRow("morphine") << "morphine"
                                  << "C17H19NO3" << 285.34 << 5;
        QTest::newRow("strychnine") << "strychnine"
                                    << "C21H22N2O2" << 334.41 << 7;
        QTest::newRow("sucrose") << "sucrose"
                                 << "C12H22O11" << 342.3 << 2;
        QTest::newRow("ATP") << "ATP"
                             << "C10H16N5O13P3" << 507.18 << 3;
        QTest::newRow("cubane") << "cubane"
                                << "C8H8" << 104.15 << 5;
        QTest::newRow("coronene") << "coronene"
                                  << "C24H12" << 300.36 << 7;
        QTest::newRow("quinine") << "quinine"
                                 << "C20H24N2O2" << 324.42 << 4;
        QTest::newRow("heavy water") << "heavy water"
                                     << "H2O" << 20.028 << 0;
        QTest::newRow("sodium chloride") << "sodium chloride"
                                         << "ClNa" << 58.44 << 0;
        QTest::newRow("paraquat") << "paraquat"
                                  << "C12H14N2+2" << 186.26 << 2;
        QTest::newRow("vitamin D3") << "cholecalciferol"
                                    << "C27H44O" << 384.65 << 3;
        QTest::newRow("simvastatin") << "simvastatin"
                                     << "C25H38O5" << 418.57 << 3;
    }

    void knownFormulas()
    {
        QFETCH(QString, name);
        QFETCH(double, weight);
        const QList<Known> known = knownMolecules();
        const auto found = std::find_if(known.begin(), known.end(), [&](const Known& one) { return one.name == name; });
        QVERIFY(found != known.end());
        const MoleculeInfo info = infoOf(read(found->smiles.toUtf8(), "smi")[0].molecules[0]);
        QTEST(info.formula, "formula");
        NEAR(info.weight, weight, 0.02);
        QTEST(info.rings, "rings");
        QCOMPARE(info.warnings, QStringList());
    }

    void aCarbonWithFiveBondsIsComplainedAbout()
    {
        const std::vector<Sketch> sketches = read(workspaceWith("BOND 0 1 3 1 1 1\nBOND 1 2 2 1 1"), "kyt");
        const MoleculeInfo info = infoOf(sketches[0].molecules[0]);
        QCOMPARE(info.warnings, QStringList("atom 2 (C): more bonds than its valence allows"));
        QCOMPARE(info.bonds, 2);
    }

    void badInputIsRefusedWithItsPlace_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("place");
        const QByteArray good = write(read("CCO", "smi"), "sdf");
        const qsizetype goodLines = good.count('\n');
        QTest::newRow("SMILES") << QByteArray("CCO\n\nC1CC\n") << "smi"
                                << "test:3: ";
        QTest::newRow("SMILES of a wrong valence") << QByteArray("C(C)(C)(C)(C)C") << "smi"
                                                   << "test:1: ";
        QTest::newRow("SMILES with a letter of another script") << QByteArray("C\n\xc3\xa9"
                                                                              "C")
                                                                << "smi"
                                                                << "test:2: ";
        QTest::newRow("SMILES with a null byte") << QByteArray("C\0C", 3) << "smi"
                                                 << "test:1: ";
        QTest::newRow("property with a null byte")
            << QByteArray(good).insert(good.indexOf("$$$$"), QByteArray("> <A>\nB\0C\n\n", 11)) << "sdf"
            << QStringLiteral("test:%1: unexpected null byte").arg(goodLines + 1);
        QTest::newRow("workspace with a null byte")
            << QByteArray("KYTFILE\n MOLECULE 1 0\n ATOM C\0 1 1 0 255 0 0\n END_MOLECULE\nEND_KYTFILE\n", 71) << "kyt"
            << "test:3: unexpected null byte";
        QTest::newRow("no SMILES") << QByteArray("# nothing\n") << "smi"
                                   << "test: ";
        QTest::newRow("binary as SMILES") << QByteArray("\0\1\2\377\376", 5) << "smi"
                                          << "test:1: ";
        QTest::newRow("too many atoms") << QByteArray(5000, 'C') << "smi"
                                        << "test:1: ";
        QTest::newRow("long line") << QByteArray(100'000, 'C') << "smi"
                                   << "test:1: ";
        QTest::newRow("nested") << QByteArray(8000, '(') << "smi"
                                << "test:1: ";
        QTest::newRow("a workspace that is cut off") << QByteArray("KYTFILE\n MOLECULE 1 0\n ATOM C 1") << "kyt"
                                                     << "test:3:10: ";
    }

    void badInputIsRefusedWithItsPlace()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, format);
        QFETCH(QString, place);
        try {
            read(text, format);
            QFAIL("it was read");
        } catch (const ConversionError& fault) {
            QVERIFY2(fault.text().startsWith(place), qPrintable(fault.text()));
            QVERIFY(!fault.text().contains(u'\n'));
        }
    }
};

QTEST_MAIN(test_Interchange)
#include "test_Interchange.moc"
