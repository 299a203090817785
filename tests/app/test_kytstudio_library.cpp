#include "FileDialogs.h"

#include <QAction>
#include <QActionGroup>
#include <QElapsedTimer>
#include <QToolBar>
#include <QToolButton>

#include <utility>

namespace {

/// A library command and the file that it reads.
struct Molecule {
    const char* name;
    void (KytStudioApp::*slot)();
    QAction* KytStudioApp::*action;
    const char* file;
};

const Molecule molecules[] = {
    {"Water", &KytStudioApp::slotAddWater, &KytStudioApp::kyfWater, "lib/water.kyf"},
    {"Prop", &KytStudioApp::slotAddProp, &KytStudioApp::kyfProp, "lib/prop.kyf"},
    {"Megaphon", &KytStudioApp::slotAddMegaphon, &KytStudioApp::kyfMegaphon, "lib/megaphon.kyf"},
    {"Hexane", &KytStudioApp::slotAddHexane, &KytStudioApp::kyfHexane, "lib/hexane.kyf"},
    {"Cubane", &KytStudioApp::slotAddCubane, &KytStudioApp::kyfCubane, "lib/cubane.kyf"},
    {"Benzene", &KytStudioApp::slotAddBenzene, &KytStudioApp::kyfBenzene, "lib/benzene.kyf"},
};

const Molecule& moleculeOf(const QString& name)
{
    for (const Molecule& molecule : molecules) {
        if (name == molecule.name)
            return molecule;
    }
    qFatal("no such molecule");
}

/// A command that adds a file of the user's choice to the drawing.
struct Reading {
    const char* name;
    FileCommand command;
    QAction* KytStudioApp::*action;
    const char* folder;
    const char* ending;
    const char* filter;
    bool locks; ///< whether the atoms that it adds are locked
    const char* firstMessage;
    int timeOut; ///< of that message, in milliseconds
};

const Reading readings[] = {
    {"insert", insertCommand, &KytStudioApp::insertMolecule, "lib", ".kyf", "KytFragment (*.kyf)", true,
     "Insert Molecule..", 15000},
    {"import", importCommand, &KytStudioApp::importMolecule, "data", ".kyt", "KytBench (*.kyt)", false,
     "Opening file...", 0},
};

const Reading& readingOf(const QString& name)
{
    return name == readings[0].name ? readings[0] : readings[1];
}

/// Writes a library into the working folder in which the atoms of each molecule carry its name as their symbol.
bool writeLibrary()
{
    bool written = QDir().mkpath("lib");
    int count = 1;
    for (const Molecule& molecule : molecules)
        written = written && writeFile(molecule.file, atomsInAFile(count++, molecule.name));
    return written;
}

} // namespace

class test_kytstudio_library : public QObject {
    Q_OBJECT

private slots:
    void eachSlotReadsItsFile_data() { allMolecules(); }

    void eachSlotReadsItsFile()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        (window.get()->*moleculeOf(name).slot)();
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), expectedCount(name));
        for (const KytAtom* atom : atoms) {
            QCOMPARE(atom->getSymbol(), name);
            QVERIFY(atom->isVisible());
        }
    }

    void eachActionReadsItsFile_data() { allMolecules(); }

    void eachActionReadsItsFile()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        (window.get()->*moleculeOf(name).action)->trigger();
        QCOMPARE(window.atoms().size(), expectedCount(name));
        QCOMPARE(window.atoms()[0]->getSymbol(), name);
    }

    void eachSlotShowsItsMessages_data() { allMolecules(); }

    void eachSlotShowsItsMessages()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        const StatusLog log(window);
        (window.get()->*moleculeOf(name).slot)();
        QCOMPARE(log.shown, QStringList({"Loading " + name + "..|4000", name + " Loaded !|2000"}));
    }

    void eachSlotLocksItsAtoms_data() { allMolecules(); }

    void eachSlotLocksItsAtoms()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        (window.get()->*moleculeOf(name).slot)();
        QVERIFY(!window.atoms().isEmpty());
        for (const KytAtom* atom : window.atoms())
            QVERIFY(atom->locked);
    }

    void eachSlotLeavesTheViewInViewMode_data() { allMolecules(); }

    void eachSlotLeavesTheViewInViewMode()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        window->view->canvasState = KYTVS_deleteItem;
        (window.get()->*moleculeOf(name).slot)();
        QCOMPARE(window->view->canvasState, KYTVS_view);
    }

    void eachSlotWithoutAViewShowsItsMessagesOnly_data() { allMolecules(); }

    void eachSlotWithoutAViewShowsItsMessagesOnly()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        view->canvasState = KYTVS_zigzag;
        const StatusLog log(window);
        (window.get()->*moleculeOf(name).slot)();
        window->view = view;
        QCOMPARE(log.shown, QStringList({"Loading " + name + "..|4000", name + " Loaded !|2000"}));
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(view->canvasState, KYTVS_zigzag);
    }

    void eachMissingFileIsNamedOnceAndStillSaidToBeLoaded_data() { allMolecules(); }

    void eachMissingFileIsNamedOnceAndStillSaidToBeLoaded()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        const TestWindow window;
        window.atom(50, 50);
        window->view->canvasState = KYTVS_zigzag;
        const StatusLog log(window);
        const LoggedMessages messages;
        (window.get()->*moleculeOf(name).slot)();
        QCOMPARE(log.shown, QStringList({"Loading " + name + "..|4000", name + " Loaded !|2000"}));
        QCOMPARE(window.atoms().size(), 1);
        QCOMPARE(window->view->canvasState, KYTVS_view);
        QCOMPARE(LoggedMessages::lines().size(), 1);
        QVERIFY2(LoggedMessages::lines()[0].contains(moleculeOf(name).file), qPrintable(LoggedMessages::lines()[0]));
        QVERIFY(!LoggedMessages::lines()[0].contains('\n'));
    }

    void aDirectoryInPlaceOfAFileIsNamedOnceAndAddsNothing()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkpath("lib/water.kyf"));
        const TestWindow window;
        const LoggedMessages messages;
        window->slotAddWater();
        QCOMPARE(message(window), QString("Water Loaded !"));
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(LoggedMessages::lines().size(), 1);
        QVERIFY2(LoggedMessages::lines()[0].contains("lib/water.kyf"), qPrintable(LoggedMessages::lines()[0]));
    }

    void theModeActionStaysAsItWas()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        window->slotAddWater();
        QVERIFY(!window->viewGrp->checkedAction());
        window->drawBond->trigger();
        window->slotAddWater();
        QCOMPARE(window->view->canvasState, KYTVS_view);
        QCOMPARE(window->viewGrp->checkedAction(), window->drawBond);
        QVERIFY(!window->viewMode->isChecked());
    }

    void pressingWaterTwiceAddsTwoMolecules()
    {
        const TestWindow window;
        window->kyfWater->trigger();
        QCOMPARE(window.atoms().size(), 3);
        window->kyfWater->trigger();
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 6);
        QCOMPARE(atoms[0]->getMolecule(), atoms[2]->getMolecule());
        QCOMPARE(atoms[3]->getMolecule(), atoms[5]->getMolecule());
        QVERIFY(atoms[0]->getMolecule() != atoms[3]->getMolecule());
    }

    void theDrawingIsNeverCleared()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        KytAtom* mine = window.atom(300, 300);
        qsizetype count = 1;
        for (const Molecule& molecule : molecules) {
            (window.get()->*molecule.slot)();
            count += expectedCount(molecule.name);
            QCOMPARE(window.atoms().size(), count);
        }
        QCOMPARE(window.atoms()[0], mine);
    }

    void nameMarkAndCaptionStay()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        window->doc->docName = "mine.kyt";
        window->setWindowTitle("a caption");
        window->doc->modified = false;
        window->slotAddCubane();
        QCOMPARE(window->doc->docName, QString("mine.kyt"));
        QCOMPARE(window->windowTitle(), QString("a caption"));
        QVERIFY(!window->doc->isModified());
    }

    void aHalfDrawnBondIsKept()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        QVERIFY(window.show());
        window->drawBond->trigger();
        QTest::mouseClick(window->view->viewport(), Qt::LeftButton, {}, QPoint(150, 150));
        QVERIFY(tempBond->isVisible());
        KytAtom* start = window->view->lastAtom;
        window->slotAddWater();
        QCOMPARE(window->view->lastAtom, start);
        QCOMPARE(window->view->isLastAtom, 1);
        QVERIFY(tempBond->isVisible());
    }

    void theLastMessageGoesByItself()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        QElapsedTimer clock;
        clock.start();
        window->slotAddHexane();
        QCOMPARE(message(window), QString("Hexane Loaded !"));
        QTRY_COMPARE_WITH_TIMEOUT(message(window), QString(), 30000);
        QVERIFY(clock.elapsed() >= 1800);
    }

    void theMessagesAreTranslated()
    {
        const WorkingFolder folder;
        QVERIFY(writeLibrary());
        const TestWindow window;
        const BracketTranslator translator;
        const StatusLog log(window);
        window->slotAddProp();
        QCOMPARE(log.shown, QStringList({"[Loading Prop..]|4000", "[Prop Loaded !]|2000"}));
        QCOMPARE(window.atoms().size(), expectedCount("Prop"));
    }

    void theSixMoleculesOfTheProgramCanBeInserted_data() { allMolecules(); }

    void theSixMoleculesOfTheProgramCanBeInserted()
    {
        QFETCH(QString, name);
        const TestWindow window;
        const LoggedMessages messages;
        (window.get()->*moleculeOf(name).action)->trigger();
        const QList<KytAtom*> atoms = window.atoms();
        QVERIFY(atoms.size() >= 3);
        for (const KytAtom* atom : atoms) {
            QVERIFY(atom->locked);
            QCOMPARE(atom->getMolecule(), atoms[0]->getMolecule());
            QVERIFY(atom->getBondCount() > 0);
        }
        QCOMPARE(LoggedMessages::lines(), QStringList());
    }

    void aClickOnTheBarInsertsAndADragMovesTheWholeMolecule()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->drawBond->trigger();
        QTest::mouseClick(window->libraryToolBar->widgetForAction(window->kyfWater), Qt::LeftButton);
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 3);
        QList<QPointF> before;
        for (const KytAtom* atom : atoms) {
            before << QPointF(atom->x(), atom->y());
            QVERIFY(window->view->viewport()->rect().contains(before.last().toPoint()));
        }
        const QPoint grip = before[0].toPoint();
        QTest::mousePress(window->view->viewport(), Qt::LeftButton, {}, grip);
        QTest::mouseMove(window->view->viewport(), grip + QPoint(7, 5));
        QTest::mouseRelease(window->view->viewport(), Qt::LeftButton, {}, grip + QPoint(7, 5));
        QTRY_COMPARE(QPointF(atoms[0]->x(), atoms[0]->y()), before[0] + QPointF(7, 5));
        for (int i = 0; i < 3; ++i)
            QCOMPARE(QPointF(atoms[i]->x(), atoms[i]->y()), before[i] + QPointF(7, 5));
    }

    void readingAsksInTheStatedDialog_data() { allReadings(); }

    void readingAsksInTheStatedDialog()
    {
        QFETCH(QString, name);
        const Reading& reading = readingOf(name);
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir(reading.folder));
        const TestWindow window;
        window->statusBar()->showMessage("before", 9000);
        ModalSteps steps;
        steps.then<QFileDialog>(reading.command.dialog, [&](QFileDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), QString("Choose a Molecule"));
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(dialog->directory().canonicalPath(), folder.path(reading.folder));
            QCOMPARE(dialog->nameFilters(), QStringList(reading.filter));
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            QCOMPARE(message(window), QString(reading.firstMessage));
            QCOMPARE(timeOut(window), reading.timeOut);
            pressEscape(dialog);
        });
        (window.get()->*reading.action)->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void readingAddsToTheDrawingAndLocksOrNot_data() { allReadings(); }

    void readingAddsToTheDrawingAndLocksOrNot()
    {
        QFETCH(QString, name);
        const Reading& reading = readingOf(name);
        const WorkingFolder folder;
        const QString file = QString("two") + reading.ending;
        QVERIFY(QDir().mkdir(reading.folder));
        QVERIFY(writeFile(QString(reading.folder) + '/' + file, atomsInAFile(2, "N")));
        const TestWindow window;
        KytAtom* mine = window.atom(300, 300);
        QCOMPARE(choose(window, reading.command, file), QString());
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 3);
        QCOMPARE(atoms[0], mine);
        QVERIFY(!mine->locked);
        for (const KytAtom* added : atoms.sliced(1)) {
            QCOMPARE(added->locked, reading.locks);
            QCOMPARE(added->getSymbol(), QString("N"));
        }
    }

    void readingKeepsModeNameAndCaption_data() { allReadings(); }

    void readingKeepsModeNameAndCaption()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeFile("two", atomsInAFile(2)));
        for (QAction* KytStudioApp::*mode : {&KytStudioApp::rotateMode, &KytStudioApp::deleteItem}) {
            const TestWindow window;
            (window.get()->*mode)->trigger();
            const KytViewState state = window->view->canvasState;
            window->doc->docName = "drawing.kyt";
            QCOMPARE(choose(window, readingOf(name).command, folder.path("two")), QString());
            QCOMPARE(window.atoms().size(), 2);
            QCOMPARE(window->view->canvasState, state);
            QCOMPARE(window->viewGrp->checkedAction(), window.get()->*mode);
            QCOMPARE(window->doc->docName, QString("drawing.kyt"));
            QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
        }
    }

    void readingShowsItsMessages_data() { allReadings(); }

    void readingShowsItsMessages()
    {
        QFETCH(QString, name);
        const Reading& reading = readingOf(name);
        const WorkingFolder folder;
        QVERIFY(writeFile("two", atomsInAFile(2)));
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(choose(window, reading.command, folder.path("two")), QString());
        QCOMPARE(log.shown.first(), firstLogged(reading));
        QCOMPARE(log.shown.last(), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
    }

    void cancellingAddsNothingAndEndsWithReady_data() { allReadings(); }

    void cancellingAddsNothingAndEndsWithReady()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        const TestWindow window;
        window->view->canvasState = KYTVS_rotate;
        window->doc->docName = "drawing.kyt";
        const LoggedMessages messages;
        QCOMPARE(cancel(window, readingOf(name).command), QString());
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
        QCOMPARE(window->view->canvasState, KYTVS_rotate);
        QCOMPARE(window->doc->docName, QString("drawing.kyt"));
        QCOMPARE(LoggedMessages::lines(), QStringList());
    }

    void readingWithoutAViewAsksNothing_data() { allReadings(); }

    void readingWithoutAViewAsksNothing()
    {
        QFETCH(QString, name);
        const Reading& reading = readingOf(name);
        const WorkingFolder folder;
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        const StatusLog log(window);
        const ModalSteps steps;
        (window.get()->*reading.command.slot)();
        window->view = view;
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown, QStringList({firstLogged(reading), "Ready."}));
    }

    void importedMoleculesStayApart()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", atomsInAFile(2)));
        const TestWindow window;
        for (int round = 0; round < 2; ++round)
            QCOMPARE(choose(window, importCommand, folder.path("two.kyt")), QString());
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 4);
        QCOMPARE(atoms[0]->getMolecule(), atoms[1]->getMolecule());
        QCOMPARE(atoms[2]->getMolecule(), atoms[3]->getMolecule());
        QVERIFY(atoms[0]->getMolecule() != atoms[2]->getMolecule());
    }

private:
    static void allMolecules()
    {
        QTest::addColumn<QString>("name");
        for (const Molecule& molecule : molecules)
            QTest::newRow(molecule.name) << QString(molecule.name);
    }
    static void allReadings()
    {
        QTest::addColumn<QString>("name");
        for (const Reading& reading : readings)
            QTest::newRow(reading.name) << QString(reading.name);
    }
    static QString firstLogged(const Reading& reading)
    {
        return reading.timeOut > 0 ? QString("%1|%2").arg(reading.firstMessage).arg(reading.timeOut)
                                   : QString(reading.firstMessage);
    }
    static int expectedCount(const QString& name) { return int(&moleculeOf(name) - molecules) + 1; }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_library>(argc, argv);
}

#include "test_kytstudio_library.moc"
