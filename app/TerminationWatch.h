#pragma once

#include "doc/TerminationSignals.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

/// Calls `beforeExit` from the event loop when one of terminationSignals arrives, and then ends the process by that
/// signal. While no event loop is running, the signal is pending; another one at least a second later ends the process
/// at once. Ignored signals stay ignored. Only one object may exist at a time.
class TerminationWatch {
public:
    explicit TerminationWatch(std::function<void()> beforeExit);
    ~TerminationWatch();
    TerminationWatch(const TerminationWatch&) = delete;
    TerminationWatch& operator=(const TerminationWatch&) = delete;

private:
    void terminate();

    std::function<void()> beforeExit;
    std::unique_ptr<QSocketNotifier> notifier;
    struct sigaction formerActions[terminationSignalCount];
};
