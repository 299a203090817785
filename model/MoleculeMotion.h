#pragma once

#include <QList>

class KytAtom;
class KytMolecule;
class QCanvas;

/// Moves all atoms of `molecule` on `canvas` by (dx, dy) canvas pixels, in the order of the canvas items. Depth is
/// propagated as if each atom had been moved separately; the bonds are laid out once, at the end.
void moveMolecule(const QCanvas& canvas, const KytMolecule* molecule, double dx, double dy);

/// Rotates all other atoms of the molecule of `pivot` about `pivot` by `angle` radians (KytAtom::rotateAbout),
/// likewise.
void rotateMolecule(const QCanvas& canvas, const KytAtom& pivot, float angle);

/// The same for `atoms`, in their order: moves all of them, or rotates all of them but `pivot`.
void moveAtoms(const QList<KytAtom*>& atoms, double dx, double dy);
void rotateAtoms(const QList<KytAtom*>& atoms, const KytAtom& pivot, float angle);
