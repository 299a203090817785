#include "app/KytBondProperties.h"

#include "app/KytAtomProperties.h"

#include "DialogTest.h"

#include <cmath>

class test_KytBondProperties : public DialogTest {
    Q_OBJECT

private:
    std::unique_ptr<QDialog> made(QWidget* parent, const char* name, bool modal, Qt::WindowFlags flags) const override
    {
        return std::make_unique<KytBondProperties>(parent, name, modal, flags);
    }
    const char* className() const override { return "KytBondProperties"; }
    QString title() const override { return "Bond Properties"; }
    QSize size() const override { return {325, 186}; }
    QImage icon(const QDialog& dialog) const override { return of(dialog).image0.toImage(); }
    QList<Part> parts(const QDialog& dialog) const override
    {
        const KytBondProperties& d = of(dialog);
        return {
            {d.lineEdit_angle, "lineEdit_angle", QRect(200, 50, 70, 23), Qt::IBeamCursor},
            {d.pushButton1, "pushButton1", QRect(200, 120, 70, 30), Qt::PointingHandCursor, "cancel"},
            {d.pushButton2, "pushButton2", QRect(50, 120, 70, 30), Qt::PointingHandCursor, "ok"},
            {d.textLabel1, "textLabel1", QRect(30, 40, 170, 40), Qt::ArrowCursor, "Bond Projection Angle"},
        };
    }
    const char* setter() const override { return "setBond(KytStereoBond*)"; }
    QString longestText(const QLineEdit&) const override { return "89.50"; }

    void draw() override
    {
        from = drawing->atom(100, 100, 5);
        to = drawing->atom(200, 100);
        drawWedge(KYTBT_StereoUp, 60);
    }

    void edit(QDialog& dialog) const override { static_cast<KytBondProperties&>(dialog).setBond(wedge); }
    const void* edited(const QDialog& dialog) const override { return of(dialog).bond; }
    QStringList stored() const override
    {
        return {QString::number(wedge->getAngle()), QString::number(to->getAtomZ(), 'g', 9)};
    }
    Texts otherTexts() const override { return {{"lineEdit_angle", "10"}}; }
    QStringList otherStored() const override
    {
        return {"10", QString::number(float(5.0 + std::tan(10.0) * 100.0), 'g', 9)};
    }
    QList<std::pair<const char*, std::function<void()>>> waysToGo() override
    {
        return {{"wedge", [this] { wedge->deleteBond(); }},
                {"bond", [this] { delete bond; }},
                {"start atom", [this] { delete from; }},
                {"end atom", [this] { delete to; }}};
    }

    static const KytBondProperties& of(const QDialog& dialog) { return static_cast<const KytBondProperties&>(dialog); }

    void drawWedge(KytBondType kind, float angle)
    {
        bond = drawing->bond(from, to, {kind}, angle);
        wedge = bond->stereoBond;
    }

    void replaceWedge(KytBondType kind, float angle)
    {
        delete bond;
        drawWedge(kind, angle);
    }

    KytAtom* from = nullptr;
    KytAtom* to = nullptr;
    KytBond* bond = nullptr;
    KytStereoBond* wedge = nullptr;

private slots:
    void theIconIsThatOfTheAtomDialog()
    {
        QVERIFY(samePicture(KytBondProperties().image0.toImage(), KytAtomProperties().image0));
    }

    void theFieldHasNoToolTip()
    {
        KytBondProperties dialog;
        QCOMPARE(dialog.lineEdit_angle->toolTip(), QString());
        dialog.lineEdit_angle->setToolTip("x");
        QVERIFY(QMetaObject::invokeMethod(&dialog, "languageChange"));
        QCOMPARE(dialog.lineEdit_angle->toolTip(), QString());
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
        QVERIFY(run({}));
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
        QVERIFY(run({{"lineEdit_angle", text}}));
        QTEST(wedge->getAngle(), "angle");
    }

    void okLiftsTheEndAtomByTheTangentOfTheStoredNumberEvenWhereItIsLocked()
    {
        to->locked = true;
        QVERIFY(run({{"lineEdit_angle", "45"}}));
        QCOMPARE(to->getAtomZ(), float(5.0 + std::tan(45.0) * 100.0));
    }

    void okLowersTheEndAtomOfAWedgeThatGoesBack()
    {
        replaceWedge(KYTBT_StereoDown, 60.0F);
        QVERIFY(run({{"lineEdit_angle", "1"}}));
        QCOMPARE(to->getAtomZ(), float(5.0 - std::tan(1.0) * 100.0));
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
            retype(*dialog, {{"lineEdit_angle", "20"}});
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
};

int main(int argc, char** argv)
{
    return runTests<test_KytBondProperties>(argc, argv);
}

#include "moc_DialogTest.cpp"
#include "test_KytBondProperties.moc"
