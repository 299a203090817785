#include "bonds/BondTable.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <map>
#include <random>

namespace {

/// The square table as it would be filled cell by cell, and read row by row.
std::vector<BondCell> filledCellByCell(const QList<KytAtom*>& atoms)
{
    const auto indexOf = [&](KytAtom* atom) { return std::max(0, int(atoms.indexOf(atom))); };
    std::map<std::pair<int, int>, KytBond*> cells;
    for (KytAtom* atom : atoms) {
        for (KytBond* bond : std::as_const(atom->inList))
            cells[{indexOf(bond->fromAtom), indexOf(bond->toAtom)}] = bond;
        for (KytBond* bond : std::as_const(atom->outList))
            cells[{indexOf(bond->fromAtom), indexOf(bond->toAtom)}] = bond;
    }
    std::vector<BondCell> table;
    table.reserve(cells.size());
    for (const auto& [place, bond] : cells)
        table.push_back({place.first, place.second, bond});
    return table;
}

bool areSame(const std::vector<BondCell>& a, const std::vector<BondCell>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const BondCell& one, const BondCell& other) {
        return one.row == other.row && one.column == other.column && one.bond == other.bond;
    });
}

} // namespace

class test_BondTable : public QObject {
    Q_OBJECT

private slots:
    void noAtomsGiveNoCells()
    {
        QVERIFY(bondTable({}).empty());
        QCOMPARE(indexOfAtom({}, nullptr), 0);
    }

    void atomsWithoutBondsGiveNoCells()
    {
        Drawing d;
        QVERIFY(bondTable({d.atom(0, 0), d.atom(30, 0)}).empty());
    }

    void aBondStandsInTheRowOfItsStartAndTheColumnOfItsEnd()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytBond* bond = d.looseBond(b, a);
        QVERIFY(areSame(bondTable({a, b}), {{1, 0, bond}}));
        QVERIFY(areSame(bondTable({b, a}), {{0, 1, bond}}));
    }

    void cellsComeRowByRow()
    {
        Drawing d;
        const auto [a, b, c] = d.row<3>();
        KytBond* cb = d.looseBond(c, b);
        KytBond* ca = d.looseBond(c, a);
        KytBond* ac = d.looseBond(a, c);
        KytBond* ab = d.looseBond(a, b);
        KytBond* ba = d.looseBond(b, a);
        QVERIFY(areSame(bondTable({a, b, c}), {{0, 1, ab}, {0, 2, ac}, {1, 0, ba}, {2, 0, ca}, {2, 1, cb}}));
    }

    void ofParallelBondsTheLastMetFillsTheCell()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        d.looseBond(a, b);
        KytBond* second = d.looseBond(a, b);
        QVERIFY(areSame(bondTable({a, b}), {{0, 1, second}}));
        QVERIFY(areSame(bondTable({b, a}), {{1, 0, second}}));
    }

    void aBondToItselfStandsOnTheDiagonal()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytBond* loop = d.looseBond(b, b);
        QVERIFY(areSame(bondTable({a, b}), {{1, 1, loop}}));
    }

    void anEndThatIsNotAmongTheAtomsCountsAsTheFirst()
    {
        Drawing d;
        const auto [a, b, stranger] = d.row<3>();
        KytBond* out = d.looseBond(b, stranger);
        KytBond* in = d.looseBond(stranger, b);
        QVERIFY(areSame(bondTable({a, b}), {{0, 1, in}, {1, 0, out}}));
        QCOMPARE(indexOfAtom({a, b}, stranger), 0);
    }

    void indicesAreFoundWithAndWithoutRanks()
    {
        Drawing d;
        const QList<KytAtom*> atoms{d.atom(0, 0), d.atom(30, 0), d.atom(60, 0)};
        for (int i = 0; i < 3; ++i)
            QCOMPARE(indexOfAtom(atoms, atoms[i]), i);
        bondTable(atoms);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(indexOfAtom(atoms, atoms[i]), i);
        const QList<KytAtom*> reversed{atoms[2], atoms[1], atoms[0]};
        for (int i = 0; i < 3; ++i)
            QCOMPARE(indexOfAtom(reversed, reversed[i]), i);
        atoms[0]->index = -5;
        atoms[1]->index = 1000;
        QCOMPARE(indexOfAtom(atoms, atoms[0]), 0);
        QCOMPARE(indexOfAtom(atoms, atoms[1]), 1);
        QCOMPARE(indexOfAtom(atoms, nullptr), 0);
    }

    void tablesOfRandomGraphsAgreeWithTheSquareTable()
    {
        for (unsigned seed = 0; seed < 200; ++seed) {
            std::mt19937 random(seed);
            Drawing d;
            QList<KytAtom*> all;
            for (int i = 0; i < 8; ++i)
                all.append(d.atom(i * 30, 0));
            for (int i = int(random() % 30); i > 0; --i)
                d.looseBond(all[random() % 8], all[random() % 8]);
            std::shuffle(all.begin(), all.end(), random);
            const QList<KytAtom*> some = all.mid(0, 1 + random() % 8);
            QVERIFY2(areSame(bondTable(some), filledCellByCell(some)), qPrintable(QString::number(seed)));
        }
    }

    void aLargeDrawingNeedsNoSquare()
    {
        Drawing d;
        QList<KytAtom*> atoms{d.atom(0, 0)};
        for (int i = 1; i < 60000; ++i) {
            atoms.append(d.atom(i % 2000, i / 2000));
            d.looseBond(atoms[i - 1], atoms[i]);
        }
        const std::vector<BondCell> table = bondTable(atoms);
        QCOMPARE(int(table.size()), 59999);
        for (int i = 0; i < 59999; ++i) {
            QCOMPARE(table[std::size_t(i)].row, i);
            QCOMPARE(table[std::size_t(i)].column, i + 1);
        }
    }
};

QTEST_MAIN(test_BondTable)
#include "test_BondTable.moc"
