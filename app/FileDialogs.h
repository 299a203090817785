#pragma once

#include <QString>

class QWidget;

/// What a file dialog looks like. The dialogs are the toolkit's own, not the desktop's.
struct FileQuestion {
    QString name; ///< the dialog's object name
    QString caption;
    QString directory;
    QString filter;
};

/// Asks for an existing file. Returns its path with symbolic links resolved, or an empty text when cancelled.
QString askOpenFileName(QWidget* parent, const FileQuestion& question);

/// Asks for a name to write to; `extension` will be appended to it by the caller. Before a file of that whole name is
/// overwritten the dialog asks, and stays open on "No". Returns the path without the extension, or an empty text when
/// cancelled.
QString askSaveFileName(QWidget* parent, const FileQuestion& question, const QString& extension);
