#pragma once

#include "convert/chemistry/Sketch.h"

#include <QStringList>

/// The properties of a molecule that --info prints.
struct MoleculeInfo {
    QString name;
    QString formula;   ///< in Hill order, with implicit hydrogens, followed by the charge and the labels
    double weight = 0; ///< in g/mol, without the labels
    int atoms = 0;     ///< explicit atoms
    int bonds = 0;     ///< explicit bonds
    int rings = 0;     ///< independent rings, hydrogen bonds not counted
    int charge = 0;
    QString inchi;        ///< standard InChI; empty if there is none
    QString inchiKey;     ///< standard InChIKey; empty if there is none
    QStringList labels;   ///< symbols that are not elements
    QStringList warnings; ///< about valences and aromatic bonds
};
MoleculeInfo infoOf(const SketchMolecule& drawn);

/// The number of hydrogens that each atom has without being drawn; 0 for a label.
std::vector<int> implicitHydrogens(const SketchMolecule& drawn);
