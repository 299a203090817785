#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

class QCanvas;

/// The drawing on `canvas` in the workspace format.
QByteArray workspaceText(QCanvas& canvas);

/// Atomically replaces a file with text that is written piece by piece. All functions return an error message, empty on
/// success.
///
/// The text is written to a temporary file in the same folder and flushed to the disk; then the file is renamed.
/// Whenever the program or the machine stops, the file has either its old or its new contents, complete. After a
/// failure, and without commit(), the old contents are kept and no temporary file remains.
///
/// A symbolic link is kept and its target is written. Permissions, owner and group of an existing file are kept as far
/// as the user may set them; other hard links to it keep the old contents. Only regular files are written.
class FileReplacement {
public:
    /// What to do if no files can be created in the folder.
    enum class Fallback {
        Fail,
        Overwrite ///< the file directly, without the guarantee above
    };

    explicit FileReplacement(const QString& fileName);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    QString open(Fallback fallback);
    QString write(const QByteArray& text);
    QString commit();

private:
    QString cancel(const QString& error);

    QSaveFile file;
};

/// Replaces the contents of the file `fileName` with `text`, as FileReplacement does, or overwrites it directly if no
/// files can be created in its folder. Returns an error message, empty on success.
QString writeWholeFile(const QString& fileName, const QByteArray& text);
