#include "ViewFixture.h"

#include <QWindow>

namespace {

QString report(const char* length, const char* angle)
{
    return QStringLiteral("Bond Length: %1  Bond Angle: %2")
        .arg(QString::fromLatin1(length), QString::fromLatin1(angle));
}

/// What the status bar was told last.
QString last(const ViewFixture& f)
{
    return f.texts.isEmpty() ? QStringLiteral("nothing") : f.texts.last();
}

} // namespace

class test_kytstudioview_bond : public QObject {
    Q_OBJECT

private slots:
    // The end point and the report

    void rubberBandFollowsThePointer_data() { addModeRows(bondModes); }

    void rubberBandFollowsThePointer()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.click({200, 200});
        for (const QPoint p : {QPoint(260, 230), QPoint(100, 90), QPoint(201, 200), QPoint(400, 400)}) {
            f.move(p);
            QVERIFY(tempBond->isVisible());
            QCOMPARE(lineOf(tempBond), QLine(QPoint(200, 200), p));
            EXACTLY(f.view->newx, static_cast<float>(p.x()));
            EXACTLY(f.view->newy, static_cast<float>(p.y()));
        }
        QCOMPARE(placeOf(tempBond), QPointF(0, 0));
    }

    void reportInEveryDirection_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QString>("text");

        QTest::newRow("right") << QPoint(300, 200) << report("100.000", "0.00");
        QTest::newRow("right and up") << QPoint(240, 170) << report("50.000", "36.87");
        QTest::newRow("up") << QPoint(200, 100) << report("100.000", "90.00");
        QTest::newRow("left and up") << QPoint(160, 170) << report("50.000", "143.13");
        QTest::newRow("left") << QPoint(100, 200) << report("100.000", "180.00");
        QTest::newRow("left and down") << QPoint(160, 230) << report("50.000", "216.87");
        QTest::newRow("down") << QPoint(200, 300) << report("100.000", "270.00");
        QTest::newRow("right and down") << QPoint(240, 230) << report("50.000", "323.13");
        QTest::newRow("diagonal") << QPoint(210, 190) << report("14.142", "45.00");
        QTest::newRow("one pixel") << QPoint(201, 201) << report("1.414", "315.00");
        QTest::newRow("a hair below the horizontal") << QPoint(500, 201) << report("300.002", "359.81");
    }

    void reportInEveryDirection()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QString, text);
        for (const KytViewState mode : {KYTVS_drawSimpleBond, KYTVS_drawDashedBond}) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.texts.clear();
            f.move(pointer);
            QCOMPARE(f.texts, QStringList{text});
        }
    }

    void reportOfAWedgeIsTwiceAsLong()
    {
        for (const KytViewState mode : wedgeModes) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.move({300, 200});
            QCOMPARE(last(f), report("200.000", "0.00"));
            f.move({240, 170});
            QCOMPARE(last(f), report("100.000", "36.87"));
        }
    }

    void reportOfALengthZeroReads270Degrees()
    {
        for (const KytViewState mode : bondModes) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.move({200, 200});
            QCOMPARE(last(f), report("0.000", "270.00"));
        }
    }

    void reportComesWithEveryMove()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        QVERIFY(f.texts.isEmpty());
        f.move({210, 200});
        f.move({220, 200});
        f.move({220, 200});
        QCOMPARE(f.texts, (QStringList{report("10.000", "0.00"), report("20.000", "0.00"), report("20.000", "0.00")}));
        QVERIFY(f.counts.isEmpty());
    }

    void noReportWithoutAGesture_data() { addModeRows(everyMode); }

    void noReportWithoutAGesture()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.atom(200, 200);
        f.move({200, 200});
        f.move({300, 300});
        QVERIFY(f.texts.isEmpty());
        QVERIFY(f.counts.isEmpty());
        QVERIFY(!tempBond->isVisible());
        EXACTLY(f.view->newx, 0.0F);
    }

    void noReportInOtherModes_data() { addModeRows(modesThatDrawNothing); }

    void noReportInOtherModes()
    {
        QFETCH(int, mode);
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({250, 220});
        f.texts.clear();
        f.view->canvasState = static_cast<KytViewState>(mode);
        f.move({300, 100});
        QVERIFY(f.texts.isEmpty());
        QVERIFY(f.counts.isEmpty());
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 250, 220));
        QVERIFY(tempBond->isVisible());
        EXACTLY(f.view->newx, 250.0F);
        EXACTLY(f.view->newy, 220.0F);
    }

    void reportFollowsTheModeOfTheMoment()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({260, 200});
        f.view->canvasState = KYTVS_drawStereoDown;
        f.move({260, 200});
        f.view->canvasState = KYTVS_drawDashedBond;
        f.move({260, 200});
        QCOMPARE(f.texts, (QStringList{report("60.000", "0.00"), report("120.000", "0.00"), report("60.000", "0.00")}));
        f.view->canvasState = KYTVS_zigzag;
        f.move({260, 200});
        QCOMPARE(f.texts.size(), 3);
        QCOMPARE(f.counts, QList<int>{3});
    }

    void reportWithAHeldButton()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.press({200, 200});
        f.move({230, 240});
        QCOMPARE(last(f), report("50.000", "306.87"));
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 230, 240));
        f.release({230, 240});
        QCOMPARE(f.view->isLastAtom, 1);
    }

    void reportAfterScrolling()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.scrollTo({700, 400});
        f.click({900, 600});
        f.move({940, 570});
        QCOMPARE(last(f), report("50.000", "36.87"));
        QCOMPARE(lineOf(tempBond), QLine(900, 600, 940, 570));
    }

    void reportIsTheSameInEveryLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({240, 170});
        QLocale::setDefault(before);
        QCOMPARE(last(f), report("50.000", "36.87"));
    }

    // Fixed length

    void fixedLengthShortensALongBond()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({300, 200});
        QCOMPARE(last(f), report("30.000", "0.00"));
        EXACTLY(f.view->newx, 230.0F);
        EXACTLY(f.view->newy, 200.0F);
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 230, 200));
    }

    void fixedLengthLengthensAShortBond()
    {
        ViewFixture f(KYTVS_drawDashedBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({205, 200});
        QCOMPARE(last(f), report("30.000", "0.00"));
        EXACTLY(f.view->newx, 230.0F);
    }

    void fixedLengthOfAWedgeReportsSixty()
    {
        for (const KytViewState mode : wedgeModes) {
            ViewFixture f(mode);
            f.view->fixedLengthFlag = 1;
            f.click({200, 200});
            f.move({300, 200});
            QCOMPARE(last(f), report("60.000", "0.00"));
            EXACTLY(f.view->newx, 230.0F);
        }
    }

    void fixedLengthInASlantedDirection()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({240, 170});
        NEAR(f.view->newx, 224, 1e-4);
        NEAR(f.view->newy, 182, 1e-4);
        QCOMPARE(last(f), report("30.000", "36.87"));
        f.move({160, 230});
        NEAR(f.view->newx, 176, 1e-4);
        NEAR(f.view->newy, 218, 1e-4);
        QCOMPARE(last(f), report("30.000", "216.87"));
    }

    void fixedLengthStraightBelowEndsAbove()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({200, 300});
        NEAR(f.view->newx, 200, 1e-4);
        NEAR(f.view->newy, 170, 1e-4);
        QCOMPARE(last(f), report("30.000", "90.00"));
        f.press({200, 300});
        f.release({200, 300});
        QCOMPARE(f.atoms().size(), 2);
        STANDS_AT(f.atoms().last(), 200, 170);
    }

    void fixedLengthAtTheStartAtomPointsUp()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({200, 200});
        NEAR(f.view->newx, 200, 1e-4);
        NEAR(f.view->newy, 170, 1e-4);
    }

    void fixedLengthOffFollowsThePointerAgain()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({300, 200});
        f.view->fixedLengthFlag = 0;
        f.move({300, 200});
        QCOMPARE(last(f), report("100.000", "0.00"));
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 200));
    }

    // Fixed angle

    void fixedAngleSnapsToSteps_data()
    {
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QString>("text");

        QTest::newRow("3 degrees, none") << QPoint(300, 195) << report("100.125", "0.00");
        QTest::newRow("14 degrees, one step") << QPoint(300, 175) << report("103.078", "10.00");
        QTest::newRow("16 degrees, two steps") << QPoint(300, 171) << report("104.120", "20.00");
        QTest::newRow("14 degrees below, 35 steps") << QPoint(300, 225) << report("103.078", "350.00");
        QTest::newRow("16 degrees below, 34 steps") << QPoint(300, 229) << report("104.120", "340.00");
        QTest::newRow("straight up, nine steps") << QPoint(200, 100) << report("100.000", "90.00");
        QTest::newRow("straight down counts as up") << QPoint(200, 300) << report("100.000", "90.00");
        QTest::newRow("left, eighteen steps") << QPoint(100, 200) << report("100.000", "180.00");
        QTest::newRow("left and up, 14 steps") << QPoint(120, 140) << report("100.000", "140.00");
        QTest::newRow("left and down, 22 steps") << QPoint(120, 260) << report("100.000", "220.00");
    }

    void fixedAngleSnapsToSteps()
    {
        QFETCH(QPoint, pointer);
        QFETCH(QString, text);
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move(pointer);
        QCOMPARE(last(f), text);
    }

    void fixedAngleKeepsThePointersDistance()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 175});
        NEAR(f.view->newx, 301.511658, 1e-4);
        NEAR(f.view->newy, 182.100754, 1e-4);
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 301, 182));
        f.move({300, 229});
        NEAR(f.view->newx, 297.840912, 1e-4);
        NEAR(f.view->newy, 235.611200, 1e-4);
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 297, 235));
    }

    void fixedAngleAHairBelowTheHorizontalReads360()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 201});
        QCOMPARE(last(f), report("100.005", "360.00"));
        QVERIFY(f.view->newy > 200.0F);
        NEAR(f.view->newy, 200, 1e-4);
    }

    void fixedAngleExactlyToTheRightReadsZero()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 200});
        QCOMPARE(last(f), report("100.000", "0.00"));
        f.move({300, 199}); // and a hair above
        QCOMPARE(last(f), report("100.005", "0.00"));
    }

    void fixedAngleCountsFromTheFirstNeighbour_data()
    {
        QTest::addColumn<QPoint>("neighbour");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QString>("angle");

        QTest::newRow("short of a slanted neighbour") << QPoint(300, 100) << QPoint(300, 164) << "15.00";
        QTest::newRow("beyond a slanted neighbour") << QPoint(300, 100) << QPoint(230, 108) << "75.00";
        QTest::newRow("on the neighbour") << QPoint(300, 100) << QPoint(250, 151) << "45.00";
        QTest::newRow("opposite a slanted neighbour") << QPoint(300, 100) << QPoint(120, 281) << "225.00";
        QTest::newRow("neighbour below the horizontal") << QPoint(300, 300) << QPoint(300, 199) << "5.00";
        QTest::newRow("neighbour straight below counts as above") << QPoint(200, 300) << QPoint(300, 175) << "10.00";
    }

    void fixedAngleCountsFromTheFirstNeighbour()
    {
        QFETCH(QPoint, neighbour);
        QFETCH(QPoint, pointer);
        QFETCH(QString, angle);
        ViewFixture f(KYTVS_drawSimpleBond);
        f.bond(f.atom(200, 200), f.atom(neighbour.x(), neighbour.y()));
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move(pointer);
        QVERIFY2(last(f).endsWith(QStringLiteral("Bond Angle: ") + angle), qPrintable(last(f)));
    }

    void fixedAngleCountsFromTheIncomingBondFirst()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        f.bond(start, f.atom(300, 200));
        f.bond(f.atom(300, 100), start);
        f.bond(f.atom(100, 210), start);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 164});
        QVERIFY2(last(f).endsWith(QStringLiteral("15.00")), qPrintable(last(f)));
    }

    void fixedAngleCountsFromTheOutgoingBondElse()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        f.bond(start, f.atom(300, 100));
        f.bond(start, f.atom(300, 200));
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.move({300, 164});
        QVERIFY2(last(f).endsWith(QStringLiteral("15.00")), qPrintable(last(f)));
    }

    void fixedAngleTogetherWithFixedLength()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({300, 171});
        QCOMPARE(last(f), report("30.000", "20.00"));
        NEAR(f.view->newx, 200 + 30 * std::cos(M_PI / 9), 1e-4);
        NEAR(f.view->newy, 200 - 30 * std::sin(M_PI / 9), 1e-4);
        f.press({300, 171});
        f.release({300, 171});
        STANDS_AT(f.atoms().last(), 200 + 30 * std::cos(M_PI / 9), 200 - 30 * std::sin(M_PI / 9));
    }

    void fixedAngleWithAnotherStep()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.view->fixedAngleValue = static_cast<float>(M_PI / 4);
        f.click({200, 200});
        f.move({300, 140});
        QCOMPARE(last(f), report("116.619", "45.00"));
    }

    void pointsAreTruncatedFromTheStoredFloats()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.move({300, 201}); // the exact end lies a trace short of 230
        EXACTLY(f.view->newx, 230.0F);
        QCOMPARE(tempBond->endPoint(), QPoint(230, 200));
    }

    // The second click

    void secondClickDrawsABond_data() { addModeRows(bondModes); }

    void secondClickDrawsABond()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({260, 230});
        QCOMPARE(f.atoms().size(), 2);
        KytAtom* end = f.atoms().last();
        QCOMPARE(placeOf(end), QPointF(260, 230));
        QCOMPARE(placeOf(end->canvasSymbol), QPointF(260, 230));
        QVERIFY(end->isVisible());
        QCOMPARE(end->getSymbol(), QStringLiteral("C"));
        QCOMPARE(start->getOutList()->size(), 1);
        QCOMPARE(start->getInList()->size(), 0);
        KytBond* bond = start->getOutList()->first();
        QCOMPARE(bond->getFromAtom(), start);
        QCOMPARE(bond->getToAtom(), end);
        QCOMPARE(*end->getInList(), QList<KytBond*>{bond});
        QCOMPARE(bond->bondCount, 1);
        QCOMPARE(bond->doc, f.doc.data());
        const bool wedge = mode == KYTVS_drawStereoUp || mode == KYTVS_drawStereoDown;
        QCOMPARE(f.lines().size(), wedge ? 0 : 1);
        QCOMPARE(f.wedges().size(), wedge ? 1 : 0);
        if (wedge) {
            QCOMPARE(static_cast<int>(bond->bond1Type),
                     static_cast<int>(mode == KYTVS_drawStereoUp ? KYTBT_StereoUp : KYTBT_StereoDown));
            QCOMPARE(bond->stereoBond->getPointsArray()->point(0), QPoint(200, 200));
            EXACTLY(bond->stereoBond->getAngle(), 60.0F);
        } else {
            QCOMPARE(lineOf(bond->bond1), QLine(200, 200, 260, 230));
            QCOMPARE(bond->bond1->isDashed, mode == KYTVS_drawDashedBond);
        }
    }

    void secondClickEndsTheGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.click({260, 230});
        QCOMPARE(f.gesture(), "none");
        QVERIFY(!f.view->moving);
        QCOMPARE(f.view->flag, false);
        f.texts.clear();
        f.move({300, 300});
        QVERIFY(f.texts.isEmpty());
        QVERIFY(!tempBond->isVisible());
    }

    void secondClickPutsTheAtomAtTheFixedEndPoint()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.click({300, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(230, 200));
        NEAR(f.atoms().first()->getOutList()->first()->bondlength, 30, 1e-4);
    }

    void secondClickPutsTheAtomWhereTheRubberBandEnds()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        f.click({200, 200});
        f.click({300, 175});
        KytAtom* end = f.atoms().last();
        EXACTLY(end->x(), static_cast<double>(f.view->newx));
        EXACTLY(end->y(), static_cast<double>(f.view->newy));
        STANDS_AT(end, 301.511658, 182.100754);
    }

    void secondClickWithoutAMoveUsesTheLastEndPoint()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({260, 230});
        f.press({262, 231});
        f.release({262, 231});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(260, 230));
    }

    void newAtomIsNotLocked()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(200, 200, 0, true);
        f.click({200, 200});
        f.click({260, 230});
        QVERIFY(!f.atoms().last()->locked);
    }

    void newAtomTakesTheStartAtomsDepth()
    {
        for (const KytViewState mode : {KYTVS_drawSimpleBond, KYTVS_drawDashedBond}) {
            ViewFixture f(mode);
            f.atom(200, 200, -12.5F);
            f.click({200, 200});
            f.click({260, 230});
            EXACTLY(f.atoms().last()->getAtomZ(), -12.5F);
        }
    }

    void newAtomOfAWedgeLiesInFrontOrBehind()
    {
        for (const KytViewState mode : wedgeModes) {
            ViewFixture f(mode);
            f.atom(200, 200, 4);
            f.click({200, 200});
            f.click({230, 240});
            const double rise = 50 * std::sqrt(3.0);
            NEAR(f.atoms().last()->getAtomZ(), mode == KYTVS_drawStereoUp ? 4 + rise : 4 - rise, 1e-5);
        }
    }

    void newAtomOfAWedgeOfFixedLength()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.click({300, 200});
        QCOMPARE(last(f), report("60.000", "0.00"));
        EXACTLY(f.atoms().last()->getAtomZ(), 51.961525F);
    }

    void newAtomBelongsToTheStartAtomsMolecule()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        KytAtom* neighbour = f.atom(100, 200);
        f.bond(start, neighbour);
        KytMolecule* molecule = start->getMolecule();
        f.click({200, 200});
        f.click({260, 230});
        QCOMPARE(start->getMolecule(), molecule);
        QCOMPARE(f.atoms().last()->getMolecule(), molecule);
        QCOMPARE(neighbour->getMolecule(), molecule);
    }

    void newAtomDoesNotSnapToLabelsOrLines()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* labelled = f.atom(300, 300);
        f.bond(f.atom(400, 100), f.atom(400, 300));
        f.click({200, 200});
        f.click({400, 200});
        QCOMPARE(placeOf(f.atoms().last()), QPointF(400, 200));
        QCOMPARE(f.lines().size(), 2);

        const QPoint onLabel = ViewFixture::onLabel(labelled);
        f.click({200, 200});
        f.click(onLabel);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(onLabel));
        QCOMPARE(labelled->getBondCount(), 0);
    }

    // Existing atoms as targets

    void secondClickOnAnAtomBondsToIt_data() { addModeRows(std::array{KYTVS_drawSimpleBond, KYTVS_drawDashedBond}); }

    void secondClickOnAnAtomBondsToIt()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* target = f.atom(300, 240);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({301, 239});
        QCOMPARE(f.atoms().size(), 2);
        KytBond* bond = start->isConnected(target);
        QVERIFY(bond);
        QCOMPARE(bond->getFromAtom(), start);
        QCOMPARE(bond->getToAtom(), target);
        QCOMPARE(lineOf(bond->bond1), QLine(200, 200, 300, 240));
        QCOMPARE(bond->bond1->isDashed, mode == KYTVS_drawDashedBond);
        QCOMPARE(placeOf(target), QPointF(300, 240));
        QCOMPARE(start->getMolecule(), target->getMolecule());
        QCOMPARE(f.view->isLastAtom, 0);
    }

    void secondClickOnAnAtomOfAnotherMoleculeJoinsTheMolecules()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* a = f.atom(100, 100);
        KytAtom* b = f.atom(200, 100);
        KytAtom* c = f.atom(100, 300);
        KytAtom* d = f.atom(200, 300);
        f.bond(a, b);
        f.bond(c, d);
        QVERIFY(a->getMolecule() != c->getMolecule());
        KytMolecule* first = b->getMolecule();
        f.click({200, 100});
        f.click({200, 300});
        QCOMPARE(f.atoms().size(), 4);
        for (KytAtom* atom : {a, b, c, d})
            QCOMPARE(atom->getMolecule(), first);
    }

    void secondClickOnALockedAtomBondsToIt()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* locked = f.atom(300, 240, 0, true);
        f.click({200, 200});
        f.click({300, 240});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(locked->locked);
        QCOMPARE(locked->getBondCount(), 1);
    }

    void secondClickOnABondedAtomAddsALine()
    {
        ViewFixture f(KYTVS_drawDashedBond);
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(300, 200);
        KytBond* bond = f.bond(start, end);
        f.click({200, 200});
        f.click({300, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(start->getBondCount(), 1);
        QCOMPARE(start->isConnected(end), bond);
        QCOMPARE(bond->bondCount, 2);
        QVERIFY(!bond->bond1->isDashed);
        QVERIFY(bond->bond2->isDashed);
        QCOMPARE(lineOf(bond->bond2), QLine(200, 194, 300, 194));
    }

    void secondClickOnABondedAtomAgainstTheDirectionAddsALine()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(300, 200);
        KytBond* bond = f.bond(start, end);
        f.click({300, 200});
        f.click({200, 200});
        QCOMPARE(bond->bondCount, 2);
        QCOMPARE(end->getBondCount(), 1);
        QCOMPARE(bond->getFromAtom(), start);
    }

    void fourthLineIsNotAdded()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        f.atom(300, 200);
        for (int i = 0; i < 5; ++i) {
            f.click({200, 200});
            f.click({300, 200});
            QCOMPARE(f.view->isLastAtom, 0);
        }
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(start->getBondCount(), 1);
        QCOMPARE(start->getOutList()->first()->bondCount, 3);
        QCOMPARE(f.lines().size(), 3);
    }

    void lineIsNotAddedToAWedge()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(300, 200);
        KytBond* bond = f.bond(start, end, {KYTBT_StereoUp});
        f.click({200, 200});
        f.click({300, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(bond->bondCount, 1);
        QVERIFY(f.lines().isEmpty());
        QCOMPARE(f.wedges().size(), 1);
    }

    void wedgeIsNotAddedToALine()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(230, 200);
        KytBond* bond = f.bond(start, end);
        end->setAtomZ(51.961525F); // where the wedge would end
        f.click({200, 200});
        f.click({230, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(bond->bondCount, 1);
        QVERIFY(f.wedges().isEmpty());
        QCOMPARE(start->getBondCount(), 1);
    }

    void atomAtTheFixedEndPointIsTheTarget()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        KytAtom* target = f.atom(230, 200);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({300, 200});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(start->isConnected(target));
    }

    void atomAtThePointerGoesBeforeTheOneAtTheEndPoint()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        KytAtom* atEnd = f.atom(230, 200);
        KytAtom* atPointer = f.atom(300, 200);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({300, 200});
        QCOMPARE(f.atoms().size(), 3);
        QVERIFY(start->isConnected(atPointer));
        QVERIFY(!start->isConnected(atEnd));
        NEAR(start->getOutList()->first()->bondlength, 100, 1e-4);
    }

    void endPointIsSearchedInWholePixels()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        KytAtom* target = f.atom(298, 182); // reaches pixel 301 to the right; the band ends at 301.51
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({300, 175});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(start->isConnected(target));
    }

    void atomInAnotherDepthIsNoTarget()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* deep = f.atom(300, 240, 0.001F);
        f.click({200, 200});
        f.click({300, 240});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(deep->getBondCount(), 0);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(300, 240));
        EXACTLY(f.atoms().last()->getAtomZ(), 0.0F);
    }

    void wedgeDoesNotBondToAnAtomInTheStartAtomsPlane_data() { addModeRows(wedgeModes); }

    void wedgeDoesNotBondToAnAtomInTheStartAtomsPlane()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* flat = f.atom(300, 240);
        f.click({200, 200});
        f.click({300, 240});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(flat->getBondCount(), 0);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(300, 240));
        QCOMPARE(f.wedges().size(), 1);
    }

    void wedgeBondsToAnAtomInItsPlane_data() { addModeRows(wedgeModes); }

    void wedgeBondsToAnAtomInItsPlane()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        const float depth = mode == KYTVS_drawStereoUp ? 51.961525F : -51.961525F;
        KytAtom* target = f.atom(230, 200, depth);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({230, 200});
        QCOMPARE(f.atoms().size(), 2);
        KytBond* bond = start->isConnected(target);
        QVERIFY(bond);
        QCOMPARE(bond->getToAtom(), target);
        QCOMPARE(f.wedges().size(), 1);
        QCOMPARE(start->getMolecule(), target->getMolecule());
        EXACTLY(target->getAtomZ(), depth);
    }

    void wedgePlaneIsMetExactly()
    {
        ViewFixture f(KYTVS_drawStereoUp);
        KytAtom* almost = f.atom(230, 200, std::nextafter(51.961525F, 100.0F));
        f.click({200, 200});
        f.click({230, 200});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(almost->getBondCount(), 0);
    }

    void deeperAtomUnderThePointerDoesNotHideTheTarget()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* target = f.atom(300, 240);
        KytAtom* deep = f.atom(300, 240, 8);
        f.click({200, 200});
        f.click({300, 240});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(target->getBondCount(), 1);
        QCOMPARE(deep->getBondCount(), 0);
    }

    void ofTwoTargetsTheUpperOneIsTaken()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* below = f.atom(300, 240);
        KytAtom* above = f.atom(300, 240);
        f.click({200, 200});
        f.click({300, 240});
        QCOMPARE(above->getBondCount(), 1);
        QCOMPARE(below->getBondCount(), 0);
    }

    void ringIsClosedOnItsFirstAtom()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        const QPoint corners[] = {{200, 200}, {300, 200}, {250, 290}};
        f.click(corners[0], Qt::ControlModifier);
        f.click(corners[1], Qt::ControlModifier);
        f.click(corners[2], Qt::ControlModifier);
        f.click(corners[0]);
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.lines().size(), 3);
        for (KytAtom* atom : f.atoms()) {
            QCOMPARE(atom->getBondCount(), 2);
            QCOMPARE(atom->getMolecule(), f.atoms().first()->getMolecule());
        }
        QCOMPARE(f.view->isLastAtom, 0);
    }

    // The start atom under the pointer

    void secondClickOnTheStartAtomDrawsNothing_data() { addModeRows(bondModes); }

    void secondClickOnTheStartAtomDrawsNothing()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.click({200, 200});
        f.move({300, 200});
        f.click({200, 200});
        QCOMPARE(f.atoms().size(), 1);
        QVERIFY(f.lines().isEmpty());
        QVERIFY(f.wedges().isEmpty());
        QCOMPARE(f.gesture(), "none");
        QCOMPARE(f.view->flag, false);
    }

    void secondClickOnTheStartAtomWithControlStaysArmed()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({201, 200}, Qt::ControlModifier);
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.gesture(), "begun");
        QCOMPARE(f.view->lastAtom, start);
        QCOMPARE(f.view->flag, false);
        f.click({260, 230});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(start->getBondCount(), 1);
    }

    void startAtomUnderThePointerPreventsANewAtom()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        f.click({200, 200});
        f.click({202, 200}); // on the start atom, but the band ends 30 pixels off
        QCOMPARE(tempBond->endPoint(), QPoint(230, 200));
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->isLastAtom, 0);
    }

    void startAtomUnderThePointerDoesNotHideATargetAtTheEndPoint()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        KytAtom* target = f.atom(230, 200);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.click({202, 200});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(start->isConnected(target));
        QCOMPARE(f.view->flag, false);
    }

    void startAtomDoesNotHideTheAtomBelowIt()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* below = f.atom(202, 200);
        KytAtom* start = f.atom(200, 200);
        f.click({200, 200});
        QCOMPARE(f.view->lastAtom, start);
        f.click({201, 200});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(start->isConnected(below));
    }

    void searchStartsAfreshEveryTime()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.click({200, 200}); // meets the start atom
        f.click({300, 200});
        f.click({360, 200}); // and this does not
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.lines().size(), 1);
    }

    void doubleClickOnEmptyCanvasLeavesOneAtom()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        QTest::mouseDClick(f.view->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                           f.view->viewport()->mapTo(f.view.data(), QPoint(200, 200)));
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(placeOf(f.atoms().first()), QPointF(200, 200));
        QCOMPARE(f.gesture(), "none");
    }

    // Control

    void controlDrawsAPolyline()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        const QList<QPoint> corners{{100, 200}, {200, 150}, {300, 220}, {400, 160}};
        f.click(corners[0]);
        for (int i = 1; i < 4; ++i) {
            f.click(corners[i], Qt::ControlModifier);
            QCOMPARE(f.atoms().size(), i + 1);
            QCOMPARE(f.view->lastAtom, f.atoms().last());
            QCOMPARE(f.gesture(), "begun");
        }
        const QList<KytAtom*> atoms = f.atoms();
        for (int i = 0; i < 3; ++i) {
            KytBond* bond = atoms[i]->isConnected(atoms[i + 1]);
            QVERIFY(bond);
            QCOMPARE(bond->getFromAtom(), atoms[i]);
            QCOMPARE(lineOf(bond->bond1), QLine(corners[i], corners[i + 1]));
            QCOMPARE(atoms[i]->getMolecule(), atoms[3]->getMolecule());
        }
        f.move({450, 200});
        QCOMPARE(lineOf(tempBond), QLine(400, 160, 450, 200));
    }

    void controlGoesOnFromAnExistingAtom()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* target = f.atom(300, 240);
        f.click({200, 200});
        f.click({300, 240}, Qt::ControlModifier);
        QCOMPARE(f.view->lastAtom, target);
        QCOMPARE(f.view->isLastAtom, 1);
        f.click({400, 200});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(target->getBondCount(), 2);
    }

    void controlGoesOnFromABondedAtom()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(300, 200);
        KytBond* bond = f.bond(start, end);
        f.click({200, 200});
        f.click({300, 200}, Qt::ControlModifier);
        QCOMPARE(bond->bondCount, 2);
        QCOMPARE(f.view->lastAtom, end);
        f.click({200, 200}, Qt::ControlModifier);
        QCOMPARE(bond->bondCount, 3);
        QCOMPARE(f.view->lastAtom, start);
    }

    void releasingControlEndsThePolyline()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({100, 200});
        f.click({200, 150}, Qt::ControlModifier);
        f.click({300, 220});
        QCOMPARE(f.gesture(), "none");
        f.click({400, 160}); // a first click
        QCOMPARE(f.atoms().size(), 4);
        QCOMPARE(f.lines().size(), 2);
        QCOMPARE(f.view->isLastAtom, 1);
    }

    void polylineInChangingModes()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.click({230, 200}, Qt::ControlModifier);
        f.view->canvasState = KYTVS_drawStereoUp;
        f.click({260, 200}, Qt::ControlModifier);
        f.view->canvasState = KYTVS_drawDashedBond;
        f.click({290, 200}, Qt::ControlModifier);
        f.view->canvasState = KYTVS_drawStereoDown;
        f.click({320, 200});
        const QList<KytAtom*> atoms = f.atoms();
        QCOMPARE(atoms.size(), 5);
        QCOMPARE(f.lines().size(), 2);
        QCOMPARE(f.wedges().size(), 2);
        EXACTLY(atoms[1]->getAtomZ(), 0.0F);
        NEAR(atoms[2]->getAtomZ(), 51.961525, 1e-5);
        NEAR(atoms[3]->getAtomZ(), 51.961525, 1e-5);
        NEAR(atoms[4]->getAtomZ(), 0, 1e-5);
    }

    // Gestures in full

    void gestureAfterScrolling()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedLengthFlag = 1;
        KytAtom* target = f.atom(1230, 1100);
        f.scrollTo({987, 876});
        f.click({1200, 1100});
        f.click({1300, 1100});
        QCOMPARE(f.atoms().size(), 2);
        KytBond* bond = target->isConnected(f.atoms().last());
        QVERIFY(bond);
        QCOMPARE(lineOf(bond->bond1), QLine(1200, 1100, 1230, 1100));
    }

    void gestureWhileTheViewScrolls()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({300, 300});
        f.scrollTo({200, 150});
        f.move({500, 350});
        QCOMPARE(lineOf(tempBond), QLine(300, 300, 500, 350));
        f.click({500, 350});
        QCOMPARE(placeOf(f.atoms().first()), QPointF(300, 300));
        QCOMPARE(placeOf(f.atoms().last()), QPointF(500, 350));
    }

    void gestureThroughTheWindow()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        QWindow* window = f.view->windowHandle();
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({200, 200}));
        QTest::mouseMove(window, f.inWindow({240, 210}));
        QVERIFY(tempBond->isVisible());
        QTest::mouseMove(window, f.inWindow({260, 230}));
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 260, 230));
        QTest::mouseClick(window, Qt::LeftButton, Qt::ControlModifier, f.inWindow({260, 230}));
        QCOMPARE(f.view->isLastAtom, 1);
        QTest::mouseMove(window, f.inWindow({330, 200}));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, f.inWindow({330, 200}));
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(330, 200));
        QCOMPARE(f.lines().size(), 2);
        QVERIFY(!tempBond->isVisible());
    }

    void twoGesturesInARow()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({100, 100});
        f.click({200, 100});
        f.click({100, 300});
        f.click({200, 300});
        const QList<KytAtom*> atoms = f.atoms();
        QCOMPARE(atoms.size(), 4);
        QCOMPARE(f.lines().size(), 2);
        QVERIFY(atoms[0]->getMolecule() != atoms[2]->getMolecule());
        QCOMPARE(atoms[2]->getMolecule(), atoms[3]->getMolecule());
    }

    void dragInsteadOfTwoClicksIsAFirstClick()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.drag({200, 200}, {300, 240});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->isLastAtom, 1);
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 240));
    }

    // Items that go

    void startAtomGoesMidGesture_data() { addModeRows(drawingModes); }

    void startAtomGoesMidGesture()
    {
        QFETCH(int, mode);
        for (const bool withAll : {false, true}) {
            ViewFixture f(static_cast<KytViewState>(mode));
            f.click({200, 200});
            f.move({300, 240});
            if (withAll)
                f.canvas()->deleteItems(QCanvasItem::Rtti_Ellipse);
            else
                delete f.view->lastAtom;
            QVERIFY(!f.view->lastAtom);
            QCOMPARE(f.gesture(), "none");
            f.texts.clear();
            f.counts.clear();
            f.move({310, 240});
            QVERIFY(f.texts.isEmpty());
            QVERIFY(f.counts.isEmpty());
            f.click({310, 240});
            QCOMPARE(f.atoms().size(), 1);
            QCOMPARE(f.gesture(), "begun");
        }
    }

    void canvasGoesMidGesture_data() { startAtomGoesMidGesture_data(); }

    void canvasGoesMidGesture()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.click({200, 200});
        f.move({300, 240});
        delete f.canvas();
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.gesture(), "none");
        f.move({310, 240});
        f.click({310, 240});
        f.click({350, 240}, Qt::ControlModifier);
        f.useEveryModeAt({300, 240});
        QVERIFY(!f.view->lastAtom);
    }

    void documentGoesMidGesture()
    {
        for (const KytViewState mode : bondModes) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.move({300, 240});
            delete f.doc;
            f.move({310, 240});
            f.click({310, 240});
            f.move({320, 240});
            QVERIFY(f.isOnCanvas(tempBond));
        }
    }

    void bondsOfTheStartAtomGoMidGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.view->fixedAngleFlag = 1;
        KytAtom* start = f.atom(200, 200);
        KytAtom* neighbour = f.atom(300, 100);
        f.bond(start, neighbour);
        f.click({200, 200});
        f.move({300, 164});
        QVERIFY2(last(f).endsWith(QStringLiteral("15.00")), qPrintable(last(f)));
        delete neighbour;
        f.move({300, 164});
        QVERIFY2(last(f).endsWith(QStringLiteral("20.00")), qPrintable(last(f)));
        QCOMPARE(f.view->isLastAtom, 1);
    }

    void targetGoesBeforeTheSecondClick()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* target = f.atom(300, 240);
        f.click({200, 200});
        f.move({300, 240});
        QCOMPARE(f.view->hover, target);
        delete target;
        f.press({300, 240});
        f.release({300, 240});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(300, 240));
        QCOMPARE(f.lines().size(), 1);
    }
};

QTEST_MAIN(test_kytstudioview_bond)
#include "test_kytstudioview_bond.moc"
