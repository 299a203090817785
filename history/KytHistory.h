#pragma once

#include "history/DrawingState.h"

#include <QString>

#include <deque>
#include <functional>
#include <optional>

class KytStudioDoc;

/// The steps in which a drawing was made, backwards and forwards.
///
/// A step is what has changed on the document's canvas from one call of record to the next; who changed it and how does
/// not matter. Steps restore recorded states to the bit.
class KytHistory {
public:
    /// The name of the document and the caption of its window, as far as a step carries them.
    struct Title {
        QString docName;
        QString caption;

        bool operator==(const Title&) const = default;
    };

    /// Takes the drawing as it is now for the first state. `doc` is not owned and must have a canvas.
    explicit KytHistory(KytStudioDoc* doc);

    /// Ends a step with this name; nothing, and false, when the drawing is as it was. Steps that were undone are gone
    /// then. Linear in the drawing.
    bool record(const QString& name);
    /// The same for a step that also changed the title, which was `before`.
    bool record(const QString& name, const Title& before);

    /// Takes back what has changed since the last call of record, as if it had never been.
    void revert();

    /// Goes back over the last step, or forward again; returns its name, or nothing where there is none. What has
    /// changed since the last call of record must have been recorded.
    std::optional<QString> undo();
    std::optional<QString> redo();

    /// How many steps can be undone, and redone.
    qsizetype undoCount() const { return static_cast<qsizetype>(done.size()); }
    qsizetype redoCount() const { return static_cast<qsizetype>(undone.size()); }
    /// How many steps have been recorded in all.
    qint64 recordCount() const { return recorded; }

    /// The memory of all steps and of the present state, in bytes. It stays below mostMemory by forgetting the oldest
    /// steps; the last one is always kept.
    qsizetype size() const;
    static constexpr qsizetype mostMemory = qsizetype{64} << 20;

    std::function<Title()> title;               ///< what the title is now; may be empty
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
