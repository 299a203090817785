#include "convert/program/Conversion.h"

namespace {

/// Rejects null bytes: some readers and writers treat them as the end of the text.
void rejectNullByte(const QByteArray& text, const QString& name)
{
    const qsizetype index = text.indexOf('\0');
    if (index >= 0)
        throw ConversionError(
            QStringLiteral("%1:%2: unexpected null byte").arg(name).arg(text.left(index).count('\n') + 1));
}

} // namespace

std::vector<Sketch> readSketches(const QByteArray& text, const Format& format, const QString& name, Notes& notes)
{
    if (!format.read)
        throw ConversionError(name + QStringLiteral(": format can only be written"));
    if (!format.isBinary)
        rejectNullByte(text, name);
    return format.read(text, name, notes);
}

QByteArray writeSketches(std::vector<Sketch> sketches, const Format& format, const OutputStyle& style, Notes& notes)
{
    return format.write(std::move(sketches), style, notes);
}

QStringList faultsOf(const QByteArray& text, const Format& format, const QString& name)
{
    if (format.check)
        return format.check(text, name);
    try {
        Notes ignored;
        readSketches(text, format, name, ignored);
        return {};
    } catch (const ConversionError& fault) {
        return {fault.text()};
    }
}
