#pragma once

#include "convert/chemistry/Sketch.h"
#include "doc/kytstudiodoc.h"

#include <QRectF>

/// A document's canvas, in canvas pixels.
inline constexpr QRectF canvasArea(0, 0, canvasSize, canvasSize);

/// The part of the canvas that a new window shows, in canvas pixels.
inline constexpr QRectF shownPart(0, 0, 385, 240);

/// The bounding rectangle of the atom centres; null for a sketch without atoms.
QRectF extentOf(const Sketch& sketch);

/// Moves all atoms by (dx, dy) canvas pixels.
void shift(Sketch& sketch, double dx, double dy);

/// Centres the sketch in the part of the canvas that a new window shows. Where it is too wide or too high for that, it
/// starts at the left or upper edge.
void centre(Sketch& sketch);

/// Combines the sketches into one drawing. A single placed sketch keeps its position; several are laid out side by
/// side, in rows no wider than the canvas.
Sketch sideBySide(std::vector<Sketch> sketches);

/// Lays out the unconnected pieces of a molecule, such as ions, side by side in the order of their first atoms, with
/// enough space for their labels.
void spreadPieces(SketchMolecule& molecule);

/// Whether the molecule has no shape in space; see isFlat(const DrawnShape&).
bool isFlat(const SketchMolecule& molecule);

/// Gives every wedge between atoms of equal depth the angle of a newly drawn wedge and raises or lowers its wide end to
/// match. A wedge is processed before those that start at its wide end, and an atom is moved at most once. All other
/// wedges get the angle that results from the depths of their ends.
void liftWedges(SketchMolecule& molecule);

/// Gives every wedge the angle that results from the depths of its ends, which it keeps.
void setWedgeAngles(SketchMolecule& molecule);
