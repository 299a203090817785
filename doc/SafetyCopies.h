#pragma once

#include <QString>

class QCanvas;

/// The folder for safety copies: "kytstudio" in $XDG_STATE_HOME or, if that is not an absolute path, in
/// $HOME/.local/state. Empty if neither is an absolute path.
QString safetyCopyFolder();

/// Writes the drawing on `canvas` as a workspace to that folder, which is created if necessary, under a new name with
/// date and time. Writes nothing if there are no atoms or if the newest copy has the same contents.
///
/// The newest twenty copies are kept. A copy that has been modified since it was written no longer counts as a copy.
/// Only copies are deleted, never the file `inUse`. Failures are only logged, in the category "kytstudio.copies".
void keepSafetyCopy(QCanvas& canvas, const QString& inUse = QString());
