#pragma once

#include <QMap>
#include <QString>

#include <algorithm>

/// How often each thing was done or happened, by name.
using Statistics = QMap<QString, qint64>;

/// The one entry that is not a number of times.
inline const QString mostAtomsName = QStringLiteral("most atoms in a drawing");

/// One line for each: the number and the name.
inline QString toText(const Statistics& statistics)
{
    QString text;
    for (auto entry = statistics.cbegin(); entry != statistics.cend(); ++entry)
        text += QStringLiteral("%1 %2\n").arg(entry.value(), 9).arg(entry.key());
    return text;
}

/// Adds what toText has written; lines that are something else are passed over.
inline void addText(Statistics& statistics, const QString& text)
{
    for (const QString& line : text.split(u'\n')) {
        const QString trimmed = line.trimmed();
        bool isNumber = false;
        const qint64 number = trimmed.section(u' ', 0, 0).toLongLong(&isNumber);
        const QString name = trimmed.section(u' ', 1);
        if (isNumber && name == mostAtomsName)
            statistics[name] = std::max(statistics[name], number);
        else if (isNumber)
            statistics[name] += number;
    }
}
