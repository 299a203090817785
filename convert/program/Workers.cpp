#include "convert/program/Workers.h"

#include "convert/Deadline.h"
#include "convert/Notes.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr qsizetype maxKept = qsizetype{4} * 1024 * 1024; // bytes of tasks and results
constexpr qint64 tasksPerWorker = 64;                     // added, but not taken
constexpr std::size_t chunk = std::size_t{64} * 1024;     // bytes

using Length = quint64;

QByteArray framed(const QByteArray& text)
{
    const auto length = static_cast<Length>(text.size());
    return QByteArray(reinterpret_cast<const char*>(&length), sizeof length) + text; // NOLINT(*-reinterpret-cast)
}

/// Removes the first whole frame from `bytes`, from `start` on; nothing if it is not complete.
std::optional<QByteArray> takeFrame(const QByteArray& bytes, qsizetype& start)
{
    Length length = 0;
    const qsizetype left = bytes.size() - start;
    if (left < static_cast<qsizetype>(sizeof length))
        return std::nullopt;
    std::memcpy(&length, bytes.constData() + start, sizeof length);
    if (static_cast<Length>(left) - sizeof length < length)
        return std::nullopt;
    start += static_cast<qsizetype>(sizeof length);
    QByteArray frame = bytes.mid(start, static_cast<qsizetype>(length));
    start += static_cast<qsizetype>(length);
    return frame;
}

bool readExactly(int descriptor, char* buffer, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = read(descriptor, buffer, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        buffer += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeExactly(int descriptor, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::send(descriptor, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

/// What a worker does until no tasks follow.
void serve(int descriptor, const Workers::Work& work)
{
    Length length = 0;
    while (readExactly(descriptor, reinterpret_cast<char*>(&length), sizeof length)) { // NOLINT(*-reinterpret-cast)
        QByteArray task(static_cast<qsizetype>(length), Qt::Uninitialized);
        if (!readExactly(descriptor, task.data(), length))
            return;
        QByteArray result;
        {
            const Deadline deadline{Deadline::Worker()};
            result = work(task);
        }
        if (!writeExactly(descriptor, framed(result)))
            return;
    }
}

QString reasonOf(int status)
{
    if (WIFEXITED(status) && WEXITSTATUS(status) == Deadline::workerExitStatus)
        return QStringLiteral("timed out after %1 s").arg(Deadline::limit());
    if (WIFSIGNALED(status))
        return QStringLiteral("the worker process crashed (%1)")
            .arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status))));
    return QStringLiteral("the worker process ended unexpectedly");
}

} // namespace

struct Workers::Worker {
    pid_t process = -1;
    int descriptor = -1;
    std::deque<Task> tasks; ///< sent or to be sent, the first one is being worked on
    QByteArray toSend;
    QByteArray received;
};

Workers::Workers(int count, Work work)
    : count(static_cast<std::size_t>(count))
    , work(std::move(work))
{
}

Workers::~Workers()
{
    for (const auto& worker : workers) {
        if (worker->process > 0) {
            close(worker->descriptor);
            kill(worker->process, SIGKILL);
            waitpid(worker->process, nullptr, 0);
        }
    }
}

void Workers::start(Worker& worker)
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw ConversionError(QStringLiteral("cannot start a worker: ") + QString::fromLocal8Bit(std::strerror(errno)));
    // What is buffered would be printed by both processes.
    std::fflush(nullptr);
    const pid_t parent = getpid();
    worker.process = fork();
    if (worker.process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(EXIT_FAILURE);
        std::signal(SIGINT, SIG_IGN); // the parent ends its workers
        std::signal(SIGTERM, SIG_DFL);
        close(ends[0]);
        for (const auto& other : workers)
            if (other->descriptor >= 0 && other->descriptor != ends[1])
                close(other->descriptor);
        serve(ends[1], work);
        _exit(EXIT_SUCCESS);
    }
    close(ends[1]);
    worker.descriptor = ends[0];
    if (worker.process < 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        close(ends[0]);
        worker.descriptor = -1;
        throw ConversionError(QStringLiteral("cannot start a worker: ") + reason);
    }
}

bool Workers::hasRoom() const
{
    const qint64 kept = added - taken;
    return kept == 0 || (kept < tasksPerWorker * static_cast<qint64>(count) && size < maxKept);
}

void Workers::add(const QByteArray& task)
{
    size += task.size();
    assign({added++, task});
}

/// Gives the task to the worker with the fewest, or to a new one if all are busy.
void Workers::assign(Task task)
{
    const auto least = std::min_element(workers.begin(), workers.end(),
                                        [](const auto& a, const auto& b) { return a->tasks.size() < b->tasks.size(); });
    Worker* worker = least != workers.end() ? least->get() : nullptr;
    if (!worker || (!worker->tasks.empty() && workers.size() < count)) {
        auto added = std::make_unique<Worker>();
        start(*added);
        workers.push_back(std::move(added));
        worker = workers.back().get();
    }
    worker->toSend += framed(task.text);
    worker->tasks.push_back(std::move(task));
    send(*worker);
}

/// Sends as much as the worker takes without waiting.
void Workers::send(Worker& worker)
{
    qsizetype done = 0;
    while (done < worker.toSend.size()) {
        const ssize_t count =
            ::send(worker.descriptor, worker.toSend.constData() + done,
                   static_cast<std::size_t>(worker.toSend.size() - done), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count <= 0)
            break; // a worker that has ended is noticed when its results are received
        done += count;
    }
    worker.toSend.remove(0, done);
}

void Workers::receive(Worker& worker)
{
    char buffer[chunk];
    const ssize_t count = recv(worker.descriptor, buffer, sizeof buffer, MSG_DONTWAIT);
    if (count > 0) {
        worker.received.append(buffer, count);
        takeFrames(worker);
    } else if (count == 0 || (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR)) {
        replace(worker);
    }
}

void Workers::takeFrames(Worker& worker)
{
    qsizetype start = 0;
    while (std::optional<QByteArray> frame = takeFrame(worker.received, start)) {
        Task task = std::move(worker.tasks.front());
        worker.tasks.pop_front();
        size += frame->size();
        finished.emplace(task.number, Result{std::move(task.text), std::move(*frame), QString()});
    }
    worker.received.remove(0, start);
}

/// Replaces a worker that has ended. The task that it was working on has failed; the others go to its successor.
void Workers::replace(Worker& worker)
{
    int status = 0;
    close(worker.descriptor);
    waitpid(worker.process, &status, 0);
    worker.process = worker.descriptor = -1;
    worker.toSend.clear();
    worker.received.clear();
    if (!worker.tasks.empty()) {
        Task task = std::move(worker.tasks.front());
        worker.tasks.pop_front();
        finished.emplace(task.number, Result{std::move(task.text), QByteArray(), reasonOf(status)});
    }
    start(worker);
    for (const Task& task : worker.tasks)
        worker.toSend += framed(task.text);
    send(worker);
}

void Workers::wait(int input, int milliseconds)
{
    std::vector<pollfd> descriptors;
    for (const auto& worker : workers)
        descriptors.push_back(
            {worker->descriptor, static_cast<short>(worker->toSend.isEmpty() ? POLLIN : POLLIN | POLLOUT), 0});
    descriptors.push_back({input, POLLIN, 0}); // poll ignores a negative descriptor
    if (poll(descriptors.data(), descriptors.size(), milliseconds) <= 0)
        return;
    for (std::size_t i = 0; i < workers.size(); ++i) {
        if ((descriptors[i].revents & POLLOUT) != 0)
            send(*workers[i]);
        if ((descriptors[i].revents & (POLLIN | POLLHUP | POLLERR)) != 0)
            receive(*workers[i]);
    }
}

std::optional<Workers::Result> Workers::take()
{
    const auto next = finished.find(taken);
    if (next == finished.end())
        return std::nullopt;
    Result result = std::move(next->second);
    finished.erase(next);
    ++taken;
    size -= result.task.size() + result.result.size();
    return result;
}
