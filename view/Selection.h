#pragma once

#include <QList>
#include <QSet>

class KytAtom;
class QCanvas;
class QCanvasItem;
class QPainter;
class QRect;

/// The selected atoms of a canvas. They are no part of the drawing; whoever owns the selection must tell it when an
/// item is going (forget).
///
/// Atoms are added and removed together with the molecules of those that are locked, since these keep their shape.
class Selection {
public:
    bool isEmpty() const { return members.isEmpty(); }
    qsizetype size() const { return members.size(); }
    bool contains(const QCanvasItem* item) const { return members.contains(item); }
    bool operator==(const Selection&) const = default;

    /// The selected atoms, in the order of the items of `canvas`.
    QList<KytAtom*> atoms(const QCanvas& canvas) const;

    /// Adds those of `atoms` that are on `canvas`; others, and null, are ignored.
    void add(const QList<KytAtom*>& atoms, const QCanvas& canvas);
    /// Removes `atom`, if it is selected, or else adds it.
    void toggle(KytAtom* atom, const QCanvas& canvas);
    /// Removes `item`, if it is a selected atom. Returns whether it was.
    bool forget(const QCanvasItem* item);

    /// Paints a halo below each selected atom that touches `area`. The painter uses canvas pixels, of which each is
    /// `zoom` screen pixels wide.
    void paint(QPainter& painter, const QRect& area, double zoom) const;
    /// How far a halo reaches from the centre of its atom, in canvas pixels.
    static double reach(double zoom);

private:
    QSet<const QCanvasItem*> members;
};
