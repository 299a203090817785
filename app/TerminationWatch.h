#pragma once

#include "doc/TerminationSignals.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

/// Ends the process when SIGINT, SIGTERM or SIGHUP arrives, as the signal would have done, but calls `farewell` from
/// the event loop first. While no event loop runs the first signal waits, and a second one a second later ends the
/// process at once. A signal that the process ignores stays ignored. One at a time.
class TerminationWatch {
public:
    explicit TerminationWatch(std::function<void()> farewell);
    ~TerminationWatch();
    TerminationWatch(const TerminationWatch&) = delete;
    TerminationWatch& operator=(const TerminationWatch&) = delete;

private:
    void end();

    std::function<void()> farewell;
    std::unique_ptr<QSocketNotifier> notifier;
    struct sigaction formerActions[terminationSignalCount];
};
