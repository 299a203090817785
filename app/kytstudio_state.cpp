#include "app/StateLabel.h"
#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/StepNames.h"
#include "view/kytstudioview.h"

#include <QFileInfo>
#include <QStatusBar>

#include <algorithm>

// The text of the permanent label in the status bar: document, mode, atoms under the pointer, and what needs attention.

namespace {

bool isOutside(const KytAtom* atom)
{
    return !(atom->x() >= 0 && atom->x() <= canvasSize && atom->y() >= 0 && atom->y() <= canvasSize);
}

} // namespace

void KytStudioApp::initStateLabel()
{
    stateLabel = new StateLabel(statusBar());
    stateLabel->setAccessibleName(tr("State of the drawing"));
    connect(view, &KytStudioView::drawingChanged, this, [this] {
        const QList<KytAtom*> atoms = doc->canvas ? drawnAtoms(*doc->canvas) : QList<KytAtom*>();
        atomsOutside = static_cast<int>(std::count_if(atoms.begin(), atoms.end(), isOutside));
        updateState();
    });
    connect(view, &KytStudioView::selectionChanged, this, &KytStudioApp::updateState);
    connect(view, &KytStudioView::pointerOver, this, [this](const KytAtom* atom, int atoms) {
        atomUnderPointer = atom;
        atomsUnderPointer = atoms;
        updateState();
    });
    updateState();
}

void KytStudioApp::noteSave(bool succeeded, const QString& fileName)
{
    failedSave = succeeded ? QString() : fileName;
    updateState();
}

void KytStudioApp::updateState()
{
    if (!stateLabel || !doc->canvas)
        return;
    QStringList parts{QFileInfo(doc->docName).fileName(), modeName(view->canvasState)};
    if (atomUnderPointer)
        parts << tr("depth %1").arg(double{atomUnderPointer->getAtomZ()}, 0, 'f', 2);
    if (atomsUnderPointer > 1)
        parts << tr("%1 atoms on top of each other").arg(atomsUnderPointer);
    if (view->selectedCount() > 0)
        parts << tr("%1 selected").arg(view->selectedCount());
    if (atomsOutside > 0)
        parts << tr("%1 outside the canvas").arg(atomsOutside);
    if (!missingFile.isNull())
        parts << tr("cannot be opened: %1").arg(QFileInfo(missingFile).fileName());
    if (!failedSave.isNull())
        parts << tr("not saved: %1").arg(QFileInfo(failedSave).fileName());
    parts << abandonedCopyText();
    parts.removeAll(QString());
    stateLabel->showText(parts.join(QStringLiteral(" \u00b7 ")));
}
