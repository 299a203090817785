#include "app/KytAtomProperties.h"

#include "DialogChecks.h"
#include "TestWindow.h"

#include <QSignalSpy>

class test_KytAtomProperties : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        doc = new KytStudioDoc;
        doc->newDoc();
        atom = new KytAtom(doc->canvas, 0.0F, false);
        atom->move(100, 100);
        atom->show();
    }
    void cleanup()
    {
        delete doc->canvas;
        delete doc;
    }

    void theObjectNameIsTheClassNameWithoutAName()
    {
        const KytAtomProperties dialog;
        QCOMPARE(dialog.objectName(), QString("KytAtomProperties"));
    }

    void theObjectNameIsTheNameGiven()
    {
        const KytAtomProperties dialog(nullptr, "an atom");
        QCOMPARE(dialog.objectName(), QString("an atom"));
    }

    void theFourArgumentsGoToTheDialog()
    {
        QWidget parent;
        const KytAtomProperties dialog(&parent, "name", true, Qt::Tool);
        QCOMPARE(dialog.parentWidget(), &parent);
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowType(), Qt::Tool);
    }

    void itIsNotModalAndHasNoAtomByItself()
    {
        const KytAtomProperties dialog;
        QVERIFY(!dialog.parentWidget());
        QVERIFY(!dialog.isModal());
        QVERIFY(!dialog.atom);
    }

    void theWindowShowsTheIcon()
    {
        const KytAtomProperties dialog;
        QVERIFY(!dialog.image0.isNull());
        QVERIFY(!dialog.windowIcon().isNull());
        const QImage shown = dialog.windowIcon().pixmap(dialog.image0.size()).toImage();
        QVERIFY(samePicture(shown, dialog.image0));
    }

    void eachWidgetHasItsPlace_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QRect>("place");
        QTest::addColumn<int>("cursor");
        const auto row = [](const char* name, const QRect& place, int cursor) {
            QTest::newRow(name) << QString(name) << place << cursor;
        };
        row("pushButton1", QRect(410, 140, 93, 30), Qt::PointingHandCursor);
        row("pushButton2", QRect(50, 140, 93, 30), Qt::PointingHandCursor);
        row("lineEdit_name", QRect(130, 20, 125, 23), Qt::IBeamCursor);
        row("lineEdit_colorRed", QRect(120, 100, 40, 23), Qt::IBeamCursor);
        row("textLabel1", QRect(50, 20, 64, 20), Qt::ArrowCursor);
        row("lineEdit_colorGreen", QRect(240, 100, 40, 23), Qt::IBeamCursor);
        row("lineEdit_colorBlue", QRect(360, 100, 40, 23), Qt::IBeamCursor);
        row("textLabel2", QRect(50, 70, 64, 20), Qt::ArrowCursor);
        row("textLabel2_3", QRect(320, 100, 30, 20), Qt::ArrowCursor);
        row("textLabel2_2", QRect(190, 100, 36, 20), Qt::ArrowCursor);
        row("textLabel2_1", QRect(80, 100, 30, 20), Qt::ArrowCursor);
    }

    void eachWidgetHasItsPlace()
    {
        QFETCH(QString, name);
        QFETCH(QRect, place);
        QFETCH(int, cursor);
        KytAtomProperties dialog;
        const QHash<QString, QWidget*> members{
            {"pushButton1", dialog.pushButton1},
            {"pushButton2", dialog.pushButton2},
            {"lineEdit_name", dialog.lineEdit_name},
            {"lineEdit_colorRed", dialog.lineEdit_colorRed},
            {"textLabel1", dialog.textLabel1},
            {"lineEdit_colorGreen", dialog.lineEdit_colorGreen},
            {"lineEdit_colorBlue", dialog.lineEdit_colorBlue},
            {"textLabel2", dialog.textLabel2},
            {"textLabel2_3", dialog.textLabel2_3},
            {"textLabel2_2", dialog.textLabel2_2},
            {"textLabel2_1", dialog.textLabel2_1},
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
        const KytAtomProperties dialog;
        QCOMPARE(dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly).size(), 11);
    }

    void theSizeIs550By204()
    {
        KytAtomProperties dialog;
        QCOMPARE(dialog.size(), QSize(550, 204));
        dialog.setAtom(atom);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCOMPARE(dialog.size(), QSize(550, 204));
    }

    void coloursTakeThreeCharactersAndTheSymbolMore()
    {
        const KytAtomProperties dialog;
        QCOMPARE(dialog.lineEdit_colorRed->maxLength(), 3);
        QCOMPARE(dialog.lineEdit_colorGreen->maxLength(), 3);
        QCOMPARE(dialog.lineEdit_colorBlue->maxLength(), 3);
        QCOMPARE(dialog.lineEdit_name->maxLength(), QLineEdit().maxLength());
    }

    void theTexts()
    {
        const KytAtomProperties dialog;
        QCOMPARE(dialog.windowTitle(), QString("Atom Properties"));
        QCOMPARE(dialog.pushButton1->text(), QString("cancel"));
        QCOMPARE(dialog.pushButton2->text(), QString("ok"));
        QCOMPARE(dialog.textLabel1->text(), QString("<b>Atom </b>"));
        QCOMPARE(dialog.textLabel2->text(), QString("<b>Color :</b>"));
        QCOMPARE(dialog.textLabel2_1->text(), QString("Red"));
        QCOMPARE(dialog.textLabel2_2->text(), QString("Green"));
        QCOMPARE(dialog.textLabel2_3->text(), QString("Blue"));
    }

    void theBoldLabelsAreRichText()
    {
        const KytAtomProperties dialog;
        for (const QLabel* label : {dialog.textLabel1, dialog.textLabel2}) {
            QVERIFY(label->textFormat() == Qt::RichText
                    || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text())));
        }
    }

    void languageChangeRestoresTheTexts()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        dialog.setWindowTitle("x");
        for (QLabel* label : dialog.findChildren<QLabel*>())
            label->setText("x");
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            button->setText("x");
        QVERIFY(QMetaObject::invokeMethod(&dialog, "languageChange"));
        QCOMPARE(dialog.windowTitle(), QString("Atom Properties"));
        QCOMPARE(dialog.pushButton1->text(), QString("cancel"));
        QCOMPARE(dialog.pushButton2->text(), QString("ok"));
        QCOMPARE(dialog.textLabel1->text(), QString("<b>Atom </b>"));
        QCOMPARE(dialog.textLabel2->text(), QString("<b>Color :</b>"));
        QCOMPARE(dialog.textLabel2_1->text(), QString("Red"));
        QCOMPARE(dialog.textLabel2_2->text(), QString("Green"));
        QCOMPARE(dialog.textLabel2_3->text(), QString("Blue"));
        QCOMPARE(dialog.lineEdit_name->text(), QString("C"));
    }

    void theTextsAreTranslated()
    {
        const BracketTranslator translator;
        const KytAtomProperties dialog;
        QCOMPARE(dialog.windowTitle(), QString("[Atom Properties]"));
        QCOMPARE(dialog.pushButton1->text(), QString("[cancel]"));
        QCOMPARE(dialog.pushButton2->text(), QString("[ok]"));
        QCOMPARE(dialog.textLabel1->text(), QString("[<b>Atom </b>]"));
        QCOMPARE(dialog.textLabel2->text(), QString("[<b>Color :</b>]"));
        QCOMPARE(dialog.textLabel2_1->text(), QString("[Red]"));
        QCOMPARE(dialog.textLabel2_2->text(), QString("[Green]"));
        QCOMPARE(dialog.textLabel2_3->text(), QString("[Blue]"));
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
            KytAtomProperties dialog;
            setColours("255", "255", "255");
            dialog.setAtom(atom);
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            for (const QLabel* label : dialog.findChildren<QLabel*>())
                QVERIFY2(seenInFull(*label), qPrintable(label->objectName()));
            for (const QPushButton* button : dialog.findChildren<QPushButton*>())
                QVERIFY2(seenInFull(*button), qPrintable(button->objectName()));
            if (points <= 12) {
                for (const QLineEdit* field : dialog.findChildren<QLineEdit*>())
                    QVERIFY2(seenInFull(*field, field->text()), qPrintable(field->objectName()));
            }
        }
        QApplication::setFont(before);
    }

    void slotsHaveTheirAccess()
    {
        const KytAtomProperties dialog;
        QCOMPARE(accessOf(dialog, "setAtom(KytAtom*)"), int(QMetaMethod::Public));
        QCOMPARE(accessOf(dialog, "languageChange()"), int(QMetaMethod::Protected));
        QCOMPARE(accessOf(dialog, "onOK()"), int(QMetaMethod::Private));
    }

    void setAtomShowsSymbolAndColours()
    {
        atom->setSymbol("Cl");
        setColours("1", "22", "133");
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QCOMPARE(dialog.atom, atom);
        QCOMPARE(dialog.lineEdit_name->text(), QString("Cl"));
        QCOMPARE(dialog.lineEdit_colorRed->text(), QString("1"));
        QCOMPARE(dialog.lineEdit_colorGreen->text(), QString("22"));
        QCOMPARE(dialog.lineEdit_colorBlue->text(), QString("133"));
    }

    void setAtomShowsTheSymbolNotTheName()
    {
        atom->setName("alpha carbon");
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QCOMPARE(dialog.lineEdit_name->text(), QString("C"));
    }

    void setAtomTakesAnotherAtom()
    {
        auto* other = new KytAtom(doc->canvas, "O", 0.0F, false);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        dialog.setAtom(other);
        QCOMPARE(dialog.lineEdit_name->text(), QString("O"));
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "N");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(other->getSymbol(), QString("N"));
        QCOMPARE(atom->getSymbol(), QString("C"));
    }

    void okWithoutEditsLeavesTheAtomAsItWas()
    {
        atom->setSymbol("Br");
        setColours("7", "", "abc");
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] { QTest::mouseClick(dialog.pushButton2, Qt::LeftButton); }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(atom->getSymbol(), QString("Br"));
        QCOMPARE(atom->getName(), QString("C"));
        QCOMPARE(colours(), QStringList({"7", "", "abc"}));
        QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(100, 100));
    }

    void okTakesSymbolAndColoursOver()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "Na");
            retype(dialog.lineEdit_colorRed, "10");
            retype(dialog.lineEdit_colorGreen, "020");
            retype(dialog.lineEdit_colorBlue, "200");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(atom->getSymbol(), QString("Na"));
        QCOMPARE(atom->canvasSymbol->text(), QString("Na"));
        QCOMPARE(colours(), QStringList({"10", "020", "200"}));
    }

    void okChangesTheSymbolButNotTheName()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "P");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(atom->getSymbol(), QString("P"));
        QCOMPARE(atom->getName(), QString("C"));
    }

    void okMovesNothingAndTouchesNoBrush()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        const QBrush before = atom->brush();
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_colorBlue, "255");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(atom->brush(), before);
        QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(100, 100));
        QCOMPARE(atom->getAtomZ(), 0.0F);
    }

    void okDoesNotTouchTheModifiedMark()
    {
        doc->modified = false;
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "S");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QVERIFY(!doc->modified);
    }

    void emptyFieldsAreTakenAsTheyStand()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            for (QLineEdit* field : dialog.findChildren<QLineEdit*>())
                retype(field, QString());
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(atom->getSymbol(), QString());
        QCOMPARE(colours(), QStringList({"", "", ""}));
    }

    void nineHundredAndNinetyNineIsStoredAsTyped()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_colorGreen, "999");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(colours(), QStringList({"255", "999", "0"}));
    }

    void aFourthCharacterCannotBeTyped()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            for (QLineEdit* field : {dialog.lineEdit_colorRed, dialog.lineEdit_colorGreen, dialog.lineEdit_colorBlue}) {
                retype(field, "1234");
                QCOMPARE(field->text(), QString("123"));
            }
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(colours(), QStringList({"123", "123", "123"}));
    }

    void wordsInAColourAreStoredAsTyped()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_colorRed, "a b");
            retype(dialog.lineEdit_name, "R 1");
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QCOMPARE(atom->_atomColor[0], QString("a b"));
        QCOMPARE(atom->getSymbol(), QString("R 1"));
    }

    void cancelChangesNothing()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "X");
            retype(dialog.lineEdit_colorRed, "1");
            QTest::mouseClick(dialog.pushButton1, Qt::LeftButton);
        }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(atom->getSymbol(), QString("C"));
        QCOMPARE(colours(), QStringList({"255", "0", "0"}));
    }

    void theCloseButtonChangesNothing()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "X");
            retype(dialog.lineEdit_colorBlue, "1");
            dialog.windowHandle()->close();
        }));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(atom->getSymbol(), QString("C"));
        QCOMPARE(colours(), QStringList({"255", "0", "0"}));
    }

    void escapeIsCancel()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "X");
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
        }));
        QCOMPARE(atom->getSymbol(), QString("C"));
    }

    void enterIsOkInEveryField_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<int>("key");
        QTest::newRow("symbol") << "lineEdit_name" << int(Qt::Key_Return);
        QTest::newRow("red") << "lineEdit_colorRed" << int(Qt::Key_Return);
        QTest::newRow("green") << "lineEdit_colorGreen" << int(Qt::Key_Return);
        QTest::newRow("blue") << "lineEdit_colorBlue" << int(Qt::Key_Return);
        QTest::newRow("symbol, key pad") << "lineEdit_name" << int(Qt::Key_Enter);
    }

    void enterIsOkInEveryField()
    {
        QFETCH(QString, field);
        QFETCH(int, key);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "Si");
            auto* focused = dialog.findChild<QLineEdit*>(field);
            focused->setFocus();
            QTest::keyClick(focused, Qt::Key(key));
        }));
        QCOMPARE(atom->getSymbol(), QString("Si"));
    }

    void theSpaceBarPressesTheFocusedButton_data()
    {
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("symbol");
        QTest::newRow("ok") << true << "Si";
        QTest::newRow("cancel") << false << "C";
    }

    void theSpaceBarPressesTheFocusedButton()
    {
        QFETCH(bool, ok);
        QFETCH(QString, symbol);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "Si");
            QPushButton* button = ok ? dialog.pushButton2 : dialog.pushButton1;
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Space);
        }));
        QCOMPARE(atom->getSymbol(), symbol);
    }

    void aButtonActsWhenItIsReleased()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        bool openWhilePressed = false;
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog.lineEdit_name, "Si");
            QTest::mousePress(dialog.pushButton2, Qt::LeftButton);
            openWhilePressed = dialog.isVisible() && atom->getSymbol() == "C";
            QTest::mouseRelease(dialog.pushButton2, Qt::LeftButton);
        }));
        QVERIFY(openWhilePressed);
        QCOMPARE(atom->getSymbol(), QString("Si"));
    }

    void theTabKeyGoesThroughTheFieldsFirst()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QStringList order;
        QVERIFY(runAndAct(dialog, [&] {
            for (int i = 0; i < 7; ++i) {
                order << dialog.focusWidget()->objectName();
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
            }
            dialog.reject();
        }));
        QCOMPARE(order.mid(0, 4),
                 QStringList({"lineEdit_name", "lineEdit_colorRed", "lineEdit_colorGreen", "lineEdit_colorBlue"}));
        QVERIFY(order.mid(4, 2).contains("pushButton1"));
        QVERIFY(order.mid(4, 2).contains("pushButton2"));
        QCOMPARE(order[6], QString("lineEdit_name"));
    }

    void anAtomThatGoesWhileTheDialogIsOpenIsForgotten_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("then ok") << "pushButton2";
        QTest::newRow("then cancel") << "pushButton1";
    }

    void anAtomThatGoesWhileTheDialogIsOpenIsForgotten()
    {
        QFETCH(QString, button);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            delete atom;
            QVERIFY(!dialog.atom);
            QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
        }));
        QVERIFY(!dialog.isVisible());
        QVERIFY(doc->canvas->allItems().isEmpty());
    }

    void theFirstOfTwoAtomsMayGo()
    {
        auto* other = new KytAtom(doc->canvas, "O", 0.0F, false);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        dialog.setAtom(other);
        delete atom;
        QCOMPARE(dialog.atom, other);
    }

    void aCanvasThatGoesWhileTheDialogIsOpenTakesTheAtom()
    {
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        QVERIFY(runAndAct(dialog, [&] {
            delete doc->canvas;
            QVERIFY(!dialog.atom);
            QTest::mouseClick(dialog.pushButton2, Qt::LeftButton);
        }));
        QVERIFY(!doc->canvas);
    }

    void aRightClickInTheDrawingOpensItAndEnterTakesItOver()
    {
        const TestWindow window;
        QVERIFY(window.show());
        KytAtom* carbon = window.atom(120, 90);
        ModalSteps steps;
        steps.then<KytAtomProperties>([&](KytAtomProperties* dialog) {
            QCOMPARE(dialog->atom, carbon);
            QVERIFY(!dialog->parentWidget());
            retype(dialog->lineEdit_name, "F");
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        });
        QTest::mouseClick(window->view->viewport(), Qt::RightButton, {}, QPoint(120, 90));
        QVERIFY2(steps.done(), steps.trouble());
        QCOMPARE(carbon->getSymbol(), QString("F"));
        QVERIFY(!QApplication::activeModalWidget());
        for (const QWidget* left : QApplication::topLevelWidgets())
            QVERIFY(!qobject_cast<const KytAtomProperties*>(left));
    }

private:
    void retype(QLineEdit* field, const QString& text)
    {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(field, Qt::Key_Delete);
        QTest::keyClicks(field, text);
    }
    QStringList colours() const { return {atom->_atomColor[0], atom->_atomColor[1], atom->_atomColor[2]}; }
    void setColours(const QString& red, const QString& green, const QString& blue)
    {
        atom->_atomColor[0] = red;
        atom->_atomColor[1] = green;
        atom->_atomColor[2] = blue;
    }

    KytStudioDoc* doc = nullptr;
    KytAtom* atom = nullptr;
};

int main(int argc, char** argv)
{
    return runTests<test_KytAtomProperties>(argc, argv);
}

#include "test_KytAtomProperties.moc"
