#pragma once

#include <QByteArray>
#include <QString>

class QCanvas;

/// The drawing on `canvas` as the bytes of a workspace file.
QByteArray workspaceText(QCanvas& canvas);

/// Makes `text` the contents of the file `fileName`; tells why that was not possible, or nothing.
///
/// The text goes to a temporary file in the same folder, to the disk, and then in the place of the file: a reader finds
/// the old contents or the new ones, whole, whenever the program or the machine stops, and after a failure the old ones
/// are there and nothing else. Where the folder refuses new files, the file itself is written, without that promise.
///
/// A symbolic link stays one, and its target is written. Permissions, owner and group of an existing file are kept as
/// far as the user may set them; its other hard links keep the old contents. Only regular files are written.
QString writeWholeFile(const QString& fileName, const QByteArray& text);
