#pragma once

#include "canvas/qcanvas.h"
#include "view/KytViewState.h"

#include <QPoint>

class KytAtom;
class KytBond;
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

    void contentsMousePressEvent(QMouseEvent* event) override;
    void contentsMouseMoveEvent(QMouseEvent* event) override;
    void contentsMouseReleaseEvent(QMouseEvent* event) override;

    KytStudioDoc* doc;
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

signals:
    /// Emitted with the length and angle of the bond being drawn, as UTF-8; `text` is valid during the call only.
    void displayBondDetail(char* text);
    /// Emitted with the number of atoms of the chain being drawn; 0 once it has been drawn.
    void zigzagAtomValue(int count);

private slots:
    void forget(QCanvasItem* item);

private:
    QPoint canvasPoint(const QMouseEvent* event) const;
    QCanvasItemList itemsAt(const QPoint& p) const;
    KytAtom* atomAt(const QPoint& p) const;
    KytAtom* newAtom(double x, double y, float depth);
    void endGesture();

    void openProperties(const QPoint& p);
    void deleteTopmost(const QPoint& p);
    void startDrawing(const QPoint& p, const QMouseEvent* event);
    void grabItem(const QPoint& p);
    void grabPivot(const QPoint& p);

    void refreshHover(const QPoint& p);
    void drawRubberBand(const QPoint& p);
    void reportBond();
    void reportChain();
    void dragTo(const QPoint& p, bool wholeMolecule);
    void rotateTo(const QPoint& p);
    void dropAt(const QPoint& p);

    KytAtom* targetAt(const QPoint& p);
    void bondTo(KytAtom* target);
    KytAtom* chainAtom(double x, double y, KytAtom* previous);
};
