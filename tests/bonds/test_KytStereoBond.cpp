#include "bonds/KytStereoBond.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <climits>
#include <cmath>
#include <limits>
#include <numbers>

namespace {

const QColor blue(0, 0, 255);
const QColor green(0, 255, 0);

/// A wedge of 100 pixels to the right of (0, 0), from depth 7.
struct Wedge {
    explicit Wedge(int kind, bool locked = false)
        : start(d.atom(0, 0, 7))
        , end(d.atom(100, 0, 0, locked))
        , bond(d.bond(start, end, {kind}))
        , wedge(bond->stereoBond)
    {
    }
    Drawing d;
    KytAtom* start;
    KytAtom* end;
    KytBond* bond;
    KytStereoBond* wedge;
};

QPolygon corners(QPoint a, QPoint b, QPoint c)
{
    return QPolygon({a, b, c});
}

/// How many stretches of ink the row with the most has.
int mostStrokes(const QImage& image)
{
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        int strokes = 0;
        for (int x = 1; x < image.width(); ++x)
            strokes += qGray(image.pixel(x, y)) < 128 && qGray(image.pixel(x - 1, y)) >= 128;
        most = std::max(most, strokes);
    }
    return most;
}

/// An area of the canvas on a screen of this density.
QImage painted(const QCanvas& canvas, double density, const QRect& area = QRect(0, 0, 200, 100))
{
    QImage image(area.size() * density, QImage::Format_RGB32);
    image.setDevicePixelRatio(density);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    canvas.paint(painter, area);
    return image;
}

/// The columns of a 1:1 picture in which the row has ink.
QList<int> inkInRow(const QImage& image, int y)
{
    QList<int> columns;
    for (int x = 0; x < image.width(); ++x)
        if (qGray(image.pixel(x, y)) < 128)
            columns.append(x);
    return columns;
}

} // namespace

class test_KytStereoBond : public QObject {
    Q_OBJECT

    static void kinds()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Qt::BrushStyle>("pattern");
        QTest::newRow("up") << int(KYTBT_StereoUp) << Qt::SolidPattern;
        QTest::newRow("down") << int(KYTBT_StereoDown) << Qt::VerPattern;
    }

private slots:
    void aNewWedgeIsShownInBlueBelowTheAtoms_data() { kinds(); }
    void aNewWedgeIsShownInBlueBelowTheAtoms()
    {
        QFETCH(int, kind);
        QFETCH(Qt::BrushStyle, pattern);
        Wedge w(kind);
        QCOMPARE(w.wedge->brush().color(), blue);
        QCOMPARE(w.wedge->brush().style(), pattern);
        QCOMPARE(w.wedge->z(), 1.0);
        QVERIFY(w.wedge->isVisible());
        QCOMPARE(w.wedge->rtti(), 4);
        QCOMPARE(w.wedge->canvas(), w.d.canvas());
        QCOMPARE(int(w.wedge->bondType), kind);
        QCOMPARE(w.wedge->getBond(), w.bond);
        QCOMPARE(w.wedge->bond, w.bond);
        QCOMPARE(w.wedge->getAngle(), 60.0F);
        QCOMPARE(w.wedge->pangle, 60.0F);
        QCOMPARE(w.wedge->color[0], 0);
        QCOMPARE(w.wedge->color[1], 0);
        QCOMPARE(w.wedge->color[2], 255);
        QVERIFY(!w.wedge->canvasSymbol);
        QCOMPARE(w.wedge->x(), 0.0);
        QCOMPARE(w.wedge->y(), 0.0);
        QCOMPARE(w.wedge->pen(), QPen());
    }

    void aWedgeOfAnyOtherKindIsNotFilled()
    {
        Drawing d;
        KytBond* bond = d.looseBond(d.atom(0, 0), d.atom(30, 0));
        KytStereoBond wedge(QPoint(0, 0), QPoint(30, 6), QPoint(30, -6), d.doc, bond, KYTBT_Double, 60);
        QCOMPARE(wedge.brush().style(), Qt::NoBrush);
        wedge.startHover();
        QCOMPARE(wedge.brush().style(), Qt::NoBrush);
        wedge.setColor(1, 2, 3);
        wedge.stopHover();
        QCOMPARE(wedge.brush().style(), Qt::NoBrush);
        QVERIFY(wedge.isVisible());
    }

    void aWedgeToTheRightStandsOnItsSideLines()
    {
        Wedge w(KYTBT_StereoUp);
        const QPolygon expected = corners({0, 0}, {100, 6}, {100, -6});
        QCOMPARE(*w.wedge->getPointsArray(), expected);
        QCOMPARE(*w.wedge->pa, expected);
        QCOMPARE(w.wedge->points(), expected);
    }

    void theAngleGivenIsStoredAsItIs()
    {
        for (const float angle : {-5.0F, 0.0F, 45.5F, 90.0F, 1000.0F}) {
            Drawing d;
            KytAtom* end = d.atom(30, 0, 3);
            KytBond* bond = d.looseBond(d.atom(0, 0), end, {KYTBT_StereoDown}, angle);
            QCOMPARE(bond->stereoBond->getAngle(), angle);
            QCOMPARE(end->getAtomZ(), 3.0F);
        }
    }

    void hoveringChangesTheColourAndKeepsThePattern_data() { kinds(); }
    void hoveringChangesTheColourAndKeepsThePattern()
    {
        QFETCH(int, kind);
        QFETCH(Qt::BrushStyle, pattern);
        Wedge w(kind);
        for (int round = 0; round < 2; ++round) {
            w.wedge->startHover();
            QCOMPARE(w.wedge->brush().color(), green);
            QCOMPARE(w.wedge->brush().style(), pattern);
            w.wedge->stopHover();
            QCOMPARE(w.wedge->brush().color(), blue);
            QCOMPARE(w.wedge->brush().style(), pattern);
        }
    }

    void aNewColourShowsWhenHoveringStops_data() { kinds(); }
    void aNewColourShowsWhenHoveringStops()
    {
        QFETCH(int, kind);
        QFETCH(Qt::BrushStyle, pattern);
        Wedge w(kind);
        w.wedge->setColor(9, 8, 7);
        QCOMPARE(w.wedge->brush().color(), blue);
        w.wedge->startHover();
        QCOMPARE(w.wedge->brush().color(), green);
        w.wedge->stopHover();
        QCOMPARE(w.wedge->brush().color(), QColor(9, 8, 7));
        QCOMPARE(w.wedge->brush().style(), pattern);
    }

    void theLinesOfADownWedgeCanBeToldApart_data()
    {
        QTest::addColumn<double>("length");
        QTest::addColumn<double>("density");
        for (const double length : {12.0, 15.0, 18.0, 30.0, 100.0})
            for (const double density : {1.0, 1.5, 2.0})
                QTest::addRow("%g pixels at %g", length, density) << length << density;
    }

    // No row crosses all lines of a slanted wedge: there, four in one row are as many as one can see.
    void theLinesOfADownWedgeCanBeToldApart()
    {
        QFETCH(double, length);
        QFETCH(double, density);
        for (int degrees = 0; degrees < 360; degrees += 15) {
            for (int shift = 0; shift < 3; ++shift) {
                Drawing d;
                const double angle = degrees / degreesPerRadian;
                KytAtom* start = d.atom(50 + shift, 50);
                const KytBond* bond =
                    d.bond(start, d.atom(start->x() + length * std::cos(angle), 50 + length * std::sin(angle)),
                           {KYTBT_StereoDown});
                for (KytAtom* atom : d.atoms())
                    atom->hide();
                QVERIFY(hatchLines(*bond->stereoBond->pa, QRectF(-500, -500, 1000, 1000)).size() >= 4);
                const QRect area(-60, -60, 240, 240);
                const int strokes = mostStrokes(painted(*d.canvas(), density, area));
                QVERIFY2(strokes >= (degrees % 90 == 0 ? 5 : 4),
                         qPrintable(QStringLiteral("%1 at %2 degrees").arg(strokes).arg(degrees)));
            }
        }
    }

    void theLinesOfADownWedgeAreThreePixelsApartFromItsLeftEdge()
    {
        Drawing d;
        d.bond(d.atom(50, 50), d.atom(80, 50), {KYTBT_StereoDown});
        for (KytAtom* atom : d.atoms())
            atom->hide();
        const QList<int> columns = inkInRow(painted(*d.canvas(), 1), 50);
        for (const int line : {59, 62, 65, 68, 71, 74, 77})
            QVERIFY2(columns.contains(line) && !columns.contains(line + 1) && !columns.contains(line + 2),
                     qPrintable(QString::number(line)));
    }

    void theLinesAndTheOutlineHaveTheBrushsColour()
    {
        Drawing d;
        KytBond* bond = d.bond(d.atom(50, 50), d.atom(80, 50), {KYTBT_StereoDown});
        for (KytAtom* atom : d.atoms())
            atom->hide();
        QCOMPARE(painted(*d.canvas(), 1).pixelColor(65, 50), blue);
        bond->stereoBond->startHover();
        QCOMPARE(painted(*d.canvas(), 1).pixelColor(65, 50), green);
        QVERIFY(painted(*d.canvas(), 2).pixelColor(159, 92) == green); // the outline of the wide end, above the axis
    }

    void anUpWedgeIsFilledWithoutAnOutline()
    {
        Drawing d;
        d.bond(d.atom(50, 50), d.atom(80, 50), {KYTBT_StereoUp});
        for (KytAtom* atom : d.atoms())
            atom->hide();
        const QImage image = painted(*d.canvas(), 1);
        QCOMPARE(image.pixelColor(70, 50), blue);
        QCOMPARE(image.pixelColor(80, 50), QColor(Qt::white));
    }

    void aDownWedgeOfAnySizeIsPaintedAtOnce()
    {
        Wedge w(KYTBT_StereoDown);
        *w.wedge->pa = corners({INT_MIN, 0}, {INT_MAX, 1000}, {INT_MAX, -1000});
        w.wedge->setPoints(*w.wedge->pa);
        QVERIFY(mostStrokes(painted(*w.d.canvas(), 1)) > 60);
    }

    void cornersAreSetByEndAndCutTowardsZero()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->setFromPoint(-0.9, 5.9);
        QCOMPARE(*w.wedge->pa, corners({0, 5}, {100, 6}, {100, -6}));
        QCOMPARE(w.wedge->points(), *w.wedge->pa);
        w.wedge->setToPoint(90.99, -1.99, -2.5, 0.5);
        QCOMPARE(*w.wedge->pa, corners({0, 5}, {90, -1}, {-2, 0}));
        QCOMPARE(w.wedge->points(), *w.wedge->pa);
    }

    void cornersBeyondTheRangeOfPixelsStopAtItsEnds()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->setFromPoint(1e30, std::numeric_limits<double>::quiet_NaN());
        w.wedge->setToPoint(-1e30, 0, 0, std::numeric_limits<double>::infinity());
        QCOMPARE(*w.wedge->pa, corners({INT_MAX, 0}, {INT_MIN, 0}, {0, INT_MAX}));
    }

    void anglesAreKeptFromZeroToBelowNinety_data()
    {
        QTest::addColumn<float>("angle");
        QTest::addColumn<float>("stored");
        QTest::newRow("below zero") << -5.0F << 0.0F;
        QTest::newRow("far below zero") << -1e30F << 0.0F;
        QTest::newRow("zero") << 0.0F << 0.0F;
        QTest::newRow("in between") << 45.0F << 45.0F;
        QTest::newRow("with a fraction") << 12.75F << 12.75F;
        QTest::newRow("between the limit and ninety") << 89.75F << 89.75F;
        QTest::newRow("just below ninety") << std::nextafter(90.0F, 0.0F) << std::nextafter(90.0F, 0.0F);
        QTest::newRow("ninety") << 90.0F << 89.5F;
        QTest::newRow("above ninety") << 120.0F << 89.5F;
        QTest::newRow("infinite") << std::numeric_limits<float>::infinity() << 89.5F;
        QTest::newRow("minus infinite") << -std::numeric_limits<float>::infinity() << 0.0F;
        QTest::newRow("no number") << std::numeric_limits<float>::quiet_NaN() << 89.5F;
    }

    void anglesAreKeptFromZeroToBelowNinety()
    {
        QFETCH(float, angle);
        QFETCH(float, stored);
        for (const int kind : {KYTBT_StereoUp, KYTBT_StereoDown}) {
            Wedge w(kind);
            w.wedge->setAngle(angle);
            EXACTLY(w.wedge->getAngle(), stored);
            const double sign = kind == KYTBT_StereoUp ? 1 : -1;
            QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(double(stored)) * 100 * sign));
            QCOMPARE(w.start->getAtomZ(), 7.0F);
        }
    }

    void theAngleZeroPutsTheEndOnTheStartsLevel()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->setAngle(-5);
        QCOMPARE(w.wedge->getAngle(), 0.0F);
        QCOMPARE(w.end->getAtomZ(), 7.0F);
    }

    void anUpWedgeLiftsAndADownWedgeLowersTheEnd()
    {
        Wedge up(KYTBT_StereoUp);
        up.wedge->setAngle(1);
        QVERIFY(up.end->getAtomZ() > 7);
        Wedge down(KYTBT_StereoDown);
        down.wedge->setAngle(1);
        QVERIFY(down.end->getAtomZ() < 7);
        QCOMPARE(up.end->getAtomZ() - 7, 7 - down.end->getAtomZ());
    }

    void settingTheAngleAgainDoesNotAddUp()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->setAngle(1);
        const float once = w.end->getAtomZ();
        w.wedge->setAngle(1);
        QCOMPARE(w.end->getAtomZ(), once);
        w.wedge->setAngle(0);
        QCOMPARE(w.end->getAtomZ(), 7.0F);
    }

    void settingTheAngleMovesALockedEndToo()
    {
        Wedge w(KYTBT_StereoUp, true);
        w.wedge->setAngle(1);
        QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(1.0) * 100));
    }

    void theDepthOfANewAngleTravelsOn()
    {
        Wedge w(KYTBT_StereoUp);
        KytAtom* next = w.d.atom(130, 0, -1);
        w.d.bond(w.end, next);
        w.wedge->setAngle(1);
        QCOMPARE(next->getAtomZ(), float(7 + std::tan(1.0) * 100));
    }

    void theNextLayoutReadsTheAngleInDegreesAndWithoutSign_data() { kinds(); }
    void theNextLayoutReadsTheAngleInDegreesAndWithoutSign()
    {
        QFETCH(int, kind);
        Wedge w(kind);
        w.wedge->setAngle(45);
        w.bond->setBond();
        QCOMPARE(w.end->getAtomZ(), 107.0F);
        w.end->moveBy(100, 0);
        QCOMPARE(w.end->getAtomZ(), 207.0F);
    }

    void theLengthIsTakenToTheMiddleOfTheWideEndInWholePixels()
    {
        Wedge w(KYTBT_StereoUp);
        *w.wedge->pa = corners({1, 2}, {5, 8}, {4, 3}); // the middle of 5 and 4 is 4, of 8 and 3 is 5
        w.wedge->setAngle(1);
        QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(1.0) * std::sqrt(18.0)));
        *w.wedge->pa = corners({0, 0}, {-5, -8}, {-4, -3}); // -4 and -5
        w.wedge->setAngle(1);
        QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(1.0) * std::sqrt(41.0)));
    }

    void aWedgeAcrossTheWholeRangeOfPixelsDoesNotOverflow()
    {
        Wedge w(KYTBT_StereoUp);
        *w.wedge->pa = corners({INT_MIN, 0}, {INT_MAX, 0}, {INT_MAX, 0});
        w.wedge->setAngle(1);
        QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(1.0) * 4294967295.0));
        *w.wedge->pa = corners({0, INT_MAX}, {INT_MIN, INT_MIN}, {INT_MIN, INT_MIN});
        w.wedge->setAngle(1);
        QVERIFY(std::isfinite(w.end->getAtomZ()));
        QCOMPARE(w.end->getAtomZ(), float(7 + std::tan(1.0) * std::hypot(2147483648.0, 4294967295.0)));
    }

    void aWedgeOfLengthZeroKeepsTheLevel()
    {
        Drawing d;
        KytAtom* start = d.atom(10, 10, 4);
        KytAtom* end = d.atom(10, 10, 0);
        KytBond* bond = d.bond(start, end, {KYTBT_StereoUp});
        QCOMPARE(*bond->stereoBond->pa, corners({10, 10}, {16, 10}, {4, 10}));
        bond->stereoBond->setAngle(45);
        QCOMPARE(end->getAtomZ(), 4.0F);
        bond->stereoBond->setAngle(120);
        QCOMPARE(end->getAtomZ(), 4.0F);
    }

    void draggingAWedgeMovesTheWholeBond()
    {
        Wedge w(KYTBT_StereoDown);
        QCanvasItem* item = w.wedge;
        item->moveBy(10, 20);
        QCOMPARE(w.start->x(), 10.0);
        QCOMPARE(w.start->y(), 20.0);
        QCOMPARE(w.end->x(), 110.0);
        QCOMPARE(w.end->y(), 20.0);
        QCOMPARE(*w.wedge->pa, corners({10, 20}, {110, 26}, {110, 14}));
        QCOMPARE(item->x(), 0.0);
        QCOMPARE(item->y(), 0.0);
    }

    void aWedgeCanBeShiftedAlone()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->myMoveBy(10, 20);
        QCOMPARE(w.wedge->x(), 10.0);
        QCOMPARE(w.wedge->y(), 20.0);
        QCOMPARE(*w.wedge->pa, corners({0, 0}, {100, 6}, {100, -6}));
        QCOMPARE(w.start->x(), 0.0);
        QCOMPARE(w.end->x(), 100.0);
    }

    void deletingTheBondOfAWedgeTakesBoth()
    {
        Wedge w(KYTBT_StereoUp);
        w.wedge->deleteBond();
        QCOMPARE(w.d.wedges().size(), 0);
        QCOMPARE(w.start->getBondCount(), 0);
        QCOMPARE(w.end->getBondCount(), 0);
        QVERIFY(w.start->getMolecule() != w.end->getMolecule());
        QCOMPARE(drawingFault(*w.d.canvas()), QString());
    }

    void deletingAHoveredWedgesBond()
    {
        Wedge w(KYTBT_StereoDown);
        w.wedge->startHover();
        w.wedge->deleteBond();
        QCOMPARE(w.d.wedges().size(), 0);
    }

    void aWedgeThatGoesAloneLeavesABondThatCopes()
    {
        Wedge w(KYTBT_StereoUp);
        delete w.wedge;
        QCOMPARE(w.start->getBondCount(), 1);
        QCOMPARE(w.bond->bondCount, 1);
        w.start->moveBy(5, 5);
        w.end->moveBy(5, 5);
        w.start->setAtomZ(50);
        w.bond->setLength(QStringLiteral("20"));
        QVERIFY(std::isfinite(w.end->getAtomZ()));
        delete w.start;
        QCOMPARE(w.end->getBondCount(), 0);
    }

    void allWedgesOfACanvasCanGoAtOnce()
    {
        Wedge w(KYTBT_StereoUp);
        w.d.bond(w.end, w.d.atom(130, 0), {KYTBT_StereoDown});
        w.d.canvas()->deleteItems(QCanvasItem::Rtti_Polygon);
        QCOMPARE(w.d.wedges().size(), 0);
        w.end->moveBy(1, 1);
        delete w.end;
        QCOMPARE(w.d.atoms().size(), 2);
    }
};

QTEST_MAIN(test_KytStereoBond)
#include "test_KytStereoBond.moc"
