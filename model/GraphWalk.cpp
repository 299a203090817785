#include "model/GraphWalk.h"

namespace {

quint64 newNumber()
{
    static quint64 last = 0;
    return ++last;
}

/// Whether a walk with these marks is under way.
[[maybe_unused]] bool& isUnderWay(GraphWalk::Marks marks)
{
    static bool underWay[2] = {};
    return underWay[static_cast<int>(marks)];
}

} // namespace

GraphWalk::GraphWalk(Marks marks)
    : number(newNumber())
    , marks(marks)
{
    Q_ASSERT_X(!isUnderWay(marks), "GraphWalk", "walks that mark the same kind must not nest");
#ifndef QT_NO_DEBUG
    isUnderWay(marks) = true;
#endif
}

GraphWalk::~GraphWalk()
{
#ifndef QT_NO_DEBUG
    isUnderWay(marks) = false;
#endif
}

void GraphWalk::startAnew()
{
    number = newNumber();
}
