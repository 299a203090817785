#pragma once

#include <QColor>
#include <QString>

#include <optional>

/// How a picture looks.
enum class PictureLook {
    Paper, ///< as a publisher sets it, with coloured elements
    Acs,   ///< the guidelines of the American Chemical Society of 1996: bonds of 14.4 pt, labels of 10 pt, black
    Editor ///< as the editor's window shows it
};

/// The colours of labels and bonds.
enum class PictureColors { Black, Element, Drawing };

/// Options for rendering drawings as pictures. A pixel of them is 1/96 inch unless `dpi` applies.
struct PictureStyle {
    PictureLook look = PictureLook::Paper;
    double scale = 1;                    ///< of the whole picture
    double margin = 10;                  ///< around a drawing, in pixels
    QColor background = Qt::white;       ///< may be transparent
    std::optional<PictureColors> colors; ///< if unset, element colours for Paper and black for Acs
    bool carbons = false;                ///< label all carbons
    bool textAsPaths = false;            ///< text in SVG as outlines; in PNG and PDF it always is
    int columns = 0;                     ///< of a sheet; 0 for as many as fit
    std::optional<bool> names;           ///< below the molecules; if unset, on sheets of several drawings only
    QString legend;                      ///< the record property to show below each molecule
    double width = 0;                    ///< of the picture in pixels at `dpi`; 0 for as wide as needed
    double height = 0;                   ///< likewise
    double dpi = 96;                     ///< pixels per inch of `width`, `height` and of raster pictures
    double bondLength = 0;               ///< mean length in points; 0 for the look's own. Acs always has its own.
};
