#pragma once

#include "tests/support/Drawing.h"
#include "tests/support/Near.h"
#include "view/kytstudioview.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QTest>

#include <array>
#include <functional>
#include <utility>

inline constexpr std::array<KytViewState, 8> everyMode = {
    KYTVS_view,         KYTVS_rotate,         KYTVS_drawSimpleBond, KYTVS_drawDashedBond,
    KYTVS_drawStereoUp, KYTVS_drawStereoDown, KYTVS_deleteItem,     KYTVS_zigzag};

inline constexpr std::array bondModes = {KYTVS_drawSimpleBond, KYTVS_drawDashedBond, KYTVS_drawStereoUp,
                                         KYTVS_drawStereoDown};
inline constexpr std::array wedgeModes = {KYTVS_drawStereoUp, KYTVS_drawStereoDown};
inline constexpr std::array drawingModes = {KYTVS_drawSimpleBond, KYTVS_drawDashedBond, KYTVS_drawStereoUp,
                                            KYTVS_drawStereoDown, KYTVS_zigzag};
inline constexpr std::array modesThatMoveNothing = {KYTVS_drawSimpleBond, KYTVS_drawDashedBond, KYTVS_drawStereoUp,
                                                    KYTVS_drawStereoDown, KYTVS_deleteItem,     KYTVS_zigzag};
inline constexpr std::array modesThatDrawNothing = {KYTVS_view, KYTVS_rotate, KYTVS_deleteItem};

/// Test rows, one for each of `modes`, with the mode in the column "mode".
template <typename Modes> void addModeRows(const Modes& modes)
{
    static const char* const names[] = {"view",     "rotate",     "simple bond", "dashed bond",
                                        "wedge up", "wedge down", "delete",      "chain"};
    QTest::addColumn<int>("mode");
    for (const KytViewState mode : modes)
        QTest::newRow(names[mode]) << static_cast<int>(mode);
}

/// A drawing and a view onto its canvas, on the screen, with a hand at the mouse.
class ViewFixture : public Drawing {
public:
    explicit ViewFixture(KytViewState mode = KYTVS_view)
    {
        QCursor::setPos(QGuiApplication::primaryScreen()->geometry().bottomRight()); // out of the tests' way
        view = new KytStudioView(nullptr, doc);
        view->canvasState = mode;
        QObject::connect(view, &KytStudioView::displayBondDetail,
                         [this](char* text) { texts.append(QString::fromUtf8(text)); });
        QObject::connect(view, &KytStudioView::zigzagAtomValue, [this](int count) {
            counts.append(count);
            atomsAtCount.append(static_cast<int>(atoms().size()));
        });
        view->setAttribute(Qt::WA_ShowWithoutActivating);
        view->setGeometry(40, 40, 700, 520);
        view->show();
        if (!QTest::qWaitForWindowExposed(view))
            qFatal("The view does not appear on the screen");
    }

    ~ViewFixture()
    {
        delete view;
        tempBond->hide();
    }

    ViewFixture(const ViewFixture&) = delete;
    ViewFixture& operator=(const ViewFixture&) = delete;

    QPointer<KytStudioView> view;

    QStringList texts;       ///< what displayBondDetail said
    QList<int> counts;       ///< what zigzagAtomValue said,
    QList<int> atomsAtCount; ///< and how many atoms there were when it did

    /// A pixel in the label of `owner` that neither the atom nor a bond to its left, right or top reaches.
    static QPoint onLabel(const KytAtom* owner)
    {
        const QRectF box = owner->canvasSymbol->boundingRect();
        return QPoint(static_cast<int>(box.center().x()), static_cast<int>(box.bottom()) - 3);
    }

    // The hand

    void press(QPoint p, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        held |= button;
        send(QEvent::MouseButtonPress, p, button, modifiers);
    }

    void release(QPoint p, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        held &= ~Qt::MouseButtons(button);
        send(QEvent::MouseButtonRelease, p, button, modifiers);
    }

    void move(QPoint p, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        send(QEvent::MouseMove, p, Qt::NoButton, modifiers);
    }

    /// Goes to `p`, presses and lets go.
    void click(QPoint p, Qt::KeyboardModifiers modifiers = Qt::NoModifier, Qt::MouseButton button = Qt::LeftButton)
    {
        move(p, modifiers);
        press(p, modifiers, button);
        release(p, modifiers, button);
    }

    /// Two clicks so fast that the second is reported as a double click.
    void doubleClick(QPoint p, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                     Qt::MouseButton button = Qt::LeftButton)
    {
        click(p, modifiers, button);
        held |= button;
        send(QEvent::MouseButtonDblClick, p, button, modifiers);
        release(p, modifiers, button);
    }

    /// Goes to `from`, presses there, moves to `to` in two steps and lets go.
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        move(from, modifiers);
        press(from, modifiers);
        move(from + (to - from) / 2, modifiers);
        move(to, modifiers);
        release(to, modifiers);
    }

    /// Presses at the first of the points, moves on to the others and lets go at the last.
    void dragAlong(std::initializer_list<QPoint> way)
    {
        press(*way.begin());
        for (const QPoint* p = way.begin() + 1; p != way.end(); ++p)
            move(*p);
        release(*(way.end() - 1));
    }

    void rightClick(QPoint p) { click(p, Qt::NoModifier, Qt::RightButton); }

    /// Every gesture of the left button in every mode, around `p`; ends in view mode.
    void useEveryModeAt(QPoint p)
    {
        for (const KytViewState mode : everyMode) {
            view->canvasState = mode;
            drag(p, p + QPoint(60, 20));
            click(p + QPoint(10, 70));
            click(p + QPoint(80, 70), Qt::ControlModifier);
            drag(p + QPoint(80, 70), p, Qt::ControlModifier);
            doubleClick(p + QPoint(40, 40));
            click(p, Qt::NoModifier, Qt::MiddleButton);
        }
        view->canvasState = KYTVS_view;
    }

    /// Scrolls until the canvas point `corner` is in the view's top-left corner.
    void scrollTo(QPoint corner)
    {
        view->horizontalScrollBar()->setValue(corner.x());
        view->verticalScrollBar()->setValue(corner.y());
        if (scrolled() != corner)
            qFatal("The view does not scroll");
    }

    QPoint scrolled() const { return {view->horizontalScrollBar()->value(), view->verticalScrollBar()->value()}; }
    QPoint onViewport(QPoint p) const { return p - scrolled(); }
    /// Where `p` is in the view's window while nothing is scrolled.
    QPoint inWindow(QPoint p) const { return view->viewport()->mapTo(view.data(), p); }

    /// What is under way between two clicks.
    QString gesture() const
    {
        const bool begun = view->isLastAtom == 1;
        if (begun != tempBond->isVisible())
            return QStringLiteral("isLastAtom is %1, and the rubber band is %2")
                .arg(view->isLastAtom)
                .arg(begun ? QStringLiteral("hidden") : QStringLiteral("shown"));
        return begun ? QStringLiteral("begun") : QStringLiteral("none");
    }

private:
    void send(QEvent::Type type, QPoint p, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
    {
        QWidget* viewport = view->viewport();
        const QPoint place = onViewport(p);
        QMouseEvent event(type, QPointF(place), QPointF(viewport->mapToGlobal(place)), button, held, modifiers);
        QApplication::sendEvent(viewport, &event);
    }

    Qt::MouseButtons held;
};

inline bool isHighlighted(const KytAtom* atom)
{
    return atom->brush() == QBrush(QColor(0, 255, 0), Qt::SolidPattern) && atom->width() == 6 && atom->height() == 6;
}

inline bool isPlain(const KytAtom* atom)
{
    return atom->brush() == QBrush(QColor(0, 0, 0), Qt::SolidPattern) && atom->width() == 3 && atom->height() == 3;
}

inline bool isHighlighted(const KytBondLine* line)
{
    return line->pen().color() == QColor(0, 255, 0);
}

inline bool isPlain(const KytBondLine* line)
{
    return line->pen().color() == QColor(0, 0, 255);
}

inline QPointF placeOf(const QCanvasItem* item)
{
    return {item->x(), item->y()};
}

using Places = QList<QPointF>;

inline Places placesOf(std::initializer_list<const QCanvasItem*> items)
{
    Places places;
    for (const QCanvasItem* item : items)
        places.append(placeOf(item));
    return places;
}

/// Takes an atom away, alone or with more.
using Destroyer = std::function<void(ViewFixture&, KytAtom*)>;
Q_DECLARE_METATYPE(Destroyer)

/// The ways in which an atom and what hangs on it can go.
inline const std::array<std::pair<const char*, Destroyer>, 3> waysToGo{{
    {"the atom", [](ViewFixture&, KytAtom* atom) { delete atom; }},
    {"all atoms", [](ViewFixture& f, KytAtom*) { f.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse); }},
    {"the canvas", [](ViewFixture& f, KytAtom*) { delete f.canvas(); }},
}};

inline QLine lineOf(const QCanvasLine* line)
{
    return {line->startPoint(), line->endPoint()};
}

/// An atom stands at (x, y) to a thousandth of a pixel.
#define STANDS_AT(item, expectedX, expectedY)                                                                          \
    do {                                                                                                               \
        NEAR((item)->x(), (expectedX), 1e-3);                                                                          \
        NEAR((item)->y(), (expectedY), 1e-3);                                                                          \
    } while (false)
