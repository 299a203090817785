#pragma once

#include <QByteArray>

class Drawing;

// What every fuzz target is made of. A check that fails says so on standard error and aborts.

/// Makes the application, without a screen, that texts need fonts from: qApp, which is the caller's. Called once,
/// before the first input.
void startApplication();

/// Runs one input; each target has its own. The same input always does the same, and nothing of it stays behind.
void runInput(const QByteArray& input);

/// Aborts when `holds` is false, with `rule` as what is broken.
void demand(bool holds, const char* rule);

/// Does to a drawing that has been read what an editor does: moves every atom, changes depths and angles, merges atoms,
/// deletes half of them, and clears the canvas. Checks the drawing before, and the drawing and its round trip before it
/// is cleared. `input` decides which atoms are merged.
void editAndCheck(const Drawing& drawing, const QByteArray& input);
