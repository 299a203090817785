#include "convert/chemistry/Placement.h"
#include "convert/formats/Workspace.h"
#include "convert/pictures/PictureData.h"
#include "convert/pictures/PictureFile.h"
#include "convert/pictures/PictureMolecule.h"
#include "tests/convert/Converting.h"
#include "tests/convert/PictureParts.h"
#include "tests/support/Files.h"

#include <GraphMol/FileParsers/FileParsers.h>
#include <GraphMol/FileParsers/PNGParser.h>
#include <GraphMol/MolDraw2D/MolDraw2DSVG.h>
#include <GraphMol/MolDraw2D/MolDraw2DUtils.h>
#include <GraphMol/SmilesParse/SmilesParse.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>

#include <QApplication>
#include <QBuffer>
#include <QFont>
#include <QImage>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

QByteArray svgOf(const std::vector<Sketch>& sketches, const PictureStyle& style = {})
{
    return svgPictures(sketches, style).front();
}

QList<PicturePart> partsOf(const std::vector<Sketch>& sketches, const PictureStyle& style = {})
{
    return partsOf(svgOf(sketches, style));
}

PictureStyle styleWith(PictureLook look)
{
    PictureStyle style;
    style.look = look;
    return style;
}

PictureStyle pathsIn(PictureLook look)
{
    PictureStyle style = styleWith(look);
    style.textAsPaths = true;
    return style;
}

/// A drawing of atoms and bonds, built step by step. Coordinates are canvas pixels.
struct Built {
    Built() { sketch.molecules.emplace_back(); }

    int atom(const QString& symbol, double x, double y, const std::array<QString, 3>& color = {"0", "0", "0"})
    {
        sketch.molecules.front().atoms.push_back({symbol, x, y, 0, color});
        return static_cast<int>(sketch.molecules.front().atoms.size()) - 1;
    }

    Built& bond(int from, int to, std::vector<KytBondType> kinds = {KYTBT_SingleBond})
    {
        sketch.molecules.front().bonds.push_back({from, to, std::move(kinds)});
        return *this;
    }

    std::vector<Sketch> sketches() const { return {sketch}; }

    Sketch sketch;
};

/// Two atoms, 30 pixels apart in the direction `degrees` (0 is to the right, 90 up).
std::vector<Sketch> pairOf(const QString& a, const QString& b, double degrees = 0,
                           const std::vector<KytBondType>& kinds = {KYTBT_SingleBond})
{
    Built built;
    const double angle = degrees * std::numbers::pi / 180;
    const int from = built.atom(a, 100, 100);
    const int to = built.atom(b, 100 + 30 * std::cos(angle), 100 - 30 * std::sin(angle));
    return built.bond(from, to, kinds).sketches();
}

/// Phenol, its oxygen in the direction `degrees` from the ring; atom 6.
std::vector<Sketch> phenol(double degrees)
{
    Built built;
    const auto at = [&](double radius, double angle, const QString& symbol) {
        const double turned = (angle + degrees) * std::numbers::pi / 180;
        return built.atom(symbol, 100 + radius * std::cos(turned), 100 - radius * std::sin(turned));
    };
    for (int i = 0; i < 6; ++i)
        at(30, 60 * i, "C");
    const int oxygen = at(60, 0, "O");
    for (int i = 0; i < 6; ++i) {
        built.bond(i, (i + 1) % 6,
                   i % 2 ? std::vector{KYTBT_SingleBond} : std::vector{KYTBT_SingleBond, KYTBT_SingleBond});
    }
    return built.bond(0, oxygen).sketches();
}

/// The molecules whose pictures are checked, the samples and the library, one drawing each.
std::vector<Sketch> checkedDrawings()
{
    std::vector<Sketch> all = read(readFile("tests/convert/pictures.smi"), "smi");
    for (const char* file : {"data/alanine.kyt", "data/caffeine.kyt", "lib/benzene.kyf", "lib/cubane.kyf",
                             "lib/hexane.kyf", "lib/megaphon.kyf", "lib/prop.kyf", "lib/water.kyf"})
        all.push_back(read(readFile(file), "kyt").front());
    return all;
}

/// Cubane's drawing is a view of a cube: two hydrogens at the back are drawn on bonds at the front.
bool hasLabelsOnBonds(const Sketch& sketch)
{
    const SketchMolecule& molecule = sketch.molecules.front();
    return molecule.atoms.size() == 16 && molecule.bonds.size() == 20;
}

QString titleOf(const Sketch& sketch)
{
    return sketch.molecules.front().name.isEmpty() ? "sample" : sketch.molecules.front().name;
}

QList<PicturePart> linesOf(const QList<PicturePart>& parts, int bond)
{
    QList<PicturePart> lines;
    std::copy_if(parts.begin(), parts.end(), std::back_inserter(lines),
                 [&](const PicturePart& part) { return part.bond == bond; });
    return lines;
}

QSet<QString> colorsIn(const QList<PicturePart>& parts)
{
    QSet<QString> colors;
    for (const PicturePart& part : parts)
        colors.insert(part.color.toLower());
    return colors;
}

/// The value of an attribute of the root element.
QString rootValue(const QByteArray& svg, const QString& name)
{
    QXmlStreamReader reader(svg);
    reader.readNextStartElement();
    return reader.attributes().value(name).toString();
}

double pointsIn(const QByteArray& svg, const QString& name)
{
    const QString text = rootValue(svg, name);
    return text.endsWith("pt") ? text.chopped(2).toDouble() : std::nan("");
}

} // namespace

class test_Pictures : public QObject {
    Q_OBJECT

    static void looks()
    {
        QTest::addColumn<PictureLook>("look");
        QTest::newRow("paper") << PictureLook::Paper;
        QTest::newRow("acs") << PictureLook::Acs;
    }

private slots:
    void initTestCase() { QApplication::setFont(QFont("helvetica", 12)); }

    void carbonsWithBondsHaveNoLabel()
    {
        QVERIFY(labelsOf(partsOf(read("c1ccccc1", "smi"))).isEmpty());
        QVERIFY(labelsOf(partsOf(read("CC(C)C#CC=C", "smi"))).isEmpty());
        const QMap<int, QString> drawn = labelsOf(partsOf(read(readFile("lib/benzene.kyf"), "kyt")));
        QCOMPARE(QSet<QString>(drawn.begin(), drawn.end()), QSet<QString>{"H"});
    }

    void atomsAreLabelledAsChemistsDo_data()
    {
        QTest::addColumn<QByteArray>("smiles");
        QTest::addColumn<QMap<int, QString>>("labels");
        const auto row = [](const char* smiles, const QMap<int, QString>& labels) {
            QTest::newRow(smiles) << QByteArray(smiles) << labels;
        };
        row("C", {{0, "CH4"}});
        row("O", {{0, "H2O"}});
        row("N", {{0, "NH3"}});
        row("[NH4+]", {{0, "NH4+"}});
        row("CC=C=CC", {{2, "C"}});
        row("O=C=O", {{0, "O"}, {1, "C"}, {2, "O"}});
        row("CC[13CH3]", {{2, "13CH3"}});
        row("C[13CH2]C", {{1, "13CH2"}});
        row("C[N+](C)(C)C", {{1, "N+"}});
        row("CS(C)=O", {{1, "S"}, {3, "O"}});
        row("CNC", {{1, "NH"}});
        row("C[CH2-]", {{1, "CH2-"}});
        row("C[CH+]C", {{1, "CH+"}});
    }

    void atomsAreLabelledAsChemistsDo()
    {
        QFETCH(QByteArray, smiles);
        const QMap<int, QString> labels = labelsOf(partsOf(read(smiles, "smi")));
        QTEST(labels, "labels");
    }

    void explicitHydrogensStay()
    {
        const QMap<int, QString> labels = labelsOf(partsOf(read(readFile("lib/water.kyf"), "kyt")));
        QCOMPARE(labels, (QMap<int, QString>{{0, "O"}, {1, "H"}, {2, "H"}}));
    }

    void carbonsAreLabelledOnRequest()
    {
        PictureStyle style;
        style.carbons = true;
        const QMap<int, QString> labels = labelsOf(partsOf(read("CC(C)=O", "smi"), style));
        QCOMPARE(labels.value(1), QString("C"));
        QCOMPARE(labels.value(3), QString("O"));
        QVERIFY(labels.value(0) == "CH3" || labels.value(0) == "H3C");
    }

    void theHydrogensOfPhenolAreOnTheFreeSide_data()
    {
        QTest::addColumn<double>("degrees");
        for (int i = 0; i < 8; ++i)
            QTest::addRow("%d degrees", 45 * i) << 45.0 * i;
    }

    void theHydrogensOfPhenolAreOnTheFreeSide()
    {
        QFETCH(double, degrees);
        const double across = std::cos(degrees * std::numbers::pi / 180);
        const QString label = labelsOf(partsOf(phenol(degrees))).value(6);
        if (std::fabs(across) > 0.1)
            QCOMPARE(label, QString(across > 0 ? "OH" : "HO"));
        else
            QVERIFY(label == "OH" || label == "HO");
        const QList<PicturePart> parts = partsOf(phenol(degrees), pathsIn(PictureLook::Paper));
        const QRectF box = labelBoxes(parts).value(6);
        for (const PicturePart& part : parts)
            if (part.isLine())
                QVERIFY(!crosses(part.line(), box));
    }

    void labelsOfGroupsAreTurnedRound_data()
    {
        QTest::addColumn<QString>("symbol");
        QTest::addColumn<QString>("right"); // of the bond
        QTest::addColumn<QString>("left");
        QTest::newRow("acid") << "CO2H"
                              << "CO2H"
                              << "HO2C";
        QTest::newRow("nitro") << "NO2"
                               << "NO2"
                               << "O2N";
        QTest::newRow("amide") << "N(CH3)2"
                               << "N(CH3)2"
                               << "(H3C)2N";
        QTest::newRow("residue") << "R1"
                                 << "R1"
                                 << "R1";
        QTest::newRow("phenyl") << "Ph"
                                << "Ph"
                                << "Ph";
        QTest::newRow("ether") << "OMe"
                               << "OMe"
                               << "MeO";
        QTest::newRow("beyond ASCII") << QStringLiteral("Rα") << QStringLiteral("Rα") << QStringLiteral("Rα");
    }

    void labelsOfGroupsAreTurnedRound()
    {
        QFETCH(QString, symbol);
        QTEST(labelsOf(partsOf(pairOf("C", symbol, 0))).value(1), "right");
        QTEST(labelsOf(partsOf(pairOf("C", symbol, 30))).value(1), "right");
        QTEST(labelsOf(partsOf(pairOf("C", symbol, 180))).value(1), "left");
        QTEST(labelsOf(partsOf(pairOf("C", symbol, 225))).value(1), "left");
    }

    void countsAreLoweredAndChargesRaised()
    {
        double letters = 0;
        double count = 0;
        double charge = 0;
        double size = 0;
        for (const PicturePart& part : partsOf(pairOf("C", "NH3+"))) {
            if (part.text == "NH" || part.text == "N" || part.text == "H")
                letters = part.box.y(), size = part.fontSize;
            if (part.text == "3")
                count = part.box.y();
            if (part.text == "+")
                charge = part.box.y();
        }
        QVERIFY(count > letters + size / 10);
        QVERIFY(charge < letters - size / 10);
    }

    void wedgesAreNarrowAtTheirStart_data()
    {
        QTest::addColumn<double>("degrees");
        for (int i = 0; i < 8; ++i)
            QTest::addRow("%d degrees", 45 * i) << 45.0 * i;
    }

    void wedgesAreNarrowAtTheirStart()
    {
        QFETCH(double, degrees);
        const QPointF along(std::cos(degrees * std::numbers::pi / 180), -std::sin(degrees * std::numbers::pi / 180));
        const QList<PicturePart> hashes = linesOf(partsOf(pairOf("C", "C", degrees, {KYTBT_StereoDown})), 0);
        QVERIFY2(hashes.size() >= 5, qPrintable(QString::number(hashes.size())));
        QList<std::pair<double, double>> sizes; // where it is along the bond, and its length
        for (const PicturePart& hash : hashes) {
            QVERIFY(hash.isLine());
            sizes.append({QPointF::dotProduct(hash.line().center(), along), hash.line().length()});
            QVERIFY(std::fabs(QPointF::dotProduct(hash.line().p2() - hash.line().p1(), along)) < 0.1);
        }
        std::sort(sizes.begin(), sizes.end());
        for (qsizetype i = 1; i < sizes.size(); ++i)
            QVERIFY(sizes[i].second > sizes[i - 1].second);

        const QList<PicturePart> wedge = linesOf(partsOf(pairOf("C", "C", degrees, {KYTBT_StereoUp})), 0);
        QCOMPARE(wedge.size(), 1);
        QVERIFY(wedge.first().isFilled);
        QList<QPointF> corners = wedge.first().points;
        std::sort(corners.begin(), corners.end(), [&](const QPointF& a, const QPointF& b) {
            return QPointF::dotProduct(a, along) < QPointF::dotProduct(b, along);
        });
        QVERIFY(QLineF(corners[corners.size() - 2], corners.last()).length() > 2);
        QVERIFY(QPointF::dotProduct(corners[corners.size() - 2] - corners.first(), along) > 10);
    }

    void dashedLinesAreDrawnAsTheyAre_data()
    {
        QTest::addColumn<QList<int>>("kinds");
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("dashed");
        QTest::newRow("single") << QList<int>{1} << 1 << 0;
        QTest::newRow("hydrogen bond") << QList<int>{0} << 1 << 1;
        QTest::newRow("double") << QList<int>{1, 1} << 2 << 0;
        QTest::newRow("aromatic") << QList<int>{1, 0} << 2 << 1;
        QTest::newRow("aromatic, dashed first") << QList<int>{0, 1} << 2 << 1;
        QTest::newRow("two dashed") << QList<int>{0, 0} << 2 << 2;
        QTest::newRow("three") << QList<int>{1, 1, 1} << 3 << 0;
        QTest::newRow("three dashed") << QList<int>{0, 0, 0} << 3 << 3;
        QTest::newRow("two of three dashed") << QList<int>{0, 1, 0} << 3 << 2;
        QTest::newRow("one of three dashed") << QList<int>{1, 1, 0} << 3 << 1;
    }

    void dashedLinesAreDrawnAsTheyAre()
    {
        QFETCH(QList<int>, kinds);
        QFETCH(int, lines);
        std::vector<KytBondType> types;
        for (const int kind : kinds)
            types.push_back(static_cast<KytBondType>(kind));
        for (const char* end : {"C", "O"}) {
            const QList<PicturePart> drawn = linesOf(partsOf(pairOf("C", end, 20, types)), 0);
            const auto halves = drawn.size() / lines;
            QCOMPARE(drawn.size(), lines * halves);
            QVERIFY(halves == 1 || halves == 2);
            const auto dashed = std::count_if(drawn.begin(), drawn.end(),
                                              [](const PicturePart& part) { return !part.dashes.isEmpty(); });
            QTEST(int(dashed / halves), "dashed");
        }
    }

    void hydrogenBondsAreDotted()
    {
        const PicturePart line = linesOf(partsOf(pairOf("C", "C", 0, {KYTBT_DashedLine})), 0).first();
        const QStringList dashes = line.dashes.split(u',');
        QVERIFY(dashes[0].toDouble() < 2 * line.lineWidth);
        QVERIFY(dashes[1].toDouble() > dashes[0].toDouble());
    }

    void doubleBondsAreInsideTheirRings()
    {
        for (const Sketch& sketch : checkedDrawings()) {
            const PictureMolecule picture = pictureMolecule(sketch, false);
            PictureStyle style;
            style.colors = PictureColors::Black;
            const QList<PicturePart> parts = partsOf({sketch}, style);
            QMap<int, QPointF> positions;
            for (const PicturePart& part : parts)
                if (part.isLine())
                    for (int i = 0; i < 2; ++i)
                        positions.insert(part.atoms[i], positions.value(part.atoms[i], part.points[i]));
            const RDKit::RingInfo* rings = picture.molecule->getRingInfo();
            for (unsigned bond = 0; bond < picture.molecule->getNumBonds(); ++bond) {
                const QList<PicturePart> lines = linesOf(parts, static_cast<int>(bond));
                if (rings->numBondRings(bond) == 0 || lines.size() != 2 || lines.first().isFilled)
                    continue;
                const bool firstIsLonger = lines[0].line().length() >= lines[1].line().length();
                const QPointF inner = lines[firstIsLonger ? 1 : 0].line().center();
                const QPointF outer = lines[firstIsLonger ? 0 : 1].line().center();
                bool isInside = false;
                for (std::size_t ring = 0; ring < rings->bondRings().size(); ++ring) {
                    const auto& bonds = rings->bondRings()[ring];
                    if (std::find(bonds.begin(), bonds.end(), int(bond)) == bonds.end())
                        continue;
                    QPointF centre;
                    for (const int atom : rings->atomRings()[ring])
                        centre += positions.value(atom) / double(rings->atomRings()[ring].size());
                    isInside = isInside || QLineF(inner, centre).length() < QLineF(outer, centre).length();
                }
                QVERIFY2(isInside, qPrintable(QStringLiteral("bond %1 of %2").arg(bond).arg(titleOf(sketch))));
            }
        }
    }

    void noLabelIsOnAnotherLabelOrBond_data() { looks(); }
    void noLabelIsOnAnotherLabelOrBond()
    {
        QFETCH(PictureLook, look);
        for (const Sketch& sketch : checkedDrawings()) {
            const QList<PicturePart> parts = partsOf({sketch}, pathsIn(look));
            const QMap<int, QRectF> boxes = labelBoxes(parts);
            for (auto one = boxes.begin(); one != boxes.end(); ++one) {
                for (auto other = std::next(one); other != boxes.end(); ++other)
                    QVERIFY2(!one->intersects(*other),
                             qPrintable(QStringLiteral("labels %1 and %2 of %3")
                                            .arg(one.key())
                                            .arg(other.key())
                                            .arg(titleOf(sketch))));
                for (const PicturePart& part : parts)
                    if (part.isLine() && !part.atoms.contains(one.key()) && !hasLabelsOnBonds(sketch))
                        QVERIFY2(!crosses(part.line(), *one),
                                 qPrintable(QStringLiteral("label %1 and bond %2 of %3")
                                                .arg(one.key())
                                                .arg(part.bond)
                                                .arg(titleOf(sketch))));
            }
        }
    }

    void anAcsPictureHasTheMeasuresOfTheGuidelines()
    {
        for (const char* file : {"data/caffeine.kyt", "lib/benzene.kyf"}) {
            const std::vector<Sketch> sketches = read(readFile(file), "kyt");
            const QList<PicturePart> parts = partsOf(sketches, styleWith(PictureLook::Acs));
            QCOMPARE(colorsIn(parts), QSet<QString>{"#000000"});
            for (const PicturePart& part : parts) {
                if (part.isLine())
                    QCOMPARE(part.lineWidth, 0.6);
                if (part.isLabel())
                    QVERIFY(part.fontSize == 10 || part.fontSize < 8); // letters; counts and charges
            }
        }
        const QList<PicturePart> chain = partsOf(read("CCCC", "smi"), styleWith(PictureLook::Acs));
        QCOMPARE(chain.size() >= 3, true);
        for (int bond = 0; bond < 3; ++bond)
            QVERIFY(std::fabs(linesOf(chain, bond).first().line().length() - 14.4) < 0.02);
    }

    void aPictureOfOneAtomHasASize_data() { looks(); }
    void aPictureOfOneAtomHasASize()
    {
        QFETCH(PictureLook, look);
        const QByteArray svg = svgOf(read("C", "smi"), styleWith(look));
        QVERIFY(pointsIn(svg, "width") > 15 && pointsIn(svg, "width") < 100);
        QVERIFY(pointsIn(svg, "height") > 15 && pointsIn(svg, "height") < 100);
    }

    void sizesAreInPointsWithAViewBox()
    {
        PictureStyle style;
        style.margin = 0;
        const QByteArray svg = svgOf(read("CCCC", "smi"), style);
        const QStringList box = rootValue(svg, "viewBox").split(u' ');
        QCOMPARE(box[2].toDouble(), pointsIn(svg, "width"));
        QCOMPARE(box[3].toDouble(), pointsIn(svg, "height"));
        style.bondLength = 30;
        QVERIFY(std::fabs(linesOf(partsOf(read("CC", "smi"), style), 0).first().line().length() - 30) < 0.02);
        QVERIFY(std::fabs(pointsIn(svgOf(read("CCCC", "smi"), style), "width") - 1.5 * pointsIn(svg, "width")) < 0.1);
    }

    void aPictureCanBeAskedForInPixels()
    {
        PictureStyle style;
        style.width = 400;
        style.height = 300;
        const std::vector<Sketch> phenol = read("Oc1ccccc1", "smi");
        QCOMPARE(pointsIn(svgOf(phenol, style), "width"), 300.0);
        QCOMPARE(pointsIn(svgOf(phenol, style), "height"), 225.0);
        style.dpi = 300;
        QCOMPARE(pointsIn(svgOf(phenol, style), "width"), 96.0);
        for (const PictureLook look : {PictureLook::Paper, PictureLook::Acs, PictureLook::Editor}) {
            style.look = look;
            const QImage image = QImage::fromData(pngPictures(phenol, style).front());
            QCOMPARE(image.size(), QSize(400, 300));
        }
        style.look = PictureLook::Paper;
        style.height = 0;
        QCOMPARE(QImage::fromData(pngPictures(phenol, style).front()).width(), 400);
    }

    void anAcsPictureKeepsItsBondsAndEnlargesThePage()
    {
        PictureStyle style = styleWith(PictureLook::Acs);
        style.width = 20;
        style.bondLength = 50;
        const QByteArray svg = svgOf(read("CCCCCC", "smi"), style);
        QVERIFY(pointsIn(svg, "width") > 60);
        QVERIFY(std::fabs(linesOf(partsOf(svg), 0).first().line().length() - 14.4) < 0.02);
    }

    void atomsAndTheirHalvesOfBondsHaveColours()
    {
        Built built;
        const int carbon = built.atom("C", 100, 100, {"10", "20", "30"});
        const int oxygen = built.atom("O", 130, 100, {"200", "0", "200"});
        built.bond(carbon, oxygen);
        PictureStyle style;
        QCOMPARE(colorsIn(partsOf(built.sketches(), style)), (QSet<QString>{"#000000", "#ff0000"}));
        style.colors = PictureColors::Black;
        QCOMPARE(colorsIn(partsOf(built.sketches(), style)), QSet<QString>{"#000000"});
        style.colors = PictureColors::Drawing;
        QCOMPARE(colorsIn(partsOf(built.sketches(), style)), (QSet<QString>{"#0a141e", "#c800c8"}));
        const QList<PicturePart> halves = linesOf(partsOf(built.sketches(), style), 0);
        QCOMPARE(halves.size(), 2);
        QCOMPARE(halves[0].color, QString("#0a141e"));
        QVERIFY(halves[0].box.right() <= halves[1].box.left() + 0.01);
    }

    void aColourThatCannotBeSeenIsMadeVisible_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<QColor>("background");
        QTest::addColumn<bool>("isKept");
        QTest::newRow("white on white") << QColor(Qt::white) << QColor(Qt::white) << false;
        QTest::newRow("white on black") << QColor(Qt::white) << QColor(Qt::black) << true;
        QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white) << true;
        QTest::newRow("black on black") << QColor(Qt::black) << QColor(Qt::black) << false;
        QTest::newRow("blue on black") << QColor(Qt::blue) << QColor(Qt::black) << false;
        QTest::newRow("grey on the same grey") << QColor(127, 127, 127) << QColor(127, 127, 127) << false;
        QTest::newRow("grey on a lighter one") << QColor(127, 127, 127) << QColor(128, 128, 128) << false;
        QTest::newRow("white on nothing") << QColor(Qt::white) << QColor(Qt::transparent) << false;
    }

    void aColourThatCannotBeSeenIsMadeVisible()
    {
        QFETCH(const QColor, color);
        QFETCH(const QColor, background);
        QFETCH(const bool, isKept);
        Built built;
        built.atom("Cl", 100, 100,
                   {QString::number(color.red()), QString::number(color.green()), QString::number(color.blue())});
        PictureStyle style;
        style.colors = PictureColors::Drawing;
        style.background = background;
        const QColor drawn(*colorsIn(partsOf(built.sketches(), style)).begin());
        const int ground = background.alpha() == 0 ? 255 : qGray(background.rgb());
        QVERIFY2(std::abs(qGray(drawn.rgb()) - ground) >= 60, qPrintable(drawn.name()));
        QCOMPARE(drawn == color, isKept);
    }

    void textIsTextOrPaths()
    {
        const std::vector<Sketch> acid = read("CC(=O)O acid", "smi");
        PictureStyle style;
        style.names = true;
        QVERIFY(svgOf(acid, style).contains(">OH</text>"));
        QVERIFY(svgOf(acid, style).contains(">acid</text>"));
        style.textAsPaths = true;
        QVERIFY(!svgOf(acid, style).contains("<text"));
        QVERIFY(labelBoxes(partsOf(acid, style)).value(3).width() > 5);
    }

    void labelsBeyondAsciiAreUtf8()
    {
        const std::vector<Sketch> drawing = pairOf("C", QStringLiteral("α-D-Glc"));
        QVERIFY(svgOf(drawing).contains(QStringLiteral(">α-D-Glc</text>").toUtf8()));
        QVERIFY(svgOf(drawing).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
        const QList<PicturePart> parts = partsOf(drawing, pathsIn(PictureLook::Paper));
        const QRectF box = labelBoxes(parts).value(1);
        QVERIFY(box.width() > 20);
        QVERIFY(!crosses(linesOf(parts, 0).first().line(), box));
        QVERIFY(svgOf(pairOf("C", "<b>&")).contains(">&lt;b&gt;&amp;</text>"));
    }

    void severalDrawingsBecomeASheetWithTheirNames()
    {
        const QByteArray smiles = "C methane\nCCO ethanol\nc1ccccc1 benzene\nCC(C)C isobutane\nO water\n";
        PictureStyle style;
        style.columns = 2;
        const QList<PicturePart> parts = partsOf(read(smiles, "smi"), style);
        QStringList names;
        QList<QPointF> positions;
        for (const PicturePart& part : parts) {
            if (part.cell < 0) {
                names.append(part.text);
                positions.append(part.box.topLeft());
            }
        }
        QCOMPARE(names, QStringList({"methane", "ethanol", "benzene", "isobutane", "water"}));
        QCOMPARE(positions[0].y(), positions[1].y());
        QVERIFY(positions[2].y() > positions[1].y() && positions[4].y() > positions[2].y());
        const double ethanol = linesOf(parts, 0).first().line().length();
        QVERIFY(std::fabs(ethanol - 20) < 0.5); // one scale for all
        style.names = false;
        QVERIFY(!svgOf(read(smiles, "smi"), style).contains("methane<"));
    }

    void aSheetCanShowAProperty()
    {
        std::vector<Sketch> sketches = read("C\nCC\n", "smi");
        sketches[0].molecules[0].data = {{"boils at", "-162"}};
        sketches[1].molecules[0].data = {{"boils at", "-89"}, {"other", "x"}};
        PictureStyle style;
        style.legend = "boils at";
        const QByteArray svg = svgOf(sketches, style);
        QVERIFY(svg.contains(">-162<") && svg.contains(">-89<") && !svg.contains(">x<"));
    }

    void aSheetHasAsManyPagesAsNeeded()
    {
        const std::vector<Sketch> forty = read(QByteArray("CC(=O)Oc1ccccc1C(=O)O\n").repeated(40), "smi");
        PictureStyle style;
        style.columns = 2;
        QCOMPARE(svgPictures(forty, style).size(), std::size_t(1));
        QVERIFY(pdfPicture(forty, style).count("/Type /Page\n") >= 2);
        style.height = 600;
        const std::vector<QByteArray> pages = svgPictures(forty, style);
        QVERIFY(pages.size() > 2);
        int cells = 0;
        for (const QByteArray& page : pages) {
            QCOMPARE(pointsIn(page, "height"), 450.0);
            cells += page.count("<g ");
        }
        QCOMPARE(cells, 40);
    }

    void aPdfNeedsNoFont()
    {
        PictureStyle style;
        style.names = true;
        const QByteArray pdf = pdfPicture(read("CC(=O)O acetic acid", "smi"), style);
        QVERIFY(pdf.startsWith("%PDF"));
        QVERIFY(!pdf.contains("/Font /") && !pdf.contains("/FontFile") && !pdf.contains("/BaseFont"));
    }

    void aPictureGivesItsDrawingBack_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<PictureLook>("look");
        for (const char* file : {"data/alanine.kyt", "data/caffeine.kyt", "lib/cubane.kyf", "lib/water.kyf"})
            for (const PictureLook look : {PictureLook::Paper, PictureLook::Acs, PictureLook::Editor})
                QTest::addRow("%s in look %d", file, int(look)) << file << look;
    }

    void aPictureGivesItsDrawingBack()
    {
        QFETCH(QString, file);
        QFETCH(PictureLook, look);
        const std::vector<Sketch> drawing = read(readFile(file), "kyt");
        const QByteArray text = write(drawing, "kyt");
        QCOMPARE(write(read(pngPictures(drawing, styleWith(look)).front(), "png"), "kyt"), text);
        QCOMPARE(write(read(svgPictures(drawing, styleWith(look)).front(), "svg"), "kyt"), text);
    }

    void otherProgramsFindTheMoleculeInAPicture()
    {
        const std::vector<Sketch> sketches = read("C[C@H](N)C(=O)O alanine", "smi");
        const std::string png = pngPictures(sketches, {}).front().toStdString();
        const std::unique_ptr<RDKit::ROMol> molecule(RDKit::PNGStringToMol(png));
        QCOMPARE(RDKit::MolToSmiles(*molecule), std::string("C[C@H](N)C(=O)O"));
        const std::unique_ptr<RDKit::RWMol> drawn(RDKit::RDKitSVGToMol(svgOf(sketches).toStdString()));
        QCOMPARE(drawn->getNumAtoms(), 6U);
    }

    void thePicturesOfOtherProgramsAreRead()
    {
        const std::unique_ptr<RDKit::RWMol> molecule(RDKit::SmilesToMol("OCc1ccccc1"));
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(Qt::white);
        QByteArray png;
        QBuffer buffer(&png);
        QVERIFY(image.save(&buffer, "PNG"));
        const std::string carrying = RDKit::addMolToPNGString(*molecule, png.toStdString());
        QCOMPARE(write(read(QByteArray::fromStdString(carrying), "png"), "smi"), QByteArray("OCc1ccccc1\n"));
        QVERIFY_THROWS_EXCEPTION(ConversionError, read(png, "png"));

        RDKit::MolDraw2DSVG drawer(200, 200);
        RDKit::MolDraw2DUtils::prepareMolForDrawing(*molecule);
        drawer.drawMolecule(*molecule);
        drawer.addMoleculeMetadata(*molecule);
        drawer.finishDrawing();
        QCOMPARE(write(read(QByteArray::fromStdString(drawer.getDrawingText()), "svg"), "smi"),
                 QByteArray("OCc1ccccc1\n"));
        QVERIFY_THROWS_EXCEPTION(ConversionError, read("<svg/>", "svg"));
    }

    void aDrawingWithoutAtomsOrLengthsIsDrawnToo()
    {
        QVERIFY(svgOf(read("KYTFILE END_KYTFILE", "kyt")).contains("<svg"));
        Built built;
        const int a = built.atom("C", 50, 50);
        const int b = built.atom("O", 50, 50);
        QVERIFY(pointsIn(svgOf(built.bond(a, b).sketches()), "width") > 0);
        QVERIFY(pointsIn(svgOf(pairOf("C", "C", 0, {})), "width") > 0);
    }
};

QTEST_MAIN(test_Pictures)
#include "test_Pictures.moc"
