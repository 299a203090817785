#include "tests/monkey/NeighbourCopies.h"

#include "canvas/qcanvas.h"
#include "doc/SafetyCopies.h"
#include "model/KytAtom.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

const QString symbol = QStringLiteral("Neighbour"); // of no atom elsewhere
const QByteArray contents = "KYTFILE MOLECULE 1 0 ATOM Neighbour 90 90 0 1 2 3 END_MOLECULE END_KYTFILE\n";

/// When the copies say that they were made.
QList<QDateTime> creationTimes()
{
    QList<QDateTime> times;
    for (const int year : {1990, 2090})
        for (int second = 0; second < 12; ++second)
            times << QDateTime(QDate(year, 1, 1), QTime(0, 0, second), Qt::UTC);
    return times;
}

QString nameOf(const QDateTime& created)
{
    return created.toString(QStringLiteral("yyyy-MM-dd'T'HH-mm-ss.zzz'+0000.kyt'"));
}

bool isNeighbour(const QCanvasItem* item)
{
    return item->rtti() == QCanvasItem::Rtti_Ellipse && static_cast<const KytAtom*>(item)->symbol == symbol;
}

} // namespace

NeighbourCopies::NeighbourCopies()
    : folder(safetyCopyFolder())
{
    for (const QDateTime& created : creationTimes())
        if (QFile::exists(folder + u'/' + nameOf(created)))
            names << nameOf(created);
}

bool NeighbourCopies::write()
{
    names.clear();
    QDir().mkpath(folder);
    for (const QDateTime& created : creationTimes()) {
        const QString name = nameOf(created);
        QFile file(folder + u'/' + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush()
            || !file.setFileTime(created, QFile::FileModificationTime))
            return false;
        list.add(folder.toStdString(), name.toStdString());
        names << name;
    }
    return true;
}

QString NeighbourCopies::fault(const QCanvas& canvas) const
{
    for (const QString& name : names)
        if (QFileInfo(folder + u'/' + name).size() != contents.size())
            return QStringLiteral("a copy of another editor was changed or deleted: %1").arg(name);
    const QCanvasItemList items = canvas.allItems();
    if (std::any_of(items.begin(), items.end(), isNeighbour))
        return QStringLiteral("a copy of another editor was opened");
    return QString();
}
