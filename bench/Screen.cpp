#include "bench/Screen.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

constexpr double timeout = 10000; // milliseconds
constexpr int controlKey = 37;    // keycode in the default keyboard map
constexpr quint32 white = 0xffffff;

void waitBriefly()
{
    std::this_thread::sleep_for(std::chrono::microseconds(200));
}

} // namespace

struct Screen::Connection {
    xcb_connection_t* server = xcb_connect(nullptr, nullptr);
    xcb_window_t root = 0;
};

Screen::Screen()
    : x(new Connection)
{
    if (xcb_connection_has_error(x->server)) {
        std::fprintf(stderr, "cannot connect to the X display\n");
        std::exit(1);
    }
    x->root = xcb_setup_roots_iterator(xcb_get_setup(x->server)).data->root;
    const quint32 events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(x->server, x->root, XCB_CW_EVENT_MASK, &events);
    xcb_flush(x->server);
}

Screen::~Screen()
{
    xcb_disconnect(x->server);
    delete x;
}

void Screen::fake(int type, int detail, const QPoint& p)
{
    xcb_test_fake_input(x->server, static_cast<quint8>(type), static_cast<quint8>(detail), XCB_CURRENT_TIME, x->root,
                        static_cast<qint16>(p.x()), static_cast<qint16>(p.y()), 0);
    xcb_flush(x->server);
}

void Screen::movePointer(const QPoint& p)
{
    fake(XCB_MOTION_NOTIFY, 0, p);
}

void Screen::pressButton(int button)
{
    fake(XCB_BUTTON_PRESS, button, QPoint());
}

void Screen::releaseButton(int button)
{
    fake(XCB_BUTTON_RELEASE, button, QPoint());
}

void Screen::pressControl()
{
    fake(XCB_KEY_PRESS, controlKey, QPoint());
}

void Screen::releaseControl()
{
    fake(XCB_KEY_RELEASE, controlKey, QPoint());
}

double Screen::now()
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool Screen::isWhite(const QPoint& p)
{
    const auto request = xcb_get_image(x->server, XCB_IMAGE_FORMAT_Z_PIXMAP, x->root, static_cast<qint16>(p.x()),
                                       static_cast<qint16>(p.y()), 1, 1, ~0U);
    xcb_get_image_reply_t* reply = xcb_get_image_reply(x->server, request, nullptr);
    if (!reply)
        return false;
    const auto* pixel = reinterpret_cast<const quint32*>(xcb_get_image_data(reply));
    const bool found = xcb_get_image_data_length(reply) >= 4 && (*pixel & white) == white;
    std::free(reply);
    return found;
}

double Screen::waitForWindow(const QSize& minSize, double started)
{
    QPoint middle(-1, -1);
    while (now() - started < timeout) {
        while (xcb_generic_event_t* event = xcb_poll_for_event(x->server)) {
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY) {
                const xcb_window_t window = reinterpret_cast<xcb_map_notify_event_t*>(event)->window;
                xcb_get_geometry_reply_t* geometry =
                    xcb_get_geometry_reply(x->server, xcb_get_geometry(x->server, window), nullptr);
                if (geometry && geometry->width >= minSize.width() && geometry->height >= minSize.height())
                    middle = QPoint(geometry->x + geometry->width / 2, geometry->y + geometry->height / 2);
                std::free(geometry);
            }
            std::free(event);
        }
        if (middle.x() >= 0 && isWhite(middle))
            return now() - started;
        waitBriefly();
    }
    return -1;
}
