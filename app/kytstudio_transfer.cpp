#include "app/Arrival.h"
#include "app/Converter.h"
#include "app/DrawingMimeData.h"
#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "model/DrawnMolecules.h"
#include "model/KytAtom.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSet>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <optional>
#include <utility>

// Copy and paste, dropped files, and laying out anew: what comes from outside the drawing or leaves it.

namespace {

// Milliseconds.
constexpr int resultTime = 4000;
constexpr int faultTime = 15'000;
constexpr int layoutTime = 10'000;
constexpr int retryPeriod = 100;

constexpr double gap = 45; // pixels between drawings side by side; leaves room for an atom label

/// Where the middles of drawings of these sizes are, if the first is at `first` and the others are beside it, in rows
/// no wider than the canvas.
QList<QPointF> middlesFrom(const QPointF& first, const QList<QSizeF>& sizes)
{
    QList<QPointF> middles;
    QRectF row;
    for (const QSizeF& size : sizes) {
        QRectF area(QPointF(), size);
        if (middles.isEmpty()) {
            area.moveCenter(first);
            row = area;
        } else {
            area.moveTopLeft({row.right() + gap, row.top()});
            if (area.right() > canvasSize) {
                area.moveTopLeft({first.x() - sizes.constFirst().width() / 2, row.bottom() + gap});
                row = area;
            }
        }
        row |= area;
        middles << area.center();
    }
    return middles;
}

/// All atoms of the molecules of these atoms, which are on `canvas`.
QList<KytAtom*> moleculesOf(const QList<KytAtom*>& atoms, const QCanvas& canvas)
{
    QSet<const KytMolecule*> molecules;
    for (const KytAtom* atom : atoms)
        molecules.insert(atom->getMolecule());
    QList<KytAtom*> all = drawnAtoms(canvas);
    all.removeIf([&](const KytAtom* atom) { return !molecules.contains(atom->getMolecule()); });
    return all;
}

bool isLocked(const KytAtom* atom)
{
    return atom->locked;
}

} // namespace

void KytStudioApp::initTransfer()
{
    view->viewport()->setAcceptDrops(true);
    view->viewport()->installEventFilter(this);
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (copied)
            copied->offerReadyOnly();
    });
}

QPointF KytStudioApp::targetOnCanvas() const
{
    const std::optional<QPoint> pointed = view->pointedAt();
    return pointed ? QPointF(*pointed) : view->mapToScene(view->viewport()->rect().center());
}

QList<KytAtom*> KytStudioApp::moleculeUnderPointer() const
{
    const std::optional<QPoint> pointed = view->pointedAt();
    return pointed ? view->moleculeAt(*pointed) : QList<KytAtom*>();
}

void KytStudioApp::copy()
{
    QList<KytAtom*> atoms = view->selectedAtoms();
    if (atoms.isEmpty())
        atoms = moleculeUnderPointer();
    if (atoms.isEmpty())
        atoms = drawnAtoms(*doc->canvas);
    if (atoms.isEmpty()) {
        showMessage(tr("Nothing to copy"), resultTime);
        return;
    }
    copied = new DrawingMimeData(clippingOf(*doc->canvas, atoms));
    QGuiApplication::clipboard()->setMimeData(copied);
    showMessage(Converter::program().isEmpty() ? tr("Copied for KytStudio only: kytconvert is not installed")
                                               : tr("Copied: %1 atoms").arg(atoms.size()),
                resultTime);
}

void KytStudioApp::paste()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    auto pasted = std::make_unique<Arrival>();
    const QString fault = data ? pasted->addClipboard(*data) : tr("The clipboard cannot be read");
    if (!fault.isEmpty())
        showMessage(fault, resultTime);
    else
        receive(std::move(pasted), targetOnCanvas(), tr("Paste"));
}

void KytStudioApp::dropFiles(const QList<QUrl>& urls, const QPointF& middle)
{
    auto dropped = std::make_unique<Arrival>();
    for (const QUrl& url : urls)
        dropped->addFile(url.isLocalFile() ? url.toLocalFile() : url.toString());
    receive(std::move(dropped), middle, tr("Drop Files"));
}

void KytStudioApp::receive(std::unique_ptr<Arrival> arriving, const QPointF& middle, const QString& name)
{
    if (isReceiving()) {
        showMessage(tr("Still working; Escape cancels"), resultTime);
        return;
    }
    arrival = std::move(arriving);
    const auto add = [this, middle, name](const QList<Clipping>& clippings, const QStringList& faults) {
        whenIdle(arrival.get(), [=, this] { addArrived(clippings, faults, middle, name); });
    };
    connect(arrival.get(), &Arrival::finished, this, add);
    showMessage(tr("Reading... (Escape cancels)"));
    arrival->start();
}

bool KytStudioApp::isReceiving() const
{
    return arrival || layout;
}

bool KytStudioApp::cancelReceiving()
{
    if (!isReceiving())
        return false;
    arrival.reset();
    layout.reset();
    showMessage(tr("Cancelled"), resultTime);
    return true;
}

/// Calls `act` as soon as no dialog, menu or drag would be disturbed, unless `context` is deleted before.
void KytStudioApp::whenIdle(QObject* context, const std::function<void()>& act)
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget() || QApplication::mouseButtons())
        QTimer::singleShot(retryPeriod, context, [=, this] { whenIdle(context, act); });
    else
        act();
}

void KytStudioApp::addArrived(const QList<Clipping>& clippings, const QStringList& faults, const QPointF& middle,
                              const QString& name)
{
    const bool losesProperties = arrival->losesProperties();
    arrival.release()->deleteLater();
    QList<QPointF> middles{middle};
    if (clippings.size() > 1) {
        QList<QSizeF> sizes;
        for (const Clipping& clipping : clippings)
            sizes << extentOf(clipping).size();
        middles = middlesFrom(middle, sizes);
    }
    qsizetype added = 0;
    beginStep();
    for (qsizetype i = 0; i < clippings.size(); ++i)
        added += addClipping(clippings[i], middles[i], *doc).size();
    view->recordStep(name);

    if (!faults.isEmpty())
        showMessage(tr("Cannot be read: %1").arg(faults.join(QStringLiteral(", "))), faultTime);
    else if (losesProperties && !std::exchange(propertiesMentioned, true))
        showMessage(tr("Added: %1 atoms, without the properties of the SD file").arg(added), faultTime);
    else
        showMessage(tr("Added: %1 atoms").arg(added), resultTime);
}

void KytStudioApp::tidy()
{
    const QList<KytAtom*> selected = view->selectedAtoms();
    const QList<KytAtom*> atoms = selected.isEmpty() ? moleculeUnderPointer() : moleculesOf(selected, *doc->canvas);
    if (isReceiving())
        showMessage(tr("Still working; Escape cancels"), resultTime);
    else if (atoms.isEmpty())
        showMessage(tr("No molecule under the pointer"), resultTime);
    else if (std::any_of(atoms.begin(), atoms.end(), isLocked))
        showMessage(tr("The molecule is locked"), resultTime);
    else if (Converter::program().isEmpty())
        showMessage(tr("kytconvert, which lays out molecules, is not installed"), resultTime);
    else
        startLayout(atoms);
}

void KytStudioApp::startLayout(const QList<KytAtom*>& atoms)
{
    beginStep();
    const Clipping clipping = clippingOf(*doc->canvas, atoms);
    layout = std::make_unique<Converter>(QStringList{"--layout", "--from", "kyt", "--to", "kyt", "-"},
                                         clipping.workspace, layoutTime);
    // The molecule is replaced only if it still is as it was.
    const auto unchanged = [this, atoms, text = clipping.workspace] {
        const QList<KytAtom*> drawn = drawnAtoms(*doc->canvas);
        const QSet<KytAtom*> present(drawn.begin(), drawn.end());
        return std::all_of(atoms.begin(), atoms.end(), [&](KytAtom* atom) { return present.contains(atom); })
            && clippingOf(*doc->canvas, atoms).workspace == text;
    };
    connect(layout.get(), &Converter::finished, this, [=, this](const QByteArray& output, const QString& error) {
        whenIdle(layout.get(), [=, this] {
            layout.release()->deleteLater();
            if (!error.isNull())
                showMessage(tr("Cannot be laid out: %1").arg(error), faultTime);
            else if (!unchanged())
                showMessage(tr("The molecule was changed meanwhile"), resultTime);
            else
                replaceAtoms(atoms, output);
        });
    });
    showMessage(tr("Laying out... (Escape cancels)"));
}

void KytStudioApp::replaceAtoms(const QList<KytAtom*>& atoms, const QByteArray& workspace)
{
    const QByteArray locks(atoms.size(), '0');
    const bool isSelected = view->selectedCount() > 0;
    beginStep();
    const QList<KytAtom*> laidOut = addClipping({workspace, locks}, std::nullopt, *doc);
    if (laidOut.size() == atoms.size()) {
        deleteAtoms(atoms);
        if (isSelected)
            view->select(laidOut);
        showMessage(tr("Laid out: %1 atoms").arg(atoms.size()), resultTime);
    } else {
        showMessage(tr("Cannot be laid out: %1").arg(tr("unexpected result")), faultTime);
    }
    view->recordStep(tr("Tidy"));
}

bool KytStudioApp::handleDrag(QDropEvent* event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty())
        return false;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (event->type() == QEvent::Drop)
        dropFiles(urls, view->mapToScene(event->position().toPoint()));
    return true;
}
