#include "tests/monkey/HistoryRules.h"

#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "tests/support/RoundTrip.h"
#include "tests/support/Snapshot.h"
#include "view/kytstudioview.h"

#include <QCryptographicHash>

#include <algorithm>
#include <utility>

HistoryRules::HistoryRules(KytStudioApp* window)
    : window(window)
    , drawings{drawing()}
{
}

/// A digest of everything in the drawing, and of the file that would be saved.
QByteArray HistoryRules::drawing() const
{
    QCryptographicHash digest(QCryptographicHash::Sha1);
    digest.addData(snapshotOf(*window->doc->canvas, tempBond).join(u'\n').toUtf8());
    digest.addData(writtenWorkspace(window->doc->canvas));
    return digest.result();
}

bool HistoryRules::hasNewSteps() const
{
    return window->view->history->recordCount() != knownRecords;
}

QString HistoryRules::firstFault()
{
    const KytHistory& history = *window->view->history;
    const qsizetype done = history.undoCount();
    const qint64 recorded = history.recordCount() - std::exchange(knownRecords, history.recordCount());
    if (recorded == 0) {
        if (history.redoCount() != drawings.size() - 1 - done)
            return fault("steps are lost");
        const bool isGoingOn = window->view->isLastAtom == 1 || window->view->moving;
        return isGoingOn ? QString() : compare(done, "without a new step, a drawing is another one than before");
    }
    if (history.redoCount() > 0)
        return fault("steps that were undone are still there");
    // What lies between several steps that were made at once is not known until they are undone; nor is anything where
    // the history has begun to forget.
    if (history.size() > KytHistory::mostMemory * 9 / 10)
        drawings.clear();
    drawings.resize(std::max<qsizetype>(0, done - recorded + 1));
    drawings.resize(done);
    drawings.append(drawing());
    return QString();
}

QString HistoryRules::thereAndBack()
{
    KytStudioView* view = window->view;
    view->cancelGesture();
    const qsizetype start = view->history->undoCount();
    for (qsizetype step = start - 1; step >= 0; --step) {
        if (view->undo().isNull())
            return fault("a step cannot be undone");
        if (const QString found = compare(step, "undone, a drawing is another one than before"); !found.isEmpty())
            return found;
    }
    for (qsizetype step = 1; step < drawings.size(); ++step) {
        if (view->redo().isNull())
            return fault("a step cannot be redone");
        if (const QString found = compare(step, "redone, a drawing is another one than before"); !found.isEmpty())
            return found;
    }
    while (view->history->undoCount() > start)
        view->undo();
    return QString();
}

QString HistoryRules::compare(qsizetype step, const char* what)
{
    ++compareCount;
    const QByteArray present = drawing();
    if (drawings[step].isEmpty())
        drawings[step] = present;
    return drawings[step] == present ? QString() : fault(what);
}

QString HistoryRules::fault(const char* what) const
{
    return QStringLiteral("%1 (%2 steps done, %3 undone)")
        .arg(QLatin1String(what))
        .arg(window->view->history->undoCount())
        .arg(window->view->history->redoCount());
}
