#include "app/TerminationWatch.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

TerminationRequest request;
int pipeEnds[2]; // the handler writes to the second what wakes the event loop at the first

void wakeEventLoop(int number)
{
    const int before = errno;
    request.note(number);
    const char byte = 0;
    static_cast<void>(!write(pipeEnds[1], &byte, 1));
    errno = before;
}

} // namespace

TerminationWatch::TerminationWatch(std::function<void()> farewell)
    : farewell(std::move(farewell))
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    request.forget();
    notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { end(); });
    handleTerminationSignals(wakeEventLoop, formerActions);
}

TerminationWatch::~TerminationWatch()
{
    if (!notifier)
        return;
    restoreTerminationSignals(formerActions);
    notifier.reset();
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

void TerminationWatch::end()
{
    farewell();
    dieOf(request.signalNumber());
}
