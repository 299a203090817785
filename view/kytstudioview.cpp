#include "view/kytstudioview.h"

#include "bonds/BondGeometry.h"
#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "canvas/truncate.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawingStyle.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/DrawingGeometry.h"

#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr double hitReach = 3; // screen pixels, when zoomed out

bool isAtom(const QCanvasItem* item)
{
    return item->rtti() == QCanvasItem::Rtti_Ellipse;
}

} // namespace

QCanvasLine* const tempBond = new QCanvasLine(nullptr);
double _x = 0; // NOLINT(bugprone-reserved-identifier)

KytStudioView::KytStudioView(QWidget* parent, KytStudioDoc* doc)
    : QCanvasView(parent)
    , doc(doc)
{
    connect(doc, &KytStudioDoc::documentChanged, this, &KytStudioView::slotDocumentChanged);
    connect(doc, &QObject::destroyed, this, [this] { this->doc = nullptr; });
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setBackgroundColor(QColor(128, 128, 0));
    setCursor(Qt::CrossCursor);
    verticalScrollBar()->setCursor(Qt::ArrowCursor);
    horizontalScrollBar()->setCursor(Qt::ArrowCursor);
    setCanvas(doc->canvas);
    tempBond->setKept(true);
    tempBond->setCanvas(doc->canvas);
    tempBond->setZ(rubberBandLevel);
    connect(doc->canvas, &QCanvas::itemGone, this, &KytStudioView::forget);
    connect(doc->canvas, &QCanvas::changed, this, &KytStudioView::repaintHalos);
    viewport()->setMouseTracking(true);
}

KytStudioView::~KytStudioView() = default;

void KytStudioView::slotDocumentChanged() { }

void KytStudioView::forget(QCanvasItem* item)
{
    elementTyping.forget(item);
    deselectGone(item);
    if (hover == item)
        hover = nullptr;
    if (moving == item)
        moving = nullptr;
    if (atomUnderPointer == item)
        noteAtomsUnderPointer({});
    if (lastAtom == item) {
        lastAtom = nullptr;
        endGesture();
    }
}

void KytStudioView::endGesture()
{
    isLastAtom = 0;
    tempBond->hide();
}

QPoint KytStudioView::canvasPoint(const QMouseEvent* event) const
{
    return inverseWorldMatrix().map(event->pos());
}

/// The items of the drawing at `p`, topmost first, without the rubber band. If there are none and the view is zoomed
/// out, the items nearby, atoms first.
QCanvasItemList KytStudioView::itemsAt(const QPoint& p) const
{
    QCanvasItemList items = canvas()->collisions(p);
    items.removeOne(tempBond);
    if (!items.isEmpty() || reach() == 0)
        return items;
    items = canvas()->itemsWithin(p, reach());
    items.removeOne(tempBond);
    std::stable_partition(items.begin(), items.end(), isAtom);
    return items;
}

/// The atoms at `p` other than `except`, topmost first. If there are none and the view is zoomed out, those nearby.
QList<KytAtom*> KytStudioView::atomsAt(const QPoint& p, const KytAtom* except) const
{
    const auto atomsAmong = [except](const QCanvasItemList& items) {
        QList<KytAtom*> atoms;
        for (QCanvasItem* item : items)
            if (isAtom(item) && item != except)
                atoms.append(static_cast<KytAtom*>(item));
        return atoms;
    };
    const QList<KytAtom*> atoms = atomsAmong(canvas()->collisions(p));
    return atoms.isEmpty() && reach() > 0 ? atomsAmong(canvas()->itemsWithin(p, reach())) : atoms;
}

KytAtom* KytStudioView::atomAt(const QPoint& p) const
{
    return atomsAt(p).value(0);
}

QList<KytAtom*> KytStudioView::moleculeAt(const QPoint& p) const
{
    if (!canvas())
        return {};
    for (const QCanvasItem* item : itemsAt(p)) {
        const KytAtom* atom = nullptr;
        if (item->rtti() == QCanvasItem::Rtti_Ellipse)
            atom = static_cast<const KytAtom*>(item);
        else if (item->rtti() == QCanvasItem::Rtti_Line)
            atom = static_cast<const KytBondLine*>(item)->getBond()->getFromAtom();
        else if (item->rtti() == QCanvasItem::Rtti_Polygon)
            atom = static_cast<const KytStereoBond*>(item)->getBond()->getFromAtom();
        if (atom)
            return drawnAtoms(*canvas(), atom->getMolecule());
    }
    return {};
}

/// The distance from an item's hit area, in canvas pixels, at which it is still hit.
int KytStudioView::reach() const
{
    return zoom() < 1 ? static_cast<int>(std::lround(hitReach / zoom())) : 0;
}

KytAtom* KytStudioView::newAtom(double x, double y, float depth)
{
    auto* atom = new KytAtom(canvas(), depth, false);
    atom->move(x, y);
    atom->show();
    return atom;
}

void KytStudioView::startHover(QPoint p)
{
    if (!canvas())
        return;
    const QCanvasItemList items = itemsAt(p);
    if (items.isEmpty())
        return;
    hover = items.first();
    if (hover->rtti() == QCanvasItem::Rtti_Ellipse)
        static_cast<KytAtom*>(hover)->startHover();
    else if (hover->rtti() == QCanvasItem::Rtti_Line)
        static_cast<KytBondLine*>(hover)->startHover();
}

void KytStudioView::stopHover()
{
    if (hover && hover->rtti() == QCanvasItem::Rtti_Ellipse)
        static_cast<KytAtom*>(hover)->stopHover();
    else if (hover && hover->rtti() == QCanvasItem::Rtti_Line)
        static_cast<KytBondLine*>(hover)->stopHover();
    hover = nullptr;
}

float KytStudioView::getZplane() const
{
    if (!lastAtom)
        return 0;
    const double length = distance({lastAtom->x(), lastAtom->y()}, {newx, newy});
    if (canvasState == KYTVS_drawStereoUp)
        return narrowed(lastAtom->getAtomZ() + drawnSlope * length);
    if (canvasState == KYTVS_drawStereoDown)
        return narrowed(lastAtom->getAtomZ() - drawnSlope * length);
    return lastAtom->getAtomZ();
}

float KytStudioView::findtheta(float x1, float y1, float x2, float y2)
{
    return direction(x1, y1, x2, y2);
}

void KytStudioView::addBond(KytBond* bond, KytViewState state)
{
    switch (state) {
    case KYTVS_drawSimpleBond:
        bond->addBond(KYTBT_SingleBond, drawnAngle);
        break;
    case KYTVS_drawDashedBond:
        bond->addBond(KYTBT_DashedLine, drawnAngle);
        break;
    case KYTVS_drawStereoUp:
        bond->addBond(KYTBT_StereoUp, drawnAngle);
        break;
    case KYTVS_drawStereoDown:
        bond->addBond(KYTBT_StereoDown, drawnAngle);
        break;
    default:
        break;
    }
}
