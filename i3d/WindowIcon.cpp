#include "i3d/WindowIcon.h"

#include <QIcon>
#include <QImage>

#include <vector>

// Last: the X headers define common words as macros.
#include <SDL_syswm.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace {

/// The value of the property _NET_WM_ICON: width, height and pixels of each size. Xlib takes its numbers as longs.
std::vector<unsigned long> iconProperty(const QIcon& icon)
{
    std::vector<unsigned long> values;
    for (const QSize& size : icon.availableSizes()) {
        const QImage image = icon.pixmap(size, 1).toImage().convertToFormat(QImage::Format_ARGB32);
        values.push_back(static_cast<unsigned long>(image.width()));
        values.push_back(static_cast<unsigned long>(image.height()));
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                values.push_back(image.pixel(x, y));
    }
    return values;
}

} // namespace

void setViewerIcon(const QIcon& icon)
{
    const std::vector<unsigned long> values = iconProperty(icon);
    SDL_SysWMinfo info = {};
    SDL_VERSION(&info.version)
    if (values.empty() || SDL_GetWMInfo(&info) != 1 || info.subsystem != SDL_SYSWM_X11)
        return;
    Display* display = info.info.x11.display;
    info.info.x11.lock_func();
    XChangeProperty(display, info.info.x11.wmwindow, XInternAtom(display, "_NET_WM_ICON", 0), XA_CARDINAL, 32,
                    PropModeReplace, reinterpret_cast<const unsigned char*>(values.data()),
                    static_cast<int>(values.size()));
    info.info.x11.unlock_func();
}
