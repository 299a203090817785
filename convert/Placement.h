#pragma once

#include "convert/Sketch.h"
#include "doc/kytstudiodoc.h"

#include <QRectF>

/// A document's canvas, in canvas pixels.
inline constexpr QRectF canvasArea(0, 0, canvasSize, canvasSize);

/// The part of the canvas that a fresh window shows, in canvas pixels.
inline constexpr QRectF shownPart(0, 0, 385, 240);

/// The rectangle around the atoms' centres; null where there are none.
QRectF extentOf(const Sketch& sketch);

/// Moves everything by (dx, dy) canvas pixels.
void shift(Sketch& sketch, double dx, double dy);

/// Puts the sketch into the middle of the part of the canvas that a fresh window shows, or, where it is too large for
/// that, to its left or upper edge.
void centre(Sketch& sketch);

/// One drawing with all the sketches. A single one keeps its place; several are laid out side by side, in rows that are
/// as wide as the canvas at most.
Sketch sideBySide(std::vector<Sketch> sketches);

/// Sets the pieces of a molecule that no bond holds together, such as ions, beside one another in the order of their
/// first atoms, so far apart that their labels stay legible.
void spreadPieces(SketchMolecule& molecule);

/// Gives every wedge whose ends lie at equal depths the angle of a drawn one and lifts or lowers its wide end to match,
/// as when it is drawn by hand, a wedge before those that start from its wide end. An end is lifted once. The other
/// wedges get the angle that their depths give.
void liftWedges(SketchMolecule& molecule);
