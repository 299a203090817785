// Any bytes as what another program offers on the clipboard, pasted, copied and pasted again. Of the first line, the
// first letter is the type of the data, which are the rest; after it come the locks of a drawing of ours.

#include "tests/fuzz/FuzzTarget.h"

#include "app/Arrival.h"
#include "app/Converter.h"
#include "app/DrawingMimeData.h"

#include <QCoreApplication>
#include <QMimeData>

#include <algorithm>

namespace {

constexpr double farAway = 1e6; // pixels; what reaches further is refused

/// The data with the type that the letter stands for.
void offer(QMimeData& data, char letter, const QByteArray& locks, const QByteArray& contents)
{
    switch (letter) {
    case 'w':
        data.setData(QString::fromLatin1(workspaceType), contents);
        data.setData(QString::fromLatin1(locksType), locks);
        break;
    case 's':
        data.setData(QStringLiteral("chemical/x-mdl-sdfile"), contents);
        break;
    case 'm':
        data.setData(QStringLiteral("chemical/x-mdl-molfile"), contents);
        break;
    case 'd':
        data.setData(QStringLiteral("chemical/x-daylight-smiles"), contents);
        break;
    default:
        data.setData(QStringLiteral("text/plain"), contents);
    }
}

/// What a paste of these data adds; nothing when they are refused. Workspaces alone are taken: kytconvert, which reads
/// everything else, is not found.
QList<Clipping> arrivalOf(const QMimeData& data)
{
    Arrival arrival;
    const QString refusal = arrival.addClipboard(data);
    demand(!refusal.contains(u'\n'), "a refusal is one line");
    if (!refusal.isEmpty())
        return {};
    QList<Clipping> arrived;
    QObject::connect(&arrival, &Arrival::finished, [&](const QList<Clipping>& clippings, const QStringList& faults) {
        demand(faults.isEmpty(), "what was accepted has no fault");
        arrived = clippings;
    });
    arrival.start();
    QCoreApplication::sendPostedEvents(&arrival);
    demand(arrived.size() == 1, "what was accepted arrives");
    return arrived;
}

QRectF extentOf(const QList<KytAtom*>& atoms)
{
    QRectF extent;
    for (const KytAtom* atom : atoms)
        extent |= atom->boundingRect() | atom->canvasSymbol->boundingRect();
    return extent;
}

QByteArray locksOf(const QList<KytAtom*>& atoms)
{
    QByteArray locks;
    for (const KytAtom* atom : atoms)
        locks += atom->locked ? '1' : '0';
    return locks;
}

void checkPosition(const QList<KytAtom*>& added)
{
    constexpr double rounding = 1; // pixels; a drawing is shifted by whole ones
    const QRectF extent = extentOf(added);
    const QRectF paper = QRectF(0, 0, canvasSize, canvasSize).adjusted(-rounding, -rounding, rounding, rounding);
    demand(extent.width() > canvasSize || (extent.left() >= paper.left() && extent.right() <= paper.right()),
           "what fits the canvas does not stick out at its sides");
    demand(extent.height() > canvasSize || (extent.top() >= paper.top() && extent.bottom() <= paper.bottom()),
           "what fits the canvas does not stick out above or below");
}

/// Copies the atoms and pastes them into a drawing of their own.
void copyAndPaste(const DrawnCanvas& drawing, const QList<KytAtom*>& atoms)
{
    const KeptDrawing other;
    const Clipping copy = clippingOf(*drawing.canvas(), atoms);
    demand(copy.locks == locksOf(atoms), "locks are copied");
    const QList<KytAtom*> added = addClipping(copy, std::nullopt, *other.doc);
    demand(locksOf(added) == copy.locks, "what was copied is pasted with its locks");
    demandNoFault(drawingFault(*other.canvas()), "after pasting a copy");
}

void paste(const Clipping& clipping, const QPointF& middle, const DrawnCanvas& drawing)
{
    constexpr QPointF position(50, 60);
    const KytAtom* old = drawing.atom(position.x(), position.y());
    const QList<KytAtom*> added = addClipping(clipping, middle, *drawing.doc);
    demandNoFault(drawingFault(*drawing.canvas()), "after pasting");
    demand(drawing.atoms() == QList<KytAtom*>{const_cast<KytAtom*>(old)} + added, "the pasted atoms follow the others");
    demand(QPointF(old->x(), old->y()) == position && old->getBondCount() == 0, "a paste leaves the drawing as it is");
    if (added.isEmpty()) {
        const QRectF widest(-farAway, -farAway, 2 * farAway, 2 * farAway);
        demand(!widest.contains(extentOf(clipping)), "what was accepted is pasted");
        return;
    }
    if (clipping.locks.size() == added.size()) {
        QByteArray locks = clipping.locks;
        std::replace_if(
            locks.begin(), locks.end(), [](char lock) { return lock != '1'; }, '0');
        demand(locksOf(added) == locks, "the given locks are those of the atoms");
    }
    checkPosition(added);
    copyAndPaste(drawing, added);
}

} // namespace

void runInput(const QByteArray& input)
{
    static const bool alone = qputenv("PATH", "/nonexistent");
    demand(alone, "kytconvert is not found");
    const qsizetype head = std::max<qsizetype>(0, input.indexOf('\n'));
    QMimeData data;
    offer(data, head > 0 ? input[0] : 't', input.first(head).mid(1), input.mid(head + 1));
    const int choice = qChecksum(input);
    const QPointF middle(choice % 256 * 10 - 100, choice / 256 * 10 - 100); // also beyond the edges
    for (const Clipping& clipping : arrivalOf(data)) {
        const KeptDrawing drawing;
        paste(clipping, middle, drawing);
    }
}
