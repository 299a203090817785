#pragma once

#include "convert/formats/ByteSource.h"

#include <memory>

/// What a source holds: decompressed if it starts as a gzip file does, otherwise as it is. Several gzip files one after
/// the other are read as one. Damaged and cut-off files throw ConversionError, as do those that expand to more than
/// maxExpansion times their size, once they have given freeExpansion bytes.
class GzipReader : public ByteSource {
public:
    static constexpr std::size_t maxExpansion = 200;
    static constexpr std::size_t freeExpansion = std::size_t{64} * 1024 * 1024;

    /// `source` must outlive the reader.
    explicit GzipReader(ByteSource& source);
    ~GzipReader() override;

    std::size_t read(char* buffer, std::size_t size) override;
    bool isReady() const override;

private:
    void refill();
    std::size_t inflateSome(char* buffer, std::size_t size);
    void startNextMember();

    struct Inflater;

    ByteSource& source;
    QByteArray input;         ///< read from the source
    std::size_t consumed = 0; ///< of `input`
    bool atEnd = false;       ///< of the source
    bool isDecided = false;   ///< whether the source is compressed
    std::size_t compressed = 0;
    std::size_t expanded = 0;
    std::unique_ptr<Inflater> inflater; ///< null for a source that is not compressed
};

/// Compresses what is written to it as one gzip file. It has no name and no date, so that equal contents give equal
/// files.
class GzipWriter {
public:
    GzipWriter();
    ~GzipWriter();
    GzipWriter(const GzipWriter&) = delete;
    GzipWriter& operator=(const GzipWriter&) = delete;

    /// The next compressed bytes; possibly none yet.
    QByteArray add(const QByteArray& bytes);

    /// The last compressed bytes. Nothing can be added after them.
    QByteArray finish();

private:
    struct Deflater;
    std::unique_ptr<Deflater> deflater;
};
