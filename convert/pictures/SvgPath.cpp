#include "convert/pictures/SvgPath.h"

#include <algorithm>
#include <limits>

namespace {

/// The next number of `data` from `at`, which is moved past it; false if there is none.
bool readNumber(QStringView data, qsizetype& at, double& number)
{
    while (at < data.size() && (data[at].isSpace() || data[at] == u','))
        ++at;
    const qsizetype start = at;
    while (at < data.size() && (data[at].isDigit() || QStringView(u"+-.eE").contains(data[at])))
        ++at;
    bool isNumber = false;
    number = data.sliced(start, at - start).toDouble(&isNumber);
    return isNumber;
}

} // namespace

SvgPath SvgPath::parsed(const QString& data)
{
    SvgPath path;
    qsizetype at = 0;
    while (at < data.size()) {
        if (data[at].isSpace()) {
            ++at;
            continue;
        }
        if (!QStringView(u"MLQCZ").contains(data[at]))
            break;
        Segment segment{data[at++], {}};
        double x = 0;
        double y = 0;
        while (readNumber(data, at, x) && readNumber(data, at, y))
            segment.points.append({x, y});
        path.segments.append(segment);
    }
    return path;
}

QString SvgPath::text() const
{
    QString text;
    for (const Segment& segment : segments) {
        text += (text.isEmpty() ? QString() : QStringLiteral(" ")) + segment.command;
        for (const QPointF& point : segment.points)
            text += QStringLiteral(" %1,%2").arg(svgNumber(point.x()), svgNumber(point.y()));
    }
    return text;
}

QRectF SvgPath::extent() const
{
    constexpr double far = std::numeric_limits<double>::max();
    QPointF topLeft(far, far);
    QPointF bottomRight(-far, -far);
    for (const Segment& segment : segments) {
        for (const QPointF& point : segment.points) {
            topLeft = {std::min(topLeft.x(), point.x()), std::min(topLeft.y(), point.y())};
            bottomRight = {std::max(bottomRight.x(), point.x()), std::max(bottomRight.y(), point.y())};
        }
    }
    return topLeft.x() <= bottomRight.x() ? QRectF(topLeft, bottomRight) : QRectF();
}

void SvgPath::scale(double factor)
{
    for (Segment& segment : segments)
        for (QPointF& point : segment.points)
            point *= factor;
}

bool SvgPath::isLine() const
{
    return segments.size() == 2 && segments[0].command == u'M' && segments[1].command == u'L'
        && segments[0].points.size() == 1 && segments[1].points.size() == 1;
}

QString svgNumber(double value)
{
    QString text = QString::number(value, 'f', 2);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.'))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}
