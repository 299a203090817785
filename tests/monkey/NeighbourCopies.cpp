#include "tests/monkey/NeighbourCopies.h"

#include "canvas/qcanvas.h"
#include "doc/SafetyCopies.h"
#include "model/KytAtom.h"
#include "tests/app/TestWindow.h"

#include <QDateTime>
#include <QDir>

#include <algorithm>

namespace {

const QString symbol = QStringLiteral("Neighbour"); // of no atom elsewhere
const QByteArray contents = "KYTFILE MOLECULE 1 0 ATOM Neighbour 90 90 0 1 2 3 END_MOLECULE END_KYTFILE\n";
constexpr int copiesPerYear = 12;

QString nameOf(int year, int second)
{
    return QStringLiteral("%1-01-01T00-00-%2.000+0000.kyt").arg(year).arg(second, 2, 10, QLatin1Char('0'));
}

bool isNeighbour(const QCanvasItem* item)
{
    return item->rtti() == QCanvasItem::Rtti_Ellipse && static_cast<const KytAtom*>(item)->symbol == symbol;
}

} // namespace

NeighbourCopies::NeighbourCopies()
    : folder(safetyCopyFolder())
{
    for (const int year : {1990, 2090})
        for (int second = 0; second < copiesPerYear; ++second)
            if (const QString name = nameOf(year, second); QFile::exists(folder + u'/' + name))
                names << name;
}

bool NeighbourCopies::write()
{
    names.clear();
    QDir().mkpath(folder);
    for (const int year : {1990, 2090}) {
        for (int second = 0; second < copiesPerYear; ++second) {
            const QString name = nameOf(year, second);
            QFile file(folder + u'/' + name);
            const QDateTime created(QDate(year, 1, 1), QTime(0, 0, second), Qt::UTC);
            if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() || !file.flush()
                || !file.setFileTime(created, QFile::FileModificationTime))
                return false;
            list.add(folder.toStdString(), name.toStdString());
            names << name;
        }
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
