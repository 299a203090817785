#pragma once

#include <QString>

class QWidget;

/// The properties of a file dialog. Qt's own dialogs are used, not the native ones.
struct FileQuestion {
    QString name; ///< the dialog's object name
    QString caption;
    QString directory;
    QString filter;
};

/// Asks for an existing file. Returns its path with symbolic links resolved, or an empty text if cancelled.
QString askOpenFileName(QWidget* parent, const FileQuestion& question);

/// Asks for a file name to save under; the caller appends `extension` to it. If a file with the resulting name exists,
/// the dialog asks for confirmation and stays open on "No". Returns the path without the extension, or an empty text if
/// cancelled.
QString askSaveFileName(QWidget* parent, const FileQuestion& question, const QString& extension);
