#pragma once

#include "bonds/KytBondType.h"

#include <cstddef>
#include <vector>

/// The positions and depths of a molecule's atoms and the course of its bonds, as plain values. Coordinates and depths
/// are canvas pixels.
struct DrawnShape {
    struct Atom {
        double x;
        double y;
        float depth;
    };
    struct Bond {
        int from; ///< index of the start atom; the narrow end of a wedge
        int to;
        KytBondType kind; ///< of its wedge or of its first line
    };

    std::vector<Atom> atoms;
    std::vector<Bond> bonds;
};

/// The number of the connected piece of each atom; pieces are numbered in the order of their first atoms.
std::vector<std::size_t> connectedPieces(const DrawnShape& shape);

/// Whether the depths only follow from the wedges, so that there is no shape in space. That is so if, in each connected
/// piece, the two ends of every bond that is not a wedge have the same depth; or if the atoms that are not at one
/// common depth are wide ends of wedges that rise as drawn, or joined to these by bonds between equal depths.
bool isFlat(const DrawnShape& shape);
