#include "convert/chemistry/Layout.h"

#include "convert/chemistry/Projection.h"
#include "convert/chemistry/StartChemistry.h"
#include "convert/chemistry/Stereo.h"

#include <GraphMol/Chirality.h>
#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesParse.h>

#include <QTest>

#include <algorithm>

using namespace RDKit;

namespace {

std::unique_ptr<RWMol> moleculeFrom(const char* smiles)
{
    return std::unique_ptr<RWMol>(SmilesToMol(smiles));
}

Stereo stereoFrom(const char* smiles)
{
    return stereoOf(*moleculeFrom(smiles));
}

/// CHFClBr in space, its hydrogen not drawn: carbon in the origin, bromine towards the viewer.
std::unique_ptr<RWMol> halomethane(bool mirrored)
{
    std::unique_ptr<RWMol> molecule = moleculeFrom("C(F)(Cl)Br");
    auto* conformer = new Conformer(4);
    const double x = mirrored ? -1 : 1;
    conformer->setAtomPos(1, RDGeom::Point3D(x * 1.2, 0.7, -0.5));
    conformer->setAtomPos(2, RDGeom::Point3D(x * -1.2, 0.7, -0.5));
    conformer->setAtomPos(3, RDGeom::Point3D(0, -0.8, 1.6));
    conformer->set3D(true);
    molecule->addConformer(conformer, true);
    MolOps::assignStereochemistryFrom3D(*molecule);
    return molecule;
}

} // namespace

class test_Layout : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void stereoDoesNotDependOnHowASmilesIsWritten_data()
    {
        // The atoms have the same order, but not the neighbours of each.
        QTest::addColumn<QByteArray>("one");
        QTest::addColumn<QByteArray>("other");
        QTest::addColumn<QString>("difference");
        const auto row = [](const char* name, const char* one, const char* other, const char* difference) {
            QTest::newRow(name) << QByteArray(one) << QByteArray(other) << QString(difference);
        };
        row("centre", "F[C@](Cl)(Br)I", "F[C@]12Cl.Br1.I2", "");
        row("other hand", "F[C@](Cl)(Br)I", "F[C@@](Cl)(Br)I", "atom 2");
        row("no hand", "F[C@](Cl)(Br)I", "FC(Cl)(Br)I", "atom 2");
        row("double bond", "F/C=C/Cl", "F\\C=C\\Cl", "");
        row("three neighbours", "F/C(Br)=C/Cl", "F\\C(Br)=C\\Cl", "");
        row("other side", "F/C=C/Cl", "F/C=C\\Cl", "bond 2=3");
        row("open", "F/C=C/Cl", "FC=CCl", "bond 2=3");
        row("both", "F/C=C/[C@H](Cl)Br", "F/C=C\\[C@@H](Cl)Br", "atom 4, bond 2=3");
    }

    void stereoDoesNotDependOnHowASmilesIsWritten()
    {
        QFETCH(QByteArray, one);
        QFETCH(QByteArray, other);
        QTEST(differencesOf(stereoFrom(one), stereoFrom(other)), "difference");
        QTEST(differencesOf(stereoFrom(other), stereoFrom(one)), "difference");
    }

    void atomsAreComparedToo()
    {
        QCOMPARE(differencesOf(*moleculeFrom("CC"), *moleculeFrom("CN")), QString("atom 2"));
        QCOMPARE(differencesOf(*moleculeFrom("CO"), *moleculeFrom("C[O-]")), QString("atom 2"));
        QCOMPARE(differencesOf(*moleculeFrom("CO"), *moleculeFrom("[13CH3]O")), QString("atom 1"));
        QCOMPARE(differencesOf(*moleculeFrom("C=C"), *moleculeFrom("CC")), QString("atom 1, atom 2"));
        QCOMPARE(differencesOf(*moleculeFrom("CCC"), *moleculeFrom("CC")), QString("the number of atoms"));
        QCOMPARE(differencesOf(*moleculeFrom("CCC"), *moleculeFrom("CCC")), QString());
    }

    void drawingsShowTheStereoOfTheirSmiles_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<QStringList>("notes");
        for (const char* smiles : {"C[C@H](N)C(=O)O", "C/C=C/C", "C/C=N/O", "C1CCC/C=C\\CC1", "C1CCCCC/C=C/CCCC1",
                                   "C[S@](=O)c1ccccc1", "C[P@@H](=O)c1ccccc1", "CC=CC", "C1CCCCCCCC=C1"})
            QTest::newRow(smiles) << QByteArray(smiles) << QStringList();
        QTest::newRow("trans-cyclooctene")
            << QByteArray("C1CCC/C=C/CC1") << QStringList("x: stereo of bond 5=6: drawn otherwise than read");
    }

    void drawingsShowTheStereoOfTheirSmiles()
    {
        QFETCH(QByteArray, smiles);
        Notes notes;
        layOut(*moleculeFrom(smiles), "x", notes);
        QTEST(notes.lines(), "notes");
    }

    void doubleBondsAreOpenWhereTheSmilesSaysNothing_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<int>("open");
        QTest::newRow("open") << QByteArray("CC=CC") << 1;
        QTest::newRow("open in a ring") << QByteArray("C1CCCCCCCC=C1") << 1;
        QTest::newRow("half open") << QByteArray("C/C=C/C=CC") << 1;
        QTest::newRow("E") << QByteArray("C/C=C/C") << 0;
        QTest::newRow("nothing to say") << QByteArray("CC=C(C)C") << 0;
        QTest::newRow("nothing to say in a small ring") << QByteArray("C1CCCC=C1") << 0;
    }

    void doubleBondsAreOpenWhereTheSmilesSaysNothing()
    {
        QFETCH(QByteArray, smiles);
        Notes notes;
        const SketchMolecule drawn = layOut(*moleculeFrom(smiles), "x", notes);
        QTEST(int(std::count_if(drawn.bonds.begin(), drawn.bonds.end(),
                                [](const SketchBond& bond) { return bond.open; })),
              "open");
    }

    void aCentreWithTooFewNeighboursGetsItsHydrogen()
    {
        Notes notes;
        QCOMPARE(layOut(*moleculeFrom("C[P@H]CC"), "x", notes).atoms.back().symbol, QString("H"));
        QCOMPARE(layOut(*moleculeFrom("C[C@H](F)Cl"), "x", notes).atoms.size(), std::size_t{4});
    }

    void theSteepestBondInSpaceIsTheWedge()
    {
        for (const bool mirrored : {false, true}) {
            const std::vector<ChosenWedge> wedges = projectedWedges(*halomethane(mirrored));
            QCOMPARE(wedges.size(), std::size_t{1});
            QCOMPARE(wedges[0].bond, 2U);
            QCOMPARE(wedges[0].narrowEnd, 0U);
            QCOMPARE(wedges[0].kind, KYTBT_StereoUp);
        }
    }

    void bothHandsInSpaceAreToldApart()
    {
        QVERIFY(!(stereoOf(*halomethane(false)) == stereoOf(*halomethane(true))));
        QCOMPARE(stereoOf(*halomethane(false)).centres.size(), std::size_t{1});
    }

    void aProjectionOntoALineHasNoWedge()
    {
        const std::unique_ptr<RWMol> molecule = halomethane(false);
        QCOMPARE(projectedWedges(*molecule).size(), std::size_t{1});
        // Seen along its side, fluorine, chlorine and bromine lie on one line with carbon.
        for (RDGeom::Point3D& position : molecule->getConformer().getPositions())
            position = RDGeom::Point3D(0, position.y, position.x);
        QCOMPARE(projectedWedges(*molecule).size(), std::size_t{0});
    }
};

QTEST_APPLESS_MAIN(test_Layout)
#include "test_Layout.moc"
