#include "doc/kytstudiodoc.h"

#include "doc/KytFileIO.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

#include <cerrno>

#include <sys/stat.h>

namespace {

constexpr int canvasSize = 2000;  // pixels
constexpr int advancePeriod = 25; // milliseconds

/// Whether the file can be opened for writing as far as its kind goes: a regular file, or none yet.
bool isWritableKind(const QString& fileName)
{
    struct stat status;
    if (stat(QFile::encodeName(fileName).constData(), &status) == 0)
        return S_ISREG(status.st_mode);
    return errno != ELOOP;
}

} // namespace

KytStudioDoc::KytStudioDoc()
    : docName(tr("noname.kyt"))
{
}

KytStudioDoc::~KytStudioDoc() = default;

void KytStudioDoc::newDoc()
{
    canvas = new QCanvas(canvasSize, canvasSize);
    canvas->setDoubleBuffering(true);
    canvas->setBackgroundColor(QColor("white"));
    canvas->setAdvancePeriod(advancePeriod);
    connect(canvas, &QObject::destroyed, this, [this](const QObject* gone) {
        if (gone == canvas)
            canvas = nullptr;
    });
    modified = true;
    emit documentChanged();
}

bool KytStudioDoc::load(const QString& fileName, bool merge)
{
    QFile file(fileName);
    if (!canvas || !QFileInfo(fileName).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    QTextStream stream(&file);
    KytFileIO(fileName).readWorkspace(stream, this, merge);
    file.close();
    canvas->update();
    emit documentChanged();
    return true;
}

bool KytStudioDoc::save()
{
    return !modified || write(docName);
}

bool KytStudioDoc::saveAs(const QString& fileName)
{
    return write(fileName);
}

/// Writes the canvas to a temporary file beside `fileName` that takes its place once all of it is on disk. Only where
/// the directory refuses new files is the file itself written.
bool KytStudioDoc::write(const QString& fileName) const
{
    if (!canvas || fileName.isEmpty() || !isWritableKind(fileName))
        return false;
    QSaveFile file(fileName);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    KytFileIO().writeWorkspace(stream, canvas);
    stream.flush();
    if (stream.status() != QTextStream::Ok) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}
