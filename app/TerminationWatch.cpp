#include "app/TerminationWatch.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace {

TerminationRequest request;
int pipeEnds[2]; // the signal handler writes to the second end; the event loop reads from the first

void wakeEventLoop(int number)
{
    const int before = errno;
    request.record(number);
    const char byte = 0;
    static_cast<void>(!write(pipeEnds[1], &byte, 1));
    errno = before;
}

} // namespace

TerminationWatch::TerminationWatch(std::function<void()> beforeExit)
    : beforeExit(std::move(beforeExit))
{
    if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    request.reset();
    notifier = std::make_unique<QSocketNotifier>(pipeEnds[0], QSocketNotifier::Read);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { terminate(); });
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

void TerminationWatch::terminate()
{
    beforeExit();
    terminateBySignal(request.signalNumber());
}
