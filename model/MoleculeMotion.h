#pragma once

class KytAtom;
class KytMolecule;
class QCanvas;

/// Moves every atom of `canvas` that belongs to `molecule` by (dx, dy) canvas pixels, one after the other in the order
/// of the canvas's items. Depth travels as if each had been moved by itself; the bonds are laid out once, at the end.
void moveMolecule(const QCanvas& canvas, const KytMolecule* molecule, double dx, double dy);

/// Turns every other atom of the molecule of `pivot` about `pivot` by `angle` radians (KytAtom::rotateAbout), likewise.
void turnMolecule(const QCanvas& canvas, const KytAtom& pivot, float angle);
