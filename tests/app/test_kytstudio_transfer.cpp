#include "TestWindow.h"

#include "app/DrawingMimeData.h"
#include "doc/WorkspaceFile.h"
#include "tests/support/Files.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QProcess>
#include <QTest>

namespace {

constexpr const char* aspirin = "CC(=O)Oc1ccccc1C(=O)O";

/// A window with kytconvert on the PATH, which forgets the clipboard at the end.
class TransferWindow : public TestWindow {
public:
    TransferWindow()
        : path(qgetenv("PATH"))
    {
        qputenv("PATH", KYTSTUDIO_CONVERTER_FOLDER ":" + path);
        isShown = show();
    }
    ~TransferWindow()
    {
        QGuiApplication::clipboard()->clear();
        qputenv("PATH", path);
    }
    TransferWindow(const TransferWindow&) = delete;
    TransferWindow& operator=(const TransferWindow&) = delete;

    QByteArray drawn() const { return workspaceText(*canvas()); }
    /// Makes a step of what a test has drawn.
    void record() const { (*this)->view->recordStep("Draw"); }
    void pointAt(const QPoint& at) const
    {
        QWidget* paper = (*this)->view->viewport();
        QCursor::setPos(paper->mapToGlobal(at));
        QVERIFY(QTest::qWaitFor([&] { return paper->underMouse(); }));
        QTest::mouseMove(paper, at);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
    {
        QVERIFY(QTest::qWaitForWindowActive(get()));
        QTest::keyClick(get(), key, modifiers);
    }
    void copy() const { press(Qt::Key_C, Qt::ControlModifier); }
    /// Pastes and waits until that has ended; what the status bar says then.
    QString paste(Qt::Key key = Qt::Key_Insert, Qt::KeyboardModifiers modifiers = Qt::ShiftModifier) const
    {
        press(key, modifiers);
        return outcome();
    }
    QString paste(const QByteArray& text) const
    {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(text));
        return paste();
    }
    QString outcome() const
    {
        const bool ended = QTest::qWaitFor([&] { return !message(*this).contains("(Escape cancels)"); }, 15'000);
        return ended ? message(*this) : QStringLiteral("it does not end");
    }

    bool isShown = false;

private:
    QByteArray path;
};

/// What xclip, a program of its own, gets of this type from the clipboard.
QByteArray fetched(const QString& type)
{
    QProcess xclip;
    xclip.start("xclip", {"-selection", "clipboard", "-o", "-t", type});
    const bool ended = QTest::qWaitFor([&] { return xclip.state() == QProcess::NotRunning; }, 10'000);
    return ended ? xclip.readAllStandardOutput() : QByteArray("xclip waits for ever");
}

void sendDrop(const TransferWindow& window, const QMimeData& data, const QPoint& at)
{
    QWidget* paper = window->view->viewport();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(paper, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(paper, &drop);
}

QString drop(const TransferWindow& window, const QStringList& files)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& file : files)
        urls << QUrl::fromLocalFile(file);
    data.setUrls(urls);
    sendDrop(window, data, QPoint(200, 150));
    return window.outcome();
}

} // namespace

class test_kytstudio_transfer : public QObject {
    Q_OBJECT

private slots:
    void init() { QVERIFY(TransferWindow().isShown); }

    void eachTypeIsReadByAnotherProgram_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("part");
        QTest::newRow("workspace") << QString(workspaceType) << QByteArray("KYTFILE");
        QTest::newRow("locks") << QString(locksType) << QByteArray("00");
        QTest::newRow("molfile") << QString("chemical/x-mdl-molfile") << QByteArray("V2000");
        QTest::newRow("SMILES") << QString("chemical/x-daylight-smiles") << QByteArray("CC");
        QTest::newRow("text") << QString("UTF8_STRING") << QByteArray("CC");
        QTest::newRow("SVG") << QString("image/svg+xml") << QByteArray("<svg");
        QTest::newRow("PDF") << QString("application/pdf") << QByteArray("%PDF");
        QTest::newRow("PNG") << QString("image/png") << QByteArray("PNG");
    }

    void eachTypeIsReadByAnotherProgram()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, part);
        const TransferWindow window;
        window.chain<2>(100, 100);
        window.copy();
        QCOMPARE(message(window), QString("Copied: 2 atoms"));
        const QByteArray found = fetched(type);
        QVERIFY2(found.contains(part), found.constData());
    }

    void whatIsOfferedIsTheDrawingOfThatMoment()
    {
        const TransferWindow window;
        window.chain<2>(100, 100);
        const QByteArray then = window.drawn();
        window.copy();
        window->fileNew->trigger();
        QCOMPARE(fetched(workspaceType), then);
        QCOMPARE(fetched("UTF8_STRING"), QByteArray("CC\n"));
    }

    void theMoleculeUnderThePointerIsCopiedAlone()
    {
        const TransferWindow window;
        window.chain<2>(100, 100);
        window.chain<3>(100, 200);
        window.pointAt({100, 200});
        window.copy();
        QCOMPARE(message(window), QString("Copied: 3 atoms"));
        window.pointAt({300, 20});
        window.copy();
        QCOMPARE(message(window), QString("Copied: 5 atoms"));
    }

    void thePointerCountsWhereTheViewIsScrolledAndZoomed()
    {
        const TransferWindow window;
        window.chain<2>(1000, 1000);
        window.chain<3>(1000, 1100);
        window->view->zoomTo(0.5, QPointF(0, 0));
        window->view->showInView(QRectF(1000, 1000, 50, 100));
        const QPoint atom = window->view->mapFromScene(QPointF(1000, 1000));
        window.pointAt(atom);
        window.copy();
        QCOMPARE(message(window), QString("Copied: 2 atoms"));
        const QPoint target = atom + QPoint(0, 90);
        window.pointAt(target);
        QCOMPARE(window.paste(), QString("Added: 2 atoms"));
        const QList<KytAtom*> atoms = window.atoms();
        const QPointF middle((atoms[5]->x() + atoms[6]->x()) / 2, atoms[5]->y());
        QVERIFY(QLineF(middle, window->view->mapToScene(target)).length() < 25);
    }

    void theSelectionGoesBeforeThePointer()
    {
        const TransferWindow window;
        const auto atoms = window.chain<4>(100, 100);
        window->view->select({atoms[1], atoms[2]});
        window.pointAt({100, 100});
        window.copy();
        QCOMPARE(message(window), QString("Copied: 2 atoms"));
        QCOMPARE(fetched("UTF8_STRING"), QByteArray("CC\n"));
        window.press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(window.outcome(), QString("Laid out: 4 atoms"));
        QCOMPARE(window->view->selectedCount(), 4);
    }

    void anEmptyDrawingLeavesTheClipboardAlone()
    {
        const TransferWindow window;
        QGuiApplication::clipboard()->setText("mine");
        window.copy();
        QCOMPARE(message(window), QString("Nothing to copy"));
        QCOMPARE(QGuiApplication::clipboard()->text(), QString("mine"));
    }

    void withoutKytconvertOnlyTheWorkspaceIsOffered()
    {
        const TransferWindow window;
        qputenv("PATH", "/nonexistent");
        window.chain<2>(100, 100);
        window.copy();
        QCOMPARE(message(window), QString("Copied for KytStudio only: kytconvert is not installed"));
        QCOMPARE(QGuiApplication::clipboard()->mimeData()->formats(), QStringList({workspaceType, locksType}));
        QCOMPARE(window.paste(), QString("Added: 2 atoms"));
        QCOMPARE(window.paste("CCO"), QString("kytconvert, which reads this, is not installed"));
    }

    void atTheEndOnlyWhatIsReadyIsOffered()
    {
        const TransferWindow window;
        window.chain<2>(100, 100);
        window.copy();
        emit qApp->aboutToQuit({});
        QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(workspaceType));
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat("image/png"));
    }

    void textsArePasted_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("atoms");
        QTest::newRow("SMILES") << QByteArray(aspirin) << 13;
        QTest::newRow("SMILES with a name") << QByteArray("CCO ethanol\n") << 3;
        QTest::newRow("several SMILES") << QByteArray("CCO\nCC\n") << 5;
        QTest::newRow("a workspace") << atomsInAFile(4) << 4;
        const QByteArray molfile = "\n  x\n\n  2  1  0  0  0  0  0  0  0  0999 V2000\n"
                                   "    0.0000    0.0000    0.0000 C   0  0\n    1.5000    0.0000    0.0000 O   0  0\n"
                                   "  1  2  1  0\nM  END\n";
        QTest::newRow("a molfile") << molfile << 2;
        QTest::newRow("an SD file") << molfile + "$$$$\n" + molfile + "$$$$\n" << 4;
    }

    void textsArePasted()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, atoms);
        const TransferWindow window;
        const QByteArray before = window.drawn();
        QCOMPARE(window.paste(text), QString("Added: %1 atoms").arg(atoms));
        QCOMPARE(window.atoms().size(), atoms);
        window.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Undone: Paste"));
        QCOMPARE(window.drawn(), before);
    }

    void lostPropertiesAreMentionedOnce()
    {
        const TransferWindow window;
        const QByteArray record = "\n  x\n\n  1  0  0  0  0  0  0  0  0  0999 V2000\n"
                                  "    0.0000    0.0000    0.0000 C   0  0\nM  END\n>  <MASS>\n16\n\n$$$$\n";
        QCOMPARE(window.paste(record), QString("Added: 1 atoms, without the properties of the SD file"));
        QCOMPARE(window.paste(record), QString("Added: 1 atoms"));
    }

    void aCopyIsPastedAtThePointerAgainAndAgain()
    {
        const TransferWindow window;
        window.chain<2>(100, 100);
        window.atoms()[1]->locked = true;
        window.copy();
        window.pointAt({250, 200});
        QCOMPARE(window.paste(), QString("Added: 2 atoms"));
        QCOMPARE(window.paste(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier), QString("Added: 2 atoms"));
        const QList<KytAtom*> atoms = window.atoms();
        QCOMPARE(atoms.size(), 6);
        QVERIFY(std::abs((atoms[2]->x() + atoms[3]->x()) / 2 - 250) < 12);
        QVERIFY(std::abs(atoms[2]->y() - 200) < 15);
        QVERIFY(!atoms[2]->locked && atoms[3]->locked);
    }

    void whatIsNoMoleculeChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("said");
        QTest::newRow("prose") << QByteArray("Dear Sir, I write")
                               << "Cannot be read: Clipboard (1: Sir, I write: invalid SMILES: Dear)";
        QTest::newRow("a sentence with signs") << QByteArray("\"Well\", he said") << "The clipboard holds no molecule";
        QTest::newRow("bad SMILES") << QByteArray("C1CC") << "Cannot be read: Clipboard (1: ring not closed: C1CC)";
        QTest::newRow("a megabyte") << QByteArray(1 << 20, 'C') << "The clipboard holds no molecule";
        QTest::newRow("a bomb") << QByteArray(60'000, 'C')
                                << "Cannot be read: Clipboard (1: line longer than 16384 characters)";
        QTest::newRow("a cut-off workspace") << QByteArray("KYTFILE\n MOLECULE 1 0\n") << "not a valid workspace";
        QTest::newRow("far too much") << QByteArray((16 << 20) + 1, 'C') << "The text on the clipboard is too long";
    }

    void whatIsNoMoleculeChangesNothing()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, said);
        const TransferWindow window;
        window.chain<2>(100, 100);
        window.record();
        const QByteArray before = window.drawn();
        QCOMPARE(window.paste(text), said);
        QCOMPARE(window.drawn(), before);
        window.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Undone: Draw"));
    }

    void dataThatLieAboutTheirTypeChangeNothing()
    {
        const TransferWindow window;
        auto* data = new QMimeData;
        data->setData(workspaceType, QByteArray("\0\1\2", 3));
        QGuiApplication::clipboard()->setMimeData(data);
        QCOMPARE(window.paste(), QString("not a valid workspace"));
        QVERIFY(window.atoms().isEmpty());
    }

    void escapeGivesUp()
    {
        const TransferWindow window;
        QGuiApplication::clipboard()->setText(aspirin);
        window.press(Qt::Key_Insert, Qt::ShiftModifier);
        QCOMPARE(message(window), QString("Reading... (Escape cancels)"));
        window.press(Qt::Key_Escape, Qt::NoModifier);
        QCOMPARE(message(window), QString("Cancelled"));
        QTest::qWait(500);
        QVERIFY(window.atoms().isEmpty());
    }

    void droppedFilesLieBesideEachOther()
    {
        const WorkingFolder folder;
        const TransferWindow window;
        writeFile("a.kyt", atomsInAFile(2));
        writeFile("b.kyf", atomsInAFile(3));
        writeFile("c.smi", "CCO\n");
        QCOMPARE(drop(window, {folder.path("a.kyt"), folder.path("b.kyf"), folder.path("c.smi")}),
                 QString("Added: 8 atoms"));
        const QList<KytAtom*> atoms = window.atoms();
        QVERIFY(atoms[2]->x() > atoms[1]->x() + 20);
        QVERIFY(atoms[5]->x() > atoms[4]->x() + 20);
        window.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Undone: Drop Files"));
        QVERIFY(window.atoms().isEmpty());
    }

    void filesThatCannotBeReadAreNamed()
    {
        const WorkingFolder folder;
        const TransferWindow window;
        writeFile("good.kyt", atomsInAFile(2));
        writeFile("bad.kyt", "KYTFILE");
        writeFile("bad.xyzzy", "?");
        const QString said = drop(window,
                                  {"/dev/zero", folder.path(), folder.path("missing.kyt"), folder.path("bad.kyt"),
                                   folder.path("bad.xyzzy"), folder.path("good.kyt")});
        QVERIFY2(said.startsWith("Cannot be read: zero (not a regular file), "), qPrintable(said));
        for (const char* name : {"missing.kyt (not a regular file)", "bad.kyt (not a valid workspace)", "bad.xyzzy ("})
            QVERIFY2(said.contains(name), qPrintable(said));
        QCOMPARE(window.atoms().size(), 2);
    }

    void layingOutKeepsConnectionsAndColours()
    {
        const TransferWindow window;
        const auto atoms = window.chain<3>(100, 100);
        atoms[2]->_atomColor[0] = "7";
        window.record();
        const QByteArray before = window.drawn();
        window.pointAt({100, 100});
        window.press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(window.outcome(), QString("Laid out: 3 atoms"));
        const QByteArray after = window.drawn();
        QVERIFY(after != before);
        QCOMPARE(after.count("BOND"), 2);
        QVERIFY(after.contains(" 7 0 0\n"));
        window.press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Undone: Tidy"));
        QCOMPARE(window.drawn(), before);
    }

    void aLockedMoleculeIsNotLaidOut()
    {
        const TransferWindow window;
        window.atom(100, 100, 0, true);
        const QByteArray before = window.drawn();
        window.pointAt({100, 100});
        window.press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(message(window), QString("The molecule is locked"));
        window.pointAt({200, 200});
        window.press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(message(window), QString("No molecule under the pointer"));
        QCOMPARE(window.drawn(), before);
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_transfer>(argc, argv);
}
#include "test_kytstudio_transfer.moc"
