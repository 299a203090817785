#pragma once

#include <QtGlobal>

/// A mark that a walk over the bond graph sets in each atom or bond that it visits. Only the walk with the same number
/// may interpret it.
struct WalkMark {
    quint64 walk = 0; ///< number of the last walk that visited the atom or bond
    int value = 0;    ///< data of that walk, usually an index into one of its lists
};

/// A walk over the bond graph that marks the atoms, or the bonds, that it visits. Starting a walk takes constant time,
/// because marks of earlier walks are ignored.
///
/// Each atom and each bond holds only one mark, so walks that mark the same kind must not nest. Debug builds assert
/// this.
class GraphWalk {
public:
    enum class Marks { Atoms, Bonds };

    explicit GraphWalk(Marks marks);
    ~GraphWalk();
    GraphWalk(const GraphWalk&) = delete;
    GraphWalk& operator=(const GraphWalk&) = delete;

    bool hasVisited(const WalkMark& mark) const { return mark.walk == number; }

    /// Sets `mark`; `value` replaces an earlier value of this walk.
    void visit(WalkMark& mark, int value = 0) const { mark = {number, value}; }

    /// Invalidates all marks of this walk.
    void restart();

private:
    quint64 number;
    [[maybe_unused]] const Marks marks; // only debug builds read it
};
