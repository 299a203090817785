#include "convert/chemistry/Placement.h"
#include "convert/chemistry/StartChemistry.h"
#include "convert/formats/Molfile.h"
#include "tests/convert/Converting.h"
#include "tests/convert/Molfiles.h"
#include "tests/support/Files.h"
#include "tests/support/Near.h"

#include <GraphMol/FileParsers/FileParsers.h>

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

constexpr double tolerance = 1e-4 * pixelsPerAngstrom; // pixels

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
QString lossThrough(const QByteArray& workspace, const QString& format, bool v3000)
{
    const std::vector<Sketch> before = read(workspace, "kyt");
    const std::vector<Sketch> between = read(write(before, format, v3000), format);
    return difference(before, read(write(between, "kyt"), "kyt"));
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

/// A sketch on the canvas: so many carbons, 30 pixels apart in rows of 60, in a chain.
Sketch chainOf(int atoms)
{
    Sketch sketch;
    sketch.placed = true;
    SketchMolecule& molecule = sketch.molecules.emplace_back();
    for (int i = 0; i < atoms; ++i) {
        molecule.atoms.push_back({"C", i % 60 * 30.0, i / 60 * 30.0, 0, {"1", "2", "3"}});
        if (i > 0)
            molecule.bonds.push_back({i - 1, i, {KYTBT_SingleBond}, 0});
    }
    return sketch;
}

/// A record of two carbons with these properties, its end included.
QByteArray recordWith(const QByteArray& properties, const QByteArray& lines = "  1  2  1  0\n")
{
    return molfileWith(lines) + properties + "$$$$\n";
}

QByteArray propertyText(const QByteArray& name, const QByteArray& text)
{
    return "> <" + name + ">\n" + text + "\n\n";
}

QStringList symbolsOf(const SketchMolecule& molecule)
{
    QStringList symbols;
    for (const SketchAtom& atom : molecule.atoms)
        symbols.append(atom.symbol);
    return symbols;
}

/// How many molecules each of the sketches has.
QList<int> sizesOf(const std::vector<Sketch>& sketches)
{
    QList<int> sizes;
    for (const Sketch& sketch : sketches)
        sizes.append(int(sketch.molecules.size()));
    return sizes;
}

} // namespace

class test_Molfile : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    // There and back

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
        const QString readme = QString::fromUtf8(readFile("lib/README.md"));
        const QRegularExpressionMatch row = QRegularExpression("\\| " + kind + " \\| ([0-9.]+) Å \\|").match(readme);
        QVERIFY(row.hasMatch());
        const double length = row.captured(1).toDouble();

        const QByteArray text = readFile("lib/" + molecule + ".kyf");
        const QByteArray molfile = write(read(text, "kyt"), "mol");
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
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("v3000");
        for (const char* name : {"lib/benzene.kyf", "lib/cubane.kyf", "lib/hexane.kyf", "lib/megaphon.kyf",
                                 "lib/prop.kyf", "lib/water.kyf", "data/alanine.kyt", "data/caffeine.kyt"}) {
            for (const char* format : {"mol", "sdf"}) {
                for (const bool v3000 : {false, true})
                    QTest::addRow("%s %s %s", name, QByteArray(format) == "mol" ? "molfile" : "SD file",
                                  v3000 ? "V3000" : "V2000")
                        << name << format << v3000;
            }
        }
    }

    void libraryAndSamplesSurviveMolfiles()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, format);
        QFETCH(bool, v3000);
        const QByteArray text = readFile(fileName);
        QCOMPARE(lossThrough(text, format, v3000), QString());
    }

    void randomDrawingsSurviveMolfiles_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("v3000");
        QTest::newRow("molfile V2000") << "mol" << false;
        QTest::newRow("molfile V3000") << "mol" << true;
        QTest::newRow("SD file V2000") << "sdf" << false;
        QTest::newRow("SD file V3000") << "sdf" << true;
    }

    void randomDrawingsSurviveMolfiles()
    {
        QFETCH(QString, format);
        QFETCH(bool, v3000);
        QRandomGenerator random(11);
        for (int round = 0; round < 100; ++round)
            QCOMPARE(lossThrough(write({randomSketch(random)}, "kyt"), format, v3000), QString());
    }

    void aDrawingTooLargeForV2000SurvivesV3000()
    {
        const Sketch sketch = chainOf(1200);
        QCOMPARE(difference({sketch}, read(write({sketch}, "mol"), "mol")), QString());
    }

    void scaleAndAxesOfAMolfile()
    {
        const QByteArray text = write(read("KYTFILE MOLECULE 2 1 ATOM N+ 130 45 -30 1 2 3 ATOM C 160 45 0 4 5 6 "
                                           "BOND 0 1 1 1 END_MOLECULE END_KYTFILE",
                                           "kyt"),
                                      "mol");
        QVERIFY(text.contains("    6.5000   -2.2500   -1.5000 N "));
        QVERIFY(text.contains("M  CHG  1   1   1"));
        QVERIFY(text.contains("KYTSTUDIO_COLORS>\n1 1 2 3\n"));
    }

    void depthsOfAFlatDrawingGoIntoAProperty_data()
    {
        QTest::addColumn<bool>("v3000");
        QTest::newRow("V2000") << false;
        QTest::newRow("V3000") << true;
    }

    void depthsOfAFlatDrawingGoIntoAProperty()
    {
        QFETCH(bool, v3000);
        Sketch sketch = chainOf(4);
        sketch.molecules[0].bonds[1].kinds = {KYTBT_StereoUp};
        sketch.molecules[0].atoms[2].depth = sketch.molecules[0].atoms[3].depth = 12.345678F;
        const QByteArray text = write({sketch}, "mol", v3000);
        QVERIFY(text.contains("RDKit          2D"));
        QVERIFY2(text.contains(">  <KYTSTUDIO_DEPTHS>\n2 0\n2 12.3456783\n"), text.constData());
        const SketchMolecule again = read(text, "mol")[0].molecules[0];
        for (int i = 0; i < 4; ++i)
            QCOMPARE(again.atoms[i].depth, sketch.molecules[0].atoms[i].depth);
    }

    void aShapeInSpaceKeepsZ()
    {
        const QByteArray text = write(read(readFile("lib/cubane.kyf"), "kyt"), "mol");
        QVERIFY(text.contains("RDKit          3D"));
        QVERIFY(!text.contains("KYTSTUDIO_DEPTHS"));
        QVERIFY(!write(read(readFile("lib/benzene.kyf"), "kyt"), "mol").contains("KYTSTUDIO_DEPTHS"));
    }

    void depthsThatDoNotMatchAreNoted_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("noted");
        QTest::newRow("as many as atoms") << QByteArray("2 5") << false;
        QTest::newRow("one each") << QByteArray("1 0\n1 -5.5") << false;
        for (const char* wrong : {"1 5", "3 5", "2 x", "2 nan", "2 inf", "2 1e30", "0 5", "-1 5", "2", "2 5 5"})
            QTest::newRow(wrong) << QByteArray(wrong) << true;
    }

    void depthsThatDoNotMatchAreNoted()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, noted);
        const QByteArray record = recordWith(propertyText("KYTSTUDIO_DEPTHS", text));
        const QStringList note("KYTSTUDIO_DEPTHS properties that do not match the molecule: not fully applied (1)");
        QCOMPARE(notesOf(record, "sdf", "kyt"), noted ? note : QStringList());
    }

    void openDoubleBondsStayOpen_data()
    {
        QTest::addColumn<bool>("v3000");
        QTest::addColumn<QByteArray>("mark");
        QTest::newRow("V2000") << false << QByteArray("  2  3  2  3");
        QTest::newRow("V3000") << true << QByteArray("M  V30 2 2 2 3 CFG=2");
    }

    void openDoubleBondsStayOpen()
    {
        QFETCH(bool, v3000);
        QFETCH(QByteArray, mark);
        const QByteArray open = write(read("CC=CC", "smi"), "sdf", v3000);
        QVERIFY2(open.contains(mark), open.constData());
        const QByteArray again = write(read(open, "sdf"), "sdf", v3000);
        QVERIFY2(again.contains(mark), again.constData());
        QCOMPARE(write(read(open, "sdf"), "smi"), QByteArray("CC=CC\n"));
        const QByteArray closed = write(read("C/C=C/C", "smi"), "sdf", v3000);
        QVERIFY2(!closed.contains(mark), closed.constData());
        QCOMPARE(write(read(closed, "sdf"), "smi"), QByteArray("C/C=C/C\n"));
    }

    void wedgesAreWrittenWithTheNarrowEndFirst()
    {
        const QByteArray text = write(read(workspaceWith("BOND 2 1 1 2\nBOND 1 0 1 3"), "kyt"), "mol");
        QVERIFY(text.contains("  3  2  1  1"));
        QVERIFY(text.contains("  2  1  1  6"));
    }

    void aHydrogenBondIsOfAnyKindInV2000AndOfItsOwnInV3000()
    {
        const std::vector<Sketch> sketches = read(workspaceWith("BOND 0 1 1 0"), "kyt");
        QVERIFY(write(sketches, "mol").contains("  1  2  8  0"));
        QVERIFY(write(sketches, "mol", true).contains("M  V30 1 10 1 2"));
    }

    void aCoordinativeBondOfAV2000FileIsSingle()
    {
        const SketchMolecule molecule = read(molfileWith("  1  2  9  0\n"), "mol")[0].molecules[0];
        QCOMPARE(molecule.bonds[0].kinds, std::vector{KYTBT_SingleBond});
    }

    void namesThatShareAMolfileAreCounted()
    {
        const QByteArray text = "C one\nCC two\nCCC\nCCCC four";
        QCOMPARE(notesOf(text, "smi", "mol"), QStringList());
        const QStringList notes = detailsOf(text, "smi", "mol");
        QCOMPARE(notes, QStringList("molecule names other than the first in a molfile: discarded (2)"));
    }

    void aSoundDrawingIsWrittenWithoutAWord()
    {
        QCOMPARE(notesOf(readFile("lib/benzene.kyf"), "kyt", "mol"), QStringList());
    }

    void anAliasIsTheSymbol()
    {
        const QByteArray text = "\n  test\n\n  2  1  0  0  0  0  0  0  0  0999 V2000\n"
                                "    0.0000    0.0000    0.0000 C   0  0\n"
                                "    1.5000    0.0000    0.0000 C   0  0\n  1  2  1  0\nA    2\nOMe\nM  END\n";
        QCOMPARE(read(text, "mol")[0].molecules[0].atoms[1].symbol, QString("OMe"));
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
        const SketchMolecule molecule = read(text, "mol")[0].molecules[0];
        QStringList symbols;
        for (const SketchAtom& atom : molecule.atoms)
            symbols.append(atom.symbol);
        QTEST(symbols, "symbols");
        QCOMPARE(molecule.bonds.size(), std::size_t{1});
    }

    void aColourThatWouldEndTheMoleculeIsNotTaken()
    {
        const QByteArray text = write(read("CO", "smi"), "sdf");
        const QByteArray spoiled = QByteArray(text).replace("1 64 64 64", "1 64 64 END_MOLECULE");
        QVERIFY(spoiled != text);
        const QByteArray workspace = write(read(spoiled, "sdf"), "kyt");
        QCOMPARE(read(workspace, "kyt")[0].molecules[0].atoms.size(), std::size_t{2});
    }

    void propertiesAndNamesPassFromSdFileToSdFile()
    {
        QByteArray text = write(read("CCO ethanol", "smi"), "sdf");
        text.replace("M  END\n", "M  END\n> 25 <BOILING.POINT>\n78.4\nC\n\n");
        const QByteArray again = write(read(text, "sdf"), "sdf");
        QVERIFY(again.startsWith("ethanol\n"));
        QVERIFY(again.contains("<BOILING.POINT>\n78.4\nC\n"));
    }

    void anEmptyDrawingSurvives()
    {
        Sketch sketch;
        sketch.molecules.emplace_back();
        const QByteArray molfile = write({sketch}, "mol");
        QVERIFY2(molfile.contains("  0  0  0"), molfile.constData());
        QVERIFY(!molfile.contains("KYTSTUDIO_COLORS"));
        QCOMPARE(read(molfile, "mol")[0].molecules[0].atoms.size(), std::size_t{0});
        QCOMPARE(write({}, "sdf"), QByteArray());
    }

    // Reading

    void placesAreInAngstromsWithYPointingUp()
    {
        const QByteArray text = molfileWith("  1  2  1  0\n")
                                    .replace("    1.5000    0.0000    0.0000 C", "    1.0000    2.0000   -0.5000 C");
        const SketchMolecule molecule = read(text, "mol")[0].molecules[0];
        NEAR(molecule.atoms[1].x - molecule.atoms[0].x, 20, 1e-9);
        NEAR(molecule.atoms[1].y - molecule.atoms[0].y, -40, 1e-9);
        QCOMPARE(molecule.atoms[0].depth, 0.0F);
        QCOMPARE(molecule.atoms[1].depth, -10.0F);
    }

    void colorsAreThoseOfTheElementsUnlessAPropertySaysOthers_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("reds");
        QTest::addColumn<QStringList>("notes");
        const QStringList none;
        const QStringList unfit{"KYTSTUDIO_COLORS properties that do not match the molecule: not fully applied (1)"};
        const auto row = [](const char* name, const QByteArray& text, const QStringList& reds,
                            const QStringList& notes) {
            QTest::newRow(name) << propertyText("KYTSTUDIO_COLORS", text) << reds << notes;
        };
        QTest::newRow("no property") << QByteArray() << QStringList{"64", "64"} << none;
        row("one for both", "2 7 8 9", {"7", "7"}, none);
        row("one for each", "1 7 8 9\n1 1 2 3", {"7", "1"}, none);
        row("too few", "1 7 8 9", {"7", "64"}, unfit);
        row("too many", "3 7 8 9", {"64", "64"}, unfit);
        row("too many in two lines", "1 7 8 9\n2 1 2 3", {"7", "64"}, unfit);
        row("none in a line", "0 7 8 9\n2 1 2 3", {"64", "64"}, unfit);
        row("fewer than none", "-1 7 8 9", {"64", "64"}, unfit);
        row("a part too few", "2 7 8", {"64", "64"}, unfit);
        row("a part too many", "2 7 8 9 10", {"64", "64"}, unfit);
        row("no count", "x 7 8 9", {"64", "64"}, unfit);
        row("no text", "", {"64", "64"}, unfit);
        row("words", "2 red green blue", {"red", "red"}, none);
    }

    void colorsAreThoseOfTheElementsUnlessAPropertySaysOthers()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, notes);
        Notes found;
        const std::vector<Sketch> sketches = readMolfiles({.text = recordWith(text)}, "test", found);
        QStringList reds;
        for (const SketchAtom& atom : sketches[0].molecules[0].atoms)
            reds.append(atom.color[0]);
        QTEST(reds, "reds");
        QCOMPARE(found.lines(), notes);
    }

    void symbolsOfAPropertyGoBeforeThoseOfTheMolfile_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("symbols");
        QTest::addColumn<bool>("fits");
        QTest::newRow("one") << QByteArray("2 Me") << QStringList{"C", "Me"} << true;
        QTest::newRow("both") << QByteArray("2 Me\n1 OH") << QStringList{"OH", "Me"} << true;
        QTest::newRow("an element") << QByteArray("1 N+") << QStringList{"N+", "C"} << true;
        QTest::newRow("of an atom before the first") << QByteArray("0 Me") << QStringList{"C", "C"} << false;
        QTest::newRow("of an atom behind the last") << QByteArray("3 Me") << QStringList{"C", "C"} << false;
        QTest::newRow("of no atom") << QByteArray("Me 1") << QStringList{"C", "C"} << false;
        QTest::newRow("of two words") << QByteArray("1 Me thyl") << QStringList{"C", "C"} << false;
        QTest::newRow("nothing") << QByteArray("1") << QStringList{"C", "C"} << false;
    }

    void symbolsOfAPropertyGoBeforeThoseOfTheMolfile()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, fits);
        Notes notes;
        const std::vector<Sketch> sketches =
            readMolfiles({.text = recordWith(propertyText("KYTSTUDIO_SYMBOLS", text))}, "test", notes);
        QTEST(symbolsOf(sketches[0].molecules[0]), "symbols");
        QCOMPARE(
            notes.lines(),
            fits ? QStringList()
                 : QStringList("KYTSTUDIO_SYMBOLS properties that do not match the molecule: not fully applied (1)"));
    }

    void aMolfileIsTakenApartIntoItsMolecules_data()
    {
        QTest::addColumn<QByteArray>("sizes");
        QTest::addColumn<int>("bonds");
        QTest::addColumn<int>("molecules");
        QTest::newRow("one each") << QByteArray("1 1") << 0 << 2;
        QTest::newRow("both in one") << QByteArray("2") << 0 << 1;
        QTest::newRow("too few") << QByteArray("1") << 0 << 1;
        QTest::newRow("too many") << QByteArray("1 2") << 0 << 1;
        QTest::newRow("none in one") << QByteArray("0 2") << 0 << 1;
        QTest::newRow("no numbers") << QByteArray("a b") << 0 << 1;
        QTest::newRow("nothing") << QByteArray("") << 0 << 1;
        QTest::newRow("a bond between them") << QByteArray("1 1") << 1 << 1;
    }

    void aMolfileIsTakenApartIntoItsMolecules()
    {
        QFETCH(QByteArray, sizes);
        QFETCH(int, bonds);
        QFETCH(int, molecules);
        const QByteArray text = molfileWith(bonds ? "  1  2  1  0\n" : "", bonds)
            + propertyText("KYTSTUDIO_MOLECULES", sizes) + propertyText("KEPT", "1");
        const std::vector<Sketch> sketches = read(text, "mol");
        QCOMPARE(sizesOf(sketches), QList<int>{molecules});
        const std::vector<SketchMolecule>& read = sketches[0].molecules;
        QCOMPARE(read.front().data, (decltype(read.front().data){{"KEPT", "1"}}));
        if (molecules == 2)
            QVERIFY(read.back().data.empty() && read.back().atoms.size() == 1);
    }

    void recordsOfOneDrawingShareASketchAndKeepTheirPlaces_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QList<int>>("molecules");
        QTest::addColumn<bool>("placed");
        const QByteArray far = molfileWith("  1  2  1  0\n").replace("    1.5000", "  101.0000");
        const auto of = [](const char* drawing) { return recordWith(propertyText("KYTSTUDIO_DRAWING", drawing)); };
        const QByteArray none = recordWith("");
        QTest::newRow("of none") << none + none << QList<int>{1, 1} << false;
        QTest::newRow("of one") << of("1") + of("1") + of("1") << QList<int>{3} << true;
        QTest::newRow("of two") << of("1") + of("2") + of("2") << QList<int>{1, 2} << true;
        QTest::newRow("of one with another between") << of("1") + of("2") + of("1") << QList<int>{1, 1, 1} << true;
        QTest::newRow("of one with none between") << of("1") + none + of("1") << QList<int>{1, 1, 1} << true;
        QTest::newRow("beyond the canvas") << far + propertyText("KYTSTUDIO_DRAWING", "1") << QList<int>{1} << false;
    }

    void recordsOfOneDrawingShareASketchAndKeepTheirPlaces()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, placed);
        const std::vector<Sketch> sketches = read(text, "sdf");
        QTEST(sizesOf(sketches), "molecules");
        QCOMPARE(sketches.front().placed, placed);
        // What keeps its places lies where the file says; what does not, where a fresh window shows it.
        QCOMPARE(sketches.front().molecules[0].atoms[0].x == 0, placed);
        if (!placed && text.count("101.0000") == 0)
            QVERIFY(shownPart.contains(extentOf(sketches.front()).center()));
        for (const Sketch& sketch : sketches)
            for (const SketchMolecule& molecule : sketch.molecules)
                QVERIFY(molecule.data.empty());
    }

    void noMoreThanFiftyDifferentLabelsAreRead_data()
    {
        QTest::addColumn<int>("labels");
        QTest::newRow("fifty") << 50;
        QTest::newRow("fifty-one") << 51;
    }

    void noMoreThanFiftyDifferentLabelsAreRead()
    {
        QFETCH(int, labels);
        QByteArray text =
            "\n\n\n" + QByteArray::number(labels).rightJustified(3) + "  0  0  0  0  0  0  0  0  0999 V2000\n";
        for (int i = 0; i < labels; ++i)
            text += "    0.0000    0.0000    0.0000 " + QByteArray("L") + QByteArray::number(i).leftJustified(2)
                + " 0  0\n";
        text += "M  END\n";
        if (labels <= 50)
            QCOMPARE(symbolsOf(read(text, "mol")[0].molecules[0]).last(), QString("L49"));
        else
            QVERIFY_THROWS_EXCEPTION(ConversionError, read(text, "mol"));
    }

    void whatIsLostInReadingIsNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("note");
        QTest::newRow("coordinative bond of a V2000 file")
            << molfileWith("  1  2  9  0\n") << "dative and other unsupported bonds: read as single bonds (1)";
        QTest::newRow("unknown bond type")
            << molfileWith("  1  2 12  0\n") << "bonds of unknown type: read as dashed lines (1)";
        QTest::newRow("bond of a query") << molfileWith("  1  2  5  0\n")
                                         << "query bonds: read as single or double bonds (1)";
        QTest::newRow("wedge of unknown stereo")
            << molfileWith("  1  2  1  4\n") << "bonds with unknown stereo: stereo mark discarded (1)";
        QTest::newRow("wedge on a double bond")
            << molfileWith("  1  2  2  1\n") << "wedges on bonds other than single bonds: discarded (1)";
        QTest::newRow("S-group") << molfileWith("  1  2  1  0\nM  STY  1   1 SUP\nM  SAL   1  1   2\n"
                                                "M  SBL   1  1   1\nM  SMT   1 Me\n")
                                 << "S-groups: discarded, not supported in drawings (1)";
        QTest::newRow("valence")
            << QByteArray(molfileWith("  1  2  1  0\n")).replace("C   0  0\n  1", "C   0  0  0  0  0  2\n  1")
            << "atoms with an unusual number of hydrogens: read with the usual number (1)";
        QTest::newRow("alias of an element")
            << molfileWith("  1  2  1  0\nA    1\nPhenyl\n") << "aliases that replace elements: read as labels (1)";
        QTest::newRow("unpaired electron") << molfileWith("  1  2  1  0\nM  RAD  1   2   2\n")
                                           << "unpaired electrons: discarded, not supported in drawings (1)";
    }

    void whatIsLostInReadingIsNamed()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, note);
        QCOMPARE(notesOf(text, "mol", "kyt"), QStringList(note));
    }

    void whatIsNotLostIsNotNamed_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("any atom") << molfileWith("  1  2  1  0\n").replace("C   0  0\n  1", "*   0  0\n  1");
        QTest::newRow("hydrogen bond") << molfileWith("  1  2 10  0\n");
        QTest::newRow("wedge") << molfileWith("  1  2  1  1\n");
        QTest::newRow("charge and isotope") << molfileWith("  1  2  1  0\nM  CHG  1   1   1\nM  ISO  1   2  13\n");
    }

    void whatIsNotLostIsNotNamed()
    {
        QFETCH(QByteArray, text);
        QCOMPARE(notesOf(text, "mol", "kyt"), QStringList());
    }

    void textInLatin1BecomesUtf8()
    {
        const QByteArray sd = molfileWith("  1  2  1  0\n").prepend("\xe9thane") + ">  <NOM>\n\xe9thane\n\n$$$$\n";
        const QByteArray written = write(read(sd, "sdf"), "sdf");
        QVERIFY2(written.startsWith("\xc3\xa9thane\n"), written.constData());
        QVERIFY2(written.contains("<NOM>\n\xc3\xa9thane\n"), written.constData());
    }

    void badInputIsRefusedWithItsPlace_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("place");
        const QByteArray good = write(read("CCO", "smi"), "sdf");
        const qsizetype goodLines = good.count('\n');
        QByteArray badPlace = good;
        badPlace.replace("0.0000 O ", "0.0y00 O ");
        QTest::newRow("nothing") << QByteArray() << "test: contains no molfile";
        QTest::newRow("ends of records alone") << QByteArray("$$$$\n$$$$\n") << "test: contains no molfile";
        QTest::newRow("bond to a missing atom")
            << molfileWith("  1  2  1  0\n  1  7  1  0\n", 2) << "test:8: bond refers to non-existent atom 7";
        QTest::newRow("bond to itself") << molfileWith("  2  2  1  0\n") << "test:7: bond from atom 2 to itself";
        QTest::newRow("second bond") << molfileWith("  1  2  1  0\n  2  1  1  0\n", 2)
                                     << "test:8: duplicate bond between atoms 2 and 1";
        QTest::newRow("bond to a missing atom in V3000")
            << v3000With("M  V30 1 1 1 99\n") << "test:12: bond refers to non-existent atom 99";
        QTest::newRow("second bond in V3000, behind one of two lines")
            << v3000With("M  V30 1 1 1 -\nM  V30 2\nM  V30 2 1 2 1\n", 2)
            << "test:14: duplicate bond between atoms 2 and 1";
        QTest::newRow("no M  END") << molfileWith("  1  2  1  0\n").chopped(7)
                                   << "test:7: unexpected end of molfile, M END missing";
        QTest::newRow("binary") << QByteArray("\0\1\2\377\376", 5) << "test:1: ";
        QTest::newRow("a place that is no number in the second record")
            << good + badPlace << QStringLiteral("test:%1: ").arg(goodLines + 7);
        QTest::newRow("cut off") << good.left(good.indexOf("M  END") - 20) << "test:";
        QTest::newRow("too far away") << v3000With("M  V30 1 1 1 2\n").replace("2 C 1.5", "2 C 1e9")
                                      << "test:1: coordinates of atom 2 out of range";
        QTest::newRow("huge count") << QByteArray("\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\n"
                                                  "M  V30 COUNTS 2000000000 0 0 0 0\nM  V30 END CTAB\nM  END\n")
                                    << "test:6: ";
        QTest::newRow("huge list") << QByteArray(
            "\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\nM  V30 COUNTS 1 0 1 0 0\n"
            "M  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\nM  V30 END ATOM\nM  V30 BEGIN SGROUP\n"
            "M  V30 1 DAT 0 ATOMS=(2000000000 1)\nM  V30 END SGROUP\nM  V30 END CTAB\nM  END\n")
                                   << "test:11: ";
    }

    void badInputIsRefusedWithItsPlace()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, place);
        QString refusal = "it was read";
        try {
            read(text, "sdf");
        } catch (const ConversionError& fault) {
            refusal = fault.text();
        }
        QVERIFY2(refusal.startsWith(place), qPrintable(refusal));
        QVERIFY(!refusal.contains(u'\n'));
    }

    // Writing

    void moreThanAV2000FileHoldsIsWrittenAsV3000_data()
    {
        QTest::addColumn<int>("atoms");
        QTest::addColumn<double>("x");
        QTest::addColumn<bool>("v3000");
        QTest::newRow("999 atoms") << 999 << 0.0 << false;
        QTest::newRow("1000 atoms") << 1000 << 0.0 << true;
        QTest::newRow("nearly 9999 angstroms off") << 2 << 9998.9 * pixelsPerAngstrom << false;
        QTest::newRow("9999 angstroms off") << 2 << 9999 * pixelsPerAngstrom << true;
        QTest::newRow("9999 angstroms off to the left") << 2 << -9999 * pixelsPerAngstrom << true;
    }

    void moreThanAV2000FileHoldsIsWrittenAsV3000()
    {
        QFETCH(int, atoms);
        QFETCH(double, x);
        QFETCH(bool, v3000);
        Sketch sketch = chainOf(atoms);
        sketch.molecules[0].atoms[0].x = x;
        const QByteArray text = write({sketch}, "mol");
        QCOMPARE(text.contains("V3000"), v3000);
        QCOMPARE(text.contains("V2000"), !v3000);
    }

    void moreThan999BondsAreWrittenAsV3000()
    {
        Sketch sketch = chainOf(998);
        std::vector<SketchBond>& bonds = sketch.molecules[0].bonds;
        for (int i = 0; bonds.size() < 999; ++i)
            bonds.push_back({i, i + 500, {KYTBT_SingleBond}, 0});
        QVERIFY(write({sketch}, "mol").contains("V2000"));
        bonds.push_back({400, 900, {KYTBT_SingleBond}, 0});
        QVERIFY(write({sketch}, "mol").contains("V3000"));
    }

    void whatLiesTooFarAwayIsNotWritten_data()
    {
        QTest::addColumn<double>("place");
        QTest::addColumn<bool>("written");
        QTest::newRow("just near enough") << 0.99e9 * pixelsPerAngstrom << true;
        QTest::newRow("too far") << 1e9 * pixelsPerAngstrom << false;
        QTest::newRow("too far on the other side") << -1e9 * pixelsPerAngstrom << false;
        QTest::newRow("nowhere") << std::nan("") << false;
    }

    void whatLiesTooFarAwayIsNotWritten()
    {
        QFETCH(double, place);
        QFETCH(bool, written);
        for (const int coordinate : {0, 1, 2}) {
            Sketch sketch = chainOf(2);
            SketchAtom& atom = sketch.molecules[0].atoms[1];
            (coordinate == 0 ? atom.x : atom.y) = coordinate < 2 ? place : 0;
            atom.depth = coordinate == 2 ? float(place) : 0;
            Notes notes;
            if (written)
                QVERIFY(sdFileOf({sketch}, false, 1, notes).contains("V3000"));
            else
                QVERIFY_THROWS_EXCEPTION(ConversionError, sdFileOf({sketch}, false, 1, notes));
        }
    }

    void aWedgeWhoseDepthsSayTheOppositeIsNoted_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<float>("depth"); // of its end, from 0
        QTest::addColumn<bool>("noted");
        for (const float depth : {-1.0F, 0.0F, 1.0F}) {
            QTest::addRow("up, %g", double{depth}) << int(KYTBT_StereoUp) << depth << (depth < 0);
            QTest::addRow("down, %g", double{depth}) << int(KYTBT_StereoDown) << depth << (depth > 0);
            QTest::addRow("no wedge, %g", double{depth}) << int(KYTBT_SingleBond) << depth << false;
        }
    }

    void aWedgeWhoseDepthsSayTheOppositeIsNoted()
    {
        QFETCH(int, kind);
        QFETCH(float, depth);
        QFETCH(bool, noted);
        Sketch sketch = chainOf(3);
        sketch.molecules[0].atoms[1].depth = depth;
        sketch.molecules[0].atoms[2].depth = 5; // so that the molecule has a shape in space
        sketch.molecules[0].bonds[0].kinds = {KytBondType(kind)};
        Notes notes;
        molfileOf(sketch, false, notes);
        const QStringList expected(
            "wedges that contradict atom depths: written as drawn, may be read as the opposite stereo (1)");
        QCOMPARE(notes.lines(), noted ? expected : QStringList());
    }

    void eachRecordOfAnSdFileSaysWhatItsMolfileCannot_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<bool>("inV2000"); // whether a property has to say it there, too
        QTest::newRow("label") << "Me" << false;
        QTest::newRow("deuterium") << "D" << false;
        QTest::newRow("any atom") << "*" << false;
        QTest::newRow("like the end of a record") << "$$$$" << true;
        QTest::newRow("begins like the end of a record") << "$$$$x" << true;
    }

    void eachRecordOfAnSdFileSaysWhatItsMolfileCannot()
    {
        QFETCH(QString, symbol);
        QFETCH(bool, inV2000);
        Sketch sketch = chainOf(2);
        sketch.molecules[0].atoms[1].symbol = symbol;
        const QByteArray property = ">  <KYTSTUDIO_SYMBOLS>\n2 " + symbol.toUtf8() + "\n\n";
        QCOMPARE(write({sketch}, "sdf").contains(property), inV2000);
        QVERIFY(write({sketch}, "sdf", true).contains(property));
        for (const bool v3000 : {false, true})
            QCOMPARE(symbolsOf(read(write({sketch}, "sdf", v3000), "sdf")[0].molecules[0]), QStringList({"C", symbol}));
        sketch.molecules[0].atoms[1].symbol = "13C";
        QVERIFY(!write({sketch}, "sdf", true).contains("KYTSTUDIO_SYMBOLS"));
    }

    void colorsAreWrittenInRuns()
    {
        Sketch sketch = chainOf(4);
        sketch.molecules[0].atoms[2].color = {"9", "9", "9"};
        QVERIFY(write({sketch}, "sdf").contains(">  <KYTSTUDIO_COLORS>\n2 1 2 3\n1 9 9 9\n1 1 2 3\n\n$$$$\n"));
    }

    void everyRecordNamesItsDrawing()
    {
        Sketch loose = chainOf(1);
        loose.placed = false;
        Sketch two = chainOf(1);
        two.molecules.push_back(two.molecules[0]);
        const QByteArray text = write({loose, two, chainOf(1)}, "sdf");
        QCOMPARE(text.count("$$$$\n"), 4);
        QCOMPARE(text.count("<KYTSTUDIO_DRAWING>\n2\n"), 2);
        QCOMPARE(text.count("<KYTSTUDIO_DRAWING>\n3\n"), 1);
        QCOMPARE(text.count("<KYTSTUDIO_DRAWING>"), 3);
        QCOMPARE(sizesOf(read(text, "sdf")), (QList<int>{1, 2, 1}));
    }

    void aNameLikeTheEndOfARecordDoesNotEndIt()
    {
        Sketch sketch = chainOf(1);
        sketch.molecules[0].name = "$$$$ money";
        const QByteArray text = write({sketch}, "sdf");
        QVERIFY2(text.startsWith(" $$$$ money\n"), text.constData());
        QCOMPARE(read(text, "sdf")[0].molecules[0].name, QString("$$$$ money"));
    }
};

QTEST_MAIN(test_Molfile)
#include "test_Molfile.moc"
