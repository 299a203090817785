#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <utility>
#include <vector>

/// The warnings of a conversion, counted by kind. A kind reads "<things>: <what was done with them>".
class Notes {
public:
    /// Adds `count` occurrences of the kind; ignored if 0.
    void add(const QString& kind, qsizetype count = 1);

    /// Adds all occurrences of others.
    void add(const Notes& others);

    /// One line per kind, in order of first occurrence: the kind, followed by its count in parentheses.
    QStringList lines() const;

    /// All kinds with their counts, in order of first occurrence.
    const std::vector<std::pair<QString, qsizetype>>& entries() const { return kinds; }

private:
    std::vector<std::pair<QString, qsizetype>> kinds;
};

/// Input that cannot be read, or output that cannot be written. The text is one line for the user and names the file
/// and, where known, the line.
class ConversionError : public std::runtime_error {
public:
    explicit ConversionError(const QString& text);
    QString text() const { return QString::fromUtf8(what()); }
};
