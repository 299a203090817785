#pragma once

#include "doc/CopyList.h"

#include <QString>
#include <QStringList>

class QCanvas;

/// Safety copies of another editor that is running, some older and some newer than all others. An editor must neither
/// delete them nor open them.
class NeighbourCopies {
public:
    /// Knows the copies that another process has written.
    NeighbourCopies();

    /// Writes the copies, as those of this process while this object lives. Returns whether all could be written.
    bool write();

    /// What has happened to the copies, or nothing. `canvas` is that of an editor.
    QString fault(const QCanvas& canvas) const;

    bool isEmpty() const { return names.isEmpty(); }

private:
    QString folder;
    QStringList names;
    CopyList list;
};
