#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineF>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>
#include <QVector3D>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

// Lengths in canvas pixels, angles in degrees, as lib/README.md gives them.
const double perAngstrom = 20;
const double single = 1.54 * perAngstrom;
const double aromatic = 1.39 * perAngstrom;
const double cage = 1.57 * perAngstrom;
const double carbonHydrogen = 1.09 * perAngstrom;
const double oxygenHydrogen = 0.96 * perAngstrom;
const double tetrahedral = 109.4712;
const double cageHydrogen = 125.2644;

/// The files carry six digits: 0.0005 pixels from 100 on, and two ends to a length.
const double lengthTolerance = 0.003;
const double angleTolerance = 0.01;

/// What a new window shows of the canvas, what is kept free for the dot of an atom and for its label below and right.
const QRectF visiblePart(0, 0, 385, 240);
const QMarginsF margins(6, 6, 13, 21);

const double betweenMolecules = 16;
const double withinMolecule = 9;

const QStringList names{"benzene", "cubane", "hexane", "megaphon", "prop", "water"};

/// A library molecule alone on a canvas.
struct Loaded {
    explicit Loaded(const QString& name)
        : read(drawing.doc->load("lib/" + name + ".kyf", true))
        , atoms(drawing.atoms())
    {
        for (KytAtom* atom : atoms)
            bonds.append(*atom->getOutList());
    }

    Drawing drawing;
    bool read;
    QList<KytAtom*> atoms;
    QList<KytBond*> bonds;
};

QVector3D place(const KytAtom* atom)
{
    return {static_cast<float>(atom->x()), static_cast<float>(atom->y()), atom->getAtomZ()};
}

double distanceInSpace(const KytAtom* a, const KytAtom* b)
{
    return std::hypot(a->x() - b->x(), a->y() - b->y(), a->getAtomZ() - b->getAtomZ());
}

double distanceOnCanvas(const KytAtom* a, const KytAtom* b)
{
    return std::hypot(a->x() - b->x(), a->y() - b->y());
}

QList<KytAtom*> neighbours(KytAtom* atom)
{
    QList<KytAtom*> result;
    for (KytBond* bond : *atom->getInList())
        result.append(bond->getFromAtom());
    for (KytBond* bond : *atom->getOutList())
        result.append(bond->getToAtom());
    return result;
}

int valence(KytAtom* atom)
{
    int sum = 0;
    for (KytBond* bond : *atom->getInList() + *atom->getOutList())
        sum += bond->bondCount;
    return sum;
}

/// The angle a-middle-b.
double angle(const KytAtom* a, const KytAtom* middle, const KytAtom* b)
{
    const double near = distanceInSpace(middle, a), far = distanceInSpace(middle, b), across = distanceInSpace(a, b);
    return std::acos((near * near + far * far - across * across) / (2 * near * far)) * 180 / M_PI;
}

QString formula(const QList<KytAtom*>& atoms)
{
    QString result;
    for (const char* symbol : {"C", "H", "O"}) {
        const auto count = std::count_if(atoms.begin(), atoms.end(), [&](KytAtom* a) { return a->symbol == symbol; });
        if (count > 0)
            result += symbol + (count > 1 ? QString::number(count) : QString());
    }
    return result;
}

bool isBetween(KytBond* bond, const char* symbol)
{
    return bond->getFromAtom()->symbol == symbol && bond->getToAtom()->symbol == symbol;
}

/// How far the atom farthest from the plane through the first three carbons lies off it.
double unevenness(const QList<KytAtom*>& atoms)
{
    const QVector3D normal =
        QVector3D::crossProduct(place(atoms[1]) - place(atoms[0]), place(atoms[2]) - place(atoms[0])).normalized();
    double farthest = 0;
    for (KytAtom* atom : atoms)
        farthest = std::max<double>(farthest, std::abs(QVector3D::dotProduct(place(atom) - place(atoms[0]), normal)));
    return farthest;
}

QStringList pictures()
{
    QStringList files;
    for (const char* tool : {"view", "rotate", "singlebond", "dashedbond", "stereoup", "stereodown", "zigzag", "delete",
                             "fixedlength", "fixedangle", "i3d", "whatsthis"})
        files.append(QString("icons/%1.xpm").arg(tool));
    for (const QString& name : names)
        files.append("lib/" + name + ".xpm");
    return files;
}

} // namespace

class test_library : public QObject {
    Q_OBJECT

private slots:
    void hasItsFormulaInOnePiece_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("benzene") << "benzene"
                                 << "C6H6";
        QTest::newRow("cubane") << "cubane"
                                << "C8H8";
        QTest::newRow("hexane") << "hexane"
                                << "C6H14";
        QTest::newRow("megaphon") << "megaphon"
                                  << "C34H18";
        QTest::newRow("prop") << "prop"
                              << "C3H8";
        QTest::newRow("water") << "water"
                               << "H2O";
    }

    void hasItsFormulaInOnePiece()
    {
        QFETCH(QString, name);
        const Loaded molecule(name);
        QVERIFY(molecule.read);
        QTEST(formula(molecule.atoms), "expected");

        QSet<KytAtom*> reached{molecule.atoms.first()};
        QList<KytAtom*> open = reached.values();
        while (!open.isEmpty()) {
            for (KytAtom* next : neighbours(open.takeLast())) {
                if (!reached.contains(next)) {
                    reached.insert(next);
                    open.append(next);
                }
            }
        }
        QCOMPARE(reached.size(), molecule.atoms.size());
    }

    void everyAtomHasItsValence_data() { everyMolecule(); }
    void everyAtomHasItsValence()
    {
        QFETCH(QString, name);
        const QMap<QString, int> valences{{"C", 4}, {"H", 1}, {"O", 2}};
        const Loaded molecule(name);
        QVERIFY(!molecule.atoms.isEmpty());
        for (KytAtom* atom : molecule.atoms)
            QCOMPARE(valence(atom), valences.value(atom->symbol));
    }

    void bondsHaveTheirLengthsInSpace_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("betweenCarbons");
        QTest::addColumn<double>("toHydrogen");
        QTest::newRow("benzene") << "benzene" << aromatic << carbonHydrogen;
        QTest::newRow("cubane") << "cubane" << cage << carbonHydrogen;
        QTest::newRow("hexane") << "hexane" << single << carbonHydrogen;
        QTest::newRow("megaphon") << "megaphon" << aromatic << carbonHydrogen;
        QTest::newRow("prop") << "prop" << single << carbonHydrogen;
        QTest::newRow("water") << "water" << 0.0 << oxygenHydrogen;
    }

    void bondsHaveTheirLengthsInSpace()
    {
        QFETCH(QString, name);
        QFETCH(double, betweenCarbons);
        QFETCH(double, toHydrogen);
        const Loaded molecule(name);
        QVERIFY(!molecule.bonds.isEmpty());
        for (KytBond* bond : molecule.bonds) {
            const double length = distanceInSpace(bond->getFromAtom(), bond->getToAtom());
            const double expected = isBetween(bond, "C") ? betweenCarbons : toHydrogen;
            NEAR(length, expected, lengthTolerance);
        }
    }

    void bondsMeetAtTheirAngles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("betweenHeavy"); // two neighbours that are not hydrogen
        QTest::addColumn<double>("otherwise");
        QTest::newRow("benzene") << "benzene" << 120.0 << 120.0;
        QTest::newRow("cubane") << "cubane" << 90.0 << cageHydrogen;
        QTest::newRow("hexane") << "hexane" << tetrahedral << tetrahedral;
        QTest::newRow("megaphon") << "megaphon" << 120.0 << 120.0;
        QTest::newRow("prop") << "prop" << tetrahedral << tetrahedral;
        QTest::newRow("water") << "water" << 0.0 << 104.5;
    }

    void bondsMeetAtTheirAngles()
    {
        QFETCH(QString, name);
        QFETCH(double, betweenHeavy);
        QFETCH(double, otherwise);
        const Loaded molecule(name);
        int angles = 0;
        for (KytAtom* atom : molecule.atoms) {
            const QList<KytAtom*> around = neighbours(atom);
            for (qsizetype i = 0; i < around.size(); ++i) {
                for (qsizetype j = 0; j < i; ++j) {
                    const bool heavy = around[i]->symbol != "H" && around[j]->symbol != "H";
                    const double found = angle(around[i], atom, around[j]);
                    QVERIFY2(std::abs(found - (heavy ? betweenHeavy : otherwise)) < angleTolerance,
                             qPrintable(QString::number(found)));
                    ++angles;
                }
            }
        }
        QVERIFY(angles > 0);
    }

    void atomsAreLockedAndColouredByElement_data() { everyMolecule(); }
    void atomsAreLockedAndColouredByElement()
    {
        QFETCH(QString, name);
        const QMap<QString, QStringList> colours{
            {"C", {"64", "64", "64"}}, {"H", {"255", "255", "255"}}, {"O", {"255", "0", "0"}}};
        const Loaded molecule(name);
        QVERIFY(!molecule.atoms.isEmpty());
        for (KytAtom* atom : molecule.atoms) {
            QVERIFY(atom->locked);
            QCOMPARE(QStringList(std::begin(atom->_atomColor), std::end(atom->_atomColor)),
                     colours.value(atom->symbol));
        }
    }

    void onlyPlainBondsAreDrawn_data() { everyMolecule(); }
    void onlyPlainBondsAreDrawn()
    {
        QFETCH(QString, name);
        const Loaded molecule(name);
        QVERIFY(!molecule.bonds.isEmpty());
        for (KytBond* bond : molecule.bonds) {
            QVERIFY(bond->bondCount == 1 || bond->bondCount == 2);
            QVERIFY(bond->bond1 && !bond->bond1->isDashed);
            QCOMPARE(bond->bond2 != nullptr, bond->bondCount == 2);
            QVERIFY(!bond->bond2 || !bond->bond2->isDashed);
        }
    }

    void noAtomHidesAnotherOfItsMolecule_data() { everyMolecule(); }
    void noAtomHidesAnotherOfItsMolecule()
    {
        QFETCH(QString, name);
        const Loaded molecule(name);
        QVERIFY(molecule.atoms.size() > 1);
        for (qsizetype i = 0; i < molecule.atoms.size(); ++i) {
            for (qsizetype j = 0; j < i; ++j)
                QVERIFY(distanceOnCanvas(molecule.atoms[i], molecule.atoms[j]) >= withinMolecule);
        }
    }

    void liesInTheVisiblePart_data() { everyMolecule(); }
    void liesInTheVisiblePart()
    {
        QFETCH(QString, name);
        const Loaded molecule(name);
        QVERIFY(!molecule.atoms.isEmpty());
        const QRectF room = visiblePart.marginsRemoved(margins);
        for (KytAtom* atom : molecule.atoms)
            QVERIFY2(room.contains(atom->x(), atom->y()), qPrintable(QString("%1 %2").arg(atom->x()).arg(atom->y())));
    }

    void isWrittenAsTheProgramWritesIt_data() { everyMolecule(); }
    void isWrittenAsTheProgramWritesIt()
    {
        QFETCH(QString, name);
        Loaded molecule(name);
        const QTemporaryDir folder;
        const QString copyName = folder.filePath("copy.kyf");
        QVERIFY(molecule.drawing.doc->saveAs(copyName));

        QFile original("lib/" + name + ".kyf"), copy(copyName);
        QVERIFY(original.open(QIODevice::ReadOnly) && copy.open(QIODevice::ReadOnly));
        QCOMPARE(QString(copy.readAll()), QString(original.readAll()));
    }

    void waterBenzeneAndMegaphonAreFlat()
    {
        for (const char* name : {"water", "benzene", "megaphon"}) {
            const Loaded molecule(name);
            QVERIFY(!molecule.atoms.isEmpty());
            for (KytAtom* atom : molecule.atoms)
                QCOMPARE(atom->getAtomZ(), 0.0F);
        }
    }

    void benzenesDoubleBondsAlternate()
    {
        const Loaded benzene("benzene");
        QMap<KytAtom*, int> doubles;
        for (KytBond* bond : benzene.bonds) {
            if (bond->bondCount == 2) {
                ++doubles[bond->getFromAtom()];
                ++doubles[bond->getToAtom()];
            }
        }
        QCOMPARE(doubles.size(), 6);
        for (const int count : doubles)
            QCOMPARE(count, 1);
    }

    void benzenesRingIsRegular()
    {
        const Loaded benzene("benzene");
        QPointF middle;
        for (KytAtom* atom : benzene.atoms)
            middle += QPointF(atom->x(), atom->y()) / static_cast<double>(benzene.atoms.size());
        for (KytAtom* atom : benzene.atoms) {
            const double radius = std::hypot(atom->x() - middle.x(), atom->y() - middle.y());
            const double expected = atom->symbol == "C" ? aromatic : aromatic + carbonHydrogen;
            NEAR(radius, expected, lengthTolerance);
        }
    }

    void cubaneIsACube()
    {
        const Loaded cubane("cubane");
        int edges = 0, faceDiagonals = 0, bodyDiagonals = 0;
        for (KytAtom* a : cubane.atoms) {
            for (KytAtom* b : cubane.atoms) {
                if (a >= b || a->symbol != "C" || b->symbol != "C")
                    continue;
                const double ratio = distanceInSpace(a, b) / cage;
                edges += std::abs(ratio - 1) < 1e-3 && a->isConnected(b);
                faceDiagonals += std::abs(ratio - std::sqrt(2.0)) < 1e-3 && !a->isConnected(b);
                bodyDiagonals += std::abs(ratio - std::sqrt(3.0)) < 1e-3 && !a->isConnected(b);
            }
        }
        QCOMPARE(edges, 12);
        QCOMPARE(faceDiagonals, 12);
        QCOMPARE(bodyDiagonals, 4);
    }

    void hydrogensOfTheChainsStandOutOfTheCarbonPlane_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("hexane") << "hexane";
        QTest::newRow("prop") << "prop";
    }

    void hydrogensOfTheChainsStandOutOfTheCarbonPlane()
    {
        QFETCH(QString, name);
        const Loaded chain(name);
        QList<KytAtom*> carbons;
        for (KytAtom* atom : chain.atoms) {
            if (atom->symbol == "C")
                carbons.append(atom);
        }
        QVERIFY(unevenness(carbons) < lengthTolerance);

        const QVector3D normal =
            QVector3D::crossProduct(place(carbons[1]) - place(carbons[0]), place(carbons[2]) - place(carbons[0]))
                .normalized();
        const double height = carbonHydrogen * std::sin(tetrahedral / 2 * M_PI / 180);
        for (KytAtom* carbon : carbons) {
            int above = 0, below = 0;
            for (KytAtom* atom : neighbours(carbon)) {
                const double off = QVector3D::dotProduct(place(atom) - place(carbons[0]), normal);
                above += std::abs(off - height) < 0.01;
                below += std::abs(off + height) < 0.01;
            }
            QCOMPARE(above, 1);
            QCOMPARE(below, 1);
        }
    }

    void theMegaphonIsNineFusedRingsWithADoubleBondAtEachCarbon()
    {
        const Loaded megaphon("megaphon");
        QMap<KytAtom*, int> doubles;
        int carbons = 0, carbonBonds = 0;
        for (KytAtom* atom : megaphon.atoms)
            carbons += atom->symbol == "C";
        for (KytBond* bond : megaphon.bonds) {
            carbonBonds += isBetween(bond, "C");
            if (bond->bondCount == 2) {
                ++doubles[bond->getFromAtom()];
                ++doubles[bond->getToAtom()];
            }
        }
        QCOMPARE(carbonBonds - carbons + 1, 9);
        QCOMPARE(doubles.size(), carbons);
        for (const int count : doubles)
            QCOMPARE(count, 1);
    }

    void allSixKeepApart()
    {
        std::vector<std::unique_ptr<Loaded>> molecules;
        for (const QString& name : names)
            molecules.push_back(std::make_unique<Loaded>(name));
        double nearest = HUGE_VAL;
        for (std::size_t i = 0; i < molecules.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                for (KytAtom* a : molecules[i]->atoms) {
                    for (KytAtom* b : molecules[j]->atoms)
                        nearest = std::min(nearest, distanceOnCanvas(a, b));
                }
            }
        }
        QVERIFY2(nearest >= betweenMolecules && nearest < 400, qPrintable(QString::number(nearest)));
    }

    void noBondsOfTwoMoleculesCross()
    {
        std::vector<QList<QLineF>> drawn;
        for (const QString& name : names) {
            const Loaded molecule(name);
            QList<QLineF> lines;
            for (KytBond* bond : molecule.bonds) {
                const KytAtom *from = bond->getFromAtom(), *to = bond->getToAtom();
                lines.append(QLineF(from->x(), from->y(), to->x(), to->y()));
            }
            QVERIFY(!lines.isEmpty());
            for (const QList<QLineF>& others : drawn) {
                for (const QLineF& other : others) {
                    for (const QLineF& line : lines)
                        QVERIFY(line.intersects(other) != QLineF::BoundedIntersection);
                }
            }
            drawn.push_back(lines);
        }
    }

    void picturesFitTheToolbars_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString& file : pictures())
            QTest::newRow(qPrintable(file)) << file;
    }

    void picturesFitTheToolbars()
    {
        QFETCH(QString, file);
        const QImage picture(file, "XPM");
        QCOMPARE(picture.size(), QSize(24, 24));
        for (const QPoint corner : {QPoint(0, 0), QPoint(23, 0), QPoint(0, 23), QPoint(23, 23)})
            QCOMPARE(qAlpha(picture.pixel(corner)), 0);
        int drawn = 0;
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 24; ++x)
                drawn += qAlpha(picture.pixel(x, y)) == 255;
        }
        QVERIFY(drawn > 60);
    }

    void picturesDiffer()
    {
        QList<QImage> seen;
        for (const QString& file : pictures()) {
            const QImage picture(file);
            QVERIFY2(!picture.isNull() && !seen.contains(picture), qPrintable(file));
            seen.append(picture);
        }
    }

private:
    void everyMolecule()
    {
        QTest::addColumn<QString>("name");
        for (const QString& name : names)
            QTest::newRow(qPrintable(name)) << name;
    }
};

QTEST_MAIN(test_library)
#include "test_library.moc"
