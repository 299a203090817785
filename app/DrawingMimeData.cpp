#include "app/DrawingMimeData.h"

#include "app/Converter.h"

#include <QElapsedTimer>

namespace {

constexpr int longestWait = 2000; // milliseconds
constexpr int timeLimit = 60'000; // milliseconds, for each type

/// A type of data that kytconvert makes.
struct ConvertedType {
    const char* type;
    const char* format;
};

const QString smilesText = QStringLiteral("text/plain");
const QString smilesType = QStringLiteral("chemical/x-daylight-smiles"); // the same text

constexpr ConvertedType convertedTypes[] = {
    {"text/plain", "smi"}, {"chemical/x-mdl-molfile", "mol"}, {"image/svg+xml", "svg"}, {"application/pdf", "pdf"},
    {"image/png", "png"},
};

QStringList argumentsFor(const QString& type)
{
    for (const ConvertedType& converted : convertedTypes) {
        if (type != QLatin1String(converted.type))
            continue;
        QStringList arguments{"--from", "kyt", "--to", QString::fromLatin1(converted.format), "-"};
        if (type == QLatin1String("image/png"))
            arguments << QStringLiteral("--dpi") << QStringLiteral("300");
        return arguments;
    }
    return {};
}

} // namespace

DrawingMimeData::DrawingMimeData(const Clipping& clipping)
    : workspace(clipping.workspace)
{
    ready[QString::fromLatin1(workspaceType)] = clipping.workspace;
    ready[QString::fromLatin1(locksType)] = clipping.locks;
    if (Converter::program().isEmpty())
        return;
    for (const ConvertedType& converted : convertedTypes)
        pending << QString::fromLatin1(converted.type);
    convertNext();
}

DrawingMimeData::~DrawingMimeData() = default;

void DrawingMimeData::convertNext()
{
    if (pending.isEmpty())
        return;
    converter = std::make_unique<Converter>(argumentsFor(pending.constFirst()), workspace, timeLimit);
    connect(converter.get(), &Converter::finished, this, &DrawingMimeData::take);
}

void DrawingMimeData::take(const QByteArray& output, const QString& error)
{
    const QString type = pending.takeFirst();
    if (error.isNull()) {
        ready[type] = output;
        if (type == smilesText)
            ready[smilesType] = output;
    }
    converter.release()->deleteLater(); // it is the sender
    convertNext();
}

void DrawingMimeData::waitFor(const QString& type)
{
    QElapsedTimer clock;
    clock.start();
    while (pending.contains(type) && clock.elapsed() < longestWait)
        if (!converter->wait(static_cast<int>(longestWait - clock.elapsed())))
            return;
}

void DrawingMimeData::offerReadyOnly()
{
    converter.reset();
    pending.clear();
}

QStringList DrawingMimeData::formats() const
{
    QStringList types{QString::fromLatin1(workspaceType), QString::fromLatin1(locksType)};
    for (const ConvertedType& converted : convertedTypes) {
        const QString type = QString::fromLatin1(converted.type);
        if (ready.contains(type) || pending.contains(type))
            types << type;
    }
    if (types.contains(smilesText))
        types << smilesType;
    return types;
}

QVariant DrawingMimeData::retrieveData(const QString& type, QMetaType) const
{
    // Data are asked for as if they were there; making them is not a change that anyone sees.
    const_cast<DrawingMimeData*>(this)->waitFor(type == smilesType ? smilesText : type); // NOLINT
    const auto found = ready.find(type);
    return found == ready.end() ? QVariant() : QVariant(found->second);
}
