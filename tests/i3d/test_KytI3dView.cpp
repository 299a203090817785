#include "i3d/KytI3dView.h"

#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "doc/kytstudiodoc.h"
#include "i3d/SceneGeometry.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <QtTest>

#include <fcntl.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <csignal>
#include <functional>
#include <limits>
#include <memory>
#include <numbers>

// Last: the X headers that it brings define common words as macros.
#include <SDL_syswm.h>
#undef None
#undef Bool
#undef Status

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/allocator_interface.h>
#endif

namespace {

// The picture is 1280 x 1024 pixels at the lower left of the window.
constexpr QSize windowSize(1285, 1029);
constexpr QPoint pictureCentre(640, 517);
constexpr double startDistance = 200;
const double pixelsPerTangent = 512 / std::tan(50 * std::numbers::pi / 180);
const double pixelsPerUnit = pixelsPerTangent / startDistance; // in the plane of the frontmost atom

/// A document with a canvas, and short ways to draw on it.
struct Drawing {
    Drawing() { document.newDoc(); }
    ~Drawing() { delete document.canvas; }

    KytAtom* atom(double x, double y, float z = 0, const QStringList& colour = {"255", "0", "0"})
    {
        auto* made = new KytAtom(document.canvas, "C", z, false);
        made->move(x, y);
        made->show();
        for (int i = 0; i < 3; ++i)
            made->_atomColor[i] = colour[i];
        made->setMolecule(new KytMolecule);
        return made;
    }

    KytBond* bond(KytAtom* from, KytAtom* to, const QList<KytBondType>& kinds = {KYTBT_SingleBond}, float angle = 60)
    {
        auto* made = new KytBond(from, to, &document);
        for (const KytBondType kind : kinds)
            made->addBond(kind, angle);
        to->setMolecule(from->getMolecule());
        return made;
    }

    KytStudioDoc document;
};

void type(const QStringList& arguments)
{
    QCOMPARE(QProcess::execute("xdotool", arguments), 0);
}

/// The viewer, open on a drawing, run frame by frame.
class OpenViewer {
public:
    explicit OpenViewer(const Drawing& drawing)
        : view(drawing.document.canvas)
    {
        opened = view.open();
        for (int i = 0; opened && i < 1000 && !(SDL_GetAppState() & SDL_APPINPUTFOCUS); ++i)
            step();
    }
    ~OpenViewer()
    {
        for (const QString& key : std::as_const(heldKeys))
            type({"keyup", key});
        if (opened)
            view.close();
    }

    bool hasFocus() const { return opened && (SDL_GetAppState() & SDL_APPINPUTFOCUS); }

    void step() { closed = view.step() || closed; }

    /// Runs the viewer until `condition` holds; false when it does not within a few seconds' worth of frames.
    bool stepUntil(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(20000);
        while (!condition() && !deadline.hasExpired())
            step();
        return condition();
    }

    void press(const QString& key)
    {
        heldKeys.append(key);
        type({"keydown", key});
    }
    /// Releases the key and lets the viewer learn of it.
    void release(const QString& key)
    {
        heldKeys.removeAll(key);
        type({"keyup", key});
        stepUntil([] { return SDL_GetKeyState(nullptr) && !anyKeyDown(); });
        step();
    }

    /// What the window shows on the screen.
    QImage picture()
    {
        step();
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        if (SDL_GetWMInfo(&info) != 1)
            return {};
        const WId window = info.info.x11.window;
        return QGuiApplication::primaryScreen()->grabWindow(window).toImage().convertToFormat(QImage::Format_RGB32);
    }

    KytI3dView view;
    bool opened = false;
    bool closed = false;

private:
    static bool anyKeyDown()
    {
        int keys = 0;
        const Uint8* down = SDL_GetKeyState(&keys);
        return std::any_of(down, down + keys, [](Uint8 isDown) { return isDown != 0; });
    }

    QStringList heldKeys;
};

bool isBlack(QRgb pixel)
{
    return (pixel & 0xffffff) == 0;
}

bool isReddish(QRgb pixel)
{
    return qRed(pixel) > 40 && qRed(pixel) > 2 * qGreen(pixel) && qRed(pixel) > 2 * qBlue(pixel);
}

bool isBluish(QRgb pixel)
{
    return qBlue(pixel) > 40 && qBlue(pixel) > 2 * qGreen(pixel) && qBlue(pixel) > 2 * qRed(pixel);
}

/// The pixels of `area` that are not black: how many, their middle and their bounds.
struct Spot {
    Spot(const QImage& picture, const QRect& area)
    {
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (!isBlack(picture.pixel(x, y))) {
                    ++count;
                    middle += QPointF(x + 0.5, y + 0.5);
                    bounds |= QRect(x, y, 1, 1);
                }
        if (count > 0)
            middle /= count;
    }
    explicit Spot(const QImage& picture)
        : Spot(picture, picture.rect())
    {
    }

    double radius() const { return std::sqrt(count / std::numbers::pi); }

    int count = 0;
    QPointF middle;
    QRect bounds;
};

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
        server.start("Xvfb",
                     {"-displayfd", "1", "-screen", "0", "1600x1200x24", "-nolisten", "tcp", "-extension", "GLX"});
        while (!server.canReadLine() && server.waitForReadyRead(20000)) { }
        const QByteArray number = server.readLine().trimmed();
        if (!number.isEmpty())
            display = ":" + number;
    }
    ~ServerWithoutGlx()
    {
        server.terminate();
        server.waitForFinished();
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

long bytesInUse()
{
#if defined(__SANITIZE_ADDRESS__)
    return static_cast<long>(__sanitizer_get_current_allocated_bytes());
#else
    malloc_trim(0);
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> pages = file.readAll().split(' ');
    const long anonymousPages = pages[1].toLong() - pages[2].toLong();
    return anonymousPages * sysconf(_SC_PAGESIZE);
#endif
}

} // namespace

class test_KytI3dView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();

    void aNewViewer();
    void anAtomThatIsNotThereHasIndexZero();

    void escapeClosesTheViewer();
    void theCloseButtonClosesTheViewer();
    void aTerminationSignalClosesTheViewerAndThenArrives();
    void withoutAVideoDriverThereIsAMessage();
    void withoutGlxThereIsAMessage();
    void theVideoDriverIsX11UnlessChosen();
    void xErrorsAreHandledAsBeforeAfterTwoOpenings();

    void anEmptyCanvasIsABlackWindow();
    void anAtomIsALitRedDisc();
    void anAtomHasItsOwnColour_data();
    void anAtomHasItsOwnColour();
    void atomsLieAsOnTheCanvas();
    void anAtomInFrontHidesTheOneBehind();
    void aSingleBondIsABlueStickBetweenTwoSpheres();
    void eachLineOfABondIsAStick_data();
    void eachLineOfABondIsAStick();
    void aStickReachesAnAtomThatLiesDeeper();
    void aWedgeIsAsLongAsItsAngleSays_data();
    void aWedgeIsAsLongAsItsAngleSays();
    void aBondLineThatIsNotThereDrawsNothing();
    void twoMoleculesAreBothDrawnOnce();
    void countsAreThoseOfTheMolecule();
    void theCameraStandsInFrontOfTheFrontmostAtom();
    void theCameraStandsInFrontOfThePlaneWhenAllAtomsLieBehindIt();
    void sumsOfFarAwayAtomsSaturate();
    void onePictureWithOneSphereForAllAtoms();
    void theSceneIsThatOfTheOpening();

    void aHeldKeyActsOnceAFrame_data();
    void aHeldKeyActsOnceAFrame();
    void otherKeysDoNothing();
    void theCameraStopsAtTheEndOfItsRange();
    void rotationTogglesAtMostEvery300Milliseconds_data();
    void rotationTogglesAtMostEvery300Milliseconds();
    void theToggleKeysShareOneTimer();
    void fullScreenToggles();
    void theModelSpinsByTheClock();
    void theModelSpinsAboutTheCentroid();
    void byHandTheModelTurnsAboutTheTarget();
    void theViewIsReset();
    void shiftIsRemembered();
    void pointerMotionDoesNotInterruptAHeldKey();
    void anglesAndSpinOutliveTheWindow();

    void memoryStaysTheSameOverTwentyOpenings();
};

void test_KytI3dView::initTestCase()
{
    // SDL waits for ever for a window that is shown while a window manager starts.
    const auto windowManagerRuns = [] {
        QProcess question;
        question.start("xdotool", {"get_num_desktops"});
        return question.waitForFinished() && question.exitCode() == 0;
    };
    QTRY_VERIFY_WITH_TIMEOUT(windowManagerRuns(), 30000);
}

void test_KytI3dView::aNewViewer()
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

void test_KytI3dView::anAtomThatIsNotThereHasIndexZero()
{
    Drawing drawing;
    KytI3dView view(drawing.document.canvas);
    KytAtom* first = drawing.atom(0, 0);
    KytAtom* second = drawing.atom(10, 0);
    KytAtom* third = drawing.atom(20, 0);
    view.atomsArr = {first, second, third};
    view.atomsCount = 2;
    QCOMPARE(view.getIndex(first), 0);
    QCOMPARE(view.getIndex(second), 1);
    QCOMPARE(view.getIndex(third), 0); // beyond the count
    QCOMPARE(view.getIndex(nullptr), 0);
}

void test_KytI3dView::escapeClosesTheViewer()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    KytI3dView view(drawing.document.canvas);
    Hand hand(QString(waitForWindow) + "sleep 0.3; xdotool key Escape");
    view.view();
    QVERIFY(hand.succeeded());
    QCOMPARE(SDL_WasInit(0), 0U);
    QVERIFY(!view.pSDLSurface);
    QVERIFY(!view.quadratic);
}

void test_KytI3dView::theCloseButtonClosesTheViewer()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    KytI3dView view(drawing.document.canvas);
    Hand hand(QString(waitForWindow) + "sleep 0.3; xdotool key alt+F4");
    view.view();
    QVERIFY(hand.succeeded());
    QCOMPARE(SDL_WasInit(0), 0U);
}

void test_KytI3dView::aTerminationSignalClosesTheViewerAndThenArrives()
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
    KytI3dView view(drawing.document.canvas);
    Hand hand(QString(waitForWindow) + QString("sleep 0.3; kill -TERM %1").arg(getpid()));
    view.view();
    QVERIFY(hand.succeeded());
    std::signal(SIGTERM, former);
    QCOMPARE(arrivedSignal, SIGTERM);
    QCOMPARE(videoAtTheSignal, 0U);
}

void test_KytI3dView::withoutAVideoDriverThereIsAMessage()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    KytI3dView view(drawing.document.canvas);
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

void test_KytI3dView::withoutGlxThereIsAMessage()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    KytI3dView view(drawing.document.canvas);
    const ServerWithoutGlx server;
    QVERIFY(!server.display.isEmpty());
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

void test_KytI3dView::theVideoDriverIsX11UnlessChosen()
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
    KytI3dView view(drawing.document.canvas);
    view.view();
    output.text();
    QCOMPARE(qgetenv("SDL_VIDEODRIVER"), QByteArray("nonexistent"));
}

void test_KytI3dView::xErrorsAreHandledAsBeforeAfterTwoOpenings()
{
    static int errors;
    errors = 0;
    const XErrorHandler former = XSetErrorHandler([](Display*, XErrorEvent*) { return ++errors; });
    Drawing drawing;
    KytI3dView view(drawing.document.canvas);
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

void test_KytI3dView::anEmptyCanvasIsABlackWindow()
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

void test_KytI3dView::anAtomIsALitRedDisc()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    const QImage picture = viewer.picture();
    QCOMPARE(picture.size(), windowSize);

    const Spot disc(picture);
    const double radius = pixelsPerTangent * std::tan(std::asin(8 / startDistance));
    QVERIFY2(std::fabs(disc.radius() - radius) < 0.7, qPrintable(QString::number(disc.radius())));
    QVERIFY(std::fabs(disc.middle.x() - pictureCentre.x()) < 1.5);
    QVERIFY(std::fabs(disc.middle.y() - pictureCentre.y()) < 1.5);
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

void test_KytI3dView::anAtomHasItsOwnColour_data()
{
    QTest::addColumn<QStringList>("colour");
    QTest::addColumn<QStringList>("sameAs");

    QTest::newRow("green") << QStringList{"0", "255", "0"} << QStringList();
    QTest::newRow("no number is 0") << QStringList{"red", "255", ""} << QStringList{"0", "255", "0"};
    QTest::newRow("the number that a text starts with")
        << QStringList{" 12x", "200.9", "+30"} << QStringList{"12", "200", "30"};
}

void test_KytI3dView::anAtomHasItsOwnColour()
{
    QFETCH(QStringList, colour);
    QFETCH(QStringList, sameAs);
    if (sameAs.isEmpty())
        sameAs = colour;

    Drawing drawing;
    drawing.atom(1000, 1000, 0, colour);
    Drawing other;
    other.atom(1000, 1000, 0, sameAs);
    const QImage picture = OpenViewer(drawing).picture();
    QCOMPARE(OpenViewer(other).picture(), picture);

    const QRgb pixel = picture.pixel(pictureCentre + QPoint(8, 8));
    const int strongest = std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)});
    const int components[] = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
    const double full = std::max({sameAs[0].toInt(), sameAs[1].toInt(), sameAs[2].toInt()});
    for (int i = 0; i < 3; ++i)
        QVERIFY(std::fabs(components[i] - strongest * sameAs[i].toInt() / full) < 6);
}

void test_KytI3dView::atomsLieAsOnTheCanvas()
{
    Drawing drawing;
    drawing.atom(1000, 1000, 0, {"255", "255", "255"});
    drawing.atom(1100, 1000, 0, {"255", "0", "0"});   // right
    drawing.atom(900, 1000, 0, {"0", "255", "0"});    // left
    drawing.atom(1000, 900, 0, {"0", "0", "255"});    // up
    drawing.atom(1000, 1100, 0, {"255", "255", "0"}); // down
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

void test_KytI3dView::anAtomInFrontHidesTheOneBehind()
{
    Drawing drawing;
    drawing.atom(1000, 1000, 50, {"0", "255", "0"});
    drawing.atom(1000, 1000, 0, {"255", "0", "0"});
    OpenViewer viewer(drawing);
    const QRgb pixel = viewer.picture().pixel(pictureCentre + QPoint(8, 0));
    QVERIFY(qGreen(pixel) > 2 * qRed(pixel));
}

void test_KytI3dView::aSingleBondIsABlueStickBetweenTwoSpheres()
{
    Drawing drawing;
    drawing.bond(drawing.atom(1000, 1000), drawing.atom(1100, 1000));
    OpenViewer viewer(drawing);
    const QImage picture = viewer.picture();

    const int half = qRound(50 * pixelsPerUnit);
    for (const int side : {-1, 1}) {
        const QPoint middle = pictureCentre + QPoint(side * half, 0);
        const Spot sphere(picture, QRect(middle - QPoint(40, 40), QSize(81, 81)));
        QVERIFY(std::abs(sphere.bounds.height() / 2.0 - 17.2) < 1.5);
        QVERIFY(isReddish(picture.pixel(middle + QPoint(0, 10))));
        QVERIFY(isReddish(picture.pixel(middle - QPoint(0, 10))));
        QVERIFY(isBlack(picture.pixel(middle + QPoint(side * 21, 0))));
    }
    for (int x = pictureCentre.x() - half + 19; x <= pictureCentre.x() + half - 19; ++x) {
        QVERIFY(isBluish(picture.pixel(x, pictureCentre.y() + 3)));
        QVERIFY(isBlack(picture.pixel(x, pictureCentre.y() + 6)));
        QVERIFY(isBlack(picture.pixel(x, pictureCentre.y() - 7)));
    }
    // It also runs on inside the spheres, to their middles: seen when these are made small by a look from the side.
    QCOMPARE(blueStretches(picture, pictureCentre.x()), 1);
}

void test_KytI3dView::eachLineOfABondIsAStick_data()
{
    QTest::addColumn<QList<KytBondType>>("kinds");
    QTest::newRow("single") << QList<KytBondType>{KYTBT_SingleBond};
    QTest::newRow("dashed") << QList<KytBondType>{KYTBT_DashedLine};
    QTest::newRow("double") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_SingleBond};
    QTest::newRow("solid and dashed") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_DashedLine};
    QTest::newRow("triple") << QList<KytBondType>{KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond};
}

void test_KytI3dView::eachLineOfABondIsAStick()
{
    QFETCH(QList<KytBondType>, kinds);
    Drawing drawing;
    drawing.bond(drawing.atom(1000, 1000), drawing.atom(1100, 1000), kinds);
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

void test_KytI3dView::aStickReachesAnAtomThatLiesDeeper()
{
    // A vertical bond, seen from the side: depth runs to the right.
    Drawing drawing;
    KytAtom* from = drawing.atom(1000, 1000);
    KytAtom* to = drawing.atom(1000, 900);
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

void test_KytI3dView::aWedgeIsAsLongAsItsAngleSays_data()
{
    QTest::addColumn<KytBondType>("kind");
    QTest::addColumn<float>("angle");
    QTest::addColumn<double>("length");
    QTest::newRow("60 degrees up: twice its shadow") << KYTBT_StereoUp << 60.0F << 200.0;
    QTest::newRow("60 degrees down") << KYTBT_StereoDown << 60.0F << 200.0;
    QTest::newRow("flat") << KYTBT_StereoUp << 0.0F << 100.0;
    QTest::newRow("45 degrees down") << KYTBT_StereoDown << 45.0F << 100 * std::numbers::sqrt2;
}

void test_KytI3dView::aWedgeIsAsLongAsItsAngleSays()
{
    QFETCH(KytBondType, kind);
    QFETCH(float, angle);
    QFETCH(double, length);

    // Straight up on the canvas; turned by 90 degrees, its depth runs to the right, in one plane with the atoms.
    Drawing drawing;
    KytAtom* from = drawing.atom(1000, 1000);
    KytAtom* to = drawing.atom(1000, 900);
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
    QVERIFY(std::fabs(std::hypot(stick.x(), stick.y()) - length * pixelsPerUnit) < 1e-6);
    const QPointF across = QPointF(stick.y(), -stick.x()) / std::hypot(stick.x(), stick.y());
    const bool endsInASphere = depth == 0;
    for (double share = 0.2; share < (endsInASphere ? 0.9 : 0.99); share += 0.01)
        QVERIFY(isBluish(picture.pixel((start + stick * share + across * 2.5).toPoint())));
    if (!endsInASphere)
        QVERIFY(isBlack(picture.pixel((start + stick * 1.02).toPoint())));
    // The end atom's sphere stays where its depth is.
    QVERIFY(isReddish(picture.pixel((QPointF(pictureCentre) - QPointF(-9, 50 * pixelsPerUnit)).toPoint())));
}

void test_KytI3dView::aBondLineThatIsNotThereDrawsNothing()
{
    Drawing drawing;
    drawing.bond(drawing.atom(1000, 1000), drawing.atom(1100, 1000), {KYTBT_Double, KYTBT_Triple});
    drawing.bond(drawing.atom(1000, 1100), drawing.atom(1000, 1100)); // of length zero
    OpenViewer viewer(drawing);
    QVERIFY(viewer.hasFocus());
    const QImage picture = viewer.picture();
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            QVERIFY(!isBluish(picture.pixel(x, y)));
}

void test_KytI3dView::twoMoleculesAreBothDrawnOnce()
{
    Drawing drawing;
    drawing.bond(drawing.atom(900, 900), drawing.atom(1100, 900));
    drawing.bond(drawing.atom(900, 1100), drawing.atom(1100, 1100));
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

void test_KytI3dView::countsAreThoseOfTheMolecule()
{
    Drawing drawing;
    KytAtom* alone = drawing.atom(500, 500);
    KytAtom* first = drawing.atom(1000, 1000);
    KytAtom* second = drawing.atom(1100, 1000);
    KytAtom* third = drawing.atom(1200, 1000);
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

void test_KytI3dView::theCameraStandsInFrontOfTheFrontmostAtom()
{
    Drawing drawing;
    drawing.atom(1000, 1000, -20.5F);
    drawing.atom(1101, 800, 90.75F);
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

void test_KytI3dView::theCameraStandsInFrontOfThePlaneWhenAllAtomsLieBehindIt()
{
    Drawing drawing;
    drawing.atom(999, 1001, -40);
    drawing.atom(1000, 1000, -41);
    OpenViewer viewer(drawing);
    QCOMPARE(viewer.view.eye[0], 200);
    QCOMPARE(viewer.view.pos[0], -40); // -81 / 2, toward zero
    QCOMPARE(viewer.view.pos[1], 0);
    QCOMPARE(viewer.view.pos[2], 0);
}

void test_KytI3dView::sumsOfFarAwayAtomsSaturate()
{
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    Drawing drawing;
    for (int i = 0; i < 2; ++i)
        drawing.atom(2e9, 2e9, 3e9F);
    OpenViewer viewer(drawing);
    QVERIFY(viewer.hasFocus());
    QCOMPARE(viewer.view.defaulteye, highest);
    QCOMPARE(viewer.view.eye[0], highest);
    QCOMPARE(viewer.view.pos[0], 1 << 30);
    QCOMPARE(viewer.view.pos[1], 1 << 30);
    QCOMPARE(viewer.view.pos[2], lowest / 2);
}

void test_KytI3dView::onePictureWithOneSphereForAllAtoms()
{
    // Ethylene, tilted a little, in several colours; the other picture has a sphere compiled for every atom.
    Drawing drawing;
    KytAtom* left = drawing.atom(970, 1000, 5, {"128", "128", "128"});
    KytAtom* right = drawing.atom(1031, 1003, -8, {"40", "160", "90"});
    const QList<KytAtom*> hydrogens = {drawing.atom(930, 960, 12), drawing.atom(925, 1042, -30, {"255", "255", "255"}),
                                       drawing.atom(1075, 961.5, 22), drawing.atom(1070, 1040, 0, {"0", "0", "255"})};
    drawing.bond(left, right, {KYTBT_SingleBond, KYTBT_SingleBond});
    for (int i = 0; i < 4; ++i)
        drawing.bond(i < 2 ? left : right, hydrogens[i]);
    OpenViewer viewer(drawing);
    viewer.view.rotXAngle = 17;
    viewer.view.rotYAngle = -23;
    const QImage picture = viewer.picture();
    QVERIFY(Spot(picture).count > 4000);

    glNewList(1, GL_COMPILE);
    for (KytAtom* atom : drawnAtoms(*drawing.document.canvas)) {
        glPushMatrix();
        glTranslatef(atom->getAtomZ(), static_cast<float>(atom->x() - 1000), static_cast<float>(1000 - atom->y()));
        glColor3f(atom->_atomColor[0].toFloat() / 255, atom->_atomColor[1].toFloat() / 255,
                  atom->_atomColor[2].toFloat() / 255);
        gluSphere(viewer.view.quadratic, 8, 25, 25);
        glPopMatrix();
    }
    const auto stick = [&](const KytBondLine* line, const KytBond* bond) {
        const QPointF from = line->getStartPoint();
        const QPointF to = line->getEndPoint();
        const double climb = bond->getToAtom()->getAtomZ() - bond->getFromAtom()->getAtomZ();
        const auto geometry = lineStick(from.toPoint(), to.toPoint(), 0, climb);
        glPushMatrix();
        glTranslatef(bond->getFromAtom()->getAtomZ(), static_cast<float>(from.x() - 1000),
                     static_cast<float>(1000 - from.y()));
        glRotatef(static_cast<float>(geometry->planeAngle), 1, 0, 0);
        glRotatef(static_cast<float>(geometry->tilt), 0, 1, 0);
        glColor3f(0, 0, 1);
        gluCylinder(viewer.view.quadratic, 2, 2, static_cast<float>(geometry->length), 20, 1);
        glPopMatrix();
    };
    for (const KytBond* bond : std::as_const(left->outList)) {
        stick(bond->bond1, bond);
        if (bond->bond2)
            stick(bond->bond2, bond);
    }
    for (const KytBond* bond : std::as_const(right->outList))
        stick(bond->bond1, bond);
    glEndList();
    QCOMPARE(viewer.picture(), picture);
}

void test_KytI3dView::theSceneIsThatOfTheOpening()
{
    Drawing drawing;
    KytAtom* atom = drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    const QImage picture = viewer.picture();
    atom->move(1200, 1000);
    QCOMPARE(viewer.picture(), picture);
}

namespace {

/// What the keys change: camera, target and angles.
using Flight = std::array<double, 8>;

Flight flight(const KytI3dView& view)
{
    return {double(view.eye[0]), double(view.eye[1]), double(view.eye[2]), double(view.pos[0]),
            double(view.pos[1]), double(view.pos[2]), view.rotYAngle,      view.rotXAngle};
}

} // namespace

void test_KytI3dView::aHeldKeyActsOnceAFrame_data()
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

void test_KytI3dView::aHeldKeyActsOnceAFrame()
{
    QFETCH(QString, key);
    QFETCH(QList<double>, change);

    Drawing drawing;
    drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    QVERIFY(viewer.hasFocus());
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

void test_KytI3dView::otherKeysDoNothing()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    const Flight start = flight(viewer.view);
    for (const QString key : {"b", "Return", "F1", "1", "space"}) {
        viewer.press(key);
        QVERIFY(viewer.stepUntil([] {
            int keys = 0;
            const Uint8* down = SDL_GetKeyState(&keys);
            return std::any_of(down, down + keys, [](Uint8 isDown) { return isDown != 0; });
        }));
        viewer.step();
        viewer.release(key);
    }
    QCOMPARE(flight(viewer.view), start);
    QVERIFY(!viewer.closed);
    QVERIFY(!viewer.view.rotation[0] && !viewer.view.rotation[1] && !viewer.view.spclkeys);
}

void test_KytI3dView::theCameraStopsAtTheEndOfItsRange()
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

void test_KytI3dView::rotationTogglesAtMostEvery300Milliseconds_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("which");
    QTest::newRow("r") << "r" << 0;
    QTest::newRow("t") << "t" << 1;
}

void test_KytI3dView::rotationTogglesAtMostEvery300Milliseconds()
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

void test_KytI3dView::theToggleKeysShareOneTimer()
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

void test_KytI3dView::fullScreenToggles()
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
    SDL_Delay(301);
    viewer.press("f");
    QVERIFY(viewer.stepUntil([&] { return !isFullScreen(); }));
    viewer.release("f");
}

void test_KytI3dView::theModelSpinsByTheClock()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    viewer.view.rotation[0] = true;
    viewer.view.rotation[1] = true;
    viewer.step(); // makes up for the time since the last spin
    viewer.view.rotYAngle = 0;
    viewer.view.rotXAngle = 0;
    const Uint32 start = SDL_GetTicks();
    for (int frame = 0; frame < 20; ++frame) {
        SDL_Delay(10);
        viewer.step();
    }
    const Uint32 end = SDL_GetTicks();
    const double elapsed = viewer.view.rotYAngle / 0.05;
    QVERIFY(elapsed >= 200 - 20); // what passes between the two looks at the clock in a frame is lost
    QVERIFY(elapsed <= end - start + 1);
    QVERIFY(std::fabs(viewer.view.rotXAngle - viewer.view.rotYAngle * 0.6) < 0.01);

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

void test_KytI3dView::theModelSpinsAboutTheCentroid()
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
    QVERIFY(std::fabs(disc.middle.x() - (pictureCentre.x() + shift)) < 3);
    QVERIFY(std::fabs(disc.middle.y() - pictureCentre.y()) < 3);
}

void test_KytI3dView::byHandTheModelTurnsAboutTheTarget()
{
    Drawing drawing;
    drawing.atom(1000, 1000);
    OpenViewer viewer(drawing);
    viewer.view.pos[1] += 100;
    viewer.view.eye[1] += 100;
    viewer.view.rotYAngle = 180;
    const Spot disc(viewer.picture());
    QVERIFY(std::fabs(disc.middle.x() - (pictureCentre.x() + 100 * pixelsPerUnit)) < 3);
}

void test_KytI3dView::theViewIsReset()
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

void test_KytI3dView::shiftIsRemembered()
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

void test_KytI3dView::pointerMotionDoesNotInterruptAHeldKey()
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

void test_KytI3dView::anglesAndSpinOutliveTheWindow()
{
    Drawing drawing;
    KytAtom* atom = drawing.atom(1000, 1000);
    KytI3dView view(drawing.document.canvas);
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

void test_KytI3dView::memoryStaysTheSameOverTwentyOpenings()
{
    Drawing drawing;
    drawing.bond(drawing.atom(1000, 1000), drawing.atom(1100, 1000));
    KytI3dView view(drawing.document.canvas);
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
    QVERIFY2(afterTheSixth > 0 && growth < 200 * 1024, qPrintable(QString("%1 bytes").arg(growth)));
}

QTEST_MAIN(test_KytI3dView)
#include "test_KytI3dView.moc"
