#pragma once

#include "canvas/qcanvas.h"

class KytBond;
class KytStudioDoc;

/// One line of a bond. Dragging it drags its bond; deleting a bond's last line deletes the bond.
class KytBondLine : public QCanvasLine {
public:
    /// Creates a visible blue line from `from` to `to` (canvas pixels) on the canvas of `doc`.
    KytBondLine(QPoint from, QPoint to, KytStudioDoc* doc, KytBond* bond, bool isDashed);
    ~KytBondLine() override;

    void setFromPoint(int x, int y);
    void setToPoint(int x, int y);
    QPoint getStartPoint() const { return startPoint(); }
    QPoint getEndPoint() const { return endPoint(); }
    KytBond* getBond() const { return bond; }

    /// Stores the colour (each component 0 to 255); it is applied by the next stopHover.
    void setColor(int r, int g, int b);
    void startHover();
    void stopHover();

    /// Moves the whole bond with both atoms.
    void moveBy(double dx, double dy) override;
    /// Moves this line only.
    void myMoveBy(double dx, double dy);

    KytBond* bond; ///< the owner
    int color[3];  ///< red, green, blue, used while not hovered
    bool isDashed;

private:
    void setPenColor(const QColor& penColor);
};
