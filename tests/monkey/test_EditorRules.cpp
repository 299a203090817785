#include "tests/monkey/EditorRules.h"

#include "bonds/KytBondLine.h"
#include "bonds/KytStereoBond.h"
#include "model/KytMolecule.h"
#include "tests/app/TestWindow.h"

#include <QtTest>

/// Every rule finds what breaks it, and no rule finds anything in a drawing that is as it should be. What a test breaks
/// it mends again, so that the drawing can be taken down.
class test_EditorRules : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<TestWindow>();
        rules = std::make_unique<EditorRules>((*window)->view);
        first = window->atom(50, 50);
        second = window->atom(100, 60);
        third = window->atom(150, 50);
        lines = window->bond(first, second, {KYTBT_SingleBond, KYTBT_DashedLine});
        wedge = window->bond(second, third, {KYTBT_StereoUp});
    }

    void cleanup()
    {
        QCOMPARE(fault(), QString());
        rules.reset();
        window.reset();
    }

    void anEmptyEditorKeepsTheRules()
    {
        (*window)->slotFileNew();
        QCOMPARE(fault(), QString());
    }

    void aDrawingWithEverythingKeepsTheRules()
    {
        for (QAction* action : {(*window)->kyfMegaphon, (*window)->kyfCubane, (*window)->kyfBenzene})
            action->trigger();
        QCOMPARE(fault(), QString());
    }

    void anItemWithoutAnOwnerIsFound()
    {
        QCanvasLine stray((*window)->doc->canvas);
        stray.show();
        QCOMPARE(fault(), QString("an item on the canvas has no owner"));
    }

    void aBondThatStandsTwiceIsFound()
    {
        second->inList.append(lines);
        QCOMPARE(fault(), QString("a bond does not stand exactly once at either end"));
        second->inList.removeLast();
        first->outList.append(lines);
        QCOMPARE(fault(), QString("a bond does not stand exactly once at either end"));
        first->outList.removeLast();
        third->inList.append(lines);
        QCOMPARE(fault(), QString("an incoming bond ends elsewhere, or starts nowhere"));
        third->inList.removeLast();
        third->outList.append(lines);
        QCOMPARE(fault(), QString("an outgoing bond starts elsewhere, or ends nowhere"));
        third->outList.removeLast();
    }

    void aBondThatDoesNotArriveIsFound()
    {
        second->inList.removeOne(lines);
        QCOMPARE(fault(), QString("a bond does not stand exactly once at either end"));
        second->inList.append(lines);
        first->outList.removeOne(lines);
        QCOMPARE(fault(), QString("an incoming bond ends elsewhere, or starts nowhere"));
        first->outList.append(lines);
    }

    void aMiscountedBondIsFound()
    {
        lines->bondCount = 3;
        QCOMPARE(fault(), QString("a bond counts 3 lines and has 2"));
        lines->bondCount = 4;
        QCOMPARE(fault(), QString("a bond's count is out of range"));
        lines->bondCount = 2;
    }

    void aLineThatIsNotCountedIsFound()
    {
        lines->bondCount = 1;
        QCOMPARE(fault(), QString("a bond has a line that is not its own, or is not counted"));
        lines->bondCount = 2;
    }

    void aLineAwayFromItsBondIsFound()
    {
        lines->bond2->myMoveBy(3, 0);
        QCOMPARE(fault(), QString("a line was moved away from its bond"));
        lines->bond2->myMoveBy(-3, 0);
        wedge->stereoBond->myMoveBy(3, 0);
        QCOMPARE(fault(), QString("a wedge was moved away from its bond"));
        wedge->stereoBond->myMoveBy(-3, 0);
    }

    void aLineWithOtherEndsIsFound()
    {
        lines->bond1->setToPoint(1, 1);
        QCOMPARE(fault(), QString("a line does not run between its atoms"));
        wedge->stereoBond->setFromPoint(1, 1);
        lines->setBond();
        QCOMPARE(fault(), QString("a wedge does not start at its atom"));
        wedge->setBond();
    }

    void aLostWedgeIsFound()
    {
        KytStereoBond* kept = std::exchange(wedge->stereoBond, nullptr);
        QCOMPARE(fault(), QString("a wedge is missing, or is another bond's"));
        wedge->stereoBond = kept;
    }

    void aBondAcrossMoleculesIsFound()
    {
        KytMolecule other;
        KytMolecule* own = std::exchange(third->molecule, &other);
        QCOMPARE(fault(), QString("a bond joins atoms of two molecules"));
        third->molecule = own;
    }

    void aWrongLabelIsFound()
    {
        first->canvasSymbol->setText("N");
        QCOMPARE(fault(), QString("a label shows another symbol than its atom's"));
        first->canvasSymbol->setText("C");
    }

    void aLeftOverMarkIsFound()
    {
        first->flag = 1;
        QCOMPARE(fault(), QString("an atom's marks are not 0"));
        first->flag = 0;
        (*window)->view->flag = true;
        QCOMPARE(fault(), QString("the mark of a met start atom is left over"));
        (*window)->view->flag = false;
    }

    void aHiddenItemIsFound()
    {
        second->hide();
        QCOMPARE(fault(), QString("an item is hidden or thinks that it is elsewhere"));
        second->show();
    }

    void aRememberedItemThatHasGoneIsFound()
    {
        KytAtom elsewhere(nullptr, 0, false);
        for (QCanvasItem** memory : {&(*window)->view->hover, &(*window)->view->moving}) {
            *memory = &elsewhere;
            QCOMPARE(fault(), QString("the view remembers an item that has gone"));
            *memory = tempBond;
            QCOMPARE(fault(), QString("the rubber band was taken for a part of the drawing"));
            *memory = nullptr;
        }
        (*window)->view->lastAtom = &elsewhere;
        QCOMPARE(fault(), QString("the view remembers an item that has gone"));
        (*window)->view->lastAtom = nullptr;
    }

    void aRubberBandWithoutAGestureIsFound()
    {
        tempBond->show();
        QCOMPARE(fault(), QString("the rubber band shows without a gesture, or a gesture without it"));
        (*window)->view->isLastAtom = 1;
        QCOMPARE(fault(), QString("a gesture has no start atom"));
        (*window)->view->isLastAtom = 0;
        tempBond->hide();
        tempBond->setCanvas(nullptr);
        QCOMPARE(fault(), QString("the rubber band has gone"));
        tempBond->setCanvas((*window)->doc->canvas);
    }

    void aGestureWithoutARubberBandIsFound()
    {
        (*window)->view->lastAtom = first;
        (*window)->view->isLastAtom = 1;
        QCOMPARE(fault(), QString("the rubber band shows without a gesture, or a gesture without it"));
        (*window)->view->isLastAtom = 0;
    }

    void whatDoesNotComeBackFromAFileIsFound()
    {
        // Not a word that anybody can enter: three letters are the most.
        const LoggedMessages quiet;
        first->_atomColor[1] = "END_MOLECULE";
        QVERIFY(!fault().isEmpty());
        first->_atomColor[1] = "0";
    }

    void kindsThatAreNotDrawnAreNoFault()
    {
        window->bond(third, window->atom(200, 90), {KYTBT_Triple});
        emit(*window)->doc->documentChanged(); // as if it had been read
        QCOMPARE(fault(), QString());
    }

    void aLineThatIsLostIsFound()
    {
        KytBond* odd = window->bond(third, window->atom(200, 90), {KYTBT_Triple});
        QVERIFY(!fault().isEmpty());
        delete odd;
    }

    void everythingIsCounted()
    {
        QCOMPARE(fault(), QString());
        const Census expected{.atoms = 3, .bonds = 2, .lines = 2, .wedges = 1};
        QVERIFY(rules->census() == expected);
        (*window)->slotFileNew();
        QCOMPARE(fault(), QString());
        QVERIFY(rules->census() == Census());
    }

private:
    QString fault() { return rules->firstFault(); }

    std::unique_ptr<TestWindow> window;
    std::unique_ptr<EditorRules> rules;
    KytAtom* first = nullptr;
    KytAtom* second = nullptr;
    KytAtom* third = nullptr;
    KytBond* lines = nullptr; // from the first to the second
    KytBond* wedge = nullptr; // from the second to the third
};

int main(int argc, char** argv)
{
    return runTests<test_EditorRules>(argc, argv);
}

#include "test_EditorRules.moc"
