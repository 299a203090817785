#include "convert/program/Conversion.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Layout.h"

#include <new>

std::vector<Sketch> readSketches(const QByteArray& text, const Format& format, const QString& name, Notes& notes,
                                 const InputStyle& style)
{
    if (!format.read)
        throw ConversionError(name + QStringLiteral(": this format can only be written"));
    MemorySource source(text);
    LineReader lines(source, name);
    const std::unique_ptr<RecordReader> records = format.records(lines, style);
    std::vector<Sketch> all;
    while (const std::optional<Record> record = records->next()) {
        std::vector<Sketch> sketches = readRecord(*record, format, name, notes);
        std::move(sketches.begin(), sketches.end(), std::back_inserter(all));
    }
    return all;
}

std::vector<Sketch> readRecord(const Record& record, const Format& format, const QString& name, Notes& notes)
{
    const QString location = locationOf(record, name, record.name);
    if (!record.fault.isEmpty())
        throw ConversionError(location + record.fault);
    const Deadline deadline(location.chopped(2));
    try {
        return format.read(record, name, notes);
    } catch (const std::bad_alloc&) {
        throw ConversionError(location + QStringLiteral("not enough memory"));
    } catch (const ConversionError&) {
        throw;
    } catch (const std::exception& fault) {
        throw ConversionError(location + QString::fromUtf8(fault.what()));
    }
}

void layOutAnew(Sketch& sketch, const QString& location, Notes& notes)
{
    const Deadline deadline(location.chopped(2));
    for (SketchMolecule& molecule : sketch.molecules) {
        try {
            molecule = layOutAnew(molecule, location.chopped(2), notes);
        } catch (const std::exception& fault) {
            throw ConversionError(location + QString::fromUtf8(fault.what()));
        }
    }
}

QByteArray writeSketches(std::vector<Sketch> sketches, const Format& format, const OutputStyle& style, Notes& notes)
{
    return format.write(std::move(sketches), style, notes);
}

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

QStringList faultsOf(const Record& record, const Format& format, const QString& name)
{
    if (record.fault.isEmpty() && format.check)
        return format.check(record, name);
    try {
        Notes ignored;
        readRecord(record, format, name, ignored);
        return {};
    } catch (const ConversionError& fault) {
        return {fault.text()};
    }
}

QString locationOf(const Record& record, const QString& name, const QString& molecule)
{
    const QString location = QStringLiteral("%1:%2: ").arg(name).arg(record.line);
    return molecule.isEmpty() ? location : location + molecule + QStringLiteral(": ");
}
