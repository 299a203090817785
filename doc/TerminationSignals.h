#pragma once

#include <atomic>
#include <csignal>

/// The signals that ask a program to end.
inline constexpr int terminationSignals[] = {SIGINT, SIGTERM, SIGHUP};
inline constexpr int terminationSignalCount = sizeof terminationSignals / sizeof *terminationSignals;

/// A request to end that signal handlers take note of. There is one for each use, with static storage.
class TerminationRequest {
public:
    /// To be called by a signal handler. A signal that comes a second or more after the first one finds a program that
    /// hangs, and ends the process at once; before that it belongs to the same request, as those that a session sends
    /// when it ends.
    void note(int number);

    void forget() { first = 0; }

    /// The first signal; 0 when there has been none.
    int signalNumber() const { return first; }

private:
    std::atomic<int> first = 0;
    std::atomic<long long> firstTime = 0;                       // milliseconds; written before `first`
    static_assert(std::atomic<long long>::is_always_lock_free); // or it could not be used in a signal handler
};

/// Gives the signal its default action, and raises it.
void dieOf(int signalNumber);

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
    struct sigaction formerActions[terminationSignalCount];
};

/// Has `handler` called for each of terminationSignals that is not ignored; its former actions go to `former`.
void handleTerminationSignals(void (*handler)(int), struct sigaction (&former)[terminationSignalCount]);
/// Gives each of terminationSignals its former action back.
void restoreTerminationSignals(const struct sigaction (&former)[terminationSignalCount]);
