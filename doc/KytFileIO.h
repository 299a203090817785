#pragma once

#include "bonds/BondTable.h"

#include <QList>
#include <QPoint>
#include <QString>
#include <QtGlobal>

#include <vector>

class KytAtom;
class KytMolecule;
class KytStudioDoc;
class QCanvas;
class QTextStream;

/// A fault that the reader found in a workspace.
struct WorkspaceFault {
    qint64 word;  ///< number of the word at which it was found, from 1; one past the last word at the end of the file
    QString text; ///< the fault and, after a semicolon, what the reader did about it
    bool isError; ///< the drawing read differs from the file
};

/// Writes and reads workspaces: all molecules of a canvas, word by word, as text.
///
/// The fields are the working state for one molecule; use one object per call.
class KytFileIO {
public:
    KytFileIO() = default;
    /// `fileName` is used in log messages about the contents of the file.
    explicit KytFileIO(const QString& fileName);

    /// Writes every molecule of `canvas`, in the order of their first atoms.
    void writeWorkspace(QTextStream& stream, QCanvas* canvas);
    /// Writes the record of one molecule.
    void writeMolecule(QTextStream& stream, KytMolecule* molecule, QCanvas* canvas);

    /// Adds the contents of `stream` to the canvas of `doc`; `locked` becomes KytAtom::locked of every atom read.
    ///
    /// Returns true if the closing "END_KYTFILE" was reached. After a fault, everything read so far is kept. Invalid
    /// numbers are read as 0, bonds with a non-existent atom and bonds from an atom to itself are skipped, and
    /// "END_MOLECULE" instead of a keyword or a number ends the molecule. Memory use depends on the length of the
    /// stream, not on the counts declared in it.
    bool readWorkspace(QTextStream& stream, KytStudioDoc* doc, bool locked);

    /// The index of `atom` in atomsArr; 0 if it is not in the list.
    int getIndex(KytAtom* atom) const;

    QPoint offset; ///< readWorkspace adds it to the coordinates
    int atomsCount = 0;
    int bondsCount = 0;
    QList<KytAtom*> atomsArr;       ///< the molecule's atoms, in the order of the file
    std::vector<BondCell> bondsArr; ///< while writing: the molecule's bonds, sorted by start atom, then by end atom

    std::vector<WorkspaceFault>* faults = nullptr; ///< readWorkspace appends the faults here; not owned, may be null

private:
    void writeAtoms(QTextStream& stream, const QList<KytAtom*>& atoms);

    QString name;
};
