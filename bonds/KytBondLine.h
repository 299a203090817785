#pragma once

#include "canvas/qcanvas.h"

class KytBond;
class KytStudioDoc;

/// One line of a bond. Dragging it drags its bond; deleting a bond's last line deletes the bond.
class KytBondLine : public QCanvasLine {
public:
    /// A shown blue line from `from` to `to` (canvas pixels) on the document's canvas.
    KytBondLine(QPoint from, QPoint to, KytStudioDoc* doc, KytBond* bond, bool isDashed);
    ~KytBondLine() override;

    void setFromPoint(int x, int y);
    void setToPoint(int x, int y);
    QPoint getStartPoint() const { return startPoint(); }
    QPoint getEndPoint() const { return endPoint(); }
    KytBond* getBond() const { return bond; }

    /// Stores the colour (0..255 each); it shows at the next stopHover.
    void setColor(int r, int g, int b);
    void startHover();
    void stopHover();

    /// Moves the whole bond with both atoms.
    void moveBy(double dx, double dy) override;
    /// Moves only this line.
    void myMoveBy(double dx, double dy);

    KytBond* bond; ///< the owner
    int color[3];  ///< red, green, blue while not hovered
    bool isDashed;

private:
    void drawIn(const QColor& penColor);
};
