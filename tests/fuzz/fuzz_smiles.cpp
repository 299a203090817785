// Any bytes as lines of SMILES.

#include "tests/fuzz/Conversions.h"

void runInput(const QByteArray& input)
{
    convertAndCheck(input, "smi");
}
