#include "doc/kytstudiodoc.h"

#include "doc/KytFileIO.h"
#include "doc/WorkspaceFile.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTextStream>

namespace {

Q_LOGGING_CATEGORY(workspaceFile, "kytstudio.workspace")

constexpr int advancePeriod = 25; // milliseconds

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
    connect(canvas, &QObject::destroyed, this, [this](const QObject* destroyed) {
        if (destroyed == canvas)
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

bool KytStudioDoc::write(const QString& fileName) const
{
    if (!canvas)
        return false;
    const QString error = writeWholeFile(fileName, workspaceText(*canvas));
    if (!error.isEmpty())
        qCWarning(workspaceFile).noquote() << fileName + QStringLiteral(": cannot be saved: ") + error;
    return error.isEmpty();
}
