#include "tests/monkey/ModelComparison.h"

#include "tests/view/ViewFixture.h"

#include <QtTest>

#include <cmath>
#include <limits>

using Change = std::function<void(ViewFixture&)>;
Q_DECLARE_METATYPE(Change)

/// An editor and a model in which the same is drawn are alike, and every change of one of them is found.
class test_ModelComparison : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        editor = std::make_unique<ViewFixture>();
        model = EditorModel();
        draw(KYTVS_drawSimpleBond, {100, 100}, {160, 110});
        draw(KYTVS_drawDashedBond, {100, 100}, {160, 110});
        draw(KYTVS_drawStereoUp, {100, 100}, {100, 200});
        draw(KYTVS_drawSimpleBond, {300, 100}, {360, 100});
        QCOMPARE(model.drawing.bonds.size(), 3U);
        QCOMPARE(difference(model, *editor->view), QString());
    }

    void everyChangeIsFound_data()
    {
        QTest::addColumn<Change>("change");
        const auto add = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
        constexpr float up = std::numeric_limits<float>::infinity();
        add("the last bit of a coordinate",
            [](ViewFixture& f) { f.atoms()[3]->QCanvasEllipse::moveBy(std::ldexp(1, -44), 0); });
        add("the last bit of a depth",
            [](ViewFixture& f) { f.atoms()[2]->atomZ = std::nextafter(f.atoms()[2]->atomZ, up); });
        add("the sign of a depth of 0", [](ViewFixture& f) { f.atoms()[0]->atomZ = -0.0F; });
        add("the last bit of a length", [](ViewFixture& f) {
            float& length = f.atoms()[0]->outList[0]->bondlength;
            length = std::nextafter(length, up);
        });
        add("the place of a label", [](ViewFixture& f) { f.atoms()[1]->canvasSymbol->moveBy(0, 1); });
        add("a lock", [](ViewFixture& f) { f.atoms()[1]->locked = true; });
        add("the order of bonds", [](ViewFixture& f) { f.atoms()[0]->outList.swapItemsAt(0, 1); });
        add("dashes", [](ViewFixture& f) { f.atoms()[0]->outList[0]->bond2->isDashed = false; });
        add("a kind", [](ViewFixture& f) { f.atoms()[0]->outList[0]->bond2Type = KYTBT_SingleBond; });
        add("a line more", [](ViewFixture& f) { f.atoms()[3]->outList[0]->addBond(KYTBT_SingleBond, 60); });
        add("a line's end", [](ViewFixture& f) { f.lines()[0]->setToPoint(161, 110); });
        add("a wedge's corner", [](ViewFixture& f) { f.wedges()[0]->setFromPoint(101, 100); });
        add("a bond more", [](ViewFixture& f) { f.looseBond(f.atoms()[0], f.atoms()[3]); });
        add("an atom more", [](ViewFixture& f) { f.atom(400, 400); });
        add("an atom less", [](ViewFixture& f) { delete f.atoms()[4]; });
        add("an angle", [](ViewFixture& f) { f.wedges()[0]->pangle = 59; });
        add("a wedge's kind", [](ViewFixture& f) { f.wedges()[0]->bondType = KYTBT_StereoDown; });
        add("a molecule that is split", [](ViewFixture& f) { f.atoms()[1]->changeMolecule(new KytMolecule); });
        add("molecules that are one", [](ViewFixture& f) { f.atoms()[3]->setMolecule(f.atoms()[0]->molecule); });
        add("the atom under the pointer", [](ViewFixture& f) { f.view->startHover({100, 100}); });
        add("a selected atom", [](ViewFixture& f) { f.view->select({f.atoms()[1]}); });
        add("a bond begun", [](ViewFixture& f) { f.view->isLastAtom = 1, f.view->lastAtom = f.atoms()[1]; });
        add("an atom grabbed", [](ViewFixture& f) { f.view->moving = f.atoms()[1]; });
    }
    void everyChangeIsFound()
    {
        QFETCH(Change, change);
        change(*editor);
        QVERIFY(!difference(model, *editor->view).isEmpty());
    }

private:
    void draw(KytViewState mode, QPoint from, QPoint to)
    {
        editor->view->canvasState = model.mode = mode;
        for (const QPoint p : {from, to, QPoint(500, 400)}) {
            editor->move(p);
            model.move(p, false);
            if (p.x() == 500)
                continue;
            editor->press(p);
            model.press(p, false, {});
            editor->release(p);
            model.release(p, false);
        }
    }

    std::unique_ptr<ViewFixture> editor;
    EditorModel model;
};

QTEST_MAIN(test_ModelComparison)
#include "test_ModelComparison.moc"
