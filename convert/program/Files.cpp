#include "convert/program/Files.h"

#include "convert/Notes.h"
#include "doc/WorkspaceFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <future>

namespace {

constexpr const char* standardStream = "-";

[[noreturn]] void fail(const QString& shown, const QString& reason)
{
    throw ConversionError(shown + QStringLiteral(": ") + reason);
}

[[noreturn]] void failReading(const QString& fileName, const QString& reason)
{
    fail(shownName(fileName), reason);
}

[[noreturn]] void failWriting(const QString& fileName, const QString& reason)
{
    fail(fileName == QLatin1String(standardStream) ? QStringLiteral("standard output") : fileName, reason);
}

void writeTo(QFileDevice& file, const QString& fileName, const QByteArray& contents)
{
    errno = 0;
    if (file.write(contents) == contents.size() && file.flush())
        return;
    const QString reason = errno != 0 ? QString::fromLocal8Bit(std::strerror(errno)) : file.errorString();
    failWriting(fileName, QStringLiteral("cannot be written: ") + reason);
}

} // namespace

QString shownName(const QString& fileName)
{
    return fileName == QLatin1String(standardStream) ? QStringLiteral("standard input") : fileName;
}

QByteArray readAll(const QString& fileName)
{
    QFile file(fileName);
    const bool isStream = fileName == QLatin1String(standardStream);
    if (!isStream && QFileInfo(fileName).isDir())
        failReading(fileName, QStringLiteral("is a folder"));
    const bool open = isStream ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!open)
        failReading(fileName, QStringLiteral("cannot be read: ") + file.errorString());
    QByteArray contents = file.readAll();
    if (file.error() != QFileDevice::NoError)
        failReading(fileName, QStringLiteral("cannot be read: ") + file.errorString());
    return contents;
}

void writeAll(const QString& fileName, const QByteArray& contents)
{
    if (fileName == QLatin1String(standardStream)) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly))
            failWriting(fileName, QStringLiteral("cannot be written"));
        writeTo(out, fileName, contents);
        return;
    }
    const QFileInfo info(fileName);
    if (info.isDir())
        failWriting(fileName, QStringLiteral("is a folder"));
    // A device or a pipe must not be replaced by a regular file. An empty file has nothing to lose, and who created it,
    // as thumbnailing services do, may have it open.
    if (info.exists() && (!info.isFile() || info.size() == 0)) {
        QFile out(fileName);
        if (!out.open(QIODevice::WriteOnly))
            failWriting(fileName, QStringLiteral("cannot be written: ") + out.errorString());
        try {
            writeTo(out, fileName, contents);
        } catch (const ConversionError&) {
            if (info.isFile())
                out.resize(0);
            throw;
        }
        return;
    }
    const QString error = writeWholeFile(fileName, contents);
    if (!error.isEmpty())
        failWriting(fileName, QStringLiteral("cannot be written: ") + error);
}

void writeFiles(const std::vector<std::pair<QString, QByteArray>>& files)
{
    constexpr std::size_t writers = 8; // they wait for the disk, not for the processor
    std::atomic<std::size_t> next = 0;
    const auto writeSome = [&] {
        try {
            for (std::size_t i = next++; i < files.size(); i = next++)
                writeAll(files[i].first, files[i].second);
        } catch (...) {
            next = files.size();
            throw;
        }
    };
    std::vector<std::future<void>> running;
    for (std::size_t i = 0; i < std::min(writers, files.size()); ++i)
        running.push_back(std::async(std::launch::async, writeSome));
    for (std::future<void>& writer : running)
        writer.wait();
    for (std::future<void>& writer : running)
        writer.get();
}
