#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

class KytStudioApp;

/// What must hold for the steps of an editor: undone and redone, they lead through the same drawings to the bit.
class HistoryRules {
public:
    /// `window` must live as long as the rules are asked.
    explicit HistoryRules(KytStudioApp* window);

    /// Whether steps have been made since the last call of firstFault.
    bool hasNewSteps() const;

    /// To be called after everything that may have made a step. Says what is wrong, or nothing.
    QString firstFault();

    /// Undoes all steps and redoes them, comparing the drawing after each; returns to where it was. A gesture under way
    /// is cancelled first.
    QString thereAndBack();

    /// How many steps thereAndBack has compared.
    qint64 compared() const { return compareCount; }

private:
    QByteArray drawing() const;
    QString fault(const char* what) const;
    QString compare(qsizetype step, const char* what);

    KytStudioApp* window;
    QList<QByteArray> drawings; // digests of the drawing with 0, 1, 2, ... steps done; empty where it is not known
    qint64 knownRecords = 0;
    qint64 compareCount = 0;
};
