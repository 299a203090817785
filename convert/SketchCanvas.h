#pragma once

#include "convert/Sketch.h"

class KytStudioDoc;
class Notes;
class QCanvas;

/// A copy of everything on `canvas`, molecule by molecule in the order of their first atoms, as a workspace holds it.
/// Of several bonds that lead from one atom to the same other one, the last stays, as in a workspace.
Sketch sketchOf(const QCanvas& canvas);

/// Draws `sketch` on the canvas of `doc`, with shown atoms that are not locked.
void drawOn(KytStudioDoc& doc, const Sketch& sketch);
