#pragma once

#include <QPointF>

#include <vector>

/// The direction from (x1, y1) to (x2, y2) in radians, counter-clockwise on a screen whose y points down, in
/// [0, 2 pi). A vertical vector gives pi/2 whether it points up or down.
float direction(float x1, float y1, float x2, float y2);

/// Turns `theta` to the nearest multiple of `step` counted from `reference`, half steps away from zero. All in radians.
float snappedAngle(float theta, float reference, float step);

/// The direction of the vector (dx, dy) as the status bar shows it, in degrees in [0, 360): counter-clockwise on the
/// screen, straight down and a vector of length zero 270.
double shownAngle(double dx, double dy);

/// The atoms of a zigzag chain behind its start atom.
struct ZigZag {
    /// One turn of the chain: an atom beside its axis and, unless the chain ends there, one on the axis.
    struct Step {
        QPointF apex;
        QPointF line;
        bool hasLine;
    };
    std::vector<Step> steps;
};

/// The chain from `start` towards `end` with bonds of `length`, all in canvas pixels. Empty when `end` is nearer than
/// one step of the chain, and when it is not finite or so far away that no drawing could hold the chain.
ZigZag zigZag(const QPointF& start, const QPointF& end, float length);

/// How many atoms that chain would have, its start atom included.
int zigZagAtomCount(const QPointF& start, const QPointF& end, float length);
