#include "history/KytHistory.h"
#include "view/StepNames.h"
#include "view/kytstudioview.h"

#include <QCoreApplication>
#include <QFocusEvent>

// The steps that gestures record, undo and redo.

QString modeName(KytViewState state)
{
    // The texts of the actions that select the modes.
    const auto text = [](const char* source) { return QCoreApplication::translate("KytStudioApp", source); };
    switch (state) {
    case KYTVS_rotate:
        return text("Rotate Mode");
    case KYTVS_drawSimpleBond:
        return text("Draw Bond");
    case KYTVS_drawDashedBond:
        return text("Add Dashed Bond");
    case KYTVS_drawStereoUp:
    case KYTVS_drawStereoDown:
        return text("Add Stereo Bond");
    case KYTVS_deleteItem:
        return text("Delete Item");
    case KYTVS_zigzag:
        return text("Zig Zag Structure");
    default:
        return text("View Mode");
    }
}

QString stepName(KytViewState state)
{
    if (state == KYTVS_view)
        return KytStudioView::tr("Move");
    return state == KYTVS_rotate ? KytStudioView::tr("Rotate") : modeName(state);
}

/// The name of the current gesture. A drag takes precedence over a bond that waits for its second click.
QString KytStudioView::gestureName() const
{
    if (moving)
        return stepName(canvasState == KYTVS_rotate ? KYTVS_rotate : KYTVS_view);
    if (rectangle)
        return tr("Select");
    return isDrawing() ? stepName(drawingState) : QString();
}

void KytStudioView::recordStep(const QString& name)
{
    if (!history || !history->record(name))
        return;
    drawingHasSteps = isDrawing();
    emit drawingChanged();
}

void KytStudioView::settleGesture()
{
    endRectangle();
    const QString name = gestureName();
    moving = nullptr;
    if (!name.isNull())
        recordStep(name);
}

void KytStudioView::settleDrag()
{
    if (moving || rectangle)
        settleGesture();
}

QString KytStudioView::cancelGesture()
{
    QString name = gestureName();
    if (name.isNull())
        return name;
    stopHover();
    moving = nullptr;
    endRectangle();
    endGesture();
    lastAtom = nullptr;
    if (history)
        history->revert();
    emit drawingChanged();
    return name;
}

QString KytStudioView::undo()
{
    // A drawing gesture may have recorded steps already: bonds of a polyline, or a start atom before another gesture.
    const bool hasSteps = drawingHasSteps && !moving && !rectangle;
    const QString cancelled = cancelGesture();
    return cancelled.isNull() || hasSteps ? moveInHistory(&KytHistory::undo) : cancelled;
}

QString KytStudioView::redo()
{
    cancelGesture();
    return moveInHistory(&KytHistory::redo);
}

QString KytStudioView::moveInHistory(std::optional<QString> (KytHistory::*move)())
{
    if (!history)
        return QString();
    stopHover();
    const std::optional<QString> name = (history->*move)();
    if (name)
        emit drawingChanged();
    followPointer();
    return name.value_or(QString());
}

bool KytStudioView::event(QEvent* event)
{
    // Whatever takes the pointer away during a drag also takes its release event.
    const bool takesPointer = event->type() == QEvent::WindowDeactivate || event->type() == QEvent::WindowBlocked
        || event->type() == QEvent::Hide
        || (event->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason);
    if (takesPointer)
        settleDrag();
    return QCanvasView::event(event);
}
