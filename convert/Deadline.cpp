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

/// Only calls that are allowed in a signal handler.
void expire(int)
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

Deadline::Deadline(const QString& place)
{
    const QByteArray text = "kytconvert: " + place.toUtf8().left(400) + ": takes too long; it is left\n";
    length = std::min(sizeof message, static_cast<std::size_t>(text.size()));
    std::memcpy(message, text.constData(), length);
    std::signal(SIGPROF, expire);
    setTimer(seconds);
}

Deadline::~Deadline()
{
    setTimer(0);
}
