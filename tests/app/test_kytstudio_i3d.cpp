#include "tests/app/TestWindow.h"

#include <QColorSpace>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QtTest>

namespace {

constexpr int besideTheViewer = 1300; // pixels from the left of the screen; the viewer does not reach so far

/// A hand that works while the viewer keeps the editor waiting: runs shell commands once the viewer's window is there,
/// with its id in $viewer and the editor's in $editor.
class Hand {
public:
    Hand(const TestWindow& window, const QByteArray& commands)
    {
        hand.setProcessChannelMode(QProcess::ForwardedChannels);
        hand.start("sh",
                   {"-c",
                    "editor=" + QString::number(window->winId()) + "\n"
                        + "until viewer=$(xdotool search --onlyvisible --name '^MOLECULAR I3D VIEWER$' 2>/dev/null)\n"
                        + "do sleep 0.1; done\n" + "xdotool windowmove --sync $viewer 0 0; sleep 1\n" + commands
                        + "\nxdotool windowfocus --sync $viewer; sleep 0.2; xdotool key Escape\n"});
    }
    ~Hand() { hand.waitForFinished(); }

private:
    QProcess hand;
};

} // namespace

/// The 3D command in the editor's window, with the viewer's own window beside it.
class test_kytstudio_i3d : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<TestWindow>();
        (*window)->move(besideTheViewer, 0);
        QVERIFY(window->show());
        window->bond(window->atom(100, 100), window->atom(130, 100));
        QTest::qWait(200); // until the window manager has placed the window
    }

    void cleanup() { window.reset(); }

    void theStatusIsPaintedBeforeTheViewerOpens()
    {
        QTemporaryDir folder;
        const QString picture = folder.filePath("screen.png");
        const QStatusBar* bar = (*window)->statusBar();
        const QRect area(bar->mapToGlobal(QPoint(0, 0)), bar->size());
        {
            const Hand hand(*window, "import -silent -window root '" + picture.toUtf8() + "'");
            (*window)->slotSelectI3DView();
        }
        QImage meanwhile = QImage(picture).copy(area).convertToFormat(QImage::Format_RGB32);
        meanwhile.setColorSpace(QColorSpace()); // a picture of the screen has none
        (*window)->statusBar()->showMessage("Opening I3D View");
        QTRY_COMPARE(shownStatus(), meanwhile);
    }

    void whatIsTypedAndClickedMeanwhileIsDropped()
    {
        const StatusLog log(*window);
        {
            const Hand hand(*window,
                            "xdotool windowfocus --sync $editor\n"
                            "xdotool key ctrl+f ctrl+g ctrl+n alt+F4\n"
                            "xdotool mousemove --window $editor 200 250 click 1 click 3\n");
            (*window)->I3DView->trigger();
        }
        QTest::qWait(500);
        QCOMPARE(log.shown, QStringList({"Opening I3D View", "Ready."}));
        QVERIFY((*window)->isVisible());
        QCOMPARE((*window)->view->canvasState, KYTVS_view);
        QCOMPARE(window->atoms().size(), 2);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void theEditorIsPaintedAtOnceWhenTheViewerCloses()
    {
        {
            const Hand hand(*window, "");
            (*window)->slotSelectI3DView();
        }
        const QImage afterwards = shownStatus();
        (*window)->statusBar()->showMessage("Ready.");
        QTest::qWait(200);
        QCOMPARE(afterwards, shownStatus());
    }

    void theEditorWorksAfterwards()
    {
        {
            const Hand hand(*window, "");
            (*window)->slotSelectI3DView();
        }
        QCOMPARE(message(*window), "Ready.");
        (*window)->drawBond->trigger();
        QTest::mouseClick((*window)->view->viewport(), Qt::LeftButton, {}, QPoint(60, 60));
        QTest::mouseMove((*window)->view->viewport(), QPoint(60, 120));
        QTest::mouseClick((*window)->view->viewport(), Qt::LeftButton, {}, QPoint(60, 120));
        QCOMPARE(window->atoms().size(), 4);
    }

private:
    /// What the screen shows where the status bar is.
    QImage shownStatus() const
    {
        const QStatusBar* bar = (*window)->statusBar();
        const QRect area(bar->mapToGlobal(QPoint(0, 0)), bar->size());
        QScreen* screen = QGuiApplication::primaryScreen();
        return screen->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    std::unique_ptr<TestWindow> window;
};

QTEST_MAIN(test_kytstudio_i3d)
#include "test_kytstudio_i3d.moc"
