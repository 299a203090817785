#include "convert/formats/Formats.h"

#include "convert/chemistry/Inchi.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/SketchCanvas.h"
#include "convert/formats/Cdxml.h"
#include "convert/formats/InchiLines.h"
#include "convert/formats/Molfile.h"
#include "convert/formats/SdRecords.h"
#include "convert/formats/Smiles.h"
#include "convert/formats/Table.h"
#include "convert/formats/Workspace.h"
#include "convert/formats/Xyz.h"
#include "convert/pictures/PictureData.h"
#include "convert/pictures/PictureFile.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

using Sketches = std::vector<Sketch>;

constexpr QLatin1String gzipEnding(".gz");

Sketch oneDrawing(Sketches sketches)
{
    return sideBySide(std::move(sketches));
}

QByteArray writeWorkspace(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return workspaceOf(oneDrawing(std::move(sketches)), notes);
}

QByteArray writeMolfile(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    return molfileOf(oneDrawing(std::move(sketches)), style.v3000, notes);
}

// The writers share a signature by value, since most of them move from the sketches.
// NOLINTBEGIN(performance-unnecessary-value-param)

// cppcheck-suppress passedByValue
QByteArray writeSdFile(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    return sdFileOf(sketches, style.v3000, style.firstDrawing, notes);
}

// cppcheck-suppress passedByValue
QByteArray writeSmiles(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return smilesOf(sketches, notes);
}

// cppcheck-suppress passedByValue
QByteArray writeXyz(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return xyzOf(sketches, notes);
}

// cppcheck-suppress passedByValue
QByteArray writeInchi(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return inchiLinesOf(sketches, notes);
}

// cppcheck-suppress passedByValue
QByteArray writeInchiKey(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return inchiKeyLinesOf(sketches, notes);
}

QByteArray onlyPage(const std::vector<QByteArray>& pages)
{
    if (pages.size() > 1)
        throw ConversionError(QStringLiteral("sheet of %1 pages: use PDF, or --columns with %d in the output file name")
                                  .arg(pages.size()));
    return pages.front();
}

void noteOpenDoubleBonds(const Sketches& sketches, Notes& notes)
{
    for (const Sketch& sketch : sketches)
        noteOpenDoubleBonds(sketch, notes);
}

// cppcheck-suppress passedByValue
QByteArray writeSvg(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    noteOpenDoubleBonds(sketches, notes);
    return onlyPage(svgPictures(sketches, style.picture));
}

// cppcheck-suppress passedByValue
QByteArray writePng(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    noteOpenDoubleBonds(sketches, notes);
    return onlyPage(pngPictures(sketches, style.picture));
}

// cppcheck-suppress passedByValue
QByteArray writePdf(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    noteOpenDoubleBonds(sketches, notes);
    return pdfPicture(sketches, style.picture);
}

// NOLINTEND(performance-unnecessary-value-param)

constexpr bool sequence = true;

constexpr Format formats[] = {
    {"kyt kyf", wholeFile, readWorkspace, writeWorkspace, !sequence, true, workspaceFaults},
    {"mol mdl", sdRecords, readMolfiles, writeMolfile, !sequence, true, molfileFaults},
    {"sdf sd", sdRecords, readMolfiles, writeSdFile, sequence, true, molfileFaults},
    {"smi smiles", smilesRecords, readSmiles, writeSmiles, sequence},
    {"csv", csvRecords, readSmiles, nullptr},
    {"tsv", tsvRecords, readSmiles, nullptr},
    {"cdxml", wholeFile, readCdxml, nullptr},
    {"xyz", nullptr, nullptr, writeXyz, sequence},
    {"inchi", nullptr, nullptr, writeInchi, sequence, inchiIsSupported},
    {"inchikey", nullptr, nullptr, writeInchiKey, sequence, inchiIsSupported},
    {"svg", wholeFile, readSvg, writeSvg, !sequence, true, nullptr, svgPictures},
    {"png", binaryFile, readPng, writePng, !sequence, true, nullptr, pngPictures},
    {"pdf", nullptr, nullptr, writePdf},
};

template <typename Matches> QStringList extensionsWhere(Matches matches)
{
    QStringList extensions;
    for (const Format& format : formats)
        if (matches(format))
            extensions += QString::fromLatin1(format.extensions).split(u' ');
    return extensions;
}

} // namespace

const Format* formatNamed(const QString& name)
{
    const auto* known = std::find_if(std::begin(formats), std::end(formats), [&](const Format& format) {
        return QString::fromLatin1(format.extensions).split(u' ').contains(name, Qt::CaseInsensitive);
    });
    return known != std::end(formats) ? known : nullptr;
}

const Format* formatOfFile(const QString& fileName)
{
    const QString plain = isGzipName(fileName) ? fileName.chopped(gzipEnding.size()) : fileName;
    return formatNamed(QFileInfo(plain).suffix());
}

bool isGzipName(const QString& fileName)
{
    return fileName.endsWith(gzipEnding, Qt::CaseInsensitive);
}

QStringList readableExtensions()
{
    return extensionsWhere([](const Format& format) { return format.read != nullptr; });
}

QStringList writableExtensions()
{
    return extensionsWhere([](const Format& format) { return format.write != nullptr; });
}
