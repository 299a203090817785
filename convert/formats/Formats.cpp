#include "convert/formats/Formats.h"

#include "convert/chemistry/Placement.h"
#include "convert/formats/Molfile.h"
#include "convert/formats/Smiles.h"
#include "convert/formats/Workspace.h"
#include "convert/pictures/PictureData.h"
#include "convert/pictures/PictureFile.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

using Sketches = std::vector<Sketch>;

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

QByteArray writeSdFile(Sketches sketches, const OutputStyle& style, Notes& notes)
{
    return sdFileOf(sketches, style.v3000, notes);
}

QByteArray writeSmiles(Sketches sketches, const OutputStyle&, Notes& notes)
{
    return smilesOf(sketches, notes);
}

QByteArray onlyPage(const std::vector<QByteArray>& pages)
{
    if (pages.size() > 1)
        throw ConversionError(QStringLiteral("sheet of %1 pages: use PDF, or --columns with %d in the output file name")
                                  .arg(pages.size()));
    return pages.front();
}

QByteArray writeSvg(Sketches sketches, const OutputStyle& style, Notes&)
{
    return onlyPage(svgPictures(sketches, style.picture));
}

QByteArray writePng(Sketches sketches, const OutputStyle& style, Notes&)
{
    return onlyPage(pngPictures(sketches, style.picture));
}

QByteArray writePdf(Sketches sketches, const OutputStyle& style, Notes&)
{
    return pdfPicture(sketches, style.picture);
}

constexpr Format formats[] = {
    {"kyt kyf", readWorkspace, writeWorkspace, workspaceFaults},
    {"mol mdl", readMolfiles, writeMolfile},
    {"sdf sd", readMolfiles, writeSdFile},
    {"smi smiles", readSmiles, writeSmiles},
    {"svg", readSvg, writeSvg, nullptr, svgPictures},
    {"png", readPng, writePng, nullptr, pngPictures, true},
    {"pdf", nullptr, writePdf},
};

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
    return formatNamed(QFileInfo(fileName).suffix());
}
