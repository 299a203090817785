#pragma once

#include "tests/monkey/Answers.h"
#include "tests/monkey/EditorRules.h"
#include "tests/monkey/HistoryRules.h"
#include "tests/monkey/MonkeyFolder.h"
#include "tests/monkey/NeighbourCopies.h"
#include "tests/monkey/Step.h"

#include <functional>
#include <memory>

/// Faults put in on purpose, to see that the monkey finds them and that they are found again with fewer steps.
struct PlantedFaults {
    int mostAtoms = -1;  ///< a drawing with more atoms is a fault
    int crashBonds = -1; ///< the program aborts at a drawing with more bonds
    int hangWedges = -1; ///< it never comes back from one with more wedges
    bool leak = false;   ///< a block of memory is lost for every chain
};

/// Plays steps on the main window of the editor and looks after each whether all is as it must be.
///
/// Everything is sent straight to the widgets; the event loop runs in between, so that timers, repaints and deferred
/// deletions have their turn.
class Monkey : public QObject {
public:
    /// `progress`, if not null, is told the number of each step before it is done.
    Monkey(const Steps& steps, const PlantedFaults& planted, std::function<void(int)> progress);
    ~Monkey() override;

    /// Plays all steps, in a running application; the application's event loop ends with 0 or with `faultCode`.
    void start();

    static constexpr int faultCode = 3;

    QString fault() const { return found; }
    int stepsDone() const { return next; }
    Statistics statistics;

protected:
    /// Keeps a request to leave the program from ending the run.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void goOn();
    void finish();
    bool perform(const Step& step);
    void clearIfLarger(int atoms);
    void check();
    void checkNewSteps();
    void countMessage(const QString& text);
    void countOutcome(const Step& step, const Census& before, KytViewState mode);
    QString plantedFault() const;

    QPoint pointOf(const Step& step) const;
    QPoint nearest(const QPoint& p, int rtti) const;
    QPoint corner(const QPoint& p) const;
    void sendMouse(const Step& step, QEvent::Type type);
    void sendWheel(const Step& step);
    void sendContextMenu(const Step& step);
    void openViewer(int salt);
    void pressToolButton(int which);
    void openMenu(int which);
    void pressKey(const Step& step);
    void transfer(const Step& step);
    void setFixedValues(int angle, int length);
    void scroll(int horizontal, int vertical);
    void goThroughHistory(int how);
    void zoom(int how);
    void type(int which);
    void changeFocus(bool in);
    void changeWindowState(int what);
    void selectMode(int mode, bool byButton);

    Steps steps;
    PlantedFaults planted;
    std::function<void(int)> progress;
    MonkeyFolder folder;
    std::unique_ptr<TestWindow> window;
    std::unique_ptr<EditorRules> rules;
    std::unique_ptr<HistoryRules> historyRules;
    std::unique_ptr<Answers> answers;
    const NeighbourCopies neighbour;
    NoThirdDimension noThirdDimension;
    Qt::MouseButtons held;
    int next = 0;
    QString found;
};
