#include "app/kytstudio.h"
#include "view/kytstudioview.h"

#include <QAction>
#include <QDeadlineTimer>
#include <QKeyEvent>
#include <QMenu>
#include <QShortcut>

#include <functional>
#include <initializer_list>

// Keys in addition to those of the actions: undo and redo, copy and paste, zoom, cancelling a gesture, selecting,
// elements, deleting, and a digit for each mode and switch, since some of these share their own key.

void KytStudioApp::initKeys()
{
    view->setWhatsThis(tr(
        "Canvas\n\nDraw and move with the left mouse button. Right-click on an atom or a wedge for its properties.\n\n"
        "Letters: the element of the atom under the pointer, such as N or Cl\n"
        "Shift+drag, Shift+click: select atoms in View Mode\nCtrl+A: select all\n"
        "Delete, Backspace: delete the selected atoms, or the item under the pointer\n"
        "Ctrl+C: copy the selected atoms, or the molecule under the pointer, or all\n"
        "Shift+Insert, Ctrl+Shift+V: paste\nCtrl+L: lay out the molecule anew\n"
        "Ctrl+Shift+O: open the newest safety copy; again: the one before\n"
        "Ctrl+Z: undo\nCtrl+Shift+Z, Ctrl+Y: redo\nEscape: cancel the current gesture, or clear the selection\n"
        "Ctrl+wheel, Ctrl++, Ctrl+-: zoom\nCtrl+0: full size\nCtrl+9: the whole drawing\n"
        "1 to 8: modes, in the order of the toolbar\n9: Fixed Length\n0: Fixed Angle"));
    const auto bind = [this](std::initializer_list<const char*> keys, const std::function<void()>& act) {
        for (const char* key : keys)
            connect(new QShortcut(QKeySequence(QString::fromLatin1(key)), this), &QShortcut::activated, this, act);
    };
    bind({"Ctrl+Z"}, [this] { undo(); });
    bind({"Ctrl+Shift+Z", "Ctrl+Y"}, [this] { redo(); });
    bind({"Ctrl++", "Ctrl+="}, [this] { zoomBy(1); });
    bind({"Ctrl+-"}, [this] { zoomBy(-1); });
    bind({"Ctrl+0"}, [this] { view->zoomTo(1, zoomAnchor()); });
    bind({"Ctrl+9"}, [this] { view->zoomToDrawing(); });
    bind({"Ctrl+C"}, [this] { copy(); });
    bind({"Shift+Ins", "Ctrl+Shift+V"}, [this] { paste(); });
    bind({"Ctrl+L"}, [this] { tidy(); });
    bind({"Ctrl+Shift+O"}, [this] { openCopy(); });
    bind({"Ctrl+A"}, [this] { view->selectAll(); });
    bind({"Escape"}, [this] {
        if (!cancelReceiving() && view->cancelGesture().isNull())
            view->clearSelection();
    });

    // In the order of the toolbar.
    QAction* const owners[] = {viewMode,       rotateMode,      drawBond,   drawDashedBond, drawStereoUp,
                               drawStereoDown, zigzagStructure, deleteItem, fixedLength,    fixedAngle};
    for (int i = 0; i < 10; ++i) {
        const QKeySequence digit(QString::number((i + 1) % 10));
        auto* shortcut = new QShortcut(digit, this);
        shortcut->setAutoRepeat(false); // a held key would toggle a switch repeatedly
        connect(shortcut, &QShortcut::activated, owners[i], &QAction::trigger);
        const QString own = owners[i]->shortcut().toString(QKeySequence::NativeText);
        owners[i]->setToolTip(QStringLiteral("%1 (%2, %3)").arg(owners[i]->iconText(), own, digit.toString()));
    }
    // A drag gets no release event when a menu opens.
    for (QMenu* menu : {pFileMenu, pViewMenu, pInsertMenu, pHelpMenu})
        connect(menu, &QMenu::aboutToShow, view, &KytStudioView::settleDrag);
}

// Not shortcuts: these would come before the letters that open a menu from the menu bar.
bool KytStudioApp::pressKey(const QKeyEvent& event)
{
    const int key = event.key();
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool isDelete = (key == Qt::Key_Delete || key == Qt::Key_Backspace) && held == Qt::NoModifier;
    const bool isLetter =
        key >= Qt::Key_A && key <= Qt::Key_Z && (held & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) == 0;
    if (event.isAutoRepeat()) // a held key acts once
        return isDelete || isLetter;
    if (isDelete)
        view->deleteSelected();
    // The time of the key press, also when the program was busy meanwhile.
    const quint64 time =
        event.timestamp() > 0 ? event.timestamp() : static_cast<quint64>(QDeadlineTimer::current().deadline());
    if (isLetter)
        view->typeLetter(QChar(key), time);
    return isDelete || isLetter;
}

QPointF KytStudioApp::zoomAnchor() const
{
    const QPoint pointer = view->viewport()->mapFromGlobal(QCursor::pos());
    const QRect area = view->viewport()->rect();
    return view->viewport()->underMouse() && area.contains(pointer) ? pointer : area.center();
}

void KytStudioApp::zoomBy(int steps)
{
    view->zoomBy(steps, zoomAnchor());
}
