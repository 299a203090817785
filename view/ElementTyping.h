#pragma once

#include <QString>

class QCanvasItem;

/// Joins letters that are typed one after the other on an atom to the symbols of elements.
///
/// A letter that is a symbol counts at once. If the next letter follows on the same atom within `pause` and completes a
/// symbol, that one takes the place of the first. A letter that only starts symbols, such as Z, waits for the second.
class ElementTyping {
public:
    static constexpr quint64 pause = 800; ///< milliseconds

    struct Typed {
        QString symbol;         ///< the symbol to be set; null if there is none yet
        bool completes = false; ///< it replaces what the letter before has set
    };

    /// A Latin letter, in either case, typed on `atom` (not null) at `time`, in milliseconds of any clock.
    Typed type(QChar letter, const QCanvasItem* atom, quint64 time);

    /// The next letter starts anew if the last one was typed on `item`.
    void forget(const QCanvasItem* item);

private:
    QChar first;
    const QCanvasItem* on = nullptr; // where it was typed; null if it cannot be completed
    quint64 at = 0;
};
