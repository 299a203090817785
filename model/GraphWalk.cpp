#include "model/GraphWalk.h"

namespace {

quint64 nextNumber()
{
    static quint64 last = 0;
    return ++last;
}

/// Whether a walk with this kind of marks is in progress.
[[maybe_unused]] bool& isInProgress(GraphWalk::Marks marks)
{
    static bool inProgress[2] = {};
    return inProgress[static_cast<int>(marks)];
}

} // namespace

GraphWalk::GraphWalk(Marks marks)
    : number(nextNumber())
    , marks(marks)
{
    Q_ASSERT_X(!isInProgress(marks), "GraphWalk", "walks that mark the same kind must not nest");
#ifndef QT_NO_DEBUG
    isInProgress(marks) = true;
#endif
}

GraphWalk::~GraphWalk() // NOLINT(modernize-use-equals-default): not empty in debug builds
{
#ifndef QT_NO_DEBUG
    isInProgress(marks) = false;
#endif
}

void GraphWalk::restart()
{
    number = nextNumber();
}
