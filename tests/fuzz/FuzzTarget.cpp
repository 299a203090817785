#include "tests/fuzz/FuzzTarget.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

/// The documents that no drawing uses now. Never deleted: they outlive the application.
std::vector<KytStudioDoc*>& idleDocuments()
{
    static auto* const idle = new std::vector<KytStudioDoc*>;
    return *idle;
}

KytStudioDoc* idleDocument()
{
    std::vector<KytStudioDoc*>& idle = idleDocuments();
    if (idle.empty()) {
        idle.push_back(new KytStudioDoc);
        idle.back()->newDoc();
    }
    KytStudioDoc* const document = idle.back();
    idle.pop_back();
    return document;
}

/// Keeps the layouts of frequent labels. Otherwise every input would lay out its own, since a layout is deleted with
/// the last label that uses it.
void keepLabelLayouts()
{
    static auto* const labels = new std::vector<QCanvasText*>;
    for (const char* symbol : {"C", "H", "N", "O", "S"}) {
        labels->push_back(new QCanvasText(QString::fromLatin1(symbol), nullptr));
        labels->back()->boundingRect();
    }
}

} // namespace

void demand(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", rule);
    std::abort();
}

void demandNoFault(const QString& fault, const char* when)
{
    if (fault.isEmpty())
        return;
    std::fprintf(stderr, "%s: %s\n", when, qPrintable(fault));
    std::abort();
}

KeptDrawing::KeptDrawing()
    : DrawnCanvas(idleDocument())
{
}

KeptDrawing::~KeptDrawing()
{
    canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
    demand(canvas()->allItems().isEmpty(), "deleting all atoms clears the canvas");
    idleDocuments().push_back(doc);
}

void startApplication()
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    // This platform has no fonts: the search for one that has a character would take most of the time.
    qputenv("QT_QPA_PLATFORM", "minimal");
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    new QApplication(argc, argv);
    keepLabelLayouts();
}
