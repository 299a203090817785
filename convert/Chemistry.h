#pragma once

#include "convert/Notes.h"
#include "convert/Sketch.h"

#include <QByteArray>
#include <QStringList>

// Functions that need RDKit, declared without RDKit's headers. They do not access files. Bad input throws a
// ConversionError with `name` and the line number; warnings are added to `notes`.

/// Silences RDKit's log and sets the C locale for numbers. Must be called once, after the application object is
/// created.
void startChemistry();

/// Reads a molfile or all records of an SD file. Records that were written from one drawing share a sketch.
std::vector<Sketch> readMolfiles(const QByteArray& text, const QString& name, Notes& notes);

/// One record: a molfile with all molecules of the sketch, followed by the properties that a molfile cannot store and
/// by SketchMolecule::data. Written as V3000 if `v3000` is true or if V2000 is too limited.
QByteArray molfileOf(const Sketch& sketch, bool v3000, Notes& notes);

/// The records of all molecules, each terminated by "$$$$".
QByteArray sdFileOf(const std::vector<Sketch>& sketches, bool v3000, Notes& notes);

/// Reads SMILES, one molecule per line with an optional name after it, and lays out each molecule. Blank lines and
/// lines that start with "#" are skipped.
std::vector<Sketch> readSmiles(const QByteArray& text, const QString& name, Notes& notes);

/// The canonical SMILES of all molecules, one per line, with their names.
QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes);

/// The canonical SMILES of one molecule, without its name.
QString smilesOf(const SketchMolecule& drawn, Notes& notes);

/// The properties of a molecule that --info prints.
struct MoleculeInfo {
    QString name;
    QString formula;   ///< in Hill order, with implicit hydrogens, followed by the charge and the labels
    double weight = 0; ///< in g/mol, without the labels
    int atoms = 0;     ///< explicit atoms
    int bonds = 0;     ///< explicit bonds
    int rings = 0;     ///< independent rings, hydrogen bonds not counted
    int charge = 0;
    QStringList labels;   ///< symbols that are not elements
    QStringList warnings; ///< about valences and aromatic bonds
};
MoleculeInfo infoOf(const SketchMolecule& drawn);
