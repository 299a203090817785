#include "app/PendingInput.h"

#include <QAbstractNativeEventFilter>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QTimer>

#include <xcb/xcb.h>

#include <cstdint>

namespace {

constexpr int markerTimeout = 2000; // milliseconds, in case the X server does not respond

/// An application-wide event filter that drops input events.
class InputDropper : public QObject {
public:
    explicit InputDropper(QObject* parent)
        : QObject(parent)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    /// From now on drops only events that belong to presses already dropped. Deletes the filter after the last of them.
    void finish()
    {
        dropsAll = false;
        deleteWhenDone();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        quits = quits || event->type() == QEvent::Quit;
        const bool drop = event->spontaneous() && mustDrop(event);
        if (!dropsAll)
            deleteWhenDone();
        return drop || QObject::eventFilter(watched, event);
    }

private:
    bool mustDrop(QEvent* event)
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            return mustDropPress(static_cast<QMouseEvent*>(event));
        case QEvent::MouseButtonRelease:
            return mustDropRelease(static_cast<QMouseEvent*>(event));
        case QEvent::MouseMove:
            return mustDropMove(static_cast<QMouseEvent*>(event));
        case QEvent::ShortcutOverride:
            if (dropsAll)
                event->accept(); // prevents the key from triggering a shortcut
            return dropsAll;
        case QEvent::Close:
            if (mustDropRequestToClose())
                event->ignore();
            return mustDropRequestToClose();
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
            return dropsAll;
        default:
            return false;
        }
    }

    bool mustDropRequestToClose() const { return dropsAll && !quits; }

    bool mustDropPress(const QMouseEvent* event)
    {
        if (!dropsAll && !pressed)
            return false;
        pressed |= event->button();
        return true;
    }

    bool mustDropRelease(const QMouseEvent* event)
    {
        const bool drop = pressed.testFlag(event->button());
        pressed.setFlag(event->button(), false);
        return drop;
    }

    bool mustDropMove(const QMouseEvent* event)
    {
        if (!dropsAll)
            pressed &= event->buttons(); // the release may have gone to another program
        return dropsAll || pressed;
    }

    void deleteWhenDone()
    {
        if (pressed)
            return;
        QCoreApplication::instance()->removeEventFilter(this);
        deleteLater();
    }

    bool dropsAll = true;
    bool quits = false;       // windows are closed by the program itself then
    Qt::MouseButtons pressed; // buttons whose press was dropped
};

/// Processes all events that the X server has sent so far: sends a marker event to itself and runs the event loop until
/// the marker arrives after all other events.
class EventMarker : public QAbstractNativeEventFilter {
public:
    explicit EventMarker(xcb_connection_t* connection)
        : connection(connection)
        , window(xcb_generate_id(connection))
    {
        const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        xcb_create_window(connection, 0, window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                          XCB_COPY_FROM_PARENT, 0, nullptr);
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    ~EventMarker() override
    {
        QCoreApplication::instance()->removeNativeEventFilter(this);
        xcb_destroy_window(connection, window);
        xcb_flush(connection);
    }

    void waitForMarker()
    {
        xcb_client_message_event_t message = {};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = XCB_ATOM_INTEGER;
        xcb_send_event(connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
        xcb_flush(connection);
        QTimer::singleShot(markerTimeout, &loop, &QEventLoop::quit);
        loop.exec();
    }

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) override
    {
        constexpr std::uint8_t sentBit = 0x80;
        if (eventType != "xcb_generic_event_t")
            return false;
        const auto* event = static_cast<const xcb_client_message_event_t*>(message);
        if ((event->response_type & ~sentBit) != XCB_CLIENT_MESSAGE || event->window != window)
            return false;
        loop.quit();
        return true;
    }

private:
    xcb_connection_t* connection;
    xcb_window_t window;
    QEventLoop loop;
};

} // namespace

void dropPendingInput()
{
    auto* dropper = new InputDropper(QCoreApplication::instance());
    if (auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
        EventMarker(x11->connection()).waitForMarker();
    QCoreApplication::processEvents(); // the marker overtakes events that Qt has already queued
    dropper->finish();
}
