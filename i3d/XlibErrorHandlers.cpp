#include "i3d/XlibErrorHandlers.h"

#include <X11/Xlib.h>

XlibErrorHandlers::XlibErrorHandlers()
{
    const XErrorHandler errorHandler = XSetErrorHandler(nullptr);
    XSetErrorHandler(errorHandler);
    const XIOErrorHandler ioErrorHandler = XSetIOErrorHandler(nullptr);
    XSetIOErrorHandler(ioErrorHandler);
    formerErrorHandler = reinterpret_cast<Handler>(errorHandler);
    formerIoErrorHandler = reinterpret_cast<Handler>(ioErrorHandler);
}

XlibErrorHandlers::~XlibErrorHandlers()
{
    XSetErrorHandler(reinterpret_cast<XErrorHandler>(formerErrorHandler));
    XSetIOErrorHandler(reinterpret_cast<XIOErrorHandler>(formerIoErrorHandler));
}
