#include "history/DrawingState.h"
#include "model/MoleculeMotion.h"
#include "tests/support/Drawing.h"
#include "tests/support/Snapshot.h"

#include <QTest>

#include <random>

namespace {

/// A drawing, its state, and one change of it: there and back is compared with what was.
struct Changed {
    /// Records what `act` has changed; then says what differs after going back, forward and back again, or nothing.
    template <typename Act> QString thereAndBack(Act act)
    {
        state.update(*d.canvas());
        const QStringList before = snapshotOf(*d.canvas());
        act();
        const QStringList after = snapshotOf(*d.canvas());
        DrawingChange change = state.update(*d.canvas());
        isEmpty = change.isEmpty();
        for (int round = 0; round < 2; ++round) {
            change = state.apply(change, *d.doc);
            if (const QString found = snapshotDifference(before, snapshotOf(*d.canvas())); !found.isEmpty())
                return QStringLiteral("back: ") + found;
            if (!state.update(*d.canvas()).isEmpty())
                return QStringLiteral("back: the state is not that of the canvas");
            change = state.apply(change, *d.doc);
            if (const QString found = snapshotDifference(after, snapshotOf(*d.canvas())); !found.isEmpty())
                return QStringLiteral("forward: ") + found;
            if (!state.update(*d.canvas()).isEmpty())
                return QStringLiteral("forward: the state is not that of the canvas");
        }
        return drawingFault(*d.canvas());
    }

    Drawing d;
    DrawingState state;
    bool isEmpty = false;
};

/// A ring with a tail, a double bond, a wedge and a locked atom.
QList<KytAtom*> ringWithTail(Drawing& d)
{
    QList<KytAtom*> a;
    for (int i = 0; i < 6; ++i)
        a.append(d.atom(100 + 30 * std::cos(i), 100.1 + 30 * std::sin(i), float(i) / 7));
    for (int i = 0; i < 6; ++i)
        d.bond(a[i], a[(i + 1) % 6], {i % 2, 1});
    a.append(d.atom(200, 100));
    d.bond(a[0], a[6], {KYTBT_StereoUp}, 45);
    a.append(d.atom(230, 120, 5, true));
    d.bond(a[7], a[6], {1, 0, 1});
    return a;
}

} // namespace

class test_DrawingState : public QObject {
    Q_OBJECT

private slots:
    void nothingHasChangedAtFirst()
    {
        Changed c;
        ringWithTail(c.d);
        QCOMPARE(c.thereAndBack([] {}), QString());
        QVERIFY(c.isEmpty);
        QCOMPARE(c.state.atomCount(), 8);
    }

    void everyChangeIsTakenBackAndMadeAgain_data()
    {
        using Act = void (*)(Drawing&, QList<KytAtom*>&);
        QTest::addColumn<Act>("act");
        const auto row = [](const char* name, Act act) { QTest::newRow(name) << act; };
        row("an atom moved", [](Drawing&, QList<KytAtom*>& a) { a[2]->moveBy(0.1, 1e-9); });
        row("an atom far away", [](Drawing&, QList<KytAtom*>& a) { a[2]->moveBy(1e9, -1e-3); });
        row("a molecule moved",
            [](Drawing& d, QList<KytAtom*>& a) { moveMolecule(*d.canvas(), a[0]->molecule, 3, 4); });
        row("a molecule rotated", [](Drawing& d, QList<KytAtom*>& a) { rotateMolecule(*d.canvas(), *a[1], 0.3F); });
        row("a label moved", [](Drawing&, QList<KytAtom*>& a) { a[3]->canvasSymbol->moveBy(5, -5); });
        row("a depth", [](Drawing&, QList<KytAtom*>& a) { a[0]->setAtomZ(17); });
        row("a depth of minus zero", [](Drawing&, QList<KytAtom*>& a) { a[7]->atomZ = -0.0F; });
        row("a lock", [](Drawing&, QList<KytAtom*>& a) { a[0]->locked = true; });
        row("a symbol", [](Drawing&, QList<KytAtom*>& a) { a[0]->setSymbol("Cl"); });
        row("a name", [](Drawing&, QList<KytAtom*>& a) { a[0]->setName("chlorine"); });
        row("a colour", [](Drawing&, QList<KytAtom*>& a) { a[0]->_atomColor[2] = "7"; });
        row("an angle", [](Drawing&, QList<KytAtom*>& a) { a[6]->inList.first()->stereoBond->setAngle(33); });
        row("an atom made", [](Drawing& d, QList<KytAtom*>&) { d.atom(300, 300); });
        row("an atom and a bond made",
            [](Drawing& d, QList<KytAtom*>& a) { d.bond(a[4], d.atom(300, 300), {KYTBT_StereoDown}, 60); });
        row("a bond made", [](Drawing& d, QList<KytAtom*>& a) { d.bond(a[4], a[7]); });
        row("a line added", [](Drawing&, QList<KytAtom*>& a) { a[0]->outList.first()->addBond(KYTBT_DashedLine, 0); });
        row("a first line deleted", [](Drawing&, QList<KytAtom*>& a) { delete a[7]->outList.first()->bond1; });
        row("a middle line deleted", [](Drawing&, QList<KytAtom*>& a) { delete a[7]->outList.first()->bond2; });
        row("a bond deleted", [](Drawing&, QList<KytAtom*>& a) { delete a[0]->outList.last(); });
        row("the first atom deleted", [](Drawing&, QList<KytAtom*>& a) { delete a.takeFirst(); });
        row("an atom in the middle deleted", [](Drawing&, QList<KytAtom*>& a) { delete a.takeAt(6); });
        row("the last atom deleted", [](Drawing&, QList<KytAtom*>& a) { delete a.takeLast(); });
        row("all atoms deleted",
            [](Drawing& d, QList<KytAtom*>&) { d.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse); });
        row("atoms merged", [](Drawing& d, QList<KytAtom*>& a) {
            KytAtom* other = d.atom(400, 400);
            d.bond(other, d.atom(420, 400));
            a[2]->combine(other);
        });
        row("atoms of one molecule merged", [](Drawing&, QList<KytAtom*>& a) {
            a[7]->locked = false;
            a[3]->atomZ = a[7]->atomZ;
            a[3]->combine(a[7]);
        });
        row("bonds in another order", [](Drawing&, QList<KytAtom*>& a) { a[0]->outList.swapItemsAt(0, 1); });
        row("incoming bonds in another order", [](Drawing&, QList<KytAtom*>& a) { a[6]->inList.swapItemsAt(0, 1); });
        row("bonds that are not drawn", [](Drawing& d, QList<KytAtom*>& a) {
            d.bond(a[3], a[7], {});
            d.bond(a[3], a[5], {KYTBT_Triple, 1});
        });
        row("two bonds between the same atoms", [](Drawing& d, QList<KytAtom*>& a) {
            d.bond(a[3], a[7]);
            d.bond(a[3], a[7], {0});
        });
    }

    void everyChangeIsTakenBackAndMadeAgain()
    {
        using Act = void (*)(Drawing&, QList<KytAtom*>&);
        QFETCH(Act, act);
        Changed c;
        QList<KytAtom*> atoms = ringWithTail(c.d);
        c.d.atom(500, 500); // alone, and behind all others
        QCOMPARE(c.thereAndBack([&] { act(c.d, atoms); }), QString());
        QVERIFY(!c.isEmpty);
    }

    void moleculesStayTheSameSets()
    {
        Changed c;
        QList<KytAtom*> atoms = ringWithTail(c.d);
        DrawingState& state = c.state;
        state.update(*c.d.canvas());
        delete atoms.takeAt(6); // the ring and the locked atom are apart now
        QVERIFY(atoms[0]->molecule != atoms[6]->molecule);
        const DrawingChange change = state.update(*c.d.canvas());
        state.apply(change, *c.d.doc);
        QCOMPARE(moleculeFault(*c.d.canvas()), QString());
        QVERIFY(atoms[0]->molecule == atoms[6]->molecule);
    }

    void aMoveTakesLittleMemory()
    {
        Changed c;
        for (int i = 0; i < 1000; ++i)
            c.d.atom(i, i);
        c.state.update(*c.d.canvas());
        for (KytAtom* atom : atomsOf(*c.d.canvas()))
            atom->moveBy(1, 1);
        const DrawingChange change = c.state.update(*c.d.canvas());
        QVERIFY2(change.size() < qsizetype{200} * 1000, qPrintable(QString::number(change.size())));
    }
};

QTEST_MAIN(test_DrawingState)
#include "test_DrawingState.moc"
