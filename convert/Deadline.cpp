#include "convert/Deadline.h"

#include <QByteArray>

#include <algorithm>
#include <csignal>
#include <cstring>

#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr int seconds = 60;
constexpr int badInput = 2; // exit status

char message[512];
std::size_t length = 0;

/// Signal handler: only async-signal-safe calls are allowed here.
void handleTimeout(int)
{
    const ssize_t written = write(STDERR_FILENO, message, length);
    static_cast<void>(written);
    _exit(badInput);
}

void setTimer(int secondsLeft)
{
    itimerval timer = {};
    timer.it_value.tv_sec = secondsLeft;
    setitimer(ITIMER_PROF, &timer, nullptr);
}

} // namespace

Deadline::Deadline(const QString& context)
{
    const QByteArray text =
        "kytconvert: " + context.toUtf8().left(400) + ": timed out after " + QByteArray::number(seconds) + " s\n";
    length = std::min(sizeof message, static_cast<std::size_t>(text.size()));
    std::memcpy(message, text.constData(), length);
    std::signal(SIGPROF, handleTimeout);
    setTimer(seconds);
}

Deadline::~Deadline()
{
    setTimer(0);
}
