#pragma once

#include <QList>
#include <QString>

#include <array>
#include <utility>
#include <vector>

class KytAtom;
class KytStudioDoc;
class QCanvas;

// A drawing as values: everything that a gesture or a command can change, to the bit. What follows from that - where
// lines run, how long bonds are - is laid out again instead of being kept.
//
// An atom is identified by the rank of its item on the canvas (QCanvasItem::rank), a bond by its start atom and its
// index among that atom's outgoing bonds.

using ItemRank = quint64;

/// Where an atom and its label are: canvas pixels, depth in canvas units. Equal when all bits are.
struct AtomPosition {
    double x = 0;
    double y = 0;
    double labelX = 0;
    double labelY = 0;
    float depth = 0;

    bool operator==(const AtomPosition& other) const;
};

/// A bond as its start atom knows it.
struct BondRecord {
    ItemRank to = 0;
    std::array<ItemRank, 3> items = {}; ///< of its lines, or of its wedge alone; 0 for a line that is not drawn
    std::array<qint8, 3> kinds = {};    ///< KytBondType
    std::array<bool, 3> dashed = {};    ///< the lines as they are drawn, which may differ from their kinds
    qint8 count = 0;                    ///< KytBond::bondCount
    bool isWedge = false;
    float angle = 0; ///< of the wedge, in degrees

    bool operator==(const BondRecord&) const = default;
};

/// An incoming bond: its start atom, and its index among that atom's outgoing bonds.
struct IncomingBond {
    ItemRank from;
    int index;

    bool operator==(const IncomingBond&) const = default;
};

struct AtomRecord {
    ItemRank rank = 0;
    ItemRank molecule = 0; ///< the lowest rank of all atoms of its molecule
    AtomPosition position;
    ItemRank label = 0; ///< rank of the label
    bool locked = false;
    QString symbol;
    QString name;
    std::array<QString, 3> color;
    std::vector<BondRecord> outgoing;
    std::vector<IncomingBond> incoming;
};

/// What tells one state of a drawing from another: for each atom that differs, how it is in the other one.
struct DrawingChange {
    std::vector<std::pair<ItemRank, AtomPosition>> moved; ///< atoms that differ in their position alone
    std::vector<std::pair<ItemRank, ItemRank>> regrouped; ///< atoms that differ in their molecule alone
    std::vector<AtomRecord> replaced;                     ///< atoms that differ in more, or are missing here
    std::vector<ItemRank> missing;                        ///< atoms that are missing there

    bool isEmpty() const { return moved.empty() && regrouped.empty() && replaced.empty() && missing.empty(); }
    /// The memory that it takes, in bytes.
    qsizetype size() const;
};

/// A state of a drawing, kept in step with a canvas.
class DrawingState {
public:
    /// Brings the state up to date with what is on `canvas`, and returns how it was before. Linear in the drawing.
    DrawingChange update(const QCanvas& canvas);

    /// Changes the drawing of `doc`, which must be as this state has it, by `change`; returns the opposite change.
    /// Linear in the drawing, but for the bonds that are laid out or made anew.
    DrawingChange apply(const DrawingChange& change, KytStudioDoc& doc);

    qsizetype atomCount() const { return static_cast<qsizetype>(atoms.size()); }
    /// The memory that it takes, in bytes.
    qsizetype size() const;

private:
    AtomRecord* find(ItemRank rank);
    void replaceRecords(std::vector<ItemRank> gone, std::vector<AtomRecord> added);

    std::vector<AtomRecord> atoms; // by rank
};
