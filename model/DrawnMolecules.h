#pragma once

#include <QList>

#include <vector>

class KytAtom;
class KytMolecule;
class QCanvas;

/// A molecule and its atoms on a canvas, in the order of the canvas's items.
struct DrawnMolecule {
    KytMolecule* molecule;
    QList<KytAtom*> atoms;
};

/// The atoms of the canvas, in the order of its items.
QList<KytAtom*> drawnAtoms(const QCanvas& canvas);

/// Those of them that belong to `molecule`.
QList<KytAtom*> drawnAtoms(const QCanvas& canvas, const KytMolecule* molecule);

/// The molecules of the canvas, in the order in which their first atoms appear. Linear in the canvas's items.
std::vector<DrawnMolecule> drawnMolecules(const QCanvas& canvas);

/// Half the sum of the atoms' bond counts: each bond is counted at both of its ends.
int bondsAmong(const QList<KytAtom*>& atoms);
