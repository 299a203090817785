#include "convert/Notes.h"

#include <algorithm>

void Notes::add(const QString& kind, qsizetype count)
{
    addTo(kinds, kind, count);
}

void Notes::addDetail(const QString& kind, qsizetype count)
{
    addTo(details, kind, count);
}

void Notes::add(const Notes& others)
{
    molecules += others.molecules;
    for (const auto& [kind, count] : others.kinds)
        add(kind, count);
    for (const auto& [kind, count] : others.details)
        addDetail(kind, count);
}

QStringList Notes::lines() const
{
    return molecules + linesOf(kinds);
}

QStringList Notes::detailLines() const
{
    return linesOf(details);
}

void Notes::addTo(Counts& counts, const QString& kind, qsizetype count)
{
    if (count <= 0)
        return;
    const auto known =
        std::find_if(counts.begin(), counts.end(), [&](const auto& entry) { return entry.first == kind; });
    if (known != counts.end())
        known->second += count;
    else
        counts.emplace_back(kind, count);
}

QStringList Notes::linesOf(const Counts& counts)
{
    QStringList list;
    for (const auto& [kind, count] : counts)
        list.append(QStringLiteral("%1 (%2)").arg(kind).arg(count));
    return list;
}

ConversionError::ConversionError(const QString& text)
    : std::runtime_error(text.simplified().toStdString())
{
}
