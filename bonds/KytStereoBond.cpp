#include "bonds/KytStereoBond.h"

#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "canvas/truncate.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawingStyle.h"
#include "model/KytAtom.h"

#include <QPainter>

#include <cmath>

namespace {

int middle(int a, int b)
{
    return static_cast<int>((qint64{a} + b) / 2);
}

} // namespace

KytStereoBond::KytStereoBond(QPoint p0, QPoint p1, QPoint p2, KytStudioDoc* doc, KytBond* bond, KytBondType type,
                             float angle)
    : QCanvasPolygon(doc->canvas)
    , bond(bond)
    , bondType(type)
    , pa(new QPolygon({p0, p1, p2}))
    , color{bondColor.red(), bondColor.green(), bondColor.blue()}
    , pangle(angle)
{
    stopHover();
    setPoints(*pa);
    setZ(bondLevel);
    show();
}

KytStereoBond::~KytStereoBond()
{
    if (bond) {
        bond->deleteBond(this);
        if (bond->stereoBond == this)
            bond->stereoBond = nullptr;
    }
    delete pa;
}

void KytStereoBond::setFromPoint(double x, double y)
{
    (*pa)[0] = QPoint(truncated(x), truncated(y));
    setPoints(*pa);
}

void KytStereoBond::setToPoint(double x1, double y1, double x2, double y2)
{
    (*pa)[1] = QPoint(truncated(x1), truncated(y1));
    (*pa)[2] = QPoint(truncated(x2), truncated(y2));
    setPoints(*pa);
}

void KytStereoBond::setAngle(float angle)
{
    if (angle < 0)
        pangle = 0;
    else if (angle < 90)
        pangle = angle;
    else
        pangle = steepestAngle;

    if (!bond || !bond->getFromAtom() || !bond->getToAtom())
        return;
    const QPoint wideEnd(middle((*pa)[1].x(), (*pa)[2].x()), middle((*pa)[1].y(), (*pa)[2].y()));
    const double length = distance((*pa)[0], wideEnd);
    const double side = bondType == KYTBT_StereoUp ? 1 : -1;
    bond->getToAtom()->setAtomZ(narrowed(bond->getFromAtom()->getAtomZ() + std::tan(double{pangle}) * length * side));
}

void KytStereoBond::setColor(int r, int g, int b)
{
    color[0] = r;
    color[1] = g;
    color[2] = b;
}

void KytStereoBond::startHover()
{
    setBrushColor(hoverColor);
}

void KytStereoBond::stopHover()
{
    setBrushColor(QColor(color[0], color[1], color[2]));
}

void KytStereoBond::setBrushColor(const QColor& brushColor)
{
    if (bondType == KYTBT_StereoUp)
        setBrush(QBrush(brushColor, Qt::SolidPattern));
    else if (bondType == KYTBT_StereoDown)
        setBrush(QBrush(brushColor, Qt::VerPattern));
}

void KytStereoBond::draw(QPainter& painter)
{
    if (brush().style() != Qt::VerPattern) {
        QCanvasPolygon::draw(painter);
        return;
    }
    // Round joins keep the outline within the antialiasing fringe, also at the narrow end.
    painter.setPen(QPen(brush().color(), hatchWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPolygonF wedge = QPolygonF(points()).translated(x(), y());
    painter.drawPolygon(wedge);
    const QRectF visible = painter.worldTransform().inverted().mapRect(QRectF(painter.window()));
    for (const QLineF& line : hatchLines(wedge, visible))
        painter.drawLine(line);
}

void KytStereoBond::moveBy(double dx, double dy)
{
    bond->moveBy(dx, dy);
}

void KytStereoBond::myMoveBy(double dx, double dy)
{
    QCanvasPolygon::moveBy(dx, dy);
}

void KytStereoBond::deleteBond()
{
    delete bond;
}
