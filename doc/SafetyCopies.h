#pragma once

#include <QString>

class QCanvas;

/// The folder with the copies of drawings that were cleared or left: "kytstudio" in $XDG_STATE_HOME or, without that,
/// in
/// ~/.local/state. Empty when neither is an absolute path.
QString safetyCopyFolder();

/// Writes the drawing on `canvas` as a workspace to that folder, which is made where it is missing, under a new name
/// that tells date and time. Nothing is written when there is no atom, or when the newest copy has the same contents.
///
/// The newest twenty copies are kept. A copy that somebody has saved to since it was made is no longer one and stays,
/// and so does the file `inUse`; nothing but copies is ever deleted. What cannot be done is left undone without a word.
void keepSafetyCopy(QCanvas& canvas, const QString& inUse = QString());
