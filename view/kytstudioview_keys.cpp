#include "bonds/KytStereoBond.h"
#include "history/KytHistory.h"
#include "model/Elements.h"
#include "model/KytAtom.h"
#include "view/StepNames.h"
#include "view/kytstudioview.h"

#include <QCursor>

#include <algorithm>

// What keys do with the item under the pointer.

namespace {

/// Whether the colour is that of a new atom, or of an atom with its label, and not one that the user has chosen.
bool hasDefaultColor(const KytAtom& atom)
{
    const auto isColor = [&atom](const std::array<QString, 3>& color) {
        return std::equal(color.begin(), color.end(), std::begin(atom._atomColor));
    };
    return isColor(newAtomColor()) || isColor(elementColor(atom.getSymbol()));
}

/// As the atom's dialog does. A default colour follows the element.
void setElement(KytAtom& atom, const QString& symbol)
{
    if (hasDefaultColor(atom)) {
        const std::array<QString, 3> color = elementColor(symbol);
        std::copy(color.begin(), color.end(), std::begin(atom._atomColor));
    }
    atom.setSymbol(symbol);
}

} // namespace

std::optional<QPoint> KytStudioView::pointedAt() const
{
    if (!canvas())
        return std::nullopt;
    if (const std::optional<QPoint> pointer = contentsPointer())
        return inverseWorldMatrix().map(*pointer);
    // The pointer has not moved since it came back, from a dialog for example.
    if (!viewport()->underMouse())
        return std::nullopt;
    return inverseWorldMatrix().map(transform().map(mapToScene(viewport()->mapFromGlobal(QCursor::pos()))).toPoint());
}

bool KytStudioView::typeLetter(QChar letter, quint64 time)
{
    const std::optional<QPoint> p = pointedAt();
    KytAtom* atom = p ? atomAt(*p) : nullptr;
    if (!atom)
        return false;
    const ElementTyping::Typed typed = elementTyping.type(letter, atom, time);
    if (typed.symbol.isNull())
        return true;
    settleGesture();
    const bool replacesStep = typed.completes && history && letterStep == stepCounts();
    if (replacesStep)
        moveInHistory(&KytHistory::undo);
    const std::pair<qint64, qsizetype> before = stepCounts();
    setElement(*atom, typed.symbol);
    recordStep(tr("Element"));
    letterStep.reset();
    if (!typed.completes && stepCounts() != before)
        letterStep = stepCounts();
    return true;
}

/// Tells whether steps were recorded, undone or redone in between.
std::pair<qint64, qsizetype> KytStudioView::stepCounts() const
{
    return history ? std::pair(history->recordCount(), history->undoCount()) : std::pair<qint64, qsizetype>();
}

void KytStudioView::deleteSelected()
{
    const std::optional<QPoint> p = pointedAt();
    if (selection.isEmpty() && !(p && deletableAt(*p)))
        return;
    settleGesture();
    if (selection.isEmpty()) {
        deleteTopmost(*p);
    } else {
        const QList<KytAtom*> atoms = selectedAtoms();
        stopHover();
        clearSelection();
        deleteAtoms(atoms);
    }
    recordStep(stepName(KYTVS_deleteItem));
    followPointer();
}
