#include "app/kytstudio.h"
#include "doc/WorkspaceFile.h"
#include "doc/kytstudiodoc.h"
#include "view/kytstudioview.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QLoggingCategory>

#include <algorithm>

// Safety copies: when they are made, and how they are opened.

namespace {

// Off by default; can be enabled to find out why there are no copies.
Q_LOGGING_CATEGORY(copies, "kytstudio.copies", QtWarningMsg)

constexpr int automaticInterval = 30'000; // milliseconds
constexpr int resultTime = 4000;          // milliseconds

/// Local date and time, to the minute.
QString timeText(const SafetyCopy& copy)
{
    return QDateTime::fromMSecsSinceEpoch(copy.created).toString(QStringLiteral("yyyy-MM-dd hh:mm"));
}

void logFault(const QString& fault)
{
    if (!fault.isEmpty())
        qCInfo(copies).noquote() << fault;
}

} // namespace

void KytStudioApp::initCopies()
{
    copyTimer.setObjectName(QStringLiteral("automatic copy"));
    copyTimer.setSingleShot(true);
    copyTimer.setInterval(automaticInterval);
    connect(&copyTimer, &QTimer::timeout, this, &KytStudioApp::keepAutomaticCopy);
    connect(view, &KytStudioView::drawingChanged, this, [this] {
        lastOpened.reset();
        noteChange();
    });
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { keepCopy(); });
}

void KytStudioApp::noteChange()
{
    if (!copyTimer.isActive())
        copyTimer.start();
}

void KytStudioApp::keepCopy(const QString& inUse)
{
    copyTimer.stop();
    logFault(keepCopyAtExit(inUse));
}

QString KytStudioApp::keepCopyAtExit(const QString& inUse)
{
    return doc && doc->canvas ? safetyCopies.keep(*doc->canvas, {doc->docName, inUse}) : QString();
}

void KytStudioApp::keepAutomaticCopy()
{
    copyTimer.stop();
    if (doc->canvas)
        logFault(safetyCopies.keepAutomatically(*doc->canvas, {doc->docName}));
}

void KytStudioApp::noteAbandonedCopy()
{
    abandonedCopy = SafetyCopies::takeAbandoned();
    updateState();
}

void KytStudioApp::releaseCopies()
{
    safetyCopies.release();
}

QString KytStudioApp::abandonedCopyText() const
{
    return abandonedCopy ? tr("copy of %1: Ctrl+Shift+O").arg(timeText(*abandonedCopy)) : QString();
}

/// The copy that comes next: the one before the copy that is open, or that of a program that did not end well, or the
/// newest one that differs from the drawing.
std::optional<SafetyCopy> KytStudioApp::nextCopy() const
{
    if (!lastOpened && abandonedCopy && QFile::exists(abandonedCopy->fileName))
        return abandonedCopy;
    const QList<SafetyCopy> all = safetyCopies.available();
    const QByteArray drawing = workspaceText(*doc->canvas);
    const auto isNext = [&](const SafetyCopy& copy) {
        if (lastOpened)
            return copy.created < lastOpened->created;
        QFile file(copy.fileName);
        return file.open(QIODevice::ReadOnly) && file.readAll() != drawing;
    };
    const auto next = std::find_if(all.begin(), all.end(), isNext);
    return next == all.end() ? std::nullopt : std::optional(*next);
}

void KytStudioApp::openCopy()
{
    beginStep();
    const std::optional<SafetyCopy> copy = doc->canvas ? nextCopy() : std::nullopt;
    if (!copy) {
        showMessage(lastOpened ? tr("No older copy") : tr("No copy to open"), resultTime);
        return;
    }
    clearDrawing(copy->fileName);
    readIntoView(copy->fileName, false);
    view->recordStep(tr("Open Copy"));
    abandonedCopy.reset();
    lastOpened = copy;
    updateState();
    showMessage(tr("Copy of %1 opened").arg(timeText(*copy)), resultTime);
}
