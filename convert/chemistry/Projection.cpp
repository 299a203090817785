#include "convert/chemistry/Projection.h"
#include "convert/chemistry/Stereo.h"

#include <GraphMol/Chirality.h>
#include <GraphMol/MolOps.h>

#include <cmath>
#include <optional>
#include <set>

using namespace RDKit;

namespace {

constexpr double smallestRise = 0.1;   // angstroms; below it a wedge would say too much
constexpr double smallestVolume = 0.1; // of three neighbours around a centre, of unit vectors
constexpr std::size_t fewestNeighbours = 3;
constexpr std::size_t mostNeighbours = 4;

/// The direction in which each neighbour of a centre lies, as unit vectors; empty if one lies on the centre.
std::vector<RDGeom::Point3D> directionsOf(const RWMol& molecule, const Atom* centre)
{
    const Conformer& conformer = molecule.getConformer();
    std::vector<RDGeom::Point3D> directions;
    for (const Bond* bond : molecule.atomBonds(centre)) {
        RDGeom::Point3D direction =
            conformer.getAtomPos(bond->getOtherAtomIdx(centre->getIdx())) - conformer.getAtomPos(centre->getIdx());
        if (direction.length() < smallestRise)
            return {};
        direction.normalize();
        directions.push_back(direction);
    }
    return directions;
}

/// The directions as a flat drawing shows them, with the neighbour at `wedge` in front of (or behind) the others.
std::vector<RDGeom::Point3D> drawnDirections(std::vector<RDGeom::Point3D> directions, std::size_t wedge)
{
    const double rise = directions[wedge].z > 0 ? 1 : -1;
    for (RDGeom::Point3D& direction : directions) {
        direction.z = 0;
        if (direction.length() > 0)
            direction.normalize();
    }
    directions[wedge].z = rise;
    return directions;
}

/// The signed volume that the neighbours span: of three around the centre, of four around the last one.
double volumeOf(const std::vector<RDGeom::Point3D>& directions)
{
    const RDGeom::Point3D origin = directions.size() == mostNeighbours ? directions.back() : RDGeom::Point3D();
    const RDGeom::Point3D a = directions[0] - origin;
    const RDGeom::Point3D b = directions[1] - origin;
    const RDGeom::Point3D c = directions[2] - origin;
    return a.dotProduct(b.crossProduct(c));
}

/// Whether a wedge to the neighbour at `wedge` shows the stereo that the directions in space have.
bool showsStereo(const std::vector<RDGeom::Point3D>& directions, std::size_t wedge)
{
    const double drawn = volumeOf(drawnDirections(directions, wedge));
    return std::fabs(drawn) > smallestVolume && (drawn > 0) == (volumeOf(directions) > 0);
}

/// The wedge of a centre: the steepest of those that show its stereo.
std::optional<ChosenWedge> wedgeOf(const RWMol& molecule, const Atom* centre, const std::set<unsigned>& taken)
{
    const std::vector<RDGeom::Point3D> directions = directionsOf(molecule, centre);
    if (directions.size() < fewestNeighbours || directions.size() > mostNeighbours)
        return std::nullopt;
    std::optional<ChosenWedge> best;
    double bestRise = 0;
    std::size_t index = 0;
    for (const Bond* bond : molecule.atomBonds(centre)) {
        const std::size_t neighbour = index++;
        const bool isFree = bond->getBondType() == Bond::SINGLE && !taken.contains(bond->getIdx());
        const double rise = std::fabs(directions[neighbour].z);
        if (!isFree || rise < smallestRise || rise <= bestRise || !showsStereo(directions, neighbour))
            continue;
        bestRise = rise;
        best = ChosenWedge{bond->getIdx(), centre->getIdx(),
                           directions[neighbour].z > 0 ? KYTBT_StereoUp : KYTBT_StereoDown};
    }
    return best;
}

/// The molecule as a flat drawing with these wedges shows it: with chiral tags, also at atoms that are no
/// stereocentres.
RWMol drawnFlat(const RWMol& molecule, const std::vector<ChosenWedge>& wedges)
{
    RWMol drawn(molecule);
    Conformer& conformer = drawn.getConformer();
    conformer.set3D(false);
    for (RDGeom::Point3D& position : conformer.getPositions())
        position.z = 0;
    for (Bond* bond : drawn.bonds())
        bond->setBondDir(Bond::NONE);
    for (const ChosenWedge& wedge : wedges) {
        Bond* bond = drawn.getBondWithIdx(wedge.bond);
        if (bond->getBeginAtomIdx() != wedge.narrowEnd) {
            bond->setEndAtomIdx(bond->getBeginAtomIdx());
            bond->setBeginAtomIdx(wedge.narrowEnd);
        }
        bond->setBondDir(wedge.kind == KYTBT_StereoUp ? Bond::BEGINWEDGE : Bond::BEGINDASH);
    }
    MolOps::assignChiralTypesFromBondDirs(drawn, static_cast<int>(conformer.getId()));
    return drawn;
}

/// Removes the wedges that RDKit reads otherwise in a flat drawing.
void removeMisread(std::vector<ChosenWedge>& wedges, const RWMol& molecule)
{
    const Stereo meant = stereoOf(molecule);
    const Stereo shown = stereoOf(drawnFlat(molecule, wedges));
    std::erase_if(wedges, [&](const ChosenWedge& wedge) {
        const auto found = shown.centres.find(wedge.narrowEnd);
        return found == shown.centres.end() || found->second != meant.centres.at(wedge.narrowEnd);
    });
}

} // namespace

std::vector<ChosenWedge> projectedWedges(const RWMol& molecule)
{
    const std::map<unsigned, bool> centres = stereoOf(molecule).centres;
    std::vector<ChosenWedge> wedges;
    std::set<unsigned> taken;
    for (const Atom* atom : molecule.atoms()) {
        if (!centres.contains(atom->getIdx()))
            continue;
        if (const std::optional<ChosenWedge> wedge = wedgeOf(molecule, atom, taken)) {
            taken.insert(wedge->bond);
            wedges.push_back(*wedge);
        }
    }
    removeMisread(wedges, molecule);
    return wedges;
}
