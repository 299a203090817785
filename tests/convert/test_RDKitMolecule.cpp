#include "convert/chemistry/RDKitMolecule.h"

#include "convert/chemistry/Perception.h"
#include "convert/chemistry/StartChemistry.h"
#include "tests/support/Near.h"

#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QTest>

#include <cmath>

using namespace RDKit;

namespace {

using Kinds = QList<int>;

/// Atoms with these symbols in a row, 30 pixels apart.
SketchMolecule row(const QStringList& symbols)
{
    SketchMolecule molecule;
    for (const QString& symbol : symbols)
        molecule.atoms.push_back({symbol, 30.0 * double(molecule.atoms.size()), 0, 0, {"1", "2", "3"}});
    return molecule;
}

SketchBond bond(int from, int to, const Kinds& kinds = {KYTBT_SingleBond})
{
    SketchBond made{from, to, {}, 60};
    for (const int kind : kinds)
        made.kinds.push_back(KytBondType(kind));
    return made;
}

SketchMolecule pair(const Kinds& kinds)
{
    SketchMolecule molecule = row({"C", "C"});
    molecule.bonds = {bond(0, 1, kinds)};
    return molecule;
}

std::unique_ptr<RWMol> made(const SketchMolecule& drawn, MoleculeUse use = MoleculeUse::V2000)
{
    Notes notes;
    return moleculeOf(drawn, use, notes);
}

/// The drawing of a molecule that lies flat in one point.
SketchMolecule drawn(RWMol& molecule, Notes& notes)
{
    molecule.addConformer(new Conformer(molecule.getNumAtoms()), true);
    return sketchOf(molecule, {}, notes);
}

/// The molecule of a SMILES as it is written.
std::unique_ptr<RWMol> written(const char* smiles)
{
    SmilesParserParams params;
    params.sanitize = false;
    params.removeHs = false;
    return std::unique_ptr<RWMol>(SmilesToMol(smiles, params));
}

std::string label(const Atom* atom, const std::string& property)
{
    std::string text;
    return atom->getPropIfPresent(property, text) ? text : "none";
}

Kinds kindsOf(const SketchBond& bond)
{
    return Kinds(bond.kinds.begin(), bond.kinds.end());
}

/// A carbon with four different neighbours, the first of them at the wide end of a bond of this kind.
SketchMolecule centre(KytBondType kind)
{
    SketchMolecule molecule = row({"C", "F", "Cl", "Br", "I"});
    const std::pair<double, double> places[] = {{100, 100}, {130, 100}, {85, 126}, {70, 90}, {100, 70}};
    for (std::size_t i = 0; i < 5; ++i)
        std::tie(molecule.atoms[i].x, molecule.atoms[i].y) = places[i];
    molecule.bonds = {bond(0, 1, {kind}), bond(0, 2), bond(0, 3), bond(0, 4)};
    return molecule;
}

} // namespace

class test_RDKitMolecule : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    // From a drawing

    void linesBecomeABondOfTheirKind_data()
    {
        QTest::addColumn<Kinds>("kinds");
        QTest::addColumn<QList<int>>("types"); // for V2000, V3000 and chemistry; -1 where the bond is left out
        QTest::addColumn<QString>("note");
        const int one = Bond::SINGLE, two = Bond::DOUBLE, three = Bond::TRIPLE, aromatic = Bond::AROMATIC;
        const QString solid = "bonds of two or three dashed lines: written as double or triple bonds (1)";
        const QString mixed = "triple bonds with a dashed line: written as aromatic bonds (1)";
        const auto newRow = [](const char* name, const Kinds& kinds, const QList<int>& types,
                               const QString& note = {}) { QTest::newRow(name) << kinds << types << note; };
        newRow("single", {1}, {one, one, one});
        newRow("double", {1, 1}, {two, two, two});
        newRow("triple", {1, 1, 1}, {three, three, three});
        newRow("aromatic", {1, 0}, {aromatic, aromatic, aromatic});
        newRow("wedge up", {2}, {one, one, one});
        newRow("wedge down", {3}, {one, one, one});
        newRow("dashed line first", {0, 1}, {aromatic, aromatic, aromatic},
               "aromatic bonds with the dashed line first: written with the dashed line second (1)");
        newRow("dashed double bond", {0, 0}, {two, two, two}, solid);
        newRow("dashed triple bond", {0, 0, 0}, {three, three, three}, solid);
        newRow("triple bond with a dash", {1, 1, 0}, {aromatic, aromatic, aromatic}, mixed);
        newRow("triple bond with two dashes", {0, 1, 0}, {aromatic, aromatic, aromatic}, mixed);
        newRow("no lines", {}, {-1, -1, -1}, "bonds without lines: omitted (1)");
        newRow("hydrogen bond", {0}, {Bond::UNSPECIFIED, Bond::HYDROGEN, -1});
    }

    void linesBecomeABondOfTheirKind()
    {
        QFETCH(Kinds, kinds);
        QFETCH(QList<int>, types);
        QFETCH(QString, note);
        const MoleculeUse uses[] = {MoleculeUse::V2000, MoleculeUse::V3000, MoleculeUse::Chemistry};
        for (qsizetype i = 0; i < 3; ++i) {
            Notes notes;
            const std::unique_ptr<RWMol> molecule = moleculeOf(pair(kinds), uses[i], notes);
            const Bond* bond = molecule->getBondBetweenAtoms(0, 1);
            QCOMPARE(bond ? int(bond->getBondType()) : -1, types[i]);
            if (kinds != Kinds{0})
                QCOMPARE(notes.lines(), note.isEmpty() ? QStringList() : QStringList(note));
        }
    }

    void aHydrogenBondIsNotedWhereV2000HasNone()
    {
        SketchMolecule molecule = row({"C", "C", "C"});
        molecule.bonds = {bond(0, 1, {0}), bond(1, 2, {0})};
        const std::pair<MoleculeUse, QStringList> uses[] = {
            {MoleculeUse::V2000, {"hydrogen bonds: written as bond type 8 (any) in V2000 (2)"}},
            {MoleculeUse::V3000, {}},
            {MoleculeUse::Chemistry, {}}};
        for (const auto& [use, lines] : uses) {
            Notes notes;
            moleculeOf(molecule, use, notes);
            QCOMPARE(notes.lines(), lines);
        }
    }

    void bondsThatCannotBeAreLeftOut_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("a second one") << 0 << 1;
        QTest::newRow("a second one back") << 1 << 0;
        QTest::newRow("from an atom to itself") << 1 << 1;
    }

    void bondsThatCannotBeAreLeftOut()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        SketchMolecule molecule = pair({1, 1});
        molecule.bonds.push_back(bond(from, to));
        Notes notes;
        const std::unique_ptr<RWMol> made = moleculeOf(molecule, MoleculeUse::V2000, notes);
        QCOMPARE(made->getNumBonds(), 1U);
        QCOMPARE(made->getBondWithIdx(0)->getBondType(), Bond::DOUBLE);
        QCOMPARE(notes.lines(), QStringList("duplicate bonds between two atoms: omitted (1)"));
    }

    void aWedgeBeginsAtItsNarrowEnd()
    {
        SketchMolecule molecule = row({"C", "C", "C"});
        molecule.bonds = {bond(2, 1, {KYTBT_StereoUp}), bond(1, 0, {KYTBT_StereoDown})};
        const std::unique_ptr<RWMol> molecules = made(molecule);
        const Bond* up = molecules->getBondWithIdx(0);
        const Bond* down = molecules->getBondWithIdx(1);
        QCOMPARE(up->getBeginAtomIdx(), 2U);
        QCOMPARE(up->getBondDir(), Bond::BEGINWEDGE);
        QCOMPARE(down->getBeginAtomIdx(), 1U);
        QCOMPARE(down->getBondDir(), Bond::BEGINDASH);
    }

    void onlyChemistryMarksAromaticAtoms()
    {
        for (const MoleculeUse use : {MoleculeUse::V2000, MoleculeUse::V3000, MoleculeUse::Chemistry}) {
            const std::unique_ptr<RWMol> molecule = made(pair({1, 0}), use);
            const bool marked = use == MoleculeUse::Chemistry;
            QCOMPARE(molecule->getBondWithIdx(0)->getIsAromatic(), marked);
            QCOMPARE(molecule->getAtomWithIdx(0)->getIsAromatic(), marked);
            QCOMPARE(molecule->getAtomWithIdx(1)->getIsAromatic(), marked);
        }
    }

    void symbolsBecomeElementsOrLabels_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("isotope");
        QTest::addColumn<int>("charge");
        QTest::addColumn<QString>("alias");
        QTest::newRow("carbon") << "C" << 6 << 0 << 0 << "none";
        QTest::newRow("iron(III)") << "Fe3+" << 26 << 0 << 3 << "none";
        QTest::newRow("oxide") << "O-" << 8 << 0 << -1 << "none";
        QTest::newRow("isotope") << "13C" << 6 << 13 << 0 << "none";
        QTest::newRow("written in another way") << "Ca+2" << 20 << 0 << 2 << "Ca+2";
        QTest::newRow("deuterium") << "D" << 1 << 2 << 0 << "D";
        QTest::newRow("any atom") << "*" << 0 << 0 << 0 << "*";
        QTest::newRow("label") << "OMe" << 0 << 0 << 0 << "OMe";
        QTest::newRow("label beyond ASCII") << QStringLiteral("\u03b1") << 0 << 0 << 0 << QStringLiteral("\u03b1");
        QTest::newRow("like the end of a record") << "$$$$" << 0 << 0 << 0 << "none";
        QTest::newRow("empty") << "" << 0 << 0 << 0 << "";
    }

    void symbolsBecomeElementsOrLabels()
    {
        QFETCH(QString, symbol);
        QFETCH(int, number);
        QFETCH(int, isotope);
        QFETCH(int, charge);
        QFETCH(QString, alias);
        for (const MoleculeUse use : {MoleculeUse::V2000, MoleculeUse::V3000, MoleculeUse::Chemistry}) {
            const std::unique_ptr<RWMol> molecule = made(row({symbol}), use);
            const Atom* atom = molecule->getAtomWithIdx(0);
            QCOMPARE(atom->getAtomicNum(), number);
            QCOMPARE(int(atom->getIsotope()), isotope);
            QCOMPARE(atom->getFormalCharge(), charge);
            QCOMPARE(QString::fromStdString(label(atom, common_properties::molFileAlias)),
                     use == MoleculeUse::V2000 ? alias : QString("none"));
            QCOMPARE(label(atom, common_properties::dummyLabel), std::string(number == 0 ? "R" : "none"));
        }
    }

    void onlyAChargedHydrogenIsAloneInChemistry_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<bool>("alone");
        QTest::newRow("proton") << "H+" << true;
        QTest::newRow("hydride") << "H-" << true;
        QTest::newRow("hydrogen") << "H" << false;
        QTest::newRow("ammonium") << "N+" << false;
    }

    void onlyAChargedHydrogenIsAloneInChemistry()
    {
        QFETCH(QString, symbol);
        QFETCH(bool, alone);
        QCOMPARE(made(row({symbol}), MoleculeUse::Chemistry)->getAtomWithIdx(0)->getNoImplicit(), alone);
        QVERIFY(!made(row({symbol}), MoleculeUse::V2000)->getAtomWithIdx(0)->getNoImplicit());
    }

    void placesAreInAngstromsWithYPointingUp()
    {
        SketchMolecule molecule = row({"C", "N"});
        molecule.name = QStringLiteral("\u00e9thane");
        molecule.atoms[1] = {"N", 130, 45, -30, {"1", "2", "3"}};
        molecule.bonds = {bond(0, 1)};
        for (const MoleculeUse use : {MoleculeUse::V2000, MoleculeUse::V3000, MoleculeUse::Chemistry}) {
            const std::unique_ptr<RWMol> read = made(molecule, use);
            const RDGeom::Point3D place = read->getConformer().getAtomPos(1);
            NEAR(place.x, 6.5, 1e-12);
            NEAR(place.y, -2.25, 1e-12);
            NEAR(place.z, -1.5, 1e-12);
            QVERIFY(read->getConformer().is3D());
            QCOMPARE(read->getProp<std::string>(common_properties::_Name), std::string("\xc3\xa9thane"));
            // Nothing is written with a sign before a 0.
            const RDGeom::Point3D origin = read->getConformer().getAtomPos(0);
            QVERIFY(!std::signbit(origin.x) && !std::signbit(origin.y) && !std::signbit(origin.z));
        }
        molecule.atoms[1].depth = 0;
        QVERIFY(!made(molecule)->getConformer().is3D());
    }

    void anEmptyDrawingIsAMoleculeWithoutAtoms()
    {
        const std::unique_ptr<RWMol> molecule = made(SketchMolecule());
        QCOMPARE(molecule->getNumAtoms(), 0U);
        QCOMPARE(molecule->getNumConformers(), 1U);
    }

    // To a drawing

    void aDrawingComesBack_data()
    {
        QTest::addColumn<Kinds>("kinds");
        QTest::addColumn<int>("use");
        for (const Kinds& kinds : {Kinds{1}, {1, 1}, {1, 1, 1}, {1, 0}, {0}})
            for (const MoleculeUse use : {MoleculeUse::V2000, MoleculeUse::V3000})
                QTest::addRow("%lld lines, the last of kind %d, V%d000", qlonglong(kinds.size()), kinds.last(),
                              use == MoleculeUse::V2000 ? 2 : 3)
                    << kinds << int(use);
    }

    void aDrawingComesBack()
    {
        QFETCH(Kinds, kinds);
        QFETCH(int, use);
        SketchMolecule molecule = row({"C", "O-", "2H"});
        molecule.name = "a name";
        molecule.atoms[1].depth = 12.5F;
        molecule.bonds = {bond(1, 0, kinds), bond(1, 2)};
        Notes notes;
        const SketchMolecule back = sketchOf(*made(molecule, MoleculeUse(use)), {}, notes);
        QCOMPARE(notes.lines(), QStringList());
        QCOMPARE(back.name, molecule.name);
        QCOMPARE(back.atoms.size(), molecule.atoms.size());
        for (std::size_t i = 0; i < back.atoms.size(); ++i) {
            QCOMPARE(back.atoms[i].symbol, molecule.atoms[i].symbol);
            NEAR(back.atoms[i].x, molecule.atoms[i].x, 1e-9);
            NEAR(back.atoms[i].y, molecule.atoms[i].y, 1e-9);
            QCOMPARE(back.atoms[i].depth, molecule.atoms[i].depth);
        }
        QCOMPARE(back.atoms[1].color[0], QString("255")); // of oxygen
        QCOMPARE(back.bonds.size(), std::size_t{2});
        QCOMPARE(back.bonds[0].from, 1);
        QCOMPARE(back.bonds[0].to, 0);
        QCOMPARE(kindsOf(back.bonds[0]), kinds);
    }

    void bondsAreDrawnAsTheirTypeSays_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<Kinds>("kinds");
        QTest::addColumn<QString>("note");
        const QString coordinative = "dative and other unsupported bonds: read as single bonds (1)";
        const QString higher = "bonds of order above three: read as triple bonds (1)";
        const auto newRow = [](const char* name, Bond::BondType type, const Kinds& kinds, const QString& note = {}) {
            QTest::newRow(name) << int(type) << kinds << note;
        };
        newRow("single", Bond::SINGLE, {1});
        newRow("double", Bond::DOUBLE, {1, 1});
        newRow("triple", Bond::TRIPLE, {1, 1, 1});
        newRow("aromatic", Bond::AROMATIC, {1, 0});
        newRow("hydrogen", Bond::HYDROGEN, {0});
        newRow("of no order", Bond::ZERO, {0});
        newRow("unspecified", Bond::UNSPECIFIED, {0});
        newRow("quadruple", Bond::QUADRUPLE, {1, 1, 1}, higher);
        newRow("quintuple", Bond::QUINTUPLE, {1, 1, 1}, higher);
        newRow("sextuple", Bond::HEXTUPLE, {1, 1, 1}, higher);
        newRow("dative", Bond::DATIVE, {1}, coordinative);
        newRow("ionic", Bond::IONIC, {1}, coordinative);
        newRow("one and a half", Bond::ONEANDAHALF, {1}, coordinative);
    }

    void bondsAreDrawnAsTheirTypeSays()
    {
        QFETCH(int, type);
        QFETCH(Kinds, kinds);
        QFETCH(QString, note);
        const std::unique_ptr<RWMol> molecule = made(pair({1}));
        molecule->getBondWithIdx(0)->setBondType(Bond::BondType(type));
        Notes notes;
        QCOMPARE(kindsOf(sketchOf(*molecule, {}, notes).bonds[0]), kinds);
        QCOMPARE(notes.lines(), note.isEmpty() ? QStringList() : QStringList(note));
    }

    void whatASymbolDoesNotSayIsNoted_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("note");
        QTest::newRow("nothing") << QByteArray("[13CH3-]") << "13C-"
                                 << "";
        QTest::newRow("number of a map") << QByteArray("[CH4:7]") << "C"
                                         << "atom map numbers: discarded, not supported in drawings (1)";
        QTest::newRow("any atom") << QByteArray("*") << "*"
                                  << "";
        QTest::newRow("label of the extension") << QByteArray("* |$Me$|") << "Me"
                                                << "";
        QTest::newRow("label with blanks") << QByteArray("* |$a  b$|") << "a_b"
                                           << "";
    }

    void whatASymbolDoesNotSayIsNoted()
    {
        QFETCH(QByteArray, smiles);
        QFETCH(QString, note);
        const std::unique_ptr<RWMol> molecule = written(smiles.constData());
        QVERIFY(molecule);
        Notes notes;
        QTEST(drawn(*molecule, notes).atoms[0].symbol, "symbol");
        QCOMPARE(notes.lines(), note.isEmpty() ? QStringList() : QStringList(note));
    }

    void unpairedElectronsAreNoted()
    {
        const std::unique_ptr<RWMol> molecule = made(row({"C"}));
        molecule->getAtomWithIdx(0)->setNumRadicalElectrons(1);
        Notes notes;
        QCOMPARE(sketchOf(*molecule, {}, notes).atoms[0].symbol, QString("C"));
        QCOMPARE(notes.lines(), QStringList("unpaired electrons: discarded, not supported in drawings (1)"));
    }

    void anAliasGoesBeforeEverythingElse_data()
    {
        QTest::addColumn<QByteArray>("alias");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("label") << QByteArray("OMe") << "OMe";
        QTest::newRow("blanks around it") << QByteArray(" OMe ") << "OMe";
        QTest::newRow("two words") << QByteArray("O\tMe") << "O_Me";
        QTest::newRow("blank") << QByteArray("  ") << "N+";
    }

    void anAliasGoesBeforeEverythingElse()
    {
        QFETCH(QByteArray, alias);
        const std::unique_ptr<RWMol> molecule = made(row({"N+"}));
        molecule->getAtomWithIdx(0)->setProp(common_properties::molFileAlias, alias.toStdString());
        Notes notes;
        QTEST(sketchOf(*molecule, {}, notes).atoms[0].symbol, "symbol");
    }

    void aChosenWedgeTurnsItsBondAround()
    {
        const std::unique_ptr<RWMol> molecule = made(pair({1}));
        Notes notes;
        for (const unsigned narrowEnd : {0U, 1U}) {
            const SketchBond bond = sketchOf(*molecule, {{0, narrowEnd, KYTBT_StereoDown}}, notes).bonds[0];
            QCOMPARE(bond.from, int(narrowEnd));
            QCOMPARE(bond.to, int(1 - narrowEnd));
            QCOMPARE(kindsOf(bond), Kinds{KYTBT_StereoDown});
        }
    }

    void aNameIsOneLine()
    {
        const std::unique_ptr<RWMol> molecule = made(row({"C"}));
        molecule->setProp(common_properties::_Name, std::string(" two\n  lines "));
        Notes notes;
        QCOMPARE(sketchOf(*molecule, {}, notes).name, QString("two lines"));
    }

    void aMoleculeWithoutAtomsNeedsNoPlaces()
    {
        RWMol molecule;
        molecule.setProp(common_properties::_Name, std::string("nothing"));
        Notes notes;
        const SketchMolecule sketch = sketchOf(molecule, {}, notes);
        QCOMPARE(sketch.name, QString("nothing"));
        QVERIFY(sketch.atoms.empty() && sketch.bonds.empty());
    }

    // Hydrogens

    void unusualHydrogensAreNoted_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<bool>("noted");
        for (const char* usual :
             {"C", "[CH4]", "[NH4+]", "[OH2]", "[BH4-]", "c1ccccc1", "[nH]1cccc1", "[CH3]", "*", "[*]"})
            QTest::newRow(usual) << QByteArray(usual) << false;
        for (const char* unusual : {"[PH5]", "[SH4]", "[NH5]"})
            QTest::newRow(unusual) << QByteArray(unusual) << true;
    }

    void unusualHydrogensAreNoted()
    {
        QFETCH(QByteArray, smiles);
        QFETCH(bool, noted);
        const std::unique_ptr<RWMol> molecule = written(smiles.constData());
        molecule->updatePropertyCache(false);
        MolOps::assignRadicals(*molecule);
        Notes notes;
        noteUnusualHydrogens(*molecule, notes);
        const QStringList expected("atoms with an unusual number of hydrogens: read with the usual number (1)");
        QCOMPARE(notes.lines(), noted ? expected : QStringList());
    }

    // Chemistry

    void wedgesBecomeHands()
    {
        QStringList smiles;
        for (const KytBondType kind : {KYTBT_StereoUp, KYTBT_StereoDown, KYTBT_SingleBond}) {
            const std::unique_ptr<RWMol> molecule = made(centre(kind), MoleculeUse::Chemistry);
            perceive(*molecule);
            smiles.append(QString::fromStdString(MolToSmiles(*molecule)));
        }
        QVERIFY2(smiles[0].contains('@'), qPrintable(smiles[0]));
        QVERIFY2(smiles[1].contains('@'), qPrintable(smiles[1]));
        QVERIFY(smiles[0] != smiles[1]);
        QCOMPARE(smiles[2], QString("FC(Cl)(Br)I"));
    }

    void placesBecomeTheSidesOfADoubleBond_data()
    {
        QTest::addColumn<double>("y"); // of the last atom
        QTest::addColumn<QString>("smiles");
        QTest::newRow("on the same side") << 26.0 << "F/C=C\\F";
        QTest::newRow("on opposite sides") << -26.0 << "F/C=C/F";
    }

    void placesBecomeTheSidesOfADoubleBond()
    {
        QFETCH(double, y);
        SketchMolecule molecule = row({"F", "C", "C", "F"});
        molecule.atoms[0] = {"F", -15, 26, 0, {"1", "2", "3"}};
        molecule.atoms[1] = {"C", 0, 0, 0, {"1", "2", "3"}};
        molecule.atoms[2] = {"C", 30, 0, 0, {"1", "2", "3"}};
        molecule.atoms[3] = {"F", 45, y, 0, {"1", "2", "3"}};
        molecule.bonds = {bond(0, 1), bond(1, 2, {1, 1}), bond(2, 3)};
        const std::unique_ptr<RWMol> understood = made(molecule, MoleculeUse::Chemistry);
        perceive(*understood);
        QTEST(QString::fromStdString(MolToSmiles(*understood)), "smiles");
    }

    void ringsOfSingleAndDoubleBondsAreAromatic()
    {
        SketchMolecule molecule = row({"C", "C", "C", "C", "C", "C"});
        for (int i = 0; i < 6; ++i)
            molecule.bonds.push_back(bond(i, (i + 1) % 6, i % 2 ? Kinds{1, 1} : Kinds{1}));
        const std::unique_ptr<RWMol> understood = made(molecule, MoleculeUse::Chemistry);
        perceive(*understood);
        QCOMPARE(MolToSmiles(*understood), std::string("c1ccccc1"));
    }

    void whatCannotBeIsRefused_data()
    {
        QTest::addColumn<QStringList>("symbols");
        QTest::addColumn<QString>("why");
        QTest::newRow("five bonds") << QStringList{"C", "F", "F", "F", "F", "F"} << "Explicit valence";
        QTest::newRow("a charged hydrogen with a bond") << QStringList{"C", "H+"} << "a charged hydrogen with a bond";
        QTest::newRow("a hydride with a bond") << QStringList{"C", "H-"} << "a charged hydrogen with a bond";
    }

    void whatCannotBeIsRefused()
    {
        QFETCH(QStringList, symbols);
        QFETCH(QString, why);
        SketchMolecule molecule = row(symbols);
        for (int i = 1; i < int(symbols.size()); ++i)
            molecule.bonds.push_back(bond(0, i));
        const std::unique_ptr<RWMol> understood = made(molecule, MoleculeUse::Chemistry);
        QString told = "it was understood";
        try {
            perceive(*understood);
        } catch (const MolSanitizeException& fault) {
            told = QString::fromUtf8(fault.what());
        }
        QVERIFY2(told.startsWith(why), qPrintable(told));
    }

    void aChargedHydrogenAloneIsKept()
    {
        const std::unique_ptr<RWMol> proton = made(row({"H+"}), MoleculeUse::Chemistry);
        perceive(*proton);
        QCOMPARE(MolToSmiles(*proton), std::string("[H+]"));
    }
};

QTEST_APPLESS_MAIN(test_RDKitMolecule)
#include "test_RDKitMolecule.moc"
