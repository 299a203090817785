#include "convert/formats/Table.h"

#include "convert/Notes.h"

#include <algorithm>

namespace {

constexpr qsizetype none = -1;
constexpr qsizetype maxColumns = 4096;
constexpr qsizetype maxRowSize = LineReader::maxLength; // bytes

/// Whether a heading is that of SMILES, such as "SMILES" or "canonical_smiles".
bool isSmilesHeading(const QString& heading)
{
    return heading.contains(QLatin1String("smiles"), Qt::CaseInsensitive)
        || heading.compare(QLatin1String("smi"), Qt::CaseInsensitive) == 0;
}

/// Whether a heading is that of names or identifiers, such as "Name", "ID" or "compound_id".
bool isNameHeading(const QString& heading)
{
    static const QStringList words = {"name", "id", "identifier", "title", "compound", "molecule"};
    const QString plain = heading.toLower();
    return words.contains(plain) || plain.endsWith(QLatin1String("_id")) || plain.endsWith(QLatin1String(" id"))
        || plain.endsWith(QLatin1String("_name")) || plain.endsWith(QLatin1String(" name"));
}

/// The columns that `matches` holds for.
template <typename Matches> QList<qsizetype> columnsWhere(const QStringList& header, Matches matches)
{
    QList<qsizetype> columns;
    for (qsizetype i = 0; i < header.size(); ++i)
        if (matches(header[i]))
            columns.append(i);
    return columns;
}

/// The column with this heading, or with this number.
qsizetype columnNamed(const QStringList& header, const QString& named)
{
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const auto same =
            columnsWhere(header, [&](const QString& heading) { return heading.compare(named, sensitivity) == 0; });
        if (same.size() == 1)
            return same.front();
        if (same.size() > 1)
            throw ConversionError(QStringLiteral("several columns \"%1\": use the number of the column").arg(named));
    }
    bool isNumber = false;
    const int number = named.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= header.size())
        return number - 1;
    throw ConversionError(
        QStringLiteral("no column \"%1\": the header has %2").arg(named, header.join(QStringLiteral(", ")).left(200)));
}

/// What a property's header in an SD file can hold of a heading.
QString propertyName(const QString& heading, qsizetype column)
{
    QString name = heading.simplified();
    name.remove(u'<').remove(u'>');
    return name.isEmpty() ? QStringLiteral("column %1").arg(column + 1) : name;
}

class TableReader : public RecordReader {
public:
    TableReader(LineReader& lines, InputStyle style, QChar separator)
        : RecordReader(lines)
        , style(std::move(style))
        , separator(separator)
    {
    }

    std::optional<Record> next() override
    {
        if (header.isEmpty())
            readHeader();
        while (readRow()) {
            if (fault.isEmpty() && std::all_of(row.begin(), row.end(), [](const QString& f) { return f.isEmpty(); }))
                continue;
            isEmpty = false;
            return recordOfRow();
        }
        if (isEmpty)
            throw ConversionError(lines.fileName() + QStringLiteral(": contains no rows below its header"));
        return std::nullopt;
    }

private:
    void readHeader()
    {
        QByteArray first;
        if (!lines.next(first))
            throw ConversionError(lines.fileName() + QStringLiteral(": contains no header"));
        if (separator == u',' && !first.contains(',') && first.contains(';'))
            separator = u';';
        const bool isWhole = parseRow(first);
        try {
            if (!isWhole)
                throw ConversionError(fault);
            header = row;
            smiles = smilesColumn(header, style.smilesColumn);
            name = nameColumn(header, style.nameColumn);
        } catch (const ConversionError& error) {
            throw ConversionError(QStringLiteral("%1:%2: %3").arg(lines.fileName()).arg(rowLine).arg(error.text()));
        }
    }

    bool readRow()
    {
        QByteArray line;
        if (!lines.next(line))
            return false;
        parseRow(line);
        return true;
    }

    /// Parses the row that starts with `bytes`, and reads the lines that its quoted fields extend over. Returns false,
    /// and sets `fault`, if its quotes are misplaced.
    bool parseRow(const QByteArray& bytes)
    {
        rowLine = lines.number();
        rowSize = bytes.size();
        row.clear();
        fault.clear();
        line = QString::fromUtf8(bytes);
        at = 0;
        do {
            const bool isQuoted = at < line.size() && line[at] == u'"';
            if (isQuoted ? !parseQuoted() : !parsePlain())
                return false;
            if (row.size() > maxColumns)
                return failRow(QStringLiteral("more than %1 fields").arg(maxColumns));
        } while (at++ < line.size());
        return true;
    }

    bool parsePlain()
    {
        const qsizetype found = line.indexOf(separator, at);
        const qsizetype stop = found < 0 ? line.size() : found;
        row.append(line.mid(at, stop - at).trimmed());
        at = stop;
        return true;
    }

    bool parseQuoted()
    {
        QString field;
        ++at;
        for (bool isOpen = true; isOpen;) {
            const qsizetype quote = line.indexOf(u'"', at);
            field += line.mid(at, quote < 0 ? -1 : quote - at);
            if (quote < 0) {
                field += u'\n';
                if (!continueInNextLine())
                    return failRow(QStringLiteral("quoted field without its closing quote"));
            } else if (quote + 1 < line.size() && line[quote + 1] == u'"') {
                field += u'"';
                at = quote + 2;
            } else {
                at = quote + 1;
                isOpen = false;
            }
        }
        if (at < line.size() && line[at] != separator)
            return failRow(QStringLiteral("text after the closing quote of a field"));
        row.append(field.trimmed());
        return true;
    }

    bool continueInNextLine()
    {
        QByteArray bytes;
        if (rowSize > maxRowSize || !lines.next(bytes))
            return false;
        rowSize += bytes.size();
        line = QString::fromUtf8(bytes);
        at = 0;
        return true;
    }

    bool failRow(const QString& reason)
    {
        fault = reason;
        return false;
    }

    Record recordOfRow()
    {
        Record record;
        record.line = rowLine;
        record.fault = fault;
        if (fault.isEmpty() && row.size() != header.size())
            record.fault =
                QStringLiteral("row has %1 fields, but the header has %2").arg(row.size()).arg(header.size());
        if (!record.fault.isEmpty())
            return record;
        record.text = row[smiles].toUtf8();
        if (name != none)
            record.name = row[name].simplified();
        for (qsizetype i = 0; i < row.size(); ++i)
            if (i != smiles && i != name && !row[i].isEmpty())
                record.data.emplace_back(propertyName(header[i], i), row[i]);
        return record;
    }

    InputStyle style;
    QChar separator;
    QStringList header;
    qsizetype smiles = none;
    qsizetype name = none;
    bool isEmpty = true;

    // Of the row that is being read, or was read last.
    QStringList row;
    QString fault;
    int rowLine = 1;
    qsizetype rowSize = 0; ///< bytes
    QString line;          ///< its line that is being parsed
    qsizetype at = 0;      ///< in that line
};

} // namespace

std::unique_ptr<RecordReader> csvRecords(LineReader& lines, const InputStyle& style)
{
    return std::make_unique<TableReader>(lines, style, u',');
}

std::unique_ptr<RecordReader> tsvRecords(LineReader& lines, const InputStyle& style)
{
    return std::make_unique<TableReader>(lines, style, u'\t');
}

qsizetype smilesColumn(const QStringList& header, const QString& named)
{
    if (!named.isEmpty())
        return columnNamed(header, named);
    const QList<qsizetype> candidates = columnsWhere(header, isSmilesHeading);
    if (candidates.size() == 1)
        return candidates.front();
    QStringList headings;
    for (const qsizetype column : candidates)
        headings.append(header[column]);
    throw ConversionError(candidates.isEmpty() ? QStringLiteral("no column of SMILES in the header (%1): use "
                                                                "--smiles-column")
                                                     .arg(header.join(QStringLiteral(", ")).left(200))
                                               : QStringLiteral("several columns of SMILES (%1): use --smiles-column")
                                                     .arg(headings.join(QStringLiteral(", ")).left(200)));
}

qsizetype nameColumn(const QStringList& header, const QString& named)
{
    if (!named.isEmpty())
        return columnNamed(header, named);
    const QList<qsizetype> candidates = columnsWhere(header, isNameHeading);
    return candidates.size() == 1 ? candidates.front() : none;
}
