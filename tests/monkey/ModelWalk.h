#pragma once

#include "history/KytHistory.h"
#include "tests/monkey/Chance.h"
#include "tests/monkey/EditorModel.h"
#include "tests/monkey/Statistics.h"
#include "tests/view/ViewFixture.h"

#include <QStringList>

#include <functional>

/// Random gestures on a small drawing, done in an editing view and in an EditorModel, which are compared exactly after
/// every event: positions, depths, the order of the lists of bonds, lines, molecules, and where the gesture has come
/// to.
class ModelWalk {
public:
    explicit ModelWalk(quint64 seed);
    ~ModelWalk();
    ModelWalk(const ModelWalk&) = delete;
    ModelWalk& operator=(const ModelWalk&) = delete;

    /// Plays at least so many events, or up to the first difference.
    void play(int events);

    /// The first difference, or nothing.
    const QString& fault() const { return found; }
    /// Everything done, one line for each event, the one that made the difference last.
    const QStringList& events() const { return done; }
    /// How often each thing happened.
    Statistics statistics;

private:
    void step();
    void setMode(KytViewState mode);
    void clickToDraw();
    void drawOver();
    void drawRing();
    void drag(KytViewState mode);
    void clickToDelete();
    void changeSwitch();
    void zoom();
    void goThroughHistory();
    void changeSelection();
    void editAtomOrWedge();
    void setAngle(KytStereoBond* wedge, float angle);
    void count(const DrawingModel& before, const QString& event);

    QPoint somePoint();
    QPoint onBond();
    QPoint nearAtom();
    QPoint gridPoint();
    QPoint pointOf(int atom) const;
    HitModel below(QPoint p) const;
    void act(const QString& text, const std::function<void()>& inModel, const std::function<void()>& inView);
    /// Where in the view's contents a canvas pixel is shown.
    QPoint shown(QPoint p) const { return (QPointF(p) * editor.view->zoom()).toPoint(); }
    void click(QPoint p, bool control);
    void press(QPoint p, bool control);
    void move(QPoint p, bool control);
    void release(QPoint p, bool control);

    ViewFixture editor;
    KytHistory history;
    EditorModel model;
    Chance chance;
    int columns; ///< and rows of the grid
    QPoint pointer;
    QString found;
    QStringList done;
};
