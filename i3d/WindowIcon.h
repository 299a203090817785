#pragma once

class QIcon;

/// Gives the open window of SDL an icon, in all sizes that the icon has. A null icon changes nothing, and so does a
/// video driver other than X11.
void setViewerIcon(const QIcon& icon);
