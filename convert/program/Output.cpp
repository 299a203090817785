#include "convert/program/Output.h"

#include "convert/Notes.h"
#include "convert/formats/Formats.h"
#include "convert/formats/Gzip.h"
#include "doc/WorkspaceFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <future>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr QLatin1String standardOutput("-");

[[noreturn]] void fail(const QString& fileName, const QString& reason)
{
    const QString shown = fileName == standardOutput ? QStringLiteral("standard output") : fileName;
    throw ConversionError(shown + QStringLiteral(": ") + reason);
}

void failFor(const QString& fileName, const QString& error)
{
    if (!error.isEmpty())
        fail(fileName, QStringLiteral("cannot be written: ") + error);
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// A regular file, which appears at commit().
class FileOutput : public Output {
public:
    FileOutput(const QString& fileName, FileReplacement::Fallback fallback)
        : fileName(fileName)
        , file(fileName)
    {
        failFor(fileName, file.open(fallback));
    }

    void write(const QByteArray& text) override { failFor(fileName, file.write(text)); }
    void commit() override { failFor(fileName, file.commit()); }

private:
    QString fileName;
    FileReplacement file;
};

/// Standard output, a device or a pipe, which is written directly.
class StreamOutput : public Output {
public:
    explicit StreamOutput(const QString& fileName)
        : fileName(fileName)
        , file(fileName == standardOutput ? STDOUT_FILENO
                                          : ::open(QFile::encodeName(fileName).constData(), O_WRONLY | O_CLOEXEC))
    {
        if (file < 0)
            failFor(fileName, systemError());
    }

    ~StreamOutput() override
    {
        if (file != STDOUT_FILENO)
            close(file);
    }

    void write(const QByteArray& text) override
    {
        qsizetype done = 0;
        while (done < text.size()) {
            const ssize_t count = ::write(file, text.constData() + done, static_cast<std::size_t>(text.size() - done));
            if (count < 0 && errno != EINTR)
                failFor(fileName, systemError());
            done += std::max<ssize_t>(count, 0);
        }
    }

    void commit() override { }
    bool canDiscard() const override { return false; }

private:
    QString fileName;
    int file;
};

/// An empty file, which is filled where it is at commit(): it has nothing to lose, and who created it, as thumbnailing
/// services do, may have it open.
class EmptyFileOutput : public Output {
public:
    explicit EmptyFileOutput(const QString& fileName)
        : file(fileName)
    {
    }

    void write(const QByteArray& text) override { contents += text; }

    void commit() override
    {
        errno = 0;
        if (file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.flush())
            return;
        const QString error = errno != 0 ? systemError() : file.errorString();
        file.resize(0);
        failFor(file.fileName(), error);
    }

private:
    QFile file;
    QByteArray contents;
};

/// Compresses what goes to another output.
class GzipOutput : public Output {
public:
    explicit GzipOutput(std::unique_ptr<Output> target)
        : target(std::move(target))
    {
    }

    void write(const QByteArray& text) override { target->write(gzip.add(text)); }

    void commit() override
    {
        target->write(gzip.finish());
        target->commit();
    }

    bool canDiscard() const override { return target->canDiscard(); }

private:
    std::unique_ptr<Output> target;
    GzipWriter gzip;
};

QRegularExpressionMatch placeholderOf(const QString& fileName)
{
    static const QRegularExpression form(QStringLiteral("%(?:0([1-9]))?d"));
    return form.match(fileName);
}

/// Replaces the placeholder in `pattern` with `number`.
QString numberedName(QString pattern, int number)
{
    const QRegularExpressionMatch placeholder = placeholderOf(pattern);
    const int digits = placeholder.captured(1).toInt();
    return pattern.replace(placeholder.capturedStart(), placeholder.capturedLength(),
                           QStringLiteral("%1").arg(number, digits, 10, QLatin1Char('0')));
}

/// The innermost existing folder of a file, so that files in it can be renamed to that file.
QString existingFolder(const QString& fileName)
{
    QString folder = QFileInfo(fileName).absolutePath();
    while (!QFileInfo(folder).isDir())
        folder = QFileInfo(folder).path();
    return folder;
}

/// Files that are written to a temporary folder and renamed at commit().
class NumberedOutput : public Output {
public:
    explicit NumberedOutput(const QString& pattern)
        : pattern(pattern)
        , folder(existingFolder(pattern) + QStringLiteral("/.kytconvert-XXXXXX"))
    {
        if (!folder.isValid())
            failFor(pattern, folder.errorString());
    }

    void write(const QByteArray& text) override
    {
        const QString name = temporaryName(++count);
        QFile file(name);
        errno = 0;
        const QByteArray contents = isGzipName(pattern) ? compressed(text) : text;
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush())
            failFor(numberedName(pattern, count), errno != 0 ? systemError() : file.errorString());
    }

    void commit() override
    {
        constexpr int writers = 8; // they wait for the disk, not for the processor
        std::atomic<int> next = 1;
        const auto commitSome = [&] {
            try {
                for (int number = next++; number <= count; number = next++)
                    commit(number);
            } catch (...) {
                next = count + 1; // no more are begun
                throw;
            }
        };
        std::vector<std::future<void>> running;
        running.reserve(writers);
        for (int i = 0; i < std::min(writers, count); ++i)
            running.push_back(std::async(std::launch::async, commitSome));
        for (std::future<void>& writer : running)
            writer.wait();
        for (std::future<void>& writer : running)
            writer.get();
    }

private:
    void commit(int number) const
    {
        const QString target = numberedName(pattern, number);
        const QFileInfo info(target);
        if (info.exists() || info.isSymLink()) { // it keeps its owner and permissions
            QFile file(temporaryName(number));
            if (!file.open(QIODevice::ReadOnly))
                failFor(target, file.errorString());
            failFor(target, writeWholeFile(target, file.readAll()));
        } else if (std::rename(QFile::encodeName(temporaryName(number)).constData(),
                               QFile::encodeName(target).constData())
                   != 0) {
            failFor(target, systemError());
        }
    }

    QString temporaryName(int number) const { return folder.filePath(QString::number(number)); }

    static QByteArray compressed(const QByteArray& text)
    {
        GzipWriter gzip;
        const QByteArray start = gzip.add(text);
        return start + gzip.finish();
    }

    QString pattern;
    QTemporaryDir folder;
    int count = 0;
};

std::unique_ptr<Output> open(const QString& fileName, FileReplacement::Fallback fallback)
{
    const QFileInfo info(fileName);
    if (fileName != standardOutput && info.isDir())
        fail(fileName, QStringLiteral("is a folder"));
    std::unique_ptr<Output> output;
    if (fileName == standardOutput || (info.exists() && !info.isFile())) // a device must not be replaced by a file
        output = std::make_unique<StreamOutput>(fileName);
    else if (fallback == FileReplacement::Fallback::Overwrite && info.isFile() && info.size() == 0)
        output = std::make_unique<EmptyFileOutput>(fileName);
    else
        output = std::make_unique<FileOutput>(fileName, fallback);
    return isGzipName(fileName) ? std::make_unique<GzipOutput>(std::move(output)) : std::move(output);
}

} // namespace

std::unique_ptr<Output> openOutput(const QString& fileName)
{
    return open(fileName, FileReplacement::Fallback::Fail);
}

bool isNumbered(const QString& fileName)
{
    return placeholderOf(fileName).hasMatch();
}

std::unique_ptr<Output> openNumberedOutput(const QString& pattern)
{
    return std::make_unique<NumberedOutput>(pattern);
}

void writeAll(const QString& fileName, const QByteArray& contents)
{
    const std::unique_ptr<Output> output = open(fileName, FileReplacement::Fallback::Overwrite);
    output->write(contents);
    output->commit();
}
