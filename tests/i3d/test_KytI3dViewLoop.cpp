#include "i3d/KytI3dView.h"

#include "tests/i3d/OpenViewer.h"
#include "tests/support/Drawing.h"

#include <QRasterWindow>
#include <QtTest>

#include <dlfcn.h>

namespace {

int shownFrames = 0;

} // namespace

/// Counts the frames that the viewer shows.
extern "C" void SDL_GL_SwapBuffers()
{
    ++shownFrames;
    static const auto original = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    original();
}

namespace {

constexpr int manySteps = 30;

/// How many frames are shown while `work` runs.
template <typename Work> int framesDuring(Work work)
{
    const int before = shownFrames;
    work();
    return shownFrames - before;
}

SDL_Event keyEvent(Uint8 type, SDLKey key)
{
    SDL_Event event = {};
    event.type = type;
    event.key.keysym.sym = key;
    return event;
}

void push(const QList<SDL_Event>& events)
{
    for (SDL_Event event : events)
        QCOMPARE(SDL_PushEvent(&event), 0);
}

/// A key that is pressed and released.
QList<SDL_Event> tap(SDLKey key)
{
    return {keyEvent(SDL_KEYDOWN, key), keyEvent(SDL_KEYUP, key)};
}

SDL_Event eventOfType(Uint8 type)
{
    SDL_Event event = {};
    event.type = type;
    return event;
}

/// A white window above all others.
class Cover : public QRasterWindow {
public:
    Cover()
    {
        setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
        setGeometry(QGuiApplication::primaryScreen()->geometry());
        show();
        raise();
    }

    bool isPainted() const { return painted; }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), Qt::white);
        painted = true;
    }

private:
    bool painted = false;
};

} // namespace

class test_KytI3dViewLoop : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Display* display = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->display();
        XAutoRepeatOff(display);
        XSync(display, 0);
    }

    void init()
    {
        drawing = std::make_unique<Drawing>();
        drawing->bond(drawing->atom(1000, 1000), drawing->atom(1100, 1000, 20));
        viewer = std::make_unique<OpenViewer>(*drawing);
        QVERIFY(viewer->hasFocus());
        viewer->settle();
    }

    void cleanup()
    {
        viewer.reset();
        drawing.reset();
    }

    void atRestNoFrameIsDrawn()
    {
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
    }

    void aKeyThatChangesNothingDrawsNoFrame_data()
    {
        QTest::addColumn<SDLKey>("key");
        QTest::newRow("without a meaning") << SDLK_b;
        QTest::newRow("shift") << SDLK_LSHIFT;
        QTest::newRow("reset of the view as it is") << SDLK_o;
    }

    void aKeyThatChangesNothingDrawsNoFrame()
    {
        QFETCH(SDLKey, key);
        push({keyEvent(SDL_KEYDOWN, key)});
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
    }

    void eachChangeDrawsOneFrame()
    {
        push({keyEvent(SDL_KEYDOWN, SDLK_x)});
        QCOMPARE(framesDuring([&] { step(5); }), 5); // held: every step changes the angle
        QCOMPARE(viewer->view.rotYAngle, 2.5F);
        push({keyEvent(SDL_KEYUP, SDLK_x)});
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
        QCOMPARE(viewer->view.rotYAngle, 2.5F);

        viewer->view.eye[0] += 10;
        QCOMPARE(framesDuring([&] { step(manySteps); }), 1);
        viewer->view.pos[1] += 10;
        QCOMPARE(framesDuring([&] { step(manySteps); }), 1);
        viewer->view.rotXAngle = 1;
        QCOMPARE(framesDuring([&] { step(manySteps); }), 1);
    }

    void aSpinGoesOnUntilItIsSwitchedOff()
    {
        viewer->view.rotation[0] = true;
        const float start = viewer->view.rotYAngle;
        QVERIFY(framesDuring([&] { step(manySteps); }) >= manySteps / 2); // without one where the clock has not moved
        QVERIFY(viewer->view.rotYAngle > start);
        viewer->view.rotation[0] = false;
        step(1); // the last step of the spin
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
    }

    void anEmptySceneRestsEvenIfItSpins()
    {
        viewer.reset();
        const Drawing empty;
        OpenViewer emptyViewer(empty);
        emptyViewer.settle();
        emptyViewer.view.rotation[1] = true;
        const float start = emptyViewer.view.rotXAngle;
        QCOMPARE(framesDuring([&] {
                     for (int i = 0; i < manySteps; ++i)
                         emptyViewer.step();
                 }),
                 0);
        QVERIFY(emptyViewer.view.rotXAngle > start);
    }

    void anUncoveredWindowShowsItsPictureAgain()
    {
        const QImage picture = viewer->picture();
        {
            Cover cover;
            QTRY_VERIFY(cover.isPainted());
            step(manySteps);
            QVERIFY(viewer->picture() != picture);
        }
        QCOMPARE(framesDuring([&] { viewer->settle(); }) > 0, true);
        QCOMPARE(viewer->picture(), picture);
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
    }

    void aChangeOfModeDrawsAFrame()
    {
        SDL_Delay(301); // until a toggle key may act
        push(tap(SDLK_f));
        QVERIFY(framesDuring([&] { viewer->settle(); }) > 0);
        QVERIFY(viewer->view.pSDLSurface->flags & SDL_FULLSCREEN);
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
        SDL_Delay(301);
        push(tap(SDLK_f));
        QVERIFY(framesDuring([&] { viewer->settle(); }) > 0);
        QVERIFY(!(viewer->view.pSDLSurface->flags & SDL_FULLSCREEN));
    }

    void aMinimisedWindowDrawsNothingAndIsUpToDateWhenItReturns()
    {
        const QImage before = viewer->picture();
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        QCOMPARE(SDL_GetWMInfo(&info), 1);
        const QString window = QString::number(info.info.x11.wmwindow);
        type({"windowminimize", window});
        QVERIFY(viewer->stepUntil([] { return !(SDL_GetAppState() & SDL_APPACTIVE); }));

        viewer->view.rotation[0] = true;
        const float start = viewer->view.rotYAngle;
        QCOMPARE(framesDuring([&] { step(manySteps); }), 0);
        QVERIFY(viewer->view.rotYAngle > start);
        viewer->view.rotation[0] = false;
        viewer->view.rotYAngle = 40;

        type({"windowmap", window});
        QVERIFY(viewer->stepUntil([] { return (SDL_GetAppState() & SDL_APPACTIVE) != 0; }));
        viewer->settle();
        const QImage after = viewer->picture();
        QVERIFY(after != before);
        QVERIFY(Spot(after).count > 100);
        QCOMPARE(viewer->pictureDrawnAgain(), after);
    }

    void whatIsWaitingIsHandledBeforeAFrameIsDrawn()
    {
        QList<SDL_Event> events;
        for (const SDLKey key : {SDLK_x, SDLK_w, SDLK_x, SDLK_UP, SDLK_e})
            events += tap(key);
        viewer->view.renderScene(); // the next frame is due in 100 ms
        push(events);
        const int start = viewer->view.eye[0];
        const QList<float> angles = {0.5F, 0.5F, 0.5F, 0.5F, 1, 1, 1, 1, 1, 1}; // after each event
        QCOMPARE(framesDuring([&] {
                     for (const float angle : angles.first(9)) {
                         viewer->step();
                         QCOMPARE(viewer->view.rotYAngle, angle);
                     }
                 }),
                 0);
        QCOMPARE(viewer->view.eye[0], start - 1);
        QCOMPARE(viewer->view.eye[2], 1);
        QCOMPARE(viewer->view.pos[2], 1);
        QCOMPARE(viewer->view.rotXAngle, 0.3F);
        QCOMPARE(framesDuring([&] { step(manySteps); }), 1);
        QCOMPARE(viewer->view.rotYAngle, 1.0F);
    }

    void aFrameIsDrawnEach100MillisecondsWhileInputIsWaiting()
    {
        viewer->view.renderScene();
        const Uint32 start = SDL_GetTicks();
        QList<Uint32> stamps;
        push(tap(SDLK_x));
        while (SDL_GetTicks() - start < 1000) {
            push(tap(SDLK_x));
            if (framesDuring([&] { step(2); }) > 0)
                stamps.append(SDL_GetTicks() - start);
            SDL_Delay(1);
        }
        QVERIFY2(stamps.size() >= 3 && stamps.size() <= 10, qPrintable(QString::number(stamps.size())));
        for (qsizetype i = 0; i < stamps.size(); ++i)
            QVERIFY(stamps[i] - (i > 0 ? stamps[i - 1] : 0) >= 100);
    }

    void inputThatChangesNothingIsHandledWithoutAPause()
    {
        QList<SDL_Event> events;
        for (int i = 0; i < 50; ++i)
            events += tap(SDLK_b);
        SDL_Delay(150); // a frame would be due
        push(events);
        const Uint32 start = SDL_GetTicks();
        QCOMPARE(framesDuring([&] { step(99); }), 0);
        QVERIFY(SDL_GetTicks() - start < 400); // with a pause after each it would be a second
    }

    void theEndIsNotDelayedByAFrame_data()
    {
        QTest::addColumn<SDL_Event>("end");
        QTest::newRow("Escape") << keyEvent(SDL_KEYDOWN, SDLK_ESCAPE);
        QTest::newRow("the close button") << eventOfType(SDL_QUIT);
    }

    void theEndIsNotDelayedByAFrame()
    {
        QFETCH(SDL_Event, end);
        QList<SDL_Event> events;
        for (int i = 0; i < 10; ++i)
            events += tap(SDLK_x);
        viewer->view.renderScene();
        push(events);
        push({end});
        QCOMPARE(framesDuring([&] { step(20); }), 0);
        QVERIFY(!viewer->closed);
        QCOMPARE(viewer->view.rotYAngle, 5.0F);
        QCOMPARE(framesDuring([&] { step(1); }), 0);
        QVERIFY(viewer->closed);
    }

    void aSpinPassesThroughTheSameStatesWithoutFrames()
    {
        // The first step of a spin makes up for the time since the last one; the reset after it must not be overtaken.
        SDL_Delay(301);
        viewer->view.renderScene();
        push({keyEvent(SDL_KEYDOWN, SDLK_r), keyEvent(SDL_KEYUP, SDLK_r), keyEvent(SDL_KEYDOWN, SDLK_o)});
        const Uint32 start = SDL_GetTicks();
        step(1);
        QVERIFY(viewer->view.rotation[0]);
        QVERIFY(viewer->view.rotYAngle >= 300 * 0.05F);
        step(2);
        QVERIFY(viewer->view.rotYAngle <= (SDL_GetTicks() - start + 1) * 0.05F);
    }

    void aHeldKeyEndsWithTheNextEvent_data()
    {
        QTest::addColumn<SDL_Event>("next");
        QTest::newRow("another key released") << keyEvent(SDL_KEYUP, SDLK_b);
        QTest::newRow("another key pressed") << keyEvent(SDL_KEYDOWN, SDLK_b);
        QTest::newRow("a click") << eventOfType(SDL_MOUSEBUTTONDOWN);
        QTest::newRow("the focus") << eventOfType(SDL_ACTIVEEVENT);
        QTest::newRow("an uncovered window") << eventOfType(SDL_VIDEOEXPOSE);
    }

    void aHeldKeyEndsWithTheNextEvent()
    {
        QFETCH(SDL_Event, next);
        push({keyEvent(SDL_KEYDOWN, SDLK_x)});
        step(4);
        QCOMPARE(viewer->view.rotYAngle, 2.0F);
        push({next});
        step(manySteps);
        QCOMPARE(viewer->view.rotYAngle, 2.0F);
    }

private:
    void step(int times)
    {
        for (int i = 0; i < times; ++i)
            viewer->step();
    }

    std::unique_ptr<Drawing> drawing;
    std::unique_ptr<OpenViewer> viewer;
};

QTEST_MAIN(test_KytI3dViewLoop)
#include "test_KytI3dViewLoop.moc"
