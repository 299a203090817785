#include "convert/program/RecordStream.h"

#include "convert/Deadline.h"
#include "convert/program/Inputs.h"
#include "convert/program/Messages.h"
#include "convert/program/Progress.h"
#include "convert/program/Workers.h"

#include <QDataStream>
#include <QIODevice>

#include <csignal>
#include <new>

namespace {

constexpr int longestWait = 200; // milliseconds, so that the progress line keeps moving

volatile std::sig_atomic_t receivedSignal = 0;

void noteSignal(int signal)
{
    receivedSignal = signal;
}

/// Ends the program by a termination signal only where the object is destroyed, so that no temporary file remains.
class DelayedTermination {
public:
    DelayedTermination()
    {
        struct sigaction action = {};
        action.sa_handler = noteSignal; // without SA_RESTART, so that waiting ends
        for (std::size_t i = 0; i < std::size(handled); ++i) {
            sigaction(handled[i], &action, &before[i]);
            if (before[i].sa_handler == SIG_IGN) // as by nohup
                sigaction(handled[i], &before[i], nullptr);
        }
    }

    ~DelayedTermination()
    {
        for (std::size_t i = 0; i < std::size(handled); ++i)
            sigaction(handled[i], &before[i], nullptr);
    }

    DelayedTermination(const DelayedTermination&) = delete;
    DelayedTermination& operator=(const DelayedTermination&) = delete;

private:
    static constexpr int handled[] = {SIGINT, SIGTERM, SIGHUP};
    struct sigaction before[std::size(handled)] = {};
};

/// The work of a worker: a record and its number, from 1.
struct Task {
    InputRecord from;
    qint32 number = 0;
    QString error; ///< why the rest of an input could not be read, instead of a record; a whole message
};

/// What becomes of a record.
struct Converted {
    QList<QByteArray> texts; ///< one, or one per molecule for numbered outputs
    Notes notes;
    QString fault; ///< a whole message; empty if the record was converted
};

QByteArray packed(const Task& task)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    const Record& record = task.from.record;
    stream << static_cast<quint64>(task.from.input) << task.number << task.error << record.line << record.text
           << record.name << record.fault << QList<std::pair<QString, QString>>(record.data.begin(), record.data.end());
    return bytes;
}

Task unpackedTask(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    Task task;
    quint64 input = 0;
    QList<std::pair<QString, QString>> data;
    Record& record = task.from.record;
    stream >> input >> task.number >> task.error >> record.line >> record.text >> record.name >> record.fault >> data;
    task.from.input = input;
    record.data.assign(data.begin(), data.end());
    return task;
}

void packCounts(QDataStream& stream, const Notes::Counts& counts)
{
    stream << static_cast<qint32>(counts.size());
    for (const auto& [kind, count] : counts)
        stream << kind << static_cast<qint64>(count);
}

Notes::Counts unpackedCounts(QDataStream& stream)
{
    Notes::Counts counts;
    qint32 size = 0;
    stream >> size;
    for (qint32 i = 0; i < size; ++i) {
        QString kind;
        qint64 count = 0;
        stream >> kind >> count;
        counts.emplace_back(kind, count);
    }
    return counts;
}

QByteArray packed(Converted converted)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << converted.texts << converted.fault << converted.notes.takeMolecules();
    packCounts(stream, converted.notes.entries());
    packCounts(stream, converted.notes.detailEntries());
    return bytes;
}

Converted unpackedResult(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    Converted converted;
    QStringList molecules;
    stream >> converted.texts >> converted.fault >> molecules;
    for (const QString& text : molecules)
        converted.notes.addMolecule(text);
    for (const auto& [kind, count] : unpackedCounts(stream))
        converted.notes.add(kind, count);
    for (const auto& [kind, count] : unpackedCounts(stream))
        converted.notes.addDetail(kind, count);
    return converted;
}

/// Writes the sketches of a record. The message of an error starts with the record's location.
QList<QByteArray> textsOf(std::vector<Sketch> sketches, const Task& task, const QString& file, const Options& options,
                          Notes& notes)
{
    OutputStyle style = options.style;
    style.firstDrawing = task.number;
    const QString molecule =
        sketches.empty() || sketches.front().molecules.empty() ? QString() : sketches.front().molecules.front().name;
    try {
        if (!isNumbered(options.output))
            return {writeSketches(std::move(sketches), *options.to, style, notes)};
        QList<QByteArray> texts;
        std::vector<Sketch> molecules = splitByMolecule(std::move(sketches));
        for (Sketch& sketch : molecules)
            texts.append(writeSketches({std::move(sketch)}, *options.to, options.style, notes));
        return texts;
    } catch (const std::bad_alloc&) {
        throw ConversionError(locationOf(task.from.record, file, molecule) + QStringLiteral("not enough memory"));
    } catch (const std::exception& fault) {
        throw ConversionError(locationOf(task.from.record, file, molecule) + QString::fromUtf8(fault.what()));
    }
}

QString fileOf(const Task& task, const Options& options)
{
    return options.inputs[static_cast<qsizetype>(task.from.input)];
}

/// The drawings of a record, laid out anew if the user asks for that.
std::vector<Sketch> sketchesOf(const Record& record, const Format& format, const QString& name, const Options& options,
                               Notes& notes)
{
    std::vector<Sketch> sketches = readRecord(record, format, name, notes);
    if (options.layout)
        for (Sketch& sketch : sketches)
            layOutAnew(sketch, locationOf(record, name, record.name), notes);
    return sketches;
}

Converted convertTask(const Task& task, const Options& options)
{
    Converted converted;
    converted.fault = task.error;
    if (!task.error.isEmpty())
        return converted;
    const QString file = shownName(fileOf(task, options));
    try {
        const Format& format = inputFormat(options, fileOf(task, options));
        std::vector<Sketch> sketches = sketchesOf(task.from.record, format, file, options, converted.notes);
        converted.texts = textsOf(std::move(sketches), task, file, options, converted.notes);
    } catch (const ConversionError& fault) {
        converted.texts.clear();
        converted.notes = Notes();
        converted.fault = fault.text();
    }
    return converted;
}

/// Sends records to workers and their texts to an output.
class Stream {
public:
    Stream(const Options& options, Output& output, Notes& notes)
        : options(options)
        , output(output)
        , notes(notes)
        , inputs(options)
        , workers(options.jobs,
                  [&options](const QByteArray& task) { return packed(convertTask(unpackedTask(task), options)); })
    {
    }

    Tally run()
    {
        while (!isEnded()) {
            feed();
            collect();
            progress.update(tally.records, tally.failures);
            if (workers.isBusy() || more)
                workers.wait(more && workers.hasRoom() ? inputs.descriptor() : -1, longestWait);
        }
        return tally;
    }

private:
    /// Whether all is done, or the first failure ends it all.
    bool isEnded() const { return receivedSignal != 0 || (!more && !workers.isBusy()) || stopsAtOnce(); }

    bool stopsAtOnce() const { return tally.failures > 0 && !options.skipErrors && !output.canDiscard(); }

    void feed()
    {
        while (more && workers.hasRoom() && inputs.isReady() && receivedSignal == 0) {
            Task task;
            task.number = ++number;
            try {
                std::optional<InputRecord> record = inputs.next();
                more = record.has_value();
                if (!more)
                    return;
                task.from = std::move(*record);
            } catch (const UnreadableInput&) {
                throw;
            } catch (const ConversionError& fault) { // takes its turn among the records
                task.error = fault.text();
            }
            workers.add(packed(task));
        }
    }

    void collect()
    {
        QByteArray ready;
        while (!stopsAtOnce()) {
            std::optional<Workers::Result> result = workers.take();
            if (!result)
                break;
            ++tally.records;
            Converted converted = convertedOf(*result);
            for (const QString& text : converted.notes.takeMolecules())
                tell(QStringLiteral("warning: ") + text);
            notes.add(converted.notes);
            if (!converted.fault.isEmpty())
                addFailure(converted.fault);
            else if (tally.failures == 0 || options.skipErrors)
                writeTexts(converted.texts, ready);
        }
        if (!ready.isEmpty())
            output.write(ready);
    }

    Converted convertedOf(const Workers::Result& result)
    {
        if (result.fault.isEmpty())
            return unpackedResult(result.result);
        const Task task = unpackedTask(result.task);
        Converted converted;
        converted.fault =
            locationOf(task.from.record, shownName(fileOf(task, options)), task.from.record.name) + result.fault;
        return converted;
    }

    /// Texts of a sequence are written together.
    void writeTexts(const QList<QByteArray>& texts, QByteArray& ready)
    {
        for (const QByteArray& text : texts) {
            if (isNumbered(options.output))
                output.write(text);
            else
                ready += text;
        }
    }

    void addFailure(const QString& fault)
    {
        ++tally.failures;
        tell(fault);
    }

    void tell(const QString& message)
    {
        progress.clear();
        printError(message);
    }

    const Options& options;
    Output& output;
    Notes& notes;
    Inputs inputs;
    Workers workers;
    Progress progress;
    Tally tally;
    int number = 0;
    bool more = true;
};

} // namespace

Tally convertRecords(const Options& options, Output& output, Notes& notes)
{
    const DelayedTermination delayed;
    const Tally tally = Stream(options, output, notes).run();
    if (receivedSignal != 0)
        throw Terminated{receivedSignal};
    return tally;
}

std::vector<std::pair<QString, Sketch>> readInputs(const Options& options, Tally& tally, Notes& notes)
{
    std::vector<std::pair<QString, Sketch>> all;
    Progress progress;
    const auto read = [&](const Record& record, const Format& format, const QString& name) {
        ++tally.records;
        for (Sketch& sketch : sketchesOf(record, format, name, options, notes))
            all.emplace_back(name, std::move(sketch));
        progress.update(tally.records, tally.failures);
    };
    const auto fail = [&](const QString& fault) {
        ++tally.failures;
        progress.clear();
        printError(fault);
        progress.update(tally.records, tally.failures);
    };
    forEachRecord(options, read, fail);
    return all;
}
