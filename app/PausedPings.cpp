#include "app/PausedPings.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

xcb_connection_t* connection()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* x, const QByteArray& name)
{
    const auto cookie = xcb_intern_atom(x, 0, static_cast<uint16_t>(name.size()), name.constData());
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(x, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

/// What a window tells the window manager about the messages that it handles.
class Protocols {
public:
    Protocols(xcb_connection_t* x, const QWindow& window)
        : x(x)
        , window(static_cast<xcb_window_t>(window.winId()))
        , property(atom(x, "WM_PROTOCOLS"))
        , ping(atom(x, "_NET_WM_PING"))
    {
        constexpr uint32_t mostProtocols = 64;
        const auto cookie = xcb_get_property(x, 0, this->window, property, XCB_ATOM_ATOM, 0, mostProtocols);
        const std::unique_ptr<xcb_get_property_reply_t, Free> reply(xcb_get_property_reply(x, cookie, nullptr));
        if (!reply || reply->format != 32)
            return;
        const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
        atoms.assign(first, first + reply->value_len);
    }

    /// Returns false if there was none.
    bool removePing()
    {
        if (std::erase(atoms, ping) == 0)
            return false;
        write();
        return true;
    }

    void addPing()
    {
        atoms.push_back(ping);
        write();
    }

private:
    void write() const
    {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_ATOM, 32,
                            static_cast<uint32_t>(atoms.size()), atoms.data());
    }

    xcb_connection_t* x;
    xcb_window_t window;
    xcb_atom_t property;
    xcb_atom_t ping;
    std::vector<xcb_atom_t> atoms;
};

} // namespace

PausedPings::PausedPings()
{
    xcb_connection_t* x = connection();
    if (!x)
        return;
    for (QWindow* window : QGuiApplication::topLevelWindows())
        if (window->handle() && Protocols(x, *window).removePing())
            windows.append(window);
    xcb_flush(x);
}

PausedPings::~PausedPings()
{
    xcb_connection_t* x = connection();
    if (!x)
        return;
    for (const QPointer<QWindow>& window : std::as_const(windows))
        if (window && window->handle())
            Protocols(x, *window).addPing();
    xcb_flush(x);
}
