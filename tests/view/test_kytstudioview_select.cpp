#include "model/MoleculeMotion.h"
#include "tests/support/LargeDrawings.h"
#include "tests/view/StepsFixture.h"

#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

/// Three atoms as in StepsFixture, and a molecule of two locked atoms.
class SelectFixture : public StepsFixture {
public:
    SelectFixture()
        : locked(atom(100, 300, 0, true))
        , lockedEnd(atom(160, 300, 0, true))
    {
        bond(locked, lockedEnd);
        history->record("locked atoms");
    }

    /// Drags with Shift from empty paper.
    void drawRectangle(QPoint from, QPoint to) { drag(from, to, Qt::ShiftModifier); }
    void shiftClick(QPoint p) { click(p, Qt::ShiftModifier); }

    /// The names of the selected atoms.
    QString selected() const
    {
        QStringList names;
        for (const KytAtom* one : view->selectedAtoms())
            names += nameOf(one);
        return names.join(' ');
    }

    QImage shown() const { return view->viewport()->grab().toImage(); }

    KytAtom* locked;
    KytAtom* lockedEnd;

private:
    QString nameOf(const KytAtom* one) const
    {
        const std::pair<const KytAtom*, const char*> names[] = {
            {left, "left"}, {right, "right"}, {lone, "lone"}, {locked, "locked"}, {lockedEnd, "lockedEnd"}};
        for (const auto& [atom, name] : names)
            if (atom == one)
                return name;
        return "another";
    }
};

using Act = void (*)(SelectFixture&);

} // namespace

class test_kytstudioview_select : public QObject {
    Q_OBJECT

private slots:
    void gesturesSelect_data()
    {
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("selected");
        const auto row = [](const char* name, Act act, const char* selected) {
            QTest::newRow(name) << act << selected;
        };
        row(
            "a rectangle",
            [](SelectFixture& f) {
                f.drawRectangle({80, 80}, {200, 120});
            },
            "left right");
        row(
            "a rectangle, drawn from its lower right",
            [](SelectFixture& f) {
                f.drawRectangle({200, 120}, {80, 80});
            },
            "left right");
        row(
            "a rectangle whose edge an atom lies on",
            [](SelectFixture& f) {
                f.drawRectangle({120, 80}, {160, 100});
            },
            "right");
        row(
            "a rectangle that cuts a bond",
            [](SelectFixture& f) {
                f.drawRectangle({120, 80}, {140, 120});
            },
            "");
        row(
            "a second rectangle adds",
            [](SelectFixture& f) {
                f.drawRectangle({280, 80}, {320, 120});
                f.drawRectangle({140, 80}, {200, 120});
            },
            "right lone");
        row(
            "a rectangle around a locked atom",
            [](SelectFixture& f) {
                f.drawRectangle({80, 280}, {120, 320});
            },
            "locked lockedEnd");
        row(
            "a click with Shift adds",
            [](SelectFixture& f) {
                f.shiftClick({300, 100});
                f.shiftClick({100, 100});
            },
            "left lone");
        row(
            "a click with Shift takes away",
            [](SelectFixture& f) {
                f.drawRectangle({80, 80}, {320, 120});
                f.shiftClick({160, 100});
            },
            "left lone");
        row(
            "a click with Shift on a locked atom",
            [](SelectFixture& f) {
                f.shiftClick({300, 100});
                f.shiftClick({160, 300});
            },
            "lone locked lockedEnd");
        row(
            "a double click with Shift",
            [](SelectFixture& f) {
                f.doubleClick({300, 100}, Qt::ShiftModifier);
            },
            "");
        row(
            "all", [](SelectFixture& f) { f.view->selectAll(); }, "left right lone locked lockedEnd");
        row(
            "a click on empty paper clears",
            [](SelectFixture& f) {
                f.view->selectAll();
                f.click({500, 300});
            },
            "");
        row(
            "a click on empty paper in Rotate Mode clears",
            [](SelectFixture& f) {
                f.view->selectAll();
                f.mode(KYTVS_rotate);
                f.click({500, 300});
            },
            "");
        row(
            "a click with Shift on empty paper changes nothing",
            [](SelectFixture& f) {
                f.shiftClick({300, 100});
                f.shiftClick({500, 300});
            },
            "lone");
        row(
            "a click on an item changes nothing",
            [](SelectFixture& f) {
                f.shiftClick({300, 100});
                f.click({100, 100});
                f.click({130, 100});
                f.click({300, 100});
                f.shiftClick({130, 100});
                f.click(SelectFixture::onLabel(f.lone));
            },
            "lone");
        row(
            "drawing changes nothing",
            [](SelectFixture& f) {
                f.shiftClick({300, 100});
                f.mode(KYTVS_drawSimpleBond);
                f.click({400, 300});
                f.click({440, 300});
            },
            "lone");
        row(
            "zoomed out, near an atom",
            [](SelectFixture& f) {
                f.view->zoomTo(0.25, {0, 0});
                f.shiftClick({76, 26});
            },
            "lone");
        row(
            "zoomed in",
            [](SelectFixture& f) {
                f.view->zoomTo(2, {0, 0});
                f.drawRectangle({160, 160}, {400, 240});
            },
            "left right");
    }

    void gesturesSelect()
    {
        QFETCH(Act, act);
        SelectFixture f;
        act(f);
        QTEST(f.selected(), "selected");
        QVERIFY(!f.view->moving);
    }

    void selectingChangesNothingElse()
    {
        SelectFixture f;
        const QStringList before = f.drawn();
        const auto steps = f.history->undoCount();
        const QSignalSpy changes(f.view, &KytStudioView::drawingChanged);
        f.drawRectangle({80, 80}, {320, 120});
        f.shiftClick({100, 100});
        f.view->selectAll();
        f.click({500, 300});
        f.move({550, 320});
        QCOMPARE(f.drawn(), before);
        QCOMPARE(f.history->undoCount(), steps);
        QCOMPARE(changes.count(), 0);
    }

    void inOtherModesShiftDoesNothing_data() { addModeRows(everyMode); }

    void inOtherModesShiftDoesNothing()
    {
        QFETCH(int, mode);
        if (mode == KYTVS_view)
            return;
        QStringList drawn[2];
        for (const bool withShift : {false, true}) {
            SelectFixture f;
            f.mode(KytViewState(mode));
            const Qt::KeyboardModifiers held = withShift ? Qt::ShiftModifier : Qt::NoModifier;
            f.drag({500, 300}, {80, 80}, held);
            f.drag({100, 100}, {120, 140}, held);
            f.drag({300, 100}, {310, 100}, held);
            QCOMPARE(f.selected(), QString());
            drawn[withShift] = f.drawn();
        }
        QCOMPARE(snapshotDifference(drawn[0], drawn[1]), QString());
    }

    void withControlShiftMovesTheMolecule()
    {
        SelectFixture f;
        f.drag({100, 100}, {110, 120}, Qt::ShiftModifier | Qt::ControlModifier);
        QCOMPARE(placesOf({f.left, f.right}), (Places{{110, 120}, {170, 120}}));
        QCOMPARE(f.selected(), QString());
    }

    void theSignalTellsEachChangeOnce()
    {
        SelectFixture f;
        const QSignalSpy changes(f.view, &KytStudioView::selectionChanged);
        f.view->clearSelection();
        f.view->select({});
        QCOMPARE(changes.count(), 0);
        f.view->select({f.lone, nullptr, f.lone});
        QCOMPARE(f.selected(), QString("lone"));
        f.view->select({f.lone});
        QCOMPARE(changes.count(), 1);
        f.view->select({f.locked});
        QCOMPARE(f.selected(), QString("locked lockedEnd"));
        QCOMPARE(changes.count(), 2);
        f.drawRectangle({400, 20}, {450, 40}); // empty
        QCOMPARE(changes.count(), 2);
        f.view->selectAll();
        f.view->clearSelection();
        QCOMPARE(changes.count(), 4);
    }

    void atomsThatGoLeaveTheSelection_data()
    {
        QTest::addColumn<Destroyer>("destroy");
        for (const auto& [name, destroy] : waysToGo)
            QTest::newRow(name) << destroy;
    }

    void atomsThatGoLeaveTheSelection()
    {
        QFETCH(Destroyer, destroy);
        SelectFixture f;
        f.view->selectAll();
        QSignalSpy changes(f.view, &KytStudioView::selectionChanged);
        f.view->history = nullptr;
        destroy(f, f.lone);
        QVERIFY(!f.view->selectedAtoms().contains(f.lone));
        QVERIFY(changes.wait());
        QCOMPARE(changes.count(), 1);
    }

    void aDraggedAtomTakesTheSelectionAlong_data()
    {
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("moved"); // how far left, right, lone and locked have come
        QTest::addColumn<QString>("step");
        const auto row = [](const char* name, Act act, const char* moved, const char* step = "Move") {
            QTest::newRow(name) << act << moved << step;
        };
        row(
            "a selected atom",
            [](SelectFixture& f) {
                f.drag({100, 100}, {110, 130});
            },
            "10,30 0,0 10,30 0,0");
        row(
            "a selected atom with Control",
            [](SelectFixture& f) {
                f.drag({100, 100}, {110, 130}, Qt::ControlModifier);
            },
            "10,30 10,30 0,0 0,0");
        row(
            "an atom that is not selected",
            [](SelectFixture& f) {
                f.drag({160, 100}, {170, 130});
            },
            "0,0 10,30 0,0 0,0");
        row(
            "a line",
            [](SelectFixture& f) {
                f.drag({130, 100}, {130, 130});
            },
            "0,30 0,30 0,0 0,0");
        row(
            "a locked atom that is not selected",
            [](SelectFixture& f) {
                f.drag({100, 300}, {100, 310});
            },
            "0,0 0,0 0,0 0,10");
        row(
            "a locked atom that is selected",
            [](SelectFixture& f) {
                f.shiftClick({100, 300});
                f.drag({160, 300}, {160, 310});
            },
            "0,10 0,0 0,10 0,10");
        row(
            "Control in between",
            [](SelectFixture& f) {
                f.press({100, 100});
                f.move({110, 100});
                f.move({120, 100}, Qt::ControlModifier);
                f.release({120, 100});
            },
            "20,0 10,0 10,0 0,0");
        row(
            "a drag that a right click ends",
            [](SelectFixture& f) {
                f.press({100, 100});
                f.move({110, 100});
                f.press({500, 300}, Qt::NoModifier, Qt::RightButton);
                f.move({130, 100});
                f.release({130, 100});
            },
            "10,0 0,0 10,0 0,0");
    }

    void aDraggedAtomTakesTheSelectionAlong()
    {
        QFETCH(Act, act);
        SelectFixture f;
        f.view->select({f.left, f.lone});
        const QStringList before = f.drawn();
        const KytAtom* const atoms[] = {f.left, f.right, f.lone, f.locked};
        QList<QPointF> places;
        for (const KytAtom* one : atoms)
            places.append(placeOf(one));
        act(f);
        QStringList moved;
        for (int i = 0; i < 4; ++i) {
            const QPoint by = (placeOf(atoms[i]) - places[i]).toPoint();
            moved += QStringLiteral("%1,%2").arg(by.x()).arg(by.y());
        }
        QTEST(moved.join(' '), "moved");
        const QString selected = f.selected();
        QTEST(f.view->undo(), "step");
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
        QCOMPARE(f.selected(), selected);
    }

    void linesAndDepthsAreThoseOfAtomsMovedOneByOne()
    {
        SelectFixture f;
        SelectFixture other;
        for (SelectFixture* each : {&f, &other}) {
            each->bond(each->right, each->lone, {KYTBT_StereoUp}, 33);
            each->view->select({each->right, each->lone});
        }
        f.drag({300, 100}, {280, 140});
        for (const QPointF& by : {QPointF(-10, 20), QPointF(-10, 20)}) // the steps of the drag
            for (KytAtom* one : {other.right, other.lone})
                one->moveBy(by.x(), by.y());
        other.move({280, 140});
        QCOMPARE(snapshotDifference(f.drawn(), other.drawn()), QString());
    }

    void rotatingTurnsTheSelectionAboutTheGrabbedAtom()
    {
        SelectFixture f;
        f.view->select({f.left, f.lone, f.locked});
        f.mode(KYTVS_rotate);
        const QStringList before = f.drawn();
        SelectFixture other;
        rotateAtoms({other.left, other.lone, other.locked, other.lockedEnd}, *other.left, 0.2F);
        rotateAtoms({other.left, other.lone, other.locked, other.lockedEnd}, *other.left, 0.2F);
        f.drag({100, 100}, {104, 180});
        QCOMPARE(placesOf({f.left, f.right, f.lone, f.locked, f.lockedEnd}),
                 placesOf({other.left, other.right, other.lone, other.locked, other.lockedEnd}));
        QVERIFY(f.lone->y() != 100);
        QCOMPARE(f.view->undo(), QString("Rotate"));
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
    }

    void rotatingAsBefore_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("an atom that is not selected") << QPoint(160, 100) << int(Qt::NoModifier);
        QTest::newRow("a selected atom with Control") << QPoint(100, 100) << int(Qt::ControlModifier);
    }

    void rotatingAsBefore()
    {
        QFETCH(QPoint, at);
        QFETCH(int, modifiers);
        QStringList drawn[2];
        for (const bool hasSelection : {false, true}) {
            SelectFixture f;
            if (hasSelection)
                f.view->select({f.left, f.lone});
            f.mode(KYTVS_rotate);
            f.drag(at, at + QPoint(7, 0), Qt::KeyboardModifiers(modifiers));
            drawn[hasSelection] = f.drawn();
        }
        QCOMPARE(snapshotDifference(drawn[0], drawn[1]), QString());
    }

    void onlyTheGrabbedAtomMerges()
    {
        SelectFixture f;
        KytAtom* under = f.atom(400, 200);
        KytAtom* beside = f.atom(460, 200);
        f.history->record("two more");
        f.view->select({f.left, f.right});
        f.drag({100, 100}, {400, 200});
        QVERIFY(!f.isOnCanvas(f.left));
        QVERIFY(under->isConnected(f.right));
        QCOMPARE(placeOf(f.right), QPointF(460, 200));
        QVERIFY(f.isOnCanvas(beside));
        QCOMPARE(f.selected(), QString("right"));
        QCOMPARE(f.view->undo(), QString("Move"));
        QCOMPARE(f.atoms().size(), 7);
    }

    void whatMovesAlongIsNoTarget()
    {
        SelectFixture f;
        KytAtom* above = f.atom(300, 100);
        f.history->record("one more");
        f.view->select({f.lone, above});
        f.drag({300, 100}, {320, 120});
        QCOMPARE(placesOf({f.lone, above}), (Places{{320, 120}, {320, 120}}));
        f.view->clearSelection();
        f.drag({320, 120}, {320, 120}); // as ever
        QCOMPARE(f.atoms().size(), 5);
    }

    void deleteActsOnTheSelection()
    {
        SelectFixture f;
        const QStringList before = f.drawn();
        const auto steps = f.history->undoCount();
        f.view->select({f.left, f.locked});
        QSignalSpy changes(f.view, &KytStudioView::selectionChanged);
        f.move({300, 100}); // the pointer is elsewhere
        f.view->deleteSelected();
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.right, f.lone}));
        QCOMPARE(f.selected(), QString());
        QCOMPARE(changes.count(), 1);
        QCOMPARE(moleculeFault(*f.canvas()), QString());
        QCOMPARE(f.history->undoCount(), steps + 1);
        QCOMPARE(f.view->undo(), QString("Delete Item"));
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
        QCOMPARE(f.selected(), QString());
        f.view->deleteSelected(); // without a selection, what is under the pointer
        QCOMPARE(f.atoms().size(), 4);
    }

    void deleteNeedsNoPointerForASelection()
    {
        SelectFixture f;
        f.view->selectAll();
        f.view->deleteSelected();
        QVERIFY(f.drawn().isEmpty());
    }

    void escapeCancelsARectangleAndKeepsTheSelection()
    {
        SelectFixture f;
        f.shiftClick({300, 100});
        f.press({80, 80}, Qt::ShiftModifier);
        f.move({200, 120}, Qt::ShiftModifier);
        QCOMPARE(f.view->cancelGesture(), QString("Select"));
        f.move({210, 130}, Qt::ShiftModifier);
        f.release({210, 130}, Qt::ShiftModifier);
        QCOMPARE(f.selected(), QString("lone"));
        QVERIFY(f.view->cancelGesture().isNull());
    }

    void undoCancelsARectangleAndNothingElse()
    {
        SelectFixture f;
        f.press({80, 80}, Qt::ShiftModifier);
        f.move({200, 120}, Qt::ShiftModifier);
        const auto steps = f.history->undoCount();
        QCOMPARE(f.view->undo(), QString("Select"));
        QCOMPARE(f.history->undoCount(), steps);
        f.release({200, 120}, Qt::ShiftModifier);
        QCOMPARE(f.selected(), QString());
    }

    void somethingElseEndsARectangle_data()
    {
        QTest::addColumn<Act>("act");
        QTest::newRow("another window") << Act([](SelectFixture& f) {
            QEvent event(QEvent::WindowDeactivate);
            QApplication::sendEvent(f.view, &event);
        });
        QTest::newRow("a right click") << Act([](SelectFixture& f) { f.rightClick({500, 300}); });
        QTest::newRow("a command") << Act([](SelectFixture& f) { f.view->settleGesture(); });
    }

    void somethingElseEndsARectangle()
    {
        QFETCH(Act, act);
        SelectFixture f;
        const QImage before = f.shown();
        f.press({80, 80}, Qt::ShiftModifier);
        f.move({200, 120}, Qt::ShiftModifier);
        QVERIFY(f.shown() != before);
        act(f);
        QCOMPARE(f.shown(), before);
        f.release({200, 120}, Qt::ShiftModifier);
        QCOMPARE(f.selected(), QString());
    }

    void anotherButtonDoesNotEndARectangle()
    {
        SelectFixture f;
        f.press({80, 80}, Qt::ShiftModifier);
        f.press({90, 90}, Qt::ShiftModifier, Qt::MiddleButton);
        f.release({90, 90}, Qt::ShiftModifier, Qt::MiddleButton);
        f.move({200, 120});
        f.release({200, 120});
        QCOMPARE(f.selected(), QString("left right"));
    }

    void aRectangleOutlivesAChangeOfTheMode()
    {
        SelectFixture f;
        f.press({80, 80}, Qt::ShiftModifier);
        f.mode(KYTVS_zigzag);
        f.move({200, 120}, Qt::ShiftModifier);
        f.release({200, 120}, Qt::ShiftModifier);
        QCOMPARE(f.selected(), QString("left right"));
        QCOMPARE(f.gesture(), QString("none"));
    }

    void halosAreShownAndLeaveNothingBehind()
    {
        SelectFixture f;
        f.move({600, 400});
        const auto onScreen = [&f] {
            f.canvas()->update();
            QApplication::processEvents();
            const QPoint corner = f.view->viewport()->mapToGlobal(QPoint(0, 0));
            const QSize size = f.view->viewport()->size();
            return f.view->screen()->grabWindow(0, corner.x(), corner.y(), size.width(), size.height()).toImage();
        };
        const QImage before = onScreen();
        f.view->select({f.left, f.lone});
        const QImage selected = onScreen();
        QVERIFY(selected != before);
        f.press({300, 100});
        for (int x = 300; x <= 400; x += 4) // in steps that overlap
            f.move({x, 100 + x / 10});
        f.release({400, 140});
        f.move({600, 400});
        f.view->undo();
        QCOMPARE(onScreen(), selected);
        f.press({500, 20}, Qt::ShiftModifier);
        f.move({420, 60}, Qt::ShiftModifier);
        QVERIFY(onScreen() != selected);
        f.move({600, 400}, Qt::ShiftModifier);
        f.view->cancelGesture();
        QCOMPARE(onScreen(), selected);
        f.view->clearSelection();
        QCOMPARE(onScreen(), before);
    }

    void aLargeSelectionMovesAndGoesAtOnce()
    {
        const LargeDrawing drawing = large::sheet(100000, false);
        const QTemporaryDir folder;
        QVERIFY(writeWorkspace(drawing, folder.filePath("drawing.kyt")));
        Drawing d;
        KytStudioView view(nullptr, d.doc);
        QVERIFY(d.doc->load(folder.filePath("drawing.kyt"), false));
        QList<KytAtom*> atoms = d.atoms();
        KytAtom* left = atoms.takeLast();
        const QPointF before = placeOf(atoms.first());
        view.select(atoms);
        view.moving = atoms.first();
        view.moving_start = QPoint(0, 0);
        QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, Qt::LeftButton, {});
        view.contentsMouseMoveEvent(&move);
        view.moving = nullptr;
        QCOMPARE(placeOf(atoms.first()), before + QPointF(1, 1));
        view.deleteSelected();
        QCOMPARE(d.atoms(), QList<KytAtom*>{left});
    }
};

QTEST_MAIN(test_kytstudioview_select)
#include "test_kytstudioview_select.moc"
