#pragma once

#include "convert/Notes.h"
#include "convert/Sketch.h"

#include <QByteArray>
#include <QStringList>

/// What needs RDKit, without its headers. Everything here throws ConversionError with the place in `name` and the line
/// where input is bad, and neither writes nor reads files.

/// Makes RDKit quiet and its numbers those of the C locale. To be called once, after the application object is made.
void startChemistry();

/// Reads a molfile or all records of an SD file. Records that were written from one drawing share a sketch.
std::vector<Sketch> readMolfiles(const QByteArray& text, const QString& name, Notes& notes);

/// One record: a molfile of all of the sketch's molecules, followed by the properties that a molfile has no place for
/// and by `data`. V3000 where it is asked for, and where V2000 does not suffice.
QByteArray molfileOf(const Sketch& sketch, bool v3000, Notes& notes);

/// The records of all molecules, each ended by "$$$$".
QByteArray sdFileOf(const std::vector<Sketch>& sketches, bool v3000, Notes& notes);

/// Reads SMILES, a molecule a line, with its name behind it, and lays each out. Blank lines and lines that begin with
/// "#" are skipped.
std::vector<Sketch> readSmiles(const QByteArray& text, const QString& name, Notes& notes);

/// The canonical SMILES of all molecules, one a line, with their names.
QByteArray smilesOf(const std::vector<Sketch>& sketches, Notes& notes);

/// The canonical SMILES of one molecule, without its name.
QString smilesOf(const SketchMolecule& drawn, Notes& notes);

/// What is drawn, in a chemist's words.
struct MoleculeInfo {
    QString name;
    QString formula;   ///< in Hill's order, with the hydrogens that are not drawn; charge and labels behind it
    double weight = 0; ///< in g/mol, without the labels
    int atoms = 0;     ///< drawn ones
    int bonds = 0;     ///< drawn ones
    int rings = 0;     ///< independent rings, hydrogen bonds not counted
    int charge = 0;
    QStringList labels;     ///< symbols that are not elements
    QStringList complaints; ///< about valences and aromatic bonds
};
MoleculeInfo infoOf(const SketchMolecule& drawn);
