#include "view/ElementTyping.h"

#include "model/Elements.h"

ElementTyping::Typed ElementTyping::type(QChar letter, const QCanvasItem* atom, quint64 time)
{
    const bool continues = atom == on && time - at <= pause; // a clock that was set back gives a long time
    const QString pair = QString(first) + letter.toLower();
    if (continues && elementNumber(pair) > 0) {
        on = nullptr;
        return {pair, true};
    }
    first = letter.toUpper();
    on = atom;
    at = time;
    const QString single(first);
    return {elementNumber(single) > 0 ? single : QString(), false};
}

void ElementTyping::forget(const QCanvasItem* item)
{
    if (on == item)
        on = nullptr;
}
