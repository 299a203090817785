#include "Program.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QToolBar>

#include <cstdio>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace {

/// What is written to standard output while it lives.
class StandardOutput {
public:
    StandardOutput()
    {
        std::fflush(stdout);
        before = dup(STDOUT_FILENO);
        file = std::tmpfile();
        dup2(fileno(file), STDOUT_FILENO);
    }
    ~StandardOutput()
    {
        restore();
        std::fclose(file);
    }
    StandardOutput(const StandardOutput&) = delete;
    StandardOutput& operator=(const StandardOutput&) = delete;

    QByteArray text()
    {
        restore();
        QByteArray read(4096, 0);
        std::rewind(file);
        read.resize(qsizetype(std::fread(read.data(), 1, 4096, file)));
        return read;
    }

private:
    void restore()
    {
        if (before < 0)
            return;
        std::fflush(stdout);
        std::cout.flush();
        dup2(before, STDOUT_FILENO);
        close(before);
        before = -1;
    }
    int before;
    FILE* file;
};

/// A translation file for one text in the binary form of Qt's translators.
QByteArray translationFile(const QByteArray& source, const QString& translation)
{
    quint32 hash = 0;
    for (const char c : source) {
        hash = (hash << 4) + quint8(c);
        if (const quint32 high = hash & 0xf0000000) {
            hash ^= high >> 24;
            hash &= ~high;
        }
    }
    const auto number = [](quint32 n) { return QByteArray::fromHex(QByteArray::number(n, 16).rightJustified(8, '0')); };
    QByteArray letters;
    for (const QChar letter : translation) {
        letters += char(letter.row());
        letters += char(letter.cell());
    }
    const QByteArray entry = QByteArray(1, 3) + number(quint32(letters.size())) + letters + QByteArray(1, 1);
    return QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd") + QByteArray(1, 0x42) + number(8)
        + number(hash ? hash : 1) + number(0) + QByteArray(1, 0x69) + number(quint32(entry.size())) + entry;
}

/// Whether the program has loaded a file of this name.
bool hasLoaded(const Program& program, const QByteArray& name)
{
    QFile map(QStringLiteral("/proc/%1/maps").arg(program.process.processId()));
    return map.open(QIODevice::ReadOnly) && map.readAll().contains('/' + name);
}

/// Starts the editor as the program does, opens or begins `what`, and quits while that is still so.
int leaveWith(const QString& what, int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont("helvetica", 12));
    auto* window = new KytStudioApp;
    window->show();
    if (!QTest::qWaitForWindowActive(window))
        return 90;
    const DrawnCanvas drawn(window->doc);
    drawn.bond(drawn.atom(60, 60), drawn.atom(160, 60), {KYTBT_StereoUp});
    QWidget* viewport = window->view->viewport();

    bool reached = false;
    QTimer::singleShot(0, window, [&] {
        if (what == "atom dialog") {
            QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(60, 60));
        } else if (what == "bond dialog") {
            QTest::mouseClick(viewport, Qt::RightButton, {}, QPoint(130, 60));
        } else if (what == "half-drawn bond") {
            window->drawBond->trigger();
            QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(60, 60));
            QTest::mouseMove(viewport, QPoint(90, 90));
        } else if (what == "drag") {
            window->viewMode->trigger();
            QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(60, 60));
            QTest::mouseMove(viewport, QPoint(70, 70));
        } else if (what == "file dialog") {
            window->fileOpen->trigger();
        } else if (what == "close question") {
            window->fileClose->trigger();
        }
    });
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, window, [&] {
        const QWidget* front = QApplication::activeModalWidget();
        reached = what == "half-drawn bond" ? tempBond->isVisible()
            : what == "drag"                ? window->view->moving != nullptr
                                            : front && front->isVisible();
        if (reached) {
            look.stop();
            QCoreApplication::quit();
        }
    });
    look.start(200);
    const int status = QApplication::exec();
    return reached ? status : 91;
}

} // namespace

class test_kytstudio : public QObject {
    Q_OBJECT

private slots:
    void theWindowOpensAt450By400WithItsCaption()
    {
        const TestWindow window;
        QCOMPARE(window->size(), QSize(450, 400));
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
        QVERIFY(window.show());
        QTest::qWait(100);
        QCOMPARE(window->size(), QSize(450, 400));
        QVERIFY(window->isWindow());
        QVERIFY(!window->parentWidget());
        QCOMPARE(window->objectName(), QString());
    }

    void everythingIsThereAfterConstruction()
    {
        const TestWindow window;
        QVERIFY(window->doc);
        QVERIFY(window->view);
        QVERIFY(window->i3dviewer);
        QVERIFY(window->viewGrp);
        QVERIFY(window->pFileMenu && window->pViewMenu && window->pInsertMenu && window->pHelpMenu);
        QVERIFY(window->fileToolbar && window->drawToolBar && window->libraryToolBar);
        QVERIFY(!window->libraryToolbar);
    }

    void theViewShowsTheDocumentsCanvas()
    {
        const TestWindow window;
        QVERIFY(window->doc->canvas);
        QCOMPARE(window->view->canvas(), window->doc->canvas);
        QCOMPARE(window->view->doc, window->doc);
        QCOMPARE(window->doc->canvas->size(), QSize(2000, 2000));
    }

    void theViewerGetsTheDocumentsCanvas()
    {
        const TestWindow window;
        QCOMPARE(window->i3dviewer->canvas.data(), window->doc->canvas);
    }

    void theDocumentIsNewAndModified()
    {
        const TestWindow window;
        QVERIFY(window->doc->isModified());
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        QVERIFY(window.atoms().isEmpty());
        QVERIFY(!window->doc->parent());
    }

    void theViewIsTheCentralWidget()
    {
        const TestWindow window;
        QCOMPARE(window->centralWidget(), static_cast<QWidget*>(window->view));
    }

    void theViewTogglesAreOn()
    {
        const TestWindow window;
        QVERIFY(window->viewToolBar->isChecked());
        QVERIFY(window->viewStatusBar->isChecked());
        QVERIFY(window->viewLibraryBar->isChecked());
    }

    void theBarsAreShown()
    {
        const TestWindow window;
        QVERIFY(window.show());
        QVERIFY(window->statusBar()->isVisible());
        for (const QToolBar* toolBar : window->findChildren<QToolBar*>())
            QVERIFY2(toolBar->isVisible(), qPrintable(toolBar->objectName()));
    }

    // Switching the toggles on, the last thing at the start, puts a message that stays in place of the timed one.
    void theStartMessageIsReadyAndStays()
    {
        const TestWindow window;
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
    }

    void theStatusBarSaysReadyForFourSecondsWhenInitialised()
    {
        const TestWindow window;
        window->statusBar()->showMessage("something else");
        window->initStatusBar();
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 4000);
    }

    void movesWithoutAButtonReachTheView()
    {
        const TestWindow window;
        QVERIFY(window->view->viewport()->hasMouseTracking());
        QVERIFY(window.show());
        KytAtom* atom = window.atom(80, 80);
        QTest::mouseMove(window->view->viewport(), QPoint(40, 40));
        QTest::mouseMove(window->view->viewport(), QPoint(80, 80));
        QTRY_COMPARE(window->view->hover, static_cast<QCanvasItem*>(atom));
    }

    void theCaptionIsTranslated()
    {
        const BracketTranslator translator;
        const TestWindow window;
        QCOMPARE(window->windowTitle(), QString("[KytStudio 1.1]"));
        QCOMPARE(message(window), QString("[Ready.]"));
    }

    void theDestructorLeavesDocumentAndViewer()
    {
        auto* window = new KytStudioApp;
        QPointer<KytStudioDoc> doc = window->doc;
        QPointer<QCanvas> canvas = doc->canvas;
        QPointer<KytStudioView> view = window->view;
        QPointer<QActionGroup> group = window->viewGrp;
        KytI3dView* viewer = window->i3dviewer;
        delete window;
        QVERIFY(doc);
        QVERIFY(canvas);
        QVERIFY(!view);
        QVERIFY(!group);
        QCOMPARE(viewer->canvas.data(), canvas.data());
        delete viewer;
        delete canvas;
        QVERIFY(!doc->canvas);
        delete doc;
    }

    void twoWindowsHaveTwoDocuments()
    {
        const TestWindow one;
        const TestWindow other;
        QVERIFY(one->doc != other->doc);
        QVERIFY(one->doc->canvas != other->doc->canvas);
        one.atom(10, 10);
        QCOMPARE(one.atoms().size(), 1);
        QCOMPARE(other.atoms().size(), 0);
    }

    void toolbarToggleHidesTheFileBarOnly()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->viewToolBar->trigger();
        for (const QToolBar* toolBar : window->findChildren<QToolBar*>())
            QCOMPARE(toolBar->isVisible(), toolBar != window->fileToolbar);
        QVERIFY(window->statusBar()->isVisible());
        window->viewToolBar->trigger();
        QVERIFY(window->fileToolbar->isVisible());
    }

    void toolbarToggleShowsItsMessages()
    {
        const TestWindow window;
        window->statusBar()->showMessage("something else", 9000);
        const StatusLog log(window);
        window->slotViewToolBar(false);
        QCOMPARE(log.shown, QStringList({"Toggle toolbar...", "Ready."}));
        QCOMPARE(timeOut(window), 0);
    }

    void statusbarToggleHidesTheStatusBar()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->viewStatusBar->trigger();
        QVERIFY(!window->statusBar()->isVisible());
        for (const QToolBar* toolBar : window->findChildren<QToolBar*>())
            QVERIFY(toolBar->isVisible());
        window->viewStatusBar->trigger();
        QVERIFY(window->statusBar()->isVisible());
    }

    void statusbarToggleShowsItsMessages()
    {
        const TestWindow window;
        window->statusBar()->showMessage("something else", 9000);
        const StatusLog log(window);
        window->slotViewStatusBar(true);
        QCOMPARE(log.shown, QStringList({"Toggle statusbar...", "Ready."}));
        QCOMPARE(timeOut(window), 0);
    }

    void molLibToggleIsASecondSwitchOfTheStatusBar()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->viewLibraryBar->trigger();
        QVERIFY(!window->statusBar()->isVisible());
        QVERIFY(window->libraryToolBar->isVisible());
        window->viewLibraryBar->trigger();
        QVERIFY(window->statusBar()->isVisible());
        QVERIFY(window->libraryToolBar->isVisible());
    }

    void molLibToggleShowsTheStatusBarsMessages()
    {
        const TestWindow window;
        window->statusBar()->showMessage("something else", 9000);
        const StatusLog log(window);
        window->slotViewLibraryBar(true);
        QCOMPARE(log.shown, QStringList({"Toggle statusbar...", "Ready."}));
        QCOMPARE(timeOut(window), 0);
    }

    void statusbarOffAndMolLibOffAndOnShowsTheStatusBarAgain()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->viewStatusBar->trigger();
        window->viewLibraryBar->trigger();
        QVERIFY(!window->statusBar()->isVisible());
        window->viewLibraryBar->trigger();
        QVERIFY(window->statusBar()->isVisible());
        QVERIFY(!window->viewStatusBar->isChecked());
        QVERIFY(window->viewLibraryBar->isChecked());
    }

    void togglesEmitNothingWhenTheyAreOnAlready()
    {
        const TestWindow window;
        window->statusBar()->showMessage("something else");
        const StatusLog log(window);
        window->viewToolBar->setChecked(true);
        window->viewStatusBar->setChecked(true);
        window->viewLibraryBar->setChecked(true);
        QCOMPARE(log.shown, QStringList());
        window->viewToolBar->setChecked(false);
        QCOMPARE(log.shown, QStringList({"Toggle toolbar...", "Ready."}));
    }

    void bondDetailIsShownInTheModesThatDrawBonds_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("shown");
        QTest::newRow("view") << 0 << false;
        QTest::newRow("rotate") << 1 << false;
        QTest::newRow("bond") << 2 << true;
        QTest::newRow("dashed bond") << 3 << true;
        QTest::newRow("wedge up") << 4 << true;
        QTest::newRow("wedge down") << 5 << true;
        QTest::newRow("delete") << 6 << false;
        QTest::newRow("zigzag") << 7 << false;
    }

    void bondDetailIsShownInTheModesThatDrawBonds()
    {
        QFETCH(int, mode);
        QFETCH(bool, shown);
        const TestWindow window;
        window->view->canvasState = KytViewState(mode);
        window->statusBar()->showMessage("as it was");
        QByteArray text = "Bond Length: 30.000  Bond Angle: 0.00";
        window->slotDisplayBondDetail(text.data());
        QCOMPARE(message(window), shown ? QString(text) : QString("as it was"));
        QCOMPARE(timeOut(window), shown ? 15000 : 0);
    }

    void bondDetailIsTranslated()
    {
        const BracketTranslator translator;
        const TestWindow window;
        window->view->canvasState = KYTVS_drawSimpleBond;
        QByteArray text = "some text";
        window->slotDisplayBondDetail(text.data());
        QCOMPARE(message(window), QString("[some text]"));
    }

    void bondDetailFromTheViewReachesTheStatusBar()
    {
        const TestWindow window;
        window->view->canvasState = KYTVS_drawStereoDown;
        QByteArray text = "some text";
        const StatusLog log(window);
        emit window->view->displayBondDetail(text.data());
        QCOMPARE(log.shown, QStringList({"some text|15000"}));
    }

    void drawingABondWithTheMouseShowsItsDetail()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->drawBond->trigger();
        QTest::mouseClick(window->view->viewport(), Qt::LeftButton, {}, QPoint(100, 100));
        QTest::mouseMove(window->view->viewport(), QPoint(160, 100));
        QTRY_COMPARE(message(window), QString("Bond Length: 60.000  Bond Angle: 0.00"));
        QCOMPARE(timeOut(window), 15000);
        window->fixedLength->trigger();
        QTest::mouseMove(window->view->viewport(), QPoint(200, 100));
        QTRY_COMPARE(message(window), QString("Bond Length: 30.000  Bond Angle: 0.00"));
    }

    void atomCountIsShownInZigzagModeOnly_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode < 8; ++mode)
            QTest::addRow("mode %d", mode) << mode;
    }

    void atomCountIsShownInZigzagModeOnly()
    {
        QFETCH(int, mode);
        const TestWindow window;
        window->view->canvasState = KytViewState(mode);
        window->statusBar()->showMessage("as it was");
        window->slotZigzagAtomCount(5);
        QCOMPARE(message(window), mode == KYTVS_zigzag ? QString("5 Atoms") : QString("as it was"));
        QCOMPARE(timeOut(window), mode == KYTVS_zigzag ? 15000 : 0);
    }

    void atomCountIsTranslatedAsAFormat()
    {
        const BracketTranslator translator;
        const TestWindow window;
        window->view->canvasState = KYTVS_zigzag;
        window->slotZigzagAtomCount(5);
        QCOMPARE(message(window), QString("[5 Atoms]"));
        class German : public QTranslator {
        public:
            bool isEmpty() const override { return false; }
            QString translate(const char*, const char* text, const char*, int) const override
            {
                return qstrcmp(text, "%d Atoms") == 0 ? QString("Atome: %d") : QString();
            }
        } german;
        QCoreApplication::installTranslator(&german);
        window->slotZigzagAtomCount(12);
        QCOMPARE(message(window), QString("Atome: 12"));
    }

    void atomCountFromTheViewReachesTheStatusBar()
    {
        const TestWindow window;
        window->view->canvasState = KYTVS_zigzag;
        const StatusLog log(window);
        emit window->view->zigzagAtomValue(-3);
        emit window->view->zigzagAtomValue(9);
        QCOMPARE(log.shown, QStringList({"-3 Atoms|15000", "9 Atoms|15000"}));
    }

    void aPlacedChainReportsNoAtoms()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->zigzagStructure->trigger();
        QTest::mouseClick(window->view->viewport(), Qt::LeftButton, {}, QPoint(100, 100));
        QTest::mouseMove(window->view->viewport(), QPoint(160, 100));
        QTRY_VERIFY(message(window).endsWith(" Atoms"));
        QVERIFY(message(window) != "0 Atoms");
        QTest::mouseClick(window->view->viewport(), Qt::LeftButton, {}, QPoint(160, 100));
        QCOMPARE(message(window), QString("0 Atoms"));
        QVERIFY(window.atoms().size() > 2);
    }

    void aboutShowsItsText()
    {
        const TestWindow window;
        ModalSteps steps;
        steps.then<QMessageBox>([&](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QString("About..."));
            QCOMPARE(box->parentWidget(), static_cast<QWidget*>(window.get()));
            const QStringList lines = box->text().split('\n');
            QCOMPARE(lines.size(), 3);
            QCOMPARE(lines[0], QString("KytStudio"));
            QCOMPARE(lines[1], QString("Version 1.1"));
            QVERIFY(!lines[2].trimmed().isEmpty());
            QTest::keyClick(box, Qt::Key_Return);
        });
        window->helpAboutApp->trigger();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void aboutIsTranslated()
    {
        const TestWindow window;
        const BracketTranslator translator;
        ModalSteps steps;
        steps.then<QMessageBox>([](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QString("[About...]"));
            QVERIFY(box->text().startsWith("[KytStudio\nVersion 1.1\n"));
            QVERIFY(box->text().endsWith("]"));
            box->reject();
        });
        window->slotHelpAbout();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void the3DCommandAsksTheViewerAndEndsWithReady()
    {
        const NoThirdDimension blocked;
        const TestWindow window;
        window->statusBar()->showMessage("something else", 9000);
        const StatusLog log(window);
        StandardOutput output;
        window->I3DView->trigger();
        const QByteArray printed = output.text();
        QVERIFY2(printed.contains("SDL"), printed);
        QCOMPARE(log.shown, QStringList({"Opening I3D View", "Ready."}));
        QCOMPARE(timeOut(window), 0);
    }

    void the3DCommandWithoutAViewAsksNobody()
    {
        const NoThirdDimension blocked;
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        const StatusLog log(window);
        StandardOutput output;
        window->slotSelectI3DView();
        window->view = view;
        QCOMPARE(output.text(), QByteArray());
        QCOMPARE(log.shown, QStringList({"Opening I3D View", "Ready."}));
    }

    void the3DCommandCanBeRepeated()
    {
        const NoThirdDimension blocked;
        const TestWindow window;
        KytI3dView* viewer = window->i3dviewer;
        StandardOutput output;
        window->slotSelectI3DView();
        window->slotSelectI3DView();
        QCOMPARE(output.text().count('\n'), 2);
        QCOMPARE(window->i3dviewer, viewer);
    }

    void theProgramStartsWithItsCaptionAndSizeAndEndsWithItsWindow()
    {
        Program program(QDir::currentPath());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(!id.isEmpty());
        const QByteArray geometry = Program::xdotool({"getwindowgeometry", "--shell", id});
        QVERIFY2(geometry.contains("WIDTH=450\n"), geometry);
        QVERIFY2(geometry.contains("HEIGHT=400\n"), geometry);
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output, QByteArray());
    }

    void theProgramOpensTheFileThatItsEnvironmentNames()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("one.kyt", atomsInAFile(1)));
        const Program program(folder.path(), {"KYTSTUDIO_OPEN=" + folder.path("one.kyt")});
        QVERIFY(!Program::windowTitled(folder.path("one.kyt")).isEmpty());
    }

    void theProgramTakesNoArgumentsOfItsOwn()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("one.kyt", atomsInAFile(1)));
        Program program(folder.path(), {}, {"one.kyt"});
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(!id.isEmpty());
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
    }

    void theProgramReadsItsTranslationFromTheWorkingFolder()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("kytstudio.de_DE", translationFile("KytStudio 1.1", "Molekularwerk 1.1")));
        Program program(folder.path(), {"LC_ALL=de_DE.UTF-8", "LANG=de_DE.UTF-8", "LANGUAGE="});
        const QString id = Program::windowTitled("Molekularwerk 1.1");
        QVERIFY(!id.isEmpty());
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
    }

    void theProgramNamesAMissingLibraryFileOnStandardError()
    {
        const WorkingFolder folder;
        const QPoint button = buttonPlace("Molecule library", &KytStudioApp::kyfWater);
        Program program(folder.path());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::click(id, button);
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output.count('\n'), 1);
        QVERIFY2(program.output.contains("lib/water.kyf"), program.output);
    }

    void theProgramLoadsTheViewersLibrariesWhenItOpens()
    {
        Program program(QDir::currentPath());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        QVERIFY(hasLoaded(program, "libQt6Core"));
        QVERIFY(!hasLoaded(program, "libSDL"));
        QVERIFY(!hasLoaded(program, "libGLU"));
        for (int time = 0; time < 2; ++time) {
            Program::press("ctrl+f");
            const QString viewer = Program::windowTitled("MOLECULAR I3D VIEWER");
            QVERIFY(!viewer.isEmpty());
            QVERIFY(hasLoaded(program, "libSDL"));
            QVERIFY(hasLoaded(program, "libGLU"));
            Program::xdotool({"windowfocus", "--sync", viewer, "key", "Escape"});
            QVERIFY(Program::hasKeyboard(id));
            QTest::qWait(500); // keys that come until the viewer has closed altogether are dropped
        }
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output, QByteArray());
    }

    void theProgramGoesOnWithoutALibraryOfTheViewer_data()
    {
        QTest::addColumn<QString>("library");
        QTest::newRow("SDL") << "libSDL-1.2.so.0";
        QTest::newRow("GLU") << "libGLU.so.1";
    }

    void theProgramGoesOnWithoutALibraryOfTheViewer()
    {
        QFETCH(QString, library);
        const WorkingFolder folder;
        QFile broken(folder.path(library));
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("not a library") > 0);
        broken.close();
        Program program(QDir::currentPath(), {"LD_LIBRARY_PATH=" + folder.path()});
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::press("ctrl+f");
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output.count('\n'), 1);
        QVERIFY2(program.output.startsWith("SDL_GetVideoInfo() failed. SDL Error: "), program.output);
        QVERIFY2(program.output.contains(library.toLatin1()), program.output);
    }

    void theProgramEndsOnExitAfterTheQuestion()
    {
        Program program(QDir::currentPath());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::press("ctrl+q");
        const QString question = Program::windowTitled("Quit !");
        QVERIFY(Program::hasKeyboard(question));
        Program::press("Escape");
        QTest::qWait(300);
        QCOMPARE(program.process.state(), QProcess::Running);
        QVERIFY(Program::hasKeyboard(id));
        Program::press("ctrl+q");
        QVERIFY(Program::hasKeyboard(Program::windowTitled("Quit !")));
        Program::press("Return");
        QVERIFY2(program.endedWell(), program.output);
    }

    void theProgramDrawsABondAndSavesIt()
    {
        const QPoint button = buttonPlace("draw operations", &KytStudioApp::drawBond);
        const QPoint from = canvasPlace({60, 60});
        const QPoint to = canvasPlace({120, 90});
        Program program(QDir::currentPath());
        const WorkingFolder files;
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::click(id, button);
        Program::click(id, from);
        Program::click(id, to);
        Program::press("ctrl+s");
        const QString dialog = Program::windowTitled("Choose a Filename to save under");
        QVERIFY(Program::hasKeyboard(dialog));
        Program::xdotool({"type", "--clearmodifiers", files.path("drawn")});
        Program::press("Return");
        QTRY_VERIFY(QFile::exists("drawn.kyt"));
        QTRY_COMPARE(readFile("drawn.kyt"),
                     QByteArray("KYTFILE\n MOLECULE 2 1\n  ATOM C 60 60 0 255 0 0\n  ATOM C 120 90 0 255 0 0\n"
                                "  BOND 0 1 1 1\n END_MOLECULE\nEND_KYTFILE\n"));
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
    }

    void leavingWithABondHalfDrawnIsClean_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::newRow("bond") << "drawBond";
        QTest::newRow("wedge") << "drawStereoUp";
        QTest::newRow("chain") << "zigzagStructure";
    }

    void leavingWithABondHalfDrawnIsClean()
    {
        QFETCH(QString, mode);
        const QHash<QString, QAction * KytStudioApp::*> members{{"drawBond", &KytStudioApp::drawBond},
                                                                {"drawStereoUp", &KytStudioApp::drawStereoUp},
                                                                {"zigzagStructure", &KytStudioApp::zigzagStructure}};
        const QPoint button = buttonPlace("draw operations", members[mode]);
        const QPoint from = canvasPlace({60, 60});
        Program program(QDir::currentPath());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::click(id, button);
        Program::click(id, from);
        Program::moveTo(id, from + QPoint(80, 50));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output, QByteArray());
    }

    void leavingAfterADialogWasOpenIsClean()
    {
        const QPoint button = buttonPlace("draw operations", &KytStudioApp::drawBond);
        const QPoint from = canvasPlace({60, 60});
        Program program(QDir::currentPath());
        const QString id = Program::windowTitled("KytStudio 1.1");
        QVERIFY(Program::hasKeyboard(id));
        Program::click(id, button);
        Program::click(id, from);
        Program::click(id, from, 3);
        const QString dialog = Program::windowTitled("Atom Properties");
        QVERIFY(Program::hasKeyboard(dialog));
        Program::press("alt+F4");
        QTest::qWait(300);
        QCOMPARE(program.process.state(), QProcess::Running);
        QVERIFY(Program::hasKeyboard(id));
        Program::press("alt+F4");
        QVERIFY2(program.endedWell(), program.output);
        QCOMPARE(program.output, QByteArray());
    }

    void quittingWithSomethingOpenIsClean_data()
    {
        QTest::addColumn<QString>("what");
        for (const char* what :
             {"atom dialog", "bond dialog", "half-drawn bond", "drag", "file dialog", "close question"})
            QTest::newRow(what) << QString(what);
    }

    void quittingWithSomethingOpenIsClean()
    {
        QFETCH(QString, what);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(), {"--leave-with", what});
        QVERIFY(process.waitForFinished(60000));
        const QByteArray output = process.readAll();
        QVERIFY2(process.exitStatus() == QProcess::NormalExit, output);
        QVERIFY2(process.exitCode() == 0, QByteArray::number(process.exitCode()) + ": " + output);
    }
};

int main(int argc, char** argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--leave-with") == 0)
        return leaveWith(QString::fromLocal8Bit(argv[2]), argc, argv);
    return runTests<test_kytstudio>(argc, argv);
}

#include "test_kytstudio.moc"
