#include "model/KytAtomList.h"

#include <QTest>

#include <array>
#include <random>
#include <vector>

namespace {

// The list never looks at what its pointers point to, so any addresses will do.
std::array<int, 64> places;
KytAtom* address(std::size_t i)
{
    return reinterpret_cast<KytAtom*>(&places.at(i));
}

std::vector<KytAtom*> contents(const KytAtomList& list)
{
    return std::vector<KytAtom*>(list.begin(), list.end());
}

} // namespace

class test_KytAtomList : public QObject {
    Q_OBJECT

private slots:
    void anEmptyListHasNothing()
    {
        KytAtomList list;
        QCOMPARE(list.size(), qsizetype(0));
        QCOMPARE(list.count(), qsizetype(0));
        QVERIFY(list.isEmpty());
        QVERIFY(!list.contains(address(0)));
        QVERIFY(!list.first());
        QVERIFY(!list.last());
        QVERIFY(!list.at(0));
        QVERIFY(!list.removeOne(address(0)));
        QVERIFY(list.begin() == list.end());
    }

    void theLatestAddedComesFirst()
    {
        KytAtomList list;
        for (std::size_t i = 0; i < 3; ++i)
            list.prepend(address(i));
        QCOMPARE(contents(list), (std::vector{address(2), address(1), address(0)}));
        QCOMPARE(list.first(), address(2));
        QCOMPARE(list.last(), address(0));
        QCOMPARE(list.at(1), address(1));
        QCOMPARE(list[1], address(1));
        QCOMPARE(list.size(), qsizetype(3));
        QCOMPARE(list.count(), qsizetype(3));
        QVERIFY(!list.isEmpty());
    }

    void anIndexOutOfRangeGivesNull()
    {
        KytAtomList list;
        list.prepend(address(0));
        QVERIFY(!list.at(-1));
        QVERIFY(!list.at(1));
        QVERIFY(!list[-1]);
        QVERIFY(!list[1000000]);
        QCOMPARE(list.at(0), address(0));
    }

    void removingKeepsTheOrderOfTheRest()
    {
        KytAtomList list;
        for (std::size_t i = 0; i < 4; ++i)
            list.prepend(address(i));
        QVERIFY(list.removeOne(address(2)));
        QCOMPARE(contents(list), (std::vector{address(3), address(1), address(0)}));
        QVERIFY(!list.removeOne(address(2)));
        QVERIFY(!list.contains(address(2)));
        QVERIFY(list.removeOne(address(3)));
        QVERIFY(list.removeOne(address(0)));
        QCOMPARE(contents(list), (std::vector{address(1)}));
    }

    void anAtomAddedTwiceIsRemovedFromTheFrontFirst()
    {
        KytAtomList list;
        list.prepend(address(0));
        list.prepend(address(1));
        list.prepend(address(0));
        QVERIFY(list.removeOne(address(0)));
        QCOMPARE(contents(list), (std::vector{address(1), address(0)}));
        QVERIFY(list.contains(address(0)));
        QVERIFY(list.removeOne(address(0)));
        QVERIFY(!list.contains(address(0)));
        QVERIFY(!list.removeOne(address(0)));
    }

    void nullIsAnEntryLikeAnyOther()
    {
        KytAtomList list;
        list.prepend(nullptr);
        QVERIFY(list.contains(nullptr));
        QCOMPARE(list.size(), qsizetype(1));
        QVERIFY(list.removeOne(nullptr));
        QVERIFY(list.isEmpty());
    }

    void randomEditsAgreeWithAPlainVector()
    {
        std::mt19937 random(1);
        for (int round = 0; round < 50; ++round) {
            KytAtomList list;
            std::vector<KytAtom*> plain;
            for (int step = 0; step < 200; ++step) {
                KytAtom* atom = address(random() % 12);
                if (random() % 2) {
                    list.prepend(atom);
                    plain.insert(plain.begin(), atom);
                } else {
                    const auto found = std::find(plain.begin(), plain.end(), atom);
                    QCOMPARE(list.removeOne(atom), found != plain.end());
                    if (found != plain.end())
                        plain.erase(found);
                }
                QCOMPARE(contents(list), plain);
                QCOMPARE(list.contains(atom), std::find(plain.begin(), plain.end(), atom) != plain.end());
            }
        }
    }

    void manyAtomsComeAndGoInAnyOrder()
    {
        std::vector<int> many(200000);
        KytAtomList list;
        for (int& place : many)
            list.prepend(reinterpret_cast<KytAtom*>(&place));
        QCOMPARE(list.size(), qsizetype(many.size()));
        for (std::size_t i = 0; i < many.size(); i += 2)
            QVERIFY(list.removeOne(reinterpret_cast<KytAtom*>(&many[i])));
        for (std::size_t i = 1; i < many.size(); i += 2)
            QVERIFY(list.removeOne(reinterpret_cast<KytAtom*>(&many[i])));
        QVERIFY(list.isEmpty());
    }
};

QTEST_GUILESS_MAIN(test_KytAtomList)
#include "test_KytAtomList.moc"
