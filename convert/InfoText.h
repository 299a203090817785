#pragma once

#include "convert/Chemistry.h"

#include <QByteArray>

#include <vector>

/// A molecule and the file that it is from.
struct ToldMolecule {
    QString file;
    MoleculeInfo info;
};

/// A table with a head, a line for each molecule, and the complaints about it below it.
QByteArray infoTable(const std::vector<ToldMolecule>& molecules);

/// The same as a JSON array of objects.
QByteArray infoJson(const std::vector<ToldMolecule>& molecules);
