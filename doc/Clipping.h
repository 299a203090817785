#pragma once

#include <QByteArray>
#include <QList>
#include <QPointF>
#include <QRectF>

#include <optional>

class KytAtom;
class KytStudioDoc;
class QCanvas;

/// A drawing, or a part of one, on its way to another drawing.
struct Clipping {
    QByteArray workspace; ///< in the workspace format
    QByteArray locks;     ///< for each atom, in the order of the workspace, '1' if it is locked and '0' otherwise
};

/// The atoms `atoms` of the drawing on `canvas`, with the bonds among them.
Clipping clippingOf(QCanvas& canvas, const QList<KytAtom*>& atoms);

/// The area that the clipping's atoms and labels take, in canvas pixels; null if it cannot be added.
QRectF extentOf(const Clipping& clipping);

/// Adds the clipping to the drawing of `doc` so that its middle is at `middle` (canvas pixels; nothing for where it
/// is), or as near to that as the canvas allows: drawings that are not larger than the canvas lie on it with all their
/// labels.
///
/// Returns the new atoms. Adds nothing and returns an empty list if the workspace has no atoms, has an error, or has
/// coordinates far outside any canvas. Where the locks do not belong to the atoms, molecules with a shape in space are
/// locked, others are not.
QList<KytAtom*> addClipping(const Clipping& clipping, std::optional<QPointF> middle, KytStudioDoc& doc);
