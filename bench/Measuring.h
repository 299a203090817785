#pragma once

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <ctime>
#include <vector>

// What the benchmarks measure with.

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Milliseconds of processor time that this process has taken so far.
inline double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Milliseconds of processor time that `work` takes, which other programs on the machine do not change much.
template <typename Work> double processorTime(Work work)
{
    const double before = processorTime();
    work();
    return processorTime() - before;
}

/// A figure of this process's memory in KiB, by its name in /proc/self/status; 0 where there is none.
inline double memory(const char* name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toDouble();
    return 0;
}
