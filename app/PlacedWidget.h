#pragma once

#include <QWidget>

/// Creates a child of `parent` with an object name and a fixed geometry in pixels.
template <typename Widget>
Widget* placed(QWidget* parent, const char* name, const QRect& geometry, Qt::CursorShape cursor = Qt::ArrowCursor)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QString::fromLatin1(name));
    widget->setGeometry(geometry);
    if (cursor != Qt::ArrowCursor)
        widget->setCursor(cursor);
    return widget;
}
