#pragma once

#include "canvas/qcanvas.h"
#include "view/KytViewState.h"

#include <QPoint>

class KytAtom;
class KytBond;
class KytStudioDoc;

/// The preview of the bond being drawn: one line, made at program start, on the canvas of the view made last. Nobody
/// frees it, and no mode treats it as part of the drawing.
extern QCanvasLine* const tempBond;

/// The horizontal canvas position, in pixels, from which the next rotation step is measured.
extern double _x; // NOLINT(bugprone-reserved-identifier)

/// The view onto the document's canvas that turns mouse events into atoms, bonds, moves, rotations and deletions
/// according to the editing mode.
class KytStudioView : public QCanvasView {
    Q_OBJECT

public:
    /// Shows the canvas of `doc`, which must exist; neither is owned.
    KytStudioView(QWidget* parent, KytStudioDoc* doc);
    ~KytStudioView() override;

    /// Highlights the topmost item at the canvas point `p`, if there is one.
    void startHover(QPoint p);
    void stopHover();

    /// The depth of a new atom at the end of the bond being drawn: that of lastAtom, raised or lowered by a slope of 60
    /// degrees in the wedge modes. 0 when no atom is being drawn from.
    float getZplane() const;

    /// The direction from (x1, y1) to (x2, y2) in radians, counter-clockwise on the screen, in [0, 2 pi). Straight down
    /// gives pi/2 like straight up.
    static float findtheta(float x1, float y1, float x2, float y2);

    /// Adds what the mode `state` draws to `bond`; nothing in a mode that draws no single bonds.
    void addBond(KytBond* bond, KytViewState state);

    /// The second click of a bond: joins lastAtom to the atom at the pointer or at the end point, or to a new one.
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
    QPoint moving_start;           ///< canvas point of the last drag step
    bool flag = false;             ///< drawBond's search has met the start atom

public slots:
    void slotDocumentChanged();

signals:
    /// Length and angle of the bond being drawn, as UTF-8; valid during the call.
    void displayBondDetail(char* text);
    /// The number of atoms of the chain being drawn; 0 once it is placed.
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
