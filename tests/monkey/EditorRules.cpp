#include "tests/monkey/EditorRules.h"

#include "canvas/truncate.h"
#include "history/KytHistory.h"
#include "tests/support/RoundTrip.h"
#include "view/kytstudioview.h"

#include <QHash>

#include <cmath>
#include <utility>

namespace {

int linesOf(const KytBond* bond)
{
    return (bond->bond1 != nullptr) + (bond->bond2 != nullptr) + (bond->bond3 != nullptr);
}

QPoint centreOf(const KytAtom* atom)
{
    return {truncated(atom->x()), truncated(atom->y())};
}

} // namespace

EditorRules::EditorRules(const KytStudioView* view)
    : view(view)
{
    QObject::connect(view->doc, &KytStudioDoc::documentChanged, &listener, [this] { mayHaveOddities = true; });
    QObject::connect(view, &KytStudioView::drawingChanged, &listener, [this] {
        // Without a new step, one was undone or redone, which can bring back what had gone.
        if (!this->view->history)
            return;
        const qint64 recorded = this->view->history->recordCount();
        mayHaveOddities |= recorded == stepsRecorded;
        stepsRecorded = recorded;
    });
}

QString EditorRules::firstFault()
{
    using Rule = QString (EditorRules::*)();
    const Rule rules[] = {&EditorRules::drawingFault, &EditorRules::fileFault};
    if (!view->canvas())
        return QStringLiteral("the view has no canvas");
    for (const Rule rule : rules)
        if (const QString fault = (this->*rule)(); !fault.isEmpty())
            return fault;
    return gestureFault();
}

/// Bonds stand once at either end and nowhere else, their lines and wedges are there, and nothing else is on the
/// canvas.
QString EditorRules::drawingFault()
{
    atoms.clear();
    bonds.clear();
    counted = {};
    QSet<const QCanvasItem*> unclaimed;
    const QCanvasItemList items = view->canvas()->allItems();
    for (QCanvasItem* item : items) {
        if (item == tempBond)
            continue;
        unclaimed.insert(item);
        switch (item->rtti()) {
        case QCanvasItem::Rtti_Ellipse:
            atoms.append(static_cast<KytAtom*>(item));
            break;
        case QCanvasItem::Rtti_Line:
            ++counted.lines;
            break;
        case QCanvasItem::Rtti_Polygon:
            ++counted.wedges;
            break;
        default:
            break;
        }
        if (item->canvas() != view->canvas() || !item->isVisible())
            return QStringLiteral("an item is hidden or thinks that it is elsewhere");
    }
    const auto claim = [&](const QCanvasItem* item) { return !item || unclaimed.remove(item); };
    const QSet<const KytAtom*> known(atoms.cbegin(), atoms.cend());
    for (KytAtom* atom : std::as_const(atoms)) {
        if (!claim(atom) || !claim(atom->canvasSymbol))
            return QStringLiteral("an atom or its label is not on the canvas");
        for (KytBond* bond : std::as_const(atom->outList)) {
            bonds.append(bond);
            if (bond->fromAtom != atom || !known.contains(bond->toAtom))
                return QStringLiteral("an outgoing bond starts elsewhere, or ends nowhere");
            if (atom->outList.count(bond) != 1 || bond->toAtom->inList.count(bond) != 1)
                return QStringLiteral("a bond does not stand exactly once at either end");
        }
        for (const KytBond* bond : std::as_const(atom->inList))
            if (bond->toAtom != atom || !known.contains(bond->fromAtom) || !bond->fromAtom->outList.contains(bond))
                return QStringLiteral("an incoming bond ends elsewhere, or starts nowhere");
    }
    counted.atoms = static_cast<int>(atoms.size());
    counted.bonds = static_cast<int>(bonds.size());
    noteOddities();
    for (KytAtom* atom : std::as_const(atoms))
        if (const QString fault = atomFault(atom); !fault.isEmpty())
            return fault;
    for (const KytBond* bond : std::as_const(bonds)) {
        for (const QCanvasItem* item :
             std::initializer_list<const QCanvasItem*>{bond->bond1, bond->bond2, bond->bond3, bond->stereoBond})
            if (!claim(item))
                return QStringLiteral("an item of a bond is not on the canvas, or belongs to two");
        if (const QString fault = bondFault(bond); !fault.isEmpty())
            return fault;
    }
    if (!unclaimed.isEmpty())
        return QStringLiteral("an item on the canvas has no owner");
    return moleculeFault();
}

/// Kinds that are counted but not drawn come from workspaces alone.
void EditorRules::noteOddities()
{
    if (atoms.isEmpty())
        undrawnKinds = false;
    if (!std::exchange(mayHaveOddities, false))
        return;
    for (const KytBond* bond : std::as_const(bonds))
        undrawnKinds |= !bond->stereoBond && linesOf(bond) < bond->bondCount;
}

QString EditorRules::atomFault(KytAtom* atom) const
{
    if (atom->flag != 0 || atom->deleted != 0)
        return QStringLiteral("an atom's marks are not 0");
    if (!std::isfinite(atom->x()) || !std::isfinite(atom->y()) || !std::isfinite(atom->atomZ))
        return QStringLiteral("an atom is nowhere");
    if (atom->canvasSymbol->text() != atom->symbol)
        return QStringLiteral("a label shows another symbol than its atom's");
    return QString();
}

QString EditorRules::bondFault(const KytBond* bond) const
{
    if (bond->fromAtom == bond->toAtom)
        return QStringLiteral("a bond joins an atom to itself");
    if (bond->bondCount < 0 || bond->bondCount > 3)
        return QStringLiteral("a bond's count is out of range");
    return bond->bondCount > 0 && isWedgeKind(bond->bond1Type) ? wedgeFault(bond) : lineFault(bond);
}

/// As many lines as are counted, the first ones first, and the middle one from centre to centre.
QString EditorRules::lineFault(const KytBond* bond) const
{
    const KytBondLine* const lines[] = {bond->bond1, bond->bond2, bond->bond3};
    for (int i = 0; i < 3; ++i) {
        if (lines[i] && (lines[i]->bond != bond || i >= bond->bondCount))
            return QStringLiteral("a bond has a line that is not its own, or is not counted");
        if (lines[i] && (lines[i]->x() != 0 || lines[i]->y() != 0))
            return QStringLiteral("a line was moved away from its bond");
    }
    if (bond->stereoBond)
        return QStringLiteral("a bond of lines has a wedge");
    if (!undrawnKinds && linesOf(bond) != bond->bondCount)
        return QStringLiteral("a bond counts %1 lines and has %2").arg(bond->bondCount).arg(linesOf(bond));
    if (bond->bond1
        && (bond->bond1->startPoint() != centreOf(bond->fromAtom) || bond->bond1->endPoint() != centreOf(bond->toAtom)))
        return QStringLiteral("a line does not run between its atoms");
    return QString();
}

QString EditorRules::wedgeFault(const KytBond* bond) const
{
    if (bond->bond1 || bond->bond2 || bond->bond3 || bond->bondCount != 1)
        return QStringLiteral("a wedge shares its bond with lines");
    if (!bond->stereoBond || bond->stereoBond->bond != bond || bond->stereoBond->bondType != bond->bond1Type)
        return QStringLiteral("a wedge is missing, or is another bond's");
    if (bond->stereoBond->x() != 0 || bond->stereoBond->y() != 0)
        return QStringLiteral("a wedge was moved away from its bond");
    if (bond->stereoBond->points().value(0) != centreOf(bond->fromAtom))
        return QStringLiteral("a wedge does not start at its atom");
    return QString();
}

/// Atoms that are bonded together share one molecule. (Not the other way round: a workspace may hold one molecule that
/// falls into pieces.)
QString EditorRules::moleculeFault() const
{
    QHash<const KytMolecule*, int> sizes;
    for (const KytAtom* atom : atoms) {
        if (!atom->molecule)
            return QStringLiteral("an atom has no molecule");
        ++sizes[atom->molecule];
    }
    for (const KytBond* bond : bonds)
        if (bond->fromAtom->molecule != bond->toAtom->molecule)
            return QStringLiteral("a bond joins atoms of two molecules");
    for (auto size = sizes.cbegin(); size != sizes.cend(); ++size)
        if (size.key()->getAtomsCount() > size.value())
            return QStringLiteral("a molecule lists atoms that are not its own");
    return QString();
}

/// What the view has grabbed, hovers over or draws from is on the canvas, and the rubber band shows as long as a
/// gesture is under way.
QString EditorRules::gestureFault() const
{
    const QCanvasItemList items = view->canvas()->allItems();
    const auto isThere = [&](const QCanvasItem* item) { return !item || items.contains(item); };
    if (!isThere(view->hover) || !isThere(view->moving) || !isThere(view->lastAtom))
        return QStringLiteral("the view remembers an item that has gone");
    if (view->selectedCount() != view->selectedAtoms().size())
        return QStringLiteral("the view has selected an atom that has gone");
    if (view->hover == tempBond || view->moving == tempBond)
        return QStringLiteral("the rubber band was taken for a part of the drawing");
    if (!items.contains(tempBond))
        return QStringLiteral("the rubber band has gone");
    if (tempBond->isVisible() != (view->isLastAtom == 1))
        return QStringLiteral("the rubber band shows without a gesture, or a gesture without it");
    if (view->isLastAtom == 1 && !view->lastAtom)
        return QStringLiteral("a gesture has no start atom");
    if (view->flag)
        return QStringLiteral("the mark of a met start atom is left over");
    return QString();
}

/// What is written and read back is the same drawing. Only asked when something else would be written than last time;
/// every now and then also whether it stays the same from then on.
QString EditorRules::fileFault()
{
    const QByteArray text = writtenWorkspace(view->canvas());
    if (text == lastWritten)
        return QString();
    lastWritten = text;
    if (++filesRead % 8 == 0)
        return roundTripFault(view->canvas());
    Drawing read;
    if (!addWorkspace(text, read))
        return QStringLiteral("what was written cannot be read to its end");
    return comeBackFault(*view->canvas(), *read.canvas());
}
