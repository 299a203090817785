#pragma once

#include "bonds/KytBondType.h"

#include <QFile>
#include <QString>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <vector>

// Drawings far beyond a page, for benchmarks and for tests of what is deep or dense. They are plain lists that are
// written to workspace files.

struct LargeAtom {
    double x; ///< canvas pixels
    double y;
    double depth = 0;
};

struct LargeBond {
    int from;
    int to;
    KytBondType kind = KYTBT_SingleBond;
};

struct LargeDrawing {
    std::vector<LargeAtom> atoms;
    std::vector<LargeBond> bonds;
};

namespace large {

constexpr double canvasSize = 2000; // canvas pixels
constexpr double margin = 20;       // canvas pixels
constexpr double room = canvasSize - 2 * margin;
constexpr double longestSpacing = 30;

/// The largest spacing, in canvas pixels, with which `count` atoms fit onto the canvas.
inline double spacingFor(int count)
{
    return std::min(longestSpacing, room / (std::sqrt(double(count)) + 1));
}

/// A zigzag chain that runs to and fro in rows. With wedges, each bond climbs by the same depth.
inline LargeDrawing chain(int count, bool wedges = false)
{
    const double spacing = spacingFor(count);
    const int row = int(room / spacing);
    LargeDrawing drawing;
    for (int i = 0; i < count; ++i) {
        const int column = i / row % 2 == 0 ? i % row : row - 1 - i % row;
        drawing.atoms.push_back({margin + column * spacing, margin + i / row * spacing + column % 2 * spacing * 0.4,
                                 wedges ? i * spacing : 0.0});
        if (i > 0)
            drawing.bonds.push_back({i - 1, i, wedges ? KYTBT_StereoUp : KYTBT_SingleBond});
    }
    return drawing;
}

/// A sheet of six-rings, each fused to its neighbours: zigzag rows, joined at every second atom. It has half as many
/// rings as atoms, but for its rim. With wedges, every twentieth bond is one, and where its ring closes the depths
/// disagree.
inline LargeDrawing sheet(int count, bool wedges = false)
{
    // Two atoms of a sheet take as much room as a ring: 1.5 times the root of 3 times the bond length squared.
    const double length = std::min(longestSpacing, room / (std::sqrt(count * 1.3) + 2));
    const double across = length * std::sqrt(3.0) / 2;
    const int columns = std::max(2, int(std::sqrt(count * 1.5 * length / across)) / 2 * 2);
    LargeDrawing drawing;
    const auto join = [&](int from, int to) {
        const bool wedge = wedges && drawing.bonds.size() % 20 == 7;
        drawing.bonds.push_back({from, to, wedge ? KYTBT_StereoUp : KYTBT_SingleBond});
        if (wedge)
            drawing.atoms[to].depth = drawing.atoms[from].depth + length;
    };
    for (int i = 0; i < count; ++i) {
        const int row = i / columns;
        const int column = i % columns;
        const bool low = (row + column) % 2 == 0;
        drawing.atoms.push_back({margin + column * across, margin + row * 1.5 * length + (low ? length / 2 : 0)});
        if (column > 0)
            join(i - 1, i);
        if (row > 0 && !low)
            join(i - columns, i);
    }
    return drawing;
}

/// One atom, the first, with `count` bonds; every second one leads to it. With wedges, each other one is a wedge.
inline LargeDrawing star(int count, bool wedges = false)
{
    const double spacing = spacingFor(count);
    const int row = int(room / spacing);
    LargeDrawing drawing;
    drawing.atoms.push_back({canvasSize / 2, canvasSize / 2});
    for (int i = 0; i < count; ++i) {
        drawing.atoms.push_back(
            {margin + i % row * spacing, margin + i / row * spacing, wedges && i % 4 == 0 ? 100.0 : 0.0});
        const KytBondType kind = wedges && i % 4 < 2 ? KYTBT_StereoUp : KYTBT_SingleBond;
        if (i % 2 == 0)
            drawing.bonds.push_back({0, i + 1, kind});
        else
            drawing.bonds.push_back({i + 1, 0, kind});
    }
    return drawing;
}

/// Directed diamonds in a row, tip to tip: a walk that forgets where it has been takes 2 to the `count` ways. With
/// wedges, one side of each climbs.
inline LargeDrawing ladder(int count, bool wedges = false)
{
    const double width = std::min(longestSpacing, room / count);
    LargeDrawing drawing;
    drawing.atoms.push_back({margin, canvasSize / 2});
    for (int i = 0; i < count; ++i) {
        const double left = margin + i * width;
        const int tip = 3 * i;
        drawing.atoms.push_back({left + width / 2, canvasSize / 2 - 20, wedges ? 20.0 : 0.0});
        drawing.atoms.push_back({left + width / 2, canvasSize / 2 + 20});
        drawing.atoms.push_back({left + width, canvasSize / 2});
        drawing.bonds.push_back({tip, tip + 1, wedges ? KYTBT_StereoUp : KYTBT_SingleBond});
        drawing.bonds.push_back({tip, tip + 2});
        drawing.bonds.push_back({tip + 1, tip + 3});
        drawing.bonds.push_back({tip + 2, tip + 3});
    }
    return drawing;
}

} // namespace large

/// Writes `drawing` as one molecule of a workspace file; false when that fails.
inline bool writeWorkspace(const LargeDrawing& drawing, const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream stream(&file);
    stream << "KYTFILE\n MOLECULE " << drawing.atoms.size() << ' ' << drawing.bonds.size() << '\n';
    for (const LargeAtom& atom : drawing.atoms)
        stream << "  ATOM C " << atom.x << ' ' << atom.y << ' ' << atom.depth << " 255 0 0\n";
    for (const LargeBond& bond : drawing.bonds)
        stream << "  BOND " << bond.from << ' ' << bond.to << " 1 " << int(bond.kind) << '\n';
    stream << " END_MOLECULE\nEND_KYTFILE\n";
    stream.flush();
    return stream.status() == QTextStream::Ok;
}
