#include "convert/chemistry/StartChemistry.h"
#include "convert/formats/Xyz.h"

#include <QTest>

namespace {

SketchAtom atomAt(const char* symbol, double x, double y, float depth = 0)
{
    return {.symbol = symbol, .x = x, .y = y, .depth = depth, .color = {"1", "1", "1"}};
}

Sketch sketchOf(std::vector<SketchAtom> atoms, std::vector<SketchBond> bonds = {}, const QString& name = {})
{
    SketchMolecule molecule;
    molecule.name = name;
    molecule.atoms = std::move(atoms);
    molecule.bonds = std::move(bonds);
    Sketch sketch;
    sketch.molecules.push_back(std::move(molecule));
    return sketch;
}

} // namespace

class test_Xyz : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { startChemistry(); }

    void atomsAreInAngstromsAsDrawn()
    {
        Notes notes;
        const Sketch water = sketchOf(
            {atomAt("O", 20, 30), atomAt("H", 40, 0, 10), atomAt("H", 0, 0, -5)},
            {{.from = 0, .to = 1, .kinds = {KYTBT_SingleBond}}, {.from = 0, .to = 2, .kinds = {KYTBT_SingleBond}}},
            "water");
        QCOMPARE(xyzOf({water}, notes),
                 QByteArray("3\nwater\n"
                            "O       1.00000     -1.50000      0.00000\n"
                            "H       2.00000      0.00000      0.50000\n"
                            "H       0.00000      0.00000     -0.25000\n"));
        QCOMPARE(notes.lines(), QStringList());
    }

    void moleculesAreFramesOneAfterTheOther()
    {
        Notes notes;
        const QByteArray text =
            xyzOf({sketchOf({atomAt("He", 0, 0)}), sketchOf({atomAt("Ne", 0, 0)}, {}, "neon")}, notes);
        const QList<QByteArray> lines = text.split('\n');
        QCOMPARE(lines.size(), 7);
        QCOMPARE(lines[0] + lines[1], QByteArray("1"));
        QCOMPARE(lines[3] + lines[4], QByteArray("1neon"));
        QVERIFY(text.endsWith('\n'));
    }

    void whatXyzCannotHoldIsTold_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char* symbol, const char* written, const char* warning) {
            QTest::newRow(symbol) << QString(symbol) << QByteArray(written) << QString(warning);
        };
        row("Ph", "X", "labels that are not elements: written as X (1)");
        row("*", "X", "labels that are not elements: written as X (1)");
        row("Na+", "Na", "charges and isotopes: discarded, not supported in XYZ (1)");
        row("22Ne", "Ne", "charges and isotopes: discarded, not supported in XYZ (1)");
        row("C", "C", "molecules with implicit hydrogens: written without them (1)");
    }

    void whatXyzCannotHoldIsTold()
    {
        QFETCH(QString, symbol);
        QFETCH(QByteArray, written);
        QFETCH(QString, warning);
        Notes notes;
        const QByteArray text = xyzOf({sketchOf({atomAt(qPrintable(symbol), 0, 0)})}, notes);
        QCOMPARE(text.split('\n')[2].split(' ').front(), written);
        QCOMPARE(notes.lines(), QStringList(warning));
    }
};

QTEST_APPLESS_MAIN(test_Xyz)
#include "test_Xyz.moc"
