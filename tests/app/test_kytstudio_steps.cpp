#include "FileDialogs.h"

#include "tests/support/Snapshot.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QShortcut>

namespace {

/// A shown main window with two bonded atoms, in a folder of its own with a workspace, a template and the library.
class StepsWindow : public TestWindow {
public:
    StepsWindow()
    {
        for (const char* name : {"a.kyt", "a.kyf"})
            writeFile(folder.path(name), atomsInAFile(2));
        QDir().mkpath(folder.path("lib"));
        for (const char* name : {"water", "prop", "megaphon", "hexane", "cubane", "benzene"})
            writeFile(folder.path(QStringLiteral("lib/%1.kyf").arg(name)), atomsInAFile(1));
        drawFirst();
        isShown = show();
    }

    QStringList drawn() const { return snapshotOf(*canvas(), tempBond); }
    QStringList titles() const { return {(*this)->doc->docName, (*this)->windowTitle()}; }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) const
    {
        // After a dialog it takes the window manager a moment; without the keyboard no shortcut is one.
        if (!QTest::qWaitForWindowActive(get()))
            qFatal("The window does not get the keyboard");
        QTest::keyClick(get(), key, modifiers);
    }
    /// What the status bar says after Ctrl+Z and after Ctrl+Y.
    QString undone() const { return pressed(Qt::Key_Z); }
    QString redone() const { return pressed(Qt::Key_Y); }

    const WorkingFolder folder;
    bool isShown = false;

private:
    void drawFirst()
    {
        // By gestures, so that it is a step.
        (*this)->drawBond->trigger();
        for (const QPoint& at : {QPoint(100, 100), QPoint(160, 100)})
            QTest::mouseClick((*this)->view->viewport(), Qt::LeftButton, {}, at);
        (*this)->viewMode->trigger();
    }

    QString pressed(Qt::Key key) const
    {
        press(key);
        return QStringLiteral("%1|%2").arg(message(*this)).arg(timeOut(*this));
    }
};

using Command = void (*)(StepsWindow&);

void accept(StepsWindow& window, const FileCommand& command, const char* name)
{
    QCOMPARE(choose(window, command, window.folder.path(name)), QString());
}

} // namespace

class test_kytstudio_steps : public QObject {
    Q_OBJECT

private slots:
    void init() { QVERIFY(StepsWindow().isShown); }

    void eachCommandIsAStep_data()
    {
        QTest::addColumn<Command>("command");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* name, Command command) { QTest::newRow(name) << command << QString(name); };
        row("New File", [](StepsWindow& w) { w->fileNew->trigger(); });
        row("Open File", [](StepsWindow& w) { accept(w, openCommand, "a.kyt"); });
        row("Close File", [](StepsWindow& w) { QCOMPARE(closeWith(w, QMessageBox::No), QString()); });
        row("Insert Molecule from Templates", [](StepsWindow& w) { accept(w, insertCommand, "a.kyf"); });
        row("Import Molecule from File", [](StepsWindow& w) { accept(w, importCommand, "a.kyt"); });
        row("Water", [](StepsWindow& w) { w->kyfWater->trigger(); });
        row("Prop", [](StepsWindow& w) { w->kyfProp->trigger(); });
        row("Megaphon", [](StepsWindow& w) { w->kyfMegaphon->trigger(); });
        row("Hexane", [](StepsWindow& w) { w->kyfHexane->trigger(); });
        row("Cubane", [](StepsWindow& w) { w->kyfCubane->trigger(); });
        row("Benzene", [](StepsWindow& w) { w->kyfBenzene->trigger(); });
    }

    void eachCommandIsAStep()
    {
        QFETCH(Command, command);
        QFETCH(QString, name);
        StepsWindow window;
        const QStringList before = window.drawn();
        const QStringList titlesBefore = window.titles();
        command(window);
        const QStringList after = window.drawn();
        const QStringList titlesAfter = window.titles();
        QVERIFY(before != after);
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(window.undone(), QStringLiteral("Undone: %1|4000").arg(name));
            QCOMPARE(snapshotDifference(window.drawn(), before), QString());
            QCOMPARE(window.titles(), titlesBefore);
            QCOMPARE(window.redone(), QStringLiteral("Redone: %1|4000").arg(name));
            QCOMPARE(snapshotDifference(window.drawn(), after), QString());
            QCOMPARE(window.titles(), titlesAfter);
        }
    }

    void whatChangesNothingIsNoStep_data()
    {
        QTest::addColumn<Command>("command");
        QTest::newRow("cancelled Insert") << Command([](StepsWindow& w) { QCOMPARE(cancel(w, insertCommand), ""); });
        QTest::newRow("cancelled Import") << Command([](StepsWindow& w) { QCOMPARE(cancel(w, importCommand), ""); });
        QTest::newRow("cancelled Close") << Command(
            [](StepsWindow& w) { QCOMPARE(closeWith(w, QMessageBox::Cancel), ""); });
        QTest::newRow("Save As") << Command([](StepsWindow& w) { accept(w, saveAsCommand, "b"); });
        QTest::newRow("a mode") << Command([](StepsWindow& w) { w->drawBond->trigger(); });
        QTest::newRow("a missing template") << Command([](StepsWindow& w) {
            QVERIFY(QFile::remove(w.folder.path("lib/water.kyf")));
            const LoggedMessages messages;
            w->kyfWater->trigger();
        });
    }

    void whatChangesNothingIsNoStep()
    {
        QFETCH(Command, command);
        StepsWindow window;
        command(window);
        QCOMPARE(window.undone(), QString("Undone: Draw Bond|4000"));
        QCOMPARE(window.undone(), QString("Nothing to undo|4000"));
        QCOMPARE(window.redone(), QString("Redone: Draw Bond|4000"));
        QCOMPARE(window.redone(), QString("Nothing to redo|4000"));
    }

    void aCancelledOpenIsAStepOfTheNameAlone()
    {
        StepsWindow window;
        const QStringList before = window.drawn();
        QCOMPARE(cancel(window, openCommand), QString());
        QCOMPARE(window->doc->docName, QString());
        QCOMPARE(window.undone(), QString("Undone: Open File|4000"));
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        QCOMPARE(snapshotDifference(window.drawn(), before), QString());
        QCOMPARE(window.redone(), QString("Redone: Open File|4000"));
        QCOMPARE(window->doc->docName, QString());
    }

    void aNameSetBySavingStays()
    {
        StepsWindow window;
        const QString saved = window.folder.path("mine");
        QCOMPARE(choose(window, saveCommand, saved), QString());
        QCOMPARE(window->doc->docName, saved + ".kyt");
        window.undone();
        QCOMPARE(window->doc->docName, saved + ".kyt");
        accept(window, openCommand, "a.kyt");
        window.undone();
        QCOMPARE(window->doc->docName, saved + ".kyt");
    }

    void aSaveAfterUndoWritesWhatWasThereBefore()
    {
        StepsWindow window;
        accept(window, saveAsCommand, "before");
        window->kyfWater->trigger();
        window.undone();
        accept(window, saveAsCommand, "after");
        QCOMPARE(readFile(window.folder.path("after.kyt")), readFile(window.folder.path("before.kyt")));
    }

    void eachKeyActs_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("shown");
        const int control = Qt::ControlModifier;
        QTest::newRow("undo") << int(Qt::Key_Z) << control << "Undone: Water";
        QTest::newRow("redo") << int(Qt::Key_Z) << (control | int(Qt::ShiftModifier)) << "Redone: Prop";
        QTest::newRow("redo again") << int(Qt::Key_Y) << control << "Redone: Prop";
    }

    void eachKeyActs()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, shown);
        StepsWindow window;
        window->kyfWater->trigger();
        window->kyfProp->trigger();
        window.undone();
        window.press(Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(message(window), shown);
    }

    void zoomHasKeys_data()
    {
        QTest::addColumn<QList<int>>("keys");
        QTest::addColumn<double>("zoom");
        QTest::newRow("in") << QList<int>{Qt::Key_Plus} << 1.25;
        QTest::newRow("in, without Shift") << QList<int>{Qt::Key_Equal, Qt::Key_Equal} << 1.5;
        QTest::newRow("out") << QList<int>{Qt::Key_Minus} << 0.75;
        QTest::newRow("full size") << QList<int>{Qt::Key_Minus, Qt::Key_Minus, Qt::Key_0} << 1.0;
        QTest::newRow("the drawing") << QList<int>{Qt::Key_Plus, Qt::Key_9} << 1.0;
    }

    void zoomHasKeys()
    {
        QFETCH(QList<int>, keys);
        StepsWindow window;
        for (const int key : keys)
            window.press(Qt::Key(key));
        QTEST(window->view->zoom(), "zoom");
    }

    void digitsSelectModesAndSwitches_data()
    {
        QTest::addColumn<QAction * KytStudioApp::*>("action");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("toolTip");
        const auto row = [](QAction* KytStudioApp::*action, int key, const char* toolTip) {
            QTest::newRow(qPrintable(QString(QChar(key)))) << action << key << QString(toolTip);
        };
        row(&KytStudioApp::viewMode, Qt::Key_1, "View Mode (Ctrl+V, 1)");
        row(&KytStudioApp::rotateMode, Qt::Key_2, "Rotate Mode (Ctrl+V, 2)");
        row(&KytStudioApp::drawBond, Qt::Key_3, "Draw Bond (Ctrl+B, 3)");
        row(&KytStudioApp::drawDashedBond, Qt::Key_4, "Add Dashed Bond (Ctrl+D, 4)");
        row(&KytStudioApp::drawStereoUp, Qt::Key_5, "Add Stereo Bond (Ctrl+D, 5)");
        row(&KytStudioApp::drawStereoDown, Qt::Key_6, "Add Stereo Bond (Ctrl+D, 6)");
        row(&KytStudioApp::zigzagStructure, Qt::Key_7, nullptr);
        row(&KytStudioApp::deleteItem, Qt::Key_8, nullptr);
        row(&KytStudioApp::fixedLength, Qt::Key_9, nullptr);
        row(&KytStudioApp::fixedAngle, Qt::Key_0, nullptr);
    }

    void digitsSelectModesAndSwitches()
    {
        QFETCH(QAction * KytStudioApp::*, action);
        QFETCH(int, key);
        QFETCH(QString, toolTip);
        StepsWindow window;
        QAction* const selected = window.get()->*action;
        // Another mode before, so that the first has something to do.
        (selected == window->deleteItem ? window->drawBond : window->deleteItem)->trigger();
        const bool before = selected->isChecked();
        window.press(Qt::Key(key), Qt::NoModifier);
        QCOMPARE(selected->isChecked(), !before);
        QVERIFY2(selected->toolTip().endsWith(QStringLiteral(", %1)").arg(QChar(key))),
                 qPrintable(selected->toolTip()));
        if (!toolTip.isEmpty())
            QCOMPARE(selected->toolTip(), toolTip);
    }

    void aHeldDigitActsOnce()
    {
        const StepsWindow window;
        for (const QShortcut* shortcut : window->findChildren<QShortcut*>()) {
            const QString key = shortcut->key().toString();
            QCOMPARE(shortcut->autoRepeat(), key.size() > 1);
        }
    }

    void escapeEndsTheBondUnderWay()
    {
        StepsWindow window;
        const QStringList before = window.drawn();
        window->drawBond->trigger();
        QTest::mouseClick(window->view->viewport(), Qt::LeftButton, {}, QPoint(300, 200));
        QVERIFY(window.drawn() != before);
        window.press(Qt::Key_Escape, Qt::NoModifier);
        QCOMPARE(snapshotDifference(window.drawn(), before), QString());
        QCOMPARE(window.undone(), QString("Undone: Draw Bond|4000"));
    }

    void anOpenMenuEndsADrag()
    {
        StepsWindow window;
        QWidget* paper = window->view->viewport();
        QTest::mousePress(paper, Qt::LeftButton, {}, QPoint(100, 100));
        QMouseEvent move(QEvent::MouseMove, QPointF(120, 130), paper->mapToGlobal(QPointF(120, 130)), Qt::NoButton,
                         Qt::LeftButton, {});
        QApplication::sendEvent(paper, &move);
        emit window->pFileMenu->aboutToShow();
        QVERIFY(!window->view->moving);
        QCOMPARE(window.undone(), QString("Undone: Move|4000"));
    }

    void noActionIsNew()
    {
        const TestWindow window;
        QSet<QAction*> actions;
        for (QAction* action : window->findChildren<QAction*>())
            if (!action->menu() && !action->isSeparator()
                && (action->parent() == window.get() || action->parent() == window->viewGrp))
                actions.insert(action);
        QCOMPARE(actions.size(), 30 + 1); // and What's This
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_steps>(argc, argv);
}
#include "test_kytstudio_steps.moc"
