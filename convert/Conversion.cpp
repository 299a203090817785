#include "convert/Conversion.h"

#include "convert/Canvas.h"
#include "convert/Chemistry.h"
#include "convert/Placement.h"
#include "convert/SketchCanvas.h"
#include "convert/WorkspaceCheck.h"
#include "doc/WorkspaceFile.h"

#include <algorithm>

namespace {

std::vector<Sketch> readWorkspace(const QByteArray& text, const QString& name, Notes& notes)
{
    Canvas canvas;
    const std::vector<LocatedFault> faults = readChecked(text, canvas.doc);
    const auto error =
        std::find_if(faults.begin(), faults.end(), [](const LocatedFault& fault) { return fault.isError; });
    if (error != faults.end())
        throw ConversionError(
            QStringLiteral("%1:%2:%3: %4").arg(name).arg(error->line).arg(error->column).arg(error->text));
    for (const LocatedFault& fault : faults)
        notes.add(QString(fault.text).replace(QStringLiteral("; "), QStringLiteral(": ")));
    return {sketchOf(*canvas.doc.canvas)};
}

/// Adds warnings for everything that a workspace cannot store.
void noteLosses(const Sketch& sketch, Notes& notes)
{
    for (const SketchMolecule& molecule : sketch.molecules) {
        notes.add("molecule names: discarded, not supported in workspaces", molecule.name.isEmpty() ? 0 : 1);
        notes.add("record properties: discarded, not supported in workspaces", std::ssize(molecule.data));
        for (const SketchAtom& atom : molecule.atoms)
            if (!canvasArea.contains(atom.x, atom.y))
                notes.add("atoms outside the canvas: kept, but not visible in the editor");
    }
}

QByteArray workspaceOf(const Sketch& sketch, Notes& notes)
{
    noteLosses(sketch, notes);
    Canvas canvas;
    drawOn(canvas.doc, sketch);
    return workspaceText(*canvas.doc.canvas);
}

QByteArray pictureOf(const Sketch& sketch, Format format, const PictureStyle& style)
{
    Canvas canvas;
    drawOn(canvas.doc, sketch);
    const QString title = sketch.molecules.size() == 1 ? sketch.molecules.front().name : QString();
    switch (format) {
    case Format::Svg:
        return svgOf(*canvas.doc.canvas, style, title);
    case Format::Png:
        return pngOf(*canvas.doc.canvas, style);
    default:
        return pdfOf(*canvas.doc.canvas, style, title);
    }
}

/// Rejects null bytes: some readers and writers treat them as the end of the text.
void rejectNullByte(const QByteArray& text, const QString& name)
{
    const qsizetype index = text.indexOf('\0');
    if (index >= 0)
        throw ConversionError(
            QStringLiteral("%1:%2: unexpected null byte").arg(name).arg(text.left(index).count('\n') + 1));
}

} // namespace

std::vector<Sketch> readSketches(const QByteArray& text, Format format, const QString& name, Notes& notes)
{
    rejectNullByte(text, name);
    switch (format) {
    case Format::Workspace:
        return readWorkspace(text, name, notes);
    case Format::Molfile:
    case Format::SdFile:
        return readMolfiles(text, name, notes);
    case Format::Smiles:
        return readSmiles(text, name, notes);
    default:
        throw ConversionError(name + QStringLiteral(": picture formats can only be written"));
    }
}

QByteArray writeSketches(std::vector<Sketch> sketches, Format format, const OutputStyle& style, Notes& notes)
{
    switch (format) {
    case Format::Workspace:
        return workspaceOf(sideBySide(std::move(sketches)), notes);
    case Format::Molfile:
        return molfileOf(sideBySide(std::move(sketches)), style.v3000, notes);
    case Format::SdFile:
        return sdFileOf(sketches, style.v3000, notes);
    case Format::Smiles:
        return smilesOf(sketches, notes);
    default:
        return pictureOf(sideBySide(std::move(sketches)), format, style.picture);
    }
}
