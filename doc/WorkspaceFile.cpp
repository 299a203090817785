#include "doc/WorkspaceFile.h"

#include "doc/KytFileIO.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// Whether the path is a regular file or does not exist.
bool isWritableKind(const QString& fileName)
{
    struct stat status;
    if (stat(QFile::encodeName(fileName).constData(), &status) == 0)
        return S_ISREG(status.st_mode);
    return errno != ELOOP;
}

/// The permissions `mode` for a file with a different group: the group gets the permissions of others.
mode_t withoutGroup(mode_t mode)
{
    return (mode & ~S_IRWXG) | (mode & S_IRWXO) << 3;
}

/// Copies owner, group and permissions of the old file to the new one, as far as the user is allowed to.
void keepOwner(const struct stat& old, int descriptor)
{
    struct stat created;
    if (fstat(descriptor, &created) != 0 || (created.st_uid == old.st_uid && created.st_gid == old.st_gid))
        return;
    constexpr uid_t unchanged = -1;
    const mode_t mode = old.st_mode & ALLPERMS;
    const bool hasGroup = fchown(descriptor, old.st_uid, old.st_gid) == 0
        || fchown(descriptor, unchanged, old.st_gid) == 0 || created.st_gid == old.st_gid;
    static_cast<void>(fchmod(descriptor, hasGroup ? mode : withoutGroup(mode)));
}

/// Flushes the file to the disk. Returns false for I/O errors and lack of space, which some file systems report only
/// here; other errors are ignored because some file systems do not support flushing.
bool syncToDisk(int descriptor)
{
    return fdatasync(descriptor) == 0 || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

/// Flushes the directory entry of the file, so that a completed save survives a power failure.
void syncFolderOf(const QString& fileName)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(QFileInfo(fileName).canonicalFilePath()).path());
    const int descriptor = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

/// Writes all of `text`; false on failure. The rest after a short write is written again, so that the failure sets the
/// error.
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

} // namespace

QByteArray workspaceText(QCanvas& canvas)
{
    QByteArray text;
    QTextStream stream(&text, QIODevice::WriteOnly);
    KytFileIO().writeWorkspace(stream, &canvas);
    stream.flush();
    return text;
}

FileReplacement::FileReplacement(const QString& fileName)
    : file(fileName)
{
}

QString FileReplacement::open(Fallback fallback)
{
    if (file.fileName().isEmpty())
        return QStringLiteral("no file name");
    if (!isWritableKind(file.fileName()))
        return QStringLiteral("not a regular file");
    file.setDirectWriteFallback(fallback == Fallback::Overwrite);
    struct stat old;
    const bool exists = stat(QFile::encodeName(file.fileName()).constData(), &old) == 0;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    if (exists)
        keepOwner(old, file.handle());
    return QString();
}

QString FileReplacement::write(const QByteArray& text)
{
    return writeAll(file, text) ? QString() : cancel(file.errorString());
}

QString FileReplacement::commit()
{
    if (!syncToDisk(file.handle()))
        return cancel(QString::fromLocal8Bit(std::strerror(errno)));
    if (!file.commit())
        return file.errorString();
    syncFolderOf(file.fileName());
    return QString();
}

QString FileReplacement::cancel(const QString& error)
{
    file.cancelWriting();
    return error;
}

QString writeWholeFile(const QString& fileName, const QByteArray& text)
{
    FileReplacement file(fileName);
    QString error = file.open(FileReplacement::Fallback::Overwrite);
    if (error.isEmpty())
        error = file.write(text);
    return error.isEmpty() ? file.commit() : error;
}
