#include "convert/formats/Formats.h"

#include "convert/chemistry/Canvas.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/SketchCanvas.h"
#include "convert/formats/Molfile.h"
#include "convert/formats/Smiles.h"
#include "convert/formats/Workspace.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

using Sketches = std::vector<Sketch>;

Sketch oneDrawing(Sketches sketches)
{
    return sideBySide(std::move(sketches));
}

/// The drawing of a picture, on a canvas.
class PictureCanvas {
public:
    explicit PictureCanvas(Sketches sketches)
    {
        const Sketch sketch = oneDrawing(std::move(sketches));
        drawOn(drawn.doc, sketch);
        if (sketch.molecules.size() == 1)
            title = sketch.molecules.front().name;
    }

    const QCanvas& canvas() const { return *drawn.doc.canvas; }

    QString title;

private:
    Canvas drawn;
};

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

QByteArray writeSvg(Sketches sketches, const OutputStyle& style, Notes&)
{
    const PictureCanvas picture(std::move(sketches));
    return svgOf(picture.canvas(), style.picture, picture.title);
}

QByteArray writePng(Sketches sketches, const OutputStyle& style, Notes&)
{
    return pngOf(PictureCanvas(std::move(sketches)).canvas(), style.picture);
}

QByteArray writePdf(Sketches sketches, const OutputStyle& style, Notes&)
{
    const PictureCanvas picture(std::move(sketches));
    return pdfOf(picture.canvas(), style.picture, picture.title);
}

constexpr Format formats[] = {
    {"kyt kyf", readWorkspace, writeWorkspace, workspaceFaults},
    {"mol mdl", readMolfiles, writeMolfile},
    {"sdf sd", readMolfiles, writeSdFile},
    {"smi smiles", readSmiles, writeSmiles},
    {"svg", nullptr, writeSvg},
    {"png", nullptr, writePng},
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
