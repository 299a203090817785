#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"

#include <QByteArray>
#include <QString>

/// The faults of the records of a molfile or an SD file, one line each, which starts with `name`: all invalid bonds and
/// declared sizes of a record; only if there are none, the first error of its parser.
QStringList molfileFaults(const Record& file, const QString& name);

/// Reads a molfile or some records of an SD file. Records that were written from one drawing share a sketch. Bad input
/// throws a ConversionError with `name` and the line number; warnings are added to `notes`.
std::vector<Sketch> readMolfiles(const Record& file, const QString& name, Notes& notes);

/// One record: a molfile with all molecules of the sketch, followed by the properties that a molfile cannot store and
/// by SketchMolecule::data. Written as V3000 if `v3000` is true or if V2000 is too limited.
QByteArray molfileOf(const Sketch& sketch, bool v3000, Notes& notes);

/// The records of all molecules, each terminated by "$$$$". `firstDrawing` is the number of the first sketch.
QByteArray sdFileOf(const std::vector<Sketch>& sketches, bool v3000, int firstDrawing, Notes& notes);
