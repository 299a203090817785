#include "FileDialogs.h"

#include "app/StateLabel.h"

#include <QAbstractButton>
#include <QAction>
#include <QActionGroup>
#include <QFileIconProvider>
#include <QLabel>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>

#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t ordinaryId = 65534; // nobody

/// The title that the window manager is told, as xprop prints it.
QString titleOnScreen(const QWidget& window)
{
    QProcess xprop;
    xprop.start("xprop", {"-id", QString::number(window.winId()), "-notype", "_NET_WM_NAME"});
    xprop.waitForFinished();
    const QString line = QString::fromUtf8(xprop.readAllStandardOutput()).trimmed();
    return line.section(" = ", 1).chopped(1).mid(1);
}

/// Translates the ending of workspace files to nothing.
class NoEnding : public QTranslator {
public:
    NoEnding() { QCoreApplication::installTranslator(this); }
    ~NoEnding() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override
    {
        return qstrcmp(text, ".kyt") == 0 ? QString("") : QString();
    }
};

/// Runs the event loop with `command` in it; true when something quit it, false when nothing did for a while.
bool quits(const std::function<void()>& command)
{
    constexpr int stayed = 17;
    QTimer::singleShot(0, qApp, command);
    QTimer fallback;
    fallback.setSingleShot(true);
    QObject::connect(&fallback, &QTimer::timeout, qApp, [] { QCoreApplication::exit(stayed); });
    fallback.start(3000);
    return QApplication::exec() != stayed;
}

using Answer = std::function<void(QMessageBox*)>;

} // namespace

Q_DECLARE_METATYPE(Answer)
Q_DECLARE_METATYPE(FileCommand)

class test_kytstudio_file : public QObject {
    Q_OBJECT

private slots:
    void newOnAnEmptyCanvasOnlyShowsCreatingFile()
    {
        const TestWindow window;
        window->viewMode->trigger();
        const qsizetype items = window->doc->canvas->allItems().size();
        QCanvas* canvas = window->doc->canvas;
        const StatusLog log(window);
        window->slotFileNew();
        QCOMPARE(log.shown, QStringList({"Creating file"}));
        QCOMPARE(message(window), QString("Creating file"));
        QCOMPARE(timeOut(window), 0);
        QCOMPARE(window->doc->canvas, canvas);
        QCOMPARE(window->doc->canvas->allItems().size(), items);
        QVERIFY(window->viewMode->isChecked());
    }

    void newWithoutACanvasOnlyShowsCreatingFile()
    {
        const TestWindow window;
        delete window->doc->canvas;
        window->slotFileNew();
        QCOMPARE(message(window), "Creating file");
        QVERIFY(!window->doc->canvas);
    }

    void newClearsAtomsBondsAndLabels()
    {
        const TestWindow window;
        KytAtom* a = window.atom(50, 50);
        KytAtom* b = window.atom(90, 50);
        KytAtom* c = window.atom(90, 90);
        window.atom(150, 150);
        window.bond(a, b, {KYTBT_SingleBond, KYTBT_SingleBond});
        window.bond(b, c, {KYTBT_StereoUp});
        window.bond(c, a, {KYTBT_DashedLine});
        QVERIFY(itemCount(window) > 8);
        window->fileNew->trigger();
        QCOMPARE(itemCount(window), 0);
    }

    void newKeepsNameModifiedMarkAndCaption()
    {
        const TestWindow window;
        window->doc->docName = "a name.kyt";
        window->setWindowTitle("a caption");
        window->slotFileNew();
        QCOMPARE(window->doc->docName, QString("a name.kyt"));
        QCOMPARE(window->windowTitle(), QString("a caption"));
        QVERIFY(window->doc->isModified());
        window->doc->modified = false;
        window->slotFileNew();
        QVERIFY(!window->doc->isModified());
    }

    void newKeepsTheRubberBandAndOtherItems()
    {
        const TestWindow window;
        window.atom(50, 50);
        auto* remark = new QCanvasText("a remark", window->doc->canvas);
        auto* line = new QCanvasLine(window->doc->canvas);
        window->slotFileNew();
        const QCanvasItemList left = window->doc->canvas->allItems();
        QCOMPARE(left.size(), 3);
        QVERIFY(left.contains(remark));
        QVERIFY(left.contains(line));
        QVERIFY(left.contains(tempBond));
    }

    void clearingInTheMiddleOfAGestureEndsIt_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("command");
        const std::pair<const char*, int> gestures[] = {{"drag", KYTVS_view},
                                                        {"rotation", KYTVS_rotate},
                                                        {"half-drawn bond", KYTVS_drawSimpleBond},
                                                        {"half-drawn wedge", KYTVS_drawStereoDown},
                                                        {"half-drawn chain", KYTVS_zigzag}};
        for (const auto& [gesture, mode] : gestures) {
            for (const char* command : {"New", "Open", "Close"})
                QTest::addRow("%s, %s", command, gesture) << mode << command;
        }
    }

    void clearingInTheMiddleOfAGestureEndsIt()
    {
        QFETCH(int, mode);
        QFETCH(QString, command);
        const WorkingFolder folder;
        QVERIFY(writeFile("empty.kyt", emptyWorkspace));
        const TestWindow window;
        QVERIFY(window.show());
        QWidget* viewport = window->view->viewport();
        KytAtom* a = window.atom(60, 60);
        window.bond(a, window.atom(100, 60));
        window->view->canvasState = KytViewState(mode);
        QTest::mousePress(viewport, Qt::LeftButton, {}, QPoint(60, 60));
        QTest::mouseMove(viewport, QPoint(70, 80));

        ModalSteps steps;
        if (command == "New") {
            window->slotFileNew();
        } else if (command == "Open") {
            thenType(steps, openCommand, folder.path("empty.kyt"));
            window->slotFileOpen();
        } else {
            thenClick(steps, QMessageBox::No);
            window->slotFileClose();
        }
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(itemCount(window), 0);
        QVERIFY(!window->view->hover);
        QVERIFY(!window->view->moving);
        QVERIFY(!window->view->lastAtom);
        QCOMPARE(window->view->isLastAtom, 0);
        QVERIFY(!tempBond->isVisible());
        QTest::mouseMove(viewport, QPoint(75, 85));
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(75, 85));
        QCOMPARE(itemCount(window), 0);
    }

    void newClearsAHundredThousandBondsWithoutRunningOutOfStack()
    {
        const TestWindow window;
        KytAtom* last = window.atom(0, 0);
        for (int i = 1; i <= 100000; ++i) {
            auto* next = new KytAtom(window->doc->canvas, 0.0F, false);
            next->move(5 + i % 300 * 6, 5 + i / 300 * 5);
            window.looseBond(last, next);
            last = next;
        }
        window->slotFileNew();
        QCOMPARE(itemCount(window), 0);
    }

    void openAsksInTheStatedDialog()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("data"));
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Open file dialog", [&](QFileDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), QString("Choose a File"));
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(dialog->directory().canonicalPath(), folder.path("data"));
            QCOMPARE(dialog->nameFilters(), QStringList({"KytBench (*.kyt)"}));
            QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptOpen);
            QCOMPARE(dialog->fileMode(), QFileDialog::ExistingFile);
            QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
            QVERIFY(!dialog->testOption(QFileDialog::DontResolveSymlinks));
            pressEscape(dialog);
        });
        window->fileOpen->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void openLooksIntoNoFileOfTheFolder()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("document", "%PDF-1.4"));
        QVERIFY(writeFile("document.kyt", "%PDF-1.4"));
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Open file dialog", [&](QFileDialog* dialog) {
            QCOMPARE(dialog->iconProvider()->type(QFileInfo("document")), QString());
            QCOMPARE(dialog->iconProvider()->type(QFileInfo("document.kyt")), QString("kyt"));
            QVERIFY(!dialog->iconProvider()->icon(QFileInfo("document.kyt")).isNull());
            QVERIFY(!dialog->iconProvider()->type(QFileInfo(folder.path())).isEmpty());
            pressEscape(dialog);
        });
        window->slotFileOpen();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void openReplacesTheDrawing()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("three.kyt", atomsInAFile(3, "O")));
        const TestWindow window;
        window.bond(window.atom(50, 50), window.atom(90, 50));
        QCOMPARE(choose(window, openCommand, folder.path("three.kyt")), QString());
        QCOMPARE(window.atoms().size(), 3);
        QCOMPARE(window.atoms()[0]->getSymbol(), QString("O"));
        QCOMPARE(itemCount(window), 6);
        QCOMPARE(window->doc->docName, folder.path("three.kyt"));
        QCOMPARE(window->windowTitle(), folder.path("three.kyt"));
    }

    void openReadsUnlockedAtoms()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("one.kyt", atomsInAFile(1)));
        const TestWindow window;
        QCOMPARE(choose(window, openCommand, folder.path("one.kyt")), QString());
        QCOMPARE(window.atoms().size(), 1);
        QVERIFY(!window.atoms()[0]->locked);
    }

    void openKeepsTheMode()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("one.kyt", atomsInAFile(1)));
        const TestWindow window;
        window->drawStereoUp->trigger();
        QCOMPARE(choose(window, openCommand, folder.path("one.kyt")), QString());
        QCOMPARE(window->view->canvasState, KYTVS_drawStereoUp);
        QCOMPARE(window->viewGrp->checkedAction(), window->drawStereoUp);
    }

    void openShowsItsMessages()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("one.kyt", atomsInAFile(1)));
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(choose(window, openCommand, folder.path("one.kyt")), QString());
        QCOMPARE(log.shown.first(), QString("Opening file...|5000"));
        QCOMPARE(log.shown.last(), QString("Loaded document: %1|4000").arg(folder.path("one.kyt")));
    }

    void openByTypingANameInTheFolder()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("data"));
        QVERIFY(writeFile("data/two.kyt", atomsInAFile(2)));
        const TestWindow window;
        QCOMPARE(choose(window, openCommand, "two.kyt"), QString());
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(window->doc->docName, folder.path("data/two.kyt"));
    }

    void openResolvesSymbolicLinks()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("target.kyt", atomsInAFile(2)));
        QVERIFY(QFile::link(folder.path("target.kyt"), folder.path("link.kyt")));
        const TestWindow window;
        QCOMPARE(choose(window, openCommand, folder.path("link.kyt")), QString());
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(window->doc->docName, folder.path("target.kyt"));
    }

    void openShowsTheNameLetterForLetterInTheCaption_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << "plain.kyt";
        QTest::newRow("blank") << "a drawing.kyt";
        QTest::newRow("placeholder") << "a[*]b.kyt";
        QTest::newRow("two placeholders") << "a[*][*]b.kyt";
        QTest::newRow("three placeholders apart") << "[*]a[*]b[*].kyt";
        QTest::newRow("ampersand") << "a&b.kyt";
        QTest::newRow("per cent") << "a%1b.kyt";
    }

    void openShowsTheNameLetterForLetterInTheCaption()
    {
        QFETCH(QString, name);
        const WorkingFolder folder;
        QVERIFY(writeFile(name, atomsInAFile(1)));
        const TestWindow window;
        QVERIFY(window.show());
        QCOMPARE(choose(window, openCommand, folder.path(name)), QString());
        QCOMPARE(window->doc->docName, folder.path(name));
        QCOMPARE(message(window), "Loaded document: " + folder.path(name));
        QTRY_COMPARE(titleOnScreen(*window.get()), folder.path(name));
    }

    void openAMalformedFileKeepsWhatWasRead()
    {
        const WorkingFolder folder;
        QByteArray half = atomsInAFile(2);
        half.truncate(half.indexOf("END_KYTFILE"));
        QVERIFY(writeFile("half.kyt", half + "nonsense"));
        const TestWindow window;
        window.atom(50, 50);
        QCOMPARE(choose(window, openCommand, folder.path("half.kyt")), QString());
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(message(window), "Loaded document: " + folder.path("half.kyt"));
    }

    void openAFileThatCannotBeReadStillReportsItLoaded()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.atom(50, 50);
        QVERIFY(writeFile("gone.kyt", atomsInAFile(1)));
        ModalSteps steps;
        steps.then<QFileDialog>([&](QFileDialog* dialog) {
            connect(dialog, &QFileDialog::fileSelected, this, [] { QFile::remove("gone.kyt"); });
            typeNameAndEnter(dialog, folder.path("gone.kyt"));
        });
        window->slotFileOpen();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!QFile::exists("gone.kyt"));
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(window->doc->docName, folder.path("gone.kyt"));
        QCOMPARE(window->windowTitle(), folder.path("gone.kyt"));
        QCOMPARE(message(window), "Loaded document: " + folder.path("gone.kyt"));
    }

    void cancellingOpenEmptiesTheNameAndKeepsTheDrawing()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.bond(window.atom(50, 50), window.atom(90, 50));
        const qsizetype items = itemCount(window);
        window->doc->docName = "before.kyt";
        const StatusLog log(window);
        QCOMPARE(cancel(window, openCommand), QString());
        QCOMPARE(window->doc->docName, QString());
        QCOMPARE(itemCount(window), items);
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
        QCOMPARE(log.shown.first(), QString("Opening file...|5000"));
        QCOMPARE(log.shown.last(), QString("Opening aborted|4000"));
    }

    void closingTheOpenDialogWindowIsCancelling()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Open file dialog", [](QFileDialog* dialog) { dialog->windowHandle()->close(); });
        window->slotFileOpen();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window->doc->docName, QString());
        QCOMPARE(message(window), QString("Opening aborted"));
    }

    void afterACancelledOpenSaveWritesWithoutAskingToTheEmptyName()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.atom(50, 50);
        QCOMPARE(cancel(window, openCommand), QString());
        const ModalSteps none;
        window->slotFileSave();
        QVERIFY2(none.done(), none.trouble());
        QCOMPARE(message(window), QString("Saving Done !"));
        QCOMPARE(timeOut(window), 4000);
        QCOMPARE(window->doc->docName, QString());
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(window.atoms().size(), 1);
    }

    void openAtStartOpensAsTheCommandDoes()
    {
        const WorkingFolder folder;
        const TestWindow window;
        QVERIFY(writeFile("a.kyt", atomsInAFile(2)));
        window->openAtStart("a.kyt");
        QCOMPARE(window.atoms().size(), 2);
        QCOMPARE(window->doc->docName, folder.path("a.kyt"));
        QCOMPARE(window->windowTitle(), folder.path("a.kyt"));
        QCOMPARE(message(window), "Loaded document: " + folder.path("a.kyt"));
    }

    void openAtStartKeepsEverythingIfThereIsNothingToRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << "missing.kyt";
        QTest::newRow("a folder") << "folder.kyt";
        QTest::newRow("no regular file") << "/dev/null";
    }

    void openAtStartKeepsEverythingIfThereIsNothingToRead()
    {
        QFETCH(const QString, name);
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("folder.kyt"));
        const TestWindow window;
        window.atom(100, 100);
        const QString title = window->windowTitle();
        window->openAtStart(name);
        QCOMPARE(window.atoms().size(), 1);
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        QCOMPARE(window->windowTitle(), title);
        QVERIFY(
            window->findChild<StateLabel*>()->wholeText().contains("cannot be opened: " + QFileInfo(name).fileName()));
    }

    void saveAsksInTheStatedDialogWhileTheNameIsTheDefault()
    {
        const WorkingFolder folder;
        const TestWindow window;
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            expectSaveDialog(dialog);
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(message(window), QString("Saving file..."));
            QCOMPARE(timeOut(window), 5000);
            typeNameAndEnter(dialog, folder.path("a"));
        });
        window->fileSave->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void saveUnderATypedNameAppendsTheEnding()
    {
        const WorkingFolder folder;
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(choose(window, saveCommand, folder.path("a")), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(readFile("a.kyt"), emptyWorkspace);
        QCOMPARE(window->doc->docName, folder.path("a.kyt"));
        QCOMPARE(log.shown.first(), QString("Saving file...|5000"));
        QCOMPARE(log.shown.last(), QString("Saving Done !|4000"));
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
    }

    void theEndingIsAppendedAlsoToANameThatHasIt()
    {
        for (const FileCommand& command : {saveCommand, saveAsCommand}) {
            const WorkingFolder folder;
            const TestWindow window;
            QCOMPARE(choose(window, command, folder.path("a.kyt")), QString());
            QCOMPARE(folder.names(), QStringList({"a.kyt.kyt"}));
            QCOMPARE(window->doc->docName,
                     command.slot == saveCommand.slot ? folder.path("a.kyt.kyt") : QString("noname.kyt"));
        }
    }

    void saveByTypingANameInTheFolder()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            dialog->setDirectory(folder.path());
            typeNameAndEnter(dialog, "a");
        });
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
    }

    void saveWithANameDoesNotAsk()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "named";
        const StatusLog log(window);
        window->slotFileSave();
        QCOMPARE(folder.names(), QStringList({"named"}));
        QCOMPARE(window->doc->docName, QString("named"));
        QCOMPARE(log.shown, QStringList({"Saving file...|5000", "Saving Done !|4000"}));
    }

    void saveTwiceAsksOnce()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        thenType(steps, saveCommand, folder.path("a"));
        window->slotFileSave();
        window.atom(50, 50);
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QVERIFY(readFile("a.kyt").contains("ATOM C 50 50 0 255 0 0"));
    }

    void saveThatFailsStillSaysDone()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = folder.path("no such folder/a.kyt");
        window->slotFileSave();
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(message(window), QString("Saving Done !"));
    }

    void saveDoesNotWriteWhenTheDocumentIsNotModified()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->modified = false;
        window->doc->docName = "a.kyt";
        window->slotFileSave();
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(message(window), QString("Saving Done !"));
    }

    void cancellingSaveWritesAFileNamedOnlyByItsEnding()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.atom(50, 50);
        QCOMPARE(cancel(window, saveCommand), QString());
        QCOMPARE(folder.names(), QStringList({".kyt"}));
        QVERIFY(readFile(".kyt").contains("ATOM C 50 50 0 255 0 0"));
        QCOMPARE(window->doc->docName, QString(".kyt"));
        QCOMPARE(message(window), QString("Saving Done !"));
    }

    void saveComparesWithTheTranslatedDefaultName()
    {
        const WorkingFolder folder;
        const BracketTranslator translator;
        const TestWindow window;
        QCOMPARE(window->doc->docName, QString("[noname.kyt]"));
        QCOMPARE(choose(window, saveCommand, folder.path("a")), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
    }

    void savedDrawingsOpenAgain()
    {
        const WorkingFolder folder;
        const TestWindow window;
        KytAtom* a = window.atom(100, 100);
        KytAtom* b = window.atom(130, 100);
        b->setSymbol("O");
        window.bond(a, b);
        window->doc->docName = folder.path("a.kyt");
        window->slotFileSave();
        const QByteArray saved = readFile("a.kyt");
        QCOMPARE(saved,
                 QByteArray("KYTFILE\n MOLECULE 2 1\n  ATOM C 100 100 0 255 0 0\n  ATOM O 130 100 0 255 0 0\n"
                            "  BOND 0 1 1 1\n END_MOLECULE\nEND_KYTFILE\n"));
        window->slotFileNew();
        QCOMPARE(choose(window, openCommand, folder.path("a.kyt")), QString());
        QCOMPARE(itemCount(window), 5);
        window->slotFileSave();
        QCOMPARE(readFile("a.kyt"), saved);
    }

    void saveAsksBeforeOverwritingAboutTheNameWithTheEnding()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("a.kyt", "precious"));
        const TestWindow window;
        bool asked = false;
        ModalSteps steps;
        thenType(steps, saveCommand, folder.path("a"));
        steps.then<QMessageBox>([&](QMessageBox* box) {
            asked = true;
            QVERIFY2(box->text().contains("a.kyt"), qPrintable(box->text()));
            QVERIFY(qobject_cast<QFileDialog*>(box->parentWidget()));
            QVERIFY(box->parentWidget()->isVisible());
            QCOMPARE(readFile("a.kyt"), QByteArray("precious"));
            QTest::mouseClick(box->button(QMessageBox::Yes), Qt::LeftButton);
        });
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(asked);
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(readFile("a.kyt"), emptyWorkspace);
    }

    void sayingNoToOverwritingLeavesTheDialogOpen()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("a.kyt", "precious"));
        const TestWindow window;
        ModalSteps steps;
        thenType(steps, saveCommand, folder.path("a"));
        thenClick(steps, QMessageBox::No);
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            QVERIFY(dialog->isVisible());
            typeNameAndEnter(dialog, folder.path("b"));
        });
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList({"a.kyt", "b.kyt"}));
        QCOMPARE(readFile("a.kyt"), QByteArray("precious"));
        QCOMPARE(window->doc->docName, folder.path("b.kyt"));
    }

    void cancellingAfterNoIsCancelling()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("a.kyt", "precious"));
        const TestWindow window;
        ModalSteps steps;
        thenType(steps, saveCommand, folder.path("a"));
        steps.then<QMessageBox>([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
        thenCancel(steps, saveCommand);
        window->slotFileSave();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList({".kyt", "a.kyt"}));
        QCOMPARE(readFile("a.kyt"), QByteArray("precious"));
    }

    void saveShowsTheFileThatItWillWrite_data()
    {
        QTest::addColumn<FileCommand>("command");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        const auto rows = [](const char* name, const FileCommand& command) {
            const auto row = [&](const char* what, const char* typed, const char* shown) {
                QTest::addRow("%s: %s", name, what) << command << QString(typed) << QString(shown);
            };
            row("a name", "mine", "Saves as: %1/mine.kyt");
            row("a name with the extension", "mine.kyt", "Saves as: %1/mine.kyt.kyt");
            row("in a folder", "inner/mine", "Saves as: %1/inner/mine.kyt");
            row("a folder", "inner", "");
            row("nothing", "", "");
        };
        rows("Save", saveCommand);
        rows("Save As", saveAsCommand);
    }

    void saveShowsTheFileThatItWillWrite()
    {
        QFETCH(const FileCommand, command);
        QFETCH(const QString, typed);
        QFETCH(const QString, shown);
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("inner"));
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>(command.dialog, [&](QFileDialog* dialog) {
            dialog->setDirectory(folder.path());
            typeName(dialog, typed);
            QCOMPARE(dialog->findChild<QLabel*>("fileToWrite")->text(),
                     shown.isEmpty() ? shown : shown.arg(folder.path()));
            pressEscape(dialog);
        });
        (window.get()->*command.slot)();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void saveRefusesNamesThatCannotBeWritten_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("a missing folder") << "missing/mine"
                                          << "The folder \"%1/missing\" does not exist.";
        QTest::newRow("a folder of that name") << "taken"
                                               << "\"taken.kyt\" is a folder.";
        QTest::newRow("a pipe") << "pipe"
                                << "\"pipe.kyt\" is not a regular file.";
        QTest::newRow("a read-only file") << "fixed"
                                          << "No write permission for \"fixed.kyt\".";
        QTest::newRow("a read-only folder") << "closed/mine"
                                            << "No write permission for \"%1/closed\".";
    }

    void saveRefusesNamesThatCannotBeWritten()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, reason);
        const WorkingFolder folder;
        QCOMPARE(chmod(".", 0755), 0);
        QVERIFY(QDir().mkdir("taken.kyt"));
        QVERIFY(QDir().mkdir("closed"));
        QCOMPARE(mkfifo("pipe.kyt", 0600), 0);
        QVERIFY(writeFile("fixed.kyt", "precious"));
        QCOMPARE(chmod("fixed.kyt", 0444), 0);
        QCOMPARE(chmod("closed", 0555), 0);
        const TestWindow window;
        ModalSteps steps;
        // Root may write everywhere: permissions are those of the real user, who is somebody else meanwhile.
        const uid_t user = getuid();
        if (user == 0)
            QCOMPARE(setresuid(ordinaryId, 0, 0), 0);
        thenType(steps, saveCommand, folder.path(name));
        steps.then<QFileDialog>(saveCommand.dialog, [&](QFileDialog* dialog) {
            const auto* below = dialog->findChild<QLabel*>("fileToWrite");
            QCOMPARE(below->text(), reason.contains("%1") ? reason.arg(folder.path()) : reason);
            QVERIFY(below->font().bold());
            QCOMPARE(setresuid(user, user, user), 0);
            typeNameAndEnter(dialog, folder.path("good"));
        });
        window->slotFileSave();
        QCOMPARE(setresuid(user, user, user), 0);
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(window->doc->docName, folder.path("good.kyt"));
        QCOMPARE(readFile("good.kyt"), emptyWorkspace);
        QCOMPARE(readFile("fixed.kyt"), QByteArray("precious"));
    }

    void aFileWithTheTypedNameItselfIsNotAskedAbout()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("a.kyt", "precious"));
        const TestWindow window;
        QCOMPARE(choose(window, saveCommand, folder.path("a.kyt")), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt", "a.kyt.kyt"}));
        QCOMPARE(readFile("a.kyt"), QByteArray("precious"));
    }

    void saveAsAsksBeforeOverwritingToo()
    {
        const WorkingFolder folder;
        QVERIFY(writeFile("a.kyt", "precious"));
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            dialog->setDirectory(folder.path());
            typeNameAndEnter(dialog, "a");
        });
        steps.then<QMessageBox>([](QMessageBox* box) {
            QVERIFY2(box->text().contains("a.kyt"), qPrintable(box->text()));
            QTest::mouseClick(box->button(QMessageBox::No), Qt::LeftButton);
        });
        steps.then<QFileDialog>("Save File dialog", [](QFileDialog* dialog) { pressEnter(dialog); });
        thenClick(steps, QMessageBox::Yes);
        window->slotFileSaveAs();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(readFile("a.kyt"), emptyWorkspace);
    }

    void saveAsAsksInTheStatedDialog()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            expectSaveDialog(dialog);
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(message(window), QString("Saving file under new filename..."));
            QCOMPARE(timeOut(window), 5000);
            typeNameAndEnter(dialog, folder.path("a"));
        });
        window->fileSaveAs->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(!window->findChild<QFileDialog*>());
    }

    void saveAsWritesUnderTheTypedNameAndKeepsTheDocumentsName()
    {
        const WorkingFolder folder;
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(choose(window, saveAsCommand, folder.path("a")), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        QCOMPARE(window->windowTitle(), QString("KytStudio 1.1"));
        QCOMPARE(log.shown.first(), QString("Saving file under new filename...|5000"));
        QCOMPARE(log.shown.mid(log.shown.size() - 2), QStringList({"Saving As..|5000", "Saving Done !|4000"}));
    }

    void saveAsWritesAlsoWhenNotModified()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->modified = false;
        QCOMPARE(choose(window, saveAsCommand, folder.path("a")), QString());
        QCOMPARE(readFile("a.kyt"), emptyWorkspace);
    }

    void saveAsAsksAlsoWithAName()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "named.kyt";
        QCOMPARE(choose(window, saveAsCommand, folder.path("a")), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(window->doc->docName, QString("named.kyt"));
    }

    void cancellingSaveAsWritesAFileNamedOnlyByItsEndingAndSaysDone()
    {
        const WorkingFolder folder;
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(cancel(window, saveAsCommand), QString());
        QCOMPARE(folder.names(), QStringList({".kyt"}));
        QCOMPARE(readFile(".kyt"), emptyWorkspace);
        QCOMPARE(window->doc->docName, QString("noname.kyt"));
        QCOMPARE(log.shown.mid(log.shown.size() - 2), QStringList({"Saving As..|5000", "Saving Done !|4000"}));
    }

    void saveAsThatFailsStillSaysDone()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QFileDialog>("Save File dialog", [&](QFileDialog* dialog) {
            QVERIFY(QDir().mkdir("gone"));
            dialog->setDirectory(folder.path("gone"));
            connect(dialog, &QFileDialog::fileSelected, this, [] { QDir().rmdir("gone"); });
            typeNameAndEnter(dialog, "a");
        });
        window->slotFileSaveAs();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(message(window), QString("Saving Done !"));
    }

    void anEmptyNameAbortsSaveAsWhereTheEndingIsTranslatedAway()
    {
        const WorkingFolder folder;
        const NoEnding translator;
        const TestWindow window;
        const StatusLog log(window);
        QCOMPARE(cancel(window, saveAsCommand), QString());
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(log.shown.mid(log.shown.size() - 2), QStringList({"Saving As..|5000", "Saving aborted|4000"}));
    }

    void closeAsksInTheStatedBox()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QMessageBox>([&](QMessageBox* box) {
            QCOMPARE(message(window), QString("Closing file..."));
            QCOMPARE(timeOut(window), 5000);
            QCOMPARE(box->windowTitle(), QString("Close !"));
            QCOMPARE(box->text(), QString("Closing the File..\nDo your want to save ur changes to File?"));
            QCOMPARE(box->icon(), QMessageBox::Information);
            QVERIFY(!box->parentWidget());
            QVERIFY(box->isModal());
            QCOMPARE(box->buttons().size(), 3);
            QCOMPARE(box->button(QMessageBox::Yes)->text(), QString("Save"));
            QCOMPARE(box->button(QMessageBox::No)->text(), QString("Discard"));
            QVERIFY(box->button(QMessageBox::Cancel));
            QCOMPARE(box->button(QMessageBox::Cancel)->text().remove('&'), QString("Cancel"));
            QCOMPARE(box->defaultButton(), box->button(QMessageBox::Yes));
            QCOMPARE(box->escapeButton(), box->button(QMessageBox::Cancel));
            QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
        });
        window->fileClose->trigger();
        QVERIFY2(steps.done(), steps.trouble());
    }

    void closeAsksAlsoWhenNothingIsModified()
    {
        const TestWindow window;
        window->doc->modified = false;
        QCOMPARE(closeWith(window, QMessageBox::Cancel), QString());
    }

    void closeAndSaveWritesThenClears()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window.bond(window.atom(50, 50), window.atom(90, 50));
        const StatusLog log(window);
        QCOMPARE(closeWith(window, QMessageBox::Yes), QString());
        QVERIFY(readFile("a.kyt").contains("MOLECULE 2 1"));
        QCOMPARE(itemCount(window), 0);
        QCOMPARE(log.shown.first(), QString("Closing file...|5000"));
        QCOMPARE(log.shown.mid(log.shown.size() - 3),
                 QStringList({"Saving file...|5000", "Saving Done !|4000", "Done !|4000"}));
    }

    void closeAndSaveAsksForANameFirst()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.atom(50, 50);
        ModalSteps steps;
        thenClick(steps, QMessageBox::Yes);
        thenType(steps, saveCommand, folder.path("a"));
        window->slotFileClose();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(readFile("a.kyt").contains("ATOM C 50 50"));
        QCOMPARE(itemCount(window), 0);
        QCOMPARE(message(window), QString("Done !"));
    }

    void closeAndDiscardClears()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window.bond(window.atom(50, 50), window.atom(90, 50));
        QCOMPARE(closeWith(window, QMessageBox::No), QString());
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(itemCount(window), 0);
        QCOMPARE(message(window), QString("Done !"));
        QCOMPARE(timeOut(window), 4000);
    }

    void closeWithoutSaveOrDiscardKeepsEverything_data()
    {
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<QString>("told");
        const QString aborted = "Close Aborted...|4000";
        QTest::newRow("cancel") << Answer([](QMessageBox* box) {
            QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
        }) << aborted;
        QTest::newRow("escape") << Answer([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); }) << aborted;
        QTest::newRow("its own close button")
            << Answer([](QMessageBox* box) { box->windowHandle()->close(); }) << aborted;
        QTest::newRow("no answer") << Answer([](QMessageBox* box) { box->done(0); }) << "Closing file...|5000";
    }

    void closeWithoutSaveOrDiscardKeepsEverything()
    {
        QFETCH(Answer, answer);
        QFETCH(QString, told);
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window.atom(50, 50);
        const StatusLog log(window);
        QCOMPARE(closeWith(window, answer), QString());
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(window.atoms().size(), 1);
        QCOMPARE(log.shown.last(), told);
    }

    void enterInTheCloseBoxSaves()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window.atom(50, 50);
        QCOMPARE(closeWith(window, [](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); }), QString());
        QCOMPARE(folder.names(), QStringList({"a.kyt"}));
        QCOMPARE(itemCount(window), 0);
    }

    void closeKeepsNameMarkAndCaption()
    {
        const TestWindow window;
        window->doc->docName = "a.kyt";
        window->setWindowTitle("a caption");
        QCOMPARE(closeWith(window, QMessageBox::No), QString());
        QCOMPARE(window->doc->docName, QString("a.kyt"));
        QVERIFY(window->doc->isModified());
        QCOMPARE(window->windowTitle(), QString("a caption"));
    }

    void printCancelledEndsWithReady()
    {
        const WorkingFolder folder;
        const TestWindow window;
        ModalSteps steps;
        steps.then<QPrintDialog>([&](QPrintDialog* dialog) {
            QCOMPARE(message(window), QString("Printing..."));
            QCOMPARE(timeOut(window), 0);
            QCOMPARE(dialog->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(dialog->printer()->resolution(), QPrinter(QPrinter::ScreenResolution).resolution());
            dialog->reject();
        });
        window->filePrint->trigger();
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
        QCOMPARE(folder.names(), QStringList());
    }

    void printToAFileWritesOneEmptyPage()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window.bond(window.atom(50, 50), window.atom(90, 50));
        bool toAFile = false;
        ModalSteps steps;
        steps.then<QPrintDialog>([&](QPrintDialog* dialog) {
            auto* name = dialog->findChild<QLineEdit*>("filename");
            toAFile = name && name->isEnabled();
            if (!toAFile) {
                dialog->reject();
                return;
            }
            name->setText(folder.path("page.pdf"));
            for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
                if (button->isDefault()) {
                    QTest::mouseClick(button, Qt::LeftButton);
                    return;
                }
            }
            QFAIL("no button prints");
        });
        window->slotFilePrint();
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(toAFile);
        QCOMPARE(message(window), QString("Ready."));
        const QByteArray pdf = readFile("page.pdf");
        QVERIFY(pdf.startsWith("%PDF"));
        QVERIFY(pdf.contains("/Count 1"));
        // Neither a text nor a font that would draw one.
        QVERIFY(!pdf.contains("/Type /Font"));
    }

    void theQuitQuestionHasItsTexts()
    {
        const TestWindow window;
        ModalSteps steps;
        steps.then<QMessageBox>([&](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QString("Quit !"));
            QCOMPARE(box->text(), QString("Do your really want to quit?"));
            QCOMPARE(box->icon(), QMessageBox::Information);
            QCOMPARE(box->parentWidget(), static_cast<QWidget*>(window.get()));
            QCOMPARE(box->standardButtons(), QMessageBox::Ok | QMessageBox::Cancel);
            box->reject();
        });
        QVERIFY(!window->queryExit());
        QVERIFY2(steps.done(), steps.trouble());
    }

    void theQuitQuestionIsAnsweredByItsButtons_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("quit");
        QTest::newRow("ok") << "ok" << true;
        QTest::newRow("cancel") << "cancel" << false;
        QTest::newRow("escape") << "escape" << false;
        QTest::newRow("close button") << "close" << false;
    }

    void theQuitQuestionIsAnsweredByItsButtons()
    {
        QFETCH(QString, answer);
        QFETCH(bool, quit);
        const TestWindow window;
        ModalSteps steps;
        steps.then<QMessageBox>([&](QMessageBox* box) {
            if (answer == "ok")
                QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
            else if (answer == "cancel")
                QTest::mouseClick(box->button(QMessageBox::Cancel), Qt::LeftButton);
            else if (answer == "escape")
                QTest::keyClick(box, Qt::Key_Escape);
            else
                box->windowHandle()->close();
        });
        QCOMPARE(window->queryExit(), quit);
        QVERIFY2(steps.done(), steps.trouble());
    }

    void exitOnAnUnmodifiedDocumentQuitsWithoutAQuestion()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->doc->modified = false;
        const StatusLog log(window);
        const ModalSteps steps;
        QVERIFY(quits([&] { window->fileQuit->trigger(); }));
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(log.shown, QStringList({"Exiting application...", "Ready."}));
    }

    void exitOnAModifiedDocumentQuitsAfterOk()
    {
        const TestWindow window;
        QVERIFY(window.show());
        ModalSteps steps;
        steps.then<QMessageBox>([&](QMessageBox* box) {
            QCOMPARE(message(window), QString("Exiting application..."));
            QCOMPARE(timeOut(window), 0);
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        });
        QVERIFY(quits([&] { window->fileQuit->trigger(); }));
        QVERIFY2(steps.done(), steps.trouble());
    }

    void exitIsNotDoneAfterCancel()
    {
        const TestWindow window;
        QVERIFY(window.show());
        ModalSteps steps;
        thenClick(steps, QMessageBox::Cancel);
        QVERIFY(!quits([&] { window->fileQuit->trigger(); }));
        QVERIFY2(steps.done(), steps.trouble());
        QVERIFY(window->isVisible());
        QCOMPARE(message(window), QString("Ready."));
        QCOMPARE(timeOut(window), 0);
    }

    void theTextsAreTranslated()
    {
        const WorkingFolder folder;
        const TestWindow window;
        window->doc->docName = folder.path("a.kyt");
        const BracketTranslator translator;
        const StatusLog log(window);

        window->slotFileNew();
        QCOMPARE(message(window), QString("[Creating file]"));
        window->slotFileSave();
        QCOMPARE(log.shown.mid(1), QStringList({"[Saving file...]|5000", "[Saving Done !]|4000"}));

        ModalSteps steps;
        steps.then<QMessageBox>([](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QString("[Close !]"));
            QCOMPARE(box->text(), QString("[Closing the File..\nDo your want to save ur changes to File?]"));
            QTest::keyClick(box, Qt::Key_Escape);
        });
        steps.then<QMessageBox>([](QMessageBox* box) {
            QCOMPARE(box->windowTitle(), QString("[Quit !]"));
            QCOMPARE(box->text(), QString("[Do your really want to quit?]"));
            box->reject();
        });
        steps.then<QFileDialog>([](QFileDialog* dialog) { pressEscape(dialog); });
        window->slotFileClose();
        QCOMPARE(message(window), QString("[Close Aborted...]"));
        window->queryExit();
        window->slotFileOpen();
        QCOMPARE(message(window), QString("[Opening aborted]"));
        QVERIFY2(steps.done(), steps.trouble());
    }

private:
    void expectSaveDialog(QFileDialog* dialog)
    {
        QCOMPARE(dialog->objectName(), QString("Save File dialog"));
        QCOMPARE(dialog->windowTitle(), QString("Choose a Filename to save under"));
        QCOMPARE(dialog->directory().absolutePath(), QString("/home"));
        QCOMPARE(dialog->nameFilters(), QStringList({"KytBench(*.kyt)"}));
        QCOMPARE(dialog->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(dialog->fileMode(), QFileDialog::AnyFile);
        QVERIFY(dialog->testOption(QFileDialog::DontUseNativeDialog));
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_file>(argc, argv);
}

#include "test_kytstudio_file.moc"
