#pragma once

#include "history/DrawingState.h"

#include <QString>

#include <deque>
#include <functional>
#include <optional>

class KytStudioDoc;

/// The steps of a drawing, to be undone and redone.
///
/// A step is the change of the document's canvas between two calls of record, whatever caused it. Undoing and redoing
/// restores the recorded states exactly, to the bit.
class KytHistory {
public:
    /// The name of the document and the caption of its window, as far as a step carries them.
    struct Title {
        QString docName;
        QString caption;

        bool operator==(const Title&) const = default;
    };

    /// Starts with the current drawing. `doc` is not owned and must have a canvas.
    explicit KytHistory(KytStudioDoc* doc);

    /// Records what has changed since the last call as a step with this name, and discards all undone steps. Returns
    /// false, without a step, if nothing has changed. Takes time linear in the size of the drawing.
    bool record(const QString& name);
    /// The same for a step that also changed the title, which was `before`.
    bool record(const QString& name, const Title& before);

    /// Reverts all changes since the last call of record.
    void revert();

    /// Undoes the last step, or redoes the last undone one. Returns its name, or nothing if there is none. All changes
    /// must have been recorded.
    std::optional<QString> undo();
    std::optional<QString> redo();

    /// The number of steps that can be undone, and redone.
    qsizetype undoCount() const { return static_cast<qsizetype>(done.size()); }
    qsizetype redoCount() const { return static_cast<qsizetype>(undone.size()); }
    /// The number of steps recorded so far.
    qint64 recordCount() const { return recorded; }

    /// The memory used by all steps and the current state, in bytes. The oldest steps are discarded to keep it below
    /// mostMemory; the last one is always kept.
    qsizetype size() const;
    static constexpr qsizetype mostMemory = qsizetype{64} << 20;

    std::function<Title()> title;               ///< returns the current title; may be empty
    std::function<void(const Title&)> setTitle; ///< called when a step with a title is undone or redone; may be empty

private:
    struct Step {
        QString name;
        DrawingChange change; // to the other side
        std::optional<Title> title;
    };

    bool record(Step step);
    std::optional<QString> move(std::deque<Step>& from, std::deque<Step>& to);
    void forgetOldSteps();

    KytStudioDoc* doc;
    DrawingState present;
    qint64 recorded = 0;
    std::deque<Step> done;
    std::deque<Step> undone;
};
