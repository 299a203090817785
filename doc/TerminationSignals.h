#pragma once

#include <atomic>
#include <csignal>

/// The signals that request termination.
inline constexpr int terminationSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};
inline constexpr int terminationSignalCount = sizeof terminationSignals / sizeof *terminationSignals;

/// A termination request, recorded by a signal handler. Each handler uses its own object with static storage.
class TerminationRequest {
public:
    /// Records a signal; to be called by the signal handler. Signals within one second of the first one belong to the
    /// same request. A later one ends the process at once, because the program has not reacted to the first.
    void record(int number);

    void reset() { first = 0; }

    /// The first signal; 0 if none has arrived.
    int signalNumber() const { return first; }

private:
    std::atomic<int> first = 0;
    std::atomic<long long> firstTime = 0;                       // in milliseconds; written before `first`
    static_assert(std::atomic<long long>::is_always_lock_free); // required in a signal handler
};

/// Restores the default action of the signal and raises it.
void terminateBySignal(int signalNumber);

/// Defers terminationSignals during its lifetime, so that a window can be closed properly. The destructor
/// restores the former signal actions and raises a signal that has arrived. Ignored signals stay ignored. Only one
/// object may exist at a time.
class TerminationSignals {
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Whether a termination signal has arrived.
    bool arrived() const;

private:
    struct sigaction formerActions[terminationSignalCount];
};

/// Installs `handler` for all terminationSignals that are not ignored and stores their former actions in `former`.
void handleTerminationSignals(void (*handler)(int), struct sigaction (&former)[terminationSignalCount]);
/// Restores the former actions of all terminationSignals.
void restoreTerminationSignals(const struct sigaction (&former)[terminationSignalCount]);
