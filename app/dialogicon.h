#pragma once

#include <QImage>

/// The window icon of the property dialogs.
QImage dialogIcon();
