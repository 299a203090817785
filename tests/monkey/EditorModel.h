#pragma once

#include "tests/monkey/DrawingModel.h"
#include "view/KytViewState.h"

#include <QPoint>

#include <set>
#include <vector>

/// What is hit below the atoms.
struct HitModel {
    enum Kind { Nothing, Line, Wedge, Label } kind = Nothing;
    int number = -1; ///< of the bond, or of the label's atom
    int line = 0;    ///< which line of the bond
};

/// What the left button, the pointer and undo do to a DrawingModel, event by event.
///
/// Points are canvas pixels. What lies below the atoms at a point, `below`, is told by the caller; which atom lies
/// there the model finds itself.
class EditorModel {
public:
    void press(QPoint p, bool control, const HitModel& below);
    void move(QPoint p, bool control);
    void release(QPoint p, bool control);
    /// The drawing has moved under the resting pointer, which is now at `p`.
    void rest(QPoint p);
    /// A press with Shift in view mode on an atom.
    void toggleSelected(int atom);
    void selectAll();
    /// The key that deletes the selected atoms, or what is under the pointer.
    void deleteSelected(const HitModel& below);
    void setAngle(int bond, float angle);
    void lock(int atom);
    void undo();
    void redo();
    void cancel();

    KytViewState mode = KYTVS_view;
    bool fixedLength = false;
    bool fixedAngle = false;

    DrawingModel drawing;
    int startAtom = -1;     ///< of the next bond
    bool isDrawing = false; ///< between the first and the second click
    int hovered = -1;       ///< the atom under the pointer
    std::set<int> selected; ///< atoms that are dragged and rotated together
    int grabbed = -1;       ///< the atom that is dragged, or about which its molecule rotates

    /// The atoms at a pixel, topmost first.
    std::vector<int> atomsAt(QPoint p) const;

private:
    int newAtom(double x, double y, float z);
    int newBond(int from, int to);
    void click(QPoint p, bool control);
    void drawBond(QPoint p, bool control);
    void drawChain(bool control);
    int targetAt(QPoint p, bool& passedStart) const;
    float depthOfEnd() const;
    void moveEnd(QPoint p);
    void refreshHover(QPoint p);
    void deleteAt(QPoint p, const HitModel& below);
    void dragTo(QPoint p, bool control);
    void rotateTo(QPoint p, bool control);
    void dropAt(QPoint p, bool control);
    std::set<int> withLockedMolecule(int atom) const;
    /// Without Control, a selected atom takes the selection with it.
    bool movesSelection(bool control) const { return !control && selected.contains(grabbed); }
    bool isDragging() const { return grabbed >= 0 || grabbedBelow.kind != HitModel::Nothing; }
    void letGo();
    void settle();
    void record();
    void revert();
    void forgetGone();
    void goTo(std::size_t state);

    float endX = 0; // of the bond that is being drawn
    float endY = 0;
    HitModel grabbedBelow;
    QPoint dragPoint;
    double rotationX = 0;
    QPoint pointer;
    int lastNumber = -1;
    bool drawingHasSteps = false;                     // a step was recorded since the first click
    std::vector<DrawingModel> states{DrawingModel()}; // after each step
    std::size_t state = 0;
};
