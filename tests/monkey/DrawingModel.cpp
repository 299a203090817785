#include "tests/monkey/DrawingModel.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <set>

namespace {

constexpr double pi = std::numbers::pi;

/// The direction of (x2, y2) from (x1, y1). Straight up counts as straight down, straight left as straight right.
double inclination(double x1, double y1, double x2, double y2)
{
    if (x1 == x2)
        return pi / 2;
    const double slope = std::atan((y2 - y1) / (x2 - x1));
    if (x2 > x1 || y2 == y1)
        return slope;
    return y2 > y1 ? slope + pi : slope - pi;
}

} // namespace

void DrawingModel::addAtom(int number, double x, double y, float z)
{
    AtomModel& atom = atoms[number];
    atom.z = z;
    place(number, x, y);
}

void DrawingModel::addBond(int number, int from, int to)
{
    const double dx = atoms.at(to).x - atoms.at(from).x;
    const double dy = atoms.at(to).y - atoms.at(from).y;
    BondModel& bond = bonds[number];
    bond.from = from;
    bond.to = to;
    bond.length = static_cast<float>(std::sqrt(dx * dx + dy * dy));
    atoms.at(from).out.push_back(number);
    atoms.at(to).in.push_back(number);
}

void DrawingModel::draw(int number, KytBondType kind)
{
    BondModel& bond = bonds.at(number);
    const bool wedge = kind == KYTBT_StereoUp || kind == KYTBT_StereoDown;
    const std::size_t count = bond.drawn.size();
    if (count == 3 || (count > 0 && (wedge || bond.isWedge())))
        return;
    bond.kinds[count] = kind;
    bond.drawn.push_back(kind);
}

// ---- moving

void DrawingModel::moveBy(int number, double dx, double dy)
{
    AtomModel& atom = atoms.at(number);
    atom.x += dx;
    atom.y += dy;
    layOutBondsOf(number);
    moveLabelBy(number, dx, dy);
}

/// An atom is placed by a move of the difference, after which its bonds are laid out once more.
void DrawingModel::place(int number, double x, double y)
{
    AtomModel& atom = atoms.at(number);
    moveBy(number, x - atom.x, y - atom.y);
    layOutBondsOf(number);
    moveLabelBy(number, x - atom.labelX, y - atom.labelY);
}

void DrawingModel::rotateAbout(int number, double cx, double cy, float angle)
{
    const AtomModel& atom = atoms.at(number);
    const double radius = std::sqrt((atom.x - cx) * (atom.x - cx) + (atom.y - cy) * (atom.y - cy));
    const double direction = angle + inclination(cx, cy, atom.x, atom.y);
    place(number, std::cos(direction) * radius + cx, std::sin(direction) * radius + cy);
}

void DrawingModel::moveBondBy(int number, double dx, double dy)
{
    const BondModel bond = bonds.at(number);
    moveBy(bond.from, dx, dy);
    moveBy(bond.to, dx, dy);
}

void DrawingModel::moveLabelBy(int number, double dx, double dy)
{
    AtomModel& atom = atoms.at(number);
    atom.labelX += dx;
    atom.labelY += dy;
}

// ---- depth

void DrawingModel::setDepth(int number, float z)
{
    AtomModel& atom = atoms.at(number);
    if (atom.z == z)
        return;
    atom.z = z;
    for (const int bond : atom.out)
        layOut(bond);
}

void DrawingModel::layOutBondsOf(int number)
{
    for (const int bond : atoms.at(number).in)
        layOut(bond);
    for (const int bond : atoms.at(number).out)
        layOut(bond);
}

void DrawingModel::layOut(int number)
{
    BondModel& bond = bonds.at(number);
    const AtomModel& from = atoms.at(bond.from);
    const AtomModel& to = atoms.at(bond.to);
    const double length = std::sqrt((to.x - from.x) * (to.x - from.x) + (to.y - from.y) * (to.y - from.y));
    bond.length = static_cast<float>(length);
    if (!carries(bond) || liesInClimbingRing(bond))
        return;
    const double rise = bond.isWedge() ? std::tan(bond.angle * pi / 180) * length : 0;
    setDepth(bond.to, static_cast<float>(from.z + rise));
}

/// Intentional: the tangent is that of degrees taken as radians, the length that of the drawn triangle, whose corners
/// are whole pixels; a hatched wedge goes down, and a lock does not count. The next move of the bond gives its end atom
/// another depth.
void DrawingModel::setAngle(int number, float angle)
{
    BondModel& bond = bonds.at(number);
    bond.angle = angle < 0 ? 0 : angle < 90 ? angle : 89.5F;
    const std::vector<int> corners = points(bond);
    const int dx = (corners[2] + corners[4]) / 2 - corners[0];
    const int dy = (corners[3] + corners[5]) / 2 - corners[1];
    const double rise = std::tan(double(bond.angle)) * std::sqrt(double(dx * dx + dy * dy));
    const float start = atoms.at(bond.from).z;
    setDepth(bond.to, static_cast<float>(start + (bond.kinds[0] == KYTBT_StereoUp ? rise : -rise)));
}

/// How far the third line lies from the first; the second lies as far on the other side.
std::pair<double, double> DrawingModel::sideOf(const BondModel& bond) const
{
    const AtomModel& from = atoms.at(bond.from);
    const AtomModel& to = atoms.at(bond.to);
    if (from.x == to.x)
        return {6, 0};
    if (from.y == to.y)
        return {0, 6};
    const double slope = (to.y - from.y) / (to.x - from.x);
    const double across = std::sqrt(30 * (slope * slope) / (slope * slope + 1));
    return {across, -across / slope};
}

std::vector<int> DrawingModel::points(const BondModel& bond) const
{
    const AtomModel& from = atoms.at(bond.from);
    const AtomModel& to = atoms.at(bond.to);
    const auto [sideX, sideY] = sideOf(bond);
    std::vector<int> result;
    const auto add = [&, x = sideX, y = sideY](const AtomModel& atom, int side) {
        result.push_back(static_cast<int>(atom.x + side * x));
        result.push_back(static_cast<int>(atom.y + side * y));
    };
    if (bond.isWedge()) {
        add(from, 0);
        add(to, 1);
        add(to, -1);
        return result;
    }
    constexpr int sides[] = {0, -1, 1};
    for (std::size_t i = 0; i < bond.drawn.size(); ++i) {
        add(from, sides[i]);
        add(to, sides[i]);
    }
    return result;
}

bool DrawingModel::carries(const BondModel& bond) const
{
    return !bond.drawn.empty() && !atoms.at(bond.to).locked;
}

/// Whether a way of depth leads from the bond's end over a wedge back to its start: around such a ring, every round
/// would raise all atoms once more.
bool DrawingModel::liesInClimbingRing(const BondModel& bond) const
{
    return depthReaches(bond.to, bond.from) && std::any_of(bonds.begin(), bonds.end(), [&](const auto& entry) {
               const BondModel& wedge = entry.second;
               return wedge.isWedge() && wedge.angle != 0 && carries(wedge) && depthReaches(bond.to, wedge.from)
                   && depthReaches(wedge.to, bond.from);
           });
}

bool DrawingModel::depthReaches(int from, int to) const
{
    std::set<int> reached;
    const std::function<bool(int)> leads = [&](int atom) {
        if (atom == to)
            return true;
        if (!reached.insert(atom).second)
            return false;
        const std::vector<int>& out = atoms.at(atom).out;
        return std::any_of(out.begin(), out.end(),
                           [&](int bond) { return carries(bonds.at(bond)) && leads(bonds.at(bond).to); });
    };
    return leads(from);
}

// ---- merging

void DrawingModel::drop(int target, int dropped)
{
    const std::vector<int> molecule = moleculeOf(target);
    const bool together = std::find(molecule.begin(), molecule.end(), dropped) != molecule.end();
    if (together && std::abs(double(atoms.at(target).z) - double(atoms.at(dropped).z)) > 1)
        return;
    if (areBondedOnlyToEachOther(target, dropped)) {
        deleteAtom(dropped);
        return;
    }
    setDepth(dropped, atoms.at(target).z);
    handBonds(dropped, target);
    deleteAtom(dropped);
    for (const int bond : std::vector<int>(atoms.at(target).in))
        if (bonds.at(bond).from == target)
            deleteBond(bond);
}

bool DrawingModel::areBondedOnlyToEachOther(int one, int other) const
{
    return std::all_of(bonds.begin(), bonds.end(), [&](const auto& entry) {
        const BondModel& bond = entry.second;
        const bool ofOne = bond.from == one || bond.to == one;
        const bool ofOther = bond.from == other || bond.to == other;
        return ofOne == ofOther;
    });
}

/// Every bond of `from` becomes one of `target`, first the incoming and then the outgoing ones; what would be a second
/// bond between two atoms is deleted. A bond between the two becomes one from `target` to itself.
void DrawingModel::handBonds(int from, int target)
{
    for (const int number : std::vector<int>(atoms.at(from).in)) {
        BondModel& bond = bonds.at(number);
        if (bondBetween(target, bond.from) >= 0) {
            deleteBond(number);
            continue;
        }
        atoms.at(target).in.push_back(number);
        bond.to = target;
        layOut(number);
    }
    atoms.at(from).in.clear();
    for (const int number : std::vector<int>(atoms.at(from).out)) {
        BondModel& bond = bonds.at(number);
        if (bondBetween(target, bond.to) >= 0) {
            deleteBond(number);
            continue;
        }
        atoms.at(target).out.push_back(number);
        bond.from = target;
        layOut(number);
    }
    atoms.at(from).out.clear();
}

// ---- deleting

void DrawingModel::deleteAtom(int number)
{
    for (const int bond : std::vector<int>(atoms.at(number).in))
        deleteBond(bond);
    for (const int bond : std::vector<int>(atoms.at(number).out))
        deleteBond(bond);
    atoms.erase(number);
}

void DrawingModel::deleteBond(int number)
{
    for (auto& [ignored, atom] : atoms) {
        std::erase(atom.in, number);
        std::erase(atom.out, number);
    }
    bonds.erase(number);
}

/// The last line moves to the gap, and the bond is laid out again.
void DrawingModel::deleteLine(int number, int index)
{
    BondModel& bond = bonds.at(number);
    if (bond.drawn.size() == 1) {
        deleteBond(number);
        return;
    }
    bond.drawn.at(static_cast<std::size_t>(index)) = bond.drawn.back();
    bond.drawn.pop_back();
    layOut(number);
}

// ---- the graph

int DrawingModel::bondBetween(int atom, int other) const
{
    for (const int bond : atoms.at(atom).in)
        if (bonds.at(bond).from == other)
            return bond;
    for (const int bond : atoms.at(atom).out)
        if (bonds.at(bond).to == other)
            return bond;
    return -1;
}

int DrawingModel::firstNeighbour(int number) const
{
    const AtomModel& atom = atoms.at(number);
    if (!atom.in.empty())
        return bonds.at(atom.in.front()).from;
    return atom.out.empty() ? -1 : bonds.at(atom.out.front()).to;
}

std::vector<int> DrawingModel::moleculeOf(int start) const
{
    std::set<int> members;
    const std::function<void(int)> join = [&](int atom) {
        if (!members.insert(atom).second)
            return;
        for (const int bond : atoms.at(atom).in)
            join(bonds.at(bond).from);
        for (const int bond : atoms.at(atom).out)
            join(bonds.at(bond).to);
    };
    join(start);
    return {members.begin(), members.end()};
}
