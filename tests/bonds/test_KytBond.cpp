#include "bonds/KytBond.h"
#include "tests/support/Drawing.h"
#include "tests/support/Near.h"

#include <QTest>

#include <algorithm>
#include <array>
#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <limits>
#include <vector>

namespace {

/// Whether a line is drawn and runs from `from` to `to`.
bool runs(const KytBondLine* line, QPoint from, QPoint to)
{
    return line && line->getStartPoint() == from && line->getEndPoint() == to;
}

/// Whether two coordinates are the same but for what a ratio in single precision loses.
bool isNear(double actual, double expected)
{
    return std::abs(actual - expected) < 1e-4;
}

/// The places of a horizontal bond's lines from (100, 100) to (200, 100): centre, second, third.
constexpr std::array<int, 3> heights{100, 94, 106};

/// A bond to the right, from (100, 100) to (200, 100).
struct Level {
    explicit Level(std::initializer_list<int> kinds, bool locked = false)
        : from(d.atom(100, 100))
        , to(d.atom(200, 100, 0, locked))
        , bond(d.bond(from, to, kinds))
    {
    }
    std::array<KytBondLine*, 3> lines() const { return {bond->bond1, bond->bond2, bond->bond3}; }

    Drawing d;
    KytAtom* from;
    KytAtom* to;
    KytBond* bond;
};

} // namespace

class test_KytBond : public QObject {
    Q_OBJECT

private slots:
    // Making

    void aNewBondIsKnownAtBothEndsAndDrawsNothing()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(3, 4);
        KytMolecule* ofA = a->getMolecule();
        KytMolecule* ofB = b->getMolecule();
        auto* bond = new KytBond(a, b, d.doc);
        QCOMPARE(bond->getFromAtom(), a);
        QCOMPARE(bond->getToAtom(), b);
        QCOMPARE(bond->fromAtom, a);
        QCOMPARE(bond->toAtom, b);
        QCOMPARE(bond->doc, d.doc);
        QCOMPARE(a->outList, (QList<KytBond*>{bond}));
        QVERIFY(a->inList.isEmpty());
        QCOMPARE(b->inList, (QList<KytBond*>{bond}));
        QVERIFY(b->outList.isEmpty());
        QCOMPARE(bond->bondlength, 5.0F);
        QCOMPARE(bond->bondCount, 0);
        QVERIFY(!bond->bond1 && !bond->bond2 && !bond->bond3 && !bond->stereoBond);
        QCOMPARE(int(bond->type), 0);
        QCOMPARE(int(bond->bond1Type), 0);
        QCOMPARE(int(bond->bond2Type), 0);
        QCOMPARE(int(bond->bond3Type), 0);
        QCOMPARE(d.lines().size() + d.wedges().size(), 0);
        QCOMPARE(a->getMolecule(), ofA);
        QCOMPARE(b->getMolecule(), ofB);
    }

    void aBondsMoleculeIsItsStartAtoms()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(3, 4);
        KytBond* bond = d.looseBond(a, b);
        QCOMPARE(bond->getMolecule(), a->getMolecule());
        a->setMolecule(b->getMolecule());
        QCOMPARE(bond->getMolecule(), b->getMolecule());
    }

    void kindsAndTheirNumbers()
    {
        QCOMPARE(int(KYTBT_DashedLine), 0);
        QCOMPARE(int(KYTBT_SingleBond), 1);
        QCOMPARE(int(KYTBT_StereoUp), 2);
        QCOMPARE(int(KYTBT_StereoDown), 3);
        QCOMPARE(int(KYTBT_SingleDouble), 4);
        QCOMPARE(int(KYTBT_Double), 5);
        QCOMPARE(int(KYTBT_DoubleTriple), 6);
        QCOMPARE(int(KYTBT_Triple), 7);
        for (int kind = -3; kind < 12; ++kind) {
            QCOMPARE(isLineKind(static_cast<KytBondType>(kind)), kind == 0 || kind == 1);
            QCOMPARE(isWedgeKind(static_cast<KytBondType>(kind)), kind == 2 || kind == 3);
        }
    }

    // Adding lines

    void threeLinesStandInTheMiddleAndOnBothSidesAndAFourthIsIgnored()
    {
        Level l({});
        for (int count = 1; count <= 3; ++count) {
            l.bond->addBond(KYTBT_SingleBond, 60);
            QCOMPARE(l.bond->bondCount, count);
            QCOMPARE(l.d.lines().size(), count);
            for (int i = 0; i < 3; ++i) {
                const int y = heights[std::size_t(i)];
                QCOMPARE(runs(l.lines()[std::size_t(i)], {100, y}, {200, y}), i < count);
            }
        }
        for (const int kind : {0, 1, 2, 3, 5, 99}) {
            l.bond->addBond(static_cast<KytBondType>(kind), 60);
            QCOMPARE(l.bond->bondCount, 3);
            QCOMPARE(l.d.lines().size(), 3);
            QCOMPARE(l.d.wedges().size(), 0);
            QCOMPARE(int(l.bond->bond3Type), 1);
        }
        QVERIFY(!l.bond->stereoBond);
    }

    void everyLineKeepsItsOwnKind_data()
    {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("third");
        for (int kinds = 0; kinds < 8; ++kinds)
            QTest::addRow("%d%d%d", kinds & 1, kinds >> 1 & 1, kinds >> 2)
                << (kinds & 1) << (kinds >> 1 & 1) << (kinds >> 2);
    }

    void everyLineKeepsItsOwnKind()
    {
        QFETCH(int, first);
        QFETCH(int, second);
        QFETCH(int, third);
        Level l({first, second, third});
        QCOMPARE(int(l.bond->bond1Type), first);
        QCOMPARE(int(l.bond->bond2Type), second);
        QCOMPARE(int(l.bond->bond3Type), third);
        QCOMPARE(l.bond->bond1->isDashed, first == 0);
        QCOMPARE(l.bond->bond2->isDashed, second == 0);
        QCOMPARE(l.bond->bond3->isDashed, third == 0);
        QCOMPARE(int(l.bond->type), 0);
        for (KytBondLine* line : l.lines())
            QCOMPARE(line->getBond(), l.bond);
    }

    void addingALineSetsNoDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 5);
        KytAtom* b = d.atom(30, 0, 1);
        d.looseBond(a, b, {1, 1, 1});
        QCOMPARE(b->getAtomZ(), 1.0F);
        KytAtom* c = d.atom(60, 0, 1);
        d.looseBond(a, c, {KYTBT_StereoUp});
        QCOMPARE(c->getAtomZ(), 1.0F);
    }

    void linesOfAllDirections_data()
    {
        QTest::addColumn<QPointF>("from");
        QTest::addColumn<QPointF>("to");
        QTest::addColumn<QLine>("centre");
        QTest::addColumn<QLine>("second");
        QTest::addColumn<QLine>("third");
        QTest::newRow("down") << QPointF(100, 100) << QPointF(100, 200) << QLine(100, 100, 100, 200)
                              << QLine(94, 100, 94, 200) << QLine(106, 100, 106, 200);
        QTest::newRow("to the left") << QPointF(200, 100) << QPointF(100, 100) << QLine(200, 100, 100, 100)
                                     << QLine(200, 94, 100, 94) << QLine(200, 106, 100, 106);
        QTest::newRow("45 degrees down") << QPointF(0, 0) << QPointF(100, 100) << QLine(0, 0, 100, 100)
                                         << QLine(-3, 3, 96, 103) << QLine(3, -3, 103, 96);
        QTest::newRow("45 degrees up") << QPointF(0, 0) << QPointF(100, -100) << QLine(0, 0, 100, -100)
                                       << QLine(-3, -3, 96, -103) << QLine(3, 3, 103, -96);
        QTest::newRow("of length zero") << QPointF(50, 60) << QPointF(50, 60) << QLine(50, 60, 50, 60)
                                        << QLine(44, 60, 44, 60) << QLine(56, 60, 56, 60);
        QTest::newRow("fractions are cut towards zero")
            << QPointF(-0.9, 10.9) << QPointF(20.9, 10.9) << QLine(0, 10, 20, 10) << QLine(0, 4, 20, 4)
            << QLine(0, 16, 20, 16);
        QTest::newRow("a hair off the horizontal")
            << QPointF(0, 100) << QPointF(100, 100.001) << QLine(0, 100, 100, 100) << QLine(0, 105, 99, 105)
            << QLine(0, 94, 100, 94);
        QTest::newRow("beyond the range of pixels")
            << QPointF(-1e12, 50) << QPointF(1e12, 50) << QLine(INT_MIN, 50, INT_MAX, 50)
            << QLine(INT_MIN, 44, INT_MAX, 44) << QLine(INT_MIN, 56, INT_MAX, 56);
    }

    void linesOfAllDirections()
    {
        QFETCH(QPointF, from);
        QFETCH(QPointF, to);
        QFETCH(QLine, centre);
        QFETCH(QLine, second);
        QFETCH(QLine, third);
        Drawing d;
        KytAtom* a = d.atom(from.x(), from.y());
        KytAtom* b = d.atom(to.x(), to.y());
        KytBond* bond = d.looseBond(a, b, {1, 1, 1});
        for (int round = 0; round < 2; ++round) { // as made, and as laid out again
            QVERIFY(runs(bond->bond1, centre.p1(), centre.p2()));
            QVERIFY(runs(bond->bond2, second.p1(), second.p2()));
            QVERIFY(runs(bond->bond3, third.p1(), third.p2()));
            for (KytBondLine* line : {bond->bond1, bond->bond2, bond->bond3})
                line->setPoints(1, 2, 3, 4);
            bond->setBond();
        }
    }

    void aLineAddedLaterStandsWhereTheAtomsAreNow()
    {
        Level l({1});
        l.from->move(100, 150);
        l.to->move(200, 150);
        l.bond->addBond(KYTBT_DashedLine, 60);
        QVERIFY(runs(l.bond->bond2, {100, 144}, {200, 144}));
    }

    // Wedges

    void aWedgeIsTheFirstAndOnlyThingOnABond_data()
    {
        QTest::addColumn<int>("wedge");
        QTest::newRow("up") << int(KYTBT_StereoUp);
        QTest::newRow("down") << int(KYTBT_StereoDown);
    }

    void aWedgeIsTheFirstAndOnlyThingOnABond()
    {
        QFETCH(int, wedge);
        Level l({wedge});
        QVERIFY(l.bond->stereoBond);
        QVERIFY(!l.bond->bond1);
        QCOMPARE(l.bond->bondCount, 1);
        QCOMPARE(int(l.bond->bond1Type), wedge);
        QCOMPARE(int(l.bond->stereoBond->bondType), wedge);
        QCOMPARE(l.bond->stereoBond->getAngle(), 60.0F);
        QCOMPARE(*l.bond->stereoBond->pa, QPolygon({QPoint(100, 100), QPoint(200, 106), QPoint(200, 94)}));
        for (const int kind : {0, 1, 2, 3, 4, 5, 6, 7, 8, -1}) {
            l.bond->addBond(static_cast<KytBondType>(kind), 60);
            QCOMPARE(l.bond->bondCount, 1);
            QCOMPARE(int(l.bond->bond1Type), wedge);
            QCOMPARE(int(l.bond->bond2Type), 0);
            QCOMPARE(l.d.lines().size(), 0);
            QCOMPARE(l.d.wedges().size(), 1);
        }
    }

    void aWedgeOnABondWithLinesIsIgnored()
    {
        for (const int wedge : {KYTBT_StereoUp, KYTBT_StereoDown})
            for (int lines = 1; lines <= 3; ++lines) {
                Level l({});
                for (int i = 0; i < lines; ++i)
                    l.bond->addBond(KYTBT_SingleBond, 60);
                l.bond->addBond(static_cast<KytBondType>(wedge), 60);
                QCOMPARE(l.bond->bondCount, lines);
                QVERIFY(!l.bond->stereoBond);
                QCOMPARE(l.d.wedges().size(), 0);
            }
    }

    void aSlantedWedgeIsCutToWholePixels()
    {
        Drawing d;
        KytBond* bond = d.looseBond(d.atom(0, 0), d.atom(100, 100), {KYTBT_StereoUp});
        const QPolygon expected({QPoint(0, 0), QPoint(103, 96), QPoint(96, 103)});
        QCOMPARE(*bond->stereoBond->pa, expected);
        *bond->stereoBond->pa = QPolygon({QPoint(1, 1), QPoint(2, 2), QPoint(3, 3)});
        bond->setBond();
        QCOMPARE(*bond->stereoBond->pa, expected);
        QCOMPARE(bond->stereoBond->points(), expected);
    }

    void aWedgePointsFromItsStartAtom()
    {
        Drawing d;
        KytBond* bond = d.looseBond(d.atom(100, 0), d.atom(0, 0), {KYTBT_StereoDown});
        QCOMPARE(*bond->stereoBond->pa, QPolygon({QPoint(100, 0), QPoint(0, 6), QPoint(0, -6)}));
    }

    // Kinds that draw nothing

    void kindsWithoutAPictureAreCountedAndNotKept_data()
    {
        QTest::addColumn<int>("kind");
        for (const int kind : {4, 5, 6, 7, 8, 1000, -1, INT_MAX, INT_MIN})
            QTest::addRow("%d", kind) << kind;
    }

    void kindsWithoutAPictureAreCountedAndNotKept()
    {
        QFETCH(int, kind);
        Level l({kind, kind, kind});
        QCOMPARE(l.bond->bondCount, 3);
        for (const KytBondType kept : {l.bond->bond1Type, l.bond->bond2Type, l.bond->bond3Type})
            QCOMPARE(kept, KYTBT_DashedLine);
        QVERIFY(!l.bond->bond1 && !l.bond->bond2 && !l.bond->bond3 && !l.bond->stereoBond);
        QCOMPARE(l.d.lines().size() + l.d.wedges().size(), 0);
        l.bond->addBond(KYTBT_SingleBond, 60);
        QCOMPARE(l.d.lines().size(), 0);
    }

    void aBondThatDrawsNothingCarriesDepthLikeAnother()
    {
        for (int count = 1; count <= 3; ++count) {
            Level l({});
            for (int i = 0; i < count; ++i)
                l.bond->addBond(KYTBT_Triple, 60);
            l.from->setAtomZ(8);
            QCOMPARE(l.to->getAtomZ(), 8.0F);
            l.to->moveBy(100, 0);
            QCOMPARE(l.bond->bondlength, 200.0F);
            l.bond->setLength(QStringLiteral("50"));
            QCOMPARE(l.to->x(), 150.0);
            l.bond->moveBy(1, 1);
            QCOMPARE(l.from->y(), 101.0);
        }
    }

    void noWedgeGoesBehindAKindWithoutAPicture()
    {
        Level l({5, KYTBT_StereoUp});
        QCOMPARE(l.bond->bondCount, 1);
        QCOMPARE(l.d.wedges().size(), 0);
    }

    void linesBehindAKindWithoutAPictureTakeTheirOwnPlaces()
    {
        Level l({5, 1, 0});
        QVERIFY(!l.bond->bond1);
        QVERIFY(runs(l.bond->bond2, {100, 94}, {200, 94}));
        QVERIFY(runs(l.bond->bond3, {100, 106}, {200, 106}));
        QVERIFY(l.bond->bond3->isDashed);
        l.to->moveBy(50, 0);
        QVERIFY(runs(l.bond->bond2, {100, 94}, {250, 94}));
        QVERIFY(runs(l.bond->bond3, {100, 106}, {250, 106}));
    }

    void linesAreDeletedAlsoWhereOthersDrawNothing_data()
    {
        QTest::addColumn<QList<int>>("kinds");
        QTest::addColumn<int>("deleted");
        for (int drawn = 1; drawn < 8; ++drawn)
            for (int deleted = 0; deleted < 3; ++deleted)
                if (drawn >> deleted & 1) {
                    const QList<int> kinds{drawn & 1 ? 1 : 5, drawn & 2 ? 1 : 5, drawn & 4 ? 1 : 5};
                    QTest::addRow("%d%d%d without %d", kinds[0], kinds[1], kinds[2], deleted) << kinds << deleted;
                }
    }

    void linesAreDeletedAlsoWhereOthersDrawNothing()
    {
        QFETCH(QList<int>, kinds);
        QFETCH(int, deleted);
        Level l({kinds[0], kinds[1], kinds[2]});
        const int drawn = l.d.lines().size();
        delete l.lines()[std::size_t(deleted)];
        QCOMPARE(l.bond->bondCount, 2);
        QCOMPARE(l.d.lines().size(), drawn - 1);
        QCOMPARE(drawingFault(*l.d.canvas()), QString());
        l.to->moveBy(10, 10);
        l.from->setAtomZ(3);
        QCOMPARE(l.to->getAtomZ(), 3.0F);
        for (int i = 0; i < 2 && !l.d.lines().empty(); ++i)
            delete (l.bond->bond1 ? l.bond->bond1 : l.bond->bond2);
        QCOMPARE(l.d.lines().size(), 0);
        delete l.from;
        QCOMPARE(l.to->getBondCount(), 0);
        QCOMPARE(drawingFault(*l.d.canvas()), QString());
    }

    void bondsThatDrawNothingAreDeleted()
    {
        for (const int kind : {4, 7, 99}) {
            Level l({kind, kind});
            delete l.bond;
            QCOMPARE(l.from->getBondCount(), 0);
            QVERIFY(l.from->getMolecule() != l.to->getMolecule());
        }
    }

    // Layout

    void layoutRefreshesTheLength()
    {
        Level l({1});
        l.to->move(100, 140);
        QCOMPARE(l.bond->bondlength, 40.0F);
        l.bond->bondlength = 3;
        l.bond->setBond();
        QCOMPARE(l.bond->bondlength, 40.0F);
    }

    void aBondWithoutLinesOnlyRefreshesItsLength()
    {
        Level l({});
        l.from->atomZ = 5;
        l.to->move(100, 140);
        QCOMPARE(l.bond->bondlength, 40.0F);
        QCOMPARE(l.to->getAtomZ(), 0.0F);
    }

    void layoutWaitsWhileAnAtomIsMissing()
    {
        Level l({1});
        l.bond->setToAtom(nullptr);
        l.bond->bondlength = 3;
        l.bond->bond1->setFromPoint(7, 7);
        l.bond->setBond();
        QCOMPARE(l.bond->bondlength, 3.0F);
        QCOMPARE(l.bond->bond1->getStartPoint(), QPoint(7, 7));
        QVERIFY(!l.bond->getToAtom());
        l.from->moveBy(0, 10);
        QCOMPARE(l.bond->bond1->getStartPoint(), QPoint(7, 7));
        l.bond->setFromAtom(nullptr);
        QVERIFY(!l.bond->getFromAtom());
        l.bond->setBond();
        QCOMPARE(l.bond->bondlength, 3.0F);
        l.bond->setToAtom(l.to);
        QCOMPARE(l.bond->bondlength, 3.0F);
        l.bond->setFromAtom(l.from);
        QVERIFY(runs(l.bond->bond1, {100, 110}, {200, 100}));
    }

    void aNewEndLaysTheBondOutAndLeavesTheListsAlone()
    {
        Level l({1, 1});
        KytAtom* other = l.d.atom(100, 300, 4);
        l.bond->setToAtom(other);
        QVERIFY(runs(l.bond->bond1, {100, 100}, {100, 300}));
        QVERIFY(runs(l.bond->bond2, {94, 100}, {94, 300}));
        QCOMPARE(l.bond->bondlength, 200.0F);
        QCOMPARE(other->getAtomZ(), 0.0F);
        QCOMPARE(other->getBondCount(), 0);
        QCOMPARE(l.to->getBondCount(), 1);
        l.bond->setToAtom(l.to);
    }

    void aPlainBondGivesItsStartsDepthToItsEnd()
    {
        for (const int kind : {0, 1}) {
            Drawing d;
            KytAtom* a = d.atom(0, 0, 3);
            KytAtom* b = d.atom(30, 0, 9);
            KytBond* bond = d.looseBond(a, b, {kind});
            bond->setBond();
            QCOMPARE(a->getAtomZ(), 3.0F);
            QCOMPARE(b->getAtomZ(), 3.0F);
        }
    }

    void aLockedEndKeepsItsDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 3);
        KytAtom* b = d.atom(30, 0, 9, true);
        KytAtom* c = d.atom(60, 0, 1);
        KytBond* ab = d.looseBond(a, b);
        d.looseBond(b, c);
        ab->setBond();
        a->setAtomZ(20);
        QCOMPARE(b->getAtomZ(), 9.0F);
        QCOMPARE(c->getAtomZ(), 1.0F);
        b->moveBy(0, 5);
        QCOMPARE(b->getAtomZ(), 9.0F);
        QCOMPARE(c->getAtomZ(), 9.0F);
    }

    void aLockedStartGivesItsDepth()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 3, true);
        KytAtom* b = d.atom(30, 0, 9);
        d.looseBond(a, b)->setBond();
        QCOMPARE(b->getAtomZ(), 3.0F);
    }

    void aWedgeRaisesItsEndByItsAngleInDegrees_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("up") << int(KYTBT_StereoUp);
        QTest::newRow("down rises as well") << int(KYTBT_StereoDown);
    }

    void aWedgeRaisesItsEndByItsAngleInDegrees()
    {
        QFETCH(int, kind);
        for (const float angle : {0.0F, 30.0F, 45.0F, 60.0F, 89.5F}) {
            Drawing d;
            KytAtom* a = d.atom(10, 10, -2);
            KytAtom* b = d.atom(40, 50, 0);
            KytBond* bond = d.looseBond(a, b, {kind}, angle);
            bond->setBond();
            const double rise = std::tan(double(angle) * 3.14159265358979323846 / 180) * 50;
            QCOMPARE(b->getAtomZ(), float(-2 + rise));
            bond->setBond();
            QCOMPARE(b->getAtomZ(), float(-2 + rise));
        }
    }

    void aWedgeWithALockedEndChangesNoDepthWhenTheAtomsMove()
    {
        Level l({KYTBT_StereoUp}, true);
        l.to->moveBy(10, 10);
        l.from->moveBy(-30, 0);
        l.bond->moveBy(5, 5);
        QCOMPARE(l.to->getAtomZ(), 0.0F);
        QCOMPARE(*l.bond->stereoBond->pa,
                 QPolygon({QPoint(75, 105), l.bond->stereoBond->pa->at(1), l.bond->stereoBond->pa->at(2)}));
    }

    void aWedgesRiseFollowsItsLength()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, 1);
        KytAtom* b = d.atom(100, 0, 0);
        d.looseBond(a, b, {KYTBT_StereoUp}, 45);
        b->move(200, 0);
        QCOMPARE(b->getAtomZ(), 201.0F);
        a->move(150, 0);
        QCOMPARE(b->getAtomZ(), 51.0F);
        b->move(150, 0);
        QCOMPARE(b->getAtomZ(), 1.0F);
    }

    // Length

    void theLengthIsShownWithSixDecimals()
    {
        Level l({1});
        QCOMPARE(l.bond->getLength(), QStringLiteral("100.000000"));
        l.to->move(101, 101);
        QCOMPARE(l.bond->getLength(), QStringLiteral("1.414214"));
        l.to->move(100, 100);
        QCOMPARE(l.bond->getLength(), QStringLiteral("0.000000"));
        l.bond->bondlength = -2.5F;
        QCOMPARE(l.bond->getLength(), QStringLiteral("-2.500000"));
        l.bond->bondlength = FLT_MAX;
        QCOMPARE(l.bond->getLength(), QStringLiteral("340282346638528859811704183484516925440.000000"));
    }

    void aTypedLengthSlidesTheEndAlongTheBond()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0);
        KytAtom* b = d.atom(75, 0);
        KytBond* bond = d.looseBond(a, b);
        bond->setLength(QStringLiteral("150"));
        QCOMPARE(b->x(), 150.0);
        QCOMPARE(b->y(), 0.0);
        QCOMPARE(a->x(), 0.0);
        QCOMPARE(bond->bondlength, 150.0F);
        QVERIFY(runs(bond->bond1, {0, 0}, {150, 0}));
        bond->setLength(QStringLiteral("30"));
        QVERIFY(isNear(b->x(), 30));
        EXACTLY(bond->bondlength, 30.0F);
    }

    void aTypedLengthKeepsTheDirection()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 20);
        KytAtom* b = d.atom(13, 24);
        KytAtom* c = d.atom(50, 24);
        KytBond* bond = d.looseBond(a, b);
        KytBond* next = d.looseBond(b, c);
        bond->setLength(QStringLiteral("0.5e2"));
        QVERIFY(isNear(b->x(), 40));
        QVERIFY(isNear(b->y(), 60));
        QCOMPARE(bond->bondlength, 50.0F);
        QCOMPARE(next->bond1->getStartPoint(), QPoint(int(b->x()), int(b->y())));
        QCOMPARE(c->x(), 50.0);
    }

    void theTypedLengthIsStoredAsTyped()
    {
        Drawing d;
        KytBond* bond = d.looseBond(d.atom(0, 0), d.atom(7, 3));
        bond->setLength(QStringLiteral("33.3"));
        EXACTLY(bond->bondlength, 33.3F);
        QCOMPARE(bond->getLength(), QString::number(double(33.3F), 'f', 6));
    }

    void theStartOfATextIsItsNumber()
    {
        Level l({1});
        l.bond->setLength(QStringLiteral("  50px"));
        QCOMPARE(l.to->x(), 150.0);
        QCOMPARE(l.bond->bondlength, 50.0F);
        l.bond->setLength(QStringLiteral("+25.5,7"));
        QVERIFY(isNear(l.to->x(), 125.5));
    }

    void aTextThatIsNoNumberBringsTheEndOntoTheStart()
    {
        for (const char* text : {"", "abc", "-", ".", "0", "-0"}) {
            Level l({1, 1});
            l.bond->setLength(QString::fromLatin1(text));
            QCOMPARE(l.to->x(), 100.0);
            QCOMPARE(l.to->y(), 100.0);
            QCOMPARE(l.bond->bondlength, 0.0F);
            QVERIFY(runs(l.bond->bond2, {94, 100}, {94, 100}));
        }
    }

    void lengthsAreReadWithAPointInEveryLocale()
    {
        const QByteArray before = setlocale(LC_ALL, nullptr);
        for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"})
            if (setlocale(LC_ALL, name))
                break;
        QLocale::setDefault(QLocale(QLocale::German));
        Level l({1});
        l.bond->setLength(QStringLiteral("50.5"));
        const QString shown = l.bond->getLength();
        QLocale::setDefault(QLocale::system());
        setlocale(LC_ALL, before.constData());
        QVERIFY(isNear(l.to->x(), 150.5));
        QCOMPARE(shown, QStringLiteral("50.500000"));
    }

    void aNegativeLengthPutsTheEndOnTheOtherSide()
    {
        Level l({1});
        l.bond->setLength(QStringLiteral("-50"));
        QCOMPARE(l.to->x(), 50.0);
        QCOMPARE(l.bond->bondlength, -50.0F);
        l.bond->setLength(QStringLiteral("50")); // the stored length is negative: once more to the other side
        QCOMPARE(l.to->x(), 150.0);
        QCOMPARE(l.bond->bondlength, 50.0F);
    }

    void aLengthThatIsNotFiniteMovesNothing_data()
    {
        QTest::addColumn<QString>("text");
        for (const char* text : {"nan", "NaN", "-nan", "inf", "-inf", "infinity", "1e999", "-1e999"})
            QTest::newRow(text) << QString::fromLatin1(text);
    }

    void aLengthThatIsNotFiniteMovesNothing()
    {
        QFETCH(QString, text);
        Level l({1});
        l.bond->setLength(text);
        QCOMPARE(l.to->x(), 200.0);
        QCOMPARE(l.to->y(), 100.0);
        QCOMPARE(l.bond->bondlength, 100.0F);
    }

    void aLengthOfAnySizeKeepsTheAtomsSomewhere()
    {
        for (const char* text : {"1e30", "1e38", "1e39", "1e300", "-1e300", "1e-300", "5e-324"}) {
            Level l({1, 1, 1});
            l.bond->setLength(QString::fromLatin1(text));
            for (int round = 0; round < 3; ++round) {
                QVERIFY(std::isfinite(l.to->x()) && std::isfinite(l.to->y()));
                QVERIFY(std::isfinite(l.from->x()) && std::isfinite(l.from->y()));
                QVERIFY(std::isfinite(l.bond->bondlength));
                QVERIFY(std::isfinite(l.to->getAtomZ()));
                l.bond->setLength(QStringLiteral("30"));
            }
        }
    }

    void aBondOfLengthZeroCannotBeStretched()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 10);
        KytAtom* b = d.atom(10, 10);
        for (const int kind : {1, 2}) {
            KytBond* bond = d.looseBond(a, b, {kind});
            for (const char* text : {"50", "0", "nan", "inf", "-1"}) {
                bond->setLength(QString::fromLatin1(text));
                QCOMPARE(b->x(), 10.0);
                QCOMPARE(b->y(), 10.0);
                QCOMPARE(bond->bondlength, 0.0F);
            }
        }
    }

    void aBondShrunkToNothingStaysThere()
    {
        Level l({1});
        l.bond->setLength(QStringLiteral("0"));
        l.bond->setLength(QStringLiteral("50"));
        QCOMPARE(l.to->x(), 100.0);
        l.to->moveBy(0, 10);
        l.bond->setLength(QStringLiteral("50"));
        QCOMPARE(l.to->y(), 150.0);
    }

    void aWedgeOfLengthZeroKeepsEverythingFinite()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 10, 1);
        KytAtom* b = d.atom(10, 10, 5);
        KytBond* bond = d.looseBond(a, b, {KYTBT_StereoUp}, 89.5);
        bond->setBond();
        QCOMPARE(b->getAtomZ(), 1.0F);
        a->moveBy(1, 0);
        a->moveBy(-1, 0);
        QCOMPARE(b->getAtomZ(), 1.0F);
        QCOMPARE(*bond->stereoBond->pa, QPolygon({QPoint(10, 10), QPoint(16, 10), QPoint(4, 10)}));
    }

    void aWedgeBeyondTheRangeOfDepthsStopsAtItsEnd()
    {
        Drawing d;
        KytAtom* a = d.atom(0, 0, FLT_MAX);
        KytAtom* b = d.atom(1e300, 0, 5);
        KytAtom* c = d.atom(30, 0, 5);
        d.looseBond(a, b, {KYTBT_StereoUp})->setBond();
        d.looseBond(a, c, {KYTBT_StereoUp})->setBond();
        QVERIFY(std::isfinite(b->getAtomZ()));
        EXACTLY(c->getAtomZ(), FLT_MAX);
    }

    // Moving

    void movingABondMovesBothAtoms()
    {
        Level l({1, 0});
        l.bond->moveBy(-10, 25);
        QCOMPARE(l.from->x(), 90.0);
        QCOMPARE(l.from->y(), 125.0);
        QCOMPARE(l.to->x(), 190.0);
        QCOMPARE(l.to->y(), 125.0);
        QCOMPARE(l.from->canvasSymbol->x(), 90.0);
        QCOMPARE(l.to->canvasSymbol->y(), 125.0);
        QVERIFY(runs(l.bond->bond1, {90, 125}, {190, 125}));
        QVERIFY(runs(l.bond->bond2, {90, 119}, {190, 119}));
    }

    void movingABondTakesLockedAtomsAlong()
    {
        Level l({1}, true);
        l.bond->moveBy(1, 2);
        QCOMPARE(l.to->x(), 201.0);
        QCOMPARE(l.to->y(), 102.0);
    }

    void aBondsColourIsItsItemsBusiness()
    {
        Level l({1});
        l.bond->setColor(1, 2, 3);
        QCOMPARE(l.bond->bond1->color[2], 255);
        l.bond->bond1->stopHover();
        QCOMPARE(l.bond->bond1->pen().color(), QColor(0, 0, 255));
    }

    // Taking lines away

    void deletingTheMiddleLineOfThreeMovesTheThirdIntoItsPlace()
    {
        Level l({1, 1, 0});
        KytBondLine* third = l.bond->bond3;
        KytBondLine* centre = l.bond->bond1;
        delete l.bond->bond2;
        QCOMPARE(l.bond->bondCount, 2);
        QCOMPARE(l.bond->bond1, centre);
        QCOMPARE(l.bond->bond2, third);
        QVERIFY(!l.bond->bond3);
        QVERIFY(runs(third, {100, 94}, {200, 94}));
        QVERIFY(third->isDashed);
        QCOMPARE(third->pen().style(), Qt::DashLine);
    }

    void linesOfThreeGoInEveryOrder_data()
    {
        QTest::addColumn<QList<int>>("order");
        QTest::addColumn<QList<int>>("kinds");
        QList<int> order{0, 1, 2};
        do {
            for (int kinds = 0; kinds < 8; ++kinds)
                QTest::addRow("%d%d%d, kinds %d", order[0], order[1], order[2], kinds)
                    << order << (QList<int>{kinds & 1, kinds >> 1 & 1, kinds >> 2});
        } while (std::next_permutation(order.begin(), order.end()));
    }

    void linesOfThreeGoInEveryOrder()
    {
        QFETCH(QList<int>, order);
        QFETCH(QList<int>, kinds);
        Level l({kinds[0], kinds[1], kinds[2]});
        const std::array<KytBondLine*, 3> made = l.lines();
        std::vector<KytBondLine*> places(made.begin(), made.end()); // the last line fills the gap
        for (int step = 0; step < 2; ++step) {
            KytBondLine* going = made[std::size_t(order[step])];
            *std::find(places.begin(), places.end(), going) = places.back();
            places.pop_back();
            delete going;
            QCOMPARE(l.bond->bondCount, 2 - step);
            QCOMPARE(l.d.lines().size(), 2 - step);
            for (std::size_t i = 0; i < 3; ++i) {
                QCOMPARE(l.lines()[i], i < places.size() ? places[i] : nullptr);
                if (i < places.size())
                    QVERIFY(runs(places[i], {100, heights[i]}, {200, heights[i]}));
            }
            for (KytBondLine* line : places) {
                const auto index = std::find(made.begin(), made.end(), line) - made.begin();
                QCOMPARE(line->isDashed, kinds[index] == 0);
                QCOMPARE(line->pen().style(), kinds[index] == 0 ? Qt::DashLine : Qt::SolidLine);
            }
            QCOMPARE(int(l.bond->bond1Type), kinds[0]); // the kinds keep their places
            QCOMPARE(int(l.bond->bond2Type), kinds[1]);
            QCOMPARE(int(l.bond->bond3Type), kinds[2]);
        }
        delete places.front();
        QCOMPARE(l.d.lines().size(), 0);
        QCOMPARE(l.from->getBondCount(), 0);
        QCOMPARE(l.to->getBondCount(), 0);
        QVERIFY(l.from->getMolecule() != l.to->getMolecule());
    }

    void takingALineAwayPassesTheDepthOn()
    {
        Level l({1, 1});
        l.from->atomZ = 6;
        delete l.bond->bond2;
        QCOMPARE(l.to->getAtomZ(), 6.0F);
    }

    void lineByLineTheBondTellsWhenItIsDone()
    {
        Level l({1, 1, 1});
        KytBondLine* kept = l.bond->bond1;
        KytBondLine* second = l.bond->bond2;
        KytBondLine* third = l.bond->bond3;
        QVERIFY(!l.bond->deleteBond(third));
        QVERIFY(!l.bond->deleteBond(second));
        QCOMPARE(l.bond->bondCount, 1);
        QVERIFY(l.bond->deleteBond(kept));
        QCOMPARE(l.bond->bondCount, 0);
        QVERIFY(!l.bond->deleteBond(kept));
        QCOMPARE(l.bond->bondCount, 0);
        l.bond->bondCount = -1;
        QVERIFY(!l.bond->deleteBond(kept));
        QCOMPARE(l.bond->bondCount, -1);
        for (KytBondLine* line : {second, third}) {
            line->bond = nullptr;
            delete line;
        }
        l.bond->bondCount = 1;
    }

    void aWedgeCannotBeTakenFromItsBond()
    {
        Level l({KYTBT_StereoUp});
        QVERIFY(l.bond->deleteBond(l.bond->stereoBond));
        QCOMPARE(l.bond->bondCount, 1);
        QVERIFY(l.bond->stereoBond);
        QCOMPARE(l.d.wedges().size(), 1);
        QCOMPARE(l.from->getBondCount(), 1);
    }

    void aLineCanBeAddedAgainAfterOneWasTakenAway()
    {
        Level l({1, 1, 1});
        delete l.bond->bond1;
        l.bond->addBond(KYTBT_DashedLine, 60);
        QCOMPARE(l.bond->bondCount, 3);
        QVERIFY(runs(l.bond->bond3, {100, 106}, {200, 106}));
        QVERIFY(l.bond->bond3->isDashed);
        QCOMPARE(int(l.bond->bond3Type), 0);
        QCOMPARE(l.d.lines().size(), 3);
        QCOMPARE(drawingFault(*l.d.canvas()), QString());
    }

    // Taking the bond away

    void aDeletedBondLeavesNothing_data()
    {
        QTest::addColumn<QList<int>>("kinds");
        QTest::newRow("nothing drawn") << QList<int>{};
        QTest::newRow("one line") << QList<int>{1};
        QTest::newRow("two lines") << QList<int>{1, 0};
        QTest::newRow("three lines") << QList<int>{0, 1, 1};
        QTest::newRow("a wedge up") << QList<int>{2};
        QTest::newRow("a wedge down") << QList<int>{3};
        QTest::newRow("nothing visible") << QList<int>{4};
        QTest::newRow("a line behind nothing visible") << QList<int>{7, 1};
        QTest::newRow("nothing visible between lines") << QList<int>{1, 55, 1};
    }

    void aDeletedBondLeavesNothing()
    {
        QFETCH(QList<int>, kinds);
        Level l({});
        for (const int kind : kinds)
            l.bond->addBond(static_cast<KytBondType>(kind), 60);
        KytMolecule* molecule = l.from->getMolecule();
        delete l.bond;
        QCOMPARE(l.d.lines().size(), 0);
        QCOMPARE(l.d.wedges().size(), 0);
        QCOMPARE(l.d.atoms().size(), 2);
        QCOMPARE(l.from->getBondCount(), 0);
        QCOMPARE(l.to->getBondCount(), 0);
        QCOMPARE(l.from->getMolecule(), molecule);
        QVERIFY(l.to->getMolecule() != molecule);
        QCOMPARE(l.to->getMolecule()->getAtomsCount(), 1);
        QCOMPARE(l.to->getMolecule()->atomsCount, 1);
    }

    void aBondInTheMiddleSplitsTheMoleculeInTwo()
    {
        Drawing d;
        QList<KytAtom*> a;
        for (int i = 0; i < 4; ++i)
            a.append(d.atom(i * 30, 0));
        d.bond(a[0], a[1]);
        KytBond* middle = d.bond(a[1], a[2]);
        d.bond(a[2], a[3]);
        KytMolecule* molecule = a[0]->getMolecule();
        delete middle->bond1;
        QCOMPARE(a[0]->getMolecule(), molecule);
        QCOMPARE(a[1]->getMolecule(), molecule);
        QVERIFY(a[2]->getMolecule() != molecule);
        QCOMPARE(a[3]->getMolecule(), a[2]->getMolecule());
        QCOMPARE(a[2]->getMolecule()->getAtomsCount(), 2);
    }

    void aBondBesideAnotherWaySplitsNothing_data()
    {
        QTest::addColumn<bool>("back");
        QTest::newRow("from start to end") << false;
        QTest::newRow("from end to start") << true;
    }

    void aBondBesideAnotherWaySplitsNothing()
    {
        QFETCH(bool, back);
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytAtom* c = d.atom(15, 30);
        KytBond* direct = d.bond(a, b);
        back ? d.bond(b, c) : d.bond(a, c);
        back ? d.bond(c, a) : d.bond(c, b);
        KytMolecule* molecule = b->getMolecule();
        delete direct;
        for (KytAtom* atom : {a, b, c})
            QCOMPARE(atom->getMolecule(), molecule);
    }

    void aWayThatChangesDirectionMovesAllToANewMolecule()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytAtom* c = d.atom(15, 30);
        KytBond* direct = d.bond(a, b);
        d.bond(a, c);
        d.bond(b, c);
        a->getMolecule()->setMoleculeName(QStringLiteral("before"));
        delete direct;
        QVERIFY(b->getMolecule()->getMoleculeName().isNull());
        QCOMPARE(a->getMolecule(), b->getMolecule());
        QCOMPARE(c->getMolecule(), b->getMolecule());
        QCOMPARE(b->getMolecule()->getAtomsCount(), 3);
    }

    void aBondWithoutAnEndUnhooksFromTheOther()
    {
        Level l({1});
        KytMolecule* ofTo = l.to->getMolecule();
        l.from->deleteBond(l.bond);
        l.bond->setFromAtom(nullptr);
        delete l.bond;
        QCOMPARE(l.to->getBondCount(), 0);
        QCOMPARE(l.to->getMolecule(), ofTo);
        QCOMPARE(l.d.lines().size(), 0);
    }

    void aBondFromAnAtomToItselfComesAndGoes()
    {
        Drawing d;
        KytAtom* a = d.atom(10, 10, 3);
        for (const int kind : {1, 2, 5}) {
            KytBond* loop = d.looseBond(a, a, {kind}, 60);
            QCOMPARE(a->getBondCount(), 2);
            QCOMPARE(loop->bondlength, 0.0F);
            loop->setBond();
            a->moveBy(1, 1);
            QCOMPARE(a->getAtomZ(), 3.0F);
            loop->setLength(QStringLiteral("20"));
            delete loop;
            QCOMPARE(a->getBondCount(), 0);
        }
        QVERIFY(a->getMolecule());
        QCOMPARE(d.lines().size() + d.wedges().size(), 0);
    }

    void deletingOneOfTwoParallelBondsKeepsTheMolecule()
    {
        Drawing d;
        const auto [a, b] = d.row<2>();
        KytBond* one = d.bond(a, b);
        KytBond* two = d.bond(a, b);
        KytMolecule* molecule = a->getMolecule();
        delete one;
        QCOMPARE(b->getMolecule(), molecule);
        delete two;
        QVERIFY(b->getMolecule() != molecule);
    }
};

QTEST_MAIN(test_KytBond)
#include "test_KytBond.moc"
