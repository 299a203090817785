#include "ViewFixture.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

namespace {

void type(QWidget* dialog, const char* field, const QString& text)
{
    auto* edit = dialog->findChild<QLineEdit*>(QString::fromLatin1(field));
    QVERIFY2(edit, field);
    edit->clear();
    QTest::keyClicks(edit, text);
}

QString textIn(QWidget* dialog, const char* field)
{
    auto* edit = dialog->findChild<QLineEdit*>(QString::fromLatin1(field));
    return edit ? edit->text() : QStringLiteral("no such field");
}

void clickButton(QWidget* dialog, const char* button)
{
    auto* found = dialog->findChild<QPushButton*>(QString::fromLatin1(button));
    QVERIFY2(found, button);
    QTest::mouseClick(found, Qt::LeftButton);
}

void ok(QWidget* dialog)
{
    clickButton(dialog, "pushButton2");
}

void cancel(QWidget* dialog)
{
    clickButton(dialog, "pushButton1");
}

void closeWindow(QWidget* dialog)
{
    dialog->close();
}

using Answer = std::function<void(QWidget*)>;

/// Answers the dialogs that open while it lives, one after the other; closes those that it has no answer for.
class DialogAnswers : public QObject {
public:
    explicit DialogAnswers(QList<Answer> answers = {})
        : waiting(std::move(answers))
    {
        QObject::connect(&timer, &QTimer::timeout, this, [this] { look(); });
        timer.start(5);
    }

    /// The class names of the dialogs, in the order in which they opened; "stuck" after one that stayed open.
    QStringList seen;

private:
    void look()
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || answering)
            return;
        if (dialog == answered) {
            if (++patience < 400)
                return;
            seen.append(QStringLiteral("stuck"));
            patience = 0;
            dialog->close();
            return;
        }
        answering = true;
        answered = dialog;
        patience = 0;
        seen.append(QString::fromLatin1(dialog->metaObject()->className()));
        const Answer answer = waiting.isEmpty() ? Answer(&closeWindow) : waiting.takeFirst();
        answer(dialog);
        answering = false;
    }

    QTimer timer;
    QList<Answer> waiting;
    QPointer<QWidget> answered;
    int patience = 0;
    bool answering = false;
};

const QStringList atomDialog{QStringLiteral("KytAtomProperties")};
const QStringList wedgeDialog{QStringLiteral("KytBondProperties")};

/// Types `text` into the field and leaves.
Answer typing(const char* field, const QString& text, const Answer& leave = &ok)
{
    return [=](QWidget* dialog) {
        type(dialog, field, text);
        leave(dialog);
    };
}

} // namespace

Q_DECLARE_METATYPE(Answer)

class test_kytstudioview_press : public QObject {
    Q_OBJECT

private slots:
    // Right button

    void rightClickOnEmptyCanvasOpensNothing_data() { addModeRows(everyMode); }

    void rightClickOnEmptyCanvasOpensNothing()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.atom(100, 100);
        DialogAnswers answers;
        f.rightClick({300, 300});
        QVERIFY(answers.seen.isEmpty());
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->isLastAtom, 0);
        QVERIFY(!f.view->moving);
    }

    void rightClickOnAnAtomEditsIt_data() { addModeRows(everyMode); }

    void rightClickOnAnAtomEditsIt()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(200, 200);
        DialogAnswers answers({[](QWidget* dialog) {
            type(dialog, "lineEdit_name", "Na");
            type(dialog, "lineEdit_colorRed", "12");
            type(dialog, "lineEdit_colorGreen", "34");
            type(dialog, "lineEdit_colorBlue", "56");
            ok(dialog);
        }});
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog);
        QCOMPARE(atom->getSymbol(), QStringLiteral("Na"));
        QCOMPARE(atom->canvasSymbol->text(), QStringLiteral("Na"));
        QCOMPARE(atom->_atomColor[0], QStringLiteral("12"));
        QCOMPARE(atom->_atomColor[1], QStringLiteral("34"));
        QCOMPARE(atom->_atomColor[2], QStringLiteral("56"));
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->isLastAtom, 0);
        QVERIFY(!QApplication::activeModalWidget());
    }

    void atomDialogShowsTheAtom()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        atom->setSymbol("Cl");
        atom->_atomColor[1] = "77";
        QString symbol, green, name;
        QWidget* parent = f.view;
        DialogAnswers answers({[&](QWidget* dialog) {
            symbol = textIn(dialog, "lineEdit_name");
            green = textIn(dialog, "lineEdit_colorGreen");
            name = dialog->objectName();
            parent = dialog->parentWidget();
            ok(dialog);
        }});
        f.rightClick({200, 200});
        QCOMPARE(symbol, QStringLiteral("Cl"));
        QCOMPARE(green, QStringLiteral("77"));
        QCOMPARE(name, QStringLiteral("KytAtomProperties"));
        QVERIFY(!parent);
        QCOMPARE(atom->getSymbol(), QStringLiteral("Cl"));
        QCOMPARE(atom->_atomColor[1], QStringLiteral("77"));
    }

    void atomDialogLeftWithoutOkChangesNothing_data()
    {
        QTest::addColumn<Answer>("leave");
        QTest::newRow("cancel") << Answer(&cancel);
        QTest::newRow("close") << Answer(&closeWindow);
        QTest::newRow("escape") << Answer([](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    }

    void atomDialogLeftWithoutOkChangesNothing()
    {
        QFETCH(Answer, leave);
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        DialogAnswers answers({[&](QWidget* dialog) {
            type(dialog, "lineEdit_name", "Na");
            type(dialog, "lineEdit_colorRed", "12");
            leave(dialog);
        }});
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog);
        QCOMPARE(atom->getSymbol(), QStringLiteral("C"));
        QCOMPARE(atom->_atomColor[0], QStringLiteral("255"));
    }

    void rightClickOnAWedgeEditsItsAngle_data() { addModeRows(everyMode); }

    void rightClickOnAWedgeEditsItsAngle()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* end = f.atom(300, 200);
        KytStereoBond* wedge = f.bond(f.atom(200, 200), end, {KYTBT_StereoUp})->stereoBond;
        QString shown;
        DialogAnswers answers({[&](QWidget* dialog) {
            shown = textIn(dialog, "lineEdit_angle");
            type(dialog, "lineEdit_angle", "45");
            ok(dialog);
        }});
        f.rightClick({270, 200});
        QCOMPARE(answers.seen, wedgeDialog);
        QCOMPARE(shown, QStringLiteral("60.00"));
        EXACTLY(wedge->getAngle(), 45.0F);
        NEAR(end->getAtomZ(), 161.97751905, 1e-3); // the tangent of 45 radians over 100 pixels
        QCOMPARE(f.wedges().size(), 1);
    }

    void wedgeDialogCutsTheAngleToWholeDegrees()
    {
        ViewFixture f;
        KytStereoBond* wedge = f.bond(f.atom(200, 200), f.atom(300, 200), {KYTBT_StereoDown})->stereoBond;
        DialogAnswers answers({typing("lineEdit_angle", "37.50")});
        f.rightClick({270, 200});
        EXACTLY(wedge->getAngle(), 37.0F);
    }

    void wedgeDialogLeftWithoutOkChangesNothing_data() { atomDialogLeftWithoutOkChangesNothing_data(); }

    void wedgeDialogLeftWithoutOkChangesNothing()
    {
        QFETCH(Answer, leave);
        ViewFixture f;
        KytAtom* end = f.atom(300, 200);
        KytStereoBond* wedge = f.bond(f.atom(200, 200), end, {KYTBT_StereoUp})->stereoBond;
        const float depth = end->getAtomZ();
        DialogAnswers answers({typing("lineEdit_angle", "20", leave)});
        f.rightClick({270, 200});
        QCOMPARE(answers.seen, wedgeDialog);
        EXACTLY(wedge->getAngle(), 60.0F);
        EXACTLY(end->getAtomZ(), depth);
    }

    void rightClickOnALineOpensNothing()
    {
        ViewFixture f;
        f.bond(f.atom(200, 200), f.atom(300, 200));
        DialogAnswers answers;
        f.rightClick({250, 200});
        QVERIFY(answers.seen.isEmpty());
        QCOMPARE(f.lines().size(), 1);
    }

    void rightClickOnALabelOpensNothing()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        DialogAnswers answers;
        f.rightClick(ViewFixture::onLabel(atom));
        QVERIFY(answers.seen.isEmpty());
    }

    void rightClickOnTheRubberBandOpensNothing()
    {
        for (const KytViewState mode : everyMode) {
            ViewFixture f(KYTVS_drawSimpleBond);
            f.click({200, 200});
            f.move({300, 240});
            f.view->canvasState = mode;
            DialogAnswers answers;
            f.press({250, 220}, Qt::NoModifier, Qt::RightButton);
            f.release({250, 220}, Qt::NoModifier, Qt::RightButton);
            QVERIFY(answers.seen.isEmpty());
            QVERIFY(tempBond->isVisible());
            QVERIFY(f.isOnCanvas(tempBond));
        }
    }

    void rightClickWhereAnAtomAndAWedgeOverlapOpensBothTopmostFirst()
    {
        ViewFixture f;
        KytAtom* end = f.atom(300, 200);
        KytStereoBond* wedge = f.bond(f.atom(200, 200), end, {KYTBT_StereoUp})->stereoBond;
        DialogAnswers answers({typing("lineEdit_name", "O"), typing("lineEdit_angle", "30")});
        f.rightClick({298, 200});
        QCOMPARE(answers.seen, atomDialog + wedgeDialog);
        QCOMPARE(end->getSymbol(), QStringLiteral("O"));
        EXACTLY(wedge->getAngle(), 30.0F);
    }

    void rightClickOnTwoAtomsOpensTheUpperOneFirst()
    {
        ViewFixture f;
        KytAtom* below = f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        DialogAnswers answers({typing("lineEdit_name", "F"), typing("lineEdit_name", "I")});
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog + atomDialog);
        QCOMPARE(above->getSymbol(), QStringLiteral("F"));
        QCOMPARE(below->getSymbol(), QStringLiteral("I"));
    }

    void rightClickOnAnAtomWithTwoWedgesOpensThreeDialogs()
    {
        ViewFixture f;
        KytAtom* end = f.atom(300, 200);
        KytStereoBond* first = f.bond(f.atom(200, 200), end, {KYTBT_StereoUp})->stereoBond;
        KytStereoBond* second = f.bond(f.atom(200, 202), end, {KYTBT_StereoDown})->stereoBond;
        DialogAnswers answers({Answer(&cancel), typing("lineEdit_angle", "10"), typing("lineEdit_angle", "20")});
        f.rightClick({298, 200});
        QCOMPARE(answers.seen, atomDialog + wedgeDialog + wedgeDialog);
        EXACTLY(second->getAngle(), 10.0F);
        EXACTLY(first->getAngle(), 20.0F);
    }

    void rightDoubleClickOpensTheDialogTwice()
    {
        ViewFixture f;
        f.atom(200, 200);
        DialogAnswers answers;
        f.doubleClick({200, 200}, Qt::NoModifier, Qt::RightButton);
        QCOMPARE(answers.seen, atomDialog + atomDialog);
    }

    void rightClickAfterScrolling()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(900, 800);
        f.scrollTo({500, 600});
        DialogAnswers answers({typing("lineEdit_name", "S")});
        f.rightClick({900, 800});
        QCOMPARE(answers.seen, atomDialog);
        QCOMPARE(atom->getSymbol(), QStringLiteral("S"));
    }

    void rightClickDuringADragEndsIt()
    {
        ViewFixture f;
        KytAtom* from = f.atom(200, 200);
        KytBondLine* line = f.bond(from, f.atom(300, 200))->bond1;
        DialogAnswers answers;
        f.press({250, 200});
        f.move({250, 230});
        QCOMPARE(f.view->moving, line);
        QCOMPARE(placeOf(from), QPointF(200, 230));
        f.press({250, 230}, Qt::NoModifier, Qt::RightButton);
        QVERIFY(!f.view->moving);
        f.move({250, 290});
        f.release({250, 290}, Qt::NoModifier, Qt::RightButton);
        f.move({250, 320});
        f.release({250, 320});
        QCOMPARE(placeOf(from), QPointF(200, 230));
        QVERIFY(answers.seen.isEmpty());
    }

    void rightClickOnTheDraggedAtomEndsTheDrag()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        DialogAnswers answers({Answer(&cancel)});
        f.press({200, 200});
        f.move({240, 220});
        f.press({240, 220}, Qt::NoModifier, Qt::RightButton);
        QCOMPARE(answers.seen, atomDialog);
        QVERIFY(!f.view->moving);
        f.move({300, 300});
        f.release({300, 300});
        QCOMPARE(placeOf(atom), QPointF(240, 220));
    }

    void rightClickEndsARotation()
    {
        ViewFixture f(KYTVS_rotate);
        const auto [pivot, other] = f.chain<2>(200, 200, 100);
        DialogAnswers answers;
        f.press({200, 200});
        QCOMPARE(f.view->moving, pivot);
        f.press({400, 400}, Qt::NoModifier, Qt::RightButton);
        QVERIFY(!f.view->moving);
        f.move({250, 400});
        QCOMPARE(placeOf(other), QPointF(300, 200));
        f.release({250, 400});
    }

    void rightClickKeepsAHalfDrawnBond()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        DialogAnswers answers;
        f.rightClick({300, 240});
        QVERIFY(answers.seen.isEmpty());
        QCOMPARE(f.gesture(), "begun");
        QCOMPARE(f.view->lastAtom, start);
        f.click({300, 240});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(start->getBondCount(), 1);
    }

    void atomDestroyedWhileItsDialogIsOpen_data()
    {
        QTest::addColumn<Destroyer>("destroy");
        QTest::addColumn<Answer>("leave");
        const std::pair<const char*, Answer> answers[] = {
            {"ok", Answer(&ok)}, {"cancel", Answer(&cancel)}, {"close", Answer(&closeWindow)}};
        for (const auto& [what, destroy] : waysToGo)
            for (const auto& [how, leave] : answers)
                QTest::addRow("%s, %s", what, how) << destroy << leave;
    }

    void atomDestroyedWhileItsDialogIsOpen()
    {
        QFETCH(Destroyer, destroy);
        QFETCH(Answer, leave);
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.atom(400, 400);
        DialogAnswers answers({[&](QWidget* dialog) {
            destroy(f, atom);
            type(dialog, "lineEdit_name", "Xe");
            leave(dialog);
        }});
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog);
        QVERIFY(!f.view->hover);
        f.drag({200, 200}, {300, 300});
        for (const KytAtom* left : f.atoms())
            QCOMPARE(left->getSymbol(), QStringLiteral("C"));
    }

    void wedgeDestroyedWhileItsDialogIsOpen_data() { atomDestroyedWhileItsDialogIsOpen_data(); }

    void wedgeDestroyedWhileItsDialogIsOpen()
    {
        QFETCH(Destroyer, destroy);
        QFETCH(Answer, leave);
        ViewFixture f;
        KytAtom* start = f.atom(200, 200);
        KytAtom* end = f.atom(300, 200);
        f.bond(end, f.atom(300, 300));
        f.bond(start, end, {KYTBT_StereoUp});
        DialogAnswers answers({[&](QWidget* dialog) {
            destroy(f, start);
            type(dialog, "lineEdit_angle", "20");
            leave(dialog);
        }});
        f.rightClick({270, 200});
        QCOMPARE(answers.seen, wedgeDialog);
        QVERIFY(f.wedges().isEmpty());
        f.drag({270, 200}, {300, 400});
    }

    void wedgeDestroyedWhileTheDialogAboveIsOpen_data()
    {
        QTest::addColumn<Destroyer>("destroy");
        for (const auto& [what, destroy] : waysToGo)
            QTest::addRow("with %s", what) << destroy;
        QTest::newRow("with its bond") << Destroyer([](ViewFixture& f, KytAtom*) { f.wedges().first()->deleteBond(); });
    }

    void wedgeDestroyedWhileTheDialogAboveIsOpen()
    {
        QFETCH(Destroyer, destroy);
        ViewFixture f;
        KytAtom* end = f.atom(300, 200);
        f.bond(f.atom(200, 200), end, {KYTBT_StereoUp});
        DialogAnswers answers({[&](QWidget* dialog) {
            destroy(f, end);
            ok(dialog);
        }});
        f.rightClick({298, 200});
        QCOMPARE(answers.seen, atomDialog);
        QVERIFY(f.wedges().isEmpty());
        f.move({298, 200});
    }

    void startAtomDestroyedWhileItsDialogIsOpen()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({300, 240});
        DialogAnswers answers({[&](QWidget* dialog) {
            delete f.view->lastAtom;
            ok(dialog);
        }});
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog);
        QVERIFY(!f.view->lastAtom);
        QCOMPARE(f.gesture(), "none");
        f.move({320, 240});
        QVERIFY(!tempBond->isVisible());
    }

    void viewAndNextAtomDestroyedWhileADialogIsOpen()
    {
        ViewFixture f;
        KytAtom* below = f.atom(200, 200);
        f.atom(200, 200);
        DialogAnswers answers({[&](QWidget* dialog) {
            delete f.view;
            delete below;
            cancel(dialog);
        }});
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(200, 200), QPointF(200, 200), Qt::RightButton,
                          Qt::RightButton, Qt::NoModifier);
        f.view->contentsMousePressEvent(&press);
        QVERIFY(!f.view);
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(answers.seen, atomDialog);
    }

    // Other buttons

    void middleButtonDoesNothing_data() { addModeRows(everyMode); }

    void middleButtonDoesNothing()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(200, 200);
        KytAtom* other = f.atom(300, 200);
        f.bond(atom, other, {KYTBT_StereoUp});
        DialogAnswers answers;
        for (const Qt::MouseButton button : {Qt::MiddleButton, Qt::BackButton, Qt::ForwardButton})
            for (const QPoint p : {QPoint(200, 200), QPoint(270, 200), QPoint(400, 400)}) {
                f.move(p);
                f.press(p, Qt::NoModifier, button);
                f.move(p + QPoint(20, 20));
                QVERIFY(!f.view->moving);
                f.release(p + QPoint(20, 20), Qt::NoModifier, button);
                f.doubleClick(p, Qt::NoModifier, button);
            }
        QVERIFY(answers.seen.isEmpty());
        QCOMPARE(f.atoms(), (QList<KytAtom*>{atom, other}));
        QCOMPARE(placesOf({atom, other}), (Places{{200, 200}, {300, 200}}));
        QCOMPARE(f.wedges().size(), 1);
        QCOMPARE(f.gesture(), "none");
    }

    void middleButtonKeepsADragUnderWay()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.press({200, 200});
        f.press({200, 200}, Qt::NoModifier, Qt::MiddleButton);
        QCOMPARE(f.view->moving, atom);
        f.move({230, 210});
        QCOMPARE(placeOf(atom), QPointF(230, 210));
        f.release({230, 210}, Qt::NoModifier, Qt::MiddleButton);
        QVERIFY(!f.view->moving);
        f.move({260, 210});
        f.release({260, 210});
        QCOMPARE(placeOf(atom), QPointF(230, 210));
    }

    // Delete mode

    void deletingAnAtomTakesItsBonds()
    {
        ViewFixture f(KYTVS_deleteItem);
        const auto [left, middle, right] = f.row<3>(100, 200, 100);
        f.bond(left, middle);
        f.bond(middle, right, {KYTBT_StereoUp});
        f.click({200, 200});
        QCOMPARE(f.atoms(), (QList<KytAtom*>{left, right}));
        QCOMPARE(f.labels().size(), 2);
        QVERIFY(f.lines().isEmpty());
        QVERIFY(f.wedges().isEmpty());
        QCOMPARE(left->getBondCount(), 0);
        QCOMPARE(right->getBondCount(), 0);
    }

    void deletingALineTakesItsBond()
    {
        ViewFixture f(KYTVS_deleteItem);
        const auto [left, right] = f.chain<2>(200, 200, 100);
        f.click({250, 200});
        QVERIFY(f.lines().isEmpty());
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(left->getBondCount(), 0);
        QCOMPARE(right->getBondCount(), 0);
        QVERIFY(left->getMolecule() != right->getMolecule());
    }

    void deletingALineOfADoubleBondKeepsTheOther()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200), {KYTBT_SingleBond, KYTBT_DashedLine});
        f.click({250, 203}); // on the centre line, beyond the reach of the second one at y = 194
        QCOMPARE(f.lines().size(), 1);
        QCOMPARE(bond->bondCount, 1);
        QCOMPARE(f.lines().first(), bond->bond1);
        QVERIFY(bond->bond1->isDashed);
        QCOMPARE(lineOf(bond->bond1), QLine(200, 200, 300, 200));
        f.click({250, 200});
        QVERIFY(f.lines().isEmpty());
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.atoms().first()->getBondCount(), 0);
    }

    void deletingAWedgeTakesTheWholeBond()
    {
        for (const KytBondType kind : {KYTBT_StereoUp, KYTBT_StereoDown}) {
            ViewFixture f(KYTVS_deleteItem);
            KytAtom* left = f.atom(200, 200);
            KytAtom* right = f.atom(300, 200);
            f.bond(left, right, {kind});
            f.click({270, 200});
            QVERIFY(f.wedges().isEmpty());
            QCOMPARE(f.atoms().size(), 2);
            QCOMPARE(left->getBondCount(), 0);
            QCOMPARE(right->getBondCount(), 0);
        }
    }

    void deletingALabelDeletesNothing()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* atom = f.atom(200, 200);
        f.click(ViewFixture::onLabel(atom));
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.labels().size(), 1);
        QVERIFY(atom->canvasSymbol->isVisible());
    }

    void deletingALabelAboveALineDeletesNothing()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.bond(f.atom(150, 210), f.atom(300, 210));
        KytAtom* atom = f.atom(200, 200); // its label lies on the line and was made later
        const QPoint p(static_cast<int>(atom->canvasSymbol->boundingRect().center().x()), 209);
        QCOMPARE(f.canvas()->collisions(p).first(), atom->canvasSymbol);
        f.click(p);
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.lines().size(), 1);
    }

    void deletingALineAboveALabelDeletesTheLine()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* atom = f.atom(200, 200);
        f.bond(f.atom(150, 210), f.atom(300, 210));
        const QPoint p(static_cast<int>(atom->canvasSymbol->boundingRect().center().x()), 209);
        f.click(p);
        QCOMPARE(f.atoms().size(), 3);
        QVERIFY(f.lines().isEmpty());
    }

    void deletingTakesOnlyTheTopmostItem()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.bond(f.atom(150, 200), f.atom(250, 200));
        KytAtom* below = f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        f.click({200, 200});
        QVERIFY(f.isOnCanvas(below));
        QVERIFY(!f.isOnCanvas(above));
        QCOMPARE(f.lines().size(), 1);
    }

    void deletingOnEmptyCanvasDeletesNothing()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.bond(f.atom(200, 200), f.atom(300, 200));
        const QCanvasItemList before = f.canvas()->allItems();
        f.click({250, 300});
        f.doubleClick({0, 0});
        QCOMPARE(f.canvas()->allItems(), before);
    }

    void highlightedAtomIsWhatIsDeleted()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* atom = f.atom(200, 200);
        f.move({200, 200});
        f.move({196, 200}); // only the enlarged atom reaches here
        QVERIFY(isHighlighted(atom));
        f.press({196, 200});
        QVERIFY(f.atoms().isEmpty());
        f.release({196, 200});
    }

    void highlightedAtomIsDeletedNotTheLineBelow()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytBond* bond = f.bond(f.atom(196, 100), f.atom(196, 300));
        KytAtom* atom = f.atom(200, 200);
        f.move({200, 200});
        f.move({196, 200});
        QVERIFY(isHighlighted(atom));
        QVERIFY(isPlain(bond->bond1));
        f.press({196, 200});
        f.release({196, 200});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.lines().size(), 1);
    }

    void deletingForgetsTheHover()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200));
        for (const QPoint p : {QPoint(250, 200), QPoint(200, 200), QPoint(300, 200)}) {
            f.move(p);
            QVERIFY(f.view->hover);
            f.press(p);
            QVERIFY(!f.view->hover);
            f.release(p);
            f.move(p);
            QVERIFY(!f.view->hover);
        }
        Q_UNUSED(bond)
        QVERIFY(f.atoms().isEmpty());
        QVERIFY(f.lines().isEmpty());
    }

    void fastSecondClickDeletesTheNextItem()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.atom(200, 200);
        f.atom(200, 200);
        f.atom(200, 200);
        f.doubleClick({200, 200});
        QCOMPARE(f.atoms().size(), 1);

        QTest::mouseDClick(f.view->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                           f.view->viewport()->mapTo(f.view.data(), QPoint(200, 200)));
        QVERIFY(f.atoms().isEmpty());
    }

    void deletingAfterScrolling()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* kept = f.atom(1000 - 420, 1200 - 730);
        KytAtom* deleted = f.atom(1000, 1200);
        f.scrollTo({420, 730});
        f.click({1000, 1200});
        QVERIFY(f.isOnCanvas(kept));
        QVERIFY(!f.isOnCanvas(deleted));
    }

    void deletingNeedsTheLeftButton()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.atom(200, 200);
        DialogAnswers answers({Answer(&cancel)});
        f.click({200, 200}, Qt::NoModifier, Qt::MiddleButton);
        f.rightClick({200, 200});
        QCOMPARE(answers.seen, atomDialog);
        QCOMPARE(f.atoms().size(), 1);
        f.click({200, 200}, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(f.atoms().isEmpty());
    }

    void rubberBandIsNotDeleted()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({300, 240});
        f.view->canvasState = KYTVS_deleteItem;
        for (const QPoint p : {QPoint(250, 220), QPoint(290, 236), QPoint(300, 240)}) {
            f.doubleClick(p);
            QVERIFY(f.isOnCanvas(tempBond));
            QVERIFY(tempBond->isVisible());
            QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 240));
            QCOMPARE(f.view->isLastAtom, 1);
        }
        QCOMPARE(f.atoms().size(), 1);

        KytBond* bond = f.bond(f.atom(270, 150), f.atom(270, 300)); // a line above the band goes, the band stays
        Q_UNUSED(bond)
        f.click({270, 228});
        QVERIFY(f.lines().isEmpty());
        QVERIFY(f.isOnCanvas(tempBond));
    }

    void deletingTheStartAtomEndsTheGesture()
    {
        for (const KytViewState mode : drawingModes) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.move({300, 240});
            f.view->canvasState = KYTVS_deleteItem;
            f.click({200, 200});
            QVERIFY(!f.view->lastAtom);
            QCOMPARE(f.gesture(), "none");

            f.view->canvasState = mode;
            f.move({300, 250});
            QVERIFY(!tempBond->isVisible());
            f.click({300, 250}); // a first click again
            QCOMPARE(f.atoms().size(), 1);
            QCOMPARE(f.view->lastAtom, f.atoms().first());
            QCOMPARE(placeOf(f.view->lastAtom), QPointF(300, 250));
            QCOMPARE(f.view->isLastAtom, 1);
        }
    }

    void deletingAnotherAtomKeepsTheGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(400, 400);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.view->canvasState = KYTVS_deleteItem;
        f.click({400, 400});
        QCOMPARE(f.view->lastAtom, start);
        QCOMPARE(f.gesture(), "begun");
    }

    void deletingABondToTheStartAtomKeepsTheGesture()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* start = f.atom(200, 200);
        f.bond(start, f.atom(300, 200));
        f.click({200, 200});
        f.view->canvasState = KYTVS_deleteItem;
        f.click({250, 200});
        QVERIFY(f.lines().isEmpty());
        QCOMPARE(f.view->lastAtom, start);
        QCOMPARE(f.view->isLastAtom, 1);
        f.view->canvasState = KYTVS_drawSimpleBond;
        f.click({200, 300});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(start->getBondCount(), 1);
    }

    void deletingTheMiddleOfAChainMakesTwoMolecules()
    {
        ViewFixture f(KYTVS_deleteItem);
        KytAtom* left = f.atom(100, 200);
        KytAtom* right = f.atom(300, 200);
        KytAtom* middle = f.atom(200, 200);
        f.bond(left, middle);
        f.bond(middle, right);
        QCOMPARE(left->getMolecule(), right->getMolecule());
        f.click({200, 200});
        QVERIFY(left->getMolecule() != right->getMolecule());
    }

    void deletingWithoutMovingBeforehand()
    {
        ViewFixture f(KYTVS_deleteItem);
        f.atom(200, 200);
        f.press({200, 200});
        QVERIFY(f.atoms().isEmpty());
        f.release({200, 200});
    }

    // First click

    void firstClickOnEmptyCanvasMakesAnAtom_data() { addModeRows(drawingModes); }

    void firstClickOnEmptyCanvasMakesAnAtom()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.move({200, 210});
        f.press({200, 210});
        QCOMPARE(f.atoms().size(), 1);
        KytAtom* atom = f.atoms().first();
        QCOMPARE(placeOf(atom), QPointF(200, 210));
        QCOMPARE(placeOf(atom->canvasSymbol), QPointF(200, 210));
        QVERIFY(atom->isVisible());
        EXACTLY(atom->getAtomZ(), 0.0F);
        QVERIFY(!atom->locked);
        QCOMPARE(atom->getSymbol(), QStringLiteral("C"));
        QCOMPARE(atom->getName(), QStringLiteral("C"));
        QCOMPARE(atom->getBondCount(), 0);
        QVERIFY(f.lines().isEmpty());
        QVERIFY(f.wedges().isEmpty());
        QCOMPARE(f.view->lastAtom, atom);
        QCOMPARE(f.view->isLastAtom, 1);
        EXACTLY(f.view->newx, 200.0F);
        EXACTLY(f.view->newy, 210.0F);
        f.release({200, 210});
        QCOMPARE(f.view->isLastAtom, 1);
        QCOMPARE(f.view->lastAtom, atom);
        QCOMPARE(f.atoms().size(), 1);
    }

    void firstClickOnAnAtomStartsThere_data() { addModeRows(drawingModes); }

    void firstClickOnAnAtomStartsThere()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        KytAtom* atom = f.atom(200, 200, 7.5F, true);
        f.click({201, 199});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.view->lastAtom, atom);
        QCOMPARE(f.view->isLastAtom, 1);
        EXACTLY(f.view->newx, 201.0F);
        EXACTLY(f.view->newy, 199.0F);
        QCOMPARE(placeOf(atom), QPointF(200, 200));
        EXACTLY(atom->getAtomZ(), 7.5F);
        QVERIFY(tempBond->isVisible());
    }

    void firstClickShowsARubberBandOfLengthZero()
    {
        for (const KytViewState mode : drawingModes) {
            ViewFixture f(mode);
            f.click({200, 200});
            f.move({300, 240});
            f.click({300, 240});
            QVERIFY(!tempBond->isVisible());
            f.move({400, 100});
            f.press({400, 100}); // whatever the last gesture left behind
            QVERIFY(tempBond->isVisible());
            QCOMPARE(lineOf(tempBond), QLine(0, 0, 0, 0));
            QCOMPARE(placeOf(tempBond), QPointF(0, 0));
            f.release({400, 100});
            QCOMPARE(lineOf(tempBond), QLine(0, 0, 0, 0));
            f.move({401, 100});
            QCOMPARE(lineOf(tempBond), QLine(400, 100, 401, 100));
        }
    }

    void firstClickTakesTheUpperOfTwoAtoms()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        f.click({200, 200});
        QCOMPARE(f.view->lastAtom, above);
    }

    void firstClickFindsTheAtomUnderALabel()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* atom = f.atom(200, 200);
        f.click({202, 202}); // both the atom and its label are here
        QCOMPARE(f.view->lastAtom, atom);
        QCOMPARE(f.atoms().size(), 1);
    }

    void firstClickFindsTheAtomUnderALine()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* atom = f.atom(200, 200);
        KytBondLine* line = f.bond(f.atom(150, 200), f.atom(250, 200))->bond1;
        line->setZ(3);
        QCOMPARE(f.canvas()->collisions({200, 200}).first(), line);
        f.click({200, 200});
        QCOMPARE(f.view->lastAtom, atom);
        QCOMPARE(f.atoms().size(), 3);
    }

    void firstClickOnALineMakesAnAtomThere()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytBond* bond = f.bond(f.atom(200, 200), f.atom(300, 200));
        f.click({250, 200});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(placeOf(f.view->lastAtom), QPointF(250, 200));
        QCOMPARE(bond->bondCount, 1);
        QCOMPARE(f.view->lastAtom->getBondCount(), 0);
    }

    void firstClickOnALabelMakesAnAtomThere()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* atom = f.atom(200, 200);
        const QPoint p = ViewFixture::onLabel(atom);
        f.click(p);
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(f.view->lastAtom != atom);
        QCOMPARE(placeOf(f.view->lastAtom), QPointF(p));
    }

    void firstClickWithControlIsAFirstClick()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200}, Qt::ControlModifier);
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(f.gesture(), "begun");
        QVERIFY(f.lines().isEmpty());
    }

    void firstClickAfterScrolling()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.scrollTo({321, 654});
        f.click({700, 900});
        QCOMPARE(f.atoms().size(), 1);
        QCOMPARE(placeOf(f.atoms().first()), QPointF(700, 900));
        EXACTLY(f.view->newx, 700.0F);
        EXACTLY(f.view->newy, 900.0F);
    }

    void firstClickWithoutAMoveBeforehand()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.press({200, 200});
        QCOMPARE(f.atoms().size(), 1);
        QVERIFY(tempBond->isVisible());
        f.release({200, 200});
    }

    void firstClickGrabsNothing()
    {
        for (const KytViewState mode : drawingModes) {
            ViewFixture f(mode);
            KytAtom* atom = f.atom(200, 200);
            f.press({200, 200});
            QVERIFY(!f.view->moving);
            f.move({260, 200});
            f.release({260, 200});
            QCOMPARE(placeOf(atom), QPointF(200, 200));
        }
    }

    void firstDoubleClickLeavesASingleAtom()
    {
        for (const KytViewState mode : drawingModes) {
            ViewFixture f(mode);
            f.doubleClick({200, 200});
            QCOMPARE(f.atoms().size(), 1);
            QVERIFY(f.lines().isEmpty());
            QVERIFY(f.wedges().isEmpty());
            QCOMPARE(f.gesture(), "none");
            QCOMPARE(f.view->flag, false);
        }
    }

    void noGestureStartsInOtherModes_data() { addModeRows(modesThatDrawNothing); }

    void noGestureStartsInOtherModes()
    {
        QFETCH(int, mode);
        ViewFixture f(static_cast<KytViewState>(mode));
        f.click({200, 200});
        f.click({300, 300}, Qt::ControlModifier);
        QVERIFY(f.atoms().isEmpty());
        QCOMPARE(f.gesture(), "none");
        QVERIFY(f.texts.isEmpty());
        QVERIFY(f.counts.isEmpty());
    }

    // Mode changes between the clicks

    void secondClickInAnotherBondMode_data() { addModeRows(bondModes); }

    void secondClickInAnotherBondMode()
    {
        QFETCH(int, mode);
        for (const KytViewState first : drawingModes) {
            ViewFixture f(first);
            f.click({200, 200});
            KytAtom* start = f.view->lastAtom;
            f.move({300, 200});
            f.view->canvasState = static_cast<KytViewState>(mode);
            f.press({300, 200});
            f.release({300, 200});
            QCOMPARE(f.atoms().size(), 2);
            KytAtom* end = f.atoms().last();
            KytBond* bond = start->isConnected(end);
            QVERIFY(bond);
            QCOMPARE(static_cast<int>(bond->bond1Type),
                     mode == KYTVS_drawSimpleBond       ? static_cast<int>(KYTBT_SingleBond)
                         : mode == KYTVS_drawDashedBond ? static_cast<int>(KYTBT_DashedLine)
                         : mode == KYTVS_drawStereoUp   ? static_cast<int>(KYTBT_StereoUp)
                                                        : static_cast<int>(KYTBT_StereoDown));
            const double depth = mode == KYTVS_drawStereoUp ? 173.205081
                : mode == KYTVS_drawStereoDown              ? -173.205081
                                                            : 0;
            NEAR(end->getAtomZ(), depth, 1e-4);
            QCOMPARE(f.gesture(), "none");
        }
    }

    void secondClickInChainModeDrawsAChain()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({100, 100});
        f.move({160, 100});
        f.view->canvasState = KYTVS_zigzag;
        f.press({160, 100});
        f.release({160, 100});
        QCOMPARE(f.atoms().size(), 3);
        QCOMPARE(f.counts, QList<int>{0});
        QCOMPARE(f.view->isLastAtom, 0);
    }

    void secondClickOfAChainInBondModeDrawsABond()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({100, 100});
        f.move({160, 100});
        f.counts.clear();
        f.view->canvasState = KYTVS_drawDashedBond;
        f.press({160, 100});
        f.release({160, 100});
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(placeOf(f.atoms().last()), QPointF(160, 100));
        QCOMPARE(f.lines().size(), 1);
        QVERIFY(f.lines().first()->isDashed);
        QVERIFY(f.counts.isEmpty());
    }

    void secondClickInViewModeGrabs()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        KytAtom* other = f.atom(400, 300);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.move({300, 240});
        f.view->canvasState = KYTVS_view;
        f.move({400, 300});
        f.press({400, 300});
        QCOMPARE(f.view->moving, other);
        QCOMPARE(f.gesture(), "begun");
        QCOMPARE(f.view->lastAtom, start);
        f.move({420, 330});
        f.release({420, 330});
        QCOMPARE(placeOf(other), QPointF(420, 330));
        QCOMPARE(f.atoms().size(), 2);
        QCOMPARE(f.gesture(), "begun");
        QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 240));
    }

    void secondClickInRotateModeTakesThePivot()
    {
        ViewFixture f(KYTVS_zigzag);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.view->canvasState = KYTVS_rotate;
        f.click({200, 200});
        f.press({200, 200});
        QCOMPARE(f.view->moving, start);
        QCOMPARE(f.gesture(), "begun");
        f.release({200, 200});
    }

    void backFromViewModeTheGestureGoesOn()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        KytAtom* start = f.view->lastAtom;
        f.view->canvasState = KYTVS_view;
        f.drag({200, 200}, {220, 260}); // the start atom itself is moved in between
        f.view->canvasState = KYTVS_drawSimpleBond;
        f.move({300, 300});
        QCOMPARE(lineOf(tempBond), QLine(220, 260, 300, 300));
        f.click({300, 300});
        QCOMPARE(f.atoms().size(), 2);
        QVERIFY(start->isConnected(f.atoms().last()));
        QCOMPARE(f.view->isLastAtom, 0);
    }

    // Grabbing

    void viewModeGrabsEveryKindOfItem()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        KytBondLine* line = f.bond(atom, f.atom(300, 200))->bond1;
        KytStereoBond* wedge = f.bond(f.atom(200, 300), f.atom(300, 300), {KYTBT_StereoUp})->stereoBond;
        const std::pair<QPoint, QCanvasItem*> items[] = {{{200, 200}, atom},
                                                         {{250, 200}, line},
                                                         {{270, 300}, wedge},
                                                         {ViewFixture::onLabel(atom), atom->canvasSymbol}};
        for (const auto& [p, item] : items) {
            f.move(p);
            f.press(p);
            QCOMPARE(f.view->moving, item);
            QCOMPARE(f.view->moving_start, p);
            f.release(p);
            QVERIFY(!f.view->moving);
        }
    }

    void viewModeGrabsTheTopmostItem()
    {
        ViewFixture f;
        f.bond(f.atom(150, 200), f.atom(250, 200));
        f.atom(200, 200);
        KytAtom* above = f.atom(200, 200);
        f.press({200, 200});
        QCOMPARE(f.view->moving, above);
    }

    void viewModeGrabsNothingOnEmptyCanvas()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        f.press({300, 300});
        QVERIFY(!f.view->moving);
        f.move({320, 320});
        f.release({320, 320});
        QCOMPARE(placeOf(atom), QPointF(200, 200));
    }

    void viewModeNeverGrabsTheRubberBand()
    {
        ViewFixture f(KYTVS_drawSimpleBond);
        f.click({200, 200});
        f.move({300, 240});
        f.view->canvasState = KYTVS_view;
        for (const QPoint p : {QPoint(250, 220), QPoint(299, 240)}) {
            f.press(p);
            QVERIFY(!f.view->moving);
            f.move(p + QPoint(30, 30));
            f.move(p + QPoint(30, 60), Qt::ControlModifier);
            f.release(p + QPoint(30, 60));
            QCOMPARE(lineOf(tempBond), QLine(200, 200, 300, 240));
            QCOMPARE(placeOf(tempBond), QPointF(0, 0));
        }
    }

    void viewModeDropsAnOldGrabOnEmptyCanvas()
    {
        ViewFixture f;
        f.atom(200, 200);
        f.press({200, 200});
        QVERIFY(f.view->moving);
        f.press({400, 400}); // the release never came
        QVERIFY(!f.view->moving);
    }

    void viewModeGrabsOnADoubleClick()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(200, 200);
        QTest::mouseClick(f.view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 200));
        QTest::mouseEvent(QTest::MouseDClick, f.view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 200));
        QCOMPARE(f.view->moving, atom);
        f.move({240, 250});
        QCOMPARE(placeOf(atom), QPointF(240, 250));
        QTest::mouseRelease(f.view->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(240, 250));
        QVERIFY(!f.view->moving);
    }

    void viewModeGrabsAfterScrolling()
    {
        ViewFixture f;
        KytAtom* atom = f.atom(800, 900);
        f.scrollTo({300, 500});
        f.press({800, 900});
        QCOMPARE(f.view->moving, atom);
        QCOMPARE(f.view->moving_start, QPoint(800, 900));
        f.release({800, 900});
    }

    void rotateModeTakesAnAtomAsPivot()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* atom = f.atom(200, 200);
        f.press({200, 200});
        QCOMPARE(f.view->moving, atom);
        f.release({200, 200});
        QVERIFY(!f.view->moving);
    }

    void rotateModeMeasuresFromTheAtomsCentre()
    {
        ViewFixture f(KYTVS_rotate);
        f.atom(200.25, 200);
        f.press({202, 199});
        QVERIFY(f.view->moving);
        EXACTLY(_x, 200.25);
        f.release({202, 199});
    }

    void rotateModeTakesTheUpperOfTwoAtoms()
    {
        ViewFixture f(KYTVS_rotate);
        f.atom(200, 200);
        KytAtom* above = f.atom(201, 200);
        f.press({200, 200});
        QCOMPARE(f.view->moving, above);
        EXACTLY(_x, 201.0);
    }

    void rotateModeTakesNothingButAtoms()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* atom = f.atom(200, 200);
        f.bond(atom, f.atom(300, 200));
        f.bond(f.atom(200, 300), f.atom(300, 300), {KYTBT_StereoUp});
        _x = -1;
        for (const QPoint p : {QPoint(250, 200), QPoint(270, 300), ViewFixture::onLabel(atom), QPoint(400, 400)}) {
            f.press(p);
            QVERIFY(!f.view->moving);
            EXACTLY(_x, -1);
            f.release(p);
        }
    }

    void rotateModeFindsTheAtomUnderOtherItems()
    {
        ViewFixture f(KYTVS_rotate);
        KytAtom* atom = f.atom(200, 200);
        KytBondLine* line = f.bond(f.atom(150, 200), f.atom(250, 200))->bond1;
        line->setZ(3);
        QCOMPARE(f.canvas()->collisions({200, 200}).first(), line);
        f.press({200, 200});
        QCOMPARE(f.view->moving, atom);
    }

    void rotateModeLetsAnOldPivotGo()
    {
        ViewFixture f(KYTVS_rotate);
        f.atom(200, 200);
        f.press({200, 200});
        QVERIFY(f.view->moving);
        f.press({400, 400});
        QVERIFY(!f.view->moving);
    }
};

QTEST_MAIN(test_kytstudioview_press)
#include "test_kytstudioview_press.moc"
