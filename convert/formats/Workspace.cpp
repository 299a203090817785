#include "convert/formats/Workspace.h"

#include "convert/chemistry/Canvas.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/SketchCanvas.h"
#include "convert/formats/WorkspaceCheck.h"
#include "doc/WorkspaceFile.h"

#include <algorithm>

namespace {

QString located(const LocatedFault& fault, const QString& name)
{
    return QStringLiteral("%1:%2:%3: %4").arg(name).arg(fault.line).arg(fault.column).arg(fault.text);
}

/// Adds warnings for everything that a workspace cannot store.
void noteLosses(const Sketch& sketch, Notes& notes)
{
    noteOpenDoubleBonds(sketch, notes);
    for (const SketchMolecule& molecule : sketch.molecules) {
        notes.addDetail("molecule names: discarded, not supported in workspaces", molecule.name.isEmpty() ? 0 : 1);
        notes.add("record properties: discarded, not supported in workspaces", std::ssize(molecule.data));
        for (const SketchAtom& atom : molecule.atoms)
            if (!canvasArea.contains(atom.x, atom.y))
                notes.add("atoms outside the canvas: kept, but not visible in the editor");
    }
}

} // namespace

std::vector<Sketch> readWorkspace(const Record& file, const QString& name, Notes& notes)
{
    Canvas canvas;
    const std::vector<LocatedFault> faults = readChecked(file.text, canvas.doc);
    const auto error =
        std::find_if(faults.begin(), faults.end(), [](const LocatedFault& fault) { return fault.isError; });
    if (error != faults.end())
        throw ConversionError(located(*error, name));
    for (const LocatedFault& fault : faults)
        notes.add(QString(fault.text).replace(QStringLiteral("; "), QStringLiteral(": ")));
    return {sketchOf(*canvas.doc.canvas)};
}

QByteArray workspaceOf(const Sketch& sketch, Notes& notes)
{
    noteLosses(sketch, notes);
    Canvas canvas;
    drawOn(canvas.doc, sketch);
    return workspaceText(*canvas.doc.canvas);
}

QStringList workspaceFaults(const Record& file, const QString& name)
{
    QStringList lines;
    for (const LocatedFault& fault : checkWorkspace(file.text))
        lines.append(located(fault, name));
    return lines;
}
