#pragma once

#include <QByteArray>
#include <QList>

/// Splits a text file into lines. The text is UTF-8, or else Latin-1; the lines returned are UTF-8. LF, CR LF and CR
/// all end a line.
QList<QByteArray> linesOf(const QByteArray& text);
