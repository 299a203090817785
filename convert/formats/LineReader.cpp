#include "convert/formats/LineReader.h"

#include "convert/Notes.h"

#include <QStringDecoder>

namespace {

constexpr qsizetype chunk = qsizetype{64} * 1024; // bytes

bool isAscii(const QByteArray& text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0x80U) != 0; });
}

} // namespace

QByteArray toUtf8Line(const QByteArray& line)
{
    if (isAscii(line))
        return line;
    // A letter that is cut off at the end of the line is an error, too.
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString decoded = utf8(line);
    return utf8.hasError() ? QString::fromLatin1(line).toUtf8() : line;
}

LineReader::LineReader(ByteSource& source, QString name)
    : source(source)
    , name(std::move(name))
{
}

void LineReader::fail(const QString& reason) const
{
    throw ConversionError(QStringLiteral("%1:%2: %3").arg(name).arg(lines + 1).arg(reason));
}

/// Advances `end` to the end of the next line. Returns whether it is in the buffer.
bool LineReader::findEnd()
{
    if (skipLf && start < buffer.size()) {
        if (buffer[start] == '\n')
            ++start;
        skipLf = false;
    }
    end = std::max(end, start);
    const char* from = buffer.constData() + end;
    const auto size = static_cast<std::size_t>(buffer.size() - end);
    const void* lf = std::memchr(from, '\n', size);
    const std::size_t before = lf ? static_cast<std::size_t>(static_cast<const char*>(lf) - from) : size;
    const void* cr = std::memchr(from, '\r', before);
    const void* found = cr ? cr : lf;
    end = found ? end + (static_cast<const char*>(found) - from) : buffer.size();
    return found;
}

/// Reads more of the source. Returns false at its end.
bool LineReader::refill()
{
    buffer.remove(0, start);
    end -= start;
    start = 0;
    const qsizetype size = buffer.size();
    buffer.resize(size + chunk);
    std::size_t count = 0;
    try {
        count = source.read(buffer.data() + size, static_cast<std::size_t>(chunk));
    } catch (const ConversionError& error) {
        buffer.resize(size);
        fail(error.text());
    }
    buffer.resize(size + static_cast<qsizetype>(count));
    atEnd = count == 0;
    return !atEnd;
}

bool LineReader::isReady() const
{
    return atEnd || buffer.indexOf('\n', start) >= 0 || source.isReady();
}

bool LineReader::next(QByteArray& line)
{
    bool found = findEnd();
    while (!found && !atEnd) {
        if (end - start > maxLength)
            fail(QStringLiteral("line longer than %1 bytes").arg(maxLength));
        if (refill())
            found = findEnd();
    }
    if (!found && start == buffer.size())
        return false;
    if (end - start > maxLength)
        fail(QStringLiteral("line longer than %1 bytes").arg(maxLength));
    line = buffer.mid(start, end - start);
    if (lines == 0 && line.startsWith(byteOrderMark))
        line.remove(0, static_cast<qsizetype>(sizeof byteOrderMark - 1));
    if (line.contains('\0'))
        fail(QStringLiteral("unexpected null byte"));
    skipLf = found && buffer[end] == '\r';
    start = found ? end + 1 : end;
    end = start;
    ++lines;
    line = toUtf8Line(line);
    return true;
}

QByteArray LineReader::takeAll(qsizetype limit, Contents contents)
{
    while (!atEnd && buffer.size() - start <= limit)
        refill();
    QByteArray all = buffer.mid(start);
    buffer.clear();
    start = end = 0;
    const qsizetype null = contents == Contents::Text ? all.indexOf('\0') : -1;
    lines += static_cast<int>((null < 0 ? all : all.left(null)).count('\n'));
    if (null >= 0)
        fail(QStringLiteral("unexpected null byte"));
    if (all.size() > limit)
        throw ConversionError(QStringLiteral("%1: larger than %2 bytes").arg(name).arg(limit));
    return all;
}
