#pragma once

/// Gives Xlib its error handlers back at the end of its life.
///
/// SDL sets its own when a window is opened, leaves them there, and hands on what they do not know to those that it
/// found: opened a second time it would find its own, and an X error would run in circles.
class XlibErrorHandlers {
public:
    XlibErrorHandlers();
    ~XlibErrorHandlers();
    XlibErrorHandlers(const XlibErrorHandlers&) = delete;
    XlibErrorHandlers& operator=(const XlibErrorHandlers&) = delete;

private:
    using Handler = void (*)();
    Handler formerErrorHandler; // kept without Xlib's types, whose header defines common words as macros
    Handler formerIoErrorHandler;
};
