// Any bytes as a file that may be compressed, read line by line. What was read is the same whatever the size of the
// pieces, and comes back when it is compressed again.

#include "convert/Notes.h"
#include "convert/formats/Gzip.h"
#include "convert/formats/LineReader.h"
#include "tests/fuzz/FuzzTarget.h"

#include <vector>

namespace {

/// What the reader gives before its end or its fault.
struct Contents {
    QByteArray text;
    QString fault;
};

Contents contentsOf(const QByteArray& input, std::size_t piece)
{
    MemorySource source(input);
    GzipReader reader(source);
    Contents contents;
    std::vector<char> buffer(piece);
    try {
        while (const std::size_t count = reader.read(buffer.data(), piece))
            contents.text.append(buffer.data(), static_cast<qsizetype>(count));
    } catch (const ConversionError& fault) {
        contents.fault = fault.text();
    }
    return contents;
}

/// Reads lines to the end or to the first fault, which must name its line.
void readLines(const QByteArray& input)
{
    MemorySource source(input);
    GzipReader plain(source);
    LineReader lines(plain, QStringLiteral("input"));
    QByteArray line;
    try {
        while (lines.next(line)) {
            demand(line.size() <= 2 * LineReader::maxLength, "a line has a longest length");
            demand(!line.contains('\n') && !line.contains('\r') && !line.contains('\0'), "a line is one line");
        }
    } catch (const ConversionError& fault) {
        demand(fault.text().startsWith(QStringLiteral("input:%1: ").arg(lines.number() + 1)), "a fault names its line");
    }
}

} // namespace

void runInput(const QByteArray& input)
{
    const Contents whole = contentsOf(input, std::size_t{64} * 1024);
    const Contents pieces = contentsOf(input, 7);
    demand(whole.fault.isEmpty() == pieces.fault.isEmpty(), "damage is noticed whatever the size of the pieces");
    demand(!whole.fault.isEmpty() || whole.text == pieces.text, "contents do not depend on the size of the pieces");
    readLines(input);
    if (!whole.fault.isEmpty())
        return;
    GzipWriter writer;
    const QByteArray start = writer.add(whole.text);
    demand(contentsOf(start + writer.finish(), 4096).text == whole.text, "what is compressed comes back");
}
