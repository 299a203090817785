#include "doc/WorkspaceFile.h"

#include "doc/KytFileIO.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Whether the file can be opened for writing as far as its kind goes: a regular file, or none yet.
bool isWritableKind(const QString& fileName)
{
    struct stat status;
    if (stat(QFile::encodeName(fileName).constData(), &status) == 0)
        return S_ISREG(status.st_mode);
    return errno != ELOOP;
}

/// The permissions `mode` for a file that has another group: its members have so far been others.
mode_t withoutGroup(mode_t mode)
{
    return (mode & ~S_IRWXG) | (mode & S_IRWXO) << 3;
}

/// Gives a new file the owner, the group and the permissions of the one that it will replace, as far as the user may.
void keepOwner(const struct stat& old, int descriptor)
{
    struct stat made;
    if (fstat(descriptor, &made) != 0 || (made.st_uid == old.st_uid && made.st_gid == old.st_gid))
        return;
    constexpr uid_t unchanged = -1;
    const mode_t mode = old.st_mode & ALLPERMS;
    const bool hasGroup = fchown(descriptor, old.st_uid, old.st_gid) == 0
        || fchown(descriptor, unchanged, old.st_gid) == 0 || made.st_gid == old.st_gid;
    static_cast<void>(fchmod(descriptor, hasGroup ? mode : withoutGroup(mode)));
}

/// Waits until the file is on the disk; false when the disk says that it cannot be. Some file systems learn only now
/// that there is no room, and some have no such thing as waiting.
bool reachesDisk(int descriptor)
{
    return fdatasync(descriptor) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

/// Has the folder's entry for the file reach the disk too, so that a finished save outlives a loss of power.
void syncFolderOf(const QString& fileName)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(QFileInfo(fileName).canonicalFilePath()).path());
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

/// Whether all of `text` could be written. What is left after a short write is written again: that fails, and tells
/// why.
bool writeAll(QSaveFile& file, const QByteArray& text)
{
    qint64 done = 0;
    while (done < text.size()) {
        const qint64 written = file.write(text.constData() + done, text.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

/// Writes to the opened file and puts it in its place; tells what went wrong, or nothing.
QString fill(QSaveFile& file, const QByteArray& text)
{
    if (!writeAll(file, text))
        return file.errorString();
    if (!reachesDisk(file.handle()))
        return QString::fromLocal8Bit(std::strerror(errno));
    return file.commit() ? QString() : file.errorString();
}

} // namespace

QByteArray workspaceText(QCanvas& canvas)
{
    QByteArray text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    KytFileIO().writeWorkspace(stream, &canvas);
    stream.flush();
    return text;
}

QString writeWholeFile(const QString& fileName, const QByteArray& text)
{
    if (fileName.isEmpty())
        return QStringLiteral("no file name");
    if (!isWritableKind(fileName))
        return QStringLiteral("not a regular file");
    QSaveFile file(fileName);
    file.setDirectWriteFallback(true);
    struct stat old;
    const bool exists = stat(QFile::encodeName(fileName).constData(), &old) == 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    if (exists)
        keepOwner(old, file.handle());
    QString trouble = fill(file, text);
    if (trouble.isEmpty())
        syncFolderOf(fileName);
    else
        file.cancelWriting();
    return trouble;
}
