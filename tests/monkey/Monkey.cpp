#include "tests/monkey/Monkey.h"

#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"

#include <QActionGroup>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QRegularExpression>
#include <QScrollBar>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <QWhatsThis>
#include <QWheelEvent>

#include <SDL.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <thread>

#include <unistd.h>

namespace {

constexpr int mostAtoms = 500;        // in a drawing, so that steps stay fast
constexpr unsigned longestStep = 120; // seconds; a step that takes longer hangs

/// The actions in the order of their creation.
QAction* KytStudioApp::*const actions[] = {
    &KytStudioApp::fileNew,        &KytStudioApp::fileOpen,        &KytStudioApp::fileSave,
    &KytStudioApp::fileSaveAs,     &KytStudioApp::fileClose,       &KytStudioApp::filePrint,
    &KytStudioApp::fileQuit,       &KytStudioApp::viewToolBar,     &KytStudioApp::viewStatusBar,
    &KytStudioApp::viewLibraryBar, &KytStudioApp::helpAboutApp,    &KytStudioApp::insertMolecule,
    &KytStudioApp::importMolecule, &KytStudioApp::viewMode,        &KytStudioApp::rotateMode,
    &KytStudioApp::drawBond,       &KytStudioApp::drawDashedBond,  &KytStudioApp::drawStereoUp,
    &KytStudioApp::drawStereoDown, &KytStudioApp::zigzagStructure, &KytStudioApp::deleteItem,
    &KytStudioApp::fixedLength,    &KytStudioApp::fixedAngle,      &KytStudioApp::I3DView,
    &KytStudioApp::kyfBenzene,     &KytStudioApp::kyfCubane,       &KytStudioApp::kyfHexane,
    &KytStudioApp::kyfMegaphon,    &KytStudioApp::kyfProp,         &KytStudioApp::kyfWater,
};

/// The action of each editing mode, in the order of the modes.
QAction* KytStudioApp::*const modeActions[] = {
    &KytStudioApp::viewMode,       &KytStudioApp::rotateMode,      &KytStudioApp::drawBond,
    &KytStudioApp::drawDashedBond, &KytStudioApp::drawStereoUp,    &KytStudioApp::drawStereoDown,
    &KytStudioApp::deleteItem,     &KytStudioApp::zigzagStructure,
};

const Qt::Key keys[] = {
    Qt::Key_N,      Qt::Key_O,         Qt::Key_S,     Qt::Key_W,    Qt::Key_I,      Qt::Key_J,     Qt::Key_V,
    Qt::Key_B,      Qt::Key_D,         Qt::Key_G,     Qt::Key_X,    Qt::Key_Escape, Qt::Key_Tab,   Qt::Key_Return,
    Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Space, Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,    Qt::Key_Down,
    Qt::Key_PageUp, Qt::Key_PageDown,  Qt::Key_Home,  Qt::Key_End,  Qt::Key_F1,     Qt::Key_F10,   Qt::Key_Plus,
    Qt::Key_Minus,  Qt::Key_A,         Qt::Key_Z,     Qt::Key_C,    Qt::Key_Insert, Qt::Key_Print, Qt::Key_Menu,
};

const float angleSteps[] = {0.17453292F, 0.17453292F, 0.2617994F, 0.7853982F, 1.5707964F, 0.0017453292F, 0.0F, -0.3F};
const float bondLengths[] = {30.0F, 30.0F, 30.0F, 12.5F, 60.0F, 250.0F, 90.0F, -30.0F};

template <typename Range> auto chosen(const Range& range, int number)
{
    return range[static_cast<std::size_t>(number) % std::size(range)];
}

Qt::KeyboardModifiers modifiersOf(int input)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ControlModifier, input & ControlInput);
    modifiers.setFlag(Qt::ShiftModifier, input & ShiftInput);
    return modifiers;
}

Qt::MouseButton buttonOf(int input)
{
    constexpr Qt::MouseButton buttons[] = {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::LeftButton};
    return buttons[input & ButtonMask];
}

/// Where on the canvas an item can be taken, in pixels.
QPointF middleOf(const QCanvasItem* item)
{
    if (item->rtti() == QCanvasItem::Rtti_Line) {
        const auto* line = static_cast<const QCanvasLine*>(item);
        return (QPointF(line->startPoint()) + QPointF(line->endPoint())) / 2;
    }
    if (item->rtti() == QCanvasItem::Rtti_Polygon) {
        const QPolygon corners = static_cast<const QCanvasPolygon*>(item)->points();
        return (QPointF(corners.value(0)) + QPointF(corners.value(1)) + QPointF(corners.value(2))) / 3;
    }
    if (item->rtti() == QCanvasItem::Rtti_Text)
        return QPointF(item->x() + 4, item->y() + 8);
    return QPointF(item->x(), item->y());
}

int coordinate(double value)
{
    constexpr double farthest = 5000; // pixels; no screen is wider, so no pointer comes further
    return static_cast<int>(std::clamp(value, -farthest, farthest));
}

/// Presses keys in the 3D window and closes it, while it keeps the editor waiting.
class ViewerHand {
public:
    explicit ViewerHand(int salt)
        : hand([this, salt] { work(Chance(static_cast<quint64>(salt))); })
    {
    }
    ~ViewerHand()
    {
        over = true;
        hand.join();
    }
    bool wasThere() const { return there; }

private:
    void work(Chance chance)
    {
        while (!over && !SDL_WasInit(SDL_INIT_VIDEO))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        constexpr SDLKey pressed[] = {SDLK_w, SDLK_a, SDLK_x, SDLK_e, SDLK_r, SDLK_t, SDLK_o, SDLK_UP, SDLK_LEFT};
        for (int i = chance.below(8); i > 0 && !over; --i)
            press(chosen(pressed, chance.below(100)));
        if (over)
            return;
        there = true;
        if (chance.percent(80))
            press(SDLK_ESCAPE);
        else
            push(SDL_QUIT, SDLK_UNKNOWN);
    }

    void press(SDLKey key)
    {
        push(SDL_KEYDOWN, key);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }

    /// The queue takes nothing while it is being set up.
    void push(Uint8 type, SDLKey key)
    {
        SDL_Event event = {};
        event.type = type;
        if (type == SDL_KEYDOWN)
            event.key.keysym.sym = key;
        while (!over && SDL_PushEvent(&event) != 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }

    std::atomic<bool> over{false};
    std::atomic<bool> there{false};
    std::thread hand;
};

} // namespace

Monkey::Monkey(const Steps& steps, const PlantedFaults& planted, std::function<void(int)> progress)
    : steps(steps)
    , planted(planted)
    , progress(std::move(progress))
    , window(std::make_unique<TestWindow>())
    , rules(std::make_unique<EditorRules>((*window)->view))
    , historyRules(std::make_unique<HistoryRules>((*window).get()))
    , answers(std::make_unique<Answers>(folder, statistics))
{
    qApp->installEventFilter(this);
    connect((*window)->statusBar(), &QStatusBar::messageChanged, this, &Monkey::countMessage);
}

Monkey::~Monkey()
{
    (*window)->statusBar()->disconnect(this);
    answers.reset();
    historyRules.reset();
    rules.reset();
    window.reset();
}

void Monkey::start()
{
    // Out of the way: the pointer is to move only where a step moves it.
    QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight());
    (*window)->move(0, 0);
    (*window)->show();
    QTimer::singleShot(0, this, &Monkey::goOn);
}

bool Monkey::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qApp && event->type() == QEvent::Quit) {
        ++statistics[QStringLiteral("request to leave the program")];
        return true;
    }
    return QObject::eventFilter(watched, event);
}

/// Does steps until one that lets the event loop run.
void Monkey::goOn()
{
    while (next < steps.size() && found.isEmpty()) {
        const Step& step = steps[next];
        if (progress)
            progress(next);
        alarm(longestStep);
        // The event loop may have added since the last step what was pasted or dropped.
        checkNewSteps();
        clearIfLarger(mostAtoms);
        checkNewSteps();
        if (!found.isEmpty())
            break;
        const Census before = rules->census();
        const KytViewState mode = (*window)->view->canvasState;
        const bool loopNext = perform(step);
        check();
        countOutcome(step, before, mode);
        ++next;
        if (loopNext && found.isEmpty() && next < steps.size()) {
            QTimer::singleShot(0, this, &Monkey::goOn);
            return;
        }
    }
    finish();
}

void Monkey::finish()
{
    alarm(0);
    QCoreApplication::exit(found.isEmpty() ? 0 : faultCode);
}

/// True when the event loop is to run before the next step.
bool Monkey::perform(const Step& step)
{
    ++statistics[QStringLiteral("step ") + nameOf(step.kind)];
    const auto& n = step.numbers;
    switch (step.kind) {
    case StepKind::Press:
        sendMouse(step, QEvent::MouseButtonPress);
        break;
    case StepKind::DoubleClick:
        sendMouse(step, QEvent::MouseButtonDblClick);
        break;
    case StepKind::Move:
        sendMouse(step, QEvent::MouseMove);
        break;
    case StepKind::Release:
        sendMouse(step, QEvent::MouseButtonRelease);
        break;
    case StepKind::Wheel:
        sendWheel(step);
        break;
    case StepKind::ContextMenu:
        sendContextMenu(step);
        return true;
    case StepKind::Enter: {
        QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent((*window)->view->viewport(), &event);
        break;
    }
    case StepKind::Leave: {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent((*window)->view->viewport(), &event);
        break;
    }
    case StepKind::Mode:
        selectMode(n[0], n[1] == 0);
        break;
    case StepKind::Action:
        answers->begin(n[1]);
        ((*window).get()->*chosen(actions, n[0]))->trigger();
        answers->end();
        folder.tidy();
        return n[0] < 13;
    case StepKind::ToolButton:
        answers->begin(n[1]);
        pressToolButton(n[0]);
        answers->end();
        return true;
    case StepKind::MenuBar:
        answers->begin(n[1]);
        openMenu(n[0]);
        answers->end();
        return true;
    case StepKind::Shortcut:
        answers->begin(n[2]);
        pressKey(step);
        answers->end();
        return true;
    case StepKind::FixedValues:
        setFixedValues(n[0], n[1]);
        break;
    case StepKind::Scroll:
        scroll(n[0], n[1]);
        break;
    case StepKind::Resize:
        (*window)->resize(n[0], n[1]);
        return true;
    case StepKind::Focus:
        changeFocus(n[0] != 0);
        break;
    case StepKind::WindowState:
        changeWindowState(n[0]);
        return true;
    case StepKind::Repaint:
        (*window)->doc->canvas->update();
        (*window)->view->viewport()->repaint();
        break;
    case StepKind::Settle:
        return true;
    case StepKind::Tidy:
        clearIfLarger(n[0]);
        break;
    case StepKind::Transfer:
        transfer(step);
        return true;
    case StepKind::Viewer:
        openViewer(n[0]);
        return true;
    case StepKind::History:
        goThroughHistory(n[0]);
        break;
    case StepKind::Zoom:
        zoom(n[0]);
        break;
    case StepKind::Cancel:
        (*window)->view->cancelGesture();
        break;
    case StepKind::Type:
        type(n[0]);
        break;
    case StepKind::Select:
        if (n[0] == 0)
            (*window)->view->clearSelection();
        else
            (*window)->view->selectAll();
        break;
    }
    return false;
}

void Monkey::clearIfLarger(int atoms)
{
    if (rules->census().atoms <= atoms)
        return;
    ++statistics[QStringLiteral("drawing cleared because it was large")];
    (*window)->fileNew->trigger();
}

/// Several steps of the history at once, as one step of the monkey, could not be told apart.
void Monkey::checkNewSteps()
{
    if (historyRules->hasNewSteps())
        check();
}

void Monkey::check()
{
    // A popup that is left open would be in the way of nothing but the windows to come.
    if (QWidget* popup = QApplication::activePopupWidget())
        popup->close();
    if (found.isEmpty())
        found = answers->fault();
    if (found.isEmpty())
        found = rules->firstFault();
    if (found.isEmpty())
        found = historyRules->firstFault();
    if (found.isEmpty())
        found = neighbour.fault(*(*window)->view->canvas());
    if (found.isEmpty())
        found = plantedFault();
}

QString Monkey::plantedFault() const
{
    const Census& census = rules->census();
    if (planted.crashBonds >= 0 && census.bonds > planted.crashBonds)
        std::abort();
    if (planted.hangWedges >= 0 && census.wedges > planted.hangWedges) {
        alarm(1);
        for (;;)
            pause();
    }
    if (planted.mostAtoms >= 0 && census.atoms > planted.mostAtoms)
        return QStringLiteral("there are more than %1 atoms").arg(planted.mostAtoms);
    return QString();
}

/// Commands say in the status bar what they do and how they end.
void Monkey::countMessage(const QString& text)
{
    QString words = text.section(u':', 0, 0);
    words.remove(QRegularExpression(QStringLiteral("[0-9]+ *")));
    if (!words.isEmpty())
        ++statistics[QStringLiteral("status ") + words];
}

void Monkey::countOutcome(const Step& step, const Census& before, KytViewState mode)
{
    const Census& after = rules->census();
    qint64& most = statistics[mostAtomsName];
    most = std::max<qint64>(most, after.atoms);
    const auto count = [&](const char* what, int times = 1) {
        if (times > 0)
            statistics[QStringLiteral("outcome ") + QLatin1String(what)] += times;
    };
    const KytStudioView* view = (*window)->view;
    const bool press = step.kind == StepKind::Press || step.kind == StepKind::DoubleClick;
    if (press && drawsBond(mode)) {
        count("bond drawn to a new atom", after.bonds > before.bonds && after.atoms > before.atoms);
        count("bond drawn between atoms", after.bonds > before.bonds && after.atoms == before.atoms);
        count("wedge drawn", after.wedges - before.wedges);
        count("line added to a bond", after.bonds == before.bonds && after.lines > before.lines);
        count("start atom made", after.bonds == before.bonds && after.atoms > before.atoms);
    } else if (press && mode == KYTVS_zigzag) {
        count("chain drawn", after.bonds > before.bonds);
        count("atom of a chain drawn", after.bonds > before.bonds ? after.atoms - before.atoms : 0);
    } else if (press && mode == KYTVS_deleteItem) {
        count("atom deleted", before.atoms - after.atoms);
        count("bond deleted with its atom", after.atoms < before.atoms ? before.bonds - after.bonds : 0);
        count("bond deleted", after.atoms == before.atoms ? before.bonds - after.bonds : 0);
        count("line taken off a bond", after.bonds == before.bonds && after.lines < before.lines);
    } else if (step.kind == StepKind::Type && after.atoms < before.atoms) {
        count("atom deleted by a key", before.atoms - after.atoms);
    } else if (step.kind == StepKind::Move && view->moving) {
        count("drag step of a selection", mode == KYTVS_view && view->selectedAtoms().contains(view->moving));
        count("drag step of an atom", mode == KYTVS_view && view->moving->rtti() == QCanvasItem::Rtti_Ellipse);
        count("drag step of a line", mode == KYTVS_view && view->moving->rtti() == QCanvasItem::Rtti_Line);
        count("drag step of a wedge", mode == KYTVS_view && view->moving->rtti() == QCanvasItem::Rtti_Polygon);
        count("rotation step", mode == KYTVS_rotate);
    } else if (step.kind == StepKind::Release && mode == KYTVS_view) {
        count("atom merged", before.atoms - after.atoms);
    } else if (after.atoms == 0 && before.atoms > 0) {
        count("drawing cleared");
    } else if (after.atoms > before.atoms) {
        count("molecules read into the drawing");
    }
    if (planted.leak && press && mode == KYTVS_zigzag && after.bonds > before.bonds) [[maybe_unused]]
        char* volatile lost = new char[100]; // volatile, so that the allocation is not optimized away
}

QPoint Monkey::pointOf(const Step& step) const
{
    const QPoint p(step.numbers[XNumber], step.numbers[YNumber]);
    const int offset = step.numbers[OffsetNumber];
    const QPoint off = offset > 0 ? QPoint(offset % 9 - 4, offset / 9 % 9 - 4) : QPoint();
    switch (static_cast<PlaceKind>(step.numbers[PlaceNumber])) {
    case PlaceKind::Atom:
        return nearest(p, QCanvasItem::Rtti_Ellipse) + off;
    case PlaceKind::Line:
        return nearest(p, QCanvasItem::Rtti_Line) + off;
    case PlaceKind::Wedge:
        return nearest(p, QCanvasItem::Rtti_Polygon) + off;
    case PlaceKind::Label:
        return nearest(p, QCanvasItem::Rtti_Text) + off;
    case PlaceKind::Corner:
        return corner(p) + off;
    case PlaceKind::Far:
        return (p - QPoint(200, 160)) * 5 + off;
    case PlaceKind::Point:
        break;
    }
    return p + off;
}

/// The place of the item of this kind that is nearest to `p`, or `p` itself.
QPoint Monkey::nearest(const QPoint& p, int rtti) const
{
    const QCanvasView* view = (*window)->view;
    const QPointF scrolled(view->horizontalScrollBar()->value(), view->verticalScrollBar()->value());
    QPointF best = p;
    double shortest = std::numeric_limits<double>::infinity();
    const QCanvasItemList items = (*window)->doc->canvas->allItems();
    for (const QCanvasItem* item : items) {
        if (item->rtti() != rtti || item == tempBond)
            continue;
        const QPointF there = middleOf(item) - scrolled;
        const double away = std::hypot(there.x() - p.x(), there.y() - p.y());
        if (away < shortest) {
            shortest = away;
            best = there;
        }
    }
    return {coordinate(std::floor(best.x())), coordinate(std::floor(best.y()))};
}

QPoint Monkey::corner(const QPoint& p) const
{
    const QCanvasView* view = (*window)->view;
    const QPoint scrolled(view->horizontalScrollBar()->value(), view->verticalScrollBar()->value());
    const int right = view->canvas()->width();
    const int bottom = view->canvas()->height();
    return QPoint(p.x() % 3 == 0 ? 0 : p.x() % 3 == 1 ? right : p.x(), p.y() % 2 == 0 ? 0 : bottom) - scrolled;
}

void Monkey::sendMouse(const Step& step, QEvent::Type type)
{
    const int input = step.numbers[InputNumber];
    Qt::MouseButton button = buttonOf(input);
    if (type == QEvent::MouseMove)
        button = Qt::NoButton;
    held.setFlag(button, type != QEvent::MouseButtonRelease && button != Qt::NoButton);
    QWidget* viewport = (*window)->view->viewport();
    const QPoint p = pointOf(step);
    QMouseEvent event(type, p, viewport->mapToGlobal(p), button, held, modifiersOf(input));
    answers->begin(step.numbers[ExtraNumber]);
    QCoreApplication::sendEvent(viewport, &event);
    answers->end();
}

void Monkey::sendWheel(const Step& step)
{
    QWidget* viewport = (*window)->view->viewport();
    const QPoint p = pointOf(step);
    const QPoint delta(step.numbers[ExtraNumber] % 7 == 0 ? step.numbers[ExtraNumber] : 0, step.numbers[ExtraNumber]);
    QWheelEvent event(p, viewport->mapToGlobal(p), QPoint(), delta, held, modifiersOf(step.numbers[InputNumber]),
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(viewport, &event);
}

void Monkey::sendContextMenu(const Step& step)
{
    QWidget* const widgets[] = {(*window)->view->viewport(), (*window)->menuBar(),   (*window)->fileToolbar,
                                (*window)->libraryToolBar,   (*window)->statusBar(), (*window).get()};
    QWidget* widget = chosen(widgets, step.numbers[0]);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), widget->mapToGlobal(QPoint(5, 5)));
    answers->begin(step.numbers[1]);
    QCoreApplication::sendEvent(widget, &event);
    answers->end();
}

void Monkey::openViewer(int salt)
{
    const QByteArray before = qgetenv("SDL_VIDEODRIVER");
    qunsetenv("SDL_VIDEODRIVER");
    {
        const ViewerHand hand(salt);
        (*window)->I3DView->trigger();
        statistics[QStringLiteral("outcome 3D window opened and closed")] += hand.wasThere();
    }
    qputenv("SDL_VIDEODRIVER", before);
}

void Monkey::selectMode(int mode, bool byButton)
{
    QAction* action = (*window).get()->*chosen(modeActions, mode);
    if (byButton) {
        for (QObject* user : action->associatedObjects()) {
            if (auto* bar = qobject_cast<QToolBar*>(user)) {
                if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action))) {
                    QTest::mouseClick(button, Qt::LeftButton);
                    return;
                }
            }
        }
    }
    action->trigger();
}

void Monkey::pressToolButton(int which)
{
    QList<QToolButton*> buttons;
    for (const QToolBar* bar : (*window)->findChildren<QToolBar*>(Qt::FindDirectChildrenOnly))
        buttons += bar->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
    QToolButton* button = buttons.value(which % buttons.size());
    if (button->isVisible())
        QTest::mouseClick(button, Qt::LeftButton);
    // The question mark waits for a click of its own.
    if (QWhatsThis::inWhatsThisMode() && which % 2 == 0)
        QWhatsThis::leaveWhatsThisMode();
}

void Monkey::openMenu(int which)
{
    QMenu* const menus[] = {(*window)->pFileMenu, (*window)->pViewMenu, (*window)->pInsertMenu, (*window)->pHelpMenu};
    chosen(menus, which)->exec((*window)->menuBar()->mapToGlobal(QPoint(10, 20)));
}

void Monkey::pressKey(const Step& step)
{
    const Qt::Key key = chosen(keys, step.numbers[0]);
    // Without the window being active no shortcut is one; the window manager may not have got round to it.
    QApplication::setActiveWindow((*window).get());
    QWidget* target = step.numbers[0] % 2 == 0 ? static_cast<QWidget*>((*window)->view->viewport())
                                               : static_cast<QWidget*>((*window).get());
    QTest::keyClick(target, key, modifiersOf(step.numbers[1]));
}

void Monkey::transfer(const Step& step)
{
    QWidget* viewport = (*window)->view->viewport();
    const QPoint place(step.numbers[2], step.numbers[3]);
    QApplication::setActiveWindow((*window).get());
    switch (step.numbers[0]) {
    case 0:
        QTest::keyClick(viewport, Qt::Key_C, Qt::ControlModifier);
        break;
    case 1:
        QTest::keyClick(viewport, Qt::Key_Insert, Qt::ShiftModifier);
        break;
    case 2: {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(folder.fileName(step.numbers[1]))});
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &enter);
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(viewport, &drop);
        break;
    }
    case 3:
        QTest::keyClick(viewport, Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        break;
    case 4:
        QTest::keyClick(viewport, Qt::Key_L, Qt::ControlModifier);
        break;
    }
}

void Monkey::setFixedValues(int angle, int length)
{
    (*window)->view->fixedAngleValue = chosen(angleSteps, angle);
    (*window)->view->fixedLengthValue = chosen(bondLengths, length);
}

void Monkey::scroll(int horizontal, int vertical)
{
    QScrollBar* across = (*window)->view->horizontalScrollBar();
    QScrollBar* down = (*window)->view->verticalScrollBar();
    across->setValue(across->maximum() * horizontal / 1000);
    down->setValue(down->maximum() * vertical / 1000);
}

void Monkey::goThroughHistory(int how)
{
    if (how == 0)
        (*window)->view->undo();
    else if (how == 1)
        (*window)->view->redo();
    else
        found = historyRules->thereAndBack();
    statistics[QStringLiteral("outcome step undone or redone, drawing compared")] = historyRules->compared();
}

void Monkey::zoom(int how)
{
    KytStudioView* view = (*window)->view;
    if (how == 9)
        view->zoomToDrawing();
    else if (how == 0)
        view->zoomTo(1, QPointF(0, 0));
    else
        view->zoomBy(how, QPointF(100, 100));
}

void Monkey::type(int which)
{
    constexpr int letters = Qt::Key_Z - Qt::Key_A + 1;
    constexpr Qt::Key others[] = {Qt::Key_Delete, Qt::Key_Backspace};
    const auto key = which < letters ? static_cast<Qt::Key>(Qt::Key_A + which) : chosen(others, which - letters);
    QTest::keyClick((*window)->view, key);
}

void Monkey::changeFocus(bool in)
{
    QFocusEvent focus(in ? QEvent::FocusIn : QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent((*window)->view, &focus);
    QEvent activation(in ? QEvent::WindowActivate : QEvent::WindowDeactivate);
    QCoreApplication::sendEvent((*window).get(), &activation);
}

void Monkey::changeWindowState(int what)
{
    if (what == 2) {
        (*window)->setWindowState((*window)->windowState() ^ Qt::WindowMaximized);
        return;
    }
    if (what == 0)
        (*window)->close();
    else
        (*window)->hide();
    (*window)->show();
}
