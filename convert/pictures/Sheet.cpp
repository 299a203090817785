#include "convert/pictures/Sheet.h"

#include "convert/Deadline.h"
#include "convert/Notes.h"
#include "convert/chemistry/Placement.h"
#include "convert/pictures/MoleculePicture.h"
#include "convert/pictures/SvgPath.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pointsPerInch = 72;
constexpr double screenResolution = 96; // pixels per inch, of the margin
constexpr QSizeF paperSize(595, 842);   // points; A4
constexpr double largestCoordinate = 1'000'000;
constexpr double longestBond = 60; // points; a drawing is not enlarged further to fill a picture
constexpr double nameSize = 0.85;  // of the font of labels
constexpr double lineHeight = 1.25;
constexpr double narrowestNames = 60; // points; a cell is made at least so wide for its name

/// One drawing of a sheet and the text below it.
struct Cell {
    MoleculePicture picture;
    QString name;
    QStringList lines; // of the name
};

/// The measures of a sheet, in points.
struct Grid {
    QSizeF drawing;    // the space for a drawing
    double nameHeight; // the space for its name
    double margin;     // around each cell
    std::size_t columns;
    std::size_t rows; // of a page

    QSizeF cell() const { return {drawing.width() + 2 * margin, drawing.height() + nameHeight + 2 * margin}; }
    QSizeF page() const
    {
        return {cell().width() * static_cast<double>(columns), cell().height() * static_cast<double>(rows)};
    }
};

double pointsOf(double pixels, double dpi)
{
    return pixels * pointsPerInch / dpi;
}

void checkExtent(const Sketch& sketch)
{
    const QRectF extent = extentOf(sketch);
    const double farthest = std::max(
        {std::fabs(extent.left()), std::fabs(extent.right()), std::fabs(extent.top()), std::fabs(extent.bottom())});
    if (!(farthest < largestCoordinate))
        throw ConversionError(QStringLiteral("drawing too large for a picture: extends beyond %1 pixels")
                                  .arg(largestCoordinate, 0, 'f', 0));
}

QString nameOf(const Sketch& sketch, const PictureStyle& style, bool isSheet)
{
    QStringList texts;
    for (const SketchMolecule& molecule : sketch.molecules) {
        if (style.names.value_or(isSheet) && !molecule.name.isEmpty() && !texts.contains(molecule.name))
            texts.append(molecule.name);
        if (style.legend.isEmpty())
            continue;
        for (const auto& [name, text] : molecule.data)
            if (name == style.legend)
                texts.append(text.simplified());
    }
    return texts.join(u'\n');
}

/// Breaks a name into lines of at most `width` points. A word that is wider is kept in one piece.
QStringList brokenName(const QString& name, double width, double fontSize)
{
    QStringList lines;
    for (const QString& paragraph : name.split(u'\n', Qt::SkipEmptyParts)) {
        QString line;
        for (const QString& word : paragraph.split(u' ', Qt::SkipEmptyParts)) {
            const QString longer = line.isEmpty() ? word : line + u' ' + word;
            if (!line.isEmpty() && textWidth(longer, fontSize) > width) {
                lines.append(line);
                line = word;
            } else {
                line = longer;
            }
        }
        lines.append(line);
    }
    return lines;
}

std::vector<Cell> cellsOf(const std::vector<Sketch>& sketches, const PictureStyle& style,
                          const PictureMeasures& measures, bool asPaths)
{
    std::vector<Cell> cells;
    for (const Sketch& sketch : sketches) {
        checkExtent(sketch);
        const Deadline deadline(QStringLiteral("drawing a molecule"));
        cells.push_back({drawnBy(pictureMolecule(sketch, style.carbons), style, measures, asPaths),
                         nameOf(sketch, style, sketches.size() > 1),
                         {}});
    }
    return cells;
}

/// Breaks the names of the cells and measures the sheet, without its columns and rows.
Grid measured(std::vector<Cell>& cells, const PictureStyle& style, double fontSize)
{
    Grid grid{{0, 0}, 0, pointsOf(style.margin, screenResolution), 1, 1};
    for (const Cell& cell : cells) {
        grid.drawing = grid.drawing.expandedTo(cell.picture.extent.size());
        if (!cell.name.isEmpty())
            grid.drawing = grid.drawing.expandedTo({narrowestNames, 0});
    }
    qsizetype lines = 0;
    for (Cell& cell : cells) {
        cell.lines = brokenName(cell.name, grid.drawing.width(), fontSize);
        lines = std::max(lines, cell.lines.size());
    }
    for (const Cell& cell : cells)
        for (const QString& line : cell.lines)
            grid.drawing = grid.drawing.expandedTo({textWidth(line, fontSize), 0});
    if (lines > 0)
        grid.nameHeight = static_cast<double>(lines) * lineHeight * fontSize + fontSize / 2;
    return grid;
}

std::size_t fitting(double whole, double part)
{
    return static_cast<std::size_t>(std::max(1.0, std::floor(whole / part + 1e-6)));
}

/// How much a page is enlarged to fill the size that the style gives.
double enlargement(const QSizeF& natural, const QSizeF& wanted, const PictureStyle& style, double bond)
{
    if (style.look == PictureLook::Acs)
        return 1;
    double factor = std::max(1.0, longestBond / bond);
    if (wanted.width() > 0)
        factor = std::min(factor, wanted.width() / natural.width());
    if (wanted.height() > 0)
        factor = std::min(factor, wanted.height() / natural.height());
    if (style.bondLength > 0 || wanted.isNull())
        factor = std::min(factor, 1.0);
    return factor;
}

QByteArray placed(const Cell& cell, const Grid& grid, const QPointF& corner, double fontSize, bool asPaths)
{
    const QRectF space(corner + QPointF(grid.margin, grid.margin), grid.drawing);
    const QPointF shift = space.center() - cell.picture.extent.center();
    QByteArray body = "<g transform=\"translate(" + svgNumber(shift.x()).toLatin1() + ','
        + svgNumber(shift.y()).toLatin1() + ")\">\n" + cell.picture.elements + "</g>\n";
    double baseline = space.bottom() + fontSize / 2 + fontSize;
    for (const QString& line : cell.lines) {
        body += textElement(line, space.center().x(), baseline, fontSize, asPaths);
        baseline += lineHeight * fontSize;
    }
    return body;
}

} // namespace

std::vector<Page> pagesOf(const std::vector<Sketch>& sketches, const PictureStyle& style, bool asPaths,
                          PageBreak pageBreak)
{
    const double meanBond = meanBondLength(sketches);
    const PictureMeasures measures = measuresFor(style, meanBond);
    const double fontSize = measures.fontSize * nameSize;
    std::vector<Cell> cells = cellsOf(sketches, style, measures, asPaths);
    Grid grid = measured(cells, style, fontSize);
    const QSizeF wanted = QSizeF(pointsOf(style.width, style.dpi), pointsOf(style.height, style.dpi)) / style.scale;

    const std::size_t count = std::max<std::size_t>(1, cells.size());
    const double pageWidth = wanted.width() > 0 ? wanted.width() : paperSize.width();
    grid.columns =
        style.columns > 0 ? static_cast<std::size_t>(style.columns) : fitting(pageWidth, grid.cell().width());
    grid.columns = std::min(grid.columns, count);
    grid.rows = (count + grid.columns - 1) / grid.columns;
    const double bond = measures.scale * meanBond;
    double pageHeight = wanted.height();
    if (pageHeight == 0 && pageBreak == PageBreak::AtPaperSize)
        pageHeight = paperSize.height();
    if (pageHeight > 0 && count > 1) {
        const double factor = enlargement({grid.page().width(), 1}, {wanted.width(), 0}, style, bond);
        grid.rows = std::min(grid.rows, fitting(pageHeight, grid.cell().height() * factor));
    }

    const double factor = enlargement(grid.page(), wanted, style, bond);
    QSizeF shownSize = grid.page().expandedTo(wanted / factor);
    if (style.look != PictureLook::Acs)
        shownSize = {wanted.width() > 0 ? wanted.width() / factor : grid.page().width(),
                     wanted.height() > 0 ? wanted.height() / factor : grid.page().height()};
    const QPointF corner((grid.page().width() - shownSize.width()) / 2,
                         (grid.page().height() - shownSize.height()) / 2);
    std::vector<Page> pages;
    const std::size_t cellsOfPage = grid.columns * grid.rows;
    for (std::size_t first = 0; first < count; first += cellsOfPage) {
        Page page;
        page.shown = QRectF(corner, shownSize);
        page.size = shownSize * factor * style.scale;
        page.first = first;
        page.count = std::min(cellsOfPage, cells.size() - first);
        for (std::size_t i = 0; i < page.count; ++i) {
            const Cell& cell = cells[first + i];
            const std::size_t row = i / grid.columns;
            const std::size_t column = i % grid.columns;
            const QPointF cellCorner(static_cast<double>(column) * grid.cell().width(),
                                     static_cast<double>(row) * grid.cell().height());
            page.body += placed(cell, grid, cellCorner, fontSize, asPaths);
            page.metadata += cell.picture.metadata;
        }
        pages.push_back(std::move(page));
    }
    return pages;
}

QByteArray svgDocument(const Page& page, const PictureStyle& style, const QString& title, const QByteArray& metadata)
{
    const auto number = [](double value) { return svgNumber(value).toLatin1(); };
    const QRectF& shown = page.shown;
    const QByteArray box =
        number(shown.x()) + ' ' + number(shown.y()) + ' ' + number(shown.width()) + ' ' + number(shown.height());
    QByteArray svg =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:rdkit=\"http://www.rdkit.org/xml\" version=\"1.1\" "
        "width=\""
        + number(page.size.width()) + "pt\" height=\"" + number(page.size.height()) + "pt\" viewBox=\"" + box + "\">\n";
    if (!title.isEmpty())
        svg += "<title>" + title.toHtmlEscaped().toUtf8() + "</title>\n";
    if (!page.metadata.isEmpty() || !metadata.isEmpty())
        svg += "<metadata>\n" + page.metadata + metadata + "</metadata>\n";
    if (style.background.alpha() > 0) {
        svg += "<rect x=\"" + number(shown.x()) + "\" y=\"" + number(shown.y()) + "\" width=\"" + number(shown.width())
            + "\" height=\"" + number(shown.height()) + "\" fill=\"" + style.background.name().toLatin1() + '"';
        if (style.background.alpha() < 255)
            svg += " fill-opacity=\"" + number(style.background.alphaF()) + '"';
        svg += "/>\n";
    }
    return svg + page.body + "</svg>\n";
}
