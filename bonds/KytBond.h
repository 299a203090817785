#pragma once

#include "bonds/KytBondType.h"
#include "model/GraphWalk.h"

#include <QString>

#include <cstddef>

class BondUpdate;
class KytAtom;
class KytBondLine;
class KytMolecule;
class KytStereoBond;
class KytStudioDoc;

/// A bond from one atom to another, drawn as one to three lines or as one wedge.
///
/// During its lifetime, it is in the outgoing list of its start atom and in the incoming list of its end atom. It owns
/// its lines or wedge. It is not a canvas item itself.
class KytBond {
public:
    /// Connects `from` and `to` (both not null) on the canvas of `doc`; nothing is drawn before addBond is called.
    KytBond(KytAtom* from, KytAtom* to, KytStudioDoc* doc);
    ~KytBond();
    KytBond(const KytBond&) = delete;
    KytBond& operator=(const KytBond&) = delete;

    /// Allocates in the item memory, near the canvas items of the bond.
    static void* operator new(std::size_t size);
    static void operator delete(void* bond, std::size_t size);

    /// Adds one line, or a wedge with the projection angle `angle` (degrees). Ignored are a fourth line, a wedge on a
    /// bond that has a line or wedge, and anything on a wedge. A kind that is neither line nor wedge is counted, but
    /// neither drawn nor stored.
    void addBond(KytBondType type, float angle);

    /// Lays out the lines or wedge between the atoms, updates bondlength, and sets the depth of an end atom that is not
    /// locked, which is propagated from there (BondUpdate). Does nothing if an atom is null.
    void setBond();

    /// The length in canvas pixels, with six decimals.
    QString getLength() const;
    /// Moves the end atom along the bond so that the bond gets the length in `length`, in canvas pixels. A text that is
    /// not a number counts as 0. Does nothing for a number that is not finite or a bond of length zero.
    void setLength(const QString& length);

    /// Replace an atom. If the new atom is not null, the bond is laid out again. The bond lists of the atoms are not
    /// changed.
    void setFromAtom(KytAtom* atom);
    void setToAtom(KytAtom* atom);
    /// The same for an atom that is not null, as part of a larger update.
    void setFromAtom(KytAtom* atom, BondUpdate& update);
    void setToAtom(KytAtom* atom, BondUpdate& update);
    KytAtom* getFromAtom() const { return fromAtom; }
    KytAtom* getToAtom() const { return toAtom; }
    /// The molecule of the start atom; null without a start atom.
    KytMolecule* getMolecule() const;

    /// Moves both atoms by (dx, dy) canvas pixels.
    void moveBy(double dx, double dy);

    /// Removes `line` from the bond; the lines after it move up. Returns true if no line is left and the caller must
    /// delete the bond.
    bool deleteBond(KytBondLine* line);
    /// Does nothing and returns true: the wedge is deleted with its bond.
    bool deleteBond(KytStereoBond* wedge);

    /// Does nothing; the colours are stored in the lines and the wedge.
    void setColor(int r, int g, int b);

    // The steps of setBond, for BondUpdate.

    /// Lays out the lines or wedge between the atoms and updates bondlength.
    void layOut();
    /// Whether the bond sets the depth of its end atom: it has two atoms and one to three lines or a wedge, and the end
    /// atom is not locked.
    bool carriesDepth() const;
    /// Whether the bond is a wedge with a non-zero angle, so that ends at different positions have different depths.
    bool climbs() const;
    /// The depth of the end atom of a wedge above that of its start atom, in canvas units, for up and down wedges
    /// alike: the tangent of the projection angle times the length. 0 for lines. The bond must carry depth.
    double rise() const;
    /// The resulting depth of the end atom for the given rise. The bond must carry depth.
    float depthAtEnd(double rise) const;

    KytStudioDoc* doc;
    KytBondType type = KYTBT_DashedLine; ///< not used
    KytAtom* toAtom;
    KytAtom* fromAtom;
    float bondlength;  ///< 2D length, in canvas pixels
    int bondCount = 0; ///< number of lines and wedges added, 0 to 3; -1 while the bond is being destroyed
    KytBondLine* bond1 = nullptr;
    KytBondLine* bond2 = nullptr;
    KytBondLine* bond3 = nullptr;
    KytStereoBond* stereoBond = nullptr;
    KytBondType bond1Type = KYTBT_DashedLine;
    KytBondType bond2Type = KYTBT_DashedLine;
    KytBondType bond3Type = KYTBT_DashedLine;

    WalkMark mark; ///< mark of the last walk that visited the bond

private:
    bool isDrawn() const;
    bool isStereo() const { return isWedgeKind(bond1Type); }
    void addLine(KytBondType lineType);
    void addWedge(KytBondType wedgeType, float angle);
};
