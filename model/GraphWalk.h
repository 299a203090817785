#pragma once

#include <QtGlobal>

/// What a walk over the bond graph leaves in an atom or a bond that it has met. It means nothing to anyone but the walk
/// with this number.
struct WalkMark {
    quint64 walk = 0; ///< the last walk that met the atom or bond
    int note = 0;     ///< that walk's own: where in its lists it keeps more about the atom or bond
};

/// A walk over the bond graph that marks the atoms, or the bonds, that it meets. Beginning one takes constant time,
/// since marks of earlier walks are void.
///
/// An atom and a bond have room for one mark each, so walks that mark the same kind must not nest: a walk ends before
/// the next one begins. Debug builds assert that.
class GraphWalk {
public:
    enum class Marks { Atoms, Bonds };

    explicit GraphWalk(Marks marks);
    ~GraphWalk();
    GraphWalk(const GraphWalk&) = delete;
    GraphWalk& operator=(const GraphWalk&) = delete;

    bool hasMet(const WalkMark& mark) const { return mark.walk == number; }

    /// Marks what `mark` belongs to; `note` replaces an earlier one of this walk.
    void meet(WalkMark& mark, int note = 0) const { mark = {number, note}; }

    /// Makes all marks of this walk void: it has met nothing.
    void startAnew();

private:
    quint64 number;
    const Marks marks;
};
