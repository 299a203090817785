#pragma once

#include "doc/CopyList.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QCanvas;

/// The folder for safety copies: "kytstudio" in $XDG_STATE_HOME or, if that is not an absolute path, in
/// $HOME/.local/state. Empty if neither is an absolute path.
QString safetyCopyFolder();

/// A safety copy of a drawing.
struct SafetyCopy {
    QString fileName;
    qint64 created; ///< milliseconds since 1970
};

/// The safety copies that a program makes: workspaces in safetyCopyFolder(), which is created if necessary, under new
/// names with date and time.
///
/// The newest twenty copies are kept. A copy that has been modified since it was written no longer counts as a copy.
/// Only copies are deleted, never the files `inUse` nor the copies of another program that is running.
///
/// Copies can also be made while the process exits: that uses nothing of the toolkit but its values, since its global
/// objects may be gone.
class SafetyCopies {
public:
    /// Writes the drawing on `canvas` as a copy. Writes nothing if there are no atoms or if the newest copy has the
    /// same contents. Returns a fault, empty on success.
    QString keep(QCanvas& canvas, const QStringList& inUse = {});
    /// The same for a copy that replaces the last one made in this way. `keep` replaces it, too.
    QString keepAutomatically(QCanvas& canvas, const QStringList& inUse = {});

    /// The copies, newest first, without those of other running programs.
    QList<SafetyCopy> available() const;

    /// The last copy of a program that ended without calling `release`, if there is one. It is returned only once.
    static std::optional<SafetyCopy> takeAbandoned();

    /// To be called when the program ends as its user wished. The destructor does the same.
    void release() { written.release(); }

private:
    struct Result {
        std::string name;   ///< of the copy with the text; empty after a fault
        bool isNew = false; ///< whether it was written just now
        QString fault;
    };

    Result keepText(const std::string& text, const QStringList& inUse);
    void removeAutomatic(const QStringList& inUse);

    CopyList written;
    std::string automatic; // the name of the copy to be replaced; empty if there is none
};
