#include "convert/formats/TextLines.h"

#include <QStringDecoder>

QList<QByteArray> linesOf(const QByteArray& text)
{
    // A letter that is cut off at the end of the text is an error, too.
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString decoded = utf8(text);
    if (utf8.hasError())
        decoded = QString::fromLatin1(text);
    decoded.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    decoded.replace(u'\r', u'\n');
    return decoded.toUtf8().split('\n');
}
