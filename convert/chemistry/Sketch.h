#pragma once

#include "bonds/BondGeometry.h"
#include "bonds/KytBondType.h"

#include <QString>

#include <array>
#include <utility>
#include <vector>

// Plain copies of a drawing, independent of the canvas and of file formats. Coordinates are canvas pixels with y
// pointing down; depths have the same unit and increase towards the viewer.

struct SketchAtom {
    QString symbol; ///< text of the label, without white space
    double x = 0;
    double y = 0;
    float depth = 0;
    std::array<QString, 3> color; ///< red, green and blue as decimal texts, without white space
};

struct SketchBond {
    int from = 0;                   ///< index of the start atom; the narrow end of a wedge
    int to = 0;                     ///< index of the end atom
    std::vector<KytBondType> kinds; ///< of its lines, at most three, or of its wedge
    float angle = drawnAngle;       ///< projection angle of a wedge, in degrees
    bool open = false;              ///< a double bond whose E/Z stereo is unspecified, whatever its coordinates show
};

struct SketchMolecule {
    QString name;
    std::vector<SketchAtom> atoms;
    std::vector<SketchBond> bonds;
    std::vector<std::pair<QString, QString>> data; ///< other properties of its record: name and text
};

/// The molecules of one drawing.
struct Sketch {
    std::vector<SketchMolecule> molecules;
    bool placed = false;  ///< the coordinates are canvas positions and must be kept
    bool laidOut = false; ///< the coordinates were generated, not read
};

/// Scale of the library and of files in other formats: 30 canvas pixels are 1.5 angstroms.
inline constexpr double pixelsPerAngstrom = 20;

/// All molecules of the sketch as one, with the first name and the data of all.
SketchMolecule combined(const Sketch& sketch);

inline bool isWedge(const SketchBond& bond)
{
    return !bond.kinds.empty() && isWedgeKind(bond.kinds.front());
}
