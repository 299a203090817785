#include "convert/pictures/PictureData.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Perception.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/formats/Molfile.h"
#include "convert/formats/Smiles.h"
#include "convert/formats/Workspace.h"

#include <GraphMol/FileParsers/FileParsers.h>
#include <GraphMol/FileParsers/PNGParser.h>
#include <GraphMol/MolOps.h>
#include <GraphMol/SmilesParse/SmilesWrite.h>
#include <RDGeneral/FileParseException.h>

#include <QXmlStreamReader>

using namespace RDKit;

namespace {

constexpr const char* pngKey = "KytStudio workspace";
constexpr std::size_t mostAtoms = 2000; // of a molecule that is described; more take RDKit too long
constexpr const char* svgNamespace = "urn:kytstudio:workspace";

QByteArray workspaceTextOf(const std::vector<Sketch>& sketches)
{
    Notes ignored; // the picture shows what a workspace cannot store
    return workspaceOf(sideBySide(sketches), ignored);
}

/// The molecule for other programs. Without its stereo if it is chemically invalid.
std::unique_ptr<RWMol> describedMolecule(const SketchMolecule& drawn)
{
    Notes ignored;
    std::unique_ptr<RWMol> molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
    try {
        perceive(*molecule);
    } catch (const MolSanitizeException&) {
        molecule = moleculeOf(drawn, MoleculeUse::Chemistry, ignored);
        molecule->updatePropertyCache(false);
        MolOps::fastFindRings(*molecule);
    }
    return molecule;
}

[[noreturn]] void failWithoutDrawing(const QString& name)
{
    throw ConversionError(name + QStringLiteral(": picture contains no drawing"));
}

void append(std::vector<Sketch>& sketches, std::vector<Sketch> more)
{
    std::move(more.begin(), more.end(), std::back_inserter(sketches));
}

Record recordOf(const std::string& text)
{
    Record record;
    record.text = QByteArray::fromStdString(text);
    return record;
}

/// Reads a molecule of RDKit's with the reader of its text, which knows wedges and pseudo-atoms.
std::vector<Sketch> readMolecule(const ROMol& molecule, const QString& name, Notes& notes)
{
    if (molecule.getNumConformers() == 0)
        return readSmiles(recordOf(MolToSmiles(molecule)), name, notes);
    return readMolfiles(recordOf(MolToMolBlock(molecule)), name, notes);
}

/// The drawing that an SVG document carries as ours; empty if there is none.
QByteArray workspaceIn(const QByteArray& svg)
{
    QXmlStreamReader reader(svg);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("workspace")
            && reader.namespaceUri() == QLatin1String(svgNamespace))
            return QByteArray::fromBase64(reader.readElementText().toLatin1());
    return {};
}

} // namespace

QByteArray svgWorkspace(const std::vector<Sketch>& sketches)
{
    // As base64, because readers of XML change line ends and white space.
    return QByteArray("<workspace xmlns=\"") + svgNamespace + R"(" encoding="base64">)"
        + workspaceTextOf(sketches).toBase64() + "</workspace>\n";
}

QByteArray withDrawing(const QByteArray& png, const std::vector<Sketch>& sketches)
{
    const Deadline deadline(QStringLiteral("describing the molecules of a picture"));
    std::string file = png.toStdString();
    for (const Sketch& sketch : sketches)
        for (const SketchMolecule& molecule : sketch.molecules)
            if (!molecule.atoms.empty() && molecule.atoms.size() <= mostAtoms)
                file = addMolToPNGString(*describedMolecule(molecule), file);
    return QByteArray::fromStdString(addMetadataToPNGString(file, {{pngKey, workspaceTextOf(sketches).toStdString()}}));
}

std::vector<Sketch> readPng(const Record& png, const QString& name, Notes& notes)
{
    const std::string file = png.text.toStdString();
    std::vector<Sketch> sketches;
    try {
        const auto metadata = PNGStringToMetadata(file);
        for (const auto& [key, value] : metadata)
            if (key == pngKey)
                return readWorkspace(recordOf(value), name, notes);
        for (const auto& molecule : PNGStringToMols(file))
            append(sketches, readMolecule(*molecule, name, notes));
        for (const auto& [key, value] : metadata) {
            const bool isMolfile = key.rfind(PNGData::molTag, 0) == 0;
            if (sketches.empty() && isMolfile)
                append(sketches, readMolfiles(recordOf(value), name, notes));
        }
        for (const auto& [key, value] : metadata)
            if (sketches.empty() && key.rfind(PNGData::smilesTag, 0) == 0)
                append(sketches, readSmiles(recordOf(value), name, notes));
    } catch (const FileParseException&) {
        failWithoutDrawing(name);
    }
    if (sketches.empty())
        failWithoutDrawing(name);
    return sketches;
}

std::vector<Sketch> readSvg(const Record& svg, const QString& name, Notes& notes)
{
    const QByteArray workspace = workspaceIn(svg.text);
    if (!workspace.isEmpty())
        return readWorkspace(recordOf(workspace.toStdString()), name, notes);
    if (!svg.text.contains("<rdkit:mol"))
        failWithoutDrawing(name);
    const std::unique_ptr<RWMol> molecule(RDKitSVGToMol(svg.text.toStdString(), false, false));
    if (!molecule || molecule->getNumAtoms() == 0)
        failWithoutDrawing(name);
    molecule->updatePropertyCache(false);
    return readMolecule(*molecule, name, notes);
}
