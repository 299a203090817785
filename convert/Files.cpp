#include "convert/Files.h"

#include "convert/Notes.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

namespace {

constexpr const char* standardStream = "-";

[[noreturn]] void fail(const QString& fileName, const QString& why)
{
    throw ConversionError(shownName(fileName) + QStringLiteral(": ") + why);
}

void writeTo(QFileDevice& file, const QString& fileName, const QByteArray& contents)
{
    if (file.write(contents) != contents.size() || !file.flush())
        fail(fileName, QStringLiteral("cannot be written: ") + file.errorString());
}

} // namespace

QString shownName(const QString& fileName)
{
    return fileName == QLatin1String(standardStream) ? QStringLiteral("standard input or output") : fileName;
}

QByteArray readAll(const QString& fileName)
{
    QFile file(fileName);
    const bool isStream = fileName == QLatin1String(standardStream);
    if (!isStream && QFileInfo(fileName).isDir())
        fail(fileName, QStringLiteral("is a folder"));
    const bool open = isStream ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!open)
        fail(fileName, QStringLiteral("cannot be read: ") + file.errorString());
    QByteArray contents = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail(fileName, QStringLiteral("cannot be read: ") + file.errorString());
    return contents;
}

void writeAll(const QString& fileName, const QByteArray& contents)
{
    if (fileName == QLatin1String(standardStream)) {
        QFile out;
        if (!out.open(stdout, QIODevice::WriteOnly))
            fail(fileName, QStringLiteral("cannot be written"));
        writeTo(out, fileName, contents);
        return;
    }
    const QFileInfo info(fileName);
    if (info.isDir())
        fail(fileName, QStringLiteral("is a folder"));
    if (info.exists() && !info.isFile()) { // a device or a pipe is not to be replaced by a file
        QFile out(fileName);
        if (!out.open(QIODevice::WriteOnly))
            fail(fileName, QStringLiteral("cannot be written: ") + out.errorString());
        writeTo(out, fileName, contents);
        return;
    }
    if (info.exists() && !info.isWritable())
        fail(fileName, QStringLiteral("cannot be written: it is protected"));
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        fail(fileName, QStringLiteral("cannot be written: ") + file.errorString());
    writeTo(file, fileName, contents);
    if (!file.commit())
        fail(fileName, QStringLiteral("cannot be written: ") + file.errorString());
}
