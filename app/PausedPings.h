#pragma once

#include <QPointer>
#include <QWindow>

/// During its lifetime, the program's open windows do not claim to answer the pings of the window manager, because the
/// event loop is not running; otherwise a desktop would offer to kill the program. To be used from the GUI thread. Does
/// nothing without X11.
class PausedPings {
public:
    PausedPings();
    ~PausedPings();
    PausedPings(const PausedPings&) = delete;
    PausedPings& operator=(const PausedPings&) = delete;

private:
    QList<QPointer<QWindow>> windows; // that answered
};
