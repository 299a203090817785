#include "doc/TerminationSignals.h"

#include <ctime>

namespace {

constexpr long long gracePeriod = 1000; // milliseconds

TerminationRequest request;

void handleSignal(int number)
{
    request.record(number);
}

long long now()
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

} // namespace

void TerminationRequest::record(int number)
{
    if (first != 0) {
        if (now() - firstTime >= gracePeriod)
            terminateBySignal(number);
        return;
    }
    firstTime = now();
    first = number;
}

void terminateBySignal(int signalNumber)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signalNumber, &action, nullptr);
    raise(signalNumber);
}

void handleTerminationSignals(void (*handler)(int), struct sigaction (&former)[terminationSignalCount])
{
    for (int i = 0; i < terminationSignalCount; ++i) {
        sigaction(terminationSignals[i], nullptr, &former[i]);
        if (former[i].sa_handler == SIG_IGN)
            continue;
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        sigaction(terminationSignals[i], &action, nullptr);
    }
}

void restoreTerminationSignals(const struct sigaction (&former)[terminationSignalCount])
{
    for (int i = 0; i < terminationSignalCount; ++i)
        sigaction(terminationSignals[i], &former[i], nullptr);
}

TerminationSignals::TerminationSignals()
{
    request.reset();
    handleTerminationSignals(handleSignal, formerActions);
}

TerminationSignals::~TerminationSignals()
{
    restoreTerminationSignals(formerActions);
    if (arrived())
        raise(request.signalNumber());
}

bool TerminationSignals::arrived() const
{
    return request.signalNumber() != 0;
}
