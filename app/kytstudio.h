#pragma once

#include "app/StatusMessages.h"
#include "doc/SafetyCopies.h"
#include "history/KytHistory.h"
#include "view/KytViewState.h"

#include <QMainWindow>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class Arrival;
class Converter;
class DrawingMimeData;
class KytAtom;
class KytI3dView;
class KytStudioDoc;
class KytStudioView;
class StateLabel;
class QAction;
class QActionGroup;
class QDropEvent;
class QMenu;
class QToolBar;
class QUrl;
struct Clipping;

/// The main window: the editing view with its actions, menus, toolbars and status bar.
///
/// It does not delete the document and the 3D viewer; all other objects are its children.
class KytStudioApp : public QMainWindow {
    Q_OBJECT

public:
    KytStudioApp();
    ~KytStudioApp() override;

    void initDoc();
    void initView();
    void initActions();
    void initMenuBar();
    void initToolBar();
    void initStatusBar();
    void initI3dView();

    /// Asks whether to quit; returns true if confirmed.
    bool queryExit();

    /// Writes a safety copy of the drawing. Called before the drawing is cleared and when the program quits. The file
    /// `inUse` and that of the document are not deleted, even if they are old copies.
    void keepCopy(const QString& inUse = QString());
    /// The same while the process exits, when the toolkit's global objects may be gone. Returns a fault, empty on
    /// success.
    QString keepCopyAtExit(const QString& inUse = QString());
    /// To be called at the start: shows in the permanent label if a program that did not end as its user wished has
    /// left a copy.
    void noteAbandonedCopy();
    /// To be called when the program ends as its user wished: the next one will not mention a copy.
    void releaseCopies();

    /// Opens a workspace as Open does, without a dialog. If it cannot be read, the drawing and its name stay, and the
    /// permanent label says so.
    void openAtStart(const QString& fileName);

    KytStudioView* view = nullptr;
    KytStudioDoc* doc = nullptr;
    KytI3dView* i3dviewer = nullptr;

    QMenu* pFileMenu = nullptr;
    QMenu* pViewMenu = nullptr;
    QMenu* pInsertMenu = nullptr;
    QMenu* pHelpMenu = nullptr;

    QToolBar* fileToolbar = nullptr;
    QToolBar* libraryToolbar = nullptr; ///< not used; see libraryToolBar

    QAction* fileNew = nullptr;
    QAction* fileOpen = nullptr;
    QAction* fileSave = nullptr;
    QAction* fileSaveAs = nullptr;
    QAction* fileClose = nullptr;
    QAction* filePrint = nullptr;
    QAction* fileQuit = nullptr;

    QAction* insertMolecule = nullptr;
    QAction* importMolecule = nullptr;

    QAction* viewToolBar = nullptr;
    QAction* viewStatusBar = nullptr;
    QAction* viewLibraryBar = nullptr;

    QAction* helpAboutApp = nullptr;

    QToolBar* drawToolBar = nullptr; ///< the toolbar of the 3D view, after initToolBar
    QToolBar* libraryToolBar = nullptr;

    QActionGroup* viewGrp = nullptr; ///< the editing modes; at most one is checked

    QAction* drawBond = nullptr;
    QAction* drawDashedBond = nullptr;
    QAction* drawStereoUp = nullptr;
    QAction* drawStereoDown = nullptr;
    QAction* deleteItem = nullptr;
    QAction* viewMode = nullptr;
    QAction* rotateMode = nullptr;
    QAction* fixedLength = nullptr;
    QAction* fixedAngle = nullptr;
    QAction* zigzagStructure = nullptr;
    QAction* I3DView = nullptr;

    QAction* kyfBenzene = nullptr;
    QAction* kyfCubane = nullptr;
    QAction* kyfHexane = nullptr;
    QAction* kyfMegaphon = nullptr;
    QAction* kyfProp = nullptr;
    QAction* kyfWater = nullptr;

public slots:
    void slotFileNew();
    void slotFileOpen();
    void slotFileSave();
    void slotFileSaveAs();
    void slotFileClose();
    void slotFilePrint();
    void slotFileQuit();

    void slotViewToolBar(bool toggle);
    void slotViewStatusBar(bool toggle);
    void slotViewLibraryBar(bool toggle);
    void slotHelpAbout();

    void slotInsertMolecule();
    void slotImportMolecule();
    void slotAddBenzene();
    void slotAddCubane();
    void slotAddHexane();
    void slotAddMegaphon();
    void slotAddProp();
    void slotAddWater();

    void slotSelectViewMode();
    void slotSelectRotateMode();
    void slotSelectAddBond();
    void slotSelectAddDashedBond();
    void slotSelectAddStereoUp();
    void slotSelectAddStereoDown();
    void slotSelectDeleteItem();
    void slotZigzagStructure();
    void slotSelectFixedLength();
    void slotSelectFixedAngle();
    void slotSelectI3DView();

    /// Shows the length and angle of the bond being drawn (UTF-8), if the mode draws bonds.
    void slotDisplayBondDetail(char* text);
    /// Shows the number of atoms of the chain being drawn, if the mode draws chains.
    void slotZigzagAtomCount(int count);

protected:
    /// Shows status tips without losing the messages that they cover.
    bool event(QEvent* event) override;
    /// Handles shortcuts shared by several actions, which trigger none of them, and keys in floating toolbars.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Handles keys that no widget with the focus has used.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showMessage(const QString& text, int milliseconds = 0);
    void openDocument(const KytHistory::Title& before);
    void clearDrawing(const QString& inUse = QString());
    void initCopies();
    /// Starts the timer of the automatic copy, unless it is running.
    void noteChange();
    void keepAutomaticCopy();
    QString abandonedCopyText() const;
    std::optional<SafetyCopy> nextCopy() const;
    void openCopy();
    void initHistory();
    void initKeys();
    void initStateLabel();
    /// To be called before and after a command changes the drawing: records the change as a step named after `action`.
    void beginStep();
    void endStep(const QAction* action);
    KytHistory::Title title() const;
    void setTitle(const KytHistory::Title& title);
    /// Letters and Delete act on the item under the pointer. Returns whether the key is one of these.
    bool pressKey(const QKeyEvent& event);
    void undo();
    void redo();
    void zoomBy(int steps);
    QPointF zoomAnchor() const;
    /// Adds the file to the drawing, and scrolls to the new atoms if none of them is visible.
    void readIntoView(const QString& fileName, bool locked);
    /// Remembers a failed save of `fileName` for the permanent label, or forgets it after a successful one.
    void noteSave(bool succeeded, const QString& fileName);
    void updateState();
    /// Asks for a name to save under and appends the extension. Returns the extension alone if the dialog is cancelled.
    QString askSaveName(const QString& extension);
    void addFromLibrary(const QString& loading, const QString& fileName, const QString& loaded, const QAction* action);
    void initTransfer();
    void copy();
    void paste();
    void tidy();
    void dropFiles(const QList<QUrl>& urls, const QPointF& middle);
    bool handleDrag(QDropEvent* event);
    void receive(std::unique_ptr<Arrival> arriving, const QPointF& middle, const QString& name);
    bool isReceiving() const;
    bool cancelReceiving();
    void whenIdle(QObject* context, const std::function<void()>& act);
    void addArrived(const QList<Clipping>& clippings, const QStringList& faults, const QPointF& middle,
                    const QString& name);
    void startLayout(const QList<KytAtom*>& atoms);
    void replaceAtoms(const QList<KytAtom*>& atoms, const QByteArray& workspace);
    /// The canvas point at the pointer, or in the middle of the view if the pointer is elsewhere.
    QPointF targetOnCanvas() const;
    QList<KytAtom*> moleculeUnderPointer() const;
    void selectMode(KytViewState state);
    QToolBar* makeToolBar(const QString& name, const QString& title, Qt::ToolBarArea area);

    StatusMessages messages;
    std::unique_ptr<KytHistory> history;
    StateLabel* stateLabel = nullptr;
    const KytAtom* atomUnderPointer = nullptr; // its depth is shown
    int atomsUnderPointer = 0;
    int atomsOutside = 0; // of the canvas
    QPointer<DrawingMimeData> copied;
    std::unique_ptr<Arrival> arrival;  // while something is being read
    std::unique_ptr<Converter> layout; // while a molecule is being laid out
    bool propertiesMentioned = false;  // the user was told that the properties of an SD file are not kept
    SafetyCopies safetyCopies;
    QTimer copyTimer{this};                  // runs from the first change after a copy
    std::optional<SafetyCopy> abandonedCopy; // of a program that did not end as its user wished, until it is opened
    std::optional<SafetyCopy> lastOpened;    // until the drawing is changed
    QString missingFile;                     // the file that could not be opened at the start; null if there is none
    QString failedSave;                      // the file that the last save failed to write; null if it succeeded
};
