#pragma once

#include "convert/program/Conversion.h"

/// Reads `text` in the format with this extension.
inline std::vector<Sketch> read(const QByteArray& text, const QString& format)
{
    Notes notes;
    return readSketches(text, *formatNamed(format), "test", notes);
}

inline QByteArray write(const std::vector<Sketch>& sketches, const QString& format, bool v3000 = false)
{
    Notes notes;
    OutputStyle style;
    style.v3000 = v3000;
    return writeSketches(sketches, *formatNamed(format), style, notes);
}

/// What a conversion of this kind never carries over.
inline QStringList detailsOf(const QByteArray& text, const QString& from, const QString& to)
{
    Notes notes;
    writeSketches(readSketches(text, *formatNamed(from), "test", notes), *formatNamed(to), OutputStyle(), notes);
    return notes.detailLines();
}

/// What a conversion could not carry over.
inline QStringList notesOf(const QByteArray& text, const QString& from, const QString& to)
{
    Notes notes;
    writeSketches(readSketches(text, *formatNamed(from), "test", notes), *formatNamed(to), OutputStyle(), notes);
    return notes.lines();
}

/// A workspace of one molecule: so many carbons in a row, 30 pixels apart, and these bonds.
inline QByteArray workspaceWith(const QByteArray& bonds, int atoms = 3)
{
    QByteArray text =
        "KYTFILE\n MOLECULE " + QByteArray::number(atoms) + ' ' + QByteArray::number(bonds.count("BOND")) + '\n';
    for (int i = 0; i < atoms; ++i)
        text += "ATOM C " + QByteArray::number(100 + 30 * i) + " 100 0 64 64 64\n";
    return text + bonds + "\nEND_MOLECULE\nEND_KYTFILE\n";
}
