#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

inline bool writeFile(const QString& name, const QByteArray& contents)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size();
}

/// All of the file; words that no test expects where it cannot be read.
inline QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<cannot be read>");
}
