#include "app/StateLabel.h"
#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QAction>

#include <algorithm>

// Undo and redo, and the steps that commands record.

namespace {

constexpr int resultTime = 4000; // milliseconds

} // namespace

void KytStudioApp::initHistory()
{
    history = std::make_unique<KytHistory>(doc);
    history->title = [this] { return title(); };
    history->setTitle = [this](const KytHistory::Title& title) { setTitle(title); };
    view->history = history.get();
}

KytHistory::Title KytStudioApp::title() const
{
    return {doc->docName, windowTitle()};
}

void KytStudioApp::setTitle(const KytHistory::Title& title)
{
    doc->docName = title.docName;
    setWindowTitle(title.caption);
}

void KytStudioApp::beginStep()
{
    if (view)
        view->settleGesture();
}

void KytStudioApp::endStep(const QAction* action)
{
    if (view)
        view->recordStep(action->iconText());
}

void KytStudioApp::undo()
{
    const QString name = view->undo();
    showMessage(name.isNull() ? tr("Nothing to undo") : tr("Undone: %1").arg(name), resultTime);
}

void KytStudioApp::redo()
{
    const QString name = view->redo();
    showMessage(name.isNull() ? tr("Nothing to redo") : tr("Redone: %1").arg(name), resultTime);
}

void KytStudioApp::readIntoView(const QString& fileName, bool locked)
{
    const qsizetype before = drawnAtoms(*doc->canvas).size();
    doc->load(fileName, locked);
    const QList<KytAtom*> read = drawnAtoms(*doc->canvas).mid(before);
    const QRectF shown = view->mapToScene(view->viewport()->rect()).boundingRect();
    const auto isShown = [&](const KytAtom* atom) { return shown.contains(atom->x(), atom->y()); };
    if (read.isEmpty() || std::any_of(read.begin(), read.end(), isShown))
        return;
    QRectF extent;
    for (const KytAtom* atom : read)
        extent |= atom->boundingRect();
    view->showInView(extent);
}
