#pragma once

#include "convert/program/Conversion.h"
#include "tests/fuzz/FuzzTarget.h"

/// Reads `input` in the format with this extension, and converts what was read into every other one. Demands that what
/// is read is whole and can be read back, and that what is refused is refused in one line.
void convertAndCheck(const QByteArray& input, const char* format);
