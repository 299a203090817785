#include "convert/chemistry/MoleculeInfo.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Inchi.h"
#include "convert/chemistry/Kekulized.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Symbols.h"

#include <GraphMol/MolOps.h>
#include <GraphMol/PeriodicTable.h>

#include <QMap>

#include <numeric>

using namespace RDKit;

namespace {

/// The formula in Hill order: carbon, hydrogen, then the other elements alphabetically; without carbon, all elements
/// alphabetically.
QString hillFormula(QMap<QString, int> counts, int charge)
{
    QString formula;
    const auto append = [&](const QString& element, int count) {
        if (count > 0)
            formula += count > 1 ? element + QString::number(count) : element;
    };
    if (counts.contains("C")) {
        append("C", counts.take("C"));
        append("H", counts.take("H"));
    }
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry)
        append(entry.key(), entry.value());
    if (charge != 0) // The sign comes first: in "CaC22+", the charge would read as a count.
        formula += (charge > 0 ? u'+' : u'-') + (std::abs(charge) > 1 ? QString::number(std::abs(charge)) : QString());
    return formula;
}

/// The number of independent rings: bonds - atoms + connected pieces.
int ringsOf(const RWMol& molecule)
{
    std::vector<int> piece;
    const int pieces = static_cast<int>(MolOps::getMolFrags(molecule, piece));
    return static_cast<int>(molecule.getNumBonds()) - static_cast<int>(molecule.getNumAtoms()) + pieces;
}

QString warningOf(const MolSanitizeException& problem, const SketchMolecule& drawn)
{
    const auto* atAtom = dynamic_cast<const AtomSanitizeException*>(&problem);
    if (!atAtom || atAtom->getAtomIdx() >= drawn.atoms.size())
        return QString::fromUtf8(problem.what()).simplified();
    const unsigned index = atAtom->getAtomIdx();
    QString warning = QStringLiteral("atom %1 (%2)").arg(index + 1).arg(drawn.atoms[index].symbol);
    if (problem.getType() == "AtomValenceException")
        return warning + QStringLiteral(": more bonds than its valence allows");
    return warning + QStringLiteral(": ") + QString::fromUtf8(problem.what()).simplified();
}

void setInchi(MoleculeInfo& info, const SketchMolecule& drawn)
{
    if (!inchiIsSupported)
        return;
    try {
        Notes ignored;
        info.inchi = inchiOf(drawn, ignored);
        info.inchiKey = inchiKeyOf(info.inchi);
    } catch (const ConversionError&) {
        info.inchi.clear(); // a molecule with labels has none
    }
}

} // namespace

MoleculeInfo infoOf(const SketchMolecule& drawn)
{
    const Deadline deadline(QStringLiteral("computing rings and valences"));
    Notes ignored;
    const std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    MoleculeInfo info;
    info.name = drawn.name;
    info.atoms = static_cast<int>(drawn.atoms.size());
    info.bonds = static_cast<int>(drawn.bonds.size());
    info.rings = ringsOf(*molecule);

    molecule->updatePropertyCache(false);
    for (const auto& problem : MolOps::detectChemistryProblems(*molecule))
        info.warnings.append(warningOf(*problem, drawn));
    setInchi(info, drawn);

    const std::unique_ptr<RWMol> kekulized = kekulizedMolecule(drawn);
    QMap<QString, int> counts;
    const double hydrogenWeight = PeriodicTable::getTable()->getAtomicWeight(1);
    for (const Atom* atom : kekulized->atoms()) {
        const QString& symbol = drawn.atoms[atom->getIdx()].symbol;
        info.charge += atom->getFormalCharge();
        if (atom->getAtomicNum() == 0) {
            info.labels.append(symbol);
            continue;
        }
        const int hydrogens = static_cast<int>(atom->getTotalNumHs());
        ++counts[elementName(atom->getAtomicNum())];
        counts["H"] += hydrogens;
        info.weight += atom->getMass() + hydrogens * hydrogenWeight;
    }
    info.labels.sort();
    info.formula = hillFormula(counts, info.charge);
    for (const QString& label : std::as_const(info.labels))
        info.formula += QStringLiteral(" + ") + label;
    return info;
}

std::vector<int> implicitHydrogens(const SketchMolecule& drawn)
{
    const std::unique_ptr<RWMol> molecule = kekulizedMolecule(drawn);
    std::vector<int> hydrogens;
    for (const Atom* atom : molecule->atoms())
        hydrogens.push_back(atom->getAtomicNum() > 0 ? static_cast<int>(atom->getTotalNumHs()) : 0);
    return hydrogens;
}
