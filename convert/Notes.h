#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>
#include <utility>
#include <vector>

/// The warnings of a conversion: those about single molecules, and others, counted by kind. A kind reads "<things>:
/// <what was done with them>".
class Notes {
public:
    /// Adds `count` occurrences of the kind; ignored if 0.
    void add(const QString& kind, qsizetype count = 1);

    /// Like add, for what every conversion of its kind loses: only for those who ask for details.
    void addDetail(const QString& kind, qsizetype count = 1);

    /// Adds a warning about one molecule, which starts with where it is or what it is called.
    void addMolecule(const QString& text) { molecules.append(text); }

    /// Removes the warnings about molecules and returns them, so that they can be printed before the end.
    QStringList takeMolecules() { return std::exchange(molecules, {}); }

    /// Adds all occurrences of others.
    void add(const Notes& others);

    /// The warnings about molecules, then one line per kind, in order of first occurrence: the kind, followed by its
    /// count in parentheses.
    QStringList lines() const;

    /// The same for the details.
    QStringList detailLines() const;

    using Counts = std::vector<std::pair<QString, qsizetype>>;

    /// All kinds with their counts, in order of first occurrence, and the same of the details.
    const Counts& entries() const { return kinds; }
    const Counts& detailEntries() const { return details; }

private:
    static void addTo(Counts& counts, const QString& kind, qsizetype count);
    static QStringList linesOf(const Counts& counts);

    QStringList molecules;
    Counts kinds;
    Counts details;
};

/// Input that cannot be read, or output that cannot be written. The text is one line for the user and names the file
/// and, where known, the line.
class ConversionError : public std::runtime_error {
public:
    explicit ConversionError(const QString& text);
    QString text() const { return QString::fromUtf8(what()); }
};
