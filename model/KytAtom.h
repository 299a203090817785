#pragma once

#include "canvas/qcanvas.h"
#include "model/GraphWalk.h"

#include <QList>
#include <QString>

#include <utility>

class BondUpdate;
class KytAtom;
class KytBond;
class KytMolecule;
class KytStudioDoc;
class QTextStream;

/// Pairs of atoms whose bond a tree writer has visited, as (current atom, neighbour). The caller's; starts empty.
using KytVisitedPairs = QList<std::pair<KytAtom*, KytAtom*>>;

/// An atom: a node of the directed bond graph and a dot with a symbol label on the canvas.
///
/// It owns its label; deleting it deletes its bonds and gives every piece that is left behind a molecule of its own.
class KytAtom : public QCanvasEllipse {
public:
    /// A carbon ("C") at canvas position (0, 0), hidden, with a shown label. `z` is its depth in canvas units.
    KytAtom(QCanvas* canvas, float z, bool locked);
    /// The same with `symbol` as its symbol and name.
    KytAtom(QCanvas* canvas, const QString& symbol, float z, bool locked);
    ~KytAtom() override;

    KytMolecule* getMolecule() const { return molecule; }

    /// Gives `m` to this atom and to everything bonded to it, whichever way the bonds run. Atoms that are in `m`
    /// already are not walked through. Linear in the atoms reached. Null is ignored.
    void setMolecule(KytMolecule* m);

    /// Gives this atom's molecule to everything bonded to it, also beyond atoms that are in it already.
    void spreadMolecule();

    /// Gives `m` (not null) to this atom alone, whatever it is bonded to.
    void changeMolecule(KytMolecule* m);

    QList<KytBond*>* getInList() { return &inList; }
    QList<KytBond*>* getOutList() { return &outList; }
    void addInBond(KytBond* bond);
    void addOutBond(KytBond* bond);
    int getBondCount() const;

    float getAtomZ() const { return atomZ; }
    /// Sets the depth; on a real change it travels along the outgoing bonds (BondUpdate). A depth beyond the
    /// range of float gives the range's end, NaN is ignored.
    void setAtomZ(float z);

    QString getName() const { return name; }
    QString getSymbol() const { return symbol; }
    void setName(QString newName);
    /// Sets the symbol and shows it in the label.
    void setSymbol(QString newSymbol);

    void startHover();
    void stopHover();

    /// The other atom of the first incoming bond, else of the first outgoing one, else null.
    KytAtom* getFirstConnectedAtom() const;

    /// The bond that joins this atom and `atom` directly, incoming bonds first, or null.
    KytBond* isConnected(KytAtom* atom) const;
    /// Whether `atom` can be reached from here against the direction of the bonds. False for null.
    bool isInListConnected(KytAtom* atom);
    /// Whether `atom` can be reached from here along the direction of the bonds. False for null.
    bool isOutListConnected(KytAtom* atom);
    /// Whether one of the two directed walks reaches `atom`; a path that changes direction does not count.
    bool isAnyhowConnected(KytAtom* atom);

    /// Moves the atom by (dx, dy) canvas pixels together with its bonds' ends and its label.
    void moveBy(double dx, double dy) override;
    /// Moves the centre to (x, y), in canvas pixels; the label's top-left corner sits on it.
    void move(double x, double y);
    /// Turns the atom about (cx, cy) by `angle` radians, from the direction that findinclination gives it.
    void rotateAbout(double cx, double cy, float angle);
    /// The same as parts of a larger change, at whose end the bonds are laid out.
    void moveBy(double dx, double dy, BondUpdate& update);
    void move(double x, double y, BondUpdate& update);
    void rotateAbout(double cx, double cy, float angle, BondUpdate& update);

    /// Takes `bond` out of both lists. True when the atom holds no other bond.
    bool deleteBond(KytBond* bond);
    /// Hands all bonds to `target`; a bond to an atom that `target` is joined to already is deleted instead.
    /// Molecules stay as they are; combine sees to them.
    void transferBonds(KytAtom* target);
    /// Merges `other`, dropped onto this atom, into it. True: nothing was done and the caller is to delete `other`.
    /// False: refused, or merged and `other` is gone; the caller must not touch it.
    bool combine(KytAtom* other);

    /// Writes this atom's molecule as a tree of "ATOM", "BOND_IN", "BOND_OUT" and "END" records that starts here.
    void writeMoleculeToFile(QTextStream* stream, KytVisitedPairs* visited);
    /// Reads a tree into this atom and new atoms on the document's canvas, all given to `readMolecule`.
    void readMoleculeFromFile(QTextStream* stream, KytMolecule* readMolecule, KytStudioDoc* doc);

    void aboutToBeCleared() override;

    int deleted = 0;           ///< 1 from its destruction on
    bool locked;               ///< dragging it drags its molecule, and bonds do not change its depth
    QString _atomColor[3];     ///< red, green and blue as decimal texts "0".."255"
    QString name;              ///< the atom's name
    QString symbol;            ///< the chemical symbol in the label
    KytMolecule* molecule;     ///< the molecule it belongs to, never null
    int flag = 0;              ///< 1 while a connectivity walk is inside this atom
    float atomZ;               ///< depth, in canvas units
    QCanvasText* canvasSymbol; ///< the label; owned
    QList<KytBond*> inList;    ///< bonds that end here, in the order added; not owned
    QList<KytBond*> outList;   ///< bonds that start here, in the order added; not owned

    WalkMark mark; ///< of the last walk that met the atom
    int index = 0; ///< the atom's index in the list of atoms that was last made a table of (BondTable)

private:
    static KytMolecule* makeFirstMolecule();
    void joinMolecule(KytMolecule* m);
    void leaveMolecule();
    void leaveBonds();
    void updateBonds(BondUpdate& update);
    bool isReachable(KytAtom* atom, QList<KytBond*> KytAtom::*bonds, KytAtom* KytBond::*end);
};

/// The direction of (x2, y2) seen from (x1, y1), in radians with y pointing down.
///
/// A point straight above or below gives pi/2, and a point straight to the left gives 0, like one to the right.
double findinclination(double x1, double y1, double x2, double y2);
