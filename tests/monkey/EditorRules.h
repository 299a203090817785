#pragma once

#include "canvas/qcanvas.h"

#include <QByteArray>
#include <QObject>
#include <QString>

class KytAtom;
class KytBond;
class KytStudioView;

/// What is counted on a canvas.
struct Census {
    int atoms = 0;
    int bonds = 0;
    int lines = 0;
    int wedges = 0;

    bool operator==(const Census&) const = default;
};

/// What must hold between two events in an editor, whatever was done to it. Each returns what is wrong, or nothing.
///
/// They remember what they have seen: a workspace can hold things that cannot be drawn by hand, for which less holds
/// until they are gone.
class EditorRules {
public:
    /// `view` and its document must live as long as the rules are asked.
    explicit EditorRules(const KytStudioView* view);

    QString firstFault();

    /// What the last call of firstFault has counted.
    const Census& census() const { return counted; }

private:
    QString drawingFault();
    QString atomFault(KytAtom* atom) const;
    QString bondFault(const KytBond* bond) const;
    QString lineFault(const KytBond* bond) const;
    QString wedgeFault(const KytBond* bond) const;
    QString moleculeFault() const;
    QString gestureFault() const;
    QString fileFault();
    void noteOddities();

    const KytStudioView* view;
    Census counted;
    QList<KytAtom*> atoms;
    QList<KytBond*> bonds;
    QObject listener;             // for the document's signals
    bool mayHaveOddities = false; // a file was read, or a step undone, since the last check
    bool undrawnKinds = false;    // there are bonds with kinds that are counted, but not drawn
    QByteArray lastWritten;
    qint64 stepsRecorded = 0;
    quint64 filesRead = 0;
};
