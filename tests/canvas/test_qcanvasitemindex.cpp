#include "canvas/qcanvas.h"
#include "canvas/qcanvasitemindex.h"

#include <QTest>

#include <algorithm>
#include <limits>
#include <random>

namespace {

/// What is hit at `p`, by asking every item of the canvas.
QCanvasItemList asked(const QCanvas& canvas, const QPoint& p)
{
    QCanvasItemList hit;
    for (QCanvasItem* item : canvas.allItems())
        if (item->isVisible() && item->hits(QPointF(p.x() + 0.5, p.y() + 0.5)))
            hit.prepend(item);
    std::stable_sort(hit.begin(), hit.end(),
                     [](const QCanvasItem* a, const QCanvasItem* b) { return a->z() > b->z(); });
    return hit;
}

QCanvasItem* anyItem(QCanvas* canvas, std::mt19937& random)
{
    const int reach = 1 << random() % 12;
    if (random() % 2) {
        auto* line = new QCanvasLine(canvas);
        line->setPoints(0, 0, int(random() % (2 * reach)) - reach, int(random() % (2 * reach)) - reach);
        return line;
    }
    return new QCanvasEllipse(int(random() % reach), int(random() % reach), canvas);
}

QPoint anyPoint(std::mt19937& random)
{
    return {int(random() % 800) - 200, int(random() % 700) - 200};
}

/// Says where finding and asking differ, or nothing.
QString difference(const QCanvas& canvas, std::mt19937& random)
{
    for (int i = 0; i < 60; ++i) {
        const QPoint p = anyPoint(random);
        const QCanvasItemList found = canvas.collisions(p);
        const QCanvasItemList expected = asked(canvas, p);
        if (!std::equal(found.begin(), found.end(), expected.begin(), expected.end()))
            return QStringLiteral("at (%1, %2)").arg(p.x()).arg(p.y());
    }
    return QString();
}

} // namespace

class test_qcanvasitemindex : public QObject {
    Q_OBJECT

private slots:
    void whatIsFoundIsWhatAskingEveryItemFinds()
    {
        for (unsigned seed = 0; seed < 60; ++seed) {
            std::mt19937 random(seed);
            QCanvas canvas(400, 300);
            QCanvasItemList items;
            for (int i = 0; i < 40; ++i) {
                items.append(anyItem(&canvas, random));
                items.last()->setVisible(random() % 4 != 0);
                items.last()->setZ(random() % 3);
            }
            for (int round = 0; round < 8; ++round) {
                QCanvasItem* item = items[qsizetype(random() % items.size())];
                const QPoint to = anyPoint(random);
                item->move(to.x() + 0.3, to.y());
                items[qsizetype(random() % items.size())]->setVisible(random() % 4 != 0);
                QVERIFY2(difference(canvas, random).isEmpty(), qPrintable(QStringLiteral("seed %1").arg(seed)));
            }
        }
    }

    void anItemIsFoundAgainAfterTheCanvasChangesItsSize()
    {
        std::mt19937 random(1);
        QCanvas canvas(400, 300);
        for (int i = 0; i < 100; ++i) {
            QCanvasItem* item = anyItem(&canvas, random);
            const QPoint to = anyPoint(random);
            item->move(to.x(), to.y());
            item->show();
        }
        for (const QSize size : {QSize(40, 30), QSize(0, 0), QSize(3000, 20), QSize(1, 5000), QSize(400, 300)}) {
            canvas.resize(size.width(), size.height());
            QCOMPARE(difference(canvas, random), QString());
        }
    }

    void anItemIsFoundOnTheCanvasToWhichItHasGone()
    {
        QCanvas one(400, 300);
        QCanvas other(100, 100);
        auto* item = new QCanvasEllipse(10, 10, &one);
        item->move(50, 50);
        item->show();
        QCOMPARE(one.collisions(QPoint(50, 50)), QCanvasItemList{item});
        item->setCanvas(&other);
        QVERIFY(one.collisions(QPoint(50, 50)).isEmpty());
        QCOMPARE(other.collisions(QPoint(50, 50)), QCanvasItemList{item});
        item->setCanvas(nullptr);
        item->move(20, 20);
        item->setCanvas(&one);
        QVERIFY(other.collisions(QPoint(50, 50)).isEmpty());
        QCOMPARE(one.collisions(QPoint(20, 20)), QCanvasItemList{item});
    }

    void itemsThatCrowdInOnePlaceMoveAndGo()
    {
        QCanvas canvas(2000, 2000);
        QCanvasItemList items;
        for (int i = 0; i < 50000; ++i) {
            auto* line = new QCanvasLine(&canvas);
            line->setPoints(1000, 1000, i % 2000, i / 25);
            line->show();
            items.append(line);
        }
        for (int step = 0; step < 5; ++step)
            for (QCanvasItem* item : items)
                item->moveBy(1, 1);
        QCOMPARE(canvas.collisions(QPoint(1005, 1005)).size(), 50000);
        for (QCanvasItem* item : items)
            delete item;
        QVERIFY(canvas.collisions(QPoint(1005, 1005)).isEmpty());
    }

    void farOutsideNothingIsFoundAndNothingOverflows()
    {
        QCanvas canvas(400, 300);
        auto* item = new QCanvasEllipse(10, 10, &canvas);
        item->show();
        for (const double far : {1e9, -1e9, 1e300, -1e300}) {
            item->move(far, -far);
            QVERIFY(canvas.collisions(QPoint(10, 10)).isEmpty());
        }
        constexpr int least = std::numeric_limits<int>::min();
        constexpr int most = std::numeric_limits<int>::max();
        item->move(0, 0);
        for (const QPoint& p : {QPoint(least, least), QPoint(most, most), QPoint(least, most), QPoint(0, most)})
            QVERIFY(canvas.collisions(p).isEmpty());
        QCOMPARE(canvas.collisions(QPoint(0, 0)), QCanvasItemList{item});
    }
};

QTEST_MAIN(test_qcanvasitemindex)
#include "test_qcanvasitemindex.moc"
