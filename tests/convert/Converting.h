#pragma once

#include "convert/Conversion.h"

inline std::vector<Sketch> read(const QByteArray& text, Format format)
{
    Notes notes;
    return readSketches(text, format, "test", notes);
}

inline QByteArray write(const std::vector<Sketch>& sketches, Format format, bool v3000 = false)
{
    Notes notes;
    OutputStyle style;
    style.v3000 = v3000;
    return writeSketches(sketches, format, style, notes);
}

/// What a conversion could not carry over.
inline QStringList notesOf(const QByteArray& text, Format from, Format to)
{
    Notes notes;
    writeSketches(readSketches(text, from, "test", notes), to, OutputStyle(), notes);
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
