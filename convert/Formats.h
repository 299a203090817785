#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// The supported file formats.
enum class Format { Workspace, Molfile, SdFile, Smiles, Svg, Png, Pdf };

/// The format called `name`: kyt, kyf, mol, mdl, sdf, sd, smi, smiles, svg, png or pdf, case-insensitive.
std::optional<Format> formatNamed(const QString& name);

/// The format for the extension of a file name.
std::optional<Format> formatOfFile(const QString& fileName);

bool isPicture(Format format);

/// Splits a text file into lines. The text is UTF-8, or else Latin-1; the lines returned are UTF-8. LF, CR LF and CR
/// all end a line.
QList<QByteArray> linesOf(const QByteArray& text);
