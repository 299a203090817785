#include "convert/chemistry/Inchi.h"
#include "convert/chemistry/StartChemistry.h"
#include "tests/convert/Converting.h"

#include <QTest>

namespace {

QString refusal(const QByteArray& smiles)
{
    try {
        write(read(smiles, "smi"), "inchi");
    } catch (const ConversionError& fault) {
        return fault.text();
    }
    return {};
}

} // namespace

class test_Inchi : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void moleculesHaveTheirStandardInchi_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<QByteArray>("inchi");
        const auto row = [](const char* smiles, const char* inchi) {
            QTest::newRow(smiles) << QByteArray(smiles) << QByteArray(inchi);
        };
        row("C", "InChI=1S/CH4/h1H4");
        row("CCO", "InChI=1S/C2H6O/c1-2-3/h3H,2H2,1H3");
        row("c1ccccc1", "InChI=1S/C6H6/c1-2-4-6-5-3-1/h1-6H");
        row("c1cc[nH]c1", "InChI=1S/C4H5N/c1-2-4-5-3-1/h1-5H");
        row("C[C@H](N)C(=O)O", "InChI=1S/C3H7NO2/c1-2(4)3(5)6/h2H,4H2,1H3,(H,5,6)/t2-/m0/s1");
        row("C[C@@H](N)C(=O)O", "InChI=1S/C3H7NO2/c1-2(4)3(5)6/h2H,4H2,1H3,(H,5,6)/t2-/m1/s1");
        row("C/C=C/C", "InChI=1S/C4H8/c1-3-4-2/h3-4H,1-2H3/b4-3+");
        row("C/C=C\\C", "InChI=1S/C4H8/c1-3-4-2/h3-4H,1-2H3/b4-3-");
        row("CC=CC", "InChI=1S/C4H8/c1-3-4-2/h3-4H,1-2H3");
        row("[13CH4]", "InChI=1S/CH4/h1H4/i1+1");
        row("[2H]C", "InChI=1S/CH4/h1H4/i1D");
        row("[NH4+].[Cl-]", "InChI=1S/ClH.H3N/h1H;1H3");
        row("[Na+].[Cl-]", "InChI=1S/ClH.Na/h1H;/q;+1/p-1");
    }

    void moleculesHaveTheirStandardInchi()
    {
        QFETCH(QByteArray, smiles);
        QFETCH(QByteArray, inchi);
        QCOMPARE(write(read(smiles, "smi"), "inchi"), inchi + '\n');
    }

    void namesFollow()
    {
        QCOMPARE(write(read("CCO ethanol", "smi"), "inchikey"), QByteArray("LFQSCWFLJHTTHZ-UHFFFAOYSA-N\tethanol\n"));
        QCOMPARE(write(read("C methane\nO water", "smi"), "inchi"),
                 QByteArray("InChI=1S/CH4/h1H4\tmethane\nInChI=1S/H2O/h1H2\twater\n"));
    }

    void whatHasNoInchiIsRefused()
    {
        QCOMPARE(refusal("*C |$R1;$|"), QString("no InChI: label R1 is not an element"));
        QCOMPARE(refusal("*C"), QString("no InChI: label * is not an element"));
    }

    void theNumberOfBondsAndHydrogensHasALimit()
    {
        const auto iron = [](int fluorines) { return "F[Fe]" + QByteArray("(F)").repeated(fluorines - 2) + 'F'; };
        QCOMPARE(refusal("[Na-19]"), QString());
        QCOMPARE(refusal(iron(20)), QString());
        for (const QByteArray& smiles : {QByteArray("[Na-20]"), QByteArray("[Na-56]"), iron(21), iron(40)})
            QCOMPARE(refusal(smiles), QString("no InChI: atom with more than 20 bonds and hydrogens"));
    }

    void theNumberOfAtomsHasALimit()
    {
        SketchMolecule chain;
        for (int i = 0; i < 1023; ++i) {
            chain.atoms.push_back({.symbol = "C", .x = 30.0 * i, .y = i % 2 ? 15.0 : 0.0, .color = {"1", "1", "1"}});
            if (i > 0)
                chain.bonds.push_back({.from = i - 1, .to = i, .kinds = {KYTBT_SingleBond}});
        }
        Notes notes;
        QVERIFY(inchiOf(chain, notes).startsWith("InChI=1S/C1023H2048/"));
        chain.atoms.push_back(chain.atoms.back());
        QVERIFY_THROWS_EXCEPTION(ConversionError, inchiOf(chain, notes));
    }

    void hydrogenBondsAreTold()
    {
        Notes notes;
        const SketchMolecule molecule = read(workspaceWith("BOND 0 1 1 0 BOND 1 2 1 1"), "kyt")[0].molecules[0];
        QCOMPARE(inchiOf(molecule, notes), QString("InChI=1S/C2H6.CH4/c1-2;/h1-2H3;1H4"));
        QCOMPARE(notes.lines(), QStringList("hydrogen bonds: omitted, not supported in InChI (1)"));
    }
};

QTEST_MAIN(test_Inchi)
#include "test_Inchi.moc"
