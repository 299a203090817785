#include "convert/Formats.h"

#include <QFileInfo>
#include <QHash>
#include <QStringDecoder>

std::optional<Format> formatNamed(const QString& name)
{
    static const QHash<QString, Format> formats = {
        {"kyt", Format::Workspace}, {"kyf", Format::Workspace}, {"mol", Format::Molfile}, {"mdl", Format::Molfile},
        {"sdf", Format::SdFile},    {"sd", Format::SdFile},     {"smi", Format::Smiles},  {"smiles", Format::Smiles},
        {"svg", Format::Svg},       {"png", Format::Png},       {"pdf", Format::Pdf},
    };
    const auto known = formats.constFind(name.toLower());
    return known != formats.cend() ? std::optional(*known) : std::nullopt;
}

std::optional<Format> formatOfFile(const QString& fileName)
{
    return formatNamed(QFileInfo(fileName).suffix());
}

bool isPicture(Format format)
{
    return format == Format::Svg || format == Format::Png || format == Format::Pdf;
}

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
