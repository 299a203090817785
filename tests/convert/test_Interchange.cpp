#include "convert/Chemistry.h"
#include "convert/Conversion.h"
#include "convert/Placement.h"
#include "convert/Symbols.h"
#include "tests/support/Near.h"

#include <GraphMol/FileParsers/FileParsers.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr double tolerance = 1e-4 * pixelsPerAngstrom; // pixels

QByteArray contentsOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::vector<Sketch> read(const QByteArray& text, Format format)
{
    Notes notes;
    return readSketches(text, format, "test", notes);
}

QByteArray write(const std::vector<Sketch>& sketches, Format format, bool v3000 = false)
{
    Notes notes;
    OutputStyle style;
    style.v3000 = v3000;
    return writeSketches(sketches, format, style, notes);
}

std::vector<SketchBond> inOrder(std::vector<SketchBond> bonds)
{
    std::sort(bonds.begin(), bonds.end(), [](const SketchBond& a, const SketchBond& b) {
        return std::pair(a.from, a.to) < std::pair(b.from, b.to);
    });
    return bonds;
}

/// How two molecules differ; empty where they are the same.
QString difference(const SketchMolecule& a, const SketchMolecule& b)
{
    if (a.atoms.size() != b.atoms.size() || a.bonds.size() != b.bonds.size())
        return QStringLiteral("%1 atoms, %2 bonds; %3 atoms, %4 bonds")
            .arg(a.atoms.size())
            .arg(a.bonds.size())
            .arg(b.atoms.size())
            .arg(b.bonds.size());
    for (std::size_t i = 0; i < a.atoms.size(); ++i) {
        const SketchAtom& one = a.atoms[i];
        const SketchAtom& other = b.atoms[i];
        if (one.symbol != other.symbol)
            return QStringLiteral("atom %1: %2, %3").arg(i).arg(one.symbol, other.symbol);
        if (one.color != other.color)
            return QStringLiteral("atom %1: colours").arg(i);
        if (std::fabs(one.x - other.x) > tolerance || std::fabs(one.y - other.y) > tolerance
            || std::fabs(one.depth - other.depth) > tolerance)
            return QStringLiteral("atom %1: (%2, %3, %4), (%5, %6, %7)")
                .arg(i)
                .arg(one.x)
                .arg(one.y)
                .arg(double{one.depth})
                .arg(other.x)
                .arg(other.y)
                .arg(double{other.depth});
    }
    const std::vector<SketchBond> bonds = inOrder(a.bonds);
    const std::vector<SketchBond> others = inOrder(b.bonds);
    for (std::size_t i = 0; i < bonds.size(); ++i) {
        if (bonds[i].from != others[i].from || bonds[i].to != others[i].to)
            return QStringLiteral("bond %1: ends").arg(i);
        if (bonds[i].kinds != others[i].kinds)
            return QStringLiteral("bond %1: kinds").arg(i);
        if (isWedge(bonds[i]) && std::fabs(bonds[i].angle - others[i].angle) > 0.1F)
            return QStringLiteral("bond %1: angles %2, %3")
                .arg(i)
                .arg(double{bonds[i].angle})
                .arg(double{others[i].angle});
    }
    return {};
}

QString difference(const std::vector<Sketch>& a, const std::vector<Sketch>& b)
{
    if (a.size() != 1 || b.size() != 1 || a[0].molecules.size() != b[0].molecules.size())
        return QStringLiteral("not one drawing each with as many molecules");
    for (std::size_t i = 0; i < a[0].molecules.size(); ++i)
        if (const QString found = difference(a[0].molecules[i], b[0].molecules[i]); !found.isEmpty())
            return QStringLiteral("molecule %1, ").arg(i) + found;
    return {};
}

/// Through a molfile or an SD file and back.
QString lossThrough(const QByteArray& workspace, Format format, bool v3000)
{
    const std::vector<Sketch> before = read(workspace, Format::Workspace);
    const std::vector<Sketch> between = read(write(before, format, v3000), format);
    return difference(before, read(write(between, Format::Workspace), Format::Workspace));
}

SketchMolecule randomMolecule(QRandomGenerator& random)
{
    const QStringList symbols = {"C",    "C",   "C",    "N",    "O",   "H",  "N+",
                                 "O-",   "13C", "Fe3+", "Ca+2", "D",   "OH", "CH3",
                                 "R1",   "*",   "NH2",  "Cl",   "Br",  "2H", "18F-",
                                 "X",    "A",   "Q",    "L",    "Pol", "M",  QStringLiteral("\u03b1"),
                                 "$$$$", "END"};
    const std::vector<std::vector<KytBondType>> kinds = {
        {KYTBT_SingleBond},
        {KYTBT_SingleBond, KYTBT_SingleBond},
        {KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond},
        {KYTBT_DashedLine},
        {KYTBT_SingleBond, KYTBT_DashedLine},
        {KYTBT_StereoUp},
        {KYTBT_StereoDown},
    };
    SketchMolecule molecule;
    const int atoms = 1 + random.bounded(40);
    for (int i = 0; i < atoms; ++i) {
        const auto part = [&] { return QString::number(random.bounded(256)); };
        molecule.atoms.push_back({symbols[random.bounded(symbols.size())],
                                  1 + random.bounded(998.0),
                                  1 + random.bounded(998.0),
                                  static_cast<float>(random.bounded(400.0) - 200),
                                  {part(), part(), part()}});
    }
    for (int i = 1; i < atoms; ++i) {
        const int other = random.bounded(i);
        const bool swap = random.bounded(2) == 1;
        molecule.bonds.push_back(
            {swap ? i : other, swap ? other : i, kinds[random.bounded(static_cast<int>(kinds.size()))], 0});
    }
    return molecule;
}

Sketch randomSketch(QRandomGenerator& random)
{
    Sketch sketch;
    sketch.placed = true;
    for (int i = random.bounded(4); i >= 0; --i)
        sketch.molecules.push_back(randomMolecule(random));
    return sketch;
}

struct Known {
    QString smiles;
    QString name;
    bool survives;
};

QList<Known> knownMolecules()
{
    QList<Known> known;
    for (const QByteArray& bytes : contentsOf("tests/convert/molecules.smi").split('\n')) {
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
    const QByteArray workspace = write(read(smiles.toUtf8(), Format::Smiles), Format::Workspace);
    return QString::fromUtf8(write(read(workspace, Format::Workspace), Format::Smiles)).section(u'\t', 0, 0).trimmed();
}

QStringList notesOf(const QByteArray& text, Format from, Format to)
{
    Notes notes;
    writeSketches(readSketches(text, from, "test", notes), to, OutputStyle(), notes);
    return notes.lines();
}

QByteArray workspaceWith(const QByteArray& bonds, int atoms = 3)
{
    QByteArray text =
        "KYTFILE\n MOLECULE " + QByteArray::number(atoms) + ' ' + QByteArray::number(bonds.count("BOND")) + '\n';
    for (int i = 0; i < atoms; ++i)
        text += "ATOM C " + QByteArray::number(100 + 30 * i) + " 100 0 64 64 64\n";
    return text + bonds + "\nEND_MOLECULE\nEND_KYTFILE\n";
}

/// A V2000 molfile of two carbons and with these lines behind them.
QByteArray molfileWith(const QByteArray& lines, int bonds = 1)
{
    return "\n  test\n\n  2" + QByteArray::number(bonds).rightJustified(3)
        + "  0  0  0  0  0  0  0  0999 V2000\n    0.0000    0.0000    0.0000 C   0  0\n"
          "    1.5000    0.0000    0.0000 C   0  0\n"
        + lines + "M  END\n";
}

QByteArray v3000With(const QByteArray& bonds, int count = 1)
{
    return "\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\nM  V30 COUNTS 2 "
        + QByteArray::number(count)
        + " 0 0 0\nM  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\nM  V30 2 C 1.5 0 0 0\nM  V30 END ATOM\n"
          "M  V30 BEGIN BOND\n"
        + bonds + "M  V30 END BOND\nM  V30 END CTAB\nM  END\n";
}

} // namespace

class test_Interchange : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void theLibraryLeavesAtItsLengths_data()
    {
        QTest::addColumn<QString>("molecule");
        QTest::addColumn<int>("neighbour"); // its atomic number, behind carbon or oxygen
        QTest::addColumn<QString>("kind");  // in the table of lib/README.md
        QTest::newRow("water, O-H") << "water" << 1 << "O–H";
        QTest::newRow("benzene, C-C") << "benzene" << 6 << "C–C, aromatic";
        QTest::newRow("benzene, C-H") << "benzene" << 1 << "C–H";
    }

    void theLibraryLeavesAtItsLengths()
    {
        QFETCH(QString, molecule);
        QFETCH(int, neighbour);
        QFETCH(QString, kind);
        const QString readme = QString::fromUtf8(contentsOf("lib/README.md"));
        const QRegularExpressionMatch row = QRegularExpression("\\| " + kind + " \\| ([0-9.]+) Å \\|").match(readme);
        QVERIFY(row.hasMatch());
        const double length = row.captured(1).toDouble();

        const QByteArray text = contentsOf("lib/" + molecule + ".kyf");
        const QByteArray molfile = write(read(text, Format::Workspace), Format::Molfile);
        const std::unique_ptr<RDKit::RWMol> read(RDKit::MolBlockToMol(molfile.toStdString(), false, false));
        int found = 0;
        for (const RDKit::Bond* bond : read->bonds()) {
            if (std::min(bond->getBeginAtom()->getAtomicNum(), bond->getEndAtom()->getAtomicNum()) != neighbour)
                continue;
            ++found;
            const auto& places = read->getConformer();
            const auto between = places.getAtomPos(bond->getBeginAtomIdx()) - places.getAtomPos(bond->getEndAtomIdx());
            NEAR(between.length(), length, 0.001);
        }
        QVERIFY(found > 1);
    }

    void libraryAndSamplesSurviveMolfiles_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<Format>("format");
        QTest::addColumn<bool>("v3000");
        for (const char* name : {"lib/benzene.kyf", "lib/cubane.kyf", "lib/hexane.kyf", "lib/megaphon.kyf",
                                 "lib/prop.kyf", "lib/water.kyf", "data/alanine.kyt", "data/caffeine.kyt"}) {
            for (const Format format : {Format::Molfile, Format::SdFile}) {
                for (const bool v3000 : {false, true})
                    QTest::addRow("%s %s %s", name, format == Format::Molfile ? "molfile" : "SD file",
                                  v3000 ? "V3000" : "V2000")
                        << name << format << v3000;
            }
        }
    }
    void libraryAndSamplesSurviveMolfiles()
    {
        QFETCH(QString, fileName);
        QFETCH(Format, format);
        QFETCH(bool, v3000);
        const QByteArray text = contentsOf(fileName);
        QVERIFY(!text.isEmpty());
        QCOMPARE(lossThrough(text, format, v3000), QString());
    }

    void randomDrawingsSurviveMolfiles_data()
    {
        QTest::addColumn<Format>("format");
        QTest::addColumn<bool>("v3000");
        QTest::newRow("molfile V2000") << Format::Molfile << false;
        QTest::newRow("molfile V3000") << Format::Molfile << true;
        QTest::newRow("SD file V2000") << Format::SdFile << false;
        QTest::newRow("SD file V3000") << Format::SdFile << true;
    }
    void randomDrawingsSurviveMolfiles()
    {
        QFETCH(Format, format);
        QFETCH(bool, v3000);
        QRandomGenerator random(11);
        for (int round = 0; round < 100; ++round)
            QCOMPARE(lossThrough(write({randomSketch(random)}, Format::Workspace), format, v3000), QString());
    }

    void moreThanAV2000FileHoldsIsWrittenAsV3000()
    {
        Sketch sketch;
        sketch.placed = true;
        sketch.molecules.emplace_back();
        for (int i = 0; i < 1200; ++i) {
            sketch.molecules[0].atoms.push_back({"C", i % 60 * 30.0, i / 60 * 30.0, 0, {"1", "2", "3"}});
            if (i > 0)
                sketch.molecules[0].bonds.push_back({i - 1, i, {KYTBT_SingleBond}, 0});
        }
        const QByteArray text = write({sketch}, Format::Molfile);
        QVERIFY(text.contains("V3000"));
        QCOMPARE(difference({sketch}, read(text, Format::Molfile)), QString());
    }

    void scaleAndAxesOfAMolfile()
    {
        const QByteArray text =
            write(read("KYTFILE MOLECULE 1 0 ATOM N+ 130 45 -30 1 2 3 END_MOLECULE END_KYTFILE", Format::Workspace),
                  Format::Molfile);
        QVERIFY(text.contains("    6.5000   -2.2500   -1.5000 N "));
        QVERIFY(text.contains("M  CHG  1   1   1"));
        QVERIFY(text.contains("KYTSTUDIO_COLORS>\n1 1 2 3\n"));
    }

    void wedgesAreWrittenWithTheNarrowEndFirst()
    {
        const QByteArray text =
            write(read(workspaceWith("BOND 2 1 1 2\nBOND 1 0 1 3"), Format::Workspace), Format::Molfile);
        QVERIFY(text.contains("  3  2  1  1"));
        QVERIFY(text.contains("  2  1  1  6"));
    }

    void aHydrogenBondIsOfAnyKindInV2000AndOfItsOwnInV3000()
    {
        const std::vector<Sketch> sketches = read(workspaceWith("BOND 0 1 1 0"), Format::Workspace);
        QVERIFY(write(sketches, Format::Molfile).contains("  1  2  8  0"));
        QVERIFY(write(sketches, Format::Molfile, true).contains("M  V30 1 10 1 2"));
    }

    void whatIsLostIsNamedWithACount_data()
    {
        QTest::addColumn<QByteArray>("bonds");
        QTest::addColumn<Format>("format");
        QTest::addColumn<QString>("note");
        QTest::newRow("hydrogen bonds") << QByteArray("BOND 0 1 1 0\nBOND 1 2 1 0") << Format::Molfile
                                        << "hydrogen bonds: written as bond type 8 (any) in V2000 (2)";
        QTest::newRow("dashed double bond")
            << QByteArray("BOND 0 1 2 0 0") << Format::Molfile
            << "bonds of two or three dashed lines: written as double or triple bonds (1)";
        QTest::newRow("dashed line first")
            << QByteArray("BOND 0 1 2 0 1") << Format::Molfile
            << "aromatic bonds with the dashed line first: written with the dashed line second (1)";
        QTest::newRow("triple bond with a dash") << QByteArray("BOND 0 1 3 1 1 0") << Format::Molfile
                                                 << "triple bonds with a dashed line: written as aromatic bonds (1)";
        QTest::newRow("two bonds") << QByteArray("BOND 0 1 1 1\nBOND 1 0 1 1") << Format::Molfile
                                   << "duplicate bonds between two atoms: omitted (1)";
        QTest::newRow("no lines") << QByteArray("BOND 0 1 0") << Format::Molfile << "bonds without lines: omitted (1)";
        QTest::newRow("hydrogen bond in SMILES")
            << QByteArray("BOND 0 1 1 0") << Format::Smiles << "hydrogen bonds: omitted, not supported in SMILES (1)";
    }
    void whatIsLostIsNamedWithACount()
    {
        QFETCH(QByteArray, bonds);
        QFETCH(Format, format);
        QFETCH(QString, note);
        const QStringList notes = notesOf(workspaceWith(bonds), Format::Workspace, format);
        QVERIFY2(notes.contains(note), qPrintable(notes.join(u'\n')));
    }

    void whatIsLostInReadingIsNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<Format>("format");
        QTest::addColumn<QString>("note");
        QTest::newRow("coordinative bond of a V2000 file")
            << molfileWith("  1  2  9  0\n") << Format::Molfile
            << "dative and other unsupported bonds: read as single bonds (1)";
        QTest::newRow("unknown bond type")
            << molfileWith("  1  2 12  0\n") << Format::Molfile << "bonds of unknown type: read as dashed lines (1)";
        QTest::newRow("S-group") << molfileWith("  1  2  1  0\nM  STY  1   1 SUP\nM  SAL   1  1   2\n"
                                                "M  SBL   1  1   1\nM  SMT   1 Me\n")
                                 << Format::Molfile << "S-groups: discarded, not supported in drawings (1)";
        QTest::newRow("valence")
            << QByteArray(molfileWith("  1  2  1  0\n")).replace("C   0  0\n  1", "C   0  0  0  0  0  2\n  1")
            << Format::Molfile << "atoms with an unusual number of hydrogens: read with the usual number (1)";
        QTest::newRow("hydrogens") << QByteArray("[PH5]") << Format::Smiles
                                   << "atoms with an unusual number of hydrogens: read with the usual number (1)";
        QTest::newRow("open double bond")
            << QByteArray("CC=CC\nC/C=C/C\nCC(C)=C\nC1CC=CCC1") << Format::Smiles
            << "double bonds with unspecified E/Z stereo: drawn as one of the isomers (1)";
        const QString unusual =
            "stereo of allenes and of non-tetrahedral centres: discarded, not supported in drawings "
            "(1)";
        QTest::newRow("square planar") << QByteArray("N[Pt@SP1](Cl)(N)Cl") << Format::Smiles << unusual;
        QTest::newRow("allene") << QByteArray("FC=[C@]=CF") << Format::Smiles << unusual;
        QTest::newRow("racemate") << QByteArray("F[C@H](Cl)Br |&1:1|") << Format::Smiles
                                  << "relative or racemic stereo groups: read as absolute stereocentres (1)";
    }
    void whatIsLostInReadingIsNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(Format, format);
        QFETCH(QString, note);
        QCOMPARE(notesOf(text, format, Format::Workspace), QStringList(note));
    }

    void whatIsNotLostIsNotNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<Format>("format");
        QByteArray star = molfileWith("  1  2  1  0\n");
        star.replace("C   0  0\n  1", "*   0  0\n  1");
        QTest::newRow("any atom") << star << Format::Molfile;
        QTest::newRow("hydrogen bond") << molfileWith("  1  2 10  0\n") << Format::Molfile;
        for (const char* smiles : {"[nH]1cccc1", "[NH4+].[Cl-]", "[BH4-]", "C[S@](=O)CC", "[13CH4]", "C/C=C\\C",
                                   "[OH2]", "C[C@H](N)C(=O)O", "[Fe+2]", "*C", "F[C@H](Cl)Br |a:1|"})
            QTest::newRow(smiles) << QByteArray(smiles) << Format::Smiles;
    }
    void whatIsNotLostIsNotNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(Format, format);
        QCOMPARE(notesOf(text, format, Format::Workspace), QStringList());
    }

    void aCoordinativeBondOfAV2000FileIsSingle()
    {
        const SketchMolecule molecule = read(molfileWith("  1  2  9  0\n"), Format::Molfile)[0].molecules[0];
        QCOMPARE(molecule.bonds[0].kinds, std::vector{KYTBT_SingleBond});
    }

    void labelsThatSmilesCannotKeepAreCounted()
    {
        QByteArray text = workspaceWith("BOND 0 1 3 1 1 1\nBOND 1 2 3 1 1 1\nBOND 0 3 1 1\nBOND 2 4 1 1", 5);
        text.replace("ATOM C 190", "ATOM R1 190").replace("ATOM C 220", "ATOM R2 220");
        const QStringList notes = notesOf(text, Format::Workspace, Format::Smiles);
        QVERIFY2(notes.contains("labels that are not elements: written as * (2)"), qPrintable(notes.join(u'\n')));
    }

    void aChargedHydrogenIsNotDroppedFromSmiles()
    {
        QByteArray text = workspaceWith("BOND 0 1 1 1", 2);
        text.replace("ATOM C 130", "ATOM H+ 130");
        const QByteArray smiles = write(read(text, Format::Workspace), Format::Smiles);
        QVERIFY2(smiles.contains("[H+]"), smiles.constData());
    }

    void namesThatShareAMolfileAreCounted()
    {
        const QStringList notes = notesOf("C one\nCC two\nCCC\nCCCC four", Format::Smiles, Format::Molfile);
        QCOMPARE(notes, QStringList("molecule names other than the first in a molfile: discarded (2)"));
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
        QCOMPARE(write(read(text, Format::Smiles), Format::Smiles), QByteArray("C\ta\nCC\tb\n"));
    }

    void textInLatin1BecomesUtf8()
    {
        const QByteArray sd = molfileWith("  1  2  1  0\n").prepend("\xe9thane") + ">  <NOM>\n\xe9thane\n\n$$$$\n";
        const QByteArray written = write(read(sd, Format::SdFile), Format::SdFile);
        QVERIFY2(written.startsWith("\xc3\xa9thane\n"), written.constData());
        QVERIFY2(written.contains("<NOM>\n\xc3\xa9thane\n"), written.constData());
        QCOMPARE(write(read("CC \xe9thane", Format::Smiles), Format::Smiles), QByteArray("CC\t\xc3\xa9thane\n"));
    }

    void aSoundDrawingIsWrittenWithoutAWord()
    {
        QCOMPARE(notesOf(contentsOf("lib/benzene.kyf"), Format::Workspace, Format::Molfile), QStringList());
    }

    void aDrawingReadLandsInAFreshWindow()
    {
        const std::vector<Sketch> sketches = read("CC(=O)Oc1ccccc1C(=O)O aspirin", Format::Smiles);
        QVERIFY(shownPart.contains(extentOf(sketches[0])));
        for (const SketchBond& bond : sketches[0].molecules[0].bonds) {
            const SketchAtom& from = sketches[0].molecules[0].atoms[bond.from];
            const SketchAtom& to = sketches[0].molecules[0].atoms[bond.to];
            NEAR(std::hypot(from.x - to.x, from.y - to.y), 30, 1);
        }
    }

    void anAliasIsTheSymbol()
    {
        const QByteArray text = "\n  test\n\n  2  1  0  0  0  0  0  0  0  0999 V2000\n"
                                "    0.0000    0.0000    0.0000 C   0  0\n"
                                "    1.5000    0.0000    0.0000 C   0  0\n  1  2  1  0\nA    2\nOMe\nM  END\n";
        QCOMPARE(read(text, Format::Molfile)[0].molecules[0].atoms[1].symbol, QString("OMe"));
    }

    void aSymbolThatIsNoElementIsALabel_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("symbols");
        QTest::newRow("V2000") << molfileWith("  1  2  1  0\n").replace(" C   0  0\n    1", " Boc 0  0\n    1")
                               << QStringList{"Boc", "C"};
        QTest::newRow("twice") << molfileWith("  1  2  1  0\n").replace("C   0", "Ph  0") << QStringList{"Ph", "Ph"};
        QTest::newRow("with an alias") << molfileWith("  1  2  1  0\nA    1\nPhenyl\n").replace("C   0", "Ph  0")
                                       << QStringList{"Phenyl", "Ph"};
        QTest::newRow("V3000") << v3000With("M  V30 1 1 1 2\n").replace("2 C 1.5", "2 OMe 1.5")
                               << QStringList{"C", "OMe"};
        QTest::newRow("V3000 in two lines")
            << v3000With("M  V30 1 1 1 2\n").replace("1 C 0 0", "1 C 0 -\nM  V30 0").replace("2 C 1.5", "2 OMe 1.5")
            << QStringList{"C", "OMe"};
    }
    void aSymbolThatIsNoElementIsALabel()
    {
        QFETCH(QByteArray, text);
        const SketchMolecule molecule = read(text, Format::Molfile)[0].molecules[0];
        QStringList symbols;
        for (const SketchAtom& atom : molecule.atoms)
            symbols.append(atom.symbol);
        QTEST(symbols, "symbols");
        QCOMPARE(molecule.bonds.size(), std::size_t{1});
    }

    void aColourThatWouldEndTheMoleculeIsNotTaken()
    {
        const QByteArray text = write(read("CO", Format::Smiles), Format::SdFile);
        const QByteArray spoiled = QByteArray(text).replace("1 64 64 64", "1 64 64 END_MOLECULE");
        QVERIFY(spoiled != text);
        const QByteArray workspace = write(read(spoiled, Format::SdFile), Format::Workspace);
        QCOMPARE(read(workspace, Format::Workspace)[0].molecules[0].atoms.size(), std::size_t{2});
    }

    void aNameLikeTheEndOfARecordSurvives()
    {
        const std::vector<Sketch> sketches = read("CO $$$$ money\nC next", Format::Smiles);
        for (const Format format : {Format::SdFile, Format::Smiles}) {
            const std::vector<Sketch> again = read(write(sketches, format), format);
            QCOMPARE(again.size(), std::size_t{2});
            QCOMPARE(again[0].molecules[0].name, QString("$$$$ money"));
            QCOMPARE(again[1].molecules[0].name, QString("next"));
        }
    }

    void labelsSurviveSmiles()
    {
        const QByteArray smiles = write(read(contentsOf("data/alanine.kyt"), Format::Workspace), Format::Smiles);
        const std::vector<Sketch> sketches = read(smiles, Format::Smiles);
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
        const QByteArray smiles = write(read(text, Format::Workspace), Format::Smiles);
        const std::vector<Sketch> sketches = read(smiles, Format::Smiles);
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
        const QByteArray smiles =
            write(read(start + wedges + " END_MOLECULE END_KYTFILE", Format::Workspace), Format::Smiles);
        QVERIFY2(smiles.contains('@'), smiles.constData());
        // With elements in place of the labels, the hand can be compared.
        const auto hand = [](QByteArray text) {
            const std::vector<Sketch> sketches = read(text, Format::Smiles);
            QByteArray workspace = write(sketches, Format::Workspace);
            workspace.replace(" NH2 ", " Cl ").replace(" OH ", " Br ").replace(" CH3 ", " I ");
            return write(read(workspace, Format::Workspace), Format::Smiles);
        };
        QByteArray elements = start + wedges + " END_MOLECULE END_KYTFILE";
        elements.replace(" NH2 ", " Cl ").replace(" OH ", " Br ").replace(" CH3 ", " I ");
        const QByteArray expected = write(read(elements, Format::Workspace), Format::Smiles);
        QVERIFY2(expected.contains('@'), expected.constData());
        QCOMPARE(hand(smiles), expected);
    }

    void propertiesAndNamesPassFromSdFileToSdFile()
    {
        QByteArray text = write(read("CCO ethanol", Format::Smiles), Format::SdFile);
        text.replace("M  END\n", "M  END\n> 25 <BOILING.POINT>\n78.4\nC\n\n");
        const QByteArray again = write(read(text, Format::SdFile), Format::SdFile);
        QVERIFY(again.startsWith("ethanol\n"));
        QVERIFY(again.contains("<BOILING.POINT>\n78.4\nC\n"));
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
        const MoleculeInfo info = infoOf(read(found->smiles.toUtf8(), Format::Smiles)[0].molecules[0]);
        QTEST(info.formula, "formula");
        NEAR(info.weight, weight, 0.02);
        QTEST(info.rings, "rings");
        QCOMPARE(info.warnings, QStringList());
    }

    void aCarbonWithFiveBondsIsComplainedAbout()
    {
        const std::vector<Sketch> sketches = read(workspaceWith("BOND 0 1 3 1 1 1\nBOND 1 2 2 1 1"), Format::Workspace);
        const MoleculeInfo info = infoOf(sketches[0].molecules[0]);
        QCOMPARE(info.warnings, QStringList("atom 2 (C): more bonds than its valence allows"));
        QCOMPARE(info.bonds, 2);
    }

    void badInputIsRefusedWithItsPlace_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<Format>("format");
        QTest::addColumn<QString>("place");
        const QByteArray good = write(read("CCO", Format::Smiles), Format::SdFile);
        const qsizetype goodLines = good.count('\n');
        QByteArray badPlace = good;
        badPlace.replace("0.0000 O ", "0.0y00 O ");
        QTest::newRow("SMILES") << QByteArray("CCO\n\nC1CC\n") << Format::Smiles << "test:3: ";
        QTest::newRow("SMILES of a wrong valence") << QByteArray("C(C)(C)(C)(C)C") << Format::Smiles << "test:1: ";
        QTest::newRow("SMILES with a letter of another script") << QByteArray("C\n\xc3\xa9"
                                                                              "C")
                                                                << Format::Smiles << "test:2: ";
        QTest::newRow("SMILES with a null byte") << QByteArray("C\0C", 3) << Format::Smiles << "test:1: ";
        QTest::newRow("property with a null byte")
            << QByteArray(good).insert(good.indexOf("$$$$"), QByteArray("> <A>\nB\0C\n\n", 11)) << Format::SdFile
            << QStringLiteral("test:%1: unexpected null byte").arg(goodLines + 1);
        QTest::newRow("workspace with a null byte")
            << QByteArray("KYTFILE\n MOLECULE 1 0\n ATOM C\0 1 1 0 255 0 0\n END_MOLECULE\nEND_KYTFILE\n", 71)
            << Format::Workspace << "test:3: unexpected null byte";
        QTest::newRow("bond to a missing atom") << molfileWith("  1  2  1  0\n  1  7  1  0\n", 2) << Format::Molfile
                                                << "test:8: bond refers to non-existent atom 7";
        QTest::newRow("bond to itself") << molfileWith("  2  2  1  0\n") << Format::Molfile
                                        << "test:7: bond from atom 2 to itself";
        QTest::newRow("second bond") << molfileWith("  1  2  1  0\n  2  1  1  0\n", 2) << Format::Molfile
                                     << "test:8: duplicate bond between atoms 2 and 1";
        QTest::newRow("bond to a missing atom in V3000")
            << v3000With("M  V30 1 1 1 99\n") << Format::Molfile << "test:12: bond refers to non-existent atom 99";
        QTest::newRow("second bond in V3000, behind one of two lines")
            << v3000With("M  V30 1 1 1 -\nM  V30 2\nM  V30 2 1 2 1\n", 2) << Format::Molfile
            << "test:14: duplicate bond between atoms 2 and 1";
        QTest::newRow("no M  END") << molfileWith("  1  2  1  0\n").chopped(7) << Format::Molfile
                                   << "test:7: unexpected end of molfile, M END missing";
        QTest::newRow("no SMILES") << QByteArray("# nothing\n") << Format::Smiles << "test: ";
        QTest::newRow("binary as SMILES") << QByteArray("\0\1\2\377\376", 5) << Format::Smiles << "test:1: ";
        QTest::newRow("too many atoms") << QByteArray(5000, 'C') << Format::Smiles << "test:1: ";
        QTest::newRow("long line") << QByteArray(100'000, 'C') << Format::Smiles << "test:1: ";
        QTest::newRow("nested") << QByteArray(8000, '(') << Format::Smiles << "test:1: ";
        QTest::newRow("empty SD file") << QByteArray() << Format::SdFile << "test: ";
        QTest::newRow("binary as molfile") << QByteArray("\0\1\2\377\376", 5) << Format::Molfile << "test:1: ";
        QTest::newRow("a place that is no number in the second record")
            << good + badPlace << Format::SdFile << QStringLiteral("test:%1: ").arg(goodLines + 7);
        QTest::newRow("cut off") << good.left(good.indexOf("M  END") - 20) << Format::SdFile << "test:";
        QTest::newRow("huge count") << QByteArray("\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\n"
                                                  "M  V30 COUNTS 2000000000 0 0 0 0\nM  V30 END CTAB\nM  END\n")
                                    << Format::Molfile << "test:6: ";
        QTest::newRow("huge list") << QByteArray(
            "\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\nM  V30 COUNTS 1 0 1 0 0\n"
            "M  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\nM  V30 END ATOM\nM  V30 BEGIN SGROUP\n"
            "M  V30 1 DAT 0 ATOMS=(2000000000 1)\nM  V30 END SGROUP\nM  V30 END CTAB\nM  END\n")
                                   << Format::Molfile << "test:11: ";
        QTest::newRow("a workspace that is cut off")
            << QByteArray("KYTFILE\n MOLECULE 1 0\n ATOM C 1") << Format::Workspace << "test:3:10: ";
    }
    void badInputIsRefusedWithItsPlace()
    {
        QFETCH(QByteArray, text);
        QFETCH(Format, format);
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
