// Any bytes as a molfile or an SD file.

#include "tests/fuzz/Conversions.h"

void runInput(const QByteArray& input)
{
    convertAndCheck(input, "sdf");
}
