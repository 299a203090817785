#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstring>

/// Where the bytes of an input come from, one after the other.
class ByteSource {
public:
    ByteSource() = default;
    virtual ~ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    /// Reads at most `size` bytes to `buffer` and returns how many, 0 only at the end. Waits until there are some.
    /// Throws ConversionError, with the reason alone, if the input cannot be read or is damaged.
    virtual std::size_t read(char* buffer, std::size_t size) = 0;

    /// Whether read() would return without waiting.
    virtual bool isReady() const { return true; }
};

/// The bytes of an array.
class MemorySource : public ByteSource {
public:
    explicit MemorySource(QByteArray bytes)
        : bytes(std::move(bytes))
    {
    }

    std::size_t read(char* buffer, std::size_t size) override
    {
        const std::size_t count = std::min(size, static_cast<std::size_t>(bytes.size()) - done);
        std::memcpy(buffer, bytes.constData() + done, count);
        done += count;
        return count;
    }

private:
    QByteArray bytes;
    std::size_t done = 0;
};
