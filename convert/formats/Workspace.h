#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Reads a workspace or library molecule; one with errors throws ConversionError. `name` is the file name for messages.
std::vector<Sketch> readWorkspace(const Record& file, const QString& name, Notes& notes);

/// A workspace with the drawing.
QByteArray workspaceOf(const Sketch& sketch, Notes& notes);

/// Everything that the editor skips or corrects, one line each: "name:line:column: fault; what was done".
QStringList workspaceFaults(const Record& file, const QString& name);
