#pragma once

#include <QString>

#include <optional>

/// What a file can hold.
enum class Format { Workspace, Molfile, SdFile, Smiles, Svg, Png, Pdf };

/// The format with this name: kyt, kyf, mol, mdl, sdf, sd, smi, smiles, svg, png or pdf, in any case.
std::optional<Format> formatNamed(const QString& name);

/// The format that the ending of a file's name says.
std::optional<Format> formatOfFile(const QString& fileName);

bool isPicture(Format format);
