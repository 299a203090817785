#pragma once

#include "bonds/KytBondType.h"

#include <map>
#include <utility>
#include <vector>

/// An atom of a DrawingModel. Coordinates are canvas pixels.
struct AtomModel {
    double x = 0;
    double y = 0;
    float z = 0;
    bool locked = false;
    double labelX = 0;
    double labelY = 0;
    std::vector<int> in;  ///< bonds that end here, in the order in which they came
    std::vector<int> out; ///< bonds that start here, likewise

    bool operator==(const AtomModel&) const = default;
};

/// A bond of a DrawingModel.
struct BondModel {
    int from = 0;
    int to = 0;
    float length = 0;
    float angle = 60;               ///< of a wedge, degrees
    std::vector<KytBondType> drawn; ///< its one to three lines, or its wedge
    KytBondType kinds[3] = {};      ///< what was added first, second and third; stays when a line goes

    bool isWedge() const { return kinds[0] == KYTBT_StereoUp || kinds[0] == KYTBT_StereoDown; }
    bool operator==(const BondModel&) const = default;
};

/// A small drawing as plain values, with the rules of editing as plain recursion: what the editor does in linear time
/// and without the machine stack, done the slow way. It shares no function with the editor.
///
/// Atoms and bonds are known by numbers, which rise in the order of creation and are never used again.
class DrawingModel {
public:
    std::map<int, AtomModel> atoms;
    std::map<int, BondModel> bonds;

    void addAtom(int number, double x, double y, float z);
    /// A bond without a line.
    void addBond(int number, int from, int to);
    /// Adds a line or a wedge to a bond, if the bond takes one more.
    void draw(int bond, KytBondType kind);

    void moveBy(int atom, double dx, double dy);
    void rotateAbout(int atom, double cx, double cy, float angle);
    void moveBondBy(int bond, double dx, double dy);
    void moveLabelBy(int atom, double dx, double dy);
    void setDepth(int atom, float z);
    /// Gives a wedge an angle in degrees, as its dialog does.
    void setAngle(int bond, float angle);

    /// Drops the atom `dropped` on the atom `target`.
    void drop(int target, int dropped);

    void deleteAtom(int atom);
    void deleteBond(int bond);
    /// Deletes the line `index` of a bond, and the bond with its last line.
    void deleteLine(int bond, int index);

    /// The bond between two atoms, incoming bonds of `atom` first; -1 where there is none.
    int bondBetween(int atom, int other) const;
    /// The atom at the other end of the first incoming or else the first outgoing bond; -1 without bonds.
    int firstNeighbour(int atom) const;
    /// The end points of the bond's lines, or the corners of its wedge: x and y of each, in whole pixels.
    std::vector<int> points(const BondModel& bond) const;
    /// Whether no depth propagates along a bond because it would go around a ring forever.
    bool liesInClimbingRing(const BondModel& bond) const;
    /// All atoms connected with `atom`, in the order of creation.
    std::vector<int> moleculeOf(int atom) const;

    bool operator==(const DrawingModel&) const = default;

private:
    void place(int atom, double x, double y);
    void layOutBondsOf(int atom);
    void layOut(int bond);
    std::pair<double, double> sideOf(const BondModel& bond) const;
    bool carries(const BondModel& bond) const;
    bool depthReaches(int from, int to) const;
    bool areBondedOnlyToEachOther(int one, int other) const;
    void handBonds(int from, int target);
};
