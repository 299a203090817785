#include "canvas/qcanvas.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <limits>
#include <memory>

namespace {

struct Seen {
    QString what;
    QPoint position;
    QEvent::Type type;
    Qt::MouseButton button;
    Qt::MouseButtons buttons;
    Qt::KeyboardModifiers modifiers;
};

/// A view that writes down the mouse events that reach its handlers, and how often it painted.
class RecordingView : public QCanvasView {
public:
    using QCanvasView::QCanvasView;

    void contentsMousePressEvent(QMouseEvent* event) override { note("press", event); }
    void contentsMouseMoveEvent(QMouseEvent* event) override { note("move", event); }
    void contentsMouseReleaseEvent(QMouseEvent* event) override { note("release", event); }

    QList<Seen> seen;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        QCanvasView::paintEvent(event);
    }

private:
    void note(const QString& what, QMouseEvent* event)
    {
        seen += Seen{
            what, event->position().toPoint(), event->type(), event->button(), event->buttons(), event->modifiers()};
    }
};

/// Counts the timer events of the whole application.
class TimerCounter : public QObject {
public:
    TimerCounter() { qApp->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Timer)
            ++ticks;
        return false;
    }

    int ticks = 0;
};

class PaletteForNow {
public:
    explicit PaletteForNow(const QPalette& palette) { QApplication::setPalette(palette); }
    ~PaletteForNow() { QApplication::setPalette(before); }

private:
    QPalette before = QApplication::palette();
};

QPalette darkPalette()
{
    QPalette dark(QColor(40, 40, 40), QColor(20, 20, 20));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        dark.setColor(role, Qt::white);
    return dark;
}

void showAndSettle(QCanvasView& view)
{
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QCoreApplication::processEvents();
}

/// A view of that size onto a canvas, on the screen.
class ShownView : public RecordingView {
public:
    ShownView(QCanvas& canvas, int width, int height, const QColor& background = {})
    {
        resize(width, height);
        setCanvas(&canvas);
        if (background.isValid())
            setBackgroundColor(background);
        showAndSettle(*this);
    }
};

/// Presses, moves, releases and double-clicks. Says whether the view took any of it.
bool takesTheMouse(QCanvasView& view)
{
    const QPointF at(50, 50);
    bool taken = false;
    for (const QEvent::Type type :
         {QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}) {
        QMouseEvent event(type, at, view.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        taken = QCoreApplication::sendEvent(view.viewport(), &event) || taken;
    }
    return taken;
}

QImage picture(QCanvasView& view)
{
    return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

int pixelsOf(const QImage& image, const QColor& color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixelColor(x, y) == color;
    return count;
}

QCanvasEllipse* shownEllipse(QCanvas& canvas, double x, double y, int size, const QColor& color)
{
    auto* ellipse = new QCanvasEllipse(size, size, &canvas);
    ellipse->setBrush(color);
    ellipse->move(x, y);
    ellipse->show();
    return ellipse;
}

QCanvasLine* shownLine(QCanvas& canvas, const QLine& points, int penWidth)
{
    auto* line = new QCanvasLine(&canvas);
    line->setPen(QPen(Qt::blue, penWidth));
    line->setPoints(points.x1(), points.y1(), points.x2(), points.y2());
    line->show();
    return line;
}

} // namespace

class test_qcanvasview : public QObject {
    Q_OBJECT

private slots:
    void newViewShowsNothing()
    {
        RecordingView view;
        QCOMPARE(view.canvas(), nullptr);
        QVERIFY(view.inverseWorldMatrix().isIdentity());
        view.resize(100, 80);
        showAndSettle(view);
        QVERIFY(!takesTheMouse(view));
        QVERIFY(view.seen.isEmpty());
        view.setBackgroundColor(Qt::red);
        QCOMPARE(view.backgroundColor(), QColor(Qt::red));
        QCOMPARE(picture(view).pixelColor(50, 40), QColor(Qt::red));
    }

    void startsAtTheCanvasCorner()
    {
        QCanvas canvas(2000, 2000);
        ShownView view(canvas, 450, 400);
        QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
        QCOMPARE(view.horizontalScrollBar()->value(), 0);
        QCOMPARE(view.verticalScrollBar()->value(), 0);
        QVERIFY(view.horizontalScrollBar()->maximum() > 1500);
        QTest::qWait(50);
        QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
    }

    void staysAtTheCornerWhenResized()
    {
        QCanvas canvas(2000, 2000);
        RecordingView view;
        view.setCanvas(&canvas);
        view.resize(200, 150);
        showAndSettle(view);
        for (const QSize& size : {QSize(600, 500), QSize(120, 90), QSize(900, 700), QSize(300, 300)}) {
            view.resize(size);
            QTRY_COMPARE(view.size(), size);
            QCoreApplication::processEvents();
            QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
        }
    }

    void smallCanvasLiesAtTheCorner()
    {
        QCanvas canvas(50, 40);
        ShownView view(canvas, 300, 200);
        QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
        QCOMPARE(view.mapFromScene(QPointF(0, 0)), QPoint(0, 0));
    }

    void mouseEventsArriveInCanvasCoordinates()
    {
        QCanvas canvas(2000, 2000);
        ShownView view(canvas, 300, 200);
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(20, 30));
        QTest::mouseMove(view.viewport(), QPoint(25, 36));
        QTRY_VERIFY(view.seen.size() >= 2);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(26, 37));
        QCOMPARE(view.seen.first().what, QString("press"));
        QCOMPARE(view.seen.first().position, QPoint(20, 30));
        QCOMPARE(view.seen[1].what, QString("move"));
        QCOMPARE(view.seen[1].position, QPoint(25, 36));
        QCOMPARE(view.seen.last().what, QString("release"));
        QCOMPARE(view.seen.last().position, QPoint(26, 37));
    }

    void mouseEventsArriveInCanvasCoordinatesAfterScrolling()
    {
        QCanvas canvas(2000, 2000);
        ShownView view(canvas, 300, 200);
        view.horizontalScrollBar()->setValue(150);
        view.verticalScrollBar()->setValue(1080);
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(20, 30));
        QTest::mouseMove(view.viewport(), QPoint(25, 36));
        QTRY_VERIFY(view.seen.size() >= 2);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(26, 37));
        QCOMPARE(view.seen.first().position, QPoint(170, 1110));
        QCOMPARE(view.seen[1].position, QPoint(175, 1116));
        QCOMPARE(view.seen.last().position, QPoint(176, 1117));
    }

    void buttonsAndModifiersArrive()
    {
        QCanvas canvas(500, 500);
        ShownView view(canvas, 300, 200);
        QTest::mousePress(view.viewport(), Qt::RightButton, Qt::ControlModifier, QPoint(20, 30));
        QTest::mouseRelease(view.viewport(), Qt::RightButton, Qt::ShiftModifier, QPoint(20, 30));
        QCOMPARE(view.seen.size(), 2);
        QCOMPARE(view.seen[0].type, QEvent::MouseButtonPress);
        QCOMPARE(view.seen[0].button, Qt::RightButton);
        QCOMPARE(view.seen[0].buttons, Qt::MouseButtons(Qt::RightButton));
        QCOMPARE(view.seen[0].modifiers, Qt::KeyboardModifiers(Qt::ControlModifier));
        QCOMPARE(view.seen[1].type, QEvent::MouseButtonRelease);
        QCOMPARE(view.seen[1].button, Qt::RightButton);
        QCOMPARE(view.seen[1].buttons, Qt::MouseButtons(Qt::NoButton));
        QCOMPARE(view.seen[1].modifiers, Qt::KeyboardModifiers(Qt::ShiftModifier));
    }

    void doubleClickIsAPress()
    {
        QCanvas canvas(500, 500);
        ShownView view(canvas, 300, 200);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(40, 50));
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, QPoint(40, 50));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(40, 50));
        QStringList order;
        for (const Seen& seen : view.seen)
            order += seen.what;
        QCOMPARE(order, QStringList({"press", "release", "press", "release"}));
        QCOMPARE(view.seen[2].type, QEvent::MouseButtonPress);
        QCOMPARE(view.seen[2].position, QPoint(40, 50));
        QCOMPARE(view.seen[2].button, Qt::LeftButton);
    }

    void movesArriveWithoutAButtonOnceTracked()
    {
        QCanvas canvas(500, 500);
        ShownView view(canvas, 300, 200);
        QVERIFY(!view.viewport()->hasMouseTracking());
        view.viewport()->setMouseTracking(true);
        QTest::mouseMove(view.viewport(), QPoint(60, 70));
        QTRY_VERIFY(!view.seen.isEmpty());
        QCOMPARE(view.seen.last().what, QString("move"));
        QCOMPARE(view.seen.last().position, QPoint(60, 70));
        QCOMPARE(view.seen.last().buttons, Qt::MouseButtons(Qt::NoButton));
    }

    void inverseWorldMatrixLeadsBackToTheCanvas()
    {
        QCanvas canvas(1000, 1000);
        ShownView view(canvas, 300, 200);
        QVERIFY(view.inverseWorldMatrix().isIdentity());
        view.scale(2, 4);
        view.horizontalScrollBar()->setValue(200);
        view.verticalScrollBar()->setValue(100);
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(20, 60));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(20, 60));
        QCOMPARE(view.seen.first().position, QPoint(220, 160));
        QCOMPARE(view.inverseWorldMatrix().map(view.seen.first().position), QPoint(110, 40));
    }

    void mouseDoesNotScrollOrSelect()
    {
        QCanvas canvas(2000, 2000);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 100, 100, 20, Qt::red);
        ShownView view(canvas, 300, 200);
        view.horizontalScrollBar()->setValue(50);
        const QPoint before(view.horizontalScrollBar()->value(), view.verticalScrollBar()->value());
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, QPoint(50, 100));
        QTest::mouseMove(view.viewport(), QPoint(290, 190));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, QPoint(290, 190));
        QCOMPARE(QPoint(view.horizontalScrollBar()->value(), view.verticalScrollBar()->value()), before);
        QCOMPARE(ellipse->x(), 100.0);
    }

    void wheelScrolls()
    {
        QCanvas canvas(2000, 2000);
        ShownView view(canvas, 300, 200);
        const QPointF at(50, 50);
        QWheelEvent down(at, view.viewport()->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &down);
        QVERIFY(view.verticalScrollBar()->value() > 0);
        QCOMPARE(view.horizontalScrollBar()->value(), 0);
    }

    void paintsTheKinds()
    {
        QCanvas canvas(300, 200);
        shownEllipse(canvas, 30, 30, 21, Qt::red);
        QCanvasLine* line = shownLine(canvas, QLine(0, 0, 40, 0), 4);
        line->move(60, 30);
        auto* polygon = new QCanvasPolygon(&canvas);
        polygon->setBrush(QColor(Qt::green));
        polygon->setPoints(QPolygon({QPoint(0, 0), QPoint(20, 0), QPoint(20, 20), QPoint(0, 20)}));
        polygon->move(120, 20);
        polygon->show();
        ShownView view(canvas, 300, 200);
        const QImage image = picture(view);
        QCOMPARE(image.pixelColor(30, 30), QColor(Qt::red));
        QCOMPARE(image.pixelColor(30, 21), QColor(Qt::red));
        QCOMPARE(image.pixelColor(30, 17), QColor(Qt::white));
        QCOMPARE(image.pixelColor(21, 21), QColor(Qt::white));
        QCOMPARE(image.pixelColor(80, 29), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(80, 30), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(80, 26), QColor(Qt::white));
        QCOMPARE(image.pixelColor(80, 34), QColor(Qt::white));
        QCOMPARE(pixelsOf(image, Qt::green), 400);
        QCOMPARE(image.pixelColor(120, 20), QColor(Qt::green));
        QCOMPARE(image.pixelColor(139, 39), QColor(Qt::green));
    }

    void lineOfLengthZeroIsNotPainted()
    {
        QCanvas canvas(100, 100);
        shownLine(canvas, QLine(30, 30, 30, 30), 8);
        ShownView view(canvas, 100, 100);
        QCOMPARE(pixelsOf(picture(view), Qt::white), 100 * 100);
    }

    void shapesAreAntialiased()
    {
        QCanvas canvas(100, 100);
        shownLine(canvas, QLine(10, 10, 80, 35), 2);
        ShownView view(canvas, 100, 100);
        const QImage image = picture(view);
        const int full = pixelsOf(image, Qt::blue);
        const int empty = pixelsOf(image, Qt::white);
        QVERIFY(100 * 100 - full - empty > 70);
    }

    void penOfAnEllipseIsNotPainted()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 50, 50, 20, Qt::red);
        ellipse->setPen(QPen(Qt::blue, 10));
        ShownView view(canvas, 100, 100);
        const QImage image = picture(view);
        QCOMPARE(pixelsOf(image, Qt::blue), 0);
        QCOMPARE(image.pixelColor(50, 41), QColor(Qt::red));
        QCOMPARE(image.pixelColor(50, 38), QColor(Qt::white));
    }

    void hiddenItemsAreNotPainted()
    {
        QCanvas canvas(100, 100);
        QCanvasEllipse* ellipse = shownEllipse(canvas, 50, 50, 20, Qt::red);
        ShownView view(canvas, 100, 100);
        QCOMPARE(picture(view).pixelColor(50, 50), QColor(Qt::red));
        ellipse->hide();
        QCOMPARE(pixelsOf(picture(view), Qt::white), 100 * 100);
        ellipse->show();
        QCOMPARE(picture(view).pixelColor(50, 50), QColor(Qt::red));
    }

    void paintOrderIsCollisionsOrder()
    {
        QCanvas canvas(100, 100);
        auto* oldest = new QCanvasEllipse(20, 20, nullptr);
        oldest->setBrush(Qt::red);
        oldest->move(50, 50);
        oldest->show();
        const QCanvasItemList items{shownEllipse(canvas, 50, 50, 20, Qt::green),
                                    shownEllipse(canvas, 50, 50, 20, Qt::blue),
                                    shownEllipse(canvas, 50, 50, 20, Qt::cyan)};
        ShownView view(canvas, 100, 100);
        const auto paintedIsHitFirst = [&] {
            QCoreApplication::processEvents();
            const auto* first = static_cast<QCanvasEllipse*>(canvas.collisions(QPoint(50, 50)).first());
            QCOMPARE(picture(view).pixelColor(50, 50), first->brush().color());
        };
        paintedIsHitFirst();
        oldest->setCanvas(&canvas);
        paintedIsHitFirst();
        // Peeling the pile shows each of them in turn.
        for (int left = 4; left > 1; --left) {
            QCOMPARE(canvas.collisions(QPoint(50, 50)).size(), left);
            canvas.collisions(QPoint(50, 50)).first()->hide();
            paintedIsHitFirst();
        }
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{oldest});
        for (QCanvasItem* item : items)
            item->show();
        oldest->setZ(1);
        paintedIsHitFirst();
        items[1]->setZ(1);
        paintedIsHitFirst();
        items[0]->setZ(1);
        paintedIsHitFirst();
        items[1]->setZ(0);
        items[0]->setZ(0);
        oldest->setZ(0);
        paintedIsHitFirst();
        oldest->setZ(0.25);
        paintedIsHitFirst();
        items[2]->setCanvas(nullptr);
        items[2]->setCanvas(&canvas);
        oldest->setZ(0);
        paintedIsHitFirst();
        items[1]->setCanvas(nullptr);
        items[1]->setCanvas(&canvas);
        paintedIsHitFirst();
        delete items[2];
        paintedIsHitFirst();
    }

    void paintOrderAfterThousandsHaveGone()
    {
        QCanvas canvas(100, 100);
        QCanvasItemList doomed;
        shownEllipse(canvas, 50, 50, 20, Qt::green)->setZ(-1);
        for (int i = 0; i < 3000; ++i)
            doomed += shownEllipse(canvas, 50, 50, 20, Qt::black);
        shownEllipse(canvas, 50, 50, 20, Qt::red);
        shownEllipse(canvas, 50, 50, 20, Qt::blue);
        ShownView view(canvas, 100, 100);
        qDeleteAll(doomed);
        for (const QColor& expected : {QColor(Qt::blue), QColor(Qt::red), QColor(Qt::green)}) {
            canvas.update();
            QCOMPARE(picture(view).pixelColor(50, 50), expected);
            delete canvas.collisions(QPoint(50, 50)).first();
        }
        QCOMPARE(picture(view).pixelColor(50, 50), QColor(Qt::white));
    }

    // What stands in the window's backing store is compared, so that too small a repaint shows.
    void movedItemLeavesNothingBehind()
    {
        QCanvas canvas(200, 200);
        auto* text = new QCanvasText("Wf", &canvas);
        QFont font("Helvetica", 24);
        font.setItalic(true);
        text->setFont(font);
        text->move(20.5, 20.5);
        text->show();
        QCanvasItemList items{shownEllipse(canvas, 100.3, 30.6, 21, Qt::red), text};
        QCanvasLine* line = shownLine(canvas, QLine(20, 100, 90, 120), 7);
        items += line;
        ShownView view(canvas, 200, 200);
        const auto onScreen = [&] {
            canvas.update();
            QCoreApplication::processEvents();
            const QPoint corner = view.viewport()->mapToGlobal(QPoint(0, 0));
            return view.screen()->grabWindow(0, corner.x(), corner.y(), 200, 200).toImage();
        };
        QTRY_VERIFY(onScreen().pixelColor(100, 30) == QColor(Qt::red));
        for (QCanvasItem* item : items)
            item->moveBy(30.4, 50.7);
        QTRY_VERIFY(onScreen().pixelColor(130, 81) == QColor(Qt::red));
        for (QCanvasItem* item : items)
            item->moveBy(1000, 1000);
        QTRY_COMPARE(pixelsOf(onScreen(), Qt::white), 200 * 200);
    }

    void deletedItemLeavesNothingBehind()
    {
        QCanvas canvas(200, 200);
        QCanvasLine* line = shownLine(canvas, QLine(20, 100, 90, 120), 7);
        ShownView view(canvas, 200, 200);
        const auto onScreen = [&] {
            QCoreApplication::processEvents();
            const QPoint corner = view.viewport()->mapToGlobal(QPoint(0, 0));
            return view.screen()->grabWindow(0, corner.x(), corner.y(), 200, 200).toImage();
        };
        QTRY_VERIFY(onScreen().pixelColor(55, 110) == QColor(Qt::blue));
        delete line;
        QTRY_COMPARE(pixelsOf(onScreen(), Qt::white), 200 * 200);
    }

    void textStartsAtItsTopLeftCorner()
    {
        QCanvas canvas(200, 100);
        auto* text = new QCanvasText("H", &canvas);
        const QFont font("Helvetica", 20);
        text->setFont(font);
        text->move(50, 30);
        text->show();
        ShownView view(canvas, 200, 100);
        const QImage image = picture(view);
        QImage expected(200, 100, QImage::Format_RGB32);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(QPointF(50, 30 + QFontMetrics(font).ascent()), "H");
        painter.end();
        const auto inkOf = [](const QImage& drawn) {
            QRect ink;
            for (int y = 0; y < drawn.height(); ++y)
                for (int x = 0; x < drawn.width(); ++x)
                    if (drawn.pixelColor(x, y).lightness() < 128)
                        ink |= QRect(x, y, 1, 1);
            return ink;
        };
        QVERIFY(!inkOf(expected).isEmpty());
        QCOMPARE(inkOf(image), inkOf(expected));
    }

    void labelsAreBlackAndTheCanvasWhiteUnderADarkPalette()
    {
        const PaletteForNow dark(darkPalette());
        QCanvas canvas(100, 100);
        auto* text = new QCanvasText("C", &canvas);
        text->setFont(QFont("Helvetica", 40, QFont::Bold));
        text->show();
        ShownView view(canvas, 150, 100);
        const QImage image = picture(view);
        QCOMPARE(text->color(), QColor(Qt::black));
        QVERIFY(pixelsOf(image, Qt::black) > 50);
        QCOMPARE(image.pixelColor(95, 95), QColor(Qt::white));
        QVERIFY(image.pixelColor(120, 50) != QColor(Qt::white));
    }

    void outsideOfTheCanvasHasTheViewsColour()
    {
        QCanvas canvas(50, 40);
        ShownView view(canvas, 120, 100, Qt::red);
        QImage image = picture(view);
        QCOMPARE(pixelsOf(image, Qt::white), 50 * 40);
        QCOMPARE(pixelsOf(image, Qt::red), 120 * 100 - 50 * 40);
        QCOMPARE(image.pixelColor(49, 39), QColor(Qt::white));
        QCOMPARE(image.pixelColor(50, 39), QColor(Qt::red));
        canvas.setBackgroundColor(Qt::yellow);
        view.setBackgroundColor(Qt::blue);
        image = picture(view);
        QCOMPARE(pixelsOf(image, Qt::yellow), 50 * 40);
        QCOMPARE(pixelsOf(image, Qt::blue), 120 * 100 - 50 * 40);
    }

    void itemsDoNotShowOutsideTheCanvas()
    {
        QCanvas canvas(50, 40);
        shownEllipse(canvas, 50, 20, 20, Qt::green);
        ShownView view(canvas, 120, 100, Qt::red);
        const QImage image = picture(view);
        QCOMPARE(image.pixelColor(46, 20), QColor(Qt::green));
        QCOMPARE(pixelsOf(image, Qt::red), 120 * 100 - 50 * 40);
    }

    void resizedCanvasIsPaintedInItsNewSize()
    {
        QCanvas canvas(50, 40);
        ShownView view(canvas, 120, 100, Qt::red);
        canvas.resize(70, 30);
        canvas.update();
        const auto whiteOnScreen = [&] {
            QCoreApplication::processEvents();
            const QPoint corner = view.viewport()->mapToGlobal(QPoint(0, 0));
            return pixelsOf(view.screen()->grabWindow(0, corner.x(), corner.y(), 120, 100).toImage(), Qt::white);
        };
        QTRY_COMPARE(whiteOnScreen(), 70 * 30);
        canvas.resize(1000, 30);
        canvas.update();
        QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
        QVERIFY(view.horizontalScrollBar()->maximum() > 0);
    }

    void scrollingShowsWhatIsThere()
    {
        QCanvas canvas(2000, 2000);
        shownEllipse(canvas, 500, 600, 20, Qt::red);
        shownEllipse(canvas, 40, 40, 20, Qt::green);
        ShownView view(canvas, 200, 200);
        const auto onScreen = [&] {
            QCoreApplication::processEvents();
            const QPoint corner = view.viewport()->mapToGlobal(QPoint(0, 0));
            return view.screen()->grabWindow(0, corner.x(), corner.y(), 200, 200).toImage();
        };
        QTRY_VERIFY(onScreen().pixelColor(40, 40) == QColor(Qt::green));
        view.horizontalScrollBar()->setValue(10);
        QTRY_VERIFY(onScreen().pixelColor(30, 40) == QColor(Qt::green));
        QCOMPARE(onScreen().pixelColor(45, 40), QColor(Qt::white));
        view.horizontalScrollBar()->setValue(420);
        view.verticalScrollBar()->setValue(500);
        QTRY_VERIFY(onScreen().pixelColor(80, 100) == QColor(Qt::red));
        QCOMPARE(onScreen().pixelColor(30, 40), QColor(Qt::white));
        shownEllipse(canvas, 440, 520, 10, Qt::blue);
        QTRY_VERIFY(onScreen().pixelColor(20, 20) == QColor(Qt::blue));
    }

    void hugeCoordinatesPaintNothing()
    {
        constexpr int highest = std::numeric_limits<int>::max();
        QCanvas canvas(100, 100);
        ShownView view(canvas, 100, 100);
        for (const double far : {3e9, 1e30, -1e30, std::numeric_limits<double>::max()}) {
            shownEllipse(canvas, far, 50, 20, Qt::red);
            shownEllipse(canvas, 50, far, 20, Qt::red);
            shownLine(canvas, QLine(0, 0, 50, 50), 2)->move(far, far);
        }
        shownLine(canvas, QLine(highest - 1, 10, highest, 80), 2);
        QCOMPARE(pixelsOf(picture(view), Qt::white), 100 * 100);
        shownLine(canvas, QLine(-highest, 50, highest, 50), 4);
        const QImage image = picture(view);
        QCOMPARE(image.pixelColor(20, 20), QColor(Qt::white));
        QCOMPARE(image.pixelColor(50, 80), QColor(Qt::white));
    }

    void changesOfOnePeriodArePaintedOnce()
    {
        QCanvas canvas(300, 300);
        canvas.setAdvancePeriod(3600 * 1000);
        ShownView view(canvas, 200, 200);
        canvas.update();
        QTest::qWait(100);
        view.paints = 0;
        for (int i = 0; i < 5; ++i) {
            shownEllipse(canvas, 20 + 30 * i, 50, 5, Qt::red);
            QTest::qWait(10);
        }
        QCOMPARE(view.paints, 0);
        canvas.update();
        QTRY_COMPARE(view.paints, 1);
        QTest::qWait(100);
        QCOMPARE(view.paints, 1);
    }

    void onlyTheChangedPartIsPainted()
    {
        QCanvas canvas(2000, 2000);
        QCanvasEllipse* inView = shownEllipse(canvas, 50, 50, 5, Qt::red);
        QCanvasEllipse* outOfView = shownEllipse(canvas, 1500, 1500, 5, Qt::red);
        ShownView view(canvas, 200, 200);
        canvas.update();
        QTest::qWait(100);
        view.paints = 0;
        outOfView->moveBy(3, 3);
        canvas.update();
        QTest::qWait(50);
        QCOMPARE(view.paints, 0);
        inView->moveBy(3, 3);
        canvas.update();
        QTRY_COMPARE(view.paints, 1);
    }

    void idleCanvasIsQuiet()
    {
        QCanvas canvas(2000, 2000);
        canvas.setAdvancePeriod(25);
        ShownView view(canvas, 300, 200);
        for (int i = 0; i < 100; ++i)
            shownEllipse(canvas, 10 * i, 20, 5, Qt::red);
        delete canvas.allItems().first();
        // The scene sorts its index two seconds after the last change at the latest.
        QTest::qWait(2500);
        QSignalSpy changed(&canvas, &QCanvas::changed);
        const TimerCounter counter;
        view.paints = 0;
        QTest::qWait(400);
        QCOMPARE(changed.count(), 0);
        QCOMPARE(view.paints, 0);
        QCOMPARE(counter.ticks, 0);
    }

    void canvasMayGoWhileItIsShown()
    {
        auto canvas = std::make_unique<QCanvas>(500, 500);
        shownEllipse(*canvas, 50, 50, 20, Qt::red);
        ShownView view(*canvas, 200, 200, Qt::blue);
        shownEllipse(*canvas, 90, 50, 20, Qt::red);
        canvas.reset();
        QCOMPARE(view.canvas(), nullptr);
        QTRY_COMPARE(view.viewport()->size(), view.size());
        QCOMPARE(pixelsOf(picture(view), Qt::blue), 200 * 200);
        QVERIFY(!takesTheMouse(view));
        QVERIFY(view.seen.isEmpty());
        QCoreApplication::processEvents();
        QCanvas next(500, 500);
        view.setCanvas(&next);
        QCOMPARE(view.canvas(), &next);
        QCOMPARE(picture(view).pixelColor(50, 50), QColor(Qt::white));
        QVERIFY(takesTheMouse(view));
        QCOMPARE(view.seen.size(), 4);
    }

    void canvasCanBeTakenAwayAndChanged()
    {
        QCanvas first(2000, 2000);
        QCanvas second(2000, 2000);
        shownEllipse(first, 50, 50, 20, Qt::red);
        shownEllipse(second, 50, 50, 20, Qt::green);
        ShownView view(first, 200, 200);
        view.horizontalScrollBar()->setValue(300);
        view.setCanvas(&second);
        QCOMPARE(view.canvas(), &second);
        QCOMPARE(view.mapToScene(QPoint(0, 0)), QPointF(0, 0));
        QCOMPARE(picture(view).pixelColor(50, 50), QColor(Qt::green));
        first.update();
        second.update();
        QTest::qWait(100);
        view.paints = 0;
        shownEllipse(first, 90, 90, 20, Qt::red);
        first.update();
        QTest::qWait(50);
        QCOMPARE(view.paints, 0);
        view.setCanvas(nullptr);
        QCOMPARE(view.canvas(), nullptr);
        QCOMPARE(pixelsOf(picture(view), Qt::green), 0);
        view.setCanvas(nullptr);
    }

    void oneCanvasInTwoViews()
    {
        QCanvas canvas(500, 500);
        ShownView left(canvas, 200, 200);
        ShownView right(canvas, 200, 200);
        shownEllipse(canvas, 50, 50, 20, Qt::red);
        for (ShownView* view : {&left, &right})
            QCOMPARE(picture(*view).pixelColor(50, 50), QColor(Qt::red));
    }

    void viewMayGoBeforeItsCanvas()
    {
        QCanvas canvas(500, 500);
        {
            RecordingView view;
            view.setCanvas(&canvas);
            showAndSettle(view);
        }
        QCanvasEllipse* ellipse = shownEllipse(canvas, 50, 50, 20, Qt::red);
        canvas.update();
        QCOMPARE(canvas.collisions(QPoint(50, 50)), QCanvasItemList{ellipse});
    }
};

QTEST_MAIN(test_qcanvasview)
#include "test_qcanvasview.moc"
