#include "ViewFixture.h"

namespace {

/// The direct bonds between two atoms.
int bondsBetween(KytAtom* a, KytAtom* b)
{
    int found = 0;
    for (const KytBond* bond : *a->getOutList())
        found += bond->getToAtom() == b;
    for (const KytBond* bond : *a->getInList())
        found += bond->getFromAtom() == b;
    return found;
}

/// An atom at (200, 200) with a neighbour at (100, 300), and another molecule's atom at (300, 200) to drop it on.
class Dropping : public ViewFixture {
public:
    explicit Dropping(float targetDepth = 0)
        : neighbour(atom(100, 300))
        , dropped(atom(200, 200))
        , target(atom(300, 200, targetDepth))
        , bondToNeighbour(bond(neighbour, dropped))
    {
    }

    KytAtom* neighbour;
    KytAtom* dropped;
    KytAtom* target;
    KytBond* bondToNeighbour;
};

/// Two atoms at (200, 200) and (300, 200) that are bonded to a third.
class Fork : public ViewFixture {
public:
    Fork()
        : shared(atom(200, 300))
        , dropped(atom(200, 200))
        , target(atom(300, 200))
    {
        bond(shared, dropped);
        bond(shared, target);
    }

    KytAtom* shared;
    KytAtom* dropped;
    KytAtom* target;
};

} // namespace

class test_kytstudioview_move : public QObject {
    Q_OBJECT

private slots:
    // Kinds of bond

    void eachModeAddsItsKindOfBond_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("kind");
        QTest::newRow("simple") << 2 << static_cast<int>(KYTBT_SingleBond);
        QTest::newRow("dashed") << 3 << static_cast<int>(KYTBT_DashedLine);
        QTest::newRow("up") << 4 << static_cast<int>(KYTBT_StereoUp);
        QTest::newRow("down") << 5 << static_cast<int>(KYTBT_StereoDown);
        for (const int none : {0, 1, 6, 7, 8, -1})
            QTest::addRow("nothing for %d", none) << none << -1;
    }

    void eachModeAddsItsKindOfBond()
    {
        QFETCH(int, mode);
        QFETCH(int, kind);
        ViewFixture f;
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200), {});
        f.view->addBond(bond, static_cast<KytViewState>(mode));
        QCOMPARE(bond->bondCount, kind < 0 ? 0 : 1);
        QCOMPARE(f.lines().size(), kind == KYTBT_SingleBond || kind == KYTBT_DashedLine ? 1 : 0);
        QCOMPARE(f.wedges().size(), kind == KYTBT_StereoUp || kind == KYTBT_StereoDown ? 1 : 0);
        if (kind >= 0)
            QCOMPARE(static_cast<int>(bond->bond1Type), kind);
        if (!f.lines().isEmpty())
            QCOMPARE(f.lines().first()->isDashed, kind == KYTBT_DashedLine);
    }

    void wedgesAreAddedAtSixtyDegrees()
    {
        for (const KytViewState mode : {KYTVS_drawStereoUp, KYTVS_drawStereoDown}) {
            ViewFixture f;
            KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200), {});
            f.view->addBond(bond, mode);
            EXACTLY(bond->stereoBond->getAngle(), 60.0F);
        }
    }

    void bondIsRaisedByEachModeInTurn()
    {
        ViewFixture f;
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200), {});
        f.view->addBond(bond, KYTVS_drawSimpleBond);
        f.view->addBond(bond, KYTVS_drawStereoUp); // too late for a wedge
        f.view->addBond(bond, KYTVS_drawDashedBond);
        f.view->addBond(bond, KYTVS_drawSimpleBond);
        f.view->addBond(bond, KYTVS_drawSimpleBond); // a fourth line
        QCOMPARE(bond->bondCount, 3);
        QCOMPARE(f.lines().size(), 3);
        QVERIFY(!bond->bond1->isDashed);
        QVERIFY(bond->bond2->isDashed);
        QVERIFY(!bond->bond3->isDashed);
        QVERIFY(f.wedges().isEmpty());
    }

    // Dragging

    void draggingAnAtomMovesItAndStretchesItsBonds()
    {
        ViewFixture f;
        const auto [left, middle, right] = f.row<3>(100, 200, 100);
        KytBond* in = f.bond(left, middle);
        KytBond* out = f.bond(middle, right);
        f.press({200, 200});
        f.move({215, 190});
        QCOMPARE(placeOf(middle), QPointF(215, 190));
        f.move({230, 260});
        QCOMPARE(placeOf(middle), QPointF(230, 260));
        QCOMPARE(lineOf(in->bond1), QLine(100, 200, 230, 260));
        QCOMPARE(lineOf(out->bond1), QLine(230, 260, 300, 200));
        NEAR(in->bondlength, std::hypot(130, 60), 1e-4);
        f.release({230, 260});
        QCOMPARE(placesOf({left, right}), (Places{{100, 200}, {300, 200}}));
        QCOMPARE(f.atoms().size(), 3);
    }

    void draggingAnAtomTakesItsLabelAlong()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.drag({200, 200}, {260, 170});
        QCOMPARE(placeOf(atom), QPointF(260, 170));
        QCOMPARE(placeOf(atom->canvasSymbol), QPointF(260, 170));
    }

    void draggingWithControlMovesTheWholeMolecule()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200);
        KytAtom* b = f.atom(200, 200);
        KytAtom* c = f.atom(200, 100);
        KytBond* ab = f.bond(a, b);
        KytBond* cb = f.bond(b, c, {KYTBT_StereoUp});
        f.drag({100, 200}, {130, 260}, Qt::ControlModifier);
        QCOMPARE(placesOf({a, b, c}), (Places{{130, 260}, {230, 260}, {230, 160}}));
        QCOMPARE(placeOf(c->canvasSymbol), QPointF(230, 160));
        QCOMPARE(lineOf(ab->bond1), QLine(130, 260, 230, 260));
        QCOMPARE(cb->stereoBond->getPointsArray()->point(0), QPoint(230, 260));
        NEAR(ab->bondlength, 100, 1e-4);
    }

    void draggingWithControlLeavesOtherMoleculesAlone()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200);
        f.bond(a, f.atom(200, 200));
        const auto [other, otherEnd] = f.chain<2>(100, 300, 100);
        f.drag({100, 200}, {110, 230}, Qt::ControlModifier);
        QCOMPARE(placesOf({other, otherEnd}), (Places{{100, 300}, {200, 300}}));
    }

    void controlCountsStepByStep()
    {
        ViewFixture f;
        const auto [a, b] = f.chain<2>(100, 200, 100);
        f.press({100, 200}, Qt::ControlModifier);
        f.move({110, 200});
        QCOMPARE(placesOf({a, b}), (Places{{110, 200}, {200, 200}}));
        f.move({120, 200}, Qt::ControlModifier);
        QCOMPARE(placesOf({a, b}), (Places{{120, 200}, {210, 200}}));
        f.move({130, 200});
        QCOMPARE(placeOf(b), QPointF(210, 200));
        f.release({130, 200});
    }

    void otherModifiersDragOneAtom()
    {
        ViewFixture f;
        const auto [a, b] = f.chain<2>(100, 200, 100);
        f.drag({100, 200}, {100, 240}, Qt::MetaModifier | Qt::AltModifier);
        QCOMPARE(placesOf({a, b}), (Places{{100, 240}, {200, 200}}));
    }

    void draggingALockedAtomMovesItsMolecule()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200, 5, true);
        KytAtom* b = f.atom(200, 200, 7, true);
        KytAtom* c = f.atom(300, 200);
        f.bond(a, b);
        f.bond(b, c);
        f.drag({100, 200}, {90, 260});
        QCOMPARE(placesOf({a, b, c}), (Places{{90, 260}, {190, 260}, {290, 260}}));
        EXACTLY(a->getAtomZ(), 5.0F);
        EXACTLY(b->getAtomZ(), 7.0F);
    }

    void draggingAFreeAtomOfALockedMoleculeMovesItAlone()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200, 0, true);
        KytAtom* b = f.atom(200, 200);
        f.bond(a, b);
        f.drag({200, 200}, {220, 260});
        QCOMPARE(placesOf({b, a}), (Places{{220, 260}, {100, 200}}));
    }

    void draggingReachesAtomsOfTheMoleculeWithoutABond()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200);
        KytAtom* b = f.atom(200, 300);
        b->setMolecule(a->getMolecule());
        f.drag({100, 200}, {120, 200}, Qt::ControlModifier);
        QCOMPARE(placesOf({a, b}), (Places{{120, 200}, {220, 300}}));
    }

    void draggingGoesOnFromStepToStep()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.press({200, 200});
        for (int step = 1; step <= 20; ++step) {
            const QPoint p(200 + 3 * step, 200 - 2 * step);
            f.move(p);
            QCOMPARE(f.view->moving_start, p);
            QCOMPARE(placeOf(atom), QPointF(p));
        }
        f.release({260, 160});
        QCOMPARE(placeOf(atom), QPointF(260, 160));
    }

    void draggingBackAndForthEndsWhereItBegan()
    {
        ViewFixture f;
        KytAtom* a = f.atom(200.5, 200.25);
        KytBond* bond = f.bond(a, f.atom(300, 200));
        f.dragAlong({{200, 200}, {-50, 900}, {200, 200}});
        QCOMPARE(placeOf(a), QPointF(200.5, 200.25));
        QCOMPARE(lineOf(bond->bond1), QLine(200, 200, 300, 200));
    }

    void draggingGrabbedBesideTheCentreKeepsTheOffset()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.dragAlong({{202, 199}, {252, 249}});
        QCOMPARE(placeOf(atom), QPointF(250, 250));
    }

    void draggingABondMovesItOrTheMolecule_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("startIsLocked");
        QTest::addColumn<bool>("endIsLocked");
        QTest::addColumn<int>("modifier");
        QTest::addColumn<bool>("wholeMolecule");
        const std::pair<const char*, int> kinds[] = {
            {"a line", KYTBT_SingleBond}, {"a wedge up", KYTBT_StereoUp}, {"a wedge down", KYTBT_StereoDown}};
        for (const auto& [name, kind] : kinds) {
            QTest::addRow("%s", name) << kind << false << false << int(Qt::NoModifier) << false;
            QTest::addRow("%s with Control", name) << kind << false << false << int(Qt::ControlModifier) << true;
            QTest::addRow("%s from a locked atom", name) << kind << true << false << int(Qt::NoModifier) << true;
            QTest::addRow("%s to a locked atom", name) << kind << false << true << int(Qt::NoModifier) << false;
        }
    }

    void draggingABondMovesItOrTheMolecule()
    {
        QFETCH(int, kind);
        QFETCH(bool, startIsLocked);
        QFETCH(bool, endIsLocked);
        QFETCH(int, modifier);
        QFETCH(bool, wholeMolecule);
        ViewFixture f;
        KytAtom* a = f.atom(100, 200, 0, startIsLocked);
        KytAtom* b = f.atom(200, 200, 0, endIsLocked);
        KytAtom* c = f.atom(300, 200);
        const KytBond* ab = f.bond(a, b, {kind});
        const KytBond* bc = f.bond(b, c);
        f.drag({170, 200}, {180, 240}, Qt::KeyboardModifier(modifier));
        const QPoint end = wholeMolecule ? QPoint(310, 240) : QPoint(300, 200);
        QCOMPARE(placesOf({a, b, c}), (Places{{110, 240}, {210, 240}, end}));
        QCOMPARE(lineOf(bc->bond1), QLine({210, 240}, end));
        if (kind == KYTBT_SingleBond) {
            QCOMPARE(lineOf(ab->bond1), QLine(110, 240, 210, 240));
            QCOMPARE(placeOf(ab->bond1), QPointF(0, 0));
        } else {
            QCOMPARE(*ab->stereoBond->getPointsArray(), QPolygon(QList<QPoint>{{110, 240}, {210, 246}, {210, 234}}));
            QCOMPARE(placeOf(ab->stereoBond), QPointF(0, 0));
        }
    }

    void draggingASideLineMovesTheWholeBond()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200);
        KytAtom* b = f.atom(200, 200);
        KytBond* bond = f.bond(a, b, {KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_SingleBond});
        f.press({150, 208}); // the third line, at y = 206
        QCOMPARE(f.view->moving, bond->bond3);
        f.move({170, 238});
        f.release({170, 238});
        QCOMPARE(placesOf({a, b}), (Places{{120, 230}, {220, 230}}));
        QCOMPARE(lineOf(bond->bond1), QLine(120, 230, 220, 230));
        QCOMPARE(lineOf(bond->bond2), QLine(120, 224, 220, 224));
        QCOMPARE(lineOf(bond->bond3), QLine(120, 236, 220, 236));
    }

    void draggingALabelMovesOnlyTheLabel()
    {
        for (const Qt::KeyboardModifiers modifiers :
             {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::ControlModifier)})
            for (const bool locked : {false, true}) {
                ViewFixture f;
                KytAtom* a = f.atom(200, 200, 0, locked);
                KytAtom* b = f.atom(300, 200, 0, locked);
                f.bond(a, b);
                const QPoint p = ViewFixture::onLabel(a);
                f.drag(p, p + QPoint(-40, 30), modifiers);
                QCOMPARE(placeOf(a->canvasSymbol), QPointF(160, 230));
                QCOMPARE(placesOf({a, b}), (Places{{200, 200}, {300, 200}}));
            }
    }

    void draggingOnEmptyCanvasMovesNothing()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.drag({300, 300}, {200, 200});
        f.drag({300, 300}, {350, 300}, Qt::ControlModifier);
        QCOMPARE(placeOf(atom), QPointF(200, 200));
        QCOMPARE(f.atoms().size(), 1);
    }

    void draggingTheRubberBandMovesNothing()
    {
        for (const KytViewState mode : {KYTVS_view, KYTVS_rotate}) {
            ViewFixture f(KYTVS_drawSimpleBond);
            f.click({200, 200});
            KytAtom* start = f.view->lastAtom;
            f.move({300, 240});
            f.view->canvasState = mode;
            f.drag({250, 220}, {280, 300});
            f.drag({250, 220}, {280, 300}, Qt::ControlModifier);
            QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 240));
            QCOMPARE(placesOf({tempBond, start}), (Places{{0, 0}, {200, 200}}));
        }
    }

    void draggingOffTheCanvas()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(20, 20);
        KytBond* bond = f.bond(atom, f.atom(100, 100));
        f.dragAlong({{20, 20}, {-30, -40}});
        QCOMPARE(placeOf(atom), QPointF(-30, -40));
        QCOMPARE(lineOf(bond->bond1), QLine(-30, -40, 100, 100));
        f.drag({-30, -40}, {50, 50});
        QCOMPARE(placeOf(atom), QPointF(50, 50));
    }

    void draggingAfterScrolling()
    {
        ViewFixture f;
        const auto [a, b] = f.chain<2>(800, 900, 100);
        f.scrollTo({456, 789});
        f.drag({800, 900}, {850, 1000});
        QCOMPARE(placeOf(a), QPointF(850, 1000));
        f.drag({900, 900}, {910, 900}, Qt::ControlModifier);
        QCOMPARE(placesOf({a, b}), (Places{{860, 1000}, {910, 900}}));
    }

    void draggingWhileTheViewScrolls()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(300, 300);
        f.press({300, 300});
        f.move({320, 320});
        f.scrollTo({100, 50});
        f.move({360, 340});
        f.release({360, 340});
        QCOMPARE(placeOf(atom), QPointF(360, 340));
    }

    void draggingThroughTheWindow()
    {
        ViewFixture f;
        KytAtom* a = f.atom(200, 200);
        KytAtom* b = f.atom(300, 200);
        f.bond(a, b);
        QWindow* window = f.view->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({200, 200}));
        QCOMPARE(f.view->moving, a);
        QTest::mouseMove(window, f.inWindow({230, 240}));
        QTest::mouseMove(window, f.inWindow({260, 260}));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({260, 260}));
        QCOMPARE(placesOf({a, b}), (Places{{260, 260}, {300, 200}}));
        QVERIFY(!f.view->moving);
    }

    void draggedAtomCarriesNoDepthToALockedNeighbour()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200, 3);
        KytAtom* locked = f.atom(200, 200, 9, true);
        KytAtom* open = f.atom(100, 300, 9);
        f.bond(a, locked);
        f.bond(a, open);
        f.drag({100, 200}, {110, 210});
        EXACTLY(locked->getAtomZ(), 9.0F);
        EXACTLY(open->getAtomZ(), 3.0F);
    }

    void draggingLaysOutTheWedgesDepth()
    {
        ViewFixture f;
        KytAtom* a = f.atom(100, 200, 1);
        KytAtom* b = f.atom(200, 200);
        f.bond(a, b, {KYTBT_StereoDown});
        f.drag({200, 200}, {130, 240});
        NEAR(b->getAtomZ(), 1 + 50 * std::sqrt(3.0), 1e-4);
    }

    void movesWithoutAGrabMoveNothing_data() { addModeRows(everyMode); }

    void movesWithoutAGrabMoveNothing()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        const auto [a, b] = f.chain<2>(200, 200, 100);
        for (const QPoint p : {QPoint(200, 200), QPoint(230, 220), QPoint(250, 200), QPoint(400, 300)})
            for (const Qt::KeyboardModifier modifier : {Qt::NoModifier, Qt::ControlModifier})
                f.move(p, modifier);
        f.release({300, 200});
        QCOMPARE(placesOf({a, b}), (Places{{200, 200}, {300, 200}}));
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(!tempBond->isVisible());
        QVERIFY(f.texts.isEmpty());
        QVERIFY(f.counts.isEmpty());
    }

    void grabbedItemStaysPutInOtherModes_data() { addModeRows(modesThatMoveNothing); }

    void grabbedItemStaysPutInOtherModes()
    {
        QFETCH(int, mode);
        ViewFixture f;
        const auto [a, b] = f.chain<2>(200, 200, 100);
        f.press({200, 200});
        f.view->canvasState = static_cast<KytViewState>(mode);
        f.move({240, 260});
        f.move({280, 260}, Qt::ControlModifier);
        QCOMPARE(f.view->moving, a);
        f.release({280, 260});
        QVERIFY(!f.view->moving);
        QCOMPARE(placesOf({a, b}), (Places{{200, 200}, {300, 200}}));
    }

    void highlightFollowsTheDrag()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        KytAtom* other = f.atom(300, 300);
        f.move({200, 200});
        f.press({200, 200});
        QVERIFY(isHighlighted(atom));
        f.move({202, 201});
        QCOMPARE(f.view->hover, atom);
        f.move({300, 300});
        QCOMPARE(f.view->hover, other);
        QVERIFY(isHighlighted(other));
        QVERIFY(isPlain(atom));
        f.move({360, 300});
        QVERIFY(isPlain(other));
        f.release({360, 300});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(isPlain(atom));
    }

    // Rotating

    void rotationTurnsByATenthPerPixel_data()
    {
        QTest::addColumn<QPoint>("grip");
        QTest::addColumn<QList<int>>("way"); // of the pointer's x
        QTest::addColumn<int>("modifier");
        QTest::addColumn<double>("angle"); // radians
        const auto row = [](const char* name, const QPoint& grip, const QList<int>& way, double angle,
                            Qt::KeyboardModifier modifier = Qt::NoModifier) {
            QTest::newRow(name) << grip << way << int(modifier) << angle;
        };
        row("in one step", {300, 300}, {310}, 1);
        row("step by step", {300, 300}, {301, 302, 303, 304, 305, 306, 307, 308, 309, 310}, 1);
        row("measured from the pivot, not from the grip", {302, 299}, {305}, 0.5);
        row("the other way to the left", {300, 300}, {290}, -1);
        row("there and back", {300, 300}, {290, 300}, 0);
        row("Control does not count", {300, 300}, {310}, 1, Qt::ControlModifier);
    }

    void rotationTurnsByATenthPerPixel()
    {
        QFETCH(QPoint, grip);
        QFETCH(QList<int>, way);
        QFETCH(int, modifier);
        QFETCH(double, angle);
        const auto modifiers = Qt::KeyboardModifier(modifier);
        ViewFixture f(KYTVS_rotate);
        const auto [pivot, other] = f.chain<2>(300, 300, 100);
        f.press(grip, modifiers);
        for (const int x : way) {
            f.move({x, grip.y()}, modifiers);
            EXACTLY(_x, x);
        }
        STANDS_AT(other, 300 + 100 * std::cos(angle), 300 + 100 * std::sin(angle));
        f.release({way.last(), grip.y()}, modifiers);
        STANDS_AT(other, 300 + 100 * std::cos(angle), 300 + 100 * std::sin(angle));
        QCOMPARE(placeOf(pivot), QPointF(300, 300));
    }

    void rotationIgnoresVerticalMovement()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* pivot = f.atom(300, 300);
        KytAtom* other = f.atom(400, 320);
        f.bond(pivot, other);
        f.dragAlong({{300, 300}, {300, 200}, {300, 100}, {300, 350}, {300, 301}});
        STANDS_AT(other, 400, 320);
        QCOMPARE(placeOf(pivot), QPointF(300, 300));
    }

    void rotationLeavesThePivotAndOtherMoleculesAlone()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* pivot = f.atom(300, 300);
        f.bond(pivot, f.atom(400, 300));
        const auto [stranger, strangersEnd] = f.chain<2>(400, 400, 50);
        f.drag({300, 300}, {360, 340});
        QCOMPARE(placesOf({pivot, stranger, strangersEnd}), (Places{{300, 300}, {400, 400}, {450, 400}}));
    }

    void rotationTakesBondsAndLabelsAlong()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* pivot = f.atom(300, 300);
        KytAtom* second = f.atom(400, 300);
        KytAtom* third = f.atom(400, 420);
        KytBond* near = f.bond(pivot, second);
        KytBond* far = f.bond(third, second);
        f.dragAlong({{300, 300}, {310, 300}});
        QCOMPARE(placeOf(second->canvasSymbol), placeOf(second));
        QCOMPARE(placeOf(third->canvasSymbol), placeOf(third));
        const auto pixel = [](const KytAtom* atom) {
            return QPoint(static_cast<int>(atom->x()), static_cast<int>(atom->y()));
        };
        QCOMPARE(lineOf(near->bond1), QLine(QPoint(300, 300), pixel(second)));
        QCOMPARE(lineOf(far->bond1), QLine(pixel(third), pixel(second)));
        NEAR(near->bondlength, 100, 1e-3);
        NEAR(far->bondlength, 120, 1e-3);
        NEAR(std::hypot(third->x() - 300, third->y() - 300), std::hypot(100, 120), 1e-3);
        QCOMPARE(placeOf(pivot->canvasSymbol), QPointF(300, 300));
    }

    void rotationOfLockedAtoms()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* pivot = f.atom(300, 300, 0, true);
        KytAtom* other = f.atom(400, 300, 12, true);
        f.bond(pivot, other);
        f.drag({300, 300}, {310, 300});
        STANDS_AT(other, 354.0302306, 384.1470985);
        QCOMPARE(placeOf(pivot), QPointF(300, 300));
        EXACTLY(other->getAtomZ(), 12.0F);
    }

    void rotationSendsAnAtomStraightAboveOrLeftToTheOppositeSide_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<double>("counted"); // its direction, in radians
        QTest::newRow("above counts as below") << QPoint(300, 200) << M_PI_2;
        QTest::newRow("to the left counts as to the right") << QPoint(200, 300) << 0.0;
    }

    void rotationSendsAnAtomStraightAboveOrLeftToTheOppositeSide()
    {
        QFETCH(QPoint, place);
        QFETCH(double, counted);
        ViewFixture f(KYTVS_rotate);
        KytAtom* pivot = f.atom(300, 300);
        KytAtom* other = f.atom(place.x(), place.y());
        f.bond(pivot, other);
        f.press({300, 300});
        f.move({301, 300});
        STANDS_AT(other, 300 + 100 * std::cos(counted + 0.1), 300 + 100 * std::sin(counted + 0.1));
        f.move({302, 300});
        STANDS_AT(other, 300 + 100 * std::cos(counted + 0.2), 300 + 100 * std::sin(counted + 0.2));
        f.release({302, 300});
    }

    void rotationEndsAtTheRelease()
    {
        ViewFixture f(KYTVS_rotate);
        const auto [pivot, other] = f.chain<2>(300, 300, 100);
        f.drag({300, 300}, {310, 300});
        QVERIFY(!f.view->moving);
        const QPointF place = placeOf(other);
        f.move({350, 310});
        QCOMPARE(placeOf(other), place);
    }

    void rotationAfterScrolling()
    {
        ViewFixture f(KYTVS_rotate);
        const auto [pivot, other] = f.chain<2>(900, 900, 100);
        f.scrollTo({600, 700});
        f.drag({900, 900}, {910, 880});
        STANDS_AT(other, 900 + 100 * std::cos(1.0), 900 + 100 * std::sin(1.0));
    }

    void rotationOfAFreeAtomTurnsNothing()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* atom = f.atom(300, 300);
        KytAtom* other = f.atom(400, 300);
        f.drag({300, 300}, {350, 320});
        QCOMPARE(placesOf({atom, other}), (Places{{300, 300}, {400, 300}}));
    }

    void rotationWithoutAPivotTurnsNothing()
    {
        ViewFixture f(KYTVS_rotate);
        const auto [a, b] = f.chain<2>(300, 300, 100);
        f.drag({350, 300}, {380, 300});
        f.drag({350, 400}, {380, 420});
        QCOMPARE(placesOf({a, b}), (Places{{300, 300}, {400, 300}}));
    }

    void grabOfTheViewModeIsAPivotInRotateMode()
    {
        ViewFixture f;
        KytAtom* a = f.atom(300, 300);
        KytAtom* b = f.atom(400, 300);
        KytBond* bond = f.bond(a, b);
        f.press({300, 300});
        f.view->canvasState = KYTVS_rotate;
        _x = 300;
        f.move({310, 300});
        QCOMPARE(placeOf(a), QPointF(300, 300));
        STANDS_AT(b, 354.0302306, 384.1470985);
        f.release({310, 300});

        b->move(400, 300); // a grabbed line is no pivot
        f.view->canvasState = KYTVS_view;
        f.press({350, 300});
        QCOMPARE(f.view->moving, bond->bond1);
        f.view->canvasState = KYTVS_rotate;
        f.move({360, 330});
        f.release({360, 330});
        QCOMPARE(placesOf({a, b}), (Places{{300, 300}, {400, 300}}));
    }

    // Dropping

    void droppingOnWhatIsNoAtomMergesNothing_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("empty canvas") << QPoint(250, 250);
        QTest::newRow("line") << QPoint(300, 300);
        QTest::newRow("wedge") << QPoint(340, 400);
        QTest::newRow("label") << QPoint();
    }

    void droppingOnWhatIsNoAtomMergesNothing()
    {
        QFETCH(QPoint, place);
        ViewFixture f;
        const KytBond* doubleBond = f.bond(f.atom(200, 300), f.atom(400, 300), {KYTBT_SingleBond, KYTBT_SingleBond});
        f.bond(f.atom(200, 400), f.atom(400, 400), {KYTBT_StereoUp});
        if (place.isNull())
            place = ViewFixture::onLabel(f.atom(300, 250));
        KytAtom* dropped = f.atom(200, 200);
        const qsizetype atoms = f.atoms().size();
        f.drag({200, 200}, place);
        QCOMPARE(placeOf(dropped), QPointF(place));
        QCOMPARE(f.atoms().size(), atoms);
        QCOMPARE(doubleBond->bondCount, 2);
        QCOMPARE(f.wedges().size(), 1);
        QCOMPARE(dropped->getBondCount(), 0);
        QVERIFY(!f.view->moving);
    }

    void droppingOnAnAtomMergesIntoIt()
    {
        Dropping f;
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.neighbour, f.target}));
        QCOMPARE(f.labels().size(), 2);
        QCOMPARE(placeOf(f.target), QPointF(300, 200));
        QCOMPARE(f.neighbour->isConnected(f.target), f.bondToNeighbour);
        QCOMPARE(lineOf(f.bondToNeighbour->bond1), QLine(100, 300, 300, 200));
        QCOMPARE(f.neighbour->getMolecule(), f.target->getMolecule());
        QCOMPARE(f.lines().size(), 1);
    }

    void droppingAnAtomWithoutBondsOnAnother()
    {
        ViewFixture f;
        KytAtom* target = f.atom(300, 200);
        f.atom(200, 200);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), QList<KytAtom*>{target});
        QCOMPARE(f.labels(), QList<QCanvasText*>{target->canvasSymbol});
    }

    void droppingOnTheOnlyNeighbourTakesTheBond()
    {
        for (const KytBondType kind : {KYTBT_SingleBond, KYTBT_StereoUp})
            for (const bool toTheStart : {true, false}) {
                ViewFixture f;
                KytAtom* start = f.atom(200, 200);
                KytAtom* end = f.atom(300, 200);
                f.bond(start, end, {kind});
                KytAtom* stays = toTheStart ? start : end;
                KytAtom* goes = toTheStart ? end : start;
                f.drag(placeOf(goes).toPoint(), placeOf(stays).toPoint());
                QCOMPARE(f.atoms(), QList<KytAtom*>{stays});
                QCOMPARE(stays->getBondCount(), 0);
                QVERIFY(f.lines().isEmpty());
                QVERIFY(f.wedges().isEmpty());
            }
    }

    void droppingOnASharedNeighboursOtherEndKeepsOneBond()
    {
        Fork f;
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.shared, f.target}));
        QCOMPARE(bondsBetween(f.shared, f.target), 1);
        QCOMPARE(f.lines().size(), 1);
        QCOMPARE(f.shared->getMolecule(), f.target->getMolecule());
    }

    void droppingTheThirdAtomOfAChainOnTheFirst()
    {
        ViewFixture f;
        const auto [a, b, c, d] = f.chain<4>(100, 200, 100);
        f.drag({300, 200}, {100, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{a, b, d}));
        QCOMPARE(bondsBetween(a, b), 1);
        QCOMPARE(bondsBetween(a, d), 1);
        QCOMPARE(bondsBetween(a, a), 0);
        QCOMPARE(f.lines().size(), 2);
        QCOMPARE(a->getMolecule(), b->getMolecule());
        QCOMPARE(a->getMolecule(), d->getMolecule());
    }

    void droppingOnAnAtomOfTheMoleculeInAnotherDepthIsRefused()
    {
        Fork f;
        f.target->setAtomZ(2);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.shared, f.dropped, f.target}));
        QCOMPARE(placeOf(f.dropped), QPointF(300, 200));
        QCOMPARE(f.lines().size(), 2);
        EXACTLY(f.target->getAtomZ(), 2.0F);
        EXACTLY(f.dropped->getAtomZ(), 0.0F);
        QVERIFY(!f.view->moving);
    }

    void droppingOnAnAtomOfTheMoleculeOneDeeperMerges()
    {
        Fork f;
        f.target->setAtomZ(1);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.shared, f.target}));
        QCOMPARE(bondsBetween(f.shared, f.target), 1);
    }

    void droppingOnAnotherMoleculeInAnotherDepthMerges()
    {
        Dropping f(50);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.neighbour, f.target}));
        QCOMPARE(bondsBetween(f.neighbour, f.target), 1);
    }

    void droppingTakesTheDepthOfTheTarget()
    {
        ViewFixture f;
        KytAtom* dropped = f.atom(200, 200);
        KytAtom* neighbour = f.atom(100, 300);
        KytAtom* target = f.atom(300, 200, 50);
        f.bond(dropped, neighbour);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{neighbour, target}));
        EXACTLY(target->getAtomZ(), 50.0F);
        EXACTLY(neighbour->getAtomZ(), 50.0F);
    }

    void droppingOnTwoAtomsMergesWithTheUpperOneOnly()
    {
        ViewFixture f;
        KytAtom* dropped = f.atom(200, 200);
        KytAtom* neighbour = f.atom(100, 300);
        KytAtom* below = f.atom(300, 200);
        KytAtom* above = f.atom(300, 200);
        f.bond(neighbour, dropped);
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{neighbour, below, above}));
        QCOMPARE(bondsBetween(neighbour, above), 1);
        QCOMPARE(below->getBondCount(), 0);
    }

    void droppingAWholeMoleculeMergesTheGrabbedAtom()
    {
        ViewFixture f;
        KytAtom* grabbed = f.atom(200, 200);
        KytAtom* neighbour = f.atom(200, 300);
        f.bond(grabbed, neighbour);
        KytAtom* target = f.atom(300, 200);
        KytAtom* targetsNeighbour = f.atom(300, 300); // the neighbour ends up here, unmerged
        f.bond(target, targetsNeighbour);
        f.drag({200, 200}, {300, 200}, Qt::ControlModifier);
        QCOMPARE(f.atoms(), (QList<KytAtom*>{neighbour, target, targetsNeighbour}));
        QCOMPARE(placesOf({neighbour, targetsNeighbour}), (Places{{300, 300}, {300, 300}}));
        QCOMPARE(bondsBetween(target, neighbour), 1);
        QCOMPARE(bondsBetween(target, targetsNeighbour), 1);
        QCOMPARE(target->getMolecule(), neighbour->getMolecule());
        QCOMPARE(target->getMolecule(), targetsNeighbour->getMolecule());
    }

    void droppingALockedAtomMergesIt()
    {
        ViewFixture f;
        KytAtom* grabbed = f.atom(200, 200, 0, true);
        KytAtom* neighbour = f.atom(200, 300, 0, true);
        f.bond(grabbed, neighbour);
        KytAtom* target = f.atom(350, 200);
        f.drag({200, 200}, {350, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{neighbour, target}));
        QCOMPARE(placeOf(neighbour), QPointF(350, 300));
        QCOMPARE(bondsBetween(target, neighbour), 1);
    }

    void droppingALineOrAWedgeMergesNothing()
    {
        for (const KytBondType kind : {KYTBT_SingleBond, KYTBT_StereoUp}) {
            ViewFixture f;
            f.bond(f.atom(200, 200), f.atom(300, 200), {kind});
            KytAtom* target = f.atom(270, 300);
            f.drag({270, 200}, {270, 300});
            QCOMPARE(f.atoms().size(), 3);
            QCOMPARE(target->getBondCount(), 0);
            QVERIFY(!f.view->moving);
        }
    }

    void droppingALabelMergesNothing()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.atom(300, 300);
        f.drag(ViewFixture::onLabel(atom), {300, 300});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.labels().size(), 2);
    }

    void clickOnTwoAtomsMergesWithoutAnyMovement()
    {
        ViewFixture f;
        KytAtom* below = f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        KytAtom* neighbour = f.atom(300, 300);
        f.bond(above, neighbour);
        f.press({200, 200});
        QCOMPARE(f.view->moving, above);
        f.release({200, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{below, neighbour}));
        QCOMPARE(bondsBetween(below, neighbour), 1);
        QVERIFY(!f.view->moving);
        QVERIFY(!f.view->hover);
    }

    void clickOnOneAtomMergesNothing()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.bond(atom, f.atom(300, 200));
        f.doubleClick({200, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.lines().size(), 1);
        QVERIFY(!f.view->moving);
    }

    void mergeHappensWherePointerIsReleased()
    {
        Dropping f;
        f.press({200, 200});
        f.move({250, 200});
        f.release({300, 200}); // the last step was never reported as a move
        QCOMPARE(f.atoms(), (QList<KytAtom*>{f.neighbour, f.target}));
        QCOMPARE(bondsBetween(f.neighbour, f.target), 1);
    }

    void droppingNextToAnAtomMergesWithinItsReach()
    {
        ViewFixture f;
        f.atom(200, 200);
        f.atom(300, 200);
        f.drag({200, 200}, {296, 200}); // an enlarged atom would reach here
        QCOMPARE(f.atoms().size(), 2);
        f.drag({296, 200}, {298, 200});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(placeOf(f.atoms().first()), QPointF(300, 200));
    }

    void droppingAfterScrolling()
    {
        ViewFixture f;
        KytAtom* neighbour = f.atom(700, 700);
        KytAtom* dropped = f.atom(800, 800);
        KytAtom* target = f.atom(900, 900);
        f.bond(neighbour, dropped);
        f.scrollTo({432, 543});
        f.drag({800, 800}, {900, 900});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{neighbour, target}));
        QCOMPARE(bondsBetween(neighbour, target), 1);
    }

    void droppingForgetsHoverAndGrab()
    {
        Dropping f;
        f.drag({200, 200}, {300, 200});
        QVERIFY(!f.view->moving);
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(f.target));
        f.move({300, 200});
        QCOMPARE(f.view->hover, f.target);
        f.drag({300, 200}, {320, 260});
        QCOMPARE(placeOf(f.target), QPointF(320, 260));
    }

    void releaseOfAnyButtonDrops()
    {
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton, Qt::RightButton}) {
            Dropping f;
            f.press({200, 200});
            f.move({300, 200});
            f.release({300, 200}, Qt::NoModifier, button);
            QCOMPARE(f.atoms(), (QList<KytAtom*>{f.neighbour, f.target}));
            QVERIFY(!f.view->moving);
        }
    }

    void releaseInDrawingModesOnlyLetsGo_data() { addModeRows(modesThatMoveNothing); }

    void releaseInDrawingModesOnlyLetsGo()
    {
        QFETCH(int, mode);
        ViewFixture f;
        KytAtom* a = f.atom(200, 200);
        KytAtom* b = f.atom(300, 200);
        f.press({200, 200});
        f.move({300, 200});
        f.view->canvasState = static_cast<KytViewState>(mode);
        f.release({300, 200});
        QVERIFY(!f.view->moving);
        QCOMPARE(f.atoms(), (QList<KytAtom*>{a, b}));
        QCOMPARE(f.view->isLastAtom, 0);
        QCOMPARE(f.view->hover, b);
        QVERIFY(isHighlighted(b));
    }

    void releaseInRotateModeMergesNothing()
    {
        ViewFixture f(KYTVS_rotate);
        f.atom(200, 200);
        f.atom(200, 200);
        f.atom(300, 200);
        f.click({200, 200});
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms().size(), 3);
        QVERIFY(!f.view->moving);
    }

    void releaseWithoutAGrabMergesNothing()
    {
        ViewFixture f;
        f.atom(200, 200);
        f.atom(200, 200);
        f.press({400, 400});
        f.move({200, 200});
        f.release({200, 200});
        f.release({200, 200});
        QCOMPARE(f.atoms().size(), 2);
    }

    void mergingTheStartAtomEndsTheGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(300, 200);
        f.click({200, 200});
        f.move({250, 100});
        f.view->canvasState = KYTVS_view;
        f.drag({200, 200}, {300, 200});
        QCOMPARE(f.atoms().size(), 1);
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.gesture(), "none");
    }

    void mergingIntoTheStartAtomKeepsTheGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(300, 200);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.move({250, 100});
        f.view->canvasState = KYTVS_view;
        f.drag({300, 200}, {200, 200});
        QCOMPARE(f.atoms(), QList<KytAtom*>{start});
        QCOMPARE(f.view->lastAtom, start);
        QCOMPARE(f.gesture(), "begun");
    }

    // Items that go

    void grabbedItemIsForgottenWhenItGoes_data()
    {
        QTest::addColumn<QPoint>("grip");
        QTest::addColumn<Destroyer>("destroy");

        const std::pair<const char*, QPoint> grips[] = {
            {"atom", {200, 200}}, {"line", {250, 200}}, {"wedge", {200, 270}}, {"label", {206, 209}}};
        for (const auto& [what, grip] : grips)
            for (const auto& [how, destroy] : waysToGo)
                QTest::addRow("%s with %s", what, how) << grip << destroy;
    }

    void grabbedItemIsForgottenWhenItGoes()
    {
        QFETCH(QPoint, grip);
        QFETCH(Destroyer, destroy);
        for (const bool afterAStep : {false, true}) {
            ViewFixture f;
            KytAtom* atom = f.atom(200, 200);
            f.bond(atom, f.atom(300, 200));
            f.bond(atom, f.atom(200, 300), {KYTBT_StereoUp});
            f.move(grip);
            f.press(grip);
            QVERIFY(f.view->moving);
            if (afterAStep)
                f.move(grip + QPoint(5, 5));
            destroy(f, atom);
            QVERIFY(!f.view->moving);
            f.move(grip + QPoint(10, 10));
            f.move(grip + QPoint(20, 20), Qt::ControlModifier);
            f.release(grip + QPoint(20, 20));
            QVERIFY(!f.view->moving);
            f.drag({400, 400}, {300, 200});
            QVERIFY(!f.view->moving);
        }
    }

    void pivotIsForgottenWhenItGoes_data()
    {
        QTest::addColumn<Destroyer>("destroy");
        for (const auto& [what, destroy] : waysToGo)
            QTest::newRow(what) << destroy;
    }

    void pivotIsForgottenWhenItGoes()
    {
        QFETCH(Destroyer, destroy);
        ViewFixture f(KYTVS_rotate);
        const auto [pivot, other] = f.chain<2>(200, 200, 100);
        f.press({200, 200});
        f.move({205, 200});
        const QPointF place = placeOf(other);
        destroy(f, pivot);
        QVERIFY(!f.view->moving);
        f.move({220, 200});
        if (f.isOnCanvas(other))
            QCOMPARE(placeOf(other), place);
        f.release({220, 200});
    }

    void grabbedLineIsForgottenWhenItsBondGoes()
    {
        ViewFixture f;
        KytAtom* a = f.atom(200, 200);
        KytBond* bond = f.bond(a, f.atom(300, 200));
        f.press({250, 200});
        QCOMPARE(f.view->moving, bond->bond1);
        delete bond;
        QVERIFY(!f.view->moving);
        f.move({270, 250});
        f.release({270, 250});
        QCOMPARE(placeOf(a), QPointF(200, 200));
    }

    void otherAtomsMayGoDuringADrag()
    {
        ViewFixture f;
        const auto [a, b, c] = f.chain<3>(100, 200, 100);
        f.press({100, 200}, Qt::ControlModifier);
        f.move({110, 200}, Qt::ControlModifier);
        delete b;
        QCOMPARE(f.view->moving, a);
        f.move({120, 200}, Qt::ControlModifier);
        QCOMPARE(placeOf(a), QPointF(120, 200));
        QCOMPARE(placeOf(c), QPointF(310, 200)); // a molecule of its own by now
        f.release({120, 200});
    }

    void documentMayGoDuringADrag()
    {
        for (const KytViewState mode : {KYTVS_view, KYTVS_rotate}) {
            ViewFixture f(mode);
            KytAtom* a = f.atom(100, 200);
            KytAtom* b = f.atom(200, 200);
            f.bond(a, b, {KYTBT_StereoUp});
            f.press({100, 200});
            f.move({110, 210});
            delete f.doc;
            f.move({120, 230}, Qt::ControlModifier);
            f.move({140, 230});
            f.release({140, 230});
            QVERIFY(!f.view->moving);
            QCOMPARE(f.atoms(), (QList<KytAtom*>{a, b}));
            QCOMPARE(a->isConnected(b), *a->getOutList()->begin());
        }
    }
};

QTEST_MAIN(test_kytstudioview_move)
#include "test_kytstudioview_move.moc"
