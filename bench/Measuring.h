#pragma once

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <ctime>
#include <vector>

// Measuring functions shared by the benchmarks.

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Processor time used by this process so far, in milliseconds.
inline double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Processor time used by `work`, in milliseconds. Unlike wall time, it hardly depends on other programs on the
/// machine.
template <typename Work> double processorTime(Work work)
{
    const double before = processorTime();
    work();
    return processorTime() - before;
}

/// The memory value `name` of this process from /proc/self/status, in KiB; 0 if it is missing.
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
