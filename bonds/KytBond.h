#pragma once

#include "bonds/KytBondType.h"
#include "canvas/itemmemory.h"

#include <QString>

#include <cmath>

class KytAtom;
class KytBondLine;
class KytMolecule;
class KytStereoBond;
class KytStudioDoc;

/// A bond from one atom to another, drawn as one to three lines or as one wedge.
///
/// It stands in its from-atom's outgoing and its to-atom's incoming list from construction to destruction, and owns
/// what it draws. It is not a canvas item itself.
class KytBond : public InItemMemory {
public:
    /// Joins `from` and `to` (both not null) on the canvas of `doc`; nothing is drawn until addBond.
    KytBond(KytAtom* from, KytAtom* to, KytStudioDoc* doc);
    ~KytBond();
    KytBond(const KytBond&) = delete;
    KytBond& operator=(const KytBond&) = delete;

    /// Adds one line, or the wedge with the projection angle `angle` (degrees). A fourth line, a wedge on a bond that
    /// has something already, and anything on a wedge are ignored. A kind that is neither is counted but not drawn.
    void addBond(KytBondType type, float angle);

    /// Lays out what is drawn from the atoms' positions, refreshes bondlength, and passes the start atom's depth on to
    /// an end atom that is not locked. Does nothing while an atom is missing.
    void setBond();

    /// The length in canvas pixels with six decimals.
    QString getLength() const;
    /// Slides the end atom along the bond until the bond is as long as the number in `length`, in canvas pixels. A text
    /// that is no number counts as 0; one that is not finite, or a bond of length zero, changes nothing.
    void setLength(const QString& length);

    /// Replace an end. A new end that is not null lays the bond out again. The atoms' lists are not touched.
    void setFromAtom(KytAtom* atom);
    void setToAtom(KytAtom* atom);
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

    /// The steps of setBond, for the wave of depth (bonds/DepthWave.h).
    /// Draws everything anew from the atoms' positions, now or with all bonds that are gathered (GatheredLayout);
    /// false when the bond has no countable line to lay out.
    bool layOut();
    /// The depth that the start atom gives to the end atom, or NaN when the bond carries none.
    float endDepth() const;
    bool carriesDepth() const { return isCountable() && !std::isnan(endDepth()); }

    KytAtom* toAtom;
    KytAtom* fromAtom;
    KytBondLine* bond1 = nullptr;
    KytStereoBond* stereoBond = nullptr;
    int bondCount = 0; ///< what was added, 0 to 3; -1 while the bond is destroyed
    KytBondType bond1Type = KYTBT_DashedLine;
    quint64 gathering = 0; ///< scratch: the last GatheredLayout that remembered the bond
    int layoutPlace = 0;   ///< scratch: the bond's place in that
    int depthTurn = 0;     ///< scratch: when it was last to give its end atom a depth there; 0 for never
    float bondlength;      ///< 2D length, in canvas pixels
    KytBondType bond2Type = KYTBT_DashedLine;
    KytBondType bond3Type = KYTBT_DashedLine;
    KytBondType type = KYTBT_DashedLine; ///< not used
    quint64 visit = 0;                   ///< scratch: the last walk that met the bond, a number from KytAtom::newVisit
    KytBondLine* bond2 = nullptr;
    KytBondLine* bond3 = nullptr;
    KytStudioDoc* doc;

private:
    friend class GatheredLayout;

    bool isCountable() const;
    void drawLines();
    bool isStereo() const { return isWedgeKind(bond1Type); }
    void addLine(KytBondType lineType);
    void addWedge(KytBondType wedgeType, float angle);
};
