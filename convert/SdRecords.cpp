#include "convert/SdRecords.h"

#include "convert/Notes.h"

#include <algorithm>

namespace {

const QByteArray endOfRecord = "$$$$";
const QByteArray v30 = "M  V30 ";

QList<QByteArray> linesOf(QByteArray text)
{
    text.replace("\r\n", "\n");
    text.replace('\r', '\n');
    return text.split('\n');
}

bool isBlank(const QByteArray& line)
{
    return line.trimmed().isEmpty();
}

/// The name in the head line of a property: what stands between "<" and ">".
QString propertyName(const QByteArray& line)
{
    const qsizetype from = line.indexOf('<') + 1;
    const qsizetype to = line.lastIndexOf('>');
    return from > 0 && to > from ? QString::fromUtf8(line.sliced(from, to - from)) : QString();
}

/// Takes a file apart line by line.
class Splitter {
public:
    void take(const QByteArray& line)
    {
        ++number;
        if (line.startsWith(endOfRecord) && !isAlias) {
            finish();
        } else if (inBlock) {
            takeOfBlock(line);
        } else if (line.startsWith('>')) {
            record.data.emplace_back(propertyName(line), QString());
            inProperty = true;
        } else if (isBlank(line)) {
            inProperty = false;
        } else if (inProperty) {
            QString& text = record.data.back().second;
            text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromUtf8(line);
        }
    }

    void finish()
    {
        const bool blank = isBlank(record.block);
        if (!blank)
            records.push_back(std::move(record));
        record = SdRecord();
        record.firstLine = number + 1;
        inBlock = true;
        inProperty = false;
        isAlias = false;
    }

    std::vector<SdRecord> records;

private:
    void takeOfBlock(const QByteArray& line)
    {
        record.block += line + '\n';
        inBlock = !line.startsWith("M  END");
        // The line behind an alias's head is the alias, whatever it says.
        isAlias = !isAlias && line.startsWith("A  ") && !isBlank(line.mid(3));
    }

    SdRecord record;
    int number = 0;
    bool inBlock = true;
    bool inProperty = false;
    bool isAlias = false;
};

/// The number at the start of `text`, or -1.
qint64 leadingNumber(const QByteArray& text)
{
    qsizetype digits = 0;
    while (digits < text.size() && digits < 18 && text[digits] >= '0' && text[digits] <= '9')
        ++digits;
    return digits > 0 ? text.left(digits).toLongLong() : -1;
}

void check(bool holds, qsizetype line, const QString& what)
{
    if (!holds)
        throw ConversionError(QStringLiteral("line %1 %2").arg(line + 1).arg(what));
}

} // namespace

std::vector<SdRecord> splitRecords(const QByteArray& text)
{
    Splitter splitter;
    for (const QByteArray& line : linesOf(text))
        splitter.take(line);
    splitter.finish();
    return std::move(splitter.records);
}

void checkAnnouncements(const SdRecord& record)
{
    const QList<QByteArray> lines = record.block.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray& line = lines[i];
        check(!line.contains('\0'), i, QStringLiteral("has a null byte"));
        if (!line.startsWith(v30))
            continue;
        const QByteArray rest = line.mid(v30.size()).trimmed();
        if (rest.startsWith("COUNTS")) {
            for (const QByteArray& word : rest.mid(6).simplified().split(' '))
                check(leadingNumber(word) <= lines.size(), i, QStringLiteral("announces more than the file holds"));
        }
        // Lists, as in "ATOMS=(2 1 5)", begin with their length.
        for (qsizetype at = rest.indexOf('('); at >= 0; at = rest.indexOf('(', at + 1))
            check(leadingNumber(rest.mid(at + 1, 20).trimmed()) <= record.block.size(), i,
                  QStringLiteral("announces a list that is longer than the file"));
    }
}
