#include "doc/TerminationSignals.h"
#include "i3d/KytI3dView.h"
#include "i3d/SdlClock.h"
#include "i3d/SessionManagerWatch.h"

#include <algorithm>

namespace {

constexpr double spinAboutZ = 0.05; // degrees per millisecond
constexpr double spinAboutY = 0.03;
constexpr Uint32 longestWaitForAFrame = 100; // milliseconds, while events are waiting
constexpr Uint32 restingTime = 10;           // milliseconds
constexpr Uint32 spinningTime = 1;           // milliseconds; SDL's clock is no finer

std::array<int, 3> threeOf(const int* coordinates)
{
    return {coordinates[0], coordinates[1], coordinates[2]};
}

bool isWaiting()
{
    return SDL_PollEvent(nullptr) != 0;
}

/// Whether the window may have lost its picture.
bool uncovers(const SDL_Event& event)
{
    return event.type == SDL_VIDEOEXPOSE || event.type == SDL_VIDEORESIZE;
}

bool isMinimised()
{
    return (SDL_GetAppState() & SDL_APPACTIVE) == 0;
}

} // namespace

void KytI3dView::view()
{
    const TerminationSignals terminationSignals;
    if (!open())
        return;
    SessionManagerWatch sessionManager;
    bool done = false;
    while (!done && !terminationSignals.arrived() && !sessionManager.hasMessage())
        done = step();
    close();
}

// The states are those of a loop that draws a frame at every step; only frames are left out.
bool KytI3dView::step()
{
    takeNextEvent();
    const bool done = handleLastEvent();
    const bool inputIsWaiting = isWaiting();
    if (!done && needsFrame() && (!inputIsWaiting || frameIsOverdue())) {
        renderScene();
        return false;
    }
    spinByTheClock();
    if (!done && !inputIsWaiting)
        rest();
    return done;
}

void KytI3dView::takeNextEvent()
{
    SDL_Event newEvent;
    if (!SDL_PollEvent(&newEvent))
        return;
    event = newEvent;
    if (uncovers(event))
        shownViewpoint.reset();
}

/// Handles the last event, again if it is not new: a key acts at every step until it is released. Returns true if it
/// closes the viewer.
bool KytI3dView::handleLastEvent()
{
    if (event.type == SDL_KEYDOWN)
        return HandleKeyboard(&event.key.keysym);
    return event.type == SDL_QUIT;
}

KytI3dView::Viewpoint KytI3dView::viewpoint() const
{
    return {threeOf(eye), threeOf(pos), threeOf(rotationCentre()), rotYAngle, rotXAngle};
}

/// Whether a frame would change what the user sees. A scene without atoms looks the same from everywhere.
bool KytI3dView::needsFrame() const
{
    const bool isShown = shownViewpoint && (totalAtomCount == 0 || *shownViewpoint == viewpoint());
    return !isShown && !isMinimised();
}

bool KytI3dView::frameIsOverdue() const
{
    return millisecondsSince(lastFrameTime) >= longestWaitForAFrame;
}

void KytI3dView::spinByTheClock()
{
    // Not updated while nothing spins: the first step after a pause rotates by the whole time of the pause.
    static Uint32 sceneTimer = 0;
    if (!spins())
        return;
    const Uint32 milliseconds = millisecondsSince(sceneTimer);
    if (rotation[0])
        rotYAngle += milliseconds * spinAboutZ;
    if (rotation[1])
        rotXAngle += milliseconds * spinAboutY;
    sceneTimer = SDL_GetTicks();
}

void KytI3dView::rest() const
{
    SDL_Delay(spins() && !isMinimised() ? spinningTime : restingTime);
}
