#pragma once

#include <QPointF>

#include <vector>

/// The direction from (x1, y1) to (x2, y2) in radians, in [0, 2 pi), counter-clockwise on the screen, with y pointing
/// down. Straight up and straight down both give pi/2.
float direction(float x1, float y1, float x2, float y2);

/// Rounds `theta` to the nearest angle that is a multiple of `step` away from `reference`; half steps are rounded away
/// from `reference`. All in radians.
float snappedAngle(float theta, float reference, float step);

/// The direction of the vector (dx, dy) for the status bar, in degrees in [0, 360), counter-clockwise on the screen.
/// Straight down and a vector of length zero give 270.
double shownAngle(double dx, double dy);

/// The atoms of a zigzag chain after its start atom.
struct ZigZag {
    /// One turn of the chain: an atom beside its axis and, unless the chain ends there, an atom on its axis.
    struct Step {
        QPointF apex; ///< position of the atom beside the axis
        QPointF line; ///< position of the atom on the axis, if hasLine
        bool hasLine;
    };
    std::vector<Step> steps;
};

/// The chain from `start` towards `end` with bonds of `length`, all in canvas pixels. Empty if `end` is nearer than one
/// step of the chain, too far away for any drawing, or not finite.
ZigZag zigZag(const QPointF& start, const QPointF& end, float length);

/// The number of atoms of that chain, including its start atom.
int zigZagAtomCount(const QPointF& start, const QPointF& end, float length);
