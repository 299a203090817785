#include "TestWindow.h"

#include "app/KytAtomProperties.h"
#include "app/StateLabel.h"
#include "history/KytHistory.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>

namespace {

/// A shown main window with an atom, and the pointer on it.
class KeysWindow : public TestWindow {
public:
    KeysWindow()
        : isShown(show())
        , one(atom(100, 100))
    {
        (*this)->view->recordStep("an atom");
        point({100, 100});
    }

    void point(const QPoint& at) const
    {
        QWidget* paper = (*this)->view->viewport();
        QMouseEvent move(QEvent::MouseMove, QPointF(at), paper->mapToGlobal(QPointF(at)), Qt::NoButton, {}, {});
        QApplication::sendEvent(paper, &move);
    }

    /// A key at a time of the X server, in milliseconds.
    void press(Qt::Key key, quint64 time, Qt::KeyboardModifiers modifiers = {}, bool isRepeated = false) const
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), isRepeated);
        event.setTimestamp(time);
        QApplication::sendEvent((*this)->view, &event);
    }

    bool isShown;
    KytAtom* one;
};

QString stateOf(const TestWindow& window)
{
    return window->findChild<StateLabel*>()->wholeText();
}

using Focus = QWidget* (*)(const KeysWindow&);

} // namespace

class test_kytstudio_keys : public QObject {
    Q_OBJECT

private slots:
    void keysWorkWhereverTheFocusIs_data()
    {
        QTest::addColumn<Focus>("focus");
        QTest::newRow("the window") << Focus([](const KeysWindow& w) -> QWidget* { return w.get(); });
        QTest::newRow("the view") << Focus([](const KeysWindow& w) -> QWidget* { return w->view; });
        QTest::newRow("the paper") << Focus([](const KeysWindow& w) -> QWidget* { return w->view->viewport(); });
        QTest::newRow("a button") << Focus(
            [](const KeysWindow& w) { return w->libraryToolBar->widgetForAction(w->kyfWater); });
        QTest::newRow("a toolbar") << Focus([](const KeysWindow& w) -> QWidget* { return w->fileToolbar; });
        QTest::newRow("a floating toolbar") << Focus([](const KeysWindow& w) -> QWidget* {
            w->libraryToolBar->setWindowFlags(Qt::Tool);
            w->libraryToolBar->show();
            return w->libraryToolBar->widgetForAction(w->kyfWater);
        });
        QTest::newRow("a scroll bar") << Focus(
            [](const KeysWindow& w) -> QWidget* { return w->view->verticalScrollBar(); });
        QTest::newRow("the status bar") << Focus([](const KeysWindow& w) -> QWidget* { return w->statusBar(); });
    }

    void keysWorkWhereverTheFocusIs()
    {
        QFETCH(Focus, focus);
        const KeysWindow w;
        QVERIFY(w.isShown);
        QWidget* widget = focus(w);
        w.point({100, 100});
        QTest::keyClick(widget, Qt::Key_N);
        QCOMPARE(w.one->symbol, QString("N"));
        QTest::keyClick(widget, Qt::Key_Delete);
        QVERIFY(w.atoms().isEmpty());
    }

    void theTimeOfAKeyIsThatOfItsPress()
    {
        const KeysWindow w;
        w.press(Qt::Key_C, 5000);
        w.press(Qt::Key_L, 5800);
        QCOMPARE(w.one->symbol, QString("Cl"));
        w.press(Qt::Key_C, 7000);
        w.press(Qt::Key_O, 7801);
        QCOMPARE(w.one->symbol, QString("O"));
        w.press(Qt::Key_B, 9000, Qt::ShiftModifier);
        w.press(Qt::Key_R, 9100);
        QCOMPARE(w.one->symbol, QString("Br"));
    }

    void keysThatDoNothing_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<bool>("isRepeated");
        QTest::newRow("a held letter") << int(Qt::Key_N) << int(Qt::NoModifier) << true;
        QTest::newRow("a held Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier) << true;
        QTest::newRow("Alt and a letter") << int(Qt::Key_N) << int(Qt::AltModifier) << false;
        QTest::newRow("Meta and a letter") << int(Qt::Key_N) << int(Qt::MetaModifier) << false;
        QTest::newRow("Shift+Delete") << int(Qt::Key_Delete) << int(Qt::ShiftModifier) << false;
        QTest::newRow("Ctrl+Backspace") << int(Qt::Key_Backspace) << int(Qt::ControlModifier) << false;
        QTest::newRow("a letter of no element") << int(Qt::Key_J) << int(Qt::NoModifier) << false;
        QTest::newRow("a letter with an accent") << int(Qt::Key_Ntilde) << int(Qt::NoModifier) << false;
        QTest::newRow("Insert") << int(Qt::Key_Insert) << int(Qt::NoModifier) << false;
    }

    void keysThatDoNothing()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(bool, isRepeated);
        const KeysWindow w;
        w.press(Qt::Key(key), 1000, Qt::KeyboardModifiers(modifiers), isRepeated);
        QCOMPARE(w.atoms().size(), 1);
        QCOMPARE(w.one->symbol, QString("C"));
        QCOMPARE(w->view->history->undoCount(), 1);
    }

    void bothKeysDelete_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("Delete") << int(Qt::Key_Delete) << int(Qt::NoModifier);
        QTest::newRow("Backspace") << int(Qt::Key_Backspace) << int(Qt::NoModifier);
        QTest::newRow("Delete of the keypad") << int(Qt::Key_Delete) << int(Qt::KeypadModifier);
    }

    void bothKeysDelete()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        const KeysWindow w;
        w.press(Qt::Key(key), 1000, Qt::KeyboardModifiers(modifiers));
        QVERIFY(w.atoms().isEmpty());
        QTest::keyClick(w.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(w), QString("Undone: Delete Item"));
        QCOMPARE(w.atoms().size(), 1);
    }

    void undoNamesTheElement()
    {
        const KeysWindow w;
        QTest::keyClick(w.get(), Qt::Key_S);
        QTest::keyClick(w.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(w), QString("Undone: Element"));
        QCOMPARE(w.one->symbol, QString("C"));
    }

    void keysSelectAndActOnTheSelection()
    {
        const KeysWindow w;
        KytAtom* other = w.atom(200, 100);
        w->view->recordStep("another atom");
        const QString state = stateOf(w);
        QTest::keyClick(w.get(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(w->view->selectedAtoms(), (QList<KytAtom*>{w.one, other}));
        QVERIFY2(stateOf(w).contains(" \u00b7 2 selected \u00b7 ") || stateOf(w).endsWith(" \u00b7 2 selected"),
                 qPrintable(stateOf(w)));
        QTest::keyClick(w.get(), Qt::Key_Escape);
        QCOMPARE(stateOf(w), state);
        QVERIFY(w->view->selectedAtoms().isEmpty());
        QTest::keyClick(w.get(), Qt::Key_A, Qt::ControlModifier);
        w.point({300, 300});
        QTest::keyClick(w.get(), Qt::Key_Backspace);
        QVERIFY(w.atoms().isEmpty());
        QTest::keyClick(w.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(w), QString("Undone: Delete Item"));
        QCOMPARE(w.atoms().size(), 2);
    }

    void escapeCancelsAGestureBeforeItClears()
    {
        const KeysWindow w;
        w->view->selectAll();
        w->drawBond->trigger();
        QTest::mouseClick(w->view->viewport(), Qt::LeftButton, {}, QPoint(200, 200));
        QTest::keyClick(w.get(), Qt::Key_Escape);
        QCOMPARE(w.atoms().size(), 1);
        QCOMPARE(w->view->selectedAtoms().size(), 1);
        QTest::keyClick(w.get(), Qt::Key_Escape);
        QVERIFY(w->view->selectedAtoms().isEmpty());
    }

    void elementsAreSetUnderThePointerAlone()
    {
        const KeysWindow w;
        const KytAtom* other = w.atom(200, 100);
        w->view->selectAll();
        QTest::keyClick(w.get(), Qt::Key_N);
        QCOMPARE(w.one->symbol, QString("N"));
        QCOMPARE(other->symbol, QString("C"));
    }

    void newLeavesNoSelection()
    {
        const KeysWindow w;
        w->view->selectAll();
        w->fileNew->trigger();
        QVERIFY(w->view->selectedAtoms().isEmpty());
        QTest::keyClick(w.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(w.atoms().size(), 1);
        QVERIFY(w->view->selectedAtoms().isEmpty());
        QVERIFY(!stateOf(w).contains("selected"));
    }

    void theMenuBarKeepsItsLetters()
    {
        const KeysWindow w;
        w->menuBar()->setFocus(Qt::MenuBarFocusReason);
        const QSignalSpy opened(w->pFileMenu, &QMenu::aboutToShow);
        QTest::keyClick(w->menuBar(), Qt::Key_F);
        w->pFileMenu->hide();
        QCOMPARE(w.one->symbol, QString("C"));
        QCOMPARE(opened.count(), 1);
    }

    void dialogsKeepTheirKeys()
    {
        const KeysWindow w;
        ModalSteps steps;
        QString typed;
        steps.then<KytAtomProperties>([&typed](KytAtomProperties* dialog) {
            dialog->lineEdit_name->selectAll();
            QTest::keyClick(dialog->lineEdit_name, Qt::Key_Backspace);
            QTest::keyClicks(dialog->lineEdit_name, "Nx");
            typed = dialog->lineEdit_name->text();
            dialog->reject();
        });
        QTest::mouseClick(w->view->viewport(), Qt::RightButton, {}, QPoint(100, 100));
        QCOMPARE(steps.fault(), QString());
        QCOMPARE(typed, QString("Nx"));
        QCOMPARE(w.one->symbol, QString("C"));
    }

    void keysWorkAfterADialogBeforeThePointerMoves()
    {
        const KeysWindow w;
        QTest::mouseMove(w->view->viewport(), QPoint(100, 100));
        QTRY_VERIFY(w->view->viewport()->underMouse());
        QEvent leave(QEvent::Leave); // of the pointer, into the dialog
        QApplication::sendEvent(w->view->viewport(), &leave);
        QEnterEvent enter(QPointF(100, 100), QPointF(100, 100), w->view->viewport()->mapToGlobal(QPointF(100, 100)));
        QApplication::sendEvent(w->view->viewport(), &enter);
        w->view->viewport()->setAttribute(Qt::WA_UnderMouse);
        QTest::keyClick(w.get(), Qt::Key_F);
        QCOMPARE(w.one->symbol, QString("F"));
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_keys>(argc, argv);
}
#include "test_kytstudio_keys.moc"
