// Any bytes as a workspace file.

#include "tests/fuzz/FuzzTarget.h"
#include "tests/support/RoundTrip.h"

void runInput(const QByteArray& input)
{
    Drawing drawing;
    addWorkspace(input, drawing, input.size() % 2 == 1);
    editAndCheck(drawing, input);
}
