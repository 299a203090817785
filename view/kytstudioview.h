#pragma once

#include "canvas/qcanvas.h"
#include "view/ElementTyping.h"
#include "view/KytViewState.h"
#include "view/Selection.h"

#include <QLine>
#include <QPoint>

#include <optional>
#include <utility>

class KytAtom;
class KytBond;
class KytHistory;
class KytStudioDoc;

/// The rubber band of the bond being drawn: a line that is created at program start and is on the canvas of the most
/// recently created view. It is never deleted and is not part of the drawing.
extern QCanvasLine* const tempBond;

/// The horizontal canvas position, in pixels, from which the next rotation step is measured.
extern double _x; // NOLINT(bugprone-reserved-identifier)

/// The view of the document's canvas. Depending on the editing mode, mouse events draw, move, rotate and delete atoms
/// and bonds.
class KytStudioView : public QCanvasView {
    Q_OBJECT

public:
    /// Shows the canvas of `doc`, which must not be null. Neither is owned.
    KytStudioView(QWidget* parent, KytStudioDoc* doc);
    ~KytStudioView() override;

    /// Highlights the topmost item at the canvas point `p`, if any.
    void startHover(QPoint p);
    void stopHover();

    /// The depth of a new atom at the end of the bond being drawn: that of lastAtom, in the wedge modes raised or
    /// lowered at an angle of 60 degrees. 0 without lastAtom.
    float getZplane() const;

    /// The direction from (x1, y1) to (x2, y2) in radians, in [0, 2 pi), counter-clockwise on the screen. Straight up
    /// and straight down both give pi/2.
    static float findtheta(float x1, float y1, float x2, float y2);

    /// Adds the line or wedge of the mode `state` to `bond`; does nothing in modes that do not draw bonds.
    void addBond(KytBond* bond, KytViewState state);

    /// The second click of a bond: bonds lastAtom to the atom at the pointer or at the end point, or to a new atom.
    void drawBond(QMouseEvent* event);
    /// The second click of a chain: draws the whole zigzag chain from lastAtom.
    void drawZigZag(QMouseEvent* event);

    /// Makes a step of what the gesture under way has done so far, before something else begins. A bond or a chain goes
    /// on; a drag ends.
    void settleGesture();
    /// Ends a drag, if there is one, where it has come to.
    void settleDrag();
    /// Ends the gesture under way and takes back what it has done since its last step. Returns the gesture's name, or a
    /// null text when there is none.
    QString cancelGesture();
    /// Records what has changed in the drawing as a step of the history, if there is one.
    void recordStep(const QString& name);

    /// Go one step back or forward; they return its name, or a null text when there is none. A gesture under way is
    /// cancelled: undo takes back no more than that.
    QString undo();
    QString redo();

    /// The canvas point under the pointer, if the pointer is over the view.
    std::optional<QPoint> pointedAt() const;
    /// All atoms of the molecule at the canvas point `p`; empty where there is none.
    QList<KytAtom*> moleculeAt(const QPoint& p) const;
    /// Types a Latin letter on the topmost atom under the pointer, at `time` in milliseconds of any clock: sets its
    /// symbol if this makes an element (ElementTyping). Returns false if there is no atom.
    bool typeLetter(QChar letter, quint64 time);
    /// Deletes the selected atoms or, without a selection, the item under the pointer, as a click in the mode that
    /// deletes.
    void deleteSelected();

    /// The selected atoms, in the order of the canvas items. They move and rotate together; selecting is no step.
    QList<KytAtom*> selectedAtoms() const;
    qsizetype selectedCount() const { return selection.size(); }
    /// Selects `atoms`, with the molecules of those that are locked, and nothing else. Null and atoms that are not on
    /// the canvas are ignored.
    void select(const QList<KytAtom*>& atoms);
    void selectAll();
    void clearSelection();

    /// Zooms by so many levels, in or out, between 25 % and 800 %; what is at `anchor` (pixels of the viewport) stays.
    void zoomBy(int steps, const QPointF& anchor);
    /// Zooms to `factor`, kept between 25 % and 800 %.
    void zoomTo(double factor, const QPointF& anchor);
    /// Shows the whole drawing, as far as it lies on the paper, at 100 % or smaller; nothing without an atom.
    void zoomToDrawing();
    /// Scrolls until the middle of `area` (canvas pixels) is in the middle of the view, as far as the paper goes.
    void showInView(const QRectF& area);

    void contentsMousePressEvent(QMouseEvent* event) override;
    void contentsMouseMoveEvent(QMouseEvent* event) override;
    void contentsMouseReleaseEvent(QMouseEvent* event) override;

    KytStudioDoc* doc;
    KytHistory* history = nullptr; ///< where steps are recorded; not owned, may be null
    KytViewState canvasState = KYTVS_view;
    float fixedAngleValue = 0.17453292F; ///< step of fixed-angle drawing, radians
    float fixedLengthValue = 30.0F;      ///< bond length of fixed-length drawing and of chains, canvas pixels
    float newx = 0;                      ///< end point of the bond being drawn, canvas pixels
    float newy = 0;
    int fixedAngleFlag = 0;        ///< 0 or 1
    int fixedLengthFlag = 0;       ///< 0 or 1
    KytAtom* lastAtom = nullptr;   ///< the start atom of the next bond; not owned
    int isLastAtom = 0;            ///< 1 between the first and the second click
    QCanvasItem* moving = nullptr; ///< the item grabbed in view or rotate mode; not owned
    QCanvasItem* hover = nullptr;  ///< the topmost item under the pointer; not owned
    QPoint moving_start;           ///< pointer position of the last drag step, on the canvas
    bool flag = false;             ///< the search of drawBond has found the start atom

public slots:
    void slotDocumentChanged();

protected:
    bool event(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void drawBelow(QPainter& painter, const QRect& area) override;
    void wheelEvent(QWheelEvent* event) override;

signals:
    /// Emitted with the length and angle of the bond being drawn, as UTF-8; `text` is valid during the call only.
    void displayBondDetail(char* text);
    /// Emitted with the number of atoms of the chain being drawn; 0 once it has been drawn.
    void zigzagAtomValue(int count);
    /// The drawing has changed by a step, or by one that was undone or redone.
    void drawingChanged();
    void zoomChanged();
    /// Other atoms are selected. Selected atoms that are deleted leave the selection at once; this is told later, once
    /// for all of them.
    void selectionChanged();
    /// The pointer has come to other atoms: the topmost one under it, or null, and how many there are. Also when the
    /// atom is going: then with null.
    void pointerOver(const KytAtom* atom, int atoms);

private slots:
    void forget(QCanvasItem* item);
    void repaintHalos(const QRegion& region);

private:
    QPoint canvasPoint(const QMouseEvent* event) const;
    QCanvasItemList itemsAt(const QPoint& p) const;
    QList<KytAtom*> atomsAt(const QPoint& p, const KytAtom* except = nullptr) const;
    KytAtom* atomAt(const QPoint& p) const;
    int reach() const;
    KytAtom* newAtom(double x, double y, float depth);
    void endGesture();

    bool isDrawing() const { return isLastAtom == 1; }
    QString gestureName() const;
    QString moveInHistory(std::optional<QString> (KytHistory::*move)());
    void followPointer();
    std::pair<qint64, qsizetype> stepCounts() const;

    void openProperties(const QPoint& p);
    QCanvasItem* deletableAt(const QPoint& p) const;
    void deleteTopmost(const QPoint& p);
    void startDrawing(const QPoint& p);
    void grabItem(const QPoint& p);
    void grabPivot(const QPoint& p);

    void setSelection(const Selection& chosen);
    bool selectAt(const QPoint& p);
    void stretchRectangle(const QPoint& p);
    void selectRectangle();
    void endRectangle();
    QRectF rectangleArea() const;
    void updateRectangle();
    void deselectGone(const QCanvasItem* item);
    bool movesSelection(const QCanvasItem* grabbed, Qt::KeyboardModifiers modifiers) const;

    void refreshHover(const QPoint& p);
    void drawRubberBand(const QPoint& p);
    void reportBond();
    void reportChain();
    void dragTo(const QPoint& p, Qt::KeyboardModifiers modifiers);
    void rotateTo(const QPoint& p, Qt::KeyboardModifiers modifiers);
    void dropAt(const QPoint& p, Qt::KeyboardModifiers modifiers);

    KytAtom* targetAt(const QPoint& p);
    void bondTo(KytAtom* target);
    KytAtom* chainAtom(double x, double y, KytAtom* previous);

    void noteAtomsUnderPointer(const QCanvasItemList& items);

    const KytAtom* atomUnderPointer = nullptr; // as last told by pointerOver
    int atomsUnderPointer = 0;
    double wheelTurn = 0;                             // of the wheel with Control, that is not a whole notch yet
    KytViewState drawingState = KYTVS_drawSimpleBond; // the mode of the first click
    bool drawingHasSteps = false;                     // steps were recorded since the first click
    Selection selection;
    bool selectionIsStale = false;  // selectionChanged is still to be emitted for deleted atoms
    std::optional<QLine> rectangle; // that selects, from corner to corner, while it is drawn
    ElementTyping elementTyping;
    std::optional<std::pair<qint64, qsizetype>> letterStep; // stepCounts after the step of the last letter, if any
};
