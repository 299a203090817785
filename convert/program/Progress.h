#pragma once

#include <QString>

#include <chrono>

/// A line on a terminal that tells how far a conversion is: records, rate and failures. Silent where standard error is
/// not a terminal.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Shows the line anew, at most a few times per second.
    void update(qint64 records, qint64 failures);

    /// Removes the line, so that a message can be printed.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    bool isTerminal;
    bool isShown = false;
    Clock::time_point started;
    Clock::time_point shown;
};

/// The text of the line, for `seconds` since the start.
QString progressText(qint64 records, qint64 failures, double seconds);
