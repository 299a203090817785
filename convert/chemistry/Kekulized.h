#pragma once

#include "convert/chemistry/Sketch.h"

#include <GraphMol/RWMol.h>

#include <memory>

/// RDKit's molecule of the drawing, as for MoleculeUse::Chemistry, with single and double bonds in aromatic rings where
/// that is possible, and with its implicit hydrogens. It is not sanitized.
std::unique_ptr<RDKit::RWMol> kekulizedMolecule(const SketchMolecule& drawn);
