#pragma once

#include <QList>
#include <QString>

#include <array>
#include <optional>

/// What one step of a monkey does. What the numbers of a step mean depends on its kind.
enum class StepKind {
    Press,       ///< place, button and keys: a mouse press on the canvas view
    DoubleClick, ///< likewise: a second press shortly after the first
    Move,        ///< place, keys
    Release,     ///< place, button and keys
    Wheel,       ///< place, keys, delta
    ContextMenu, ///< which widget, salt of the answers
    Enter,       ///< the pointer comes into the view
    Leave,       ///< it leaves
    Mode,        ///< which editing mode, by which way (action, button)
    Action,      ///< which action of the window, salt of the answers
    ToolButton,  ///< which button of a tool bar, salt of the answers
    MenuBar,     ///< which menu, salt of the answers
    Shortcut,    ///< which key, keys held, salt of the answers
    FixedValues, ///< which angle step, which bond length
    Scroll,      ///< horizontal and vertical, in thousandths of what there is
    Resize,      ///< width, height of the window, pixels
    Focus,       ///< 0 out, 1 in
    WindowState, ///< 0 closed and shown again, 1 hidden and shown again, 2 maximised or not
    Repaint,     ///< everything is painted at once
    Settle,      ///< the event loop works off what has piled up
    Tidy,        ///< clears the drawing if it has more atoms than the first number says
    Viewer,      ///< the 3D window is opened and closed; salt of the keys pressed in it
    History,     ///< 0 one step undone, 1 one redone, 2 all undone and redone again
    Zoom,        ///< so many levels in or out, or 100 % for 0, or the whole drawing for 9
    Cancel,      ///< Escape
    Type,        ///< which letter, from 0, or Delete or Backspace: a key on what is under the pointer
    Select,      ///< 0 nothing, 1 all atoms
    Transfer,    ///< 0 copied, 1 pasted, 2 a file dropped, 3 a safety copy opened, 4 the molecule under the pointer
                 ///< laid out; which file, place in the view
};

constexpr int stepKinds = static_cast<int>(StepKind::Transfer) + 1;

/// Where on the canvas a step acts. Coordinates are pixels of the viewport.
enum class PlaceKind {
    Point,  ///< the point itself
    Atom,   ///< the atom nearest to the point, or the point where there is none
    Line,   ///< the middle of the bond line nearest to it
    Wedge,  ///< the middle of the wedge nearest to it
    Label,  ///< the label nearest to it
    Corner, ///< the corner or the edge of the canvas nearest to it
    Far,    ///< five times as far out in every direction, mostly beyond the canvas
};

constexpr int placeKinds = static_cast<int>(PlaceKind::Far) + 1;

/// One step: plain numbers that mean something whatever the drawing is, so that a sequence still makes sense when steps
/// are left out.
struct Step {
    StepKind kind = StepKind::Settle;
    std::array<int, 6> numbers{};

    bool operator==(const Step&) const = default;
};

using Steps = QList<Step>;

/// The numbers of a step that acts on the canvas.
enum StepNumber { PlaceNumber = 0, XNumber = 1, YNumber = 2, OffsetNumber = 3, InputNumber = 4, ExtraNumber = 5 };

/// InputNumber is one of these buttons, and these flags.
enum StepInput { LeftInput = 0, RightInput = 1, MiddleInput = 2, ButtonMask = 3, ControlInput = 4, ShiftInput = 8 };

QString nameOf(StepKind kind);

/// One line for each step: the name of its kind and its numbers.
QString toText(const Steps& steps);

/// Reads what toText writes; lines that are empty or begin with "#" are passed over. Nothing where a line is no step.
std::optional<Steps> stepsFromText(const QString& text);
