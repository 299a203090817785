#pragma once

#include <QString>

/// Limits the processor time during its lifetime to one minute. On a timeout the program prints an error message that
/// starts with `context` and exits with status 2. Only the most recently created deadline is active.
class Deadline {
public:
    explicit Deadline(const QString& context);
    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
};
