#pragma once

#include "convert/pictures/SvgPath.h"

#include <QByteArray>
#include <QColor>
#include <QLineF>
#include <QList>
#include <QMap>
#include <QRectF>
#include <QString>
#include <QTransform>
#include <QXmlStreamReader>

/// A path or text of a picture's SVG, in the coordinates of the page.
struct PicturePart {
    int cell = 0;     ///< the drawing of a sheet, from 0; -1 outside
    int bond = -1;    ///< the bond that it shows
    QList<int> atoms; ///< the atoms of the bond, or the one that it labels
    QString text;     ///< of a text
    QRectF box;       ///< of a path's points; of a text only its start
    QList<QPointF> points;
    bool isFilled = false;
    QString color;
    QString dashes;
    double lineWidth = 0;
    double fontSize = 0;

    bool isLabel() const { return bond < 0 && atoms.size() == 1; }
    bool isLine() const { return bond >= 0 && !isFilled && points.size() == 2; }
    QLineF line() const { return QLineF(points.first(), points.last()); }
};

inline QList<PicturePart> partsOf(const QByteArray& svg)
{
    QList<PicturePart> parts;
    QXmlStreamReader reader(svg);
    int cell = -1;
    int cells = 0;
    QPointF shift;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::EndElement && reader.name() == QLatin1String("g")) {
            cell = -1;
            shift = QPointF();
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const auto value = [&](const char* name) { return attributes.value(QLatin1String(name)).toString(); };
        if (reader.name() == QLatin1String("g")) {
            const QStringList numbers = value("transform").section(u'(', 1).section(u')', 0, 0).split(u',');
            shift = QPointF(numbers.value(0).toDouble(), numbers.value(1).toDouble());
            cell = cells++;
        }
        if (reader.name() != QLatin1String("path") && reader.name() != QLatin1String("text"))
            continue;
        PicturePart part;
        part.cell = cell;
        for (const QString& word : value("class").split(u' ', Qt::SkipEmptyParts)) {
            if (word.startsWith(QLatin1String("bond-")))
                part.bond = word.mid(5).toInt();
            if (word.startsWith(QLatin1String("atom-")))
                part.atoms.append(word.mid(5).toInt());
        }
        part.isFilled = value("fill") != QLatin1String("none");
        part.color = part.isFilled ? value("fill") : value("stroke");
        part.dashes = value("stroke-dasharray");
        part.lineWidth = value("stroke-width").toDouble();
        part.fontSize = value("font-size").toDouble();
        if (reader.name() == QLatin1String("path")) {
            const SvgPath path = SvgPath::parsed(value("d"));
            part.box = path.extent().translated(shift);
            for (const SvgPath::Segment& segment : path.segments)
                for (const QPointF& point : segment.points)
                    part.points.append(point + shift);
        } else {
            part.box = QRectF(QPointF(value("x").toDouble(), value("y").toDouble()) + shift, QSizeF(0, 0));
            part.text = reader.readElementText();
        }
        parts.append(part);
    }
    return parts;
}

/// The texts of the labels of one drawing by atom, without their markup.
inline QMap<int, QString> labelsOf(const QList<PicturePart>& parts, int cell = 0)
{
    QMap<int, QString> labels;
    for (const PicturePart& part : parts)
        if (part.cell == cell && part.isLabel())
            labels[part.atoms.first()] += part.text;
    return labels;
}

/// The boxes of the labels of one drawing by atom; of a picture with text as paths.
inline QMap<int, QRectF> labelBoxes(const QList<PicturePart>& parts, int cell = 0)
{
    QMap<int, QRectF> boxes;
    for (const PicturePart& part : parts)
        if (part.cell == cell && part.isLabel())
            boxes[part.atoms.first()] |= part.box;
    return boxes;
}

/// Whether a line passes through a rectangle.
inline bool crosses(const QLineF& line, const QRectF& box)
{
    if (box.contains(line.p1()) || box.contains(line.p2()))
        return true;
    const QPointF corners[] = {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
    for (int i = 0; i < 4; ++i)
        if (line.intersects(QLineF(corners[i], corners[(i + 1) % 4])) == QLineF::BoundedIntersection)
            return true;
    return false;
}
