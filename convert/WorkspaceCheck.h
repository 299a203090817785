#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

class KytStudioDoc;

/// What is wrong at a place in a workspace.
struct PlacedFault {
    int line;     ///< from 1
    int column;   ///< in characters, from 1
    QString text; ///< what is wrong, and what the reader does about it
    bool loses;   ///< something is not read as it stands
};

/// Reads the workspace `text` onto the canvas of `doc`, as the editor does, and tells everything that the reader skips,
/// stops at or mends, in the order in which it stands in the text.
std::vector<PlacedFault> readChecked(const QByteArray& text, KytStudioDoc& doc);

/// The same without keeping what was read.
std::vector<PlacedFault> checkWorkspace(const QByteArray& text);
