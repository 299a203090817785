#pragma once

#include "doc/KytFileIO.h"
#include "tests/support/Drawing.h"
#include "tests/support/LoggedMessages.h"

#include <QFile>
#include <QStringList>
#include <QTextStream>

/// A drawing that is written as a workspace and read from one.
class WorkspaceDrawing : public Drawing {
public:
    /// A shown atom in a molecule of its own that lists it, as reading makes them.
    KytAtom* atom(double x, double y, float z = 0, const QString& symbol = "C") const
    {
        KytAtom* made = Drawing::atom(x, y, z);
        made->setName(symbol);
        made->setSymbol(symbol);
        made->setMolecule(new KytMolecule);
        return made;
    }

    /// The whole canvas as a workspace.
    QString written() const
    {
        QString text;
        QTextStream stream(&text);
        KytFileIO().writeWorkspace(stream, canvas());
        stream.flush();
        return text;
    }

    /// Adds a workspace; what readWorkspace says.
    bool read(QString text, bool locked = false) const
    {
        QTextStream stream(&text);
        return KytFileIO("sample.kyt").readWorkspace(stream, doc, locked);
    }

    QStringList symbols() const
    {
        QStringList found;
        for (const KytAtom* each : atoms())
            found.append(each->getSymbol());
        return found;
    }

    /// The bonds of the canvas by their from-atoms, in the order of the out-lists.
    QList<KytBond*> bonds() const
    {
        QList<KytBond*> found;
        for (const KytAtom* each : atoms())
            found += each->outList;
        return found;
    }

    /// Every bond as "from-to:kinds", with the atoms' places on the canvas.
    QStringList bondTexts() const
    {
        const QList<KytAtom*> all = atoms();
        QStringList found;
        for (const KytBond* each : bonds()) {
            QStringList kinds;
            const int slots_[] = {each->bond1Type, each->bond2Type, each->bond3Type};
            for (int i = 0; i < each->bondCount && i < 3; ++i)
                kinds.append(QString::number(slots_[i]));
            found.append(QString("%1-%2:%3")
                             .arg(all.indexOf(each->fromAtom))
                             .arg(all.indexOf(each->toAtom))
                             .arg(kinds.join(' ')));
        }
        return found;
    }
};

/// The largest size in KiB that this process's memory has had, whether or not it was touched.
inline qint64 peakMemory()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmPeak:"))
            return line.mid(7).simplified().split(' ').first().toLongLong();
    return -1;
}
