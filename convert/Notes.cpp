#include "convert/Notes.h"

#include <algorithm>

void Notes::add(const QString& kind, qsizetype count)
{
    if (count <= 0)
        return;
    const auto known = std::find_if(kinds.begin(), kinds.end(), [&](const auto& entry) { return entry.first == kind; });
    if (known != kinds.end())
        known->second += count;
    else
        kinds.emplace_back(kind, count);
}

void Notes::add(const Notes& others)
{
    for (const auto& [kind, count] : others.kinds)
        add(kind, count);
}

QStringList Notes::lines() const
{
    QStringList list;
    for (const auto& [kind, count] : kinds)
        list.append(QStringLiteral("%1 (%2)").arg(kind).arg(count));
    return list;
}

ConversionError::ConversionError(const QString& text)
    : std::runtime_error(text.simplified().toStdString())
{
}
