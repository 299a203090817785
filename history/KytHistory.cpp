#include "history/KytHistory.h"

#include "doc/kytstudiodoc.h"

#include <utility>

KytHistory::KytHistory(KytStudioDoc* doc)
    : doc(doc)
{
    present.update(*doc->canvas);
}

bool KytHistory::record(const QString& name)
{
    return record(Step{name, {}, {}});
}

bool KytHistory::record(const QString& name, const Title& before)
{
    const bool hasChanged = title && !(title() == before);
    return record(Step{name, {}, hasChanged ? std::optional(before) : std::nullopt});
}

bool KytHistory::record(Step step)
{
    if (!doc->canvas)
        return false;
    step.change = present.update(*doc->canvas);
    if (step.change.isEmpty() && !step.title)
        return false;
    ++recorded;
    undone.clear();
    done.push_back(std::move(step));
    forgetOldSteps();
    return true;
}

void KytHistory::revert()
{
    if (doc->canvas)
        present.apply(present.update(*doc->canvas), *doc);
}

std::optional<QString> KytHistory::undo()
{
    return move(done, undone);
}

std::optional<QString> KytHistory::redo()
{
    return move(undone, done);
}

std::optional<QString> KytHistory::move(std::deque<Step>& from, std::deque<Step>& to)
{
    if (from.empty() || !doc->canvas)
        return std::nullopt;
    Step step = std::move(from.back());
    from.pop_back();
    step.change = present.apply(step.change, *doc);
    if (step.title && title && setTitle) {
        const Title other = title();
        setTitle(*step.title);
        step.title = other;
    }
    to.push_back(std::move(step));
    return to.back().name;
}

qsizetype KytHistory::size() const
{
    qsizetype sum = present.size();
    for (const std::deque<Step>* steps : {&done, &undone})
        for (const Step& step : *steps)
            sum += step.change.size();
    return sum;
}

void KytHistory::forgetOldSteps()
{
    for (qsizetype used = size(); used > mostMemory && done.size() > 1; done.pop_front())
        used -= done.front().change.size();
}
