#include "bonds/KytBond.h"

#include "bonds/BondGeometry.h"
#include "bonds/BondUpdate.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "canvas/itemmemory.h"
#include "canvas/truncate.h"
#include "doc/Numbers.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace {

constexpr int maxLines = 3;

QPointF centreOf(const KytAtom* atom)
{
    return {atom->x(), atom->y()};
}

QPoint pixelOf(const QPointF& p)
{
    return {truncated(p.x()), truncated(p.y())};
}

void setLine(KytBondLine* line, const QLineF& points)
{
    if (!line)
        return;
    const QPoint from = pixelOf(points.p1());
    const QPoint to = pixelOf(points.p2());
    line->setPoints(from.x(), from.y(), to.x(), to.y());
}

} // namespace

KytBond::KytBond(KytAtom* from, KytAtom* to, KytStudioDoc* doc)
    : doc(doc)
    , toAtom(to)
    , fromAtom(from)
    , bondlength(narrowed(distance(centreOf(from), centreOf(to))))
{
    from->addOutBond(this);
    to->addInBond(this);
}

KytBond::~KytBond()
{
    const int lines = std::exchange(bondCount, -1);
    if (lines >= 3)
        delete bond3;
    if (lines >= 2)
        delete bond2;
    if (lines >= 1) {
        if (isStereo())
            delete stereoBond;
        else
            delete bond1;
    }
    if (toAtom)
        toAtom->deleteBond(this);
    if (fromAtom)
        fromAtom->deleteBond(this);
    if (toAtom && fromAtom && !toAtom->isAnyhowConnected(fromAtom))
        toAtom->setMolecule(new KytMolecule);
}

void* KytBond::operator new(std::size_t size)
{
    return itemMemory()->allocate(size);
}

void KytBond::operator delete(void* bond, std::size_t size)
{
    itemMemory()->deallocate(bond, size);
}

void KytBond::addBond(KytBondType type, float angle)
{
    if (!fromAtom || !toAtom || bondCount < 0 || bondCount >= maxLines)
        return;
    if (isWedgeKind(type) && bondCount != 0)
        return;
    if (bondCount == 1 && isStereo())
        return;

    if (isLineKind(type))
        addLine(type);
    else if (isWedgeKind(type))
        addWedge(type, angle);
    ++bondCount;
}

void KytBond::addLine(KytBondType lineType)
{
    const BondLines lines = bondLines(centreOf(fromAtom), centreOf(toAtom));
    const QLineF points[maxLines] = {lines.centre, lines.second, lines.third};
    KytBondLine** const fields[maxLines] = {&bond1, &bond2, &bond3};
    KytBondType* const kinds[maxLines] = {&bond1Type, &bond2Type, &bond3Type};
    const QLineF& line = points[bondCount];
    *kinds[bondCount] = lineType;
    *fields[bondCount] =
        new KytBondLine(pixelOf(line.p1()), pixelOf(line.p2()), doc, this, lineType == KYTBT_DashedLine);
}

void KytBond::addWedge(KytBondType wedgeType, float angle)
{
    const BondLines lines = bondLines(centreOf(fromAtom), centreOf(toAtom));
    bond1Type = wedgeType;
    stereoBond = new KytStereoBond(pixelOf(lines.centre.p1()), pixelOf(lines.third.p2()), pixelOf(lines.second.p2()),
                                   doc, this, wedgeType, angle);
}

void KytBond::setBond()
{
    if (fromAtom && toAtom)
        BondUpdate().update(this);
}

/// Whether the bond has lines or a wedge to lay out.
bool KytBond::isDrawn() const
{
    return bondCount >= 1 && bondCount <= maxLines;
}

void KytBond::layOut()
{
    if (!fromAtom || !toAtom)
        return;
    const QPointF from = centreOf(fromAtom);
    const QPointF to = centreOf(toAtom);
    bondlength = narrowed(distance(from, to));
    if (!isDrawn())
        return;

    const BondLines lines = bondLines(from, to);
    if (bondCount == 3)
        setLine(bond3, lines.third);
    if (bondCount >= 2)
        setLine(bond2, lines.second);
    if (!isStereo()) {
        setLine(bond1, lines.centre);
    } else if (stereoBond) {
        stereoBond->setFromPoint(from.x(), from.y());
        stereoBond->setToPoint(lines.third.x2(), lines.third.y2(), lines.second.x2(), lines.second.y2());
    }
}

bool KytBond::carriesDepth() const
{
    return fromAtom && toAtom && !toAtom->locked && isDrawn() && (!isStereo() || stereoBond);
}

bool KytBond::climbs() const
{
    return isStereo() && stereoBond && stereoBond->getAngle() != 0;
}

// Intentional: updating a bond raises the end of a down wedge too. Only KytStereoBond::setAngle, called by the
// properties dialog, lowers it.
double KytBond::rise() const
{
    if (!isStereo())
        return 0;
    return std::tan(stereoBond->getAngle() * std::numbers::pi / 180) * distance(centreOf(fromAtom), centreOf(toAtom));
}

float KytBond::depthAtEnd(double rise) const
{
    if (!isStereo())
        return fromAtom->getAtomZ();
    return std::isnan(rise) ? toAtom->getAtomZ() : narrowed(fromAtom->getAtomZ() + rise);
}

QString KytBond::getLength() const
{
    return QString::number(bondlength, 'f', 6);
}

void KytBond::setLength(const QString& length)
{
    const double newLength = realPrefix(length);
    if (!fromAtom || !toAtom || !std::isfinite(newLength) || bondlength == 0)
        return;
    const float ratio = narrowed(newLength / bondlength);
    toAtom->moveBy((fromAtom->x() - toAtom->x()) * (1 - ratio), (fromAtom->y() - toAtom->y()) * (1 - ratio));
    bondlength = narrowed(newLength);
}

void KytBond::setFromAtom(KytAtom* atom)
{
    fromAtom = atom;
    if (atom)
        setBond();
}

void KytBond::setToAtom(KytAtom* atom)
{
    toAtom = atom;
    if (atom)
        setBond();
}

void KytBond::setFromAtom(KytAtom* atom, BondUpdate& update)
{
    if (std::exchange(fromAtom, atom) != atom)
        update.atomReplaced();
    if (toAtom)
        update.update(this);
}

void KytBond::setToAtom(KytAtom* atom, BondUpdate& update)
{
    if (std::exchange(toAtom, atom) != atom)
        update.atomReplaced();
    if (fromAtom)
        update.update(this);
}

KytMolecule* KytBond::getMolecule() const
{
    return fromAtom ? fromAtom->getMolecule() : nullptr;
}

void KytBond::moveBy(double dx, double dy)
{
    BondUpdate update;
    if (fromAtom)
        fromAtom->moveBy(dx, dy, update);
    if (toAtom)
        toAtom->moveBy(dx, dy, update);
}

bool KytBond::deleteBond(KytBondLine* line)
{
    if (bondCount < 0)
        return false;
    if (bondCount == 1) {
        bondCount = 0;
        return true;
    }
    if (bondCount == 2) {
        bondCount = 1;
        if (bond1 == line)
            bond1 = bond2;
        bond2 = nullptr;
    } else if (bondCount == 3) {
        bondCount = 2;
        if (bond2 == line)
            bond2 = bond3;
        if (bond1 == line)
            bond1 = bond3;
        bond3 = nullptr;
    }
    setBond();
    return false;
}

bool KytBond::deleteBond(KytStereoBond*)
{
    return true;
}

void KytBond::setColor(int, int, int) { }
