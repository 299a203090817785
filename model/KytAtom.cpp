#include "model/KytAtom.h"

#include "bonds/BondUpdate.h"
#include "bonds/KytBond.h"
#include "canvas/truncate.h"
#include "model/DrawingStyle.h"
#include "model/KytMolecule.h"

#include <cmath>
#include <vector>

namespace {

constexpr int atomSize = 3;        // pixels
constexpr int hoveredAtomSize = 6; // pixels
// Shared by all atoms to save memory.
const QBrush atomBrush(atomDotColor);
const QBrush hoverBrush(hoverColor);

/// Pushes the neighbours of `atom` onto `stack` so that they are popped in list order, incoming bonds before outgoing
/// ones.
void pushNeighbours(std::vector<KytAtom*>& stack, const KytAtom* atom)
{
    for (auto bond = atom->outList.crbegin(); bond != atom->outList.crend(); ++bond)
        if (KytAtom* to = (*bond)->getToAtom())
            stack.push_back(to);
    for (auto bond = atom->inList.crbegin(); bond != atom->inList.crend(); ++bond)
        if (KytAtom* from = (*bond)->getFromAtom())
            stack.push_back(from);
}

} // namespace

const std::array<QString, 3>& newAtomColor()
{
    static const std::array<QString, 3> color{QStringLiteral("255"), QStringLiteral("0"), QStringLiteral("0")};
    return color;
}

KytAtom::KytAtom(QCanvas* canvas, float z, bool locked)
    : KytAtom(canvas, QStringLiteral("C"), z, locked)
{
}

KytAtom::KytAtom(QCanvas* canvas, const QString& symbol, float z, bool locked)
    : QCanvasEllipse(atomSize, atomSize, canvas)
    , locked(locked)
    , _atomColor{newAtomColor()[0], newAtomColor()[1], newAtomColor()[2]}
    , name(symbol)
    , symbol(symbol)
    , molecule(makeFirstMolecule())
    , atomZ(narrowed(z))
    , canvasSymbol(new QCanvasText(symbol, canvas))
{
    ++molecule->pointingAtoms;
    setBrush(atomBrush);
    setZ(atomLevel);
    canvasSymbol->setZ(symbolLevel);
    canvasSymbol->show();
}

KytAtom::~KytAtom()
{
    deleteAllBonds();
    leaveMolecule();
    deleted = 1;
    canvasSymbol->hide();
    delete canvasSymbol;
}

// The atom is not a member of its first molecule, so its leaving alone does not make that molecule empty.
KytMolecule* KytAtom::makeFirstMolecule()
{
    return new KytMolecule;
}

void KytAtom::joinMolecule(KytMolecule* m)
{
    molecule = m;
    ++m->pointingAtoms;
    m->addAtom(this);
}

void KytAtom::leaveMolecule()
{
    KytMolecule* left = molecule;
    molecule = nullptr;
    --left->pointingAtoms;
    left->removeAtom(this);
    if (left->emptied && left->pointingAtoms == 0)
        delete left;
}

void KytAtom::setMolecule(KytMolecule* m)
{
    if (!m)
        return;
    std::vector<KytAtom*> stack{this};
    while (!stack.empty()) {
        KytAtom* atom = stack.back();
        stack.pop_back();
        if (atom->molecule == m)
            continue;
        atom->leaveMolecule();
        atom->joinMolecule(m);
        pushNeighbours(stack, atom);
    }
}

void KytAtom::spreadMolecule()
{
    const GraphWalk walk(GraphWalk::Marks::Atoms);
    std::vector<KytAtom*> stack{this};
    while (!stack.empty()) {
        KytAtom* atom = stack.back();
        stack.pop_back();
        if (walk.hasVisited(atom->mark))
            continue;
        walk.visit(atom->mark);
        if (atom->molecule != molecule) {
            atom->leaveMolecule();
            atom->joinMolecule(molecule);
        }
        pushNeighbours(stack, atom);
    }
}

void KytAtom::changeMolecule(KytMolecule* m)
{
    if (molecule == m)
        return;
    leaveMolecule();
    joinMolecule(m);
}

void KytAtom::addInBond(KytBond* bond)
{
    inList.append(bond);
}

void KytAtom::addOutBond(KytBond* bond)
{
    outList.append(bond);
}

int KytAtom::getBondCount() const
{
    return static_cast<int>(inList.size() + outList.size());
}

void KytAtom::setAtomZ(float z)
{
    if (!std::isnan(z))
        BondUpdate().setDepth(this, narrowed(z));
}

void KytAtom::setName(QString newName)
{
    name = std::move(newName);
}

void KytAtom::setSymbol(QString newSymbol)
{
    symbol = std::move(newSymbol);
    canvasSymbol->setText(symbol);
}

void KytAtom::startHover()
{
    setBrush(hoverBrush);
    setSize(hoveredAtomSize, hoveredAtomSize);
}

void KytAtom::stopHover()
{
    setBrush(atomBrush);
    setSize(atomSize, atomSize);
}

KytAtom* KytAtom::getFirstConnectedAtom() const
{
    if (!inList.isEmpty())
        return inList.first()->getFromAtom();
    if (!outList.isEmpty())
        return outList.first()->getToAtom();
    return nullptr;
}

KytBond* KytAtom::isConnected(KytAtom* atom) const
{
    for (KytBond* bond : inList)
        if (bond->getFromAtom() == atom)
            return bond;
    for (KytBond* bond : outList)
        if (bond->getToAtom() == atom)
            return bond;
    return nullptr;
}

bool KytAtom::isInListConnected(KytAtom* atom)
{
    return isReachable(atom, &KytAtom::inList, &KytBond::fromAtom);
}

bool KytAtom::isOutListConnected(KytAtom* atom)
{
    return isReachable(atom, &KytAtom::outList, &KytBond::toAtom);
}

bool KytAtom::isAnyhowConnected(KytAtom* atom)
{
    return atom && (isInListConnected(atom) || isOutListConnected(atom));
}

/// Whether `atom` can be reached from this atom over one or more of the given bonds, each followed to the given end.
/// `flag` marks the visited atoms and is reset before returning.
bool KytAtom::isReachable(KytAtom* atom, QList<KytBond*> KytAtom::*bonds, KytAtom* KytBond::*end)
{
    if (!atom || flag == 1)
        return false;
    bool found = false;
    std::vector<KytAtom*> visited{this};
    flag = 1;
    for (std::size_t next = 0; next < visited.size() && !found; ++next) {
        for (const KytBond* bond : visited[next]->*bonds) {
            KytAtom* neighbour = bond->*end;
            found = neighbour == atom;
            if (found)
                break;
            if (neighbour && neighbour->flag == 0) {
                neighbour->flag = 1;
                visited.push_back(neighbour);
            }
        }
    }
    for (KytAtom* reset : visited)
        reset->flag = 0;
    return found;
}
