#pragma once

#include "canvas/qcanvas.h"

#include <QObject>
#include <QString>

/// The width and the height of a document's canvas, in pixels.
inline constexpr int canvasSize = 2000;

/// The document: the canvas on which everything is drawn, and the name of its workspace file.
class KytStudioDoc : public QObject {
    Q_OBJECT

public:
    /// A document named "noname.kyt" without a canvas.
    KytStudioDoc();
    /// Does not delete the canvas.
    ~KytStudioDoc() override;

    /// Makes a white canvas, canvasSize pixels wide and high, and marks the document modified. An earlier canvas is not
    /// deleted.
    void newDoc();

    bool isModified() const { return modified; }

    /// Adds what the workspace file `fileName` holds to the canvas; `merge` becomes the lock of every atom read.
    /// False, and nothing changed, when it is not a regular file that can be opened. What is wrong inside the file is
    /// not reported here.
    bool load(const QString& fileName, bool merge);

    /// Writes the canvas to docName. True without writing while the document is not modified; false when the file could
    /// not be written as a whole, and then the old file is still there, unless its folder takes no new files and it had
    /// to be written directly. What went wrong is logged.
    bool save();

    /// Writes the canvas to `fileName`, modified or not; docName stays. False as for save.
    bool saveAs(const QString& fileName);

    QCanvas* canvas = nullptr; ///< made by newDoc; null again once it has been destroyed
    QString docName;           ///< the file that save writes
    bool modified = false;

signals:
    /// There is a new canvas, or a file has been read.
    void documentChanged();

private:
    bool write(const QString& fileName) const;
};
