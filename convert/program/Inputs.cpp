#include "convert/program/Inputs.h"

#include "convert/formats/Gzip.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr QLatin1String standardInput("-");

QString systemReason()
{
    return QStringLiteral("cannot be read: ") + QString::fromLocal8Bit(std::strerror(errno));
}

/// The bytes of a file or of standard input.
class FileSource : public ByteSource {
public:
    explicit FileSource(const QString& fileName)
        : file(fileName == standardInput ? STDIN_FILENO
                                         : open(QFile::encodeName(fileName).constData(), O_RDONLY | O_CLOEXEC))
    {
        if (fileName != standardInput && QFileInfo(fileName).isDir()) {
            close(file);
            throw UnreadableInput(shownName(fileName) + QStringLiteral(": is a folder"));
        }
        if (file < 0)
            throw UnreadableInput(shownName(fileName) + QStringLiteral(": ") + systemReason());
    }

    ~FileSource() override
    {
        if (file != STDIN_FILENO)
            close(file);
    }

    std::size_t read(char* buffer, std::size_t size) override
    {
        for (;;) {
            const ssize_t count = ::read(file, buffer, size);
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                throw ConversionError(systemReason());
        }
    }

    bool isReady() const override
    {
        pollfd descriptor = {file, POLLIN, 0};
        return poll(&descriptor, 1, 0) != 0;
    }

    int descriptor() const { return file; }

private:
    int file;
};

} // namespace

/// The input that is being read.
struct Inputs::Input {
    Input(const Format& format, const QString& fileName, const InputStyle& style)
        : file(fileName)
        , plain(file)
        , lines(plain, shownName(fileName))
        , records(format.records(lines, style))
    {
    }

    FileSource file;
    GzipReader plain;
    LineReader lines;
    std::unique_ptr<RecordReader> records;
};

Inputs::Inputs(const Options& options)
    : options(options)
{
    for (const QString& fileName : options.inputs)
        inputFormat(options, fileName);
}

Inputs::~Inputs() = default;

std::optional<InputRecord> Inputs::next()
{
    for (;;) {
        if (!current) {
            if (started == static_cast<std::size_t>(options.inputs.size()))
                return std::nullopt;
            const QString& fileName = options.inputs[static_cast<qsizetype>(started++)];
            current = std::make_unique<Input>(inputFormat(options, fileName), fileName, options.input);
        }
        try {
            if (std::optional<Record> record = current->records->next())
                return InputRecord{started - 1, std::move(*record)};
        } catch (const ConversionError&) {
            current.reset();
            throw;
        }
        current.reset();
    }
}

bool Inputs::isReady() const
{
    return !current || current->lines.isReady();
}

int Inputs::descriptor() const
{
    return current ? current->file.descriptor() : -1;
}

void forEachRecord(const Options& options,
                   const std::function<void(const Record&, const Format&, const QString& name)>& act,
                   const std::function<void(const QString& message)>& fail)
{
    Inputs inputs(options);
    for (;;) {
        try {
            const std::optional<InputRecord> next = inputs.next();
            if (!next)
                return;
            const QString& file = options.inputs[static_cast<qsizetype>(next->input)];
            act(next->record, inputFormat(options, file), shownName(file));
        } catch (const UnreadableInput&) {
            throw;
        } catch (const ConversionError& fault) {
            fail(fault.text());
        }
    }
}

const Format& inputFormat(const Options& options, const QString& fileName)
{
    if (options.from)
        return *options.from;
    const Format* format = formatOfFile(fileName);
    if (!format)
        throw ConversionError(QStringLiteral("%1: unknown format: use a file extension or --from (%2)")
                                  .arg(shownName(fileName), readableExtensions().join(QStringLiteral(", "))));
    if (!format->read)
        throw ConversionError(shownName(fileName) + QStringLiteral(": this format can only be written"));
    return *format;
}

QString shownName(const QString& fileName)
{
    return fileName == standardInput ? QStringLiteral("standard input") : fileName;
}
