#include "bonds/DrawnShape.h"

#include "bonds/BondGeometry.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace {

constexpr double riseTolerance = 0.01; // relative; coordinates of files are rounded

/// Whether the depth rises along a wedge as along one that is drawn by hand.
bool risesAsDrawn(const DrawnShape& shape, const DrawnShape::Bond& wedge)
{
    const DrawnShape::Atom& from = shape.atoms[wedge.from];
    const DrawnShape::Atom& to = shape.atoms[wedge.to];
    const double drawn = drawnSlope * distance({from.x, from.y}, {to.x, to.y});
    const double rise = (wedge.kind == KYTBT_StereoUp ? 1 : -1) * (double{to.depth} - from.depth);
    return std::fabs(rise - drawn) <= riseTolerance * drawn;
}

bool isLevel(const DrawnShape& shape, const DrawnShape::Bond& bond)
{
    return shape.atoms[bond.from].depth == shape.atoms[bond.to].depth;
}

/// Marks the atoms whose depth follows from a wedge that rises as drawn: its wide end, and what is joined to that by
/// lines between equal depths.
std::vector<bool> raisedAtoms(const DrawnShape& shape)
{
    std::vector<std::vector<int>> level(shape.atoms.size()); // neighbours of equal depth
    std::vector<bool> raised(shape.atoms.size());
    std::vector<int> pending;
    const auto raise = [&](int atom) {
        if (!raised[atom])
            pending.push_back(atom);
        raised[atom] = true;
    };
    for (const DrawnShape::Bond& bond : shape.bonds) {
        const bool isWedge = isWedgeKind(bond.kind);
        if (isWedge && risesAsDrawn(shape, bond)) {
            raise(bond.to);
        } else if (!isWedge && isLevel(shape, bond)) {
            level[bond.from].push_back(bond.to);
            level[bond.to].push_back(bond.from);
        }
    }
    while (!pending.empty()) {
        const int atom = pending.back();
        pending.pop_back();
        std::for_each(level[atom].begin(), level[atom].end(), raise);
    }
    return raised;
}

/// Marks the connected pieces with a line between different depths.
std::vector<bool> piecesWithSlopes(const DrawnShape& shape, const std::vector<std::size_t>& pieceOf)
{
    std::vector<bool> sloping(shape.atoms.size());
    for (const DrawnShape::Bond& bond : shape.bonds)
        if (!isWedgeKind(bond.kind) && !isLevel(shape, bond))
            sloping[pieceOf[bond.from]] = true;
    return sloping;
}

} // namespace

std::vector<std::size_t> connectedPieces(const DrawnShape& shape)
{
    std::vector<std::size_t> rootOf(shape.atoms.size());
    std::iota(rootOf.begin(), rootOf.end(), std::size_t{0});
    const auto root = [&](std::size_t atom) {
        while (rootOf[atom] != atom)
            atom = rootOf[atom] = rootOf[rootOf[atom]];
        return atom;
    };
    for (const DrawnShape::Bond& bond : shape.bonds) {
        const auto [first, second] = std::minmax({root(bond.from), root(bond.to)});
        rootOf[second] = first;
    }
    std::vector<std::size_t> pieceOf(shape.atoms.size());
    std::size_t pieces = 0;
    for (std::size_t i = 0; i < pieceOf.size(); ++i)
        pieceOf[i] = root(i) == i ? pieces++ : pieceOf[root(i)];
    return pieceOf;
}

bool isFlat(const DrawnShape& shape)
{
    const std::vector<std::size_t> pieceOf = connectedPieces(shape);
    const std::vector<bool> sloping = piecesWithSlopes(shape, pieceOf);
    if (std::find(sloping.begin(), sloping.end(), true) == sloping.end())
        return true;
    const std::vector<bool> raised = raisedAtoms(shape);
    std::vector<std::optional<float>> common(shape.atoms.size()); // depth by piece
    for (std::size_t i = 0; i < shape.atoms.size(); ++i) {
        if (raised[i] || !sloping[pieceOf[i]])
            continue;
        const float depth = shape.atoms[i].depth;
        if (common[pieceOf[i]].value_or(depth) != depth)
            return false;
        common[pieceOf[i]] = depth;
    }
    return true;
}
