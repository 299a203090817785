// Measures what grows with a drawing and prints it as a table; no part of the tests.
//
// Each drawing is measured in a process of its own, so that its peak memory is its own: without arguments the program
// runs itself once per drawing and prints the table; with a shape and a number of atoms it measures that drawing and
// prints the bare figures.

#include "app/kytstudio.h"
#include "canvas/qcanvas.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFont>
#include <QHash>
#include <QMouseEvent>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr double spacing = 5; // length of a bond in canvas pixels; 100 000 atoms still fit onto the canvas
constexpr int margin = 20;    // canvas pixels
constexpr int chainRow = 390; // atoms per row of the folded chain
constexpr int sizes[] = {100, 1000, 20000, 100000};

struct Quantity {
    const char* name;
    const char* label;
    const char* unit;
    int judged; ///< the index in `sizes` of the drawing that is held to the limit
    bool ratio; ///< whether the limit is for the ratio of that drawing to the one before, or for the figure itself
    double limit;
};

const Quantity quantities[] = {
    {"load", "load", "ms", 3, true, 8},
    {"save", "save", "ms", 3, true, 8},
    {"new", "New", "ms", 3, true, 8},
    {"hit", "hit test of a mouse move", "us", 3, true, 1.5},
    {"drag", "drag the molecule one step", "ms", 3, true, 8},
    {"delete", "delete an atom in the middle", "ms", 3, true, 8},
    {"memory", "peak memory per atom", "KiB", 3, false, 12},
    {"wait", "load, by the wall clock", "ms", 2, false, 1000},
};

/// The figures of one drawing by the quantities' names.
using Figures = QHash<QString, double>;

struct Bond {
    int from;
    int to;
};

struct Drawing {
    std::vector<QPointF> atoms;
    std::vector<Bond> bonds;
};

/// A zigzag chain that runs to and fro in rows.
Drawing chain(int count)
{
    Drawing drawing;
    for (int i = 0; i < count; ++i) {
        const int row = i / chainRow;
        const int column = row % 2 == 0 ? i % chainRow : chainRow - 1 - i % chainRow;
        drawing.atoms.emplace_back(margin + column * spacing, margin + row * spacing + column % 2 * 2);
        if (i > 0)
            drawing.bonds.push_back({i - 1, i});
    }
    return drawing;
}

/// A sheet of six-rings, each fused to its neighbours: zigzag rows, joined at every second atom.
Drawing sheet(int count)
{
    const double across = spacing * std::sqrt(3.0) / 2.0;
    const int columns = std::max(2, int(std::sqrt(count * 1.5 * spacing / across)) / 2 * 2);
    Drawing drawing;
    for (int i = 0; i < count; ++i) {
        const int row = i / columns;
        const int column = i % columns;
        const bool low = (row + column) % 2 == 0;
        drawing.atoms.emplace_back(margin + column * across, margin + row * 1.5 * spacing + (low ? spacing / 2 : 0));
        if (column > 0)
            drawing.bonds.push_back({i - 1, i});
        if (row > 0 && !low)
            drawing.bonds.push_back({i - columns, i});
    }
    return drawing;
}

bool write(const Drawing& drawing, const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream << "KYTFILE\n MOLECULE " << drawing.atoms.size() << ' ' << drawing.bonds.size() << '\n';
    for (const QPointF& atom : drawing.atoms)
        stream << "  ATOM C " << atom.x() << ' ' << atom.y() << " 0 255 0 0\n";
    for (const Bond& bond : drawing.bonds)
        stream << "  BOND " << bond.from << ' ' << bond.to << " 1 1\n";
    stream << " END_MOLECULE\nEND_KYTFILE\n";
    stream.flush();
    return stream.status() == QTextStream::Ok;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double milliseconds(const timespec& time)
{
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Milliseconds of this process's processor time, which other programs on the machine do not change much.
double milliseconds(const std::function<void()>& work)
{
    timespec before{};
    timespec after{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &before);
    work();
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &after);
    return milliseconds(after) - milliseconds(before);
}

/// A figure of this process's memory in KiB, by its name in /proc/self/status.
double memory(const char* name)
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.simplified().split(' ').value(1).toDouble();
    }
    return 0;
}

void press(KytStudioView* view, const QPointF& at, Qt::KeyboardModifiers keys = {})
{
    QMouseEvent event(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, keys);
    view->contentsMousePressEvent(&event);
}

void move(KytStudioView* view, const QPointF& to, Qt::MouseButtons held = {}, Qt::KeyboardModifiers keys = {})
{
    QMouseEvent event(QEvent::MouseMove, to, to, Qt::NoButton, held, keys);
    view->contentsMouseMoveEvent(&event);
}

/// The visible atom nearest to the top of what a hand hits at `at`.
KytAtom* atomAt(QCanvas* canvas, const QPointF& at)
{
    for (QCanvasItem* item : canvas->collisions(at.toPoint())) {
        if (auto* atom = dynamic_cast<KytAtom*>(item))
            return atom;
    }
    return nullptr;
}

qsizetype atomCount(QCanvas* canvas)
{
    const QCanvasItemList items = canvas->allItems();
    return std::count_if(items.begin(), items.end(),
                         [](QCanvasItem* item) { return item->rtti() == QCanvasItem::Rtti_Ellipse; });
}

/// Microseconds of one mouse move over the drawing, without a button.
double hitTest(KytStudioView* view, const Drawing& drawing)
{
    constexpr int moves = 2000;
    const QPointF middle = drawing.atoms[drawing.atoms.size() / 2];
    const double time = milliseconds([&] {
        for (int i = 0; i < moves; ++i)
            move(view, middle + QPointF(i % 7 - 3, i / 7 % 7 - 3));
    });
    return time * 1000 / moves;
}

/// Grabs the molecule in its middle and drags it to and fro, without a pause for painting; milliseconds per step.
double dragStep(KytStudioView* view, const QPointF& grip)
{
    view->canvasState = KYTVS_view;
    press(view, grip, Qt::ControlModifier);
    const double time = milliseconds([&] { move(view, grip + QPointF(1, 1), Qt::LeftButton, Qt::ControlModifier); });
    move(view, grip, Qt::LeftButton, Qt::ControlModifier);
    view->moving = nullptr; // let go without a merge
    return time;
}

double deleteAt(KytStudioView* view, const QPointF& at)
{
    view->canvasState = KYTVS_deleteItem;
    const double time = milliseconds([&] { press(view, at); });
    view->canvasState = KYTVS_view;
    return time;
}

int measure(const QString& shape, int count)
{
    const Drawing drawing = shape == "chain" ? chain(count) : sheet(count);
    const QTemporaryDir folder;
    const QString file = folder.filePath("drawing.kyt");
    if (!folder.isValid() || !write(drawing, file)) {
        std::fprintf(stderr, "the drawing cannot be written\n");
        return 1;
    }

    KytStudioApp window;
    window.show();
    QCoreApplication::processEvents();
    const double before = memory("VmRSS:");
    const QPointF middle = drawing.atoms[drawing.atoms.size() / 2];
    const int rounds = 5;
    QHash<QString, std::vector<double>> times;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer clock;
        clock.start();
        times["load"].push_back(milliseconds([&] { window.doc->load(file, false); }));
        times["wait"].push_back(double(clock.nsecsElapsed()) / 1e6);
        QCoreApplication::processEvents();
        times["save"].push_back(milliseconds([&] { window.doc->saveAs(folder.filePath("saved.kyt")); }));
        times["hit"].push_back(hitTest(window.view, drawing));
        const KytAtom* grip = atomAt(window.doc->canvas, middle);
        if (!grip || atomCount(window.doc->canvas) != count) {
            std::fprintf(stderr, "the drawing was not read as it was written\n");
            return 1;
        }
        const QPointF start(grip->x(), grip->y());
        times["drag"].push_back(dragStep(window.view, start));
        times["delete"].push_back(deleteAt(window.view, start));
        if (atomCount(window.doc->canvas) != count - 1) {
            std::fprintf(stderr, "the atom in the middle was not deleted\n");
            return 1;
        }
        QCoreApplication::processEvents();
        times["new"].push_back(milliseconds([&] { window.slotFileNew(); }));
        QCoreApplication::processEvents();
    }
    for (auto it = times.constBegin(); it != times.constEnd(); ++it)
        std::printf("%s %.6f\n", qPrintable(it.key()), median(it.value()));
    std::printf("memory %.6f\n", (memory("VmHWM:") - before) / count);
    return 0;
}

/// Empty when the drawing could not be measured.
Figures measured(const QString& shape, int count)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {shape, QString::number(count)});
    Figures figures;
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        return figures;
    for (const QByteArray& line : process.readAllStandardOutput().split('\n')) {
        const QList<QByteArray> words = line.split(' ');
        if (words.size() == 2)
            figures.insert(words[0], words[1].toDouble());
    }
    return figures;
}

void printRow(const Quantity& quantity, const std::vector<Figures>& figures)
{
    std::printf("%-30s %-4s", quantity.label, quantity.unit);
    for (const Figures& figure : figures)
        std::printf(" %11.3f", figure.value(quantity.name));
    double judged = figures[quantity.judged].value(quantity.name);
    if (quantity.ratio) {
        judged /= figures[quantity.judged - 1].value(quantity.name);
        std::printf(" %8.2f", judged);
    } else {
        std::printf(" %8s", "");
    }
    std::printf("  <= %-4g %s\n", quantity.limit, judged <= quantity.limit ? "yes" : "NO");
}

bool printTable(const QString& shape)
{
    std::vector<Figures> figures;
    for (const int size : sizes) {
        figures.push_back(measured(shape, size));
        if (figures.back().isEmpty())
            return false;
    }
    std::printf("\n%-35s", shape == "chain" ? "zigzag chain, atoms:" : "sheet of six-rings, atoms:");
    for (const int size : sizes)
        std::printf(" %11d", size);
    std::printf(" %8s  limit\n", "ratio");
    for (const Quantity& quantity : quantities)
        printRow(quantity, figures);
    std::fflush(stdout);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont("helvetica", 12));
    if (argc == 3)
        return measure(argv[1], QByteArray(argv[2]).toInt());
    std::printf("Medians of 5 runs, in processor time unless a row says otherwise. The ratio is that of 100 000 to 20 "
                "000 atoms;\n"
                "the wall clock is judged at 20 000.\n");
    return printTable("chain") && printTable("sheet") ? 0 : 1;
}
