#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"

#include <QByteArray>
#include <QString>

/// Takes the lines of a SMILES file. Blank lines, lines that start with "#" and a first line that is a column heading,
/// such as "SMILES name", are skipped. A file without SMILES throws ConversionError.
std::unique_ptr<RecordReader> smilesRecords(LineReader& lines, const InputStyle& style);

/// Reads a SMILES, with an optional name after it, and lays out the molecule. Bad input throws a ConversionError with
/// `file`, the line number, the molecule's name and the reason.
std::vector<Sketch> readSmiles(const Record& record, const QString& file, Notes& notes);

/// The canonical SMILES of all molecules, one per line, with their names.
QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes);

/// The canonical SMILES of one molecule, without its name.
QString smilesOf(const SketchMolecule& drawn, Notes& notes);
