#pragma once

#include <QString>

/// Limits the processor time during its lifetime, normally to one minute. On a timeout the program ends. Deadlines that
/// are created while another one is active have no effect.
class Deadline {
public:
    static constexpr int exitStatus = 2;       ///< of the program
    static constexpr int workerExitStatus = 3; ///< of a worker

    /// On a timeout, prints an error message that starts with `context` and exits with exitStatus.
    explicit Deadline(const QString& context);

    /// For a worker: on a timeout, exits with workerExitStatus without a message.
    struct Worker { };
    explicit Deadline(Worker);

    ~Deadline();
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    /// Sets the limit of all deadlines that are created afterwards.
    static void setLimit(int seconds);
    static int limit();

private:
    bool isActive = false;
};
