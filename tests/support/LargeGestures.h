#pragma once

#include "bonds/KytBond.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QMouseEvent>

// What is done to large drawings in tests and benchmarks alike.

/// Drags or turns the molecule of `grip` by one step of the mouse.
inline void moveOneStep(KytStudioView* view, KytAtom* grip, KytViewState mode)
{
    view->canvasState = mode;
    view->moving = grip;
    view->moving_start = QPoint(0, 0);
    _x = 0;
    QMouseEvent event(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, Qt::LeftButton,
                      Qt::ControlModifier);
    view->contentsMouseMoveEvent(&event);
    view->moving = nullptr;
}

inline KytBond* anyBondOf(const KytAtom* atom)
{
    return atom->outList.isEmpty() ? atom->inList.first() : atom->outList.first();
}
