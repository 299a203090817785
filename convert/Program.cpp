#include "convert/Program.h"

#include "convert/Chemistry.h"
#include "convert/Files.h"
#include "convert/InfoText.h"
#include "convert/Options.h"
#include "convert/WorkspaceCheck.h"

#include <QFile>
#include <QRegularExpression>

#include <cstdio>
#include <new>

namespace {

constexpr int success = 0;
constexpr int faultsFound = 1;
constexpr int badInput = 2;

void say(FILE* stream, const QString& text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

void complain(const QString& text)
{
    say(stderr, QStringLiteral("kytconvert: %1\n").arg(text));
}

Format inputFormat(const Options& options, const QString& fileName)
{
    if (options.from)
        return *options.from;
    const std::optional<Format> format = formatOfFile(fileName);
    if (!format)
        throw ConversionError(QStringLiteral("%1: its ending says no format; take --from").arg(shownName(fileName)));
    return *format;
}

std::vector<Sketch> readInput(const Options& options, const QString& fileName, Notes& notes)
{
    const Format format = inputFormat(options, fileName);
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

/// The name of the file with this number: "%d" in `pattern`, or "%03d" for three digits, becomes the number.
QString numberedName(QString pattern, const QRegularExpressionMatch& place, int number)
{
    const int digits = place.captured(1).toInt();
    return pattern.replace(place.capturedStart(), place.capturedLength(),
                           QStringLiteral("%1").arg(number, digits, 10, QLatin1Char('0')));
}

/// A sketch for each molecule.
std::vector<Sketch> eachAlone(std::vector<Sketch> sketches)
{
    std::vector<Sketch> alone;
    for (Sketch& sketch : sketches) {
        for (SketchMolecule& molecule : sketch.molecules) {
            Sketch one;
            one.molecules.push_back(std::move(molecule));
            one.placed = sketch.placed;
            one.laidOut = sketch.laidOut;
            alone.push_back(std::move(one));
        }
    }
    return alone;
}

void convert(const Options& options, Notes& notes)
{
    static const QRegularExpression number(QStringLiteral("%(?:0([1-9]))?d"));
    std::vector<Sketch> sketches = readInputs(options, notes);
    const QRegularExpressionMatch place = number.match(options.output);
    if (!place.hasMatch()) {
        writeAll(options.output, writeSketches(std::move(sketches), options.to, options.style, notes));
        return;
    }
    // Nothing is written before all of it is known to be possible.
    std::vector<QByteArray> files;
    std::vector<Sketch> alone = eachAlone(std::move(sketches));
    files.reserve(alone.size());
    for (Sketch& sketch : alone)
        files.push_back(writeSketches({std::move(sketch)}, options.to, options.style, notes));
    int count = 0;
    for (const QByteArray& contents : files)
        writeAll(numberedName(options.output, place, ++count), contents);
}

/// Whether the file is sound; says what is not.
bool check(const Options& options, const QString& fileName)
{
    const Format format = inputFormat(options, fileName);
    const QByteArray text = readAll(fileName);
    if (format == Format::Workspace) {
        const std::vector<PlacedFault> faults = checkWorkspace(text);
        for (const PlacedFault& fault : faults)
            say(stdout,
                QStringLiteral("%1:%2:%3: %4\n")
                    .arg(shownName(fileName))
                    .arg(fault.line)
                    .arg(fault.column)
                    .arg(fault.text));
        return faults.empty();
    }
    try {
        Notes ignored;
        readSketches(text, format, shownName(fileName), ignored);
        return true;
    } catch (const ConversionError& fault) {
        say(stdout, fault.text() + u'\n');
        return false;
    }
}

bool checkAll(const Options& options)
{
    bool sound = true;
    for (const QString& fileName : options.inputs)
        sound = check(options, fileName) && sound;
    return sound;
}

void tell(const Options& options, Notes& notes)
{
    std::vector<ToldMolecule> told;
    for (const QString& fileName : options.inputs)
        for (const Sketch& sketch : readInput(options, fileName, notes))
            for (const SketchMolecule& molecule : sketch.molecules)
                told.push_back({shownName(fileName), infoOf(molecule)});
    writeAll(QStringLiteral("-"), options.json ? infoJson(told) : infoTable(told));
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
        tell(options, notes);
    } else {
        convert(options, notes);
    }
    for (const QString& line : notes.lines())
        complain(QStringLiteral("warning: ") + line);
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
            say(stdout, helpText());
        else if (options.task == Options::Task::Version)
            say(stdout, QStringLiteral("kytconvert " KYTCONVERT_VERSION "\n"));
        else
            return std::nullopt;
        return success;
    } catch (const ConversionError& fault) {
        complain(fault.text());
        return badInput;
    }
}

int run(const QStringList& arguments)
{
    try {
        return perform(parseOptions(arguments));
    } catch (const std::bad_alloc&) {
        complain(QStringLiteral("there is not enough memory for this input"));
    } catch (const ConversionError& fault) {
        complain(fault.text());
    } catch (const std::exception& fault) {
        complain(QStringLiteral("the chemistry library refuses: ") + QString::fromUtf8(fault.what()).simplified());
    }
    return badInput;
}
