#include "doc/Clipping.h"
#include "doc/WorkspaceFile.h"
#include "tests/support/Drawing.h"

#include <QTest>

#include <array>
#include <memory>

namespace {

QByteArray workspaceWith(const QByteArray& atoms, const QByteArray& bonds = {})
{
    const auto count = [](const QByteArray& records, const char* word) {
        return QByteArray::number(records.count(word));
    };
    return "KYTFILE\n MOLECULE " + count(atoms, "ATOM") + ' ' + count(bonds, "BOND") + '\n' + atoms + bonds
        + " END_MOLECULE\nEND_KYTFILE\n";
}

QByteArray atomAt(const QByteArray& position)
{
    return "  ATOM C " + position + " 0 0 0\n";
}

} // namespace

class test_Clipping : public QObject {
    Q_OBJECT

private slots:
    void theWholeDrawingIsItsWorkspace()
    {
        const Drawing drawing;
        const auto [a, b, c] = drawing.row<3>(100, 100);
        drawing.bond(a, b);
        b->locked = true;
        const Clipping clipping = clippingOf(*drawing.canvas(), {a, b, c});
        QCOMPARE(clipping.workspace, workspaceText(*drawing.canvas()));
        QCOMPARE(clipping.locks, QByteArray("010"));
    }

    void aPartTakesTheBondsAmongItsAtoms()
    {
        const Drawing drawing;
        const auto [a, b, c, d] = drawing.row<4>(100, 100);
        for (const auto& [from, to] : {std::pair(a, b), std::pair(b, c), std::pair(c, d), std::pair(d, a)})
            drawing.bond(from, to);
        c->locked = true;
        const QByteArray before = workspaceText(*drawing.canvas());
        const Clipping clipping = clippingOf(*drawing.canvas(), {b, c});
        QCOMPARE(clipping.workspace.count("ATOM"), 2);
        QCOMPARE(clipping.workspace.count("BOND"), 1);
        QCOMPARE(clipping.locks, QByteArray("01"));
        QCOMPARE(workspaceText(*drawing.canvas()), before);
    }

    void aSmallPartOfALargeMoleculeIsTaken()
    {
        const Drawing drawing;
        constexpr std::size_t count = 20'000;
        const auto atoms = std::make_unique<std::array<KytAtom*, count>>(drawing.row<count>(0, 0, 0.1));
        for (std::size_t i = 1; i < count; ++i)
            drawing.looseBond((*atoms)[i - 1], (*atoms)[i]);
        for (KytAtom* atom : *atoms)
            atom->setMolecule(atoms->front()->getMolecule());
        const Clipping clipping = clippingOf(*drawing.canvas(), {(*atoms)[0], (*atoms)[1]});
        QCOMPARE(clipping.workspace.count("ATOM"), 2);
        QCOMPARE(clipping.workspace.count("BOND"), 1);
    }

    void itsMiddleComesToTheGivenPoint()
    {
        const Drawing source;
        source.row<3>(100, 100);
        const Clipping clipping = clippingOf(*source.canvas(), atomsOf(*source.canvas()));
        const Drawing target;
        const QList<KytAtom*> added = addClipping(clipping, QPointF(500, 700), *target.doc);
        QCOMPARE(added.size(), 3);
        QCOMPARE(added[2]->x() - added[0]->x(), 60.0);
        const QPointF middle = extentOf(clipping).center() - QPointF(100, 100);
        QCOMPARE(added[0]->x(), double(std::lround(500 - middle.x())));
        QCOMPARE(added[0]->y(), double(std::lround(700 - middle.y())));
    }

    void fractionsDepthsAndLocksStay()
    {
        const Drawing source;
        source.atom(100.25, 100.5, 7.75F, true);
        const Clipping clipping = clippingOf(*source.canvas(), atomsOf(*source.canvas()));
        const Drawing target;
        const QList<KytAtom*> added = addClipping(clipping, QPointF(500, 700), *target.doc);
        QCOMPARE(added.size(), 1);
        QCOMPARE(added[0]->x() - std::floor(added[0]->x()), 0.25);
        QCOMPARE(added[0]->y() - std::floor(added[0]->y()), 0.5);
        QCOMPARE(added[0]->getAtomZ(), 7.75F);
        QVERIFY(added[0]->locked);
    }

    void withoutAPointItStaysWhereItIs()
    {
        const Clipping clipping{workspaceWith(atomAt("300.5 400.25 0")), {}};
        const Drawing target;
        const QList<KytAtom*> added = addClipping(clipping, std::nullopt, *target.doc);
        QCOMPARE(added[0]->x(), 300.5);
        QCOMPARE(added[0]->y(), 400.25);
    }

    void itLiesOnTheCanvasWithItsLabels_data()
    {
        QTest::addColumn<QPointF>("middle");
        QTest::newRow("left") << QPointF(-50, 300);
        QTest::newRow("right") << QPointF(canvasSize + 50, 300);
        QTest::newRow("top") << QPointF(300, 0);
        QTest::newRow("bottom") << QPointF(300, canvasSize);
        QTest::newRow("corner") << QPointF(canvasSize, canvasSize);
    }

    void itLiesOnTheCanvasWithItsLabels()
    {
        QFETCH(QPointF, middle);
        const Drawing target;
        const Clipping clipping{workspaceWith(atomAt("0 0 0") + atomAt("100 50 0")), {}};
        const QList<KytAtom*> added = addClipping(clipping, middle, *target.doc);
        QCOMPARE(added.size(), 2);
        const QRectF paper(0, 0, canvasSize, canvasSize);
        for (const KytAtom* atom : added) {
            QVERIFY(paper.adjusted(-1, -1, 1, 1).contains(atom->boundingRect()));
            QVERIFY(paper.adjusted(-1, -1, 1, 1).contains(atom->canvasSymbol->boundingRect()));
        }
    }

    void aShapeInSpaceIsLockedUnlessLocksAreGiven_data()
    {
        QTest::addColumn<QByteArray>("depth");
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("locks");
        QTest::addColumn<bool>("locked");
        QTest::newRow("flat") << QByteArray("0") << QByteArray("1") << QByteArray() << false;
        QTest::newRow("a line that rises") << QByteArray("9") << QByteArray("1") << QByteArray() << true;
        QTest::newRow("a wedge") << QByteArray("9") << QByteArray("2") << QByteArray() << false;
        QTest::newRow("a line that rises, not locked")
            << QByteArray("9") << QByteArray("1") << QByteArray("00") << false;
        QTest::newRow("flat, locked") << QByteArray("0") << QByteArray("1") << QByteArray("11") << true;
        QTest::newRow("locks of another drawing") << QByteArray("0") << QByteArray("1") << QByteArray("111") << false;
    }

    void aShapeInSpaceIsLockedUnlessLocksAreGiven()
    {
        QFETCH(QByteArray, depth);
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, locks);
        QFETCH(bool, locked);
        const Drawing target;
        const QByteArray text =
            workspaceWith(atomAt("100 100 0") + atomAt("130 100 " + depth), "  BOND 0 1 1 " + kind + '\n');
        const QList<KytAtom*> added = addClipping({text, locks}, QPointF(500, 500), *target.doc);
        QCOMPARE(added.size(), 2);
        for (const KytAtom* atom : added)
            QCOMPARE(atom->locked, locked);
    }

    void badTextsChangeNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("prose") << QByteArray("Dear Sir or Madam,");
        QTest::newRow("bytes") << QByteArray("\0\xff\xfe", 3);
        QTest::newRow("no atoms") << workspaceWith({});
        QTest::newRow("cut off") << workspaceWith(atomAt("1 1 1")).chopped(14);
        QTest::newRow("a number that is none") << workspaceWith(atomAt("1 x 1"));
        QTest::newRow("far away") << workspaceWith(atomAt("1 1e30 1"));
        QTest::newRow("a bond to nowhere") << workspaceWith(atomAt("1 1 1"), "  BOND 0 7 1 1\n");
    }

    void badTextsChangeNothing()
    {
        QFETCH(QByteArray, text);
        const Drawing target;
        target.atom(50, 50);
        const QByteArray before = workspaceText(*target.canvas());
        QVERIFY(addClipping({text, {}}, QPointF(100, 100), *target.doc).isEmpty());
        QCOMPARE(workspaceText(*target.canvas()), before);
    }
};

QTEST_MAIN(test_Clipping)
#include "test_Clipping.moc"
