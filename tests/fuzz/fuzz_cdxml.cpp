// Any bytes as a CDXML document.

#include "tests/fuzz/Conversions.h"

void runInput(const QByteArray& input)
{
    convertAndCheck(input, "cdxml");
}
