#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QString>

/// The path data of an SVG element with absolute commands: lines and curves.
struct SvgPath {
    struct Segment {
        QChar command;         ///< M, L, Q, C or Z
        QList<QPointF> points; ///< of the command, control points included
    };
    QList<Segment> segments;

    /// Parses path data. Commands other than the above end it.
    static SvgPath parsed(const QString& data);

    QString text() const;
    /// The bounding rectangle of all points; curves lie within it.
    QRectF extent() const;
    void scale(double factor);
    /// Whether it is a single straight line.
    bool isLine() const;
};

/// A coordinate or length with at most two decimals.
QString svgNumber(double value);
