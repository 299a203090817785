#pragma once

#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "canvas/qcanvas.h"
#include "model/KytAtom.h"

#include <QStringList>

#include <algorithm>
#include <unordered_map>

// Everything on a canvas that is part of the drawing, as texts that can be compared, numbers to the bit.

namespace snapshot {

inline QString bits(double number)
{
    return QString::asprintf("%a", number);
}

inline QString pointText(const QPoint& p)
{
    return QStringLiteral("%1,%2").arg(p.x()).arg(p.y());
}

/// Numbers for items, bonds and molecules, in the order in which they are met; -1 for null.
class Numbers {
public:
    template <typename Thing> int of(const Thing* thing)
    {
        return thing ? known.try_emplace(thing, int(known.size())).first->second : -1;
    }

private:
    std::unordered_map<const void*, int> known;
};

inline QString bondText(const KytBond* bond, Numbers& items)
{
    const KytBondType kinds[] = {bond->bond1Type, bond->bond2Type, bond->bond3Type};
    QString text = QStringLiteral("%1>%2 count %3 kinds %4 %5 %6 length %7 items %8 %9")
                       .arg(items.of<QCanvasItem>(bond->fromAtom))
                       .arg(items.of<QCanvasItem>(bond->toAtom))
                       .arg(bond->bondCount)
                       .arg(kinds[0])
                       .arg(kinds[1])
                       .arg(kinds[2])
                       .arg(bits(bond->bondlength))
                       .arg(items.of<QCanvasItem>(bond->bond1))
                       .arg(items.of<QCanvasItem>(bond->bond2));
    return text
        + QStringLiteral(" %1 %2").arg(items.of<QCanvasItem>(bond->bond3)).arg(items.of<QCanvasItem>(bond->stereoBond));
}

inline QString itemText(QCanvasItem* item, Numbers& items, Numbers& bonds, Numbers& molecules)
{
    QString text = QStringLiteral("%1: rtti %2 at %3 %4 z %5 visible %6")
                       .arg(items.of(item))
                       .arg(item->rtti())
                       .arg(bits(item->x()), bits(item->y()), bits(item->z()))
                       .arg(item->isVisible());
    if (item->rtti() == QCanvasItem::Rtti_Text)
        return text + QStringLiteral(" \"%1\"").arg(static_cast<QCanvasText*>(item)->text());
    if (item->rtti() == QCanvasItem::Rtti_Line) {
        const auto* line = static_cast<KytBondLine*>(item);
        return text
            + QStringLiteral(" from %1 to %2 dashed %3 color %4 %5 %6 pen %7 bond %8")
                  .arg(pointText(line->startPoint()), pointText(line->endPoint()))
                  .arg(line->isDashed)
                  .arg(line->color[0])
                  .arg(line->color[1])
                  .arg(line->color[2])
                  .arg(int(line->pen().style()))
                  .arg(bonds.of(line->bond));
    }
    if (item->rtti() == QCanvasItem::Rtti_Polygon) {
        const auto* wedge = static_cast<KytStereoBond*>(item);
        for (const QPoint& corner : *wedge->pa)
            text += u' ' + pointText(corner);
        return text
            + QStringLiteral(" kind %1 angle %2 brush %3 bond %4")
                  .arg(wedge->bondType)
                  .arg(bits(wedge->pangle))
                  .arg(int(wedge->brush().style()))
                  .arg(bonds.of(wedge->bond));
    }
    const auto* atom = static_cast<KytAtom*>(item);
    text += QStringLiteral(" depth %1 locked %2 %3 %4 colors %5 %6 %7 molecule %8 label %9")
                .arg(bits(double{atom->atomZ}))
                .arg(atom->locked)
                .arg(atom->symbol, atom->name, atom->_atomColor[0], atom->_atomColor[1], atom->_atomColor[2])
                .arg(molecules.of(atom->molecule))
                .arg(items.of<QCanvasItem>(atom->canvasSymbol));
    for (const KytBond* bond : atom->inList)
        text += QStringLiteral(" in %1").arg(bonds.of(bond));
    for (const KytBond* bond : atom->outList)
        text += QStringLiteral(" out %1 [%2]").arg(bonds.of(bond)).arg(bondText(bond, items));
    return text;
}

} // namespace snapshot

/// One text for each item, in the order of the items; `leftOut` is not part of the drawing.
inline QStringList snapshotOf(const QCanvas& canvas, const QCanvasItem* leftOut = nullptr)
{
    snapshot::Numbers items;
    snapshot::Numbers bonds;
    snapshot::Numbers molecules;
    QStringList texts;
    QCanvasItemList all = canvas.allItems();
    all.removeAll(leftOut);
    for (QCanvasItem* item : all)
        items.of(item);
    for (QCanvasItem* item : all)
        texts.append(snapshot::itemText(item, items, bonds, molecules));
    return texts;
}

/// Where two snapshots differ first, or nothing.
inline QString snapshotDifference(const QStringList& one, const QStringList& other)
{
    for (qsizetype i = 0; i < std::max(one.size(), other.size()); ++i)
        if (one.value(i) != other.value(i))
            return QStringLiteral("item %1:\n  %2\n  %3").arg(i).arg(one.value(i), other.value(i));
    return QString();
}
