#pragma once

#include "bonds/BondGeometry.h"
#include "bonds/KytBondType.h"

#include <QString>

#include <array>
#include <utility>
#include <vector>

/// Plain copies of what is drawn, between the canvas and the other formats. Places are canvas pixels with y pointing
/// down, depths are in the same unit and rise towards the viewer.

struct SketchAtom {
    QString symbol; ///< as in the label, without white space
    double x = 0;
    double y = 0;
    float depth = 0;
    std::array<QString, 3> color; ///< red, green and blue as texts, without white space
};

struct SketchBond {
    int from = 0; ///< an index in the molecule's atoms; the narrow end of a wedge
    int to = 0;
    std::vector<KytBondType> kinds; ///< of its lines, or of its wedge; at most three
    float angle = drawnAngle;       ///< projection angle of a wedge, in degrees
};

struct SketchMolecule {
    QString name;
    std::vector<SketchAtom> atoms;
    std::vector<SketchBond> bonds;
    std::vector<std::pair<QString, QString>> data; ///< further properties of its record: name and text
};

/// Molecules that share one drawing.
struct Sketch {
    std::vector<SketchMolecule> molecules;
    bool placed = false;  ///< its places are places on the canvas and stay as they are
    bool laidOut = false; ///< its places were made up here
};

/// Pixels of a drawing for one angstrom, in files of other formats and in the library: 30 pixels are 1.5 angstroms.
inline constexpr double pixelsPerAngstrom = 20;

inline bool isWedge(const SketchBond& bond)
{
    return !bond.kinds.empty() && isWedgeKind(bond.kinds.front());
}
