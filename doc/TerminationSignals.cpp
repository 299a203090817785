#include "doc/TerminationSignals.h"

#include <ctime>

namespace {

constexpr long long patience = 1000; // milliseconds

TerminationRequest request;

void note(int number)
{
    request.note(number);
}

long long now()
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000LL + time.tv_nsec / 1000000;
}

} // namespace

void TerminationRequest::note(int number)
{
    if (first != 0) {
        if (now() - firstTime >= patience)
            dieOf(number);
        return;
    }
    firstTime = now();
    first = number;
}

void dieOf(int signalNumber)
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
    request.forget();
    handleTerminationSignals(note, formerActions);
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
