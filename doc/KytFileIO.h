#pragma once

#include "bonds/BondTable.h"

#include <QList>
#include <QString>
#include <QtGlobal>

#include <vector>

class KytAtom;
class KytMolecule;
class KytStudioDoc;
class QCanvas;
class QTextStream;

/// Something that the reader of workspaces met and had not expected.
struct WorkspaceFault {
    qint64 word;  ///< the number of the word at which it was seen, from 1; one past the last word at the file's end
    QString text; ///< what is wrong, and what the reader does about it
    bool loses;   ///< something is not read as it stands in the file
};

/// Writes and reads workspaces: all molecules of a canvas, word by word, as text.
///
/// Its fields are the working state of one molecule; the object lives for one call of the document.
class KytFileIO {
public:
    KytFileIO() = default;
    /// `fileName` names the file in what is reported about its contents.
    explicit KytFileIO(const QString& fileName);

    /// Writes every molecule of `canvas`, in the order of their first atoms.
    void writeWorkspace(QTextStream& stream, QCanvas* canvas);
    /// Writes the block of one molecule.
    void writeMolecule(QTextStream& stream, KytMolecule* molecule, QCanvas* canvas);

    /// Adds what `stream` holds to the canvas of `doc`; `locked` becomes the lock of every atom read.
    ///
    /// True when the closing "END_KYTFILE" was reached; what was read before a fault stays. Numbers that do not parse
    /// are 0, bonds with an end outside their molecule and bonds from an atom to itself are skipped, "END_MOLECULE" in
    /// place of a keyword or a number ends the molecule, and memory grows with what the stream really holds.
    bool readWorkspace(QTextStream& stream, KytStudioDoc* doc, bool locked);

    /// The index of `atom` in atomsArr; 0 when it is not there.
    int getIndex(KytAtom* atom) const;

    int atomsCount = 0;
    int bondsCount = 0;
    QList<KytAtom*> atomsArr;       ///< the molecule's atoms; the position is the index in the file
    std::vector<BondCell> bondsArr; ///< while writing: the molecule's bonds by from-atom, then by to-atom

    std::vector<WorkspaceFault>* faults = nullptr; ///< where readWorkspace adds what is wrong; not owned, may be null

private:
    void writeAtoms(QTextStream& stream, const QList<KytAtom*>& atoms);

    QString name;
};
