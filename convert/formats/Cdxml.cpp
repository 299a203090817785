#include "convert/formats/Cdxml.h"

#include "convert/chemistry/MoleculeInfo.h"
#include "convert/chemistry/Placement.h"
#include "convert/chemistry/Symbols.h"
#include "model/Elements.h"

#include <QHash>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <tuple>

namespace {

constexpr double defaultBondLength = 30;   // points, of a document that names none
constexpr double drawnBondLength = 30;     // canvas pixels
constexpr double maxCoordinate = 1e9 * 20; // canvas pixels, as in molfiles
constexpr int maxElement = 118;
constexpr int carbon = 6;
constexpr int none = -1;

struct Node {
    int line = 0;
    QString id;
    QString type; ///< the attribute NodeType; empty for an ordinary atom
    QString label;
    QString genericName;
    QStringList bondOrdering; ///< the ids of its bonds, in the order of the attachment points of its structure
    int element = carbon;
    int isotope = 0;
    int charge = 0;
    int hydrogens = none; ///< none if unspecified
    bool isRadical = false;
    std::optional<QPointF> position; ///< in points of the document
    int fragment = none;
    int structure = none; ///< the fragment inside a nickname
};

struct Line {
    int line = 0;
    QString id;
    QString begin; ///< the ids of its nodes
    QString end;
    QString order;
    QString display;
};

struct Fragment {
    int outerNode = none; ///< the nickname whose structure it is
    QStringList connectionOrder;
    std::vector<int> nodes;
    std::vector<Line> bonds;
};

/// What is read of a document.
struct Document {
    double bondLength = defaultBondLength;
    std::vector<Node> nodes;
    std::vector<Fragment> fragments;
    QHash<QString, int> nodeOfId;
};

[[noreturn]] void fail(int line, const QString& reason)
{
    throw ConversionError(QStringLiteral("%1: %2").arg(line).arg(reason));
}

double numberOf(QStringView text, int line)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number))
        fail(line, QStringLiteral("invalid number \"%1\"").arg(text.left(40)));
    return number;
}

int intOf(const QXmlStreamAttributes& attributes, const char* name, int minimum, int maximum, int otherwise, int line)
{
    if (!attributes.hasAttribute(QLatin1String(name)))
        return otherwise;
    const double number = numberOf(attributes.value(QLatin1String(name)), line);
    if (number < minimum || number > maximum || number != std::floor(number))
        fail(line, QStringLiteral("%1 must be a whole number from %2 to %3").arg(name).arg(minimum).arg(maximum));
    return static_cast<int>(number);
}

QStringList wordsOf(QStringView text)
{
    return text.toString().simplified().split(u' ', Qt::SkipEmptyParts);
}

/// Reads a document's elements one after the other. Nested ones are on a stack of its own, not on the machine's.
class Parser {
public:
    Parser(const QByteArray& text, Notes& notes)
        : xml(text)
        , notes(notes)
    {
    }

    Document parse()
    {
        while (!xml.atEnd()) {
            switch (xml.readNext()) {
            case QXmlStreamReader::StartElement:
                open.push_back(open.empty() ? Element() : open.back());
                open.back().parent = open.back().name;
                open.back().name = xml.name().toString();
                start(open.back());
                break;
            case QXmlStreamReader::EndElement:
                end(open.back());
                open.pop_back();
                break;
            case QXmlStreamReader::Characters:
                if (!open.empty() && open.back().labelOf != none)
                    document.nodes[open.back().labelOf].label += xml.text();
                else if (!open.empty() && open.back().isFreeText)
                    freeText += xml.text();
                break;
            default:
                break;
            }
        }
        if (xml.hasError())
            fail(lineNumber(), QStringLiteral("invalid XML: ") + reasonOf(xml.errorString()));
        if (!isDocument)
            fail(1, QStringLiteral("not a CDXML document"));
        return std::move(document);
    }

private:
    /// An element that is not closed yet. It inherits from the one around it.
    struct Element {
        QString name;
        QString parent;
        int fragment = none; ///< the innermost fragment
        int node = none;     ///< the innermost node of that fragment
        int labelOf = none;  ///< the node that text belongs to
        bool isFreeText = false;
    };

    int lineNumber() const { return static_cast<int>(xml.lineNumber()); }

    /// A message of Qt in the style of this program's: lower case, without a full stop.
    static QString reasonOf(QString message)
    {
        if (message.endsWith(u'.'))
            message.chop(1);
        return (message.left(1).toLower() + message.mid(1)).simplified();
    }

    void start(Element& element)
    {
        const QXmlStreamAttributes attributes = xml.attributes();
        if (element.name == QLatin1String("CDXML"))
            startDocument(attributes);
        else if (element.name == QLatin1String("fragment"))
            startFragment(element, attributes);
        else if (element.name == QLatin1String("n") && element.fragment != none)
            startNode(element, attributes);
        else if (element.name == QLatin1String("b") && element.fragment != none)
            addBond(element, attributes);
        else if (element.name == QLatin1String("t"))
            startText(element);
        else
            noteObject(element, attributes);
    }

    void startDocument(const QXmlStreamAttributes& attributes)
    {
        isDocument = true;
        if (!attributes.hasAttribute(QLatin1String("BondLength")))
            return;
        document.bondLength = numberOf(attributes.value(QLatin1String("BondLength")), lineNumber());
        if (document.bondLength <= 0)
            fail(lineNumber(), QStringLiteral("the document's bond length must be above 0"));
    }

    void startFragment(Element& element, const QXmlStreamAttributes& attributes)
    {
        Fragment fragment;
        fragment.outerNode = element.node;
        fragment.connectionOrder = wordsOf(attributes.value(QLatin1String("ConnectionOrder")));
        const int index = static_cast<int>(document.fragments.size());
        if (element.node != none && document.nodes[element.node].structure == none)
            document.nodes[element.node].structure = index;
        else if (element.node != none)
            fail(lineNumber(), QStringLiteral("second structure of a nickname"));
        document.fragments.push_back(std::move(fragment));
        element.fragment = index;
        element.node = none;
    }

    void startNode(Element& element, const QXmlStreamAttributes& attributes)
    {
        Node node;
        node.line = lineNumber();
        node.id = attributes.value(QLatin1String("id")).toString();
        node.type = attributes.value(QLatin1String("NodeType")).toString();
        node.genericName = attributes.value(QLatin1String("GenericNickname")).toString();
        node.bondOrdering = wordsOf(attributes.value(QLatin1String("BondOrdering")));
        node.element = intOf(attributes, "Element", 0, maxElement, carbon, node.line);
        node.isotope = intOf(attributes, "Isotope", 0, 999, 0, node.line);
        node.charge = intOf(attributes, "Charge", -99, 99, 0, node.line);
        node.hydrogens = intOf(attributes, "NumHydrogens", 0, 99, none, node.line);
        node.isRadical = attributes.hasAttribute(QLatin1String("Radical"))
            && attributes.value(QLatin1String("Radical")) != QLatin1String("None");
        if (attributes.hasAttribute(QLatin1String("p"))) {
            const QStringList words = wordsOf(attributes.value(QLatin1String("p")));
            if (words.size() < 2)
                fail(node.line, QStringLiteral("position of an atom without two coordinates"));
            node.position = QPointF(numberOf(words[0], node.line), numberOf(words[1], node.line));
        }
        node.fragment = element.fragment;
        const int index = static_cast<int>(document.nodes.size());
        if (!node.id.isEmpty() && document.nodeOfId.contains(node.id))
            fail(node.line, QStringLiteral("second node with the id %1").arg(node.id.left(40)));
        document.nodeOfId.insert(node.id, index);
        document.fragments[element.fragment].nodes.push_back(index);
        document.nodes.push_back(std::move(node));
        element.node = index;
    }

    void addBond(const Element& element, const QXmlStreamAttributes& attributes)
    {
        Line bond;
        bond.line = lineNumber();
        bond.id = attributes.value(QLatin1String("id")).toString();
        bond.begin = attributes.value(QLatin1String("B")).toString();
        bond.end = attributes.value(QLatin1String("E")).toString();
        bond.order = attributes.value(QLatin1String("Order")).toString();
        bond.display = attributes.value(QLatin1String("Display")).toString();
        document.fragments[element.fragment].bonds.push_back(std::move(bond));
    }

    void startText(Element& element)
    {
        if (element.parent == QLatin1String("n")) {
            element.labelOf = element.node;
        } else if (element.parent != QLatin1String("objecttag")) {
            element.isFreeText = true;
            freeText.clear();
        }
    }

    void end(const Element& element)
    {
        if (element.name != QLatin1String("t") || !element.isFreeText)
            return;
        notes.add(freeText.trimmed() == QLatin1String("+") ? "plus signs: discarded, not supported in drawings"
                                                           : "texts: discarded, not supported in drawings");
    }

    /// Warns of an object that a drawing cannot hold.
    void noteObject(const Element& element, const QXmlStreamAttributes& attributes)
    {
        static const QStringList others = {
            "curve",   "table",      "spectrum", "tlcplate", "geometry",   "embeddedobject",   "bracketedgroup",
            "gepband", "constraint", "border",   "splitter", "plasmidmap", "stoichiometrygrid"};
        if (element.name == QLatin1String("arrow"))
            notes.add("arrows: discarded, not supported in drawings");
        else if (element.name == QLatin1String("graphic"))
            noteGraphic(attributes);
        else if (others.contains(element.name))
            notes.add("other objects: discarded, not supported in drawings");
    }

    void noteGraphic(const QXmlStreamAttributes& attributes)
    {
        // An object with a successor is repeated as that, for readers of older versions of the format.
        if (attributes.hasAttribute(QLatin1String("SupersededBy")))
            return;
        const QStringView type = attributes.value(QLatin1String("GraphicType"));
        if (attributes.hasAttribute(QLatin1String("ArrowType")))
            notes.add("arrows: discarded, not supported in drawings");
        else if (type == QLatin1String("Symbol"))
            notes.add(attributes.value(QLatin1String("SymbolType")) == QLatin1String("Plus")
                          ? "plus signs: discarded, not supported in drawings"
                          : "symbols: discarded, not supported in drawings");
        else
            notes.add("other objects: discarded, not supported in drawings");
    }

    QXmlStreamReader xml;
    Notes& notes;
    Document document;
    std::vector<Element> open;
    QString freeText;
    bool isDocument = false;
};

bool isAtom(const Node& node)
{
    return node.type.isEmpty() || node.type == QLatin1String("Element");
}

bool isAttachmentPoint(const Node& node)
{
    return node.type == QLatin1String("ExternalConnectionPoint");
}

/// The symbol of a node as one word.
QString symbolOf(const Node& node)
{
    static const QStringList labelled = {"Nickname",    "GenericNickname", "Fragment",           "Formula",
                                         "Unspecified", "ElementList",     "ElementListNickname"};
    if (isAtom(node))
        return symbolOf(ElementSymbol{node.element, node.isotope, node.charge});
    if (isAttachmentPoint(node))
        return QStringLiteral("*");
    if (!labelled.contains(node.type))
        fail(node.line, QStringLiteral("node of type %1: not supported").arg(node.type.left(40)));
    const QString text = node.label.simplified().isEmpty() ? node.genericName : node.label;
    QString label = text.simplified();
    label.replace(u' ', u'_');
    if (label.isEmpty())
        fail(node.line, QStringLiteral("node of type %1 without a label").arg(node.type.left(40)));
    return label;
}

/// Makes sketches of a document's fragments.
class Builder {
public:
    Builder(const Document& document, Notes& notes)
        : document(document)
        , notes(notes)
        , atomOf(document.nodes.size(), none)
        , isUsed(document.nodes.size(), false)
    {
    }

    Sketch build()
    {
        Sketch sketch;
        for (std::size_t i = 0; i < document.fragments.size(); ++i) {
            if (document.fragments[i].outerNode != none)
                continue;
            molecule = SketchMolecule();
            hydrogens.clear();
            bonded.clear();
            wavy.clear();
            addFragments(static_cast<int>(i));
            if (!molecule.atoms.empty())
                sketch.molecules.push_back(std::move(molecule));
        }
        return sketch;
    }

private:
    /// Adds the atoms of a fragment and of the structures of its nicknames, then their bonds.
    void addFragments(int first)
    {
        std::vector<int> all = {first};
        for (std::size_t i = 0; i < all.size(); ++i)
            for (const int node : document.fragments[all[i]].nodes)
                if (document.nodes[node].structure != none)
                    all.push_back(document.nodes[node].structure);
        for (const int index : all)
            for (const Line& bond : document.fragments[index].bonds)
                for (const QString& id : {bond.begin, bond.end})
                    resolve(id, bond);
        for (const int index : all)
            for (const int node : document.fragments[index].nodes)
                if (document.nodes[node].structure == none && !isUsed[node])
                    addAtom(node);
        for (const int index : all)
            for (const Line& bond : document.fragments[index].bonds)
                addBond(bond);
        for (const SketchBond& bond : wavy)
            openDoubleBonds(bond);
        noteUnusualHydrogens();
    }

    /// A wavy bond leaves the double bonds at its atoms open, or else its stereocentre.
    void openDoubleBonds(const SketchBond& mark)
    {
        bool isOpen = false;
        for (SketchBond& bond : molecule.bonds) {
            const bool touches =
                bond.from == mark.from || bond.from == mark.to || bond.to == mark.from || bond.to == mark.to;
            if (touches && bond.kinds.size() == 2 && bond.kinds.back() != KYTBT_DashedLine)
                isOpen = bond.open = true;
        }
        if (!isOpen)
            notes.add("bonds with unknown stereo: stereo mark discarded");
    }

    void addAtom(int index)
    {
        const Node& node = document.nodes[index];
        if (!node.position)
            fail(node.line, QStringLiteral("atom without a position"));
        SketchAtom atom;
        atom.symbol = symbolOf(node);
        const double scale = drawnBondLength / document.bondLength;
        atom.x = node.position->x() * scale;
        atom.y = node.position->y() * scale;
        if (!(std::fabs(atom.x) < maxCoordinate) || !(std::fabs(atom.y) < maxCoordinate))
            fail(node.line, QStringLiteral("position of an atom out of range"));
        atom.color = elementColor(atom.symbol);
        if (node.isRadical)
            notes.add("unpaired electrons: discarded, not supported in drawings");
        atomOf[index] = static_cast<int>(molecule.atoms.size());
        hydrogens.push_back(isAtom(node) ? node.hydrogens : none);
        molecule.atoms.push_back(std::move(atom));
    }

    int nodeWithId(const QString& id, int line) const
    {
        const auto known = document.nodeOfId.constFind(id);
        if (id.isEmpty() || known == document.nodeOfId.cend())
            fail(line, QStringLiteral("bond refers to non-existent node \"%1\"").arg(id.left(40)));
        return *known;
    }

    /// The attachment point of a nickname's structure that the bond leads to.
    int attachmentPoint(const Node& nickname, const Line& bond) const
    {
        const Fragment& structure = document.fragments[nickname.structure];
        std::vector<int> points;
        for (const int node : structure.nodes)
            if (isAttachmentPoint(document.nodes[node]))
                points.push_back(node);
        if (points.size() == 1)
            return points.front();
        const qsizetype index = nickname.bondOrdering.indexOf(bond.id);
        if (index >= 0 && index < structure.connectionOrder.size()) {
            const int node = document.nodeOfId.value(structure.connectionOrder[index], none);
            if (std::find(points.begin(), points.end(), node) != points.end())
                return node;
        }
        fail(nickname.line,
             QStringLiteral("nickname %1: unknown attachment point of its structure").arg(nickname.label.simplified()));
    }

    /// The atom that is bonded to an attachment point, inside the structure; the node may be a nickname itself.
    std::pair<int, const Line*> neighbourOf(int point) const
    {
        const Node& node = document.nodes[point];
        std::pair<int, const Line*> found = {none, nullptr};
        for (const Line& bond : document.fragments[node.fragment].bonds) {
            const bool begins = nodeWithId(bond.begin, bond.line) == point;
            if (!begins && nodeWithId(bond.end, bond.line) != point)
                continue;
            if (found.second)
                fail(node.line, QStringLiteral("attachment point with several bonds"));
            found = {nodeWithId(begins ? bond.end : bond.begin, bond.line), &bond};
        }
        if (!found.second)
            fail(node.line, QStringLiteral("attachment point without a bond"));
        return found;
    }

    /// The node at an end of a bond: of a nickname with a structure, the one that it is attached by. Marks the
    /// attachment points of the structures as used, so that the bond stands for theirs.
    int resolve(const QString& id, const Line& bond)
    {
        int node = nodeWithId(id, bond.line);
        const Line* through = &bond;
        for (std::size_t steps = 0; document.nodes[node].structure != none; ++steps) {
            if (steps > document.nodes.size())
                fail(bond.line, QStringLiteral("nicknames that contain each other"));
            const int point = attachmentPoint(document.nodes[node], *through);
            isUsed[point] = true;
            std::tie(node, through) = neighbourOf(point);
        }
        return node;
    }

    int atomAt(const QString& id, const Line& bond)
    {
        const int atom = atomOf[resolve(id, bond)];
        if (atom == none || atom >= static_cast<int>(molecule.atoms.size()))
            fail(bond.line, QStringLiteral("bond to a node of another fragment"));
        return atom;
    }

    void addBond(const Line& line)
    {
        for (const QString& id : {line.begin, line.end})
            if (isUsed[nodeWithId(id, line.line)])
                return; // the bond from outside stands for it
        SketchBond bond;
        bond.from = atomAt(line.begin, line);
        bond.to = atomAt(line.end, line);
        if (bond.from == bond.to)
            fail(line.line, QStringLiteral("bond from an atom to itself"));
        if (!bonded.insert(std::minmax(bond.from, bond.to)).second)
            fail(line.line, QStringLiteral("duplicate bond between two atoms"));
        setKinds(bond, line);
        molecule.bonds.push_back(std::move(bond));
    }

    void noteUnusualHydrogens()
    {
        if (std::all_of(hydrogens.begin(), hydrogens.end(), [](int count) { return count == none; }))
            return;
        const std::vector<int> usual = implicitHydrogens(molecule);
        for (std::size_t i = 0; i < hydrogens.size(); ++i)
            if (hydrogens[i] != none && hydrogens[i] != usual[i])
                notes.add("atoms with an unusual number of hydrogens: read with the usual number");
    }

    void setKinds(SketchBond& bond, const Line& line)
    {
        bond.kinds = linesOf(line);
        const QString& display = line.display;
        if (display.isEmpty() || display == QLatin1String("Solid"))
            return;
        const bool isUp = display == QLatin1String("WedgeBegin") || display == QLatin1String("WedgeEnd");
        const bool isDown = display == QLatin1String("WedgedHashBegin") || display == QLatin1String("WedgedHashEnd");
        if ((isUp || isDown) && bond.kinds.size() == 1) {
            bond.kinds = {isUp ? KYTBT_StereoUp : KYTBT_StereoDown};
            if (display.endsWith(QLatin1String("End")))
                std::swap(bond.from, bond.to);
        } else if (display == QLatin1String("Wavy") && bond.kinds.size() == 2) {
            bond.open = true;
        } else if (display == QLatin1String("Wavy")) {
            wavy.push_back(bond);
        } else if (isUp || isDown) {
            notes.add("wedges on bonds other than single bonds: discarded");
        } else {
            notes.add("bold, hashed and other styles of bonds: drawn as ordinary bonds");
        }
    }

    std::vector<KytBondType> linesOf(const Line& line)
    {
        const QString& order = line.order;
        if (order.isEmpty() || order == QLatin1String("1"))
            return {KYTBT_SingleBond};
        if (order == QLatin1String("2"))
            return {KYTBT_SingleBond, KYTBT_SingleBond};
        if (order == QLatin1String("3"))
            return {KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond};
        if (order == QLatin1String("1.5"))
            return {KYTBT_SingleBond, KYTBT_DashedLine};
        if (order == QLatin1String("hydrogen"))
            return {KYTBT_DashedLine};
        if (order == QLatin1String("dative")) {
            notes.add("dative and other unsupported bonds: read as single bonds");
            return {KYTBT_SingleBond};
        }
        fail(line.line, QStringLiteral("bond of order \"%1\": not supported").arg(order.left(40)));
    }

    const Document& document;
    Notes& notes;
    std::vector<int> atomOf;  ///< the index in its molecule of each node
    std::vector<bool> isUsed; ///< of each node: an attachment point that a bond from outside stands for

    // What is being built.
    SketchMolecule molecule;
    std::vector<int> hydrogens;           ///< of each atom, none if unspecified
    std::set<std::pair<int, int>> bonded; ///< pairs of atoms
    std::vector<SketchBond> wavy;
};

} // namespace

std::vector<Sketch> readCdxml(const Record& file, const QString& name, Notes& notes)
{
    try {
        const Document document = Parser(file.text, notes).parse();
        Sketch sketch = Builder(document, notes).build();
        if (sketch.molecules.empty())
            fail(1, QStringLiteral("contains no molecule"));
        for (SketchMolecule& molecule : sketch.molecules)
            liftWedges(molecule);
        centre(sketch);
        return {std::move(sketch)};
    } catch (const ConversionError& error) {
        throw ConversionError(name + u':' + error.text());
    }
}
