#pragma once

#include "bonds/BondGeometry.h"
#include "doc/KytFileIO.h"
#include "tests/support/Drawing.h"

#include <QByteArray>
#include <QHash>
#include <QIODevice>
#include <QMap>
#include <QString>
#include <QStringConverter>
#include <QTextStream>

#include <cmath>
#include <limits>
#include <utility>

// What has to come back when a drawing is written and read. Nothing here needs a test framework: every check says what
// is wrong, or nothing.

/// The canvas as the bytes of a workspace file.
inline QByteArray writtenWorkspace(QCanvas* canvas)
{
    QByteArray bytes;
    QTextStream stream(&bytes, QIODevice::WriteOnly);
    KytFileIO().writeWorkspace(stream, canvas);
    stream.flush();
    return bytes;
}

/// Adds the workspace in `bytes` to the drawing; what readWorkspace says.
inline bool addWorkspace(const QByteArray& bytes, const DrawnCanvas& drawing, bool locked = false)
{
    QTextStream stream(bytes, QIODevice::ReadOnly);
    return KytFileIO(QStringLiteral("round trip")).readWorkspace(stream, drawing.doc, locked);
}

/// `text` as it comes out of a file: half a surrogate pair, which is no character, becomes U+FFFD.
inline QString afterFile(const QString& text)
{
    const QByteArray bytes = QStringEncoder(QStringEncoder::Utf8)(QLatin1Char('.') + text + QLatin1Char('.'));
    const QString back = QStringDecoder(QStringDecoder::Utf8)(bytes);
    return back.sliced(1).chopped(1);
}

/// The symbol that an atom with the symbol `symbol` comes back with: one word, "_" for each run of white space.
inline QString symbolAfterFile(const QString& symbol)
{
    QString word;
    for (qsizetype i = 0; i < symbol.size(); ++i) {
        if (!symbol[i].isSpace())
            word += symbol[i];
        else if (i == 0 || !symbol[i - 1].isSpace())
            word += QLatin1Char('_');
    }
    return word.isEmpty() ? QStringLiteral("_") : afterFile(word);
}

/// Whether the colour component `after` is what `before` comes back as: a word as it is, anything else as a number.
inline bool isSameColor(const QString& before, const QString& after)
{
    bool isWord = !before.isEmpty();
    for (const QChar c : before)
        isWord = isWord && !c.isSpace();
    if (isWord)
        return after == afterFile(before);
    bool isNumber = false;
    after.toInt(&isNumber);
    return isNumber;
}

/// Whether `after` is `before` to six significant digits. What is then beyond the range of float comes back as 0.
inline bool isSameNumber(double before, double after)
{
    constexpr double firstBeyondFloat = 3.402825e38; // in six digits more than the largest float
    constexpr double floatRounding = 7e-8;           // relative
    const double size = std::fabs(before);
    if (size >= firstBeyondFloat)
        return after == 0;
    const double halfTheSixthDigit = size == 0 ? 0 : 0.5 * std::pow(10, std::floor(std::log10(size)) - 5);
    return std::fabs(after - before)
        <= halfTheSixthDigit * (1 + 1e-6) + floatRounding * size + double{std::numeric_limits<float>::denorm_min()};
}

/// The atoms of every molecule, both in the order of the canvas's items.
inline QList<QList<KytAtom*>> moleculesOf(const QCanvas& canvas)
{
    QList<QList<KytAtom*>> molecules;
    QHash<const KytMolecule*, qsizetype> places;
    const QList<KytAtom*> atoms = atomsOf(canvas);
    for (KytAtom* atom : atoms) {
        if (!places.contains(atom->molecule)) {
            places.insert(atom->molecule, molecules.size());
            molecules.append(QList<KytAtom*>());
        }
        molecules[places[atom->molecule]].append(atom);
    }
    return molecules;
}

/// Bonds by the places of their from-atom and to-atom in a molecule. Of several between the same two atoms in the same
/// direction a file keeps one: the last, atom by atom, incoming bonds before outgoing ones.
using BondsByEnds = QMap<std::pair<qsizetype, qsizetype>, const KytBond*>;

inline BondsByEnds bondsOf(const QList<KytAtom*>& molecule)
{
    QHash<const KytAtom*, qsizetype> places;
    for (qsizetype i = 0; i < molecule.size(); ++i)
        places.insert(molecule[i], i);
    BondsByEnds bonds;
    for (const KytAtom* atom : molecule)
        for (const QList<KytBond*>* list : {&atom->inList, &atom->outList})
            for (const KytBond* bond : *list)
                bonds.insert({places.value(bond->fromAtom, -1), places.value(bond->toAtom, -1)}, bond);
    return bonds;
}

inline QList<KytBondType> kindsOf(const KytBond& bond)
{
    return QList<KytBondType>{bond.bond1Type, bond.bond2Type, bond.bond3Type}.first(qBound(0, bond.bondCount, 3));
}

/// What has not come back of the atom `before` in the atom `after`.
inline QString atomFault(const KytAtom& before, const KytAtom& after)
{
    if (!isSameNumber(before.x(), after.x()) || !isSameNumber(before.y(), after.y()))
        return QStringLiteral("an atom at (%1, %2) has come back at (%3, %4)")
            .arg(before.x())
            .arg(before.y())
            .arg(after.x())
            .arg(after.y());
    if (!isSameNumber(before.atomZ, after.atomZ))
        return QStringLiteral("the depth %1 has come back as %2").arg(before.atomZ).arg(after.atomZ);
    if (after.symbol != symbolAfterFile(before.symbol))
        return QStringLiteral("the symbol \"%1\" has come back as \"%2\"").arg(before.symbol, after.symbol);
    for (int i = 0; i < 3; ++i)
        if (!isSameColor(before._atomColor[i], after._atomColor[i]))
            return QStringLiteral("the colour \"%1\" has come back as \"%2\"")
                .arg(before._atomColor[i], after._atomColor[i]);
    return QString();
}

/// What has not come back of the bond `before` in the bond `after`. What is drawn is that of the kinds: a bond that has
/// lost a line keeps the kinds of its first ones.
inline QString bondFault(const KytBond& before, const KytBond& after)
{
    if (before.bondCount != after.bondCount)
        return QStringLiteral("a bond of %1 has come back with %2").arg(before.bondCount).arg(after.bondCount);
    const QList<KytBondType> kinds = kindsOf(before);
    if (kinds != kindsOf(after))
        return QStringLiteral("a bond has come back with lines of other kinds");
    const KytBondLine* lines[] = {after.bond1, after.bond2, after.bond3};
    for (int i = 0; i < 3; ++i) {
        const bool isDrawn = i < kinds.size() && isLineKind(kinds[i]);
        if (isDrawn != (lines[i] != nullptr))
            return QStringLiteral("line %1 of a bond is drawn or not, unlike its kind").arg(i + 1);
        if (isDrawn && lines[i]->isDashed != (kinds[i] == KYTBT_DashedLine))
            return QStringLiteral("line %1 of a bond has the wrong dashes").arg(i + 1);
    }
    const bool isWedge = !kinds.isEmpty() && isWedgeKind(kinds.first());
    if (isWedge != (after.stereoBond != nullptr))
        return QStringLiteral("a wedge is drawn or not, unlike its kind");
    if (isWedge && after.stereoBond->bondType != kinds.first())
        return QStringLiteral("a wedge points the other way");
    return QString();
}

/// Whether every wedge of a canvas that has just been read has the angle that the depths and the whole-pixel places of
/// its ends give. The file holds no angle.
inline QString wedgeAngleFault(const QCanvas& canvas)
{
    constexpr double tolerance = 1e-3; // degrees
    const QList<KytAtom*> atoms = atomsOf(canvas);
    for (const KytAtom* atom : atoms) {
        for (const KytBond* bond : atom->outList) {
            if (!bond->stereoBond)
                continue;
            const KytAtom* end = bond->toAtom;
            const double length = pixelDistance({atom->x(), atom->y()}, {end->x(), end->y()});
            const double angle = projectionAngle(double{atom->atomZ} - end->atomZ, length);
            if (!(std::fabs(bond->stereoBond->pangle - angle) <= tolerance))
                return QStringLiteral("a wedge has the angle %1 where its ends give %2")
                    .arg(bond->stereoBond->pangle)
                    .arg(angle);
        }
    }
    return QString();
}

/// What has not come back of the molecule `before` in the molecule `after`.
inline QString moleculeComeBackFault(const QList<KytAtom*>& before, const QList<KytAtom*>& after)
{
    if (before.size() != after.size())
        return QStringLiteral("a molecule of %1 atoms has come back with %2").arg(before.size()).arg(after.size());
    for (qsizetype i = 0; i < before.size(); ++i)
        if (const QString fault = atomFault(*before[i], *after[i]); !fault.isEmpty())
            return fault;
    const BondsByEnds bonds = bondsOf(before);
    const BondsByEnds readBonds = bondsOf(after);
    if (bonds.keys() != readBonds.keys())
        return QStringLiteral("the bonds do not join the same atoms in the same directions");
    for (auto bond = bonds.begin(); bond != bonds.end(); ++bond) {
        if (bond.key().first < 0 || bond.key().second < 0)
            return QStringLiteral("a bond leads out of its molecule");
        const QString fault = bondFault(*bond.value(), *readBonds[bond.key()]);
        if (!fault.isEmpty())
            return fault;
    }
    return QString();
}

/// What of the canvas `before` is not on the canvas `after`, which was read from what `before` has written.
inline QString comeBackFault(const QCanvas& before, const QCanvas& after)
{
    const QList<QList<KytAtom*>> molecules = moleculesOf(before);
    const QList<QList<KytAtom*>> readMolecules = moleculesOf(after);
    if (molecules.size() != readMolecules.size())
        return QStringLiteral("%1 molecules have come back as %2").arg(molecules.size()).arg(readMolecules.size());
    for (qsizetype i = 0; i < molecules.size(); ++i)
        if (const QString fault = moleculeComeBackFault(molecules[i], readMolecules[i]); !fault.isEmpty())
            return fault;
    if (const QString fault = drawingFault(after); !fault.isEmpty())
        return fault;
    return wedgeAngleFault(after);
}

/// Writes the canvas, reads it into a document of its own, and does the same with that one. Says what has not come
/// back, or what changes between the second and the third writing; nothing when all is well. The canvas stays as it is.
/// `Document` is an empty DrawnCanvas when it is made.
template <typename Document = Drawing> QString roundTripFault(QCanvas* canvas)
{
    const QByteArray first = writtenWorkspace(canvas);
    const Document read;
    if (!addWorkspace(first, read))
        return QStringLiteral("what was written cannot be read to its end");
    if (const QString fault = comeBackFault(*canvas, *read.canvas()); !fault.isEmpty())
        return fault;

    const QByteArray second = writtenWorkspace(read.canvas());
    const Document readAgain;
    if (!addWorkspace(second, readAgain))
        return QStringLiteral("what was written the second time cannot be read to its end");
    if (const QString fault = comeBackFault(*read.canvas(), *readAgain.canvas()); !fault.isEmpty())
        return QStringLiteral("the second time, ") + fault;
    if (writtenWorkspace(readAgain.canvas()) != second)
        return QStringLiteral("the third writing differs from the second");
    return QString();
}
