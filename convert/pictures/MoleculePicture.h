#pragma once

#include "convert/pictures/PictureMolecule.h"
#include "convert/pictures/PictureStyle.h"

#include <QByteArray>
#include <QRectF>

/// The measures of a picture, in points.
struct PictureMeasures {
    double scale;     ///< points per angstrom
    double lineWidth; ///< of bonds
    double fontSize;  ///< of labels
};

/// The measures for drawings whose bonds have the mean length `meanBond`, in angstroms.
PictureMeasures measuresFor(const PictureStyle& style, double meanBond);

/// The picture of one drawing as elements of SVG, in points, not yet positioned.
struct MoleculePicture {
    QByteArray elements;
    QByteArray metadata; ///< RDKit's description of the molecule: "rdkit:mol" elements
    QRectF extent;       ///< of the ink
};

/// Draws with RDKit's MolDraw2D. Text becomes outlines or, if `asPaths` is false, text.
MoleculePicture drawnBy(const PictureMolecule& picture, const PictureStyle& style, const PictureMeasures& measures,
                        bool asPaths);

/// A line of text, centred at x, as elements of SVG. `y` is its baseline, `fontSize` its size in points.
QByteArray textElement(const QString& text, double x, double y, double fontSize, bool asPaths);

/// The width of a text of that size, in points.
double textWidth(const QString& text, double fontSize);
