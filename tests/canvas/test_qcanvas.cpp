#include "canvas/qcanvas.h"

#include <QFontMetrics>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <functional>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

QCanvasLine lineFromBeforeTheApplication(nullptr);
QCanvasText textFromBeforeTheApplication("C", nullptr);

QCanvasEllipse* shownEllipse(QCanvas& canvas, double x, double y, int size = 3)
{
    auto* ellipse = new QCanvasEllipse(size, size, &canvas);
    ellipse->setBrush(Qt::black);
    ellipse->move(x, y);
    ellipse->show();
    return ellipse;
}

QCanvasLine* shownLine(QCanvas& canvas, const QLine& points, int penWidth)
{
    auto* line = new QCanvasLine(&canvas);
    line->setPen(QPen(Qt::black, penWidth));
    line->setPoints(points.x1(), points.y1(), points.x2(), points.y2());
    line->show();
    return line;
}

/// One row of text for each row of pixels in `area`, with # where `item` is hit.
QStringList hitPicture(const QCanvas& canvas, QCanvasItem* item, const QRect& area)
{
    QStringList picture;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        QString row;
        for (int x = area.left(); x <= area.right(); ++x)
            row += canvas.collisions(QPoint(x, y)).contains(item) ? '#' : '.';
        picture += row;
    }
    return picture;
}

int hitRows(const QCanvas& canvas, QCanvasItem* item, int x)
{
    return hitPicture(canvas, item, QRect(x, 0, 1, canvas.height())).filter("#").size();
}

double distanceByWalking(const QPointF& p, const QLineF& line)
{
    double nearest = infinity;
    constexpr int steps = 4000;
    for (int i = 0; i <= steps; ++i)
        nearest = std::min(nearest, QLineF(p, line.pointAt(double(i) / steps)).length());
    return nearest;
}

/// Writes down what happens to it, and can take another item with it.
class Witness : public QCanvasEllipse {
public:
    Witness(const QString& name, QStringList& log, QCanvas* canvas, int rtti = Rtti_Ellipse)
        : QCanvasEllipse(3, 3, canvas)
        , name(name)
        , log(log)
        , kind(rtti)
    {
    }

    ~Witness() override
    {
        log += "delete " + name;
        delete partner;
    }

    int rtti() const override { return kind; }
    void aboutToBeCleared() override { log += "tell " + name; }

    void moveBy(double dx, double dy) override
    {
        log += QString("move %1 by %2 %3").arg(name).arg(dx).arg(dy);
        QCanvasEllipse::moveBy(dx, dy);
    }

    QCanvasItem* partner = nullptr;

private:
    QString name;
    QStringList& log;
    int kind;
};

} // namespace

class test_qcanvas : public QObject {
    Q_OBJECT

private slots:
    void newCanvasIsWhiteEmptyAndAsLargeAsAsked()
    {
        QCanvas canvas(300, 200);
        QCOMPARE(canvas.width(), 300);
        QCOMPARE(canvas.height(), 200);
        QCOMPARE(canvas.size(), QSize(300, 200));
        QCOMPARE(canvas.backgroundColor(), QColor(Qt::white));
        QCOMPARE(canvas.advancePeriod(), 0);
        QVERIFY(canvas.allItems().isEmpty());
        QVERIFY(canvas.collisions(QPoint(0, 0)).isEmpty());
    }

    void keepsItsSettings()
    {
        QCanvas canvas(300, 200);
        canvas.resize(50, 60);
        canvas.setBackgroundColor(Qt::yellow);
        canvas.setAdvancePeriod(25);
        canvas.setDoubleBuffering(false);
        QCOMPARE(canvas.size(), QSize(50, 60));
        QCOMPARE(canvas.backgroundColor(), QColor(Qt::yellow));
        QCOMPARE(canvas.advancePeriod(), 25);
        QVERIFY(!canvas.doubleBuffering());
        canvas.setDoubleBuffering(true);
        QVERIFY(canvas.doubleBuffering());
    }

    void negativeSizesAndPeriodsCountAsZero()
    {
        QCanvas canvas(-5, 20);
        QCOMPARE(canvas.size(), QSize(0, 20));
        canvas.setAdvancePeriod(-1);
        QCOMPARE(canvas.advancePeriod(), 0);
        QCanvasEllipse ellipse(-3, 4, &canvas);
        QCOMPARE(ellipse.width(), 0);
        QCOMPARE(ellipse.height(), 4);
        ellipse.setSize(5, -1);
        QCOMPARE(ellipse.width(), 5);
        QCOMPARE(ellipse.height(), 0);
    }

    void newItemIsHiddenAtTheOriginWithZZero()
    {
        QCanvas canvas(100, 100);
        const QCanvasEllipse ellipse(3, 3, &canvas);
        QVERIFY(!ellipse.isVisible());
        QVERIFY(!ellipse.isKept());
        QCOMPARE(ellipse.x(), 0.0);
        QCOMPARE(ellipse.y(), 0.0);
        QCOMPARE(ellipse.z(), 0.0);
        QCOMPARE(ellipse.canvas(), &canvas);
        QCOMPARE(QCanvasLine(nullptr).canvas(), nullptr);
    }

    void kindsAreTold()
    {
        QCOMPARE(QCanvasText(nullptr).rtti(), 3);
        QCOMPARE(QCanvasPolygon(nullptr).rtti(), 4);
        QCOMPARE(QCanvasEllipse(1, 1, nullptr).rtti(), 6);
        QCOMPARE(QCanvasLine(nullptr).rtti(), 7);
    }

    void itemsMadeBeforeTheApplicationAreUsable()
    {
        QCanvas canvas(100, 100);
        for (QCanvasItem* item : {static_cast<QCanvasItem*>(&lineFromBeforeTheApplication),
                                  static_cast<QCanvasItem*>(&textFromBeforeTheApplication)}) {
            item->setKept(true);
            item->move(20, 20);
            item->show();
            item->setCanvas(&canvas);
            QCOMPARE(canvas.collisions(QPoint(20, 21)), QCanvasItemList{item});
            item->setCanvas(nullptr);
            QVERIFY(canvas.allItems().isEmpty());
        }
        QCOMPARE(textFromBeforeTheApplication.font(), QFont());
    }

    void allItemsComeInTheOrderOfCreation()
    {
        QCanvas canvas(100, 100);
        QCanvasItemList expected;
        expected += new QCanvasLine(&canvas);
        expected += new QCanvasEllipse(3, 3, &canvas);
        expected += new QCanvasText("N", &canvas);
        expected += new QCanvasPolygon(&canvas);
        expected[2]->show();
        expected[0]->setZ(5);
        expected[3]->setZ(-5);
        QCOMPARE(canvas.allItems(), expected);
    }

    void allItemsIncludesHiddenOnes()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* shown = shownEllipse(canvas, 10, 10);
        auto* hidden = new QCanvasEllipse(3, 3, &canvas);
        QCOMPARE(canvas.allItems(), (QCanvasItemList{shown, hidden}));
        shown->hide();
        QCOMPARE(canvas.allItems(), (QCanvasItemList{shown, hidden}));
    }

    void itemsOfOneKindComeInTheOrderOfCreation()
    {
        QCanvas canvas(100, 100);
        auto* first = new QCanvasLine(&canvas);
        new QCanvasEllipse(3, 3, &canvas);
        auto* second = new QCanvasLine(&canvas);
        auto* third = new QCanvasLine(&canvas);
        third->show();
        QCOMPARE(canvas.itemsOfKind(QCanvasItem::Rtti_Line), (QCanvasItemList{first, second, third}));
        QVERIFY(canvas.itemsOfKind(QCanvasItem::Rtti_Polygon).isEmpty());

        delete second;
        auto* fourth = new QCanvasLine(&canvas);
        first->setCanvas(nullptr);
        QCOMPARE(canvas.itemsOfKind(QCanvasItem::Rtti_Line), (QCanvasItemList{third, fourth}));
        first->setCanvas(&canvas);
        QCOMPARE(canvas.itemsOfKind(QCanvasItem::Rtti_Line), (QCanvasItemList{first, third, fourth}));
    }

    void itemsOfOneKindAreKnownAgainAfterOneCameOrWent()
    {
        QCanvas canvas(100, 100);
        const auto lines = [&canvas] { return canvas.itemsOfKind(QCanvasItem::Rtti_Line); };
        auto* first = new QCanvasLine(&canvas);
        QCOMPARE(lines(), (QCanvasItemList{first}));
        auto* second = new QCanvasLine(&canvas);
        const QCanvasItemList both = lines();
        QCOMPARE(both, (QCanvasItemList{first, second}));
        delete first;
        QCOMPARE(lines(), (QCanvasItemList{second}));
        QCOMPARE(both.size(), 2);
        second->setCanvas(nullptr);
        QVERIFY(lines().isEmpty());
        second->setCanvas(&canvas);
        QCOMPARE(lines(), (QCanvasItemList{second}));
        canvas.deleteItems(QCanvasItem::Rtti_Line);
        QVERIFY(lines().isEmpty());
    }

    void olderItemPutOnLaterTakesItsPlaceByCreation()
    {
        QCanvas canvas(100, 100);
        auto* oldest = new QCanvasEllipse(9, 9, nullptr);
        QCanvasEllipse* first = shownEllipse(canvas, 50, 50);
        auto* between = new QCanvasEllipse(9, 9, nullptr);
        QCanvasEllipse* second = shownEllipse(canvas, 50, 50);
        for (QCanvasEllipse* late : {between, oldest}) {
            late->setCanvas(&canvas);
            late->move(50, 50);
            late->show();
        }
        QCOMPARE(canvas.allItems(), (QCanvasItemList{oldest, first, between, second}));
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{second, between, first, oldest}));
    }

    void orderSurvivesDeletions()
    {
        QCanvas canvas(100, 100);
        auto* apart = new QCanvasEllipse(3, 3, nullptr);
        QCanvasItemList expected;
        QCanvasItemList doomed;
        for (int i = 0; i < 100; ++i)
            (i % 3 == 0 ? expected : doomed) += new QCanvasEllipse(3, 3, &canvas);
        qDeleteAll(doomed);
        QCOMPARE(canvas.allItems(), expected);
        apart->setCanvas(&canvas);
        expected.prepend(apart);
        expected.append(new QCanvasLine(&canvas));
        QCOMPARE(canvas.allItems(), expected);
        expected[5]->setCanvas(nullptr);
        expected[5]->setCanvas(&canvas);
        QCOMPARE(canvas.allItems(), expected);
    }

    void moveGoesThroughTheVirtualMoveByWithTheDifference()
    {
        QStringList log;
        QCanvas canvas(100, 100);
        Witness item("a", log, &canvas);
        item.move(10, 20);
        item.move(13.5, 18);
        QCOMPARE(log, QStringList({"move a by 10 20", "move a by 3.5 -2"}));
        QCOMPARE(item.x(), 13.5);
        QCOMPARE(item.y(), 18.0);
    }

    void moveByNothingDoesNothing()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 10, 10);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        ellipse->moveBy(0, 0);
        ellipse->move(10, 10);
        canvas.update();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(ellipse->x(), 10.0);
        ellipse->moveBy(0, 1);
        canvas.update();
        QCOMPARE(changed.count(), 1);
    }

    void stepsThatAreNotFiniteAreIgnored()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 10, 20);
        for (const double bad : {notANumber, infinity, -infinity}) {
            ellipse->moveBy(bad, 1);
            ellipse->moveBy(1, bad);
            ellipse->moveBy(bad, bad);
            ellipse->move(bad, 30);
            ellipse->move(30, bad);
            QCOMPARE(ellipse->x(), 10.0);
            QCOMPARE(ellipse->y(), 20.0);
        }
        ellipse->moveBy(1, 2);
        QCOMPARE(canvas.collisions(QPoint(11, 22)), QCanvasItemList{ellipse});
    }

    void sumsThatAreNotFiniteAreIgnored()
    {
        constexpr double largest = std::numeric_limits<double>::max();
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 10, 20);
        ellipse->moveBy(largest, 0);
        ellipse->moveBy(largest, 0);
        QCOMPARE(ellipse->x(), largest);
        ellipse->move(0, 0);
        ellipse->move(10, 20);
        QCOMPARE(canvas.collisions(QPoint(10, 20)), QCanvasItemList{ellipse});
    }

    void ellipseHitArea_data()
    {
        const QStringList small{
            "........", //
            "..####..", //
            ".######.", //
            ".######.", //
            ".######.", //
            ".######.", //
            "..####..", //
            "........", //
        };
        const QStringList large{
            "...........", //
            "...#####...", //
            "..#######..", //
            ".#########.", //
            ".#########.", //
            ".#########.", //
            ".#########.", //
            ".#########.", //
            "..#######..", //
            "...#####...", //
            "...........", //
        };
        const QStringList flat{
            "........", //
            "..####..", //
            ".######.", //
            ".######.", //
            "..####..", //
            "........", //
        };
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<QPoint>("corner");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("3 x 3") << QSize(3, 3) << QPointF(10, 10) << QPoint(8, 8) << small;
        QTest::newRow("3 x 3, a half on") << QSize(3, 3) << QPointF(10.5, 10.5) << QPoint(8, 8) << small;
        QTest::newRow("3 x 3, almost one on") << QSize(3, 3) << QPointF(10.99, 10.99) << QPoint(8, 8) << small;
        QTest::newRow("3 x 3, across") << QSize(3, 3) << QPointF(11, 9.75) << QPoint(9, 7) << small;
        QTest::newRow("3 x 3, left of the canvas") << QSize(3, 3) << QPointF(-0.5, -3) << QPoint(-3, -5) << small;
        QTest::newRow("6 x 6") << QSize(6, 6) << QPointF(10, 10) << QPoint(6, 6) << large;
        QTest::newRow("6 x 6, below a half on") << QSize(6, 6) << QPointF(10.49, 10.49) << QPoint(6, 6) << large;
        QTest::newRow("6 x 6, a half on") << QSize(6, 6) << QPointF(10.5, 10.5) << QPoint(7, 7) << large;
        QTest::newRow("6 x 6, across") << QSize(6, 6) << QPointF(9.5, 20.2) << QPoint(6, 16) << large;
        QTest::newRow("3 x 1") << QSize(3, 1) << QPointF(30, 30) << QPoint(28, 29) << flat;
        QTest::newRow("no area") << QSize(0, 0) << QPointF(30, 30) << QPoint(29, 29)
                                 << QStringList{".....", ".###.", ".###.", ".###.", "....."};
    }

    // A corner pixel of 3 x 3 has its centre at sqrt(1 + 1) from the middle, inside the radius of 1.5; rows of the flat
    // ellipse follow from its half axes 3 and 2 in the same way.
    void ellipseHitArea()
    {
        QFETCH(QSize, size);
        QFETCH(QPointF, position);
        QFETCH(QPoint, corner);
        QFETCH(QStringList, expected);
        QCanvas canvas(100, 100);
        auto* ellipse = new QCanvasEllipse(size.width(), size.height(), &canvas);
        ellipse->move(position.x(), position.y());
        ellipse->show();
        const QRect area(corner - QPoint(1, 1), QSize(int(expected.first().size()), int(expected.size())));
        QCOMPARE(hitPicture(canvas, ellipse, area), expected);
    }

    void lineHitArea_data()
    {
        const QStringList lying{
            "................", //
            "...##########...", //
            "..############..", //
            ".##############.", //
            ".##############.", //
            ".##############.", //
            ".##############.", //
            "..############..", //
            "...##########...", //
            "................", //
        };
        QStringList standing;
        for (int column = 0; column < lying.first().size(); ++column) {
            QString row;
            for (const QString& line : lying)
                row += line[column];
            standing += row;
        }
        const QStringList dot{
            "..........", //
            "...####...", //
            "..######..", //
            ".########.", //
            ".########.", //
            ".########.", //
            ".########.", //
            "..######..", //
            "...####...", //
            "..........", //
        };
        QTest::addColumn<QLine>("points");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("lying") << QLine(20, 20, 26, 20) << lying;
        QTest::newRow("lying, backwards") << QLine(26, 20, 20, 20) << lying;
        QTest::newRow("standing") << QLine(20, 20, 20, 26) << standing;
        QTest::newRow("standing, upwards") << QLine(20, 26, 20, 20) << standing;
        QTest::newRow("length zero") << QLine(20, 20, 20, 20) << dot;
    }

    void lineHitArea()
    {
        QFETCH(QLine, points);
        QFETCH(QStringList, expected);
        QCanvas canvas(100, 100);
        QCanvasLine* line = shownLine(canvas, points, 2);
        const QRect area(15, 15, int(expected.first().size()), int(expected.size()));
        QCOMPARE(hitPicture(canvas, line, area), expected);
    }

    void slantedLineIsHitWithinItsReach()
    {
        QCanvas canvas(60, 60);
        const QLine points(40, 12, 17, 30);
        QCanvasLine* line = shownLine(canvas, points, 2);
        constexpr double reach = 4;
        int hit = 0;
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x) {
                const double distance = distanceByWalking(QPointF(x + 0.5, y + 0.5), QLineF(points));
                if (std::abs(distance - reach) < 1e-3)
                    continue;
                const bool isHit = canvas.collisions(QPoint(x, y)).contains(line);
                QVERIFY2(isHit == (distance < reach), qPrintable(QString("pixel %1, %2").arg(x).arg(y)));
                hit += isHit;
            }
        }
        QVERIFY(hit > 200);
    }

    void lineReachGrowsWithThePen_data()
    {
        QTest::addColumn<int>("penWidth");
        QTest::addColumn<int>("reach");
        QTest::newRow("0") << 0 << 2;
        QTest::newRow("1") << 1 << 3;
        QTest::newRow("2") << 2 << 4;
        QTest::newRow("3") << 3 << 6;
        QTest::newRow("4") << 4 << 7;
        QTest::newRow("10") << 10 << 15;
    }

    void lineReachGrowsWithThePen()
    {
        QFETCH(int, penWidth);
        QFETCH(int, reach);
        QCanvas canvas(100, 100);
        QCanvasLine* line = shownLine(canvas, QLine(10, 50, 90, 50), penWidth);
        QCOMPARE(hitRows(canvas, line, 50), 2 * reach);
        QVERIFY(canvas.collisions(QPoint(50, 50 - reach)).contains(line));
        QVERIFY(canvas.collisions(QPoint(50, 50 + reach - 1)).contains(line));
        line->setPen(QPen(Qt::black, 2));
        QCOMPARE(hitRows(canvas, line, 50), 8);
    }

    void lineIsHitWhereItWasMoved()
    {
        QCanvas canvas(200, 200);
        QCanvasLine* line = shownLine(canvas, QLine(10, 20, 40, 20), 2);
        line->moveBy(100, 50);
        QCOMPARE(line->startPoint(), QPoint(10, 20));
        QCOMPARE(line->endPoint(), QPoint(40, 20));
        QVERIFY(canvas.collisions(QPoint(25, 20)).isEmpty());
        QCOMPARE(canvas.collisions(QPoint(125, 70)), QCanvasItemList{line});
        line->setPoints(-90, -40, -60, -40);
        QCOMPARE(canvas.collisions(QPoint(25, 10)), QCanvasItemList{line});
        QVERIFY(canvas.collisions(QPoint(125, 70)).isEmpty());
    }

    // On the slope 2x + y = 14; no pixel's centre lies on it.
    void polygonHitArea()
    {
        const QStringList expected{
            ".......", //
            ".#####.", //
            ".####..", //
            ".####..", //
            ".###...", //
            ".###...", //
            ".##....", //
            ".##....", //
            ".#.....", //
            ".#.....", //
            ".......", //
            ".......", //
        };
        QCanvas canvas(100, 100);
        auto* polygon = new QCanvasPolygon(&canvas);
        polygon->setPoints(QPolygon({QPoint(1, 2), QPoint(6, 2), QPoint(1, 12)}));
        polygon->move(30, 40);
        polygon->show();
        QCOMPARE(hitPicture(canvas, polygon, QRect(30, 41, 7, 12)), expected);
    }

    void polygonWithoutCornersIsNotHit()
    {
        QCanvas canvas(100, 100);
        auto* polygon = new QCanvasPolygon(&canvas);
        polygon->move(10, 10);
        polygon->show();
        QVERIFY(canvas.collisions(QPoint(10, 10)).isEmpty());
        polygon->setPoints(QPolygon(QRect(0, 0, 5, 5)));
        QCOMPARE(canvas.collisions(QPoint(12, 12)), QCanvasItemList{polygon});
        polygon->setPoints(QPolygon());
        QVERIFY(canvas.collisions(QPoint(12, 12)).isEmpty());
    }

    void textHitAreaIsOnePixelWiderThanTheText()
    {
        QCanvas canvas(200, 100);
        auto* text = new QCanvasText("Br", &canvas);
        const QFontMetrics metrics(text->font());
        text->move(20, 30);
        text->show();
        const QRect expected(20, 30, metrics.horizontalAdvance("Br") + 1, metrics.height());
        for (int y = 20; y < 80; ++y)
            for (int x = 10; x < 80; ++x)
                QCOMPARE(canvas.collisions(QPoint(x, y)).contains(text), expected.contains(x, y));
    }

    void textHitAreaFollowsTextAndFont()
    {
        QCanvas canvas(400, 200);
        auto* text = new QCanvasText("C", &canvas);
        text->show();
        const auto hitSize = [&] {
            const int rows = hitRows(canvas, text, 0);
            const QString row = hitPicture(canvas, text, QRect(0, 0, 400, 1)).first();
            return QSize(int(row.count('#')), rows);
        };
        const auto expected = [](const QString& letters, const QFont& font) {
            const QFontMetrics metrics(font);
            return QSize(metrics.horizontalAdvance(letters) + 1, metrics.height());
        };
        QCOMPARE(hitSize(), expected("C", QFont()));
        text->setText("Uuo");
        QCOMPARE(hitSize(), expected("Uuo", QFont()));
        const QFont large("Helvetica", 40);
        text->setFont(large);
        QCOMPARE(text->font(), large);
        QCOMPARE(hitSize(), expected("Uuo", large));
        text->setText("");
        QCOMPARE(hitSize(), expected("", large));
    }

    void collisionsComeTopmostFirst()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* middle = shownEllipse(canvas, 50, 50);
        QCanvasEllipse* top = shownEllipse(canvas, 50, 50);
        QCanvasEllipse* bottom = shownEllipse(canvas, 50, 50);
        top->setZ(0.5);
        bottom->setZ(-2);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{top, middle, bottom}));
    }

    void laterCreatedComesFirstAmongEqualZ()
    {
        QCanvas canvas(100, 100);
        QCanvasItemList expected;
        for (int i = 0; i < 20; ++i)
            expected.prepend(shownEllipse(canvas, 50, 50));
        for (QCanvasItem* item : expected)
            item->setZ(3);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), expected);
        expected[7]->hide();
        expected[7]->show();
        QCOMPARE(canvas.collisions(QPoint(50, 50)), expected);
    }

    void changedZCountsAtOnce()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* first = shownEllipse(canvas, 50, 50);
        QCanvasEllipse* second = shownEllipse(canvas, 50, 50);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{second, first}));
        first->setZ(1);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{first, second}));
        first->setZ(0);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{second, first}));
        first->setZ(notANumber);
        QCOMPARE(first->z(), 0.0);
    }

    void hiddenItemsAreNotHit()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* below = shownEllipse(canvas, 50, 50);
        QCanvasEllipse* above = shownEllipse(canvas, 50, 50);
        above->hide();
        QVERIFY(!above->isVisible());
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{below});
        above->show();
        QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{above, below}));
        above->setVisible(false);
        below->setVisible(false);
        QVERIFY(canvas.collisions(QPoint(50, 50)).isEmpty());
    }

    void itemsAreHitWhereTheyWentAndNotWhereTheyWere()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 50, 50);
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{ellipse});
        ellipse->moveBy(-30, 20);
        QVERIFY(canvas.collisions(QPoint(50, 50)).isEmpty());
        QCOMPARE(canvas.collisions(QPoint(20, 70)), QCanvasItemList{ellipse});
        QVERIFY(canvas.collisions(QPoint(26, 70)).isEmpty());
        ellipse->setSize(20, 20);
        QCOMPARE(canvas.collisions(QPoint(28, 70)), QCanvasItemList{ellipse});
        ellipse->hide();
        ellipse->move(5, 5);
        ellipse->show();
        QCOMPARE(canvas.collisions(QPoint(5, 5)), QCanvasItemList{ellipse});
    }

    void itemsOutsideTheCanvasStayAndAreHit()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* left = shownEllipse(canvas, -500, 50);
        QCanvasEllipse* below = shownEllipse(canvas, 50, 7000);
        QCanvasEllipse* inside = shownEllipse(canvas, 90, 90);
        canvas.resize(20, 20);
        QCOMPARE(canvas.collisions(QPoint(-500, 50)), QCanvasItemList{left});
        QCOMPARE(canvas.collisions(QPoint(50, 7000)), QCanvasItemList{below});
        QCOMPARE(canvas.collisions(QPoint(90, 90)), QCanvasItemList{inside});
        QCOMPARE(canvas.allItems(), (QCanvasItemList{left, below, inside}));
    }

    void collisionsFarOutsideAreEmpty()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        QCanvas canvas(100, 100);
        shownEllipse(canvas, 50, 50);
        for (const QPoint& p :
             {QPoint(lowest, lowest), QPoint(highest, highest), QPoint(50, lowest), QPoint(highest, 50)})
            QVERIFY(canvas.collisions(p).isEmpty());
    }

    void deletedItemIsGoneFromTheCanvas()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* stays = shownEllipse(canvas, 50, 50);
        delete shownEllipse(canvas, 50, 50);
        QCOMPARE(canvas.allItems(), QCanvasItemList{stays});
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{stays});
        canvas.update();
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{stays});
    }

    void deletionIsTold()
    {
        QCanvas canvas(100, 100);
        QSignalSpy gone(&canvas, &QCanvas::itemGone);
        QCanvasItem* item = shownEllipse(canvas, 50, 50);
        QCanvasItem* hidden = new QCanvasLine(&canvas);
        delete item;
        QCOMPARE(gone.count(), 1);
        QCOMPARE(gone[0][0].value<QCanvasItem*>(), item);
        delete hidden;
        QCOMPARE(gone.count(), 2);
        QCOMPARE(gone[1][0].value<QCanvasItem*>(), hidden);
        delete new QCanvasLine(nullptr);
        QCOMPARE(gone.count(), 2);
    }

    void leavingTheCanvasIsTold()
    {
        QCanvas canvas(100, 100);
        QSignalSpy gone(&canvas, &QCanvas::itemGone);
        QCanvasLine line(&canvas);
        line.setCanvas(&canvas);
        QCOMPARE(gone.count(), 0);
        line.setCanvas(nullptr);
        QCOMPARE(gone.count(), 1);
        QCOMPARE(gone[0][0].value<QCanvasItem*>(), &line);
    }

    void itemMovesToAnotherCanvas()
    {
        QCanvas from(100, 100);
        QCanvas to(100, 100);
        QSignalSpy gone(&from, &QCanvas::itemGone);
        QCanvasEllipse* item = shownEllipse(from, 50, 60);
        item->setZ(2);
        item->setCanvas(&to);
        QCOMPARE(gone.count(), 1);
        QVERIFY(from.allItems().isEmpty());
        QVERIFY(from.collisions(QPoint(50, 60)).isEmpty());
        QCOMPARE(item->canvas(), &to);
        QCOMPARE(to.allItems(), QCanvasItemList{item});
        QCOMPARE(to.collisions(QPoint(50, 60)), QCanvasItemList{item});
        QCOMPARE(item->z(), 2.0);
        item->setCanvas(nullptr);
        QCOMPARE(item->canvas(), nullptr);
        item->moveBy(1, 1);
        item->hide();
        item->setCanvas(&from);
        QCOMPARE(from.allItems(), QCanvasItemList{item});
        QVERIFY(from.collisions(QPoint(51, 61)).isEmpty());
        item->show();
        QCOMPARE(from.collisions(QPoint(51, 61)), QCanvasItemList{item});
    }

    void canvasDeletesItsItemsEllipsesFirst()
    {
        QStringList log;
        {
            QCanvas canvas(100, 100);
            new Witness("line 1", log, &canvas, QCanvasItem::Rtti_Line);
            new Witness("atom 1", log, &canvas);
            new Witness("text 1", log, &canvas, QCanvasItem::Rtti_Text);
            new Witness("atom 2", log, &canvas);
        }
        QCOMPARE(log.filter("delete"),
                 QStringList({"delete atom 1", "delete atom 2", "delete line 1", "delete text 1"}));
    }

    void canvasTellsAllItemsBeforeItDeletesOne()
    {
        QStringList log;
        {
            QCanvas canvas(100, 100);
            new Witness("line", log, &canvas, QCanvasItem::Rtti_Line);
            new Witness("atom", log, &canvas);
        }
        QCOMPARE(log, QStringList({"tell atom", "tell line", "delete atom", "delete line"}));
    }

    void itemsThatTakeOthersWithThemAreDeletedOnce()
    {
        QStringList log;
        {
            QCanvas canvas(100, 100);
            auto* first = new Witness("atom 1", log, &canvas);
            auto* line = new Witness("line", log, &canvas, QCanvasItem::Rtti_Line);
            auto* second = new Witness("atom 2", log, &canvas);
            first->partner = second;
            second->partner = line;
        }
        QCOMPARE(log.filter("delete"), QStringList({"delete atom 1", "delete atom 2", "delete line"}));
    }

    void keptItemOutlivesItsCanvas()
    {
        QCanvasLine kept(nullptr);
        kept.setKept(true);
        kept.show();
        QCanvasItem* told = nullptr;
        {
            QCanvas canvas(100, 100);
            shownEllipse(canvas, 10, 10);
            kept.setCanvas(&canvas);
            connect(&canvas, &QCanvas::itemGone, this, [&](QCanvasItem* item) { told = item; });
        }
        QCOMPARE(told, &kept);
        QCOMPARE(kept.canvas(), nullptr);
        QVERIFY(kept.isVisible());
        kept.setPoints(0, 0, 10, 10);
        QCanvas next(100, 100);
        kept.setCanvas(&next);
        QCOMPARE(next.collisions(QPoint(5, 5)), QCanvasItemList{&kept});
        kept.setCanvas(nullptr);
    }

    void keptItemCanGoFirst()
    {
        QCanvas canvas(100, 100);
        {
            QCanvasLine kept(&canvas);
            kept.setKept(true);
            kept.show();
            QCOMPARE(canvas.allItems().size(), 1);
        }
        QVERIFY(canvas.allItems().isEmpty());
        QVERIFY(canvas.collisions(QPoint(0, 0)).isEmpty());
    }

    void itemsMadeWhileTheCanvasGoesAreDeletedToo()
    {
        QStringList log;
        {
            QCanvas canvas(100, 100);
            new Witness("old", log, &canvas);
            const auto once = Qt::SingleShotConnection;
            connect(
                &canvas, &QCanvas::itemGone, this, [&] { new Witness("new", log, &canvas); },
                static_cast<Qt::ConnectionType>(Qt::DirectConnection | once));
        }
        QCOMPARE(log.filter("delete"), QStringList({"delete old", "delete new"}));
    }

    void deleteItemsTakesOneKindOnly()
    {
        QCanvas canvas(100, 100);
        shownEllipse(canvas, 10, 10);
        auto* line = new QCanvasLine(&canvas);
        shownEllipse(canvas, 20, 20);
        auto* text = new QCanvasText("C", &canvas);
        QSignalSpy gone(&canvas, &QCanvas::itemGone);
        canvas.deleteItems(QCanvasItem::Rtti_Ellipse);
        QCOMPARE(canvas.allItems(), (QCanvasItemList{line, text}));
        QCOMPARE(gone.count(), 2);
        canvas.deleteItems(QCanvasItem::Rtti_Polygon);
        QCOMPARE(canvas.allItems(), (QCanvasItemList{line, text}));
    }

    void deleteItemsTellsAllOfThemFirst()
    {
        QStringList log;
        QCanvas canvas(100, 100);
        auto* first = new Witness("atom 1", log, &canvas);
        auto* line = new Witness("line", log, &canvas, QCanvasItem::Rtti_Line);
        auto* second = new Witness("atom 2", log, &canvas);
        new Witness("atom 3", log, &canvas);
        first->partner = line;
        line->partner = second;
        canvas.deleteItems(QCanvasItem::Rtti_Ellipse);
        QCOMPARE(log,
                 QStringList({"tell atom 1", "tell atom 2", "tell atom 3", "delete atom 1", "delete line",
                              "delete atom 2", "delete atom 3"}));
        QVERIFY(canvas.allItems().isEmpty());
    }

    void deleteItemsOnlyTakesKeptOnesOff()
    {
        QStringList log;
        QCanvas canvas(100, 100);
        Witness kept("kept", log, &canvas);
        kept.setKept(true);
        canvas.deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(log.isEmpty());
        QCOMPARE(kept.canvas(), nullptr);
        QVERIFY(canvas.allItems().isEmpty());
    }

    void thousandsOfItemsGoAndTheRestStays_data()
    {
        QTest::addColumn<bool>("indexed");
        QTest::newRow("never looked up before") << false;
        QTest::newRow("looked up before") << true;
    }

    void thousandsOfItemsGoAndTheRestStays()
    {
        QFETCH(bool, indexed);
        QCanvas canvas(200, 200);
        QCanvasItemList left;
        QCanvasItemList leftAtOne;
        QCanvasItemList doomed;
        for (int i = 0; i < 6000; ++i) {
            QCanvasEllipse* ellipse = shownEllipse(canvas, 10 + i % 19 * 10, 10 + i / 19 % 19 * 10);
            if (i % 6 != 0) {
                doomed += ellipse;
                continue;
            }
            left += ellipse;
            if (ellipse->x() == 70 && ellipse->y() == 40)
                leftAtOne.prepend(ellipse);
        }
        QVERIFY(leftAtOne.size() > 1);
        if (indexed)
            QVERIFY(canvas.collisions(QPoint(70, 40)).size() > leftAtOne.size());
        qDeleteAll(doomed);
        QCOMPARE(canvas.allItems(), left);
        QCOMPARE(canvas.collisions(QPoint(70, 40)), leftAtOne);
        canvas.update();
        QCOMPARE(canvas.allItems(), left);
        QCOMPARE(canvas.collisions(QPoint(70, 40)), leftAtOne);
        left.first()->move(5, 195);
        QCOMPARE(canvas.collisions(QPoint(5, 195)), QCanvasItemList{left.first()});
        canvas.deleteItems(QCanvasItem::Rtti_Ellipse);
        QVERIFY(canvas.allItems().isEmpty());
        QVERIFY(canvas.collisions(QPoint(5, 195)).isEmpty());
    }

    void itemsComeAndGoWithoutAPause()
    {
        QCanvas canvas(200, 200);
        QCanvasEllipse* below = shownEllipse(canvas, 50, 50);
        for (int i = 0; i < 5000; ++i) {
            QCanvasEllipse* above = shownEllipse(canvas, 50, 50);
            if (i % 250 == 0)
                QCOMPARE(canvas.collisions(QPoint(50, 50)), (QCanvasItemList{above, below}));
            delete above;
        }
        QCOMPARE(canvas.allItems(), QCanvasItemList{below});
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{below});
        canvas.update();
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{below});
    }

    void changesAreGatheredUntilUpdate()
    {
        QCanvas canvas(100, 100);
        canvas.setAdvancePeriod(3600 * 1000);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        QCanvasEllipse* first = shownEllipse(canvas, 10, 10);
        QCoreApplication::processEvents();
        QCanvasEllipse* second = shownEllipse(canvas, 80, 80);
        QCoreApplication::processEvents();
        QCOMPARE(changed.count(), 0);
        canvas.update();
        QCOMPARE(changed.count(), 1);
        const auto region = changed[0][0].value<QRegion>();
        QVERIFY(region.contains(first->boundingRect().toAlignedRect()));
        QVERIFY(region.contains(second->boundingRect().toAlignedRect()));
        QVERIFY(!region.contains(QPoint(45, 45)));
    }

    void changesArePaintedAfterOnePeriod()
    {
        QCanvas canvas(100, 100);
        canvas.setAdvancePeriod(25);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        for (int i = 0; i < 10; ++i)
            shownEllipse(canvas, 10 * i, 10);
        QCOMPARE(changed.count(), 0);
        QTRY_COMPARE(changed.count(), 1);
        QTest::qWait(100);
        QCOMPARE(changed.count(), 1);
    }

    void updateWithoutChangesIsSilent()
    {
        QCanvas canvas(100, 100);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        canvas.update();
        QCOMPARE(changed.count(), 0);
    }

    void changeCoversTheOldAndTheNewPlace()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 20, 20);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        const QRect before = ellipse->boundingRect().toAlignedRect();
        ellipse->move(70.5, 60.25);
        canvas.update();
        const auto region = changed[0][0].value<QRegion>();
        QCOMPARE(region.intersected(before), QRegion(before));
        const QRect after = ellipse->boundingRect().toAlignedRect();
        QCOMPARE(region.intersected(after), QRegion(after));
        QVERIFY(!region.contains(QPoint(45, 40)));
    }

    void manyChangesAreAllCovered()
    {
        QCanvas canvas(1000, 1000);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        QRegion expected;
        for (int i = 0; i < 500; ++i)
            expected += shownEllipse(canvas, 7 + i * 37 % 900, 7 + i * 91 % 900)->boundingRect().toAlignedRect();
        canvas.update();
        QCOMPARE(changed.count(), 1);
        const auto region = changed[0][0].value<QRegion>();
        QVERIFY((expected - region).isEmpty());
        QVERIFY(QRegion(0, 0, 1000, 1000).united(region) == QRegion(0, 0, 1000, 1000));
    }

    void hiddenItemsChangeNothing()
    {
        QCanvas canvas(100, 100);
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        auto* ellipse = new QCanvasEllipse(3, 3, &canvas);
        ellipse->move(10, 10);
        ellipse->setZ(2);
        ellipse->setBrush(Qt::red);
        auto* line = new QCanvasLine(&canvas);
        line->setPoints(0, 0, 50, 50);
        delete line;
        canvas.update();
        QCOMPARE(changed.count(), 0);
    }

    void everyVisibleChangeIsTold_data()
    {
        using Change = std::function<void(QCanvas&)>;
        const auto ellipse = [](QCanvas& canvas) { return static_cast<QCanvasEllipse*>(canvas.allItems()[0]); };
        const auto line = [](QCanvas& canvas) { return static_cast<QCanvasLine*>(canvas.allItems()[1]); };
        const auto polygon = [](QCanvas& canvas) { return static_cast<QCanvasPolygon*>(canvas.allItems()[2]); };
        const auto text = [](QCanvas& canvas) { return static_cast<QCanvasText*>(canvas.allItems()[3]); };
        QTest::addColumn<Change>("change");
        const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
        row("move", [=](QCanvas& canvas) { ellipse(canvas)->moveBy(1, 0); });
        row("z", [=](QCanvas& canvas) { ellipse(canvas)->setZ(1); });
        row("hide", [=](QCanvas& canvas) { ellipse(canvas)->hide(); });
        row("delete", [=](QCanvas& canvas) { delete ellipse(canvas); });
        row("leave", [=](QCanvas& canvas) { std::unique_ptr<QCanvasItem>(ellipse(canvas))->setCanvas(nullptr); });
        row("brush", [=](QCanvas& canvas) { ellipse(canvas)->setBrush(Qt::red); });
        row("ellipse's size", [=](QCanvas& canvas) { ellipse(canvas)->setSize(5, 5); });
        row("line's points", [=](QCanvas& canvas) { line(canvas)->setPoints(0, 0, 5, 90); });
        row("line's pen", [=](QCanvas& canvas) { line(canvas)->setPen(QPen(Qt::blue, 9)); });
        row("polygon's points", [=](QCanvas& canvas) { polygon(canvas)->setPoints(QPolygon(QRect(0, 0, 9, 9))); });
        row("text", [=](QCanvas& canvas) { text(canvas)->setText("N"); });
        row("text's font", [=](QCanvas& canvas) { text(canvas)->setFont(QFont("Helvetica", 30)); });
        row("text's colour", [=](QCanvas& canvas) { text(canvas)->setColor(Qt::red); });
        row("background", [=](QCanvas& canvas) { canvas.setBackgroundColor(Qt::green); });
        row("size", [=](QCanvas& canvas) { canvas.resize(90, 110); });
        row("new item", [=](QCanvas& canvas) { shownEllipse(canvas, 9, 9); });
    }

    void everyVisibleChangeIsTold()
    {
        QFETCH(std::function<void(QCanvas&)>, change);
        QCanvas canvas(100, 100);
        shownEllipse(canvas, 50, 50);
        shownLine(canvas, QLine(0, 0, 20, 10), 2);
        auto* polygon = new QCanvasPolygon(&canvas);
        polygon->setPoints(QPolygon(QRect(0, 0, 4, 4)));
        polygon->show();
        (new QCanvasText("C", &canvas))->show();
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        change(canvas);
        canvas.update();
        QCOMPARE(changed.count(), 1);
        QVERIFY(!changed[0][0].value<QRegion>().isEmpty());
    }

    void sameValueAgainChangesNothing()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 50, 50);
        QCanvasLine* line = shownLine(canvas, QLine(0, 0, 20, 10), 2);
        auto* text = new QCanvasText("C", &canvas);
        text->show();
        canvas.update();
        QSignalSpy changed(&canvas, &QCanvas::changed);
        ellipse->setZ(0);
        ellipse->show();
        ellipse->setBrush(Qt::black);
        line->setPoints(0, 0, 20, 10);
        text->setText("C");
        text->setColor(Qt::black);
        text->setCanvas(&canvas);
        canvas.update();
        QCOMPARE(changed.count(), 0);
    }

    void hugeCoordinatesDoNoHarm_data()
    {
        QTest::addColumn<double>("far");
        QTest::newRow("beyond int") << 3e9;
        QTest::newRow("1e30") << 1e30;
        QTest::newRow("-1e30") << -1e30;
        QTest::newRow("largest") << std::numeric_limits<double>::max();
        QTest::newRow("lowest") << std::numeric_limits<double>::lowest();
    }

    void hugeCoordinatesDoNoHarm()
    {
        QFETCH(double, far);
        QCanvas canvas(100, 100);
        auto* polygon = new QCanvasPolygon(&canvas);
        polygon->setPoints(QPolygon(QRect(-2, -2, 4, 4)));
        auto* line = new QCanvasLine(&canvas);
        line->setPoints(-2, 0, 2, 0);
        const QCanvasItemList items{polygon, line, new QCanvasText("C", &canvas), shownEllipse(canvas, 0, 0)};
        QSignalSpy changed(&canvas, &QCanvas::changed);
        for (QCanvasItem* item : items) {
            item->move(far, far);
            item->show();
        }
        QVERIFY(canvas.collisions(QPoint(0, 0)).isEmpty());
        QVERIFY(canvas.collisions(QPoint(50, 50)).isEmpty());
        canvas.update();
        for (const QList<QVariant>& told : changed)
            QVERIFY((told[0].value<QRegion>() - QRegion(0, 0, 100, 100)).isEmpty());
        for (QCanvasItem* item : items) {
            item->move(0, 0);
            item->move(50, 50);
            QCOMPARE(item->x(), 50.0);
            QCOMPARE(canvas.collisions(QPoint(50, 50)).first(), item);
            QCOMPARE(canvas.collisions(QPoint(50, 50)).size(), 1);
            item->hide();
        }
    }

    void lineAcrossTheWholeRangeOfIntIsHit()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        QCanvas canvas(100, 100);
        QCanvasLine* line = shownLine(canvas, QLine(lowest, 50, highest, 50), 2);
        QCOMPARE(canvas.collisions(QPoint(10, 50)), QCanvasItemList{line});
        QVERIFY(canvas.collisions(QPoint(10, 60)).isEmpty());
    }
};

QTEST_MAIN(test_qcanvas)
#include "test_qcanvas.moc"
