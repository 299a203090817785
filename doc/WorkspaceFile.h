#pragma once

#include <QByteArray>
#include <QString>

class QCanvas;

/// The drawing on `canvas` in the workspace format.
QByteArray workspaceText(QCanvas& canvas);

/// Atomically replaces the contents of the file `fileName` with `text`. Returns an error message, empty on success.
///
/// The text is written to a temporary file in the same folder and flushed to the disk; then the file is renamed.
/// Whenever the program or the machine stops, the file has either its old or its new contents, complete. After a
/// failure, the old contents are kept and no temporary file remains. If no files can be created in the folder, the file
/// is overwritten directly, without this guarantee.
///
/// A symbolic link is kept and its target is written. Permissions, owner and group of an existing file are kept as far
/// as the user may set them; other hard links to it keep the old contents. Only regular files are written.
QString writeWholeFile(const QString& fileName, const QByteArray& text);
