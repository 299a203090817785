#include "convert/chemistry/Stereo.h"

#include <QStringList>

#include <algorithm>
#include <set>
#include <tuple>
#include <vector>

using namespace RDKit;

namespace {

/// Whether it takes an odd number of swaps to sort the numbers.
bool isOddPermutation(const std::vector<unsigned>& numbers)
{
    bool odd = false;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        for (std::size_t j = i + 1; j < numbers.size(); ++j)
            odd ^= numbers[i] > numbers[j];
    return odd;
}

std::vector<unsigned> neighboursOf(const ROMol& molecule, const Atom* atom)
{
    std::vector<unsigned> neighbours;
    for (const Bond* bond : molecule.atomBonds(atom))
        neighbours.push_back(bond->getOtherAtomIdx(atom->getIdx()));
    return neighbours;
}

/// The lowest index of the neighbours of `end`, without that of the double bond's other end.
unsigned lowestNeighbour(const ROMol& molecule, const Atom* end, unsigned otherEnd)
{
    std::vector<unsigned> neighbours = neighboursOf(molecule, end);
    neighbours.erase(std::remove(neighbours.begin(), neighbours.end(), otherEnd), neighbours.end());
    return *std::min_element(neighbours.begin(), neighbours.end());
}

bool isCis(const ROMol& molecule, const Bond* bond)
{
    const bool cis = bond->getStereo() == Bond::STEREOZ || bond->getStereo() == Bond::STEREOCIS;
    const INT_VECT& sides = bond->getStereoAtoms();
    const unsigned begin = lowestNeighbour(molecule, bond->getBeginAtom(), bond->getEndAtomIdx());
    const unsigned end = lowestNeighbour(molecule, bond->getEndAtom(), bond->getBeginAtomIdx());
    return cis ^ (static_cast<unsigned>(sides[0]) != begin) ^ (static_cast<unsigned>(sides[1]) != end);
}

/// The keys whose values differ, or that only one map has.
template <typename Key> std::vector<Key> differingKeys(const std::map<Key, bool>& one, const std::map<Key, bool>& other)
{
    std::set<Key> keys;
    for (const auto& [map, opposite] : {std::pair(&one, &other), std::pair(&other, &one)})
        for (const auto& [key, value] : *map)
            if (const auto found = opposite->find(key); found == opposite->end() || found->second != value)
                keys.insert(key);
    return {keys.begin(), keys.end()};
}

} // namespace

Stereo stereoOf(const ROMol& molecule)
{
    Stereo stereo;
    for (const Atom* atom : molecule.atoms()) {
        const Atom::ChiralType tag = atom->getChiralTag();
        if (tag == Atom::CHI_TETRAHEDRAL_CW || tag == Atom::CHI_TETRAHEDRAL_CCW)
            stereo.centres[atom->getIdx()] =
                (tag == Atom::CHI_TETRAHEDRAL_CW) ^ isOddPermutation(neighboursOf(molecule, atom));
    }
    for (const Bond* bond : molecule.bonds())
        if (bond->getStereo() > Bond::STEREOANY && bond->getStereoAtoms().size() == 2)
            stereo.doubleBonds[std::minmax({bond->getBeginAtomIdx(), bond->getEndAtomIdx()})] = isCis(molecule, bond);
    return stereo;
}

int countDifferences(const Stereo& one, const Stereo& other)
{
    return static_cast<int>(differingKeys(one.centres, other.centres).size()
                            + differingKeys(one.doubleBonds, other.doubleBonds).size());
}

void openDoubleBonds(SketchMolecule& drawn, const Stereo& meant, Stereo& shown)
{
    for (SketchBond& bond : drawn.bonds) {
        const auto [first, second] = std::minmax(bond.from, bond.to);
        const std::pair<unsigned, unsigned> ends(first, second);
        if (!meant.doubleBonds.contains(ends) && shown.doubleBonds.erase(ends) > 0)
            bond.open = true;
    }
}

QString differencesOf(const ROMol& one, const ROMol& other)
{
    if (one.getNumAtoms() != other.getNumAtoms())
        return QStringLiteral("the number of atoms");
    const auto propertiesOf = [](const Atom* atom) {
        return std::tuple(atom->getAtomicNum(), atom->getFormalCharge(), atom->getIsotope(), atom->getTotalNumHs());
    };
    QStringList parts;
    for (unsigned i = 0; i < one.getNumAtoms(); ++i)
        if (propertiesOf(one.getAtomWithIdx(i)) != propertiesOf(other.getAtomWithIdx(i)))
            parts.append(QStringLiteral("atom %1").arg(i + 1));
    if (const QString stereo = differencesOf(stereoOf(one), stereoOf(other)); !stereo.isEmpty())
        parts.append(QStringLiteral("stereo of ") + stereo);
    return parts.join(QStringLiteral(", "));
}

QString differencesOf(const Stereo& one, const Stereo& other)
{
    QStringList parts;
    for (const unsigned centre : differingKeys(one.centres, other.centres))
        parts.append(QStringLiteral("atom %1").arg(centre + 1));
    for (const auto& [begin, end] : differingKeys(one.doubleBonds, other.doubleBonds))
        parts.append(QStringLiteral("bond %1=%2").arg(begin + 1).arg(end + 1));
    return parts.join(QStringLiteral(", "));
}
