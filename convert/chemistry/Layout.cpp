#include "convert/chemistry/Layout.h"

#include "convert/chemistry/Perception.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/Stereo.h"

#include <GraphMol/Depictor/RDDepictor.h>
#include <GraphMol/FileParsers/MolFileStereochem.h>
#include <GraphMol/MolOps.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

using namespace RDKit;

namespace {

constexpr unsigned neighboursForWedge = 3; // that a centre needs for a wedge to show its stereo

/// Makes the implicit hydrogens of stereocentres explicit that have too few neighbours for a wedge, such as those of
/// P-H.
void addHydrogensForWedges(RWMol& molecule)
{
    UINT_VECT centres;
    for (const Atom* atom : molecule.atoms())
        if (atom->getChiralTag() != Atom::CHI_UNSPECIFIED && atom->getDegree() < neighboursForWedge)
            centres.push_back(atom->getIdx());
    if (!centres.empty())
        MolOps::addHs(molecule, false, false, &centres);
}

constexpr unsigned smallestStereoRing = 8; // whose double bonds RDKit gives stereo

enum class LayoutMethod { Fast, CoordGen };

void computeCoordinates(RWMol& molecule, LayoutMethod method)
{
    RDDepict::preferCoordGen = method == LayoutMethod::CoordGen;
    RDDepict::compute2DCoords(molecule, nullptr, true);
    RDDepict::preferCoordGen = false;
}

/// A drawing and what is wrong with it.
struct Attempt {
    SketchMolecule drawn;
    Stereo shown;
    int differences; ///< from the stereo of the molecule
    int overlaps;    ///< atoms at the same coordinates
    Notes notes;

    bool isGood() const { return differences == 0 && overlaps == 0; }
    bool isBetterThan(const Attempt& other) const
    {
        return std::pair(differences, overlaps) < std::pair(other.differences, other.overlaps);
    }
};

/// The number of atoms at the coordinates of another one, where a file with fewer digits would show other stereo.
int countOverlaps(const SketchMolecule& molecule)
{
    std::set<std::pair<long, long>> cells;
    for (const SketchAtom& atom : molecule.atoms)
        cells.emplace(std::lround(atom.x), std::lround(atom.y));
    return static_cast<int>(molecule.atoms.size() - cells.size());
}

/// Whether a drawing of the molecule can show any stereo: it has wedges, or there are double bonds with neighbours at
/// both ends that are not in a small ring.
bool canShowStereo(const RWMol& molecule, const SketchMolecule& drawn)
{
    if (std::any_of(drawn.bonds.begin(), drawn.bonds.end(), isWedge))
        return true;
    const RingInfo* rings = molecule.getRingInfo();
    for (const Bond* bond : molecule.bonds()) {
        const bool hasNeighbours = bond->getBeginAtom()->getDegree() > 1 && bond->getEndAtom()->getDegree() > 1;
        const unsigned ring = rings->minBondRingSize(bond->getIdx()); // 0 outside of rings
        if (bond->getBondType() == Bond::DOUBLE && hasNeighbours && (ring == 0 || ring >= smallestStereoRing))
            return true;
    }
    return false;
}

Attempt draw(RWMol& molecule, const Stereo& meant, LayoutMethod method)
{
    Attempt attempt;
    computeCoordinates(molecule, method);
    attempt.drawn = sketchOf(molecule, chooseWedges(molecule), attempt.notes);
    spreadPieces(attempt.drawn);
    liftWedges(attempt.drawn);
    if (canShowStereo(molecule, attempt.drawn))
        if (const std::unique_ptr<RWMol> perceived = perceivedMolecule(attempt.drawn))
            attempt.shown = stereoOf(*perceived);
    openDoubleBonds(attempt.drawn, meant, attempt.shown);
    attempt.differences = countDifferences(meant, attempt.shown);
    attempt.overlaps = countOverlaps(attempt.drawn);
    return attempt;
}

/// Gives the bonds of `molecule` the wedges of `laidOut`, which has the same atoms, and makes lines of its other
/// wedges.
void takeWedges(SketchMolecule& molecule, const SketchMolecule& laidOut)
{
    std::map<std::pair<int, int>, const SketchBond*> wedges;
    for (const SketchBond& bond : laidOut.bonds)
        if (isWedge(bond))
            wedges[std::minmax(bond.from, bond.to)] = &bond;
    for (SketchBond& bond : molecule.bonds) {
        const auto wedge = wedges.find(std::minmax(bond.from, bond.to));
        if (wedge != wedges.end())
            bond = *wedge->second;
        else if (isWedge(bond))
            bond.kinds = {KYTBT_SingleBond};
    }
}

QPointF centreOf(const SketchMolecule& molecule)
{
    return extentOf(Sketch{{molecule}}).center();
}

} // namespace

std::vector<ChosenWedge> chooseWedges(const RWMol& molecule)
{
    std::vector<ChosenWedge> chosen;
    const INT_MAP_INT wedges = pickBondsToWedge(molecule);
    for (const auto& [index, narrowEnd] : wedges) {
        const Bond* bond = molecule.getBondWithIdx(index);
        const Bond::BondDir direction = DetermineBondWedgeState(bond, wedges, &molecule.getConformer());
        if (bond->getBondType() != Bond::SINGLE || (direction != Bond::BEGINWEDGE && direction != Bond::BEGINDASH))
            continue;
        chosen.push_back({static_cast<unsigned>(index), static_cast<unsigned>(narrowEnd),
                          direction == Bond::BEGINWEDGE ? KYTBT_StereoUp : KYTBT_StereoDown});
    }
    return chosen;
}

SketchMolecule layOut(RWMol& molecule, const QString& name, Notes& notes)
{
    addHydrogensForWedges(molecule);
    MolOps::findPotentialStereoBonds(molecule);
    const Stereo meant = stereoOf(molecule);
    MolOps::Kekulize(molecule, true);
    noteUnusualHydrogens(molecule, notes);
    Attempt best = draw(molecule, meant, LayoutMethod::Fast);
    if (!best.isGood()) {
        Attempt second = draw(molecule, meant, LayoutMethod::CoordGen);
        if (second.isBetterThan(best))
            best = std::move(second);
    }
    if (best.differences > 0)
        notes.addMolecule(
            QStringLiteral("%1: stereo of %2: drawn otherwise than read").arg(name, differencesOf(meant, best.shown)));
    notes.add(best.notes);
    return std::move(best.drawn);
}

SketchMolecule layOutAnew(const SketchMolecule& drawn, const QString& name, Notes& notes)
{
    if (drawn.atoms.size() > maxAtomsToLayOut)
        throw ConversionError(QStringLiteral("too many atoms for the layout: %1 (limit %2)")
                                  .arg(drawn.atoms.size())
                                  .arg(maxAtomsToLayOut));
    const std::unique_ptr<RWMol> molecule = perceivedMolecule(drawn);
    if (!molecule)
        throw ConversionError(QStringLiteral("impossible valences: cannot be laid out"));
    const SketchMolecule laidOut = layOut(*molecule, name, notes);
    SketchMolecule result = drawn;
    for (std::size_t i = 0; i < drawn.atoms.size(); ++i) {
        result.atoms[i].x = laidOut.atoms[i].x;
        result.atoms[i].y = laidOut.atoms[i].y;
        result.atoms[i].depth = laidOut.atoms[i].depth;
    }
    takeWedges(result, laidOut);
    const QPointF shift = centreOf(drawn) - centreOf(result);
    for (SketchAtom& atom : result.atoms) {
        atom.x += shift.x();
        atom.y += shift.y();
    }
    return result;
}
