#include "history/DrawingState.h"

#include "bonds/KytBond.h"
#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/GraphWalk.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <algorithm>
#include <bit>
#include <map>
#include <set>
#include <unordered_map>

namespace {

constexpr int mostLines = 3;

BondRecord recordOf(const KytBond* bond)
{
    BondRecord record;
    record.to = bond->toAtom->rank();
    record.count = static_cast<qint8>(bond->bondCount);
    record.kinds = {static_cast<qint8>(bond->bond1Type), static_cast<qint8>(bond->bond2Type),
                    static_cast<qint8>(bond->bond3Type)};
    if (bond->stereoBond) {
        record.isWedge = true;
        record.items[0] = bond->stereoBond->rank();
        record.angle = bond->stereoBond->pangle;
        return record;
    }
    const KytBondLine* const lines[mostLines] = {bond->bond1, bond->bond2, bond->bond3};
    for (int i = 0; i < mostLines; ++i) {
        if (!lines[i])
            continue;
        record.items[i] = lines[i]->rank();
        record.dashed[i] = lines[i]->isDashed;
    }
    return record;
}

IncomingBond incomingRecordOf(const KytBond* bond)
{
    return {bond->fromAtom->rank(), bond->mark.value};
}

AtomPosition positionOf(const KytAtom* atom)
{
    const QCanvasText* label = atom->canvasSymbol;
    return {atom->x(), atom->y(), label->x(), label->y(), atom->atomZ};
}

AtomRecord recordOf(const KytAtom* atom, ItemRank molecule)
{
    AtomRecord record;
    record.rank = atom->rank();
    record.molecule = molecule;
    record.position = positionOf(atom);
    record.label = atom->canvasSymbol->rank();
    record.locked = atom->locked;
    record.symbol = atom->symbol;
    record.name = atom->name;
    record.color = {atom->_atomColor[0], atom->_atomColor[1], atom->_atomColor[2]};
    for (const KytBond* bond : atom->outList)
        record.outgoing.push_back(recordOf(bond));
    for (const KytBond* bond : atom->inList)
        record.incoming.push_back(incomingRecordOf(bond));
    return record;
}

/// Whether `record` is right in everything but position and molecule.
bool hasStructure(const KytAtom* atom, const AtomRecord& record)
{
    const QList<KytBond*>& out = atom->outList;
    const QList<KytBond*>& in = atom->inList;
    return record.label == atom->canvasSymbol->rank() && record.locked == atom->locked && record.symbol == atom->symbol
        && record.name == atom->name && std::equal(record.color.begin(), record.color.end(), atom->_atomColor)
        && std::equal(out.begin(), out.end(), record.outgoing.begin(), record.outgoing.end(),
                      [](const KytBond* bond, const BondRecord& known) { return recordOf(bond) == known; })
        && std::equal(in.begin(), in.end(), record.incoming.begin(), record.incoming.end(),
                      [](const KytBond* bond, const IncomingBond& known) { return incomingRecordOf(bond) == known; });
}

/// Finds out for atoms, asked about in the order of their ranks, which is the first one of their molecule.
class FirstAtoms {
public:
    ItemRank of(const KytAtom* atom)
    {
        if (atom->molecule != last) {
            last = atom->molecule;
            first = firstOf.try_emplace(last, atom->rank()).first->second;
        }
        return first;
    }

private:
    std::unordered_map<const KytMolecule*, ItemRank> firstOf;
    const KytMolecule* last = nullptr;
    ItemRank first = 0;
};

bool byRank(const AtomRecord& a, const AtomRecord& b)
{
    return a.rank < b.rank;
}

} // namespace

bool AtomPosition::operator==(const AtomPosition& other) const
{
    const auto same = [](double a, double b) { return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b); };
    return same(x, other.x) && same(y, other.y) && same(labelX, other.labelX) && same(labelY, other.labelY)
        && std::bit_cast<quint32>(depth) == std::bit_cast<quint32>(other.depth);
}

namespace {

template <typename Value> qsizetype sizeOf(const std::vector<Value>& values)
{
    return static_cast<qsizetype>(values.capacity()) * static_cast<qsizetype>(sizeof(Value));
}

qsizetype sizeOf(const AtomRecord& record)
{
    return sizeOf(record.outgoing) + sizeOf(record.incoming);
}

qsizetype sizeOfAll(const std::vector<AtomRecord>& records)
{
    qsizetype size = sizeOf(records);
    for (const AtomRecord& record : records)
        size += sizeOf(record);
    return size;
}

} // namespace

qsizetype DrawingChange::size() const
{
    return sizeOf(moved) + sizeOf(regrouped) + sizeOfAll(replaced) + sizeOf(missing);
}

qsizetype DrawingState::size() const
{
    return sizeOfAll(atoms);
}

DrawingChange DrawingState::update(const QCanvas& canvas)
{
    const QList<KytAtom*> drawn = drawnAtoms(canvas);
    const GraphWalk walk(GraphWalk::Marks::Bonds); // notes each bond's index among those of its start atom
    for (const KytAtom* atom : drawn)
        for (qsizetype i = 0; i < atom->outList.size(); ++i)
            walk.visit(atom->outList[i]->mark, static_cast<int>(i));

    DrawingChange before;
    FirstAtoms firstAtoms;
    std::vector<AtomRecord> added;
    std::vector<ItemRank> gone;
    auto known = atoms.begin();
    const auto takeGone = [&](auto end) {
        for (; known != end; ++known) {
            gone.push_back(known->rank);
            before.replaced.push_back(std::move(*known));
        }
    };
    for (const KytAtom* atom : drawn) {
        const ItemRank rank = atom->rank();
        takeGone(std::find_if(known, atoms.end(), [rank](const AtomRecord& record) { return record.rank >= rank; }));
        const ItemRank molecule = firstAtoms.of(atom);
        if (known == atoms.end() || known->rank != rank) {
            before.missing.push_back(rank);
            added.push_back(recordOf(atom, molecule));
            continue;
        }
        AtomRecord& record = *known++;
        if (!hasStructure(atom, record)) {
            before.replaced.push_back(std::exchange(record, recordOf(atom, molecule)));
            continue;
        }
        if (const AtomPosition position = positionOf(atom); !(position == record.position))
            before.moved.emplace_back(rank, std::exchange(record.position, position));
        if (molecule != record.molecule)
            before.regrouped.emplace_back(rank, std::exchange(record.molecule, molecule));
    }
    takeGone(atoms.end());
    replaceRecords(std::move(gone), std::move(added));
    return before;
}

/// Drops the records of the atoms `gone`, which may have been moved from, and adds others.
void DrawingState::replaceRecords(std::vector<ItemRank> gone, std::vector<AtomRecord> added)
{
    if (!gone.empty()) {
        std::sort(gone.begin(), gone.end());
        std::erase_if(
            atoms, [&](const AtomRecord& record) { return std::binary_search(gone.begin(), gone.end(), record.rank); });
    }
    std::sort(added.begin(), added.end(), byRank);
    const auto middle =
        atoms.insert(atoms.end(), std::make_move_iterator(added.begin()), std::make_move_iterator(added.end()));
    std::inplace_merge(atoms.begin(), middle, atoms.end(), byRank);
}

AtomRecord* DrawingState::find(ItemRank rank)
{
    const auto found = std::lower_bound(atoms.begin(), atoms.end(), rank,
                                        [](const AtomRecord& record, ItemRank wanted) { return record.rank < wanted; });
    return found != atoms.end() && found->rank == rank ? &*found : nullptr;
}

namespace {

/// Carries out a change on a canvas.
class Restoration {
public:
    explicit Restoration(KytStudioDoc& doc)
        : doc(doc)
    {
    }

    KytAtom* atomOf(ItemRank rank) const { return static_cast<KytAtom*>(doc.canvas->itemOfRank(rank)); }

    /// Deletes all bonds that start at one of `starts`. The molecules stay as they are.
    void deleteOutgoingBonds(const std::vector<KytAtom*>& starts)
    {
        std::vector<KytBond*> bonds;
        {
            const GraphWalk gone(GraphWalk::Marks::Bonds);
            std::set<KytAtom*> ends;
            for (KytAtom* start : starts)
                for (KytBond* bond : std::exchange(start->outList, {})) {
                    gone.visit(bond->mark);
                    bonds.push_back(bond);
                    ends.insert(bond->toAtom);
                }
            for (KytAtom* end : ends)
                end->inList.removeIf([&](const KytBond* bond) { return gone.hasVisited(bond->mark); });
        }
        for (KytBond* bond : bonds) {
            bond->fromAtom = nullptr;
            bond->toAtom = nullptr;
            delete bond;
        }
    }

    void makeAtom(const AtomRecord& record)
    {
        auto* atom = new KytAtom(doc.canvas, record.symbol, record.position.depth, record.locked);
        atom->show();
        ranks.emplace_back(atom, record.rank);
        ranks.emplace_back(atom->canvasSymbol, record.label);
    }

    void describe(KytAtom* atom, const AtomRecord& record)
    {
        if (atom->symbol != record.symbol)
            atom->setSymbol(record.symbol);
        atom->name = record.name;
        std::copy(record.color.begin(), record.color.end(), atom->_atomColor);
        atom->locked = record.locked;
    }

    void place(KytAtom* atom, const AtomPosition& position)
    {
        atom->putAt(position.x, position.y);
        atom->canvasSymbol->putAt(position.labelX, position.labelY);
        atom->atomZ = position.depth;
        placed.push_back(atom);
    }

    void makeBonds(KytAtom* from, const AtomRecord& record)
    {
        for (const BondRecord& known : record.outgoing) {
            auto* bond = new KytBond(from, atomOf(known.to), &doc);
            for (int i = 0; i < known.count; ++i)
                bond->addBond(kindOf(known, i), known.angle);
            bond->bond1Type = static_cast<KytBondType>(known.kinds[0]);
            bond->bond2Type = static_cast<KytBondType>(known.kinds[1]);
            bond->bond3Type = static_cast<KytBondType>(known.kinds[2]);
            QCanvasItem* const items[mostLines] = {
                known.isWedge ? static_cast<QCanvasItem*>(bond->stereoBond) : bond->bond1, bond->bond2, bond->bond3};
            for (int i = 0; i < mostLines; ++i)
                if (items[i])
                    ranks.emplace_back(items[i], known.items[i]);
        }
    }

    void orderIncomingBonds(const AtomRecord& record)
    {
        KytAtom* atom = atomOf(record.rank);
        atom->inList.clear();
        for (const IncomingBond& bond : record.incoming)
            atom->inList.append(atomOf(bond.from)->outList[bond.index]);
    }

    /// Gives an atom of `regrouped` to the molecule whose first atom has the rank `first`.
    void regroup(KytAtom* atom, ItemRank first, const std::set<ItemRank>& regrouped)
    {
        KytMolecule*& molecule = molecules[first];
        if (!molecule)
            molecule = regrouped.contains(first) ? new KytMolecule : atomOf(first)->molecule;
        atom->changeMolecule(molecule);
    }

    void restoreRanks() { doc.canvas->restoreRanks(std::exchange(ranks, {})); }

    void layOutBonds()
    {
        const GraphWalk walk(GraphWalk::Marks::Bonds);
        for (const KytAtom* atom : placed)
            for (const QList<KytBond*>* bonds : {&atom->inList, &atom->outList})
                for (KytBond* bond : *bonds) {
                    if (!walk.hasVisited(bond->mark))
                        bond->layOut();
                    walk.visit(bond->mark);
                }
    }

private:
    /// What to add for the line, so that what is drawn and counted is as it was.
    static KytBondType kindOf(const BondRecord& record, int line)
    {
        if (record.isWedge)
            return static_cast<KytBondType>(record.kinds[0]);
        if (record.items[line] == 0)
            return KYTBT_Triple; // counted, not drawn
        return record.dashed[line] ? KYTBT_DashedLine : KYTBT_SingleBond;
    }

    KytStudioDoc& doc;
    std::vector<std::pair<QCanvasItem*, ItemRank>> ranks;
    std::vector<KytAtom*> placed;
    std::map<ItemRank, KytMolecule*> molecules;
};

/// The outgoing bonds of atoms in which they differ: these are made anew.
struct BondsToRebuild {
    std::vector<KytAtom*> starts;
    std::vector<const AtomRecord*> records; // with the new bonds
    std::set<ItemRank> reached;             // atoms to which these bonds lead or led

    /// Adds the bonds of an atom that is as in `now`, to become as in `then`; null where it is missing.
    void add(const AtomRecord* now, const AtomRecord* then, const Restoration& restoration)
    {
        if (now && then && now->outgoing == then->outgoing)
            return;
        if (now)
            starts.push_back(restoration.atomOf(now->rank));
        if (then)
            records.push_back(then);
        for (const AtomRecord* record : {now, then})
            if (record)
                for (const BondRecord& bond : record->outgoing)
                    reached.insert(bond.to);
    }
};

} // namespace

DrawingChange DrawingState::apply(const DrawingChange& change, KytStudioDoc& doc)
{
    DrawingChange back;
    Restoration restoration(doc);

    BondsToRebuild bonds;
    for (const ItemRank rank : change.missing)
        bonds.add(find(rank), nullptr, restoration);
    for (const AtomRecord& record : change.replaced)
        bonds.add(find(record.rank), &record, restoration);
    restoration.deleteOutgoingBonds(bonds.starts);

    std::set<ItemRank> regrouped;
    for (const ItemRank rank : change.missing) {
        delete restoration.atomOf(rank);
        back.replaced.push_back(std::move(*find(rank)));
    }
    std::vector<AtomRecord> added;
    for (const AtomRecord& record : change.replaced) {
        bonds.reached.insert(record.rank);
        AtomRecord* now = find(record.rank);
        if (!now || now->molecule != record.molecule)
            regrouped.insert(record.rank);
        if (now) {
            back.replaced.push_back(std::exchange(*now, record));
            continue;
        }
        back.missing.push_back(record.rank);
        added.push_back(record);
        restoration.makeAtom(record);
    }
    replaceRecords(change.missing, std::move(added));
    restoration.restoreRanks();

    for (const AtomRecord& record : change.replaced) {
        restoration.describe(restoration.atomOf(record.rank), record);
        restoration.place(restoration.atomOf(record.rank), record.position);
    }
    for (const auto& [rank, position] : change.moved) {
        back.moved.emplace_back(rank, std::exchange(find(rank)->position, position));
        restoration.place(restoration.atomOf(rank), position);
    }
    for (const AtomRecord* record : bonds.records)
        restoration.makeBonds(restoration.atomOf(record->rank), *record);
    restoration.restoreRanks();
    for (const ItemRank rank : bonds.reached)
        if (const AtomRecord* record = find(rank))
            restoration.orderIncomingBonds(*record);

    for (const auto& [rank, molecule] : change.regrouped) {
        back.regrouped.emplace_back(rank, std::exchange(find(rank)->molecule, molecule));
        regrouped.insert(rank);
    }
    for (const ItemRank rank : regrouped)
        restoration.regroup(restoration.atomOf(rank), find(rank)->molecule, regrouped);
    restoration.layOutBonds();
    return back;
}
