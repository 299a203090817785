#include "tests/monkey/Shrink.h"

#include <algorithm>

namespace {

Steps without(const Steps& steps, qsizetype from, qsizetype count)
{
    Steps rest = steps;
    rest.remove(from, std::min(count, rest.size() - from));
    return rest;
}

} // namespace

Steps shrunk(Steps steps, const std::function<bool(const Steps&)>& fails, const std::function<bool()>& mayGoOn)
{
    qsizetype chunk = steps.size();
    while (chunk > 0) {
        bool isShorter = false;
        // From the end: what comes last depends on what comes first, not the other way round.
        for (qsizetype from = (steps.size() - 1) / chunk * chunk; from >= 0 && !steps.isEmpty(); from -= chunk) {
            if (!mayGoOn())
                return steps;
            if (from >= steps.size())
                continue;
            const Steps shorter = without(steps, from, chunk);
            if (fails(shorter)) {
                steps = shorter;
                isShorter = true;
            }
        }
        // At single steps, again and again until none can be left out.
        if (chunk > 1 || !isShorter)
            chunk = std::min(chunk / 2, steps.size());
    }
    return steps;
}
