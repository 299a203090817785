// Measures the speed and the memory use of the editor and prints the results as a Markdown table.
//
// Each drawing is measured in a separate process, so that its peak memory is known: without arguments, the program runs
// itself once for each drawing; with the name of a drawing, it measures that drawing and prints plain results. Dragging
// and rotating use the X server: the pointer is moved, and a step ends when the canvas has been painted.

#include "app/kytstudio.h"
#include "bench/Measuring.h"
#include "bench/Screen.h"
#include "doc/kytstudiodoc.h"
#include "history/KytHistory.h"
#include "i3d/KytI3dView.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "tests/support/LargeDrawings.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFont>
#include <QMouseEvent>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <cmath>
#include <cstdio>
#include <functional>
#include <map>
#include <string>

#include <unistd.h>

namespace {

constexpr int rounds = 5;
constexpr int steps = 20;         // mouse moves per measurement of dragging or rotating
constexpr int idleSeconds = 60;   // duration of the measurement of the idle editor
const QSize windowSize(450, 400); // pixels
/// A drawing to measure.
struct Drawing {
    const char* name;
    LargeDrawing (*make)(int, bool);
    int atoms;
    bool wedges;
    bool movedOnly; // only dragging and rotating is measured
};

const Drawing drawings[] = {
    {"sheet 100", large::sheet, 100, false, false},       {"sheet 900", large::sheet, 900, false, false},
    {"sheet 1000", large::sheet, 1000, false, false},     {"sheet 20000", large::sheet, 20000, false, false},
    {"sheet 100000", large::sheet, 100000, false, false}, {"wedge chain 1000", large::chain, 1000, true, true},
    {"wedge sheet 1000", large::sheet, 1000, true, true},
};
const std::string none; // for figures that do not depend on a drawing

using Figures = std::map<std::string, double>;

/// One row of the table.
struct Row {
    const char* label;
    const char* figure;
    std::string drawing;
    const char* unit;
    double limit;
};

const Row rows[] = {
    {"start until the main window is painted, compared with a window with an empty graphics view", "start", none,
     "times", 1.6},
    {"memory of the idle, empty editor", "idle memory", none, "MiB", 60},
    {"processor time of the idle editor in 60 s", "idle time", none, "s", 0.05},
    {"open 900 atoms, until the canvas is painted", "open", "sheet 900", "ms", 30},
    {"open 20 000 atoms, until the canvas is painted", "open", "sheet 20000", "ms", 500},
    {"save 20 000 atoms", "save", "sheet 20000", "ms", 100},
    {"New with 20 000 atoms in one molecule", "new", "sheet 20000", "ms", 150},
    {"handle one mouse move over 20 000 atoms, without painting", "hover", "sheet 20000", "ms", 0.1},
    {"drag one atom of 20 000, one step including the repaint", "drag atom", "sheet 20000", "ms", 4},
    {"drag a chain of 1 000 wedges, one step including the repaint", "drag molecule", "wedge chain 1000", "ms", 8},
    {"rotate a chain of 1 000 wedges, one step including the repaint", "rotate molecule", "wedge chain 1000", "ms", 8},
    {"drag a sheet of 1 000 atoms with 5 % wedges, one step including the repaint", "drag molecule", "wedge sheet 1000",
     "ms", 4},
    {"rotate a sheet of 1 000 atoms with 5 % wedges, one step including the repaint", "rotate molecule",
     "wedge sheet 1000", "ms", 4},
    {"drag a sheet of 20 000 atoms, one step including the repaint", "drag molecule", "sheet 20000", "ms", 12},
    {"rotate a sheet of 20 000 atoms, one step including the repaint", "rotate molecule", "sheet 20000", "ms", 12},
    {"drag a sheet of 100 000 atoms, one step including the repaint", "drag molecule", "sheet 100000", "ms", 70},
    {"rotate a sheet of 100 000 atoms, one step including the repaint", "rotate molecule", "sheet 100000", "ms", 70},
    {"delete one atom in the middle of a molecule of 20 000", "delete", "sheet 20000", "ms", 30},
    {"record the drag of one atom of 1 000 as a step", "record", "sheet 1000", "ms", 1},
    {"record the drag of one atom of 20 000 as a step", "record", "sheet 20000", "ms", 10},
    {"undo the drag of one atom of 20 000, without painting", "undo", "sheet 20000", "ms", 50},
    {"memory of a hundred steps that drag one atom of 20 000", "steps memory", "sheet 20000", "MiB", 20},
    {"paint 20 000 atoms at 25 %", "paint small", "sheet 20000", "ms", 50},
    {"peak memory per atom, with 20 000 atoms open", "memory", "sheet 20000", "KiB", 7},
    {"open the 3D window with 1 000 atoms, until the first frame", "first frame", "sheet 1000", "ms", 500},
};

const char* const growing[] = {"open",   "save",       "new", "hover", "drag atom", "drag molecule", "rotate molecule",
                               "delete", "first frame"};
constexpr double maxGrowth = 8;
constexpr double maxHoverRatio = 3;

[[noreturn]] void fail(const char* message)
{
    std::fprintf(stderr, "%s\n", message);
    std::exit(1);
}

/// Counts the move and paint events of a viewport.
class Watch : public QObject {
public:
    explicit Watch(QWidget* watched) { watched->installEventFilter(this); }
    int moves = 0;
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        moves += event->type() == QEvent::MouseMove;
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

/// Processes events until `done` returns true; returns false after one second.
bool processUntil(const std::function<bool()>& done)
{
    QTimer limit;
    limit.setSingleShot(true);
    limit.start(1000);
    while (!done() && limit.isActive())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    return done();
}

void settle()
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 150)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// The editor's window with a drawing of `count` atoms.
class Editor {
public:
    explicit Editor(const Drawing& drawing)
        : drawing(drawing)
        , file(folder.filePath(QStringLiteral("drawing.kyt")))
        , watch(window.view->viewport())
    {
        if (!folder.isValid() || !writeWorkspace(drawing.make(drawing.atoms, drawing.wedges), file))
            fail("the drawing cannot be written");
        window.resize(windowSize);
        window.show();
        settle();
    }

    /// Wall time in milliseconds until the drawing has been read and painted.
    double open()
    {
        const int paints = watch.paints;
        QElapsedTimer clock;
        clock.start();
        window.doc->load(file, false);
        if (!processUntil([&] { return watch.paints > paints; }))
            fail("the drawing was not painted");
        const double elapsed = double(clock.nsecsElapsed()) / 1e6;
        if (drawnAtoms(*window.doc->canvas).size() != drawing.atoms)
            fail("the drawing read differs from the one written");
        settle();
        return elapsed;
    }

    double save()
    {
        return processorTime([this] { window.doc->saveAs(folder.filePath(QStringLiteral("saved.kyt"))); });
    }

    double clear()
    {
        const double elapsed = processorTime([this] { window.slotFileNew(); });
        settle();
        return elapsed;
    }

    /// Processor time in milliseconds for handling one mouse move over the drawing, without painting.
    double hover()
    {
        constexpr int moves = 2000;
        const QPointF middle = visibleAtom();
        const double elapsed = processorTime([&] {
            for (int i = 0; i < moves; ++i) {
                const QPointF at = middle + QPointF(i % 31 - 15, i / 31 % 31 - 15);
                QMouseEvent event(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
                window.view->contentsMouseMoveEvent(&event);
            }
        });
        settle();
        return elapsed / moves;
    }

    double dragAtom() { return gesture(KYTVS_view, false); }
    double dragMolecule() { return gesture(KYTVS_view, true); }
    double rotateMolecule() { return gesture(KYTVS_rotate, false); }

    double deleteInTheMiddle()
    {
        const QList<KytAtom*> atoms = drawnAtoms(*window.doc->canvas);
        KytAtom* atom = atoms[atoms.size() / 2];
        const double elapsed = processorTime([&] { delete atom; });
        settle();
        return elapsed;
    }

    /// Processor time in milliseconds for recording that an atom was moved.
    double record()
    {
        KytAtom* atom = drawnAtoms(*window.doc->canvas).constFirst();
        atom->move(atom->x() + 1, atom->y());
        const qsizetype before = window.view->history->undoCount();
        const double elapsed = processorTime([this] { window.view->recordStep(QStringLiteral("Move")); });
        if (window.view->history->undoCount() != before + 1)
            fail("the step was not recorded");
        return elapsed;
    }

    double undo()
    {
        record();
        const KytAtom* atom = drawnAtoms(*window.doc->canvas).constFirst();
        const double moved = atom->x();
        const double elapsed = processorTime([this] { window.view->undo(); });
        if (atom->x() == moved)
            fail("the step was not undone");
        return elapsed;
    }

    /// Memory of a hundred steps, each of which moves an atom, in MiB.
    double stepsMemory()
    {
        constexpr int count = 100;
        record();
        const qsizetype before = window.view->history->size();
        for (int i = 0; i < count; ++i)
            record();
        return double(window.view->history->size() - before) / (1 << 20);
    }

    /// Processor time in milliseconds for painting the window with the whole drawing in it, as far as it goes.
    double paintSmall()
    {
        window.view->zoomTo(0.25, QPointF());
        settle();
        const double elapsed = processorTime([this] { window.view->viewport()->repaint(); });
        window.view->zoomTo(1, QPointF());
        settle();
        return elapsed;
    }

    double firstFrame()
    {
        KytI3dView viewer(window.doc->canvas);
        QElapsedTimer clock;
        clock.start();
        if (!viewer.open())
            fail("the 3D window did not open");
        viewer.renderScene();
        glFinish();
        const double elapsed = double(clock.nsecsElapsed()) / 1e6;
        viewer.close();
        return elapsed;
    }

private:
    /// The atom that is nearest to the centre of the viewport.
    QPointF visibleAtom() const
    {
        const QRect shown = window.view->viewport()->rect();
        const QPointF middle = QRectF(shown).center();
        QPointF best(-1e9, -1e9);
        for (const KytAtom* atom : drawnAtoms(*window.doc->canvas))
            if (QLineF(middle, QPointF(atom->x(), atom->y())).length() < QLineF(middle, best).length())
                best = QPointF(atom->x(), atom->y());
        return best;
    }

    /// Processor time in milliseconds for one step of a drag with the real pointer, including the repaint.
    double gesture(KytViewState mode, bool control)
    {
        window.view->canvasState = mode;
        const QPoint start = window.view->viewport()->mapToGlobal(visibleAtom().toPoint());
        moveTo(start);
        if (control)
            screen.pressControl();
        screen.pressButton(1);
        if (!processUntil([this] { return window.view->moving != nullptr; }))
            fail("no atom was grabbed");
        settle();
        std::vector<double> elapsed;
        for (int i = 1; i <= steps; ++i)
            elapsed.push_back(processorTime([&] { moveTo(start + QPoint(i % 2 ? 3 : 0, i % 4)); }));
        window.view->moving = nullptr; // prevents a merge on release
        screen.releaseButton(1);
        if (control)
            screen.releaseControl();
        settle();
        window.view->canvasState = KYTVS_view;
        return median(elapsed);
    }

    /// Moves the pointer and waits until the move has been received and the changes have been painted.
    void moveTo(const QPoint& p)
    {
        const int moves = watch.moves;
        const int paints = watch.paints;
        screen.movePointer(p);
        if (!processUntil([&] { return watch.moves > moves; }) && window.view->moving)
            fail("no mouse move event was received");
        if (window.view->moving && !processUntil([&] { return watch.paints > paints; }))
            fail("the step was not painted");
    }

    const Drawing& drawing;
    const QTemporaryDir folder;
    const QString file;
    KytStudioApp window;
    Watch watch;
    Screen screen;
};

void print(const char* name, const std::vector<double>& values)
{
    std::printf("%s:%.6f\n", name, median(values));
}

int measureDrawing(const Drawing& drawing)
{
    Editor editor(drawing);
    const double before = memory("VmRSS:");
    std::map<std::string, std::vector<double>> times;
    times["open"].push_back(editor.open());
    times["memory"].push_back((memory("VmHWM:") - before) / drawing.atoms);
    for (int round = 0; round < rounds; ++round) {
        if (round > 0)
            times["open"].push_back(editor.open());
        times["drag molecule"].push_back(editor.dragMolecule());
        times["rotate molecule"].push_back(editor.rotateMolecule());
        if (!drawing.movedOnly) {
            times["save"].push_back(editor.save());
            times["hover"].push_back(editor.hover());
            times["drag atom"].push_back(editor.dragAtom());
            times["record"].push_back(editor.record());
            times["undo"].push_back(editor.undo());
            times["steps memory"].push_back(editor.stepsMemory());
            times["paint small"].push_back(editor.paintSmall());
            times["delete"].push_back(editor.deleteInTheMiddle());
        }
        times["new"].push_back(editor.clear());
    }
    editor.open();
    for (int round = 0; round < rounds && !drawing.movedOnly; ++round)
        times["first frame"].push_back(editor.firstFrame());
    for (const auto& [name, values] : times)
        print(name.c_str(), values);
    return 0;
}

/// Measures a drawing in a separate process.
Figures measured(const Drawing& drawing)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(drawing.name)});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail("a drawing cannot be measured");
    Figures figures;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.split(':');
        if (words.size() == 2)
            figures[words[0].toStdString()] = words[1].toDouble();
    }
    return figures;
}

/// Starts `program`, waits until its window is painted, and kills it. Returns the start time in milliseconds.
double startOnce(Screen& screen, const QString& program)
{
    QProcess process;
    const double started = Screen::now();
    process.start(program, {});
    const double elapsed = screen.waitForWindow(windowSize, started);
    if (elapsed < 0)
        fail("no window was shown");
    process.kill();
    process.waitForFinished();
    QThread::msleep(100); // until the window manager has removed the window
    return elapsed;
}

double startRatio(const QString& program, const QString& emptyWindow)
{
    Screen screen;
    std::vector<double> own;
    std::vector<double> empty;
    for (int round = 0; round < 2 * rounds; ++round) {
        empty.push_back(startOnce(screen, emptyWindow));
        own.push_back(startOnce(screen, program));
    }
    std::fprintf(stderr, "start: %.0f ms, empty window %.0f ms\n", median(own), median(empty));
    return median(own) / median(empty);
}

/// Processor time used by the process so far, in seconds, including threads that have ended.
double processorSeconds(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        fail("the editor's processor time cannot be read");
    const QByteArray text = file.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr int userTime = 11; // field index after the program's name; the system time follows
    return (fields.value(userTime).toDouble() + fields.value(userTime + 1).toDouble()) / double(sysconf(_SC_CLK_TCK));
}

double residentMemory(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        fail("the editor's memory cannot be read");
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.simplified().split(' ').value(1).toDouble() / 1024;
    return 0;
}

void measureIdle(const QString& program, Figures& figures)
{
    Screen screen;
    QProcess process;
    process.start(program, {});
    if (screen.waitForWindow(windowSize, Screen::now()) < 0)
        fail("no window was shown");
    QThread::sleep(3);
    figures["idle memory"] = residentMemory(process.processId());
    const double before = processorSeconds(process.processId());
    QThread::sleep(idleSeconds);
    figures["idle time"] = processorSeconds(process.processId()) - before;
    process.kill();
    process.waitForFinished();
}

/// A Markdown table of figures and their limits, followed by a list of those that miss theirs.
class Table {
public:
    Table() { std::printf("| what | measured | at most | reached |\n|---|---|---|---|\n"); }

    void add(const std::string& label, double value, const char* unit, double limit)
    {
        std::printf("| %s | %.3g %s | %g | %s |\n", label.c_str(), value, unit, limit, value <= limit ? "yes" : "NO");
        if (!(value <= limit))
            missed.append(QString::fromStdString(label));
    }

    void printMissed() const
    {
        if (missed.isEmpty())
            std::printf("\nEvery row of this table is within its limit.\n");
        else
            std::printf("\n**Missed:** %s.\n", qPrintable(missed.join(QStringLiteral("; "))));
    }

private:
    QStringList missed;
};

void printTable(std::map<std::string, Figures>& figures)
{
    Table table;
    for (const Row& row : rows)
        table.add(row.label, figures[row.drawing][row.figure], row.unit, row.limit);
    table.add("mouse move over 20 000 atoms, compared with 100 atoms",
              figures["sheet 20000"]["hover"] / figures["sheet 100"]["hover"], "times", maxHoverRatio);
    Figures& small = figures["sheet 20000"];
    Figures& large = figures["sheet 100000"];
    for (const char* name : growing)
        table.add(std::string("growth from 20 000 to 100 000 atoms: ") + name, large[name] / small[name], "times",
                  maxGrowth);
    table.add("growth from 20 000 to 100 000 atoms: memory", 5 * large["memory"] / small["memory"], "times", maxGrowth);
    table.printMissed();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));
    if (argc == 2) {
        for (const Drawing& drawing : drawings)
            if (QByteArray(drawing.name) == argv[1])
                return measureDrawing(drawing);
        fail("unknown drawing");
    }

    const QDir built = QFileInfo(QCoreApplication::applicationFilePath()).dir();
    const QString program = built.filePath(QStringLiteral("../kytstudio"));
    std::map<std::string, Figures> figures;
    figures[none]["start"] = startRatio(program, built.filePath(QStringLiteral("empty_window")));
    measureIdle(program, figures[none]);
    for (const Drawing& drawing : drawings)
        figures[drawing.name] = measured(drawing);
    printTable(figures);
    return 0;
}
