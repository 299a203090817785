#pragma once

#include <QByteArray>
#include <QString>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

/// Processes that do the same work with one task after the other. The results come in the order of the tasks. A worker
/// that ends with its task, because it took too long or crashed, is replaced; the other tasks are not affected.
class Workers {
public:
    /// Makes the result of a task. Runs in a worker; must not throw.
    using Work = std::function<QByteArray(const QByteArray& task)>;

    struct Result {
        QByteArray task;
        QByteArray result;
        QString fault; ///< why there is no result; empty if there is one
    };

    /// For `count` workers, which are started when there are tasks for them.
    Workers(int count, Work work);

    /// Ends the workers, whatever they are doing.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;

    /// Whether another task can be added without letting tasks or results pile up.
    bool hasRoom() const;

    /// Throws ConversionError if a worker cannot be started; wait() does, too.
    void add(const QByteArray& task);

    /// Whether tasks are left whose result was not taken.
    bool isBusy() const { return taken < added; }

    /// Sends tasks and receives results. Waits until a result arrives, a signal does, or `input` is readable; -1 waits
    /// for results alone. Returns after `milliseconds` at the latest.
    void wait(int input, int milliseconds);

    /// The next result in the order of the tasks; nothing if it is not there yet.
    std::optional<Result> take();

private:
    struct Worker;
    struct Task {
        qint64 number = 0;
        QByteArray text;
    };

    void start(Worker& worker);
    void assign(Task task);
    void send(Worker& worker);
    void receive(Worker& worker);
    void takeFrames(Worker& worker);
    void replace(Worker& worker);

    std::size_t count;
    Work work;
    std::vector<std::unique_ptr<Worker>> workers;
    std::map<qint64, Result> finished;
    qint64 added = 0;
    qint64 taken = 0;
    qsizetype size = 0; ///< of the tasks and results that are kept, in bytes
};
