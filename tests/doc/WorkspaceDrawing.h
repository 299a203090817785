#pragma once

#include "bonds/KytBond.h"
#include "doc/KytFileIO.h"
#include "doc/kytstudiodoc.h"
#include "model/KytAtom.h"
#include "model/KytMolecule.h"

#include <QFile>
#include <QStringList>
#include <QTextStream>

#include <initializer_list>

/// A document with a fresh canvas; both go together.
struct WorkspaceDrawing {
    WorkspaceDrawing() { doc.newDoc(); }
    ~WorkspaceDrawing() { delete doc.canvas; }
    WorkspaceDrawing(const WorkspaceDrawing&) = delete;
    WorkspaceDrawing& operator=(const WorkspaceDrawing&) = delete;

    /// A shown atom at (x, y) in a molecule of its own.
    KytAtom* atom(double x, double y, float z = 0, const QString& symbol = "C")
    {
        auto* made = new KytAtom(doc.canvas, symbol, z, false);
        made->move(x, y);
        made->setMolecule(new KytMolecule);
        made->show();
        return made;
    }

    /// A bond with one addition per kind, without joining the molecules.
    KytBond* looseBond(KytAtom* from, KytAtom* to, std::initializer_list<int> kinds)
    {
        auto* made = new KytBond(from, to, &doc);
        for (int kind : kinds)
            made->addBond(static_cast<KytBondType>(kind), 60.0);
        return made;
    }

    /// The same, and both atoms end in the molecule of `from`.
    KytBond* bond(KytAtom* from, KytAtom* to, std::initializer_list<int> kinds = {KYTBT_SingleBond})
    {
        KytBond* made = looseBond(from, to, kinds);
        to->setMolecule(from->getMolecule());
        return made;
    }

    /// The whole canvas as a workspace.
    QString written() const
    {
        QString text;
        QTextStream stream(&text);
        KytFileIO().writeWorkspace(stream, doc.canvas);
        stream.flush();
        return text;
    }

    /// Adds a workspace; what readWorkspace says.
    bool read(QString text, bool locked = false)
    {
        QTextStream stream(&text);
        return KytFileIO("sample.kyt").readWorkspace(stream, &doc, locked);
    }

    QList<KytAtom*> atoms() const
    {
        QList<KytAtom*> found;
        for (QCanvasItem* item : doc.canvas->allItems())
            if (item->rtti() == QCanvasItem::Rtti_Ellipse)
                found.append(static_cast<KytAtom*>(item));
        return found;
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

    KytStudioDoc doc;
};

/// Gathers what is logged while it lives, and keeps it off standard error.
class LoggedMessages {
public:
    LoggedMessages()
    {
        lines().clear();
        categories().clear();
        previous = qInstallMessageHandler(keep);
    }
    ~LoggedMessages() { qInstallMessageHandler(previous); }
    LoggedMessages(const LoggedMessages&) = delete;
    LoggedMessages& operator=(const LoggedMessages&) = delete;

    static QStringList& lines()
    {
        static QStringList kept;
        return kept;
    }
    static QStringList& categories()
    {
        static QStringList kept;
        return kept;
    }

private:
    static void keep(QtMsgType, const QMessageLogContext& context, const QString& text)
    {
        lines().append(text);
        categories().append(context.category);
    }

    QtMessageHandler previous;
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
