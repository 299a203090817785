#include "convert/formats/Gzip.h"

#include "convert/Notes.h"

#include <new>

#include <zlib.h>

namespace {

constexpr qsizetype chunk = qsizetype{64} * 1024; // bytes
constexpr int gzipFormat = 16;                    // added to zlib's window size
constexpr int windowBits = 15;
constexpr int memoryLevel = 8; // zlib's default

bool startsGzip(const QByteArray& bytes)
{
    return bytes.startsWith("\x1f\x8b");
}

[[noreturn]] void failDamaged()
{
    throw ConversionError(QStringLiteral("damaged gzip file"));
}

Bytef* bytesOf(const char* text)
{
    // zlib does not write to its input.
    return reinterpret_cast<Bytef*>(const_cast<char*>(text)); // NOLINT(*-const-cast,*-reinterpret-cast)
}

} // namespace

struct GzipReader::Inflater {
    Inflater()
    {
        if (inflateInit2(&stream, windowBits + gzipFormat) != Z_OK)
            throw std::bad_alloc();
    }
    ~Inflater() { inflateEnd(&stream); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    z_stream stream = {};
    bool inMember = true; ///< false between the end of a member and the start of the next one
};

GzipReader::GzipReader(ByteSource& source)
    : source(source)
{
}

GzipReader::~GzipReader() = default;

bool GzipReader::isReady() const
{
    return consumed < static_cast<std::size_t>(input.size()) || atEnd || source.isReady();
}

/// Reads more of the source where all that was read is consumed.
void GzipReader::refill()
{
    if (atEnd || consumed < static_cast<std::size_t>(input.size()))
        return;
    input.resize(chunk);
    const std::size_t count = source.read(input.data(), static_cast<std::size_t>(chunk));
    input.resize(static_cast<qsizetype>(count));
    consumed = 0;
    compressed += count;
    atEnd = count == 0;
}

std::size_t GzipReader::read(char* buffer, std::size_t size)
{
    if (!isDecided) {
        refill();
        if (input.size() == 1) { // the two bytes that tell may come one by one
            char second = 0;
            if (source.read(&second, 1) == 1)
                input.append(second);
        }
        isDecided = true;
        if (startsGzip(input))
            inflater = std::make_unique<Inflater>();
    }
    if (inflater)
        return inflateSome(buffer, size);
    refill();
    const std::size_t count = std::min(size, static_cast<std::size_t>(input.size()) - consumed);
    std::memcpy(buffer, input.constData() + consumed, count);
    consumed += count;
    return count;
}

/// Between two members: continues with the next one. Zero bytes fill up a file on tape and are skipped.
void GzipReader::startNextMember()
{
    while (!atEnd) {
        refill();
        while (consumed < static_cast<std::size_t>(input.size()) && input[static_cast<qsizetype>(consumed)] == '\0')
            ++consumed;
        if (consumed == static_cast<std::size_t>(input.size()))
            continue;
        if (inflateReset(&inflater->stream) != Z_OK)
            failDamaged();
        inflater->inMember = true;
        return;
    }
}

std::size_t GzipReader::inflateSome(char* buffer, std::size_t size)
{
    z_stream& stream = inflater->stream;
    std::size_t count = 0;
    while (count == 0) {
        if (!inflater->inMember)
            startNextMember();
        if (!inflater->inMember)
            return 0;
        refill();
        if (atEnd)
            throw ConversionError(QStringLiteral("unexpected end of the gzip file"));
        stream.next_in = bytesOf(input.constData() + consumed);
        stream.avail_in = static_cast<uInt>(static_cast<std::size_t>(input.size()) - consumed);
        stream.next_out = bytesOf(buffer);
        stream.avail_out = static_cast<uInt>(size);
        const int result = inflate(&stream, Z_NO_FLUSH);
        consumed = static_cast<std::size_t>(input.size()) - stream.avail_in;
        count = size - stream.avail_out;
        if (result == Z_STREAM_END)
            inflater->inMember = false;
        else if (result != Z_OK && result != Z_BUF_ERROR)
            failDamaged();
    }
    expanded += count;
    if (expanded > freeExpansion && expanded / maxExpansion > compressed)
        throw ConversionError(
            QStringLiteral("gzip file expands to more than %1 times its size (limit)").arg(maxExpansion));
    return count;
}

struct GzipWriter::Deflater {
    Deflater()
    {
        if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits + gzipFormat, memoryLevel,
                         Z_DEFAULT_STRATEGY)
            != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflater() { deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    QByteArray deflateAll(const QByteArray& bytes, int flush)
    {
        QByteArray all;
        QByteArray part(chunk, Qt::Uninitialized);
        stream.next_in = bytesOf(bytes.constData());
        stream.avail_in = static_cast<uInt>(bytes.size());
        do {
            stream.next_out = bytesOf(part.constData());
            stream.avail_out = static_cast<uInt>(part.size());
            deflate(&stream, flush);
            all.append(part.constData(), part.size() - static_cast<qsizetype>(stream.avail_out));
        } while (stream.avail_out == 0);
        return all;
    }

    z_stream stream = {};
};

GzipWriter::GzipWriter()
    : deflater(std::make_unique<Deflater>())
{
}

GzipWriter::~GzipWriter() = default;

QByteArray GzipWriter::add(const QByteArray& bytes)
{
    return deflater->deflateAll(bytes, Z_NO_FLUSH);
}

QByteArray GzipWriter::finish()
{
    return deflater->deflateAll(QByteArray(), Z_FINISH);
}
