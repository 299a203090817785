#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"

#include <QByteArray>
#include <QString>

/// Reads SMILES, one molecule per line with an optional name after it, and lays out each molecule. Blank lines and
/// lines that start with "#" are skipped. Bad input throws a ConversionError with `name` and the line number.
std::vector<Sketch> readSmiles(const QByteArray& text, const QString& name, Notes& notes);

/// The canonical SMILES of all molecules, one per line, with their names.
QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes);

/// The canonical SMILES of one molecule, without its name.
QString smilesOf(const SketchMolecule& drawn, Notes& notes);
