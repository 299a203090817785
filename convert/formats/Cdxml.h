#pragma once

#include "convert/Notes.h"
#include "convert/chemistry/Sketch.h"
#include "convert/formats/Records.h"

#include <QByteArray>
#include <QString>

/// Reads a CDXML document as one drawing, with a molecule for each fragment, in the positions of the document; its bond
/// length becomes 30 pixels. Nicknames with a structure are replaced by it, those without and other labelled nodes keep
/// their labels. Arrows, texts and other objects are discarded with a warning. Bad input throws a ConversionError with
/// `name` and the line number.
std::vector<Sketch> readCdxml(const Record& file, const QString& name, Notes& notes);
