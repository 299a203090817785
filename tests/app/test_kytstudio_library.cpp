#include "TestWindow.h"

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
        const Printed printed;
        (window.get()->*moleculeOf(name).slot)();
        QCOMPARE(log.shown, QStringList({"Loading " + name + "..|4000", name + " Loaded !|2000"}));
        QCOMPARE(window.atoms().size(), 1);
        QCOMPARE(window->view->canvasState, KYTVS_view);
        QCOMPARE(Printed::lines.size(), 1);
        QVERIFY2(Printed::lines[0].contains(moleculeOf(name).file), qPrintable(Printed::lines[0]));
        QVERIFY(!Printed::lines[0].contains('\n'));
    }

    void aDirectoryInPlaceOfAFileIsNamedOnceAndAddsNothing()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkpath("lib/water.kyf"));
        const TestWindow window;
        const Printed printed;
        window->slotAddWater();
        QCOMPARE(message(window), QString("Water Loaded !"));
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(Printed::lines.size(), 1);
        QVERIFY2(Printed::lines[0].contains("lib/water.kyf"), qPrintable(Printed::lines[0]));
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
        const Printed printed;
        (window.get()->*moleculeOf(name).action)->trigger();
        const QList<KytAtom*> atoms = window.atoms();
        QVERIFY(atoms.size() >= 3);
        for (const KytAtom* atom : atoms) {
            QVERIFY(atom->locked);
            QCOMPARE(atom->getMolecule(), atoms[0]->getMolecule());
            QVERIFY(atom->getBondCount() > 0);
        }
        QCOMPARE(Printed::lines, QStringList());
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

    void insertAsksInTheStatedDialog()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("lib"));
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Insert Moleculwe dialog", [&](QFileDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), QString("Choose a Molecule"));
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(dialog->directory().canonicalPath(), folder.path("lib"));
            QCOMPARE(dialog->nameFilters(), QStringList({"KytFragment (*.kyf)"}));
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            QCOMPARE(message(window), QString("Insert Molecule.."));
            QCOMPARE(timeOut(window), 15000);
            pressEscape(dialog);
        });
        window->insertMolecule->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void insertReadsLockedAtomsOntoTheDrawing()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("lib"));
        QVERIFY(writeFile("lib/mine.kyf", atomsInAFile(2, "N")));
        const TestWindow window;
        KytAtom* mine = window.atom(300, 300);
        ModalSteps steps;
        steps.then<QFileDialog>("Insert Moleculwe dialog",
                                [](QFileDialog* dialog) { typeNameAndEnter(dialog, "mine.kyf"); });
        window->slotInsertMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 3);
        QCOMPARE(atoms[0], mine);
        QVERIFY(!mine->locked);
        QVERIFY(atoms[1]->locked && atoms[2]->locked);
        QCOMPARE(atoms[2]->getSymbol(), QString("N"));
    }

    void insertKeepsTheMode()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("mine.kyf", atomsInAFile(2)));
        const TestWindow window;
        window->rotateMode->trigger();
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("mine.kyf")); });
        window->slotInsertMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(window->view->canvasState, KYTVS_rotate);
        QCOMPARE(window->viewGrp->checkedAction(), window->rotateMode);
    }

    void insertShowsItsMessages()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("mine.kyf", atomsInAFile(2)));
        const TestWindow window;
        const StatusLog log(window);
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("mine.kyf")); });
        window->slotInsertMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown.first(), QString("Insert Molecule..|15000"));
        QCOMPARE(log.shown.last(), QString("Ready."));
    }

    void cancellingInsertAddsNothingAndEndsWithReady()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->view->canvasState = KYTVS_rotate;
        const Printed printed;
        ModalSteps steps;
        steps.then<QFileDialog>("Insert Moleculwe dialog", [](QFileDialog* dialog) { pressEscape(dialog); });
        window->slotInsertMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
        QCOMPARE(window->view->canvasState, KYTVS_rotate);
        QCOMPARE(Printed::lines, QStringList());
    }

    void insertWithoutAViewAsksNothing()
    {
        const WorkingFolder folder;
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        const StatusLog log(window);
        const ModalSteps steps;
        window->slotInsertMolecule();
        window->view = view;
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown, QStringList({"Insert Molecule..|15000", "Ready."}));
    }

    void insertKeepsNameAndCaption()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("mine.kyf", atomsInAFile(2)));
        const TestWindow window;
        window->doc->docName = "drawing.kyt";
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("mine.kyf")); });
        window->slotInsertMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window->doc->docName, QString("drawing.kyt"));
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
    }

    void importAsksInTheStatedDialog()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("data"));
        const TestWindow window;
        window->statusBar()->showMessage("before", 9000);
        ModalSteps steps;
        steps.then<QFileDialog>("Import Moleculwe dialog", [&](QFileDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), QString("Choose a Molecule"));
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(dialog->directory().canonicalPath(), folder.path("data"));
            QCOMPARE(dialog->nameFilters(), QStringList({"KytBench (*.kyt)"}));
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            QCOMPARE(message(window), QString("Opening file..."));
            QCOMPARE(timeOut(window), 0);
            pressEscape(dialog);
        });
        window->importMolecule->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void importReadsUnlockedAtomsOntoTheDrawing()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("data"));
        QVERIFY(writeFile("data/two.kyt", atomsInAFile(2, "N")));
        const TestWindow window;
        KytAtom* mine = window.atom(300, 300);
        ModalSteps steps;
        steps.then<QFileDialog>("Import Moleculwe dialog",
                                [](QFileDialog* dialog) { typeNameAndEnter(dialog, "two.kyt"); });
        window->slotImportMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 3);
        QCOMPARE(atoms[0], mine);
        QVERIFY(!atoms[1]->locked && !atoms[2]->locked);
        QCOMPARE(atoms[1]->getSymbol(), QString("N"));
    }

    void importKeepsTheMode()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", atomsInAFile(2)));
        const TestWindow window;
        window->deleteItem->trigger();
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("two.kyt")); });
        window->slotImportMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window->view->canvasState, KYTVS_deleteItem);
    }

    void importShowsItsMessages()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", atomsInAFile(2)));
        const TestWindow window;
        const StatusLog log(window);
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("two.kyt")); });
        window->slotImportMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown.first(), QString("Opening file..."));
        QCOMPARE(log.shown.last(), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
    }

    void importKeepsNameAndCaption()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", atomsInAFile(2)));
        const TestWindow window;
        window->doc->docName = "drawing.kyt";
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("two.kyt")); });
        window->slotImportMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(window->doc->docName, QString("drawing.kyt"));
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
    }

    void cancellingImportAddsNothingAndEndsWithReady()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "drawing.kyt";
        ModalSteps steps;
        steps.then<QFileDialog>("Import Moleculwe dialog", [](QFileDialog* dialog) { pressEscape(dialog); });
        window->slotImportMolecule();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
        QCOMPARE(window->doc->docName, QString("drawing.kyt"));
    }

    void importWithoutAViewAsksNothing()
    {
        const WorkingFolder folder;
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        const StatusLog log(window);
        const ModalSteps steps;
        window->slotImportMolecule();
        window->view = view;
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown, QStringList({"Opening file...", "Ready."}));
    }

    void importedMoleculesStayApart()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("two.kyt", atomsInAFile(2)));
        const TestWindow window;
        const auto importTwo = [&] {
            ModalSteps steps;
            steps.then<QFileDialog>([&](QFileDialog* dialog) { typeNameAndEnter(dialog, folder.path("two.kyt")); });
            window->slotImportMolecule();
            QVERIFY2(steps.done(), steps.trouble());
        };
        importTwo();
        importTwo();
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
    static int expectedCount(const QString& name) { return int(&moleculeOf(name) - molecules) + 1; }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_library>(argc, argv);
}

#include "test_kytstudio_library.moc"
