#pragma once

#include <QPoint>
#include <QSize>
#include <QString>

/// The X screen that a benchmark runs on: moves the real pointer and waits for windows.
class Screen {
public:
    /// Connects to the display in DISPLAY; exits with an error message on failure.
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

    /// Waits for a window of at least `minSize` pixels to be mapped and white in its middle. Returns the milliseconds
    /// since `started`, a value of now(), or a negative number after ten seconds.
    double waitForWindow(const QSize& minSize, double started);
    /// The steady clock, in milliseconds.
    static double now();

private:
    void fake(int type, int detail, const QPoint& p);
    bool isWhite(const QPoint& p);

    struct Connection;
    Connection* const x;
};
