#include "i3d/TerminationSignals.h"

namespace {

volatile std::sig_atomic_t arrivedSignal = 0;

void note(int number)
{
    arrivedSignal = number;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    arrivedSignal = 0;
    for (int i = 0; i < signalCount; ++i) {
        sigaction(signalNumbers[i], nullptr, &formerActions[i]);
        if (formerActions[i].sa_handler == SIG_IGN)
            continue;
        struct sigaction action = {};
        action.sa_handler = note;
        action.sa_flags = SA_RESTART;
        sigaction(signalNumbers[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    for (int i = 0; i < signalCount; ++i)
        sigaction(signalNumbers[i], &formerActions[i], nullptr);
    if (arrived())
        raise(arrivedSignal);
}

bool TerminationSignals::arrived() const
{
    return arrivedSignal != 0;
}
