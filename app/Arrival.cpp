#include "app/Arrival.h"

#include "app/Converter.h"
#include "app/DrawingMimeData.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int timeLimit = 10'000;                     // milliseconds, for each source
constexpr qsizetype mostText = qsizetype{16} << 20;   // bytes
constexpr qsizetype mostFile = qsizetype{64} << 20;   // bytes
constexpr qsizetype mostSmiles = qsizetype{64} << 10; // bytes; more is no text that somebody copied as SMILES
constexpr const char* workspaceStart = "KYTFILE";

bool isWorkspace(const QByteArray& text)
{
    return text.trimmed().startsWith(workspaceStart);
}

bool hasLine(const QByteArray& text, const QByteArray& line)
{
    const QList<QByteArray> lines = text.split('\n');
    return std::any_of(lines.begin(), lines.end(), [&line](const QByteArray& one) { return one.trimmed() == line; });
}

/// Whether each line starts with a word that could be SMILES.
bool looksLikeSmiles(const QByteArray& text)
{
    static const QRegularExpression line(QStringLiteral(R"(^[A-Za-z0-9@+\-\[\]()\\/%=#$:.~*]+(\s.*)?$)"));
    const QList<QByteArray> lines = text.trimmed().split('\n');
    return text.size() <= mostSmiles && std::all_of(lines.begin(), lines.end(), [](const QByteArray& one) {
               const QString trimmed = QString::fromUtf8(one).trimmed();
               return trimmed.isEmpty() || line.match(trimmed).hasMatch();
           });
}

QStringList argumentsFor(const char* format)
{
    return {"--from", QString::fromLatin1(format), "--to", "kyt", "--jobs", "1", "-"};
}

} // namespace

Arrival::~Arrival() = default;

QString Arrival::addClipboard(const QMimeData& data)
{
    // A drawing of ours, and what other programs offer, the most precise first.
    if (const QByteArray own = data.data(QString::fromLatin1(workspaceType)); !own.isEmpty())
        return addWorkspace({own, data.data(QString::fromLatin1(locksType))});
    for (const char* type : {"chemical/x-mdl-sdfile", "chemical/x-mdl-molfile", "chemical/x-daylight-smiles"})
        if (const QByteArray text = data.data(QString::fromLatin1(type)); !text.isEmpty())
            return addText(text);
    return data.hasText() ? addText(data.text().toUtf8()) : tr("The clipboard holds no molecule");
}

QString Arrival::addWorkspace(const Clipping& clipping)
{
    if (extentOf(clipping).isNull())
        return tr("not a valid workspace");
    clippings.append(clipping);
    return {};
}

QString Arrival::addText(const QByteArray& text)
{
    if (text.size() > mostText)
        return tr("The text on the clipboard is too long");
    if (isWorkspace(text))
        return addWorkspace({text, {}});
    const bool isSdFile = hasLine(text, "$$$$");
    const bool isMolfile = hasLine(text, "M  END");
    if (!isSdFile && !isMolfile && (text.trimmed().isEmpty() || !looksLikeSmiles(text)))
        return tr("The clipboard holds no molecule");
    if (Converter::program().isEmpty())
        return tr("kytconvert, which reads this, is not installed");
    hasProperties |= isSdFile && text.contains("\n>");
    sources.push_back({tr("Clipboard"), argumentsFor(isSdFile ? "sdf" : isMolfile ? "mol" : "smi"), text});
    return {};
}

void Arrival::addFile(const QString& fileName)
{
    const QFileInfo info(fileName);
    QFile file(fileName);
    if (!info.isFile())
        addFault(info.fileName(), tr("not a regular file"));
    else if (info.size() > mostFile)
        addFault(info.fileName(), tr("too large"));
    else if (!file.open(QIODevice::ReadOnly))
        addFault(info.fileName(), file.errorString());
    else if (info.suffix() == QLatin1String("kyt") || info.suffix() == QLatin1String("kyf")) {
        if (const QString reason = addWorkspace({file.readAll(), {}}); !reason.isEmpty())
            addFault(info.fileName(), reason);
    } else if (Converter::program().isEmpty())
        addFault(info.fileName(), tr("kytconvert, which reads this, is not installed"));
    else
        sources.push_back({info.fileName(), {"--to", "kyt", "--jobs", "1", "--", info.absoluteFilePath()}, {}});
}

void Arrival::addFault(const QString& name, const QString& reason)
{
    faults << QStringLiteral("%1 (%2)").arg(name, reason);
}

void Arrival::start()
{
    QMetaObject::invokeMethod(this, &Arrival::convertNext, Qt::QueuedConnection);
}

void Arrival::convertNext()
{
    if (sources.empty()) {
        emit finished(clippings, faults);
        return;
    }
    converter = std::make_unique<Converter>(sources.front().arguments, sources.front().input, timeLimit);
    connect(converter.get(), &Converter::finished, this, &Arrival::take);
}

void Arrival::take(const QByteArray& output, const QString& error)
{
    const Source source = std::move(sources.front());
    sources.pop_front();
    if (error.isNull())
        clippings.append({output, {}});
    else
        addFault(source.name, error);
    converter.release()->deleteLater();
    convertNext();
}
