#include "bonds/KytBondLine.h"

#include "bonds/KytBond.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawingStyle.h"

namespace {

constexpr int penWidth = 2; // pixels

} // namespace

KytBondLine::KytBondLine(QPoint from, QPoint to, KytStudioDoc* doc, KytBond* bond, bool isDashed)
    : QCanvasLine(doc->canvas)
    , bond(bond)
    , color{bondColor.red(), bondColor.green(), bondColor.blue()}
    , isDashed(isDashed)
{
    stopHover();
    setPoints(from.x(), from.y(), to.x(), to.y());
    setZ(bondLevel);
    show();
}

KytBondLine::~KytBondLine()
{
    if (bond && bond->deleteBond(this))
        delete bond;
}

void KytBondLine::setFromPoint(int x, int y)
{
    setPoints(x, y, endPoint().x(), endPoint().y());
}

void KytBondLine::setToPoint(int x, int y)
{
    setPoints(startPoint().x(), startPoint().y(), x, y);
}

void KytBondLine::setColor(int r, int g, int b)
{
    color[0] = r;
    color[1] = g;
    color[2] = b;
}

void KytBondLine::startHover()
{
    setPenColor(hoverColor);
}

void KytBondLine::stopHover()
{
    setPenColor(QColor(color[0], color[1], color[2]));
}

void KytBondLine::setPenColor(const QColor& penColor)
{
    // Consecutive lines mostly have the same pen and share it to save memory.
    static QPen last(QColor(), penWidth);
    const Qt::PenStyle style = isDashed ? Qt::DashLine : Qt::SolidLine;
    if (last.color() != penColor || last.style() != style)
        last = QPen(penColor, penWidth, style);
    setPen(last);
}

void KytBondLine::moveBy(double dx, double dy)
{
    bond->moveBy(dx, dy);
}

void KytBondLine::myMoveBy(double dx, double dy)
{
    QCanvasLine::moveBy(dx, dy);
}
