#include "FileDialogs.h"
#include "Program.h"
#include "app/StateLabel.h"
#include "doc/SafetyCopies.h"
#include "doc/WorkspaceFile.h"
#include "view/kytstudioview.h"

#include <QAbstractButton>
#include <QAction>
#include <QDateTime>
#include <QMessageBox>

#include <csignal>
#include <tuple>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// A state folder of its own for the copies, which the environment names while it lives.
class StateHome {
public:
    StateHome()
        : before(qgetenv("XDG_STATE_HOME"))
    {
        qputenv("XDG_STATE_HOME", QFile::encodeName(directory.path()));
    }
    ~StateHome() { qputenv("XDG_STATE_HOME", before); }
    StateHome(const StateHome&) = delete;
    StateHome& operator=(const StateHome&) = delete;

    QString path(const QString& name) const { return directory.filePath(name); }

    /// The contents of all copies, the oldest first.
    QList<QByteArray> copies() const
    {
        const QDir folder(path("kytstudio"));
        QList<QByteArray> read;
        for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name))
            read.append(readFile(folder.filePath(name)));
        return read;
    }

    /// The names that do not consist of date and time.
    QStringList oddNames() const
    {
        const QRegularExpression dated(R"(^\d{4}-\d\d-\d\dT\d\d-\d\d-\d\d\.\d{3}[+-]\d{4}\.kyt$)");
        QStringList names = QDir(path("kytstudio")).entryList(QDir::Files | QDir::Hidden);
        names.removeIf([&](const QString& name) { return dated.match(name).hasMatch(); });
        return names;
    }

    /// The lists of copies whose program has not ended as its user wished, or not yet.
    QStringList lists() const { return QDir(path("kytstudio/sessions")).entryList(QDir::Files); }

private:
    QByteArray before;
    QTemporaryDir directory;
};

/// A window with files to open, and with a timer that is not waited for.
struct CopiesWindow : TestWindow {
    CopiesWindow() { isShown = show(); }

    void press() const
    {
        QVERIFY(QTest::qWaitForWindowActive(get()));
        QTest::keyClick(get(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    }
    QTimer* timer() const { return get()->findChild<QTimer*>("automatic copy"); }
    void letTimerRunOut() const
    {
        const int interval = timer()->interval();
        timer()->start(0);
        QTRY_VERIFY(!timer()->isActive());
        timer()->setInterval(interval);
    }
    QByteArray text() const { return workspaceText(*canvas()); }
    QString label() const { return get()->findChild<StateLabel*>()->wholeText(); }
    /// Adds an atom, as a step.
    void addAtom(double x, double y) const
    {
        atom(x, y);
        get()->view->recordStep("Step");
    }

    const StateHome state;
    const WorkingFolder folder;
    bool isShown = false;
};

/// A drawing of one carbon atom.
struct DrawnAtom : Drawing {
    DrawnAtom()
    {
        (new KytAtom(canvas(), 0, false))->move(50, 60);
        canvas()->allItems().first()->show();
    }
};

using Texts = QList<QByteArray>;

const QByteArray drawing = "KYTFILE\n MOLECULE 2 1\n  ATOM N 60 60 0 255 0 0\n  ATOM O 120 90 0 255 0 0\n"
                           "  BOND 0 1 2 1 0\n END_MOLECULE\nEND_KYTFILE\n";

const QByteArray oneCarbon = "KYTFILE\n MOLECULE 1 0\n  ATOM C 50 60 0 255 0 0\n END_MOLECULE\nEND_KYTFILE\n";

/// Leaves a copy of `oneCarbon` behind, as a program does that is killed.
void abandonCopyOfCarbon()
{
    DrawnAtom carbon;
    const pid_t child = fork();
    if (child == 0) {
        auto* copies = new SafetyCopies;
        copies->keep(*carbon.canvas());
        _exit(0); // without releasing the copy
    }
    waitpid(child, nullptr, 0);
}

} // namespace

/// The net under the commands that clear the drawing, and under the ends of the program.
class test_kytstudio_safety : public QObject {
    Q_OBJECT

private slots:
    void newCopiesTheDrawing()
    {
        const StateHome state;
        const TestWindow window;
        window.atom(50, 60);
        window->fileNew->trigger();
        QCOMPARE(itemCount(window), 0);
        QCOMPARE(state.copies(), Texts{oneCarbon});
        window->fileNew->trigger();
        QCOMPARE(state.copies(), Texts{oneCarbon});
    }

    void newOnAnEmptyCanvasCopiesNothing()
    {
        const StateHome state;
        const TestWindow window;
        window->fileNew->trigger();
        QVERIFY(!QFile::exists(safetyCopyFolder()));
    }

    void openCopiesTheDrawing()
    {
        const StateHome state;
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        const TestWindow window;
        window.atom(50, 60);
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) {
            QCOMPARE(state.copies(), Texts());
            typeNameAndEnter(dialog, folder.path("two.kyt"));
        });
        window->slotFileOpen();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(state.copies(), Texts{oneCarbon});
        QCOMPARE(window.atoms().size(), 2);
    }

    void cancellingOpenCopiesNothing()
    {
        const StateHome state;
        const TestWindow window;
        window.atom(50, 60);
        QCOMPARE(cancel(window, openCommand), QString());
        QCOMPARE(state.copies(), Texts());
    }

    // The copy of what is cleared would push it out.
    void openingTheOldestCopyReadsIt()
    {
        const StateHome state;
        const TestWindow window;
        for (int i = 0; i < 20; ++i) {
            window.atom(i, 0);
            window->slotFileNew();
        }
        const QString oldest =
            safetyCopyFolder() + u'/' + QDir(safetyCopyFolder()).entryList(QDir::Files, QDir::Name).first();
        window.atom(50, 60);
        QCOMPARE(choose(window, openCommand, oldest), QString());
        QCOMPARE(window->doc->docName, QFileInfo(oldest).canonicalFilePath());
        QCOMPARE(window.atoms().size(), 1);
        QCOMPARE(window.atoms()[0]->x(), 0.0);
        QCOMPARE(state.copies().size(), 21);
        QCOMPARE(state.copies().last(), oneCarbon);
    }

    void importAndInsertCopyNothing()
    {
        const StateHome state;
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        QVERIFY(writeFile("two.kyf", drawing));
        const TestWindow window;
        window.atom(50, 60);
        QCOMPARE(choose(window, importCommand, folder.path("two.kyt")), QString());
        QCOMPARE(choose(window, insertCommand, folder.path("two.kyf")), QString());
        QCOMPARE(window.atoms().size(), 5);
        QCOMPARE(state.copies(), Texts());
    }

    void closeCopiesTheDrawing_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("copied");
        QTest::newRow("save") << int(QMessageBox::Yes) << true;
        QTest::newRow("discard") << int(QMessageBox::No) << true;
        QTest::newRow("cancel") << int(QMessageBox::Cancel) << false;
    }

    void closeCopiesTheDrawing()
    {
        QFETCH(int, button);
        QFETCH(bool, copied);
        const StateHome state;
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window.atom(50, 60);
        QCOMPARE(closeWith(window, QMessageBox::StandardButton(button)), QString());
        QCOMPARE(state.copies(), copied ? Texts{oneCarbon} : Texts());
    }

    void quittingCopiesTheDrawing()
    {
        const StateHome state;
        const TestWindow window;
        window.atom(50, 60);
        QTimer::singleShot(0, window.get(), [] { QApplication::quit(); });
        QApplication::exec();
        QCOMPARE(state.copies(), Texts{oneCarbon});
        QCOMPARE(window.atoms().size(), 1);
    }

    void withoutACanvasNothingIsCopied()
    {
        const StateHome state;
        const TestWindow window;
        window.atom(50, 60);
        delete window->doc->canvas;
        window->keepCopy();
        QCOMPARE(state.copies(), Texts());
    }

    void nothingIsSaidWhereThereCanBeNoCopy()
    {
        const StateHome state;
        QVERIFY(writeFile(state.path("kytstudio"), "in the way"));
        const TestWindow window;
        window.atom(50, 60);
        const StatusLog log(window);
        const LoggedMessages messages;
        const ModalSteps steps;
        window->slotFileNew();
        QCOMPARE(itemCount(window), 0);
        QCOMPARE(log.shown, QStringList({"Creating file"}));
        QCOMPARE(LoggedMessages::lines(), QStringList());
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(readFile(state.path("kytstudio")), QByteArray("in the way"));
    }

    void changesAreCopiedAfterHalfAMinute()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        QVERIFY(window.timer()->isSingleShot());
        QVERIFY(!window.timer()->isActive());
        window.addAtom(100, 100);
        QVERIFY(window.timer()->isActive());
        QCOMPARE(window.timer()->interval(), 30'000);
        const int left = window.timer()->remainingTime();
        const QByteArray before = window.text();
        window.addAtom(160, 100);
        QVERIFY(window.text() != before);
        QVERIFY(window.timer()->remainingTime() <= left); // it was not started again
        window.letTimerRunOut();
        QCOMPARE(window.state.copies(), Texts{window.text()});
    }

    // A drag may take long, and a bond is drawn while it is under way.
    void pressOnTheCanvasStartsTheTimer()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        QTest::mousePress(window->view->viewport(), Qt::LeftButton, {}, {100, 100});
        QVERIFY(window.timer()->isActive());
        QTest::mouseRelease(window->view->viewport(), Qt::LeftButton, {}, {100, 100});
    }

    void automaticCopyReplacesTheOneBefore()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        for (int i = 0; i < 3; ++i) {
            window.addAtom(100, 100 + 20 * i);
            window.letTimerRunOut();
            QCOMPARE(window.state.copies(), Texts{window.text()});
        }
    }

    void anyCopyReplacesTheAutomaticOne()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        window.addAtom(100, 100);
        window.letTimerRunOut();
        window.addAtom(160, 100);
        const QByteArray cleared = window.text();
        window->fileNew->trigger();
        QCOMPARE(window.state.copies(), Texts{cleared});
        window.addAtom(100, 100);
        window.letTimerRunOut();
        QCOMPARE(window.state.copies(), (Texts{cleared, window.text()}));
    }

    void copyIsMadeBeforeTheViewerOpens()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        window.addAtom(100, 100);
        // No timer runs in this process meanwhile.
        QVERIFY(QProcess::startDetached("sh", {"-c", "sleep 3; xdotool key Escape"}));
        window->slotSelectI3DView();
        QVERIFY(!window.timer()->isActive());
        QCOMPARE(window.state.copies(), Texts{window.text()});
    }

    void copiesAreOpenedOneAfterTheOther()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        const QStringList titles{window->doc->docName, window->windowTitle()};
        Texts cleared;
        for (int i = 0; i < 3; ++i) {
            window.addAtom(100 + 20 * i, 100);
            cleared << window.text();
            window->fileNew->trigger();
        }
        window.addAtom(200, 200);
        const QByteArray last = window.text();
        for (int i = 2; i >= 0; --i) {
            window.press();
            QCOMPARE(window.text(), cleared[i]);
            QVERIFY(message(window).startsWith("Copy of "));
        }
        window.press();
        QCOMPARE(message(window), QString("No older copy"));
        QCOMPARE(window.text(), cleared[0]);
        QCOMPARE((QStringList{window->doc->docName, window->windowTitle()}), titles);
        for (int i = 1; i < 3; ++i) {
            QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(window.text(), cleared[i]);
        }
        QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Undone: Open Copy"));
        QCOMPARE(window.text(), last);
        // After a change, it begins again with the newest one that differs from the drawing.
        window.press();
        QVERIFY(window.text() != last);
        QVERIFY(window.state.copies().contains(window.text()));
    }

    void withoutACopyNothingIsOpened()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        window.addAtom(100, 100);
        const QByteArray before = window.text();
        window.press();
        QCOMPARE(message(window), QString("No copy to open"));
        QCOMPARE(window.text(), before);
        QVERIFY(window.state.copies().isEmpty());
    }

    void abandonedCopyIsMentionedOnce()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        abandonCopyOfCarbon();
        window.addAtom(100, 100);
        window->fileNew->trigger(); // a newer copy, which this program has not abandoned
        window->noteAbandonedCopy();
        const QString time = QDateTime::currentDateTime().toString("yyyy-MM-dd");
        QVERIFY2(window.label().contains("copy of " + time), qPrintable(window.label()));
        QVERIFY(window.label().endsWith(": Ctrl+Shift+O"));
        window.press();
        QCOMPARE(window.text(), oneCarbon);
        QVERIFY2(!window.label().contains("copy of"), qPrintable(window.label()));
        window->noteAbandonedCopy();
        QVERIFY2(!window.label().contains("copy of"), qPrintable(window.label()));
    }

    void abandonedCopyThatIsDeletedDoesNotHideOthers()
    {
        const CopiesWindow window;
        QVERIFY(window.isShown);
        abandonCopyOfCarbon();
        window->noteAbandonedCopy();
        QVERIFY2(window.label().contains("copy of"), qPrintable(window.label()));
        QDir(window.state.path("kytstudio")).removeRecursively();
        window.addAtom(100, 100);
        const QByteArray drawn = window.text();
        window->fileNew->trigger();
        window.press();
        QCOMPARE(window.text(), drawn);
        QVERIFY2(!window.label().contains("copy of"), qPrintable(window.label()));
    }

    void theProgramCopiesTheDrawingBeforeASignalEndsIt_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("where");
        QTest::newRow("interrupt") << SIGINT << "";
        QTest::newRow("terminate") << SIGTERM << "";
        QTest::newRow("hang up") << SIGHUP << "";
        QTest::newRow("quit") << SIGQUIT << "";
        QTest::newRow("in the Open dialog") << SIGTERM << "Choose a File";
        QTest::newRow("in the question of Close") << SIGHUP << "Close !";
        QTest::newRow("in the question of Exit") << SIGTERM << "Quit !";
        QTest::newRow("in the atom's dialog") << SIGINT << "Atom Properties";
        QTest::newRow("in an open menu") << SIGTERM << "menu";
        QTest::newRow("in a drag") << SIGTERM << "drag";
        QTest::newRow("in the 3D window, interrupt") << SIGINT << "MOLECULAR I3D VIEWER";
        QTest::newRow("in the 3D window, terminate") << SIGTERM << "MOLECULAR I3D VIEWER";
        QTest::newRow("in the 3D window, hang up") << SIGHUP << "MOLECULAR I3D VIEWER";
    }

    void theProgramCopiesTheDrawingBeforeASignalEndsIt()
    {
        QFETCH(int, number);
        QFETCH(QString, where);
        const QPoint atom = canvasPlace({60, 60});
        const StateHome state;
        Program program(QDir::currentPath());
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        QVERIFY(Program::openFile(id, folder.path("two.kyt")));

        const QHash<QString, QString> keys{{"Choose a File", "ctrl+o"},
                                           {"Close !", "ctrl+w"},
                                           {"Quit !", "ctrl+q"},
                                           {"MOLECULAR I3D VIEWER", "ctrl+f"}};
        if (where == "menu") {
            Program::press("alt+f");
        } else if (where == "drag") {
            Program::moveTo(id, atom);
            Program::xdotool({"mousedown", "1"});
            Program::moveTo(id, atom + QPoint(30, 40));
        } else if (where == "Atom Properties") {
            Program::click(id, atom, 3);
            QVERIFY(!Program::windowTitled(where).isEmpty());
        } else if (!where.isEmpty()) {
            Program::press(keys[where]);
            QVERIFY(!Program::windowTitled(where).isEmpty());
        }
        // The viewer opens after a copy, since no timer runs meanwhile.
        QCOMPARE(state.copies(), where == "MOLECULAR I3D VIEWER" ? Texts{drawing} : Texts());
        kill(pid_t(program.process.processId()), number);
        QVERIFY2(program.endedBy(number), QByteArray::number(program.process.exitCode()) + program.output);
        if (where == "drag")
            Program::xdotool({"mouseup", "1"});
        QCOMPARE(state.copies().size(), 1);
        QByteArray expected = drawing;
        if (where == "drag")
            expected.replace("N 60 60", "N 90 100");
        QCOMPARE(state.copies(), Texts{expected});
        QCOMPARE(program.output, QByteArray());
    }

    void theProgramIgnoresASignalThatWasIgnoredAtItsStart()
    {
        const StateHome state;
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        Program program(folder.path(), {}, {}, {"sh", "-c", "trap '' HUP; exec \"$0\""});
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        kill(pid_t(program.process.processId()), SIGHUP);
        QVERIFY(Program::openFile(id, folder.path("two.kyt")));
        kill(pid_t(program.process.processId()), SIGHUP);
        QVERIFY(Program::openFile(id, folder.path("two.kyt")));
        QCOMPARE(state.copies(), Texts{drawing}); // of the second Open
        kill(pid_t(program.process.processId()), SIGTERM);
        QVERIFY2(program.endedBy(SIGTERM), program.output);
        QCOMPARE(state.copies(), Texts{drawing});
    }

    void theProgramCopiesTheDrawingHoweverItIsLeft_data()
    {
        QTest::addColumn<QString>("way");
        QTest::addColumn<int>("status");
        QTest::newRow("window closed") << "alt+F4" << 0;
        QTest::newRow("Exit") << "ctrl+q" << 0;
        QTest::newRow("connection to the X server lost") << "xkill" << 1;
        QTest::newRow("connection lost in the 3D window") << "xkill 3D" << 1;
    }

    void theProgramCopiesTheDrawingHoweverItIsLeft()
    {
        QFETCH(QString, way);
        QFETCH(int, status);
        const StateHome state;
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        Program program(folder.path());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        QVERIFY(Program::openFile(id, folder.path("two.kyt")));
        if (way == "ctrl+q") {
            Program::press(way);
            QVERIFY(Program::hasKeyboard(Program::windowTitled("Quit !")));
            Program::press("Return");
        } else if (way.startsWith("xkill")) {
            QString window = id;
            if (way == "xkill 3D") {
                Program::press("ctrl+f");
                window = Program::windowTitled("MOLECULAR I3D VIEWER");
            }
            QCOMPARE(QProcess::execute("xkill", {"-id", window}), 0);
        } else {
            Program::press(way);
        }
        const bool well = program.endedWell();
        QCOMPARE(well, status == 0);
        QVERIFY2(program.process.exitStatus() == QProcess::NormalExit, program.output);
        QVERIFY2(program.process.exitCode() == status, program.output);
        QCOMPARE(state.copies(), Texts{drawing});
    }

    void theProgramNamesItsCopyWhenTheConnectionIsLost_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::newRow("after Open") << QStringList();
        QTest::newRow("after New") << QStringList{"ctrl+n", "ctrl+z"};
        QTest::newRow("after Import") << QStringList{"ctrl+j", "Escape"};
        QTest::newRow("after the 3D window") << QStringList{"ctrl+f", "Escape"};
        QTest::newRow("after a dialog") << QStringList{"ctrl+q", "Escape"};
    }

    /// Twice in one folder.
    void theProgramNamesItsCopyWhenTheConnectionIsLost()
    {
        QFETCH(QStringList, keys);
        const StateHome state;
        const WorkingFolder folder;
        Texts expected;
        for (const int atoms : {2, 3}) {
            QVERIFY(writeFile("a.kyt", atomsInAFile(atoms)));
            Program program(folder.path());
            const QString id = Program::windowTitled("KytStudio 1.1");
            QVERIFY(Program::hasKeyboard(id));
            QVERIFY(Program::openFile(id, folder.path("a.kyt")));
            for (const QString& key : keys) {
                Program::press(key);
                QTest::qWait(1000);
            }
            QVERIFY(Program::hasKeyboard(id));
            QCOMPARE(QProcess::execute("xkill", {"-id", id}), 0);
            QVERIFY(!program.endedWell());
            QCOMPARE(program.process.exitStatus(), QProcess::NormalExit);
            expected << atomsInAFile(atoms);
            QCOMPARE(state.copies(), expected);
            QCOMPARE(state.oddNames(), QStringList());
            QCOMPARE(state.lists().size(), 1);
        }
    }

    void theProgramMentionsACopyOnlyAfterAnEndThatWasNotWished()
    {
        const StateHome state;
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        for (const bool isKilled : {true, false}) {
            Program program(folder.path());
            const QString id = Program::windowTitled("KytStudio 1.1");
            QVERIFY(Program::hasKeyboard(id));
            QCOMPARE(state.lists().size(), 0); // it was taken by this start
            QVERIFY(Program::openFile(id, folder.path("two.kyt")));
            Program::press("ctrl+n"); // makes a copy
            QTRY_COMPARE(state.lists().size(), 1);
            if (isKilled)
                program.process.kill();
            else
                Program::press("alt+F4");
            QVERIFY(isKilled ? program.endedBy(SIGKILL) : program.endedWell());
            QCOMPARE(state.lists().size(), isKilled ? 1 : 0);
        }
    }

    void theProgramEndsAlsoWhereThereCanBeNoCopy()
    {
        const StateHome state;
        QVERIFY(writeFile(state.path("kytstudio"), "in the way"));
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", drawing));
        for (const int number : {0, SIGTERM}) {
            Program program(folder.path());
            const QString id = Program::windowTitled("KytStudio 1.1");
            QVERIFY(Program::hasKeyboard(id));
            QVERIFY(Program::openFile(id, folder.path("two.kyt")));
            if (number == 0)
                Program::press("alt+F4");
            else
                kill(pid_t(program.process.processId()), number);
            QVERIFY2(number == 0 ? program.endedWell() : program.endedBy(number), program.output);
            QCOMPARE(program.output, QByteArray());
        }
    }

    void theProgramOutlivesASaveBeyondTheFileSizeLimit()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("many.kyt", atomsInAFile(2000)));
        Program program(folder.path());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        QVERIFY(Program::openFile(id, folder.path("many.kyt")));
        QVERIFY(writeFile("many.kyt", "as it was"));

        struct rlimit usual;
        const struct rlimit narrow = {30000, RLIM_INFINITY};
        const auto process = pid_t(program.process.processId());
        QCOMPARE(prlimit(process, RLIMIT_FSIZE, &narrow, &usual), 0);
        Program::press("ctrl+s");
        QTRY_VERIFY(program.process.canReadLine());
        const QByteArray said = program.process.readAll();
        QCOMPARE(said,
                 QByteArray("kytstudio.workspace: " + folder.path("many.kyt").toUtf8()
                            + ": cannot be saved: File too large\n"));
        QCOMPARE(readFile("many.kyt"), QByteArray("as it was"));
        QCOMPARE(folder.names(), QStringList("many.kyt"));

        QCOMPARE(prlimit(process, RLIMIT_FSIZE, &usual, nullptr), 0);
        Program::press("ctrl+s");
        QTRY_COMPARE(readFile("many.kyt"), atomsInAFile(2000));
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_safety>(argc, argv);
}

#include "test_kytstudio_safety.moc"
