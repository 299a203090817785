#include "tests/monkey/ModelWalk.h"

#include "tests/monkey/ModelComparison.h"

#include <algorithm>

namespace {

constexpr std::size_t mostAtoms = 25;
constexpr QRect pointerArea(10, 10, 640, 460); // canvas pixels; within the view

const char* textOf(bool control)
{
    return control ? " control" : "";
}

} // namespace

ModelWalk::ModelWalk(quint64 seed)
    : history(editor.doc)
    , chance(seed)
    , columns(chance.oneOf({5, 8, 14}))
{
    editor.view->history = &history;
}

ModelWalk::~ModelWalk()
{
    editor.view->history = nullptr;
}

void ModelWalk::play(int events)
{
    while (done.size() < events && found.isEmpty())
        step();
}

void ModelWalk::step()
{
    if (model.drawing.atoms.size() > mostAtoms) {
        if (chance.percent(50))
            clickToDelete();
        else
            drag(KYTVS_view);
        return;
    }
    const int kind = chance.below(100);
    if (kind < 39)
        clickToDraw();
    else if (kind < 40)
        drawRing();
    else if (kind < 44)
        drawOver();
    else if (kind < 72)
        drag(KYTVS_view);
    else if (kind < 84)
        drag(KYTVS_rotate);
    else if (kind < 90)
        clickToDelete();
    else if (kind < 92)
        changeSwitch();
    else if (kind < 93)
        zoom();
    else if (kind < 94)
        changeSelection();
    else if (kind < 95)
        editAtomOrWedge();
    else
        goThroughHistory();
}

// ---- gestures

void ModelWalk::setMode(KytViewState mode)
{
    if (model.mode == mode)
        return;
    act(
        QStringLiteral("mode %1").arg(mode), [&] { model.mode = mode; }, [&] { editor.view->canvasState = mode; });
}

void ModelWalk::clickToDraw()
{
    if (!draws(model.mode) || chance.percent(25))
        setMode(chance.percent(10) ? KYTVS_zigzag : bondModes[std::size_t(chance.below(int(bondModes.size())))]);
    QPoint p = somePoint();
    if (model.mode == KYTVS_zigzag && model.isDrawing) // not too many atoms at once
        p = pointOf(model.startAtom) + QPoint(chance.between(-120, 120), chance.between(-120, 120));
    const int neighbour = model.isDrawing ? model.drawing.firstNeighbour(model.startAtom) : -1;
    if (neighbour >= 0 && chance.percent(15)) // one line more
        p = pointOf(neighbour);
    const bool control = chance.percent(20);
    if (chance.percent(95))
        move(p, control);
    press(p, control);
    release(p, control);
}

/// One or two lines more for a bond.
void ModelWalk::drawOver()
{
    if (model.drawing.bonds.empty())
        return;
    const int index = chance.below(int(model.drawing.bonds.size()));
    const BondModel bond = std::next(model.drawing.bonds.begin(), index)->second;
    act(
        "cancel", [&] { model.cancel(); }, [&] { editor.view->cancelGesture(); });
    if (!model.drawing.atoms.contains(bond.from) || !model.drawing.atoms.contains(bond.to))
        return;
    for (int i = chance.between(1, 2); i > 0; --i) {
        setMode(chance.percent(50) ? KYTVS_drawSimpleBond : KYTVS_drawDashedBond);
        click(pointOf(bond.from), false);
        click(pointOf(bond.to), false);
    }
}

/// A ring of three or four bonds in one direction. It can only be closed while its wedge is flat.
void ModelWalk::drawRing()
{
    act(
        "cancel", [&] { model.cancel(); }, [&] { editor.view->cancelGesture(); });
    const QPoint first = gridPoint();
    const QList<QPoint> others = chance.percent(50)
        ? QList<QPoint>{first + QPoint(30, 0), first + QPoint(15, 25)}
        : QList<QPoint>{first + QPoint(30, 0), first + QPoint(30, 30), first + QPoint(0, 30)};
    setMode(KYTVS_drawStereoUp);
    click(first, false);
    click(others.first(), false);
    const QList<KytStereoBond*> wedges = editor.wedges();
    if (wedges.isEmpty())
        return;
    setAngle(wedges.last(), 0);
    setMode(KYTVS_drawSimpleBond);
    for (const QPoint& p : others)
        click(p, true);
    click(first, false);
    if (chance.percent(70))
        setAngle(wedges.last(), 45);
}

void ModelWalk::drag(KytViewState mode)
{
    setMode(mode);
    const QPoint from = chance.percent(80) ? nearAtom() : somePoint();
    const bool control = chance.percent(25);
    if (chance.percent(90))
        move(from, control);
    press(from, control);
    QPoint p = from;
    for (int i = chance.oneOf({0, 1, 1, 2, 2, 3}); i > 0; --i) {
        if (mode == KYTVS_rotate && chance.percent(80))
            p += QPoint(chance.between(-6, 6), 0);
        else
            p = chance.percent(60) ? nearAtom() : somePoint();
        move(p, control);
    }
    release(p, control);
}

void ModelWalk::clickToDelete()
{
    setMode(KYTVS_deleteItem);
    click(chance.percent(60) ? onBond() : somePoint(), false);
}

void ModelWalk::changeSwitch()
{
    if (chance.percent(50))
        act(
            "fixed length", [&] { model.fixedLength = !model.fixedLength; },
            [&] { editor.view->fixedLengthFlag = 1 - editor.view->fixedLengthFlag; });
    else
        act(
            "fixed angle", [&] { model.fixedAngle = !model.fixedAngle; },
            [&] { editor.view->fixedAngleFlag = 1 - editor.view->fixedAngleFlag; });
}

/// Only in: zoomed out, a click also hits what is near.
void ModelWalk::zoom()
{
    const double factor = std::array{1.0, 1.5, 2.0, 3.0}[std::size_t(chance.below(4))];
    const QPointF anchor(chance.below(600), chance.below(400));
    act(
        QStringLiteral("zoom %1").arg(factor), [] {},
        [&] {
            editor.view->zoomTo(factor, anchor);
            pointer = editor.view->pointedAt().value_or(pointer);
            model.rest(pointer);
        });
}

void ModelWalk::goThroughHistory()
{
    if (chance.percent(20))
        act(
            "cancel", [&] { model.cancel(); }, [&] { editor.view->cancelGesture(); });
    for (int i = chance.between(1, 6); i > 0; --i)
        act(
            "undo", [&] { model.undo(); }, [&] { editor.view->undo(); });
    for (int i = chance.below(7); i > 0; --i)
        act(
            "redo", [&] { model.redo(); }, [&] { editor.view->redo(); });
}

void ModelWalk::changeSelection()
{
    if (model.drawing.atoms.empty())
        return;
    const int kind = chance.below(100);
    if (kind < 20) {
        act(
            "select all", [&] { model.selectAll(); }, [&] { editor.view->selectAll(); });
        return;
    }
    if (kind < 35) {
        act(
            "delete key", [&] { model.deleteSelected(below(pointer)); }, [&] { editor.view->deleteSelected(); });
        return;
    }
    setMode(KYTVS_view);
    for (int i = chance.between(1, 5); i > 0; --i) {
        const QPoint p = nearAtom();
        const std::vector<int> hit = model.atomsAt(p);
        if (hit.empty())
            continue;
        act(
            QStringLiteral("press %1 %2 shift").arg(p.x()).arg(p.y()), [&] { model.toggleSelected(hit.front()); },
            [&] { editor.press(shown(p), Qt::ShiftModifier); });
        release(p, false);
    }
}

/// What a right click and its dialog do to a wedge; atoms are locked where they come from the library.
void ModelWalk::editAtomOrWedge()
{
    const QList<KytStereoBond*> wedges = editor.wedges();
    if (chance.percent(70) && !wedges.isEmpty()) {
        setAngle(wedges[chance.below(int(wedges.size()))], float(chance.oneOf({-5, 0, 0, 1, 30, 45, 60, 89, 90})));
    } else if (!model.drawing.atoms.empty()) {
        const int index = chance.below(int(model.drawing.atoms.size()));
        const int atom = std::next(model.drawing.atoms.begin(), index)->first;
        act(
            QStringLiteral("lock atom %1").arg(atom), [&] { model.lock(atom); },
            [&] {
                editor.view->settleGesture();
                editor.atoms()[index]->locked = true;
                editor.view->recordStep("lock");
            });
    }
}

void ModelWalk::setAngle(KytStereoBond* wedge, float angle)
{
    if (!found.isEmpty())
        return;
    const int bond = numberOf(wedge->bond, model);
    act(
        QStringLiteral("angle %1 of bond %2").arg(angle).arg(bond), [&] { model.setAngle(bond, angle); },
        [&] {
            editor.view->settleGesture();
            wedge->setAngle(angle);
            editor.view->recordStep("angle");
        });
}

// ---- where

/// Atoms, the middles of bonds, and points of a grid.
QPoint ModelWalk::somePoint()
{
    const int kind = chance.below(100);
    if (kind < 55)
        return nearAtom();
    return kind < 75 ? onBond() : gridPoint();
}

/// On one of the lines, or beside them.
QPoint ModelWalk::onBond()
{
    if (model.drawing.bonds.empty())
        return gridPoint();
    const int index = chance.below(int(model.drawing.bonds.size()));
    const BondModel& bond = std::next(model.drawing.bonds.begin(), index)->second;
    const QPoint middle = (pointOf(bond.from) + pointOf(bond.to)) / 2;
    return pointerArea.contains(middle) ? middle + QPoint(chance.between(-7, 7), chance.between(-7, 7)) : gridPoint();
}

QPoint ModelWalk::nearAtom()
{
    if (model.drawing.atoms.empty())
        return gridPoint();
    const int index = chance.below(int(model.drawing.atoms.size()));
    const QPoint there = pointOf(std::next(model.drawing.atoms.begin(), index)->first);
    if (!pointerArea.contains(there))
        return gridPoint();
    return chance.percent(70) ? there : there + QPoint(chance.between(-6, 6), chance.between(-6, 6));
}

/// So that many bonds are exactly horizontal or vertical. The fewer points there are, the more atoms merge.
QPoint ModelWalk::gridPoint()
{
    return {40 + 30 * chance.below(columns), 40 + 30 * chance.below(columns)};
}

QPoint ModelWalk::pointOf(int atom) const
{
    const AtomModel& values = model.drawing.atoms.at(atom);
    return {static_cast<int>(std::floor(values.x)), static_cast<int>(std::floor(values.y))};
}

/// What the canvas shows at `p` below the atoms.
HitModel ModelWalk::below(QPoint p) const
{
    const QCanvasItemList items = editor.canvas()->collisions(p);
    for (QCanvasItem* item : items) {
        if (item == tempBond || item->rtti() == QCanvasItem::Rtti_Ellipse)
            continue;
        if (auto* wedge = dynamic_cast<KytStereoBond*>(item))
            return {HitModel::Wedge, numberOf(wedge->bond, model)};
        if (auto* line = dynamic_cast<KytBondLine*>(item)) {
            const KytBond* bond = line->bond;
            return {HitModel::Line, numberOf(bond, model), line == bond->bond1 ? 0 : line == bond->bond2 ? 1 : 2};
        }
        const QList<QCanvasText*> labels = editor.labels();
        return {HitModel::Label, std::next(model.drawing.atoms.begin(), labels.indexOf(item))->first};
    }
    return {};
}

// ---- events

void ModelWalk::click(QPoint p, bool control)
{
    move(p, control);
    press(p, control);
    release(p, control);
}

void ModelWalk::act(const QString& text, const std::function<void()>& inModel, const std::function<void()>& inView)
{
    if (!found.isEmpty())
        return;
    done.append(text);
    const DrawingModel before = model.drawing;
    inModel();
    inView();
    found = difference(model, *editor.view);
    count(before, text.section(u' ', 0, 0));
}

void ModelWalk::count(const DrawingModel& before, const QString& event)
{
    ++statistics[event];
    const DrawingModel& after = model.drawing;
    const auto add = [&](const char* what, qint64 times) {
        if (times > 0)
            statistics[event + QStringLiteral(": ") + QLatin1String(what)] += times;
    };
    add("atoms created", qint64(after.atoms.size()) - qint64(before.atoms.size()));
    add("atoms gone", qint64(before.atoms.size()) - qint64(after.atoms.size()));
    add("bonds created", qint64(after.bonds.size()) - qint64(before.bonds.size()));
    add("bonds gone", qint64(before.bonds.size()) - qint64(after.bonds.size()));
    const auto linesIn = [](const DrawingModel& drawing) {
        qint64 lines = 0;
        for (const auto& [number, bond] : drawing.bonds)
            lines += qint64(bond.drawn.size());
        return lines;
    };
    if (after.bonds.size() == before.bonds.size()) {
        add("lines added to a bond", linesIn(after) - linesIn(before));
        add("lines taken off a bond", linesIn(before) - linesIn(after));
    }
    const auto alsoBefore = [&](const auto& entry, auto differs) {
        const auto old = before.atoms.find(entry.first);
        return old != before.atoms.end() && differs(old->second, entry.second);
    };
    add("atoms moved", std::count_if(after.atoms.begin(), after.atoms.end(), [&](const auto& entry) {
            return alsoBefore(entry, [](const AtomModel& one, const AtomModel& other) { return one.x != other.x; });
        }));
    add("depths changed", std::count_if(after.atoms.begin(), after.atoms.end(), [&](const auto& entry) {
            return alsoBefore(entry, [](const AtomModel& one, const AtomModel& other) { return one.z != other.z; });
        }));
    const auto addDrawing = [&](const char* with, auto has) {
        const bool any =
            std::any_of(after.bonds.begin(), after.bonds.end(), [&](const auto& entry) { return has(entry.second); });
        statistics[QStringLiteral("events in a drawing with ") + QLatin1String(with)] += any;
    };
    addDrawing("a double or triple bond", [](const BondModel& bond) { return bond.drawn.size() > 1; });
    addDrawing("a wedge", [](const BondModel& bond) { return bond.isWedge(); });
    addDrawing("a climbing ring", [&](const BondModel& bond) { return after.liesInClimbingRing(bond); });
}

void ModelWalk::press(QPoint p, bool control)
{
    pointer = p;
    act(
        QStringLiteral("press %1 %2%3").arg(p.x()).arg(p.y()).arg(textOf(control)),
        [&] { model.press(p, control, below(p)); },
        [&] { editor.press(shown(p), control ? Qt::ControlModifier : Qt::NoModifier); });
}

void ModelWalk::move(QPoint p, bool control)
{
    pointer = p;
    act(
        QStringLiteral("move %1 %2%3").arg(p.x()).arg(p.y()).arg(textOf(control)), [&] { model.move(p, control); },
        [&] { editor.move(shown(p), control ? Qt::ControlModifier : Qt::NoModifier); });
}

void ModelWalk::release(QPoint p, bool control)
{
    pointer = p;
    act(
        QStringLiteral("release %1 %2%3").arg(p.x()).arg(p.y()).arg(textOf(control)),
        [&] { model.release(p, control); },
        [&] { editor.release(shown(p), control ? Qt::ControlModifier : Qt::NoModifier); });
}
