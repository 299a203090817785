#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"

#include <QByteArray>

#include <vector>

// What a picture carries of its drawing: our workspace text, and the molecule in the way of RDKit's own pictures.

/// The workspace as an element for the metadata of an SVG document.
QByteArray svgWorkspace(const std::vector<Sketch>& sketches);

/// Adds the workspace and the molecules to a PNG file.
QByteArray withDrawing(const QByteArray& png, const std::vector<Sketch>& sketches);

/// Reads the drawing that a PNG or SVG file carries: ours, or else the molecules that RDKit wrote. Throws
/// ConversionError, which starts with `name`, if there is none.
std::vector<Sketch> readPng(const Record& png, const QString& name, Notes& notes);
std::vector<Sketch> readSvg(const Record& svg, const QString& name, Notes& notes);
