#include "app/KytAtomProperties.h"

#include "DialogTest.h"

class test_KytAtomProperties : public DialogTest {
    Q_OBJECT

private:
    std::unique_ptr<QDialog> made(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags) const override
    {
        return std::make_unique<KytAtomProperties>(parent, name, modal, flags);
    }
    const char* className() const override { return "KytAtomProperties"; }
    QString title() const override { return "Atom Properties"; }
    QSize size() const override { return {550, 204}; }
    QImage icon(const QDialog& dialog) const override { return of(dialog).image0; }
    QList<Part> parts(const QDialog& dialog) const override
    {
        const KytAtomProperties& d = of(dialog);
        return {
            {d.lineEdit_name, "lineEdit_name", QRect(130, 20, 125, 23), Qt::IBeamCursor},
            {d.lineEdit_colorRed, "lineEdit_colorRed", QRect(120, 100, 40, 23), Qt::IBeamCursor},
            {d.lineEdit_colorGreen, "lineEdit_colorGreen", QRect(240, 100, 40, 23), Qt::IBeamCursor},
            {d.lineEdit_colorBlue, "lineEdit_colorBlue", QRect(360, 100, 40, 23), Qt::IBeamCursor},
            {d.pushButton1, "pushButton1", QRect(410, 140, 93, 30), Qt::PointingHandCursor, "cancel"},
            {d.pushButton2, "pushButton2", QRect(50, 140, 93, 30), Qt::PointingHandCursor, "ok"},
            {d.textLabel1, "textLabel1", QRect(50, 20, 64, 20), Qt::ArrowCursor, "<b>Atom </b>"},
            {d.textLabel2, "textLabel2", QRect(50, 70, 64, 20), Qt::ArrowCursor, "<b>Color :</b>"},
            {d.textLabel2_1, "textLabel2_1", QRect(80, 100, 30, 20), Qt::ArrowCursor, "Red"},
            {d.textLabel2_2, "textLabel2_2", QRect(190, 100, 36, 20), Qt::ArrowCursor, "Green"},
            {d.textLabel2_3, "textLabel2_3", QRect(320, 100, 30, 20), Qt::ArrowCursor, "Blue"},
        };
    }
    const char* setter() const override { return "setAtom(KytAtom*)"; }
    QString longestText(const QLineEdit& field) const override { return field.maxLength() == 3 ? "255" : field.text(); }

    void draw() override { atom = drawing->atom(100, 100); }
    void edit(QDialog& dialog) const override { static_cast<KytAtomProperties&>(dialog).setAtom(atom); }
    const void* edited(const QDialog& dialog) const override { return of(dialog).atom; }
    QStringList stored() const override
    {
        return {atom->getSymbol(), atom->_atomColor[0], atom->_atomColor[1], atom->_atomColor[2]};
    }
    Texts otherTexts() const override
    {
        return {{"lineEdit_name", "Na"},
                {"lineEdit_colorRed", "10"},
                {"lineEdit_colorGreen", "020"},
                {"lineEdit_colorBlue", "200"}};
    }
    QStringList otherStored() const override { return {"Na", "10", "020", "200"}; }
    QList<std::pair<const char*, std::function<void()>>> waysToGo() override
    {
        return {{"atom", [this] { delete atom; }}};
    }

    static const KytAtomProperties& of(const QDialog& dialog) { return static_cast<const KytAtomProperties&>(dialog); }

    KytAtom* atom = nullptr;

private slots:
    void coloursTakeThreeCharactersAndTheSymbolMore()
    {
        const KytAtomProperties dialog;
        for (const QLineEdit* field : {dialog.lineEdit_colorRed, dialog.lineEdit_colorGreen, dialog.lineEdit_colorBlue})
            QCOMPARE(field->maxLength(), 3);
        QCOMPARE(dialog.lineEdit_name->maxLength(), QLineEdit().maxLength());
    }

    void theBoldLabelsAreRichText()
    {
        const KytAtomProperties dialog;
        for (const QLabel* label : {dialog.textLabel1, dialog.textLabel2}) {
            QVERIFY(label->textFormat() == Qt::RichText
                    || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(label->text())));
        }
    }

    void setAtomShowsSymbolAndColours()
    {
        atom->setName("alpha carbon");
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

    void setAtomTakesAnotherAtom()
    {
        KytAtom* other = drawing->atom(200, 200);
        other->setSymbol("O");
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        dialog.setAtom(other);
        QCOMPARE(dialog.lineEdit_name->text(), QString("O"));
        QVERIFY(runAndAct(dialog, [&] {
            retype(dialog, {{"lineEdit_name", "N"}});
            ok(dialog);
        }));
        QCOMPARE(other->getSymbol(), QString("N"));
        QCOMPARE(atom->getSymbol(), QString("C"));
    }

    void okWithoutEditsLeavesTheAtomAsItWas()
    {
        atom->setSymbol("Br");
        setColours("7", "", "abc");
        QVERIFY(run({}));
        QCOMPARE(stored(), QStringList({"Br", "7", "", "abc"}));
        QCOMPARE(atom->getName(), QString("C"));
        QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(100, 100));
    }

    void okChangesTheSymbolAndItsLabelButNothingElse()
    {
        drawing->doc->modified = false;
        const QBrush before = atom->brush();
        QVERIFY(run(otherTexts()));
        QCOMPARE(atom->canvasSymbol->text(), QString("Na"));
        QCOMPARE(atom->getName(), QString("C"));
        QCOMPARE(atom->brush(), before);
        QCOMPARE(QPointF(atom->x(), atom->y()), QPointF(100, 100));
        QCOMPARE(atom->getAtomZ(), 0.0F);
        QVERIFY(!drawing->doc->modified);
    }

    void whatIsTypedIsStoredAsItStands_data()
    {
        QTest::addColumn<Texts>("texts");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("nothing") << Texts{{"lineEdit_name", ""},
                                          {"lineEdit_colorRed", ""},
                                          {"lineEdit_colorGreen", ""},
                                          {"lineEdit_colorBlue", ""}}
                                 << QStringList{"", "", "", ""};
        QTest::newRow("nine hundred and ninety-nine")
            << Texts{{"lineEdit_colorGreen", "999"}} << QStringList{"C", "255", "999", "0"};
        QTest::newRow("words") << Texts{{"lineEdit_colorRed", "a b"}, {"lineEdit_name", "R 1"}}
                               << QStringList{"R 1", "a b", "0", "0"};
        QTest::newRow("no fourth character")
            << Texts{{"lineEdit_colorRed", "1234"}, {"lineEdit_colorGreen", "1234"}, {"lineEdit_colorBlue", "1234"}}
            << QStringList{"C", "123", "123", "123"};
    }

    void whatIsTypedIsStoredAsItStands()
    {
        QFETCH(Texts, texts);
        QVERIFY(run(texts));
        QTEST(stored(), "expected");
    }

    void theFirstOfTwoAtomsMayGo()
    {
        KytAtom* other = drawing->atom(200, 200);
        KytAtomProperties dialog;
        dialog.setAtom(atom);
        dialog.setAtom(other);
        delete atom;
        QCOMPARE(dialog.atom, other);
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
            retype(*dialog, {{"lineEdit_name", "F"}});
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
    void setColours(const QString& red, const QString& green, const QString& blue) const
    {
        atom->_atomColor[0] = red;
        atom->_atomColor[1] = green;
        atom->_atomColor[2] = blue;
    }
};

int main(int argc, char** argv)
{
    return runTests<test_KytAtomProperties>(argc, argv);
}

#include "moc_DialogTest.cpp"
#include "test_KytAtomProperties.moc"
