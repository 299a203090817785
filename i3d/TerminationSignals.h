#pragma once

#include <csignal>

/// Holds SIGINT, SIGTERM and SIGHUP back while it lives, so that a window can be closed and the screen be left in order
/// first. One that has arrived is raised again at the end, when each signal has its former handling back. A signal that
/// the process ignores stays ignored. One at a time.
class TerminationSignals {
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Whether one of the signals has arrived.
    bool arrived() const;

private:
    static constexpr int signalNumbers[] = {SIGINT, SIGTERM, SIGHUP};
    static constexpr int signalCount = sizeof signalNumbers / sizeof *signalNumbers;
    struct sigaction formerActions[signalCount];
};
