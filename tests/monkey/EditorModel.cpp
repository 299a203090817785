#include "tests/monkey/EditorModel.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr float angleStep = 0.17453292F; // radians
constexpr float bondLength = 30;         // pixels, where it is fixed, and of chains
constexpr double chainPi = 3.142;

/// The direction of a bond, counter-clockwise on the screen. Straight down counts as straight up.
float direction(float x1, float y1, float x2, float y2)
{
    constexpr double pi = std::numbers::pi;
    if (x1 == x2)
        return static_cast<float>(pi / 2);
    const double slope = std::atan((double(y2) - y1) / (double(x2) - x1));
    if (x1 > x2)
        return static_cast<float>(pi - slope);
    return static_cast<float>(y2 > y1 ? 2 * pi - slope : -slope);
}

bool drawsInTwoClicks(KytViewState mode)
{
    return mode != KYTVS_view && mode != KYTVS_rotate && mode != KYTVS_deleteItem;
}

KytBondType kindOf(KytViewState mode)
{
    switch (mode) {
    case KYTVS_drawDashedBond:
        return KYTBT_DashedLine;
    case KYTVS_drawStereoUp:
        return KYTBT_StereoUp;
    case KYTVS_drawStereoDown:
        return KYTBT_StereoDown;
    default:
        return KYTBT_SingleBond;
    }
}

/// A dot of 3 pixels, or 6 under the pointer, is hit up to a pixel and a half beyond its edge.
bool isHit(const AtomModel& atom, int size, QPoint p)
{
    const double radius = (size + 3) / 2.0;
    const double left = std::floor(atom.x - size / 2.0 + 0.5) - 1;
    const double top = std::floor(atom.y - size / 2.0 + 0.5) - 1;
    return std::hypot(p.x() + 0.5 - (left + radius), p.y() + 0.5 - (top + radius)) <= radius;
}

} // namespace

std::vector<int> EditorModel::atomsAt(QPoint p) const
{
    std::vector<int> hit;
    for (const auto& [number, atom] : drawing.atoms)
        if (isHit(atom, number == hovered ? 6 : 3, p))
            hit.insert(hit.begin(), number);
    return hit;
}

int EditorModel::newAtom(double x, double y, float z)
{
    drawing.addAtom(++lastNumber, x, y, z);
    return lastNumber;
}

int EditorModel::newBond(int from, int to)
{
    drawing.addBond(++lastNumber, from, to);
    return lastNumber;
}

// ---- events

void EditorModel::press(QPoint p, bool control, const HitModel& below)
{
    pointer = p;
    if (drawsInTwoClicks(mode)) {
        click(p, control);
        return;
    }
    settle();
    const std::vector<int> hit = atomsAt(p);
    if (hit.empty() && below.kind == HitModel::Nothing)
        selected.clear();
    if (mode == KYTVS_deleteItem) {
        deleteAt(p, below);
        record();
    } else {
        grabbed = hit.empty() ? -1 : hit.front();
        if (mode == KYTVS_view && hit.empty())
            grabbedBelow = below;
        dragPoint = p;
        if (grabbed >= 0)
            rotationX = drawing.atoms.at(grabbed).x;
    }
}

void EditorModel::move(QPoint p, bool control)
{
    pointer = p;
    refreshHover(p);
    if (drawsInTwoClicks(mode) && isDrawing)
        moveEnd(p);
    if (mode == KYTVS_view && isDragging())
        dragTo(p, control);
    if (mode == KYTVS_rotate && grabbed >= 0)
        rotateTo(p, control);
}

void EditorModel::rest(QPoint p)
{
    if (isDragging())
        return;
    pointer = p;
    refreshHover(p);
    if (drawsInTwoClicks(mode) && isDrawing)
        moveEnd(p);
}

void EditorModel::release(QPoint p, bool control)
{
    pointer = p;
    const bool wasDragging = isDragging();
    if (mode == KYTVS_view && grabbed >= 0)
        dropAt(p, control);
    letGo();
    if (wasDragging)
        record();
}

void EditorModel::refreshHover(QPoint p)
{
    std::vector<int> hit = atomsAt(p);
    if (!hit.empty() && hit.front() == hovered)
        return;
    hovered = -1;
    hit = atomsAt(p);
    hovered = hit.empty() ? -1 : hit.front();
}

// ---- drawing

void EditorModel::click(QPoint p, bool control)
{
    if (isDrawing) {
        if (mode == KYTVS_zigzag)
            drawChain(control);
        else
            drawBond(p, control);
        record();
        return;
    }
    isDrawing = true;
    drawingHasSteps = false;
    endX = static_cast<float>(p.x());
    endY = static_cast<float>(p.y());
    const std::vector<int> hit = atomsAt(p);
    startAtom = hit.empty() ? newAtom(p.x(), p.y(), 0) : hit.front();
}

void EditorModel::moveEnd(QPoint p)
{
    const AtomModel& start = drawing.atoms.at(startAtom);
    const auto x = static_cast<float>(start.x);
    const auto y = static_cast<float>(start.y);
    endX = static_cast<float>(p.x());
    endY = static_cast<float>(p.y());
    float theta = direction(x, y, endX, endY);
    if (fixedAngle) {
        const int neighbour = drawing.firstNeighbour(startAtom);
        float reference = 0;
        if (neighbour >= 0) {
            const AtomModel& other = drawing.atoms.at(neighbour);
            reference = direction(x, y, static_cast<float>(other.x), static_cast<float>(other.y));
        }
        auto steps = static_cast<int>(std::round(std::abs(double(reference) - theta) / angleStep));
        if (reference > theta)
            steps = -steps;
        const double radius = std::sqrt((p.x() - start.x) * (p.x() - start.x) + (p.y() - start.y) * (p.y() - start.y));
        theta = static_cast<float>(double(steps) * angleStep + reference);
        endX = static_cast<float>(start.x + radius * std::cos(double(theta)));
        endY = static_cast<float>(start.y - radius * std::sin(double(theta)));
    }
    if (fixedLength && mode != KYTVS_zigzag) {
        endX = static_cast<float>(start.x + bondLength * std::cos(double(theta)));
        endY = static_cast<float>(start.y - bondLength * std::sin(double(theta)));
    }
}

/// A wedge rises or falls at an angle of 60 degrees.
float EditorModel::depthOfEnd() const
{
    const AtomModel& start = drawing.atoms.at(startAtom);
    const double length = std::sqrt((endX - start.x) * (endX - start.x) + (endY - start.y) * (endY - start.y));
    const double slope = std::tan(std::numbers::pi / 3);
    if (mode == KYTVS_drawStereoUp)
        return static_cast<float>(start.z + slope * length);
    return static_cast<float>(mode == KYTVS_drawStereoDown ? start.z - slope * length : start.z);
}

int EditorModel::targetAt(QPoint p, bool& passedStart) const
{
    for (const int atom : atomsAt(p)) {
        if (atom == startAtom)
            passedStart = true;
        else if (drawing.atoms.at(atom).z == depthOfEnd())
            return atom;
    }
    return -1;
}

void EditorModel::drawBond(QPoint p, bool control)
{
    isDrawing = control;
    bool passedStart = false;
    int target = targetAt(p, passedStart);
    if (target < 0)
        target = targetAt(QPoint(static_cast<int>(endX), static_cast<int>(endY)), passedStart);
    if (target < 0 && passedStart)
        return;
    if (target < 0)
        target = newAtom(endX, endY, depthOfEnd());
    int bond = drawing.bondBetween(startAtom, target);
    if (bond < 0)
        bond = newBond(startAtom, target);
    drawing.draw(bond, kindOf(mode));
    if (control)
        startAtom = target;
}

/// Atoms alternate between two lines that are parallel to the direction of the chain.
void EditorModel::drawChain(bool control)
{
    isDrawing = control;
    constexpr double halfAngle = 30; // degrees
    const AtomModel start = drawing.atoms.at(startAtom);
    double x = start.x;
    double y = start.y;
    const auto theta =
        static_cast<float>(direction(static_cast<float>(x), static_cast<float>(y), endX, endY) * 180 / chainPi);
    const double stride = 2 * bondLength * std::cos(halfAngle * chainPi / 180);
    const double length = std::sqrt((endX - x) * (endX - x) + (endY - y) * (endY - y));
    const auto passes = static_cast<float>(length / stride - 0.5);
    const auto append = [&](double atX, double atY) {
        const int atom = newAtom(atX, atY, start.z);
        drawing.draw(newBond(startAtom, atom), KYTBT_SingleBond);
        startAtom = atom;
    };
    for (int i = 0; passes > i; ++i) {
        append(x + bondLength * std::cos((halfAngle + theta) * chainPi / 180),
               y + bondLength * std::sin((halfAngle + theta) * chainPi / -180));
        if (passes - i <= 0.5)
            continue;
        x += std::cos(theta * chainPi / 180) * stride;
        y += std::sin(theta * chainPi / -180) * stride;
        append(x, y);
    }
}

// ---- moving, merging, deleting

void EditorModel::dragTo(QPoint p, bool control)
{
    const double dx = p.x() - dragPoint.x();
    const double dy = p.y() - dragPoint.y();
    dragPoint = p;
    if (grabbed < 0 && grabbedBelow.kind == HitModel::Label) {
        drawing.moveLabelBy(grabbedBelow.number, dx, dy);
        return;
    }
    const int atom = grabbed >= 0 ? grabbed : drawing.bonds.at(grabbedBelow.number).from;
    if (grabbed >= 0 && movesSelection(control)) {
        for (const int member : selected)
            drawing.moveBy(member, dx, dy);
    } else if (control || drawing.atoms.at(atom).locked) {
        for (const int member : drawing.moleculeOf(atom))
            drawing.moveBy(member, dx, dy);
    } else if (grabbed >= 0) {
        drawing.moveBy(grabbed, dx, dy);
    } else {
        drawing.moveBondBy(grabbedBelow.number, dx, dy);
    }
}

void EditorModel::rotateTo(QPoint p, bool control)
{
    const auto angle = static_cast<float>((p.x() - rotationX) / 10);
    rotationX = p.x();
    const AtomModel pivot = drawing.atoms.at(grabbed);
    const std::vector<int> molecule = drawing.moleculeOf(grabbed);
    const std::set<int> members = movesSelection(control) ? selected : std::set<int>(molecule.begin(), molecule.end());
    for (const int member : members)
        if (member != grabbed)
            drawing.rotateAbout(member, pivot.x, pivot.y, angle);
}

void EditorModel::dropAt(QPoint p, bool control)
{
    hovered = -1;
    for (const int target : atomsAt(p)) {
        if (target == grabbed || (movesSelection(control) && selected.contains(target)))
            continue;
        drawing.drop(target, grabbed);
        forgetGone();
        return;
    }
}

void EditorModel::deleteAt(QPoint p, const HitModel& below)
{
    const std::vector<int> hit = atomsAt(p);
    hovered = -1;
    if (!hit.empty())
        drawing.deleteAtom(hit.front());
    else if (below.kind == HitModel::Line)
        drawing.deleteLine(below.number, below.line);
    else if (below.kind == HitModel::Wedge)
        drawing.deleteBond(below.number);
    forgetGone();
}

void EditorModel::letGo()
{
    grabbed = -1;
    grabbedBelow = HitModel();
}

/// A gesture does not outlive its atom.
void EditorModel::forgetGone()
{
    const auto isGone = [this](int atom) { return !drawing.atoms.contains(atom); };
    if (isGone(startAtom)) {
        startAtom = -1;
        isDrawing = false;
    }
    std::erase_if(selected, isGone);
    if (isGone(hovered))
        hovered = -1;
    if (isGone(grabbed))
        grabbed = -1;
}

// ---- the selection, dialogs

std::set<int> EditorModel::withLockedMolecule(int atom) const
{
    if (!drawing.atoms.at(atom).locked)
        return {atom};
    const std::vector<int> molecule = drawing.moleculeOf(atom);
    return {molecule.begin(), molecule.end()};
}

void EditorModel::toggleSelected(int atom)
{
    settle();
    const bool add = !selected.contains(atom);
    for (const int member : withLockedMolecule(atom))
        if (add)
            selected.insert(member);
        else
            selected.erase(member);
}

void EditorModel::selectAll()
{
    for (const auto& [atom, ignored] : drawing.atoms)
        selected.insert(atom);
}

void EditorModel::deleteSelected(const HitModel& below)
{
    const std::vector<int> hit = atomsAt(pointer);
    if (selected.empty() && hit.empty() && (below.kind == HitModel::Nothing || below.kind == HitModel::Label))
        return;
    settle();
    if (selected.empty())
        deleteAt(pointer, below);
    for (const int atom : std::set<int>(selected))
        drawing.deleteAtom(atom);
    forgetGone();
    record();
    hovered = -1;
    rest(pointer);
}

void EditorModel::setAngle(int bond, float angle)
{
    settle();
    drawing.setAngle(bond, angle);
    record();
}

void EditorModel::lock(int atom)
{
    settle();
    drawing.atoms.at(atom).locked = true;
    record();
}

// ---- steps

/// What a gesture has done so far becomes a step before something else begins.
void EditorModel::settle()
{
    const bool underWay = isDragging() || isDrawing;
    letGo();
    if (underWay)
        record();
}

void EditorModel::record()
{
    if (drawing == states[state])
        return;
    states.resize(++state);
    states.push_back(drawing);
    drawingHasSteps = isDrawing;
}

void EditorModel::cancel()
{
    if (!isDragging() && !isDrawing)
        return;
    letGo();
    isDrawing = false;
    startAtom = -1;
    hovered = -1;
    goTo(state);
}

/// During a gesture, undo takes back no more than that, unless a part of the gesture is a step already.
void EditorModel::undo()
{
    const bool underWay = isDragging() || isDrawing;
    const bool hasSteps = drawingHasSteps && !isDragging();
    cancel();
    if (underWay && !hasSteps)
        return;
    goTo(state > 0 ? state - 1 : 0);
    rest(pointer);
}

void EditorModel::redo()
{
    cancel();
    goTo(std::min(state + 1, states.size() - 1));
    rest(pointer);
}

void EditorModel::goTo(std::size_t newState)
{
    state = newState;
    drawing = states[state];
    hovered = -1;
    forgetGone();
}
