#include "convert/formats/WorkspaceCheck.h"

#include "convert/chemistry/Canvas.h"
#include "doc/KytFileIO.h"

#include <QTextStream>

#include <algorithm>

namespace {

/// Finds the lines and columns of the words of a text, which are separated as a text stream separates them.
class WordLocator {
public:
    explicit WordLocator(const QString& text)
        : text(text)
    {
        skipSpace();
    }

    /// Advances to the word with this number, counted from 1, or to the end of the text.
    void goTo(qint64 word)
    {
        for (; number < word && index < text.size(); ++number) {
            while (index < text.size() && !text[index].isSpace())
                step();
            skipSpace();
        }
    }

    int line = 1;
    int column = 1;

private:
    void skipSpace()
    {
        while (index < text.size() && text[index].isSpace())
            step();
    }

    void step()
    {
        if (text[index] == u'\n') {
            ++line;
            column = 1;
        } else if (!text[index].isLowSurrogate()) {
            ++column;
        }
        ++index;
    }

    const QString& text;
    qsizetype index = 0;
    qint64 number = 1;
};

} // namespace

std::vector<LocatedFault> readChecked(const QByteArray& text, KytStudioDoc& doc)
{
    std::vector<WorkspaceFault> faults;
    KytFileIO io;
    io.faults = &faults;
    QTextStream stream(text);
    io.readWorkspace(stream, &doc, false);

    std::stable_sort(faults.begin(), faults.end(), [](const auto& a, const auto& b) { return a.word < b.word; });
    const QString decoded = QTextStream(text).readAll();
    WordLocator locator(decoded);
    std::vector<LocatedFault> located;
    for (const WorkspaceFault& fault : faults) {
        locator.goTo(fault.word);
        located.push_back({locator.line, locator.column, fault.text, fault.isError});
    }
    return located;
}

std::vector<LocatedFault> checkWorkspace(const QByteArray& text)
{
    Canvas canvas;
    return readChecked(text, canvas.doc);
}
