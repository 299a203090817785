#pragma once

#include <QByteArrayList>

#include <cerrno>
#include <csignal>
#include <cstdarg>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

// Stands between the program and the system calls that a save is made of: lists them, and makes a chosen one fail or be
// the last thing that the process does. To be included by one file of a test program; its functions then take the place
// of the C library's own, for the toolkit too.

/// What is to happen to the calls of this thread while it lives; one at a time.
class DisturbedCalls {
public:
    enum Disturbance { None, Fail, Kill };

    /// Disturbs the call with the number `at`, counted from 0; a call that is to fail does so with `error`.
    explicit DisturbedCalls(Disturbance disturbance = None, int at = -1, int error = 0)
        : disturbance(disturbance)
        , at(at)
        , error(error)
    {
        current = this;
    }
    ~DisturbedCalls() { current = nullptr; }
    DisturbedCalls(const DisturbedCalls&) = delete;
    DisturbedCalls& operator=(const DisturbedCalls&) = delete;

    /// The names of the calls so far.
    const QByteArrayList& names() const { return calls; }

    /// Takes note of a call; whether it must fail, with errno set.
    static bool disturb(const char* name)
    {
        if (!current)
            return false;
        DisturbedCalls& self = *current;
        current = nullptr; // what this does itself is not counted
        const bool hit = self.calls.size() == self.at;
        self.calls.append(name);
        if (hit && self.disturbance == Kill)
            ::kill(::getpid(), SIGKILL);
        current = &self;
        errno = self.error;
        return hit && self.disturbance == Fail;
    }

private:
    inline static thread_local DisturbedCalls* current = nullptr;

    Disturbance disturbance;
    int at;
    int error;
    QByteArrayList calls;
};

extern "C" {

int open64(const char* name, int flags, ...)
{
    va_list rest;
    va_start(rest, flags);
    const int mode = flags & (O_CREAT | __O_TMPFILE) ? va_arg(rest, int) : 0;
    va_end(rest);
    if ((flags & O_ACCMODE) != O_RDONLY && DisturbedCalls::disturb("open"))
        return -1;
    return int(syscall(SYS_openat, AT_FDCWD, name, flags, mode));
}

ssize_t write(int descriptor, const void* data, size_t size)
{
    return DisturbedCalls::disturb("write") ? -1 : syscall(SYS_write, descriptor, data, size);
}

int fdatasync(int descriptor)
{
    return DisturbedCalls::disturb("fdatasync") ? -1 : int(syscall(SYS_fdatasync, descriptor));
}

int fsync(int descriptor)
{
    return DisturbedCalls::disturb("fsync") ? -1 : int(syscall(SYS_fsync, descriptor));
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    return DisturbedCalls::disturb("fchmod") ? -1 : int(syscall(SYS_fchmod, descriptor, mode));
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return DisturbedCalls::disturb("linkat") ? -1 : int(syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int rename(const char* from, const char* to) noexcept
{
    return DisturbedCalls::disturb("rename") ? -1 : int(syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}
}
