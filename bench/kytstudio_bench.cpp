// Measures how fast the editor is and what memory it takes, and prints the figures as a table in Markdown.
//
// Each drawing is measured in a process of its own, so that its peak memory is its own: without arguments the program
// runs itself once for each drawing; with the name of a drawing it measures that one and prints bare figures.
// Dragging and rotating go through the X server: the pointer really moves, and a step ends when the canvas is painted.

#include "app/kytstudio.h"
#include "bench/Measuring.h"
#include "bench/Screen.h"
#include "doc/kytstudiodoc.h"
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
constexpr int steps = 20;         // of the mouse, for each figure of dragging and rotating
constexpr int idleSeconds = 60;   // for which the resting editor is watched
const QSize windowSize(450, 400); // pixels
/// What is measured: a drawing of so many atoms.
struct Drawing {
    const char* name;
    LargeDrawing (*make)(int, bool);
    int atoms;
    bool wedges;
    bool movedOnly; // nothing but dragging and rotating is measured
};

const Drawing drawings[] = {
    {"sheet 100", large::sheet, 100, false, false},       {"sheet 900", large::sheet, 900, false, false},
    {"sheet 1000", large::sheet, 1000, false, false},     {"sheet 20000", large::sheet, 20000, false, false},
    {"sheet 100000", large::sheet, 100000, false, false}, {"wedge chain 1000", large::chain, 1000, true, true},
    {"wedge sheet 1000", large::sheet, 1000, true, true},
};
const std::string none; // for what does not depend on a drawing

using Figures = std::map<std::string, double>;

/// One row of the table: a figure, or the growth of one from 20 000 to 100 000 atoms.
struct Row {
    const char* label;
    const char* figure;
    std::string drawing;
    const char* unit;
    double limit;
};

const Row rows[] = {
    {"start to the main window on the screen, against an empty window with a graphics view", "start", none, "times",
     1.6},
    {"memory of the idle, empty editor", "idle memory", none, "MiB", 60},
    {"processor time of the idle editor over 60 s", "idle time", none, "s", 0.05},
    {"open 900 atoms, from the command to the repainted canvas", "open", "sheet 900", "ms", 30},
    {"open 20 000 atoms, likewise", "open", "sheet 20000", "ms", 500},
    {"save 20 000 atoms", "save", "sheet 20000", "ms", 100},
    {"New on 20 000 atoms in one molecule", "new", "sheet 20000", "ms", 150},
    {"handle one mouse move over 20 000 atoms, without painting", "hover", "sheet 20000", "ms", 0.1},
    {"drag one atom of 20 000, one step with repaint", "drag atom", "sheet 20000", "ms", 4},
    {"drag a chain of 1 000 wedges, one step with repaint", "drag molecule", "wedge chain 1000", "ms", 8},
    {"rotate a chain of 1 000 wedges, likewise", "rotate molecule", "wedge chain 1000", "ms", 8},
    {"drag a sheet of 1 000 atoms with 5 % wedges, likewise", "drag molecule", "wedge sheet 1000", "ms", 4},
    {"rotate a sheet of 1 000 atoms with 5 % wedges, likewise", "rotate molecule", "wedge sheet 1000", "ms", 4},
    {"drag a sheet of 20 000 atoms, likewise", "drag molecule", "sheet 20000", "ms", 12},
    {"rotate a sheet of 20 000 atoms, likewise", "rotate molecule", "sheet 20000", "ms", 12},
    {"drag a sheet of 100 000 atoms, likewise", "drag molecule", "sheet 100000", "ms", 70},
    {"rotate a sheet of 100 000 atoms, likewise", "rotate molecule", "sheet 100000", "ms", 70},
    {"delete one atom in the middle of a molecule of 20 000", "delete", "sheet 20000", "ms", 30},
    {"peak memory with 20 000 atoms open, for each atom", "memory", "sheet 20000", "KiB", 7},
    {"3D: from the command to the first frame, 1 000 atoms", "first frame", "sheet 1000", "ms", 500},
};

const char* const growing[] = {"open",   "save",       "new", "hover", "drag atom", "drag molecule", "rotate molecule",
                               "delete", "first frame"};
constexpr double mostGrowth = 8;
constexpr double mostHoverRatio = 3;

[[noreturn]] void fail(const char* sentence)
{
    std::fprintf(stderr, "%s\n", sentence);
    std::exit(1);
}

/// Counts what reaches the viewport.
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

/// Works off events until `done` holds; false when it does not within a second.
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

/// The editor's window with one drawing.
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

    /// Milliseconds by the wall clock until the drawing is read and painted.
    double open()
    {
        const int paints = watch.paints;
        QElapsedTimer clock;
        clock.start();
        window.doc->load(file, false);
        if (!processUntil([&] { return watch.paints > paints; }))
            fail("the drawing was not painted");
        const double taken = double(clock.nsecsElapsed()) / 1e6;
        if (drawnAtoms(*window.doc->canvas).size() != drawing.atoms)
            fail("the drawing was not read as it was written");
        settle();
        return taken;
    }

    double save()
    {
        return processorTime([this] { window.doc->saveAs(folder.filePath(QStringLiteral("saved.kyt"))); });
    }

    double clear()
    {
        const double taken = processorTime([this] { window.slotFileNew(); });
        settle();
        return taken;
    }

    /// Handling of one mouse move over the drawing, without painting.
    double hover()
    {
        constexpr int moves = 2000;
        const QPointF middle = visibleAtom();
        const double taken = processorTime([&] {
            for (int i = 0; i < moves; ++i) {
                const QPointF at = middle + QPointF(i % 31 - 15, i / 31 % 31 - 15);
                QMouseEvent event(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
                window.view->contentsMouseMoveEvent(&event);
            }
        });
        settle();
        return taken / moves;
    }

    double dragAtom() { return gesture(KYTVS_view, false); }
    double dragMolecule() { return gesture(KYTVS_view, true); }
    double rotateMolecule() { return gesture(KYTVS_rotate, false); }

    double deleteInTheMiddle()
    {
        const QList<KytAtom*> atoms = drawnAtoms(*window.doc->canvas);
        KytAtom* atom = atoms[atoms.size() / 2];
        const double taken = processorTime([&] { delete atom; });
        settle();
        return taken;
    }

    double firstFrame()
    {
        KytI3dView viewer(window.doc->canvas);
        QElapsedTimer clock;
        clock.start();
        if (!viewer.open())
            fail("the 3D window did not open");
        viewer.step();
        glFinish();
        const double taken = double(clock.nsecsElapsed()) / 1e6;
        viewer.close();
        return taken;
    }

private:
    /// An atom near the middle of what the window shows.
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

    /// Milliseconds of processor time for a step of a drag with the real pointer, the repaint included.
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
        std::vector<double> taken;
        for (int i = 1; i <= steps; ++i)
            taken.push_back(processorTime([&] { moveTo(start + QPoint(i % 2 ? 3 : 0, i % 4)); }));
        window.view->moving = nullptr; // let go without a merge
        screen.releaseButton(1);
        if (control)
            screen.releaseControl();
        settle();
        window.view->canvasState = KYTVS_view;
        return median(taken);
    }

    /// Moves the pointer, and waits until the move has arrived and what it changed is painted.
    void moveTo(const QPoint& p)
    {
        const int moves = watch.moves;
        const int paints = watch.paints;
        screen.movePointer(p);
        if (!processUntil([&] { return watch.moves > moves; }) && window.view->moving)
            fail("the pointer's move did not arrive");
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

/// The figures that this program finds for a drawing, in a process of its own.
Figures measured(const Drawing& drawing)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(drawing.name)});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        fail("a drawing could not be measured");
    Figures figures;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.split(':');
        if (words.size() == 2)
            figures[words[0].toStdString()] = words[1].toDouble();
    }
    return figures;
}

/// Starts `program` and ends it again; milliseconds until its window is painted.
double startOnce(Screen& screen, const QString& program)
{
    QProcess process;
    const double started = Screen::now();
    process.start(program, {});
    const double taken = screen.waitForWindow(windowSize, started);
    if (taken < 0)
        fail("no window came up");
    process.kill();
    process.waitForFinished();
    QThread::msleep(100); // for the window manager to take the window away
    return taken;
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

/// Seconds of processor time that the process has taken so far, threads that have ended included.
double processorSeconds(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        fail("the editor's processor time cannot be read");
    const QByteArray text = file.readAll();
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    constexpr int userTime = 11; // counted behind the program's name; the system's time follows
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
        fail("no window came up");
    QThread::sleep(3);
    figures["idle memory"] = residentMemory(process.processId());
    const double before = processorSeconds(process.processId());
    QThread::sleep(idleSeconds);
    figures["idle time"] = processorSeconds(process.processId()) - before;
    process.kill();
    process.waitForFinished();
}

/// A table of figures and their limits, and below it those that miss theirs.
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
    table.add("mouse move over 20 000 atoms against 100",
              figures["sheet 20000"]["hover"] / figures["sheet 100"]["hover"], "times", mostHoverRatio);
    Figures& small = figures["sheet 20000"];
    Figures& large = figures["sheet 100000"];
    for (const char* name : growing)
        table.add(std::string("growth from 20 000 to 100 000 atoms: ") + name, large[name] / small[name], "times",
                  mostGrowth);
    table.add("growth from 20 000 to 100 000 atoms: memory", 5 * large["memory"] / small["memory"], "times",
              mostGrowth);
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
