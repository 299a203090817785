#include "doc/SafetyCopies.h"

#include "doc/WorkspaceFile.h"
#include "model/DrawnMolecules.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTemporaryFile>

#include <algorithm>
#include <cstdlib>

namespace {

// Off by default; can be enabled to find out why there are no copies.
Q_LOGGING_CATEGORY(copies, "kytstudio.copies", QtWarningMsg)

constexpr int keptCopies = 20;
constexpr int nameAttempts = 10;       // another instance of the program may take a name first
constexpr qint64 timeTolerance = 2000; // milliseconds; the resolution of file times on some file systems

const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

struct Copy {
    QFileInfo file;
    qint64 created; // milliseconds since 1970
};

/// The file name for a time: local time and UTC offset, such as "2026-03-29T14-07-31.250+0200.kyt".
QString nameAt(qint64 milliseconds)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(milliseconds);
    const int minutes = time.offsetFromUtc() / 60;
    return time.toString(QStringLiteral("yyyy-MM-dd'T'HH-mm-ss.zzz"))
        + QString::asprintf("%c%02d%02d.kyt", minutes < 0 ? '-' : '+', std::abs(minutes) / 60, std::abs(minutes) % 60);
}

/// The time in the name of a copy; -1 for any other name.
qint64 timeIn(const QString& name)
{
    const QRegularExpression pattern(
        QStringLiteral("\\A(\\d{4}-\\d\\d-\\d\\dT)(\\d\\d)-(\\d\\d)-(\\d\\d\\.\\d{3}[+-]\\d\\d)(\\d\\d)\\.kyt\\z"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return -1;
    const QString text = match.captured(1) + match.captured(2) + u':' + match.captured(3) + u':' + match.captured(4)
        + u':' + match.captured(5);
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    return time.isValid() ? time.toMSecsSinceEpoch() : -1;
}

/// The copies in `folder`, newest first: regular files with a copy's name that have not been modified since that time.
QList<Copy> copiesIn(const QString& folder)
{
    QList<Copy> found;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files | QDir::NoSymLinks);
    for (const QFileInfo& file : files) {
        const qint64 created = timeIn(file.fileName());
        if (created >= 0 && std::abs(file.lastModified().toMSecsSinceEpoch() - created) <= timeTolerance)
            found.append({file, created});
    }
    std::sort(found.begin(), found.end(), [](const Copy& a, const Copy& b) { return a.created > b.created; });
    return found;
}

/// Creates the folder and its missing parents, accessible by their owner only.
bool createFolder(const QString& path)
{
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).path();
    return parent != path && createFolder(parent) && (QDir().mkdir(path, ownerOnly) || QFileInfo(path).isDir());
}

bool hasContents(const Copy& copy, const QByteArray& text)
{
    QFile file(copy.file.filePath());
    return copy.file.size() == text.size() && file.open(QIODevice::ReadOnly) && file.readAll() == text;
}

/// The first time from now on whose file name is not in use.
qint64 unusedTime(const QString& folder)
{
    qint64 time = QDateTime::currentMSecsSinceEpoch();
    while (QFileInfo::exists(folder + u'/' + nameAt(time)))
        ++time;
    return time;
}

/// Atomically writes `text` to a new file that is named after the current time. Does not wait for the disk. Returns the
/// file's path, or an empty text on failure.
QString writeCopy(const QString& folder, const QByteArray& text)
{
    for (int i = 0; i < nameAttempts; ++i) {
        QTemporaryFile file(folder + QStringLiteral("/unfinished-XXXXXX"));
        if (!file.open() || file.write(text) != text.size() || !file.flush())
            return {};
        const qint64 time = unusedTime(folder);
        QString name = folder + u'/' + nameAt(time);
        file.setFileTime(QDateTime::fromMSecsSinceEpoch(time), QFile::FileModificationTime);
        if (file.rename(name)) {
            file.setAutoRemove(false);
            return name;
        }
        if (!QFileInfo::exists(name))
            return {};
    }
    return {};
}

/// Deletes all but the newest copies. `newest` counts as the newest one even if the clock has been set back.
void deleteOldCopies(const QString& folder, const QString& newest, const QString& inUse)
{
    int kept = 1;
    const QList<Copy> all = copiesIn(folder);
    for (const Copy& copy : all) {
        if (copy.file == QFileInfo(newest) || ++kept <= keptCopies)
            continue;
        if (inUse.isEmpty() || copy.file != QFileInfo(inUse))
            QFile::remove(copy.file.filePath());
    }
}

} // namespace

QString safetyCopyFolder()
{
    const QString stateHome = qEnvironmentVariable("XDG_STATE_HOME");
    if (QDir::isAbsolutePath(stateHome))
        return stateHome + QStringLiteral("/kytstudio");
    const QString home = qEnvironmentVariable("HOME");
    return QDir::isAbsolutePath(home) ? home + QStringLiteral("/.local/state/kytstudio") : QString();
}

void keepSafetyCopy(QCanvas& canvas, const QString& inUse)
{
    if (drawnAtoms(canvas).isEmpty())
        return;
    const QString folder = safetyCopyFolder();
    if (folder.isEmpty() || !createFolder(folder)) {
        qCInfo(copies) << "cannot create the folder for safety copies:" << folder;
        return;
    }
    const QByteArray text = workspaceText(canvas);
    const QList<Copy> present = copiesIn(folder);
    if (!present.isEmpty() && hasContents(present.first(), text))
        return;
    const QString written = writeCopy(folder, text);
    if (written.isEmpty())
        qCInfo(copies) << "cannot write a safety copy to" << folder;
    else
        deleteOldCopies(folder, written, inUse);
}
