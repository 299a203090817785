#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

/// The X screen that a benchmark runs on: it moves the real pointer and watches windows come up.
class Screen {
public:
    /// Connects to the display that DISPLAY names; ends the program with a message when that fails.
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// Moves the pointer to `p`, in screen pixels.
    void movePointer(const QPoint& p);
    void pressButton(int button);
    void releaseButton(int button);
    void pressControl();
    void releaseControl();

    /// Milliseconds until a window of at least `least` pixels is mapped and its middle is white, from `started`, in
    /// milliseconds of the steady clock. Negative when that takes longer than ten seconds.
    double waitForWindow(const QSize& least, double started);
    static double now();

private:
    void fake(int type, int detail, const QPoint& p);
    bool isWhite(const QPoint& p);

    struct Connection;
    Connection* const x;
};
