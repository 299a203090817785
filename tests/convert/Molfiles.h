#pragma once

#include <QByteArray>

/// A V2000 molfile of two carbons, with these lines behind them.
inline QByteArray molfileWith(const QByteArray& lines, int bonds = 1)
{
    return "\n  test\n\n  2" + QByteArray::number(bonds).rightJustified(3)
        + "  0  0  0  0  0  0  0  0999 V2000\n    0.0000    0.0000    0.0000 C   0  0\n"
          "    1.5000    0.0000    0.0000 C   0  0\n"
        + lines + "M  END\n";
}

/// A V3000 molfile of two carbons, with these lines between those of its bonds.
inline QByteArray v3000With(const QByteArray& bonds, int count = 1)
{
    return "\n\n\n  0  0  0     0  0            999 V3000\nM  V30 BEGIN CTAB\nM  V30 COUNTS 2 "
        + QByteArray::number(count)
        + " 0 0 0\nM  V30 BEGIN ATOM\nM  V30 1 C 0 0 0 0\nM  V30 2 C 1.5 0 0 0\nM  V30 END ATOM\n"
          "M  V30 BEGIN BOND\n"
        + bonds + "M  V30 END BOND\nM  V30 END CTAB\nM  END\n";
}
