#include "convert/Chemistry.h"
#include "convert/Deadline.h"
#include "convert/RDKitMolecule.h"
#include "convert/Symbols.h"

#include <GraphMol/MolOps.h>
#include <GraphMol/PeriodicTable.h>

#include <QMap>

#include <numeric>

using namespace RDKit;

namespace {

/// Carbon, hydrogen, then the others by their letters; without carbon all by their letters.
QString hillFormula(QMap<QString, int> counts, int charge)
{
    QString formula;
    const auto put = [&](const QString& element, int count) {
        if (count > 0)
            formula += count > 1 ? element + QString::number(count) : element;
    };
    if (counts.contains("C")) {
        put("C", counts.take("C"));
        put("H", counts.take("H"));
    }
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry)
        put(entry.key(), entry.value());
    if (charge != 0) // The sign goes first: in "CaC22+", the charge would look like a count.
        formula += (charge > 0 ? u'+' : u'-') + (std::abs(charge) > 1 ? QString::number(std::abs(charge)) : QString());
    return formula;
}

/// Bonds beyond those that hold the pieces together.
int ringsOf(const RWMol& molecule)
{
    std::vector<int> piece;
    const int pieces = static_cast<int>(MolOps::getMolFrags(molecule, piece));
    return static_cast<int>(molecule.getNumBonds()) - static_cast<int>(molecule.getNumAtoms()) + pieces;
}

QString complaintOf(const MolSanitizeException& problem, const SketchMolecule& drawn)
{
    const auto* atAtom = dynamic_cast<const AtomSanitizeException*>(&problem);
    if (!atAtom || atAtom->getAtomIdx() >= drawn.atoms.size())
        return QString::fromUtf8(problem.what()).simplified();
    const unsigned index = atAtom->getAtomIdx();
    QString complaint = QStringLiteral("atom %1 (%2)").arg(index + 1).arg(drawn.atoms[index].symbol);
    if (problem.getType() == "AtomValenceException")
        return complaint + QStringLiteral(": more bonds than its valence allows");
    return complaint + QStringLiteral(": ") + QString::fromUtf8(problem.what()).simplified();
}

} // namespace

MoleculeInfo infoOf(const SketchMolecule& drawn)
{
    const Deadline deadline(QStringLiteral("the rings and valences of a molecule"));
    Notes ignored;
    const std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    MoleculeInfo info;
    info.name = drawn.name;
    info.atoms = static_cast<int>(drawn.atoms.size());
    info.bonds = static_cast<int>(drawn.bonds.size());
    info.rings = ringsOf(*molecule);

    molecule->updatePropertyCache(false);
    for (const auto& problem : MolOps::detectChemistryProblems(*molecule))
        info.complaints.append(complaintOf(*problem, drawn));
    // The hydrogens of aromatic nitrogens and the like are known once the rings have single and double bonds.
    try {
        MolOps::KekulizeIfPossible(*molecule, true);
        molecule->updatePropertyCache(false);
    } catch (const std::exception&) {
        // It has been complained about already.
    }

    QMap<QString, int> counts;
    const double hydrogenWeight = PeriodicTable::getTable()->getAtomicWeight(1);
    for (const Atom* atom : molecule->atoms()) {
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
