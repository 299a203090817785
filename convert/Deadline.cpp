#include "convert/Deadline.h"

#include <QByteArray>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <utility>

#include <sys/time.h>
#include <unistd.h>

namespace {

int limitSeconds = 60;
bool anyActive = false;

char message[512];
std::size_t length = 0;
int status = 0;

/// Signal handler: only async-signal-safe calls are allowed here.
void handleTimeout(int)
{
    const ssize_t written = write(STDERR_FILENO, message, length);
    static_cast<void>(written);
    _exit(status);
}

void setTimer(int secondsLeft)
{
    itimerval timer = {};
    timer.it_value.tv_sec = secondsLeft;
    setitimer(ITIMER_PROF, &timer, nullptr);
}

/// Starts the time, unless it is running. Returns whether it was started.
bool start(const QByteArray& text, int exitStatus)
{
    if (std::exchange(anyActive, true))
        return false;
    length = std::min(sizeof message, static_cast<std::size_t>(text.size()));
    std::memcpy(message, text.constData(), length);
    status = exitStatus;
    std::signal(SIGPROF, handleTimeout);
    setTimer(limitSeconds);
    return true;
}

} // namespace

Deadline::Deadline(const QString& context)
    : isActive(start("kytconvert: " + context.toUtf8().left(400) + ": timed out after "
                         + QByteArray::number(limitSeconds) + " s\n",
                     exitStatus))
{
}

Deadline::Deadline(Worker)
    : isActive(start(QByteArray(), workerExitStatus))
{
}

Deadline::~Deadline()
{
    if (!isActive)
        return;
    setTimer(0);
    anyActive = false;
}

void Deadline::setLimit(int seconds)
{
    limitSeconds = seconds;
}

int Deadline::limit()
{
    return limitSeconds;
}
