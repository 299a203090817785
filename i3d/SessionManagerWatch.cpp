#include "i3d/SessionManagerWatch.h"

#include <X11/ICE/ICElib.h>

namespace {

void connectionChanged(IceConn connection, IcePointer connections, Bool opened, IcePointer* /*of this connection*/)
{
    auto& watched = *static_cast<std::vector<pollfd>*>(connections);
    const int number = IceConnectionNumber(connection);
    if (opened)
        watched.push_back({number, POLLIN, 0});
    else
        std::erase_if(watched, [&](const pollfd& w) { return w.fd == number; });
}

} // namespace

SessionManagerWatch::SessionManagerWatch()
{
    // Tells of open connections at once. Qt's is the only one in this process.
    IceAddConnectionWatch(connectionChanged, &connections);
}

SessionManagerWatch::~SessionManagerWatch()
{
    IceRemoveConnectionWatch(connectionChanged, &connections);
}

bool SessionManagerWatch::hasMessage()
{
    return poll(connections.data(), connections.size(), 0) > 0;
}
