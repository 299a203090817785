#pragma once

#include <QString>

/// While one lives, a computation must be done within a minute of processor time. Otherwise the program says so, with
/// the place that is given, and ends with the status 2. Only the latest one counts.
class Deadline {
public:
    explicit Deadline(const QString& place);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
};
