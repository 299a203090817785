#pragma once

#include <QList>

#include <vector>

class KytAtom;
class KytMolecule;
class QCanvas;

/// A molecule and its atoms on a canvas, in the order of the canvas items.
struct DrawnMolecule {
    KytMolecule* molecule;
    QList<KytAtom*> atoms;
};

/// All atoms on the canvas, in the order of the canvas items.
QList<KytAtom*> drawnAtoms(const QCanvas& canvas);

/// The atoms of `molecule` on the canvas, in the same order.
QList<KytAtom*> drawnAtoms(const QCanvas& canvas, const KytMolecule* molecule);

/// All molecules on the canvas, in the order of their first atoms. Linear in the number of canvas items.
std::vector<DrawnMolecule> drawnMolecules(const QCanvas& canvas);

/// Half the sum of the atoms' bond counts, because each bond is counted at both of its ends.
int bondsAmong(const QList<KytAtom*>& atoms);
