#include "convert/pictures/MoleculePicture.h"

#include "convert/Notes.h"
#include "convert/pictures/SvgPath.h"

#include <GraphMol/MolDraw2D/MolDraw2DSVG.h>
#include <GraphMol/MolDraw2D/MolDraw2DUtils.h>

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHash>
#include <QPainterPath>
#include <QRegularExpression>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

using namespace RDKit;

namespace {

// The guidelines of 1996, in points.
constexpr double acsBondLength = 14.4;
constexpr double acsLineWidth = 0.6;
constexpr double acsFontSize = 10;
// A little larger and stronger, for slides and screens too; all grows with the bonds.
constexpr double paperBondLength = 20;
constexpr double paperLineWidth = 1;
constexpr double paperFontSize = 13;

// MolDraw2D writes one decimal: it draws ten times as large.
constexpr double precision = 10;

// Lengths of dashes and gaps in widths of a line.
constexpr double dashLength = 3.5;
constexpr double dashGap = 2.5;
constexpr double dotLength = 1.2;
constexpr double dotGap = 2.2;

constexpr const char* outlineFontFamily = "Liberation Sans";
constexpr int outlineFontSize = 100; // pixels
constexpr const char* textFontFamily = "Arial,Helvetica,'Liberation Sans',sans-serif";

/// An element of RDKit's SVG, in points.
struct Element {
    QString classes;
    SvgPath path;        // without segments for a text
    QString text;        // a part of a label
    QPointF position;    // of the text: start of its baseline
    double fontSize = 0; // of the text
    QString fill;        // "none" or a colour
    QString stroke;
    double strokeWidth = 0;
    QString dashes;
    int bond = -1; // the bond that it shows, if any
    int atom = -1; // the atom whose label it is, if any
};

/// The font of text that RDKit does not draw, at a size without hinting effects.
const QFont& outlineFont()
{
    static const QFont font = [] {
        QFont chosen{QString::fromLatin1(outlineFontFamily)};
        chosen.setStyleHint(QFont::SansSerif);
        chosen.setHintingPreference(QFont::PreferNoHinting);
        chosen.setPixelSize(outlineFontSize);
        return chosen;
    }();
    return font;
}

/// The outlines of a text whose baseline starts at (0, 0).
QPainterPath outlines(const QString& text, double size)
{
    QPainterPath path;
    path.addText(0, 0, outlineFont(), text);
    const double factor = size / outlineFontSize;
    return QTransform::fromScale(factor, factor).map(path);
}

SvgPath svgPathOf(const QPainterPath& painted)
{
    SvgPath path;
    for (int i = 0; i < painted.elementCount(); ++i) {
        const QPainterPath::Element element = painted.elementAt(i);
        if (element.type == QPainterPath::CurveToElement) {
            path.segments.append(SvgPath::Segment{u'C', {element, painted.elementAt(i + 1), painted.elementAt(i + 2)}});
            i += 2;
        } else {
            path.segments.append(SvgPath::Segment{element.type == QPainterPath::MoveToElement ? u'M' : u'L',
                                                  QList<QPointF>{QPointF(element)}});
        }
    }
    path.segments.append(SvgPath::Segment{u'Z', {}});
    return path;
}

QString styleValue(const QString& style, const QString& name)
{
    for (const QString& entry : style.split(u';'))
        if (entry.section(u':', 0, 0).trimmed() == name)
            return entry.section(u':', 1).trimmed();
    return {};
}

double lengthIn(QString text)
{
    return text.remove(QStringLiteral("px")).toDouble() / precision;
}

/// The number in a class such as "bond-3"; -1 if there is none of that name.
int numberIn(const QString& classes, const QString& name)
{
    for (const QString& one : classes.split(u' '))
        if (one.startsWith(name))
            return one.mid(name.size()).toInt();
    return -1;
}

Element elementAt(QXmlStreamReader& reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    const QString style = attributes.value(QStringLiteral("style")).toString();
    Element element;
    element.classes = attributes.value(QStringLiteral("class")).toString();
    element.bond = numberIn(element.classes, QStringLiteral("bond-"));
    element.atom = element.bond < 0 ? numberIn(element.classes, QStringLiteral("atom-")) : -1;
    element.fill = attributes.hasAttribute(QStringLiteral("fill")) ? attributes.value(QStringLiteral("fill")).toString()
                                                                   : styleValue(style, QStringLiteral("fill"));
    element.stroke = styleValue(style, QStringLiteral("stroke"));
    element.strokeWidth = lengthIn(styleValue(style, QStringLiteral("stroke-width")));
    element.dashes = styleValue(style, QStringLiteral("stroke-dasharray"));
    if (reader.name() == QLatin1String("path")) {
        element.path = SvgPath::parsed(attributes.value(QStringLiteral("d")).toString());
        element.path.scale(1 / precision);
        return element;
    }
    element.position =
        QPointF(attributes.value(QStringLiteral("x")).toDouble(), attributes.value(QStringLiteral("y")).toDouble())
        / precision;
    element.fontSize = lengthIn(styleValue(style, QStringLiteral("font-size")));
    element.text = reader.readElementText();
    return element;
}

std::vector<Element> elementsOf(const QByteArray& svg)
{
    std::vector<Element> elements;
    QXmlStreamReader reader(svg);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("path") || reader.name() == QLatin1String("text"))
            elements.push_back(elementAt(reader));
    }
    if (reader.hasError())
        throw ConversionError(QStringLiteral("the picture of a molecule cannot be read: ") + reader.errorString());
    return elements;
}

QRectF extentOf(const Element& element)
{
    if (element.text.isEmpty()) {
        const double half = element.stroke == QLatin1String("none") ? 0 : element.strokeWidth / 2;
        return element.path.extent().adjusted(-half, -half, half, half);
    }
    const double width = textWidth(element.text, element.fontSize);
    return QRectF(element.position.x(), element.position.y() - 0.73 * element.fontSize, width, 0.75 * element.fontSize);
}

/// Joins the letters of a label, which RDKit writes one by one, where they stand in one line.
std::vector<Element> joined(const std::vector<Element>& elements)
{
    std::vector<Element> result;
    for (const Element& element : elements) {
        Element* last = result.empty() ? nullptr : &result.back();
        if (last && !element.text.isEmpty() && !last->text.isEmpty() && last->atom == element.atom
            && last->fontSize == element.fontSize && last->position.y() == element.position.y()
            && last->position.x() < element.position.x())
            last->text += element.text;
        else
            result.push_back(element);
    }
    return result;
}

/// Replaces the stand-ins of labels that RDKit cannot draw.
std::vector<Element> withForeignLabels(std::vector<Element> elements, const PictureMolecule& picture, double fontSize,
                                       bool asPaths)
{
    const auto isStandIn = [&](const Element& element) {
        return element.atom >= 0 && picture.foreign.contains(static_cast<unsigned>(element.atom));
    };
    struct StandIn {
        Element first;
        QRectF box;
    };
    std::map<int, StandIn> standIns;
    for (const Element& element : elements)
        if (isStandIn(element))
            standIns.try_emplace(element.atom, StandIn{element, {}}).first->second.box |= extentOf(element);
    elements.erase(std::remove_if(elements.begin(), elements.end(), isStandIn), elements.end());
    for (const auto& [atom, standIn] : standIns) {
        const QString& label = picture.foreign.at(static_cast<unsigned>(atom));
        Element own = standIn.first;
        own.position = QPointF(standIn.box.center().x() - textWidth(label, fontSize) / 2, standIn.box.bottom());
        own.text = label;
        own.fontSize = fontSize;
        own.path = SvgPath();
        if (asPaths) {
            own.path = svgPathOf(outlines(label, fontSize).translated(own.position));
            own.text.clear();
        }
        elements.push_back(own);
    }
    return elements;
}

/// Dashes the lines of bonds as drawn: hydrogen bonds are dotted, other dashed lines have longer dashes.
void setDashes(std::vector<Element>& elements, const PictureMolecule& picture)
{
    std::map<int, int> count;
    for (const Element& element : elements)
        ++count[element.bond];
    std::map<int, int> seen;
    for (Element& element : elements) {
        const auto bond = picture.dashed.find(static_cast<unsigned>(element.bond));
        if (element.bond < 0 || bond == picture.dashed.end())
            continue;
        const std::vector<KytBondType>& kinds = bond->second;
        const auto lines = static_cast<int>(std::min<std::size_t>(kinds.size(), 3));
        const auto dashed = std::count(kinds.begin(), kinds.end(), KYTBT_DashedLine);
        const int line = seen[element.bond]++ * lines / count[element.bond];
        const bool isAromatic = lines == 2 && dashed == 1; // RDKit chooses the line inside the ring
        const bool isDashed = isAromatic ? !element.dashes.isEmpty() : kinds[line] == KYTBT_DashedLine;
        const double dash = element.strokeWidth * (lines == 1 ? dotLength : dashLength);
        const double gap = element.strokeWidth * (lines == 1 ? dotGap : dashGap);
        element.dashes = isDashed ? svgNumber(dash) + u',' + svgNumber(gap) : QString();
    }
}

/// Works for black, too, which `QColor::lighter` leaves black.
QColor closerToWhite(const QColor& color)
{
    const auto raised = [](int component) { return component + (255 - component + 7) / 8; };
    return QColor(raised(color.red()), raised(color.green()), raised(color.blue()));
}

/// `color`, made darker or lighter until it can be seen on the background.
QColor readableOn(const QColor& background, QColor color)
{
    constexpr int leastContrast = 60; // of 255
    const int ground = background.alpha() < 128 ? 255 : qGray(background.rgb());
    while (std::abs(qGray(color.rgb()) - ground) < leastContrast)
        color = ground < 128 ? closerToWhite(color) : color.darker(115);
    return color;
}

void paintIn(Element& element, const QColor& color)
{
    if (element.fill != QLatin1String("none"))
        element.fill = color.name();
    if (!element.stroke.isEmpty() && element.stroke != QLatin1String("none"))
        element.stroke = color.name();
}

double distanceBetween(const QPointF& a, const QPointF& b)
{
    return std::hypot(b.x() - a.x(), b.y() - a.y());
}

/// Whether a line runs along the bond from `from` to `to`, as the hashes of a wedge do not.
bool runsAlong(const SvgPath& path, const QPointF& from, const QPointF& to)
{
    if (!path.isLine())
        return false;
    const QPointF line = path.segments[1].points[0] - path.segments[0].points[0];
    const QPointF bond = to - from;
    const double product = QPointF::dotProduct(line, bond);
    return std::fabs(product) > 0.7 * std::hypot(line.x(), line.y()) * std::hypot(bond.x(), bond.y());
}

/// The colours that the atoms have in the drawing.
class DrawingColors {
public:
    /// `positions` are those of the atoms, in points. The arguments must outlive this.
    DrawingColors(const PictureMolecule& picture, const std::vector<QPointF>& positions, const QColor& background)
        : picture(picture)
        , positions(positions)
        , background(background)
        , fromLeft(positions.size())
    {
        std::iota(fromLeft.begin(), fromLeft.end(), std::size_t(0));
        std::sort(fromLeft.begin(), fromLeft.end(),
                  [&](std::size_t a, std::size_t b) { return positions[a].x() < positions[b].x(); });
    }

    /// Adds the element in the colour of its atom, or its halves in those of the atoms of its bond.
    void add(Element element, std::vector<Element>& colored) const
    {
        if (element.bond >= 0 && runsAlongBond(element)) {
            addHalves(element, colored);
            return;
        }
        paintIn(element, colorOf(atomOf(element)));
        colored.push_back(std::move(element));
    }

private:
    QColor colorOf(std::size_t atom) const { return readableOn(background, picture.colors[atom]); }

    std::pair<unsigned, unsigned> endsOf(const Element& element) const
    {
        const Bond* bond = picture.molecule->getBondWithIdx(static_cast<unsigned>(element.bond));
        return {bond->getBeginAtomIdx(), bond->getEndAtomIdx()};
    }

    bool runsAlongBond(const Element& element) const
    {
        const auto [from, to] = endsOf(element);
        return runsAlong(element.path, positions[from], positions[to]);
    }

    /// A label has its atom, a solid wedge that of its narrow end; a hash and a corner have the nearest one.
    std::size_t atomOf(const Element& element) const
    {
        if (element.atom >= 0)
            return static_cast<std::size_t>(element.atom);
        if (element.bond < 0)
            return nearestTo(element.path.segments.front().points.front());
        const auto [from, to] = endsOf(element);
        const QPointF middle = element.path.extent().center();
        const bool isNearStart = distanceBetween(middle, positions[from]) <= distanceBetween(middle, positions[to]);
        return isNearStart || !element.path.isLine() ? from : to;
    }

    std::size_t nearestTo(const QPointF& point) const
    {
        const auto right = std::lower_bound(fromLeft.begin(), fromLeft.end(), point.x(),
                                            [&](std::size_t atom, double x) { return positions[atom].x() < x; });
        std::size_t nearest = 0;
        double least = std::numeric_limits<double>::infinity();
        // Whether atoms further in the same direction can be nearer still.
        const auto goesOn = [&](std::size_t atom) {
            if (std::fabs(positions[atom].x() - point.x()) > least)
                return false;
            if (const double distance = distanceBetween(positions[atom], point); distance < least) {
                least = distance;
                nearest = atom;
            }
            return true;
        };
        for (auto atom = right; atom != fromLeft.end() && goesOn(*atom);)
            ++atom;
        for (auto atom = right; atom != fromLeft.begin() && goesOn(*std::prev(atom));)
            --atom;
        return nearest;
    }

    void addHalves(Element first, std::vector<Element>& colored) const
    {
        const auto [from, to] = endsOf(first);
        QPointF& start = first.path.segments[0].points[0];
        QPointF& end = first.path.segments[1].points[0];
        if (distanceBetween(start, positions[from]) > distanceBetween(end, positions[from]))
            std::swap(start, end);
        const bool isSplit = colorOf(from) != colorOf(to);
        Element second = first;
        if (isSplit)
            second.path.segments[0].points[0] = end = (start + end) / 2;
        paintIn(first, colorOf(from));
        paintIn(second, colorOf(to));
        colored.push_back(std::move(first));
        if (isSplit)
            colored.push_back(std::move(second));
    }

    const PictureMolecule& picture;
    const std::vector<QPointF>& positions;
    QColor background;
    std::vector<std::size_t> fromLeft; // the atoms, sorted by x
};

QByteArray svgOf(const Element& element)
{
    QString svg;
    const QString classes =
        element.classes.isEmpty() ? QString() : QStringLiteral(" class=\"%1\"").arg(element.classes);
    if (element.text.isEmpty()) {
        svg = QStringLiteral("<path%1 d=\"%2\" fill=\"%3\"").arg(classes, element.path.text(), element.fill);
        if (!element.stroke.isEmpty() && element.stroke != QLatin1String("none"))
            svg += QStringLiteral(" stroke=\"%1\" stroke-width=\"%2\"")
                       .arg(element.stroke, svgNumber(element.strokeWidth));
        if (!element.dashes.isEmpty())
            svg += QStringLiteral(" stroke-dasharray=\"%1\"").arg(element.dashes);
        svg += QStringLiteral("/>\n");
    } else {
        svg = QStringLiteral("<text%1 x=\"%2\" y=\"%3\" font-family=\"%4\" font-size=\"%5\" fill=\"%6\">%7</text>\n")
                  .arg(classes, svgNumber(element.position.x()), svgNumber(element.position.y()),
                       QLatin1String(textFontFamily), svgNumber(element.fontSize), element.fill,
                       element.text.toHtmlEscaped());
    }
    return svg.toUtf8();
}

PictureColors colorsFor(const PictureStyle& style)
{
    return style.colors.value_or(style.look == PictureLook::Acs ? PictureColors::Black : PictureColors::Element);
}

bool isDark(const QColor& color)
{
    return color.alpha() > 127 && qGray(color.rgb()) < 96;
}

void setOptions(MolDrawOptions& options, const PictureStyle& style, const PictureMeasures& measures)
{
    MolDraw2DUtils::setACS1996Options(options);
    options.scalingFactor = measures.scale * precision;
    options.fixedBondLength = options.scalingFactor; // pixels an angstrom, in spite of its name
    options.bondLineWidth = measures.lineWidth * precision;
    options.fixedFontSize = static_cast<int>(std::lround(measures.fontSize * precision));
    options.fontFile = "BuiltinRobotoRegular";
    options.prepareMolsBeforeDrawing = false; // it would add hydrogens and choose wedges
    options.clearBackground = false;
    options.flagCloseContactsDist = -1;
    options.includeRadicals = false;
    if (colorsFor(style) == PictureColors::Element && isDark(style.background))
        setDarkMode(options);
    else if (colorsFor(style) == PictureColors::Element)
        assignDefaultPalette(options.atomColourPalette);
}

/// RDKit's description of the molecule as drawn by `drawer`; labels that are not elements become "*".
QByteArray addMetadata(MolDraw2DSVG& drawer, const PictureMolecule& picture)
{
    RWMol described(*picture.molecule);
    for (Atom* atom : described.atoms())
        if (atom->hasProp(common_properties::dummyLabel))
            atom->setAtomicNum(0);
    drawer.addMoleculeMetadata(described);
    const QByteArray svg = QByteArray::fromStdString(drawer.getDrawingText());
    const qsizetype start = svg.indexOf("<rdkit:mol");
    const qsizetype end = svg.indexOf("</metadata>");
    return start >= 0 && end > start ? svg.mid(start, end - start) : QByteArray();
}

} // namespace

PictureMeasures measuresFor(const PictureStyle& style, double meanBond)
{
    if (style.look == PictureLook::Acs)
        return {acsBondLength / meanBond, acsLineWidth, acsFontSize};
    const double length = style.bondLength > 0 ? style.bondLength : paperBondLength;
    const double growth = length / paperBondLength;
    return {length / meanBond, paperLineWidth * growth, paperFontSize * growth};
}

MoleculePicture drawnBy(const PictureMolecule& picture, const PictureStyle& style, const PictureMeasures& measures,
                        bool asPaths)
{
    MoleculePicture result;
    if (picture.molecule->getNumAtoms() == 0)
        return result;
    MolDraw2DSVG drawer(-1, -1, -1, -1, !asPaths);
    setOptions(drawer.drawOptions(), style, measures);
    drawer.drawMolecule(*picture.molecule);
    std::vector<QPointF> positions;
    for (unsigned i = 0; i < picture.molecule->getNumAtoms(); ++i) {
        const Point2D position = drawer.getDrawCoords(static_cast<int>(i));
        positions.push_back(QPointF(position.x, position.y) / precision);
    }
    const QByteArray svg = QByteArray::fromStdString(drawer.getDrawingText()) + "</svg>";
    result.metadata = addMetadata(drawer, picture);

    std::vector<Element> elements = joined(elementsOf(svg));
    elements = withForeignLabels(std::move(elements), picture, measures.fontSize, asPaths);
    setDashes(elements, picture);
    if (colorsFor(style) == PictureColors::Drawing) {
        std::vector<Element> colored;
        const DrawingColors colors(picture, positions, style.background);
        for (Element& element : elements)
            colors.add(std::move(element), colored);
        elements = std::move(colored);
    }
    for (const Element& element : elements) {
        result.elements += svgOf(element);
        result.extent |= extentOf(element);
    }
    // A drawing without ink, such as a single carbon bonded to one at the same point, still has a position.
    for (const QPointF& position : positions)
        result.extent |= QRectF(position, QSizeF(measures.lineWidth, measures.lineWidth));
    return result;
}

QByteArray textElement(const QString& text, double x, double y, double fontSize, bool asPaths)
{
    Element element;
    element.fill = QStringLiteral("#000000");
    element.position = QPointF(x - textWidth(text, fontSize) / 2, y);
    element.fontSize = fontSize;
    if (asPaths)
        element.path = svgPathOf(outlines(text, fontSize).translated(element.position));
    else
        element.text = text;
    return svgOf(element);
}

double textWidth(const QString& text, double fontSize)
{
    return QFontMetricsF(outlineFont()).horizontalAdvance(text) * fontSize / outlineFontSize;
}
