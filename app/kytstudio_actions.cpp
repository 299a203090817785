#include "app/kytstudio.h"
#include "app/pictures.h"
#include "view/kytstudioview.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QWhatsThis>

namespace {

constexpr QSize pictureSize(24, 24);

/// The source of an action's icon: compiled in, or a file relative to the working directory.
struct Picture {
    const char* const* data = nullptr;
    const char* path = nullptr;

    QIcon icon() const
    {
        if (data)
            return QIcon(QPixmap(data));
        return path ? QIcon(QPixmap(QString::fromLatin1(path))) : QIcon();
    }
};

enum class Owner { Window, Modes };
enum class Toggle { No, Yes };

using Slot = void (KytStudioApp::*)();
using ToggleSlot = void (KytStudioApp::*)(bool);

/// The definition of an action; its texts are translated when the action is created.
struct Command {
    QAction* KytStudioApp::*member;
    const char* text;
    Picture picture;
    const char* menuText;
    const char* key;
    Owner owner;
    const char* name;
    Toggle toggle;
    const char* statusTip;
    const char* whatsThis;
    Slot slot;
    ToggleSlot toggleSlot = nullptr;
};

using App = KytStudioApp;

// clang-format off
const Command commands[] = {
    {&App::fileNew, QT_TRANSLATE_NOOP("KytStudioApp", "New File"), {filenew},
     QT_TRANSLATE_NOOP("KytStudioApp", "&New"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+N"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Creates a new document"),
     QT_TRANSLATE_NOOP("KytStudioApp", "New File\n\nCreates a new document"), &App::slotFileNew},
    {&App::fileOpen, QT_TRANSLATE_NOOP("KytStudioApp", "Open File"), {fileopen},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Open..."), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+O"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Opens an existing document"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Open File\n\nOpens an existing document"), &App::slotFileOpen},
    {&App::fileSave, QT_TRANSLATE_NOOP("KytStudioApp", "Save File"), {filesave},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Save"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+S"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Saves the actual document"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Save File.\n\nSaves the actual document"), &App::slotFileSave},
    {&App::fileSaveAs, QT_TRANSLATE_NOOP("KytStudioApp", "Save File As"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "Save &as..."), nullptr,
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Saves the actual document under a new filename"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Save As\n\nSaves the actual document under a new filename"),
     &App::slotFileSaveAs},
    {&App::fileClose, QT_TRANSLATE_NOOP("KytStudioApp", "Close File"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Close"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+W"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Closes the actual document"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Close File\n\nCloses the actual document"), &App::slotFileClose},
    {&App::filePrint, QT_TRANSLATE_NOOP("KytStudioApp", "Print File"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Print"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+P"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Prints out the actual document"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Print File\n\nPrints out the actual document"), &App::slotFilePrint},
    {&App::fileQuit, QT_TRANSLATE_NOOP("KytStudioApp", "Exit"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "E&xit"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+Q"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Quits the application"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Exit\n\nQuits the application"), &App::slotFileQuit},

    {&App::viewToolBar, QT_TRANSLATE_NOOP("KytStudioApp", "Toolbar"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "Tool&bar"), nullptr,
     Owner::Window, nullptr, Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Enables/disables the toolbar"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Toolbar\n\nEnables/disables the toolbar"), nullptr, &App::slotViewToolBar},
    {&App::viewStatusBar, QT_TRANSLATE_NOOP("KytStudioApp", "Statusbar"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Statusbar"), nullptr,
     Owner::Window, nullptr, Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Enables/disables the statusbar"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Statusbar\n\nEnables/disables the statusbar"), nullptr,
     &App::slotViewStatusBar},
    {&App::viewLibraryBar, QT_TRANSLATE_NOOP("KytStudioApp", "MolLib"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "&MolLib"), nullptr,
     Owner::Window, nullptr, Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Enables/disables the Library Toolbar"),
     QT_TRANSLATE_NOOP("KytStudioApp", "MolLib\n\nEnables/disables the Library Toolbar"), nullptr,
     &App::slotViewLibraryBar},

    {&App::helpAboutApp, QT_TRANSLATE_NOOP("KytStudioApp", "About"), {},
     QT_TRANSLATE_NOOP("KytStudioApp", "&About..."), nullptr,
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "About the application"),
     QT_TRANSLATE_NOOP("KytStudioApp", "About\n\nAbout the application"), &App::slotHelpAbout},

    {&App::insertMolecule, QT_TRANSLATE_NOOP("KytStudioApp", "Insert Molecule from Templates"), {fileopen},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Insert Template"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+I"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Insert Molecule from Templates"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Insert Molecule\n\nInsert Molecule from Templates"),
     &App::slotInsertMolecule},
    {&App::importMolecule, QT_TRANSLATE_NOOP("KytStudioApp", "Import Molecule from File"), {fileopen},
     QT_TRANSLATE_NOOP("KytStudioApp", "I&mport"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+J"),
     Owner::Window, nullptr, Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Import Molecule from file"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Import Molecule\n\nInsert Molecule from file"), &App::slotImportMolecule},

    {&App::viewMode, QT_TRANSLATE_NOOP("KytStudioApp", "View Mode"), {nullptr, "icons/view.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&View Mode"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+V"),
     Owner::Modes, "ViewMode", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "View Mode"),
     QT_TRANSLATE_NOOP("KytStudioApp", "View Mode\n\nView Mode"), &App::slotSelectViewMode},
    {&App::rotateMode, QT_TRANSLATE_NOOP("KytStudioApp", "Rotate Mode"), {nullptr, "icons/rotate.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Rotate Mode"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+V"),
     Owner::Modes, "rotateMode", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Rotate Mode"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Rotate Mode\n\nRotate Mode"), &App::slotSelectRotateMode},
    {&App::drawBond, QT_TRANSLATE_NOOP("KytStudioApp", "Draw Bond"), {nullptr, "icons/singlebond.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Draw Bond"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Modes, "DrawBond", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Draw a bond"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Draw Bond\n\nDraw a bond"), &App::slotSelectAddBond},
    {&App::drawDashedBond, QT_TRANSLATE_NOOP("KytStudioApp", "Add Dashed Bond"), {nullptr, "icons/dashedbond.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Add Dashed Bond"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+D"),
     Owner::Modes, "DrawDashedBond", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Dashed Bond"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Dashed Bond\n\nAdd Dashed Bond"), &App::slotSelectAddDashedBond},
    {&App::drawStereoUp, QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond"), {nullptr, "icons/stereoup.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Add Stereo Bond"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+D"),
     Owner::Modes, "DrawStereoUp", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond\n\nAdd Stereo Bond"), &App::slotSelectAddStereoUp},
    {&App::drawStereoDown, QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond"), {nullptr, "icons/stereodown.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Add Stereo Bond"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+D"),
     Owner::Modes, "DrawStereoDown", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Add Stereo Bond\n\nAdd Stereo Bond"), &App::slotSelectAddStereoDown},
    {&App::zigzagStructure, QT_TRANSLATE_NOOP("KytStudioApp", "Zig Zag Structure"), {nullptr, "icons/zigzag.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Zig Zag Structure"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+G"),
     Owner::Modes, "Zig Zag Structure", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Zig Zag Structure"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Zig Zag Structure\n\nZig Zag Structure"), &App::slotZigzagStructure},
    {&App::deleteItem, QT_TRANSLATE_NOOP("KytStudioApp", "Delete Item"), {nullptr, "icons/delete.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Delete Item"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+X"),
     Owner::Modes, "DeleteItem", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Delete Item"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Delete Item\n\nDelete Item"), &App::slotSelectDeleteItem},
    {&App::fixedLength, QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Length"), {nullptr, "icons/fixedlength.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Fixed Length"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+X"),
     Owner::Window, "Fixed Length", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Length"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Length\n\nFixed Length"), &App::slotSelectFixedLength},
    {&App::fixedAngle, QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Angle"), {nullptr, "icons/fixedangle.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Fixed Angle"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+X"),
     Owner::Window, "Fixed Angle", Toggle::Yes,
     QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Angle"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Fixed Angle\n\nFixed Angle"), &App::slotSelectFixedAngle},
    {&App::I3DView, QT_TRANSLATE_NOOP("KytStudioApp", "I3D View"), {nullptr, "icons/i3d.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&I3DView"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+F"),
     Owner::Modes, "I3D View", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "I3D View"),
     QT_TRANSLATE_NOOP("KytStudioApp", "I3D View\n\n3D View of Models"), &App::slotSelectI3DView},

    {&App::kyfBenzene, QT_TRANSLATE_NOOP("KytStudioApp", "Benzene"), {nullptr, "lib/benzene.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Benzene"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Benzene", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Benzene"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Benzene\n\nBenzene"), &App::slotAddBenzene},
    {&App::kyfCubane, QT_TRANSLATE_NOOP("KytStudioApp", "Cubane"), {nullptr, "lib/cubane.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Cubane"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Cubane", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Cubane"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Cubane\n\nCubane"), &App::slotAddCubane},
    {&App::kyfHexane, QT_TRANSLATE_NOOP("KytStudioApp", "Hexane"), {nullptr, "lib/hexane.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Hexane"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Hexane", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Hexane"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Hexane\n\nHexane"), &App::slotAddHexane},
    {&App::kyfMegaphon, QT_TRANSLATE_NOOP("KytStudioApp", "Megaphon"), {nullptr, "lib/megaphon.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Megaphon"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Megaphon", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Megaphon"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Megaphon\n\nMegaphon"), &App::slotAddMegaphon},
    {&App::kyfProp, QT_TRANSLATE_NOOP("KytStudioApp", "Prop"), {nullptr, "lib/prop.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Prop"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Prop", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Prop"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Prop\n\nProp"), &App::slotAddProp},
    {&App::kyfWater, QT_TRANSLATE_NOOP("KytStudioApp", "Water"), {nullptr, "lib/water.xpm"},
     QT_TRANSLATE_NOOP("KytStudioApp", "&Water"), QT_TRANSLATE_NOOP("KytStudioApp", "Ctrl+B"),
     Owner::Window, "Water", Toggle::No,
     QT_TRANSLATE_NOOP("KytStudioApp", "Water"),
     QT_TRANSLATE_NOOP("KytStudioApp", "Water\n\nWater"), &App::slotAddWater},
};
// clang-format on

/// The text, followed by the shortcut in parentheses, if any.
QString toolTip(const QString& text, const QKeySequence& key)
{
    return key.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText));
}

QAction* makeAction(const Command& command, QObject* parent)
{
    auto* action = new QAction(command.picture.icon(), App::tr(command.menuText), parent);
    const QString text = App::tr(command.text);
    action->setIconText(text);
    if (command.key)
        action->setShortcut(QKeySequence(App::tr(command.key)));
    action->setToolTip(toolTip(text, action->shortcut()));
    if (command.name)
        action->setObjectName(QString::fromLatin1(command.name));
    action->setStatusTip(App::tr(command.statusTip));
    action->setWhatsThis(App::tr(command.whatsThis));
    action->setCheckable(command.toggle == Toggle::Yes);
    return action;
}

/// Qt's What's This action, with an icon that is visible on dark toolbars too.
QAction* whatsThisAction(QObject* parent)
{
    QAction* action = QWhatsThis::createAction(parent);
    const QPixmap picture(QStringLiteral("icons/whatsthis.xpm"));
    if (!picture.isNull())
        action->setIcon(picture);
    return action;
}

} // namespace

void KytStudioApp::initActions()
{
    viewGrp = new QActionGroup(this);
    viewGrp->setExclusive(true);
    for (const Command& command : commands) {
        QObject* owner = command.owner == Owner::Modes ? static_cast<QObject*>(viewGrp) : this;
        QAction* action = makeAction(command, owner);
        this->*command.member = action;
        if (command.slot)
            connect(action, &QAction::triggered, this, command.slot);
        else
            connect(action, &QAction::toggled, this, command.toggleSlot);
        action->installEventFilter(this);
        addAction(action);
    }
    connect(view, &KytStudioView::displayBondDetail, this, &KytStudioApp::slotDisplayBondDetail);
    connect(view, &KytStudioView::zigzagAtomValue, this, &KytStudioApp::slotZigzagAtomCount);
}

void KytStudioApp::initMenuBar()
{
    pFileMenu = menuBar()->addMenu(tr("&File"));
    pFileMenu->addActions({fileNew, fileOpen, fileClose});
    pFileMenu->addSeparator();
    pFileMenu->addActions({fileSave, fileSaveAs});
    pFileMenu->addSeparator();
    pFileMenu->addAction(filePrint);
    pFileMenu->addSeparator();
    pFileMenu->addAction(fileQuit);

    pViewMenu = menuBar()->addMenu(tr("&View"));
    pViewMenu->addActions({viewToolBar, viewStatusBar, viewLibraryBar});

    pInsertMenu = menuBar()->addMenu(tr("&Insert"));
    pInsertMenu->addActions({insertMolecule, importMolecule});

    menuBar()->addSeparator();
    pHelpMenu = menuBar()->addMenu(tr("&Help"));
    pHelpMenu->addAction(helpAboutApp);
}

QToolBar* KytStudioApp::makeToolBar(const QString& name, const QString& title, Qt::ToolBarArea area)
{
    auto* bar = new QToolBar(title, this);
    bar->setObjectName(name);
    bar->setIconSize(pictureSize);
    addToolBar(area, bar);
    bar->installEventFilter(this);
    // The button for actions that do not fit into a small window.
    if (auto* more = bar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
        more->setAccessibleName(tr("More buttons"));
        more->setToolTip(tr("More buttons"));
    }
    return bar;
}

void KytStudioApp::initToolBar()
{
    fileToolbar = makeToolBar(QStringLiteral("file operations"), tr("file operations"), Qt::TopToolBarArea);
    fileToolbar->addAction(fileNew);
    fileToolbar->addSeparator();
    fileToolbar->addActions({fileOpen, fileSave});
    fileToolbar->addSeparator();
    fileToolbar->addAction(whatsThisAction(this));

    addToolBarBreak();
    drawToolBar = makeToolBar(QStringLiteral("draw operations"), tr("draw operations"), Qt::TopToolBarArea);
    drawToolBar->addActions({viewMode, rotateMode});
    drawToolBar->addSeparator();
    drawToolBar->addActions({drawBond, drawDashedBond, drawStereoUp, drawStereoDown, zigzagStructure});
    drawToolBar->addSeparator();
    drawToolBar->addAction(deleteItem);
    drawToolBar->addSeparator();
    drawToolBar->addActions({fixedLength, fixedAngle});
    drawToolBar->addSeparator();
    // Both wedge actions have the same text; the accessible names distinguish them for screen readers.
    drawToolBar->widgetForAction(drawStereoUp)->setAccessibleName(tr("Add Stereo Bond, towards the viewer"));
    drawToolBar->widgetForAction(drawStereoDown)->setAccessibleName(tr("Add Stereo Bond, away from the viewer"));

    drawToolBar = makeToolBar(QStringLiteral("I3D Model View"), tr("I3D Model View"), Qt::TopToolBarArea);
    drawToolBar->addAction(I3DView);
    drawToolBar->addSeparator();

    libraryToolBar = makeToolBar(QStringLiteral("Molecule library"), tr("Molecule library"), Qt::LeftToolBarArea);
    libraryToolBar->addActions({kyfBenzene, kyfHexane, kyfCubane, kyfProp, kyfWater, kyfMegaphon});
}

/// Changes the mode only: shows no message and does not end a gesture in progress.
void KytStudioApp::selectMode(KytViewState state)
{
    if (!view)
        return;
    view->canvasState = state;
    updateState();
}

void KytStudioApp::slotSelectViewMode()
{
    selectMode(KYTVS_view);
}

void KytStudioApp::slotSelectRotateMode()
{
    selectMode(KYTVS_rotate);
}

void KytStudioApp::slotSelectAddBond()
{
    selectMode(KYTVS_drawSimpleBond);
}

void KytStudioApp::slotSelectAddDashedBond()
{
    selectMode(KYTVS_drawDashedBond);
}

void KytStudioApp::slotSelectAddStereoUp()
{
    selectMode(KYTVS_drawStereoUp);
}

void KytStudioApp::slotSelectAddStereoDown()
{
    selectMode(KYTVS_drawStereoDown);
}

void KytStudioApp::slotSelectDeleteItem()
{
    selectMode(KYTVS_deleteItem);
}

void KytStudioApp::slotZigzagStructure()
{
    selectMode(KYTVS_zigzag);
}

void KytStudioApp::slotSelectFixedLength()
{
    if (view)
        view->fixedLengthFlag = 1 - view->fixedLengthFlag;
}

void KytStudioApp::slotSelectFixedAngle()
{
    if (view)
        view->fixedAngleFlag = 1 - view->fixedAngleFlag;
}
