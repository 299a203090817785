// Measures the editing of deep and dense drawings: a long chain, a wide sheet of rings, a star and a ladder of
// diamonds, each with and without wedges, in two sizes. Times should grow linearly with the size.

#include "app/kytstudio.h"
#include "bench/Measuring.h"
#include "bonds/KytBond.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "tests/support/LargeDrawings.h"
#include "tests/support/LargeGestures.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QFont>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <map>
#include <string>

namespace {

constexpr int rounds = 5;
constexpr double growthLimit = 1.6; // of the time per part, from the small to the large drawing
constexpr double minTime = 1;       // milliseconds; shorter times are noise

struct Shape {
    const char* name;
    LargeDrawing (*make)(int, bool);
    int small;
    int large;
};

const Shape shapes[] = {
    {"chain", large::chain, 40000, 200000},
    {"sheet of rings", large::sheet, 40000, 200000},
    {"star", large::star, 10000, 50000},
    {"ladder", large::ladder, 12, 60},
};

using Times = std::map<std::string, std::vector<double>>;

/// The centre of a star, which is its first atom; in other drawings, an atom in the middle.
KytAtom* busiestAtom(const QList<KytAtom*>& atoms)
{
    KytAtom* busiest = atoms[atoms.size() / 2];
    return atoms.first()->getBondCount() > busiest->getBondCount() ? atoms.first() : busiest;
}

bool measureOnce(KytStudioDoc& doc, const QString& fileName, qsizetype expectedAtoms, Times& times)
{
    doc.newDoc();
    const auto measureTime = [&](const char* name, const std::function<void()>& work) {
        times[name].push_back(processorTime(work));
    };
    measureTime("load", [&] { doc.load(fileName, false); });
    KytStudioView view(nullptr, &doc);
    QList<KytAtom*> atoms = drawnAtoms(*doc.canvas);
    if (atoms.size() != expectedAtoms) {
        std::fprintf(stderr, "the drawing read differs from the one written\n");
        return false;
    }
    measureTime("depth", [&] { atoms.first()->setAtomZ(atoms.first()->getAtomZ() + 1); });
    measureTime("drag", [&] { moveOneStep(&view, atoms.first(), KYTVS_view); });
    measureTime("rotate", [&] { moveOneStep(&view, atoms.first(), KYTVS_rotate); });
    measureTime("save", [&] { doc.saveAs(fileName + QStringLiteral(".saved")); });
    auto* target = new KytAtom(doc.canvas, busiestAtom(atoms)->getAtomZ(), false);
    measureTime("merge", [&] { target->combine(busiestAtom(atoms)); });
    measureTime("split", [&] { delete anyBondOf(target); });
    measureTime("delete", [&] { delete target; });
    measureTime("clear", [&] { doc.canvas->deleteItems(QCanvasItem::Rtti_Ellipse); });
    doc.load(fileName, false);
    measureTime("free", [&] { delete doc.canvas; });
    return true;
}

bool measure(const Shape& shape, int count, bool wedges, Times& times)
{
    const LargeDrawing drawing = shape.make(count, wedges);
    const QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("drawing.kyt"));
    if (!folder.isValid() || !writeWorkspace(drawing, fileName)) {
        std::fprintf(stderr, "the drawing cannot be written\n");
        return false;
    }
    for (int round = 0; round < rounds; ++round) {
        KytStudioDoc doc;
        if (!measureOnce(doc, fileName, qsizetype(drawing.atoms.size()), times))
            return false;
    }
    return true;
}

bool compareSizes(const Shape& shape, bool wedges, std::string& missed)
{
    Times small;
    Times large;
    if (!measure(shape, shape.small, wedges, small) || !measure(shape, shape.large, wedges, large))
        return false;
    std::printf("\n%s%s, %d and %d:\n", shape.name, wedges ? " with wedges" : "", shape.small, shape.large);
    for (const char* name : {"load", "depth", "drag", "rotate", "save", "merge", "split", "delete", "clear", "free"}) {
        const double before = median(small[name]);
        const double after = median(large[name]);
        const double growth = after / std::max(before, minTime) * shape.small / shape.large;
        if (growth > growthLimit)
            missed +=
                std::string(missed.empty() ? "" : "; ") + shape.name + (wedges ? " with wedges" : "") + ", " + name;
        std::printf("  %-8s %10.3f ms %10.3f ms  growth per part %5.2f  <= %.1f %s\n", name, before, after, growth,
                    growthLimit, growth <= growthLimit ? "yes" : "NO");
    }
    std::fflush(stdout);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("helvetica"), 12));
    std::printf("Medians of %d runs, in processor time.\n", rounds);
    std::string missed;
    for (const Shape& shape : shapes)
        for (const bool wedges : {false, true})
            if (!compareSizes(shape, wedges, missed))
                return 1;
    std::printf("\n%s%s\n", missed.empty() ? "Every growth is within its limit." : "Missed: ", missed.c_str());
    return 0;
}
