#pragma once

#include "bonds/KytBondType.h"
#include "canvas/qcanvas.h"

class KytBond;
class KytStudioDoc;

/// The wedge of a stereo bond: solid when it rises toward the viewer, hatched when it goes behind the plane.
class KytStereoBond : public QCanvasPolygon {
public:
    /// A shown blue wedge with the narrow end at `p0` and the wide end from `p1` to `p2` (canvas pixels). `angle` is
    /// the projection angle in degrees, stored as it is.
    KytStereoBond(QPoint p0, QPoint p1, QPoint p2, KytStudioDoc* doc, KytBond* bond, KytBondType type, float angle);
    ~KytStereoBond() override;

    void setFromPoint(double x, double y);
    void setToPoint(double x1, double y1, double x2, double y2);
    QPolygon* getPointsArray() const { return pa; }
    KytBond* getBond() const { return bond; }

    float getAngle() const { return pangle; }
    /// Stores the angle, at least 0 and below 90 (steepestAngle from there on), and lifts or lowers the end atom by the
    /// tangent of the stored number, taken as radians, times the wedge's length. Locked atoms move too.
    void setAngle(float angle);

    /// Stores the colour (0..255 each); it shows at the next stopHover.
    void setColor(int r, int g, int b);
    void startHover();
    void stopHover();

    /// Moves the whole bond with both atoms.
    void moveBy(double dx, double dy) override;
    /// Moves only the wedge.
    void myMoveBy(double dx, double dy);

    /// Deletes the bond, and this wedge with it.
    void deleteBond();

    KytBond* bond; ///< the owner
    KytBondType bondType;
    QPolygon* pa;                        ///< the three corners: narrow end, then the wide end's two; owned
    int color[3];                        ///< red, green, blue while not hovered
    float pangle;                        ///< projection angle
    QCanvasText* canvasSymbol = nullptr; ///< not used

private:
    void fillIn(const QColor& brushColor);
};
