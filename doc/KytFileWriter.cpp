#include "bonds/KytBond.h"
#include "doc/KytFileIO.h"
#include "doc/Numbers.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"

#include <QTextStream>

#include <algorithm>

namespace {

bool isSpace(QChar c)
{
    return c.isSpace();
}

/// `symbol` as one word: each run of white space becomes "_", and so does an empty symbol.
QString symbolWord(const QString& symbol)
{
    QString word;
    bool afterSpace = false;
    for (const QChar c : symbol) {
        if (!isSpace(c))
            word += c;
        else if (!afterSpace)
            word += QLatin1Char('_');
        afterSpace = isSpace(c);
    }
    return word.isEmpty() ? QStringLiteral("_") : word;
}

/// A colour component as one word: unchanged or, if it is empty or has white space, the integer at its start.
QString colorWord(const QString& component)
{
    if (component.isEmpty() || std::any_of(component.begin(), component.end(), isSpace))
        return QString::number(integerPrefix(component));
    return component;
}

void writeAtom(QTextStream& stream, const KytAtom* atom)
{
    stream << "  ATOM " << symbolWord(atom->symbol) << ' ' << shortReal(atom->x()) << ' ' << shortReal(atom->y()) << ' '
           << shortReal(atom->getAtomZ());
    for (const QString& component : atom->_atomColor)
        stream << ' ' << colorWord(component);
    stream << '\n';
}

/// Writes the record of a bond. Its line is terminated only if the bond has one to three lines.
void writeBond(QTextStream& stream, const BondCell& cell)
{
    const int kinds[] = {cell.bond->bond1Type, cell.bond->bond2Type, cell.bond->bond3Type};
    const int count = cell.bond->bondCount;
    stream << "  BOND " << cell.row << ' ' << cell.column << ' ' << count << ' ';
    if (count < 1 || count > 3)
        return;
    for (int i = 0; i < count; ++i)
        stream << kinds[i] << (i + 1 < count ? ' ' : '\n');
}

} // namespace

KytFileIO::KytFileIO(const QString& fileName)
    : name(fileName)
{
}

void KytFileIO::writeWorkspace(QTextStream& stream, QCanvas* canvas)
{
    stream << "KYTFILE\n";
    for (const DrawnMolecule& drawn : drawnMolecules(*canvas))
        writeAtoms(stream, drawn.atoms);
    stream << "END_KYTFILE\n";
}

void KytFileIO::writeMolecule(QTextStream& stream, KytMolecule* molecule, QCanvas* canvas)
{
    writeAtoms(stream, drawnAtoms(*canvas, molecule));
}

void KytFileIO::writeAtoms(QTextStream& stream, const QList<KytAtom*>& atoms)
{
    atomsArr = atoms;
    atomsCount = static_cast<int>(atoms.size());
    bondsCount = bondsAmong(atoms);
    bondsArr = bondTable(atoms);

    stream << " MOLECULE " << atomsCount << ' ' << bondsCount << '\n';
    for (const KytAtom* atom : atoms)
        writeAtom(stream, atom);
    for (const BondCell& cell : bondsArr)
        writeBond(stream, cell);
    stream << " END_MOLECULE\n";

    bondsArr.clear();
    atomsArr.clear();
}

int KytFileIO::getIndex(KytAtom* atom) const
{
    return indexOfAtom(atomsArr, atom);
}
