#pragma once

#include <QString>

/// A label as people write it, in the markup that RDKit draws: <sub> and <sup>.
struct AtomLabel {
    QString text;   ///< for a bond that comes from the left, such as CO<sub>2</sub>H
    QString turned; ///< for a bond that comes from the right: HO<sub>2</sub>C
    QString head;   ///< the element that is bonded, which gives the colour; empty if unknown
};

/// The label for a symbol that is not an element: counts are lowered, the numbers of residues (R1) and charges at the
/// end are raised, and a label of groups is turned round group by group. A symbol that is no formula stays as it is.
AtomLabel atomLabel(const QString& symbol);
