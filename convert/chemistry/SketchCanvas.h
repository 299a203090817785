#pragma once

#include "convert/chemistry/Sketch.h"

class KytStudioDoc;
class Notes;
class QCanvas;

/// Copies the drawing on `canvas`, with its molecules in the order of their first atoms, as in a workspace. Of several
/// bonds from one atom to the same other atom, only the last is copied, as in a workspace.
Sketch sketchOf(const QCanvas& canvas);

/// Warns of double bonds whose stereo stays open in the sketch, but not on a canvas.
void noteOpenDoubleBonds(const Sketch& sketch, Notes& notes);

/// Draws `sketch` on the canvas of `doc`. The atoms are visible and not locked.
void drawOn(KytStudioDoc& doc, const Sketch& sketch);
