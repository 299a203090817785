#include "tests/monkey/StepGenerator.h"

#include "tests/monkey/Chance.h"
#include "view/KytViewState.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int viewWidth = 400;  // pixels, about what the window shows
constexpr int viewHeight = 320; // pixels
constexpr int mostSalts = 1 << 20;
constexpr int letterCount = 26;

class Generator {
public:
    explicit Generator(quint64 seed)
        : chance(seed)
    {
    }

    Steps run(int count)
    {
        while (steps.size() < count) {
            const qsizetype before = steps.size();
            makeGesture();
            if (chance.percent(12))
                tear(before);
            if (chance.percent(25))
                makeNoise();
            if (chance.percent(9))
                add(StepKind::Tidy, {chance.oneOf({10, 25, 40, 60, 60, 60, 120, 250})});
            if (chance.percent(30))
                add(StepKind::Settle);
        }
        steps.resize(count);
        return steps;
    }

private:
    using Gesture = void (Generator::*)();
    struct Choice {
        int weight;
        Gesture gesture;
    };

    void makeGesture()
    {
        static constexpr Choice choices[] = {
            {30, &Generator::drawBond},   {8, &Generator::drawChain},    {22, &Generator::dragItem},
            {9, &Generator::rotate},      {13, &Generator::deleteItems}, {7, &Generator::askProperties},
            {3, &Generator::addMolecule}, {6, &Generator::fileCommand},  {3, &Generator::setFixedDrawing},
            {6, &Generator::makeNoise},   {7, &Generator::interrupt},    {6, &Generator::goBack},
            {5, &Generator::typeElement}, {8, &Generator::selectAtoms},  {6, &Generator::transfer},
        };
        int all = 0;
        for (const Choice& choice : choices)
            all += choice.weight;
        int drawn = chance.below(all);
        for (const Choice& choice : choices) {
            drawn -= choice.weight;
            if (drawn < 0) {
                (this->*choice.gesture)();
                return;
            }
        }
    }

    void drawBond()
    {
        if (chance.percent(80))
            setMode(chance.oneOf({KYTVS_drawSimpleBond, KYTVS_drawSimpleBond, KYTVS_drawDashedBond, KYTVS_drawStereoUp,
                                  KYTVS_drawStereoDown}));
        const int bonds = chance.oneOf({1, 1, 1, 1, 2, 3, 5});
        click(startPlace(), keys(bonds > 1 ? 60 : 10));
        for (int i = 0; i < bonds; ++i) {
            moves(chance.below(3), keys(10));
            const Step end = endPlace();
            if (chance.percent(85))
                at(StepKind::Move, end, keys(10));
            click(end, keys(i + 1 < bonds ? 95 : 10));
        }
    }

    void drawChain()
    {
        if (chance.percent(95))
            setMode(KYTVS_zigzag);
        click(startPlace(), keys(10));
        moves(chance.between(1, 3), keys(10));
        click(endPlace(), keys(15));
    }

    void dragItem()
    {
        if (chance.percent(90))
            setMode(KYTVS_view);
        const PlaceKind kinds[] = {PlaceKind::Atom, PlaceKind::Atom,  PlaceKind::Atom,
                                   PlaceKind::Line, PlaceKind::Wedge, PlaceKind::Label};
        const Step from = place(kinds[chance.below(std::size(kinds))]);
        const int held = keys(25);
        at(StepKind::Move, from, 0);
        at(StepKind::Press, from, LeftInput | held);
        moves(chance.below(4), held);
        const Step to = place(chance.percent(55) ? PlaceKind::Atom : PlaceKind::Point);
        if (chance.percent(90))
            at(StepKind::Move, to, held);
        at(StepKind::Release, to, LeftInput | held);
    }

    void rotate()
    {
        setMode(KYTVS_rotate);
        const Step from = place(PlaceKind::Atom);
        at(StepKind::Press, from, LeftInput | keys(10));
        moves(chance.between(1, 4), keys(10));
        at(StepKind::Release, place(PlaceKind::Point), LeftInput);
    }

    void deleteItems()
    {
        setMode(KYTVS_deleteItem);
        const int items = chance.oneOf({1, 1, 2, 3, 6});
        for (int i = 0; i < items; ++i) {
            const PlaceKind kinds[] = {PlaceKind::Atom, PlaceKind::Atom,  PlaceKind::Line,
                                       PlaceKind::Line, PlaceKind::Wedge, PlaceKind::Label};
            const Step target = place(kinds[chance.below(std::size(kinds))]);
            if (chance.percent(50))
                at(StepKind::Move, target, 0);
            click(target, keys(5));
        }
    }

    void typeElement()
    {
        at(StepKind::Move, place(PlaceKind::Atom), 0);
        // Halogens and whatever else.
        const int letters = chance.oneOf({1, 1, 2, 2, 3});
        for (int i = 0; i < letters; ++i)
            add(StepKind::Type, {chance.percent(50) ? chance.oneOf({2, 11, 1, 17}) : chance.below(letterCount)});
    }

    /// Selects some atoms, and then moves, rotates or deletes them.
    void selectAtoms()
    {
        setMode(KYTVS_view);
        const int drawn = chance.below(10);
        if (drawn < 4) {
            at(StepKind::Press, place(PlaceKind::Point), LeftInput | ShiftInput);
            moves(chance.below(3), ShiftInput);
            if (chance.percent(90))
                at(StepKind::Release, anyPlace(), LeftInput | ShiftInput);
        } else if (drawn < 8) {
            for (int i = chance.between(1, 4); i > 0; --i)
                click(place(PlaceKind::Atom), ShiftInput);
        } else {
            add(StepKind::Select, {drawn < 9 ? 1 : 0});
        }
        switch (chance.below(5)) {
        case 0:
        case 1:
            dragItem();
            break;
        case 2:
            rotate();
            break;
        case 3:
            at(StepKind::Move, anyPlace(), 0);
            add(StepKind::Type, {letterCount + chance.below(2)});
            break;
        default:
            break;
        }
    }

    /// Something is grabbed or begun, goes or changes before it is finished, and is then gone on with.
    void interrupt()
    {
        const int mode = chance.oneOf(
            {KYTVS_view, KYTVS_view, KYTVS_rotate, KYTVS_drawSimpleBond, KYTVS_drawStereoUp, KYTVS_zigzag});
        const Step where = place(chance.percent(70) ? PlaceKind::Atom : static_cast<PlaceKind>(chance.between(2, 4)));
        setMode(mode);
        at(StepKind::Press, where, LeftInput);
        if (chance.percent(40))
            moves(1, 0);
        switch (chance.below(5)) {
        case 0:
        case 1:
            setMode(KYTVS_deleteItem);
            at(StepKind::Press, where, LeftInput);
            break;
        case 2:
            add(StepKind::Action, {0, salt()});
            break;
        case 3:
            fileCommand();
            break;
        default:
            makeGesture();
            break;
        }
        if (chance.percent(80))
            setMode(mode);
        moves(chance.below(3), keys(20));
        at(StepKind::Release, anyPlace(), LeftInput | keys(20));
    }

    /// Some steps back, and some of them forward again; or all the way there and back.
    void goBack()
    {
        if (chance.percent(20)) {
            add(StepKind::History, {2});
            return;
        }
        const int back = chance.oneOf({1, 1, 2, 5, 20});
        for (int i = 0; i < back; ++i)
            add(StepKind::History, {0});
        for (int i = chance.below(back + 2); i > 0; --i)
            add(StepKind::History, {1});
    }

    /// A file dropped, safety copies opened, a molecule laid out, or the selection or the drawing copied and pasted,
    /// perhaps later or several times.
    void transfer()
    {
        const auto add = [this](int how) {
            this->add(StepKind::Transfer, {how, salt(), chance.below(viewWidth), chance.below(viewHeight)});
        };
        if (chance.percent(40)) {
            const int how = chance.oneOf({2, 2, 2, 3, 4});
            for (int i = how == 3 ? 1 + chance.below(3) : 1; i > 0; --i)
                add(how);
            return;
        }
        if (chance.percent(70))
            add(0);
        for (int i = chance.below(3); i > 0; --i)
            add(1);
    }

    void askProperties()
    {
        Step target = place(chance.percent(50) ? PlaceKind::Atom : PlaceKind::Wedge);
        target.numbers[OffsetNumber] = 0;
        at(StepKind::Press, target, RightInput | keys(5));
        at(StepKind::Release, target, RightInput);
    }

    void addMolecule() { add(StepKind::Action, {24 + chance.below(6), salt()}); }

    void fileCommand() { add(StepKind::Action, {chance.oneOf({0, 1, 1, 2, 2, 3, 3, 4, 11, 12}), salt()}); }

    void setFixedDrawing()
    {
        add(StepKind::Action, {chance.oneOf({21, 22}), salt()});
        if (chance.percent(30))
            add(StepKind::FixedValues, {chance.below(8), chance.below(8)});
    }

    void makeNoise()
    {
        switch (chance.below(20)) {
        case 0:
            at(StepKind::Press, anyPlace(), anyInput());
            break;
        case 1:
            at(StepKind::Release, anyPlace(), anyInput());
            break;
        case 2:
            at(StepKind::DoubleClick, anyPlace(), anyInput());
            break;
        case 3:
            moves(chance.between(1, 5), anyInput());
            break;
        case 4:
            at(StepKind::Wheel, anyPlace(), keys(10), chance.oneOf({-960, -120, 120, 240}));
            break;
        case 5:
            add(chance.percent(50) ? StepKind::Enter : StepKind::Leave);
            break;
        case 6:
            if (chance.percent(30))
                add(StepKind::ContextMenu, {chance.below(6), salt()});
            break;
        case 7:
            setMode(chance.below(8));
            break;
        case 8:
            // Printing, leaving and the About box are slow windows.
            add(StepKind::Action, {chance.percent(90) ? chance.between(7, 9) : chance.oneOf({5, 6, 10, 23}), salt()});
            break;
        case 9:
            add(StepKind::ToolButton, {chance.below(64), salt()});
            break;
        case 10:
            if (chance.percent(20))
                add(StepKind::MenuBar, {chance.below(4), salt()});
            break;
        case 11:
        case 12:
            add(StepKind::Shortcut, {chance.below(64), keys(40), salt()});
            break;
        case 13:
            add(StepKind::Scroll,
                {chance.percent(60) ? 0 : chance.below(1001), chance.percent(60) ? 0 : chance.below(1001)});
            break;
        case 14:
            if (chance.percent(25))
                add(StepKind::Resize, {chance.between(150, 900), chance.between(120, 800)});
            break;
        case 15:
            add(StepKind::Focus, {chance.below(2)});
            break;
        case 16:
            if (chance.percent(10))
                add(StepKind::WindowState, {chance.below(3)});
            else
                add(StepKind::Repaint);
            break;
        case 17:
            add(StepKind::Zoom, {chance.oneOf({-3, -1, 0, 0, 0, 0, 1, 2, 9})});
            break;
        case 18:
            add(StepKind::Cancel);
            break;
        default:
            if (chance.percent(3))
                add(StepKind::Viewer, {salt()});
            break;
        }
    }

    /// Takes one step out of what was made since `from`, or repeats one.
    void tear(qsizetype from)
    {
        if (steps.size() == from)
            return;
        const qsizetype torn = from + chance.below(static_cast<int>(steps.size() - from));
        if (chance.percent(60))
            steps.removeAt(torn);
        else
            steps.insert(torn, Step(steps[torn]));
    }

    void setMode(int mode) { add(StepKind::Mode, {mode, chance.below(10)}); }

    void click(const Step& where, int held)
    {
        const bool twice = chance.percent(4);
        at(StepKind::Press, where, LeftInput | held);
        if (chance.percent(85))
            at(StepKind::Release, where, LeftInput | held);
        if (twice)
            at(StepKind::DoubleClick, where, LeftInput | held);
    }

    void moves(int count, int held)
    {
        for (int i = 0; i < count; ++i)
            at(StepKind::Move, anyPlace(), held);
    }

    Step startPlace() { return place(chance.percent(65) ? PlaceKind::Atom : PlaceKind::Point); }
    Step endPlace()
    {
        return chance.percent(4) ? anyPlace() : place(chance.percent(45) ? PlaceKind::Atom : PlaceKind::Point);
    }
    Step anyPlace()
    {
        const int drawn = chance.below(100);
        if (drawn < 45)
            return place(PlaceKind::Point);
        if (drawn < 96)
            return place(static_cast<PlaceKind>(chance.between(1, 4)));
        return place(drawn < 98 ? PlaceKind::Corner : PlaceKind::Far);
    }
    Step place(PlaceKind kind)
    {
        Step step;
        step.numbers[PlaceNumber] = static_cast<int>(kind);
        step.numbers[XNumber] = chance.below(viewWidth);
        step.numbers[YNumber] = chance.below(viewHeight);
        step.numbers[OffsetNumber] = chance.percent(80) ? 0 : chance.below(81);
        return step;
    }

    int keys(int controlPercent)
    {
        return (chance.percent(controlPercent) ? int{ControlInput} : 0) | (chance.percent(3) ? int{ShiftInput} : 0);
    }
    int anyInput() { return chance.oneOf({LeftInput, LeftInput, RightInput, MiddleInput}) | keys(20); }
    int salt() { return chance.below(mostSalts); }

    void at(StepKind kind, Step where, int input, int extra = 0)
    {
        where.kind = kind;
        where.numbers[InputNumber] = input;
        where.numbers[ExtraNumber] = extra != 0 ? extra : salt();
        steps.append(where);
    }

    void add(StepKind kind, std::initializer_list<int> numbers = {})
    {
        Step step;
        step.kind = kind;
        std::copy(numbers.begin(), numbers.end(), step.numbers.begin());
        steps.append(step);
    }

    Chance chance;
    Steps steps;
};

} // namespace

Steps stepsFromSeed(quint64 seed, int count)
{
    return Generator(seed).run(count);
}
