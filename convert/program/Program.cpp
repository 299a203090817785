#include "convert/program/Program.h"

#include "convert/Deadline.h"
#include "convert/chemistry/StartChemistry.h"
#include "convert/program/InfoText.h"
#include "convert/program/Inputs.h"
#include "convert/program/Messages.h"
#include "convert/program/RecordStream.h"

#include <QFile>

#include <csignal>
#include <cstdio>
#include <new>

namespace {

constexpr int success = 0;
constexpr int faultsFound = 1;
constexpr int recordsFailed = 1; // and were skipped
constexpr int badInput = 2;

void print(FILE* stream, const QString& text)
{
    std::fputs(text.toUtf8().constData(), stream);
}

/// Opens the output of a conversion: one file per molecule, or one for all.
std::unique_ptr<Output> outputOf(const Options& options)
{
    return isNumbered(options.output) ? openNumberedOutput(options.output) : openOutput(options.output);
}

/// The exit status after a conversion, of which `shown` names the output. Nothing was written if it is badInput.
int statusOf(const Tally& tally, const Options& options, const QString& shown)
{
    if (tally.failures == 0)
        return success;
    const QString count = QStringLiteral("%1 of %2 records failed").arg(tally.failures).arg(tally.records);
    if (options.skipErrors)
        printError(count + QStringLiteral(" and were skipped"));
    else if (tally.failures > 1 && !shown.isEmpty())
        printError(QStringLiteral("%1: not written, since %2 (--skip-errors omits them)").arg(shown, count));
    return options.skipErrors ? recordsFailed : badInput;
}

QString shownOutput(const Options& options)
{
    return options.output == QLatin1String("-") ? QString() : options.output;
}

/// Converts record by record.
int convertSequence(const Options& options, Notes& notes)
{
    const std::unique_ptr<Output> output = outputOf(options);
    const Tally tally = convertRecords(options, *output, notes);
    const int status = statusOf(tally, options, shownOutput(options));
    if (status != badInput)
        output->commit();
    return status;
}

/// Reads all inputs into `sketches`. Returns the exit status after that; nothing must be written if it is badInput.
int readSketches(const Options& options, std::vector<Sketch>& sketches, Notes& notes)
{
    Tally tally;
    for (auto& [file, sketch] : readInputs(options, tally, notes))
        sketches.push_back(std::move(sketch));
    const int status = statusOf(tally, options, shownOutput(options));
    if (status != badInput && sketches.empty())
        throw ConversionError(QStringLiteral("no record could be read"));
    return status;
}

/// Converts all inputs to one drawing.
int convertDrawing(const Options& options, Notes& notes)
{
    std::vector<Sketch> sketches;
    const int status = readSketches(options, sketches, notes);
    if (status != badInput)
        writeAll(options.output, writeSketches(std::move(sketches), *options.to, options.style, notes));
    return status;
}

/// Sets all inputs as a sheet, with a numbered file for each page.
int convertSheet(const Options& options, Notes& notes)
{
    std::vector<Sketch> sketches;
    const int status = readSketches(options, sketches, notes);
    if (status == badInput)
        return status;
    const std::unique_ptr<Output> output = openNumberedOutput(options.output);
    for (const QByteArray& page : options.to->writePages(sketches, options.style.picture))
        output->write(page);
    output->commit();
    return status;
}

int convert(const Options& options, Notes& notes)
{
    if (isNumbered(options.output) && options.style.picture.columns > 0 && options.to->writePages)
        return convertSheet(options, notes);
    return options.to->isSequence || isNumbered(options.output) ? convertSequence(options, notes)
                                                                : convertDrawing(options, notes);
}

/// Prints the faults of all inputs. Returns true if there are none.
bool checkAll(const Options& options)
{
    bool valid = true;
    const auto report = [&](const QString& fault) {
        valid = false;
        print(stdout, fault + u'\n');
    };
    const auto check = [&](const Record& record, const Format& format, const QString& name) {
        for (const QString& fault : faultsOf(record, format, name))
            report(fault);
    };
    forEachRecord(options, check, report);
    return valid;
}

int printInfo(const Options& options, Notes& notes)
{
    std::vector<InfoEntry> entries;
    Tally tally;
    for (const auto& [file, sketch] : readInputs(options, tally, notes))
        for (const SketchMolecule& molecule : sketch.molecules)
            entries.push_back({file, infoOf(molecule)});
    const int status = statusOf(tally, options, QString());
    if (status != badInput)
        writeAll(QStringLiteral("-"), options.json ? infoJson(entries) : infoTable(entries));
    return status;
}

int perform(const Options& options)
{
    startChemistry();
    Deadline::setLimit(options.timeLimit);
    Notes notes;
    int status = success;
    if (options.task == Options::Task::Check) {
        status = checkAll(options) ? success : faultsFound;
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
            throw ConversionError(QStringLiteral("standard output: cannot be written"));
    } else if (options.task == Options::Task::Info) {
        status = printInfo(options, notes);
    } else {
        status = convert(options, notes);
    }
    if (status == badInput)
        return status;
    const QStringList details = options.verbose ? notes.detailLines() : QStringList();
    for (const QString& line : notes.lines() + details)
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
    } catch (const Terminated& terminated) {
        std::raise(terminated.signal);
    } catch (const std::bad_alloc&) {
        printError(QStringLiteral("not enough memory for this input"));
    } catch (const ConversionError& fault) {
        printError(fault.text());
    } catch (const std::exception& fault) {
        printError(QStringLiteral("RDKit error: ") + QString::fromUtf8(fault.what()).simplified());
    }
    return badInput;
}
