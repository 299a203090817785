#include "app/PendingInput.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QShortcut>
#include <QStyleHints>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {

/// A window that notes the input that it is given.
class NotingWindow : public QWidget {
public:
    NotingWindow()
    {
        setWindowTitle("Pending input");
        resize(300, 200);
        setMouseTracking(true);
        setFocusPolicy(Qt::StrongFocus);
        auto* shortcut = new QShortcut(QKeySequence("Ctrl+F"), this);
        connect(shortcut, &QShortcut::activated, this, [this] { noted.append("shortcut"); });
    }

    QStringList noted;
    int paints = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { noted.append("press"); }
    void mouseDoubleClickEvent(QMouseEvent*) override { noted.append("press"); }
    void mouseReleaseEvent(QMouseEvent*) override { noted.append("release"); }
    void mouseMoveEvent(QMouseEvent*) override { noted.append("move"); }
    void wheelEvent(QWheelEvent*) override { noted.append("wheel"); }
    void contextMenuEvent(QContextMenuEvent*) override { noted.append("menu"); }
    void keyPressEvent(QKeyEvent*) override { noted.append("key"); }
    void keyReleaseEvent(QKeyEvent*) override { noted.append("key released"); }
    void closeEvent(QCloseEvent* event) override
    {
        noted.append("close");
        event->ignore();
    }

    void paintEvent(QPaintEvent*) override { ++paints; }
};

/// Moves the pointer and the keys like a hand; the program does nothing until that is over and the window manager,
/// which takes presses first, has handed them on.
void type(const QStringList& arguments)
{
    QCOMPARE(QProcess::execute("xdotool", arguments), 0);
    QTest::qSleep(150);
}

} // namespace

class test_PendingInput : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<NotingWindow>();
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get(), 30000));
        moveTo(20, 20);
        QTest::qWait(200); // until the window has its place, and the pointer is known to be in it
        window->noted.clear();
    }

    void cleanup() { window.reset(); }

    void whatTheHandDoesIsNoted()
    {
        clickAt(40, 50);
        QTRY_VERIFY(window->noted.contains("press") && window->noted.contains("release"));
        type({"key", "b"});
        QTRY_VERIFY(window->noted.contains("key"));
        type({"key", "ctrl+f"});
        QTRY_VERIFY(window->noted.contains("shortcut"));
        type({"key", "alt+F4"});
        QTRY_VERIFY(window->noted.contains("close"));
    }

    void clicksAreDropped()
    {
        clickAt(40, 50);
        clickAt(60, 80);
        clickAt(60, 90, "3");
        clickAt(60, 90, "4"); // the wheel
        dropPendingInput();
        QTest::qWait(100);
        QCOMPARE(window->noted, QStringList());
    }

    void keysAreDropped()
    {
        type({"key", "b", "Return", "Escape"});
        dropPendingInput();
        QTest::qWait(100);
        QCOMPARE(window->noted, QStringList());
    }

    void shortcutsAreDropped()
    {
        type({"key", "ctrl+f"});
        dropPendingInput();
        QTest::qWait(100);
        QCOMPARE(window->noted, QStringList());
    }

    void theRequestToCloseIsDropped()
    {
        type({"key", "alt+F4"});
        QTest::qSleep(500); // the window manager has to pass it on
        dropPendingInput();
        QTest::qWait(100);
        QVERIFY(!window->noted.contains("close"));
        QVERIFY(window->isVisible());
    }

    // As at the end of a session. Windows are closed before the program quits, which they can refuse.
    void theProgramCanQuitMeanwhile()
    {
        QTimer::singleShot(0, this, [] {
            QEvent quit(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &quit);
        });
        dropPendingInput();
        QCOMPARE(window->noted, QStringList{"close"});
    }

    void inputAfterwardsIsActedOn()
    {
        clickAt(40, 50);
        type({"key", "ctrl+f"});
        dropPendingInput();
        QCOMPARE(window->noted, QStringList());
        QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
        clickAt(70, 50);
        QTRY_COMPARE(window->noted.count("press"), 1);
        QTRY_COMPARE(window->noted.count("release"), 1);
        type({"key", "ctrl+f"});
        QTRY_COMPARE(window->noted.count("shortcut"), 1);
        type({"key", "alt+F4"});
        QTRY_COMPARE(window->noted.count("close"), 1);
    }

    void aButtonHeldSinceThenStaysWithoutEffectUntilItsRelease()
    {
        moveTo(40, 50);
        type({"mousedown", "1"});
        QTest::qSleep(500); // the window manager sees a press first, and has to let it through
        dropPendingInput();
        moveTo(80, 90);
        QTest::qWait(100);
        type({"mouseup", "1"});
        QTest::qWait(100);
        QCOMPARE(window->noted, QStringList());

        moveTo(30, 30);
        QTRY_VERIFY(window->noted.contains("move"));
        QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
        type({"click", "1"});
        QTRY_COMPARE(window->noted.count("press"), 1);
        QTRY_COMPARE(window->noted.count("release"), 1);
    }

    void theReleaseOfAnEarlierPressIsDelivered()
    {
        moveTo(40, 50);
        type({"mousedown", "1"});
        QTRY_COMPARE(window->noted.count("press"), 1);
        type({"mouseup", "1"});
        clickAt(60, 60);
        dropPendingInput();
        QTest::qWait(100);
        QCOMPARE(window->noted.count("press"), 1);
        QCOMPARE(window->noted.count("release"), 1);
    }

    void repaintsAreDealtWith()
    {
        window->paints = 0;
        window->update();
        clickAt(40, 50);
        dropPendingInput();
        QVERIFY(window->paints > 0);
    }

    void withoutAnyInputNothingHappens()
    {
        dropPendingInput();
        dropPendingInput();
        QCOMPARE(window->noted, QStringList());
    }

private:
    void clickAt(int x, int y, const QString& button = "1")
    {
        moveTo(x, y);
        type({"click", button});
    }

    void moveTo(int x, int y)
    {
        const QPoint place = window->mapToGlobal(QPoint(x, y));
        type({"mousemove", QString::number(place.x()), QString::number(place.y())});
    }

    std::unique_ptr<NotingWindow> window;
};

QTEST_MAIN(test_PendingInput)
#include "test_PendingInput.moc"
