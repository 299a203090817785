#include "convert/Chemistry.h"
#include "convert/Deadline.h"
#include "convert/Placement.h"
#include "convert/RDKitMolecule.h"
#include "convert/SdRecords.h"
#include "convert/Symbols.h"

#include <GraphMol/FileParsers/FileParsers.h>

#include <QRegularExpression>

#include <cmath>
#include <map>
#include <set>

using namespace RDKit;

namespace {

// The properties of a record that a molfile has no place for. Each line of the colours is a count and the colour of so
// many atoms, each line of the symbols an atom's number and its symbol; the sizes are those of the molecules that share
// the molfile; the number of the drawing is shared by the records that come from it.
const QString colorsProperty = QStringLiteral("KYTSTUDIO_COLORS");
const QString symbolsProperty = QStringLiteral("KYTSTUDIO_SYMBOLS");
const QString sizesProperty = QStringLiteral("KYTSTUDIO_MOLECULES");
const QString drawingProperty = QStringLiteral("KYTSTUDIO_DRAWING");

constexpr double largestInV2000 = 9999;  // angstroms, that the columns of a V2000 file hold
constexpr double farthest = 1e9;         // angstroms, that an atom may be from the origin
constexpr std::size_t mostInV2000 = 999; // atoms, and bonds
constexpr int mostLabels = 50;           // different ones in a molfile's column of symbols

/// False for what is not finite, too.
bool isNear(double angstroms)
{
    return std::fabs(angstroms) < farthest;
}

/// How many lines stand before the first one with `word`; 0 where there is none.
qsizetype linesBefore(const QByteArray& block, const QByteArray& word)
{
    return block.left(std::max<qsizetype>(0, block.indexOf(' ' + word + ' '))).count('\n');
}

/// The last line of the record's molfile that says something, in the file.
int lastLine(const SdRecord& record)
{
    qsizetype end = record.block.size();
    while (end > 0 && (record.block[end - 1] == '\n' || record.block[end - 1] == ' '))
        --end;
    return record.firstLine + static_cast<int>(record.block.left(end).count('\n'));
}

/// What a fault says, with the line in the file instead of that in the record. Where it names no line but a word, the
/// line is that of the word.
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
            return QStringLiteral("%1:%2: it ends before M  END").arg(name).arg(lastLine(record));
    } else if (const QRegularExpressionMatch word = quoted.match(text); word.hasMatch()) {
        line += static_cast<int>(linesBefore(record.block, word.captured(1).toUtf8()));
    }
    return QStringLiteral("%1:%2: %3").arg(name).arg(line).arg(text.simplified());
}

/// The symbol that RDKit says it does not know; empty where it says something else.
QByteArray unknownSymbol(const char* what)
{
    static const QRegularExpression form(QStringLiteral("Element '([^']+)' not found"));
    return form.match(QString::fromUtf8(what)).captured(1).toUtf8();
}

/// The molecule of a molfile. A symbol that is no element's is the label of an atom.
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
                symbol.isEmpty() || symbols == mostLabels ? std::vector<unsigned>() : replaceSymbol(block, symbol);
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
        checkAnnouncements(record);
        std::unique_ptr<RWMol> molecule = parseBlock(record.block);
        if (molecule->getNumConformers() == 0 && molecule->getNumAtoms() > 0)
            throw ConversionError(QStringLiteral("no places"));
        for (unsigned i = 0; i < molecule->getNumAtoms(); ++i) {
            const RDGeom::Point3D& place = molecule->getConformer().getAtomPos(i);
            if (!isNear(place.x) || !isNear(place.y) || !isNear(place.z))
                throw ConversionError(QStringLiteral("atom %1 lies too far away").arg(i + 1));
        }
        return molecule;
    } catch (const std::exception& fault) {
        throw ConversionError(faultText(fault.what(), record, name));
    }
}

/// The colours of `text`, one for each of the atoms; false where they do not fit.
bool applyColors(SketchMolecule& molecule, const QString& text)
{
    std::size_t next = 0;
    for (const QString& line : text.split(u'\n')) {
        const QStringList words = line.simplified().split(u' ');
        const int count = words.first().toInt();
        // A workspace would end at that word.
        if (words.contains(QLatin1String("END_MOLECULE")))
            return false;
        if (words.size() != 4 || count < 1 || static_cast<std::size_t>(count) > molecule.atoms.size() - next)
            return false;
        for (int i = 0; i < count; ++i)
            molecule.atoms[next++].color = {words[1], words[2], words[3]};
    }
    return next == molecule.atoms.size();
}

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

/// The parts of `molecule` with these numbers of atoms; the molecule itself where they are not its parts.
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

/// Takes the property `name` out of the molecule's data.
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

/// Whether all of the sketch lies where a canvas is.
bool isOnCanvas(const Sketch& sketch)
{
    const QRectF extent = extentOf(sketch);
    return canvasArea.contains(extent.topLeft()) && canvasArea.contains(extent.bottomRight());
}

/// Whether the alias of a V2000 file or the element itself says the symbol; otherwise a property has to.
bool needsProperty(const QString& symbol, bool v3000)
{
    const std::optional<ElementSymbol> element = parseSymbol(symbol);
    if (element && element->number > 0 && symbolOf(*element) == symbol)
        return false;
    return v3000 || symbol.startsWith(QLatin1String(endOfRecord));
}

QByteArray property(const QString& name, const QString& text)
{
    return QStringLiteral(">  <%1>\n%2\n\n").arg(name, text).toUtf8();
}

QString colorsOf(const SketchMolecule& molecule)
{
    QStringList lines;
    for (std::size_t i = 0; i < molecule.atoms.size();) {
        const std::array<QString, 3>& color = molecule.atoms[i].color;
        std::size_t same = 1;
        while (i + same < molecule.atoms.size() && molecule.atoms[i + same].color == color)
            ++same;
        lines.append(QStringLiteral("%1 %2 %3 %4").arg(QString::number(same), color[0], color[1], color[2]));
        i += same;
    }
    return lines.join(u'\n');
}

QString symbolsOf(const SketchMolecule& molecule, bool v3000)
{
    QStringList lines;
    for (std::size_t i = 0; i < molecule.atoms.size(); ++i)
        if (needsProperty(molecule.atoms[i].symbol, v3000))
            lines.append(QString::number(i + 1) + u' ' + molecule.atoms[i].symbol);
    return lines.join(u'\n');
}

bool fitsV2000(const SketchMolecule& molecule)
{
    return molecule.atoms.size() <= mostInV2000 && molecule.bonds.size() <= mostInV2000
        && std::all_of(molecule.atoms.begin(), molecule.atoms.end(), [](const SketchAtom& atom) {
               const double most = std::max({std::fabs(atom.x), std::fabs(atom.y), std::fabs(double{atom.depth})});
               return most < largestInV2000 * pixelsPerAngstrom;
           });
}

void noteFalseDepths(const SketchMolecule& molecule, Notes& notes)
{
    for (const SketchBond& bond : molecule.bonds) {
        if (!isWedge(bond))
            continue;
        const float rise = molecule.atoms[bond.to].depth - molecule.atoms[bond.from].depth;
        if (bond.kinds.front() == KYTBT_StereoUp ? rise < 0 : rise > 0)
            notes.add("wedges whose end lies on the other side in depth, which other programs may take for the stereo");
    }
}

/// A record without the line that ends it in an SD file. `drawing` is the number of the drawing whose places it keeps,
/// or 0.
QByteArray recordOf(const SketchMolecule& molecule, bool v3000, int drawing, const QString& sizes, Notes& notes)
{
    v3000 = v3000 || !fitsV2000(molecule);
    for (const SketchAtom& atom : molecule.atoms)
        for (const double place : {atom.x, atom.y, double{atom.depth}})
            if (!isNear(place / pixelsPerAngstrom))
                throw ConversionError(QStringLiteral("an atom lies too far away for a molfile"));
    noteFalseDepths(molecule, notes);
    const std::unique_ptr<RWMol> made = moleculeOf(molecule, v3000 ? MoleculeUse::V3000 : MoleculeUse::V2000, notes);
    QByteArray text = QByteArray::fromStdString(MolToMolBlock(*made, false, -1, false, v3000));
    if (text.startsWith(endOfRecord)) // a name that would end the record
        text.prepend(' ');
    for (const auto& [name, value] : molecule.data)
        text += property(name, value);
    if (drawing > 0)
        text += property(drawingProperty, QString::number(drawing));
    if (!sizes.isEmpty())
        text += property(sizesProperty, sizes);
    if (const QString symbols = symbolsOf(molecule, v3000); !symbols.isEmpty())
        text += property(symbolsProperty, symbols);
    if (!molecule.atoms.empty())
        text += property(colorsProperty, colorsOf(molecule));
    return text;
}

/// One molecule with the atoms and bonds of all.
SketchMolecule together(const Sketch& sketch)
{
    SketchMolecule all;
    for (const SketchMolecule& molecule : sketch.molecules) {
        const int first = static_cast<int>(all.atoms.size());
        all.atoms.insert(all.atoms.end(), molecule.atoms.begin(), molecule.atoms.end());
        for (SketchBond bond : molecule.bonds) {
            bond.from += first;
            bond.to += first;
            all.bonds.push_back(bond);
        }
        if (all.name.isEmpty())
            all.name = molecule.name;
        for (const auto& entry : molecule.data)
            all.data.push_back(entry);
    }
    return all;
}

QString sizesOf(const Sketch& sketch)
{
    QStringList sizes;
    for (const SketchMolecule& molecule : sketch.molecules)
        if (!molecule.atoms.empty())
            sizes.append(QString::number(molecule.atoms.size()));
    return sizes.size() > 1 ? sizes.join(u' ') : QString();
}

} // namespace

std::vector<Sketch> readMolfiles(const QByteArray& text, const QString& name, Notes& notes)
{
    const std::vector<SdRecord> records = splitRecords(text);
    if (records.empty())
        throw ConversionError(name + QStringLiteral(": there is no molfile in it"));
    std::vector<Sketch> sketches;
    QString lastDrawing;
    for (const SdRecord& record : records) {
        const std::unique_ptr<RWMol> written = parse(record, name);
        noteUnusualHydrogens(*written, notes);
        SketchMolecule molecule = sketchOf(*written, {}, notes);
        molecule.data = record.data;
        if (const auto symbols = take(molecule, symbolsProperty); symbols && !applySymbols(molecule, *symbols))
            notes.add("properties with symbols that do not fit their molecule");
        if (const auto colors = take(molecule, colorsProperty); colors && !applyColors(molecule, *colors))
            notes.add("properties with colours that do not fit their molecule");
        liftWedges(molecule);
        const QString drawing = take(molecule, drawingProperty).value_or(QString());
        const QString sizes = take(molecule, sizesProperty).value_or(QString());

        Sketch sketch;
        sketch.molecules = sizes.isEmpty() ? std::vector{std::move(molecule)} : split(std::move(molecule), sizes);
        const bool keepsPlaces = !drawing.isEmpty() && isOnCanvas(sketch);
        if (keepsPlaces && drawing == lastDrawing && !sketches.empty()) {
            std::move(sketch.molecules.begin(), sketch.molecules.end(), std::back_inserter(sketches.back().molecules));
        } else {
            sketch.placed = keepsPlaces;
            if (!keepsPlaces)
                centre(sketch);
            sketches.push_back(std::move(sketch));
        }
        lastDrawing = keepsPlaces ? drawing : QString();
    }
    return sketches;
}

QByteArray molfileOf(const Sketch& sketch, bool v3000, Notes& notes)
{
    const auto named = std::count_if(sketch.molecules.begin(), sketch.molecules.end(),
                                     [](const SketchMolecule& molecule) { return !molecule.name.isEmpty(); });
    notes.add("names of molecules that share a molfile, which has the first one only", named - 1);
    return recordOf(together(sketch), v3000, sketch.placed ? 1 : 0, sizesOf(sketch), notes);
}

QByteArray sdFileOf(const std::vector<Sketch>& sketches, bool v3000, Notes& notes)
{
    QByteArray text;
    int drawing = 0;
    for (const Sketch& sketch : sketches) {
        ++drawing;
        for (const SketchMolecule& molecule : sketch.molecules)
            text += recordOf(molecule, v3000, sketch.placed ? drawing : 0, QString(), notes) + endOfRecord + "\n";
    }
    return text;
}
