#include "app/kytstudio.h"

#include "app/Arrival.h"
#include "app/Converter.h"
#include "app/DrawingMimeData.h"
#include "app/PausedPings.h"
#include "app/PendingInput.h"
#include "app/Version.h"
#include "doc/kytstudiodoc.h"
#include "i3d/KytI3dView.h"
#include "view/kytstudioview.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QShortcutEvent>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

namespace {

constexpr int detailTime = 15000;   // milliseconds
constexpr int ambiguousTime = 4000; // milliseconds
constexpr int readyTime = 4000;     // milliseconds

} // namespace

KytStudioApp::KytStudioApp()
    : messages(statusBar())
{
    setWindowTitle(tr(captionText));
    initDoc();
    initView();
    initActions();
    initMenuBar();
    initToolBar();
    initStatusBar();
    initI3dView();
    initHistory();
    initKeys();
    initStateLabel();
    initTransfer();
    initCopies();
    viewToolBar->setChecked(true);
    viewStatusBar->setChecked(true);
    viewLibraryBar->setChecked(true);
    resize(450, 400);
    view->viewport()->setMouseTracking(true);
    // Intentional: the toggles are switched on a second time, which has no effect.
    viewToolBar->setChecked(true);
    viewStatusBar->setChecked(true);
    viewLibraryBar->setChecked(true);
}

KytStudioApp::~KytStudioApp()
{
    // The view is deleted later, as a child, and may end a drag then.
    disconnect(view, nullptr, this, nullptr);
    view->history = nullptr;
}

void KytStudioApp::initDoc()
{
    doc = new KytStudioDoc;
}

void KytStudioApp::initView()
{
    doc->newDoc();
    view = new KytStudioView(this, doc);
    view->setAccessibleName(tr("Drawing"));
    setCentralWidget(view);
}

void KytStudioApp::initStatusBar()
{
    showMessage(tr("Ready."), readyTime);
}

void KytStudioApp::initI3dView()
{
    i3dviewer = new KytI3dView(doc->canvas);
}

void KytStudioApp::showMessage(const QString& text, int milliseconds)
{
    messages.show(text, milliseconds);
}

bool KytStudioApp::event(QEvent* event)
{
    if (event->type() != QEvent::StatusTip)
        return QMainWindow::event(event);
    messages.setTip(static_cast<QStatusTipEvent*>(event)->tip());
    return true;
}

bool KytStudioApp::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Shortcut) {
        const auto* key = static_cast<QShortcutEvent*>(event);
        if (key->isAmbiguous()) {
            showMessage(tr("Ambiguous \"%1\" not handled").arg(key->key().toString(QKeySequence::NativeText)),
                        ambiguousTime);
            return true;
        }
    }
    // Any press may be the first of a long gesture, which changes the drawing before it ends.
    if (event->type() == QEvent::MouseButtonPress && watched == view->viewport())
        noteChange();
    const bool isDrag =
        event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove || event->type() == QEvent::Drop;
    if (isDrag && watched == view->viewport())
        return handleDrag(static_cast<QDropEvent*>(event));
    // A floating toolbar is a window, beyond which keys do not go.
    if (event->type() == QEvent::KeyPress && qobject_cast<QToolBar*>(watched)
        && pressKey(*static_cast<QKeyEvent*>(event)))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

void KytStudioApp::keyPressEvent(QKeyEvent* event)
{
    if (!pressKey(*event))
        QMainWindow::keyPressEvent(event);
}

void KytStudioApp::slotDisplayBondDetail(char* text)
{
    if (drawsBond(view->canvasState))
        showMessage(tr(text), detailTime);
}

void KytStudioApp::slotZigzagAtomCount(int count)
{
    if (view->canvasState == KYTVS_zigzag)
        showMessage(QString::asprintf(tr("%d Atoms").toUtf8().constData(), count), detailTime);
}

void KytStudioApp::slotViewToolBar(bool toggle)
{
    showMessage(tr("Toggle toolbar..."));
    fileToolbar->setVisible(toggle);
    showMessage(tr("Ready."));
}

void KytStudioApp::slotViewStatusBar(bool toggle)
{
    showMessage(tr("Toggle statusbar..."));
    statusBar()->setVisible(toggle);
    showMessage(tr("Ready."));
}

// Intentional: "MolLib" toggles the status bar too. The library toolbar can be moved and hidden only by hand.
void KytStudioApp::slotViewLibraryBar(bool toggle)
{
    slotViewStatusBar(toggle);
}

void KytStudioApp::slotHelpAbout()
{
    QMessageBox::about(this, tr("About..."), tr(aboutText));
}

void KytStudioApp::slotSelectI3DView()
{
    showMessage(tr("Opening I3D View"));
    statusBar()->repaint();
    if (view) {
        if (copyTimer.isActive()) // no timer runs while the viewer does
            keepAutomaticCopy();
        const PausedPings pausedPings;
        i3dviewer->view();
    }
    showMessage(tr("Ready."));
    dropPendingInput();
    repaint();
}
