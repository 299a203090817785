#pragma once

#include "bonds/KytBondType.h"
#include "canvas/qcanvas.h"

class KytBond;
class KytStudioDoc;

/// The wedge of a stereo bond: solid if it points towards the viewer, hatched if it points away.
class KytStereoBond : public QCanvasPolygon {
public:
    /// Creates a visible blue wedge with its narrow end at `p0` and its wide end from `p1` to `p2` (canvas pixels).
    /// `angle` is the projection angle in degrees, stored without checks.
    KytStereoBond(QPoint p0, QPoint p1, QPoint p2, KytStudioDoc* doc, KytBond* bond, KytBondType type, float angle);
    ~KytStereoBond() override;

    void setFromPoint(double x, double y);
    void setToPoint(double x1, double y1, double x2, double y2);
    QPolygon* getPointsArray() const { return pa; }
    KytBond* getBond() const { return bond; }

    float getAngle() const { return pangle; }
    /// Stores the angle, clamped to 0 from below; 90 and more become steepestAngle. Then raises or lowers the end atom,
    /// even a locked one, by the length of the wedge times the tangent of the stored number, which is taken as radians.
    void setAngle(float angle);

    /// Stores the colour (each component 0 to 255); it is applied by the next stopHover.
    void setColor(int r, int g, int b);
    void startHover();
    void stopHover();

    /// Moves the whole bond with both atoms.
    void moveBy(double dx, double dy) override;
    /// Moves the wedge only.
    void myMoveBy(double dx, double dy);

    /// Deletes the bond, and this wedge with it.
    void deleteBond();

    KytBond* bond; ///< the owner
    KytBondType bondType;
    QPolygon* pa;                        ///< the three corners: narrow end, then the two of the wide end; owned
    int color[3];                        ///< red, green, blue, used while not hovered
    float pangle;                        ///< projection angle
    QCanvasText* canvasSymbol = nullptr; ///< not used

protected:
    /// Paints a down wedge itself: the brush's pattern is fixed to the screen and shows two lines of a narrow wedge.
    void draw(QPainter& painter) override;

private:
    void setBrushColor(const QColor& brushColor);
};
