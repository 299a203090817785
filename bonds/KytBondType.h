#pragma once

/// The kind of a line or wedge of a bond. Files may contain any number; kinds other than lines and wedges are counted
/// by the bond, but not drawn.
enum KytBondType : int {
    KYTBT_DashedLine = 0,
    KYTBT_SingleBond = 1,
    KYTBT_StereoUp = 2,
    KYTBT_StereoDown = 3,
    KYTBT_SingleDouble = 4,
    KYTBT_Double = 5,
    KYTBT_DoubleTriple = 6,
    KYTBT_Triple = 7
};

inline bool isLineKind(KytBondType type)
{
    return type == KYTBT_DashedLine || type == KYTBT_SingleBond;
}

inline bool isWedgeKind(KytBondType type)
{
    return type == KYTBT_StereoUp || type == KYTBT_StereoDown;
}
