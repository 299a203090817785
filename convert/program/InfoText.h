#pragma once

#include "convert/chemistry/MoleculeInfo.h"

#include <QByteArray>

#include <vector>

/// The properties of a molecule and the file that it was read from.
struct InfoEntry {
    QString file;
    MoleculeInfo info;
};

/// A table with a header line and one line per molecule, each followed by its InChI, its InChIKey and its warnings.
QByteArray infoTable(const std::vector<InfoEntry>& entries);

/// The same data as a JSON array of objects.
QByteArray infoJson(const std::vector<InfoEntry>& entries);
