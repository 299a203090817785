#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"

#include <QByteArray>

/// The standard InChI of all molecules, or their InChIKeys, one per line, with their names.
QByteArray inchiLinesOf(const std::vector<Sketch>& sketches, Notes& notes);
QByteArray inchiKeyLinesOf(const std::vector<Sketch>& sketches, Notes& notes);
