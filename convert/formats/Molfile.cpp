#include "convert/formats/Molfile.h"

#include "convert/Deadline.h"
#include "convert/chemistry/Perception.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/Projection.h"
#include "convert/chemistry/RDKitMolecule.h"
#include "convert/chemistry/Stereo.h"
#include "convert/chemistry/Symbols.h"
#include "convert/formats/LineReader.h"
#include "convert/formats/SdRecords.h"
#include "model/Elements.h"

#include <GraphMol/FileParsers/FileParsers.h>
#include <GraphMol/SanitException.h>

#include <QRegularExpression>

#include <cmath>
#include <map>
#include <set>

using namespace RDKit;

namespace {

// The record properties for what a molfile cannot store. A line of the colours has a count and the colour of that many
// atoms; one of the depths a count and the depth of that many atoms, in pixels, which a flat molfile has no room for. A
// line of the symbols has an atom number and its symbol. The sizes are the atom counts of the molecules in the
// molfile. The drawing number is the same in all records of one drawing.
const QString colorsProperty = QStringLiteral("KYTSTUDIO_COLORS");
const QString symbolsProperty = QStringLiteral("KYTSTUDIO_SYMBOLS");
const QString sizesProperty = QStringLiteral("KYTSTUDIO_MOLECULES");
const QString depthsProperty = QStringLiteral("KYTSTUDIO_DEPTHS");

constexpr double maxCoordinateInV2000 = 9999; // angstroms, due to the width of the columns
constexpr double maxCoordinate = 1e9;         // angstroms
constexpr std::size_t maxCountInV2000 = 999;  // of atoms, and of bonds
constexpr std::size_t maxAtomsToCheck = 1000; // in a record; RDKit ranks them in quadratic time
constexpr int maxChargeInV2000 = 15;
constexpr int maxLabels = 50; // different labels in the symbol column of a molfile

/// Also false for a coordinate that is not finite.
bool isInRange(double angstroms)
{
    return std::fabs(angstroms) < maxCoordinate;
}

/// The number of lines before the first one with `word`; 0 if there is none.
qsizetype linesBefore(const QByteArray& block, const QByteArray& word)
{
    return block.left(std::max<qsizetype>(0, block.indexOf(' ' + word + ' '))).count('\n');
}

/// The number, in the file, of the last non-blank line of the record's molfile.
int lastLine(const SdRecord& record)
{
    qsizetype end = record.block.size();
    while (end > 0 && (record.block[end - 1] == '\n' || record.block[end - 1] == ' '))
        --end;
    return record.firstLine + static_cast<int>(record.block.left(end).count('\n'));
}

/// The text of a parser error with the line number in the file instead of that in the record. If the error has no line
/// number but quotes a word, the line is that of the word.
QString faultText(const char* what, const SdRecord& record, const QString& name)
{
    static const QRegularExpression lineNumber(QStringLiteral(R"(\s*(?:on|at)?\s*\bline:?\s*(?:number\s*)?(\d+))"),
                                               QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression quoted(QStringLiteral("'([^']+)'"));
    QString text = QString::fromUtf8(what);
    const QRegularExpressionMatch match = lineNumber.match(text);
    int line = record.firstLine;
    if (match.hasMatch()) {
        line += std::max(0, match.captured(1).toInt() - 1);
        text.remove(match.capturedStart(), match.capturedLength());
        if (!record.block.contains("\nM  END") && line > lastLine(record))
            return QStringLiteral("%1:%2: unexpected end of molfile, M  END missing").arg(name).arg(lastLine(record));
    } else if (const QRegularExpressionMatch word = quoted.match(text); word.hasMatch()) {
        line += static_cast<int>(linesBefore(record.block, word.captured(1).toUtf8()));
    }
    return QStringLiteral("%1:%2: %3").arg(name).arg(line).arg(text.simplified());
}

/// The symbol that RDKit reports as unknown; empty for any other error.
QByteArray unknownSymbol(const char* what)
{
    static const QRegularExpression form(QStringLiteral("Element '([^']+)' not found"));
    return form.match(QString::fromUtf8(what)).captured(1).toUtf8();
}

/// Parses a molfile. A symbol that is not an element becomes the label of its atom.
std::unique_ptr<RWMol> parseBlock(QByteArray block)
{
    std::map<unsigned, QByteArray> labels;
    std::unique_ptr<RWMol> molecule;
    for (int symbols = 0; !molecule; ++symbols) {
        try {
            molecule.reset(MolBlockToMol(block.toStdString(), false, false, true));
            if (!molecule)
                throw ConversionError(QStringLiteral("not a molfile"));
        } catch (const std::exception& fault) {
            const QByteArray symbol = unknownSymbol(fault.what());
            const std::vector<unsigned> atoms =
                symbol.isEmpty() || symbols == maxLabels ? std::vector<unsigned>() : replaceSymbol(block, symbol);
            if (atoms.empty())
                throw;
            for (const unsigned atom : atoms)
                labels[atom] = symbol;
        }
    }
    for (const auto& [index, label] : labels)
        if (index < molecule->getNumAtoms()
            && !molecule->getAtomWithIdx(index)->hasProp(common_properties::molFileAlias))
            molecule->getAtomWithIdx(index)->setProp(common_properties::molFileAlias, label.toStdString());
    return molecule;
}

std::unique_ptr<RWMol> parse(const SdRecord& record, const QString& name)
{
    const Deadline deadline(QStringLiteral("%1:%2").arg(name).arg(record.firstLine));
    try {
        if (const QStringList faults = recordFaults(record); !faults.isEmpty())
            throw ConversionError(faults.first());
        std::unique_ptr<RWMol> molecule = parseBlock(record.block);
        if (molecule->getNumConformers() == 0 && molecule->getNumAtoms() > 0)
            throw ConversionError(QStringLiteral("no atom coordinates"));
        for (unsigned i = 0; i < molecule->getNumAtoms(); ++i) {
            const RDGeom::Point3D& position = molecule->getConformer().getAtomPos(i);
            if (!isInRange(position.x) || !isInRange(position.y) || !isInRange(position.z))
                throw ConversionError(QStringLiteral("coordinates of atom %1 out of range").arg(i + 1));
        }
        return molecule;
    } catch (const std::exception& fault) {
        throw ConversionError(faultText(fault.what(), record, name));
    }
}

bool isInSpace(const RWMol& molecule)
{
    return molecule.getNumConformers() > 0 && molecule.getConformer().is3D();
}

/// Whether a record was written from a drawing.
bool isOurs(const SdRecord& record)
{
    return std::any_of(record.data.begin(), record.data.end(),
                       [](const auto& entry) { return entry.first == colorsProperty; });
}

/// Where a record is, for warnings: its first line and its name.
QString placeOf(const SdRecord& record, const RWMol& molecule, const QString& name)
{
    const QString place = QStringLiteral("%1:%2").arg(name).arg(record.firstLine);
    std::string title;
    molecule.getPropIfPresent(common_properties::_Name, title);
    const QString shown = QString::fromStdString(title).simplified();
    return shown.isEmpty() ? place : QStringLiteral("%1 (%2)").arg(place, shown);
}

/// The parsed molecule with its stereo assigned; null if its valences are impossible or it is too large.
std::unique_ptr<RWMol> withStereo(const RWMol& parsed)
{
    if (parsed.getNumAtoms() > maxAtomsToCheck)
        return nullptr;
    auto molecule = std::make_unique<RWMol>(parsed);
    try {
        assignParsedStereo(*molecule);
        return molecule;
    } catch (const MolSanitizeException&) {
        return nullptr;
    }
}

/// Draws a parsed molecule; one in space without wedges gets those that its projection allows, unless the record was
/// written from a drawing without wedges. Warns if the drawing shows other stereo than the file.
SketchMolecule drawingOf(const RWMol& parsed, const QString& place, bool isOurs, Notes& notes)
{
    const std::unique_ptr<RWMol> meant = withStereo(parsed);
    const bool needsWedges = meant && !isOurs && isInSpace(parsed) && !hasMarks(parsed);
    SketchMolecule drawn = sketchOf(parsed, needsWedges ? projectedWedges(*meant) : std::vector<ChosenWedge>(), notes);
    const std::unique_ptr<RWMol> perceived = meant ? perceivedMolecule(drawn, Labels::Alike) : nullptr;
    if (!perceived)
        return drawn;
    Stereo shown = stereoOf(*perceived);
    openDoubleBonds(drawn, stereoOf(*meant), shown);
    if (const QString differences = differencesOf(stereoOf(*meant), shown); !differences.isEmpty())
        notes.addMolecule(QStringLiteral("%1: stereo of %2: drawn otherwise than read").arg(place, differences));
    return drawn;
}

/// Sets the colours of all atoms from a property. Returns false if the property does not match the molecule.
bool applyColors(SketchMolecule& molecule, const QString& text)
{
    std::size_t next = 0;
    for (const QString& line : text.split(u'\n')) {
        const QStringList words = line.simplified().split(u' ');
        const int count = words.first().toInt();
        // In a workspace, this word would end the molecule.
        if (words.contains(QLatin1String("END_MOLECULE")))
            return false;
        if (words.size() != 4 || count < 1 || static_cast<std::size_t>(count) > molecule.atoms.size() - next)
            return false;
        for (int i = 0; i < count; ++i)
            molecule.atoms[next++].color = {words[1], words[2], words[3]};
    }
    return next == molecule.atoms.size();
}

/// Sets the depths of all atoms from a property. Returns false if the property does not match the molecule.
bool applyDepths(SketchMolecule& molecule, const QString& text)
{
    std::size_t next = 0;
    for (const QString& line : text.split(u'\n')) {
        const QStringList words = line.simplified().split(u' ');
        const int count = words.first().toInt();
        bool isNumber = false;
        const float depth = words.last().toFloat(&isNumber);
        if (words.size() != 2 || !isNumber || !isInRange(double{depth} / pixelsPerAngstrom))
            return false;
        if (count < 1 || static_cast<std::size_t>(count) > molecule.atoms.size() - next)
            return false;
        for (int i = 0; i < count; ++i)
            molecule.atoms[next++].depth = depth;
    }
    return next == molecule.atoms.size();
}

/// Sets symbols of atoms from a property. Returns false if the property does not match the molecule.
bool applySymbols(SketchMolecule& molecule, const QString& text)
{
    for (const QString& line : text.split(u'\n')) {
        const QStringList words = line.simplified().split(u' ');
        const int number = words.first().toInt();
        if (words.size() != 2 || number < 1 || static_cast<std::size_t>(number) > molecule.atoms.size())
            return false;
        SketchAtom& atom = molecule.atoms[number - 1];
        atom.symbol = words[1];
        atom.color = elementColor(atom.symbol);
    }
    return true;
}

/// Splits `molecule` into parts with these atom counts. Returns it unchanged if a count is invalid or a bond joins two
/// parts.
std::vector<SketchMolecule> split(SketchMolecule molecule, const QString& sizes)
{
    std::vector<int> partOf;
    int parts = 0;
    for (const QString& word : sizes.simplified().split(u' ')) {
        const int size = word.toInt();
        if (size < 1 || static_cast<std::size_t>(size) > molecule.atoms.size() - partOf.size())
            return {std::move(molecule)};
        partOf.insert(partOf.end(), size, parts++);
    }
    if (partOf.size() != molecule.atoms.size())
        return {std::move(molecule)};
    for (const SketchBond& bond : molecule.bonds)
        if (partOf[bond.from] != partOf[bond.to])
            return {std::move(molecule)};

    std::vector<SketchMolecule> split(parts);
    std::vector<int> indexOf;
    for (std::size_t i = 0; i < molecule.atoms.size(); ++i) {
        std::vector<SketchAtom>& atoms = split[partOf[i]].atoms;
        indexOf.push_back(static_cast<int>(atoms.size()));
        atoms.push_back(std::move(molecule.atoms[i]));
    }
    for (SketchBond& bond : molecule.bonds) {
        std::vector<SketchBond>& bonds = split[partOf[bond.from]].bonds;
        bond.from = indexOf[bond.from];
        bond.to = indexOf[bond.to];
        bonds.push_back(std::move(bond));
    }
    split.front().name = molecule.name;
    split.front().data = molecule.data;
    return split;
}

/// Removes the property `name` from the molecule's data and returns its text.
std::optional<QString> take(SketchMolecule& molecule, const QString& name)
{
    for (auto entry = molecule.data.begin(); entry != molecule.data.end(); ++entry) {
        if (entry->first != name)
            continue;
        const QString text = entry->second;
        molecule.data.erase(entry);
        return text;
    }
    return std::nullopt;
}

/// Whether all atoms are inside the canvas area.
bool isOnCanvas(const Sketch& sketch)
{
    const QRectF extent = extentOf(sketch);
    return canvasArea.contains(extent.topLeft()) && canvasArea.contains(extent.bottomRight());
}

/// Whether a symbol must be stored in a property because neither the element nor a V2000 alias expresses it.
bool needsProperty(const QString& symbol, bool v3000)
{
    const std::optional<ElementSymbol> element = parseSymbol(symbol);
    if (element && element->number > 0 && symbolOf(*element) == symbol)
        return false;
    return v3000 || symbol.startsWith(QLatin1String(endOfRecord));
}

/// The lines of a property. Its text must not contain a line that ends it or starts another.
QByteArray property(const QString& name, const QString& value)
{
    QStringList lines;
    for (const QString& line : value.split(u'\n')) {
        if (line.trimmed().isEmpty())
            continue;
        const bool isSpecial = line.startsWith(u'>') || line.startsWith(QLatin1String(endOfRecord));
        lines.append(isSpecial ? u' ' + line : line);
    }
    const QString text = lines.join(u'\n');
    return QStringLiteral(">  <%1>\n%2\n\n").arg(name, text).toUtf8();
}

/// Lines of a count and what `textOf` gives for that many consecutive atoms.
template <typename TextOf> QString runsOf(const SketchMolecule& molecule, const TextOf& textOf)
{
    QStringList lines;
    for (std::size_t i = 0; i < molecule.atoms.size();) {
        const QString text = textOf(molecule.atoms[i]);
        std::size_t count = 1;
        while (i + count < molecule.atoms.size() && textOf(molecule.atoms[i + count]) == text)
            ++count;
        lines.append(QString::number(count) + u' ' + text);
        i += count;
    }
    return lines.join(u'\n');
}

QString colorsOf(const SketchMolecule& molecule)
{
    return runsOf(molecule, [](const SketchAtom& atom) {
        return QStringLiteral("%1 %2 %3").arg(atom.color[0], atom.color[1], atom.color[2]);
    });
}

/// The depths that a flat molfile has no room for; empty if there are none.
QString depthsOf(const SketchMolecule& molecule)
{
    constexpr int digits = 9; // enough to read the same float again
    const bool any = std::any_of(molecule.atoms.begin(), molecule.atoms.end(),
                                 [](const SketchAtom& atom) { return atom.depth != 0; });
    if (!any || !isFlat(molecule))
        return {};
    return runsOf(molecule, [](const SketchAtom& atom) { return QString::number(double{atom.depth}, 'g', digits); });
}

QString symbolsOf(const SketchMolecule& molecule, bool v3000)
{
    QStringList lines;
    for (std::size_t i = 0; i < molecule.atoms.size(); ++i)
        if (needsProperty(molecule.atoms[i].symbol, v3000))
            lines.append(QString::number(i + 1) + u' ' + molecule.atoms[i].symbol);
    return lines.join(u'\n');
}

bool hasChargeBeyondV2000(const SketchAtom& atom)
{
    const std::optional<ElementSymbol> element = parseSymbol(atom.symbol);
    return element && std::abs(element->charge) > maxChargeInV2000;
}

bool fitsV2000(const SketchMolecule& molecule)
{
    return molecule.atoms.size() <= maxCountInV2000 && molecule.bonds.size() <= maxCountInV2000
        && std::none_of(molecule.atoms.begin(), molecule.atoms.end(), hasChargeBeyondV2000)
        && std::all_of(molecule.atoms.begin(), molecule.atoms.end(), [](const SketchAtom& atom) {
               const double largest = std::max({std::fabs(atom.x), std::fabs(atom.y), std::fabs(double{atom.depth})});
               return largest < maxCoordinateInV2000 * pixelsPerAngstrom;
           });
}

/// Warns of wedges in a molecule with a shape in space whose direction contradicts the depths of their ends.
void noteContradictoryWedges(const SketchMolecule& molecule, Notes& notes)
{
    if (isFlat(molecule))
        return;
    for (const SketchBond& bond : molecule.bonds) {
        if (!isWedge(bond))
            continue;
        const float rise = molecule.atoms[bond.to].depth - molecule.atoms[bond.from].depth;
        if (bond.kinds.front() == KYTBT_StereoUp ? rise < 0 : rise > 0)
            notes.add("wedges that contradict atom depths: written as drawn, may be read as the opposite stereo");
    }
}

/// Warns if RDKit, as any other program, reads another molecule from a molfile than the drawing shows.
void noteMisreading(const std::string& molfile, const SketchMolecule& drawn, const QString& name, Notes& notes)
{
    const std::unique_ptr<RWMol> meant =
        drawn.atoms.size() <= maxAtomsToCheck ? perceivedMolecule(drawn, Labels::Alike) : nullptr;
    if (!meant)
        return;
    try {
        const std::unique_ptr<RWMol> found(MolBlockToMol(molfile, false, false));
        assignParsedStereo(*found);
        if (const QString differences = differencesOf(*meant, *found); !differences.isEmpty())
            notes.addMolecule(QStringLiteral("%1: %2: read otherwise by other programs").arg(name, differences));
    } catch (const std::exception&) {
        notes.addMolecule(QStringLiteral("%1: not readable by other programs").arg(name));
    }
}

/// A record without its final "$$$$" line. `drawing` is the number of the drawing whose coordinates are kept, or 0;
/// `name` is that of the record in warnings.
QByteArray recordOf(const SketchMolecule& molecule, bool v3000, int drawing, const QString& sizes, const QString& name,
                    Notes& notes)
{
    v3000 = v3000 || !fitsV2000(molecule);
    for (const SketchAtom& atom : molecule.atoms)
        for (const double coordinate : {atom.x, atom.y, double{atom.depth}})
            if (!isInRange(coordinate / pixelsPerAngstrom))
                throw ConversionError(QStringLiteral("atom coordinates out of range for a molfile"));
    noteContradictoryWedges(molecule, notes);
    const std::unique_ptr<RWMol> converted =
        moleculeOf(molecule, v3000 ? MoleculeUse::V3000 : MoleculeUse::V2000, notes);
    const std::string molfile = MolToMolBlock(*converted, false, -1, false, v3000);
    noteMisreading(molfile, molecule, name, notes);
    QByteArray text = QByteArray::fromStdString(molfile);
    // The name must not end the record, nor lose its first character at the start of a file.
    if (text.startsWith(endOfRecord) || text.startsWith(byteOrderMark))
        text.prepend(' ');
    for (const auto& [key, value] : molecule.data)
        text += property(key, value);
    if (drawing > 0)
        text += property(QLatin1String(drawingProperty), QString::number(drawing));
    if (!sizes.isEmpty())
        text += property(sizesProperty, sizes);
    if (const QString symbols = symbolsOf(molecule, v3000); !symbols.isEmpty())
        text += property(symbolsProperty, symbols);
    if (const QString depths = depthsOf(molecule); !depths.isEmpty())
        text += property(depthsProperty, depths);
    if (!molecule.atoms.empty())
        text += property(colorsProperty, colorsOf(molecule));
    return text;
}

/// The name of a record in warnings.
QString recordName(const SketchMolecule& molecule, int number)
{
    return molecule.name.isEmpty() ? QStringLiteral("molecule %1").arg(number) : molecule.name;
}

QString sizesOf(const Sketch& sketch)
{
    QStringList sizes;
    for (const SketchMolecule& molecule : sketch.molecules)
        if (!molecule.atoms.empty())
            sizes.append(QString::number(molecule.atoms.size()));
    return sizes.size() > 1 ? sizes.join(u' ') : QString();
}

/// Applies what a molfile cannot store from the properties of the record, and sets the depths of wedges.
void applyProperties(SketchMolecule& molecule, const RWMol& parsed, Notes& notes)
{
    if (const auto symbols = take(molecule, symbolsProperty); symbols && !applySymbols(molecule, *symbols))
        notes.add("KYTSTUDIO_SYMBOLS properties that do not match the molecule: not fully applied");
    if (const auto colors = take(molecule, colorsProperty); colors && !applyColors(molecule, *colors))
        notes.add("KYTSTUDIO_COLORS properties that do not match the molecule: not fully applied");
    const auto depths = take(molecule, depthsProperty);
    if (depths && (isInSpace(parsed) || !applyDepths(molecule, *depths)))
        notes.add("KYTSTUDIO_DEPTHS properties that do not match the molecule: not fully applied");
    if (!isInSpace(parsed) || hasMarks(parsed))
        liftWedges(molecule);
    else
        setWedgeAngles(molecule);
}

} // namespace

QStringList molfileFaults(const Record& file, const QString& name)
{
    QStringList lines;
    for (const SdRecord& record : splitRecords(file.text, file.line)) {
        const QStringList faults = recordFaults(record);
        for (const QString& fault : faults)
            lines.append(faultText(qPrintable(fault), record, name));
        if (!faults.isEmpty())
            continue;
        try {
            parse(record, name);
        } catch (const ConversionError& fault) {
            lines.append(fault.text());
        }
    }
    return lines;
}

std::vector<Sketch> readMolfiles(const Record& file, const QString& name, Notes& notes)
{
    const std::vector<SdRecord> records = splitRecords(file.text, file.line);
    std::vector<Sketch> sketches;
    QString lastDrawing;
    for (const SdRecord& record : records) {
        const std::unique_ptr<RWMol> parsed = parse(record, name);
        noteUnusualHydrogens(*parsed, notes);
        SketchMolecule molecule = drawingOf(*parsed, placeOf(record, *parsed, name), isOurs(record), notes);
        molecule.data = record.data;
        applyProperties(molecule, *parsed, notes);
        const QString drawing = take(molecule, QLatin1String(drawingProperty)).value_or(QString());
        const QString sizes = take(molecule, sizesProperty).value_or(QString());

        Sketch sketch;
        sketch.molecules = sizes.isEmpty() ? std::vector{std::move(molecule)} : split(std::move(molecule), sizes);
        const bool keepsPosition = !drawing.isEmpty() && isOnCanvas(sketch);
        if (keepsPosition && drawing == lastDrawing && !sketches.empty()) {
            std::move(sketch.molecules.begin(), sketch.molecules.end(), std::back_inserter(sketches.back().molecules));
        } else {
            sketch.placed = keepsPosition;
            if (!keepsPosition)
                centre(sketch);
            sketches.push_back(std::move(sketch));
        }
        lastDrawing = keepsPosition ? drawing : QString();
    }
    return sketches;
}

QByteArray molfileOf(const Sketch& sketch, bool v3000, Notes& notes)
{
    const auto named = std::count_if(sketch.molecules.begin(), sketch.molecules.end(),
                                     [](const SketchMolecule& molecule) { return !molecule.name.isEmpty(); });
    notes.addDetail("molecule names other than the first in a molfile: discarded", named - 1);
    const SketchMolecule all = combined(sketch);
    return recordOf(all, v3000, sketch.placed ? 1 : 0, sizesOf(sketch), recordName(all, 1), notes);
}

QByteArray sdFileOf(const std::vector<Sketch>& sketches, bool v3000, int firstDrawing, Notes& notes)
{
    QByteArray text;
    int drawing = firstDrawing;
    int number = firstDrawing - 1;
    for (const Sketch& sketch : sketches) {
        for (const SketchMolecule& molecule : sketch.molecules)
            text +=
                recordOf(molecule, v3000, sketch.placed ? drawing : 0, QString(), recordName(molecule, ++number), notes)
                + endOfRecord + "\n";
        ++drawing;
    }
    return text;
}
