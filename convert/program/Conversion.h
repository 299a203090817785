#pragma once

#include "convert/formats/Formats.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

/// Reads `text` in any format that can be read. `name` is the file name for messages. Throws ConversionError for bad
/// input.
std::vector<Sketch> readSketches(const QByteArray& text, const Format& format, const QString& name, Notes& notes,
                                 const InputStyle& style = InputStyle());

/// Reads one record, as Format::read does, also one with a fault. The error starts with the file name, the line number
/// and, if known, the name of the molecule.
std::vector<Sketch> readRecord(const Record& record, const Format& format, const QString& name, Notes& notes);

/// Lays out all molecules of a sketch anew; each keeps its centre. An error starts with `location`, as locationOf()
/// writes it.
void layOutAnew(Sketch& sketch, const QString& location, Notes& notes);

/// Converts the sketches to a format. Workspaces, molfiles and pictures hold one drawing, in which several sketches are
/// laid out side by side. Throws ConversionError if they cannot be converted.
QByteArray writeSketches(std::vector<Sketch> sketches, const Format& format, const OutputStyle& style, Notes& notes);

/// Splits the sketches into one sketch per molecule.
std::vector<Sketch> splitByMolecule(std::vector<Sketch> sketches);

/// The faults of a record in any format that can be read, one line each.
QStringList faultsOf(const Record& record, const Format& format, const QString& name);

/// "name:line: ", followed by the molecule's name if there is one: where an error is.
QString locationOf(const Record& record, const QString& name, const QString& molecule = QString());
