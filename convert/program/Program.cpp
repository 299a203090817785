#include "convert/program/Program.h"

#include "convert/chemistry/StartChemistry.h"
#include "convert/program/Files.h"
#include "convert/program/InfoText.h"
#include "convert/program/Options.h"

#include <QFile>
#include <QRegularExpression>

#include <cstdio>
#include <new>

namespace {

constexpr int success = 0;
constexpr int faultsFound = 1;
constexpr int badInput = 2;

void print(FILE* stream, const QString& text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

void printError(const QString& text)
{
    print(stderr, QStringLiteral("kytconvert: %1\n").arg(text));
}

const Format& inputFormat(const Options& options, const QString& fileName)
{
    if (options.from)
        return *options.from;
    const Format* format = formatOfFile(fileName);
    if (!format)
        throw ConversionError(
            QStringLiteral("%1: unknown format: use a file extension or --from").arg(shownName(fileName)));
    return *format;
}

std::vector<Sketch> readInput(const Options& options, const QString& fileName, Notes& notes)
{
    const Format& format = inputFormat(options, fileName);
    return readSketches(readAll(fileName), format, shownName(fileName), notes);
}

std::vector<Sketch> readInputs(const Options& options, Notes& notes)
{
    std::vector<Sketch> all;
    for (const QString& fileName : options.inputs) {
        std::vector<Sketch> sketches = readInput(options, fileName, notes);
        std::move(sketches.begin(), sketches.end(), std::back_inserter(all));
    }
    return all;
}

/// Replaces the placeholder in `pattern` ("%d", or "%03d" for three digits) with `number`.
QString numberedName(QString pattern, const QRegularExpressionMatch& placeholder, int number)
{
    const int digits = placeholder.captured(1).toInt();
    return pattern.replace(placeholder.capturedStart(), placeholder.capturedLength(),
                           QStringLiteral("%1").arg(number, digits, 10, QLatin1Char('0')));
}

/// Splits the sketches into one sketch per molecule.
std::vector<Sketch> splitByMolecule(std::vector<Sketch> sketches)
{
    std::vector<Sketch> split;
    for (Sketch& sketch : sketches) {
        for (SketchMolecule& molecule : sketch.molecules) {
            Sketch single;
            single.molecules.push_back(std::move(molecule));
            single.placed = sketch.placed;
            single.laidOut = sketch.laidOut;
            split.push_back(std::move(single));
        }
    }
    return split;
}

void convert(const Options& options, Notes& notes)
{
    static const QRegularExpression numberPattern(QStringLiteral("%(?:0([1-9]))?d"));
    std::vector<Sketch> sketches = readInputs(options, notes);
    const QRegularExpressionMatch placeholder = numberPattern.match(options.output);
    if (!placeholder.hasMatch()) {
        writeAll(options.output, writeSketches(std::move(sketches), *options.to, options.style, notes));
        return;
    }
    // All files are generated before the first one is written, so that an error leaves none.
    std::vector<QByteArray> files;
    if (options.style.picture.columns > 0 && options.to->writePages) {
        files = options.to->writePages(sketches, options.style.picture);
    } else {
        std::vector<Sketch> molecules = splitByMolecule(std::move(sketches));
        files.reserve(molecules.size());
        for (Sketch& sketch : molecules)
            files.push_back(writeSketches({std::move(sketch)}, *options.to, options.style, notes));
    }
    std::vector<std::pair<QString, QByteArray>> named;
    named.reserve(files.size());
    for (QByteArray& contents : files)
        named.emplace_back(numberedName(options.output, placeholder, static_cast<int>(named.size()) + 1),
                           std::move(contents));
    writeFiles(named);
}

/// Prints the faults of a file. Returns true if there are none.
bool checkFile(const Options& options, const QString& fileName)
{
    const Format& format = inputFormat(options, fileName);
    const QStringList faults = faultsOf(readAll(fileName), format, shownName(fileName));
    for (const QString& fault : faults)
        print(stdout, fault + u'\n');
    return faults.isEmpty();
}

bool checkAll(const Options& options)
{
    bool valid = true;
    for (const QString& fileName : options.inputs)
        valid = checkFile(options, fileName) && valid;
    return valid;
}

void printInfo(const Options& options, Notes& notes)
{
    std::vector<InfoEntry> entries;
    for (const QString& fileName : options.inputs)
        for (const Sketch& sketch : readInput(options, fileName, notes))
            for (const SketchMolecule& molecule : sketch.molecules)
                entries.push_back({shownName(fileName), infoOf(molecule)});
    writeAll(QStringLiteral("-"), options.json ? infoJson(entries) : infoTable(entries));
}

int perform(const Options& options)
{
    startChemistry();
    Notes notes;
    int status = success;
    if (options.task == Options::Task::Check) {
        status = checkAll(options) ? success : faultsFound;
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
            throw ConversionError(QStringLiteral("standard output: cannot be written"));
    } else if (options.task == Options::Task::Info) {
        printInfo(options, notes);
    } else {
        convert(options, notes);
    }
    for (const QString& line : notes.lines())
        printError(QStringLiteral("warning: ") + line);
    return status;
}

} // namespace

QStringList argumentsOf(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

std::optional<int> answerAtOnce(const QStringList& arguments)
{
    try {
        const Options options = parseOptions(arguments);
        if (options.task == Options::Task::Help)
            print(stdout, helpText());
        else if (options.task == Options::Task::Version)
            print(stdout, QStringLiteral("kytconvert " KYTCONVERT_VERSION "\n"));
        else
            return std::nullopt;
        return success;
    } catch (const ConversionError& fault) {
        printError(fault.text());
        return badInput;
    }
}

int run(const QStringList& arguments)
{
    try {
        return perform(parseOptions(arguments));
    } catch (const std::bad_alloc&) {
        printError(QStringLiteral("not enough memory for this input"));
    } catch (const ConversionError& fault) {
        printError(fault.text());
    } catch (const std::exception& fault) {
        printError(QStringLiteral("RDKit error: ") + QString::fromUtf8(fault.what()).simplified());
    }
    return badInput;
}
