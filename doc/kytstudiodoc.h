#pragma once

#include "canvas/qcanvas.h"

#include <QObject>
#include <QString>

/// The width and the height of a document's canvas, in pixels.
inline constexpr int canvasSize = 2000;

/// The document: the canvas with the drawing, and the name of its workspace file.
class KytStudioDoc : public QObject {
    Q_OBJECT

public:
    /// Creates a document named "noname.kyt" without a canvas.
    KytStudioDoc();
    /// Does not delete the canvas.
    ~KytStudioDoc() override;

    /// Creates a white canvas, canvasSize pixels wide and high, and marks the document as modified. An earlier canvas
    /// is not deleted.
    void newDoc();

    bool isModified() const { return modified; }

    /// Adds the contents of the workspace file `fileName` to the canvas; `merge` becomes KytAtom::locked of every atom
    /// read. Returns false and changes nothing if the file is not a regular file or cannot be opened. Faults in the
    /// contents are logged, but do not affect the result.
    bool load(const QString& fileName, bool merge);

    /// Writes the canvas to docName. Returns true without writing if the document is not modified. On failure, logs the
    /// error and returns false; the old file is kept, except where it had to be overwritten directly (writeWholeFile).
    bool save();

    /// Writes the canvas to `fileName`, whether modified or not; docName is not changed. Fails like save().
    bool saveAs(const QString& fileName);

    QCanvas* canvas = nullptr; ///< created by newDoc; null again after it has been destroyed
    QString docName;           ///< the file that save() writes
    bool modified = false;

signals:
    /// Emitted after a new canvas has been created or a file has been read.
    void documentChanged();

private:
    bool write(const QString& fileName) const;
};
