#include "convert/program/Progress.h"

#include <cstdio>

#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds interval(200);
constexpr char clearLine[] = "\r\x1b[K";

} // namespace

Progress::Progress()
    : isTerminal(isatty(STDERR_FILENO) == 1)
    , started(Clock::now())
    , shown(started)
{
}

Progress::~Progress()
{
    clear();
}

void Progress::update(qint64 records, qint64 failures)
{
    const Clock::time_point now = Clock::now();
    if (!isTerminal || now - shown < interval)
        return;
    shown = now;
    isShown = true;
    const double seconds = std::chrono::duration<double>(now - started).count();
    std::fputs(clearLine, stderr);
    std::fputs(progressText(records, failures, seconds).toUtf8().constData(), stderr);
    std::fflush(stderr);
}

void Progress::clear()
{
    if (isShown)
        std::fputs(clearLine, stderr);
    isShown = false;
}

QString progressText(qint64 records, qint64 failures, double seconds)
{
    const double rate = seconds > 0 ? static_cast<double>(records) / seconds : 0;
    return QStringLiteral("%1 records, %2 per second, %3 failed").arg(records).arg(rate, 0, 'f', 0).arg(failures);
}
