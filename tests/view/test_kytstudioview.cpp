#include "ViewFixture.h"
#include "tests/app/TestWindow.h"

/// State, construction, hover and depth.
class test_kytstudioview : public QObject {
    Q_OBJECT

private slots:
    // Construction

    void aNewViewHasNothingUnderWay()
    {
        ViewFixture f;
        QCOMPARE(f.view->doc, f.doc.data());
        QCOMPARE(f.view->canvasState, KYTVS_view);
        EXACTLY(f.view->fixedAngleValue, 0.17453292F);
        EXACTLY(f.view->fixedLengthValue, 30.0F);
        QCOMPARE(f.view->fixedAngleFlag, 0);
        QCOMPARE(f.view->fixedLengthFlag, 0);
        EXACTLY(f.view->newx, 0.0F);
        EXACTLY(f.view->newy, 0.0F);
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.view->isLastAtom, 0);
        QVERIFY(!f.view->moving);
        QVERIFY(!f.view->hover);
        QCOMPARE(f.view->flag, false);
        QVERIFY(!tempBond->isVisible());
        QVERIFY(f.atoms().isEmpty());
    }

    void aNewViewLooksLikeADrawingBoard()
    {
        ViewFixture f;
        QCOMPARE(f.view->canvas(), f.canvas());
        QCOMPARE(f.view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
        QCOMPARE(f.view->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
        QVERIFY(f.view->verticalScrollBar()->isVisible());
        QVERIFY(f.view->horizontalScrollBar()->isVisible());
        QCOMPARE(f.view->backgroundColor(), QColor(128, 128, 0));
        QCOMPARE(f.view->viewport()->cursor().shape(), Qt::CrossCursor);
        QVERIFY(f.view->viewport()->hasMouseTracking());
    }

    void aNewViewShowsTheCornerOfTheCanvas()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        QCOMPARE(f.scrolled(), QPoint(0, 0));
        f.click({5, 7});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(placeOf(f.atoms().first()), QPointF(5, 7));
    }

    void rubberBandLiesUnderTheDrawing()
    {
        ViewFixture f;
        QCOMPARE(tempBond->canvas(), f.canvas());
        QVERIFY(f.isOnCanvas(tempBond));
        EXACTLY(tempBond->z(), 0.0);
        QCOMPARE(tempBond->rtti(), static_cast<int>(QCanvasItem::Rtti_Line));
    }

    void rubberBandGoesToTheViewMadeLast()
    {
        ViewFixture first;
        QCanvasLine* const band = tempBond;
        {
            ViewFixture second;
            QCOMPARE(tempBond, band);
            QCOMPARE(tempBond->canvas(), second.canvas());
            QVERIFY(!first.isOnCanvas(tempBond));
            delete first.canvas();
            QCOMPARE(tempBond->canvas(), second.canvas());
        }
        QVERIFY(!tempBond->canvas());
        ViewFixture third;
        QCOMPARE(tempBond->canvas(), third.canvas());
    }

    void rubberBandOutlivesItsCanvas()
    {
        for (int round = 0; round < 3; ++round) {
            ViewFixture f(KYTVS_drawSimpleBond);
            f.click({200, 200});
            f.move({260, 230});
            QVERIFY(tempBond->isVisible());
            delete f.canvas();
            QVERIFY(!tempBond->canvas());
            QVERIFY(!tempBond->isVisible());
            QCOMPARE(tempBond->rtti(), static_cast<int>(QCanvasItem::Rtti_Line));
        }
    }

    void documentChangeLeavesTheViewAlone()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({260, 230});
        KytAtom* start = f.view->lastAtom;
        emit f.doc->documentChanged();
        QCOMPARE(f.view->canvasState, KYTVS_drawSimpleBond);
        QCOMPARE(f.view->lastAtom, start);
        QCOMPARE(f.view->isLastAtom, 1);
        QVERIFY(tempBond->isVisible());
        const bool wasConnected =
            QObject::disconnect(f.doc, &KytStudioDoc::documentChanged, f.view, &KytStudioView::slotDocumentChanged)
            || QObject::disconnect(f.doc, SIGNAL(documentChanged()), f.view, SLOT(slotDocumentChanged()));
        QVERIFY(wasConnected);
    }

    void modesAndKindsOfDrawing()
    {
        QCOMPARE(static_cast<int>(KYTVS_view), 0);
        QCOMPARE(static_cast<int>(KYTVS_rotate), 1);
        QCOMPARE(static_cast<int>(KYTVS_drawSimpleBond), 2);
        QCOMPARE(static_cast<int>(KYTVS_drawDashedBond), 3);
        QCOMPARE(static_cast<int>(KYTVS_drawStereoUp), 4);
        QCOMPARE(static_cast<int>(KYTVS_drawStereoDown), 5);
        QCOMPARE(static_cast<int>(KYTVS_deleteItem), 6);
        QCOMPARE(static_cast<int>(KYTVS_zigzag), 7);
        for (const KytViewState mode : everyMode) {
            QCOMPARE(drawsBond(mode), mode >= 2 && mode <= 5);
            QCOMPARE(draws(mode), (mode >= 2 && mode <= 5) || mode == 7);
            QCOMPARE(drawsWedge(mode), mode == 4 || mode == 5);
        }
    }

    void selectingAModeTwiceLeavesItSelected()
    {
        const TestWindow window;
        const std::pair<void (KytStudioApp::*)(), KytViewState> commands[] = {
            {&KytStudioApp::slotSelectViewMode, KYTVS_view},
            {&KytStudioApp::slotSelectRotateMode, KYTVS_rotate},
            {&KytStudioApp::slotSelectAddBond, KYTVS_drawSimpleBond},
            {&KytStudioApp::slotSelectAddDashedBond, KYTVS_drawDashedBond},
            {&KytStudioApp::slotSelectAddStereoUp, KYTVS_drawStereoUp},
            {&KytStudioApp::slotSelectAddStereoDown, KYTVS_drawStereoDown},
            {&KytStudioApp::slotSelectDeleteItem, KYTVS_deleteItem},
            {&KytStudioApp::slotZigzagStructure, KYTVS_zigzag},
        };
        for (const auto& [select, mode] : commands) {
            (window.get()->*select)();
            QCOMPARE(window->view->canvasState, mode);
            (window.get()->*select)();
            QCOMPARE(window->view->canvasState, mode);
        }
    }

    void selectingFixedLengthTwiceSwitchesItOff()
    {
        const TestWindow window;
        KytStudioView* view = window->view;
        window->slotSelectFixedLength();
        QCOMPARE(view->fixedLengthFlag, 1);
        QCOMPARE(view->fixedAngleFlag, 0);
        window->slotSelectFixedAngle();
        QCOMPARE(view->fixedAngleFlag, 1);
        window->slotSelectFixedLength();
        QCOMPARE(view->fixedLengthFlag, 0);
        QCOMPARE(view->fixedAngleFlag, 1);
        window->slotSelectFixedAngle();
        QCOMPARE(view->fixedAngleFlag, 0);
    }

    // Hover

    void emptyCanvasIsNotHovered_data() { addModeRows(everyMode); }

    void emptyCanvasIsNotHovered()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(100, 100);
        f.move({300, 300});
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(atom));
    }

    void atomUnderThePointerIsHighlighted_data() { addModeRows(everyMode); }

    void atomUnderThePointerIsHighlighted()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(200, 200);
        f.move({200, 200});
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isHighlighted(atom));
        f.move({300, 300});
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(atom));
    }

    void lineUnderThePointerIsHighlighted_data() { addModeRows(everyMode); }

    void lineUnderThePointerIsHighlighted()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytBondLine* line = f.bond(f.atom(200, 200), f.atom(300, 200))->bond1;
        f.move({250, 200});
        QCOMPARE(f.view->hover, line);
        QVERIFY(isHighlighted(line));
        QCOMPARE(line->pen().width(), 2);
        f.move({250, 300});
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(line));
    }

    void dashedLineKeepsItsDashesUnderThePointer()
    {
        ViewFixture f;
        KytBondLine* line = f.bond(f.atom(200, 200), f.atom(300, 200), {KYTBT_DashedLine})->bond1;
        f.move({250, 200});
        QVERIFY(isHighlighted(line));
        QCOMPARE(line->pen().style(), Qt::DashLine);
        f.move({250, 300});
        QVERIFY(isPlain(line));
        QCOMPARE(line->pen().style(), Qt::DashLine);
    }

    void wedgeUnderThePointerIsHoveredButNotHighlighted_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("up") << static_cast<int>(KYTBT_StereoUp);
        QTest::newRow("down") << static_cast<int>(KYTBT_StereoDown);
    }

    void wedgeUnderThePointerIsHoveredButNotHighlighted()
    {
        QFETCH(int, kind);
        for (const KytViewState mode : everyMode) {
            ViewFixture f(mode);
            KytStereoBond* wedge =
                f.bond(f.atom(200, 200), f.atom(300, 200), {static_cast<KytBondType>(kind)})->stereoBond;
            const QBrush before = wedge->brush();
            f.move({270, 200});
            QCOMPARE(f.view->hover, wedge);
            QCOMPARE(wedge->brush(), before);
            QCOMPARE(wedge->brush().color(), QColor(0, 0, 255));
            f.move({270, 300});
            QVERIFY(!f.view->hover);
            QCOMPARE(wedge->brush(), before);
        }
    }

    void fromAWedgeOntoAnAtomHighlightsTheAtom()
    {
        ViewFixture f;
        KytAtom* end = f.atom(300, 200);
        KytStereoBond* wedge = f.bond(f.atom(200, 200), end, {KYTBT_StereoUp})->stereoBond;
        const QBrush before = wedge->brush();
        f.move({270, 200});
        QCOMPARE(f.view->hover, wedge);
        f.move({300, 200});
        QCOMPARE(f.view->hover, end);
        QVERIFY(isHighlighted(end));
        QCOMPARE(wedge->brush(), before);
        f.move({270, 200});
        QCOMPARE(f.view->hover, wedge);
        QVERIFY(isPlain(end));
        QVERIFY(f.isOnCanvas(wedge));
    }

    void labelUnderThePointerIsHoveredButNotHighlighted()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.move(ViewFixture::onLabel(atom));
        QCOMPARE(f.view->hover, atom->canvasSymbol);
        QVERIFY(isPlain(atom));
        QCOMPARE(atom->canvasSymbol->color(), QColor(Qt::black));
        f.move({200, 200});
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isHighlighted(atom));
    }

    void onlyTheLineUnderThePointerIsHighlighted()
    {
        ViewFixture f;
        KytBond* bond =
            f.bond(f.atom(200, 200), f.atom(300, 200), {KYTBT_SingleBond, KYTBT_SingleBond, KYTBT_DashedLine});
        f.move({250, 190}); // the second line runs along y = 194
        QCOMPARE(f.view->hover, bond->bond2);
        QVERIFY(isHighlighted(bond->bond2));
        QVERIFY(isPlain(bond->bond1));
        QVERIFY(isPlain(bond->bond3));
    }

    void topmostItemIsHovered()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(250, 200);
        KytBond* first = f.bond(f.atom(200, 200), f.atom(300, 200));
        f.move({250, 200});
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isPlain(first->bond1));

        KytBond* second = f.bond(f.atom(280, 150), f.atom(280, 250));
        f.move({280, 200});
        QCOMPARE(f.view->hover, second->bond1);
        QVERIFY(isPlain(first->bond1));
    }

    void ofTwoAtomsTheLaterOneIsHovered()
    {
        ViewFixture f;
        KytAtom* below = f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        f.move({200, 200});
        QCOMPARE(f.view->hover, above);
        QVERIFY(isPlain(below));
    }

    void highlightMovesFromItemToItem()
    {
        ViewFixture f;
        KytAtom* left = f.atom(200, 200);
        KytAtom* right = f.atom(300, 200);
        KytBondLine* line = f.bond(left, right)->bond1;
        f.move({200, 200});
        QVERIFY(isHighlighted(left));
        f.move({250, 200});
        QVERIFY(isPlain(left));
        QVERIFY(isHighlighted(line));
        f.move({300, 200});
        QVERIFY(isPlain(line));
        QVERIFY(isHighlighted(right));
        QCOMPARE(f.view->hover, right);
    }

    void highlightLastsAsLongAsTheEnlargedAtomIsUnderThePointer()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.move({196, 200});
        QVERIFY(!f.view->hover);
        f.move({200, 200});
        QVERIFY(isHighlighted(atom));
        f.move({196, 200});
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isHighlighted(atom));
        f.move({195, 200});
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(atom));
        f.move({196, 200});
        QVERIFY(!f.view->hover);
    }

    void hiddenAtomIsNotHovered()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        atom->hide();
        f.move({200, 200});
        QVERIFY(f.view->hover != atom);
        QVERIFY(isPlain(atom));
    }

    void hoverDoesNotNeedAPressedButton()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* atom = f.atom(200, 200);
        f.move({200, 200});
        QVERIFY(isHighlighted(atom));
        f.move({300, 300});
        f.press({300, 300});
        f.move({200, 200});
        QVERIFY(isHighlighted(atom));
        f.release({200, 200});
    }

    void hoverAfterScrolling()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(900, 1000);
        f.scrollTo({650, 777});
        f.move({900, 1000});
        QCOMPARE(f.view->hover, atom);
        f.move({900 - 650, 1000 - 777});
        QVERIFY(!f.view->hover);
    }

    void hoverInTheFarCornerOfTheCanvas()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(1995, 1990);
        f.scrollTo({f.view->horizontalScrollBar()->maximum(), f.view->verticalScrollBar()->maximum()});
        f.move({1995, 1990});
        QCOMPARE(f.view->hover, atom);
    }

    void startHoverOnEmptyCanvasKeepsWhatIsHovered()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.view->startHover({200, 200});
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isHighlighted(atom));
        f.view->startHover({400, 400});
        QCOMPARE(f.view->hover, atom);
        f.view->stopHover();
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(atom));
    }

    void stopHoverForgetsEveryKindOfItem()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        KytBondLine* line = f.bond(atom, f.atom(300, 200))->bond1;
        KytStereoBond* wedge = f.bond(f.atom(200, 300), f.atom(300, 300), {KYTBT_StereoDown})->stereoBond;
        const std::pair<QPoint, QCanvasItem*> items[] = {{{200, 200}, atom},
                                                         {{250, 200}, line},
                                                         {{270, 300}, wedge},
                                                         {ViewFixture::onLabel(atom), atom->canvasSymbol}};
        for (const auto& [p, item] : items) {
            f.view->startHover(p);
            QCOMPARE(f.view->hover, item);
            f.view->stopHover();
            QVERIFY(!f.view->hover);
        }
        QVERIFY(isPlain(atom));
        QVERIFY(isPlain(line));
    }

    void stopHoverWithoutAHoverDoesNothing()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.view->stopHover();
        f.view->stopHover();
        QVERIFY(!f.view->hover);
        QVERIFY(isPlain(atom));
    }

    void startHoverLeavesTheRubberBandAsItWas()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->startHover({200, 200});
        QVERIFY(!tempBond->isVisible());
        f.click({200, 200});
        f.move({260, 200});
        f.view->stopHover();
        f.view->startHover({230, 200});
        QVERIFY(tempBond->isVisible());
        QVERIFY(!f.view->hover);
    }

    void atomUnderTheRubberBandIsHighlighted_data()
    {
        addModeRows(std::array{KYTVS_drawSimpleBond, KYTVS_drawDashedBond, KYTVS_drawStereoUp, KYTVS_drawStereoDown,
                               KYTVS_zigzag});
    }

    void atomUnderTheRubberBandIsHighlighted()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(300, 240);
        f.click({200, 200});
        f.move({300, 240});
        QVERIFY(tempBond->isVisible());
        QCOMPARE(tempBond->endPoint(), QPoint(300, 240));
        QCOMPARE(f.view->hover, atom);
        QVERIFY(isHighlighted(atom));
        f.move({300, 280});
        QVERIFY(isPlain(atom));
    }

    void lineUnderTheRubberBandIsHighlighted()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytBondLine* line = f.bond(f.atom(300, 150), f.atom(300, 300))->bond1;
        f.click({200, 200});
        f.move({300, 220});
        QCOMPARE(f.view->hover, line);
        QVERIFY(isHighlighted(line));
    }

    void rubberBandAloneIsNeverHovered_data() { addModeRows(everyMode); }

    void rubberBandAloneIsNeverHovered()
    {
        QFETCH(int, mode);
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({400, 300});
        const QPen pen = tempBond->pen();
        f.view->canvasState = static_cast<KytViewState>(mode);
        for (const QPoint p : {QPoint(300, 250), QPoint(320, 260), QPoint(400, 300)}) {
            f.move(p);
            QVERIFY(!f.view->hover);
            QCOMPARE(tempBond->pen(), pen);
            QVERIFY(tempBond->isVisible());
        }
    }

    void rubberBandAtTheCanvasCornerIsNeverHovered()
    {
        for (const KytViewState mode : everyMode) {
            ViewFixture f(KYTVS_drawSimpleBond);
            f.press({200, 200}); // the band lies at (0, 0) until the next move
            f.release({200, 200});
            f.view->canvasState = mode;
            f.view->startHover({1, 1});
            QVERIFY(!f.view->hover);
            f.move({0, 0});
            QVERIFY(!f.view->hover);
            QVERIFY(tempBond->isVisible());
        }
    }

    void rubberBandStaysVisibleWhileHovering()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(300, 240);
        f.click({200, 200});
        for (const QPoint p : {QPoint(300, 240), QPoint(310, 300), QPoint(200, 200), QPoint(300, 240)}) {
            f.move(p);
            QVERIFY(tempBond->isVisible());
        }
    }

    // Items, canvas and document that go away

    void hoveredItemIsForgottenWhenItGoes_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<Destroyer>("destroy");

        const std::pair<const char*, QPoint> places[] = {
            {"atom", {200, 200}}, {"line", {250, 200}}, {"wedge", {200, 270}}, {"label", {0, 0}}};
        for (const auto& [what, place] : places)
            for (const auto& [how, destroy] : waysToGo)
                QTest::addRow("%s with %s", what, how) << place << destroy;
    }

    void hoveredItemIsForgottenWhenItGoes()
    {
        QFETCH(QPoint, pointer);
        QFETCH(Destroyer, destroy);

        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.bond(atom, f.atom(300, 200));
        f.bond(atom, f.atom(200, 300), {KYTBT_StereoUp});
        if (pointer == QPoint(0, 0))
            pointer = QPoint(static_cast<int>(atom->canvasSymbol->boundingRect().right()) - 2, 209);
        f.move(pointer);
        QVERIFY(f.view->hover);
        destroy(f, atom);
        QVERIFY(!f.view->hover);
        f.move(pointer);
        QVERIFY(!f.view->hover);
        f.useEveryModeAt({400, 400});
    }

    void hoveredLineIsForgottenWhenItsBondGoes()
    {
        ViewFixture f;
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200));
        f.move({250, 200});
        QCOMPARE(f.view->hover, bond->bond1);
        delete bond;
        QVERIFY(!f.view->hover);
        f.move({251, 200});
        QVERIFY(!f.view->hover);
    }

    void hoveredLineOfADoubleBondIsForgottenAlone()
    {
        ViewFixture f;
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200), {KYTBT_SingleBond, KYTBT_SingleBond});
        f.move({250, 192});
        QCOMPARE(f.view->hover, bond->bond2);
        delete bond->bond2;
        QVERIFY(!f.view->hover);
        f.move({250, 200});
        QCOMPARE(f.view->hover, bond->bond1);
        QVERIFY(isHighlighted(bond->bond1));
    }

    void everyGestureWithoutACanvas()
    {
        ViewFixture f;
        f.bond(f.atom(200, 200), f.atom(300, 200));
        delete f.canvas();
        QVERIFY(!f.view->canvas());
        for (const KytViewState mode : everyMode) {
            f.view->canvasState = mode;
            f.rightClick({200, 200});
        }
        f.useEveryModeAt({200, 200});
        QVERIFY(!f.view->hover);
        QVERIFY(!f.view->moving);
        QVERIFY(!f.view->lastAtom);
    }

    void everyGestureWithoutADocument()
    {
        ViewFixture f;
        f.bond(f.atom(200, 200), f.atom(300, 200));
        f.bond(f.atom(200, 300), f.atom(300, 300), {KYTBT_StereoUp});
        f.view->canvasState = KYTVS_drawSimpleBond;
        f.click({400, 200});
        delete f.doc;
        f.move({450, 200});
        f.useEveryModeAt({200, 200});
        f.useEveryModeAt({450, 200});
        f.view->canvasState = KYTVS_view;
        f.move({600, 20});
        QVERIFY(!f.view->hover);
        QVERIFY(!f.view->moving);
    }

    void halfDrawnBondOutlivesNothing_data()
    {
        QTest::addColumn<QByteArray>("order");
        for (const char* order : {"view canvas doc", "view doc canvas", "canvas view doc", "canvas doc view",
                                  "doc view canvas", "doc canvas view"})
            QTest::newRow(order) << QByteArray(order);
    }

    void halfDrawnBondOutlivesNothing()
    {
        QFETCH(QByteArray, order);
        ViewFixture f(KYTVS_drawStereoUp);
        f.click({200, 200});
        f.click({260, 220}, Qt::ControlModifier);
        f.move({300, 300});
        QVERIFY(tempBond->isVisible());
        for (const QByteArray& part : order.split(' ')) {
            if (part == "view")
                delete f.view;
            else if (part == "canvas")
                delete f.canvas();
            else
                delete f.doc;
            QCoreApplication::processEvents();
        }
        QVERIFY(!tempBond->canvas());
    }

    // Depth

    void depthOfANewAtomInEveryMode_data() { addModeRows(everyMode); }

    void depthOfANewAtomInEveryMode()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.view->lastAtom = f.atom(200, 200, 2.5F);
        f.view->newx = 230;
        f.view->newy = 240;
        const double rise = 50 * std::sqrt(3.0);
        double expected = 2.5;
        if (mode == KYTVS_drawStereoUp)
            expected += rise;
        else if (mode == KYTVS_drawStereoDown)
            expected -= rise;
        NEAR(f.view->getZplane(), expected, 1e-5);
    }

    void depthOfAWedgeOfTenPixels()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        f.view->lastAtom = f.atom(200, 200);
        f.view->newx = 210;
        f.view->newy = 200;
        EXACTLY(f.view->getZplane(), 17.3205081F);
        f.view->canvasState = KYTVS_drawStereoDown;
        EXACTLY(f.view->getZplane(), -17.3205081F);
        f.view->canvasState = KYTVS_drawSimpleBond;
        EXACTLY(f.view->getZplane(), 0.0F);
    }

    void depthOfAWedgeOfThirtyPixels()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        f.view->lastAtom = f.atom(200, 200);
        f.view->newx = 200;
        f.view->newy = 170;
        EXACTLY(f.view->getZplane(), 51.961525F);
    }

    void depthStartsAtTheStartAtomsDepth()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->lastAtom = f.atom(200, 200, -7.75F);
        EXACTLY(f.view->getZplane(), -7.75F);
        f.view->canvasState = KYTVS_zigzag;
        EXACTLY(f.view->getZplane(), -7.75F);
    }

    void depthOfAWedgeOfLengthZero()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        f.view->lastAtom = f.atom(200, 200, 3);
        f.view->newx = 200;
        f.view->newy = 200;
        EXACTLY(f.view->getZplane(), 3.0F);
        f.view->canvasState = KYTVS_drawStereoDown;
        EXACTLY(f.view->getZplane(), 3.0F);
    }

    void depthWithoutAStartAtomIsZero()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        f.view->newx = 100;
        f.view->newy = 100;
        EXACTLY(f.view->getZplane(), 0.0F);
    }
};

QTEST_MAIN(test_kytstudioview)
#include "test_kytstudioview.moc"
