// Any bytes as a table of SMILES.

#include "tests/fuzz/Conversions.h"

void runInput(const QByteArray& input)
{
    convertAndCheck(input, "csv");
}
