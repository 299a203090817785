#include "TestWindow.h"

#include <QAction>
#include <QActionGroup>
#include <QElapsedTimer>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintDialog>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>
#include <QWhatsThis>

#include <iterator>
#include <memory>
#include <utility>

namespace {

using Member = QAction* KytStudioApp::*;

/// What an action is made of.
struct Row {
    const char* member;
    Member action;
    const char* text;
    const char* icon; ///< a built-in picture's name, a file, or null
    const char* menuText;
    const char* key; ///< empty for none
    bool inGroup;
    const char* name;
    bool checkable;
    const char* statusTip;
    const char* whatsThis;
    const char* digit = ""; ///< the second key of a mode or a switch
};

#define MEMBER(name) #name, &KytStudioApp::name

const Row rows[] = {
    {MEMBER(fileNew), "New File", "filenew", "&New", "Ctrl+N", false, "", false, "Creates a new document",
     "New File\n\nCreates a new document"},
    {MEMBER(fileOpen), "Open File", "fileopen", "&Open...", "Ctrl+O", false, "", false, "Opens an existing document",
     "Open File\n\nOpens an existing document"},
    {MEMBER(fileSave), "Save File", "filesave", "&Save", "Ctrl+S", false, "", false, "Saves the actual document",
     "Save File.\n\nSaves the actual document"},
    {MEMBER(fileSaveAs), "Save File As", nullptr, "Save &as...", "", false, "", false,
     "Saves the actual document under a new filename", "Save As\n\nSaves the actual document under a new filename"},
    {MEMBER(fileClose), "Close File", nullptr, "&Close", "Ctrl+W", false, "", false, "Closes the actual document",
     "Close File\n\nCloses the actual document"},
    {MEMBER(filePrint), "Print File", nullptr, "&Print", "Ctrl+P", false, "", false, "Prints out the actual document",
     "Print File\n\nPrints out the actual document"},
    {MEMBER(fileQuit), "Exit", nullptr, "E&xit", "Ctrl+Q", false, "", false, "Quits the application",
     "Exit\n\nQuits the application"},
    {MEMBER(viewToolBar), "Toolbar", nullptr, "Tool&bar", "", false, "", true, "Enables/disables the toolbar",
     "Toolbar\n\nEnables/disables the toolbar"},
    {MEMBER(viewStatusBar), "Statusbar", nullptr, "&Statusbar", "", false, "", true, "Enables/disables the statusbar",
     "Statusbar\n\nEnables/disables the statusbar"},
    {MEMBER(viewLibraryBar), "MolLib", nullptr, "&MolLib", "", false, "", true, "Enables/disables the Library Toolbar",
     "MolLib\n\nEnables/disables the Library Toolbar"},
    {MEMBER(helpAboutApp), "About", nullptr, "&About...", "", false, "", false, "About the application",
     "About\n\nAbout the application"},
    {MEMBER(insertMolecule), "Insert Molecule from Templates", "fileopen", "&Insert Template", "Ctrl+I", false, "",
     false, "Insert Molecule from Templates", "Insert Molecule\n\nInsert Molecule from Templates"},
    {MEMBER(importMolecule), "Import Molecule from File", "fileopen", "I&mport", "Ctrl+J", false, "", false,
     "Import Molecule from file", "Import Molecule\n\nInsert Molecule from file"},
    {MEMBER(viewMode), "View Mode", "icons/view.xpm", "&View Mode", "Ctrl+V", true, "ViewMode", true, "View Mode",
     "View Mode\n\nView Mode", "1"},
    {MEMBER(rotateMode), "Rotate Mode", "icons/rotate.xpm", "&Rotate Mode", "Ctrl+V", true, "rotateMode", true,
     "Rotate Mode", "Rotate Mode\n\nRotate Mode", "2"},
    {MEMBER(drawBond), "Draw Bond", "icons/singlebond.xpm", "&Draw Bond", "Ctrl+B", true, "DrawBond", true,
     "Draw a bond", "Draw Bond\n\nDraw a bond", "3"},
    {MEMBER(drawDashedBond), "Add Dashed Bond", "icons/dashedbond.xpm", "&Add Dashed Bond", "Ctrl+D", true,
     "DrawDashedBond", true, "Add Dashed Bond", "Add Dashed Bond\n\nAdd Dashed Bond", "4"},
    {MEMBER(drawStereoUp), "Add Stereo Bond", "icons/stereoup.xpm", "&Add Stereo Bond", "Ctrl+D", true, "DrawStereoUp",
     true, "Add Stereo Bond", "Add Stereo Bond\n\nAdd Stereo Bond", "5"},
    {MEMBER(drawStereoDown), "Add Stereo Bond", "icons/stereodown.xpm", "&Add Stereo Bond", "Ctrl+D", true,
     "DrawStereoDown", true, "Add Stereo Bond", "Add Stereo Bond\n\nAdd Stereo Bond", "6"},
    {MEMBER(zigzagStructure), "Zig Zag Structure", "icons/zigzag.xpm", "&Zig Zag Structure", "Ctrl+G", true,
     "Zig Zag Structure", true, "Zig Zag Structure", "Zig Zag Structure\n\nZig Zag Structure", "7"},
    {MEMBER(deleteItem), "Delete Item", "icons/delete.xpm", "&Delete Item", "Ctrl+X", true, "DeleteItem", true,
     "Delete Item", "Delete Item\n\nDelete Item", "8"},
    {MEMBER(fixedLength), "Fixed Length", "icons/fixedlength.xpm", "&Fixed Length", "Ctrl+X", false, "Fixed Length",
     true, "Fixed Length", "Fixed Length\n\nFixed Length", "9"},
    {MEMBER(fixedAngle), "Fixed Angle", "icons/fixedangle.xpm", "&Fixed Angle", "Ctrl+X", false, "Fixed Angle", true,
     "Fixed Angle", "Fixed Angle\n\nFixed Angle", "0"},
    {MEMBER(I3DView), "I3D View", "icons/i3d.xpm", "&I3DView", "Ctrl+F", true, "I3D View", false, "I3D View",
     "I3D View\n\n3D View of Models"},
    {MEMBER(kyfBenzene), "Benzene", "lib/benzene.xpm", "&Benzene", "Ctrl+B", false, "Benzene", false, "Benzene",
     "Benzene\n\nBenzene"},
    {MEMBER(kyfCubane), "Cubane", "lib/cubane.xpm", "&Cubane", "Ctrl+B", false, "Cubane", false, "Cubane",
     "Cubane\n\nCubane"},
    {MEMBER(kyfHexane), "Hexane", "lib/hexane.xpm", "&Hexane", "Ctrl+B", false, "Hexane", false, "Hexane",
     "Hexane\n\nHexane"},
    {MEMBER(kyfMegaphon), "Megaphon", "lib/megaphon.xpm", "&Megaphon", "Ctrl+B", false, "Megaphon", false, "Megaphon",
     "Megaphon\n\nMegaphon"},
    {MEMBER(kyfProp), "Prop", "lib/prop.xpm", "&Prop", "Ctrl+B", false, "Prop", false, "Prop", "Prop\n\nProp"},
    {MEMBER(kyfWater), "Water", "lib/water.xpm", "&Water", "Ctrl+B", false, "Water", false, "Water", "Water\n\nWater"},
};

/// A built-in picture, drawn with the letters of its rows.
QImage picture(const QString& name)
{
    QStringList lines;
    QHash<QChar, QRgb> colours;
    const auto repeat = [&lines](const char* line, int times) {
        for (int i = 0; i < times; ++i)
            lines << line;
    };
    if (name == "filenew") {
        colours = {{' ', qRgba(0, 0, 0, 0)},
                   {'.', qRgb(0, 0, 0)},
                   {'+', qRgb(0xFF, 0xFF, 0xFF)},
                   {'@', qRgb(0xDC, 0xDC, 0xDC)},
                   {'#', qRgb(0xC0, 0xC0, 0xC0)}};
        lines << ".......   "
              << ".++++@@.  "
              << ".++++#+@. "
              << ".++++#++@."
              << ".++++#...."
              << ".+++++###.";
        repeat(".++++++++.", 7);
        lines << "..........";
    } else if (name == "fileopen") {
        colours = {{'.', qRgb(0x04, 0x04, 0x04)},
                   {'#', qRgb(0x80, 0x83, 0x04)},
                   {'a', qRgb(0xbf, 0xc2, 0xbf)},
                   {'b', qRgb(0xf3, 0xf7, 0x04)},
                   {'c', qRgb(0xf3, 0xf7, 0xf3)}};
        lines << "aaaaaaaaa...aaaa"
              << "aaaaaaaa.aaa.a.a"
              << "aaaaaaaaaaaaa..a"
              << "a...aaaaaaaa...a"
              << ".bcb.......aaaaa"
              << ".cbcbcbcbc.aaaaa"
              << ".bcbcbcbcb.aaaaa"
              << ".cbcb..........."
              << ".bcb.#########.a"
              << ".cb.#########.aa"
              << ".b.#########.aaa"
              << "..#########.aaaa"
              << "...........aaaaa";
    } else {
        colours = {{'.', qRgb(0x04, 0x04, 0x04)}, {'#', qRgb(0x80, 0x83, 0x04)}, {'a', qRgb(0xbf, 0xc2, 0xbf)}};
        lines << ".............."
              << ".#.aaaaaaaa.a."
              << ".#.aaaaaaaa...";
        repeat(".#.aaaaaaaa.#.", 4);
        lines << ".##........##."
              << ".############."
              << ".##.........#.";
        repeat(".##......aa.#.", 3);
        lines << "a.............";
    }
    QImage image(int(lines[0].size()), int(lines.size()), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, colours.value(lines[y][x]));
    }
    return image;
}

const Row& rowOf(const QString& member)
{
    for (const Row& row : rows) {
        if (member == row.member)
            return row;
    }
    qFatal("no such action");
}

QToolBar* bar(const TestWindow& window, const char* name)
{
    return window->findChild<QToolBar*>(name);
}

const char* const barNames[] = {"file operations", "draw operations", "I3D Model View", "Molecule library"};

/// The actions of a menu or toolbar; a null stands for a separator.
QList<QAction*> contents(const QWidget* widget)
{
    QList<QAction*> actions;
    for (QAction* action : widget->actions())
        actions << (action->isSeparator() ? nullptr : action);
    return actions;
}

/// Moves the real pointer onto a widget and waits until it has been noticed.
void pointAt(const TestWindow& window, QWidget* widget)
{
    QTest::mouseMove(window->view->viewport(), QPoint(100, 100));
    QTest::qWait(50);
    QTest::mouseMove(widget);
    QTest::qWait(50);
}

void pointAway(const TestWindow& window)
{
    QTest::mouseMove(window->view->viewport(), QPoint(120, 120));
    QTest::qWait(50);
}

QWidget* drawButton(const TestWindow& window)
{
    return bar(window, "draw operations")->widgetForAction(window->drawBond);
}

} // namespace

class test_kytstudio_actions : public QObject {
    Q_OBJECT

private slots:
    void thereAreThirtyActions()
    {
        QCOMPARE(int(std::size(rows)), 30);
        const TestWindow window;
        QSet<QAction*> different;
        for (const Row& row : rows) {
            QVERIFY2(window.get()->*row.action, row.member);
            different << window.get()->*row.action;
        }
        QCOMPARE(different.size(), 30);
    }

    void eachActionHasItsTexts_data() { allActions(); }

    void eachActionHasItsTexts()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        const QAction* action = window.get()->*row.action;
        QCOMPARE(action->iconText(), QString(row.text));
        QCOMPARE(action->text(), QString(row.menuText));
        QCOMPARE(action->statusTip(), QString(row.statusTip));
        QCOMPARE(action->whatsThis(), QString(row.whatsThis));
    }

    void eachActionHasItsKey_data() { allActions(); }

    void eachActionHasItsKey()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        const QAction* action = window.get()->*row.action;
        QCOMPARE(action->shortcut(), QKeySequence(row.key));
        QCOMPARE(action->shortcuts().size(), *row.key ? 1 : 0);
    }

    void eachActionHasItsToolTip_data() { allActions(); }

    void eachActionHasItsToolTip()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        QAction* action = window.get()->*row.action;
        const QString keys = QString(row.key) + (*row.digit ? QStringLiteral(", ") + row.digit : QString());
        const QString expected = keys.isEmpty() ? QString(row.text) : QString("%1 (%2)").arg(row.text, keys);
        QCOMPARE(action->toolTip(), expected);
        for (const char* name : barNames) {
            if (const QWidget* button = bar(window, name)->widgetForAction(action))
                QCOMPARE(button->toolTip(), expected);
        }
    }

    void eachActionHasItsParentAndName_data() { allActions(); }

    void eachActionHasItsParentAndName()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        const QAction* action = window.get()->*row.action;
        QCOMPARE(action->objectName(), QString(row.name));
        QCOMPARE(action->actionGroup(), row.inGroup ? window->viewGrp : nullptr);
        QCOMPARE(action->parent(),
                 row.inGroup ? static_cast<QObject*>(window->viewGrp) : static_cast<QObject*>(window.get()));
    }

    void eachActionIsAToggleOrNot_data() { allActions(); }

    void eachActionIsAToggleOrNot()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        QCOMPARE((window.get()->*row.action)->isCheckable(), row.checkable);
    }

    void eachActionHasItsPicture_data() { allActions(); }

    void eachActionHasItsPicture()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        const QIcon icon = (window.get()->*row.action)->icon();
        if (!row.icon) {
            QVERIFY(icon.isNull());
            return;
        }
        const bool fromFile = QString(row.icon).endsWith(".xpm");
        const QImage expected = fromFile ? QImage(row.icon) : picture(row.icon);
        QVERIFY2(!expected.isNull(), row.icon);
        QCOMPARE(icon.availableSizes(), QList<QSize>({expected.size()}));
        const QImage shown = icon.pixmap(expected.size()).toImage();
        QCOMPARE(shown.size(), expected.size());
        QVERIFY(samePicture(shown, expected));
    }

    void eachActionIsEnabledAndOnTheWindow_data() { allActions(); }

    void eachActionIsEnabledAndOnTheWindow()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const TestWindow window;
        QAction* action = window.get()->*row.action;
        QVERIFY(action->isEnabled());
        QVERIFY(action->isVisible());
        QVERIFY(window->actions().contains(action));
    }

    void actionsAreMadeInOrder()
    {
        const TestWindow window;
        QList<QAction*> inWindow;
        QList<QAction*> inGroup;
        for (const Row& row : rows)
            (row.inGroup ? inGroup : inWindow) << window.get()->*row.action;

        QList<QAction*> made;
        for (QAction* action : window->findChildren<QAction*>(Qt::FindDirectChildrenOnly)) {
            if (inWindow.contains(action))
                made << action;
        }
        QCOMPARE(made, inWindow);
        QCOMPARE(window->viewGrp->actions(), inGroup);
    }

    void everyTextAndKeyIsTranslated_data() { allActions(); }

    void everyTextAndKeyIsTranslated()
    {
        QFETCH(QString, member);
        const Row& row = rowOf(member);
        const BracketTranslator translator;
        const TestWindow window;
        const auto bracketed = [](const char* text) { return QString("[%1]").arg(text); };
        const QAction* action = window.get()->*row.action;
        QCOMPARE(action->iconText(), bracketed(row.text));
        QCOMPARE(action->text(), bracketed(row.menuText));
        QCOMPARE(action->statusTip(), bracketed(row.statusTip));
        QCOMPARE(action->whatsThis(), bracketed(row.whatsThis));
        QCOMPARE(action->shortcut(), QKeySequence(*row.key ? "Alt" + QString(row.key).mid(4) : QString()));
        QCOMPARE(action->objectName(), QString(row.name));
    }

    void missingPicturesGiveEmptyIcons()
    {
        const WorkingFolder folder;
        const TestWindow window;
        for (const Row& row : rows) {
            const QIcon icon = (window.get()->*row.action)->icon();
            const bool builtIn = row.icon && !QString(row.icon).endsWith(".xpm");
            QVERIFY2(builtIn == !icon.pixmap(16, 16).isNull(), row.member);
        }
    }

    void picturesAreReadFromTheWorkingFolder()
    {
        const WorkingFolder folder;
        QVERIFY(QDir().mkdir("icons") && QDir().mkdir("lib"));
        QImage green(7, 5, QImage::Format_RGB32);
        green.fill(Qt::green);
        QVERIFY(green.save("icons/zigzag.xpm", "XPM"));
        QVERIFY(green.save("lib/water.xpm", "XPM"));
        const TestWindow window;
        for (const QAction* action : {window->zigzagStructure, window->kyfWater}) {
            QCOMPARE(action->icon().availableSizes(), QList<QSize>({QSize(7, 5)}));
            QVERIFY(samePicture(action->icon().pixmap(7, 5).toImage(), green));
        }
    }

    void theGroupIsExclusiveAndTheWindowsOwn()
    {
        const TestWindow window;
        QVERIFY(window->viewGrp);
        QCOMPARE(window->viewGrp->parent(), static_cast<QObject*>(window.get()));
        QCOMPARE(window->viewGrp->exclusionPolicy(), QActionGroup::ExclusionPolicy::Exclusive);
        QCOMPARE(window->viewGrp->objectName(), QString());
    }

    void theGroupHasItsMembersInOrder()
    {
        const TestWindow window;
        QCOMPARE(window->viewGrp->actions(),
                 QList<QAction*>({window->viewMode, window->rotateMode, window->drawBond, window->drawDashedBond,
                                  window->drawStereoUp, window->drawStereoDown, window->zigzagStructure,
                                  window->deleteItem, window->I3DView}));
    }

    void noModeIsCheckedAtTheStart()
    {
        const TestWindow window;
        QVERIFY(!window->viewGrp->checkedAction());
        for (const Row& row : rows) {
            const bool viewToggle = row.action == &KytStudioApp::viewToolBar
                || row.action == &KytStudioApp::viewStatusBar || row.action == &KytStudioApp::viewLibraryBar;
            QVERIFY2((window.get()->*row.action)->isChecked() == viewToggle, row.member);
        }
        QCOMPARE(window->view->canvasState, KYTVS_view);
    }

    void choosingAModeChecksItAlone()
    {
        const TestWindow window;
        for (QAction* action : window->viewGrp->actions()) {
            if (action == window->I3DView)
                continue;
            action->trigger();
            QCOMPARE(window->viewGrp->checkedAction(), action);
            for (const QAction* other : window->viewGrp->actions())
                QCOMPARE(other->isChecked(), other == action);
        }
    }

    void choosingAModeTwiceLeavesItChosen()
    {
        const TestWindow window;
        window->drawStereoUp->trigger();
        window->drawStereoUp->trigger();
        QVERIFY(window->drawStereoUp->isChecked());
        QCOMPARE(window->view->canvasState, KYTVS_drawStereoUp);
    }

    void the3DActionLeavesTheCheckedModeAndTheState()
    {
        const NoThirdDimension blocked;
        const TestWindow window;
        window->zigzagStructure->trigger();
        window->I3DView->trigger();
        QVERIFY(!window->I3DView->isChecked());
        QVERIFY(window->zigzagStructure->isChecked());
        QCOMPARE(window->view->canvasState, KYTVS_zigzag);
    }

    void fixedLengthAndAngleAreOutsideTheGroup()
    {
        const TestWindow window;
        window->drawBond->trigger();
        window->fixedLength->trigger();
        window->fixedAngle->trigger();
        QVERIFY(window->drawBond->isChecked());
        QVERIFY(window->fixedLength->isChecked());
        QVERIFY(window->fixedAngle->isChecked());
        QCOMPARE(window->view->canvasState, KYTVS_drawSimpleBond);
        QCOMPARE(window->view->fixedLengthFlag, 1);
        QCOMPARE(window->view->fixedAngleFlag, 1);
    }

    void eachModeActionSetsItsState_data()
    {
        QTest::addColumn<QString>("member");
        QTest::addColumn<int>("state");
        QTest::newRow("view") << "viewMode" << 0;
        QTest::newRow("rotate") << "rotateMode" << 1;
        QTest::newRow("bond") << "drawBond" << 2;
        QTest::newRow("dashed bond") << "drawDashedBond" << 3;
        QTest::newRow("wedge up") << "drawStereoUp" << 4;
        QTest::newRow("wedge down") << "drawStereoDown" << 5;
        QTest::newRow("delete") << "deleteItem" << 6;
        QTest::newRow("zigzag") << "zigzagStructure" << 7;
    }

    void eachModeActionSetsItsState()
    {
        QFETCH(QString, member);
        QFETCH(int, state);
        const TestWindow window;
        window->view->canvasState = state == 0 ? KYTVS_zigzag : KYTVS_view;
        (window.get()->*rowOf(member).action)->trigger();
        QCOMPARE(int(window->view->canvasState), state);
    }

    void modeActionsChangeNothingElse()
    {
        const TestWindow window;
        KytAtom* atom = window.atom(50, 50);
        window->view->lastAtom = atom;
        window->view->isLastAtom = 1;
        tempBond->show();
        window->statusBar()->showMessage("as it was");
        const StatusLog log(window);
        for (QAction* action : window->viewGrp->actions()) {
            if (action != window->I3DView)
                action->trigger();
        }
        window->fixedLength->trigger();
        window->fixedAngle->trigger();
        QCOMPARE(log.shown, QStringList());
        QCOMPARE(message(window), QString("as it was"));
        QCOMPARE(window->view->lastAtom, atom);
        QCOMPARE(window->view->isLastAtom, 1);
        QVERIFY(tempBond->isVisible());
        tempBond->hide();
    }

    void modeSlotsWithoutAViewDoNothing()
    {
        const NoThirdDimension blocked;
        const TestWindow window;
        KytStudioView* view = std::exchange(window->view, nullptr);
        view->canvasState = KYTVS_rotate;
        window->slotSelectViewMode();
        window->slotSelectRotateMode();
        window->slotSelectAddBond();
        window->slotSelectAddDashedBond();
        window->slotSelectAddStereoUp();
        window->slotSelectAddStereoDown();
        window->slotSelectDeleteItem();
        window->slotZigzagStructure();
        window->slotSelectFixedLength();
        window->slotSelectFixedAngle();
        window->view = view;
        QCOMPARE(view->canvasState, KYTVS_rotate);
        QCOMPARE(view->fixedLengthFlag, 0);
        QCOMPARE(view->fixedAngleFlag, 0);
    }

    void pressingFixedLengthTwiceLeavesItsFlag()
    {
        const TestWindow window;
        window->fixedLength->trigger();
        QCOMPARE(window->view->fixedLengthFlag, 1);
        QVERIFY(window->fixedLength->isChecked());
        window->fixedLength->trigger();
        QCOMPARE(window->view->fixedLengthFlag, 0);
        QVERIFY(!window->fixedLength->isChecked());
        QCOMPARE(window->view->fixedAngleFlag, 0);
    }

    void pressingFixedAngleTwiceLeavesItsFlag()
    {
        const TestWindow window;
        window->fixedAngle->trigger();
        QCOMPARE(window->view->fixedAngleFlag, 1);
        QVERIFY(window->fixedAngle->isChecked());
        window->fixedAngle->trigger();
        QCOMPARE(window->view->fixedAngleFlag, 0);
        QVERIFY(!window->fixedAngle->isChecked());
        QCOMPARE(window->view->fixedLengthFlag, 0);
    }

    void flagsFollowActivationNotTheCheckMark()
    {
        const TestWindow window;
        window->fixedLength->setChecked(true);
        window->fixedAngle->setChecked(true);
        QCOMPARE(window->view->fixedLengthFlag, 0);
        QCOMPARE(window->view->fixedAngleFlag, 0);
        window->fixedLength->trigger();
        window->fixedAngle->trigger();
        QCOMPARE(window->view->fixedLengthFlag, 1);
        QCOMPARE(window->view->fixedAngleFlag, 1);
        QVERIFY(!window->fixedLength->isChecked());
    }

    void theMenuBarHasFourMenusAndASeparator()
    {
        const TestWindow window;
        const QList<QAction*> shown = contents(window->menuBar());
        QCOMPARE(shown.size(), 5);
        QCOMPARE(shown[0], window->pFileMenu->menuAction());
        QCOMPARE(shown[1], window->pViewMenu->menuAction());
        QCOMPARE(shown[2], window->pInsertMenu->menuAction());
        QVERIFY(!shown[3]);
        QCOMPARE(shown[4], window->pHelpMenu->menuAction());
        QCOMPARE(window->pFileMenu->title(), QString("&File"));
        QCOMPARE(window->pViewMenu->title(), QString("&View"));
        QCOMPARE(window->pInsertMenu->title(), QString("&Insert"));
        QCOMPARE(window->pHelpMenu->title(), QString("&Help"));
    }

    void eachMenuHasItsItemsInOrder()
    {
        const TestWindow window;
        QCOMPARE(contents(window->pFileMenu),
                 QList<QAction*>({window->fileNew, window->fileOpen, window->fileClose, nullptr, window->fileSave,
                                  window->fileSaveAs, nullptr, window->filePrint, nullptr, window->fileQuit}));
        QCOMPARE(contents(window->pViewMenu),
                 QList<QAction*>({window->viewToolBar, window->viewStatusBar, window->viewLibraryBar}));
        QCOMPARE(contents(window->pInsertMenu), QList<QAction*>({window->insertMolecule, window->importMolecule}));
        QCOMPARE(contents(window->pHelpMenu), QList<QAction*>({window->helpAboutApp}));
    }

    void theViewMenuShowsCheckMarks()
    {
        const TestWindow window;
        for (const QAction* action : window->pViewMenu->actions()) {
            QVERIFY(action->isCheckable());
            QVERIFY(action->isChecked());
        }
    }

    void modesAndToolsAreInNoMenu()
    {
        const TestWindow window;
        for (const Row& row : rows) {
            if (row.icon && QString(row.icon).endsWith(".xpm")) {
                for (const QMenu* menu : {window->pFileMenu, window->pViewMenu, window->pInsertMenu, window->pHelpMenu})
                    QVERIFY2(!menu->actions().contains(window.get()->*row.action), row.member);
            }
        }
    }

    void theMenusOpenByMouseAndTheirItemsAct()
    {
        const TestWindow window;
        QVERIFY(window.show());
        const auto choose = [&window](QMenu* menu, QAction* item) {
            QTest::mouseClick(window->menuBar(), Qt::LeftButton, {},
                              window->menuBar()->actionGeometry(menu->menuAction()).center());
            QVERIFY(QTest::qWaitForWindowExposed(menu));
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item).center());
            QTRY_VERIFY(!menu->isVisible());
        };
        choose(window->pViewMenu, window->viewToolBar);
        QVERIFY(!window->viewToolBar->isChecked());
        QVERIFY(!window->fileToolbar->isVisible());
        choose(window->pViewMenu, window->viewToolBar);
        QVERIFY(window->fileToolbar->isVisible());

        window.atom(40, 40);
        choose(window->pFileMenu, window->fileNew);
        QVERIFY(window.atoms().isEmpty());
        QCOMPARE(message(window), QString("Creating file"));
    }

    void eachToolBarHasItsNameAndPlace()
    {
        const TestWindow window;
        QStringList names;
        for (const QToolBar* toolBar : window->findChildren<QToolBar*>())
            names << toolBar->objectName();
        QCOMPARE(names, QStringList(std::begin(barNames), std::end(barNames)));
        for (const char* name : barNames) {
            const bool library = qstrcmp(name, "Molecule library") == 0;
            QCOMPARE(window->toolBarArea(bar(window, name)), library ? Qt::LeftToolBarArea : Qt::TopToolBarArea);
            QVERIFY2(!bar(window, name)->windowTitle().isEmpty(), name);
        }
    }

    void theDrawToolBarMemberIsThe3DBar()
    {
        const TestWindow window;
        QCOMPARE(window->drawToolBar, bar(window, "I3D Model View"));
        QCOMPARE(window->fileToolbar, bar(window, "file operations"));
        QCOMPARE(window->libraryToolBar, bar(window, "Molecule library"));
    }

    void theUnusedLibraryMemberStaysNull()
    {
        const TestWindow window;
        QVERIFY(!window->libraryToolbar);
    }

    void eachToolBarHasItsActionsInOrder()
    {
        const TestWindow window;
        const QList<QAction*> file = contents(bar(window, "file operations"));
        QCOMPARE(file.mid(0, 5),
                 QList<QAction*>({window->fileNew, nullptr, window->fileOpen, window->fileSave, nullptr}));
        QCOMPARE(file.size(), 6);
        QVERIFY(file[5]);
        QCOMPARE(
            contents(bar(window, "draw operations")),
            QList<QAction*>({window->viewMode, window->rotateMode, nullptr, window->drawBond, window->drawDashedBond,
                             window->drawStereoUp, window->drawStereoDown, window->zigzagStructure, nullptr,
                             window->deleteItem, nullptr, window->fixedLength, window->fixedAngle, nullptr}));
        QCOMPARE(contents(bar(window, "I3D Model View")), QList<QAction*>({window->I3DView, nullptr}));
        QCOMPARE(contents(bar(window, "Molecule library")),
                 QList<QAction*>({window->kyfBenzene, window->kyfHexane, window->kyfCubane, window->kyfProp,
                                  window->kyfWater, window->kyfMegaphon}));
    }

    void theFileBarEndsWithWhatsThis()
    {
        const TestWindow window;
        QVERIFY(window.show());
        QToolBar* fileBar = bar(window, "file operations");
        QAction* last = fileBar->actions().constLast();
        QVERIFY(!last->isSeparator());
        QVERIFY(!QWhatsThis::inWhatsThisMode());
        QTest::mouseClick(fileBar->widgetForAction(last), Qt::LeftButton);
        QVERIFY(QWhatsThis::inWhatsThisMode());
        QWhatsThis::leaveWhatsThisMode();
    }

    void theLibraryBarStartsOnTheLeftWithSixButtons()
    {
        const TestWindow window;
        QVERIFY(window.show());
        const QToolBar* library = window->libraryToolBar;
        QCOMPARE(window->toolBarArea(library), Qt::LeftToolBarArea);
        QCOMPARE(library->orientation(), Qt::Vertical);
        QVERIFY(library->geometry().right() <= window->view->geometry().left());
        const QList<QAction*> order{window->kyfBenzene, window->kyfHexane, window->kyfCubane,
                                    window->kyfProp,    window->kyfWater,  window->kyfMegaphon};
        QCOMPARE(library->findChildren<QToolButton*>().size() - 1, 6); // one more is the hidden overflow arrow
        int bottom = -1;
        for (QAction* action : order) {
            const QWidget* button = library->widgetForAction(action);
            QVERIFY(button->isVisible());
            QVERIFY(button->y() > bottom);
            bottom = button->geometry().bottom();
        }
    }

    void everyButtonIsSeenAtTheStartSize()
    {
        const TestWindow window;
        QVERIFY(window.show());
        QTest::qWait(50);
        QCOMPARE(window->size(), QSize(450, 400));
        everyButtonIsSeen(window);
    }

    void everyButtonIsSeenInAMaximisedWindow()
    {
        const TestWindow window;
        window->showMaximized();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTRY_VERIFY(window->width() > 1000);
        QTest::qWait(50);
        everyButtonIsSeen(window);
    }

    void theDrawingKeepsRoomAtTheStartSize()
    {
        const TestWindow window;
        QVERIFY(window.show());
        QVERIFY(window->view->viewport()->width() >= 300);
        QVERIFY(window->view->viewport()->height() >= 200);
    }

    void buttonsActOnAClick()
    {
        const TestWindow window;
        QVERIFY(window.show());
        const QToolBar* draw = bar(window, "draw operations");
        QTest::mouseClick(draw->widgetForAction(window->drawStereoDown), Qt::LeftButton);
        QCOMPARE(window->view->canvasState, KYTVS_drawStereoDown);
        QVERIFY(window->drawStereoDown->isChecked());
        QTest::mouseClick(draw->widgetForAction(window->fixedAngle), Qt::LeftButton);
        QCOMPARE(window->view->fixedAngleFlag, 1);
        QTest::mouseClick(draw->widgetForAction(window->viewMode), Qt::LeftButton);
        QCOMPARE(window->view->canvasState, KYTVS_view);
        QVERIFY(!window->drawStereoDown->isChecked());
    }

    void clashingKeysTriggerNothing_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("name");
        QTest::newRow("view and rotate") << int(Qt::Key_V) << "Ctrl+V";
        QTest::newRow("bond and the library") << int(Qt::Key_B) << "Ctrl+B";
        QTest::newRow("dashed and stereo bonds") << int(Qt::Key_D) << "Ctrl+D";
        QTest::newRow("delete, fixed length, fixed angle") << int(Qt::Key_X) << "Ctrl+X";
    }

    void clashingKeysTriggerNothing()
    {
        QFETCH(int, key);
        QFETCH(QString, name);
        const TestWindow window;
        QVERIFY(window.show());
        window->view->canvasState = KYTVS_zigzag;
        std::vector<std::unique_ptr<QSignalSpy>> spies;
        for (const Row& row : rows)
            spies.push_back(std::make_unique<QSignalSpy>(window.get()->*row.action, &QAction::triggered));
        const LoggedMessages messages;
        QTest::keyClick(window.get(), Qt::Key(key), Qt::ControlModifier);
        for (std::size_t i = 0; i < spies.size(); ++i)
            QVERIFY2(spies[i]->isEmpty(), rows[i].member);
        QCOMPARE(message(window), QString("Ambiguous \"%1\" not handled").arg(name));
        QCOMPARE(timeOut(window), 4000);
        QCOMPARE(LoggedMessages::lines(), QStringList());
        QCOMPARE(window->view->canvasState, KYTVS_zigzag);
        QCOMPARE(window->view->fixedLengthFlag, 0);
        QCOMPARE(window->view->fixedAngleFlag, 0);
        QVERIFY(!window->viewGrp->checkedAction());
        QVERIFY(window.atoms().isEmpty());
    }

    void aClashingKeyTwiceStillTriggersNothing()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->view->canvasState = KYTVS_zigzag;
        for (int i = 0; i < 8; ++i) {
            window->statusBar()->clearMessage();
            QTest::keyClick(window.get(), Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(message(window), QString("Ambiguous \"Ctrl+V\" not handled"));
            QCOMPARE(window->view->canvasState, KYTVS_zigzag);
        }
        QVERIFY(!window->viewGrp->checkedAction());
    }

    void clashingKeysTriggerNothingWithHiddenBars()
    {
        const TestWindow window;
        QVERIFY(window.show());
        for (const char* name : barNames)
            bar(window, name)->hide();
        QTest::keyClick(window.get(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(message(window), QString("Ambiguous \"Ctrl+X\" not handled"));
        QCOMPARE(window->view->canvasState, KYTVS_view);
        QCOMPARE(window->view->fixedLengthFlag, 0);
    }

    void theClashMessageIsTranslatedAsAFormat()
    {
        const TestWindow window;
        QVERIFY(window.show());
        const BracketTranslator translator;
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(message(window), QString("[Ambiguous \"Ctrl+D\" not handled]"));
    }

    void eachFreeKeyWorks_data()
    {
        QTest::addColumn<QString>("member");
        for (const char* member : {"fileNew", "fileOpen", "fileSave", "fileClose", "filePrint", "fileQuit",
                                   "insertMolecule", "importMolecule", "zigzagStructure", "I3DView"})
            QTest::newRow(member) << QString(member);
    }

    void eachFreeKeyWorks()
    {
        QFETCH(QString, member);
        const WorkingFolder folder;
        const TestWindow window;
        QVERIFY(window.show());
        pressFreeKey(window, member);
    }

    void eachFreeKeyWorksWithHiddenBars_data() { eachFreeKeyWorks_data(); }

    void eachFreeKeyWorksWithHiddenBars()
    {
        QFETCH(QString, member);
        const WorkingFolder folder;
        const TestWindow window;
        QVERIFY(window.show());
        for (const char* name : barNames)
            bar(window, name)->hide();
        window->menuBar()->hide();
        window->statusBar()->hide();
        pressFreeKey(window, member);
    }

    void aButtonsTipIsShownAndGoes()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->statusBar()->clearMessage();
        const StatusLog log(window);
        pointAt(window, drawButton(window));
        QTRY_COMPARE(message(window), QString("Draw a bond"));
        pointAway(window);
        QTRY_VERIFY(message(window) != "Draw a bond");
    }

    void aMessageComesBackAfterATip()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->slotFileNew();
        pointAt(window, drawButton(window));
        QTRY_COMPARE(message(window), QString("Draw a bond"));
        pointAway(window);
        QTRY_COMPARE(message(window), QString("Creating file"));
        QCOMPARE(timeOut(window), 0);
    }

    void aMessageComesBackAfterSeveralTips()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->slotFileNew();
        pointAt(window, drawButton(window));
        QTRY_COMPARE(message(window), QString("Draw a bond"));
        QTest::mouseMove(bar(window, "draw operations")->widgetForAction(window->drawDashedBond));
        QTRY_COMPARE(message(window), QString("Add Dashed Bond"));
        QTest::mouseMove(bar(window, "draw operations")->widgetForAction(window->rotateMode));
        QTRY_COMPARE(message(window), QString("Rotate Mode"));
        pointAway(window);
        QTRY_COMPARE(message(window), QString("Creating file"));
    }

    void aMessageComesBackForTheRestOfItsTime()
    {
        const WorkingFolder folder;
        const TestWindow window;
        QVERIFY(window.show());
        QElapsedTimer clock;
        clock.start();
        window->view->canvasState = KYTVS_zigzag;
        window->slotZigzagAtomCount(7);
        QCOMPARE(timeOut(window), 15000);
        pointAt(window, drawButton(window));
        QTRY_COMPARE(message(window), QString("Draw a bond"));
        QTest::qWait(500);
        pointAway(window);
        QTRY_COMPARE(message(window), QString("7 Atoms"));
        QVERIFY(timeOut(window) > 0);
        QVERIFY(timeOut(window) <= 14500);
        QTRY_COMPARE_WITH_TIMEOUT(message(window), QString(), 40000);
        QVERIFY(clock.elapsed() >= 14000);
    }

    void aMessageThatEndsDuringATipDoesNotComeBack()
    {
        const WorkingFolder folder;
        const TestWindow window;
        QVERIFY(window.show());
        window->slotAddWater();
        QCOMPARE(message(window), QString("Water Loaded !"));
        pointAt(window, drawButton(window));
        QTRY_COMPARE(message(window), QString("Draw a bond"));
        QTest::qWait(2500);
        QCOMPARE(message(window), QString("Draw a bond"));
        pointAway(window);
        QTRY_COMPARE(message(window), QString());
    }

    void aCommandsMessageReplacesATip()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->statusBar()->clearMessage();
        pointAt(window, bar(window, "file operations")->widgetForAction(window->fileNew));
        QTRY_COMPARE(message(window), QString("Creates a new document"));
        QTest::mouseClick(bar(window, "file operations")->widgetForAction(window->fileNew), Qt::LeftButton);
        QCOMPARE(message(window), QString("Creating file"));
        pointAway(window);
        QTest::qWait(100);
        QCOMPARE(message(window), QString("Creating file"));
    }

    void aMenuItemsTipIsShown()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window->slotFileNew();
        QTest::mouseClick(window->menuBar(), Qt::LeftButton, {},
                          window->menuBar()->actionGeometry(window->pFileMenu->menuAction()).center());
        QVERIFY(QTest::qWaitForWindowExposed(window->pFileMenu));
        QTest::keyClick(window->pFileMenu, Qt::Key_Down);
        QTRY_COMPARE(message(window), QString("Creates a new document"));
        QTest::keyClick(window->pFileMenu, Qt::Key_Escape);
        QTRY_VERIFY(!window->pFileMenu->isVisible());
        QTRY_COMPARE(message(window), QString("Creating file"));
    }

private:
    static void allActions()
    {
        QTest::addColumn<QString>("member");
        for (const Row& row : rows)
            QTest::newRow(row.member) << QString(row.member);
    }

    void pressFreeKey(const TestWindow& window, const QString& member)
    {
        const NoThirdDimension blocked;
        const Row& row = rowOf(member);
        QAction* action = window.get()->*row.action;
        const QSignalSpy spy(action, &QAction::triggered);
        window->doc->docName = "drawing.kyt";
        ModalSteps steps;
        if (!QStringList({"fileNew", "fileSave", "zigzagStructure", "I3DView"}).contains(member))
            steps.then<QDialog>([](QDialog* dialog) { dialog->reject(); });
        QTest::keyClick(window.get(), Qt::Key(QKeySequence(row.key)[0].key()), Qt::ControlModifier);
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(spy.size(), 1);
        QCOMPARE(window->view->canvasState, member == "zigzagStructure" ? KYTVS_zigzag : KYTVS_view);
        QCOMPARE(QFile::exists("drawing.kyt"), member == "fileSave");
    }

    void everyButtonIsSeen(const TestWindow& window)
    {
        const QRect inside(QPoint(0, 0), window->size());
        for (const char* name : barNames) {
            QToolBar* toolBar = bar(window, name);
            QVERIFY2(toolBar->isVisible(), name);
            const auto* arrow = toolBar->findChild<QToolButton*>("qt_toolbar_ext_button");
            QVERIFY2(!arrow || !arrow->isVisible(), name);
            int reached = -1;
            for (QAction* action : toolBar->actions()) {
                if (action->isSeparator())
                    continue;
                const QWidget* button = toolBar->widgetForAction(action);
                QVERIFY2(button && button->isVisible(), qPrintable(action->iconText()));
                const QRect place(button->mapTo(window.get(), QPoint(0, 0)), button->size());
                QVERIFY2(inside.contains(place), qPrintable(action->iconText()));
                QVERIFY2(toolBar->rect().contains(button->geometry()), qPrintable(action->iconText()));
                const bool across = toolBar->orientation() == Qt::Horizontal;
                QVERIFY2((across ? button->x() : button->y()) > reached, qPrintable(action->iconText()));
                reached = across ? button->geometry().right() : button->geometry().bottom();
                QCOMPARE(window->childAt(place.center()), button);
            }
        }
        // From top to bottom and left to right, the upper bars stand in the order in which they were made.
        QPoint before(-1, -1);
        for (const char* name : {"file operations", "draw operations", "I3D Model View"}) {
            const QPoint place = bar(window, name)->pos();
            QVERIFY2(place.y() > before.y() || (place.y() == before.y() && place.x() > before.x()), name);
            before = place;
        }
    }
};

int main(int argc, char** argv)
{
    return runTests<test_kytstudio_actions>(argc, argv);
}

#include "test_kytstudio_actions.moc"
