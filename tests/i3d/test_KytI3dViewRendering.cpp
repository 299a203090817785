#include "i3d/KytI3dView.h"

#include "i3d/SceneGeometry.h"
#include "model/DrawnMolecules.h"
#include "tests/i3d/OpenViewer.h"
#include "tests/i3d/PlainScene.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QtTest>

#include <cmath>
#include <limits>
#include <numbers>

namespace {

/// An atom like Drawing::atomAt, with its colour as texts of red, green and blue.
KytAtom* atomIn(Drawing& drawing, double x, double y, float z = 0, const QStringList& colour = {"255", "0", "0"})
{
    KytAtom* atom = drawing.atom(x, y, z);
    for (int i = 0; i < 3; ++i)
        atom->_atomColor[i] = colour[i];
    return atom;
}

bool isReddish(QRgb pixel)
{
    return qRed(pixel) > 40 && qRed(pixel) > 2 * qGreen(pixel) && qRed(pixel) > 2 * qBlue(pixel);
}

bool isBluish(QRgb pixel)
{
    return qBlue(pixel) > 40 && qBlue(pixel) > 2 * qGreen(pixel) && qBlue(pixel) > 2 * qRed(pixel);
}

/// How many bluish stretches the column `x` of the picture has.
int blueStretches(const QImage& picture, int x)
{
    int stretches = 0;
    bool inside = false;
    for (int y = 0; y < picture.height(); ++y) {
        const bool lit = !isBlack(picture.pixel(x, y));
        stretches += lit && !inside;
        inside = lit;
    }
    return stretches;
}

/// Where the camera is, looking straight at the drawing's plane, and how the scene is rotated about its vertical and
/// horizontal axes.
struct Flight {
    int eyeDepth;
    int eyeSideways;
    float rotYAngle;
    float rotXAngle;

    void applyTo(KytI3dView& view) const
    {
        view.eye[0] = eyeDepth;
        view.eye[1] = view.pos[1] = eyeSideways;
        view.eye[2] = view.pos[2] = 0;
        view.rotYAngle = rotYAngle;
        view.rotXAngle = rotXAngle;
    }
};

/// A square of atoms in several colours and depths, with single and double bonds.
void lattice(Drawing& drawing, int columns)
{
    QList<KytAtom*> atoms;
    for (int i = 0; i < columns * columns; ++i) {
        const int x = i % columns - columns / 2;
        const int y = i / columns - columns / 2;
        atoms << atomIn(drawing, 1000 + 40 * x, 1000 + 40 * y, 0, {"200", QString::number(i * 37 % 256), "40"});
        if (i % columns > 0)
            drawing.bond(atoms[i - 1], atoms[i]);
        if (i >= columns)
            drawing.bond(atoms[i - columns], atoms[i], {KYTBT_SingleBond, KYTBT_SingleBond});
    }
}

} // namespace

class test_KytI3dViewRendering : public QObject {
    Q_OBJECT

private slots:
    void anEmptyCanvasIsABlackWindow()
    {
        Drawing drawing;
        OpenViewer viewer(drawing);
        QVERIFY(viewer.hasFocus());
        const QImage picture = viewer.picture();
        QCOMPARE(picture.size(), windowSize);
        QCOMPARE(Spot(picture).count, 0);
        QCOMPARE(viewer.view.totalAtomCount, 0);
        QCOMPARE(viewer.view.eye[0], 200);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(viewer.view.pos[i], 0);
        viewer.press("Escape");
        QVERIFY(viewer.stepUntil([&] { return viewer.closed; }));
    }

    void anAtomIsALitRedDisc()
    {
        Drawing drawing;
        atomIn(drawing, 1000, 1000);
        OpenViewer viewer(drawing);
        const QImage picture = viewer.picture();
        QCOMPARE(picture.size(), windowSize);

        const Spot disc(picture);
        const double radius = pixelsPerTangent * std::tan(std::asin(8 / startDistance));
        NEAR(disc.radius(), radius, 0.7);
        NEAR(disc.middle.x(), pictureCentre.x(), 1.5);
        NEAR(disc.middle.y(), pictureCentre.y(), 1.5);
        QVERIFY(std::abs(disc.bounds.width() - disc.bounds.height()) <= 2);

        const QRgb highlight = picture.pixel(pictureCentre);
        QVERIFY(qRed(highlight) > 240 && qGreen(highlight) > 100 && qBlue(highlight) > 100);
        for (int angle = 0; angle < 360; angle += 10)
            for (const double distance : {8.0, 11.0, 14.0}) {
                const double radians = angle * std::numbers::pi / 180;
                const QPointF offset(distance * std::cos(radians), distance * std::sin(radians));
                QVERIFY(isReddish(picture.pixel((disc.middle + offset).toPoint())));
            }
        // Lit from the viewer's place: brighter toward the middle than at the rim.
        QVERIFY(qRed(picture.pixel(pictureCentre + QPoint(7, 0)))
                > qRed(picture.pixel(pictureCentre + QPoint(15, 0))) + 40);
    }

    void anAtomHasItsOwnColour_data()
    {
        QTest::addColumn<QStringList>("colour");
        QTest::addColumn<QStringList>("sameAs");

        QTest::newRow("green") << QStringList{"0", "255", "0"} << QStringList();
        QTest::newRow("no number is 0") << QStringList{"red", "255", ""} << QStringList{"0", "255", "0"};
        QTest::newRow("the number that a text starts with")
            << QStringList{" 12x", "200.9", "+30"} << QStringList{"12", "200", "30"};
    }

    void anAtomHasItsOwnColour()
    {
        QFETCH(QStringList, colour);
        QFETCH(QStringList, sameAs);
        if (sameAs.isEmpty())
            sameAs = colour;

        Drawing drawing;
        atomIn(drawing, 1000, 1000, 0, colour);
        Drawing other;
        atomIn(other, 1000, 1000, 0, sameAs);
        const QImage picture = OpenViewer(drawing).picture();
        QCOMPARE(OpenViewer(other).picture(), picture);

        const QRgb pixel = picture.pixel(pictureCentre + QPoint(8, 8));
        const int strongest = std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)});
        const int components[] = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
        const double full = std::max({sameAs[0].toInt(), sameAs[1].toInt(), sameAs[2].toInt()});
        for (int i = 0; i < 3; ++i)
            NEAR(components[i], strongest * sameAs[i].toInt() / full, 6);
    }

    void atomsLieAsOnTheCanvas()
    {
        Drawing drawing;
        atomIn(drawing, 1000, 1000, 0, {"255", "255", "255"});
        atomIn(drawing, 1100, 1000, 0, {"255", "0", "0"});   // right
        atomIn(drawing, 900, 1000, 0, {"0", "255", "0"});    // left
        atomIn(drawing, 1000, 900, 0, {"0", "0", "255"});    // up
        atomIn(drawing, 1000, 1100, 0, {"255", "255", "0"}); // down
        OpenViewer viewer(drawing);
        const QImage picture = viewer.picture();
        const int step = qRound(100 * pixelsPerUnit);
        const QPoint besides(7, 7);
        const auto at = [&](int right, int down) {
            return picture.pixel(pictureCentre + QPoint(right * step, down * step) + besides);
        };
        QVERIFY(isReddish(at(1, 0)));
        QVERIFY(qGreen(at(-1, 0)) > 2 * qRed(at(-1, 0)) && qGreen(at(-1, 0)) > 2 * qBlue(at(-1, 0)));
        QVERIFY(isBluish(at(0, -1)));
        QVERIFY(qRed(at(0, 1)) > 2 * qBlue(at(0, 1)) && qGreen(at(0, 1)) > 2 * qBlue(at(0, 1)));
    }

    void anAtomInFrontHidesTheOneBehind()
    {
        Drawing drawing;
        atomIn(drawing, 1000, 1000, 50, {"0", "255", "0"});
        atomIn(drawing, 1000, 1000, 0, {"255", "0", "0"});
        OpenViewer viewer(drawing);
        const QRgb pixel = viewer.picture().pixel(pictureCentre + QPoint(8, 0));
        QVERIFY(qGreen(pixel) > 2 * qRed(pixel));
    }

    void aSingleBondIsABlueStickBetweenTwoSpheres()
    {
        Drawing drawing;
        drawing.bond(atomIn(drawing, 1000, 1000), atomIn(drawing, 1100, 1000));
        OpenViewer viewer(drawing);
        const QImage picture = viewer.picture();

        const int half = qRound(50 * pixelsPerUnit);
        for (const int side : {-1, 1}) {
            const QPoint middle = pictureCentre + QPoint(side * half, 0);
            const Spot sphere(picture, QRect(middle - QPoint(40, 40), QSize(81, 81)));
            NEAR(sphere.bounds.height() / 2.0, 17.2, 1.5);
            QVERIFY(isReddish(picture.pixel(middle + QPoint(0, 10))));
            QVERIFY(isReddish(picture.pixel(middle - QPoint(0, 10))));
            QVERIFY(isBlack(picture.pixel(middle + QPoint(side * 21, 0))));
        }
        for (int x = pictureCentre.x() - half + 19; x <= pictureCentre.x() + half - 19; ++x) {
            QVERIFY(isBluish(picture.pixel(x, pictureCentre.y() + 3)));
            QVERIFY(isBlack(picture.pixel(x, pictureCentre.y() + 6)));
            QVERIFY(isBlack(picture.pixel(x, pictureCentre.y() - 7)));
        }
        QCOMPARE(blueStretches(picture, pictureCentre.x()), 1);
    }

    void eachLineOfABondIsAStick_data()
    {
        QTest::addColumn<QList<KytBondType>>("kinds");
        QTest::newRow("single") << QList<KytBondType>{KYTBT_SingleBond};
        QTest::newRow("dashed") << QList<KytBondType>{KYTBT_DashedLine};
        QTest::newRow("double") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_SingleBond};
        QTest::newRow("solid and dashed") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_DashedLine};
        QTest::newRow("triple") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond};
    }

    void eachLineOfABondIsAStick()
    {
        QFETCH(QList<KytBondType>, kinds);
        Drawing drawing;
        KytBond* bond = drawing.bond(atomIn(drawing, 1000, 1000), atomIn(drawing, 1100, 1000), {});
        for (const KytBondType kind : kinds)
            bond->addBond(kind, 60);
        OpenViewer viewer(drawing);
        const QImage picture = viewer.picture();
        QCOMPARE(blueStretches(picture, pictureCentre.x() - 40), kinds.size());
        QCOMPARE(blueStretches(picture, pictureCentre.x() + 40), kinds.size());

        // The second line stands 6 units above the first, the third as much below.
        const int side = qRound(6 * pixelsPerUnit);
        const auto hasStickAt = [&](int y) { return isBluish(picture.pixel(pictureCentre + QPoint(0, y + 2))); };
        QVERIFY(hasStickAt(0));
        QCOMPARE(hasStickAt(-side), kinds.size() > 1);
        QCOMPARE(hasStickAt(side), kinds.size() > 2);
    }

    void aStickReachesAnAtomThatLiesDeeper()
    {
        // A vertical bond, seen from the side: depth runs to the right.
        Drawing drawing;
        KytAtom* from = atomIn(drawing, 1000, 1000);
        KytAtom* to = atomIn(drawing, 1000, 900);
        drawing.bond(from, to);
        to->setAtomZ(-60);
        OpenViewer viewer(drawing);
        QCOMPARE(viewer.view.pos[0], -30);
        QCOMPARE(viewer.view.pos[2], 50);
        viewer.view.rotYAngle = 90;
        const QImage picture = viewer.picture();

        const double scale = pixelsPerTangent / (startDistance + 30);
        const QPointF middle = pictureCentre;
        const QPointF half(-30 * scale, -50 * scale); // from the middle to the end atom
        const Spot first(picture, QRect((middle - half).toPoint() - QPoint(18, 0), QSize(37, 20)));
        QVERIFY(first.count > 100);
        QVERIFY(isReddish(picture.pixel((middle - half).toPoint() + QPoint(0, 9))));
        QVERIFY(isReddish(picture.pixel((middle + half).toPoint() - QPoint(0, 9))));
        const QPointF across = QPointF(half.y(), -half.x()) / std::hypot(half.x(), half.y());
        for (double share = -0.8; share <= 0.8; share += 0.02) {
            QVERIFY(isBluish(picture.pixel((middle + half * share + across * 2.5).toPoint())));
            QVERIFY(isBlack(picture.pixel((middle + half * share + across * 8).toPoint())));
        }
    }

    void aWedgeIsAsLongAsItsAngleSays_data()
    {
        QTest::addColumn<KytBondType>("kind");
        QTest::addColumn<float>("angle");
        QTest::addColumn<double>("length");
        QTest::newRow("60 degrees up: twice its shadow") << KYTBT_StereoUp << 60.0F << 200.0;
        QTest::newRow("60 degrees down") << KYTBT_StereoDown << 60.0F << 200.0;
        QTest::newRow("flat") << KYTBT_StereoUp << 0.0F << 100.0;
        QTest::newRow("45 degrees down") << KYTBT_StereoDown << 45.0F << 100 * std::numbers::sqrt2;
    }

    void aWedgeIsAsLongAsItsAngleSays()
    {
        QFETCH(KytBondType, kind);
        QFETCH(float, angle);
        QFETCH(double, length);

        // Straight up on the canvas; turned by 90 degrees, its depth runs to the right, in one plane with the atoms.
        Drawing drawing;
        KytAtom* from = atomIn(drawing, 1000, 1000);
        KytAtom* to = atomIn(drawing, 1000, 900);
        drawing.bond(from, to, {kind}, angle);
        from->setAtomZ(0);
        to->setAtomZ(0);
        OpenViewer viewer(drawing);
        viewer.view.rotYAngle = 90;
        const QImage picture = viewer.picture();

        const QPointF start = QPointF(pictureCentre) + QPointF(0, 50 * pixelsPerUnit);
        const double depth = std::sqrt(length * length - 100.0 * 100.0);
        const double sign = kind == KYTBT_StereoUp ? 1 : -1;
        const QPointF stick(sign * depth * pixelsPerUnit, -100 * pixelsPerUnit);
        NEAR(std::hypot(stick.x(), stick.y()), length * pixelsPerUnit, 1e-6);
        const QPointF across = QPointF(stick.y(), -stick.x()) / std::hypot(stick.x(), stick.y());
        const bool endsInASphere = depth == 0;
        for (double share = 0.2; share < (endsInASphere ? 0.9 : 0.99); share += 0.01)
            QVERIFY(isBluish(picture.pixel((start + stick * share + across * 2.5).toPoint())));
        if (!endsInASphere)
            QVERIFY(isBlack(picture.pixel((start + stick * 1.02).toPoint())));
        // The end atom's sphere stays where its depth is.
        QVERIFY(isReddish(picture.pixel((QPointF(pictureCentre) - QPointF(-9, 50 * pixelsPerUnit)).toPoint())));
    }

    void aBondLineThatIsNotThereDrawsNothing()
    {
        Drawing drawing;
        drawing.bond(atomIn(drawing, 1000, 1000), atomIn(drawing, 1100, 1000), {KYTBT_Double, KYTBT_Triple});
        drawing.bond(atomIn(drawing, 1000, 1100), atomIn(drawing, 1000, 1100)); // of length zero
        OpenViewer viewer(drawing);
        QVERIFY(viewer.hasFocus());
        const QImage picture = viewer.picture();
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                QVERIFY(!isBluish(picture.pixel(x, y)));
    }

    void twoMoleculesAreBothDrawnOnce()
    {
        Drawing drawing;
        drawing.bond(atomIn(drawing, 900, 900), atomIn(drawing, 1100, 900));
        drawing.bond(atomIn(drawing, 900, 1100), atomIn(drawing, 1100, 1100));
        OpenViewer viewer(drawing);
        QCOMPARE(viewer.view.totalAtomCount, 4);
        const QImage picture = viewer.picture();
        const int step = qRound(100 * pixelsPerUnit);
        for (const int y : {-step, step}) {
            QVERIFY(isBluish(picture.pixel(pictureCentre + QPoint(0, y + 3))));
            for (const int x : {-step, step})
                QVERIFY(isReddish(picture.pixel(pictureCentre + QPoint(x, y + 9))));
        }
        QCOMPARE(blueStretches(picture, pictureCentre.x()), 2);
    }

    void countsAreThoseOfTheMolecule()
    {
        Drawing drawing;
        KytAtom* alone = atomIn(drawing, 500, 500);
        KytAtom* first = atomIn(drawing, 1000, 1000);
        KytAtom* second = atomIn(drawing, 1100, 1000);
        KytAtom* third = atomIn(drawing, 1200, 1000);
        drawing.bond(first, second);
        drawing.bond(second, third);
        OpenViewer viewer(drawing);
        QCOMPARE(viewer.view.totalAtomCount, 4);
        QCOMPARE(viewer.view.atomsCount, 3); // the last one drawn
        QCOMPARE(viewer.view.bondsCount, 2);
        QVERIFY(viewer.view.atomsArr.isEmpty());

        viewer.view.RenderMolecule(alone->getMolecule());
        QCOMPARE(viewer.view.atomsCount, 1);
        QCOMPARE(viewer.view.bondsCount, 0);
        QCOMPARE(viewer.view.totalAtomCount, 5);
    }

    void theCameraStandsInFrontOfTheFrontmostAtom()
    {
        Drawing drawing;
        atomIn(drawing, 1000, 1000, -20.5F);
        atomIn(drawing, 1101, 800, 90.75F);
        OpenViewer viewer(drawing);
        // Sums, each step truncated: -20, then int(90.75 - 20) = 70; 101; 200.
        QCOMPARE(viewer.view.defaultPos[0], 35);
        QCOMPARE(viewer.view.defaultPos[1], 50);
        QCOMPARE(viewer.view.defaultPos[2], 100);
        QCOMPARE(viewer.view.defaulteye, 290);
        QCOMPARE(viewer.view.eye[0], 290);
        QCOMPARE(viewer.view.eye[1], 50);
        QCOMPARE(viewer.view.eye[2], 100);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(viewer.view.pos[i], viewer.view.defaultPos[i]);
    }

    void theCameraStandsInFrontOfThePlaneWhenAllAtomsLieBehindIt()
    {
        Drawing drawing;
        atomIn(drawing, 999, 1001, -40);
        atomIn(drawing, 1000, 1000, -41);
        OpenViewer viewer(drawing);
        QCOMPARE(viewer.view.eye[0], 200);
        QCOMPARE(viewer.view.pos[0], -40); // -81 / 2, toward zero
        QCOMPARE(viewer.view.pos[1], 0);
        QCOMPARE(viewer.view.pos[2], 0);
    }

    void sumsOfFarAwayAtomsSaturate()
    {
        constexpr int highest = std::numeric_limits<int>::max();
        constexpr int lowest = std::numeric_limits<int>::min();
        Drawing drawing;
        for (int i = 0; i < 2; ++i)
            atomIn(drawing, 2e9, 2e9, 3e9F);
        OpenViewer viewer(drawing);
        QVERIFY(viewer.hasFocus());
        QCOMPARE(viewer.view.defaulteye, highest);
        QCOMPARE(viewer.view.eye[0], highest);
        QCOMPARE(viewer.view.pos[0], 1 << 30);
        QCOMPARE(viewer.view.pos[1], 1 << 30);
        QCOMPARE(viewer.view.pos[2], lowest / 2);
    }

    void onePictureWithOneSphereForAllAtoms()
    {
        // Ethylene, tilted a little, in several colours; the other picture has a sphere compiled for every atom.
        Drawing drawing;
        KytAtom* left = atomIn(drawing, 970, 1000, 5, {"128", "128", "128"});
        KytAtom* right = atomIn(drawing, 1031, 1003, -8, {"40", "160", "90"});
        const QList<KytAtom*> hydrogens = {
            atomIn(drawing, 930, 960, 12), atomIn(drawing, 925, 1042, -30, {"255", "255", "255"}),
            atomIn(drawing, 1075, 961.5, 22), atomIn(drawing, 1070, 1040, 0, {"0", "0", "255"})};
        drawing.bond(left, right, {KYTBT_SingleBond, KYTBT_SingleBond});
        for (int i = 0; i < 4; ++i)
            drawing.bond(i < 2 ? left : right, hydrogens[i]);
        OpenViewer viewer(drawing);
        viewer.view.rotXAngle = 17;
        viewer.view.rotYAngle = -23;
        const QImage picture = viewer.picture();
        QVERIFY(Spot(picture).count > 4000);

        QCOMPARE(picture, plainPicture(viewer, drawing));
    }

    void whatIsLeftOutIsNotSeen_data()
    {
        QTest::addColumn<Flight>("flight");
        QTest::newRow("first view") << Flight{200, 0, 0, 0};
        QTest::newRow("rotated") << Flight{200, 0, 23, -17};
        QTest::newRow("partly out of view") << Flight{200, 230, 10, 0};
        QTest::newRow("behind the camera") << Flight{-30, 0, 15, 20};
        QTest::newRow("inside a ball") << Flight{5, 0, 0, 0};
        QTest::newRow("just outside a ball") << Flight{9, 0, 0, 0};
        QTest::newRow("inside a stick") << Flight{1, 20, 0, 0};
    }

    /// Every pixel is that of a scene drawn plainly, while no ball is small.
    void whatIsLeftOutIsNotSeen()
    {
        QFETCH(Flight, flight);
        Drawing drawing;
        lattice(drawing, 5);
        drawing.bond(atomIn(drawing, 1000, 1150), atomIn(drawing, 1050, 1150), {KYTBT_StereoUp});
        drawing.bond(atomIn(drawing, 900, 1150), atomIn(drawing, 950, 1170), {KYTBT_StereoDown});
        OpenViewer viewer(drawing);
        flight.applyTo(viewer.view);
        const QImage picture = viewer.picture();
        const QImage plain = plainPicture(viewer, drawing);
        const Difference difference(picture, plain);
        QVERIFY(difference.lit > 0);
        QCOMPARE(difference.outline, 0);
        // Two faces of one depth may meet in a pixel; the first that is drawn counts, which may be one left out.
        QVERIFY2(difference.largest <= 1, qPrintable(QString::number(difference.largest)));
    }

    void smallBallsLookTheSame_data()
    {
        QTest::addColumn<Flight>("flight");
        QTest::newRow("8 pixels") << Flight{430, 0, 0, 0};
        QTest::newRow("6 pixels, rotated") << Flight{570, 0, 23, -17};
        QTest::newRow("6 pixels, seen from a pole") << Flight{570, 0, 0, 90};
        QTest::newRow("4 pixels, rotated") << Flight{860, 0, 23, 17};
        QTest::newRow("3 pixels, rotated") << Flight{1100, 0, -50, 30};
        QTest::newRow("2 pixels") << Flight{1720, 0, 0, 0};
        QTest::newRow("2 pixels, rotated") << Flight{1720, 0, 23, 17};
    }

    void smallBallsLookTheSame()
    {
        QFETCH(Flight, flight);
        Drawing drawing;
        lattice(drawing, 20);
        OpenViewer viewer(drawing);
        flight.applyTo(viewer.view);
        const QImage picture = viewer.picture();
        const Difference difference(picture, plainPicture(viewer, drawing));
        qInfo("of %d pixels: outline %d, strange: %d", difference.lit, difference.outline, difference.strange);
        QVERIFY(difference.lit > 5000);
        QVERIFY(difference.strange <= difference.lit / 400);
    }

    void theSceneIsThatOfTheOpening()
    {
        Drawing drawing;
        KytAtom* atom = atomIn(drawing, 1000, 1000);
        OpenViewer viewer(drawing);
        const QImage picture = viewer.picture();
        atom->move(1200, 1000);
        QCOMPARE(viewer.pictureDrawnAgain(), picture);
    }
};

QTEST_MAIN(test_KytI3dViewRendering)
#include "test_KytI3dViewRendering.moc"
