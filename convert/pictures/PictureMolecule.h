#pragma once

#include "convert/chemistry/Sketch.h"

#include <GraphMol/RWMol.h>

#include <QColor>
#include <QString>

#include <map>
#include <memory>
#include <vector>

/// A drawing as RDKit draws it, and what RDKit cannot draw.
struct PictureMolecule {
    std::unique_ptr<RDKit::RWMol> molecule; ///< all molecules of the drawing; atoms in the drawing's order
    std::vector<QColor> colors;             ///< of the atoms, in the drawing
    std::map<unsigned, QString> foreign;    ///< labels beyond ASCII by atom; RDKit gets one of the same width
    std::map<unsigned, std::vector<KytBondType>> dashed; ///< the lines of bonds with dashed ones, by bond
};

/// Prepares a drawing for MolDraw2D, which must not prepare it itself: coordinates in angstroms, wedges, implicit
/// hydrogens and labels. With `carbons`, every carbon gets a label. Duplicate bonds and bonds without lines are
/// omitted.
PictureMolecule pictureMolecule(const Sketch& sketch, bool carbons);

/// The mean length in angstroms of all bonds of the drawings but hydrogen bonds; 1.5 if there is none.
double meanBondLength(const std::vector<Sketch>& sketches);
