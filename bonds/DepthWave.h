#pragma once

#include <vector>

class KytAtom;
class KytBond;

/// Sends the depth of `source`, which has just changed, along its outgoing bonds.
///
/// Each bond on the way is laid out and gives its end atom a depth (KytBond::endDepth); an atom whose depth really
/// changes passes it on, one whose deciding depth equals its own does not. The wave enters an atom once: where two
/// paths meet in one atom, the path through the later bonds in list order decides, and a ring ends where it began.
/// Linear in the bonds passed, without recursion.
void sendDepth(KytAtom* source);

/// The same, starting with the one bond `bond`, whose start atom counts as passed.
void sendDepthAlong(KytBond* bond);

/// One wave that starts at all atoms of `changed` at once and enters none of `settled`.
void sendDepthBeyond(const std::vector<KytAtom*>& settled, const std::vector<KytAtom*>& changed);
