#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

class KytStudioDoc;

/// A fault in a workspace, with its position in the text.
struct LocatedFault {
    int line;     ///< from 1
    int column;   ///< in characters, from 1
    QString text; ///< the fault and, after a semicolon, what the reader did about it
    bool isError; ///< the drawing read differs from the file
};

/// Reads the workspace `text` onto the canvas of `doc`, as the editor does. Returns all faults that the reader found,
/// in the order of their positions.
std::vector<LocatedFault> readChecked(const QByteArray& text, KytStudioDoc& doc);

/// Like readChecked, but discards the drawing.
std::vector<LocatedFault> checkWorkspace(const QByteArray& text);
