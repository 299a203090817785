#include "app/FileDialogs.h"
#include "app/kytstudio.h"
#include "doc/kytstudiodoc.h"
#include "view/kytstudioview.h"

#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(library, "kytstudio.library")

constexpr int loadingTime = 4000; // milliseconds
constexpr int loadedTime = 2000;  // milliseconds
constexpr int insertTime = 15000; // milliseconds

} // namespace

/// Adds the library molecule in `fileName` with locked atoms and selects View Mode so that it can be dragged.
void KytStudioApp::addFromLibrary(const QString& loading, const QString& fileName, const QString& loaded,
                                  const QAction* action)
{
    showMessage(loading, loadingTime);
    if (view) {
        beginStep();
        if (!doc->load(fileName, true))
            qCWarning(library).noquote() << fileName + QStringLiteral(": cannot be read");
        view->canvasState = KYTVS_view;
        endStep(action);
    }
    showMessage(loaded, loadedTime);
}

void KytStudioApp::slotAddWater()
{
    addFromLibrary(tr("Loading Water.."), QStringLiteral("lib/water.kyf"), tr("Water Loaded !"), kyfWater);
}

void KytStudioApp::slotAddProp()
{
    addFromLibrary(tr("Loading Prop.."), QStringLiteral("lib/prop.kyf"), tr("Prop Loaded !"), kyfProp);
}

void KytStudioApp::slotAddMegaphon()
{
    addFromLibrary(tr("Loading Megaphon.."), QStringLiteral("lib/megaphon.kyf"), tr("Megaphon Loaded !"), kyfMegaphon);
}

void KytStudioApp::slotAddHexane()
{
    addFromLibrary(tr("Loading Hexane.."), QStringLiteral("lib/hexane.kyf"), tr("Hexane Loaded !"), kyfHexane);
}

void KytStudioApp::slotAddCubane()
{
    addFromLibrary(tr("Loading Cubane.."), QStringLiteral("lib/cubane.kyf"), tr("Cubane Loaded !"), kyfCubane);
}

void KytStudioApp::slotAddBenzene()
{
    addFromLibrary(tr("Loading Benzene.."), QStringLiteral("lib/benzene.kyf"), tr("Benzene Loaded !"), kyfBenzene);
}

void KytStudioApp::slotInsertMolecule()
{
    showMessage(tr("Insert Molecule.."), insertTime);
    if (view) {
        const QString name = askOpenFileName(this,
                                             {.name = QStringLiteral("Insert Moleculwe dialog"),
                                              .caption = tr("Choose a Molecule"),
                                              .directory = QStringLiteral("lib/"),
                                              .filter = tr("KytFragment (*.kyf)")});
        beginStep();
        if (!name.isEmpty())
            readIntoView(name, true);
        endStep(insertMolecule);
    }
    showMessage(tr("Ready."));
}

void KytStudioApp::slotImportMolecule()
{
    showMessage(tr("Opening file..."));
    if (view) {
        const QString name = askOpenFileName(this,
                                             {.name = QStringLiteral("Import Moleculwe dialog"),
                                              .caption = tr("Choose a Molecule"),
                                              .directory = QStringLiteral("data/"),
                                              .filter = tr("KytBench (*.kyt)")});
        beginStep();
        if (!name.isEmpty())
            readIntoView(name, false);
        endStep(importMolecule);
    }
    showMessage(tr("Ready."));
}
