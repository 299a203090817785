#include "convert/formats/SdRecords.h"

#include "convert/Notes.h"
#include "convert/chemistry/Symbols.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace {

const QByteArray v30 = "M  V30 ";
const QByteArray anyAtom = "*";
constexpr qsizetype countsLine = 3; // index in a molfile

bool isBlank(const QByteArray& line)
{
    return line.trimmed().isEmpty();
}

/// The name in the header line of a property: the text between "<" and ">".
QString propertyName(const QByteArray& line)
{
    const qsizetype from = line.indexOf('<') + 1;
    const qsizetype to = line.lastIndexOf('>');
    return from > 0 && to > from ? QString::fromUtf8(line.sliced(from, to - from)) : QString();
}

/// Follows the lines of a record to its end.
class RecordParser {
public:
    explicit RecordParser(int firstLine) { record.firstLine = firstLine; }

    /// Adds the next line. Returns whether it ends the record.
    bool addLine(const QByteArray& line)
    {
        if (line.startsWith(endOfRecord) && !isAlias)
            return true;
        if (inBlock) {
            addBlockLine(line);
        } else if (line.startsWith('>')) {
            record.data.emplace_back(propertyName(line), QString());
            inProperty = true;
        } else if (isBlank(line)) {
            inProperty = false;
        } else if (inProperty) {
            QString& text = record.data.back().second;
            text += (text.isEmpty() ? QString() : QStringLiteral("\n")) + QString::fromUtf8(line);
        }
        return false;
    }

    SdRecord record;

private:
    void addBlockLine(const QByteArray& line)
    {
        record.block += line + '\n';
        inBlock = !line.startsWith("M  END");
        // The line after an alias header is the alias, even if it is "$$$$".
        isAlias = !isAlias && line.startsWith("A  ") && !isBlank(line.mid(3));
    }

    bool inBlock = true;
    bool inProperty = false;
    bool isAlias = false;
};

QString drawingOf(const SdRecord& record)
{
    for (const auto& [name, text] : record.data)
        if (name == QLatin1String(drawingProperty))
            return text;
    return QString();
}

/// Takes the records of an SD file. Consecutive ones of the same drawing are one.
class SdReader : public RecordReader {
public:
    using RecordReader::RecordReader;

    std::optional<Record> next() override
    {
        Part part = ahead ? std::move(*std::exchange(ahead, std::nullopt)) : take();
        if (part.record.text.isEmpty()) {
            if (isEmpty)
                throw ConversionError(lines.fileName() + QStringLiteral(": contains no molfile"));
            return std::nullopt;
        }
        isEmpty = false;
        while (!part.drawing.isEmpty()) {
            ahead = take();
            if (ahead->drawing != part.drawing || part.record.text.size() + ahead->record.text.size() > maxRecordSize)
                break;
            part.record.text += ahead->record.text;
            ahead.reset();
        }
        return std::move(part.record);
    }

private:
    struct Part {
        Record record; ///< with an empty text at the end of the file
        QString drawing;
    };

    /// The next record that is not blank.
    Part take()
    {
        for (bool more = true; more;) {
            Part part;
            part.record.line = lines.number() + 1;
            RecordParser parser(part.record.line);
            QByteArray line;
            for (bool ended = false; !ended && (more = lines.next(line));) {
                ended = parser.addLine(line);
                if (part.record.fault.isEmpty())
                    part.record.text += line + '\n';
                if (part.record.text.size() > maxRecordSize) { // goes on with the next record
                    part.record.fault = QStringLiteral("record larger than %1 bytes").arg(maxRecordSize);
                    part.record.text.truncate(1);
                    parser.record = SdRecord{part.record.line, "-", {}};
                }
            }
            if (!isBlank(parser.record.block)) {
                part.drawing = part.record.fault.isEmpty() ? drawingOf(parser.record) : QString();
                return part;
            }
        }
        return {};
    }

    std::optional<Part> ahead;
    bool isEmpty = true;
};

/// The number at the start of `text`, or -1.
qint64 leadingNumber(const QByteArray& text)
{
    qsizetype digits = 0;
    while (digits < text.size() && digits < 18 && text[digits] >= '0' && text[digits] <= '9')
        ++digits;
    return digits > 0 ? text.left(digits).toLongLong() : -1;
}

/// Collects the faults of a record, each as "line 5 what is wrong".
class FaultList {
public:
    void check(bool holds, qsizetype line, const QString& what)
    {
        if (!holds)
            texts.append(QStringLiteral("line %1 %2").arg(line + 1).arg(what));
    }

    QStringList texts;
};

/// Checks the bonds of one connection table, one after the other.
class BondCheck {
public:
    BondCheck(std::set<qint64> atoms, FaultList& faults)
        : atoms(std::move(atoms))
        , faults(faults)
    {
    }

    void add(qint64 from, qint64 to, qsizetype line)
    {
        for (const qint64 end : {from, to})
            faults.check(atoms.contains(end), line, QStringLiteral("bond refers to non-existent atom %1").arg(end));
        faults.check(from != to, line, QStringLiteral("bond from atom %1 to itself").arg(from));
        faults.check(bonds.insert(std::minmax(from, to)).second, line,
                     QStringLiteral("duplicate bond between atoms %1 and %2").arg(from).arg(to));
    }

private:
    std::set<qint64> atoms;
    std::set<std::pair<qint64, qint64>> bonds;
    FaultList& faults;
};

/// The number in the three columns from `column` of a V2000 line, if there is one.
std::optional<qint64> columnNumber(const QByteArray& line, int column)
{
    bool isNumber = false;
    const qint64 number = line.mid(column, 3).trimmed().toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

void checkV2000Bonds(const QList<QByteArray>& lines, FaultList& faults)
{
    if (lines.size() <= countsLine || lines[countsLine].contains("V3000"))
        return;
    const auto atomCount = columnNumber(lines[countsLine], 0);
    const auto bondCount = columnNumber(lines[countsLine], 3);
    if (!atomCount || !bondCount)
        return;
    // The parser reports these counts.
    if (*atomCount < 0 || *bondCount < 0 || countsLine + *atomCount + *bondCount >= lines.size())
        return;
    std::set<qint64> atoms;
    for (qint64 atom = 1; atom <= *atomCount; ++atom)
        atoms.insert(atoms.end(), atom);
    BondCheck bonds(std::move(atoms), faults);
    const qsizetype first = countsLine + 1 + *atomCount;
    for (qsizetype i = first; i < first + *bondCount; ++i) {
        const auto from = columnNumber(lines[i], 0);
        const auto to = columnNumber(lines[i], 3);
        if (from && to)
            bonds.add(*from, *to, i);
    }
}

/// The contents of the V3000 line at `i` and of its continuation lines; advances `i` to the last of them.
QByteArray joinedV3000Line(const QList<QByteArray>& lines, qsizetype& i)
{
    QByteArray text = lines[i].mid(v30.size()).trimmed();
    while (text.endsWith('-') && i + 1 < lines.size() && lines[i + 1].startsWith(v30)) {
        text.chop(1);
        text += lines[++i].mid(v30.size()).trimmed();
    }
    return text;
}

enum class Section { Atoms, Bonds, Other };

Section sectionNamed(const QByteArray& name)
{
    if (name == "ATOM")
        return Section::Atoms;
    return name == "BOND" ? Section::Bonds : Section::Other;
}

void checkV3000Bonds(const QList<QByteArray>& lines, FaultList& faults)
{
    Section section = Section::Other;
    std::set<qint64> atoms;
    std::optional<BondCheck> bonds;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (!lines[i].startsWith(v30))
            continue;
        const qsizetype first = i;
        const QList<QByteArray> words = joinedV3000Line(lines, i).simplified().split(' ');
        if (words.size() > 1 && words[0] == "BEGIN") {
            section = sectionNamed(words[1]);
            if (section == Section::Atoms)
                atoms.clear();
            if (section == Section::Bonds)
                bonds.emplace(atoms, faults);
        } else if (words[0] == "END") {
            section = Section::Other;
        } else if (section == Section::Atoms) {
            atoms.insert(leadingNumber(words[0]));
        } else if (section == Section::Bonds && words.size() >= 4) {
            const qint64 from = leadingNumber(words[2]);
            const qint64 to = leadingNumber(words[3]);
            if (from >= 0 && to >= 0) // the parser reports invalid numbers
                bonds->add(from, to, first);
        }
    }
}

/// Replaces the symbol of a V2000 atom line with "any atom" if it is `symbol`. Returns whether it was.
bool replaceInV2000(QByteArray& line, const QByteArray& symbol)
{
    constexpr qsizetype column = 31;
    constexpr qsizetype width = 3;
    if (line.mid(column, width).trimmed() != symbol)
        return false;
    line.replace(column, width, anyAtom.leftJustified(width));
    return true;
}

/// Replaces the symbol of a V3000 atom line with "any atom" if it is `symbol`. Returns whether it was.
bool replaceInV3000(QByteArray& line, const QByteArray& symbol)
{
    QList<QByteArray> words = line.mid(v30.size()).simplified().split(' ');
    if (words.value(1) != symbol)
        return false;
    words[1] = anyAtom;
    line = v30 + words.join(' ');
    return true;
}

} // namespace

std::vector<SdRecord> splitRecords(const QByteArray& text, int firstLine)
{
    std::vector<SdRecord> records;
    MemorySource source(text);
    LineReader lines(source, QString());
    QByteArray line;
    for (bool more = true; more;) {
        RecordParser parser(firstLine + lines.number());
        while ((more = lines.next(line)) && !parser.addLine(line)) { }
        if (!isBlank(parser.record.block))
            records.push_back(std::move(parser.record));
    }
    return records;
}

std::unique_ptr<RecordReader> sdRecords(LineReader& lines, const InputStyle&)
{
    return std::make_unique<SdReader>(lines);
}

std::vector<unsigned> replaceSymbol(QByteArray& block, const QByteArray& symbol)
{
    QList<QByteArray> lines = block.split('\n');
    const bool isV3000 = lines.value(countsLine).contains("V3000");
    qsizetype first = countsLine + 1;
    qsizetype end = first + columnNumber(lines.value(countsLine), 0).value_or(0);
    if (isV3000) {
        first = std::max<qsizetype>(1, lines.indexOf(v30 + "BEGIN ATOM") + 1);
        end = lines.indexOf(v30 + "END ATOM");
    }
    std::vector<unsigned> replaced;
    unsigned atom = 0;
    for (qsizetype i = first; i < std::min(end, lines.size()); ++i) {
        if (isV3000 && lines[i - 1].trimmed().endsWith('-'))
            continue;
        if (isV3000 ? replaceInV3000(lines[i], symbol) : replaceInV2000(lines[i], symbol))
            replaced.push_back(atom);
        ++atom;
    }
    block = lines.join('\n');
    return replaced;
}

QStringList recordFaults(const SdRecord& record)
{
    FaultList faults;
    const QList<QByteArray> lines = record.block.split('\n');
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QByteArray& line = lines[i];
        if (!line.startsWith(v30))
            continue;
        const QByteArray rest = line.mid(v30.size()).trimmed();
        if (rest.startsWith("COUNTS")) {
            for (const QByteArray& word : rest.mid(6).simplified().split(' '))
                faults.check(leadingNumber(word) <= lines.size(), i,
                             QStringLiteral("declared count exceeds the number of lines"));
        }
        // A list such as "ATOMS=(2 1 5)" starts with its length.
        for (qsizetype at = rest.indexOf('('); at >= 0; at = rest.indexOf('(', at + 1))
            faults.check(leadingNumber(rest.mid(at + 1, 20).trimmed()) <= record.block.size(), i,
                         QStringLiteral("declared list length exceeds the record size"));
    }
    checkV2000Bonds(lines, faults);
    checkV3000Bonds(lines, faults);
    return faults.texts;
}
