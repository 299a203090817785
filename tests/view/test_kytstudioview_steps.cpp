#include "tests/view/StepsFixture.h"

#include <QSignalSpy>

namespace {

using Gesture = void (*)(StepsFixture&);

} // namespace

class test_kytstudioview_steps : public QObject {
    Q_OBJECT

private slots:
    void eachGestureIsAStep_data()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::addColumn<QStringList>("steps");
        const auto row = [](const char* name, Gesture gesture, const QStringList& steps) {
            QTest::newRow(name) << gesture << steps;
        };
        row("a bond between new atoms",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({200, 200});
                f.click({240, 200});
            },
            {"Draw Bond"});
        row("a dashed bond to an atom",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawDashedBond);
                f.click({100, 100});
                f.click({300, 100});
            },
            {"Add Dashed Bond"});
        row("a second line",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({100, 100});
                f.click({160, 100});
            },
            {"Draw Bond"});
        row("wedges",
            [](StepsFixture& f) {
                for (const KytViewState state : wedgeModes) {
                    f.mode(state);
                    f.click({100, 100});
                    f.click({100, state == KYTVS_drawStereoUp ? 150 : 60});
                }
            },
            {"Add Stereo Bond", "Add Stereo Bond"});
        row("a chain",
            [](StepsFixture& f) {
                f.mode(KYTVS_zigzag);
                f.click({200, 300});
                f.click({400, 300});
            },
            {"Zig Zag Structure"});
        row("a polyline drawn with Control",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({200, 200});
                f.click({240, 200}, Qt::ControlModifier);
                f.click({240, 240}, Qt::ControlModifier);
                f.click({200, 240});
            },
            {"Draw Bond", "Draw Bond", "Draw Bond"});
        row("a first click that stays alone, and a drag",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({200, 200});
                f.mode(KYTVS_view);
                f.drag({300, 100}, {310, 120});
            },
            {"Draw Bond", "Move"});
        row("a first click on an atom, and a drag",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({100, 100});
                f.mode(KYTVS_view);
                f.drag({300, 100}, {310, 120});
            },
            {"Move"});
        row("a first click in one mode and the second in another",
            [](StepsFixture& f) {
                f.mode(KYTVS_drawSimpleBond);
                f.click({200, 200});
                f.mode(KYTVS_drawDashedBond);
                f.click({240, 200});
            },
            {"Add Dashed Bond"});
        row("a drag of an atom", [](StepsFixture& f) { f.drag({300, 100}, {310, 120}); }, {"Move"});
        row("a drag of a molecule",
            [](StepsFixture& f) {
                f.drag({100, 100}, {110, 120}, Qt::ControlModifier);
            },
            {"Move"});
        row("a drag of a bond", [](StepsFixture& f) { f.drag({130, 100}, {130, 120}); }, {"Move"});
        row("a drag of a label",
            [](StepsFixture& f) {
                f.drag(StepsFixture::onLabel(f.lone), StepsFixture::onLabel(f.lone) + QPoint(20, 0));
            },
            {"Move"});
        row("a drag with a merge at its end", [](StepsFixture& f) { f.drag({300, 100}, {160, 100}); }, {"Move"});
        row("a drag that moves nothing", [](StepsFixture& f) { f.drag({300, 100}, {300, 100}); }, {});
        row("a drag there and back", [](StepsFixture& f) { f.dragAlong({{300, 100}, {320, 110}, {300, 100}}); }, {});
        row("a drag of the empty paper", [](StepsFixture& f) { f.drag({500, 300}, {520, 300}); }, {});
        row("a rotation",
            [](StepsFixture& f) {
                f.mode(KYTVS_rotate);
                f.drag({100, 100}, {107, 100});
            },
            {"Rotate"});
        row("deletions",
            [](StepsFixture& f) {
                f.mode(KYTVS_deleteItem);
                f.click({300, 100});
                f.click({130, 100});
                f.click({500, 300});
            },
            {"Delete Item", "Delete Item"});
        row("a drag that a right click ends",
            [](StepsFixture& f) {
                f.press({300, 100});
                f.move({320, 120});
                f.press({500, 300}, Qt::NoModifier, Qt::RightButton);
                f.move({400, 300});
                f.release({400, 300});
            },
            {"Move"});
    }

    void eachGestureIsAStep()
    {
        QFETCH(Gesture, gesture);
        QFETCH(QStringList, steps);
        StepsFixture f;
        const QStringList before = f.drawn();
        const QSignalSpy changes(f.view, &KytStudioView::drawingChanged);
        gesture(f);
        QCOMPARE(f.history->undoCount(), steps.size());
        QCOMPARE(changes.count(), steps.size());
        const QStringList after = f.drawn();
        for (auto step = steps.crbegin(); step != steps.crend(); ++step)
            QCOMPARE(f.view->undo(), *step);
        QCOMPARE(snapshotDifference(f.drawn(), before), QString());
        QVERIFY(f.view->undo().isNull());
        for (const QString& step : steps)
            QCOMPARE(f.view->redo(), step);
        QCOMPARE(snapshotDifference(f.drawn(), after), QString());
        QVERIFY(f.view->redo().isNull());
    }

    void aGestureUnderWayIsTakenBack_data()
    {
        QTest::addColumn<Gesture>("gesture");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("stepsBefore");
        QTest::newRow("a first click") << Gesture([](StepsFixture& f) {
            f.mode(KYTVS_drawSimpleBond);
            f.click({200, 200});
        }) << "Draw Bond" << 0;
        QTest::newRow("a first click on an atom") << Gesture([](StepsFixture& f) {
            f.mode(KYTVS_zigzag);
            f.click({100, 100});
        }) << "Zig Zag Structure" << 0;
        QTest::newRow("a polyline that goes on") << Gesture([](StepsFixture& f) {
            f.mode(KYTVS_drawSimpleBond);
            f.click({200, 200});
            f.click({240, 200}, Qt::ControlModifier);
        }) << "Draw Bond" << 1;
        QTest::newRow("a drag") << Gesture([](StepsFixture& f) {
            f.press({300, 100});
            f.move({340, 140});
        }) << "Move" << 0;
        QTest::newRow("a drag of a molecule, with wedges behind it") << Gesture([](StepsFixture& f) {
            f.bond(f.right, f.lone, {KYTBT_StereoUp}, 33);
            f.history->record("a wedge");
            f.press({100, 100}, Qt::ControlModifier);
            f.move({107, 111}, Qt::ControlModifier);
            f.move({117, 131}, Qt::ControlModifier);
        }) << "Move" << 1;
        QTest::newRow("a rotation") << Gesture([](StepsFixture& f) {
            f.mode(KYTVS_rotate);
            f.press({100, 100});
            f.move({110, 100});
        }) << "Rotate" << 0;
        QTest::newRow("a press that has moved nothing") << Gesture([](StepsFixture& f) {
            f.press({300, 100});
        }) << "Move" << 0;
    }

    void aGestureUnderWayIsTakenBack()
    {
        QFETCH(Gesture, gesture);
        QFETCH(QString, name);
        QFETCH(int, stepsBefore);
        const bool takesStep = QByteArray(QTest::currentDataTag()) == "a polyline that goes on";
        for (const bool byUndo : {true, false}) {
            StepsFixture f;
            gesture(f);
            StepsFixture untouched; // as it is with the steps that were finished
            QCOMPARE(byUndo ? f.view->undo() : f.view->cancelGesture(), name);
            QCOMPARE(f.gesture(), QString("none"));
            QVERIFY(!f.view->moving);
            QVERIFY(!f.view->lastAtom);
            // A step of the gesture itself goes with it when it is undone.
            QCOMPARE(f.history->undoCount(), byUndo && takesStep ? stepsBefore - 1 : stepsBefore);
            while (!f.view->undo().isNull()) { }
            QCOMPARE(snapshotDifference(f.drawn(), untouched.drawn()), QString());
            const QStringList before = f.drawn();
            f.move({340, 160});
            f.release({340, 160});
            QCOMPARE(f.drawn(), before);
        }
    }

    void cancellingKeepsWhatCanBeRedone()
    {
        StepsFixture f;
        f.drag({300, 100}, {310, 120});
        f.view->undo();
        f.press({300, 100});
        f.move({350, 100});
        f.view->cancelGesture();
        QCOMPARE(f.view->redo(), QString("Move"));
        QCOMPARE(f.lone->x(), 310.0);
    }

    void redoCancelsAGestureAndGoesOn()
    {
        StepsFixture f;
        f.drag({300, 100}, {310, 120});
        f.view->undo();
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        QCOMPARE(f.view->redo(), QString("Move"));
        QCOMPARE(f.gesture(), QString("none"));
        QCOMPARE(f.atoms().size(), 3);
    }

    void theViewRemembersNothingThatHasGone()
    {
        StepsFixture f;
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.click({240, 200});
        f.move({240, 200});
        QVERIFY(f.view->hover);
        f.view->undo();
        QVERIFY(!f.view->lastAtom);
        QVERIFY(!f.view->hover);
        f.click({200, 200});
        QCOMPARE(f.gesture(), QString("begun"));
    }

    void whatIsDrawnAfterwardsIsTheSame()
    {
        QStringList drawn[2];
        for (const bool thereAndBack : {false, true}) {
            StepsFixture f;
            f.mode(KYTVS_drawStereoUp);
            f.click({160, 100});
            f.click({200, 140});
            f.mode(KYTVS_deleteItem);
            f.click({100, 100});
            if (thereAndBack) {
                while (!f.view->undo().isNull()) { }
                while (!f.view->redo().isNull()) { }
            }
            f.mode(KYTVS_drawSimpleBond);
            f.click({160, 100});
            f.click({300, 100});
            f.mode(KYTVS_view);
            f.drag({160, 100}, {150, 90}, Qt::ControlModifier);
            f.drag({200, 140}, {140, 90});
            drawn[thereAndBack] = f.drawn();
        }
        QCOMPARE(snapshotDifference(drawn[0], drawn[1]), QString());
    }

    void whatTakesThePointerAwayEndsADrag_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::newRow("another window") << QEvent::WindowDeactivate;
        QTest::newRow("a dialog") << QEvent::WindowBlocked;
        QTest::newRow("hiding") << QEvent::Hide;
        QTest::newRow("a menu") << QEvent::FocusOut;
    }

    void whatTakesThePointerAwayEndsADrag()
    {
        QFETCH(QEvent::Type, type);
        StepsFixture f;
        f.press({300, 100});
        f.move({320, 120});
        QEvent plain(type);
        QFocusEvent focus(QEvent::FocusOut, Qt::PopupFocusReason);
        QApplication::sendEvent(f.view, type == QEvent::FocusOut ? &focus : &plain);
        QVERIFY(!f.view->moving);
        f.move({400, 200});
        QCOMPARE(QPointF(f.lone->x(), f.lone->y()), QPointF(320, 120));
        QCOMPARE(f.view->undo(), QString("Move"));
    }

    void aBondOutlivesWhatTakesThePointerAway()
    {
        StepsFixture f;
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        QEvent event(QEvent::WindowDeactivate);
        QApplication::sendEvent(f.view, &event);
        QCOMPARE(f.gesture(), QString("begun"));
    }

    void withoutAHistoryTheGesturesWorkAndNothingIsUndone()
    {
        StepsFixture f;
        f.view->history = nullptr;
        f.drag({300, 100}, {310, 120});
        QVERIFY(f.view->undo().isNull());
        QVERIFY(f.view->redo().isNull());
        f.mode(KYTVS_drawSimpleBond);
        f.click({200, 200});
        QCOMPARE(f.view->cancelGesture(), QString("Draw Bond"));
        QCOMPARE(f.gesture(), QString("none"));
    }

    void thePointersAtomsAreTold()
    {
        StepsFixture f;
        KytAtom* top = f.atom(300, 100);
        const KytAtom* told = nullptr;
        int count = -1;
        QObject::connect(f.view, &KytStudioView::pointerOver, [&](const KytAtom* atom, int atoms) {
            told = atom;
            count = atoms;
        });
        f.move({300, 100});
        QCOMPARE(told, top);
        QCOMPARE(count, 2);
        f.move({100, 100});
        QCOMPARE(told, f.left);
        QCOMPARE(count, 1);
        delete f.left;
        QCOMPARE(told, nullptr);
        QCOMPARE(count, 0);
    }
};

QTEST_MAIN(test_kytstudioview_steps)
#include "test_kytstudioview_steps.moc"
