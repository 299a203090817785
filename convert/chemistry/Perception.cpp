#include "convert/chemistry/Perception.h"

#include "convert/chemistry/RDKitMolecule.h"

#include <GraphMol/Chirality.h>
#include <GraphMol/MolOps.h>

#include <map>

using namespace RDKit;

namespace {

constexpr unsigned firstLabelIsotope = 1000; // above all real mass numbers

/// RDKit would remove such a hydrogen together with its charge.
void rejectBoundHydrogenIons(const RWMol& molecule)
{
    for (const Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 1 && atom->getFormalCharge() != 0 && atom->getDegree() > 0)
            throw AtomValenceException("a charged hydrogen with a bond", atom->getIdx());
}

/// Marks different labels as different isotopes: RDKit distinguishes isotopes, but not labels, as neighbours of a
/// stereocentre. removeLabelIsotopes() removes the marks.
void markLabelsAsIsotopes(RWMol& molecule)
{
    std::map<std::string, unsigned> isotopes;
    for (Atom* atom : molecule.atoms()) {
        std::string label;
        if (atom->getAtomicNum() == 0 && atom->getIsotope() == 0
            && atom->getPropIfPresent(common_properties::atomLabel, label))
            atom->setIsotope(isotopes.try_emplace(label, firstLabelIsotope + isotopes.size()).first->second);
    }
}

void removeLabelIsotopes(RWMol& molecule)
{
    for (Atom* atom : molecule.atoms())
        if (atom->getAtomicNum() == 0 && atom->getIsotope() >= firstLabelIsotope)
            atom->setIsotope(0);
}

void sanitize(RWMol& molecule, Hydrogens hydrogens)
{
    if (hydrogens == Hydrogens::Keep)
        MolOps::sanitizeMol(molecule);
    else
        MolOps::removeHs(molecule, false, false, true);
}

} // namespace

void sanitizeWithLabels(RWMol& molecule)
{
    markLabelsAsIsotopes(molecule);
    sanitize(molecule, Hydrogens::Remove);
    MolOps::assignStereochemistry(molecule, true, true);
    removeLabelIsotopes(molecule);
}

void perceive(RWMol& molecule, Hydrogens hydrogens)
{
    molecule.updatePropertyCache(false);
    rejectBoundHydrogenIons(molecule);
    markLabelsAsIsotopes(molecule);
    const int conformer = static_cast<int>(molecule.getConformer().getId());
    if (molecule.getConformer().is3D())
        MolOps::assignChiralTypesFrom3D(molecule, conformer);
    else
        MolOps::assignChiralTypesFromBondDirs(molecule, conformer);
    // The sides of double bonds come before hydrogens are removed, since some are the only neighbour that shows them,
    // and again after that, since the sides of conjugated bonds depend on each other.
    MolOps::clearSingleBondDirFlags(molecule);
    MolOps::detectBondStereochemistry(molecule, conformer);
    sanitize(molecule, hydrogens);
    if (hydrogens == Hydrogens::Remove) {
        MolOps::clearSingleBondDirFlags(molecule);
        MolOps::detectBondStereochemistry(molecule, conformer);
    }
    MolOps::assignStereochemistry(molecule, true, true);
    removeLabelIsotopes(molecule);
}

void assignParsedStereo(RWMol& molecule)
{
    // The parser has assigned chiral tags and bond directions, but does not know which atoms are stereocentres.
    sanitize(molecule, Hydrogens::Keep);
    MolOps::assignStereochemistry(molecule, true, true);
}

std::unique_ptr<RWMol> perceivedMolecule(const SketchMolecule& drawn, Labels labels)
{
    Notes ignored;
    std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    if (labels == Labels::Alike)
        for (Atom* atom : molecule->atoms())
            atom->clearProp(common_properties::atomLabel);
    try {
        perceive(*molecule);
        return molecule;
    } catch (const MolSanitizeException&) {
        return nullptr;
    }
}
