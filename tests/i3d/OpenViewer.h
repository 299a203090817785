#pragma once

#include "i3d/KytI3dView.h"
#include "tests/support/Drawing.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

// Last: the X headers that it brings define common words as macros.
#include <SDL_syswm.h>
#undef None
#undef Bool
#undef Status

// The picture is 1280 x 1024 pixels at the lower left of the window.
inline constexpr QSize windowSize(1285, 1029);
inline constexpr QPoint pictureCentre(640, 517);
inline constexpr double startDistance = 200;
inline const double pixelsPerTangent = 512 / std::tan(50 * std::numbers::pi / 180);
inline const double pixelsPerUnit = pixelsPerTangent / startDistance; // in the plane of the frontmost atom

/// Runs xdotool, which moves the pointer and the keys like a hand.
inline void type(const QStringList& arguments)
{
    QCOMPARE(QProcess::execute("xdotool", arguments), 0);
}

/// The viewer, open on a drawing, run frame by frame.
class OpenViewer {
public:
    explicit OpenViewer(const Drawing& drawing)
        : view(drawing.canvas())
    {
        opened = view.open();
        if (opened)
            stepUntil([this] { return hasFocus(); });
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

    /// Runs the viewer until `condition` holds; false when it does not within a long time.
    bool stepUntil(const std::function<bool()>& condition)
    {
        const QDeadlineTimer deadline(30000);
        while (!condition() && !deadline.hasExpired())
            step();
        return condition();
    }

    /// Runs the viewer until it has handled all events that wait, and with that shows its present state.
    void catchUp()
    {
        do
            step();
        while (SDL_PollEvent(nullptr));
    }

    /// Lets the window manager have its say about the new window: what it sends late would interrupt a held key.
    void settle()
    {
        for (int frame = 0; frame < 20; ++frame) {
            step();
            QTest::qSleep(10);
        }
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
    static QImage shown()
    {
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        if (SDL_GetWMInfo(&info) != 1)
            return {};
        const WId window = info.info.x11.window;
        return QGuiApplication::primaryScreen()->grabWindow(window).toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// The same, when the viewer has handled its events.
    QImage picture()
    {
        catchUp();
        return shown();
    }
    /// What the window shows after a frame that the viewer itself saw no need for.
    QImage pictureDrawnAgain()
    {
        catchUp();
        view.renderScene();
        return shown();
    }

    /// Whether the viewer has taken a key for pressed in its last frame.
    static bool anyKeyDown()
    {
        int keys = 0;
        const Uint8* down = SDL_GetKeyState(&keys);
        return std::any_of(down, down + keys, [](Uint8 isDown) { return isDown != 0; });
    }

    KytI3dView view;
    bool opened = false;
    bool closed = false;

private:
    QStringList heldKeys;
};

inline bool isBlack(QRgb pixel)
{
    return (pixel & 0xffffff) == 0;
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
