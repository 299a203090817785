#pragma once

#include <vector>

#include <poll.h>

/// Notices messages of the session manager, such as the one that the session ends, while the event loop of Qt does not
/// run. They stay in the connection, for Qt to read. Notices nothing if there is no session manager.
class SessionManagerWatch {
public:
    SessionManagerWatch();
    ~SessionManagerWatch();
    SessionManagerWatch(const SessionManagerWatch&) = delete;
    SessionManagerWatch& operator=(const SessionManagerWatch&) = delete;

    /// Whether a message is waiting, or the connection is lost. Does not block.
    bool hasMessage();

private:
    std::vector<pollfd> connections;
};
