#include "i3d/KytI3dView.h"

#include "tests/i3d/OpenViewer.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <csignal>
#include <limits>

#ifdef KYTSTUDIO_SANITIZED
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // its header does not come with every compiler
#endif

namespace {

/// Keeps what is written to standard output while it lives.
class StandardOutput {
public:
    StandardOutput()
    {
        file.open();
        fflush(stdout);
        former = dup(STDOUT_FILENO);
        dup2(file.handle(), STDOUT_FILENO);
    }
    ~StandardOutput() { restore(); }

    QString text()
    {
        restore();
        file.seek(0);
        return QString::fromUtf8(file.readAll());
    }

private:
    void restore()
    {
        if (former < 0)
            return;
        dup2(former, STDOUT_FILENO);
        ::close(former);
        former = -1;
    }

    QTemporaryFile file;
    int former = -1;
};

/// Sets an environment variable for as long as it lives; a null value unsets it.
class Environment {
public:
    Environment(const char* name, const QByteArray& value)
        : name(name)
        , wasSet(qEnvironmentVariableIsSet(name))
        , former(qgetenv(name))
    {
        set(!value.isNull(), value);
    }
    ~Environment() { set(wasSet, former); }

private:
    void set(bool isSet, const QByteArray& value) const
    {
        if (isSet)
            qputenv(name, value);
        else
            qunsetenv(name);
    }

    const char* name;
    bool wasSet;
    QByteArray former;
};

/// An X server of its own, without the GLX extension.
class ServerWithoutGlx {
public:
    ServerWithoutGlx()
    {
        server.setStandardErrorFile(QProcess::nullDevice());
        server.start(
            "Xvfb",
            {"-displayfd", "1", "-noreset", "-screen", "0", "1600x1200x24", "-nolisten", "tcp", "-extension", "GLX"});
        while (!server.canReadLine() && server.waitForReadyRead(30000)) { }
        display = ":" + server.readLine().trimmed();
    }
    ~ServerWithoutGlx()
    {
        server.terminate();
        server.waitForFinished();
    }

    /// Waits until the server lets clients in.
    bool answers() const
    {
        const Environment environment("DISPLAY", display);
        const QDeadlineTimer deadline(30000);
        while (!deadline.hasExpired()) {
            QProcess question;
            question.start("xdotool", {"getmouselocation"});
            if (question.waitForFinished() && question.exitCode() == 0)
                return true;
            QTest::qSleep(100);
        }
        return false;
    }

    QProcess server;
    QByteArray display;
};

/// Runs a shell script beside the test, which is busy in view() meanwhile; a script that fails ends that with Escape.
class Hand {
public:
    explicit Hand(const QString& script)
    {
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start("sh", {"-c", "sh -ec \"$0\" || { xdotool key Escape; exit 1; }", script});
        process.waitForStarted();
    }
    /// Whether the script came to its end without a failure.
    bool succeeded() { return process.waitForFinished(20000) && process.exitCode() == 0; }

private:
    QProcess process;
};

constexpr auto waitForWindow =
    "until window=$(xdotool search --onlyvisible --name '^MOLECULAR I3D VIEWER$' 2>/dev/null); do sleep 0.1; done\n"
    "xdotool windowfocus --sync $window\n";

#ifdef KYTSTUDIO_SANITIZED
constexpr long tolerableGrowth = 2048 * 1024; // the sanitizer holds on to freed blocks for a while
#else
constexpr long tolerableGrowth = 200 * 1024;
#endif

long bytesInUse()
{
#ifdef KYTSTUDIO_SANITIZED
    return static_cast<long>(__sanitizer_get_current_allocated_bytes());
#else
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> pages = file.readAll().split(' ');
    const long anonymousPages = pages[1].toLong() - pages[2].toLong();
    return anonymousPages * sysconf(_SC_PAGESIZE);
#endif
}

/// What the keys change: camera, target and angles.
using Flight = std::array<double, 8>;

Flight flight(const KytI3dView& view)
{
    return {double(view.eye[0]), double(view.eye[1]), double(view.eye[2]), double(view.pos[0]),
            double(view.pos[1]), double(view.pos[2]), view.rotYAngle,      view.rotXAngle};
}

} // namespace

class test_KytI3dView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // SDL takes a repetition for a release when the two events of it arrive apart.
        Display* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
        XAutoRepeatOff(display);
        XSync(display, 0);
    }

    void aNewViewer()
    {
        QCanvas canvas(100, 100);
        const KytI3dView view(&canvas);
        QCOMPARE(view.pastTime, 0);
        QVERIFY(!view.spclkeys);
        QVERIFY(!view.rotation[0]);
        QVERIFY(!view.rotation[1]);
        QCOMPARE(view.bondsCount, 0);
        QCOMPARE(view.atomsCount, 0);
        QCOMPARE(view.totalAtomCount, 0);
        QCOMPARE(view.eye[0], 150);
        QCOMPARE(view.eye[1], 0);
        QCOMPARE(view.eye[2], 0);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(view.pos[i], 0);
            QCOMPARE(view.ambience[i], 0.1F);
            QCOMPARE(view.diffuse[i], 1.0F);
            QCOMPARE(view.specular[i], 1.0F);
            QCOMPARE(view.position[i], i == 2 ? 1.0F : 0.0F);
        }
        QCOMPARE(view.ambience[3], 0.1F);
        QCOMPARE(view.diffuse[3], 1.0F);
        QCOMPARE(view.specular[3], 1.0F);
        QCOMPARE(view.position[3], 0.0F);
        QCOMPARE(view.defaulteye, 0);
        QCOMPARE(view.rho, 20.0F);
        QCOMPARE(view.rotYAngle, 0.0F);
        QCOMPARE(view.rotXAngle, 0.0F);
        QCOMPARE(view.canvas.data(), &canvas);
        QCOMPARE(view.nFlags, 0x20000007);
    }

    void anAtomThatIsNotThereHasIndexZero()
    {
        Drawing drawing;
        KytI3dView view(drawing.canvas());
        const auto [first, second, third] = drawing.row<3>(0, 0, 10);
        view.atomsArr = {first, second, third};
        view.atomsCount = 2;
        QCOMPARE(view.getIndex(first), 0);
        QCOMPARE(view.getIndex(second), 1);
        QCOMPARE(view.getIndex(third), 0); // beyond the count
        QCOMPARE(view.getIndex(nullptr), 0);
    }

    void escapeClosesTheViewer()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        KytI3dView view(drawing.canvas());
        Hand hand(QString(waitForWindow) + "sleep 0.3; xdotool key Escape");
        view.view();
        QVERIFY(hand.succeeded());
        QCOMPARE(SDL_WasInit(0), 0U);
        QVERIFY(!view.pSDLSurface);
        QVERIFY(!view.quadratic);
    }

    void theCloseButtonClosesTheViewer()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        KytI3dView view(drawing.canvas());
        Hand hand(QString(waitForWindow) + "sleep 0.3; xdotool key alt+F4");
        view.view();
        QVERIFY(hand.succeeded());
        QCOMPARE(SDL_WasInit(0), 0U);
    }

    void aTerminationSignalClosesTheViewerAndThenArrives()
    {
        static Uint32 videoAtTheSignal;
        static int arrivedSignal;
        videoAtTheSignal = SDL_INIT_VIDEO;
        arrivedSignal = 0;
        const auto former = std::signal(SIGTERM, [](int number) {
            arrivedSignal = number;
            videoAtTheSignal = SDL_WasInit(SDL_INIT_VIDEO);
        });

        Drawing drawing;
        KytI3dView view(drawing.canvas());
        Hand hand(QString(waitForWindow) + QString("sleep 0.3; kill -TERM %1").arg(getpid()));
        view.view();
        QVERIFY(hand.succeeded());
        std::signal(SIGTERM, former);
        QCOMPARE(arrivedSignal, SIGTERM);
        QCOMPARE(videoAtTheSignal, 0U);
    }

    void theWindowCarriesTheProgramsIcon()
    {
        QPixmap small(16, 16);
        small.fill(QColor(10, 20, 30));
        QImage large(32, 24, QImage::Format_ARGB32);
        large.fill(QColor(40, 50, 60, 70));
        QIcon icon(small);
        icon.addPixmap(QPixmap::fromImage(large));
        QGuiApplication::setWindowIcon(icon);
        const Drawing drawing;
        const OpenViewer viewer(drawing);
        QGuiApplication::setWindowIcon(QIcon());

        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        QCOMPARE(SDL_GetWMInfo(&info), 1);
        Display* display = info.info.x11.display;
        Atom type = 0;
        int format = 0;
        unsigned long count = 0;
        unsigned long rest = 0;
        unsigned char* data = nullptr;
        XGetWindowProperty(display, info.info.x11.wmwindow, XInternAtom(display, "_NET_WM_ICON", 0), 0, 100000, 0,
                           AnyPropertyType, &type, &format, &count, &rest, &data);
        const auto* values = reinterpret_cast<const unsigned long*>(data);
        QCOMPARE(format, 32);
        QCOMPARE(count, 2UL + 16 * 16 + 2 + 32 * 24);
        QCOMPARE(values[0], 16UL);
        QCOMPARE(values[1], 16UL);
        QCOMPARE(values[2] & 0xffffffff, 0xff0a141eUL);
        QCOMPARE(values[2 + 16 * 16], 32UL);
        QCOMPARE(values[2 + 16 * 16 + 1], 24UL);
        QCOMPARE((values[2 + 16 * 16 + 2] & 0xffffffff) >> 24, 70UL);
        XFree(data);
    }

    void withoutAVideoDriverThereIsAMessage()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        KytI3dView view(drawing.canvas());
        QString text;
        {
            const Environment driver("SDL_VIDEODRIVER", "nonexistent");
            StandardOutput output;
            view.view();
            text = output.text();
        }
        QVERIFY2(QRegularExpression("^SDL_GetVideoInfo\\(\\) failed. SDL Error: [^\n]+\n$").match(text).hasMatch(),
                 qPrintable(text));
        QCOMPARE(SDL_WasInit(0), 0U);
        QVERIFY(!view.pSDLVideoInfo);

        OpenViewer later(drawing); // everything still works
        QVERIFY(later.hasFocus());
    }

    void withoutGlxThereIsAMessage()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        KytI3dView view(drawing.canvas());
        const ServerWithoutGlx server;
        QVERIFY(server.answers());
        QString text;
        {
            const Environment display("DISPLAY", server.display);
            StandardOutput output;
            view.view();
            text = output.text();
        }
        QVERIFY2(
            QRegularExpression("^Call to SDL_SetVideoMode\\(\\) failed! - SDL_Error: [^\n]+\n$").match(text).hasMatch(),
            qPrintable(text));
        QCOMPARE(SDL_WasInit(0), 0U);
        QVERIFY(!view.pSDLSurface);

        OpenViewer later(drawing);
        QVERIFY(later.hasFocus());
    }

    void theVideoDriverIsX11UnlessChosen()
    {
        Drawing drawing;
        {
            const Environment driver("SDL_VIDEODRIVER", QByteArray());
            const OpenViewer viewer(drawing);
            QVERIFY(viewer.opened);
            QCOMPARE(qgetenv("SDL_VIDEODRIVER"), QByteArray("x11"));
        }
        const Environment driver("SDL_VIDEODRIVER", "nonexistent");
        StandardOutput output;
        KytI3dView view(drawing.canvas());
        view.view();
        output.text();
        QCOMPARE(qgetenv("SDL_VIDEODRIVER"), QByteArray("nonexistent"));
    }

    void xErrorsAreHandledAsBeforeAfterTwoOpenings()
    {
        static int errors;
        errors = 0;
        const XErrorHandler former = XSetErrorHandler([](Display*, XErrorEvent*) { return ++errors; });
        Drawing drawing;
        KytI3dView view(drawing.canvas());
        for (int i = 0; i < 2; ++i) {
            Hand hand(QString(waitForWindow) + "sleep 0.3; xdotool key Escape");
            view.view();
            QVERIFY(hand.succeeded());
        }
        Display* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
        constexpr XID noWindow = 1;
        XMapWindow(display, noWindow);
        XSync(display, 0);
        XSetErrorHandler(former);
        QCOMPARE(errors, 1);
    }

    void aHeldKeyActsOnceAFrame_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QList<double>>("change"); // eye, pos, rotYAngle, rotXAngle

        QTest::newRow("up") << "Up" << QList<double>{0, 0, 1, 0, 0, 1, 0, 0};
        QTest::newRow("down") << "Down" << QList<double>{0, 0, -1, 0, 0, -1, 0, 0};
        QTest::newRow("left") << "Left" << QList<double>{0, -1, 0, 0, -1, 0, 0, 0};
        QTest::newRow("right") << "Right" << QList<double>{0, 1, 0, 0, 1, 0, 0, 0};
        QTest::newRow("a") << "a" << QList<double>{0, 0, 0, 0, -1, 0, 0, 0};
        QTest::newRow("d") << "d" << QList<double>{0, 0, 0, 0, 1, 0, 0, 0};
        QTest::newRow("w") << "w" << QList<double>{-1, 0, 0, 0, 0, 0, 0, 0};
        QTest::newRow("s") << "s" << QList<double>{1, 0, 0, 0, 0, 0, 0, 0};
        QTest::newRow("x") << "x" << QList<double>{0, 0, 0, 0, 0, 0, 0.5, 0};
        QTest::newRow("z") << "z" << QList<double>{0, 0, 0, 0, 0, 0, -0.5, 0};
        QTest::newRow("e") << "e" << QList<double>{0, 0, 0, 0, 0, 0, 0, 0.3};
        QTest::newRow("q") << "q" << QList<double>{0, 0, 0, 0, 0, 0, 0, -0.3};
    }

    void aHeldKeyActsOnceAFrame()
    {
        QFETCH(QString, key);
        QFETCH(QList<double>, change);

        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        QVERIFY(viewer.hasFocus());
        viewer.settle();
        const Flight start = flight(viewer.view);
        viewer.press(key);
        QVERIFY(viewer.stepUntil([&] { return flight(viewer.view) != start; }));
        constexpr int frames = 12;
        for (int frame = 1; frame < frames; ++frame)
            viewer.step();
        Flight now = flight(viewer.view);
        for (int i = 0; i < 8; ++i)
            QVERIFY2(std::fabs(now[i] - start[i] - frames * change[i]) < 1e-5,
                     qPrintable(QString("%1: %2 to %3").arg(i).arg(start[i]).arg(now[i])));

        viewer.release(key);
        now = flight(viewer.view);
        for (int frame = 0; frame < frames; ++frame)
            viewer.step();
        QCOMPARE(flight(viewer.view), now);
        QVERIFY(!viewer.closed);
    }

    void otherKeysDoNothing()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        const Flight start = flight(viewer.view);
        for (const QString key : {"b", "Return", "F1", "1", "space"}) {
            viewer.press(key);
            QVERIFY(viewer.stepUntil([] { return OpenViewer::anyKeyDown(); }));
            viewer.step();
            viewer.release(key);
        }
        QCOMPARE(flight(viewer.view), start);
        QVERIFY(!viewer.closed);
        QVERIFY(!viewer.view.rotation[0] && !viewer.view.rotation[1] && !viewer.view.spclkeys);
    }

    void theCameraStopsAtTheEndOfItsRange()
    {
        constexpr int highest = std::numeric_limits<int>::max();
        constexpr int lowest = std::numeric_limits<int>::min();
        KytI3dView view(nullptr);
        SDL_keysym key = {};
        view.eye[0] = highest;
        key.sym = SDLK_s;
        QVERIFY(!view.HandleKeyboard(&key));
        QCOMPARE(view.eye[0], highest);
        view.eye[1] = view.pos[1] = lowest;
        key.sym = SDLK_LEFT;
        QVERIFY(!view.HandleKeyboard(&key));
        QCOMPARE(view.eye[1], lowest);
        QCOMPARE(view.pos[1], lowest);
    }

    void rotationTogglesAtMostEvery300Milliseconds_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("which");
        QTest::newRow("r") << "r" << 0;
        QTest::newRow("t") << "t" << 1;
    }

    void rotationTogglesAtMostEvery300Milliseconds()
    {
        QFETCH(QString, key);
        QFETCH(int, which);

        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        viewer.press(key);
        bool spins = false;
        QList<Uint32> toggles;
        QVERIFY(viewer.stepUntil([&] {
            if (viewer.view.rotation[which] != spins) {
                spins = !spins;
                toggles.append(SDL_GetTicks());
            }
            return toggles.size() == 4;
        }));
        QVERIFY(!viewer.view.rotation[1 - which]);
        // The stamps are taken a frame after the key acted; over three pauses that makes up for a late first one.
        QVERIFY2(toggles[3] - toggles[0] >= 600, qPrintable(QString::number(toggles[3] - toggles[0])));
        viewer.release(key);
    }

    void theToggleKeysShareOneTimer()
    {
        Drawing drawing;
        OpenViewer viewer(drawing);
        SDL_keysym r = {};
        r.sym = SDLK_r;
        SDL_keysym t = {};
        t.sym = SDLK_t;
        SDL_Delay(301);
        const Uint32 before = SDL_GetTicks();
        viewer.view.HandleKeyboard(&r);
        QVERIFY(viewer.view.rotation[0]);
        viewer.view.HandleKeyboard(&t);
        if (SDL_GetTicks() - before < 300)
            QVERIFY(!viewer.view.rotation[1]);
        SDL_Delay(301);
        viewer.view.HandleKeyboard(&t);
        QVERIFY(viewer.view.rotation[1]);
    }

    void fullScreenToggles()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        const auto isFullScreen = [&] { return (viewer.view.pSDLSurface->flags & SDL_FULLSCREEN) != 0; };
        QVERIFY(!isFullScreen());
        SDL_Delay(301);
        viewer.press("f");
        QVERIFY(viewer.stepUntil(isFullScreen));
        viewer.release("f");
        const bool before = isFullScreen(); // a late release may have switched back already
        SDL_Delay(301);
        viewer.press("f");
        QVERIFY(viewer.stepUntil([&] { return isFullScreen() != before; }));
        viewer.release("f");
    }

    void theModelSpinsByTheClock()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        viewer.view.rotation[0] = true;
        viewer.view.rotation[1] = true;
        const Uint32 start = SDL_GetTicks();
        viewer.step(); // makes up for the time since the last spin
        viewer.view.rotYAngle = 0;
        viewer.view.rotXAngle = 0;
        for (int frame = 0; frame < 20; ++frame) {
            SDL_Delay(10);
            viewer.step();
        }
        const Uint32 end = SDL_GetTicks();
        const double elapsed = viewer.view.rotYAngle / 0.05;
        QVERIFY(elapsed >= 100); // what passes between the two looks at the clock in a frame is lost
        QVERIFY(elapsed <= end - start + 1);
        NEAR(viewer.view.rotXAngle, viewer.view.rotYAngle * 0.6, 0.01);

        viewer.view.rotation[0] = false;
        const float stopped = viewer.view.rotYAngle;
        viewer.step();
        QCOMPARE(viewer.view.rotYAngle, stopped);
        viewer.view.rotation[1] = false;
        SDL_Delay(200);
        const float before = viewer.view.rotXAngle;
        viewer.step();
        QCOMPARE(viewer.view.rotXAngle, before);
        viewer.view.rotation[1] = true;
        viewer.step(); // the pause is made up for in one jump
        QVERIFY(viewer.view.rotXAngle >= before + 200 * 0.03F);
    }

    void theModelSpinsAboutTheCentroid()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        viewer.view.pos[1] += 100;
        viewer.view.eye[1] += 100;
        viewer.view.rotation[1] = true;
        viewer.view.rotYAngle = 90;
        const Spot disc(viewer.picture());
        const double shift = -100 * pixelsPerUnit;
        NEAR(disc.middle.x(), pictureCentre.x() + shift, 3);
        NEAR(disc.middle.y(), pictureCentre.y(), 3);
    }

    void byHandTheModelTurnsAboutTheTarget()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        viewer.view.pos[1] += 100;
        viewer.view.eye[1] += 100;
        viewer.view.rotYAngle = 180;
        const Spot disc(viewer.picture());
        NEAR(disc.middle.x(), pictureCentre.x() + 100 * pixelsPerUnit, 3);
    }

    void theViewIsReset()
    {
        Drawing drawing;
        drawing.atom(1040, 930, 12);
        OpenViewer viewer(drawing);
        const Flight start = flight(viewer.view);
        viewer.view.eye[0] += 5;
        viewer.view.eye[1] -= 6;
        viewer.view.eye[2] += 7;
        viewer.view.pos[0] -= 8;
        viewer.view.pos[1] += 9;
        viewer.view.pos[2] -= 10;
        viewer.view.rotXAngle = 11;
        viewer.view.rotYAngle = 12;
        viewer.press("o");
        QVERIFY(viewer.stepUntil([&] { return flight(viewer.view) == start; }));
        viewer.release("o");

        viewer.view.rotation[0] = true;
        SDL_keysym key = {};
        key.sym = SDLK_o;
        viewer.view.HandleKeyboard(&key);
        QVERIFY(viewer.view.rotation[0]);
        QVERIFY(!viewer.view.rotation[1]);
    }

    void shiftIsRemembered()
    {
        for (const QString key : {"Shift_L", "Shift_R"}) {
            Drawing drawing;
            OpenViewer viewer(drawing);
            viewer.press(key);
            QVERIFY(viewer.stepUntil([&] { return viewer.view.spclkeys; }));
            viewer.release(key);
            QVERIFY(viewer.view.spclkeys);
        }
    }

    void pointerMotionDoesNotInterruptAHeldKey()
    {
        Drawing drawing;
        drawing.atom(1000, 1000);
        OpenViewer viewer(drawing);
        QVERIFY(viewer.hasFocus());
        type({"mousemove", "700", "500"});
        for (int frame = 0; frame < 20; ++frame)
            viewer.step();
        viewer.press("Up");
        const int before = viewer.view.eye[2];
        QVERIFY(viewer.stepUntil([&] { return viewer.view.eye[2] != before; }));
        const int start = viewer.view.eye[2];
        for (int frame = 1; frame <= 20; ++frame) {
            type({"mousemove_relative", "--", frame % 2 ? "5" : "-5", "3"});
            viewer.step();
            QCOMPARE(viewer.view.eye[2], start + frame);
        }
    }

    void anglesAndSpinOutliveTheWindow()
    {
        Drawing drawing;
        KytAtom* atom = drawing.atom(1000, 1000);
        KytI3dView view(drawing.canvas());
        QVERIFY(view.open());
        view.rotXAngle = 30;
        view.rotYAngle = 40;
        view.eye[0] = 77;
        view.rotation[0] = true;
        view.close();

        atom->move(1010, 980);
        QVERIFY(view.open());
        QCOMPARE(view.rotXAngle, 30.0F);
        QCOMPARE(view.rotYAngle, 40.0F);
        QVERIFY(view.rotation[0]);
        QCOMPARE(view.totalAtomCount, 1);
        QCOMPARE(view.eye[0], 200);
        QCOMPARE(view.pos[1], 10);
        QCOMPARE(view.pos[2], 20);
        view.close();
    }

    void memoryStaysTheSameOverTwentyOpenings()
    {
        Drawing drawing;
        drawing.bond(drawing.atom(1000, 1000), drawing.atom(1100, 1000));
        KytI3dView view(drawing.canvas());
        long afterTheSixth = 0;
        for (int opening = 1; opening <= 20; ++opening) {
            QVERIFY(view.open());
            for (int frame = 0; frame < 5; ++frame)
                view.step();
            view.close();
            if (opening == 6)
                afterTheSixth = bytesInUse();
        }
        const long growth = bytesInUse() - afterTheSixth;
        QVERIFY2(afterTheSixth > 0 && growth < tolerableGrowth, qPrintable(QString("%1 bytes").arg(growth)));
    }
};

QTEST_MAIN(test_KytI3dView)
#include "test_KytI3dView.moc"
