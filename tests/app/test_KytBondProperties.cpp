#include "app/KytBondProperties.h"

#include "app/KytAtomProperties.h"

#include "bonds/KytStereoBond.h"

#include "DialogChecks.h"
#include "TestWindow.h"

#include <cmath>

class test_KytBondProperties : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        doc = new KytStudioDoc;
        doc->newDoc();
        from = new KytAtom(doc->canvas, 5.0F, false);
        from->move(100, 100);
        to = new KytAtom(doc->canvas, 0.0F, false);
        to->move(200, 100);
        wedge = makeWedge(KYTBT_StereoUp, 60.0F);
    }
    void cleanup()
    {
        delete doc->canvas;
        delete doc;
    }

    void theObjectNameIsTheClassNameWithoutAName()
    {
        const KytBondProperties dialog;
        QCOMPARE(dialog.objectName(), QString("KytBondProperties"));
    }

    void theObjectNameIsTheNameGiven()
    {
        const KytBondProperties dialog(nullptr, "a wedge");
        QCOMPARE(dialog.objectName(), QString("a wedge"));
    }

    void theFourArgumentsGoToTheDialog()
    {
        QWidget parent;
        const KytBondProperties dialog(&parent, "name", true, Qt::Tool);
        QCOMPARE(dialog.parentWidget(), &parent);
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowType(), Qt::Tool);
    }

    void itIsNotModalAndHasNoBondByItself()
    {
        const KytBondProperties dialog;
        QVERIFY(!dialog.parentWidget());
        QVERIFY(!dialog.isModal());
        QVERIFY(!dialog.bond);
    }

    void theWindowShowsTheIcon()
    {
        const KytBondProperties dialog;
        QVERIFY(!dialog.image0.isNull());
        QVERIFY(!dialog.windowIcon().isNull());
        const QImage shown = dialog.windowIcon().pixmap(dialog.image0.size()).toImage();
        QVERIFY(samePicture(shown, dialog.image0.toImage()));
    }

    void theIconIsThatOfTheAtomDialog()
    {
        const KytBondProperties dialog;
        const KytAtomProperties atomDialog;
        QVERIFY(samePicture(dialog.image0.toImage(), atomDialog.image0));
    }

    void eachWidgetHasItsPlace_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QRect>("place");
        QTest::addColumn<int>("cursor");
        QTest::newRow("cancel") << "pushButton1" << QRect(200, 120, 70, 30) << int(Qt::PointingHandCursor);
        QTest::newRow("ok") << "pushButton2" << QRect(50, 120, 70, 30) << int(Qt::PointingHandCursor);
        QTest::newRow("angle") << "lineEdit_angle" << QRect(200, 50, 70, 23) << int(Qt::IBeamCursor);
        QTest::newRow("label") << "textLabel1" << QRect(30, 40, 170, 40) << int(Qt::ArrowCursor);
    }

    void eachWidgetHasItsPlace()
    {
        QFETCH(QString, name);
        QFETCH(QRect, place);
        QFETCH(int, cursor);
        KytBondProperties dialog;
        const QHash<QString, QWidget*> members{
            {"pushButton1", dialog.pushButton1},
            {"pushButton2", dialog.pushButton2},
            {"lineEdit_angle", dialog.lineEdit_angle},
            {"textLabel1", dialog.textLabel1},
        };
        QWidget* widget = members.value(name);
        QCOMPARE(widget->objectName(), name);
        QCOMPARE(widget->parentWidget(), static_cast<QWidget*>(&dialog));
        QCOMPARE(widget->geometry(), place);
        QCOMPARE(int(widget->cursor().shape()), cursor);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(widget->geometry(), place);
        QVERIFY(widget->isVisible());
    }

    void thereAreNoOtherWidgets()
    {
        const KytBondProperties dialog;
        QCOMPARE(dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly).size(), 4);
    }

    void theSizeIs325By186()
    {
        KytBondProperties dialog;
        QCOMPARE(dialog.size(), QSize(325, 186));
        dialog.setBond(wedge);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.size(), QSize(325, 186));
    }

    void theTexts()
    {
        const KytBondProperties dialog;
        QCOMPARE(dialog.windowTitle(), QString("Bond Properties"));
        QCOMPARE(dialog.pushButton1->text(), QString("cancel"));
        QCOMPARE(dialog.pushButton2->text(), QString("ok"));
        QCOMPARE(dialog.textLabel1->text(), QString("Bond Projection Angle"));
        QCOMPARE(dialog.lineEdit_angle->toolTip(), QString());
    }

    void languageChangeRestoresTheTexts()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        dialog.setWindowTitle("x");
        dialog.pushButton1->setText("x");
        dialog.pushButton2->setText("x");
        dialog.textLabel1->setText("x");
        dialog.lineEdit_angle->setToolTip("x");
        QVERIFY(QMetaObject::invokeMethod(&dialog, "languageChange"));
        QCOMPARE(dialog.windowTitle(), QString("Bond Properties"));
        QCOMPARE(dialog.pushButton1->text(), QString("cancel"));
        QCOMPARE(dialog.pushButton2->text(), QString("ok"));
        QCOMPARE(dialog.textLabel1->text(), QString("Bond Projection Angle"));
        QCOMPARE(dialog.lineEdit_angle->toolTip(), QString());
        QCOMPARE(dialog.lineEdit_angle->text(), QString("60.00"));
    }

    void theTextsAreTranslated()
    {
        const BracketTranslator translator;
        const KytBondProperties dialog;
        QCOMPARE(dialog.windowTitle(), QString("[Bond Properties]"));
        QCOMPARE(dialog.pushButton1->text(), QString("[cancel]"));
        QCOMPARE(dialog.pushButton2->text(), QString("[ok]"));
        QCOMPARE(dialog.textLabel1->text(), QString("[Bond Projection Angle]"));
    }

    void everyTextIsSeenInFull_data()
    {
        QTest::addColumn<int>("points");
        QTest::newRow("the editor's font") << 12;
        QTest::newRow("a small font") << 8;
        QTest::newRow("a large font") << 15;
    }

    void everyTextIsSeenInFull()
    {
        QFETCH(int, points);
        const QFont before = QApplication::font();
        QApplication::setFont(QFont("helvetica", points));
        {
            KytBondProperties dialog;
            dialog.setBond(wedge);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            QVERIFY(seenInFull(*dialog.textLabel1));
            QVERIFY(seenInFull(*dialog.pushButton1));
            QVERIFY(seenInFull(*dialog.pushButton2));
            if (points <= 12)
                QVERIFY(seenInFull(*dialog.lineEdit_angle, "89.50"));
        }
        QApplication::setFont(before);
    }

    void slotsHaveTheirAccess()
    {
        const KytBondProperties dialog;
        QCOMPARE(accessOf(dialog, "setBond(KytStereoBond*)"), int(QMetaMethod::Public));
        QCOMPARE(accessOf(dialog, "languageChange()"), int(QMetaMethod::Protected));
        QCOMPARE(accessOf(dialog, "onOK()"), int(QMetaMethod::Private));
    }

    void setBondShowsTheAngleWithTwoDecimals_data()
    {
        QTest::addColumn<float>("angle");
        QTest::addColumn<QString>("text");
        QTest::newRow("whole") << 60.0F << "60.00";
        QTest::newRow("exact decimals") << 12.75F << "12.75";
        QTest::newRow("rounded") << 45.678F << "45.68";
        QTest::newRow("zero") << 0.0F << "0.00";
        QTest::newRow("below zero") << -1.5F << "-1.50";
    }

    void setBondShowsTheAngleWithTwoDecimals()
    {
        QFETCH(float, angle);
        QFETCH(QString, text);
        replaceWedge(KYTBT_StereoUp, angle);
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QCOMPARE(dialog.bond, wedge);
        QCOMPARE(dialog.lineEdit_angle->text(), text);
    }

    void theAngleHasADecimalPointInEveryLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QLocale::setDefault(before);
        QCOMPARE(dialog.lineEdit_angle->text(), QString("60.00"));
    }

    void okCutsTheDecimalsOff()
    {
        replaceWedge(KYTBT_StereoUp, 12.75F);
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] { QTest::mouseClick(dialog.pushButton2, Qt::LeftButton); }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(wedge->getAngle(), 12.0F);
    }

    void okReadsAWholeNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("angle");
        QTest::newRow("whole") << "45" << 45.0F;
        QTest::newRow("the decimals are cut off, not rounded") << "37.50" << 37.0F;
        QTest::newRow("just below the next") << "37.99" << 37.0F;
        QTest::newRow("no digits") << "abc" << 0.0F;
        QTest::newRow("nothing") << "" << 0.0F;
        QTest::newRow("minus thirty is out of the wedge's range and becomes its lower end") << "-30" << 0.0F;
        QTest::newRow("plus sign") << "+30" << 30.0F;
        QTest::newRow("blanks in front") << "   25" << 25.0F;
        QTest::newRow("blank after the sign") << "- 25" << 0.0F;
        QTest::newRow("two signs") << "+-25" << 0.0F;
        QTest::newRow("letters behind") << "25abc" << 25.0F;
        QTest::newRow("an exponent is not read") << "1e1" << 1.0F;
        QTest::newRow("a comma ends the number") << "33,9" << 33.0F;
        QTest::newRow("decimal even with a zero in front") << "010" << 10.0F;
        QTest::newRow("hexadecimal is not read") << "0x20" << 0.0F;
        QTest::newRow("ninety is the upper end") << "90" << 89.5F;
        QTest::newRow("beyond ninety") << "120" << 89.5F;
        QTest::newRow("the largest int") << "2147483647" << 89.5F;
        QTest::newRow("one more than the largest int") << "2147483648" << 89.5F;
        QTest::newRow("would wrap around to thirty in 32 bits") << "4294967326" << 89.5F;
        QTest::newRow("would wrap around to thirty in 64 bits") << "18446744073709551646" << 89.5F;
        QTest::newRow("thirty digits") << "999999999999999999999999999999" << 89.5F;
        QTest::newRow("thirty digits below zero") << "-999999999999999999999999999999" << 0.0F;
        QTest::newRow("would wrap around to thirty from below") << "-4294967266" << 0.0F;
    }

    void okReadsAWholeNumber()
    {
        QFETCH(QString, text);
        QFETCH(float, angle);
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, text);
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(wedge->getAngle(), angle);
    }

    void okLiftsTheEndAtomByTheTangentOfTheStoredNumber()
    {
        to->locked = true;
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "45");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(to->getAtomZ(), float(5.0 + std::tan(45.0) * 100.0));
    }

    void okLowersTheEndAtomOfAWedgeThatGoesBack()
    {
        replaceWedge(KYTBT_StereoDown, 60.0F);
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "1");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(to->getAtomZ(), float(5.0 - std::tan(1.0) * 100.0));
    }

    void cancelChangesNothing()
    {
        const float depth = to->getAtomZ();
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "10");
            QTest::mouseClick(dialog.pushButton1, Qt::LeftButton);
        }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(wedge->getAngle(), 60.0F);
        QCOMPARE(to->getAtomZ(), depth);
    }

    void theCloseButtonChangesNothing()
    {
        const float depth = to->getAtomZ();
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "10");
            dialog.windowHandle()->close();
        }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(wedge->getAngle(), 60.0F);
        QCOMPARE(to->getAtomZ(), depth);
    }

    void escapeIsCancel()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "10");
            QTest::keyClick(dialog.lineEdit_angle, Qt::Key_Escape);
        }));
        QCOMPARE(wedge->getAngle(), 60.0F);
    }

    void enterIsOk()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            QCOMPARE(dialog.focusWidget(), static_cast<QWidget*>(dialog.lineEdit_angle));
            retype(dialog.lineEdit_angle, "10");
            QTest::keyClick(dialog.lineEdit_angle, Qt::Key_Return);
        }));
        QCOMPARE(wedge->getAngle(), 10.0F);
    }

    void aButtonActsWhenItIsReleased()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        bool openWhilePressed = false;
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_angle, "10");
            QTest::mousePress(dialog.pushButton2, Qt::LeftButton);
            openWhilePressed = dialog.isVisible() && wedge->getAngle() == 60.0F;
            QTest::mouseRelease(dialog.pushButton2, Qt::LeftButton);
        }));
        QVERIFY(openWhilePressed);
        QCOMPARE(wedge->getAngle(), 10.0F);
    }

    void theTabKeyStartsAtTheField()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QStringList order;
        QVERIFY(runAndAct(dialog, [&] {
            for (int i = 0; i < 4; ++i) {
                order << dialog.focusWidget()->objectName();
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            }
            dialog.reject();
        }));
        QCOMPARE(order[0], QString("lineEdit_angle"));
        QVERIFY(order.mid(1, 2).contains("pushButton1"));
        QVERIFY(order.mid(1, 2).contains("pushButton2"));
        QCOMPARE(order[3], QString("lineEdit_angle"));
    }

    void aWedgeThatGoesWhileTheDialogIsOpenIsForgotten_data()
    {
        QTest::addColumn<QString>("what");
        QTest::addColumn<QString>("button");
        for (const char* what : {"wedge", "bond", "start atom", "end atom"}) {
            QTest::addRow("%s, then ok", what) << what << "pushButton2";
            QTest::addRow("%s, then cancel", what) << what << "pushButton1";
        }
    }

    void aWedgeThatGoesWhileTheDialogIsOpenIsForgotten()
    {
        QFETCH(QString, what);
        QFETCH(QString, button);
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            if (what == "wedge")
                wedge->deleteBond();
            else if (what == "bond")
                delete bond;
            else
                delete (what == "start atom" ? from : to);
            QVERIFY(!dialog.bond);
            QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
        }));
        QVERIFY(!dialog.isVisible());
    }

    void aCanvasThatGoesWhileTheDialogIsOpenTakesTheWedge()
    {
        KytBondProperties dialog;
        dialog.setBond(wedge);
        QVERIFY(runAndAct(dialog, [&] {
            delete doc->canvas;
            QVERIFY(!dialog.bond);
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
    }

    void aRightClickInTheDrawingOpensItAndEnterTakesItOver()
    {
        const TestWindow window;
        QVERIFY(window.show());
        KytBond* drawn = window.bond(window.atom(60, 90), window.atom(160, 90), {KYTBT_StereoUp});
        ModalSteps steps;
        steps.then<KytBondProperties>([&](KytBondProperties* dialog) {
            QCOMPARE(dialog->bond, drawn->stereoBond);
            QVERIFY(!dialog->parentWidget());
            retype(dialog->lineEdit_angle, "20");
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        });
        QTest::mouseClick(window->view->viewport(), Qt::RightButton, {}, QPoint(140, 90));
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(drawn->stereoBond->getAngle(), 20.0F);
        for (const QWidget* left : QApplication::topLevelWidgets())
            QVERIFY(!qobject_cast<const KytBondProperties*>(left));
    }

    void anAtomOverAWedgeOpensBothDialogsTheAtomsFirst()
    {
        const TestWindow window;
        QVERIFY(window.show());
        window.bond(window.atom(60, 90), window.atom(160, 90), {KYTBT_StereoUp});
        ModalSteps steps;
        steps.then<KytAtomProperties>([&](KytAtomProperties* dialog) { dialog->close(); });
        steps.then<KytBondProperties>([&](KytBondProperties* dialog) { dialog->close(); });
        QTest::mouseClick(window->view->viewport(), Qt::RightButton, {}, QPoint(159, 90));
        QVERIFY2(steps.done(), steps.trouble());
    }

private:
    KytStereoBond* makeWedge(KytBondType kind, float angle)
    {
        bond = new KytBond(from, to, doc);
        bond->addBond(kind, angle);
        to->setMolecule(from->getMolecule());
        return bond->stereoBond;
    }
    void replaceWedge(KytBondType kind, float angle)
    {
        delete bond;
        wedge = makeWedge(kind, angle);
    }
    void retype(QLineEdit* field, const QString& text)
    {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }

    KytStudioDoc* doc = nullptr;
    KytAtom* from = nullptr;
    KytAtom* to = nullptr;
    KytBond* bond = nullptr;
    KytStereoBond* wedge = nullptr;
};

int main(int argc, char** argv)
{
    return runTests<test_KytBondProperties>(argc, argv);
}

#include "test_KytBondProperties.moc"
