#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// What a file can hold.
enum class Format { Workspace, Molfile, SdFile, Smiles, Svg, Png, Pdf };

/// The format with this name: kyt, kyf, mol, mdl, sdf, sd, smi, smiles, svg, png or pdf, in any case.
std::optional<Format> formatNamed(const QString& name);

/// The format that the ending of a file's name says.
std::optional<Format> formatOfFile(const QString& fileName);

bool isPicture(Format format);

/// The lines of a text file in UTF-8 or, where it is not that, in Latin-1; they are in UTF-8. Lines may end in any way.
QList<QByteArray> linesOf(const QByteArray& text);
