// Any bytes as a workspace file. Only reads; fuzz_editing edits and writes what is read.

#include "tests/fuzz/FuzzTarget.h"

#include "doc/KytFileIO.h"

#include <QIODevice>
#include <QTextStream>

#include <algorithm>
#include <vector>

void runInput(const QByteArray& input)
{
    const KeptDrawing drawing;
    std::vector<WorkspaceFault> faults;
    KytFileIO io;
    io.faults = &faults;
    QTextStream stream(input, QIODevice::ReadOnly);
    const bool complete = io.readWorkspace(stream, drawing.doc, input.size() % 2 == 1);

    demandNoFault(drawingFault(*drawing.canvas()), "after reading");
    demand(complete
               || std::any_of(faults.begin(), faults.end(), [](const WorkspaceFault& fault) { return fault.isError; }),
           "a workspace without its end has an error");
    demand(std::is_sorted(faults.begin(), faults.end(),
                          [](const WorkspaceFault& a, const WorkspaceFault& b) { return a.word < b.word; }),
           "faults are in the order of the file");
}
