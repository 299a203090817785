#include "tests/view/ViewFixture.h"

#include <QSignalSpy>
#include <QWheelEvent>

namespace {

/// A view at another zoom than 1, with points told in canvas pixels.
class ZoomFixture : public ViewFixture {
public:
    explicit ZoomFixture(double factor, KytViewState mode = KYTVS_view)
        : ViewFixture(mode)
        , factor(factor)
    {
        view->zoomTo(factor, {0, 0});
    }

    /// The contents point at which a canvas point is shown.
    QPoint shown(double x, double y) const { return {qRound(x * factor), qRound(y * factor)}; }

    void wheel(int notches, const QPointF& at, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        QWheelEvent event(at, view->viewport()->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(view->viewport(), &event);
    }

    double factor;
};

void addFactors()
{
    QTest::addColumn<double>("factor");
    for (const double factor : {0.25, 0.5, 1.0, 2.0, 8.0})
        QTest::addRow("%.2f", factor) << factor;
}

} // namespace

class test_kytstudioview_zoom : public QObject {
    Q_OBJECT

private slots:
    void levelsGoFromAQuarterToEight()
    {
        ViewFixture f;
        QCOMPARE(f.view->zoom(), 1.0);
        double last = 1;
        for (int i = 0; i < 20; ++i) {
            f.view->zoomBy(1, {100, 100});
            QVERIFY(f.view->zoom() > last || last == 8);
            last = f.view->zoom();
        }
        QCOMPARE(last, 8.0);
        for (int i = 0; i < 30; ++i)
            f.view->zoomBy(-1, {100, 100});
        QCOMPARE(f.view->zoom(), 0.25);
        f.view->zoomBy(5, {100, 100});
        QCOMPARE(f.view->zoom(), 1.0);
        f.view->zoomTo(1.1, {0, 0});
        f.view->zoomBy(-1, {0, 0});
        QCOMPARE(f.view->zoom(), 1.0);
        f.view->zoomTo(0.01, {0, 0});
        QCOMPARE(f.view->zoom(), 0.25);
        f.view->zoomTo(99, {0, 0});
        QCOMPARE(f.view->zoom(), 8.0);
    }

    void whatIsUnderThePointerStaysThere()
    {
        ViewFixture f;
        f.scrollTo({400, 300});
        const QPointF pointer(200, 150);
        for (const int steps : {1, 1, 2, -1, -3, 1, 5}) {
            const QPointF before = f.view->viewportTransform().inverted().map(pointer);
            f.view->zoomBy(steps, pointer);
            const QPointF after = f.view->viewportTransform().inverted().map(pointer);
            const double tolerance = 1 / f.view->zoom();
            QVERIFY(std::abs(after.x() - before.x()) <= tolerance && std::abs(after.y() - before.y()) <= tolerance);
        }
    }

    void theWheelZoomsWithControlAlone()
    {
        ZoomFixture f(1);
        f.wheel(1, {100, 100});
        QCOMPARE(f.view->zoom(), 1.25);
        f.wheel(-2, {100, 100});
        QCOMPARE(f.view->zoom(), 0.75);
        f.view->zoomTo(1, {0, 0});
        f.wheel(-1, {100, 100}, Qt::NoModifier);
        QCOMPARE(f.view->zoom(), 1.0);
        QVERIFY(f.scrolled().y() > 0);
    }

    void aFineWheelAddsUp()
    {
        ZoomFixture f(1);
        for (int i = 0; i < 8; ++i) {
            QWheelEvent event({50, 50}, {50, 50}, {}, {0, 15}, Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase,
                              false);
            QApplication::sendEvent(f.view->viewport(), &event);
            QCOMPARE(f.view->zoom(), i < 7 ? 1.0 : 1.25);
        }
    }

    void theWholeDrawingIsShown_data()
    {
        QTest::addColumn<QPointF>("to");
        QTest::newRow("small") << QPointF(1020, 1010);
        QTest::newRow("large") << QPointF(1990, 1980);
    }

    void theWholeDrawingIsShown()
    {
        QFETCH(QPointF, to);
        ViewFixture f;
        const KytAtom* first = f.atom(1000, 1000);
        const KytAtom* second = f.atom(to.x(), to.y());
        f.view->zoomToDrawing();
        for (const KytAtom* atom : {first, second}) {
            const QPointF at = f.view->viewportTransform().map(QPointF(atom->x(), atom->y()));
            QVERIFY(QRectF(f.view->viewport()->rect()).contains(at));
        }
        QVERIFY(f.view->zoom() >= 0.25 && f.view->zoom() <= 8);
    }

    void anEmptyDrawingIsNotZoomedTo()
    {
        ViewFixture f;
        f.view->zoomToDrawing();
        QCOMPARE(f.view->zoom(), 1.0);
    }

    void newAtomsAppearAtTheMappedPointer_data() { addFactors(); }

    void newAtomsAppearAtTheMappedPointer()
    {
        QFETCH(double, factor);
        ZoomFixture f(factor, KYTVS_drawSimpleBond);
        f.click(f.shown(40, 20));
        f.click(f.shown(60, 32));
        const QList<KytAtom*> atoms = f.atoms();
        QCOMPARE(atoms.size(), 2);
        QCOMPARE(QPointF(atoms[0]->x(), atoms[0]->y()), QPointF(40, 20));
        QCOMPARE(QPointF(atoms[1]->x(), atoms[1]->y()), QPointF(60, 32));
    }

    void fixedLengthIsThatOfTheCanvas_data() { addFactors(); }

    void fixedLengthIsThatOfTheCanvas()
    {
        QFETCH(double, factor);
        ZoomFixture f(factor, KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click(f.shown(20, 20));
        f.move(f.shown(60, 20));
        QCOMPARE(f.texts.last(), QString("Bond Length: 30.000  Bond Angle: 0.00"));
        f.click(f.shown(60, 20));
        QCOMPARE(f.atoms().last()->x(), 50.0);
    }

    void dragsFollowThePointer_data() { addFactors(); }

    void dragsFollowThePointer()
    {
        QFETCH(double, factor);
        ZoomFixture f(factor);
        KytAtom* atom = f.atom(40, 20);
        f.drag(f.shown(40, 20), f.shown(72, 44));
        QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(72, 44));
    }

    void zoomedOutAPointerNearAnAtomHitsIt_data()
    {
        QTest::addColumn<int>("away"); // pixels on the screen from the atom's centre
        QTest::addColumn<bool>("hits");
        QTest::newRow("two") << 2 << true;
        QTest::newRow("three") << 3 << true;
        QTest::newRow("six") << 6 << false;
    }

    void zoomedOutAPointerNearAnAtomHitsIt()
    {
        QFETCH(int, away);
        QFETCH(bool, hits);
        ZoomFixture f(0.25);
        KytAtom* atom = f.atom(400, 400);
        f.press(QPoint(100, 100) + QPoint(0, -away));
        QCOMPARE(f.view->moving == atom, hits);
        f.release(QPoint(100, 100));
    }

    void zoomedOutAtomsGoBeforeLines()
    {
        ZoomFixture f(0.25);
        const auto ends = f.chain<2>(400, 400, 400);
        f.press({99, 99});
        QCOMPARE(f.view->moving, ends[0]);
        f.release({99, 99});
        f.press({150, 99});
        QCOMPARE(f.view->moving->rtti(), int(QCanvasItem::Rtti_Line));
        f.release({150, 99});
    }

    void zoomedOutTheNearestAtomIsHit()
    {
        ZoomFixture f(0.25);
        f.atom(400, 400);
        KytAtom* nearer = f.atom(384, 400);
        f.press({97, 99});
        QCOMPARE(f.view->moving, nearer);
        f.release({97, 99});
    }

    void zoomedOutBondsFindTheirTargetNearby()
    {
        ZoomFixture f(0.25, KYTVS_drawSimpleBond);
        const auto atoms = f.row<2>(400, 400, 400);
        f.click({101, 98});
        f.click({199, 102});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(atoms[0]->isConnected(atoms[1]));
    }

    void zoomedOutAtomsMergeNearby()
    {
        ZoomFixture f(0.25);
        const auto chain = f.chain<3>(400, 400, 400);
        KytAtom* other = f.atom(400, 800);
        f.bond(other, f.atom(600, 800));
        f.drag({100, 200}, {102, 101});
        QCOMPARE(f.atoms().size(), 4);
        QVERIFY(f.isOnCanvas(chain[0]));
        QVERIFY(!f.isOnCanvas(other));
    }

    void atFullSizeNearbyIsNotHit()
    {
        ZoomFixture f(1);
        f.atom(100, 100);
        f.press({100, 94});
        QVERIFY(!f.view->moving);
        f.release({100, 94});
    }

    void aBondUnderWayFollowsWhenThePaperMoves()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({100, 100});
        f.move({200, 100});
        f.view->horizontalScrollBar()->setValue(50);
        QCOMPARE(tempBond->endPoint(), QPoint(250, 100));
        QVERIFY(f.texts.last().contains("150.000"));
        f.view->zoomTo(2, {0, 0});
        QCOMPARE(tempBond->endPoint(), QPoint((200 + f.scrolled().x()) / 2, (100 + f.scrolled().y()) / 2));
    }

    void theHighlightFollowsWhenThePaperMoves()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(250, 100);
        f.move({200, 100});
        QVERIFY(isPlain(atom));
        f.view->horizontalScrollBar()->setValue(50);
        QVERIFY(isHighlighted(atom));
    }

    void aPointerThatHasLeftIsNotFollowed()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({100, 100});
        f.move({200, 100});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(f.view->viewport(), &leave);
        f.view->horizontalScrollBar()->setValue(50);
        QCOMPARE(tempBond->endPoint(), QPoint(200, 100));
    }

    void onlyWhatChangedIsRepainted()
    {
        ZoomFixture f(2);
        KytAtom* atom = f.atom(40, 40);
        QTest::qWait(60);
        QRegion painted;
        class Watch : public QObject {
        public:
            explicit Watch(QRegion& region)
                : region(region)
            {
            }
            bool eventFilter(QObject*, QEvent* event) override
            {
                if (event->type() == QEvent::Paint)
                    region += static_cast<QPaintEvent*>(event)->region();
                return false;
            }
            QRegion& region;
        } watch(painted);
        f.view->viewport()->installEventFilter(&watch);
        atom->moveBy(10, 0);
        QTRY_VERIFY(!painted.isEmpty());
        const QRect around = painted.boundingRect();
        QVERIFY(around.contains(QPoint(80, 80)) && around.contains(QPoint(100, 80)));
        QVERIFY2(around.width() < 120 && around.height() < 100, qPrintable(QString::number(around.width())));
    }
};

QTEST_MAIN(test_kytstudioview_zoom)
#include "test_kytstudioview_zoom.moc"
