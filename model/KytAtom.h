#pragma once

#include "canvas/qcanvas.h"
#include "model/GraphWalk.h"

#include <QList>
#include <QString>

#include <array>
#include <utility>

class BondUpdate;
class KytAtom;
class KytBond;
class KytMolecule;
class KytStudioDoc;
class QTextStream;

/// The bonds that a tree writer has visited, as pairs (current atom, neighbour). Owned by the caller; initially empty.
using KytVisitedPairs = QList<std::pair<KytAtom*, KytAtom*>>;

/// An atom: a node of the directed bond graph and a dot with a symbol label on the canvas.
///
/// It owns its label. Deleting it deletes its bonds and gives every piece that remains its own molecule.
class KytAtom : public QCanvasEllipse {
public:
    /// Creates a hidden carbon atom ("C") at canvas position (0, 0), with a visible label. `z` is its depth in canvas
    /// units.
    KytAtom(QCanvas* canvas, float z, bool locked);
    /// Creates such an atom with `symbol` as its symbol and name.
    KytAtom(QCanvas* canvas, const QString& symbol, float z, bool locked);
    ~KytAtom() override;

    KytMolecule* getMolecule() const { return molecule; }

    /// Sets the molecule of this atom and of all atoms connected to it, in either direction of the bonds. Does not
    /// continue through atoms that are already in `m`. Linear in the number of atoms reached. Null is ignored.
    void setMolecule(KytMolecule* m);

    /// Sets the molecule of all connected atoms to that of this atom, also beyond atoms that already have it.
    void spreadMolecule();

    /// Gives `m` (not null) to this atom alone, whatever it is bonded to.
    void changeMolecule(KytMolecule* m);

    QList<KytBond*>* getInList() { return &inList; }
    QList<KytBond*>* getOutList() { return &outList; }
    void addInBond(KytBond* bond);
    void addOutBond(KytBond* bond);
    int getBondCount() const;

    float getAtomZ() const { return atomZ; }
    /// Sets the depth; a changed depth is propagated along the outgoing bonds (BondUpdate). A depth outside the range
    /// of float is clamped, NaN is ignored.
    void setAtomZ(float z);

    QString getName() const { return name; }
    QString getSymbol() const { return symbol; }
    void setName(QString newName);
    /// Sets the symbol and the text of the label.
    void setSymbol(QString newSymbol);

    void startHover();
    void stopHover();

    /// The other atom of the first incoming bond or, without one, of the first outgoing bond; null without bonds.
    KytAtom* getFirstConnectedAtom() const;

    /// The bond between this atom and `atom`, searching incoming bonds first; null if there is none.
    KytBond* isConnected(KytAtom* atom) const;
    /// Whether `atom` can be reached from here against the direction of the bonds. False for null.
    bool isInListConnected(KytAtom* atom);
    /// Whether `atom` can be reached from here along the direction of the bonds. False for null.
    bool isOutListConnected(KytAtom* atom);
    /// Whether isInListConnected or isOutListConnected is true; paths that change direction do not count.
    bool isAnyhowConnected(KytAtom* atom);

    /// Moves the atom by (dx, dy) canvas pixels, with the ends of its bonds and its label.
    void moveBy(double dx, double dy) override;
    /// Moves the centre, and the top-left corner of the label, to (x, y) in canvas pixels.
    void move(double x, double y);
    /// Rotates the atom about (cx, cy) by `angle` radians, starting from the direction given by findinclination.
    void rotateAbout(double cx, double cy, float angle);
    /// The same as part of a larger update, at whose end the bonds are laid out.
    void moveBy(double dx, double dy, BondUpdate& update);
    void move(double x, double y, BondUpdate& update);
    void rotateAbout(double cx, double cy, float angle, BondUpdate& update);

    /// Removes `bond` from both lists. Returns true if no other bond is left.
    bool deleteBond(KytBond* bond);
    /// Moves all bonds to `target`; a bond to an atom that is already bonded to `target` is deleted. Does not change
    /// molecules; combine() does.
    void transferBonds(KytAtom* target);
    /// Merges `other`, which was dropped onto this atom, into it. True: nothing was done, the caller must delete
    /// `other`. False: the merge was rejected, or it was done and `other` is deleted; the caller must not use it any
    /// more.
    bool combine(KytAtom* other);

    /// Writes this atom's molecule as a tree of "ATOM", "BOND_IN", "BOND_OUT" and "END" records that starts here.
    void writeMoleculeToFile(QTextStream* stream, KytVisitedPairs* visited);
    /// Reads a tree into this atom and new atoms on the document's canvas, all given to `readMolecule`.
    void readMoleculeFromFile(QTextStream* stream, KytMolecule* readMolecule, KytStudioDoc* doc);

    void aboutToBeCleared() override;

    int deleted = 0;           ///< 1 once its destruction has begun
    bool locked;               ///< dragging it moves its whole molecule, and bonds do not change its depth
    QString _atomColor[3];     ///< red, green and blue as decimal texts "0".."255"
    QString name;              ///< the atom's name
    QString symbol;            ///< the chemical symbol in the label
    KytMolecule* molecule;     ///< the molecule it belongs to, never null
    int flag = 0;              ///< 1 while a connectivity search has visited this atom
    float atomZ;               ///< depth, in canvas units
    QCanvasText* canvasSymbol; ///< the label; owned
    QList<KytBond*> inList;    ///< bonds that end here, in the order added; not owned
    QList<KytBond*> outList;   ///< bonds that start here, in the order added; not owned

    WalkMark mark; ///< mark of the last walk that visited the atom
    int index = 0; ///< index of the atom in the last call of bondTable

private:
    static KytMolecule* makeFirstMolecule();
    void joinMolecule(KytMolecule* m);
    void leaveMolecule();
    void deleteAllBonds();
    void updateBonds(BondUpdate& update);
    bool isReachable(KytAtom* atom, QList<KytBond*> KytAtom::*bonds, KytAtom* KytBond::*end);
};

/// The colour of a new atom, as KytAtom::_atomColor.
const std::array<QString, 3>& newAtomColor();

/// Deletes `atoms` (each once, in any order) with their bonds, and gives every piece that remains its own molecule. As
/// if each had been deleted alone, but linear in the molecules that they belong to.
void deleteAtoms(const QList<KytAtom*>& atoms);

/// The direction from (x1, y1) to (x2, y2), in radians with y pointing down.
///
/// Straight up and straight down both give pi/2; straight left and straight right both give 0.
double findinclination(double x1, double y1, double x2, double y2);
