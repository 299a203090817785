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
    const std::vector<PlacedFault> faults = readChecked(text, canvas.doc);
    const auto loss = std::find_if(faults.begin(), faults.end(), [](const PlacedFault& fault) { return fault.loses; });
    if (loss != faults.end())
        throw ConversionError(
            QStringLiteral("%1:%2:%3: %4").arg(name).arg(loss->line).arg(loss->column).arg(loss->text));
    for (const PlacedFault& fault : faults)
        notes.add(fault.text);
    return {sketchOf(*canvas.doc.canvas)};
}

/// Notes what a workspace has no place for.
void noteLosses(const Sketch& sketch, Notes& notes)
{
    for (const SketchMolecule& molecule : sketch.molecules) {
        notes.add("names of molecules, which a workspace does not have", molecule.name.isEmpty() ? 0 : 1);
        notes.add("further properties of records, which a workspace does not have", std::ssize(molecule.data));
        for (const SketchAtom& atom : molecule.atoms)
            if (!canvasArea.contains(atom.x, atom.y))
                notes.add("atoms beyond the edge of the canvas");
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

/// Refuses a text that holds a null byte: some readers end there, and some writers would.
void refuseNullByte(const QByteArray& text, const QString& name)
{
    const qsizetype place = text.indexOf('\0');
    if (place >= 0)
        throw ConversionError(QStringLiteral("%1:%2: a null byte").arg(name).arg(text.left(place).count('\n') + 1));
}

} // namespace

std::vector<Sketch> readSketches(const QByteArray& text, Format format, const QString& name, Notes& notes)
{
    refuseNullByte(text, name);
    switch (format) {
    case Format::Workspace:
        return readWorkspace(text, name, notes);
    case Format::Molfile:
    case Format::SdFile:
        return readMolfiles(text, name, notes);
    case Format::Smiles:
        return readSmiles(text, name, notes);
    default:
        throw ConversionError(name + QStringLiteral(": pictures are written, not read"));
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
