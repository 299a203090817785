#include "convert/WorkspaceCheck.h"

#include "convert/Canvas.h"
#include "doc/KytFileIO.h"

#include <QTextStream>

#include <algorithm>

namespace {

/// Walks over the words of a text, as a text stream does, and knows where each begins.
class WordPlaces {
public:
    explicit WordPlaces(const QString& text)
        : text(text)
    {
        skipSpace();
    }

    /// Goes on to the word with this number, counted from 1, or to the end of the text.
    void goTo(qint64 word)
    {
        for (; number < word && at < text.size(); ++number) {
            while (at < text.size() && !text[at].isSpace())
                step();
            skipSpace();
        }
    }

    int line = 1;
    int column = 1;

private:
    void skipSpace()
    {
        while (at < text.size() && text[at].isSpace())
            step();
    }

    void step()
    {
        if (text[at] == u'\n') {
            ++line;
            column = 1;
        } else if (!text[at].isLowSurrogate()) {
            ++column;
        }
        ++at;
    }

    const QString& text;
    qsizetype at = 0;
    qint64 number = 1;
};

} // namespace

std::vector<PlacedFault> readChecked(const QByteArray& text, KytStudioDoc& doc)
{
    std::vector<WorkspaceFault> faults;
    KytFileIO io;
    io.faults = &faults;
    QTextStream stream(text);
    io.readWorkspace(stream, &doc, false);

    std::stable_sort(faults.begin(), faults.end(), [](const auto& a, const auto& b) { return a.word < b.word; });
    const QString decoded = QTextStream(text).readAll();
    WordPlaces places(decoded);
    std::vector<PlacedFault> placed;
    for (const WorkspaceFault& fault : faults) {
        places.goTo(fault.word);
        placed.push_back({places.line, places.column, fault.text, fault.loses});
    }
    return placed;
}

std::vector<PlacedFault> checkWorkspace(const QByteArray& text)
{
    Canvas canvas;
    return readChecked(text, canvas.doc);
}
