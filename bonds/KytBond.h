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
/// It stands in its from-atom's outgoing and its to-atom's incoming list from construction to destruction, and owns
/// what it draws. It is not a canvas item itself.
class KytBond {
public:
    /// Joins `from` and `to` (both not null) on the canvas of `doc`; nothing is drawn until addBond.
    KytBond(KytAtom* from, KytAtom* to, KytStudioDoc* doc);
    ~KytBond();
    KytBond(const KytBond&) = delete;
    KytBond& operator=(const KytBond&) = delete;

    /// Made in the memory of the canvas items, which it is met along with.
    static void* operator new(std::size_t size);
    static void operator delete(void* bond, std::size_t size);

    /// Adds one line, or the wedge with the projection angle `angle` (degrees). A fourth line, a wedge on a bond that
    /// has something already, and anything on a wedge are ignored. A kind that is neither line nor wedge is counted,
    /// but neither drawn nor kept.
    void addBond(KytBondType type, float angle);

    /// Lays out what is drawn from the atoms' positions, refreshes bondlength, and gives an end atom that is not locked
    /// its depth, which travels on from there (BondUpdate). Does nothing while an atom is missing.
    void setBond();

    /// The length in canvas pixels with six decimals.
    QString getLength() const;
    /// Slides the end atom along the bond until the bond is as long as the number in `length`, in canvas pixels. A text
    /// that is no number counts as 0; one that is not finite, or a bond of length zero, changes nothing.
    void setLength(const QString& length);

    /// Replace an end. A new end that is not null lays the bond out again. The atoms' lists are not touched.
    void setFromAtom(KytAtom* atom);
    void setToAtom(KytAtom* atom);
    /// The same with an end that is not null, as a part of a larger change.
    void setFromAtom(KytAtom* atom, BondUpdate& update);
    void setToAtom(KytAtom* atom, BondUpdate& update);
    KytAtom* getFromAtom() const { return fromAtom; }
    KytAtom* getToAtom() const { return toAtom; }
    /// The molecule of the start atom; null while there is none.
    KytMolecule* getMolecule() const;

    /// Moves both atoms by (dx, dy) canvas pixels.
    void moveBy(double dx, double dy);

    /// Drops `line` from the bond; the lines behind it move up. True when none is left and the caller is to delete the
    /// bond.
    bool deleteBond(KytBondLine* line);
    /// Forgets nothing that the caller still needs: the wedge goes with its bond. Always true.
    bool deleteBond(KytStereoBond* wedge);

    /// Colours are kept by the items; does nothing.
    void setColor(int r, int g, int b);

    // The parts of setBond, for BondUpdate.

    /// Places everything drawn between the atoms' positions, and refreshes bondlength.
    void layOut();
    /// Whether the bond gives its end atom a depth: it has two atoms and one to three lines or a wedge, and the end
    /// atom is not locked.
    bool carriesDepth() const;
    /// Whether it is a wedge with an angle: its ends lie at different depths as soon as they lie at different places.
    bool climbs() const;
    /// How far the end atom of a wedge is to lie above its start atom, in canvas units, whichever way the wedge points:
    /// the tangent of the projection angle times the length. 0 for lines. The bond must carry depth.
    double rise() const;
    /// The depth that the end atom is to have, given the bond's rise. The bond must carry depth.
    float depthAtEnd(double rise) const;

    KytStudioDoc* doc;
    KytBondType type = KYTBT_DashedLine; ///< not used
    KytAtom* toAtom;
    KytAtom* fromAtom;
    float bondlength;  ///< 2D length, in canvas pixels
    int bondCount = 0; ///< what was added, 0 to 3; -1 while the bond is destroyed
    KytBondLine* bond1 = nullptr;
    KytBondLine* bond2 = nullptr;
    KytBondLine* bond3 = nullptr;
    KytStereoBond* stereoBond = nullptr;
    KytBondType bond1Type = KYTBT_DashedLine;
    KytBondType bond2Type = KYTBT_DashedLine;
    KytBondType bond3Type = KYTBT_DashedLine;

    WalkMark mark; ///< of the last walk that met the bond

private:
    bool isDrawn() const;
    bool isStereo() const { return isWedgeKind(bond1Type); }
    void addLine(KytBondType lineType);
    void addWedge(KytBondType wedgeType, float angle);
};
