#pragma once

/// The editing mode: what the left mouse button does.
enum KytViewState : int {
    KYTVS_view = 0,
    KYTVS_rotate = 1,
    KYTVS_drawSimpleBond = 2,
    KYTVS_drawDashedBond = 3,
    KYTVS_drawStereoUp = 4,
    KYTVS_drawStereoDown = 5,
    KYTVS_deleteItem = 6,
    KYTVS_zigzag = 7
};

/// The modes in which two clicks draw one bond.
inline bool drawsBond(KytViewState state)
{
    return state >= KYTVS_drawSimpleBond && state <= KYTVS_drawStereoDown;
}

/// The modes in which two clicks draw something.
inline bool draws(KytViewState state)
{
    return drawsBond(state) || state == KYTVS_zigzag;
}

inline bool drawsWedge(KytViewState state)
{
    return state == KYTVS_drawStereoUp || state == KYTVS_drawStereoDown;
}
